// Device contexts: lines, figures, filling, pixels, text, paths and printing.
// Layer 1: afx.
#include "DCRange.h"
#include "DCText.h"
#include "ThreadState.h"

// --- lines -------------------------------------------------------------------------------------------------------

CPoint CDC::MoveTo(int x, int y) {
    m_bFar = AfxIsFar(x) || AfxIsFar(y);
    if (!AfxIsPlainMapping(m_hDC)) {
        AfxNoteMove(m_hDC, x, y);
    }
    POINT old = {};
    if (m_hDC != nullptr && m_hDC != m_hAttribDC) {
        ::MoveToEx(m_hDC, x, y, &old);
    }
    if (m_hAttribDC != nullptr) {
        ::MoveToEx(m_hAttribDC, x, y, &old);
    }
    return CPoint(static_cast<int>(old.x), static_cast<int>(old.y));
}

bool CDC::IsStrokeNear() {
    if (!AfxIsPlainMapping(m_hDC)) {
        return false;
    }
    // Asked once: another pen is selected through SelectObject, which sets the flag again.
    if (m_bMaybeWide) {
        m_bMaybeWide = AfxIsPenWide(m_hDC);
    }
    return !m_bMaybeWide;
}

BOOL CDC::LineTo(int x, int y) {
    // The attribute context keeps the current position too.
    if (m_hAttribDC != nullptr && m_hDC != m_hAttribDC) {
        ::MoveToEx(m_hAttribDC, x, y, nullptr);
    }
    const bool toFar = AfxIsFar(x) || AfxIsFar(y);
    const bool reaches = m_bFar || toFar;
    m_bFar = toFar;
    return !reaches && IsStrokeNear() ? ::LineTo(m_hDC, x, y) : AfxLineToFar(m_hDC, x, y);
}

BOOL CDC::Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) {
    if (!AfxIsFar(x1) && !AfxIsFar(y1) && !AfxIsFar(x2) && !AfxIsFar(y2) && IsStrokeNear()) {
        return ::Arc(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
    }
    return AfxArcFar(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL CDC::Arc(LPCRECT lpRect, POINT ptStart, POINT ptEnd) {
    return Arc(static_cast<int>(lpRect->left), static_cast<int>(lpRect->top), static_cast<int>(lpRect->right),
               static_cast<int>(lpRect->bottom), static_cast<int>(ptStart.x), static_cast<int>(ptStart.y),
               static_cast<int>(ptEnd.x), static_cast<int>(ptEnd.y));
}

BOOL CDC::ArcTo(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) {
    return ::ArcTo(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL CDC::AngleArc(int x, int y, int nRadius, float fStartAngle, float fSweepAngle) {
    return ::AngleArc(m_hDC, x, y, static_cast<DWORD>(nRadius), fStartAngle, fSweepAngle);
}

BOOL CDC::Polyline(const POINT* lpPoints, int nCount) {
    return ::Polyline(m_hDC, lpPoints, nCount);
}

BOOL CDC::PolylineTo(const POINT* lpPoints, int nCount) {
    return ::PolylineTo(m_hDC, lpPoints, static_cast<DWORD>(nCount));
}

BOOL CDC::PolyBezier(const POINT* lpPoints, int nCount) {
    return ::PolyBezier(m_hDC, lpPoints, static_cast<DWORD>(nCount));
}

CPoint CDC::GetCurrentPosition() const {
    POINT point = {};
    ::GetCurrentPositionEx(m_hAttribDC, &point);
    return CPoint(static_cast<int>(point.x), static_cast<int>(point.y));
}

// --- closed figures ----------------------------------------------------------------------------------------------

BOOL CDC::Rectangle(int x1, int y1, int x2, int y2) {
    return ::Rectangle(m_hDC, x1, y1, x2, y2);
}

BOOL CDC::Rectangle(LPCRECT lpRect) {
    return Rectangle(static_cast<int>(lpRect->left), static_cast<int>(lpRect->top), static_cast<int>(lpRect->right),
                     static_cast<int>(lpRect->bottom));
}

BOOL CDC::RoundRect(int x1, int y1, int x2, int y2, int x3, int y3) {
    return ::RoundRect(m_hDC, x1, y1, x2, y2, x3, y3);
}

BOOL CDC::RoundRect(LPCRECT lpRect, POINT point) {
    return RoundRect(static_cast<int>(lpRect->left), static_cast<int>(lpRect->top), static_cast<int>(lpRect->right),
                     static_cast<int>(lpRect->bottom), static_cast<int>(point.x), static_cast<int>(point.y));
}

BOOL CDC::Ellipse(int x1, int y1, int x2, int y2) {
    if (!AfxIsFar(x1) && !AfxIsFar(y1) && !AfxIsFar(x2) && !AfxIsFar(y2) && IsStrokeNear()) {
        return ::Ellipse(m_hDC, x1, y1, x2, y2);
    }
    return AfxEllipseFar(m_hDC, x1, y1, x2, y2);
}

BOOL CDC::Ellipse(LPCRECT lpRect) {
    return Ellipse(static_cast<int>(lpRect->left), static_cast<int>(lpRect->top), static_cast<int>(lpRect->right),
                   static_cast<int>(lpRect->bottom));
}

BOOL CDC::Chord(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) {
    return ::Chord(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL CDC::Pie(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) {
    return ::Pie(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL CDC::Polygon(const POINT* lpPoints, int nCount) {
    return ::Polygon(m_hDC, lpPoints, nCount);
}

BOOL CDC::PolyPolygon(const POINT* lpPoints, const int* lpPolyCounts, int nCount) {
    return ::PolyPolygon(m_hDC, lpPoints, lpPolyCounts, nCount);
}

// --- filling -----------------------------------------------------------------------------------------------------

void CDC::FillRect(LPCRECT lpRect, CBrush* pBrush) {
    ::FillRect(m_hDC, lpRect, static_cast<HBRUSH>(AfxHandleOf(pBrush)));
}

void CDC::FrameRect(LPCRECT lpRect, CBrush* pBrush) {
    ::FrameRect(m_hDC, lpRect, static_cast<HBRUSH>(AfxHandleOf(pBrush)));
}

void CDC::InvertRect(LPCRECT lpRect) {
    ::InvertRect(m_hDC, lpRect);
}

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr) {
    ::SetBkColor(m_hDC, clr);
    if (m_hAttribDC != nullptr && m_hAttribDC != m_hDC) {
        ::SetBkColor(m_hAttribDC, clr);
    }
    ::ExtTextOut(m_hDC, 0, 0, ETO_OPAQUE, lpRect, nullptr, 0, nullptr);
}

void CDC::FillSolidRect(int x, int y, int cx, int cy, COLORREF clr) {
    const RECT rect = {x, y, x + cx, y + cy};
    FillSolidRect(&rect, clr);
}

void CDC::Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight) {
    const int x = static_cast<int>(lpRect->left), y = static_cast<int>(lpRect->top);
    const int cx = static_cast<int>(lpRect->right) - x, cy = static_cast<int>(lpRect->bottom) - y;
    FillSolidRect(x, y, cx - 1, 1, clrTopLeft);
    FillSolidRect(x, y, 1, cy - 1, clrTopLeft);
    FillSolidRect(x + cx - 1, y, 1, cy, clrBottomRight);
    FillSolidRect(x, y + cy - 1, cx, 1, clrBottomRight);
}

BOOL CDC::FillRgn(CRgn* pRgn, CBrush* pBrush) {
    return ::FillRgn(m_hDC, static_cast<HRGN>(AfxHandleOf(pRgn)), static_cast<HBRUSH>(AfxHandleOf(pBrush)));
}

BOOL CDC::FrameRgn(CRgn* pRgn, CBrush* pBrush, int nWidth, int nHeight) {
    return ::FrameRgn(m_hDC, static_cast<HRGN>(AfxHandleOf(pRgn)), static_cast<HBRUSH>(AfxHandleOf(pBrush)), nWidth,
                      nHeight);
}

BOOL CDC::InvertRgn(CRgn* pRgn) {
    return ::InvertRgn(m_hDC, static_cast<HRGN>(AfxHandleOf(pRgn)));
}

BOOL CDC::PaintRgn(CRgn* pRgn) {
    return ::PaintRgn(m_hDC, static_cast<HRGN>(AfxHandleOf(pRgn)));
}

void CDC::DrawFocusRect(LPCRECT lpRect) {
    ::DrawFocusRect(m_hDC, lpRect);
}

BOOL CDC::DrawIcon(int x, int y, HICON hIcon) {
    return ::DrawIcon(m_hDC, x, y, hIcon);
}

BOOL CDC::DrawEdge(LPRECT lpRect, UINT nEdge, UINT nFlags) {
    return ::DrawEdge(m_hDC, lpRect, nEdge, nFlags);
}

BOOL CDC::DrawFrameControl(LPRECT lpRect, UINT nType, UINT nState) {
    return ::DrawFrameControl(m_hDC, lpRect, nType, nState);
}

BOOL CDC::FloodFill(int x, int y, COLORREF crColor) {
    return ::FloodFill(m_hDC, x, y, crColor);
}

BOOL CDC::ExtFloodFill(int x, int y, COLORREF crColor, UINT nFillType) {
    return ::ExtFloodFill(m_hDC, x, y, crColor, nFillType);
}

// --- pixels ------------------------------------------------------------------------------------------------------

BOOL CDC::PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop) {
    return ::PatBlt(m_hDC, x, y, nWidth, nHeight, dwRop);
}

BOOL CDC::BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop) {
    return ::BitBlt(m_hDC, x, y, nWidth, nHeight, AfxHandleOf(pSrcDC), xSrc, ySrc, dwRop);
}

BOOL CDC::StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                     int nSrcHeight, DWORD dwRop) {
    return ::StretchBlt(m_hDC, x, y, nWidth, nHeight, AfxHandleOf(pSrcDC), xSrc, ySrc, nSrcWidth, nSrcHeight, dwRop);
}

COLORREF CDC::SetPixel(int x, int y, COLORREF crColor) {
    return ::SetPixel(m_hDC, x, y, crColor);
}

BOOL CDC::SetPixelV(int x, int y, COLORREF crColor) {
    return ::SetPixelV(m_hDC, x, y, crColor);
}

COLORREF CDC::SetPixel(POINT point, COLORREF crColor) {
    return SetPixel(static_cast<int>(point.x), static_cast<int>(point.y), crColor);
}

COLORREF CDC::GetPixel(int x, int y) const {
    return ::GetPixel(m_hDC, x, y);
}

// --- text --------------------------------------------------------------------------------------------------------

bool CDC::IsTextFar() {
    if (!AfxIsPlainMapping(m_hDC)) {
        return AfxIsFontLarge(m_hDC);
    }
    // Asked once: another font is selected through SelectObject, which sets the flag again.
    if (m_bMaybeLarge) {
        m_bMaybeLarge = AfxIsFontLarge(m_hDC);
    }
    return m_bMaybeLarge;
}

BOOL CDC::TextOut(int x, int y, LPCTSTR lpszString, int nCount) {
    if (nCount > 0 && IsTextFar() && AfxIsTextFar(m_hDC, 0, lpszString, static_cast<UINT>(nCount))) {
        return AfxTextOutFar(m_hDC, x, y, 0, nullptr, lpszString, static_cast<UINT>(nCount), nullptr);
    }
    return ::TextOut(m_hDC, x, y, lpszString, nCount);
}

BOOL CDC::TextOut(int x, int y, const CString& str) {
    return TextOut(x, y, static_cast<LPCTSTR>(str), str.GetLength());
}

BOOL CDC::ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString, UINT nCount,
                     const int* lpDxWidths) {
    if (nCount > 0 && IsTextFar() && AfxIsTextFar(m_hDC, nOptions, lpszString, nCount)) {
        return AfxTextOutFar(m_hDC, x, y, nOptions, lpRect, lpszString, nCount, lpDxWidths);
    }
    return ::ExtTextOut(m_hDC, x, y, nOptions, lpRect, lpszString, nCount, lpDxWidths);
}

BOOL CDC::ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, const CString& str, const int* lpDxWidths) {
    return ExtTextOut(x, y, nOptions, lpRect, static_cast<LPCTSTR>(str), static_cast<UINT>(str.GetLength()),
                      lpDxWidths);
}

CSize CDC::TabbedTextOut(int x, int y, LPCTSTR lpszString, int nCount, int nTabPositions,
                         const int* lpnTabStopPositions, int nTabOrigin) {
    const LONG extent =
        ::TabbedTextOut(m_hDC, x, y, lpszString, nCount, nTabPositions, lpnTabStopPositions, nTabOrigin);
    return CSize(LOWORD(extent), HIWORD(extent));
}

int CDC::DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat) {
    return ::DrawText(m_hDC, lpszString, nCount, lpRect, nFormat);
}

int CDC::DrawText(const CString& str, LPRECT lpRect, UINT nFormat) {
    return DrawText(static_cast<LPCTSTR>(str), str.GetLength(), lpRect, nFormat);
}

CSize CDC::GetTextExtent(LPCTSTR lpszString, int nCount) const {
    SIZE size = {};
    ::GetTextExtentPoint32(m_hAttribDC, lpszString, nCount, &size);
    return size;
}

CSize CDC::GetTextExtent(const CString& str) const {
    return GetTextExtent(static_cast<LPCTSTR>(str), str.GetLength());
}

CSize CDC::GetOutputTextExtent(LPCTSTR lpszString, int nCount) const {
    SIZE size = {};
    ::GetTextExtentPoint32(m_hDC, lpszString, nCount, &size);
    return size;
}

BOOL CDC::GetTextMetrics(LPTEXTMETRIC lpMetrics) const {
    return ::GetTextMetrics(m_hAttribDC, lpMetrics);
}

UINT CDC::GetOutlineTextMetrics(UINT cbData, LPOUTLINETEXTMETRIC lpotm) const {
    return ::GetOutlineTextMetrics(m_hAttribDC, cbData, lpotm);
}

int CDC::GetTextFace(int nCount, LPTSTR lpszFacename) const {
    return ::GetTextFace(m_hAttribDC, nCount, lpszFacename);
}

int CDC::GetTextFace(CString& rString) const {
    TCHAR face[LF_FACESIZE] = {};
    const int length = ::GetTextFace(m_hAttribDC, LF_FACESIZE, face);
    rString = face;
    return length;
}

BOOL CDC::GetCharWidth(UINT nFirstChar, UINT nLastChar, LPINT lpBuffer) const {
    return ::GetCharWidth32(m_hAttribDC, nFirstChar, nLastChar, lpBuffer);
}

// --- paths -------------------------------------------------------------------------------------------------------

BOOL CDC::BeginPath() {
    return ::BeginPath(m_hDC);
}

BOOL CDC::EndPath() {
    return ::EndPath(m_hDC);
}

BOOL CDC::AbortPath() {
    return ::AbortPath(m_hDC);
}

BOOL CDC::CloseFigure() {
    return ::CloseFigure(m_hDC);
}

BOOL CDC::StrokePath() {
    return ::StrokePath(m_hDC);
}

BOOL CDC::FillPath() {
    return ::FillPath(m_hDC);
}

BOOL CDC::StrokeAndFillPath() {
    return ::StrokeAndFillPath(m_hDC);
}

// --- printing ----------------------------------------------------------------------------------------------------

int CDC::StartDoc(LPDOCINFO lpDocInfo) {
    return ::StartDoc(m_hDC, lpDocInfo);
}

int CDC::StartPage() {
    return ::StartPage(m_hDC);
}

int CDC::EndPage() {
    return ::EndPage(m_hDC);
}

int CDC::EndDoc() {
    return ::EndDoc(m_hDC);
}

int CDC::AbortDoc() {
    return ::AbortDoc(m_hDC);
}
