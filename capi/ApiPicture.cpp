// The C interface: pictures of a drawing.
// Layer 12: capi.

#include "NrvCall.h"

#include "DrawingRender.h"
#include "NrvPictures.h"

namespace {

// The size of the records' first version.
constexpr uint32_t kPictureSize = sizeof(NrvPicture);
constexpr uint32_t kResultSize = sizeof(NrvPictureResult);

NrvPicture PictureOf(const CRenderOptions& options) {
    NrvPicture picture = {};
    picture.width = static_cast<int32_t>(options.size.cx);
    picture.height = static_cast<int32_t>(options.size.cy);
    picture.scale = options.scale;
    picture.keep_size = options.keepSize ? 1 : 0;
    picture.margin = options.margin;
    picture.margin_in_pixels = options.marginInPixels ? 1 : 0;
    picture.colors = options.colors;
    picture.ground_color = NrvSwapColor(options.background);
    picture.line_width_scale = options.lineWidthScale;
    picture.least_line_width = options.leastLineWidth;
    picture.net = options.includeNet ? 1 : 0;
    picture.decimals = -1;
    return picture;
}

NrvResult ResultOf(RenderStatus status) {
    switch (status) {
    case RenderStatus::Done:
        return NRV_OK;
    case RenderStatus::BadOptions:
        return NRV_E_ARGUMENT;
    case RenderStatus::NoResource:
        return NRV_E_MEMORY;
    case RenderStatus::NoEncoder:
        break;
    }
    return NRV_E_SYSTEM;
}

// Calls `make` with the renderer for a picture of `format`, or for its size alone with 0; `make` returns a status.
// Fills in `result`, which may be null. Failures of objects are reported to the host afterwards.
template <class Make>
NrvResult MakePicture(CNrvControl& control, const NrvPicture* picture, int32_t format, NrvPictureResult* result,
                      Make make) {
    CRenderOptions options;
    const NrvResult taken = NrvOptionsOf(control, picture, options);
    if (taken != NRV_OK) {
        return taken;
    }
    if (result != nullptr && result->size < kResultSize) {
        return NRV_E_RECORD;
    }
    NrvPictureResult facts = {};
    const CNrvControl::CQuiet quiet(control, true);
    {
        CDrawingRender render(&control.Document(), options);
        const RenderStatus status = make(render);
        if (status != RenderStatus::Done) {
            return ResultOf(status);
        }
        facts.width = static_cast<int32_t>(render.Size().cx);
        facts.height = static_cast<int32_t>(render.Size().cy);
        facts.scale = static_cast<double>(render.Mapping().GetScale());
        facts.origin_x = render.Mapping().GetOriginX();
        facts.origin_y = render.Mapping().GetOriginY();
        // A failing object gives a message at each of the two paints that a transparent picture takes.
        const bool twice = options.transparent && (format == NRV_FORMAT_PNG || format == NRV_FORMAT_PIXELS);
        const int failed = twice ? (quiet.Count() + 1) / 2 : quiet.Count();
        facts.left_out = static_cast<uint32_t>(std::max(render.LeftOut(), failed));
    }
    if (result != nullptr) {
        NrvGiveRecord(facts, kResultSize, result);
    }
    return facts.left_out == 0 ? NRV_OK : NRV_E_PAINT;
}

bool IsFormat(int32_t format) {
    return format >= NRV_FORMAT_PNG && format <= NRV_FORMAT_PIXELS;
}

RenderStatus BytesOf(CDrawingRender& render, int32_t format, CByteArray& bytes) {
    switch (format) {
    case NRV_FORMAT_PNG:
        return render.Png(bytes);
    case NRV_FORMAT_EMF:
        return render.Emf(bytes);
    case NRV_FORMAT_SVG:
        return render.Svg(bytes);
    default: {
        CDWordArray pixels;
        const RenderStatus status = render.Pixels(pixels);
        const auto size = static_cast<size_t>(pixels.GetSize()) * sizeof(DWORD);
        bytes.SetSize(static_cast<INT_PTR>(size));
        if (size != 0) {
            std::memcpy(bytes.GetData(), pixels.GetData(), size);
        }
        return status;
    }
    }
}

// Replaces an existing file only when all of it has been written.
bool WriteWhole(const NrvChar* path, const CByteArray& bytes) {
    CString part;
    part.Format(L"%ls.%lu.part", path, ::GetCurrentThreadId());
    const HANDLE file = ::CreateFileW(part, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    const auto size = static_cast<DWORD>(bytes.GetSize());
    DWORD written = 0;
    const bool whole = ::WriteFile(file, bytes.GetData(), size, &written, nullptr) && written == size;
    const bool done = ::CloseHandle(file) && whole && ::MoveFileExW(part, path, MOVEFILE_REPLACE_EXISTING);
    if (!done) {
        ::DeleteFileW(part);
    }
    return done;
}

} // namespace

NrvResult NrvOptionsOf(CNrvControl& control, const NrvPicture* picture, CRenderOptions& options) {
    NrvPicture p = PictureOf(options);
    if (picture != nullptr) {
        const NrvResult taken = NrvTakeRecord(picture, kPictureSize, p);
        if (taken != NRV_OK) {
            return taken;
        }
    }
    const bool valid = p.show >= NRV_SHOW_FIT && p.show <= NRV_SHOW_MAPPING && p.colors >= NRV_COLORS_STORED &&
                       p.colors <= NRV_COLORS_MONOCHROME && p.ground >= NRV_GROUND_DRAWING &&
                       p.ground <= NRV_GROUND_NONE && p.decimals >= -1 && p.decimals <= 1;
    if (!valid) {
        return NRV_E_ARGUMENT;
    }
    static constexpr CRenderOptions::Place kPlaces[] = {CRenderOptions::Fit, CRenderOptions::Window,
                                                        CRenderOptions::AsStored};
    static constexpr CRenderOptions::Colors kColors[] = {CRenderOptions::Stored, CRenderOptions::BlackOnWhite,
                                                         CRenderOptions::Monochrome};
    options.size = CSize(p.width, p.height);
    options.scale = p.scale;
    options.keepSize = p.keep_size != 0;
    options.place = kPlaces[p.show];
    options.margin = p.margin;
    options.marginInPixels = p.margin_in_pixels != 0;
    options.windowMin = CGePoint2d(p.window.left, p.window.bottom);
    options.windowMax = CGePoint2d(p.window.right, p.window.top);
    options.transparent = p.ground == NRV_GROUND_NONE;
    options.ownBackground = p.ground == NRV_GROUND_COLOR;
    options.background = NrvSwapColor(p.ground_color);
    options.colors = kColors[p.colors];
    options.lineWidthScale = p.line_width_scale;
    options.leastLineWidth = p.least_line_width;
    options.selectedOnly = p.selected_only != 0;
    options.includeNet = p.net != 0;
    options.grips = p.grips != 0;
    options.showDecimals = (p.decimals >= 0 ? p.decimals : control.showDecimals) != 0;
    return NRV_OK;
}

NrvResult NRV_CALL NrvGetDefaultPicture(NrvPicture* picture) {
    return NrvGuarded([&]() -> NrvResult { return NrvGiveRecord(PictureOf(CRenderOptions()), kPictureSize, picture); });
}

NrvResult NRV_CALL NrvGetPaperPicture(NrvPicture* picture, int32_t width, int32_t height, double dots_per_inch,
                                      double n) {
    return NrvGuarded([&]() -> NrvResult {
        const bool valid = width > 0 && height > 0 && NrvAreFinite(dots_per_inch, n) && dots_per_inch > 0.0 && n >= 0.0;
        if (!valid) {
            return NRV_E_ARGUMENT;
        }
        return NrvGiveRecord(PictureOf(CDrawingRender::PaperOptions(CSize(width, height), dots_per_inch, n)),
                             kPictureSize, picture);
    });
}

NrvResult NRV_CALL NrvMeasurePicture(NrvHandle handle, const NrvPicture* picture, NrvPictureResult* result) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (result == nullptr) {
            return NRV_E_ARGUMENT;
        }
        return MakePicture(control, picture, 0, result, [](CDrawingRender& render) { return render.Status(); });
    });
}

NrvResult NRV_CALL NrvRender(NrvHandle handle, const NrvPicture* picture, int32_t format, void* buffer,
                             uint32_t capacity, uint32_t* size, NrvPictureResult* result) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (!IsFormat(format) || size == nullptr || (buffer == nullptr && capacity != 0)) {
            return NRV_E_ARGUMENT;
        }
        CByteArray bytes;
        const NrvResult made = MakePicture(control, picture, format, result,
                                           [&](CDrawingRender& render) { return BytesOf(render, format, bytes); });
        if (made != NRV_OK && made != NRV_E_PAINT) {
            return made;
        }
        const NrvResult given =
            NrvGive(bytes.GetData(), static_cast<size_t>(bytes.GetSize()), static_cast<BYTE*>(buffer), capacity, size);
        return given == NRV_OK ? made : given;
    });
}

NrvResult NRV_CALL NrvRenderFile(NrvHandle handle, const NrvPicture* picture, int32_t format, const NrvChar* path,
                                 NrvPictureResult* result) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (!IsFormat(format) || path == nullptr || *path == 0) {
            return NRV_E_ARGUMENT;
        }
        CByteArray bytes;
        const NrvResult made = MakePicture(control, picture, format, result,
                                           [&](CDrawingRender& render) { return BytesOf(render, format, bytes); });
        if (made != NRV_OK && made != NRV_E_PAINT) {
            return made;
        }
        return WriteWhole(path, bytes) ? made : static_cast<NrvResult>(NRV_E_FILE);
    });
}

NrvResult NRV_CALL NrvPaintPicture(NrvHandle handle, const NrvPicture* picture, void* hdc, NrvPictureResult* result) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (!NrvIsDeviceContext(hdc)) {
            return NRV_E_ARGUMENT;
        }
        CNrvBorrowedDC dc(hdc);
        return MakePicture(control, picture, 0, result, [&](CDrawingRender& render) { return render.Paint(&dc); });
    });
}
