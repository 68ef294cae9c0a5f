// GDI objects: owning handles, temporary objects, and the functions of pens, brushes, fonts, bitmaps and regions.
// Layer 1: afx.
#include "DCRange.h"
#include "ThreadState.h"

#include <cstdlib>

IMPLEMENT_DYNCREATE(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CPalette, CGdiObject)
IMPLEMENT_DYNAMIC(CRgn, CGdiObject)

namespace {

// The class of the temporary objects for such a handle; null for a handle that names nothing any more.
const CRuntimeClass* ClassOf(HGDIOBJ handle) {
    switch (::GetObjectType(handle)) {
    case 0:
        return nullptr;
    case OBJ_PEN:
    case OBJ_EXTPEN:
        return RUNTIME_CLASS(CPen);
    case OBJ_BRUSH:
        return RUNTIME_CLASS(CBrush);
    case OBJ_FONT:
        return RUNTIME_CLASS(CFont);
    case OBJ_BITMAP:
        return RUNTIME_CLASS(CBitmap);
    case OBJ_PAL:
        return RUNTIME_CLASS(CPalette);
    case OBJ_REGION:
        return RUNTIME_CLASS(CRgn);
    default:
        return RUNTIME_CLASS(CGdiObject);
    }
}

template <class T>
T* TypedFromHandle(HGDIOBJ handle) {
    if (handle == nullptr) {
        return nullptr;
    }
    HandleMap<CGdiObject>& map = AfxState().gdi;
    if (auto* entry = map.Find(handle)) {
        // The handle may have been freed and given out again for another kind of object: then its old temporary object
        // must not be found.
        if (!entry->temporary || entry->object->GetRuntimeClass() == RUNTIME_CLASS(T)) {
            return static_cast<T*>(entry->object);
        }
    }
    if (CGdiObject* revived = map.Revive(handle, [=](const CGdiObject* each) {
            return each->m_hObject == handle && each->GetRuntimeClass() == RUNTIME_CLASS(T);
        })) {
        return static_cast<T*>(revived);
    }
    // Compatibility 107: a temporary GDI object may be used again for another handle.
    // A program that paints without ever being idle gets new handles all the time. The temporary objects of freed
    // handles are used again rather than freed, because other code may still have a pointer to one.
    std::unique_ptr<CGdiObject> object =
        map.TakeSpare([](const CGdiObject* each) { return ClassOf(each->m_hObject) != each->GetRuntimeClass(); },
                      [](const CGdiObject* each) { return each->GetRuntimeClass() == RUNTIME_CLASS(T); });
    if (object != nullptr) {
        object->m_hObject = nullptr; // so that it does not delete the handle when the map has no memory
    } else {
        object = std::make_unique<T>();
    }
    CGdiObject* kept = map.SetTemporary(handle, std::move(object));
    kept->m_hObject = handle;
    return static_cast<T*>(kept);
}

} // namespace

// --- CGdiObject --------------------------------------------------------------------------------------------------

CGdiObject::~CGdiObject() {
    DeleteObject();
}

CGdiObject* PASCAL CGdiObject::FromHandle(HGDIOBJ hObject) {
    if (hObject == nullptr) {
        return nullptr;
    }
    if (CGdiObject* object = AfxState().gdi.Permanent(hObject)) {
        return object;
    }
    const CRuntimeClass* type = ClassOf(hObject);
    if (type == RUNTIME_CLASS(CPen)) {
        return TypedFromHandle<CPen>(hObject);
    }
    if (type == RUNTIME_CLASS(CBrush)) {
        return TypedFromHandle<CBrush>(hObject);
    }
    if (type == RUNTIME_CLASS(CFont)) {
        return TypedFromHandle<CFont>(hObject);
    }
    if (type == RUNTIME_CLASS(CBitmap)) {
        return TypedFromHandle<CBitmap>(hObject);
    }
    if (type == RUNTIME_CLASS(CPalette)) {
        return TypedFromHandle<CPalette>(hObject);
    }
    if (type == RUNTIME_CLASS(CRgn)) {
        return TypedFromHandle<CRgn>(hObject);
    }
    return TypedFromHandle<CGdiObject>(hObject);
}

void PASCAL CGdiObject::DeleteTempMap() {
    AfxState().gdi.DeleteTemporaries([](CGdiObject* object) { object->m_hObject = nullptr; });
}

BOOL CGdiObject::Attach(HGDIOBJ hObject) {
    return AfxAttach(AfxState().gdi, this, m_hObject, hObject);
}

HGDIOBJ CGdiObject::Detach() {
    const HGDIOBJ handle = m_hObject;
    m_hObject = nullptr;
    if (handle != nullptr) {
        if (AfxThreadState* state = AfxStateIfAny()) {
            state->gdi.Remove(handle, this);
        }
    }
    return handle;
}

BOOL CGdiObject::DeleteObject() {
    if (m_hObject == nullptr) {
        return FALSE;
    }
    return ::DeleteObject(Detach());
}

int CGdiObject::GetObject(int nCount, LPVOID lpObject) const {
    return ::GetObject(m_hObject, nCount, lpObject);
}

UINT CGdiObject::GetObjectType() const {
    return ::GetObjectType(m_hObject);
}

BOOL CGdiObject::CreateStockObject(int nIndex) {
    return Attach(::GetStockObject(nIndex));
}

BOOL CGdiObject::UnrealizeObject() {
    return ::UnrealizeObject(m_hObject);
}

// --- CPen --------------------------------------------------------------------------------------------------------

CPen::CPen(int nPenStyle, int nWidth, COLORREF crColor) {
    if (!CreatePen(nPenStyle, nWidth, crColor)) {
        AfxThrowResourceException();
    }
}

CPen::CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount, const DWORD* lpStyle) {
    if (!CreatePen(nPenStyle, nWidth, pLogBrush, nStyleCount, lpStyle)) {
        AfxThrowResourceException();
    }
}

CPen* PASCAL CPen::FromHandle(HPEN hPen) {
    return TypedFromHandle<CPen>(hPen);
}

BOOL CPen::CreatePen(int nPenStyle, int nWidth, COLORREF crColor) {
    const int width = AfxPenWidth(nWidth);
    if (!Attach(::CreatePen(nPenStyle, width, crColor))) {
        return FALSE;
    }
    if (std::abs(width) <= kAfxWidestPen) {
        AfxNoteNarrowPen(m_hObject);
    }
    return TRUE;
}

BOOL CPen::CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount, const DWORD* lpStyle) {
    return Attach(::ExtCreatePen(static_cast<DWORD>(nPenStyle), static_cast<DWORD>(nWidth), pLogBrush,
                                 static_cast<DWORD>(nStyleCount), lpStyle));
}

BOOL CPen::CreatePenIndirect(LPLOGPEN lpLogPen) {
    return Attach(::CreatePenIndirect(lpLogPen));
}

int CPen::GetLogPen(LOGPEN* pLogPen) const {
    return GetObject(sizeof(LOGPEN), pLogPen);
}

int CPen::GetExtLogPen(EXTLOGPEN* pLogPen) const {
    return GetObject(sizeof(EXTLOGPEN), pLogPen);
}

// --- CBrush ------------------------------------------------------------------------------------------------------

CBrush::CBrush(COLORREF crColor) {
    if (!CreateSolidBrush(crColor)) {
        AfxThrowResourceException();
    }
}

CBrush::CBrush(int nIndex, COLORREF crColor) {
    if (!CreateHatchBrush(nIndex, crColor)) {
        AfxThrowResourceException();
    }
}

CBrush::CBrush(CBitmap* pBitmap) {
    if (!CreatePatternBrush(pBitmap)) {
        AfxThrowResourceException();
    }
}

CBrush* PASCAL CBrush::FromHandle(HBRUSH hBrush) {
    return TypedFromHandle<CBrush>(hBrush);
}

BOOL CBrush::CreateSolidBrush(COLORREF crColor) {
    return Attach(::CreateSolidBrush(crColor));
}

BOOL CBrush::CreateHatchBrush(int nIndex, COLORREF crColor) {
    return Attach(::CreateHatchBrush(nIndex, crColor));
}

BOOL CBrush::CreateBrushIndirect(const LOGBRUSH* lpLogBrush) {
    return Attach(::CreateBrushIndirect(lpLogBrush));
}

BOOL CBrush::CreatePatternBrush(CBitmap* pBitmap) {
    return Attach(::CreatePatternBrush(static_cast<HBITMAP>(AfxHandleOf(pBitmap))));
}

BOOL CBrush::CreateSysColorBrush(int nIndex) {
    return Attach(::GetSysColorBrush(nIndex));
}

int CBrush::GetLogBrush(LOGBRUSH* pLogBrush) const {
    return GetObject(sizeof(LOGBRUSH), pLogBrush);
}

// --- CFont -------------------------------------------------------------------------------------------------------

CFont* PASCAL CFont::FromHandle(HFONT hFont) {
    return TypedFromHandle<CFont>(hFont);
}

BOOL CFont::CreateFontIndirect(const LOGFONT* lpLogFont) {
    return Attach(::CreateFontIndirect(lpLogFont));
}

BOOL CFont::CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                       BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision,
                       BYTE nQuality, BYTE nPitchAndFamily, LPCTSTR lpszFacename) {
    return Attach(::CreateFont(nHeight, nWidth, nEscapement, nOrientation, nWeight, bItalic, bUnderline, cStrikeOut,
                               nCharSet, nOutPrecision, nClipPrecision, nQuality, nPitchAndFamily, lpszFacename));
}

BOOL CFont::CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC) {
    LOGFONT font = {};
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfHeight = nPointSize;
    ::lstrcpyn(font.lfFaceName, lpszFaceName, LF_FACESIZE);
    return CreatePointFontIndirect(&font, pDC);
}

BOOL CFont::CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC) {
    const HDC dc = pDC != nullptr ? pDC->m_hAttribDC : ::GetDC(nullptr);
    // Tenths of a point to logical units of the context, measured from its origin.
    LOGFONT font = *lpLogFont;
    POINT size = {0, ::MulDiv(::GetDeviceCaps(dc, LOGPIXELSY), static_cast<int>(font.lfHeight), 720)};
    POINT origin = {0, 0};
    ::DPtoLP(dc, &size, 1);
    ::DPtoLP(dc, &origin, 1);
    font.lfHeight = -std::labs(size.y - origin.y);
    if (pDC == nullptr) {
        ::ReleaseDC(nullptr, dc);
    }
    return CreateFontIndirect(&font);
}

int CFont::GetLogFont(LOGFONT* pLogFont) const {
    return GetObject(sizeof(LOGFONT), pLogFont);
}

// --- CBitmap -----------------------------------------------------------------------------------------------------

CBitmap* PASCAL CBitmap::FromHandle(HBITMAP hBitmap) {
    return TypedFromHandle<CBitmap>(hBitmap);
}

BOOL CBitmap::LoadBitmap(LPCTSTR lpszResourceName) {
    return Attach(::LoadBitmap(AfxFindResourceHandle(lpszResourceName, RT_BITMAP), lpszResourceName));
}

BOOL CBitmap::LoadBitmap(UINT nIDResource) {
    return LoadBitmap(MAKEINTRESOURCE(nIDResource));
}

BOOL CBitmap::LoadOEMBitmap(UINT nIDBitmap) {
    return Attach(::LoadBitmap(nullptr, MAKEINTRESOURCE(nIDBitmap)));
}

BOOL CBitmap::CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits) {
    return Attach(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
}

BOOL CBitmap::CreateBitmapIndirect(LPBITMAP lpBitmap) {
    return Attach(::CreateBitmapIndirect(lpBitmap));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight) {
    return Attach(::CreateCompatibleBitmap(AfxHandleOf(pDC), nWidth, nHeight));
}

BOOL CBitmap::CreateDiscardableBitmap(CDC* pDC, int nWidth, int nHeight) {
    return Attach(::CreateDiscardableBitmap(AfxHandleOf(pDC), nWidth, nHeight));
}

int CBitmap::GetBitmap(BITMAP* pBitMap) const {
    return GetObject(sizeof(BITMAP), pBitMap);
}

DWORD CBitmap::SetBitmapBits(DWORD dwCount, const void* lpBits) {
    return static_cast<DWORD>(::SetBitmapBits(*this, dwCount, lpBits));
}

DWORD CBitmap::GetBitmapBits(DWORD dwCount, LPVOID lpBits) const {
    return static_cast<DWORD>(::GetBitmapBits(*this, static_cast<LONG>(dwCount), lpBits));
}

CSize CBitmap::SetBitmapDimension(int nWidth, int nHeight) {
    SIZE size = {};
    ::SetBitmapDimensionEx(*this, nWidth, nHeight, &size);
    return size;
}

CSize CBitmap::GetBitmapDimension() const {
    SIZE size = {};
    ::GetBitmapDimensionEx(*this, &size);
    return size;
}

// --- CPalette ----------------------------------------------------------------------------------------------------

CPalette* PASCAL CPalette::FromHandle(HPALETTE hPalette) {
    return TypedFromHandle<CPalette>(hPalette);
}

BOOL CPalette::CreatePalette(LPLOGPALETTE lpLogPalette) {
    return Attach(::CreatePalette(lpLogPalette));
}

BOOL CPalette::CreateHalftonePalette(CDC* pDC) {
    return Attach(::CreateHalftonePalette(AfxHandleOf(pDC)));
}

int CPalette::GetEntryCount() const {
    WORD count = 0;
    GetObject(sizeof(count), &count);
    return count;
}

UINT CPalette::GetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) const {
    return ::GetPaletteEntries(*this, nStartIndex, nNumEntries, lpPaletteColors);
}

UINT CPalette::SetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) {
    return ::SetPaletteEntries(*this, nStartIndex, nNumEntries, lpPaletteColors);
}

UINT CPalette::GetNearestPaletteIndex(COLORREF crColor) const {
    return ::GetNearestPaletteIndex(*this, crColor);
}

BOOL CPalette::ResizePalette(UINT nNumEntries) {
    return ::ResizePalette(*this, nNumEntries);
}

// --- CRgn --------------------------------------------------------------------------------------------------------

CRgn* PASCAL CRgn::FromHandle(HRGN hRgn) {
    return TypedFromHandle<CRgn>(hRgn);
}

BOOL CRgn::CreateRectRgn(int x1, int y1, int x2, int y2) {
    return Attach(::CreateRectRgn(x1, y1, x2, y2));
}

BOOL CRgn::CreateRectRgnIndirect(LPCRECT lpRect) {
    return Attach(::CreateRectRgnIndirect(lpRect));
}

BOOL CRgn::CreateEllipticRgn(int x1, int y1, int x2, int y2) {
    return Attach(::CreateEllipticRgn(x1, y1, x2, y2));
}

BOOL CRgn::CreateEllipticRgnIndirect(LPCRECT lpRect) {
    return Attach(::CreateEllipticRgnIndirect(lpRect));
}

BOOL CRgn::CreatePolygonRgn(const POINT* lpPoints, int nCount, int nMode) {
    return Attach(::CreatePolygonRgn(lpPoints, nCount, nMode));
}

BOOL CRgn::CreatePolyPolygonRgn(const POINT* lpPoints, const int* lpPolyCounts, int nCount, int nPolyFillMode) {
    return Attach(::CreatePolyPolygonRgn(lpPoints, lpPolyCounts, nCount, nPolyFillMode));
}

BOOL CRgn::CreateRoundRectRgn(int x1, int y1, int x2, int y2, int x3, int y3) {
    return Attach(::CreateRoundRectRgn(x1, y1, x2, y2, x3, y3));
}

int CRgn::CombineRgn(const CRgn* pRgn1, const CRgn* pRgn2, int nCombineMode) {
    return ::CombineRgn(*this, static_cast<HRGN>(AfxHandleOf(pRgn1)), static_cast<HRGN>(AfxHandleOf(pRgn2)),
                        nCombineMode);
}

int CRgn::CopyRgn(const CRgn* pRgnSrc) {
    return ::CombineRgn(*this, static_cast<HRGN>(AfxHandleOf(pRgnSrc)), nullptr, RGN_COPY);
}

BOOL CRgn::EqualRgn(const CRgn* pRgn) const {
    return ::EqualRgn(*this, static_cast<HRGN>(AfxHandleOf(pRgn)));
}

int CRgn::OffsetRgn(int x, int y) {
    return ::OffsetRgn(*this, x, y);
}

int CRgn::OffsetRgn(POINT point) {
    return ::OffsetRgn(*this, static_cast<int>(point.x), static_cast<int>(point.y));
}

int CRgn::GetRgnBox(LPRECT lpRect) const {
    return ::GetRgnBox(*this, lpRect);
}

BOOL CRgn::PtInRegion(int x, int y) const {
    return ::PtInRegion(*this, x, y);
}

BOOL CRgn::PtInRegion(POINT point) const {
    return ::PtInRegion(*this, static_cast<int>(point.x), static_cast<int>(point.y));
}

BOOL CRgn::RectInRegion(LPCRECT lpRect) const {
    return ::RectInRegion(*this, lpRect);
}

void CRgn::SetRectRgn(int x1, int y1, int x2, int y2) {
    ::SetRectRgn(*this, x1, y1, x2, y2);
}

void CRgn::SetRectRgn(LPCRECT lpRect) {
    ::SetRectRgn(*this, static_cast<int>(lpRect->left), static_cast<int>(lpRect->top), static_cast<int>(lpRect->right),
                 static_cast<int>(lpRect->bottom));
}
