// The parameter view's engine: no picking, the words of the base, and its one minimal operation.

#include "CommandOperationManagerViewParm.h"
#include "MemoryInfo.h"
#include "VectorViewParm.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"

#include <gtest/gtest.h>

namespace {

struct ParmHost {
    ParmHost() {
        view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
        ShowView(view, parent);
    }
    ~ParmHost() { Engine().Cancel(); }
    CCommandOperationManager& Engine() {
        return *static_cast<CCommandOperationManager*>(view.GetCommandOperationManager());
    }
    CLine* AddLine() {
        auto* line = new CLine;
        KX_ADD_MEMORY(line);
        line->SetStartPoint(CGePoint2d(100, 100));
        line->SetEndPoint(CGePoint2d(200, 100));
        view.GetDocument()->AddDrawAobject(line);
        return line;
    }

    ParentWindow parent;
    CVectorViewParm view;
};

TEST(CommandOperationManagerViewParm, AClickOnAnObjectSelectsNothing) {
    ParmHost h;
    CLine* line = h.AddLine();
    EXPECT_EQ(std::string(h.Engine().GetRuntimeClass()->m_lpszClassName), "CCommandOperationManager_ViewParm");
    EXPECT_EQ(h.Engine().OnLButtonDown(MK_LBUTTON, CGePoint2d(150, 200)), CCommandOperation::RS_Continue);
    EXPECT_EQ(h.Engine().OnDefaultLButtonDown(MK_LBUTTON, CGePoint2d(150, 100)), CCommandOperation::RS_Continue);
    EXPECT_EQ(line->GetDrawState(), CDrawable::Normal);
    EXPECT_EQ(h.Engine().GetHasCommand(), 0);
}

TEST(CommandOperationManagerViewParm, NoGripOfASelectedObjectIsTaken) {
    ParmHost h;
    h.view.GetDocument()->AddSelected(h.AddLine());
    h.Engine().OnLButtonDown(MK_LBUTTON, CGePoint2d(100, 200));
    EXPECT_EQ(h.Engine().GetHasCommand(), 0);
}

TEST(CommandOperationManagerViewParm, TheIdleCursorIsTheOrdinaryOne) {
    ParmHost h;
    ::SetCursor(nullptr);
    EXPECT_EQ(h.Engine().OnDefaultSetCursor(&h.view, HTCLIENT, WM_MOUSEMOVE), CCommandOperation::RS_Done);
    EXPECT_EQ(::GetCursor(), ::LoadCursor(VectorViewModule(), MAKEINTRESOURCE(131)));
}

TEST(CommandOperationManagerViewParm, WordsWorkAsInTheBase) {
    ParmHost h;
    EXPECT_EQ(h.Engine().DoCommand(L"viewmove"), 1);
    EXPECT_EQ(h.Engine().GetHasCommand(), 1);
    EXPECT_EQ(h.Engine().DoCommand(L"Viewmove"), 0);
}

TEST(CommandOperationInplaceEditViewParms, OnCancelCallsTheCancelOfADerivedOne) {
    class Counting : public CCommandOperationInplaceEdit_ViewParms {
    public:
        using CCommandOperationInplaceEdit_ViewParms::CCommandOperationInplaceEdit_ViewParms;
        void Cancel() override { ++cancelled; }
        int cancelled = 0;
    };
    ParmHost h;
    Counting op(&h.view, nullptr, h.view.GetVectorViewCoordTran(), h.view.GetDocument());
    EXPECT_EQ(static_cast<CCommandOperation&>(op).OnCancel(), CCommandOperation::RS_Cancelled);
    EXPECT_EQ(op.cancelled, 1);
}

// The library makes none and exports none; this program compiles the unit in.
TEST(CommandOperationInplaceEditViewParms, ItAsksToStayAndDoesNothing) {
    ParmHost h;
    CCommandOperation* op = new CCommandOperationInplaceEdit_ViewParms(
        &h.view, nullptr, h.view.GetVectorViewCoordTran(), h.view.GetDocument());
    KX_ADD_MEMORY(op);
    EXPECT_EQ(op->OnLButtonDown(0, CGePoint2d()), CCommandOperation::RS_Capture);
    EXPECT_EQ(op->OnLButtonUp(0, CGePoint2d()), CCommandOperation::RS_Continue);
    EXPECT_EQ(op->OnMouseMove(0, CGePoint2d()), CCommandOperation::RS_Continue);
    EXPECT_EQ(op->OnMouseWheel(0, 120, CGePoint2d()), CCommandOperation::RS_Continue);
    EXPECT_EQ(op->OnRButtonDown(0, CGePoint2d()), CCommandOperation::RS_Continue);
    EXPECT_EQ(op->OnKeyDown(VK_ESCAPE, 1, 0), CCommandOperation::RS_Continue);
    EXPECT_EQ(op->OnCancel(), CCommandOperation::RS_Cancelled);
    // Installed the way a temporary tool is.
    h.Engine().CheckResultState(op, op->OnLButtonDown(0, CGePoint2d()));
    EXPECT_EQ(PeekAt<CCommandOperation>(h.Engine(), RunningTool()), op);
    h.Engine().OnLButtonDown(0, CGePoint2d(5, 5));
    h.Engine().OnRButtonDown(0, CGePoint2d(5, 5));
    EXPECT_EQ(PeekAt<CCommandOperation>(h.Engine(), RunningTool()), op);
}

} // namespace
