// The manager when the view is freed while a tool's question is shown.
// Layer 16: tests.

#include "Document.h"
#include "support/BoxAnswer.h"
#include "support/ViewHost.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

namespace {

// A host that closes the drawing while a question is shown.
class Closer {
public:
    explicit Closer(CVectorView*& view) : m_view(view) {
        s_current = this;
        m_hook = ::SetWindowsHookEx(WH_CBT, Hook, nullptr, ::GetCurrentThreadId());
    }
    ~Closer() { ::UnhookWindowsHookEx(m_hook); }

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam) {
        if (code == HCBT_ACTIVATE && ::GetDlgItem(reinterpret_cast<HWND>(wParam), 0xffff) != nullptr) {
            delete s_current->m_view;
            s_current->m_view = nullptr;
        }
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
    CVectorView*& m_view;
    HHOOK m_hook;
    inline static Closer* s_current = nullptr;
};

} // namespace

TEST(CommandOperationManagerQuestion, AViewFreedWhileAQuestionIsOpenIsNotTouchedAgain) {
    // Twice: the first view also makes what the library allocates once for the whole process.
    int before = 0;
    for (int round = 0; round < 2; ++round) {
        before = CKXMemoryManager::Instance()->GetCount();
        ParentWindow parent;
        auto* view = new CVectorView;
        ShowView(*view, parent);
        CDrawable* line = view->AddLine(CGePoint2d(0, 0), CGePoint2d(1, 1), Gdiplus::Color(255, 255, 255, 255), 1);
        view->GetDocument()->AddSelected(line);
        {
            BoxAnswer yes({IDYES});
            Closer closer(view); // Called first: the last hook set is.
            view->DoCommand(L"erase");
            EXPECT_EQ(1u, yes.Texts().size());
        }
        EXPECT_EQ(nullptr, view);
    }
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}
