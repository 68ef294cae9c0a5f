// What a paint does when drawing throws: the messages, what is put back, and what is drawn nevertheless.

#include "Document.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "VectorGraphic.h"
#include "VectorLabel.h"
#include "support/BoxAnswer.h"
#include "support/OnBox.h"
#include "support/RecordingDC.h"
#include "support/ViewHost.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

namespace {

using Calls = std::vector<std::string>;
using Texts = std::vector<std::string>;

enum class Throws { Nothing, Exception, Number };

void Throw(Throws what) {
    if (what == Throws::Exception) {
        AfxThrowResourceException();
    }
    if (what == Throws::Number) {
        throw 7;
    }
}

// Lets everything out of its Draw.
class CBrokenDrawable : public CDrawable {
public:
    explicit CBrokenDrawable(Throws what) : m_what(what) {}
    void Draw(CDC*, CDrawGeometry*) override { Throw(m_what); }

private:
    Throws m_what;
};

// A context whose clearing, strokes or grips fail.
class BreakingDC : public RecordingDC {
public:
    using RecordingDC::LineTo;
    using RecordingDC::Rectangle;
    BOOL LineTo(int x, int y) override {
        Throw(inStroke);
        return RecordingDC::LineTo(x, y);
    }
    BOOL Rectangle(int x1, int y1, int x2, int y2) override {
        Throw(inGrip);
        return RecordingDC::Rectangle(x1, y1, x2, y2);
    }
    BOOL PatBlt(int x, int y, int width, int height, DWORD rop) override {
        Throw(inClearing);
        return RecordingDC::PatBlt(x, y, width, height, rop);
    }
    Throws inClearing = Throws::Nothing;
    Throws inStroke = Throws::Nothing;
    Throws inGrip = Throws::Nothing;
};

// The drawing point (x, y) is on pixel (x, 300 - y).
struct Painting {
    Painting() {
        tran.SethScreen(300);
        graphic.SetVectorViewCoordTran(&tran);
    }
    template <class Kind>
    Kind* Add(Kind* object) {
        KX_ADD_MEMORY(object);
        graphic.GetDocument()->AddDrawAobject(object);
        return object;
    }
    CLine* AddLine(double x) {
        CLine* line = Add(new CLine);
        line->SetStartPoint(CGePoint2d(x, 0));
        line->SetEndPoint(CGePoint2d(x, 10));
        return line;
    }
    // Where lines begin, in the order in which they are drawn.
    Calls PaintedStarts() {
        dc.Clear();
        graphic.OnDraw(&dc, 0);
        Calls starts;
        for (const std::string& call : dc.Calls()) {
            if (call.rfind("MoveTo", 0) == 0) {
                starts.push_back(call);
            }
        }
        return starts;
    }
    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
    BreakingDC dc;
};

// The low 32 bits of the address, as a signed decimal number.
std::string LoopFailure(const CDrawable* object) {
    char text[32] = {};
    std::snprintf(text, sizeof text, "%d", static_cast<int>(reinterpret_cast<INT_PTR>(object) & 0xFFFFFFFF));
    return "CVectorGraphic::OnDraw出错:pDrawObj=" + std::string(text);
}

} // namespace

// ---- The loop ------------------------------------------------------------------------------------------------------

TEST(PaintFailure, AThrowingObjectEndsTheLoopAndIsNamedByItsAddress) {
    for (Throws what : {Throws::Exception, Throws::Number}) {
        Painting p;
        p.AddLine(1);
        const CDrawable* broken = p.Add(new CBrokenDrawable(what));
        p.AddLine(2);
        CLine current;
        p.graphic.GetDocument()->AddCurrentObject(&current);
        BoxAnswer boxes;
        EXPECT_EQ((Calls{"MoveTo(1,300)"}), p.PaintedStarts()) << "what was drawn stays, the rest is left out";
        EXPECT_EQ((Texts{LoopFailure(broken)}), boxes.Texts());
        EXPECT_EQ((Calls{"MoveTo(1,300)"}), p.PaintedStarts());
        EXPECT_EQ((Texts{LoopFailure(broken), LoopFailure(broken)}), boxes.Texts()) << "with every paint";
        EXPECT_EQ(3, p.graphic.GetDocument()->GetDrawableObjs()->GetSize());
        p.graphic.GetDocument()->removeCurrentObject();
    }
}

TEST(PaintFailure, AThrowingNetObjectKeepsTheWholeDrawingFromBeingDrawn) {
    Painting p;
    p.AddLine(1);
    auto* broken = new CBrokenDrawable(Throws::Number);
    KX_ADD_MEMORY(broken);
    p.graphic.GetDocument()->AddNetobject(broken);
    BoxAnswer boxes;
    EXPECT_TRUE(p.PaintedStarts().empty());
    EXPECT_EQ((Texts{LoopFailure(broken)}), boxes.Texts());
}

TEST(PaintFailure, AThrowingCurrentObjectComesLastAndIsNamed) {
    Painting p;
    p.AddLine(1);
    CBrokenDrawable broken(Throws::Exception);
    p.graphic.GetDocument()->AddCurrentObject(&broken);
    BoxAnswer boxes;
    EXPECT_EQ((Calls{"MoveTo(1,300)"}), p.PaintedStarts());
    EXPECT_EQ((Texts{LoopFailure(&broken)}), boxes.Texts());
    p.graphic.GetDocument()->removeCurrentObject();
}

TEST(PaintFailure, AFailedClearingPutsTheBrushBackAndNothingIsDrawn) {
    for (Throws what : {Throws::Exception, Throws::Number}) {
        Painting p;
        p.AddLine(1);
        p.graphic.GetDocument()->SetBKColor(0x00030201);
        p.dc.inClearing = what;
        BoxAnswer boxes;
        p.graphic.OnDraw(&p.dc, 1);
        EXPECT_EQ((Texts{"CVectorGraphic::OnDraw出错:pDrawObj=0"}), boxes.Texts()) << "no object's turn had come";
        EXPECT_TRUE(
            SameCalls({"SelectObject(brush style=0 color=0x00030201)", "SelectObject(brush default)"}, p.dc.Calls()));
    }
}

// ---- A line --------------------------------------------------------------------------------------------------------

TEST(PaintFailure, ALineOfANegativeLayerFailsInItsFirstStageAndThePaintGoesOn) {
    Painting p;
    p.AddLine(1);
    p.AddLine(2)->SetLayer(-1);
    p.AddLine(3);
    BoxAnswer boxes;
    EXPECT_EQ((Calls{"MoveTo(1,300)", "MoveTo(3,300)"}), p.PaintedStarts());
    EXPECT_EQ((Texts{"CLine::Draw出错:step=0"}), boxes.Texts());
}

TEST(PaintFailure, AFailedStrokePutsBackWhatItsStatePutsBackOtherwise) {
    for (Throws what : {Throws::Exception, Throws::Number}) {
        for (auto state : {CDrawable::Normal, CDrawable::Selected, CDrawable::Dragging}) {
            SCOPED_TRACE(state);
            Painting p;
            CLine* line = p.AddLine(1);
            line->SetDrawState(state);
            p.dc.inStroke = what;
            BoxAnswer boxes;
            p.graphic.OnDraw(&p.dc, line);
            EXPECT_EQ((Texts{"CLine::Draw出错:step=1"}), boxes.Texts());
            const Calls calls = p.dc.Calls();
            const char* style = state == CDrawable::Selected ? "2" : "0";
            Calls expected = {"SetBkMode(1)",
                              std::string("SelectObject(pen style=") + style + " width=1 color=0x00FFFFFF)"};
            if (state == CDrawable::Dragging) {
                expected.push_back("SetROP2(6)");
            }
            expected.push_back("MoveTo(1,300)");
            if (state == CDrawable::Dragging) {
                expected.push_back("SetROP2(13)");
            }
            expected.push_back("SelectObject(pen default)");
            if (state == CDrawable::Dragging) {
                expected.push_back("SetBkMode(2)");
            }
            EXPECT_TRUE(SameCalls(expected, calls)) << "no grip is drawn";
            EXPECT_EQ(R2_COPYPEN, p.dc.GetROP2());
            EXPECT_EQ(state == CDrawable::Dragging ? OPAQUE : TRANSPARENT, p.dc.GetBkMode())
                << "only a dragged line puts the background mode back";
            EXPECT_EQ(state, line->GetDrawState());
        }
    }
}

TEST(PaintFailure, AFailedGripIsTheLastStageAndPutsPenAndBrushBack) {
    Painting p;
    CLine* line = p.AddLine(1);
    line->SetDrawState(CDrawable::Selected);
    p.dc.inGrip = Throws::Exception;
    BoxAnswer boxes;
    p.graphic.OnDraw(&p.dc, line);
    EXPECT_EQ((Texts{"CLine::Draw出错:step=2"}), boxes.Texts());
    const Calls& calls = p.dc.Calls();
    ASSERT_LE(2u, calls.size());
    EXPECT_EQ("SelectObject(brush default)", calls[calls.size() - 2]);
    EXPECT_EQ("SelectObject(pen default)", calls[calls.size() - 1]);
}

TEST(PaintFailure, GripsThatCannotBeToldAreTheLastStageToo) {
    class Gripless : public CLine {
    public:
        void getGripPoints(CGePointArray&, int) override { AfxThrowInvalidArgException(); }
    };
    Painting p;
    CLine* line = p.Add(new Gripless);
    p.AddLine(2);
    BoxAnswer boxes;
    EXPECT_EQ((Calls{"MoveTo(0,300)", "MoveTo(2,300)"}), p.PaintedStarts());
    EXPECT_TRUE(boxes.Texts().empty()) << "only a selected one is asked for its grips";
    line->SetDrawState(CDrawable::Selected);
    EXPECT_EQ((Calls{"MoveTo(0,300)", "MoveTo(2,300)"}), p.PaintedStarts());
    EXPECT_EQ((Texts{"CLine::Draw出错:step=2"}), boxes.Texts());
}

TEST(PaintFailure, EachFailedLineOfAPaintHasItsOwnMessage) {
    Painting p;
    p.AddLine(1);
    p.AddLine(2);
    p.dc.inStroke = Throws::Number;
    BoxAnswer boxes;
    EXPECT_EQ((Calls{"MoveTo(1,300)", "MoveTo(2,300)"}), p.PaintedStarts());
    EXPECT_EQ((Texts{"CLine::Draw出错:step=1", "CLine::Draw出错:step=1"}), boxes.Texts());
}

// ---- A host in the message box -------------------------------------------------------------------------------------

TEST(PaintFailure, AHostMayFreeTheViewInsideTheMessageBoxOfAnyDrawing) {
    for (const int failing : {0, 1, 2}) {
        ParentWindow parent;
        auto view = std::make_unique<CVectorView>();
        ShowView(*view, parent);
        for (int i = 0; i < 3; ++i) {
            view->AddLine(CGePoint2d(10, 10), CGePoint2d(100, 10 + i), Gdiplus::Color(255, 255, 255, 255), 0)
                ->SetLayer(i == failing ? -1 : 0);
        }
        OnBox box([&](HWND window) {
            view.reset();
            ::PostMessage(window, WM_COMMAND, IDOK, 0);
        });
        const HWND window = view->m_hWnd;
        // Not by a message: the system hides a fault in a window procedure.
        RecordingDC dc;
        view->VectorPaint(&dc);
        EXPECT_EQ(1u, box.Seen());
        EXPECT_EQ(nullptr, view);
        EXPECT_FALSE(::IsWindow(window));
    }
}

TEST(PaintFailure, AHostMayFreeTheViewOrTheLabelInsideTheMessageBoxOfAFigure) {
    class NoTextDC : public RecordingDC {
    public:
        using RecordingDC::TextOut;
        BOOL TextOut(int, int, LPCTSTR, int) override {
            AfxThrowResourceException();
            return FALSE;
        }
    };
    for (const bool freesView : {true, false}) {
        ParentWindow parent;
        auto view = std::make_unique<CVectorView>();
        ShowView(*view, parent);
        auto* label = new CKXVectorLabel;
        KX_ADD_MEMORY(label);
        label->SetLeftLabel(CGePoint2d(10, 10), CGePoint2d(10, 60));
        label->SetRightLabel(CGePoint2d(200, 10), CGePoint2d(200, 60));
        label->SetTextShow(1);
        label->SetDrawState(CDrawable::Selected);
        view->GetDocument()->AddDrawAobject(label);
        OnBox box([&](HWND window) {
            if (freesView) {
                view.reset();
            } else {
                view->GetDocument()->DeleteObject(label);
                KX_REMOVE_MEMORY(label);
                delete label;
            }
            ::PostMessage(window, WM_COMMAND, IDOK, 0);
        });
        NoTextDC dc;
        view->VectorPaint(&dc);
        EXPECT_EQ(1u, box.Seen());
        for (const std::string& call : dc.Calls()) {
            EXPECT_NE(0u, call.rfind("Rectangle", 0)) << "no grip is drawn";
        }
    }
}
