// nrv: the command that makes pictures. Layer 14: tools.

#include "nrv_commands.h"

#include "nrv_text.h"

#include <algorithm>

namespace {

CString StatusText(RenderStatus status) {
    switch (status) {
    case RenderStatus::BadOptions:
        return L"the picture's size or window is out of range";
    case RenderStatus::NoResource:
        return L"no memory for the picture";
    case RenderStatus::NoEncoder:
        return L"the system can't write PNG";
    case RenderStatus::Done:
        break;
    }
    return CString();
}

// The file's name without folder and extension.
CString StemOf(const CString& file) {
    if (file == L"-") {
        return L"stdin";
    }
    CString name = file.Mid(std::max(file.ReverseFind(L'/'), file.ReverseFind(L'\\')) + 1);
    const int dot = name.ReverseFind(L'.');
    return dot > 0 ? name.Left(dot) : name;
}

} // namespace

CString NrvOutputOf(const NrvOptions& options, const CString& file) {
    CString output = options.output;
    output.Replace(L"*", StemOf(file));
    return output;
}

int NrvRender(const NrvOptions& options, const CString& file, CNrvPrinter&) {
    CNrvDrawing drawing;
    int code = kNrvDone;
    if (drawing.Load(file) != CNrvDrawing::Whole) {
        NrvText::Complain(file, drawing.Reason());
        code = kNrvFailed;
        if (drawing.GetState() == CNrvDrawing::Unreadable) {
            return code;
        }
    }
    const int boxes = NrvApp().Count();
    CByteArray bytes;
    RenderStatus status = RenderStatus::Done;
    int leftOut = 0;
    {
        CDrawingRender render(drawing.Document(), options.picture);
        if (options.pictureKind == L"svg") {
            status = render.Svg(bytes);
            leftOut = render.LeftOut();
        } else if (options.pictureKind == L"emf") {
            status = render.Emf(bytes);
        } else {
            status = render.Png(bytes);
        }
    }
    if (status != RenderStatus::Done) {
        NrvText::Complain(file, StatusText(status));
        return kNrvFailed;
    }
    // Objects that failed to draw have reported it in messages; a picture without them does not count as a failure.
    CString note;
    if (NrvApp().Count() != boxes) {
        note.Format(L"%d failures to draw, the last: ", NrvApp().Count() - boxes);
        NrvText::Complain(file, note + NrvApp().LastSaid());
    } else if (leftOut > 0) {
        note.Format(L"%d objects are not in the picture", leftOut);
        NrvText::Complain(file, note);
    }
    const CString output = NrvOutputOf(options, file);
    CString reason;
    if (!NrvWriteFile(output, bytes.GetData(), static_cast<size_t>(bytes.GetSize()), reason)) {
        NrvText::Complain(output, reason);
        return kNrvFailed;
    }
    return code;
}
