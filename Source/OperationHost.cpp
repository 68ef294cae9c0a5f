// Where the command engine looks up to the view that it runs in: its manager, its property dialog.
// Layer 10: views and dialogs; this is the one place where an operation reaches above its own layer.

#include "CommandOperation.h"
#include "CommandOperationManager.h"
#include "Dialog_DrawAbleProperty.h"
#include "vectorview.h"

CCommandOperationManager* CCommandOperation::Manager() const {
    auto* view = DYNAMIC_DOWNCAST(CVectorView, m_pWnd);
    return view != nullptr ? DYNAMIC_DOWNCAST(CCommandOperationManager, view->GetCommandOperationManager()) : nullptr;
}

CCommandOperation* CCommandOperation::ManagerAsOperation() const {
    return Manager();
}

CDialog_DrawAbleProperty* CCommandOperation::PropertyDialog() const {
    auto* view = DYNAMIC_DOWNCAST(CVectorView, m_pWnd);
    return view != nullptr ? view->GetDlgDrawAbleProperty() : nullptr;
}

void CCommandOperation::DrawShirrLine(CPoint p1, CPoint p2, int) {
    if (CCommandOperationManager* manager = Manager()) {
        manager->DrawShirrLine(p1, p2, 0);
    }
}

void CCommandOperation::ErasShirrLine() {
    if (CCommandOperationManager* manager = Manager()) {
        manager->ErasShirrLine();
    }
}

bool CCommandOperation::IsOrthoOn() const {
    CCommandOperationManager* manager = Manager();
    return manager != nullptr && manager->GetDrawObjLatus() != 0;
}

void CCommandOperation::TrackGripPoint(const CGePoint2d& point) {
    if (CCommandOperationManager* manager = Manager()) {
        manager->AddGripPoint(point);
    }
}

void CCommandOperation::EndRunningOperation() {
    if (CCommandOperationManager* manager = Manager()) {
        manager->CheckResultState(RS_Done);
    }
}

void CCommandOperation::AnnounceToPropertyDialog(CDrawable* object) {
    if (CDialog_DrawAbleProperty* dialog = PropertyDialog()) {
        dialog->SetObject(object);
        if (dialog->GetSafeHwnd() != nullptr) {
            ::InvalidateRect(dialog->m_hWnd, nullptr, TRUE);
        }
    }
}

void CCommandOperation::EmptyPropertyDialog() {
    if (CDialog_DrawAbleProperty* dialog = PropertyDialog()) {
        dialog->LoadObject(nullptr);
    }
}
