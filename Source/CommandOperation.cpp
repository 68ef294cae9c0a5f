#include "CommandOperation.h"

#include "Document.h"
#include "GripReach.h"
#include "OperationHost.h"
#include "VectorGraphic.h"
#include "resource.h"

#include <algorithm>
#include <cstdlib>

IMPLEMENT_DYNAMIC(CCommandOperation, CCommand)

namespace {

constexpr DWORD kEditStyle = WS_CHILD | ES_AUTOHSCROLL | ES_NOHIDESEL;
constexpr UINT kEditId = 1;
constexpr int kEditWidth = 40; // Pixels.
constexpr int kEditHeight = 20;
constexpr double kEditOffset = 30.0; // Pixels from the band to the box.

void InvalidateWindow(HWND window) {
    // With a null window the function would repaint all windows of the desktop.
    if (window != nullptr) {
        ::InvalidateRect(window, nullptr, TRUE);
    }
}

} // namespace

CCommandOperation::CCommandOperation(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                     CGraphicDocument* document)
    : m_pWnd(wnd), m_pCoordTran(tran), m_pDocument(document), m_pGraphic(graphic),
      m_hCursor(::LoadCursor(VectorViewModule(), MAKEINTRESOURCE(IDC_CURSOR_OPERATION))) {
    if (document != nullptr) {
        m_DocumentAlive.emplace(document->GetAlive());
    }
    if (wnd->GetSafeHwnd() != nullptr) {
        m_Edit.Create(kEditStyle, CRect(0, 0, kEditWidth, kEditHeight), wnd, kEditId);
    }
}

CCommandOperation::~CCommandOperation() {
    if (m_hCursor != nullptr) {
        ::DestroyCursor(m_hCursor);
    }
    m_Edit.DestroyWindow();
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

// Compatibility 10: a repaint under a drawn marker leaves an extra one.
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
    // A repaint does not clear the flag: after one, the next move inverts the old place once more and leaves a marker
    // there. Only the pan takes the marker off first.
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

void CCommandOperation::DrawShirrLine(CPoint p1, CPoint p2, int) {
    if (CCommandOperation* engine = Engine()) {
        engine->DrawShirrLine(p1, p2, 0);
    }
}

void CCommandOperation::ErasShirrLine() {
    if (CCommandOperation* engine = Engine()) {
        engine->ErasShirrLine();
    }
}

void CCommandOperation::DrawShirrLine(CGePoint2d from, CGePoint2d to) {
    CPoint p1;
    CPoint p2;
    m_pCoordTran->DPToLP(from, p1);
    m_pCoordTran->DPToLP(to, p2);
    DrawShirrLine(p1, p2, 0);
}

// Compatibility 111: the snap of tools that make no object finds hidden objects.
int CCommandOperation::GetGripPoint(CGePoint2d point, CGePoint2d& result) {
    FollowDocument();
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
        if (AreGripsFar(object, point, aperture)) {
            continue; // These kinds have no feet of perpendiculars either.
        }
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

COperationHost* CCommandOperation::Host() const {
    return dynamic_cast<COperationHost*>(m_pWnd);
}

CCommandOperation* CCommandOperation::Engine() const {
    COperationHost* host = Host();
    return host != nullptr ? host->OperationEngine() : nullptr;
}

const CEditingOptions& CCommandOperation::Options() const {
    static const CEditingOptions classic;
    return m_pGraphic != nullptr ? m_pGraphic->GetEditingOptions() : classic;
}

void CCommandOperation::NoteChange() {
    if (Options().modifiedByChange) {
        m_pDocument->SetModifiedFlag(TRUE);
    }
}

bool CCommandOperation::IsReturning() const {
    const CCommandOperation* engine = Engine();
    return engine != nullptr && engine->m_Returning;
}

bool CCommandOperation::IsBrokenOff() const {
    const CCommandOperation* engine = Engine();
    return engine != nullptr && engine->m_BreakingOff;
}

CKxAliveToken CCommandOperation::EngineAlive() const {
    const CCommandOperation* engine = Engine();
    return CKxAliveToken(engine != nullptr ? engine->m_Alive : m_Alive);
}

bool CCommandOperation::GoesOn(const CKxAliveToken& token) {
    if (!token.IsAlive()) {
        return false;
    }
    FollowDocument();
    return !HasLostObject();
}

void CCommandOperation::FollowDocument() {
    if (m_DocumentAlive && !m_DocumentAlive->IsAlive() && m_pGraphic != nullptr) {
        m_pDocument = m_pGraphic->GetDocument();
        m_DocumentAlive.emplace(m_pDocument->GetAlive());
    }
}

bool CCommandOperation::HasLostObject() const {
    return std::any_of(m_Held.begin(), m_Held.end(), [](const CKxAliveToken& held) { return !held.IsAlive(); });
}

void CCommandOperation::TrackGripPoint(const CGePoint2d& point) {
    if (COperationHost* host = Host()) {
        host->TrackOperationGrip(point);
    }
}

void CCommandOperation::EndRunningOperation() {
    // Read before the call: outside an event of the engine the call frees this tool.
    const HWND window = m_pWnd->GetSafeHwnd();
    if (COperationHost* host = Host()) {
        host->EndOperation();
    }
    InvalidateWindow(window);
}

void CCommandOperation::AnnounceToPropertyDialog(CDrawable* object) {
    if (COperationHost* host = Host()) {
        host->ShowOperationObject(object);
    }
}

void CCommandOperation::RequestRedraw() {
    InvalidateWindow(m_pWnd->GetSafeHwnd());
}

bool CCommandOperation::IsWithin(const CGePoint2d& grip, const CGePoint2d& point, int aperture) {
    return point.x >= grip.x - aperture && point.x <= grip.x + aperture && point.y >= grip.y - aperture &&
           point.y <= grip.y + aperture;
}

// Compatibility 110: a hidden object can be picked in a view zoomed far out.
bool CCommandOperation::IsHit(CDrawable* object, const CGePoint2d& point) const {
    const float aperture = kPickAperture * Options().pixelScale;
    const double scale = m_pCoordTran->GetScale();
    if (scale > 0.0 && IsLineFar(object, point, aperture * scale)) {
        return false;
    }
    return m_pCoordTran->DToL(static_cast<double>(object->HitTest(point))) <= aperture;
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

// Compatibility 7: the snap's aperture is cut to whole drawing units.
int CCommandOperation::ApertureUnits(float pixels) const {
    return Truncate(m_pCoordTran->LToD(pixels * Options().pixelScale));
}

// Compatibility 8: the first snap candidate wins, not the nearest.
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
    // Restores the state also when the drawing throws: no object stays in the state Dragging after a failed preview.
    struct CStateScope {
        CDrawable* object;
        enum CDrawable::DrawState state;
        ~CStateScope() { object->SetDrawState(state); }
    };
    const CStateScope scope = {object, object->GetDrawState()};
    object->SetDrawState(CDrawable::Dragging);
    m_pGraphic->OnDraw(dc, object);
}

bool CCommandOperation::IsOrthoOn() const {
    COperationHost* host = Host();
    return host != nullptr && host->IsOperationOrtho();
}

// Compatibility 112: the ortho lock compares whole units.
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
    const CKxAliveToken running(m_Alive);
    // When the tool ends meanwhile, its box is destroyed, and the steps that follow do nothing.
    // A preview that is drawn again after a paint leaves the box and the focus alone.
    const HWND box = IsReturning() ? nullptr : m_Edit.GetSafeHwnd();
    if (box != nullptr) {
        ::SetWindowPos(box, nullptr, Truncate(lx - 20.0f), Truncate(ly - 10.0f), kEditWidth, kEditHeight,
                       SWP_SHOWWINDOW);
        ::SetWindowText(box, text);
        ::SetFocus(box);
        // The text is selected so that the first digit typed replaces it.
        ::SendMessage(box, EM_SETSEL, 0, -1);
        ::SendMessage(box, EM_SCROLLCARET, 0, 0);
        if (running.IsAlive()) {
            m_pWnd->UpdateWindow();
        }
    }
    return GoesOn(running);
}

int CCommandOperation::TypedDistance() {
    CString text;
    if (m_Edit.GetSafeHwnd() != nullptr) {
        m_Edit.GetWindowText(text);
    }
    return _wtoi(text);
}

void CCommandOperation::InvertSnapMark(CDC* dc) {
    if (m_pGraphic == nullptr) {
        return; // A host made the tool without a painter.
    }
    CPoint pixel;
    m_pCoordTran->DPToLP(m_SnapMark, pixel);
    m_pGraphic->DrawROPNOTGrip(dc, pixel, m_SnapMark.type);
}
