// CVectorViewParm: the edit of a parameter, from the press to the store. Layer 10: views and dialogs.
// Hooks and the parent's answer may change the document at any step: pointers are looked up anew behind each of them.

#include "VectorViewParm.h"

#include "Circle.h"
#include "Line.h"
#include "PLine.h"
#include "ScopedFlag.h"
#include "TextParm.h"
#include "Truncate.h"

namespace {

constexpr UINT kEditId = 1;
constexpr short kParmTypeLocked = 4; // Never edited.

} // namespace

// ---- Clicks --------------------------------------------------------------------------------------------------------

// A distance that is no number, from an object without a length, counts as a hit.
bool CVectorViewParm::IsWithinPick(CDrawable* obj, const CGePoint2d& p) {
    const float pixels = m_CoordTran.DToL(static_cast<double>(obj->HitTest(p)));
    return !(kPickAperture < pixels);
}

int CVectorViewParm::DoEditForClicked(unsigned int, CGePoint2d p) {
    CDrawableArray* objs = GetDocument()->GetDrawableObjs();
    // From the bottom of the picture up: among overlapping objects the one drawn first is taken.
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        CDrawable* obj = objs->GetAt(i);
        if (!IsWithinPick(obj, p)) {
            continue;
        }
        if (auto* parm = DYNAMIC_DOWNCAST(CTextParm, obj)) {
            ParmStanding standing = StandingOf(parm);
            DoEndEdit();
            if (HasLeft(standing)) {
                return 1;
            }
            if (parm->GetNeedEditBox() != 0) {
                EditOverText(parm);
            } else {
                SendClickNotify(parm);
            }
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
    ParmStanding standing = StandingOf(parm);
    DoEndEdit();
    if (parm == nullptr || HasLeft(standing)) {
        return;
    }
    OnPreEditParm(parm, n, m, text);
    if (HasLeft(standing) || CanParmEdit(parm) == 0 || HasLeft(standing)) {
        return;
    }
    CreateInplaceEdit(parm, rect, n);
    // An edit that was refused its end is overwritten here: its text is lost, and no hook hears of it.
    m_pEditParm = parm;
    ++m_EditSerial;
    m_EditStanding = standing;
    // What the hook did to n, m and text stays with the hook.
    m_Edit.ShowEdit(rect, parm->GetText(), 0, 0, L"");
}

int CVectorViewParm::CanParmEdit(CTextParm* parm) {
    if (parm->GetParmType() == kParmTypeLocked) {
        return 0;
    }
    m_Notify.pText = parm;
    m_Notify.nKind = kVpkNothing;
    Notify(kVpnQueryEdit);
    return m_Notify.nKind != kVpkRefused;
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
    // The box keeps using the handle after the CFont has gone. The one before it is free now.
    const auto before = m_hEditFont;
    m_hEditFont = static_cast<HFONT>(font.Detach());
    if (before != nullptr) {
        ::DeleteObject(before);
    }
}

// ---- Ending --------------------------------------------------------------------------------------------------------

bool CVectorViewParm::ContinueEdit(const CTextParm* parm, unsigned int serial) {
    if (m_pEditParm != parm || m_EditSerial != serial) {
        // A hook has broken the edit off, or opened another one, which stays open.
        return false;
    }
    if (HasLeft(m_EditStanding)) {
        CloseEdit();
        return false;
    }
    return true;
}

void CVectorViewParm::DoEndEdit() {
    // A hook that shows a message box takes the focus from the edit box, which then asks for its end once more.
    if (m_pEditParm == nullptr || m_bInEndEdit) {
        return;
    }
    CScopedFlag ending(m_bInEndEdit);
    CTextParm* const parm = m_pEditParm;
    const unsigned int serial = m_EditSerial;
    CString text;
    m_Edit.GetEditText(text);
    if (!ContinueEdit(parm, serial) || OnAcceptEditData(parm, text) == 0 || !ContinueEdit(parm, serial)) {
        return;
    }
    // Once more: the hook may have changed the box itself.
    m_Edit.GetEditText(text);
    CString old = parm->GetText();
    OnEditChanging(parm, old, text);
    if (!ContinueEdit(parm, serial)) {
        return;
    }
    parm->SetText(text);
    OnEditChanged(parm, old, text);
    if (!ContinueEdit(parm, serial)) {
        return;
    }
    CallOnEndEdit(parm);
    if (m_pEditParm == parm && m_EditSerial == serial) {
        CloseEdit();
    }
}

void CVectorViewParm::CallOnEndEdit(CTextParm* parm) {
    // A hook that resets the view would be called by that again, without end.
    if (m_bInOnEndEdit) {
        return;
    }
    CScopedFlag calling(m_bInOnEndEdit);
    OnEndEdit(parm);
}

void CVectorViewParm::CloseEdit() {
    m_pEditParm = nullptr;
    if (m_Edit.GetSafeHwnd() != nullptr) {
        m_Edit.EndEdit();
    }
    if (m_hWnd != nullptr) {
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
    }
}

// ---- Walking -------------------------------------------------------------------------------------------------------

void CVectorViewParm::OnEditTabDown(CTextParm* current) {
    // `current` is compared only: the end of its edit may have removed it.
    CDrawableArray* objs = GetDocument()->GetDrawableObjs();
    CTextParm* first = nullptr;
    bool found = false;
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        CDrawable* obj = objs->GetAt(i);
        auto* parm = DYNAMIC_DOWNCAST(CTextParm, obj);
        if (parm != nullptr && first == nullptr) {
            if (parm->GetNeedEditBox() == 0) {
                continue;
            }
            first = parm;
        }
        if (parm == nullptr || !found) {
            found = found || obj == current;
            continue;
        }
        if (parm->GetNeedEditBox() != 0) {
            // One that refuses is not skipped: the walk ends at it, with no box open.
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
