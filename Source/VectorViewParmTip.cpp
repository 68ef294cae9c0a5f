// CVectorViewParm: the tooltip with the description of the parameter under the mouse. Layer 11: views and dialogs.
// A view without a window has no tooltip, and the functions here do nothing.

#include "VectorViewParm.h"

#include "TextParm.h"

#include <KxBaseClass.h>

namespace {

constexpr DWORD kTipDelay = 100;  // Milliseconds.
constexpr int kTipMaxWidth = 120; // Pixels.
// Of a description of exactly that many pieces only the first one is shown; the others are for the host.
constexpr int kTipPieces = 3;
constexpr wchar_t kTipSeparator[] = L"||";

} // namespace

void CVectorViewParm::InitToolTip() {
    if (m_hWnd == nullptr || m_ToolTip.GetSafeHwnd() != nullptr || !m_ToolTip.Create(this, 0)) {
        return;
    }
    m_ToolTip.Activate(FALSE);
    m_ToolTip.SetDelayTime(TTDT_AUTOMATIC, static_cast<int>(kTipDelay));
    m_ToolTip.SetMaxTipWidth(kTipMaxWidth);
}

bool CVectorViewParm::HasTool() {
    return m_ToolTip.GetSafeHwnd() != nullptr && m_ToolTip.GetToolCount() > 0;
}

void CVectorViewParm::SetTooltipText(const wchar_t* text, int activate) {
    if (text == nullptr) {
        return;
    }
    InitToolTip();
    if (m_ToolTip.GetSafeHwnd() == nullptr) {
        return;
    }
    if (m_ToolTip.GetToolCount() == 0) {
        CRect client;
        GetClientRect(&client);
        m_ToolTip.AddTool(this, text, &client, kTipTool);
    }
    m_ToolTip.UpdateTipText(text, this, kTipTool);
    m_ToolTip.Activate(activate);
}

void CVectorViewParm::ActivateTooltip(int activate) {
    if (HasTool()) {
        m_ToolTip.Activate(activate);
    }
}

void CVectorViewParm::SetToolTip(unsigned int, CPoint point) {
    CGePoint2d p;
    m_CoordTran.LPToDP(point, p);
    CDrawableArray* objs = GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        CDrawable* obj = objs->GetAt(i);
        if (!IsWithinPick(obj, p)) {
            continue;
        }
        if (obj == m_pTipObject) {
            return;
        }
        auto* parm = DYNAMIC_DOWNCAST(CTextParm, obj);
        if (parm == nullptr) {
            continue;
        }
        const CString description = parm->GetParmDes();
        if (description.IsEmpty()) {
            ActivateTooltip(0);
        } else {
            CStringArray pieces;
            // Compatibility 69: a description of three pieces is cut.
            const bool whole = KxMfc::Fun::Split(description, kTipSeparator, pieces) < kTipPieces;
            SetTooltipText(whole ? description : pieces[0], 1);
            if (m_ToolTip.GetSafeHwnd() != nullptr) {
                m_ToolTip.Update();
            }
        }
        m_pTipObject = parm;
        return;
    }
    // The tooltip is not hidden when the mouse leaves the object; its own time-outs hide it.
    m_pTipObject = nullptr;
}

BOOL CVectorViewParm::PreTranslateMessage(MSG* msg) {
    InitToolTip();
    if (m_ToolTip.GetSafeHwnd() != nullptr) {
        m_ToolTip.RelayEvent(msg);
    }
    return CWnd::PreTranslateMessage(msg);
}
