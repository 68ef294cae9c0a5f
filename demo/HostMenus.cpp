// The demo's main window: menus, what their items say and when they can be chosen, and the menu under the mouse.
// Layer 13: demo.
#include "HostFrame.h"

#include "CommandTable.h"
#include "DemoIds.h"
#include "HostText.h"

#include <DrawingClipboard.h>
#include <DrawingHistory.h>
#include <PLine.h>
#include <Text.h>
#include <afxres.h>

#include <algorithm>

namespace {

const UINT ExampleCount = 3;
const ULONG_PTR NoImage = static_cast<ULONG_PTR>(-1);

void AddItem(CMenu& menu, UINT id) {
    menu.AppendMenu(MF_STRING, id, LoadTextLine(id, 0));
}

} // namespace

// Adds the rows of one menu of the command table.
void CHostFrame::MakeCommandItems(CMenu& menu, bool edit) {
    for (int i = 0; i < CommandRowCount; ++i) {
        const CommandWord& row = CommandRows[i];
        if ((row.menu == CommandMenu::Edit) != edit) {
            continue;
        }
        if (row.flags & kCommandGroup) {
            menu.AppendMenu(MF_SEPARATOR);
        }
        const UINT id = static_cast<UINT>(ID_HOST_COMMAND_FIRST + i);
        menu.AppendMenu(MF_STRING, id, GetCaption(i));
        SetItemImage(menu, id, i + 1);
    }
}

void CHostFrame::MakeMenus() {
    CMenu file;
    file.CreatePopupMenu();
    AddItem(file, ID_FILE_NEW);
    AddItem(file, ID_FILE_OPEN);
    AddItem(file, ID_FILE_SAVE);
    AddItem(file, ID_FILE_SAVE_AS);
    file.AppendMenu(MF_SEPARATOR);
    AddItem(file, ID_HOST_PRINT_PREVIEW);
    AddItem(file, ID_FILE_PRINT);
    file.AppendMenu(MF_SEPARATOR);
    CMenu examples;
    examples.CreatePopupMenu();
    for (UINT i = 0; i < ExampleCount; ++i) {
        AddItem(examples, ID_HOST_EXAMPLE_FIRST + i);
    }
    AddItem(examples, ID_HOST_EXAMPLE_SECTION);
    CMenu recent;
    recent.CreatePopupMenu();
    recent.AppendMenu(MF_STRING, ID_HOST_RECENT_FIRST, L""); // Filled when it opens.
    m_recentMenu = recent;
    file.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(examples.Detach()), LoadText(IDS_MENU_EXAMPLES));
    file.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(recent.Detach()), LoadText(IDS_MENU_RECENT));
    file.AppendMenu(MF_SEPARATOR);
    AddItem(file, ID_APP_EXIT);

    CMenu background;
    background.CreatePopupMenu();
    for (UINT i = 0; i < BackgroundCount; ++i) {
        AddItem(background, ID_HOST_BACKGROUND_FIRST + i);
    }
    CMenu view;
    view.CreatePopupMenu();
    AddItem(view, ID_HOST_ZOOM_ALL);
    SetItemImage(view, ID_HOST_ZOOM_ALL, 0);
    view.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(background.Detach()), LoadText(IDS_MENU_BACKGROUND));
    view.AppendMenu(MF_SEPARATOR);
    AddItem(view, ID_HOST_PROPERTIES);
    AddItem(view, ID_HOST_SHOW_SECTION);
    AddItem(view, ID_HOST_DRAW_SECTION);
    AddItem(view, ID_HOST_NEXT_PANE);
    view.AppendMenu(MF_SEPARATOR);
    AddItem(view, ID_HOST_CLASSIC);

    AlignItems(view);

    CMenu draw;
    draw.CreatePopupMenu();
    MakeCommandItems(draw, false);

    CMenu edit;
    edit.CreatePopupMenu();
    AddItem(edit, ID_EDIT_UNDO);
    SetItemImage(edit, ID_EDIT_UNDO, UndoImage);
    AddItem(edit, ID_EDIT_REDO);
    SetItemImage(edit, ID_EDIT_REDO, RedoImage);
    edit.AppendMenu(MF_SEPARATOR);
    MakeCommandItems(edit, true);
    edit.AppendMenu(MF_SEPARATOR);
    AddItem(edit, ID_EDIT_COPY);
    AddItem(edit, ID_HOST_COPY_PICTURE);
    AddItem(edit, ID_EDIT_PASTE);
    edit.AppendMenu(MF_SEPARATOR);
    AddItem(edit, ID_HOST_SELECT_ALL);
    AddItem(edit, ID_HOST_DESELECT);
    AddItem(edit, ID_HOST_BREAK_OFF);
    AlignItems(edit);

    CMenu snap;
    snap.CreatePopupMenu();
    for (UINT i = 0; i < SnapCount; ++i) {
        AddItem(snap, ID_HOST_SNAP_FIRST + i);
    }
    snap.AppendMenu(MF_SEPARATOR);
    AddItem(snap, ID_HOST_ORTHO);

    CMenu help;
    help.CreatePopupMenu();
    AddItem(help, ID_HOST_ABOUT);

    CMenu bar;
    bar.CreateMenu();
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(file.Detach()), LoadText(IDS_MENU_FILE));
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(view.Detach()), LoadText(IDS_MENU_VIEW));
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(draw.Detach()), LoadText(IDS_MENU_DRAW));
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(edit.Detach()), LoadText(IDS_MENU_EDIT));
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(snap.Detach()), LoadText(IDS_MENU_SNAP));
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(help.Detach()), LoadText(IDS_MENU_HELP));
    SetMenu(&bar);
    bar.Detach(); // the window owns it now
}

// The item asks for its picture when it is drawn, so that it is drawn on the menu's own background, also highlighted.
void CHostFrame::SetItemImage(CMenu& menu, UINT id, int image) {
    MENUITEMINFOW item = {};
    item.cbSize = sizeof(item);
    item.fMask = MIIM_BITMAP | MIIM_DATA;
    item.hbmpItem = HBMMENU_CALLBACK;
    item.dwItemData = static_cast<ULONG_PTR>(image);
    ::SetMenuItemInfoW(menu, id, FALSE, &item);
}

// In a menu with pictures the captions of the other items get the same place by a picture that is empty.
void CHostFrame::AlignItems(CMenu& menu) {
    for (int i = 0; i < static_cast<int>(menu.GetMenuItemCount()); ++i) {
        MENUITEMINFOW item = {};
        item.cbSize = sizeof(item);
        item.fMask = MIIM_FTYPE | MIIM_BITMAP;
        if (::GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &item) && !(item.fType & MFT_SEPARATOR) &&
            item.hbmpItem == nullptr) {
            item.fMask = MIIM_BITMAP | MIIM_DATA;
            item.hbmpItem = HBMMENU_CALLBACK;
            item.dwItemData = NoImage;
            ::SetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &item);
        }
    }
}

void CHostFrame::OnMeasureItem(int, LPMEASUREITEMSTRUCT measure) {
    if (measure->CtlType == ODT_MENU) {
        measure->itemWidth = static_cast<UINT>(Scaled(22));
        measure->itemHeight = static_cast<UINT>(Scaled(20));
    }
}

void CHostFrame::OnDrawItem(int, LPDRAWITEMSTRUCT draw) {
    if (draw->CtlType == ODT_MENU && draw->itemData != NoImage) {
        const int y = (draw->rcItem.top + draw->rcItem.bottom - Scaled(16)) / 2;
        const bool grayed = (draw->itemState & (ODS_GRAYED | ODS_DISABLED)) != 0;
        ::ImageList_DrawEx(m_images, static_cast<int>(draw->itemData), draw->hDC, draw->rcItem.left, y, 0, 0, CLR_NONE,
                           ::GetSysColor(COLOR_MENU), grayed ? ILD_BLEND50 : ILD_NORMAL);
    }
}

void CHostFrame::FillRecentMenu() {
    CMenu menu;
    menu.Attach(m_recentMenu);
    while (menu.GetMenuItemCount() > 0) {
        menu.RemoveMenu(0, MF_BYPOSITION);
    }
    UINT id = ID_HOST_RECENT_FIRST;
    for (const CString& path : m_recent.Get()) {
        CString shown = path;
        shown.Replace(L"&", L"&&");
        menu.AppendMenu(MF_STRING, id++, shown);
    }
    if (id == ID_HOST_RECENT_FIRST) {
        menu.AppendMenu(MF_STRING | MF_GRAYED, id, LoadTextLine(id, 0));
    }
    menu.Detach();
}

// The caption with the name of the step, before the key.
void CHostFrame::NameStep(CMenu& menu, UINT id, const CString& step) {
    CString caption = LoadTextLine(id, 0);
    if (!step.IsEmpty()) {
        caption.Insert(caption.Find(L'\t'), L" " + step);
    }
    MENUITEMINFOW item = {};
    item.cbSize = sizeof(item);
    item.fMask = MIIM_STRING;
    item.dwTypeData = caption.GetBuffer();
    ::SetMenuItemInfoW(menu, id, FALSE, &item);
    caption.ReleaseBuffer();
}

void CHostFrame::OnInitMenuPopup(CMenu* popup, UINT, BOOL sysMenu) {
    if (sysMenu) {
        return;
    }
    if (popup->m_hMenu == m_recentMenu) {
        FillRecentMenu();
        return;
    }
    for (int i = 0; i < static_cast<int>(popup->GetMenuItemCount()); ++i) {
        const UINT id = popup->GetMenuItemID(i);
        if (id != 0 && id != static_cast<UINT>(-1)) {
            popup->EnableMenuItem(id, IsEnabled(id) ? MF_ENABLED : MF_GRAYED);
            popup->CheckMenuItem(id, IsChecked(id) ? MF_CHECKED : MF_UNCHECKED);
        }
    }
    if (const CDrawingHistory* history = m_view.GetHistory()) {
        NameStep(*popup, ID_EDIT_UNDO, history->GetUndoName(!IsChinese()));
        NameStep(*popup, ID_EDIT_REDO, history->GetRedoName(!IsChinese()));
    }
    popup->CheckMenuRadioItem(ID_HOST_BACKGROUND_FIRST, ID_HOST_BACKGROUND_LAST, GetBackgroundItem(), MF_BYCOMMAND);
}

bool CHostFrame::IsChecked(UINT id) {
    switch (id) {
    case ID_HOST_ORTHO:
        return m_ortho != 0;
    case ID_HOST_PROPERTIES:
        return m_view.HasProperties();
    case ID_HOST_SHOW_SECTION:
        return m_showSection;
    case ID_HOST_CLASSIC:
        return m_view.IsClassic();
    default:
        return id >= ID_HOST_SNAP_FIRST && id <= ID_HOST_SNAP_LAST && (m_osnap & (1 << (id - ID_HOST_SNAP_FIRST)));
    }
}

// Whether a command can do something now, for menus, toolbar and keys.
bool CHostFrame::IsEnabled(UINT id) {
    CGraphicDocument* document = m_view.GetDocument();
    const CDrawableArray& selected = *document->GetSelectedDrawableObjs();
    const bool empty = document->GetDrawableObjs()->IsEmpty();
    switch (id) {
    case ID_HOST_ZOOM_ALL:
        return m_inSection || !empty;
    case ID_FILE_PRINT:
    case ID_HOST_PRINT_PREVIEW:
    case ID_HOST_COPY_PICTURE:
        return !empty;
    case ID_EDIT_PASTE:
        return CDrawingClipboard::HasObjects();
    case ID_HOST_DRAW_SECTION:
    case ID_HOST_NEXT_PANE:
        return m_showSection;
    case ID_HOST_BREAK_OFF:
        return m_view.GetManager()->GetHasCommand();
    case ID_HOST_ERASE:
    case ID_HOST_DESELECT:
    case ID_EDIT_COPY:
        return !selected.IsEmpty();
    case ID_EDIT_UNDO:
        return m_view.CanUndo() || m_view.GetManager()->GetHasCommand();
    case ID_EDIT_REDO:
        return m_view.CanRedo();
    case ID_HOST_SELECT_ALL:
        return m_view.CanSelectAll() && !m_view.GetManager()->GetHasCommand();
    default:
        break;
    }
    if (id < ID_HOST_COMMAND_FIRST || id >= static_cast<UINT>(ID_HOST_COMMAND_FIRST + CommandRowCount)) {
        return true;
    }
    const CommandWord& row = CommandRows[id - ID_HOST_COMMAND_FIRST];
    const auto hasOne = [](const CDrawableArray& objects, const CRuntimeClass* kind) {
        CDrawable* const* data = objects.GetData();
        return std::any_of(data, data + objects.GetSize(), [=](CDrawable* object) { return object->IsKindOf(kind); });
    };
    if (wcscmp(row.word, L"rotatetext") == 0) {
        return hasOne(selected, RUNTIME_CLASS(CText));
    }
    if (wcscmp(row.word, L"erase") == 0 || (row.flags & kCommandRestores)) {
        return !selected.IsEmpty();
    }
    if (wcsncmp(row.word, L"PLine_", 6) == 0 || wcscmp(row.word, L"offset") == 0) {
        return hasOne(*document->GetDrawableObjs(), RUNTIME_CLASS(CPLine));
    }
    return true;
}

// What a menu item does, for the status bar.
CString CHostFrame::Describe(UINT id) {
    if (id >= ID_HOST_COMMAND_FIRST && id < static_cast<UINT>(ID_HOST_COMMAND_FIRST + CommandRowCount)) {
        return GetPrompt(static_cast<int>(id - ID_HOST_COMMAND_FIRST), 0);
    }
    const bool recent = id >= ID_HOST_RECENT_FIRST && id <= ID_HOST_RECENT_LAST;
    return LoadTextLine(recent ? ID_HOST_RECENT_FIRST : id, 1);
}

// A menu that closes gives no item: the prompt comes back with the next idle time.
void CHostFrame::OnMenuSelect(UINT id, UINT flags, HMENU) {
    const bool item = !(flags & (MF_POPUP | MF_SYSMENU | MF_SEPARATOR)) && flags != 0xFFFF;
    SetStatus(PaneCommand, item ? Describe(id) : CString());
}

// ---- The menu under the mouse

void CHostFrame::OnContextMenu(CWnd*, CPoint point) {
    const bool wish = m_view.TakeMenuWish();
    if (point == CPoint(-1, -1)) {
        // By the keyboard.
        if (m_inSection || m_view.GetManager()->GetHasCommand()) {
            return;
        }
        ::GetCursorPos(&point);
    } else if (!wish) {
        return; // The right button has ended a command, or was pressed in another window.
    }
    CPoint place = point;
    m_view.ScreenToClient(&place);
    CDrawable* object = m_view.SelectAt(place);
    CMenu menu;
    menu.CreatePopupMenu();
    const auto add = [&](const wchar_t* word) {
        const int row = FindCommandRow(word);
        const UINT id = static_cast<UINT>(ID_HOST_COMMAND_FIRST + row);
        menu.AppendMenu(MF_STRING, id, GetCaption(row));
        SetItemImage(menu, id, row + 1);
    };
    if (object != nullptr) {
        for (const wchar_t* word : {L"translation", L"copy", L"rotation", L"mirroring"}) {
            add(word);
        }
        if (object->IsKindOf(RUNTIME_CLASS(CPLine))) {
            menu.AppendMenu(MF_SEPARATOR);
            add(L"PLine_AddPoint");
            add(L"PLine_RemovePoint");
        } else if (object->IsKindOf(RUNTIME_CLASS(CText))) {
            menu.AppendMenu(MF_SEPARATOR);
            add(L"rotatetext");
        }
        menu.AppendMenu(MF_SEPARATOR);
        add(L"erase");
        AddItem(menu, ID_HOST_PROPERTIES);
    } else {
        AddItem(menu, ID_HOST_ZOOM_ALL);
        SetItemImage(menu, ID_HOST_ZOOM_ALL, 0);
        AddItem(menu, ID_EDIT_PASTE);
        AddItem(menu, ID_HOST_SELECT_ALL);
    }
    AlignItems(menu);
    menu.TrackPopupMenu(TPM_LEFTALIGN | TPM_RIGHTBUTTON, point.x, point.y, this);
}
