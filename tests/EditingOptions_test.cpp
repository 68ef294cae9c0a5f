// The editing options: each switch off, which is the classic behaviour, and on. Layer 16: tests.

#include "CommandOperationTrans.h"
#include "MemoryInfo.h"
#include "PLine.h"
#include "Text.h"
#include "VectorLabel.h"
#include "support/BoxAnswer.h"
#include "support/DrawStage.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

namespace {

constexpr COLORREF kWhite = 0xFFFFFF;

// A view with one of the switches on or off.
struct Optioned : ViewDriver {
    Optioned(bool CEditingOptions::*field, bool on) {
        CEditingOptions options;
        options.*field = on;
        Document().SetEditingOptions(options);
    }
};

TEST(EditingOptions, AreAllOffInANewDocumentAndAllOnWhenComfortable) {
    using Switch = bool CEditingOptions::*;
    const Switch switches[] = {&CEditingOptions::strokesOnce,      &CEditingOptions::noSelfSnap,
                               &CEditingOptions::previewsReturn,   &CEditingOptions::repaintsAtEnd,
                               &CEditingOptions::modifiedByChange, &CEditingOptions::textsAsShown,
                               &CEditingOptions::cleanRectangle,   &CEditingOptions::transformsEndEarly};
    CGraphicDocument document;
    const CEditingOptions comfortable = CEditingOptions::Comfortable();
    for (const Switch field : switches) {
        EXPECT_FALSE(document.GetEditingOptions().*field);
        EXPECT_TRUE(comfortable.*field);
    }
    EXPECT_EQ(document.GetEditingOptions().pixelScale, 1.0f);
    EXPECT_EQ(document.GetEditingOptions().figureHeight, 100.0f);
}

// ---- strokesOnce ---------------------------------------------------------------------------------------------------

TEST(EditingOptions, ADraggedStraightSegmentIsStrokedBackOnlyWithoutTheSwitch) {
    for (const bool on : {false, true}) {
        DrawStage stage;
        CEditingOptions options;
        options.strokesOnce = on;
        stage.graphic.GetDocument()->SetEditingOptions(options);
        CPLine line;
        line.AddPoint(CGePoint2d(10, 20));
        line.AddPoint(CGePoint2d(60, 20));
        const auto lines = [&](CDrawable::DrawState state) {
            line.SetDrawState(state);
            int count = 0;
            for (const std::string& call : stage.Draw(line)) {
                count += call.compare(0, 7, "LineTo(") == 0 ? 1 : 0;
            }
            return count;
        };
        EXPECT_EQ(lines(CDrawable::Dragging), on ? 1 : 2);
        EXPECT_EQ(lines(CDrawable::Normal), 2);
        EXPECT_EQ(lines(CDrawable::Selected), 2);
    }
}

TEST(EditingOptions, AMovedPolylineIsSeenWithTheSwitchAndShowsOnlyItsEndsWithoutIt) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::strokesOnce, on);
        d.Select(d.AddPolyline({{20, 100}, {120, 100}, {120, 150}}));
        d.TakeFresh();
        d.Start(L"translation");
        d.ClickAt(20, 20);
        d.MoveTo(100, 85); // By (80, 65): the upper side of the moved one runs from (100, 165) to (200, 165).
        const Picture seen = d.Take();
        EXPECT_EQ(seen.At(130, 135), on ? kWhite : 0u);
        EXPECT_EQ(seen.At(160, 135), on ? kWhite : 0u);
        d.MoveTo(150, 200);
        EXPECT_EQ(d.Take().At(130, 135), 0u) << "a second drawing erases it";
        d.RightAt(150, 200);
    }
}

// ---- noSelfSnap ----------------------------------------------------------------------------------------------------

TEST(EditingOptions, AMovedObjectOffersItsOwnSnapPointsOnlyWithoutTheSwitch) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::noSelfSnap, on);
        d.Select(d.AddLine(100, 100, 200, 100));
        d.AddLine(300, 250, 350, 250);
        d.Start(L"translation");
        d.ClickAt(20, 20);
        d.MoveTo(70, 70); // The end of the line is at (150, 150) now.
        d.MoveTo(153, 152);
        EXPECT_EQ(d.IsMarkDrawn(), !on);
        d.MoveTo(303, 252); // Another object's end is offered in either case.
        EXPECT_TRUE(d.IsMarkDrawn());
        EXPECT_TRUE(d.Mark() == CGePoint2d(300, 250));
        d.RightAt(300, 250);
    }
}

TEST(EditingOptions, BeforeTheBasePointTheObjectsThemselvesAreTargetsInEitherCase) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::noSelfSnap, on);
        d.Select(d.AddLine(100, 100, 200, 100));
        d.Start(L"translation");
        d.MoveTo(103, 98);
        EXPECT_TRUE(d.IsMarkDrawn());
    }
}

TEST(EditingOptions, ACircleAnArcAndALabelBeingDrawnSnapToThemselvesOnlyWithoutTheSwitch) {
    for (const bool on : {false, true}) {
        {
            Optioned d(&CEditingOptions::noSelfSnap, on);
            d.Start(L"circle");
            d.ClickAt(100, 100);
            d.MoveTo(160, 100); // The right end of the circle is (160, 100).
            d.MoveTo(163, 102);
            EXPECT_EQ(d.IsMarkDrawn(), !on) << "circle";
        }
        {
            Optioned d(&CEditingOptions::noSelfSnap, on);
            d.Start(L"arc");
            d.ClickAt(50, 100);
            d.ClickAt(100, 150);
            d.MoveTo(150, 100); // The end of the arc.
            d.MoveTo(152, 98);
            EXPECT_EQ(d.IsMarkDrawn(), !on) << "arc";
        }
        {
            Optioned d(&CEditingOptions::noSelfSnap, on);
            d.Start(L"DrawLabel");
            d.ClickAt(50, 100);
            d.ClickAt(150, 100);
            d.MoveTo(148, 140); // The right end of the dimension line is at (150, 140) now.
            d.MoveTo(148, 143);
            EXPECT_EQ(d.IsMarkDrawn(), !on) << "label";
        }
    }
}

// ---- previewsReturn ------------------------------------------------------------------------------------------------

TEST(EditingOptions, ABandIsWipedByARepaintWithoutTheSwitchAndComesBackWithIt) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::previewsReturn, on);
        d.AddLine(10, 10, 390, 10);
        d.TakeFresh();
        d.Start(L"line");
        d.ClickAt(100, 100);
        d.MoveTo(200, 150);
        const Picture before = d.Take();
        EXPECT_EQ(before.At(150, 175), kWhite); // The middle of the band.
        const Picture after = d.TakeFresh();
        EXPECT_EQ(after.At(150, 175), on ? kWhite : 0u);
        EXPECT_EQ(after.Difference(before) == 0, on);
        d.MoveTo(300, 250);
        EXPECT_EQ(d.Take().At(150, 175), 0u);
    }
}

TEST(EditingOptions, ARepaintOfAPartLeavesTheWholeBandWithTheSwitchAndPiecesWithoutIt) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::previewsReturn, on);
        d.AddLine(10, 10, 390, 10);
        d.TakeFresh();
        d.Start(L"line");
        d.ClickAt(100, 100);
        d.MoveTo(200, 150);
        const Picture before = d.Take();
        const CRect part(120, 100, 160, 200);
        d.view.InvalidateRect(&part, TRUE);
        d.Update();
        const Picture after = d.Take();
        EXPECT_EQ(after.Difference(before) == 0, on);
        d.MoveTo(300, 250);
        d.MoveTo(200, 150);
        EXPECT_EQ(d.Take().Difference(before) == 0, on) << "without the switch the rest of the old band stays";
    }
}

// The commands with a preview of an object, after a wheel turn: what is seen is what a view shows that was never
// repainted under the preview.
TEST(EditingOptions, EveryPreviewComesBackAfterAWheelTurn) {
    struct Case {
        LPCTSTR word;
        std::vector<CGePoint2d> clicks;
    };
    const Case cases[] = {{L"line", {{100, 100}}},
                          {L"rect", {{100, 100}}},
                          {L"circle", {{100, 100}}},
                          {L"arc", {{100, 100}, {150, 190}}},
                          {L"DrawLabel", {{100, 100}, {200, 100}}},
                          {L"translation", {{120, 80}}},
                          {L"rotation", {{120, 80}}},
                          {L"mirroring", {{120, 80}}},
                          {L"copy", {{120, 80}}}};
    for (const Case& c : cases) {
        Optioned turned(&CEditingOptions::previewsReturn, true);
        Optioned straight(&CEditingOptions::previewsReturn, true);
        ViewDriver bare; // Without a command.
        for (ViewDriver* d : {static_cast<ViewDriver*>(&turned), static_cast<ViewDriver*>(&straight), &bare}) {
            d->AddLine(10, 10, 390, 290);
            d->Select(d->AddLine(60, 30, 90, 60));
        }
        for (Optioned* d : {&turned, &straight}) {
            CEditingOptions options = d->Document().GetEditingOptions();
            options.noSelfSnap = true;
            d->Document().SetEditingOptions(options);
            d->TakeFresh();
            d->Start(c.word);
            for (const CGePoint2d& click : c.clicks) {
                d->ClickAt(click.x, click.y);
            }
        }
        turned.MoveTo(210, 180);
        turned.Wheel(120, 210, 180);
        turned.Update();
        // The mapping that the wheel has left, without a preview that had to return.
        straight.Tran() = turned.Tran();
        straight.TakeFresh();
        bare.Tran() = turned.Tran();
        bare.TakeFresh();
        straight.Move(CPoint(210, 120));
        EXPECT_EQ(turned.Take().Difference(straight.Take()), 0) << Utf8(c.word);
        EXPECT_GT(turned.Take().Difference(bare.Take()), 40) << Utf8(c.word) << ": something is seen";
        // The next move takes off what has come back.
        for (Optioned* d : {&turned, &straight}) {
            d->Move(CPoint(330, 60));
        }
        EXPECT_EQ(turned.Take().Difference(straight.Take()), 0) << Utf8(c.word);
    }
}

TEST(EditingOptions, AGripsPreviewAndItsMarkerComeBackAfterAPan) {
    Optioned d(&CEditingOptions::previewsReturn, true);
    d.AddLine(10, 10, 390, 10);
    CLine* line = d.AddLine(100, 100, 200, 100);
    d.AddLine(250, 200, 300, 200);
    d.Select(line);
    d.TakeFresh();
    d.ClickAt(200, 100);
    ASSERT_TRUE(d.IsRunning());
    d.MoveTo(252, 201); // On the other line's end.
    ASSERT_TRUE(d.IsMarkDrawn());
    const Picture before = d.Take();
    d.view.Invalidate();
    d.Update();
    EXPECT_EQ(d.Take().Difference(before), 0);
    d.MiddleDrag(252, 201, 292, 201);
    d.Update();
    EXPECT_EQ(d.Tran().GetOriginX(), -40.0);
    EXPECT_TRUE(d.IsBandDrawn());
    d.RightAt(252, 201);
    d.Update();
    EXPECT_EQ(d.DifferenceFromFresh(), 0);
}

TEST(EditingOptions, ThePaintShowsMovedObjectsAtTheirOldPlaceSoThatNoTraceStays) {
    Optioned d(&CEditingOptions::previewsReturn, true);
    d.AddLine(10, 10, 390, 10);
    d.Select(d.AddLine(60, 30, 90, 60));
    d.TakeFresh();
    d.Start(L"translation");
    d.ClickAt(50, 50);
    d.MoveTo(200, 150);
    const Picture before = d.Take();
    d.TakeFresh();
    EXPECT_EQ(d.Take().Difference(before), 0);
    EXPECT_EQ(Words(d.Object(1)), "line (210,130)-(240,160) selected -1");
    d.RightAt(200, 150);
    EXPECT_EQ(Words(d.Object(1)), "line (60,30)-(90,60) selected -1");
}

TEST(EditingOptions, APaintDuringTheQuestionLeavesTheObjectsWhereTheClickHasPutThem) {
    Optioned d(&CEditingOptions::previewsReturn, true);
    for (const bool moved : {true, false}) {
        CDrawable* line = d.AddLine(60, 30, 90, 60);
        d.Select(line);
        if (moved) {
            d.MoveTo(10, 250); // And nothing up to the click.
        }
        const DialogScript dialogs({}, [&](HWND box) {
            ::InvalidateRect(d.view.m_hWnd, nullptr, TRUE);
            d.Update();
            DialogScript::Answer(IDNO)(box);
        });
        d.view.DoCommand(L"translation");
        d.ClickAt(50, 50);
        d.ClickAt(250, 150);
        EXPECT_EQ(1u, dialogs.Seen());
        EXPECT_EQ(Words(line), "line (260,130)-(290,160) selected -1");
        d.Document().RemoveAllSelected();
    }
}

TEST(EditingOptions, APreviewStaysOnTheWindowWhenTheViewPaintsIntoAContextOfTheHost) {
    Optioned d(&CEditingOptions::previewsReturn, true);
    d.Select(d.AddLine(60, 30, 90, 60));
    d.TakeFresh();
    d.Start(L"translation");
    d.ClickAt(50, 50);
    d.MoveTo(200, 150);
    const Picture before = d.Take();
    CClientDC screen(nullptr);
    CDC memory;
    memory.CreateCompatibleDC(&screen);
    EXPECT_EQ(d.view.VectorPaint(&memory), 1);
    EXPECT_EQ(d.Take().Difference(before), 0);
    EXPECT_EQ(Words(d.Object(0)), "line (210,130)-(240,160) selected -1");
}

namespace {

class CFailingPreview : public CLine {
public:
    int m_Inversions = 100; // Further ones that succeed.
    void Draw(CDC* pDC, CDrawGeometry* pGeom) override {
        if (m_DrawState == Dragging && --m_Inversions < 0) {
            throw 5;
        }
        CLine::Draw(pDC, pGeom);
    }
};

} // namespace

TEST(EditingOptions, APreviewThatFailsDoesNotBreakThePaint) {
    Optioned d(&CEditingOptions::previewsReturn, true);
    auto* line = new CFailingPreview;
    KX_ADD_MEMORY(line);
    line->SetStartPoint(CGePoint2d(60, 30));
    line->SetEndPoint(CGePoint2d(90, 60));
    d.Document().AddDrawAobject(line);
    d.Select(line);
    d.Start(L"translation");
    d.ClickAt(50, 50);
    d.MoveTo(200, 150);
    line->m_Inversions = 1; // It is taken off before the paint, and cannot be drawn after it.
    {
        const BoxAnswer boxes;
        EXPECT_NO_THROW(d.TakeFresh());
        EXPECT_EQ(boxes.Texts(), std::vector<std::string>());
    }
    EXPECT_LT(line->m_Inversions, 0);
    line->m_Inversions = 100;
    d.MoveTo(100, 100);
    EXPECT_TRUE(d.IsRunning());
    d.RightAt(100, 100);
    EXPECT_EQ(Words(line), "line (60,30)-(90,60) selected -1");
}

TEST(EditingOptions, APreviewThatReturnsLeavesTheFocusAndTheTypedTextAlone) {
    Optioned d(&CEditingOptions::previewsReturn, true);
    d.AddLine(10, 10, 390, 10);
    d.Start(L"pline");
    d.ClickAt(100, 100);
    d.MoveTo(200, 100);
    EXPECT_EQ(d.EditText(), "100");
    d.TypeInEdit(L"77");
    ::SetFocus(d.view.m_hWnd);
    d.TakeFresh();
    EXPECT_EQ(d.EditText(), "77");
    EXPECT_EQ(::GetFocus(), d.view.m_hWnd);
    EXPECT_TRUE(d.IsBandDrawn());
}

TEST(EditingOptions, TheWheelsPointIsInClientPixelsOnlyWithTheSwitch) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::previewsReturn, on);
        d.AddLine(0, 0, 400, 300);
        d.Start(L"line");
        d.ClickAt(100, 100);
        CPoint screen = d.PixelOf(200, 150);
        d.view.ClientToScreen(&screen);
        ::SetCursorPos(screen.x, screen.y);
        d.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), screen);
        EXPECT_EQ(d.BandEnd(), on ? CPoint(200, 150) : screen);
    }
}

// ---- repaintsAtEnd -------------------------------------------------------------------------------------------------

TEST(EditingOptions, WhatABrokenOffCommandLeavesOnTheWindowIsTakenOffWithTheSwitch) {
    for (const bool on : {false, true}) {
        for (LPCTSTR word : {L"rect", L"circle", L"arc", L"line"}) {
            Optioned d(&CEditingOptions::repaintsAtEnd, on);
            d.AddLine(300, 200, 350, 250);
            d.TakeFresh();
            d.Start(word);
            d.ClickAt(20, 30);
            d.MoveTo(302, 198); // Over a snap point, so that there is a marker.
            d.MoveTo(301, 60);  // In its column, so that there is an assistant line.
            d.MoveTo(302, 198);
            d.Update();
            d.RightAt(302, 198);
            d.Update();
            const Picture seen = d.Take();
            const bool clean = seen.Difference(d.TakeFresh()) == 0;
            EXPECT_EQ(clean, on) << Utf8(word);
        }
    }
}

TEST(EditingOptions, ACommandThatTheHostCancelsAsksForARepaintOnlyWithTheSwitch) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::repaintsAtEnd, on);
        d.Start(L"line");
        d.ClickAt(20, 30);
        d.MoveTo(120, 80);
        ::ValidateRect(d.view.m_hWnd, nullptr);
        d.Manager().Cancel();
        EXPECT_EQ(::GetUpdateRect(d.view.m_hWnd, nullptr, FALSE) != 0, on);
    }
}

// ---- modifiedByChange ----------------------------------------------------------------------------------------------

// Whether the document is marked after the steps of `act`, from an unmarked one.
template <class Act>
bool IsMarkedAfter(bool on, Act act) {
    Optioned d(&CEditingOptions::modifiedByChange, on);
    d.Select(d.AddLine(100, 100, 150, 100));
    d.AddPolyline({{20, 200}, {60, 200}, {60, 240}, {20, 240}, {10, 220}});
    d.Document().SetModifiedFlag(FALSE);
    act(d);
    return d.Document().IsModified() != 0;
}

TEST(EditingOptions, AWordMarksTheDocumentOnlyWithoutTheSwitch) {
    for (LPCTSTR word : {L"line", L"viewmove", L"no such word", L"PLine_AddPoint", L"offset"}) {
        EXPECT_TRUE(IsMarkedAfter(false, [&](ViewDriver& d) { d.Start(word); })) << Utf8(word);
        EXPECT_FALSE(IsMarkedAfter(true, [&](ViewDriver& d) { d.Start(word); })) << Utf8(word);
    }
}

TEST(EditingOptions, WithTheSwitchEveryCommandMarksTheDocumentByItsChange) {
    struct Case {
        LPCTSTR word;
        std::vector<CGePoint2d> clicks;
    };
    const Case cases[] = {{L"line", {{10, 10}, {90, 50}}},
                          {L"rect", {{10, 10}, {90, 50}}},
                          {L"circle", {{10, 10}, {90, 50}}},
                          {L"arc", {{10, 10}, {50, 40}, {90, 10}}},
                          {L"DrawLabel", {{10, 10}, {90, 10}, {50, 40}}},
                          {L"copy", {{10, 10}, {90, 50}}},
                          {L"translation", {{10, 10}, {90, 50}}},
                          {L"PLine_AddPoint", {{40, 200}}},
                          {L"PLine_RemovePoint", {{20, 200}}},
                          {L"offset", {{40, 200}, {40, 180}}}};
    for (const Case& c : cases) {
        const bool marked = IsMarkedAfter(true, [&](ViewDriver& d) {
            BoxAnswer boxes({IDNO});
            d.Start(c.word);
            for (const CGePoint2d& click : c.clicks) {
                EXPECT_FALSE(d.Document().IsModified()) << Utf8(c.word);
                d.MoveTo(click.x, click.y);
                d.ClickAt(click.x, click.y);
            }
        });
        EXPECT_TRUE(marked) << Utf8(c.word);
    }
}

TEST(EditingOptions, APolylineMarksTheDocumentWhenItsRightButtonKeepsIt) {
    EXPECT_TRUE(IsMarkedAfter(true, [](ViewDriver& d) {
        d.Start(L"pline");
        d.ClickAt(10, 10);
        d.ClickAt(50, 60);
        EXPECT_FALSE(d.Document().IsModified());
        d.RightAt(90, 90);
        EXPECT_EQ(d.Count(), 3);
    }));
}

TEST(EditingOptions, AGripMarksTheDocumentOnlyWhenItMovesSomething) {
    const auto drag = [](double x, double y) {
        return [=](ViewDriver& d) {
            d.ClickAt(150, 100); // The end of the selected line.
            d.MoveTo(x, y);
            d.ClickAt(x, y);
            EXPECT_FALSE(d.IsRunning());
        };
    };
    EXPECT_TRUE(IsMarkedAfter(true, drag(180, 130)));
    EXPECT_FALSE(IsMarkedAfter(true, drag(150, 100)));
    EXPECT_FALSE(IsMarkedAfter(false, drag(180, 130))) << "no word was given";
}

TEST(EditingOptions, EraseMarksTheDocumentOnlyWhenItErases) {
    const auto erase = [](int answer, bool selected) {
        return IsMarkedAfter(true, [&](ViewDriver& d) {
            if (!selected) {
                d.Document().RemoveAllSelected();
            }
            BoxAnswer boxes({answer});
            d.Start(L"erase");
        });
    };
    EXPECT_TRUE(erase(IDYES, true));
    EXPECT_FALSE(erase(IDNO, true));
    EXPECT_FALSE(erase(IDYES, false));
}

TEST(EditingOptions, ATransformThatChangesNothingLeavesTheMark) {
    for (const bool on : {false, true}) {
        EXPECT_EQ(IsMarkedAfter(on,
                                [](ViewDriver& d) {
                                    BoxAnswer boxes({IDNO});
                                    d.Start(L"translation");
                                    d.ClickAt(20, 20);
                                    d.MoveTo(60, 60);
                                    d.ClickAt(20, 20);
                                }),
                  !on);
    }
}

TEST(EditingOptions, ACopyOntoItsOriginalMarksTheDocument) {
    for (LPCTSTR word : {L"copy", L"translation"}) {
        EXPECT_TRUE(IsMarkedAfter(true, [=](ViewDriver& d) {
            BoxAnswer boxes({IDYES}); // The originals are kept.
            const INT_PTR before = d.Count();
            d.Start(word);
            d.ClickAt(20, 20);
            d.ClickAt(20, 20);
            EXPECT_GT(d.Count(), before);
        })) << Utf8(word);
    }
}

TEST(EditingOptions, ATransformOfNothingLeavesTheMark) {
    EXPECT_FALSE(IsMarkedAfter(true, [](ViewDriver& d) {
        d.Document().RemoveAllSelected();
        d.Start(L"copy");
        d.ClickAt(20, 20);
        d.ClickAt(60, 60);
        EXPECT_FALSE(d.IsRunning());
    }));
}

TEST(EditingOptions, ATransformBrokenOffByTheHostPutsTheObjectsBackOnlyWithTheSwitch) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::modifiedByChange, on);
        d.Select(d.AddLine(100, 100, 150, 100));
        d.Document().SetModifiedFlag(FALSE);
        d.Start(L"translation");
        d.ClickAt(20, 20);
        d.MoveTo(50, 80);
        d.Manager().Cancel();
        EXPECT_EQ(d.AllWords(), on ? "line (100,100)-(150,100) selected -1" : "line (130,160)-(180,160) selected -1");
        EXPECT_EQ(d.Document().IsModified() != 0, !on);
    }
}

TEST(EditingOptions, ATransformThatEndsInNothingLeavesSegmentColoursAndNarrowTextsOnlyWithTheSwitch) {
    for (const bool on : {false, true}) {
        for (const bool byHost : {false, true}) {
            Optioned d(&CEditingOptions::modifiedByChange, on);
            CPLine* polyline = d.AddPolyline({{10, 10}, {80, 10}, {80, 60}});
            polyline->SetSLPenColor(0, RGB(1, 2, 3));
            d.view.AddText(CGePoint2d(100, 100), L"R5", 0, Gdiplus::Color(255, 1, 2, 3), 0);
            auto* text = dynamic_cast<CText*>(d.Object(1));
            ASSERT_NE(text, nullptr);
            text->SetTextHeight(50.0f);
            text->SetTextWide(20.0f); // Reading makes it three times the height.
            d.Select(polyline);
            d.Select(text);
            d.Start(L"translation");
            d.ClickAt(20, 20);
            d.MoveTo(50, 80);
            if (byHost) {
                d.Manager().Cancel();
            } else {
                d.Send(WM_RBUTTONDOWN, MK_RBUTTON, CPoint(50, 50));
            }
            EXPECT_FALSE(d.IsRunning());
            EXPECT_EQ(text->GetTextWide(), on ? 20.0f : 150.0f);
            EXPECT_EQ(PeekAt(*polyline, SegmentColorFlags())[0], on ? 1u : 0u);
        }
    }
}

TEST(EditingOptions, APolylineBrokenOffByTheHostIsTakenBackWithTheSwitchAndKeptByAnotherCommand) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::modifiedByChange, on);
        const int before = CKXMemoryManager::Instance()->GetCount();
        d.Start(L"pline");
        d.ClickAt(10, 10);
        d.ClickAt(50, 60);
        d.Manager().Cancel();
        EXPECT_EQ(d.Count(), on ? 0 : 1);
        EXPECT_EQ(d.Document().GetCurrentObject(), nullptr);
        EXPECT_EQ(CKXMemoryManager::Instance()->GetCount(), on ? before : before + 1);

        d.Document().SetModifiedFlag(FALSE);
        d.Start(L"pline");
        d.ClickAt(110, 10);
        d.ClickAt(150, 60);
        d.Start(L"line");
        EXPECT_EQ(d.Count(), on ? 1 : 2);
        EXPECT_TRUE(d.Document().IsModified());
    }
}

// ---- textsAsShown --------------------------------------------------------------------------------------------------

TEST(EditingOptions, ATextIsHitOverItsWholeWidthOnlyWithTheSwitch) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::textsAsShown, on);
        CDrawable* text = d.view.AddText(CGePoint2d(50, 200), L"MMMMMMMMMMMM", 0.0, Gdiplus::Color(255, 255, 255), 1);
        d.TakeFresh();
        // Twenty units wide as stored; twelve wide letters of a height of 20 are far wider.
        EXPECT_EQ(text->HitTest(CGePoint2d(60, 195)), 0.0f);
        EXPECT_EQ(text->HitTest(CGePoint2d(130, 195)) == 0.0f, on);
        EXPECT_GT(text->HitTest(CGePoint2d(390, 195)), 4.0f);
    }
}

TEST(EditingOptions, TheHitBoxTurnsWithTheTextOnlyWithTheSwitch) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::textsAsShown, on);
        CDrawable* text = d.view.AddText(CGePoint2d(50, 50), L"MMMMMMMMMMMM", 90.0, Gdiplus::Color(255, 255, 255), 1);
        d.TakeFresh();
        // Turned to run upwards, its top to the left: the middle of the letters is right of the insertion point.
        EXPECT_EQ(text->HitTest(CGePoint2d(56, 120)) == 0.0f, on);
        EXPECT_EQ(text->HitTest(CGePoint2d(130, 45)) == 0.0f, false);
    }
}

// A dimension whose figure is 20 units high, with its left extension line and its right one.
CKXVectorLabel* AddFigure(Optioned& d, CGePoint2d a, CGePoint2d b, CGePoint2d c, CGePoint2d e) {
    CEditingOptions options = d.Document().GetEditingOptions();
    options.figureHeight = 20.0f;
    d.Document().SetEditingOptions(options);
    auto* label = new CKXVectorLabel;
    KX_ADD_MEMORY(label);
    label->SetTextShow(1);
    label->SetLeftLabel(a, b);
    label->SetRightLabel(c, e);
    d.Document().AddDrawAobject(label);
    return label;
}

TEST(EditingOptions, AFigureHasTheHostsHeightAndCountsInTheExtentOnlyWithTheSwitch) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::textsAsShown, on);
        CKXVectorLabel* label = AddFigure(d, {100, 100}, {100, 140}, {200, 100}, {200, 140});
        CGePoint2d low;
        CGePoint2d high;
        ASSERT_EQ(d.Document().GetRect(low, high), 1);
        // The points and a tick of 3 units; the figure's top is its height above the dimension line: 140 + 20.
        EXPECT_NEAR(high.y, on ? 160.0 : 143.0, 1e-5);
        EXPECT_DOUBLE_EQ(low.y, 97.0);
        EXPECT_DOUBLE_EQ(low.x, 97.0);
        label->SetTextShow(0);
        ASSERT_EQ(d.Document().GetRect(low, high), 1);
        EXPECT_DOUBLE_EQ(high.y, 143.0);
        label->SetTextShow(1);
        // The middle of the figure "100", which begins 1 / 2 * 40 units (8 with the host's height) left of the middle.
        d.TakeFresh();
        EXPECT_EQ(label->HitTest(CGePoint2d(150, 152)) == 0.0f, on);
        EXPECT_EQ(label->HitTest(CGePoint2d(120, 200)) == 0.0f, !on);
    }
}

TEST(EditingOptions, AFigureIsNeverUpsideDownOnlyWithTheSwitch) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::textsAsShown, on);
        // From right to left, as a mirrored dimension: one above its points at 100, one below them.
        for (const double y : {140.0, 60.0}) {
            CKXVectorLabel* label = AddFigure(d, {200, 100}, {200, y}, {100, 100}, {100, y});
            d.TakeFresh();
            // Each figure is between its line and 20 units beyond it.
            const double inside = y > 100.0 ? 150.0 : 50.0;
            EXPECT_EQ(label->HitTest(CGePoint2d(150, inside)) == 0.0f, on) << y;
            if (on) {
                CGePoint2d low;
                CGePoint2d high;
                ASSERT_EQ(d.Document().GetRect(low, high), 1);
                EXPECT_NEAR(high.y, 160.0, 1e-5);
                EXPECT_NEAR(low.y, y > 100.0 ? 97.0 : 40.0, 1e-5);
            }
        }
    }
}

TEST(EditingOptions, AFigureOnAVerticalLineIsReadUpwardsBeyondTheLineOnlyWithTheSwitch) {
    for (const bool on : {false, true}) {
        for (const double x : {140.0, 60.0}) { // From top to bottom, on the right and on the left of the points.
            Optioned d(&CEditingOptions::textsAsShown, on);
            CKXVectorLabel* label = AddFigure(d, {100, 200}, {x, 200}, {100, 100}, {x, 100});
            d.TakeFresh();
            EXPECT_NEAR(PeekAt(*label->GetLabelText(), TextAngle()), on ? 90.0 : 270.0, 1e-4) << x;
            // Between the line and 20 units beyond it, and not on its other side.
            EXPECT_TRUE(!on || label->HitTest(CGePoint2d(x > 100.0 ? 150.0 : 50.0, 150)) == 0.0f) << x;
            EXPECT_TRUE(!on || label->HitTest(CGePoint2d(x > 100.0 ? 130.0 : 70.0, 150)) > 0.0f) << x;
        }
    }
}

// ---- cleanRectangle ------------------------------------------------------------------------------------------------

TEST(EditingOptions, TheCornersOfAWideRectanglesPreviewAreInvertedOnceOnlyWithTheSwitch) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::cleanRectangle, on);
        d.Tran().SetScale(0.2f); // The layer's width of one unit is five pixels.
        d.TakeFresh();
        d.Start(L"rect");
        d.ClickAt(20, 20); // Pixel (100, 200).
        d.MoveTo(40, 40);  // Pixel (200, 100).
        const Picture seen = d.Take();
        EXPECT_EQ(seen.At(150, 200), kWhite);
        EXPECT_EQ(seen.At(200, 150), kWhite);
        EXPECT_EQ(seen.At(200, 200) == kWhite, on) << "the lower right corner";
        EXPECT_EQ(seen.At(100, 100) == kWhite, on) << "the upper left corner";
        d.MoveTo(60, 50);
        EXPECT_EQ(d.Take().At(150, 100), 0u);
    }
}

TEST(EditingOptions, TheFinishedSidesOfARectangleAreOrdinaryLinesOnlyWithTheSwitch) {
    for (const bool on : {false, true}) {
        Optioned d(&CEditingOptions::cleanRectangle, on);
        d.Start(L"rect");
        d.ClickAt(20, 30);
        d.ClickAt(120, 80);
        ASSERT_EQ(d.Count(), 4);
        for (INT_PTR i = 0; i < 4; ++i) {
            EXPECT_EQ(d.Object(i)->GetDrawState(), on ? CDrawable::Normal : CDrawable::Dragging);
        }
    }
}

// ---- transformsEndEarly --------------------------------------------------------------------------------------------

TEST(EditingOptions, TheRightButtonBeforeTheBasePointEndsATransformWithTheSwitchAndRaisesWithoutIt) {
    for (LPCTSTR word : {L"translation", L"rotation", L"mirroring", L"copy"}) {
        for (const bool on : {false, true}) {
            Optioned d(&CEditingOptions::transformsEndEarly, on);
            d.Select(d.AddLine(100, 100, 150, 100));
            d.Start(word);
            BoxAnswer boxes({IDOK});
            d.RightAt(20, 20);
            EXPECT_EQ(d.IsRunning(), !on) << Utf8(word);
            EXPECT_EQ(boxes.Texts().size(), on ? 0u : 1u) << Utf8(word);
            EXPECT_EQ(d.AllWords(), "line (100,100)-(150,100) selected -1") << Utf8(word);
        }
    }
}

// ---- pixelScale ----------------------------------------------------------------------------------------------------

TEST(EditingOptions, AperturesMarkersAndGripsFollowThePixelScale) {
    for (const float scale : {1.0f, 1.5f, 2.0f}) {
        ViewDriver d;
        CEditingOptions options;
        options.pixelScale = scale;
        d.Document().SetEditingOptions(options);
        CLine* line = d.AddLine(100, 100, 200, 100);
        d.TakeFresh();
        // The snap's seven pixels: 7, 10 and 14.
        d.Start(L"line");
        d.MoveTo(100, 107);
        EXPECT_TRUE(d.IsMarkDrawn());
        d.MoveTo(100, 110);
        EXPECT_EQ(d.IsMarkDrawn(), scale >= 1.5f);
        d.MoveTo(100, 114);
        EXPECT_EQ(d.IsMarkDrawn(), scale == 2.0f);
        d.MoveTo(100, 100);
        // The marker's square: 7, 10 and 14 pixels to the left of the point.
        const int half = scale == 1.0f ? 7 : scale == 1.5f ? 10 : 14;
        const Picture marked = d.Take();
        EXPECT_EQ(marked.At(100 - half, 197), kWhite);
        EXPECT_EQ(marked.At(100 - half - 2, 197), 0u);
        d.Manager().Cancel();
        d.TakeFresh();
        // The pick's four pixels: 4, 6 and 8.
        d.ClickAt(150, 108);
        EXPECT_EQ(d.Selected().GetSize(), scale == 2.0f ? 1 : 0);
        d.Document().RemoveAllSelected();
        d.ClickAt(150, 104);
        EXPECT_EQ(d.Selected().GetSize(), 1);
        // The grip's square: 3, 4 and 6 pixels to the left.
        const int grip = scale == 1.0f ? 3 : scale == 1.5f ? 4 : 6;
        const Picture gripped = d.TakeFresh();
        EXPECT_NE(gripped.At(100 - grip, 201), 0u);
        EXPECT_EQ(gripped.At(100 - grip - 1, 201), 0u);
        EXPECT_EQ(line->GetDrawState(), CDrawable::Selected);
    }
}

} // namespace
