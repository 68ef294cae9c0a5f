#include "VectorViewParm.h"

#include "Arc.h"
#include "Circle.h"
#include "CommandOperationManagerViewParm.h"
#include "Dialog_DrawAbleProperty.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "PLine.h"
#include "ResourceScope.h"
#include "TextParm.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CVectorViewParm, CVectorView)

BEGIN_MESSAGE_MAP(CVectorViewParm, CVectorView)
    ON_WM_SIZE()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_RBUTTONDOWN()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSEWHEEL()
    ON_WM_KEYDOWN()
    ON_WM_CHAR()
    ON_WM_KILLFOCUS()
    ON_WM_SETCURSOR()
    ON_COMMAND(ID_VIEW_ZOOM_ALL, &CVectorViewParm::OnMenuitemZoomAll)
    ON_COMMAND(ID_VIEW_MOVE, &CVectorViewParm::OnMenuitemMoveVector)
END_MESSAGE_MAP()

// ---- Construction --------------------------------------------------------------------------------------------------

CVectorViewParm::CVectorViewParm() {
    // The base has made an ordinary engine: inside its constructor the hook reaches no further.
    CVectorViewParm::OnCreateCommandOperationManager();
    m_Graphic.SetNeedShowDecimal(0);
}

CVectorViewParm::~CVectorViewParm() {
    // No hook runs for a view that is going; those of a derived class are gone already.
    m_pEditParm = nullptr;
    if (m_Edit.GetSafeHwnd() != nullptr) {
        m_Edit.DestroyWindow();
    }
    if (m_hEditFont != nullptr) {
        ::DeleteObject(m_hEditFont);
    }
}

void CVectorViewParm::OnCreateCommandOperationManager() {
    FreeCommandOperationManager();
    m_pManager = new CCommandOperationManager_ViewParm(this, &m_Graphic, &m_CoordTran, GetDocument());
    KX_ADD_MEMORY(m_pManager);
}

void CVectorViewParm::PreSubclassWindow() {
    CVectorView::PreSubclassWindow();
}

// ---- The drawing ---------------------------------------------------------------------------------------------------

int CVectorViewParm::LoadFile(unsigned char* data, unsigned int size) {
    if (CVectorView::LoadFile(data, size) != 0) {
        // The objects of the old drawing are freed, and a new one may stand at that address.
        m_pTipObject = nullptr;
    }
    SetTooltipText(L"", 0);
    return 1;
}

int CVectorViewParm::ResetVectorView() {
    if (m_pEditParm != nullptr) {
        CTextParm* parm = m_pEditParm;
        if (!HasLeft(m_EditStanding)) {
            CallOnEndEdit(parm);
        }
        m_pEditParm = nullptr;
        if (m_Edit.GetSafeHwnd() != nullptr) {
            m_Edit.EndEdit();
        }
    }
    SetTooltipText(L"", 0);
    m_pTipObject = nullptr;
    if (m_pDlgDrawAbleProperty != nullptr) {
        m_pDlgDrawAbleProperty->LoadObject(nullptr);
    }
    GetDocument()->Reset();
    return 1;
}

CTextParm* CVectorViewParm::GetTextParmDrawObj(CString name) {
    CDrawableArray* objs = GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        // The list is asked for its class, and not its element, so that nothing is ever found. Hosts have long been
        // walking the list themselves; one that suddenly got an answer here would take a path nobody has gone.
        const CObject* asked = objs;
        if (asked->IsKindOf(RUNTIME_CLASS(CTextParm))) {
            auto* parm = static_cast<CTextParm*>(objs->GetAt(i));
            if (parm->GetParmName().CompareNoCase(name) == 0) {
                return parm;
            }
        }
    }
    return nullptr;
}

void CVectorViewParm::SetNeedShowDecimal(int need) {
    m_Graphic.SetNeedShowDecimal(need);
}

bool CVectorViewParm::IsInDrawing(const CTextParm* parm) {
    if (parm == nullptr) {
        return false;
    }
    CDrawableArray* objs = GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        const CDrawable* obj = objs->GetAt(i);
        if (obj == parm) {
            // Another kind of object may have come to stand there.
            return obj->IsKindOf(RUNTIME_CLASS(CTextParm)) != FALSE;
        }
    }
    return false;
}

CVectorViewParm::ParmStanding CVectorViewParm::StandingOf(const CTextParm* parm) {
    return {parm, GetDocument()->GetGeneration(), IsInDrawing(parm)};
}

bool CVectorViewParm::HasLeft(ParmStanding& standing) {
    if (!standing.isListed) {
        standing = StandingOf(standing.parm);
        return false;
    }
    // Of a drawing that was freed an equal address proves nothing.
    return standing.generation != GetDocument()->GetGeneration() || !IsInDrawing(standing.parm);
}

// ---- Notifications -------------------------------------------------------------------------------------------------

void CVectorViewParm::Notify(UINT code) {
    if (m_hWnd == nullptr) {
        return;
    }
    CWnd* parent = CWnd::FromHandle(::GetParent(m_hWnd));
    if (parent == nullptr) {
        return;
    }
    m_Notify.hwndFrom = m_hWnd;
    m_Notify.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    m_Notify.code = code;
    ::SendMessageW(parent->m_hWnd, WM_NOTIFY, m_Notify.idFrom, reinterpret_cast<LPARAM>(&m_Notify));
}

void CVectorViewParm::SendClickNotify(CDrawable* obj) {
    if (obj == nullptr) {
        m_Notify.nKind = kVpkNothing;
        m_Notify.pText = nullptr;
    } else if (auto* line = DYNAMIC_DOWNCAST(CLine, obj)) {
        m_Notify.nKind = kVpkLine;
        m_Notify.pLine = line;
    } else if (auto* circle = DYNAMIC_DOWNCAST(CCircle, obj)) {
        // An arc is a circle as well and arrives here; hosts read kind 2 for both.
        m_Notify.nKind = kVpkCircle;
        m_Notify.pCircle = circle;
    } else if (auto* arc = DYNAMIC_DOWNCAST(CArc, obj)) {
        m_Notify.nKind = kVpkArc;
        m_Notify.pCircle = arc;
    } else if (auto* pline = DYNAMIC_DOWNCAST(CPLine, obj)) {
        m_Notify.nKind = kVpkPLine;
        m_Notify.pPLine = pline;
        m_Notify.nSelLine = pline->GetSelSelLine();
    } else if (auto* parm = DYNAMIC_DOWNCAST(CTextParm, obj)) {
        m_Notify.nKind = kVpkParm;
        m_Notify.pText = parm;
    } else if (auto* text = DYNAMIC_DOWNCAST(CText, obj)) {
        m_Notify.nKind = kVpkText;
        m_Notify.pText = text;
    } else {
        // A kind with no number of its own: nothing that a host could be told of.
        m_Notify.nKind = kVpkNothing;
        m_Notify.pText = nullptr;
    }
    Notify(kVpnClick);
}

// ---- Window messages -----------------------------------------------------------------------------------------------

void CVectorViewParm::OnSize(UINT nType, int cx, int cy) {
    CVectorView::OnSize(nType, cx, cy);
    if (HasTool()) {
        // The next text registers it again with the new client rectangle.
        m_ToolTip.DelTool(this, kTipTool);
    }
}

void CVectorViewParm::OnLButtonDown(UINT nFlags, CPoint point) {
    // An open edit loses the focus by this, and is stored before anything else happens.
    SetFocus();
    CGePoint2d p;
    m_CoordTran.LPToDP(point, p);
    if (DoEditForClicked(nFlags, p) == 0) {
        DoEndEdit();
    }
    CVectorView::OnLButtonDown(nFlags, point);
}

void CVectorViewParm::OnLButtonDblClk(UINT nFlags, CPoint point) {
    CVectorView::OnLButtonDblClk(nFlags, point);
    Notify(kVpnDblClk);
}

void CVectorViewParm::OnRButtonDown(UINT nFlags, CPoint point) {
    CPoint cursor;
    ::GetCursorPos(&cursor);
    CMenu menu;
    {
        CResourceScope resources(VectorViewModule());
        if (menu.LoadMenu(IDR_VIEW_MENU)) {
            if (CMenu* popup = menu.GetSubMenu(0)) {
                popup->TrackPopupMenu(0, cursor.x, cursor.y, this, nullptr);
            }
        }
    }
    CVectorView::OnRButtonDown(nFlags, point);
    menu.DestroyMenu();
}

void CVectorViewParm::OnMouseMove(UINT nFlags, CPoint point) {
    SetToolTip(nFlags, point);
    CVectorView::OnMouseMove(nFlags, point);
}

BOOL CVectorViewParm::OnMouseWheel(UINT nFlags, short zDelta, CPoint point) {
    if (m_bEnableWheel == 1) {
        return CVectorView::OnMouseWheel(nFlags, zDelta, point);
    }
    return static_cast<BOOL>(Default());
}

void CVectorViewParm::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) {
    CVectorView::OnKeyDown(nChar, nRepCnt, nFlags);
}

// These two go past whatever the base does with them, now or later.

void CVectorViewParm::OnChar(UINT, UINT, UINT) {
    Default();
}

void CVectorViewParm::OnKillFocus(CWnd*) {
    Default();
}

BOOL CVectorViewParm::OnSetCursor(CWnd* wnd, UINT nHitTest, UINT message) {
    return CVectorView::OnSetCursor(wnd, nHitTest, message);
}

void CVectorViewParm::OnMenuitemZoomAll() {
    SetFocus();
    CVectorView::ZoomAll();
}

void CVectorViewParm::OnMenuitemMoveVector() {
    SetFocus();
    CPoint cursor;
    ::GetCursorPos(&cursor);
    DoCommand(L"viewmove");
    // The mouse may stay where it is: the cursor changes at once.
    OnSetCursor(this, static_cast<UINT>(Default()), 0);
}
