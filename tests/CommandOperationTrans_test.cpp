// "translation", "rotation", "mirroring", "copy": the objects themselves move, and what the question decides.

#include "Arc.h"
#include "CenterPoint.h"
#include "CombRect.h"
#include "CommandOperationTrans.h"
#include "MemoryInfo.h"
#include "TextParm.h"
#include "VectorLabel.h"
#include "support/AfxCaught.h"
#include "support/RepaintAsked.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

#include <cmath>

// A host's kind that can't be made by its class.
class TransHandMadeLine : public CLine {
    DECLARE_DYNAMIC(TransHandMadeLine)
};
IMPLEMENT_DYNAMIC(TransHandMadeLine, CLine)

// A host's kind that counts its objects.
class TransCountedLine : public CLine {
    DECLARE_DYNCREATE(TransCountedLine)
public:
    TransCountedLine() { ++s_alive; }
    ~TransCountedLine() override { --s_alive; }
    static int s_alive;
};
IMPLEMENT_DYNCREATE(TransCountedLine, CLine)
int TransCountedLine::s_alive = 0;

namespace {

const char* const kQuestion = "是否保留原对象?";

int IsPreviewDrawn(ViewDriver& d) {
    return PeekAt<CCommandOperationTrans>(*static_cast<CCommandOperationTrans*>(d.Tool()), TransPreview());
}

// One selected line from (100, 100) to (150, 100).
CLine* SelectedLine(ViewDriver& d) {
    CLine* line = d.AddLine(100, 100, 150, 100);
    d.Select(line);
    return line;
}

TEST(CommandOperationTrans, TranslationMovesAndNoLeavesOneSetSelected) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.Start(L"translation");
    d.ClickAt(20, 20);
    EXPECT_EQ(d.TakeResults(), "down 7, up 0");
    EXPECT_EQ(d.Step(), 1);
    BoxAnswer boxes({IDNO});
    d.ClickAt(50, 80);
    EXPECT_EQ(d.TakeResults(), "down 1");
    EXPECT_EQ(boxes.Texts(), std::vector<std::string>{kQuestion});
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.AllWords(), "line (130,160)-(180,160) selected -1");
    ASSERT_EQ(d.Selected().GetSize(), 1);
    EXPECT_EQ(d.Selected()[0], line);
}

TEST(CommandOperationTrans, YesLeavesTheMovedOnesAndNewOnesAtTheOldPlace) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.Start(L"translation");
    d.ClickAt(20, 20);
    BoxAnswer boxes({IDYES});
    d.ClickAt(50, 80);
    EXPECT_EQ(d.AllWords(), "line (130,160)-(180,160) normal -1; line (100,100)-(150,100) normal -1");
    EXPECT_EQ(d.Object(0), line);
    EXPECT_EQ(d.Selected().GetSize(), 0);
}

TEST(CommandOperationTrans, TheQuestionOffersYesAndNoAlone) {
    for (LPCTSTR word : {L"translation", L"rotation", L"mirroring"}) {
        ViewDriver d;
        SelectedLine(d);
        d.Start(word);
        d.ClickAt(20, 20);
        DialogScript script({[&](HWND box) {
            const auto isOffered = [&](int button) {
                HWND control = ::GetDlgItem(box, button);
                return control != nullptr && (::GetWindowLong(control, GWL_STYLE) & WS_VISIBLE) != 0;
            };
            EXPECT_TRUE(isOffered(IDYES)) << Utf8(word);
            EXPECT_TRUE(isOffered(IDNO)) << Utf8(word);
            for (int button : {IDOK, IDCANCEL, IDABORT, IDRETRY, IDIGNORE, IDHELP}) {
                EXPECT_FALSE(isOffered(button)) << Utf8(word) << " " << button;
            }
            DialogScript::Answer(IDNO)(box);
        }});
        d.ClickAt(50, 80);
        EXPECT_EQ(script.Seen(), 1u);
    }
}

TEST(CommandOperationTrans, EveryFinishAsksForARepaintThatWipesThePreview) {
    for (LPCTSTR word : {L"translation", L"rotation", L"mirroring", L"copy"}) {
        for (int answer : {IDYES, IDNO}) {
            ViewDriver d;
            SelectedLine(d);
            d.TakeFresh();
            d.Start(word);
            d.ClickAt(20, 20);
            d.MoveTo(60, 50);
            ::ValidateRect(d.view.m_hWnd, nullptr);
            BoxAnswer boxes({answer});
            d.PressAt(70, 60);
            EXPECT_FALSE(d.IsRunning()) << Utf8(word) << " " << answer;
            EXPECT_TRUE(IsRepaintAskedFor(d.view)) << Utf8(word) << " " << answer;
            d.Update();
            EXPECT_EQ(d.DifferenceFromFresh(), 0) << Utf8(word) << " " << answer;
        }
    }
}

TEST(CommandOperationTrans, CopyKeepsTheOriginalsWithoutAsking) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.Start(L"copy");
    d.ClickAt(20, 20);
    EXPECT_EQ(d.TakeResults(), "down 7, up 0");
    BoxAnswer boxes;
    d.MoveTo(30, 30);
    d.ClickAt(50, 80);
    EXPECT_EQ(d.TakeResults(), "move 0, down 1");
    EXPECT_TRUE(boxes.Texts().empty());
    EXPECT_EQ(d.AllWords(), "line (130,160)-(180,160) normal -1; line (100,100)-(150,100) normal -1");
    EXPECT_EQ(d.Object(0), line);
    EXPECT_EQ(d.Selected().GetSize(), 0);
}

TEST(CommandOperationTrans, TheObjectsAtTheOldPlaceAreNotRegisteredWithTheLeakTracer) {
    struct Numbered : CDrawable {
        static auto Number() { return &Numbered::m_ID; }
    };
    ViewDriver d;
    SelectedLine(d)->*Numbered::Number() = 42;
    const int before = CKXMemoryManager::Instance()->GetCount();
    d.Start(L"copy");
    d.ClickAt(20, 20);
    d.ClickAt(50, 80);
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before);
    EXPECT_FALSE(CKXMemoryManager::Instance()->IsKnown(d.Object(1)));
    EXPECT_EQ(d.Object(0)->GetID(), 42);
    EXPECT_EQ(d.Object(1)->GetID(), 42);
}

TEST(CommandOperationTrans, EachMoveStartsFromTheStoredState) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.Start(L"translation");
    d.ClickAt(20, 20);
    d.MoveTo(60, 20);
    EXPECT_EQ(Words(line), "line (140,100)-(190,100) selected -1");
    EXPECT_TRUE(IsPreviewDrawn(d));
    EXPECT_EQ(d.BandStart(), CPoint(20, 280));
    d.MoveTo(20, 60);
    EXPECT_EQ(Words(line), "line (100,140)-(150,140) selected -1");
    d.MoveTo(21, 20);
    EXPECT_EQ(Words(line), "line (101,100)-(151,100) selected -1");
}

TEST(CommandOperationTrans, BeforeTheBaseAMoveShowsTheMarkerOnly) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.TakeFresh();
    d.Start(L"rotation");
    d.MoveTo(60, 20);
    EXPECT_EQ(d.TakeResults(), "move 0");
    EXPECT_FALSE(d.IsBandDrawn());
    d.MoveTo(103, 98);
    EXPECT_TRUE(d.IsMarkDrawn());
    d.MoveTo(60, 20);
    EXPECT_EQ(d.DifferenceFromFresh(), 0);
    EXPECT_EQ(Words(line), "line (100,100)-(150,100) selected -1");
}

TEST(CommandOperationTrans, TheRightButtonPutsBackWhatMoved) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.Start(L"translation");
    d.ClickAt(20, 20);
    d.MoveTo(60, 70);
    d.TakeResults();
    ::ValidateRect(d.view.m_hWnd, nullptr);
    d.RightAt(60, 70);
    EXPECT_EQ(d.TakeResults(), "right 1");
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(Words(line), "line (100,100)-(150,100) selected -1");
    EXPECT_EQ(d.Selected().GetSize(), 1);
    EXPECT_TRUE(IsRepaintAskedFor(d.view));
    d.Update();
    EXPECT_EQ(d.DifferenceFromFresh(), 0);
}

TEST(CommandOperationTrans, TheRightButtonBeforeTheBaseRaisesAndTheToolStays) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.Start(L"translation");
    const CPoint pixel = d.PixelOf(5, 5);
    const int cause = ArchiveCause([&] { d.Manager().OnRButtonDown(0, CGePoint2d(pixel)); });
    EXPECT_EQ(cause, CArchiveException::endOfFile);
    EXPECT_TRUE(d.IsRunning());
    EXPECT_EQ(Words(line), "line (100,100)-(150,100) selected -1");
    // The tool continues from where it was.
    d.ClickAt(20, 20);
    BoxAnswer boxes({IDNO});
    d.ClickAt(30, 20);
    EXPECT_EQ(Words(line), "line (110,100)-(160,100) selected -1");
}

TEST(CommandOperationTrans, ThroughTheWindowThatExceptionEndsInTheWindowProcedure) {
    ViewDriver d;
    SelectedLine(d);
    d.Start(L"copy");
    BoxAnswer boxes;
    d.RightAt(5, 5);
    EXPECT_TRUE(d.IsRunning());
    EXPECT_EQ(d.TakeResults(), "");
}

TEST(CommandOperationTrans, WithNothingSelectedTheRightButtonEndsAtOnce) {
    for (LPCTSTR word : {L"translation", L"rotation", L"mirroring", L"copy"}) {
        ViewDriver d;
        d.AddLine(100, 100, 150, 100);
        d.Start(word);
        d.RightAt(5, 5);
        EXPECT_EQ(d.TakeResults(), "right 1");
        EXPECT_FALSE(d.IsRunning());
    }
}

TEST(CommandOperationTrans, WithNothingSelectedTheSecondClickStillAsks) {
    for (LPCTSTR word : {L"translation", L"rotation", L"mirroring", L"copy"}) {
        ViewDriver d;
        d.AddLine(100, 100, 150, 100);
        d.Start(word);
        d.ClickAt(20, 20);
        d.MoveTo(70, 50);
        EXPECT_FALSE(d.IsBandDrawn());
        BoxAnswer boxes({IDYES});
        d.ClickAt(70, 50);
        EXPECT_EQ(boxes.Texts().size(), CString(word) == L"copy" ? 0u : 1u);
        EXPECT_FALSE(d.IsRunning());
        EXPECT_EQ(d.AllWords(), "line (100,100)-(150,100) normal -1");
    }
}

TEST(CommandOperationTrans, TheSelectionAtTheTimeOfTheWordCounts) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    CLine* later = d.AddLine(200, 200, 250, 200);
    d.Start(L"translation");
    d.Select(later);
    d.ClickAt(20, 20);
    BoxAnswer boxes({IDNO});
    d.ClickAt(30, 30);
    EXPECT_EQ(Words(line), "line (110,110)-(160,110) selected -1");
    EXPECT_EQ(Words(later), "line (200,200)-(250,200) selected -1");
}

TEST(CommandOperationTrans, AnotherCommandLeavesTheObjectsAtTheLastMove) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.Start(L"translation");
    d.ClickAt(20, 20);
    d.MoveTo(60, 70);
    d.Start(L"line");
    EXPECT_EQ(Words(line), "line (140,150)-(190,150) selected -1");
    EXPECT_EQ(d.Selected().GetSize(), 1);
}

TEST(CommandOperationTrans, MirroringReflectsInTheBand) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.Start(L"mirroring");
    d.ClickAt(20, 60);
    BoxAnswer boxes({IDNO});
    d.ClickAt(220, 60);
    EXPECT_EQ(Words(line), "line (100,20)-(150,20) selected -1");
    // And back, with the axis drawn the other way round.
    d.Start(L"mirroring");
    d.ClickAt(220, 60);
    d.ClickAt(20, 60);
    EXPECT_NEAR(line->GetStartPoint().y, 100, 1e-6);
}

// The direction of what was a level line of length 50 after a rotation about (100, 100) towards the point.
CGePoint2d EndAfterRotationTowards(double x, double y) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.Start(L"rotation");
    d.Tool()->OnLButtonDown(0, CGePoint2d(100, 100));
    BoxAnswer boxes({IDNO});
    d.Tool()->OnLButtonDown(0, CGePoint2d(x, y));
    d.Manager().CheckResultState(CCommandOperation::RS_Done);
    return line->GetEndPoint();
}

TEST(CommandOperationTrans, RotationTurnsTheObjectsToTheDirectionOfTheBand) {
    struct Case {
        double x, y, endX, endY;
    };
    const Case cases[] = {{200, 100, 150, 100}, {100, 180, 100, 150}, {0, 100, 50, 100}, {100, 20, 100, 50},
                          {130, 140, 130, 140}, {70, 140, 70, 140},   {70, 60, 70, 60},  {130, 60, 130, 60}};
    for (const Case& c : cases) {
        const CGePoint2d end = EndAfterRotationTowards(c.x, c.y);
        EXPECT_NEAR(end.x, c.endX, 1e-7) << c.x << " " << c.y;
        EXPECT_NEAR(end.y, c.endY, 1e-7) << c.x << " " << c.y;
    }
}

TEST(CommandOperationTrans, DownwardsTheHalfTurnHasElevenDigits) {
    // Straight up the angle is a quarter turn to the last digit, and the start (100, 100) of the line is the centre:
    // its end is above it within rounding. Straight down it is -(3.1415926535 - a quarter turn), short of the true
    // one by 8.979e-11, which moves the end by 50 times that to the right.
    EXPECT_LT(std::abs(EndAfterRotationTowards(100, 180).x - 100), 1e-13);
    EXPECT_NEAR(EndAfterRotationTowards(100, 20).x - 100, 50 * 8.979e-11, 1e-12);
}

TEST(CommandOperationTrans, RotationOntoTheBaseGivesNotANumberAndIsSurvived) {
    for (LPCTSTR word : {L"rotation", L"mirroring"}) {
        ViewDriver d;
        CLine* line = SelectedLine(d);
        d.Start(word);
        d.ClickAt(20, 20);
        BoxAnswer boxes({IDNO});
        d.ClickAt(20, 20);
        EXPECT_TRUE(std::isnan(line->GetStartPoint().x));
        d.TakeFresh();
        EXPECT_EQ(boxes.Texts(), std::vector<std::string>{kQuestion});
    }
}

TEST(CommandOperationTrans, EveryKindIsMovedKeptAndRestored) {
    ViewDriver d;
    std::vector<CDrawable*> kinds;
    const auto add = [&](auto* object) {
        KX_ADD_MEMORY(object);
        d.Document().AddDrawAobject(object);
        d.Select(object);
        kinds.push_back(object);
        return object;
    };
    add(new CLine)->SetEndPoint(CGePoint2d(10, 0));
    auto* pline = add(new CPLine);
    pline->AddPoint(CGePoint2d(0, 0), 0.5);
    pline->AddPoint(CGePoint2d(10, 10));
    add(new CCircle)->setRadius(7);
    add(new CArc(Gdiplus::PointF(5, 5), 5, 0, 1));
    add(new CText)->SetText(L"abc");
    add(new CTextParm)->SetText(L"12");
    auto* label = add(new CKXVectorLabel);
    label->SetLeftLabel(CGePoint2d(0, 0), CGePoint2d(0, 10));
    label->SetRightLabel(CGePoint2d(50, 0), CGePoint2d(50, 10));
    const std::string before = d.AllWords();
    d.Start(L"translation");
    d.ClickAt(200, 200);
    d.MoveTo(250, 230);
    EXPECT_NE(d.AllWords(), before);
    d.RightAt(1, 1);
    EXPECT_EQ(d.AllWords(), before);
    d.Start(L"copy");
    d.ClickAt(200, 200);
    d.ClickAt(210, 220);
    ASSERT_EQ(d.Count(), 14);
    for (INT_PTR i = 0; i < 7; ++i) {
        EXPECT_EQ(d.Object(i), kinds[static_cast<size_t>(i)]);
        EXPECT_EQ(d.Object(i + 7)->GetRuntimeClass(), d.Object(i)->GetRuntimeClass());
        EXPECT_EQ(d.Object(i + 7)->GetDrawState(), CDrawable::Normal);
    }
    EXPECT_EQ(Words(d.Object(0)), "line (10,20)-(20,20) normal -1");
    EXPECT_EQ(Words(d.Object(7)), "line (0,0)-(10,0) normal -1");
    EXPECT_EQ(Words(d.Object(9)), "circle (0,0) r 7 normal -1");
    EXPECT_EQ(static_cast<CPLine*>(d.Object(8))->GetBulgeList()->GetAt(0), 0.5);
    EXPECT_EQ(Words(d.Object(12)), "textparm (0,0) 12 normal -1");
}

TEST(CommandOperationTrans, MarksAndFramesOfTheHostAreKeptAndRestoredAndAFrameDoesNotMove) {
    ViewDriver d;
    auto* mark = new CCenterPoint(Gdiplus::PointF(150, 150));
    auto* frame = new CCombRect;
    frame->SetPoint(CGePoint2d(10, 20), CGePoint2d(30, 40));
    frame->SetVectorId(L"A7");
    for (CDrawable* object : {static_cast<CDrawable*>(mark), static_cast<CDrawable*>(frame)}) {
        KX_ADD_MEMORY(object);
        d.Document().AddDrawAobject(object);
        d.Select(object);
    }
    const auto expectFrame = [](CDrawable* object) {
        auto* seen = DYNAMIC_DOWNCAST(CCombRect, object);
        ASSERT_NE(seen, nullptr);
        CGePoint2d a;
        CGePoint2d b;
        seen->GetPoint(a, b);
        EXPECT_TRUE(a == CGePoint2d(10, 20));
        EXPECT_TRUE(b == CGePoint2d(30, 40));
        EXPECT_EQ(Utf8(seen->GetVectorId()), "A7");
    };
    d.Start(L"translation");
    d.ClickAt(300, 30);
    d.MoveTo(310, 50);
    EXPECT_TRUE(mark->GetCenter() == CGePoint2d(160, 170));
    expectFrame(frame);
    frame->SetVectorId(L"changed");
    d.RightAt(1, 1);
    EXPECT_TRUE(mark->GetCenter() == CGePoint2d(150, 150));
    expectFrame(frame);
    d.Start(L"copy");
    d.ClickAt(300, 30);
    d.ClickAt(310, 50);
    ASSERT_EQ(d.Count(), 4);
    EXPECT_EQ(d.Object(0), mark);
    EXPECT_EQ(d.Object(1), frame);
    EXPECT_TRUE(mark->GetCenter() == CGePoint2d(160, 170));
    expectFrame(frame);
    auto* original = DYNAMIC_DOWNCAST(CCenterPoint, d.Object(2));
    ASSERT_NE(original, nullptr);
    EXPECT_TRUE(original->GetCenter() == CGePoint2d(150, 150));
    expectFrame(d.Object(3));
    for (INT_PTR i = 0; i < 4; ++i) {
        EXPECT_EQ(d.Object(i)->GetDrawState(), CDrawable::Normal) << i;
    }
}

TEST(CommandOperationTrans, AKindWithoutCreateObjectMovesAndNeitherItNorThoseAfterItGetASecondObject) {
    ViewDriver d;
    SelectedLine(d);
    auto* own = new TransHandMadeLine;
    auto* counted = new TransCountedLine;
    own->SetStartPoint(CGePoint2d(10, 200));
    own->SetEndPoint(CGePoint2d(20, 200));
    counted->SetStartPoint(CGePoint2d(200, 200));
    counted->SetEndPoint(CGePoint2d(250, 200));
    for (CDrawable* object : {static_cast<CDrawable*>(own), static_cast<CDrawable*>(counted)}) {
        KX_ADD_MEMORY(object);
        d.Document().AddDrawAobject(object);
        d.Select(object);
    }
    d.Start(L"copy");
    d.ClickAt(20, 20);
    d.ClickAt(50, 80);
    EXPECT_FALSE(d.IsRunning());
    EXPECT_EQ(d.AllWords(), "line (130,160)-(180,160) normal -1; line (40,260)-(50,260) normal -1; "
                            "line (230,260)-(280,260) normal -1; line (100,100)-(150,100) normal -1");
    EXPECT_EQ(d.Selected().GetSize(), 0);
    EXPECT_EQ(TransCountedLine::s_alive, 1) << "what was made and not used is freed";
}

TEST(CommandOperationTrans, RestoringRunsTheRulesOfLoading) {
    ViewDriver d;
    CPLine* pline = d.AddPolyline({{100, 100}, {150, 100}, {150, 150}});
    pline->SetSLPenColor(0, RGB(1, 2, 3));
    EXPECT_GT(d.TakeFresh().Count(RGB(1, 2, 3)), 0);
    auto* text = new CText;
    KX_ADD_MEMORY(text);
    text->SetTextHeight(50);
    text->SetTextWide(30);
    d.Document().AddDrawAobject(text);
    d.Select(pline);
    d.Select(text);
    d.Start(L"translation");
    d.ClickAt(20, 20);
    d.RightAt(20, 20);
    // Colours of segments are not in the stream; a box narrower than its font is repaired to three times the height.
    EXPECT_EQ(text->GetTextWide(), 150.0f);
    d.Document().RemoveAllSelected();
    CString name;
    CString msg;
    EXPECT_EQ(pline->GetSLineInfo(0, name, msg), 1);
    EXPECT_EQ(d.TakeFresh().Count(RGB(1, 2, 3)), 0);
}

TEST(CommandOperationTrans, ManyMovesLeaveThePictureOfTheLastOne) {
    for (LPCTSTR word : {L"translation", L"rotation", L"mirroring", L"copy"}) {
        ViewDriver many;
        ViewDriver one;
        for (ViewDriver* d : {&many, &one}) {
            d->AddLine(200, 200, 260, 240);
            d->Select(d->AddLine(100, 100, 150, 130));
            d->Select(d->AddPolyline({{120, 60}, {160, 60}, {160, 20}}));
            auto* circle = new CCircle(Gdiplus::PointF(60, 60), 20);
            KX_ADD_MEMORY(circle);
            d->Document().AddDrawAobject(circle);
            d->Select(circle);
            d->TakeFresh();
            d->Start(word);
            d->ClickAt(30, 180);
        }
        const double path[][2] = {{120, 80}, {202, 199}, {202, 60}, {20, 200}, {5, 5},     {260, 241},
                                  {300, 30}, {65, 175},  {65, 30},  {30, 30},  {390, 290}, {12, 140}};
        for (const auto& p : path) {
            many.MoveTo(p[0], p[1]);
        }
        many.MoveTo(133, 197);
        one.MoveTo(133, 197);
        EXPECT_EQ(many.Take().Difference(one.Take()), 0) << Utf8(word);
    }
}

TEST(CommandOperationTrans, ARepaintInTheMiddleShowsTheObjectsWhereTheyAreAndLeavesTheFlag) {
    ViewDriver d;
    SelectedLine(d);
    d.Start(L"translation");
    d.ClickAt(20, 20);
    d.MoveTo(20, 80);
    const Picture fresh = d.TakeFresh();
    EXPECT_EQ(fresh.At(97, 140), RGB(0, 0, 255)); // A grip's left edge, at the place of the last move.
    EXPECT_TRUE(IsPreviewDrawn(d));
    // So the next move inverts the wiped preview once more: an extra line appears where it was.
    d.MoveTo(20, 140);
    EXPECT_GT(d.DifferenceFromFresh(), 20);
}

TEST(CommandOperationTrans, ACommandStartedWhileTheQuestionIsOpenEndsThisOneUntouched) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.Start(L"translation");
    d.ClickAt(20, 20);
    DialogScript script({[&](HWND box) {
        d.Start(L"line");
        DialogScript::Answer(IDYES)(box);
    }});
    d.PressAt(30, 20);
    EXPECT_EQ(d.ToolName(), "COperationCreateLine");
    EXPECT_EQ(d.ClickCount(), 0);
    EXPECT_EQ(d.Count(), 1);
    EXPECT_EQ(Words(line), "line (110,100)-(160,100) selected -1");
}

TEST(CommandOperationTrans, AViewFreedWhileTheQuestionIsOpenIsNotTouchedAgain) {
    const int before = CKXMemoryManager::Instance()->GetCount();
    ParentWindow parent;
    auto* view = new CVectorView;
    view->GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
    ShowView(*view, parent);
    HWND window = view->m_hWnd;
    CDrawable* line = view->AddLine(CGePoint2d(100, 100), CGePoint2d(150, 100), Gdiplus::Color(255, 255, 255, 255), 1);
    view->GetDocument()->AddSelected(line);
    view->DoCommand(L"translation");
    auto* manager = static_cast<CCommandOperationManager*>(view->GetCommandOperationManager());
    CCommandOperation* tool = PeekAt<CCommandOperation>(*manager, RunningTool());
    ASSERT_NE(tool, nullptr);
    ::SendMessage(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 280));
    DialogScript script({[&](HWND box) {
        delete view;
        view = nullptr;
        DialogScript::Answer(IDYES)(box);
    }});
    ::SendMessage(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(50, 220));
    EXPECT_EQ(script.Seen(), 1u);
    EXPECT_EQ(view, nullptr);
    EXPECT_FALSE(::IsWindow(window));
    // A host that wants the running tool freed cancels it first.
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before + 1);
    KX_REMOVE_MEMORY(tool);
    delete tool;
    EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), before);
}

TEST(CommandOperationTrans, SnappedPointsDecideExactly) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.AddLine(300, 250, 350, 250);
    d.Start(L"translation");
    d.ClickAt(102, 103); // The start of the line itself.
    BoxAnswer boxes({IDNO});
    d.ClickAt(298, 247);
    EXPECT_EQ(Words(line), "line (300,250)-(350,250) selected -1");
}

TEST(CommandOperationTrans, ErasedObjectsStayWithTheRunningTool) {
    ViewDriver d;
    CLine* line = SelectedLine(d);
    d.Start(L"translation");
    d.ClickAt(20, 20);
    {
        BoxAnswer boxes({IDYES});
        d.Start(L"erase");
    }
    EXPECT_EQ(d.Count(), 0);
    EXPECT_TRUE(d.IsRunning());
    d.MoveTo(50, 20);
    EXPECT_EQ(Words(line), "line (130,100)-(180,100) selected -1");
    d.RightAt(1, 1);
    EXPECT_EQ(d.Count(), 0);
}

} // namespace
