// The MFC layer's module state, resource search, extension modules, message loop and application.
// Layer 16: tests.
#include "support/BoxAnswer.h"
#include "support/OnBox.h"
#include "support/UiLanguage.h"

#include <afxdllx.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

TEST(AfxModule, StringsComeFromTheProgramFirstAndThenFromTheLayer) {
    const UiLanguage chinese(UiLanguage::kChinese);
    CString text;
    EXPECT_TRUE(text.LoadString(700));
    EXPECT_EQ(Utf8(text), "程序的字串");
    EXPECT_TRUE(text.LoadString(AFX_IDS_OPENFILE));
    EXPECT_EQ(Utf8(text), "打开");
    EXPECT_TRUE(text.LoadString(AFX_IDS_UNTITLED));
    EXPECT_EQ(Utf8(text), "没有名字") << "the program may replace the layer's strings";
    EXPECT_FALSE(text.LoadString(701));
    TCHAR room[3] = {};
    EXPECT_EQ(AfxLoadString(AFX_IDS_SAVEFILE, room, 3), 2);
    EXPECT_EQ(Utf8(room), "另存");
    EXPECT_EQ(AfxLoadString(12345, room, 3), 0);
}

TEST(AfxModule, TheLayersStringsFollowTheLanguageOfTheInterface) {
    const auto textIn = [](int language, UINT id) {
        const UiLanguage ui(static_cast<LANGID>(language));
        CString text;
        EXPECT_TRUE(text.LoadString(id)) << id;
        return Utf8(text);
    };
    EXPECT_EQ(textIn(UiLanguage::kEnglish, AFX_IDS_OPENFILE), "Open");
    EXPECT_EQ(textIn(UiLanguage::kChinese, AFX_IDS_OPENFILE), "打开");
    EXPECT_EQ(textIn(UiLanguage::kEnglish, AFX_IDP_PARSE_REAL), "Please enter a number.");
    EXPECT_EQ(textIn(UiLanguage::kChinese, AFX_IDP_PARSE_REAL), "请输入一个数字。");
    EXPECT_EQ(textIn(UiLanguage::kEnglish, AFX_IDP_FAILED_DISK_FULL), "The disk is full; '%1' could not be written.");
    EXPECT_EQ(textIn(UiLanguage::kChinese, AFX_IDP_FAILED_DISK_FULL), "磁盘已满，无法写入“%1”。");
    for (const WORD other : {WORD{SUBLANG_CHINESE_TRADITIONAL}, WORD{SUBLANG_CHINESE_HONGKONG},
                             WORD{SUBLANG_CHINESE_SINGAPORE}, WORD{SUBLANG_CHINESE_MACAU}}) {
        EXPECT_EQ(textIn(MAKELANGID(LANG_CHINESE, other), AFX_IDP_PARSE_INT), "请输入一个整数。") << other;
    }
    EXPECT_EQ(textIn(MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH), AFX_IDP_PARSE_INT), "Please enter a whole number.");
    EXPECT_EQ(textIn(UiLanguage::kEnglish, 700), "程序的字串") << "the program has its string in one language";
    // Each string of one language has its counterpart in the other, and it differs in all but the placeholders.
    const HINSTANCE layer = ::GetModuleHandle(L"nrafx.dll");
    int strings = 0;
    for (UINT id = 0xF000; id < 0xF200; ++id) {
        CString english, chinese;
        {
            const UiLanguage ui(UiLanguage::kEnglish);
            english.LoadString(layer, id);
        }
        {
            const UiLanguage ui(UiLanguage::kChinese);
            chinese.LoadString(layer, id);
        }
        EXPECT_EQ(english.IsEmpty(), chinese.IsEmpty()) << id;
        if (english.IsEmpty()) {
            continue;
        }
        ++strings;
        EXPECT_NE(Utf8(english), Utf8(chinese)) << id;
        for (const wchar_t* place : {L"%1", L"%2"}) {
            EXPECT_EQ(english.Find(place) >= 0, chinese.Find(place) >= 0) << id;
        }
    }
    EXPECT_EQ(strings, 58);
}

TEST(AfxModule, LibrariesComeAndGoWhileAnotherThreadLooksForAResource) {
    const HINSTANCE program = ::GetModuleHandle(nullptr);
    std::atomic<bool> over{false};
    std::thread other([&] {
        while (!over) {
            AFX_EXTENSION_MODULE module = {};
            AfxInitExtensionModule(module, program);
            for (int i = 0; i < 8; ++i) {
                new CDynLinkLibrary(module);
            }
            AfxTermExtensionModule(module);
        }
    });
    const ULONGLONG end = ::GetTickCount64() + 1500;
    while (::GetTickCount64() < end) {
        for (int i = 0; i < 100; ++i) {
            EXPECT_EQ(AfxFindStringResourceHandle(12345), nullptr);
            EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCE(9999), RT_DIALOG), program);
        }
    }
    over = true;
    other.join();
}

TEST(AfxModule, TheApplicationObjectOfAnotherStateIsNotTheProgramsThread) {
    CWinThread* const thread = AfxGetThread();
    CWinApp* const app = AfxGetApp();
    AFX_MODULE_STATE state;
    AFX_MODULE_STATE* const before = AfxSetModuleState(&state);
    {
        CWinApp own;
        EXPECT_EQ(&own, AfxGetApp());
        AfxSetModuleState(before);
        EXPECT_EQ(thread, AfxGetThread());
        EXPECT_EQ(app, AfxGetApp());
    }
    EXPECT_EQ(thread, AfxGetThread());
}

TEST(AfxModule, ResourcesAreLookedForInTheCurrentHandleThenInExtensionModules) {
    const HINSTANCE program = ::GetModuleHandle(nullptr);
    const HINSTANCE layer = ::GetModuleHandle(L"nrafx.dll");
    EXPECT_EQ(AfxGetResourceHandle(), program);
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCE(500), RT_DIALOG), program);
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCE(9999), RT_DIALOG), program);
    AfxSetResourceHandle(layer);
    EXPECT_EQ(AfxGetResourceHandle(), layer);
    // As an extension module, the program's resources are found although another handle is current.
    AFX_EXTENSION_MODULE module = {};
    ASSERT_TRUE(AfxInitExtensionModule(module, program));
    EXPECT_TRUE(module.bInitialized);
    EXPECT_EQ(module.hResource, program);
    new CDynLinkLibrary(module);
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCE(500), RT_DIALOG), program);
    AfxTermExtensionModule(module);
    EXPECT_FALSE(module.bInitialized);
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCE(500), RT_DIALOG), layer);
    AfxSetResourceHandle(program);
    EXPECT_FALSE(AfxInitExtensionModule(module, nullptr));
}

TEST(AfxModule, AManagedStateLastsForItsBlock) {
    AFX_MODULE_STATE other;
    other.m_hCurrentResourceHandle = ::GetModuleHandle(L"nrafx.dll");
    AFX_MODULE_STATE* before = AfxGetModuleState();
    {
        AFX_MANAGE_STATE(&other);
        EXPECT_EQ(AfxGetModuleState(), &other);
        EXPECT_EQ(AfxGetResourceHandle(), other.m_hCurrentResourceHandle);
        const auto inner = [] {
            AFX_MAINTAIN_STATE2 state(AfxGetAppModuleState());
            EXPECT_EQ(AfxGetModuleState(), AfxGetAppModuleState());
        };
        inner();
        EXPECT_EQ(AfxGetModuleState(), &other);
    }
    EXPECT_EQ(AfxGetModuleState(), before);
    EXPECT_EQ(AfxGetStaticModuleState(), AfxGetAppModuleState()) << "the program's own state is the application's";
}

TEST(AfxModule, WithoutAnApplicationTheProgramIsUsed) {
    EXPECT_EQ(AfxGetApp(), nullptr);
    EXPECT_EQ(AfxGetMainWnd(), nullptr);
    EXPECT_EQ(AfxGetInstanceHandle(), ::GetModuleHandle(nullptr));
    EXPECT_EQ(Utf8(AfxGetAppName()), "afx_win_tests");
}

TEST(DesktopAfxApp, TheLoopRunsUntilTheMainWindowIsDestroyed) {
    class App : public CWinApp {
    public:
        App() : CWinApp(L"名字") {}
        int m_idle = 0;
        bool m_exited = false;
        CWnd m_frame;
        BOOL InitInstance() override {
            EXPECT_TRUE(m_frame.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
            m_pMainWnd = &m_frame;
            EXPECT_EQ(AfxGetMainWnd(), &m_frame);
            m_frame.PostMessage(WM_CLOSE);
            return TRUE;
        }
        BOOL OnIdle(LONG count) override {
            ++m_idle;
            return CWinApp::OnIdle(count);
        }
        int ExitInstance() override {
            m_exited = true;
            return CWinApp::ExitInstance();
        }
    };
    {
        App app;
        EXPECT_EQ(AfxGetApp(), &app);
        EXPECT_EQ(AfxGetThread(), &app);
        EXPECT_EQ(Utf8(AfxGetAppName()), "名字");
        EXPECT_EQ(AfxWinMain(::GetModuleHandle(nullptr), nullptr, nullptr, SW_HIDE), 0);
        EXPECT_TRUE(app.m_exited);
        EXPECT_EQ(app.m_pMainWnd, nullptr);
        EXPECT_EQ(app.m_frame.m_hWnd, nullptr);
        ASSERT_NE(app.m_lpCmdLine, nullptr);
    }
    EXPECT_EQ(AfxGetApp(), nullptr);
}

TEST(DesktopAfxApp, AMessageBoxTellsItsTextAndGivesTheButton) {
    BoxAnswer boxes({IDNO, IDOK});
    EXPECT_EQ(AfxMessageBox(L"问题", MB_YESNO), IDNO);
    EXPECT_EQ(AfxMessageBox(700), IDOK);
    ASSERT_EQ(boxes.Texts().size(), 2u);
    EXPECT_EQ(boxes.Texts()[0], "问题");
    EXPECT_EQ(boxes.Texts()[1], "程序的字串");
}

TEST(DesktopAfxApp, ABoxWithoutCancelIsLeftByItsButtonsOnly) {
    const struct {
        UINT type;
        int button;
    } boxes[] = {{MB_YESNO, IDYES}, {MB_YESNO, IDNO}, {MB_ABORTRETRYIGNORE, IDRETRY}, {MB_ABORTRETRYIGNORE, IDIGNORE}};
    for (const auto& each : boxes) {
        SCOPED_TRACE(each.button);
        OnBox box([&](HWND window) { OnBox::TryToLeave(window, each.button); });
        EXPECT_EQ(AfxMessageBox(L"?", each.type), each.button);
        EXPECT_EQ(box.Seen(), 1u);
    }
    CWnd frame;
    ASSERT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
    OnBox box([](HWND window) { OnBox::TryToLeave(window, IDYES); });
    EXPECT_EQ(frame.MessageBox(L"?", L"", MB_YESNO), IDYES);
    EXPECT_EQ(box.Seen(), 1u);
}

TEST(DesktopAfxApp, EscapeAndTheCloseButtonPressCancelOrALoneOk) {
    const struct {
        UINT type;
        int button;
    } boxes[] = {{MB_OK, IDOK}, {MB_OKCANCEL, IDCANCEL}, {MB_YESNOCANCEL, IDCANCEL}, {MB_RETRYCANCEL, IDCANCEL}};
    for (const auto& each : boxes) {
        SCOPED_TRACE(each.type);
        OnBox escaped([](HWND window) { ::PostMessage(window, WM_KEYDOWN, VK_ESCAPE, 1); });
        EXPECT_EQ(AfxMessageBox(L"?", each.type), each.button);
    }
    for (const auto& each : boxes) {
        SCOPED_TRACE(each.type);
        OnBox closed([](HWND window) { ::PostMessage(window, WM_CLOSE, 0, 0); });
        EXPECT_EQ(AfxMessageBox(L"?", each.type), each.button);
    }
}

TEST(DesktopAfxApp, ABoxOfAQuittingThreadNeverAnswersYes) {
    const struct {
        UINT type;
        int answer;
    } boxes[] = {{MB_YESNO, IDNO},
                 {MB_YESNOCANCEL, IDCANCEL},
                 {MB_OKCANCEL, IDCANCEL},
                 {MB_RETRYCANCEL, IDCANCEL},
                 {MB_ABORTRETRYIGNORE, IDABORT}};
    for (const auto& each : boxes) {
        SCOPED_TRACE(each.type);
        OnBox box([](HWND) { ::PostQuitMessage(7); });
        EXPECT_EQ(AfxMessageBox(L"?", each.type), each.answer);
        EXPECT_EQ(box.Seen(), 1u);
        MSG message = {};
        EXPECT_TRUE(::PeekMessage(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
        EXPECT_EQ(message.wParam, 7u);
    }
}

TEST(DesktopAfxApp, ABoxWhoseOwnerIsDestroyedNeverAnswersYes) {
    const struct {
        UINT type;
        int answer;
    } boxes[] = {{MB_YESNO, IDNO}, {MB_YESNOCANCEL, IDCANCEL}, {MB_OKCANCEL, IDCANCEL}};
    for (const auto& each : boxes) {
        SCOPED_TRACE(each.type);
        CWnd frame;
        ASSERT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
        OnBox box([&](HWND) { frame.PostMessage(WM_CLOSE); });
        EXPECT_EQ(frame.MessageBox(L"?", L"", each.type), each.answer);
        EXPECT_EQ(box.Seen(), 1u);
        EXPECT_EQ(frame.m_hWnd, nullptr);
    }
}

TEST(DesktopAfxApp, ABoxUnderABoxIsWatchedToo) {
    int inner = 0;
    OnBox boxes([&](HWND window) {
        const bool outer = boxes.Seen() == 1;
        if (outer) {
            inner = AfxMessageBox(L"inner", MB_YESNO);
        }
        OnBox::TryToLeave(window, outer ? IDYES : IDNO);
    });
    EXPECT_EQ(AfxMessageBox(L"outer", MB_YESNO), IDYES);
    EXPECT_EQ(inner, IDNO);
    EXPECT_EQ(boxes.Seen(), 2u);
}

TEST(AfxModule, FormattedStringsTakeTheirTexts) {
    const UiLanguage chinese(UiLanguage::kChinese);
    CString text;
    AfxFormatString2(text, AFX_IDP_PARSE_INT_RANGE, L"1", L"%1");
    EXPECT_EQ(Utf8(text), "请输入一个 1 到 %1 之间的整数。");
}
