#include "CommandOperation.h"

#include "Document.h"
#include "VectorGraphic.h"

#include <cstdlib>

IMPLEMENT_DYNAMIC(CCommandOperation, CCommand)

namespace {

constexpr DWORD kEditStyle = WS_CHILD | ES_AUTOHSCROLL | ES_NOHIDESEL;
constexpr UINT kEditId = 1;
constexpr int kEditWidth = 40; // Pixels.
constexpr int kEditHeight = 20;
constexpr double kEditOffset = 30.0; // Pixels from the band to the box.

} // namespace

CCommandOperation::CCommandOperation(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                     CGraphicDocument* document)
    : m_pWnd(wnd), m_pCoordTran(tran), m_pDocument(document), m_pGraphic(graphic),
      m_hCursor(::LoadCursor(VectorViewModule(), MAKEINTRESOURCE(kCursorDefault))) {
    if (wnd->GetSafeHwnd() != nullptr) {
        m_Edit.Create(kEditStyle, CRect(0, 0, kEditWidth, kEditHeight), wnd, kEditId);
    }
}

CCommandOperation::~CCommandOperation() {
    for (CLifeWatch::CEntry* entry = m_pWatch; entry != nullptr; entry = entry->outer) {
        entry->watched = nullptr;
        entry->isGone = true;
    }
    if (m_hCursor != nullptr) {
        ::DestroyCursor(m_hCursor);
    }
    m_Edit.DestroyWindow();
}

CCommandOperation::CLifeWatch::CEntry::CEntry(CCommandOperation* op) : watched(op), outer(nullptr) {
    if (op != nullptr) {
        outer = op->m_pWatch;
        op->m_pWatch = this;
    }
}

CCommandOperation::CLifeWatch::CEntry::~CEntry() {
    if (watched != nullptr) {
        watched->m_pWatch = outer;
    }
}

CCommandOperation::CViewDC::CViewDC(CWnd* wnd) : m_hWindow(wnd->GetSafeHwnd()) {
    if (!Attach(m_hWindow != nullptr ? ::GetDC(m_hWindow) : ::CreateCompatibleDC(nullptr))) {
        AfxThrowResourceException();
    }
}

CCommandOperation::CViewDC::~CViewDC() {
    if (m_hWindow != nullptr) {
        ::ReleaseDC(m_hWindow, Detach());
    }
}

// ---- Events --------------------------------------------------------------------------------------------------------

void CCommandOperation::Execute() {}

void CCommandOperation::Cancel() {}

int CCommandOperation::RefreshGrip() {
    if (m_SnapEnabled == 0 || m_SnapMarkDrawn == 0) {
        return 0;
    }
    CViewDC dc(m_pWnd);
    InvertSnapMark(&dc);
    m_SnapMarkDrawn = 0;
    return 1;
}

CCommandOperation::ResultState CCommandOperation::OnMouseMove(unsigned int, CGePoint2d point) {
    if (m_SnapEnabled == 0) {
        return RS_Cancelled;
    }
    CGePoint2d hit;
    const bool found = GetGripPoint(point, hit) != 0;
    CViewDC dc(m_pWnd);
    // A repaint does not clear the flag: after one the next move inverts the old place once more and leaves a stray
    // marker there. Only the pan takes the marker off first.
    if (m_SnapMarkDrawn != 0) {
        InvertSnapMark(&dc);
        m_SnapMarkDrawn = 0;
    }
    if (!found) {
        return RS_Cancelled;
    }
    m_SnapMark = hit;
    InvertSnapMark(&dc);
    m_SnapMarkDrawn = 1;
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperation::OnKeyDown(unsigned int, unsigned int, unsigned int) {
    return RS_NotHandled;
}

CCommandOperation::ResultState CCommandOperation::OnCancel() {
    Cancel();
    return RS_Cancelled;
}

CCommandOperation::ResultState CCommandOperation::OnMouseMoveForL(unsigned int, CPoint) {
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperation::OnButtonDownForL(unsigned int, CPoint) {
    return RS_Continue;
}

void CCommandOperation::PreRedraw() {}

CCommandOperation::ResultState CCommandOperation::OnLButtonDblClk(unsigned int, CPoint) {
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperation::OnSetCursor(CWnd*, unsigned int, unsigned int) {
    if (m_hCursor == nullptr) {
        return RS_Continue;
    }
    ::SetCursor(m_hCursor);
    return RS_Done;
}

// ---- Services ------------------------------------------------------------------------------------------------------

void CCommandOperation::SetInEdit(int inEdit) {
    m_InEdit = inEdit;
}

void CCommandOperation::SetOsnapMode(int mode) {
    m_OsnapMode = mode;
}

void CCommandOperation::DrawShirrLine(CGePoint2d from, CGePoint2d to) {
    CPoint p1;
    CPoint p2;
    m_pCoordTran->DPToLP(from, p1);
    m_pCoordTran->DPToLP(to, p2);
    DrawShirrLine(p1, p2, 0);
}

int CCommandOperation::GetGripPoint(CGePoint2d point, CGePoint2d& result) {
    if (m_SnapEnabled == 0) {
        return 0;
    }
    CDrawableArray objects;
    objects.Copy(*m_pDocument->GetDrawableObjs());
    objects.Append(*m_pDocument->GetNetDrawableObjs());
    const int aperture = ApertureUnits(kSnapAperture);
    CGePointArray grips;
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        CDrawable* object = objects[i];
        ClearScratch(grips);
        object->getGripPoints(grips, m_OsnapMode);
        if ((m_OsnapMode & kOsnapPerpendicular) != 0) {
            object->GetClosetPt(m_LastPoint, grips);
        }
        if (FindCandidate(object, grips, point, aperture, result) != 0) {
            return 1;
        }
    }
    return 0;
}

int CCommandOperation::OnGetGripPoint(CDrawable*, int, CGePoint2d) {
    return 1;
}

int CCommandOperation::GetGripPointForL(CGePoint2d pixel, CGePoint2d& result) {
    CGePoint2d point;
    m_pCoordTran->LPToDP(static_cast<float>(pixel.x), static_cast<float>(pixel.y), &point.x, &point.y);
    const int hit = CCommandOperation::GetGripPoint(point, result);
    if (hit != 0) {
        CPoint whole;
        m_pCoordTran->DPToLP(result, whole);
        result.SetPoint(whole.x, whole.y);
    }
    return hit;
}

// ---- What the tools share ------------------------------------------------------------------------------------------

void CCommandOperation::RequestRedrawOf(HWND window) {
    // The null window would be all windows of the desktop.
    if (window != nullptr) {
        ::InvalidateRect(window, nullptr, TRUE);
    }
}

bool CCommandOperation::IsWithin(const CGePoint2d& grip, const CGePoint2d& point, int aperture) {
    return point.x >= grip.x - aperture && point.x <= grip.x + aperture && point.y >= grip.y - aperture &&
           point.y <= grip.y + aperture;
}

bool CCommandOperation::IsHit(CDrawable* object, const CGePoint2d& point) const {
    return m_pCoordTran->DToL(static_cast<double>(object->HitTest(point))) <= kPickAperture;
}

CDrawable* CCommandOperation::FirstHit(const CGePoint2d& point, const CRuntimeClass* kind) const {
    const CDrawableArray& objects = *m_pDocument->GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        CDrawable* object = objects.GetAt(i);
        // The hit test comes first, for all kinds: polylines remember the segment that it found.
        if (IsHit(object, point) && object->IsKindOf(kind)) {
            return object;
        }
    }
    return nullptr;
}

int CCommandOperation::ApertureUnits(float pixels) const {
    return Truncate(m_pCoordTran->LToD(pixels));
}

int CCommandOperation::FindCandidate(CDrawable* object, CGePointArray& grips, const CGePoint2d& point, int aperture,
                                     CGePoint2d& result) {
    for (INT_PTR i = 0; i < grips.GetSize(); ++i) {
        const CGePoint2d& grip = grips[i];
        if (IsWithin(grip, point, aperture) && OnGetGripPoint(object, static_cast<int>(i), point) != 0) {
            result = grip;
            return 1;
        }
    }
    return 0;
}

void CCommandOperation::InvertObject(CDC* dc, CDrawable* object) {
    // Put back also when the drawing throws: no object stays inverted behind a failed preview.
    struct CStateScope {
        CDrawable* object;
        enum CDrawable::DrawState state;
        ~CStateScope() { object->SetDrawState(state); }
    };
    const CStateScope scope = {object, object->GetDrawState()};
    object->SetDrawState(CDrawable::Dragging);
    m_pGraphic->OnDraw(dc, object);
}

void CCommandOperation::OrthoStep(const CGePoint2d& base, CGePoint2d& point) {
    const std::int64_t dx = std::llabs(Truncate(base.x - point.x));
    const std::int64_t dy = std::llabs(Truncate(base.y - point.y));
    if (dy > dx) {
        point.x = base.x;
    } else {
        point.y = base.y;
    }
}

bool CCommandOperation::PlaceEditBox(const CGePoint2d& from, const CGePoint2d& to, const CGeVector2d& move) {
    const CGePoint2d middle((from.x + to.x) / 2, (from.y + to.y) / 2);
    const CGeVector2d aside = move.perpVector().normal() * kEditOffset * static_cast<double>(m_pCoordTran->GetScale());
    const CGePoint2d place = middle + aside;
    float lx = 0.0f;
    float ly = 0.0f;
    m_pCoordTran->DPToLP(place.x, place.y, &lx, &ly);
    CString text;
    text.Format(L"%d", Truncate(from.distance(to)));
    // Each step sends messages, and a host may end the tool, or close the window, in any of them.
    const CLifeWatch watch(this);
    const auto boxStands = [&] { return !watch.IsGone() && m_Edit.GetSafeHwnd() != nullptr; };
    if (boxStands()) {
        m_Edit.SetWindowPos(nullptr, Truncate(lx - 20.0f), Truncate(ly - 10.0f), kEditWidth, kEditHeight,
                            SWP_SHOWWINDOW);
    }
    if (boxStands()) {
        m_Edit.SetWindowText(text);
    }
    if (boxStands()) {
        m_Edit.SetFocus();
    }
    // Selected, so that the first digit typed replaces it.
    if (boxStands()) {
        m_Edit.SendMessage(EM_SETSEL, 0, -1);
    }
    if (boxStands()) {
        m_Edit.SendMessage(EM_SCROLLCARET, 0, 0);
    }
    if (boxStands()) {
        m_pWnd->UpdateWindow();
    }
    return !watch.IsGone();
}

int CCommandOperation::TypedDistance() {
    CString text;
    if (m_Edit.GetSafeHwnd() != nullptr) {
        m_Edit.GetWindowText(text);
    }
    return _wtoi(text);
}

void CCommandOperation::InvertSnapMark(CDC* dc) {
    CPoint pixel;
    m_pCoordTran->DPToLP(m_SnapMark, pixel);
    m_pGraphic->DrawROPNOTGrip(dc, pixel, m_SnapMark.type);
}
