// The demo's main window: menus, what their items say and when they can be chosen, and the menu under the mouse.
// Layer 11: demo.
#include "HostFrame.h"

#include "CommandTable.h"
#include "DemoIds.h"

#include <PLine.h>
#include <Text.h>
#include <afxres.h>

#include <algorithm>
#include <iterator>

namespace {

const wchar_t* const Examples[] = {L"螺栓板(&B)", L"桁架(&T)", L"带文字的框架(&F)"};

struct Description {
    UINT first;
    UINT last;
    const wchar_t* text;
};
const Description Descriptions[] = {
    {ID_FILE_NEW, ID_FILE_NEW, L"开始一张空白图形"},
    {ID_FILE_OPEN, ID_FILE_OPEN, L"打开一个图形文件"},
    {ID_FILE_SAVE, ID_FILE_SAVE, L"保存图形"},
    {ID_FILE_SAVE_AS, ID_FILE_SAVE_AS, L"以另一个名称保存图形"},
    {ID_APP_EXIT, ID_APP_EXIT, L"结束程序"},
    {ID_HOST_RECENT_FIRST, ID_HOST_RECENT_LAST, L"打开这个文件"},
    {ID_HOST_EXAMPLE_FIRST, ID_HOST_EXAMPLE_LAST, L"打开这张示例图形"},
    {ID_HOST_ZOOM_ALL, ID_HOST_ZOOM_ALL, L"把整张图形缩放到窗口中"},
    {ID_HOST_BACKGROUND_FIRST, ID_HOST_BACKGROUND_LAST, L"选择背景颜色；新对象取能看清的颜色"},
    {ID_HOST_PROPERTIES, ID_HOST_PROPERTIES, L"显示或隐藏所选对象的属性"},
    {ID_HOST_SHOW_SECTION, ID_HOST_SHOW_SECTION, L"显示或隐藏截面参数"},
    {ID_HOST_DRAW_SECTION, ID_HOST_DRAW_SECTION, L"按参数重新绘制截面"},
    {ID_HOST_NEXT_PANE, ID_HOST_NEXT_PANE, L"把键盘移到另一个窗格"},
    {ID_HOST_CLASSIC, ID_HOST_CLASSIC, L"关闭全部编辑选项，看库的默认行为"},
    {ID_HOST_SELECT_ALL, ID_HOST_SELECT_ALL, L"选择所有对象"},
    {ID_HOST_DESELECT, ID_HOST_DESELECT, L"取消对所有对象的选择"},
    {ID_HOST_BREAK_OFF, ID_HOST_BREAK_OFF, L"中断正在执行的命令，图形保持原样"},
    {ID_HOST_SNAP_FIRST, ID_HOST_SNAP_LAST, L"打开或关闭这种捕捉"},
    {ID_HOST_ORTHO, ID_HOST_ORTHO, L"直线和夹点只沿水平或竖直方向移动"},
    {ID_HOST_ABOUT, ID_HOST_ABOUT, L"关于这个程序"},
};

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
        menu.AppendMenu(MF_STRING, id, row.caption);
        SetItemImage(menu, id, i + 1);
    }
}

void CHostFrame::MakeMenus() {
    CMenu file;
    file.CreatePopupMenu();
    file.AppendMenu(MF_STRING, ID_FILE_NEW, L"新建(&N)\tCtrl+N");
    file.AppendMenu(MF_STRING, ID_FILE_OPEN, L"打开(&O)…\tCtrl+O");
    file.AppendMenu(MF_STRING, ID_FILE_SAVE, L"保存(&S)\tCtrl+S");
    file.AppendMenu(MF_STRING, ID_FILE_SAVE_AS, L"另存为(&A)…");
    CMenu examples;
    examples.CreatePopupMenu();
    for (UINT i = 0; i < std::size(Examples); ++i) {
        examples.AppendMenu(MF_STRING, ID_HOST_EXAMPLE_FIRST + i, Examples[i]);
    }
    CMenu recent;
    recent.CreatePopupMenu();
    recent.AppendMenu(MF_STRING, ID_HOST_RECENT_FIRST, L""); // Filled when it opens.
    m_recentMenu = recent;
    file.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(examples.Detach()), L"示例(&E)");
    file.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(recent.Detach()), L"最近的文件(&R)");
    file.AppendMenu(MF_SEPARATOR);
    file.AppendMenu(MF_STRING, ID_APP_EXIT, L"退出(&X)\tAlt+F4");

    CMenu background;
    background.CreatePopupMenu();
    for (UINT i = 0; i < BackgroundCount; ++i) {
        background.AppendMenu(MF_STRING, ID_HOST_BACKGROUND_FIRST + i, GetBackgroundName(i));
    }
    CMenu view;
    view.CreatePopupMenu();
    view.AppendMenu(MF_STRING, ID_HOST_ZOOM_ALL, L"全屏缩放(&A)\tF4");
    SetItemImage(view, ID_HOST_ZOOM_ALL, 0);
    view.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(background.Detach()), L"背景(&B)");
    view.AppendMenu(MF_SEPARATOR);
    view.AppendMenu(MF_STRING, ID_HOST_PROPERTIES, L"对象属性(&R)\tF3");
    view.AppendMenu(MF_STRING, ID_HOST_SHOW_SECTION, L"参数窗格(&P)");
    view.AppendMenu(MF_STRING, ID_HOST_DRAW_SECTION, L"按参数绘制截面(&D)\tF5");
    view.AppendMenu(MF_STRING, ID_HOST_NEXT_PANE, L"切换窗格(&N)\tF6");
    view.AppendMenu(MF_SEPARATOR);
    view.AppendMenu(MF_STRING, ID_HOST_CLASSIC, L"经典方式(&C)");

    CMenu draw;
    draw.CreatePopupMenu();
    MakeCommandItems(draw, false);

    CMenu edit;
    edit.CreatePopupMenu();
    MakeCommandItems(edit, true);
    edit.AppendMenu(MF_SEPARATOR);
    edit.AppendMenu(MF_STRING, ID_HOST_SELECT_ALL, L"全选(&A)\tCtrl+A");
    edit.AppendMenu(MF_STRING, ID_HOST_DESELECT, L"取消选择(&D)");
    edit.AppendMenu(MF_STRING, ID_HOST_BREAK_OFF, L"中断命令(&B)\tEsc");

    CMenu snap;
    snap.CreatePopupMenu();
    for (UINT i = 0; i < SnapCount; ++i) {
        snap.AppendMenu(MF_STRING, ID_HOST_SNAP_FIRST + i, GetSnapName(i));
    }
    snap.AppendMenu(MF_SEPARATOR);
    snap.AppendMenu(MF_STRING, ID_HOST_ORTHO, L"正交(&O)\tF8");

    CMenu help;
    help.CreatePopupMenu();
    help.AppendMenu(MF_STRING, ID_HOST_ABOUT, L"关于(&A)…");

    CMenu bar;
    bar.CreateMenu();
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(file.Detach()), L"文件(&F)");
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(view.Detach()), L"视图(&V)");
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(draw.Detach()), L"绘图(&D)");
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(edit.Detach()), L"编辑(&E)");
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(snap.Detach()), L"捕捉(&S)");
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(help.Detach()), L"帮助(&H)");
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

void CHostFrame::OnMeasureItem(int, LPMEASUREITEMSTRUCT measure) {
    if (measure->CtlType == ODT_MENU) {
        measure->itemWidth = 22;
        measure->itemHeight = 20;
    }
}

void CHostFrame::OnDrawItem(int, LPDRAWITEMSTRUCT draw) {
    if (draw->CtlType == ODT_MENU) {
        const int y = (draw->rcItem.top + draw->rcItem.bottom - 16) / 2;
        ::ImageList_Draw(m_images, static_cast<int>(draw->itemData), draw->hDC, draw->rcItem.left, y, ILD_NORMAL);
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
        menu.AppendMenu(MF_STRING | MF_GRAYED, id, L"(无)");
    }
    menu.Detach();
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
    popup->CheckMenuRadioItem(ID_HOST_BACKGROUND_FIRST, ID_HOST_BACKGROUND_LAST,
                              static_cast<UINT>(ID_HOST_BACKGROUND_FIRST + m_background), MF_BYCOMMAND);
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
    switch (id) {
    case ID_HOST_DRAW_SECTION:
    case ID_HOST_NEXT_PANE:
        return m_showSection;
    case ID_HOST_BREAK_OFF:
        return m_view.GetManager()->GetHasCommand();
    case ID_HOST_ERASE:
    case ID_HOST_DESELECT:
        return !selected.IsEmpty();
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
    for (const Description& description : Descriptions) {
        if (id >= description.first && id <= description.last) {
            return description.text;
        }
    }
    if (id >= ID_HOST_COMMAND_FIRST && id < static_cast<UINT>(ID_HOST_COMMAND_FIRST + CommandRowCount)) {
        const CommandWord& row = CommandRows[id - ID_HOST_COMMAND_FIRST];
        return *row.hint != 0 ? CString(row.hint) : PlainCaption(row) + L"选中的对象";
    }
    return CString();
}

// A menu that closes gives no item: the prompt comes back with the next idle time.
void CHostFrame::OnMenuSelect(UINT id, UINT flags, HMENU) {
    const bool item = !(flags & (MF_POPUP | MF_SYSMENU | MF_SEPARATOR)) && flags != 0xFFFF;
    SetStatus(PaneCommand, item ? Describe(id) : CString());
}

// ---- The menu under the mouse

void CHostFrame::OnContextMenu(CWnd*, CPoint point) {
    if (!m_view.TakeMenuWish()) {
        return; // The right button has ended a command, or was meant for another window.
    }
    CPoint place = point;
    m_view.ScreenToClient(&place);
    CDrawable* object = m_view.SelectAt(place);
    CMenu menu;
    menu.CreatePopupMenu();
    const auto add = [&](const wchar_t* word) {
        const int row = FindCommandRow(word);
        const UINT id = static_cast<UINT>(ID_HOST_COMMAND_FIRST + row);
        menu.AppendMenu(MF_STRING, id, CommandRows[row].caption);
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
        menu.AppendMenu(MF_STRING, ID_HOST_PROPERTIES, L"对象属性(&R)\tF3");
    } else {
        menu.AppendMenu(MF_STRING, ID_HOST_ZOOM_ALL, L"全屏缩放(&A)\tF4");
        menu.AppendMenu(MF_STRING, ID_HOST_SELECT_ALL, L"全选(&S)\tCtrl+A");
    }
    menu.TrackPopupMenu(TPM_LEFTALIGN | TPM_RIGHTBUTTON, point.x, point.y, this);
}
