// CVectorViewParm: the edit of a parameter, from the press to the store. Layer 11: views and dialogs.
// Each hook and each notification may change the document or end the view. After each one the code tests whether they
// are still the same.

#include "VectorViewParm.h"

#include "Circle.h"
#include "DrawingHistory.h"
#include "Line.h"
#include "PLine.h"
#include "TextParm.h"
#include "Truncate.h"

namespace {

constexpr UINT kEditId = 1;
constexpr short kParmTypeLocked = 4; // Never edited.

} // namespace

// ---- Clicks --------------------------------------------------------------------------------------------------------

// Compatibility 77: a line without length is hit everywhere.
// The distance of an object without a length is not-a-number, which is not above the limit.
bool CVectorViewParm::IsWithinPick(CDrawable* obj, const CGePoint2d& p) {
    const float pixels = m_CoordTran.DToL(static_cast<double>(obj->HitTest(p)));
    return !(kPickAperture * m_Graphic.GetEditingOptions().pixelScale < pixels);
}

int CVectorViewParm::DoEditForClicked(unsigned int, CGePoint2d p) {
    CDrawableArray* objs = GetDocument()->GetDrawableObjs();
    // Compatibility 76: among overlapping objects the lowest one is taken.
    // The search begins with the object that is drawn first.
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        CDrawable* obj = objs->GetAt(i);
        if (!IsWithinPick(obj, p)) {
            continue;
        }
        if (auto* parm = DYNAMIC_DOWNCAST(CTextParm, obj)) {
            EditOrReport(parm);
            return 1;
        }
        // An arc is a circle. Centre marks, frames and labels are passed over.
        if (obj->IsKindOf(RUNTIME_CLASS(CLine)) || obj->IsKindOf(RUNTIME_CLASS(CCircle)) ||
            obj->IsKindOf(RUNTIME_CLASS(CPLine)) || obj->IsKindOf(RUNTIME_CLASS(CText))) {
            SendClickNotify(obj);
            return 1;
        }
    }
    SendClickNotify(nullptr);
    return 0;
}

void CVectorViewParm::EditOrReport(CTextParm* parm) {
    CWatchedParm watched(parm, m_Alive, &m_Graphic);
    DoEndEdit();
    if (watched.HasGone() || KeepsFocus()) {
        return;
    }
    if (parm->GetNeedEditBox() != 0) {
        EditOverText(parm);
    } else {
        SendClickNotify(parm);
    }
}

// ---- Opening -------------------------------------------------------------------------------------------------------

void CVectorViewParm::EditOverText(CTextParm* parm) {
    CGePoint2d a;
    CGePoint2d b;
    parm->GetParmEditRect(a, b);
    CPoint topLeft;
    CPoint bottomRight;
    m_CoordTran.DPToLP(a, topLeft);
    m_CoordTran.DPToLP(b, bottomRight);
    DoEditParm(parm, CRect(WrapAdd(topLeft.x, -1), topLeft.y, bottomRight.x, bottomRight.y), 0, 0, L"");
}

void CVectorViewParm::DoEditParm(CTextParm* parm, CRect rect, unsigned int n, int m, CString text) {
    if (parm == nullptr) {
        DoEndEdit();
        return;
    }
    CWatchedParm watched(parm, m_Alive, &m_Graphic);
    DoEndEdit();
    if (watched.HasGone() || KeepsFocus()) {
        return;
    }
    OnPreEditParm(parm, n, m, text);
    if (watched.HasGone() || CanParmEdit(parm) == 0 || watched.HasGone()) {
        return;
    }
    CreateInplaceEdit(parm, rect, n);
    // Compatibility 79: a refused text is dropped when another edit opens.
    m_pEditParm = parm;
    m_Session.Open(watched);
    // Compatibility 78: what `OnPreEditParm` changes has no effect.
    // The box gets none of the values that the hook has set.
    m_Edit.ShowEdit(rect, parm->GetText(), 0, 0, L"");
}

int CVectorViewParm::CanParmEdit(CTextParm* parm) {
    if (parm->GetParmType() == kParmTypeLocked) {
        return 0;
    }
    const CKxAliveToken alive(m_Alive);
    m_Notify.pText = parm;
    m_Notify.nKind = kVpkNothing;
    Notify(kVpnQueryEdit);
    return alive.IsAlive() && m_Notify.nKind != kVpkRefused;
}

void CVectorViewParm::CreateInplaceEdit(CTextParm* parm, CRect&, unsigned int) {
    if (m_Edit.GetSafeHwnd() == nullptr) {
        m_Edit.Create(this, parm, kEditId);
    }
    m_Edit.SetTextParm(parm);
    if (parm == nullptr || m_Edit.GetSafeHwnd() == nullptr) {
        return;
    }
    CFont font;
    font.Attach(parm->GetFontHandle(&m_CoordTran));
    m_Edit.SetFont(&font, TRUE);
    // The box uses the handle after the CFont has been destroyed, and no longer uses the one before it.
    const auto before = m_hEditFont;
    m_hEditFont = static_cast<HFONT>(font.Detach());
    if (before != nullptr) {
        ::DeleteObject(before);
    }
}

// ---- Ending --------------------------------------------------------------------------------------------------------

void CVectorViewParm::DoEndEdit() {
    using Phase = CParmEditSession::Phase;
    // The hooks are running: a hook that shows a message box takes the focus from the edit box, which then asks for its
    // end once more.
    const Phase phase = m_Session.GetPhase();
    const unsigned int edit = m_Session.GetNumber();
    if (m_pEditParm == nullptr || (phase != Phase::Open && phase != Phase::Refused) || !ContinueEdit(edit)) {
        return;
    }
    const CHistoryGroup step(GetHistory(), L"修改参数", L"Edit parameter");
    StoreEdit();
}

void CVectorViewParm::StoreEdit() {
    using Phase = CParmEditSession::Phase;
    const unsigned int edit = m_Session.GetNumber();
    CTextParm* const parm = m_pEditParm;
    CString text;
    m_Edit.GetEditText(text);
    int accepted = 0;
    m_Session.SetRefused(false);
    if (!m_Session.RunHook(Phase::Accepting, m_Alive, [&] { accepted = OnAcceptEditData(parm, text); })) {
        return;
    }
    if (accepted == 0) {
        Refuse(edit);
        return;
    }
    if (!ContinueEdit(edit)) {
        return;
    }
    // Read again, because the hook may have changed the text in the box.
    m_Edit.GetEditText(text);
    CString old = parm->GetText();
    const auto goesOnAfter = [&](Phase hook, auto call) {
        return m_Session.RunHook(hook, m_Alive, call) && ContinueEdit(edit);
    };
    if (!goesOnAfter(Phase::Storing, [&] { OnEditChanging(parm, old, text); })) {
        return;
    }
    parm->SetText(text);
    if (goesOnAfter(Phase::Storing, [&] { OnEditChanged(parm, old, text); }) &&
        goesOnAfter(Phase::Ending, [&] { OnEndEdit(parm); })) {
        CloseEdit();
    }
}

bool CVectorViewParm::ContinueEdit(unsigned int edit) {
    if (!m_Session.IsOpen(edit)) {
        // A hook has cancelled the edit, or opened another one, which stays open.
        return false;
    }
    if (m_Session.HasParmGone()) {
        CloseEdit();
        return false;
    }
    return true;
}

void CVectorViewParm::Refuse(unsigned int edit) {
    if (!m_Session.IsOpen(edit)) {
        return;
    }
    m_Session.SetRefused(true);
    const HWND box = m_Edit.GetSafeHwnd();
    if (m_bStrictRefusal != 0 && ::IsWindowVisible(box) && ::GetFocus() != box &&
        ::GetActiveWindow() == ::GetAncestor(box, GA_ROOT)) {
        // Runs in the phase of the question: when another window takes the focus back in return, no second end is asked
        // for.
        m_Session.RunHook(CParmEditSession::Phase::Accepting, m_Alive, [&] { ::SetFocus(box); });
    }
}

bool CVectorViewParm::KeepsFocus() const {
    return m_bStrictRefusal != 0 && m_Session.GetPhase() == CParmEditSession::Phase::Refused;
}

bool CVectorViewParm::TakeFocus() {
    const CKxAliveToken alive(m_Alive);
    if (m_bStrictRefusal != 0) {
        // Asked before the focus moves: the hook is asked once about a refused text, and its box keeps the focus.
        DoEndEdit();
        if (!alive.IsAlive() || KeepsFocus()) {
            return false;
        }
    }
    SetFocus();
    return alive.IsAlive();
}

int CVectorViewParm::OnBeforeUndo() {
    using Phase = CParmEditSession::Phase;
    const CKxAliveToken alive(m_Alive);
    DoEndEdit();
    if (!alive.IsAlive() || KeepsFocus()) {
        return 0;
    }
    const Phase phase = m_Session.GetPhase();
    if (phase == Phase::Open || phase == Phase::Refused) {
        CloseEdit();
        if (!alive.IsAlive()) {
            return 0;
        }
    } else if (phase != Phase::Closed) {
        return 0;
    }
    return CVectorView::OnBeforeUndo();
}

void CVectorViewParm::DropEdit() {
    m_pEditParm = nullptr;
    m_Session.Close();
    m_Edit.EndEdit();
}

void CVectorViewParm::CloseEdit() {
    const CKxAliveToken alive(m_Alive);
    DropEdit();
    if (alive.IsAlive() && m_hWnd != nullptr) {
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
    }
}

CString CVectorViewParm::GetEditText() const {
    return IsEditOpen() != 0 ? m_Edit.GetShownText() : CString();
}

// ---- Walking -------------------------------------------------------------------------------------------------------

void CVectorViewParm::OnEditTabDown(CTextParm* current) {
    CDrawableArray* objs = GetDocument()->GetDrawableObjs();
    CTextParm* first = nullptr;
    bool found = false;
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        CDrawable* obj = objs->GetAt(i);
        auto* parm = DYNAMIC_DOWNCAST(CTextParm, obj);
        if (parm != nullptr && first == nullptr) {
            // Compatibility 81: a walk from a parameter without a box opens the first parameter.
            if (parm->GetNeedEditBox() == 0) {
                continue;
            }
            first = parm;
        }
        if (parm == nullptr || !found) {
            found = found || obj == current;
            continue;
        }
        // Compatibility 80: a walk ends at a parameter that is refused.
        if (parm->GetNeedEditBox() != 0) {
            EditOverText(parm);
            return;
        }
    }
    if (first != nullptr) {
        EditOverText(first);
    }
}

// ---- Hooks ---------------------------------------------------------------------------------------------------------

void CVectorViewParm::OnPreEditParm(CTextParm*, unsigned int&, int&, CString&) {}

void CVectorViewParm::OnEditChanged(CTextParm*, CString, CString) {}

void CVectorViewParm::OnEditChanging(CTextParm*, CString&, CString&) {}

int CVectorViewParm::OnAcceptEditData(CTextParm*, CString) {
    return 1;
}

void CVectorViewParm::OnEndEdit(CTextParm*) {}
