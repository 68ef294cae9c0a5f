// The property dialog as a derived view gets it: made, shown with the selection's rows, hidden, emptied, freed.

#include "PropertyDialogHost.h"
#include "support/BoxAnswer.h"
#include "support/ViewHost.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

namespace {

class DialogView : public CVectorView {
public:
    CDialog_DrawAbleProperty* Provide() {
        m_pDlgDrawAbleProperty = CreateDrawAbleProperty(this, GetParent());
        return m_pDlgDrawAbleProperty;
    }
};

// The title of this thread's property window that is visible, in UTF-8; empty when there is none.
std::string ShownTitle() {
    std::string title;
    HWND window = nullptr;
    while ((window = ::FindWindowEx(nullptr, window, L"#32770", nullptr)) != nullptr) {
        if (::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId() && ::IsWindowVisible(window)) {
            wchar_t text[80] = {};
            ::GetWindowText(window, text, 80);
            title = Utf8(text);
        }
    }
    return title;
}

} // namespace

TEST(PropertyDialogHost, ADerivedViewShowsTheRowsOfItsSelectionAndFreesTheDialog) {
    CGraphColorInfo::GetInstance(); // Made by the first paint otherwise, and it stays.
    const int before = CKXMemoryManager::Instance()->GetCount();
    {
        ParentWindow parent;
        DialogView view;
        ShowView(view, parent);
        CDrawable* line = view.AddLine(CGePoint2d(0, 0), CGePoint2d(9, 9), Gdiplus::Color(255, 1, 2, 3), 1);
        CDialog_DrawAbleProperty* dialog = view.Provide();
        ASSERT_NE(nullptr, dialog);
        EXPECT_EQ(dialog, view.GetDlgDrawAbleProperty());
        EXPECT_FALSE(IsDrawAblePropertyShown(dialog));
        EXPECT_EQ("", ShownTitle());
        ShowDrawAbleProperty(dialog, &view, 1);
        EXPECT_TRUE(IsDrawAblePropertyShown(dialog));
        EXPECT_EQ("属性", ShownTitle());
        view.GetDocument()->AddSelected(line);
        ShowDrawAbleProperty(dialog, &view, 1);
        EXPECT_EQ("属性-直线", ShownTitle());
        EmptyDrawAbleProperty(dialog);
        EXPECT_EQ("属性", ShownTitle());
        ShowDrawAbleProperty(dialog, &view, 0);
        EXPECT_FALSE(IsDrawAblePropertyShown(dialog));
    }
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}

TEST(PropertyDialogHost, NoDialogIsNotShownAndCanBeEmptied) {
    EXPECT_FALSE(IsDrawAblePropertyShown(nullptr));
    EmptyDrawAbleProperty(nullptr);
}
