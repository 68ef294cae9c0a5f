// CViewHistory: the history of a view, which marks nothing while a command runs and ends one before an undo.
// Layer 11: views and dialogs.
#pragma once

#include "DrawingHistory.h"

class CVectorView;

class CViewHistory : public CDrawingHistory {
public:
    explicit CViewHistory(CVectorView& view);

protected:
    int IsQuiet() override;
    int OnBeforeTravel() override;
    void OnChanged(CDrawingHistoryListener::Change change) override;

private:
    CVectorView& m_View;
};
