// CPLine on a device context: every call, its arguments and its order, in each state; and pixels where calls don't
// tell.

#include "Line.h"
#include "PLine.h"

#include "support/BoxAnswer.h"
#include "support/CurveTools.h"
#include "support/DrawStage.h"
#include "support/FailingStrokeDC.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr DWORD kInk = 0x302010;

class CPLineInk : public CPLine {
public:
    CPLineInk() { SetPenColor(kInk); }
};

// One straight segment (10, 10)-(30, 10).
void FillStraight(CPLine& line) {
    line.AddPoint(CGePoint2d(10, 10));
    line.AddPoint(CGePoint2d(30, 10));
}

Calls Joined(std::initializer_list<Calls> parts) {
    Calls result;
    for (const Calls& part : parts) {
        result.insert(result.end(), part.begin(), part.end());
    }
    return result;
}

// What surrounds each segment's stroke.
Calls Segment(const std::string& pen, const Calls& stroke, bool dragging = false) {
    Calls result = {"SetBkMode(1)", "GetROP2()"};
    if (dragging) {
        result.push_back("SetROP2(6)");
    }
    result.push_back("SelectObject(pen " + pen + ")");
    result.insert(result.end(), stroke.begin(), stroke.end());
    result.push_back("SelectObject(pen default)");
    result.push_back("SetBkMode(2)");
    result.push_back("SetROP2(13)");
    return result;
}

const Calls kStraightStroke = {"MoveTo(10,90)", "LineTo(30,90)", "MoveTo(30,90)", "LineTo(10,90)"};

struct Stage : DrawStage {
    Stage() { dc.SetRecordQueries(true); }
};

} // namespace

// ---- Segments ------------------------------------------------------------------------------------------------------

TEST(PLineDraw, AStraightSegmentIsStrokedThereAndBack) {
    Stage stage;
    CPLineInk line;
    FillStraight(line);
    EXPECT_TRUE(SameCalls(Segment("style=0 width=1 color=0x00302010", kStraightStroke), stage.Draw(line)));
}

TEST(PLineDraw, AStraightLineLeavesOutItsLastPixelAndAPolylineInksBoth) {
    Stage stage;
    CLine line;
    line.SetPenColor(kInk);
    line.SetStartPoint(CGePoint2d(10, 10));
    line.SetEndPoint(CGePoint2d(30, 10));
    stage.Draw(line);
    EXPECT_EQ(kInk, stage.dc.Pixel(10, 90));
    EXPECT_EQ(kInk, stage.dc.Pixel(29, 90));
    EXPECT_NE(kInk, stage.dc.Pixel(30, 90));
    CPLineInk pline;
    FillStraight(pline);
    stage.Draw(pline);
    EXPECT_EQ(kInk, stage.dc.Pixel(10, 90));
    EXPECT_EQ(kInk, stage.dc.Pixel(30, 90));
}

TEST(PLineDraw, ABulgeBetweenTheTwoLimitsIsDrawnAndBoundedStraightAndHitAsAnArc) {
    Stage stage;
    CPLineInk line;
    line.AddPoint(CGePoint2d(10, 10), 0.0009);
    line.AddPoint(CGePoint2d(30, 10));
    EXPECT_TRUE(SameCalls(Segment("style=0 width=1 color=0x00302010", kStraightStroke), stage.Draw(line)));
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_EQ(1, line.GetRect(nullptr, min, max));
    EXPECT_EQ(10.0, max.y) << "an arc's top would be 0.009 above: so tiny a bulge has it on the left";
    // A chord of 20 and a top of 0.009: a circle of (100 + 0.000081) / 0.009 = 11111.12 across, mostly below.
    EXPECT_LT(line.HitTest(CGePoint2d(20, -11101.1)), 1.0f);
    line.SetBulge(0, 0.0011);
    const Calls drawn = stage.Draw(line);
    ASSERT_LT(3u, drawn.size());
    EXPECT_EQ(0u, drawn[3].find("Arc(")) << drawn[3];
}

TEST(PLineDraw, AnArcIsOneCallAnticlockwiseFromItsStart) {
    Stage stage;
    CPLineInk line;
    line.AddPoint(CGePoint2d(10, 50), 1); // Below the chord, about (20, 50): from the left end to the right one.
    line.AddPoint(CGePoint2d(30, 50));
    EXPECT_TRUE(
        SameCalls(Segment("style=0 width=1 color=0x00302010", {"Arc(10,40,30,60,10,50,30,50)"}), stage.Draw(line)));
    line.SetBulge(0, -1); // Above: anticlockwise that is from the right end to the left one.
    EXPECT_TRUE(
        SameCalls(Segment("style=0 width=1 color=0x00302010", {"Arc(10,40,30,60,30,50,10,50)"}), stage.Draw(line)));
}

TEST(PLineDraw, AnArcOverAnUprightChordStartsAndEndsAtItsEnds) {
    Stage stage;
    CPLineInk line;
    line.AddPoint(CGePoint2d(50, 40), 1); // On the right: anticlockwise from the lower end to the upper one.
    line.AddPoint(CGePoint2d(50, 60));
    EXPECT_TRUE(
        SameCalls(Segment("style=0 width=1 color=0x00302010", {"Arc(40,40,60,60,50,60,50,40)"}), stage.Draw(line)));
    line.SetBulge(0, -1);
    EXPECT_TRUE(
        SameCalls(Segment("style=0 width=1 color=0x00302010", {"Arc(40,40,60,60,50,40,50,60)"}), stage.Draw(line)));
}

TEST(PLineDraw, AQuarterArcIsTheSameCallFromEitherEnd) {
    constexpr double kQuarter = 0.41421356237309503; // The tangent of 22.5 degrees.
    const std::string pen = "style=0 width=1 color=0x00302010";
    Stage stage;
    // About (50, 50) with 25, from (15, 20) to (-20, 15) off the centre.
    CPLineInk there;
    there.AddPoint(CGePoint2d(65, 70), kQuarter);
    there.AddPoint(CGePoint2d(30, 65));
    EXPECT_TRUE(SameCalls(Segment(pen, {"Arc(25,25,75,75,65,30,30,35)"}), stage.Draw(there)));
    CPLineInk back;
    back.AddPoint(CGePoint2d(30, 65), -kQuarter);
    back.AddPoint(CGePoint2d(65, 70));
    EXPECT_TRUE(SameCalls(Segment(pen, {"Arc(25,25,75,75,65,30,30,35)"}), stage.Draw(back)));
    // To the other side: about (45, 85), the centre mirrored in the chord, from (-15, -20) to (20, -15) off it.
    there.SetBulge(0, -kQuarter);
    EXPECT_TRUE(SameCalls(Segment(pen, {"Arc(20,-10,70,40,30,35,65,30)"}), stage.Draw(there)));
}

TEST(PLineDraw, TheInkIsOnTheSideOfTheBulge) {
    DrawStage stage;
    CPLineInk line;
    line.AddPoint(CGePoint2d(10, 50), 1);
    line.AddPoint(CGePoint2d(30, 50));
    stage.Draw(line);
    EXPECT_EQ(0x00302010u, stage.dc.Pixel(20, 59)) << "below the chord";
    EXPECT_EQ(0x00FFFFFFu, stage.dc.Pixel(20, 40));
}

TEST(PLineDraw, PixelsAreRoundedWithHalvesUpwardsInArcsToo) {
    Stage stage;
    CPLineInk line;
    line.AddPoint(CGePoint2d(10.6, 10.4));
    line.AddPoint(CGePoint2d(-2.5, 10.5));
    EXPECT_TRUE(SameCalls(Segment("style=0 width=1 color=0x00302010",
                                  {"MoveTo(11,90)", "LineTo(-2,90)", "MoveTo(-2,90)", "LineTo(11,90)"}),
                          stage.Draw(line)));
    CPLineInk arc;
    arc.AddPoint(CGePoint2d(10.6, 50.4), 1); // About (20.6, 50.4), on the screen (20.6, 49.6).
    arc.AddPoint(CGePoint2d(30.6, 50.4));
    EXPECT_TRUE(
        SameCalls(Segment("style=0 width=1 color=0x00302010", {"Arc(11,40,31,60,11,50,31,50)"}), stage.Draw(arc)));
}

TEST(PLineDraw, ASegmentIsStraightBelowABulgeOfAThousandth) {
    Stage stage;
    CPLineInk line;
    FillStraight(line);
    line.SetBulge(0, -0.000999);
    EXPECT_TRUE(SameCalls(Segment("style=0 width=1 color=0x00302010", kStraightStroke), stage.Draw(line)));
    line.SetBulge(0, -0.001);
    const Calls calls = stage.Draw(line);
    ASSERT_EQ(7u, calls.size());
    EXPECT_EQ(0u, calls[3].find("Arc(")) << calls[3];
}

TEST(PLineDraw, EachSegmentHasItsOwnPenAndAClosedOneAddsTheWayBack) {
    Stage stage;
    CPLineInk line;
    line.AddPoint(CGePoint2d(10, 50));
    line.AddPoint(CGePoint2d(30, 50), 1);
    line.AddPoint(CGePoint2d(50, 50), -1);
    line.SetSLPenColor(1, 0x0000FF);
    line.SetClose(1);
    const std::string own = "style=0 width=1 color=0x00302010";
    const Calls first = Segment(own, {"MoveTo(10,50)", "LineTo(30,50)", "MoveTo(30,50)", "LineTo(10,50)"});
    const Calls second = Segment("style=0 width=1 color=0x000000FF", {"Arc(30,40,50,60,30,50,50,50)"});
    // Back from (50, 50) to (10, 50), the left side is downwards: anticlockwise from the left end to the right one.
    const Calls closing = Segment(own, {"Arc(10,30,50,70,10,50,50,50)"});
    EXPECT_TRUE(SameCalls(Joined({first, second, closing}), stage.Draw(line)));
    line.SetClose(0);
    EXPECT_TRUE(SameCalls(Joined({first, second}), stage.Draw(line)));
    line.ResetPenColor(1, 0x0000FF);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00302010)", stage.Draw(line)[12]);
}

TEST(PLineDraw, AnyValueButZeroClosesTheOutline) {
    Stage stage;
    CPLineInk line;
    FillStraight(line);
    const std::string pen = "style=0 width=1 color=0x00302010";
    const Calls there = Segment(pen, kStraightStroke);
    const Calls back = Segment(pen, {"MoveTo(30,90)", "LineTo(10,90)", "MoveTo(10,90)", "LineTo(30,90)"});
    for (int closed : {1, -1, 256}) {
        line.SetClose(closed);
        EXPECT_TRUE(SameCalls(Joined({there, back}), stage.Draw(line))) << closed;
    }
}

TEST(PLineDraw, AFlagOtherThanOneIsNoColourOfItsOwn) {
    class CFlagged : public CPLineInk {
    public:
        void SetFlag(UINT flag) { m_SegPenFlagList[0] = flag; }
    };
    Stage stage;
    CFlagged line;
    FillStraight(line);
    line.SetSLPenColor(0, 0x0000FF);
    line.SetFlag(2);
    EXPECT_TRUE(SameCalls(Segment("style=0 width=1 color=0x00302010", kStraightStroke), stage.Draw(line)));
}

TEST(PLineDraw, UncountedVerticesArePainted) {
    Stage stage;
    CPLineInk line;
    line.AddPoint(CGePoint2d(10, 10));
    line.SetPoint(1, CGePoint2d(30, 10));
    EXPECT_EQ(1, line.GetVertexCount());
    EXPECT_TRUE(SameCalls(Segment("style=0 width=1 color=0x00302010", kStraightStroke), stage.Draw(line)));
}

TEST(PLineDraw, ABulgeListThatHostsShortenedLeavesStraightSegments) {
    Stage stage;
    CPLineInk line;
    FillStraight(line);
    line.GetBulgeList()->RemoveAll();
    EXPECT_TRUE(SameCalls(Segment("style=0 width=1 color=0x00302010", kStraightStroke), stage.Draw(line)));
}

TEST(PLineDraw, NothingIsDrawnOfAHiddenDeletedOrEmptyPolyline) {
    Stage stage;
    CPLineInk hidden;
    FillStraight(hidden);
    hidden.SetIsShow(0);
    EXPECT_TRUE(stage.Draw(hidden).empty());
    Deleted<CPLine> deleted;
    FillStraight(deleted);
    EXPECT_TRUE(stage.Draw(deleted).empty());
    CPLineInk empty;
    empty.SetClose(1);
    EXPECT_TRUE(stage.Draw(empty).empty());
    CPLineInk uncounted; // A vertex in the list, none counted.
    uncounted.SetPoint(0, CGePoint2d(10, 10));
    uncounted.SetPoint(1, CGePoint2d(30, 10));
    EXPECT_TRUE(stage.Draw(uncounted).empty());
}

// ---- Pens ----------------------------------------------------------------------------------------------------------

TEST(PLineDraw, ColoursComeExplicitByIndexAndByLayer) {
    Stage stage;
    CPLine line;
    FillStraight(line);
    EXPECT_TRUE(SameCalls(Segment("style=0 width=1 color=0x00FFFFFF", kStraightStroke), stage.Draw(line)))
        << "the white layer";
    line.SetPenColorIndex(10);
    EXPECT_TRUE(SameCalls(Segment("style=0 width=1 color=0x00E22B8A", kStraightStroke), stage.Draw(line)));
    line.SetPenColor(0x123456);
    EXPECT_TRUE(SameCalls(Segment("style=0 width=1 color=0x00123456", kStraightStroke), stage.Draw(line)));
    line.SetPenColorIndex(-1);
    line.SetLayer(1); // There is no such layer.
    EXPECT_TRUE(SameCalls(Segment("style=0 width=1 color=0x00123456", kStraightStroke), stage.Draw(line)));
}

TEST(PLineDraw, TheWidthFollowsTheZoomDownToOnePixelUnlessLocked) {
    Stage stage;
    stage.tran.SetScale(0.5f);
    CPLineInk line;
    line.AddPoint(CGePoint2d(5, 5));
    line.AddPoint(CGePoint2d(15, 5));
    line.SetLineWide(3);
    line.SetLineType(PS_DASH);
    line.SetSLPenColor(0, 0x0000FF);
    EXPECT_TRUE(SameCalls(Segment("style=1 width=6 color=0x000000FF", kStraightStroke), stage.Draw(line)));
    line.SetLockMode(-2); // Any value but 0.
    EXPECT_TRUE(SameCalls(Segment("style=1 width=3 color=0x000000FF", kStraightStroke), stage.Draw(line)));
    line.SetLockMode(0);
    stage.tran.SetScale(2.0f); // 1.5 pixels, truncated.
    EXPECT_EQ("SelectObject(pen style=1 width=1 color=0x000000FF)", stage.Draw(line)[2]);
    stage.tran.SetScale(10.0f); // 0.3, raised to 1.
    EXPECT_EQ("SelectObject(pen style=1 width=1 color=0x000000FF)", stage.Draw(line)[2]);
    line.SetLockMode(1);
    EXPECT_EQ("SelectObject(pen style=1 width=3 color=0x000000FF)", stage.Draw(line)[2]);
}

// ---- States --------------------------------------------------------------------------------------------------------

TEST(PLineDraw, ASelectedPolylineIsDottedAndShowsBlueVerticesAndYellowMidpoints) {
    Stage stage;
    CPLineInk line;
    FillStraight(line);
    line.SetLineType(PS_DASH);
    line.SetSelected(1);
    const std::string blue = "SelectObject(pen style=0 width=0 color=0x00FF0000)";
    const std::string yellow = "SelectObject(pen style=0 width=0 color=0x000BEEF6)";
    const Calls grips = {blue,
                         "SelectStockObject(5)",
                         blue,
                         "Rectangle(7,87,14,94)",
                         yellow,
                         "Rectangle(17,87,24,94)",
                         blue,
                         "Rectangle(27,87,34,94)",
                         "SelectObject(brush default)",
                         "SelectObject(pen default)"};
    EXPECT_TRUE(
        SameCalls(Joined({Segment("style=2 width=1 color=0x00302010", kStraightStroke), grips}), stage.Draw(line)));
}

TEST(PLineDraw, ASingleSelectedVertexShowsItsOneGrip) {
    Stage stage;
    CPLineInk line;
    line.AddPoint(CGePoint2d(10, 10));
    line.SetSelected(1);
    const std::string blue = "SelectObject(pen style=0 width=0 color=0x00FF0000)";
    EXPECT_TRUE(SameCalls({blue, "SelectStockObject(5)", blue, "Rectangle(7,87,14,94)", "SelectObject(brush default)",
                           "SelectObject(pen default)"},
                          stage.Draw(line)));
}

TEST(PLineDraw, GripPixelsAreTruncatedWhereStrokesRound) {
    Stage stage;
    CPLineInk line;
    line.AddPoint(CGePoint2d(10.9, 10.1)); // 10.9 and 89.9
    line.SetSelected(1);
    EXPECT_EQ("Rectangle(7,86,14,93)", stage.Draw(line)[3]);
}

TEST(PLineDraw, BothGripPensAreDeletedBeforeTheOldBrushAndPenComeBack) {
    // Looks, when a brush is selected, at the pens that it was given so far.
    class PenWatch : public RecordingDC {
    public:
        PenWatch() : RecordingDC(100, 100) {}
        using RecordingDC::SelectObject;
        CPen* SelectObject(CPen* pen) override {
            if (!brushIsBack) {
                pens.push_back(pen);
                handles.push_back(pen->m_hObject);
            }
            return RecordingDC::SelectObject(pen);
        }
        CBrush* SelectObject(CBrush* brush) override {
            brushIsBack = true;
            for (const CPen* pen : pens) {
                EXPECT_EQ(nullptr, pen->m_hObject);
            }
            return RecordingDC::SelectObject(brush);
        }
        bool brushIsBack = false;
        std::vector<const CPen*> pens;
        std::vector<HGDIOBJ> handles;
    };
    DrawStage stage;
    PenWatch dc;
    CPLineInk line;
    FillStraight(line);
    Grips grips(line);
    line.DrawGripPoints(&dc, grips.points, &stage.geometry);
    ASSERT_EQ(4u, dc.handles.size()); // The first one, then one a grip.
    EXPECT_TRUE(dc.brushIsBack);
    EXPECT_NE(dc.handles[1], dc.handles[2]);
    for (HGDIOBJ handle : dc.handles) {
        EXPECT_EQ(0u, ::GetObjectType(handle)) << "deleted, not only let go of";
    }
    EXPECT_EQ("SelectObject(pen default)", dc.Calls().back());
}

TEST(PLineDraw, ADraggedPolylineKeepsItsLineTypeUnderInversion) {
    Stage stage;
    CPLineInk line;
    FillStraight(line);
    line.SetLineType(PS_DASH);
    line.SetDrawState(CDrawable::Dragging);
    EXPECT_TRUE(SameCalls(Segment("style=1 width=1 color=0x00302010", kStraightStroke, true), stage.Draw(line)));
}

TEST(PLineDraw, AnUnknownStateSelectsAnEmptyPenAndChangesNothing) {
    Stage stage;
    CPLineInk line;
    FillStraight(line);
    line.SetDrawState(static_cast<CDrawable::DrawState>(3));
    const Calls calls = stage.Draw(line);
    ASSERT_EQ(10u, calls.size());
    EXPECT_EQ("SelectObject(pen null)", calls[2]);
    EXPECT_EQ("MoveTo(10,90)", calls[3]);
    EXPECT_EQ("SetROP2(13)", calls[9]);
}

TEST(PLineDraw, TheModesBeforeASegmentAreRestoredAfterIt) {
    Stage stage;
    stage.dc.SetROP2(R2_MASKPEN);
    stage.dc.SetBkMode(TRANSPARENT);
    CPLineInk line;
    FillStraight(line);
    const Calls calls = stage.Draw(line);
    ASSERT_EQ(10u, calls.size());
    EXPECT_EQ("SetBkMode(1)", calls[8]);
    EXPECT_EQ("SetROP2(9)", calls[9]);
}

TEST(PLineDraw, UnderInversionAStraightSegmentShowsOnlyItsEndsAndASecondDrawingErasesThem) {
    DrawStage stage;
    const std::vector<DWORD> before = stage.dc.Pixels();
    CPLineInk line;
    FillStraight(line);
    line.SetDrawState(CDrawable::Dragging);
    stage.Draw(line);
    std::vector<DWORD> expected = before;
    expected[90 * 100 + 10] = 0;
    expected[90 * 100 + 30] = 0;
    EXPECT_EQ(expected, stage.dc.Pixels());
    stage.Draw(line);
    EXPECT_EQ(before, stage.dc.Pixels());
}

TEST(PLineDraw, BothEndPixelsAreInked) {
    DrawStage stage;
    CPLineInk line;
    FillStraight(line);
    stage.Draw(line);
    EXPECT_EQ(0x00302010u, stage.dc.Pixel(10, 90));
    EXPECT_EQ(0x00302010u, stage.dc.Pixel(30, 90)) << "one stroke alone leaves it out";
    EXPECT_EQ(0x00FFFFFFu, stage.dc.Pixel(31, 90));
}

TEST(PLineDraw, ADraggedOutlineOfAllKindsOfSegmentsIsErasedByASecondDrawing) {
    DrawStage stage;
    stage.tran.SetScale(0.7f);
    CPLineInk line;
    line.AddPoint(CGePoint2d(10.3, 10.9), 0.4);
    line.AddPoint(CGePoint2d(40.2, 20.5), -1.3);
    line.AddPoint(CGePoint2d(45.8, 60.1));
    line.AddPoint(CGePoint2d(5.5, 50.5), 0.05);
    line.SetClose(1);
    line.SetLineWide(3);
    line.SetDrawState(CDrawable::Dragging);
    const std::vector<DWORD> before = stage.dc.Pixels();
    stage.Draw(line);
    EXPECT_NE(before, stage.dc.Pixels());
    stage.Draw(line);
    EXPECT_EQ(before, stage.dc.Pixels());
}

// ---- What can't be built -------------------------------------------------------------------------------------------

TEST(PLineDraw, AnArcThatCannotBeBuiltEndsTheStrokeWithPenAndModesAsTheyAre) {
    Stage stage;
    CPLineInk line;
    line.AddPoint(CGePoint2d(10, 10));
    line.AddPoint(CGePoint2d(30, 10), 0.5);
    line.AddPoint(CGePoint2d(30, 10)); // No chord.
    line.AddPoint(CGePoint2d(60, 10));
    line.SetDrawState(CDrawable::Dragging);
    EXPECT_TRUE(SameCalls(
        Joined({Segment("style=0 width=1 color=0x00302010", kStraightStroke, true),
                {"SetBkMode(1)", "GetROP2()", "SetROP2(6)", "SelectObject(pen style=0 width=1 color=0x00302010)"}}),
        stage.Draw(line)));
    EXPECT_EQ(R2_NOT, stage.dc.GetROP2());
}

TEST(PLineDraw, ASelectedOutlineThatBreaksOffStillShowsAllItsGrips) {
    DrawStage stage;
    CPLineInk line;
    line.AddPoint(CGePoint2d(30, 10), 0.5);
    line.AddPoint(CGePoint2d(30, 10));
    line.SetSelected(1);
    const Calls calls = stage.Draw(line);
    EXPECT_EQ(3, std::count(calls.begin(), calls.end(), "Rectangle(27,87,34,94)"))
        << "the middle of no chord is its vertex";
}

TEST(PLineDraw, CoordinatesThatAreNoNumbersOrTooFarDoNoHarm) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    for (double bad : {nan, infinite, -infinite, 1e300, -1e300, 1e12}) {
        DrawStage stage;
        stage.dc.SetExecution(false);
        CPLineInk line;
        line.AddPoint(CGePoint2d(10, 10), bad);
        line.AddPoint(CGePoint2d(bad, 10), 0.5);
        line.AddPoint(CGePoint2d(10, bad));
        line.AddPoint(CGePoint2d(bad, bad));
        line.SetClose(1);
        line.SetSelected(1);
        EXPECT_FALSE(stage.Draw(line).empty());
        line.HitTest(CGePoint2d(1, 1));
        line.HitTest(CGePoint2d(bad, bad));
        CGePoint2d min;
        CGePoint2d max;
        EXPECT_EQ(1, line.GetRect(&stage.tran, min, max));
    }
}

// ---- Messages ------------------------------------------------------------------------------------------------------

TEST(DesktopPLineDraw, AFailedStrokePutsPenAndModesBackInEveryState) {
    const std::string boxText = "CPLine::Draw出错:step=1";
    for (bool plain : {false, true}) {
        for (double bulge : {0.0, 1.0}) {
            for (auto state : {CDrawable::Normal, CDrawable::Selected, CDrawable::Dragging}) {
                SCOPED_TRACE(testing::Message() << plain << " " << bulge << " " << state);
                DrawStage stage;
                BoxAnswer answer;
                CPLineInk line;
                FillStraight(line);
                line.SetBulge(0, bulge);
                line.SetDrawState(state);
                FailingStrokeDC dc(plain);
                dc.SetROP2(R2_MASKPEN);
                dc.Clear();
                const HGDIOBJ pen = ::GetCurrentObject(dc.m_hDC, OBJ_PEN);
                line.Draw(&dc, &stage.geometry);
                Calls expected = {"SetBkMode(1)"};
                if (state == CDrawable::Dragging) {
                    expected.push_back("SetROP2(6)");
                }
                expected.push_back(state == CDrawable::Selected ? "SelectObject(pen style=2 width=1 color=0x00302010)"
                                                                : "SelectObject(pen style=0 width=1 color=0x00302010)");
                if (bulge == 0.0) {
                    expected.push_back("MoveTo(10,90)");
                }
                expected.insert(expected.end(), {"SelectObject(pen default)", "SetROP2(9)", "SetBkMode(2)"});
                EXPECT_TRUE(SameCalls(expected, dc.Calls())) << "and no grip is drawn";
                EXPECT_EQ(pen, ::GetCurrentObject(dc.m_hDC, OBJ_PEN));
                EXPECT_EQ((std::vector<std::string>{boxText}), answer.Texts());
            }
        }
    }
}

TEST(DesktopPLineDraw, AFailureInALaterSegmentPutsBackWhatWasThereBeforeTheFirst) {
    // Fails in the fourth LineTo, which is the last one of the second segment.
    class LateDC : public RecordingDC {
    public:
        using RecordingDC::LineTo;
        BOOL LineTo(int x, int y) override {
            if (++m_count == 4) {
                AfxThrowResourceException();
            }
            return RecordingDC::LineTo(x, y);
        }

    private:
        int m_count = 0;
    };
    DrawStage stage;
    BoxAnswer answer;
    CPLineInk line;
    FillStraight(line);
    line.AddPoint(CGePoint2d(30, 40));
    line.SetSLPenColor(1, 0x0000FF);
    LateDC dc;
    const HGDIOBJ pen = ::GetCurrentObject(dc.m_hDC, OBJ_PEN);
    line.Draw(&dc, &stage.geometry);
    EXPECT_EQ(pen, ::GetCurrentObject(dc.m_hDC, OBJ_PEN));
    EXPECT_EQ(OPAQUE, dc.GetBkMode());
    EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
    EXPECT_EQ((std::vector<std::string>{"CPLine::Draw出错:step=1"}), answer.Texts());
}

TEST(DesktopPLineDraw, AFailedGripPutsBrushAndPenBack) {
    class GripFailingDC : public RecordingDC {
    public:
        using RecordingDC::Rectangle;
        BOOL Rectangle(int, int, int, int) override {
            AfxThrowResourceException();
            return FALSE;
        }
    };
    DrawStage stage;
    BoxAnswer answer;
    CPLineInk line;
    FillStraight(line);
    line.SetSelected(1);
    GripFailingDC dc;
    const HGDIOBJ pen = ::GetCurrentObject(dc.m_hDC, OBJ_PEN);
    const HGDIOBJ brush = ::GetCurrentObject(dc.m_hDC, OBJ_BRUSH);
    line.Draw(&dc, &stage.geometry);
    EXPECT_EQ(pen, ::GetCurrentObject(dc.m_hDC, OBJ_PEN));
    EXPECT_EQ(brush, ::GetCurrentObject(dc.m_hDC, OBJ_BRUSH));
    ASSERT_LE(2u, dc.Calls().size());
    EXPECT_EQ("SelectObject(brush default)", dc.Calls()[dc.Calls().size() - 2]);
    EXPECT_EQ("SelectObject(pen default)", dc.Calls().back());
    EXPECT_EQ((std::vector<std::string>{"CPLine::Draw出错:step=4"}), answer.Texts());
}

TEST(DesktopPLineDraw, APenThatCannotBeMadeLeavesTheStrokesToTheContextsOwnPen) {
    DrawStage stage;
    BoxAnswer answer;
    CPLineInk line;
    FillStraight(line);
    line.SetDrawState(CDrawable::Dragging);
    const HGDIOBJ pen = ::GetCurrentObject(stage.dc.m_hDC, OBJ_PEN);
    // Every handle that the process can have is taken, so that GDI makes no further pen.
    std::vector<HPEN> taken;
    while (taken.size() < 200000) {
        const HPEN next = ::CreatePen(PS_SOLID, 1, 0);
        if (next == nullptr) {
            break;
        }
        taken.push_back(next);
    }
    const Calls calls = taken.size() < 200000 ? stage.Draw(line) : Calls();
    for (HPEN each : taken) {
        ::DeleteObject(each);
    }
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", "SetROP2(6)", "SelectObject(pen null)", "MoveTo(10,90)", "LineTo(30,90)",
                           "MoveTo(30,90)", "LineTo(10,90)", "SelectObject(pen null)", "SetBkMode(2)", "SetROP2(13)"},
                          calls));
    EXPECT_EQ(pen, ::GetCurrentObject(stage.dc.m_hDC, OBJ_PEN));
    EXPECT_TRUE(answer.Texts().empty());
}

TEST(DesktopPLineDraw, AFailedDrawingNamesItsStage) {
    DrawStage stage;
    BoxAnswer answer;
    CPLineInk layer;
    FillStraight(layer);
    layer.SetLayer(-1);
    stage.Draw(layer); // Its line type comes from the layer.
    layer.SetLineType(0);
    layer.SetLineWide(2);
    stage.Draw(layer); // Nothing does.
    layer.SetPenColorIndex(-1);
    stage.Draw(layer); // Its colour does, and is looked up before the strokes too.
    CGePoint2d points[] = {CGePoint2d(10, 10), CGePoint2d(30, 10)};
    CPLine flagless(2, points);
    stage.Draw(flagless);
    Gripless<CPLine> gripless;
    FillStraight(gripless);
    gripless.SetSelected(1);
    stage.Draw(gripless);
    CPLine listless(-3, points);
    stage.Draw(listless); // Open: an empty list is no stroke.
    listless.SetClose(1);
    stage.Draw(listless); // Closed: there is no first vertex.
    EXPECT_EQ((std::vector<std::string>{"CPLine::Draw出错:step=0", "CPLine::Draw出错:step=0", "CPLine::Draw出错:step=1",
                                        "CPLine::Draw出错:step=4", "CPLine::Draw出错:step=0"}),
              answer.Texts());
}
