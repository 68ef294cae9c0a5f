// Command targets: objects with a message map, the state of a command's menu item, the hourglass, menus. Included by
// afxwin.h.
// Classes: CCmdTarget, CWaitCursor, CMenu, CCmdUI.
// Layer 1: afx.
#pragma once

#include "afxmsg_.h"

// Anything that answers commands.
class NRAFX_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
protected:
    CCmdTarget() = default;

public:
    // Looks the command up in the message map and calls its handler. With pHandlerInfo the handler is only found. TRUE
    // ends the routing. For CN_UPDATE_COMMAND_UI pExtra is a CCmdUI, for notifications an AFX_NOTIFY.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

    void BeginWaitCursor();
    void EndWaitCursor();
    void RestoreWaitCursor(); // after a message box has changed the cursor

    static const AFX_MSGMAP* PASCAL GetThisMessageMap();

protected:
    virtual const AFX_MSGMAP* GetMessageMap() const;
    friend class CWnd;
};

// The hourglass for as long as the object exists.
class NRAFX_API CWaitCursor {
public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    void Restore();
};

class NRAFX_API CMenu : public CObject {
    DECLARE_DYNCREATE(CMenu)
public:
    CMenu() : m_hMenu(nullptr) {}
    virtual ~CMenu(); // destroys the menu
    CMenu(const CMenu&) = delete;
    CMenu& operator=(const CMenu&) = delete;

    HMENU m_hMenu;

    operator HMENU() const { return m_hMenu; }
    HMENU GetSafeHmenu() const { return m_hMenu; }
    // The object that owns the handle, or a temporary one that exists until the thread is next idle.
    static CMenu* PASCAL FromHandle(HMENU hMenu);
    static CMenu* PASCAL FromHandlePermanent(HMENU hMenu);
    static void PASCAL DeleteTempMap();

    BOOL Attach(HMENU hMenu);
    HMENU Detach();
    BOOL CreateMenu();
    BOOL CreatePopupMenu();
    BOOL LoadMenu(LPCTSTR lpszResourceName);
    BOOL LoadMenu(UINT nIDResource);
    BOOL LoadMenuIndirect(const void* lpMenuTemplate);
    BOOL DestroyMenu();

    BOOL AppendMenu(UINT nFlags, UINT_PTR nIDNewItem = 0, LPCTSTR lpszNewItem = nullptr);
    BOOL InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCTSTR lpszNewItem = nullptr);
    BOOL ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCTSTR lpszNewItem = nullptr);
    BOOL DeleteMenu(UINT nPosition, UINT nFlags);
    BOOL RemoveMenu(UINT nPosition, UINT nFlags);
    UINT CheckMenuItem(UINT nIDCheckItem, UINT nCheck);
    BOOL CheckMenuRadioItem(UINT nIDFirst, UINT nIDLast, UINT nIDItem, UINT nFlags);
    UINT EnableMenuItem(UINT nIDEnableItem, UINT nEnable);
    BOOL SetDefaultItem(UINT uItem, BOOL fByPos = FALSE);

    int GetMenuItemCount() const;
    UINT GetMenuItemID(int nPos) const;
    UINT GetMenuState(UINT nID, UINT nFlags) const;
    int GetMenuString(UINT nIDItem, LPTSTR lpString, int nMaxCount, UINT nFlags) const;
    int GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const;
    CMenu* GetSubMenu(int nPos) const;

    BOOL TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect = nullptr);
};

// The menu item, or control, whose state an ON_UPDATE_COMMAND_UI handler sets.
class NRAFX_API CCmdUI {
public:
    CCmdUI() = default;
    virtual ~CCmdUI() = default;

    UINT m_nID = 0;
    UINT m_nIndex = 0;             // place in the menu
    CMenu* m_pMenu = nullptr;      // null for controls
    CMenu* m_pSubMenu = nullptr;   // set when the item opens a submenu
    CWnd* m_pOther = nullptr;      // the window whose child m_nID is, for controls
    BOOL m_bEnableChanged = FALSE; // a handler has called Enable
    BOOL m_bContinueRouting = FALSE;
    UINT m_nIndexMax = 0;

    virtual void Enable(BOOL bOn = TRUE);
    virtual void SetCheck(int nCheck = 1); // 0 off, 1 on, 2 undetermined (controls)
    virtual void SetRadio(BOOL bOn = TRUE);
    virtual void SetText(LPCTSTR lpszText);
    void ContinueRouting() { m_bContinueRouting = TRUE; }
    // Routes the item's number through the target. With bDisableIfNoHndler an item without a handler becomes grey.
    BOOL DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);
};
