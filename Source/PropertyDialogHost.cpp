#include "PropertyDialogHost.h"

#include "Dialog_DrawAbleProperty.h"
#include "Document.h"
#include "MemoryInfo.h"
#include "ResourceScope.h"
#include "resource.h"
#include "vectorview.h"

#include <memory>

namespace {

constexpr int kMargin = 8; // Pixels from the view's edges.

} // namespace

CDialog_DrawAbleProperty* CreateDrawAbleProperty(CVectorView* view, CWnd* owner) {
    auto dialog = std::make_unique<CDialog_DrawAbleProperty>(owner);
    // The library's own template, also where the host has one of that number.
    const CResourceScope library(VectorViewModule());
    if (dialog->Create(IDD_DRAWABLE_PROPERTY, owner) == 0) {
        return nullptr;
    }
    dialog->SetView(view);
    if (view->GetSafeHwnd() != nullptr) {
        CRect area;
        CRect window;
        view->GetWindowRect(&area);
        dialog->GetWindowRect(&window);
        dialog->SetWindowPos(nullptr, area.right - window.Width() - kMargin, area.top + kMargin, 0, 0,
                             SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    KX_ADD_MEMORY(dialog.get());
    return dialog.release();
}

void ShowDrawAbleProperty(CDialog_DrawAbleProperty* dialog, CVectorView* view, int show) {
    if (show == 0) {
        dialog->ShowWindow(SW_HIDE);
        return;
    }
    const CDrawableArray& selected = *view->GetDocument()->GetSelectedDrawableObjs();
    dialog->LoadObject(selected.IsEmpty() ? nullptr : selected.GetAt(0));
    dialog->ShowWindow(SW_SHOW);
}

int IsDrawAblePropertyShown(CDialog_DrawAbleProperty* dialog) {
    return dialog != nullptr && dialog->m_hWnd != nullptr && dialog->IsWindowVisible();
}

void EmptyDrawAbleProperty(CDialog_DrawAbleProperty* dialog) {
    if (dialog != nullptr) {
        dialog->LoadObject(nullptr);
    }
}
