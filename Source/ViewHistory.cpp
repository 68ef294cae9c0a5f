#include "ViewHistory.h"

#include "CommandOperationManager.h"
#include "Dialog_DrawAbleProperty.h"
#include "vectorview.h"

CViewHistory::CViewHistory(CVectorView& view) : CDrawingHistory(view.GetDocument()), m_View(view) {}

int CViewHistory::IsQuiet() {
    CCommandOperation* engine = m_View.GetCommandOperationManager();
    return engine == nullptr || engine->GetHasCommand() == 0;
}

int CViewHistory::OnBeforeTravel() {
    if (GetDocument() != m_View.GetDocument()) {
        Attach(m_View.GetDocument());
    }
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
        } catch (CException* e) {
            e->Delete();
        } catch (...) {
        }
    }
    return m_pHistory != nullptr;
}

int CVectorView::Undo() {
    return m_pHistory != nullptr ? m_pHistory->Undo() : 0;
}

int CVectorView::Redo() {
    return m_pHistory != nullptr ? m_pHistory->Redo() : 0;
}

int CVectorView::CanUndo() const {
    return m_pHistory != nullptr ? m_pHistory->CanUndo() : 0;
}

int CVectorView::CanRedo() const {
    return m_pHistory != nullptr ? m_pHistory->CanRedo() : 0;
}

int CVectorView::OnBeforeUndo() {
    const CKxAliveToken alive(m_Alive);
    CCommandOperationManager* manager = Manager();
    if (manager != nullptr && manager->GetHasCommand() != 0) {
        manager->Cancel();
        if (!alive.IsAlive()) {
            return 0;
        }
        RepaintAll(); // What the command has inverted onto the window.
    }
    return 1;
}

void CVectorView::OnEngineAtRest(const wchar_t* chinese, const wchar_t* english) {
    if (m_pHistory == nullptr) {
        return;
    }
    if (m_pHistory->GetDocument() != GetDocument()) {
        m_pHistory->Attach(GetDocument());
        return;
    }
    m_pHistory->Mark(chinese, english);
}

void CVectorView::OnHistoryTravelled() {
    if (CDialog_DrawAbleProperty* dialog = m_pDlgDrawAbleProperty) {
        // Its rows are those of before. An object that has left the drawing is not to be edited.
        CDrawable* object = dialog->GetObject();
        bool listed = false;
        const CDrawableArray& objects = *GetDocument()->GetDrawableObjs();
        for (INT_PTR i = 0; i < objects.GetSize() && !listed; ++i) {
            listed = objects.GetAt(i) == object;
        }
        dialog->LoadObject(listed ? object : nullptr);
    }
    RepaintAll();
}
