// The test programs' own ground: what every other test takes for granted.
// Layer: tests (Win32 only).

#include <windows.h>

#include <gtest/gtest.h>

TEST(House, WideCharactersAreSixteenBits) {
    EXPECT_EQ(2u, sizeof(wchar_t));
}

TEST(DesktopHouse, AWindowCanBeMadeAndShown) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 10, 20, 30, 40, nullptr, nullptr,
                                        GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(nullptr, window);
    RECT rect = {};
    EXPECT_TRUE(GetWindowRect(window, &rect));
    EXPECT_EQ(10, rect.left);
    EXPECT_EQ(60, rect.bottom);
    EXPECT_TRUE(IsWindowVisible(window));
    DestroyWindow(window);
}
