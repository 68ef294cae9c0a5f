// The demo program: one window, with the drawing that the command line names or with the parameters of a section.
// Layer 13: demo.
#include <afxcmn.h>
#include <afxwin.h>

#include <memory>

#include "CommandLine.h"
#include "HostFrame.h"
#include "DemoIds.h"
#include "HostText.h"
#include "LibraryWindows.h"

namespace {

class CHostApp : public CWinApp {
public:
    CHostApp() : CWinApp(LoadText(IDS_TITLE)) {} // the title of message boxes

    BOOL InitInstance() override {
        SetThreadLanguage();
        TranslateLibraryWindows();
        INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_BAR_CLASSES | ICC_WIN95_CLASSES};
        ::InitCommonControlsEx(&controls);
        m_frame = std::make_unique<CHostFrame>();
        if (!m_frame->CreateFrame()) {
            return FALSE;
        }
        m_pMainWnd = m_frame.get();
        m_frame->UpdateShown();
        m_frame->ShowWindow(m_nCmdShow);
        m_frame->UpdateWindow();

        const CString path = FindFile();
        if (!path.IsEmpty()) {
            m_frame->SetFocus();
            m_frame->OpenFile(FullPath(path));
        } else if (!m_frame->OfferRecovery()) {
            m_frame->OpenSection();
        }
        return TRUE;
    }

    BOOL OnIdle(LONG count) override {
        if (count == 0 && m_frame) {
            m_frame->UpdateShown();
        }
        return CWinApp::OnIdle(count);
    }

    int DoMessageBox(LPCTSTR text, UINT type, UINT help) override {
        if (m_frame) {
            m_frame->NoteMessage();
        }
        return CWinApp::DoMessageBox(TranslateLibraryText(text), type, help);
    }

    int ExitInstance() override {
        m_frame.reset();
        return CWinApp::ExitInstance();
    }

private:
    // A save dialog changes the current folder; the name must not depend on it.
    static CString FullPath(const wchar_t* path) {
        wchar_t full[MAX_PATH] = L"";
        const DWORD length = ::GetFullPathNameW(path, MAX_PATH, full, nullptr);
        return length > 0 && length < MAX_PATH ? full : path;
    }

    std::unique_ptr<CHostFrame> m_frame;
};

CHostApp theApp;

} // namespace

// The layer takes the command line from the process, in its wide form.
int WINAPI WinMain(HINSTANCE instance, HINSTANCE former, LPSTR, int show) {
    return AfxWinMain(instance, former, nullptr, show);
}
