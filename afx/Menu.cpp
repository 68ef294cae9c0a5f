// Menus, and the state of a menu item or control that update handlers set.
// Layer 1: afx.
#include "ThreadState.h"

IMPLEMENT_DYNCREATE(CMenu, CObject)

// --- handles -----------------------------------------------------------------------------------------------------

CMenu::~CMenu() {
    DestroyMenu();
}

CMenu* PASCAL CMenu::FromHandle(HMENU hMenu) {
    if (hMenu == nullptr) {
        return nullptr;
    }
    HandleMap<CMenu>& map = AfxState().menus;
    if (auto* entry = map.Find(hMenu)) {
        return entry->object;
    }
    CMenu* object = map.SetTemporary(hMenu, std::make_unique<CMenu>());
    object->m_hMenu = hMenu;
    return object;
}

CMenu* PASCAL CMenu::FromHandlePermanent(HMENU hMenu) {
    return hMenu == nullptr ? nullptr : AfxState().menus.Permanent(hMenu);
}

void PASCAL CMenu::DeleteTempMap() {
    AfxState().menus.DeleteTemporaries([](CMenu* object) { object->m_hMenu = nullptr; });
}

BOOL CMenu::Attach(HMENU hMenu) {
    return AfxAttach(AfxState().menus, this, m_hMenu, hMenu);
}

HMENU CMenu::Detach() {
    const HMENU menu = m_hMenu;
    m_hMenu = nullptr;
    if (menu != nullptr) {
        if (AfxThreadState* state = AfxStateIfAny()) {
            state->menus.Remove(menu, this);
        }
    }
    return menu;
}

// --- making and ending -------------------------------------------------------------------------------------------

BOOL CMenu::CreateMenu() {
    return Attach(::CreateMenu());
}

BOOL CMenu::CreatePopupMenu() {
    return Attach(::CreatePopupMenu());
}

BOOL CMenu::LoadMenu(LPCTSTR lpszResourceName) {
    return Attach(::LoadMenu(AfxFindResourceHandle(lpszResourceName, RT_MENU), lpszResourceName));
}

BOOL CMenu::LoadMenu(UINT nIDResource) {
    return LoadMenu(MAKEINTRESOURCE(nIDResource));
}

BOOL CMenu::LoadMenuIndirect(const void* lpMenuTemplate) {
    return Attach(::LoadMenuIndirect(lpMenuTemplate));
}

BOOL CMenu::DestroyMenu() {
    return m_hMenu != nullptr && ::DestroyMenu(Detach());
}

// --- items -------------------------------------------------------------------------------------------------------

BOOL CMenu::AppendMenu(UINT nFlags, UINT_PTR nIDNewItem, LPCTSTR lpszNewItem) {
    return ::AppendMenu(m_hMenu, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, LPCTSTR lpszNewItem) {
    return ::InsertMenu(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, LPCTSTR lpszNewItem) {
    return ::ModifyMenu(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::DeleteMenu(UINT nPosition, UINT nFlags) {
    return ::DeleteMenu(m_hMenu, nPosition, nFlags);
}

BOOL CMenu::RemoveMenu(UINT nPosition, UINT nFlags) {
    return ::RemoveMenu(m_hMenu, nPosition, nFlags);
}

UINT CMenu::CheckMenuItem(UINT nIDCheckItem, UINT nCheck) {
    return ::CheckMenuItem(m_hMenu, nIDCheckItem, nCheck);
}

BOOL CMenu::CheckMenuRadioItem(UINT nIDFirst, UINT nIDLast, UINT nIDItem, UINT nFlags) {
    return ::CheckMenuRadioItem(m_hMenu, nIDFirst, nIDLast, nIDItem, nFlags);
}

UINT CMenu::EnableMenuItem(UINT nIDEnableItem, UINT nEnable) {
    return static_cast<UINT>(::EnableMenuItem(m_hMenu, nIDEnableItem, nEnable));
}

BOOL CMenu::SetDefaultItem(UINT uItem, BOOL fByPos) {
    return ::SetMenuDefaultItem(m_hMenu, uItem, static_cast<UINT>(fByPos));
}

int CMenu::GetMenuItemCount() const {
    return ::GetMenuItemCount(m_hMenu);
}

UINT CMenu::GetMenuItemID(int nPos) const {
    return ::GetMenuItemID(m_hMenu, nPos);
}

UINT CMenu::GetMenuState(UINT nID, UINT nFlags) const {
    return ::GetMenuState(m_hMenu, nID, nFlags);
}

int CMenu::GetMenuString(UINT nIDItem, LPTSTR lpString, int nMaxCount, UINT nFlags) const {
    return ::GetMenuString(m_hMenu, nIDItem, lpString, nMaxCount, nFlags);
}

int CMenu::GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const {
    const int length = ::GetMenuString(m_hMenu, nIDItem, nullptr, 0, nFlags);
    ::GetMenuString(m_hMenu, nIDItem, rString.GetBufferSetLength(length), length + 1, nFlags);
    rString.ReleaseBuffer(length);
    return length;
}

CMenu* CMenu::GetSubMenu(int nPos) const {
    return FromHandle(::GetSubMenu(m_hMenu, nPos));
}

BOOL CMenu::TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect) {
    return ::TrackPopupMenu(m_hMenu, nFlags, x, y, 0, AfxHandleOf(pWnd), lpRect);
}

// --- CCmdUI ------------------------------------------------------------------------------------------------------

void CCmdUI::Enable(BOOL bOn) {
    m_bEnableChanged = TRUE;
    if (m_pMenu != nullptr) {
        // An item that opens a submenu represents the submenu's first command, not itself.
        if (m_pSubMenu == nullptr) {
            m_pMenu->EnableMenuItem(m_nIndex, MF_BYPOSITION | (bOn ? MF_ENABLED : MF_DISABLED | MF_GRAYED));
        }
    } else if (m_pOther != nullptr) {
        // If the control with the focus were disabled, no window would have the focus.
        if (!bOn && ::GetFocus() == m_pOther->m_hWnd) {
            ::SendMessage(::GetParent(m_pOther->m_hWnd), WM_NEXTDLGCTL, 0, FALSE);
        }
        m_pOther->EnableWindow(bOn);
    }
}

void CCmdUI::SetCheck(int nCheck) {
    if (m_pMenu != nullptr) {
        if (m_pSubMenu == nullptr) {
            m_pMenu->CheckMenuItem(m_nIndex, MF_BYPOSITION | (nCheck != 0 ? MF_CHECKED : MF_UNCHECKED));
        }
    } else if (m_pOther != nullptr && (m_pOther->SendMessage(WM_GETDLGCODE) & DLGC_BUTTON) != 0) {
        m_pOther->SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck));
    }
}

void CCmdUI::SetRadio(BOOL bOn) {
    SetCheck(bOn ? 1 : 0);
    if (bOn && m_pMenu != nullptr && m_pSubMenu == nullptr) {
        m_pMenu->CheckMenuRadioItem(m_nIndex, m_nIndex, m_nIndex, MF_BYPOSITION);
    }
}

void CCmdUI::SetText(LPCTSTR lpszText) {
    if (m_pMenu != nullptr) {
        if (m_pSubMenu != nullptr) {
            return;
        }
        MENUITEMINFO info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_STRING; // the other properties of the item stay
        info.dwTypeData = const_cast<LPTSTR>(lpszText);
        ::SetMenuItemInfo(*m_pMenu, m_nIndex, TRUE, &info);
    } else if (m_pOther != nullptr) {
        CString old;
        m_pOther->GetWindowText(old);
        if (old != lpszText) {
            m_pOther->SetWindowText(lpszText);
        }
    }
}

BOOL CCmdUI::DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler) {
    if (m_nID == 0 || LOWORD(m_nID) == 0xFFFF) {
        return TRUE; // separators and texts have no state
    }
    m_bEnableChanged = FALSE;
    const BOOL handled = pTarget->OnCmdMsg(m_nID, static_cast<int>(CN_UPDATE_COMMAND_UI), this, nullptr);
    if (bDisableIfNoHndler && !m_bEnableChanged) {
        AFX_CMDHANDLERINFO info = {};
        Enable(pTarget->OnCmdMsg(m_nID, CN_COMMAND, nullptr, &info));
    }
    return handled;
}
