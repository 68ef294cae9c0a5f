// The MFC layer's module state, resource search, extension modules, message loop and application.
// Layer 14: tests.
#include "support/BoxAnswer.h"

#include <afxdllx.h>

#include <gtest/gtest.h>

TEST(AfxModule, StringsComeFromTheProgramFirstAndThenFromTheLayer) {
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

TEST(AfxModule, WithoutAnApplicationTheProgramStandsIn) {
    EXPECT_EQ(AfxGetApp(), nullptr);
    EXPECT_EQ(AfxGetMainWnd(), nullptr);
    EXPECT_EQ(AfxGetInstanceHandle(), ::GetModuleHandle(nullptr));
    EXPECT_EQ(Utf8(AfxGetAppName()), "afx_win_tests");
}

TEST(DesktopAfxApp, TheLoopRunsUntilTheMainWindowGoes) {
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

TEST(AfxModule, FormattedStringsTakeTheirTexts) {
    CString text;
    AfxFormatString2(text, AFX_IDP_PARSE_INT_RANGE, L"1", L"%1");
    EXPECT_EQ(Utf8(text), "请输入一个 1 到 %1 之间的整数。");
}
