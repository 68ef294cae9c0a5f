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
    ON_WM_NCDESTROY()
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
    // The constructor of the base has made an ordinary engine, because it calls the base's own hook.
    CVectorViewParm::OnCreateCommandOperationManager();
    m_Graphic.SetNeedShowDecimal(0);
}

CVectorViewParm::~CVectorViewParm() {
    // No hook is called for a view that is being destroyed: its derived class no longer exists.
    DropEdit();
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
    const CKxAliveToken alive(m_Alive);
    const int loaded = CVectorView::LoadFile(data, size);
    if (!alive.IsAlive()) {
        return 1;
    }
    if (loaded != 0) {
        // The objects of the old drawing are freed, and a new one may lie at that address.
        m_pTipObject = nullptr;
    }
    // Compatibility 74: a load gives 1 whatever happened.
    SetTooltipText(L"", 0);
    return 1;
}

int CVectorViewParm::ResetVectorView() {
    const CKxAliveToken alive(m_Alive);
    if (m_pEditParm != nullptr) {
        CTextParm* parm = m_pEditParm;
        // A reset inside OnEndEdit doesn't call it a second time.
        if (m_Session.GetPhase() != CParmEditSession::Phase::Ending && !m_Session.HasParmGone() &&
            !m_Session.RunHook(CParmEditSession::Phase::Ending, m_Alive, [&] { OnEndEdit(parm); })) {
            return 1;
        }
        DropEdit();
        if (!alive.IsAlive()) {
            return 1;
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

// Compatibility 67: no parameter is found by its name.
CTextParm* CVectorViewParm::GetTextParmDrawObj(CString) {
    return nullptr;
}

void CVectorViewParm::SetNeedShowDecimal(int need) {
    m_Graphic.SetNeedShowDecimal(need);
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
    // Compatibility 72: a press on nothing leaves the former line, circle and polyline in the record.
    if (obj == nullptr) {
        m_Notify.nKind = kVpkNothing;
        m_Notify.pText = nullptr;
    } else if (auto* line = DYNAMIC_DOWNCAST(CLine, obj)) {
        m_Notify.nKind = kVpkLine;
        m_Notify.pLine = line;
    } else if (auto* circle = DYNAMIC_DOWNCAST(CCircle, obj)) {
        // An arc is a circle too and comes here: kind 2 for both.
        m_Notify.nKind = kVpkCircle;
        m_Notify.pCircle = circle;
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
        // An object of a kind that has no number is reported like no object.
        m_Notify.nKind = kVpkNothing;
        m_Notify.pText = nullptr;
    }
    Notify(kVpnClick);
}

// ---- Window messages -----------------------------------------------------------------------------------------------

void CVectorViewParm::OnNcDestroy() {
    DropEdit();
    m_Session.Abandon();
    CVectorView::OnNcDestroy();
}

void CVectorViewParm::OnSize(UINT nType, int cx, int cy) {
    CVectorView::OnSize(nType, cx, cy);
    if (HasTool()) {
        // The next text registers it again with the new client rectangle.
        m_ToolTip.DelTool(this, kTipTool);
    }
}

void CVectorViewParm::OnLButtonDown(UINT nFlags, CPoint point) {
    const CKxAliveToken alive(m_Alive);
    // The box of an open edit loses the focus, which ends the edit before anything else happens.
    if (!TakeFocus()) {
        return;
    }
    CGePoint2d p;
    m_CoordTran.LPToDP(point, p);
    const int hit = DoEditForClicked(nFlags, p);
    if (!alive.IsAlive()) {
        return;
    }
    if (hit == 0) {
        DoEndEdit();
        if (!alive.IsAlive()) {
            return;
        }
    }
    CVectorView::OnLButtonDown(nFlags, point);
}

void CVectorViewParm::OnLButtonDblClk(UINT nFlags, CPoint point) {
    const CKxAliveToken alive(m_Alive);
    CVectorView::OnLButtonDblClk(nFlags, point);
    if (alive.IsAlive()) {
        // Compatibility 73: a double click has the fields of the last click.
        Notify(kVpnDblClk);
    }
}

void CVectorViewParm::OnRButtonDown(UINT nFlags, CPoint point) {
    const CKxAliveToken alive(m_Alive);
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
    if (alive.IsAlive()) {
        CVectorView::OnRButtonDown(nFlags, point);
    }
    menu.DestroyMenu();
}

void CVectorViewParm::OnMouseMove(UINT nFlags, CPoint point) {
    SetToolTip(nFlags, point);
    CVectorView::OnMouseMove(nFlags, point);
}

BOOL CVectorViewParm::OnMouseWheel(UINT nFlags, short zDelta, CPoint point) {
    // Compatibility 75: only 1 enables the wheel.
    if (m_bEnableWheel == 1) {
        return CVectorView::OnMouseWheel(nFlags, zDelta, point);
    }
    return static_cast<BOOL>(Default());
}

void CVectorViewParm::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) {
    CVectorView::OnKeyDown(nChar, nRepCnt, nFlags);
}

// For these two messages only the window's default is called, whatever the base does with them.

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
    if (TakeFocus()) {
        CVectorView::ZoomAll();
    }
}

void CVectorViewParm::OnMenuitemMoveVector() {
    const CKxAliveToken alive(m_Alive);
    if (!TakeFocus()) {
        return;
    }
    CPoint cursor;
    ::GetCursorPos(&cursor);
    DoCommand(L"viewmove");
    if (alive.IsAlive()) {
        // The cursor changes at once, also when the mouse doesn't move.
        OnSetCursor(this, static_cast<UINT>(Default()), 0);
    }
}
