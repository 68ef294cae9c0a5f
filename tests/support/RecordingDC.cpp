#include "RecordingDC.h"

#include <cstdio>
#include <stdexcept>

// --- text forms --------------------------------------------------------------------------------------------------

namespace {

template <class... Values>
std::string Form(const char* format, Values... values) {
    char text[256];
    std::snprintf(text, sizeof(text), format, values...);
    return text;
}

std::string Num(int value) {
    return std::to_string(value);
}

std::string Num(UINT value) {
    return std::to_string(value);
}

std::string Hex(DWORD value) {
    return Form("0x%08lX", value);
}

std::string Real(float value) {
    return Form("%g", static_cast<double>(value));
}

std::string Text(LPCTSTR text, int count) {
    if (text == nullptr) {
        return "null";
    }
    std::string utf8;
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, text, count, nullptr, 0, nullptr, nullptr);
    if (size > 0 && count != 0) {
        utf8.resize(static_cast<size_t>(size));
        ::WideCharToMultiByte(CP_UTF8, 0, text, count, utf8.data(), size, nullptr, nullptr);
        if (count < 0) {
            utf8.pop_back(); // the zero that a measured text brings with it
        }
    }
    return '"' + utf8 + '"';
}

std::string Rect(LPCRECT rect) {
    if (rect == nullptr) {
        return "null";
    }
    return Form("[%ld,%ld,%ld,%ld]", rect->left, rect->top, rect->right, rect->bottom);
}

std::string Points(const POINT* points, int count) {
    std::string text = "[";
    for (int i = 0; i < count; ++i) {
        text += Form("%s%ld,%ld", i == 0 ? "" : " ", points[i].x, points[i].y);
    }
    return text + "]";
}

std::string PolyPoints(const POINT* points, const int* counts, int count) {
    std::string text;
    for (int i = 0; i < count; points += counts[i++]) {
        text += Points(points, counts[i]);
    }
    return text;
}

std::string Numbers(const int* numbers, int count) {
    if (numbers == nullptr) {
        return "null";
    }
    std::string text = "[";
    for (int i = 0; i < count; ++i) {
        text += (i == 0 ? "" : " ") + std::to_string(numbers[i]);
    }
    return text + "]";
}

std::string Transform(const XFORM* form) {
    return Form("%g %g %g %g %g %g", static_cast<double>(form->eM11), static_cast<double>(form->eM12),
                static_cast<double>(form->eM21), static_cast<double>(form->eM22), static_cast<double>(form->eDx),
                static_cast<double>(form->eDy));
}

} // namespace

void RecordingDC::Record(const char* name, const std::vector<std::string>& arguments) const {
    std::string line = name;
    line += '(';
    for (size_t i = 0; i < arguments.size(); ++i) {
        line += (i == 0 ? "" : ",") + arguments[i];
    }
    m_calls.push_back(line + ')');
}

std::string RecordingDC::Describe(const CPen* pen) const {
    if (pen == nullptr || pen->m_hObject == nullptr) {
        return "pen null";
    }
    if (pen->m_hObject == m_defaults[0]) {
        return "pen default";
    }
    if (pen->GetObjectType() == OBJ_EXTPEN) {
        std::vector<BYTE> room(static_cast<size_t>(pen->GetObject(0, nullptr)));
        pen->GetObject(static_cast<int>(room.size()), room.data());
        const auto& ext = *reinterpret_cast<const EXTLOGPEN*>(room.data());
        return Form("pen extended style=0x%lX width=%lu color=0x%08lX", ext.elpPenStyle, ext.elpWidth, ext.elpColor);
    }
    LOGPEN log = {};
    if (pen->GetLogPen(&log) == 0) {
        return "pen dead";
    }
    return Form("pen style=%u width=%ld color=0x%08lX", log.lopnStyle, log.lopnWidth.x, log.lopnColor);
}

std::string RecordingDC::Describe(const CBrush* brush) const {
    if (brush == nullptr || brush->m_hObject == nullptr) {
        return "brush null";
    }
    if (brush->m_hObject == m_defaults[1]) {
        return "brush default";
    }
    LOGBRUSH log = {};
    if (brush->GetObject(sizeof(log), &log) == 0) {
        return "brush dead";
    }
    if (log.lbStyle == BS_HATCHED) {
        return Form("brush hatch=%llu color=0x%08lX", static_cast<unsigned long long>(log.lbHatch), log.lbColor);
    }
    return Form("brush style=%u color=0x%08lX", log.lbStyle, log.lbColor);
}

std::string RecordingDC::Describe(const CFont* font) const {
    if (font == nullptr || font->m_hObject == nullptr) {
        return "font null";
    }
    if (font->m_hObject == m_defaults[2]) {
        return "font default";
    }
    LOGFONT log = {};
    if (font->GetObject(sizeof(log), &log) == 0) {
        return "font dead";
    }
    return Form("font height=%ld width=%ld escapement=%ld weight=%ld italic=%d face=", log.lfHeight, log.lfWidth,
                log.lfEscapement, log.lfWeight, log.lfItalic) +
           Text(log.lfFaceName, -1);
}

std::string RecordingDC::Describe(const CBitmap* bitmap) const {
    if (bitmap == nullptr || bitmap->m_hObject == nullptr) {
        return "bitmap null";
    }
    if (bitmap->m_hObject == m_defaults[3]) {
        return "bitmap default";
    }
    BITMAP log = {};
    if (bitmap->GetObject(sizeof(log), &log) == 0) {
        return "bitmap dead";
    }
    return Form("bitmap %ldx%ld", log.bmWidth, log.bmHeight);
}

std::string RecordingDC::Describe(const CRgn* region) const {
    if (region == nullptr || region->m_hObject == nullptr) {
        return "region null";
    }
    RECT box = {};
    region->GetRgnBox(&box);
    return "region " + Rect(&box);
}

// --- construction ------------------------------------------------------------------------------------------------

RecordingDC::RecordingDC(int width, int height, COLORREF background) : m_width(width), m_height(height) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // the first row is the top one
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    if (!CreateCompatibleDC(nullptr)) {
        throw std::runtime_error("no memory device context");
    }
    m_bitmap = ::CreateDIBSection(m_hDC, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (m_bitmap == nullptr) {
        throw std::runtime_error("no bitmap");
    }
    m_bits = static_cast<DWORD*>(bits);
    const DWORD pixel = static_cast<DWORD>(GetRValue(background)) << 16 |
                        static_cast<DWORD>(GetGValue(background)) << 8 | GetBValue(background);
    for (int i = 0; i < width * height; ++i) {
        m_bits[i] = pixel;
    }
    ::SelectObject(m_hDC, m_bitmap);
    const UINT kinds[] = {OBJ_PEN, OBJ_BRUSH, OBJ_FONT, OBJ_BITMAP};
    for (int i = 0; i < 4; ++i) {
        m_defaults[i] = ::GetCurrentObject(m_hDC, kinds[i]);
    }
}

RecordingDC::~RecordingDC() {
    CDC::DeleteDC();
    ::DeleteObject(m_bitmap);
}

// --- queries -----------------------------------------------------------------------------------------------------

void RecordingDC::SetClip(const RECT& box) {
    const HRGN region = ::CreateRectRgnIndirect(&box);
    ::SelectClipRgn(m_hDC, region);
    ::DeleteObject(region);
}

COLORREF RecordingDC::Pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) {
        return CLR_INVALID;
    }
    ::GdiFlush();
    const DWORD pixel = m_bits[y * m_width + x];
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
}

std::vector<DWORD> RecordingDC::Pixels() const {
    ::GdiFlush();
    std::vector<DWORD> pixels(m_bits, m_bits + m_width * m_height);
    for (DWORD& pixel : pixels) {
        pixel &= 0xFFFFFF; // the fourth byte is unused
    }
    return pixels;
}

int RecordingDC::GetClipBox(LPRECT lpRect) const {
    if (m_recordQueries) {
        Record("GetClipBox", {});
    }
    return CDC::GetClipBox(lpRect);
}

int RecordingDC::GetROP2() const {
    if (m_recordQueries) {
        Record("GetROP2", {});
    }
    return CDC::GetROP2();
}

// --- the calls ---------------------------------------------------------------------------------------------------

int RecordingDC::SaveDC() {
    Record("SaveDC", {});
    return CDC::SaveDC();
}

BOOL RecordingDC::RestoreDC(int nSavedDC) {
    Record("RestoreDC", {Num(nSavedDC)});
    return CDC::RestoreDC(nSavedDC);
}

CGdiObject* RecordingDC::SelectStockObject(int nIndex) {
    Record("SelectStockObject", {Num(nIndex)});
    return CDC::SelectStockObject(nIndex);
}

CPen* RecordingDC::SelectObject(CPen* pPen) {
    Record("SelectObject", {Describe(pPen)});
    return CDC::SelectObject(pPen);
}

CBrush* RecordingDC::SelectObject(CBrush* pBrush) {
    Record("SelectObject", {Describe(pBrush)});
    return CDC::SelectObject(pBrush);
}

CFont* RecordingDC::SelectObject(CFont* pFont) {
    Record("SelectObject", {Describe(pFont)});
    return CDC::SelectObject(pFont);
}

CBitmap* RecordingDC::SelectObject(CBitmap* pBitmap) {
    Record("SelectObject", {Describe(pBitmap)});
    return CDC::SelectObject(pBitmap);
}

int RecordingDC::SelectObject(CRgn* pRgn) {
    Record("SelectObject", {Describe(pRgn)});
    return CDC::SelectObject(pRgn);
}

COLORREF RecordingDC::SetBkColor(COLORREF crColor) {
    Record("SetBkColor", {Hex(crColor)});
    return CDC::SetBkColor(crColor);
}

int RecordingDC::SetBkMode(int nBkMode) {
    Record("SetBkMode", {Num(nBkMode)});
    return CDC::SetBkMode(nBkMode);
}

int RecordingDC::SetPolyFillMode(int nPolyFillMode) {
    Record("SetPolyFillMode", {Num(nPolyFillMode)});
    return CDC::SetPolyFillMode(nPolyFillMode);
}

int RecordingDC::SetROP2(int nDrawMode) {
    Record("SetROP2", {Num(nDrawMode)});
    return CDC::SetROP2(nDrawMode);
}

int RecordingDC::SetStretchBltMode(int nStretchMode) {
    Record("SetStretchBltMode", {Num(nStretchMode)});
    return CDC::SetStretchBltMode(nStretchMode);
}

COLORREF RecordingDC::SetTextColor(COLORREF crColor) {
    Record("SetTextColor", {Hex(crColor)});
    return CDC::SetTextColor(crColor);
}

UINT RecordingDC::SetTextAlign(UINT nFlags) {
    Record("SetTextAlign", {Num(nFlags)});
    return CDC::SetTextAlign(nFlags);
}

int RecordingDC::SetTextCharacterExtra(int nCharExtra) {
    Record("SetTextCharacterExtra", {Num(nCharExtra)});
    return CDC::SetTextCharacterExtra(nCharExtra);
}

int RecordingDC::SetArcDirection(int nArcDirection) {
    Record("SetArcDirection", {Num(nArcDirection)});
    return CDC::SetArcDirection(nArcDirection);
}

CPoint RecordingDC::SetBrushOrg(int x, int y) {
    Record("SetBrushOrg", {Num(x), Num(y)});
    return CDC::SetBrushOrg(x, y);
}

int RecordingDC::SetGraphicsMode(int nMode) {
    Record("SetGraphicsMode", {Num(nMode)});
    return CDC::SetGraphicsMode(nMode);
}

BOOL RecordingDC::SetWorldTransform(const XFORM* pXform) {
    Record("SetWorldTransform", {Transform(pXform)});
    return CDC::SetWorldTransform(pXform);
}

int RecordingDC::SetMapMode(int nMapMode) {
    Record("SetMapMode", {Num(nMapMode)});
    return CDC::SetMapMode(nMapMode);
}

CPoint RecordingDC::SetViewportOrg(int x, int y) {
    Record("SetViewportOrg", {Num(x), Num(y)});
    return CDC::SetViewportOrg(x, y);
}

CPoint RecordingDC::OffsetViewportOrg(int nWidth, int nHeight) {
    Record("OffsetViewportOrg", {Num(nWidth), Num(nHeight)});
    return CDC::OffsetViewportOrg(nWidth, nHeight);
}

CSize RecordingDC::SetViewportExt(int cx, int cy) {
    Record("SetViewportExt", {Num(cx), Num(cy)});
    return CDC::SetViewportExt(cx, cy);
}

CPoint RecordingDC::SetWindowOrg(int x, int y) {
    Record("SetWindowOrg", {Num(x), Num(y)});
    return CDC::SetWindowOrg(x, y);
}

CPoint RecordingDC::OffsetWindowOrg(int nWidth, int nHeight) {
    Record("OffsetWindowOrg", {Num(nWidth), Num(nHeight)});
    return CDC::OffsetWindowOrg(nWidth, nHeight);
}

CSize RecordingDC::SetWindowExt(int cx, int cy) {
    Record("SetWindowExt", {Num(cx), Num(cy)});
    return CDC::SetWindowExt(cx, cy);
}

int RecordingDC::SelectClipRgn(CRgn* pRgn) {
    Record("SelectClipRgn", {Describe(pRgn)});
    return CDC::SelectClipRgn(pRgn);
}

int RecordingDC::SelectClipRgn(CRgn* pRgn, int nMode) {
    Record("SelectClipRgn", {Describe(pRgn), Num(nMode)});
    return CDC::SelectClipRgn(pRgn, nMode);
}

int RecordingDC::ExcludeClipRect(int x1, int y1, int x2, int y2) {
    Record("ExcludeClipRect", {Num(x1), Num(y1), Num(x2), Num(y2)});
    return CDC::ExcludeClipRect(x1, y1, x2, y2);
}

int RecordingDC::IntersectClipRect(int x1, int y1, int x2, int y2) {
    Record("IntersectClipRect", {Num(x1), Num(y1), Num(x2), Num(y2)});
    return CDC::IntersectClipRect(x1, y1, x2, y2);
}

int RecordingDC::OffsetClipRgn(int x, int y) {
    Record("OffsetClipRgn", {Num(x), Num(y)});
    return CDC::OffsetClipRgn(x, y);
}

CPoint RecordingDC::MoveTo(int x, int y) {
    Record("MoveTo", {Num(x), Num(y)});
    return CDC::MoveTo(x, y);
}

BOOL RecordingDC::LineTo(int x, int y) {
    Record("LineTo", {Num(x), Num(y)});
    return !m_execute || CDC::LineTo(x, y);
}

BOOL RecordingDC::Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) {
    Record("Arc", {Num(x1), Num(y1), Num(x2), Num(y2), Num(x3), Num(y3), Num(x4), Num(y4)});
    return !m_execute || CDC::Arc(x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL RecordingDC::ArcTo(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) {
    Record("ArcTo", {Num(x1), Num(y1), Num(x2), Num(y2), Num(x3), Num(y3), Num(x4), Num(y4)});
    return !m_execute || CDC::ArcTo(x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL RecordingDC::AngleArc(int x, int y, int nRadius, float fStartAngle, float fSweepAngle) {
    Record("AngleArc", {Num(x), Num(y), Num(nRadius), Real(fStartAngle), Real(fSweepAngle)});
    return !m_execute || CDC::AngleArc(x, y, nRadius, fStartAngle, fSweepAngle);
}

BOOL RecordingDC::Polyline(const POINT* lpPoints, int nCount) {
    Record("Polyline", {Points(lpPoints, nCount)});
    return !m_execute || CDC::Polyline(lpPoints, nCount);
}

BOOL RecordingDC::PolylineTo(const POINT* lpPoints, int nCount) {
    Record("PolylineTo", {Points(lpPoints, nCount)});
    return !m_execute || CDC::PolylineTo(lpPoints, nCount);
}

BOOL RecordingDC::PolyBezier(const POINT* lpPoints, int nCount) {
    Record("PolyBezier", {Points(lpPoints, nCount)});
    return !m_execute || CDC::PolyBezier(lpPoints, nCount);
}

BOOL RecordingDC::Rectangle(int x1, int y1, int x2, int y2) {
    Record("Rectangle", {Num(x1), Num(y1), Num(x2), Num(y2)});
    return !m_execute || CDC::Rectangle(x1, y1, x2, y2);
}

BOOL RecordingDC::RoundRect(int x1, int y1, int x2, int y2, int x3, int y3) {
    Record("RoundRect", {Num(x1), Num(y1), Num(x2), Num(y2), Num(x3), Num(y3)});
    return !m_execute || CDC::RoundRect(x1, y1, x2, y2, x3, y3);
}

BOOL RecordingDC::Ellipse(int x1, int y1, int x2, int y2) {
    Record("Ellipse", {Num(x1), Num(y1), Num(x2), Num(y2)});
    return !m_execute || CDC::Ellipse(x1, y1, x2, y2);
}

BOOL RecordingDC::Chord(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) {
    Record("Chord", {Num(x1), Num(y1), Num(x2), Num(y2), Num(x3), Num(y3), Num(x4), Num(y4)});
    return !m_execute || CDC::Chord(x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL RecordingDC::Pie(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) {
    Record("Pie", {Num(x1), Num(y1), Num(x2), Num(y2), Num(x3), Num(y3), Num(x4), Num(y4)});
    return !m_execute || CDC::Pie(x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL RecordingDC::Polygon(const POINT* lpPoints, int nCount) {
    Record("Polygon", {Points(lpPoints, nCount)});
    return !m_execute || CDC::Polygon(lpPoints, nCount);
}

BOOL RecordingDC::PolyPolygon(const POINT* lpPoints, const int* lpPolyCounts, int nCount) {
    Record("PolyPolygon", {PolyPoints(lpPoints, lpPolyCounts, nCount)});
    return !m_execute || CDC::PolyPolygon(lpPoints, lpPolyCounts, nCount);
}

void RecordingDC::FillRect(LPCRECT lpRect, CBrush* pBrush) {
    Record("FillRect", {Rect(lpRect), Describe(pBrush)});
    if (m_execute) {
        CDC::FillRect(lpRect, pBrush);
    }
}

void RecordingDC::FrameRect(LPCRECT lpRect, CBrush* pBrush) {
    Record("FrameRect", {Rect(lpRect), Describe(pBrush)});
    if (m_execute) {
        CDC::FrameRect(lpRect, pBrush);
    }
}

void RecordingDC::InvertRect(LPCRECT lpRect) {
    Record("InvertRect", {Rect(lpRect)});
    if (m_execute) {
        CDC::InvertRect(lpRect);
    }
}

void RecordingDC::FillSolidRect(LPCRECT lpRect, COLORREF clr) {
    Record("FillSolidRect", {Rect(lpRect), Hex(clr)});
    if (m_execute) {
        CDC::FillSolidRect(lpRect, clr);
    }
}

BOOL RecordingDC::FillRgn(CRgn* pRgn, CBrush* pBrush) {
    Record("FillRgn", {Describe(pRgn), Describe(pBrush)});
    return !m_execute || CDC::FillRgn(pRgn, pBrush);
}

BOOL RecordingDC::FrameRgn(CRgn* pRgn, CBrush* pBrush, int nWidth, int nHeight) {
    Record("FrameRgn", {Describe(pRgn), Describe(pBrush), Num(nWidth), Num(nHeight)});
    return !m_execute || CDC::FrameRgn(pRgn, pBrush, nWidth, nHeight);
}

BOOL RecordingDC::InvertRgn(CRgn* pRgn) {
    Record("InvertRgn", {Describe(pRgn)});
    return !m_execute || CDC::InvertRgn(pRgn);
}

BOOL RecordingDC::PaintRgn(CRgn* pRgn) {
    Record("PaintRgn", {Describe(pRgn)});
    return !m_execute || CDC::PaintRgn(pRgn);
}

void RecordingDC::DrawFocusRect(LPCRECT lpRect) {
    Record("DrawFocusRect", {Rect(lpRect)});
    if (m_execute) {
        CDC::DrawFocusRect(lpRect);
    }
}

BOOL RecordingDC::DrawIcon(int x, int y, HICON hIcon) {
    Record("DrawIcon", {Num(x), Num(y), "icon"});
    return !m_execute || CDC::DrawIcon(x, y, hIcon);
}

BOOL RecordingDC::DrawEdge(LPRECT lpRect, UINT nEdge, UINT nFlags) {
    Record("DrawEdge", {Rect(lpRect), Num(nEdge), Num(nFlags)});
    return !m_execute || CDC::DrawEdge(lpRect, nEdge, nFlags);
}

BOOL RecordingDC::DrawFrameControl(LPRECT lpRect, UINT nType, UINT nState) {
    Record("DrawFrameControl", {Rect(lpRect), Num(nType), Num(nState)});
    return !m_execute || CDC::DrawFrameControl(lpRect, nType, nState);
}

BOOL RecordingDC::FloodFill(int x, int y, COLORREF crColor) {
    Record("FloodFill", {Num(x), Num(y), Hex(crColor)});
    return !m_execute || CDC::FloodFill(x, y, crColor);
}

BOOL RecordingDC::ExtFloodFill(int x, int y, COLORREF crColor, UINT nFillType) {
    Record("ExtFloodFill", {Num(x), Num(y), Hex(crColor), Num(nFillType)});
    return !m_execute || CDC::ExtFloodFill(x, y, crColor, nFillType);
}

BOOL RecordingDC::PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop) {
    Record("PatBlt", {Num(x), Num(y), Num(nWidth), Num(nHeight), Hex(dwRop)});
    return !m_execute || CDC::PatBlt(x, y, nWidth, nHeight, dwRop);
}

BOOL RecordingDC::BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop) {
    Record("BitBlt", {Num(x), Num(y), Num(nWidth), Num(nHeight), "source", Num(xSrc), Num(ySrc), Hex(dwRop)});
    return !m_execute || CDC::BitBlt(x, y, nWidth, nHeight, pSrcDC, xSrc, ySrc, dwRop);
}

BOOL RecordingDC::StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                             int nSrcHeight, DWORD dwRop) {
    Record("StretchBlt", {Num(x), Num(y), Num(nWidth), Num(nHeight), "source", Num(xSrc), Num(ySrc), Num(nSrcWidth),
                          Num(nSrcHeight), Hex(dwRop)});
    return !m_execute || CDC::StretchBlt(x, y, nWidth, nHeight, pSrcDC, xSrc, ySrc, nSrcWidth, nSrcHeight, dwRop);
}

COLORREF RecordingDC::SetPixel(int x, int y, COLORREF crColor) {
    Record("SetPixel", {Num(x), Num(y), Hex(crColor)});
    return m_execute ? CDC::SetPixel(x, y, crColor) : crColor;
}

BOOL RecordingDC::SetPixelV(int x, int y, COLORREF crColor) {
    Record("SetPixelV", {Num(x), Num(y), Hex(crColor)});
    return !m_execute || CDC::SetPixelV(x, y, crColor);
}

BOOL RecordingDC::TextOut(int x, int y, LPCTSTR lpszString, int nCount) {
    Record("TextOut", {Num(x), Num(y), Text(lpszString, static_cast<int>(nCount))});
    return !m_execute || CDC::TextOut(x, y, lpszString, nCount);
}

BOOL RecordingDC::ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString, UINT nCount,
                             const int* lpDxWidths) {
    Record("ExtTextOut", {Num(x), Num(y), Num(nOptions), Rect(lpRect), Text(lpszString, static_cast<int>(nCount)),
                          Numbers(lpDxWidths, static_cast<int>(nCount))});
    return !m_execute || CDC::ExtTextOut(x, y, nOptions, lpRect, lpszString, nCount, lpDxWidths);
}

CSize RecordingDC::TabbedTextOut(int x, int y, LPCTSTR lpszString, int nCount, int nTabPositions,
                                 const int* lpnTabStopPositions, int nTabOrigin) {
    Record("TabbedTextOut", {Num(x), Num(y), Text(lpszString, static_cast<int>(nCount)), Num(nTabPositions),
                             Numbers(lpnTabStopPositions, nTabPositions), Num(nTabOrigin)});
    return m_execute ? CDC::TabbedTextOut(x, y, lpszString, nCount, nTabPositions, lpnTabStopPositions, nTabOrigin)
                     : CSize(0, 0);
}

int RecordingDC::DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat) {
    Record("DrawText", {Text(lpszString, static_cast<int>(nCount)), Rect(lpRect), Num(nFormat)});
    return m_execute ? CDC::DrawText(lpszString, nCount, lpRect, nFormat) : 1;
}

BOOL RecordingDC::BeginPath() {
    Record("BeginPath", {});
    return !m_execute || CDC::BeginPath();
}

BOOL RecordingDC::EndPath() {
    Record("EndPath", {});
    return !m_execute || CDC::EndPath();
}

BOOL RecordingDC::AbortPath() {
    Record("AbortPath", {});
    return !m_execute || CDC::AbortPath();
}

BOOL RecordingDC::CloseFigure() {
    Record("CloseFigure", {});
    return !m_execute || CDC::CloseFigure();
}

BOOL RecordingDC::StrokePath() {
    Record("StrokePath", {});
    return !m_execute || CDC::StrokePath();
}

BOOL RecordingDC::FillPath() {
    Record("FillPath", {});
    return !m_execute || CDC::FillPath();
}

BOOL RecordingDC::StrokeAndFillPath() {
    Record("StrokeAndFillPath", {});
    return !m_execute || CDC::StrokeAndFillPath();
}

int RecordingDC::StartDoc(LPDOCINFO) {
    Record("StartDoc", {"document"});
    return 1; // a memory context prints nothing
}

int RecordingDC::StartPage() {
    Record("StartPage", {});
    return 1; // a memory context prints nothing
}

int RecordingDC::EndPage() {
    Record("EndPage", {});
    return 1; // a memory context prints nothing
}

int RecordingDC::EndDoc() {
    Record("EndDoc", {});
    return 1; // a memory context prints nothing
}

int RecordingDC::AbortDoc() {
    Record("AbortDoc", {});
    return 1; // a memory context prints nothing
}

// --- comparing ---------------------------------------------------------------------------------------------------

testing::AssertionResult SameCalls(const std::vector<std::string>& expected, const std::vector<std::string>& actual) {
    if (expected == actual) {
        return testing::AssertionSuccess();
    }
    const size_t shorter = expected.size() < actual.size() ? expected.size() : actual.size();
    size_t head = 0, tail = 0;
    while (head < shorter && expected[head] == actual[head]) {
        ++head;
    }
    while (tail < shorter - head && expected[expected.size() - 1 - tail] == actual[actual.size() - 1 - tail]) {
        ++tail;
    }
    auto failure = testing::AssertionFailure();
    failure << "calls differ from line " << head + 1 << " (" << expected.size() << " expected, " << actual.size()
            << " made):\n";
    for (size_t i = head > 3 ? head - 3 : 0; i < head; ++i) {
        failure << "  " << expected[i] << "\n";
    }
    for (size_t i = head; i < expected.size() - tail; ++i) {
        failure << "- " << expected[i] << "\n";
    }
    for (size_t i = head; i < actual.size() - tail; ++i) {
        failure << "+ " << actual[i] << "\n";
    }
    for (size_t i = expected.size() - tail; i < expected.size() && i < expected.size() - tail + 3; ++i) {
        failure << "  " << expected[i] << "\n";
    }
    return failure;
}
