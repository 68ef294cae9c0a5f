// Device contexts: attaching, selected objects, modes, mapping and clipping.
// Layer 1: afx.
#include "DCRange.h"
#include "ThreadState.h"

IMPLEMENT_DYNCREATE(CDC, CObject)

namespace {

// Sets something in the output context and, when it is another, in the attribute context, whose result is returned.
template <class Result, class Set>
Result OnBoth(HDC output, HDC attributes, Result none, Set set) {
    Result result = none;
    if (output != nullptr && output != attributes) {
        result = set(output);
    }
    if (attributes != nullptr) {
        result = set(attributes);
    }
    return result;
}

CPoint ToPoint(const POINT& point) {
    return CPoint(static_cast<int>(point.x), static_cast<int>(point.y));
}

} // namespace

// --- making and attaching ----------------------------------------------------------------------------------------

CDC::~CDC() {
    if (m_hDC != nullptr) {
        ::DeleteDC(Detach());
    }
}

CDC* PASCAL CDC::FromHandle(HDC hDC) {
    if (hDC == nullptr) {
        return nullptr;
    }
    HandleMap<CDC>& map = AfxState().contexts;
    if (auto* entry = map.Find(hDC)) {
        return entry->object;
    }
    if (CDC* revived = map.Revive(hDC, [=](const CDC* each) { return each->m_hDC == hDC; })) {
        return revived;
    }
    // Compatibility 107: a temporary object may be used again for another handle.
    std::unique_ptr<CDC> spare = map.TakeSpare([](const CDC* each) { return ::GetObjectType(each->m_hDC) == 0; },
                                               [](const CDC*) { return true; });
    if (spare != nullptr) {
        spare->m_hDC = spare->m_hAttribDC = nullptr; // so that it deletes nothing when the map has no memory
    } else {
        spare = std::make_unique<CDC>();
    }
    CDC* object = map.SetTemporary(hDC, std::move(spare));
    object->m_hDC = object->m_hAttribDC = hDC;
    return object;
}

void PASCAL CDC::DeleteTempMap() {
    AfxState().contexts.DeleteTemporaries([](CDC* object) { object->m_hDC = object->m_hAttribDC = nullptr; });
}

CWnd* CDC::GetWindow() const {
    return CWnd::FromHandle(::WindowFromDC(m_hDC));
}

BOOL CDC::Attach(HDC hDC) {
    if (!AfxAttach(AfxState().contexts, this, m_hDC, hDC)) {
        return FALSE;
    }
    m_bMaybeWide = m_bMaybeLarge = true;
    SetAttribDC(hDC);
    return TRUE;
}

HDC CDC::Detach() {
    const HDC dc = m_hDC;
    if (dc != nullptr) {
        if (AfxThreadState* state = AfxStateIfAny()) {
            state->contexts.Remove(dc, this);
        }
    }
    ReleaseAttribDC();
    m_hDC = nullptr;
    return dc;
}

void CDC::SetAttribDC(HDC hDC) {
    m_hAttribDC = hDC;
}

void CDC::SetOutputDC(HDC hDC) {
    m_hDC = hDC;
    m_bMaybeWide = m_bMaybeLarge = true;
}

void CDC::ReleaseAttribDC() {
    m_hAttribDC = nullptr;
}

void CDC::ReleaseOutputDC() {
    m_hDC = nullptr;
}

BOOL CDC::CreateDC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData) {
    return Attach(::CreateDC(lpszDriverName, lpszDeviceName, lpszOutput, static_cast<const DEVMODE*>(lpInitData)));
}

BOOL CDC::CreateIC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData) {
    return Attach(::CreateIC(lpszDriverName, lpszDeviceName, lpszOutput, static_cast<const DEVMODE*>(lpInitData)));
}

BOOL CDC::CreateCompatibleDC(CDC* pDC) {
    return Attach(::CreateCompatibleDC(AfxHandleOf(pDC)));
}

BOOL CDC::DeleteDC() {
    if (m_hDC == nullptr) {
        return FALSE;
    }
    return ::DeleteDC(Detach());
}

int CDC::SaveDC() {
    // With two contexts the result is the number of the attribute context, as for every other query.
    return OnBoth(m_hDC, m_hAttribDC, 0, [](HDC dc) { return ::SaveDC(dc); });
}

BOOL CDC::RestoreDC(int nSavedDC) {
    m_bMaybeWide = m_bMaybeLarge = true;
    if (m_hDC == m_hAttribDC || m_hAttribDC == nullptr) {
        return ::RestoreDC(m_hDC, nSavedDC);
    }
    // Each context counts its own saved states: only -1, the latest, means the same to both.
    BOOL done = TRUE;
    if (m_hDC != nullptr) {
        done = ::RestoreDC(m_hDC, -1);
    }
    return ::RestoreDC(m_hAttribDC, nSavedDC) && done;
}

// --- selected objects --------------------------------------------------------------------------------------------

CGdiObject* CDC::SelectStockObject(int nIndex) {
    m_bMaybeLarge = true;
    const HGDIOBJ stock = ::GetStockObject(nIndex);
    const HGDIOBJ old = OnBoth<HGDIOBJ>(m_hDC, m_hAttribDC, nullptr, [&](HDC dc) { return ::SelectObject(dc, stock); });
    return CGdiObject::FromHandle(old);
}

CPen* CDC::SelectObject(CPen* pPen) {
    const HGDIOBJ pen = AfxHandleOf(pPen);
    m_bMaybeWide = pen == nullptr || pen != AfxLatestNarrowPen();
    if (m_hDC == m_hAttribDC) {
        return CPen::FromHandle(static_cast<HPEN>(::SelectObject(m_hDC, pen)));
    }
    return CPen::FromHandle(static_cast<HPEN>(
        OnBoth<HGDIOBJ>(m_hDC, m_hAttribDC, nullptr, [&](HDC dc) { return ::SelectObject(dc, pen); })));
}

CBrush* CDC::SelectObject(CBrush* pBrush) {
    const HGDIOBJ brush = AfxHandleOf(pBrush);
    return CBrush::FromHandle(static_cast<HBRUSH>(
        OnBoth<HGDIOBJ>(m_hDC, m_hAttribDC, nullptr, [&](HDC dc) { return ::SelectObject(dc, brush); })));
}

CFont* CDC::SelectObject(CFont* pFont) {
    const HGDIOBJ font = AfxHandleOf(pFont);
    m_bMaybeLarge = true;
    return CFont::FromHandle(static_cast<HFONT>(
        OnBoth<HGDIOBJ>(m_hDC, m_hAttribDC, nullptr, [&](HDC dc) { return ::SelectObject(dc, font); })));
}

CBitmap* CDC::SelectObject(CBitmap* pBitmap) {
    // A bitmap can be in one context only: the output context.
    return CBitmap::FromHandle(static_cast<HBITMAP>(::SelectObject(m_hDC, AfxHandleOf(pBitmap))));
}

int CDC::SelectObject(CRgn* pRgn) {
    const HGDIOBJ region = AfxHandleOf(pRgn);
    return OnBoth(m_hDC, m_hAttribDC, 0,
                  [&](HDC dc) { return static_cast<int>(reinterpret_cast<INT_PTR>(::SelectObject(dc, region))); });
}

CGdiObject* CDC::SelectObject(CGdiObject* pObject) {
    if (pObject == nullptr) {
        return nullptr;
    }
    if (auto* pen = dynamic_cast<CPen*>(pObject)) {
        return SelectObject(pen);
    }
    if (auto* brush = dynamic_cast<CBrush*>(pObject)) {
        return SelectObject(brush);
    }
    if (auto* font = dynamic_cast<CFont*>(pObject)) {
        return SelectObject(font);
    }
    if (auto* bitmap = dynamic_cast<CBitmap*>(pObject)) {
        return SelectObject(bitmap);
    }
    const HGDIOBJ handle = pObject->m_hObject;
    return CGdiObject::FromHandle(
        OnBoth<HGDIOBJ>(m_hDC, m_hAttribDC, nullptr, [&](HDC dc) { return ::SelectObject(dc, handle); }));
}

CPalette* CDC::SelectPalette(CPalette* pPalette, BOOL bForceBackground) {
    const auto palette = static_cast<HPALETTE>(AfxHandleOf(pPalette));
    return CPalette::FromHandle(::SelectPalette(m_hDC, palette, bForceBackground));
}

UINT CDC::RealizePalette() {
    return ::RealizePalette(m_hDC);
}

CPen* CDC::GetCurrentPen() const {
    return CPen::FromHandle(static_cast<HPEN>(::GetCurrentObject(m_hAttribDC, OBJ_PEN)));
}

CBrush* CDC::GetCurrentBrush() const {
    return CBrush::FromHandle(static_cast<HBRUSH>(::GetCurrentObject(m_hAttribDC, OBJ_BRUSH)));
}

CFont* CDC::GetCurrentFont() const {
    return CFont::FromHandle(static_cast<HFONT>(::GetCurrentObject(m_hAttribDC, OBJ_FONT)));
}

CBitmap* CDC::GetCurrentBitmap() const {
    return CBitmap::FromHandle(static_cast<HBITMAP>(::GetCurrentObject(m_hDC, OBJ_BITMAP)));
}

// --- modes -------------------------------------------------------------------------------------------------------

COLORREF CDC::SetBkColor(COLORREF crColor) {
    return OnBoth<COLORREF>(m_hDC, m_hAttribDC, CLR_INVALID, [=](HDC dc) { return ::SetBkColor(dc, crColor); });
}

int CDC::SetBkMode(int nBkMode) {
    return OnBoth(m_hDC, m_hAttribDC, 0, [=](HDC dc) { return ::SetBkMode(dc, nBkMode); });
}

int CDC::SetPolyFillMode(int nPolyFillMode) {
    return OnBoth(m_hDC, m_hAttribDC, 0, [=](HDC dc) { return ::SetPolyFillMode(dc, nPolyFillMode); });
}

int CDC::SetROP2(int nDrawMode) {
    return OnBoth(m_hDC, m_hAttribDC, 0, [=](HDC dc) { return ::SetROP2(dc, nDrawMode); });
}

int CDC::SetStretchBltMode(int nStretchMode) {
    return OnBoth(m_hDC, m_hAttribDC, 0, [=](HDC dc) { return ::SetStretchBltMode(dc, nStretchMode); });
}

COLORREF CDC::SetTextColor(COLORREF crColor) {
    return OnBoth<COLORREF>(m_hDC, m_hAttribDC, CLR_INVALID, [=](HDC dc) { return ::SetTextColor(dc, crColor); });
}

UINT CDC::SetTextAlign(UINT nFlags) {
    return OnBoth<UINT>(m_hDC, m_hAttribDC, GDI_ERROR, [=](HDC dc) { return ::SetTextAlign(dc, nFlags); });
}

int CDC::SetTextCharacterExtra(int nCharExtra) {
    return OnBoth(m_hDC, m_hAttribDC, 0, [=](HDC dc) { return ::SetTextCharacterExtra(dc, nCharExtra); });
}

int CDC::SetArcDirection(int nArcDirection) {
    return OnBoth(m_hDC, m_hAttribDC, 0, [=](HDC dc) { return ::SetArcDirection(dc, nArcDirection); });
}

CPoint CDC::SetBrushOrg(int x, int y) {
    POINT old = {};
    ::SetBrushOrgEx(m_hDC, x, y, &old);
    return ToPoint(old);
}

int CDC::SetGraphicsMode(int nMode) {
    return OnBoth(m_hDC, m_hAttribDC, 0, [=](HDC dc) { return ::SetGraphicsMode(dc, nMode); });
}

BOOL CDC::SetWorldTransform(const XFORM* pXform) {
    return OnBoth(m_hDC, m_hAttribDC, FALSE, [=](HDC dc) { return ::SetWorldTransform(dc, pXform); });
}

COLORREF CDC::GetBkColor() const {
    return ::GetBkColor(m_hAttribDC);
}

int CDC::GetBkMode() const {
    return ::GetBkMode(m_hAttribDC);
}

int CDC::GetPolyFillMode() const {
    return ::GetPolyFillMode(m_hAttribDC);
}

int CDC::GetROP2() const {
    return ::GetROP2(m_hAttribDC);
}

int CDC::GetStretchBltMode() const {
    return ::GetStretchBltMode(m_hAttribDC);
}

COLORREF CDC::GetTextColor() const {
    return ::GetTextColor(m_hAttribDC);
}

UINT CDC::GetTextAlign() const {
    return ::GetTextAlign(m_hAttribDC);
}

int CDC::GetTextCharacterExtra() const {
    return ::GetTextCharacterExtra(m_hAttribDC);
}

int CDC::GetArcDirection() const {
    return ::GetArcDirection(m_hAttribDC);
}

CPoint CDC::GetBrushOrg() const {
    POINT point = {};
    ::GetBrushOrgEx(m_hAttribDC, &point);
    return ToPoint(point);
}

COLORREF CDC::GetNearestColor(COLORREF crColor) const {
    return ::GetNearestColor(m_hAttribDC, crColor);
}

int CDC::GetDeviceCaps(int nIndex) const {
    return ::GetDeviceCaps(m_hAttribDC, nIndex);
}

// --- mapping -----------------------------------------------------------------------------------------------------

int CDC::SetMapMode(int nMapMode) {
    return OnBoth(m_hDC, m_hAttribDC, 0, [=](HDC dc) { return ::SetMapMode(dc, nMapMode); });
}

CPoint CDC::SetViewportOrg(int x, int y) {
    POINT old = {};
    OnBoth(m_hDC, m_hAttribDC, FALSE, [&](HDC dc) { return ::SetViewportOrgEx(dc, x, y, &old); });
    return ToPoint(old);
}

CPoint CDC::OffsetViewportOrg(int nWidth, int nHeight) {
    POINT old = {};
    OnBoth(m_hDC, m_hAttribDC, FALSE, [&](HDC dc) { return ::OffsetViewportOrgEx(dc, nWidth, nHeight, &old); });
    return ToPoint(old);
}

CSize CDC::SetViewportExt(int cx, int cy) {
    SIZE old = {};
    OnBoth(m_hDC, m_hAttribDC, FALSE, [&](HDC dc) { return ::SetViewportExtEx(dc, cx, cy, &old); });
    return old;
}

CPoint CDC::SetWindowOrg(int x, int y) {
    POINT old = {};
    OnBoth(m_hDC, m_hAttribDC, FALSE, [&](HDC dc) { return ::SetWindowOrgEx(dc, x, y, &old); });
    return ToPoint(old);
}

CPoint CDC::OffsetWindowOrg(int nWidth, int nHeight) {
    POINT old = {};
    OnBoth(m_hDC, m_hAttribDC, FALSE, [&](HDC dc) { return ::OffsetWindowOrgEx(dc, nWidth, nHeight, &old); });
    return ToPoint(old);
}

CSize CDC::SetWindowExt(int cx, int cy) {
    SIZE old = {};
    OnBoth(m_hDC, m_hAttribDC, FALSE, [&](HDC dc) { return ::SetWindowExtEx(dc, cx, cy, &old); });
    return old;
}

int CDC::GetMapMode() const {
    return ::GetMapMode(m_hAttribDC);
}

CPoint CDC::GetViewportOrg() const {
    POINT point = {};
    ::GetViewportOrgEx(m_hAttribDC, &point);
    return ToPoint(point);
}

CSize CDC::GetViewportExt() const {
    SIZE size = {};
    ::GetViewportExtEx(m_hAttribDC, &size);
    return size;
}

CPoint CDC::GetWindowOrg() const {
    POINT point = {};
    ::GetWindowOrgEx(m_hAttribDC, &point);
    return ToPoint(point);
}

CSize CDC::GetWindowExt() const {
    SIZE size = {};
    ::GetWindowExtEx(m_hAttribDC, &size);
    return size;
}

void CDC::DPtoLP(LPPOINT lpPoints, int nCount) const {
    ::DPtoLP(m_hAttribDC, lpPoints, nCount);
}

void CDC::DPtoLP(LPRECT lpRect) const {
    ::DPtoLP(m_hAttribDC, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CDC::LPtoDP(LPPOINT lpPoints, int nCount) const {
    ::LPtoDP(m_hAttribDC, lpPoints, nCount);
}

void CDC::LPtoDP(LPRECT lpRect) const {
    ::LPtoDP(m_hAttribDC, reinterpret_cast<LPPOINT>(lpRect), 2);
}

// --- clipping ----------------------------------------------------------------------------------------------------

int CDC::GetClipBox(LPRECT lpRect) const {
    return ::GetClipBox(m_hAttribDC, lpRect);
}

int CDC::SelectClipRgn(CRgn* pRgn) {
    const auto region = static_cast<HRGN>(AfxHandleOf(pRgn));
    return OnBoth(m_hDC, m_hAttribDC, ERROR, [=](HDC dc) { return ::SelectClipRgn(dc, region); });
}

int CDC::SelectClipRgn(CRgn* pRgn, int nMode) {
    const auto region = static_cast<HRGN>(AfxHandleOf(pRgn));
    return OnBoth(m_hDC, m_hAttribDC, ERROR, [=](HDC dc) { return ::ExtSelectClipRgn(dc, region, nMode); });
}

int CDC::ExcludeClipRect(int x1, int y1, int x2, int y2) {
    return OnBoth(m_hDC, m_hAttribDC, ERROR, [=](HDC dc) { return ::ExcludeClipRect(dc, x1, y1, x2, y2); });
}

int CDC::IntersectClipRect(int x1, int y1, int x2, int y2) {
    return OnBoth(m_hDC, m_hAttribDC, ERROR, [=](HDC dc) { return ::IntersectClipRect(dc, x1, y1, x2, y2); });
}

int CDC::OffsetClipRgn(int x, int y) {
    return OnBoth(m_hDC, m_hAttribDC, ERROR, [=](HDC dc) { return ::OffsetClipRgn(dc, x, y); });
}

int CDC::ExcludeClipRect(LPCRECT lpRect) {
    return ExcludeClipRect(static_cast<int>(lpRect->left), static_cast<int>(lpRect->top),
                           static_cast<int>(lpRect->right), static_cast<int>(lpRect->bottom));
}

int CDC::IntersectClipRect(LPCRECT lpRect) {
    return IntersectClipRect(static_cast<int>(lpRect->left), static_cast<int>(lpRect->top),
                             static_cast<int>(lpRect->right), static_cast<int>(lpRect->bottom));
}

BOOL CDC::PtVisible(int x, int y) const {
    return ::PtVisible(m_hDC, x, y);
}

BOOL CDC::RectVisible(LPCRECT lpRect) const {
    return ::RectVisible(m_hDC, lpRect);
}
