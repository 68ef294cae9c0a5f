#include "DrawingRender.h"

#include "PngEncoder.h"
#include "RenderDC.h"
#include "SvgWriter.h"
#include "Text.h"
#include "Truncate.h"
#include "VectorLabel.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

namespace {

constexpr int kLargestSide = 32767;
constexpr double kLargestArea = 134217728.0; // Pixels; half a gigabyte as a bitmap.
constexpr int kLeastMargin = 10;             // Pixels; the least margin in percent.
constexpr double kWidestScale = 1000.0;
constexpr int kWidestLeast = 1000;
constexpr double kMillimetresPerInch = 25.4;
constexpr double kThinLine = 0.25; // Millimetres.
constexpr int kPaperMargin = 2;    // Percent, within the printable area.
constexpr DWORD kOpaque = 0xFF000000;

// Gives access to the height that a text keeps from its last paint. It decides extents and hits, so a picture restores
// it.
struct TextAccess : CText {
    static float CText::*Height() { return &TextAccess::m_MinCalHeight; }
};

CText* TextOf(CDrawable* object) {
    if (auto* label = DYNAMIC_DOWNCAST(CKXVectorLabel, object)) {
        return label->GetLabelText();
    }
    return DYNAMIC_DOWNCAST(CText, object);
}

template <class Take>
void ForEachText(CGraphicDocument* document, Take take) {
    for (CDrawableArray* list : {document->GetNetDrawableObjs(), document->GetDrawableObjs()}) {
        for (INT_PTR i = 0; i < list->GetSize(); ++i) {
            if (CText* text = TextOf(list->GetAt(i))) {
                take(text->*TextAccess::Height());
            }
        }
    }
}

bool IsFinite(const CGePoint2d& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

// A memory context with a bitmap of its own: 32 bits a pixel, top row first.
class CPixelDC : public CDC {
public:
    CPixelDC(CSize size) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = size.cx;
        info.bmiHeader.biHeight = -size.cy;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        m_Bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        if (m_Bitmap != nullptr && CreateCompatibleDC(nullptr)) {
            m_Old = ::SelectObject(m_hDC, m_Bitmap);
            m_Bits = static_cast<DWORD*>(bits);
        }
    }
    ~CPixelDC() override {
        if (m_Old != nullptr) {
            ::SelectObject(m_hDC, m_Old);
        }
        DeleteDC();
        if (m_Bitmap != nullptr) {
            ::DeleteObject(m_Bitmap);
        }
    }
    CPixelDC(const CPixelDC&) = delete;
    CPixelDC& operator=(const CPixelDC&) = delete;
    // Null when there is no memory.
    const DWORD* Bits() const {
        ::GdiFlush();
        return m_Bits;
    }

private:
    HBITMAP m_Bitmap = nullptr;
    HGDIOBJ m_Old = nullptr;
    DWORD* m_Bits = nullptr;
};

// The status that `make` returns; NoResource where it throws for lack of memory or of a GDI object.
template <class Make>
RenderStatus Guarded(Make make) {
    try {
        return make();
    } catch (CException* e) {
        e->Delete();
    } catch (const std::bad_alloc&) {
    }
    return RenderStatus::NoResource;
}

// The colour and alpha that appear as `onBlack` over black and as `onWhite` over white.
DWORD Unblend(DWORD onBlack, DWORD onWhite) {
    DWORD alpha = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const int black = static_cast<int>((onBlack >> shift) & 0xFF);
        const int white = static_cast<int>((onWhite >> shift) & 0xFF);
        alpha = std::max(alpha, static_cast<DWORD>(std::clamp(255 - (white - black), 0, 255)));
    }
    DWORD color = 0;
    for (int shift = 0; alpha != 0 && shift < 24; shift += 8) {
        const DWORD black = (onBlack >> shift) & 0xFF;
        color |= std::min<DWORD>(255, (black * 255 + alpha / 2) / alpha) << shift;
    }
    return (alpha << 24) | color;
}

} // namespace

CRenderOptions CDrawingRender::PaperOptions(CSize dots, double dotsPerInch, double n) {
    CRenderOptions options;
    options.size = dots;
    options.keepSize = true;
    options.scale = n * kMillimetresPerInch / dotsPerInch;
    options.margin = kPaperMargin;
    options.colors = CRenderOptions::BlackOnWhite;
    options.leastLineWidth = std::clamp(Truncate(kThinLine / kMillimetresPerInch * dotsPerInch + 0.5), 1, kWidestLeast);
    return options;
}

CDrawingRender::CDrawingRender(CGraphicDocument* document, const CRenderOptions& options)
    : m_pDocument(document), m_Options(options), m_pOldTran(document->GetVectorViewCoordTran()),
      m_pCurrent(document->GetCurrentObject()) {
    if (m_pOldTran != nullptr) {
        m_Tran = *m_pOldTran;
    }
    m_Graphic.SetVectorViewCoordTran(&m_Tran);
    m_Graphic.SetDocument(document, 1);
    m_Graphic.SetNeedShowDecimal(options.showDecimals ? 1 : 0);
    m_Status = Guarded([this] {
        SaveStates();
        return Arrange();
    });
}

CDrawingRender::~CDrawingRender() {
    RestoreStates();
    m_pDocument->SetVectorViewCoordTran(m_pOldTran);
}

void CDrawingRender::SaveStates() {
    ForEachText(m_pDocument, [this](float& height) { m_TextHeights.Add(height); });
    if (!m_Options.grips) {
        for (CDrawableArray* list : {m_pDocument->GetNetDrawableObjs(), m_pDocument->GetDrawableObjs()}) {
            for (INT_PTR i = 0; i < list->GetSize(); ++i) {
                CDrawable* object = list->GetAt(i);
                if (object->IsSelected()) {
                    m_Selected.Add(object);
                }
            }
        }
    }
    // From here on nothing throws.
    m_pDocument->removeCurrentObject();
    for (INT_PTR i = 0; i < m_Selected.GetSize(); ++i) {
        m_Selected[i]->SetDrawState(CDrawable::Normal);
    }
}

void CDrawingRender::RestoreStates() {
    for (INT_PTR i = 0; i < m_Selected.GetSize(); ++i) {
        m_Selected[i]->SetDrawState(CDrawable::Selected);
    }
    INT_PTR next = 0;
    ForEachText(m_pDocument, [this, &next](float& height) {
        if (next < m_TextHeights.GetSize()) { // Fewer than the texts where memory did not suffice.
            height = m_TextHeights[next++];
        }
    });
    m_pDocument->AddCurrentObject(m_pCurrent);
}

RenderStatus CDrawingRender::Status() const {
    return m_Status;
}

CSize CDrawingRender::Size() const {
    return m_Size;
}

const CVectorViewCoordTran& CDrawingRender::Mapping() const {
    return m_Tran;
}

int CDrawingRender::LeftOut() const {
    return m_LeftOut;
}

// ---- Where the picture lies ----------------------------------------------------------------------------------------

RenderStatus CDrawingRender::Arrange() {
    const CRenderOptions& o = m_Options;
    m_Size = o.size;
    if (!(o.lineWidthScale > 0.0) || o.lineWidthScale > kWidestScale || o.leastLineWidth < 1 ||
        o.leastLineWidth > kWidestLeast || !(o.scale >= 0.0) || !std::isfinite(o.scale) || o.margin < 0 ||
        (!o.marginInPixels && o.margin >= 100) || o.size.cx < 0 || o.size.cy < 0) {
        return RenderStatus::BadOptions;
    }
    switch (o.place) {
    case CRenderOptions::AsStored:
        // The mapping already is the document's own.
        return m_pOldTran != nullptr && o.scale == 0.0 && MakeSize(CGePoint2d(), CGePoint2d(), 0, 0)
                   ? RenderStatus::Done
                   : RenderStatus::BadOptions;
    case CRenderOptions::Window:
        if (!IsFinite(o.windowMin) || !IsFinite(o.windowMax) || !(o.windowMax.x > o.windowMin.x) ||
            !(o.windowMax.y > o.windowMin.y) || !MakeSize(o.windowMin, o.windowMax, 0, 0)) {
            return RenderStatus::BadOptions;
        }
        ArrangeBox(o.windowMin, o.windowMax, CSize(0, 0));
        return RenderStatus::Done;
    case CRenderOptions::Fit:
        return ArrangeFit();
    }
    return RenderStatus::BadOptions;
}

RenderStatus CDrawingRender::ArrangeFit() {
    const CRenderOptions& o = m_Options;
    CGePoint2d min;
    CGePoint2d max;
    const bool extended = BoxOf(min, max);
    if (!MakeSize(min, max, o.marginInPixels ? 0 : o.margin, o.marginInPixels ? o.margin : 0)) {
        return RenderStatus::BadOptions;
    }
    if (!o.selectedOnly && o.scale == 0.0 && ZoomAll()) {
        return RenderStatus::Done;
    }
    CSize margin(o.margin, o.margin);
    if (!o.marginInPixels) {
        margin.SetSize(std::max<int>(kLeastMargin, m_Size.cx * o.margin / 100),
                       std::max<int>(kLeastMargin, m_Size.cy * o.margin / 100));
    }
    if (!extended) {
        // Nothing to fit: the origin in the lower left corner.
        min = max = CGePoint2d(m_Size.cx / 2.0, m_Size.cy / 2.0);
    }
    ArrangeBox(min, max, margin);
    return RenderStatus::Done;
}

bool CDrawingRender::ZoomAll() {
    m_Graphic.SetZoomAllMargin(m_Options.margin);
    m_Graphic.SetZoomByPixs(m_Options.marginInPixels ? 1 : 0);
    CGePoint2d min;
    CGePoint2d max;
    try {
        // A polyline that was loaded without vertices throws here.
        if (m_pDocument->GetRect(min, max) == 0) {
            return false;
        }
        m_Graphic.ZoomAll(CRect(CPoint(0, 0), m_Size));
    } catch (CException* e) {
        e->Delete();
        return false;
    }
    return std::isfinite(m_Tran.GetScale()) && m_Tran.GetScale() > 0.0f && std::isfinite(m_Tran.GetOriginX()) &&
           std::isfinite(m_Tran.GetOriginY());
}

void CDrawingRender::ArrangeBox(const CGePoint2d& min, const CGePoint2d& max, CSize margin) {
    const double width = std::max<int>(1, m_Size.cx - margin.cx);
    const double height = std::max<int>(1, m_Size.cy - margin.cy);
    double scale = m_Options.scale;
    if (scale == 0.0) {
        scale = std::max((max.x - min.x) / width, (max.y - min.y) / height);
    }
    float single = static_cast<float>(scale);
    if (!std::isfinite(single) || !(single > 0.0f)) {
        single = 1.0f; // One point, or an extent too large for a double.
    }
    m_Tran.SetScreenSize(m_Size);
    m_Tran.SetScale(single);
    m_Tran.SetOriginX(min.x / 2.0 + max.x / 2.0 - m_Size.cx * static_cast<double>(single) / 2.0);
    m_Tran.SetOriginY(min.y / 2.0 + max.y / 2.0 - m_Size.cy * static_cast<double>(single) / 2.0);
}

bool CDrawingRender::MakeSize(const CGePoint2d& min, const CGePoint2d& max, int marginPercent, int marginPixels) {
    double width = m_Size.cx;
    double height = m_Size.cy;
    const double rangeX = std::max(0.0, max.x - min.x);
    const double rangeY = std::max(0.0, max.y - min.y);
    if (m_Options.scale > 0.0 && !m_Options.keepSize) {
        const double part = 1.0 - marginPercent * 0.01;
        width = std::max(1.0, std::ceil(rangeX / m_Options.scale / part)) + marginPixels;
        height = std::max(1.0, std::ceil(rangeY / m_Options.scale / part)) + marginPixels;
    } else if (width == 0.0 && height > 0.0 && rangeX > 0.0 && rangeY > 0.0) {
        width = std::max(1.0, std::floor(height * rangeX / rangeY + 0.5));
    } else if (height == 0.0 && width > 0.0 && rangeX > 0.0 && rangeY > 0.0) {
        height = std::max(1.0, std::floor(width * rangeY / rangeX + 0.5));
    }
    if (!(width >= 1.0 && width <= kLargestSide && height >= 1.0 && height <= kLargestSide) ||
        width * height > kLargestArea) {
        return false;
    }
    m_Size.SetSize(Truncate(width), Truncate(height));
    return true;
}

bool CDrawingRender::BoxOf(CGePoint2d& min, CGePoint2d& max) {
    CDrawableArray* list =
        m_Options.selectedOnly ? m_pDocument->GetSelectedDrawableObjs() : m_pDocument->GetDrawableObjs();
    bool found = false;
    for (INT_PTR i = 0; i < list->GetSize(); ++i) {
        CGePoint2d low;
        CGePoint2d high;
        try {
            if (list->GetAt(i)->GetRect(&m_Tran, low, high) == 0) {
                continue;
            }
        } catch (CException* e) {
            e->Delete();
            continue;
        }
        if (!IsFinite(low) || !IsFinite(high)) {
            continue;
        }
        // A negative radius has its corners exchanged.
        const CGePoint2d least(std::min(low.x, high.x), std::min(low.y, high.y));
        const CGePoint2d most(std::max(low.x, high.x), std::max(low.y, high.y));
        min = found ? CGePoint2d(std::min(min.x, least.x), std::min(min.y, least.y)) : least;
        max = found ? CGePoint2d(std::max(max.x, most.x), std::max(max.y, most.y)) : most;
        found = true;
    }
    return found;
}

// ---- Painting ------------------------------------------------------------------------------------------------------

bool CDrawingRender::IsPlain() const {
    return m_Options.colors == CRenderOptions::Stored && !CRenderDC::ChangesWidths(m_Options);
}

COLORREF CDrawingRender::Background() {
    if (m_Options.ownBackground) {
        return m_Options.background & 0xFFFFFF;
    }
    return m_Options.colors == CRenderOptions::Stored ? m_pDocument->GetBKColor() & 0xFFFFFF : RGB(255, 255, 255);
}

RenderStatus CDrawingRender::Paint(CDC* dc) {
    return PaintOn(dc, !m_Options.transparent, Background());
}

RenderStatus CDrawingRender::PaintOn(CDC* dc, bool fill, COLORREF background) {
    if (m_Status != RenderStatus::Done) {
        return m_Status;
    }
    if (fill) {
        CBrush brush(background);
        dc->FillRect(CRect(CPoint(0, 0), m_Size), &brush);
    }
    CRenderDC changing(m_Options);
    CDC* target = dc;
    if (!IsPlain()) {
        changing.Wrap(dc);
        target = &changing;
    }
    if (!m_Options.selectedOnly && m_Options.includeNet) {
        m_Graphic.OnDraw(target, 0);
        return RenderStatus::Done;
    }
    CDrawableArray* list =
        m_Options.selectedOnly ? m_pDocument->GetSelectedDrawableObjs() : m_pDocument->GetDrawableObjs();
    for (INT_PTR i = 0; i < list->GetSize(); ++i) {
        m_Graphic.OnDraw(target, list->GetAt(i));
    }
    return RenderStatus::Done;
}

RenderStatus CDrawingRender::PaintPixels(CDWordArray& pixels, COLORREF background) {
    CPixelDC dc(m_Size);
    if (dc.Bits() == nullptr) {
        return RenderStatus::NoResource;
    }
    const RenderStatus status = PaintOn(&dc, true, background);
    const INT_PTR count = static_cast<INT_PTR>(m_Size.cx) * m_Size.cy;
    pixels.SetSize(count);
    std::transform(dc.Bits(), dc.Bits() + count, pixels.GetData(), [](DWORD pixel) { return pixel | kOpaque; });
    return status;
}

RenderStatus CDrawingRender::Pixels(CDWordArray& pixels) {
    return Guarded([&] {
        pixels.RemoveAll();
        if (m_Status != RenderStatus::Done) {
            return m_Status;
        }
        if (!m_Options.transparent) {
            return PaintPixels(pixels, Background());
        }
        CDWordArray onWhite;
        RenderStatus status = PaintPixels(pixels, RGB(0, 0, 0));
        if (status == RenderStatus::Done) {
            status = PaintPixels(onWhite, RGB(255, 255, 255));
        }
        if (status == RenderStatus::Done) {
            std::transform(pixels.GetData(), pixels.GetData() + pixels.GetSize(), onWhite.GetData(), pixels.GetData(),
                           Unblend);
        }
        return status;
    });
}

// ---- Files ---------------------------------------------------------------------------------------------------------

RenderStatus CDrawingRender::Png(CByteArray& file) {
    return Guarded([&] {
        file.RemoveAll();
        CDWordArray pixels;
        const RenderStatus status = Pixels(pixels);
        if (status != RenderStatus::Done) {
            return status;
        }
        const COLORREF background = Background();
        const bool black = background == RGB(0, 0, 0) || background == RGB(255, 255, 255);
        const auto depth = m_Options.transparent                                     ? PngEncoder::WithAlpha
                           : m_Options.colors == CRenderOptions::Monochrome && black ? PngEncoder::OneBit
                                                                                     : PngEncoder::Plain;
        return PngEncoder::Encode(pixels.GetData(), m_Size.cx, m_Size.cy, depth, file) ? RenderStatus::Done
                                                                                       : RenderStatus::NoEncoder;
    });
}

RenderStatus CDrawingRender::Metafile(HENHMETAFILE& metafile) {
    return Guarded([&] {
        metafile = nullptr;
        if (m_Status != RenderStatus::Done) {
            return m_Status;
        }
        CDC screen;
        CMetaFileDC recorder;
        if (!screen.CreateIC(L"DISPLAY", nullptr, nullptr, nullptr)) {
            return RenderStatus::NoResource;
        }
        const auto frame = [&screen](LONG pixels, int millimetres, int resolution) {
            const double units = 100.0 * pixels * screen.GetDeviceCaps(millimetres) / screen.GetDeviceCaps(resolution);
            return static_cast<LONG>(Truncate(units + 0.5));
        };
        const RECT bounds = {0, 0, frame(m_Size.cx, HORZSIZE, HORZRES), frame(m_Size.cy, VERTSIZE, VERTRES)};
        if (!recorder.CreateEnhanced(&screen, nullptr, &bounds, L"NRVectorView\0Drawing\0")) {
            return RenderStatus::NoResource;
        }
        recorder.IntersectClipRect(0, 0, m_Size.cx, m_Size.cy);
        const RenderStatus status = Paint(&recorder);
        metafile = recorder.CloseEnhanced();
        return metafile != nullptr ? status : RenderStatus::NoResource;
    });
}

RenderStatus CDrawingRender::Emf(CByteArray& file) {
    file.RemoveAll();
    HENHMETAFILE metafile = nullptr;
    const RenderStatus status = Metafile(metafile);
    if (status != RenderStatus::Done) {
        return status;
    }
    const RenderStatus taken = Guarded([metafile, &file] {
        const UINT length = ::GetEnhMetaFileBits(metafile, 0, nullptr);
        file.SetSize(static_cast<INT_PTR>(length));
        const UINT got = ::GetEnhMetaFileBits(metafile, length, file.GetData());
        return got == length && length > 0 ? RenderStatus::Done : RenderStatus::NoResource;
    });
    ::DeleteEnhMetaFile(metafile);
    return taken;
}

RenderStatus CDrawingRender::Svg(CByteArray& file) {
    return Guarded([&] {
        file.RemoveAll();
        m_LeftOut = 0;
        if (m_Status != RenderStatus::Done) {
            return m_Status;
        }
        CSvgWriter writer(m_pDocument, m_Options, m_Graphic, m_Size);
        const CSvgBuffer& text = writer.Write(Background());
        m_LeftOut = writer.LeftOut();
        file.SetSize(static_cast<INT_PTR>(text.Size()));
        std::memcpy(file.GetData(), text.Data(), text.Size());
        return RenderStatus::Done;
    });
}
