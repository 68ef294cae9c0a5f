#include "ViewHistory.h"

#include "CommandOperationManager.h"
#include "Dialog_DrawAbleProperty.h"
#include "vectorview.h"

CViewHistory::CViewHistory(CVectorView& view) : CDrawingHistory(nullptr), m_View(view) {}

int CViewHistory::IsQuiet() {
    return !m_View.IsCommandRunning();
}

int CViewHistory::OnBeforeTravel() {
    return m_View.OnBeforeUndo();
}

void CViewHistory::OnChanged(CDrawingHistoryListener::Change change) {
    if (change == CDrawingHistoryListener::Undone || change == CDrawingHistoryListener::Redone) {
        m_View.OnHistoryTravelled();
    }
}

// ---- CVectorView: undo and redo ------------------------------------------------------------------------------------

int CVectorView::EnableHistory(int enable) {
    if (enable == 0) {
        m_pHistory.reset();
    } else if (m_pHistory == nullptr) {
        try {
            m_pHistory = std::make_unique<CViewHistory>(*this);
            GetHistory();
        } catch (CException* e) {
            e->Delete();
        } catch (...) {
        }
    }
    return m_pHistory != nullptr;
}

CDrawingHistory* CVectorView::GetHistory() {
    if (m_pHistory == nullptr) {
        return nullptr;
    }
    if (GetDocument()->GetHistory() == nullptr) {
        m_pHistory->Attach(GetDocument());
    }
    return GetDocument()->GetHistory();
}

int CVectorView::Undo() {
    return Travel(&CDrawingHistory::Undo);
}

int CVectorView::Redo() {
    return Travel(&CDrawingHistory::Redo);
}

// A history that another view owns ends no command of this view and does not repaint it: both are done here.
int CVectorView::Travel(int (CDrawingHistory::*go)()) {
    const CDrawingHistory* before = GetHistory();
    const CKxAliveToken alive(m_Alive);
    if (before == nullptr || (before != m_pHistory.get() && OnBeforeUndo() == 0) || !alive.IsAlive()) {
        return 0;
    }
    CDrawingHistory* history = GetHistory();
    if (history == nullptr || (history->*go)() == 0) {
        return 0;
    }
    if (alive.IsAlive() && GetHistory() != m_pHistory.get()) {
        OnHistoryTravelled();
    }
    return 1;
}

int CVectorView::CanUndo() {
    CDrawingHistory* history = GetHistory();
    return history != nullptr ? history->CanUndo() : 0;
}

int CVectorView::CanRedo() {
    CDrawingHistory* history = GetHistory();
    return history != nullptr ? history->CanRedo() : 0;
}

bool CVectorView::IsCommandRunning() {
    return m_pManager != nullptr && m_pManager->GetHasCommand() != 0;
}

int CVectorView::OnBeforeUndo() {
    const CKxAliveToken alive(m_Alive);
    CCommandOperationManager* manager = Manager();
    if (manager != nullptr && manager->GetHasCommand() != 0) {
        manager->Cancel();
        if (!alive.IsAlive()) {
            return 0;
        }
        RepaintAll(); // Removes what the command has inverted onto the window.
    }
    return 1;
}

void CVectorView::OnEngineAtRest(const wchar_t* chinese, const wchar_t* english) {
    CDrawingHistory* history = GetHistory();
    if (history != nullptr && !IsCommandRunning()) {
        history->Mark(chinese, english);
    }
}

void CVectorView::OnHistoryTravelled() {
    if (CDialog_DrawAbleProperty* dialog = m_pDlgDrawAbleProperty) {
        // Its rows show former values. An object that has left the drawing must not be edited.
        CDrawable* object = dialog->GetObject();
        bool listed = false;
        const CDrawableArray& objects = *GetDocument()->GetDrawableObjs();
        for (INT_PTR i = 0; i < objects.GetSize() && !listed; ++i) {
            listed = objects.GetAt(i) == object;
        }
        const CKxAliveToken alive(m_Alive);
        dialog->LoadObject(listed ? object : nullptr);
        if (!alive.IsAlive()) {
            return;
        }
    }
    RepaintAll();
}
