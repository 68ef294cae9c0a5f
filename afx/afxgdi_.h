// GDI objects: classes that own a handle of a pen, brush, font, bitmap, region or palette. Included by afxwin.h.
// Constructors of pens and brushes throw a resource exception when GDI refuses; Create functions give FALSE.
// Classes: CGdiObject, CPen, CBrush, CFont, CBitmap, CPalette, CRgn.
// Layer 1: afx.
#pragma once

#include "afx.h"

class CDC;

class NRAFX_API CGdiObject : public CObject {
    DECLARE_DYNCREATE(CGdiObject)
public:
    CGdiObject() : m_hObject(nullptr) {}
    virtual ~CGdiObject();
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;

    HGDIOBJ m_hObject; // owned, except by the temporary objects that FromHandle makes

    operator HGDIOBJ() const { return m_hObject; }
    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    BOOL operator==(const CGdiObject& obj) const { return m_hObject == obj.m_hObject; }
    BOOL operator!=(const CGdiObject& obj) const { return m_hObject != obj.m_hObject; }

    // The object that owns the handle, or a temporary one that exists until the thread is next idle. Where it is never
    // idle, a temporary object is used for another handle some time after its own was freed.
    static CGdiObject* PASCAL FromHandle(HGDIOBJ hObject);
    static void PASCAL DeleteTempMap();

    BOOL Attach(HGDIOBJ hObject);
    HGDIOBJ Detach();
    BOOL DeleteObject();

    int GetObject(int nCount, LPVOID lpObject) const;
    UINT GetObjectType() const;
    BOOL CreateStockObject(int nIndex);
    BOOL UnrealizeObject();
};

class NRAFX_API CPen : public CGdiObject {
    DECLARE_DYNAMIC(CPen)
public:
    CPen() = default;
    CPen(int nPenStyle, int nWidth, COLORREF crColor);
    CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0, const DWORD* lpStyle = nullptr);
    static CPen* PASCAL FromHandle(HPEN hPen);

    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor);
    BOOL CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0,
                   const DWORD* lpStyle = nullptr);
    BOOL CreatePenIndirect(LPLOGPEN lpLogPen);

    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
    int GetLogPen(LOGPEN* pLogPen) const;
    int GetExtLogPen(EXTLOGPEN* pLogPen) const;
};

class NRAFX_API CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)
public:
    CBrush() = default;
    explicit CBrush(COLORREF crColor);
    CBrush(int nIndex, COLORREF crColor);
    explicit CBrush(class CBitmap* pBitmap);
    static CBrush* PASCAL FromHandle(HBRUSH hBrush);

    BOOL CreateSolidBrush(COLORREF crColor);
    BOOL CreateHatchBrush(int nIndex, COLORREF crColor);
    BOOL CreateBrushIndirect(const LOGBRUSH* lpLogBrush);
    BOOL CreatePatternBrush(CBitmap* pBitmap);
    BOOL CreateSysColorBrush(int nIndex);

    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
    int GetLogBrush(LOGBRUSH* pLogBrush) const;
};

class NRAFX_API CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    CFont() = default;
    static CFont* PASCAL FromHandle(HFONT hFont);

    BOOL CreateFontIndirect(const LOGFONT* lpLogFont);
    BOOL CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                    BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision,
                    BYTE nQuality, BYTE nPitchAndFamily, LPCTSTR lpszFacename);
    // Size in tenths of a point, on the device (null: the screen).
    BOOL CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC = nullptr);
    BOOL CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC = nullptr);

    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    int GetLogFont(LOGFONT* pLogFont) const;
};

class NRAFX_API CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)
public:
    CBitmap() = default;
    static CBitmap* PASCAL FromHandle(HBITMAP hBitmap);

    BOOL LoadBitmap(LPCTSTR lpszResourceName);
    BOOL LoadBitmap(UINT nIDResource);
    BOOL LoadOEMBitmap(UINT nIDBitmap);
    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits);
    BOOL CreateBitmapIndirect(LPBITMAP lpBitmap);
    BOOL CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight);
    BOOL CreateDiscardableBitmap(CDC* pDC, int nWidth, int nHeight);

    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    int GetBitmap(BITMAP* pBitMap) const;
    DWORD SetBitmapBits(DWORD dwCount, const void* lpBits);
    DWORD GetBitmapBits(DWORD dwCount, LPVOID lpBits) const;
    CSize SetBitmapDimension(int nWidth, int nHeight);
    CSize GetBitmapDimension() const;
};

class NRAFX_API CPalette : public CGdiObject {
    DECLARE_DYNAMIC(CPalette)
public:
    CPalette() = default;
    static CPalette* PASCAL FromHandle(HPALETTE hPalette);

    BOOL CreatePalette(LPLOGPALETTE lpLogPalette);
    BOOL CreateHalftonePalette(CDC* pDC);

    operator HPALETTE() const { return static_cast<HPALETTE>(m_hObject); }
    int GetEntryCount() const;
    UINT GetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) const;
    UINT SetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors);
    UINT GetNearestPaletteIndex(COLORREF crColor) const;
    BOOL ResizePalette(UINT nNumEntries);
};

class NRAFX_API CRgn : public CGdiObject {
    DECLARE_DYNAMIC(CRgn)
public:
    CRgn() = default;
    static CRgn* PASCAL FromHandle(HRGN hRgn);

    BOOL CreateRectRgn(int x1, int y1, int x2, int y2);
    BOOL CreateRectRgnIndirect(LPCRECT lpRect);
    BOOL CreateEllipticRgn(int x1, int y1, int x2, int y2);
    BOOL CreateEllipticRgnIndirect(LPCRECT lpRect);
    BOOL CreatePolygonRgn(const POINT* lpPoints, int nCount, int nMode);
    BOOL CreatePolyPolygonRgn(const POINT* lpPoints, const int* lpPolyCounts, int nCount, int nPolyFillMode);
    BOOL CreateRoundRectRgn(int x1, int y1, int x2, int y2, int x3, int y3);

    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
    int CombineRgn(const CRgn* pRgn1, const CRgn* pRgn2, int nCombineMode);
    int CopyRgn(const CRgn* pRgnSrc);
    BOOL EqualRgn(const CRgn* pRgn) const;
    int OffsetRgn(int x, int y);
    int OffsetRgn(POINT point);
    int GetRgnBox(LPRECT lpRect) const;
    BOOL PtInRegion(int x, int y) const;
    BOOL PtInRegion(POINT point) const;
    BOOL RectInRegion(LPCRECT lpRect) const;
    void SetRectRgn(int x1, int y1, int x2, int y2);
    void SetRectRgn(LPCRECT lpRect);
};
