// Device contexts. Included by afxwin.h. Functions that set or draw something are virtual, which is the layer's one
// extension: a class that derives from CDC can record what is drawn.
// Classes: CDC.
// Layer 1: afx.
#pragma once

#include "afxgdi_.h"

class NRAFX_API CDC : public CObject {
    DECLARE_DYNCREATE(CDC)
public:
    CDC() : m_hDC(nullptr), m_hAttribDC(nullptr), m_bPrinting(FALSE) {}
    virtual ~CDC();

    HDC m_hDC;        // takes the output
    HDC m_hAttribDC;  // answers the queries; usually the same
    BOOL m_bPrinting; // set for a printer

    operator HDC() const { return m_hDC; }
    HDC GetSafeHdc() const { return m_hDC; }
    BOOL IsPrinting() const { return m_bPrinting; }
    // The object that owns the handle, or a temporary one that lives until the thread is next idle.
    static CDC* PASCAL FromHandle(HDC hDC);
    static void PASCAL DeleteTempMap();
    class CWnd* GetWindow() const;
    // --- making and attaching
    BOOL Attach(HDC hDC);
    HDC Detach();
    virtual void SetAttribDC(HDC hDC);
    virtual void SetOutputDC(HDC hDC);
    virtual void ReleaseAttribDC();
    virtual void ReleaseOutputDC();
    BOOL CreateDC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData);
    BOOL CreateIC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData);
    BOOL CreateCompatibleDC(CDC* pDC);
    BOOL DeleteDC();
    virtual int SaveDC();
    virtual BOOL RestoreDC(int nSavedDC);
    // --- selected objects. Each gives the object selected before, null when GDI refuses.
    virtual CGdiObject* SelectStockObject(int nIndex);
    virtual CPen* SelectObject(CPen* pPen);
    virtual CBrush* SelectObject(CBrush* pBrush);
    virtual CFont* SelectObject(CFont* pFont);
    virtual CBitmap* SelectObject(CBitmap* pBitmap);
    virtual int SelectObject(CRgn* pRgn); // sets the clip region and gives its kind
    CGdiObject* SelectObject(CGdiObject* pObject);
    CPalette* SelectPalette(CPalette* pPalette, BOOL bForceBackground);
    UINT RealizePalette();
    CPen* GetCurrentPen() const;
    CBrush* GetCurrentBrush() const;
    CFont* GetCurrentFont() const;
    CBitmap* GetCurrentBitmap() const;
    // --- modes
    virtual COLORREF SetBkColor(COLORREF crColor);
    virtual int SetBkMode(int nBkMode);
    virtual int SetPolyFillMode(int nPolyFillMode);
    virtual int SetROP2(int nDrawMode);
    virtual int SetStretchBltMode(int nStretchMode);
    virtual COLORREF SetTextColor(COLORREF crColor);
    virtual UINT SetTextAlign(UINT nFlags);
    virtual int SetTextCharacterExtra(int nCharExtra);
    virtual int SetArcDirection(int nArcDirection);
    virtual CPoint SetBrushOrg(int x, int y);
    CPoint SetBrushOrg(POINT point) { return SetBrushOrg(static_cast<int>(point.x), static_cast<int>(point.y)); }
    virtual int SetGraphicsMode(int nMode);
    virtual BOOL SetWorldTransform(const XFORM* pXform);
    COLORREF GetBkColor() const;
    int GetBkMode() const;
    int GetPolyFillMode() const;
    virtual int GetROP2() const;
    int GetStretchBltMode() const;
    COLORREF GetTextColor() const;
    UINT GetTextAlign() const;
    int GetTextCharacterExtra() const;
    int GetArcDirection() const;
    CPoint GetBrushOrg() const;
    COLORREF GetNearestColor(COLORREF crColor) const;
    int GetDeviceCaps(int nIndex) const;
    // --- mapping and clipping
    virtual int SetMapMode(int nMapMode);
    virtual CPoint SetViewportOrg(int x, int y);
    virtual CPoint OffsetViewportOrg(int nWidth, int nHeight);
    virtual CSize SetViewportExt(int cx, int cy);
    virtual CPoint SetWindowOrg(int x, int y);
    virtual CPoint OffsetWindowOrg(int nWidth, int nHeight);
    virtual CSize SetWindowExt(int cx, int cy);
    CPoint SetViewportOrg(POINT point) { return SetViewportOrg(static_cast<int>(point.x), static_cast<int>(point.y)); }
    CPoint SetWindowOrg(POINT point) { return SetWindowOrg(static_cast<int>(point.x), static_cast<int>(point.y)); }
    CSize SetViewportExt(SIZE size) { return SetViewportExt(static_cast<int>(size.cx), static_cast<int>(size.cy)); }
    CSize SetWindowExt(SIZE size) { return SetWindowExt(static_cast<int>(size.cx), static_cast<int>(size.cy)); }
    int GetMapMode() const;
    CPoint GetViewportOrg() const;
    CSize GetViewportExt() const;
    CPoint GetWindowOrg() const;
    CSize GetWindowExt() const;
    void DPtoLP(LPPOINT lpPoints, int nCount = 1) const;
    void DPtoLP(LPRECT lpRect) const;
    void LPtoDP(LPPOINT lpPoints, int nCount = 1) const;
    void LPtoDP(LPRECT lpRect) const;
    virtual int GetClipBox(LPRECT lpRect) const;
    virtual int SelectClipRgn(CRgn* pRgn);
    virtual int SelectClipRgn(CRgn* pRgn, int nMode);
    virtual int ExcludeClipRect(int x1, int y1, int x2, int y2);
    virtual int IntersectClipRect(int x1, int y1, int x2, int y2);
    virtual int OffsetClipRgn(int x, int y);
    int ExcludeClipRect(LPCRECT lpRect);
    int IntersectClipRect(LPCRECT lpRect);
    BOOL PtVisible(int x, int y) const;
    BOOL RectVisible(LPCRECT lpRect) const;
    // --- lines and closed figures
    virtual CPoint MoveTo(int x, int y); // gives the position before
    virtual BOOL LineTo(int x, int y);
    virtual BOOL Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
    virtual BOOL ArcTo(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
    virtual BOOL AngleArc(int x, int y, int nRadius, float fStartAngle, float fSweepAngle);
    virtual BOOL Polyline(const POINT* lpPoints, int nCount);
    virtual BOOL PolylineTo(const POINT* lpPoints, int nCount);
    virtual BOOL PolyBezier(const POINT* lpPoints, int nCount);
    CPoint MoveTo(POINT point) { return MoveTo(static_cast<int>(point.x), static_cast<int>(point.y)); }
    BOOL LineTo(POINT point) { return LineTo(static_cast<int>(point.x), static_cast<int>(point.y)); }
    BOOL Arc(LPCRECT lpRect, POINT ptStart, POINT ptEnd);
    CPoint GetCurrentPosition() const;
    virtual BOOL Rectangle(int x1, int y1, int x2, int y2);
    virtual BOOL RoundRect(int x1, int y1, int x2, int y2, int x3, int y3);
    virtual BOOL Ellipse(int x1, int y1, int x2, int y2);
    virtual BOOL Chord(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
    virtual BOOL Pie(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
    virtual BOOL Polygon(const POINT* lpPoints, int nCount);
    virtual BOOL PolyPolygon(const POINT* lpPoints, const int* lpPolyCounts, int nCount);
    BOOL Rectangle(LPCRECT lpRect);
    BOOL Ellipse(LPCRECT lpRect);
    BOOL RoundRect(LPCRECT lpRect, POINT point);
    // --- filling and pixels
    virtual void FillRect(LPCRECT lpRect, CBrush* pBrush);
    virtual void FrameRect(LPCRECT lpRect, CBrush* pBrush);
    virtual void InvertRect(LPCRECT lpRect);
    virtual void FillSolidRect(LPCRECT lpRect, COLORREF clr); // leaves the background colour at clr
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF clr);
    void Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight);
    virtual BOOL FillRgn(CRgn* pRgn, CBrush* pBrush);
    virtual BOOL FrameRgn(CRgn* pRgn, CBrush* pBrush, int nWidth, int nHeight);
    virtual BOOL InvertRgn(CRgn* pRgn);
    virtual BOOL PaintRgn(CRgn* pRgn);
    virtual void DrawFocusRect(LPCRECT lpRect);
    virtual BOOL DrawIcon(int x, int y, HICON hIcon);
    virtual BOOL DrawEdge(LPRECT lpRect, UINT nEdge, UINT nFlags);
    virtual BOOL DrawFrameControl(LPRECT lpRect, UINT nType, UINT nState);
    virtual BOOL FloodFill(int x, int y, COLORREF crColor);
    virtual BOOL ExtFloodFill(int x, int y, COLORREF crColor, UINT nFillType);
    virtual BOOL PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop);
    virtual BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop);
    virtual BOOL StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                            int nSrcHeight, DWORD dwRop);
    virtual COLORREF SetPixel(int x, int y, COLORREF crColor);
    virtual BOOL SetPixelV(int x, int y, COLORREF crColor);
    COLORREF SetPixel(POINT point, COLORREF crColor);
    COLORREF GetPixel(int x, int y) const;
    COLORREF GetPixel(POINT point) const { return GetPixel(static_cast<int>(point.x), static_cast<int>(point.y)); }
    // --- text. A count of -1 measures the text where the function documents it.
    virtual BOOL TextOut(int x, int y, LPCTSTR lpszString, int nCount);
    virtual BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString, UINT nCount,
                            const int* lpDxWidths);
    virtual CSize TabbedTextOut(int x, int y, LPCTSTR lpszString, int nCount, int nTabPositions,
                                const int* lpnTabStopPositions, int nTabOrigin);
    virtual int DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat);
    BOOL TextOut(int x, int y, const CString& str);
    BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, const CString& str, const int* lpDxWidths);
    int DrawText(const CString& str, LPRECT lpRect, UINT nFormat);
    CSize GetTextExtent(LPCTSTR lpszString, int nCount) const;
    CSize GetTextExtent(const CString& str) const;
    CSize GetOutputTextExtent(LPCTSTR lpszString, int nCount) const;
    BOOL GetTextMetrics(LPTEXTMETRIC lpMetrics) const;
    UINT GetOutlineTextMetrics(UINT cbData, LPOUTLINETEXTMETRIC lpotm) const;
    int GetTextFace(int nCount, LPTSTR lpszFacename) const;
    int GetTextFace(CString& rString) const;
    BOOL GetCharWidth(UINT nFirstChar, UINT nLastChar, LPINT lpBuffer) const;
    // --- paths and printing
    virtual BOOL BeginPath();
    virtual BOOL EndPath();
    virtual BOOL AbortPath();
    virtual BOOL CloseFigure();
    virtual BOOL StrokePath();
    virtual BOOL FillPath();
    virtual BOOL StrokeAndFillPath();
    virtual int StartDoc(LPDOCINFO lpDocInfo);
    virtual int StartPage();
    virtual int EndPage();
    virtual int EndDoc();
    virtual int AbortDoc();

private:
    bool IsStrokeNear(); // near logical coordinates are near on the device, for the pen too
    bool IsTextFar();    // the selected font is larger than the device draws well

    bool m_bFar = false;       // the current position lies beyond 16 bits
    bool m_bMaybeWide = true;  // the selected pen may be wider than GDI draws well
    bool m_bMaybeLarge = true; // and the font larger
};
