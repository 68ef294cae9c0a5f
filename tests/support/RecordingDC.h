// A device context that writes down every drawing call as a line of text, and carries it out on a bitmap of its own.
// Layer 16: tests.
#pragma once

#include <afxwin.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Lines look like `MoveTo(1,2)`, `SetROP2(6)`, `TextOut(1,2,"text")` (UTF-8), `PatBlt(0,0,10,10,0x00F00021)`. A
// selected object is described by its attributes: `SelectObject(pen style=2 width=1 color=0x00FF0000)`; the object that
// the context had from the start is `SelectObject(pen default)`. Colours are 0x00BBGGRR.
class RecordingDC : public CDC {
public:
    explicit RecordingDC(int width = 400, int height = 300, COLORREF background = RGB(255, 255, 255));
    ~RecordingDC() override;

    const std::vector<std::string>& Calls() const { return m_calls; }
    void Clear() { m_calls.clear(); }
    // FALSE: drawing is only written down. Selections, modes, mapping and clipping take effect all the same.
    void SetExecution(bool execute) { m_execute = execute; }
    // Also writes down GetROP2 and GetClipBox.
    void SetRecordQueries(bool record) { m_recordQueries = record; }
    void SetPrinting(bool printing) { m_bPrinting = printing; }
    // The clip box that GetClipBox gives, in device pixels; not written down.
    void SetClip(const RECT& box);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    // The bitmap's pixel in device coordinates, whatever mapping and clip are set.
    COLORREF Pixel(int x, int y) const;
    // Every pixel, row by row from the top, 0x00RRGGBB: for comparisons.
    std::vector<DWORD> Pixels() const;

    int GetClipBox(LPRECT lpRect) const override;
    int GetROP2() const override;

    using CDC::Arc;
    using CDC::DrawText;
    using CDC::Ellipse;
    using CDC::ExcludeClipRect;
    using CDC::ExtTextOut;
    using CDC::FillSolidRect;
    using CDC::IntersectClipRect;
    using CDC::LineTo;
    using CDC::MoveTo;
    using CDC::Rectangle;
    using CDC::RoundRect;
    using CDC::SelectClipRgn;
    using CDC::SelectObject;
    using CDC::SetBrushOrg;
    using CDC::SetPixel;
    using CDC::SetViewportExt;
    using CDC::SetViewportOrg;
    using CDC::SetWindowExt;
    using CDC::SetWindowOrg;
    using CDC::TextOut;

    int SaveDC() override;
    BOOL RestoreDC(int nSavedDC) override;
    CGdiObject* SelectStockObject(int nIndex) override;
    CPen* SelectObject(CPen* pPen) override;
    CBrush* SelectObject(CBrush* pBrush) override;
    CFont* SelectObject(CFont* pFont) override;
    CBitmap* SelectObject(CBitmap* pBitmap) override;
    int SelectObject(CRgn* pRgn) override;
    COLORREF SetBkColor(COLORREF crColor) override;
    int SetBkMode(int nBkMode) override;
    int SetPolyFillMode(int nPolyFillMode) override;
    int SetROP2(int nDrawMode) override;
    int SetStretchBltMode(int nStretchMode) override;
    COLORREF SetTextColor(COLORREF crColor) override;
    UINT SetTextAlign(UINT nFlags) override;
    int SetTextCharacterExtra(int nCharExtra) override;
    int SetArcDirection(int nArcDirection) override;
    CPoint SetBrushOrg(int x, int y) override;
    int SetGraphicsMode(int nMode) override;
    BOOL SetWorldTransform(const XFORM* pXform) override;
    int SetMapMode(int nMapMode) override;
    CPoint SetViewportOrg(int x, int y) override;
    CPoint OffsetViewportOrg(int nWidth, int nHeight) override;
    CSize SetViewportExt(int cx, int cy) override;
    CPoint SetWindowOrg(int x, int y) override;
    CPoint OffsetWindowOrg(int nWidth, int nHeight) override;
    CSize SetWindowExt(int cx, int cy) override;
    int SelectClipRgn(CRgn* pRgn) override;
    int SelectClipRgn(CRgn* pRgn, int nMode) override;
    int ExcludeClipRect(int x1, int y1, int x2, int y2) override;
    int IntersectClipRect(int x1, int y1, int x2, int y2) override;
    int OffsetClipRgn(int x, int y) override;
    CPoint MoveTo(int x, int y) override;
    BOOL LineTo(int x, int y) override;
    BOOL Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) override;
    BOOL ArcTo(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) override;
    BOOL AngleArc(int x, int y, int nRadius, float fStartAngle, float fSweepAngle) override;
    BOOL Polyline(const POINT* lpPoints, int nCount) override;
    BOOL PolylineTo(const POINT* lpPoints, int nCount) override;
    BOOL PolyBezier(const POINT* lpPoints, int nCount) override;
    BOOL Rectangle(int x1, int y1, int x2, int y2) override;
    BOOL RoundRect(int x1, int y1, int x2, int y2, int x3, int y3) override;
    BOOL Ellipse(int x1, int y1, int x2, int y2) override;
    BOOL Chord(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) override;
    BOOL Pie(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) override;
    BOOL Polygon(const POINT* lpPoints, int nCount) override;
    BOOL PolyPolygon(const POINT* lpPoints, const int* lpPolyCounts, int nCount) override;
    void FillRect(LPCRECT lpRect, CBrush* pBrush) override;
    void FrameRect(LPCRECT lpRect, CBrush* pBrush) override;
    void InvertRect(LPCRECT lpRect) override;
    void FillSolidRect(LPCRECT lpRect, COLORREF clr) override;
    BOOL FillRgn(CRgn* pRgn, CBrush* pBrush) override;
    BOOL FrameRgn(CRgn* pRgn, CBrush* pBrush, int nWidth, int nHeight) override;
    BOOL InvertRgn(CRgn* pRgn) override;
    BOOL PaintRgn(CRgn* pRgn) override;
    void DrawFocusRect(LPCRECT lpRect) override;
    BOOL DrawIcon(int x, int y, HICON hIcon) override;
    BOOL DrawEdge(LPRECT lpRect, UINT nEdge, UINT nFlags) override;
    BOOL DrawFrameControl(LPRECT lpRect, UINT nType, UINT nState) override;
    BOOL FloodFill(int x, int y, COLORREF crColor) override;
    BOOL ExtFloodFill(int x, int y, COLORREF crColor, UINT nFillType) override;
    BOOL PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop) override;
    BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop) override;
    BOOL StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                    int nSrcHeight, DWORD dwRop) override;
    COLORREF SetPixel(int x, int y, COLORREF crColor) override;
    BOOL SetPixelV(int x, int y, COLORREF crColor) override;
    BOOL TextOut(int x, int y, LPCTSTR lpszString, int nCount) override;
    BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString, UINT nCount,
                    const int* lpDxWidths) override;
    CSize TabbedTextOut(int x, int y, LPCTSTR lpszString, int nCount, int nTabPositions, const int* lpnTabStopPositions,
                        int nTabOrigin) override;
    int DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat) override;
    BOOL BeginPath() override;
    BOOL EndPath() override;
    BOOL AbortPath() override;
    BOOL CloseFigure() override;
    BOOL StrokePath() override;
    BOOL FillPath() override;
    BOOL StrokeAndFillPath() override;
    int StartDoc(LPDOCINFO lpDocInfo) override;
    int StartPage() override;
    int EndPage() override;
    int EndDoc() override;
    int AbortDoc() override;

private:
    void Record(const char* name, const std::vector<std::string>& arguments) const;
    std::string Describe(const CPen* pen) const;
    std::string Describe(const CBrush* brush) const;
    std::string Describe(const CFont* font) const;
    std::string Describe(const CBitmap* bitmap) const;
    std::string Describe(const CRgn* region) const;

    int m_width;
    int m_height;
    bool m_execute = true;
    bool m_recordQueries = false;
    HBITMAP m_bitmap = nullptr;
    DWORD* m_bits = nullptr;
    HGDIOBJ m_defaults[4] = {}; // pen, brush, font, bitmap of the start
    mutable std::vector<std::string> m_calls;
};

// For EXPECT_TRUE: the two lists of calls agree; else what differs, expected lines with '-', actual ones with '+'.
testing::AssertionResult SameCalls(const std::vector<std::string>& expected, const std::vector<std::string>& actual);
