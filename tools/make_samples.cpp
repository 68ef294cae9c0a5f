// Makes the drawings of samples/ through the library's public interface: make_samples FOLDER.
// Each drawing is one function and one row of the table below. Layer 14: tools.
#include "samples.h"

#include <afxwin.h>

#include <cstdio>
#include <memory>

namespace {

const Gdiplus::Color White(255, 255, 255);
const Gdiplus::Color Grey(128, 128, 128);
const Gdiplus::Color Cyan(0, 200, 220);
const Gdiplus::Color Orange(240, 150, 40);
const Gdiplus::Color Green(80, 200, 110);

void Line(CVectorView& view, double x1, double y1, double x2, double y2, const Gdiplus::Color& color) {
    view.AddLine(CGePoint2d(x1, y1), CGePoint2d(x2, y2), color, 1);
}

// A bridge girder of eight panels, in centimetres: chords in white, posts in cyan, diagonals in orange, dimensions in
// green.
void MakeTruss(CVectorView& view) {
    const int panels = 8;
    const double panel = 400;
    const double height = 480;
    const double span = panels * panel;

    Line(view, 0, 0, span, 0, White);
    Line(view, panel, height, span - panel, height, White);
    for (int i = 1; i < panels; ++i) {
        Line(view, i * panel, 0, i * panel, height, Cyan);
    }
    Line(view, 0, 0, panel, height, Orange);
    Line(view, span, 0, span - panel, height, Orange);
    for (int i = 1; i < panels / 2; ++i) {
        Line(view, i * panel, height, (i + 1) * panel, 0, Orange);
        Line(view, span - i * panel, height, span - (i + 1) * panel, 0, Orange);
    }

    // Supports with the ground under them.
    for (const double x : {0.0, span}) {
        Line(view, x, 0, x - 66, -106, White);
        Line(view, x, 0, x + 66, -106, White);
        Line(view, x - 106, -106, x + 106, -106, White);
        for (int i = 0; i < 6; ++i) {
            const double foot = x - 100 + i * 40;
            Line(view, foot, -106, foot - 30, -142, Grey);
        }
    }

    // The panels, the span below them, the upper chord, and the height on the left.
    for (int i = 0; i < panels; ++i) {
        AddLabel(view, {i * panel, -180}, {(i + 1) * panel, -180}, {0, -80});
    }
    AddLabel(view, {0, -180}, {span, -180}, {0, -260});
    AddLabel(view, {panel, height + 40}, {span - panel, height + 40}, {0, 80});
    AddLabel(view, {-130, 0}, {-130, height}, {-230, 0});
    Line(view, panel - 60, height, -130, height, Green);
}

struct Sample {
    const wchar_t* file;
    void (*make)(CVectorView& view);
};
const Sample Samples[] = {
    {L"truss.nrv", MakeTruss},
    {L"mechanical_part.nrv", MakeMechanicalPart},
    {L"texts.nrv", MakeTexts},
};

// Stores the drawing so that it is shown fitted into a window of 1000 by 600 pixels.
void Save(CVectorView& view, const CString& path) {
    CGePoint2d low;
    CGePoint2d high;
    view.GetDocument()->GetRect(low, high);
    CVectorViewCoordTran* mapping = view.GetVectorViewCoordTran();
    mapping->SetScreenSize(CSize(1000, 600));
    const double scale = std::max((high.x - low.x) / 900, (high.y - low.y) / 500);
    mapping->SetScale(static_cast<float>(scale));
    mapping->SetOriginX((low.x + high.x) / 2 - 500 * scale);
    mapping->SetOriginY((low.y + high.y) / 2 - 300 * scale);

    CMemFile stream;
    view.GetDocument()->StoreToMemFile(&stream);
    const UINT length = static_cast<UINT>(stream.GetLength());
    BYTE* bytes = stream.Detach();
    const std::unique_ptr<BYTE, decltype(&free)> owner(bytes, free);
    CFile file(path, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
    file.Write(bytes, length);
    file.Close();
}

} // namespace

int main() {
    if (!AfxWinInit(::GetModuleHandleW(nullptr), nullptr, ::GetCommandLineW(), 0)) {
        std::fputs("make_samples: the program could not be initialised\n", stderr);
        return 1;
    }
    int count = 0;
    wchar_t** arguments = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (arguments == nullptr || count != 2) {
        std::fputs("usage: make_samples FOLDER\n", stderr);
        return 2;
    }
    const CString folder = arguments[1];
    ::LocalFree(arguments);
    for (const Sample& sample : Samples) {
        const CString path = folder + L"\\" + sample.file;
        try {
            CVectorView view;
            sample.make(view);
            Save(view, path);
            std::printf("%ls\n", static_cast<const wchar_t*>(path));
        } catch (CException* error) {
            wchar_t text[256] = L"";
            error->GetErrorMessage(text, 256);
            error->Delete();
            std::fprintf(stderr, "make_samples: %ls: %ls\n", static_cast<const wchar_t*>(path), text);
            return 1;
        }
    }
    return 0;
}
