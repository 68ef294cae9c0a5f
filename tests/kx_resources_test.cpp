// Tests of the library's resources as they are in its DLL: cursors, icons, dialog templates, menus.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

// The DLL as a file of resources: nothing of its code runs.
HMODULE Library() {
    static const HMODULE module = ::LoadLibraryExW(L"NRVectorView.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    return module;
}

std::vector<BYTE> Resource(int number, LPCWSTR type) {
    const HRSRC found = ::FindResourceW(Library(), MAKEINTRESOURCEW(number), type);
    if (found == nullptr) {
        return {};
    }
    const BYTE* bytes = static_cast<const BYTE*>(::LockResource(::LoadResource(Library(), found)));
    return std::vector<BYTE>(bytes, bytes + ::SizeofResource(Library(), found));
}

// Reads the extended dialog template, word by word.
class Reader {
public:
    explicit Reader(const std::vector<BYTE>& bytes) : m_bytes(bytes) {}
    template <class T>
    T Take() {
        T value = {};
        if (m_at + sizeof(T) <= m_bytes.size()) {
            std::memcpy(&value, &m_bytes[m_at], sizeof(T));
        }
        m_at += sizeof(T);
        return value;
    }
    // A string, or "#number" for a resource or class number.
    std::wstring Text() {
        std::wstring text;
        wchar_t c = Take<wchar_t>();
        if (c == 0xffff) {
            return L"#" + std::to_wstring(Take<WORD>());
        }
        for (; c != 0; c = Take<wchar_t>()) {
            text += c;
        }
        return text;
    }
    void Align() { m_at = (m_at + 3) / 4 * 4; }
    bool IsInside() const { return m_at <= m_bytes.size(); }

private:
    const std::vector<BYTE>& m_bytes;
    size_t m_at = 0;
};

struct Item {
    DWORD style, exStyle;
    short x, y, cx, cy;
    DWORD id;
    std::wstring windowClass, text;
};

struct Template {
    DWORD style = 0, exStyle = 0;
    short cx = 0, cy = 0;
    std::wstring title, face;
    WORD points = 0;
    std::vector<Item> items;
};

Template Dialog(int number) {
    const std::vector<BYTE> bytes = Resource(number, RT_DIALOG);
    Reader in(bytes);
    Template dialog;
    EXPECT_EQ(1, in.Take<WORD>()); // version
    EXPECT_EQ(0xffff, in.Take<WORD>());
    in.Take<DWORD>(); // help
    dialog.exStyle = in.Take<DWORD>();
    dialog.style = in.Take<DWORD>();
    const WORD count = in.Take<WORD>();
    in.Take<DWORD>(); // place
    dialog.cx = in.Take<short>();
    dialog.cy = in.Take<short>();
    EXPECT_EQ(L"", in.Text()); // menu
    EXPECT_EQ(L"", in.Text()); // class
    dialog.title = in.Text();
    dialog.points = in.Take<WORD>();
    in.Take<DWORD>(); // weight, italic, character set
    dialog.face = in.Text();
    for (int i = 0; i < count; ++i) {
        Item item;
        in.Align();
        in.Take<DWORD>(); // help
        item.exStyle = in.Take<DWORD>();
        item.style = in.Take<DWORD>();
        item.x = in.Take<short>();
        item.y = in.Take<short>();
        item.cx = in.Take<short>();
        item.cy = in.Take<short>();
        item.id = in.Take<DWORD>();
        item.windowClass = in.Text();
        item.text = in.Text();
        EXPECT_EQ(0, in.Take<WORD>()); // extra data
        dialog.items.push_back(item);
    }
    EXPECT_TRUE(in.IsInside());
    return dialog;
}

void ExpectPlace(const Item& item, int x, int y, int cx, int cy) {
    EXPECT_EQ(x, item.x);
    EXPECT_EQ(y, item.y);
    EXPECT_EQ(cx, item.cx);
    EXPECT_EQ(cy, item.cy);
}

// The hot spot and the size of a cursor.
struct Cursor {
    DWORD x, y;
    LONG width, height;
};

bool LoadCursorInfo(int number, Cursor& cursor) {
    const HCURSOR handle =
        static_cast<HCURSOR>(::LoadImageW(Library(), MAKEINTRESOURCEW(number), IMAGE_CURSOR, 0, 0, LR_DEFAULTCOLOR));
    ICONINFO info = {};
    if (handle == nullptr || !::GetIconInfo(handle, &info)) {
        return false;
    }
    BITMAP mask = {};
    ::GetObjectW(info.hbmMask, sizeof(mask), &mask);
    cursor = {info.xHotspot, info.yHotspot, mask.bmWidth, mask.bmHeight};
    ::DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr) {
        ::DeleteObject(info.hbmColor);
    } else {
        cursor.height /= 2; // a cursor without colours keeps both its masks in one bitmap
    }
    ::DestroyCursor(handle);
    return true;
}

} // namespace

TEST(LibraryResources, EveryCursorIsThereWithItsHotSpotInside) {
    for (const int number : {131, 142, 1014, 1016, 1017, 1478, 1479, 1480, 7001, 7002}) {
        Cursor cursor = {};
        ASSERT_TRUE(LoadCursorInfo(number, cursor)) << number;
        EXPECT_EQ(32, cursor.width) << number;
        EXPECT_EQ(32, cursor.height) << number;
        EXPECT_LT(cursor.x, 32u) << number;
        EXPECT_LT(cursor.y, 32u) << number;
    }
}

TEST(LibraryResources, CrossHairsPointWithTheirMiddle) {
    for (const int number : {131, 7001, 7002}) {
        Cursor cursor = {};
        ASSERT_TRUE(LoadCursorInfo(number, cursor));
        EXPECT_EQ(15u, cursor.x) << number;
        EXPECT_EQ(15u, cursor.y) << number;
    }
}

TEST(LibraryResources, ThereAreSixteenIconsOfSixteenPixels) {
    int count = 0;
    for (int number = 1; number < 1000; ++number) {
        const std::vector<BYTE> group = Resource(number, RT_GROUP_ICON);
        if (!group.empty()) {
            ++count;
            ASSERT_EQ(6u + 14u, group.size()); // one picture
            EXPECT_EQ(16, group[6]);
            EXPECT_EQ(16, group[7]);
        }
    }
    EXPECT_EQ(16, count);
}

TEST(LibraryResources, PropertyDialogIsAToolWindowWithTheGridAlone) {
    const Template dialog = Dialog(131);
    EXPECT_EQ(L"属性", dialog.title);
    EXPECT_EQ(180, dialog.cx);
    EXPECT_EQ(253, dialog.cy);
    EXPECT_EQ(9, dialog.points);
    EXPECT_EQ(L"宋体", dialog.face);
    EXPECT_EQ(static_cast<DWORD>(WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | DS_SETFONT), dialog.style);
    EXPECT_EQ(static_cast<DWORD>(WS_EX_TOOLWINDOW), dialog.exStyle);
    ASSERT_EQ(1u, dialog.items.size());
    const Item& grid = dialog.items[0];
    EXPECT_EQ(1000u, grid.id);
    EXPECT_EQ(0, _wcsicmp(L"CGridCtrl", grid.windowClass.c_str())); // classes are found without regard to case
    EXPECT_EQ(L"Custom", grid.text);
    EXPECT_EQ(static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_TABSTOP), grid.style);
    ExpectPlace(grid, 2, 1, 140, 167);
}

TEST(LibraryResources, TextEditorHasOneLineAndTwoButtons) {
    const Template dialog = Dialog(132);
    EXPECT_EQ(L"文字编辑器", dialog.title);
    EXPECT_EQ(386, dialog.cx);
    EXPECT_EQ(71, dialog.cy);
    EXPECT_EQ(9, dialog.points);
    EXPECT_EQ(L"宋体", dialog.face);
    EXPECT_EQ(static_cast<DWORD>(WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT), dialog.style);
    ASSERT_EQ(3u, dialog.items.size());
    const Item& edit = dialog.items[0];
    EXPECT_EQ(1006u, edit.id);
    EXPECT_EQ(L"#129", edit.windowClass); // the number of the edit control's class
    EXPECT_EQ(static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL), edit.style);
    ExpectPlace(edit, 2, 2, 312, 67);
    const Item& ok = dialog.items[1];
    EXPECT_EQ(static_cast<DWORD>(IDOK), ok.id);
    EXPECT_EQ(L"确定", ok.text);
    EXPECT_EQ(static_cast<DWORD>(BS_DEFPUSHBUTTON), ok.style & BS_TYPEMASK);
    ExpectPlace(ok, 325, 2, 50, 14);
    const Item& cancel = dialog.items[2];
    EXPECT_EQ(static_cast<DWORD>(IDCANCEL), cancel.id);
    EXPECT_EQ(L"取消", cancel.text);
    ExpectPlace(cancel, 325, 24, 50, 14);
}

TEST(LibraryResources, AngleDialogIsLeftToTheHost) {
    ASSERT_NE(nullptr, Library());
    EXPECT_TRUE(Resource(134, RT_DIALOG).empty());
}

namespace {

std::vector<std::wstring> MenuItems(int number) {
    std::vector<std::wstring> items;
    const HMENU menu = ::LoadMenuW(Library(), MAKEINTRESOURCEW(number));
    EXPECT_EQ(1, ::GetMenuItemCount(menu));
    const HMENU popup = ::GetSubMenu(menu, 0);
    for (int i = 0; i < ::GetMenuItemCount(popup); ++i) {
        wchar_t text[64] = L"";
        ::GetMenuStringW(popup, static_cast<UINT>(i), text, 64, MF_BYPOSITION);
        items.push_back(std::to_wstring(::GetMenuItemID(popup, i)) + L" " + text);
    }
    ::DestroyMenu(menu);
    return items;
}

} // namespace

TEST(LibraryResources, ParameterViewMenuZoomsAndMoves) {
    EXPECT_EQ((std::vector<std::wstring>{L"32790 全屏缩放", L"32791 移动"}), MenuItems(132));
}

TEST(LibraryResources, ConfirmMenuHasThreeItems) {
    EXPECT_EQ((std::vector<std::wstring>{L"32777 确定", L"32778 取消", L"32779 闭合"}), MenuItems(130));
}
