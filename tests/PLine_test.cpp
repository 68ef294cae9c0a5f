// CPLine: vertices and their parallel lists, grips and what dragging one does to bulges, rows. Drawing, hits and
// extents are in PLineDraw_test.cpp and PLineHit_test.cpp.

#include "PLine.h"

#include "support/AfxCaught.h"
#include "support/CurveTools.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

// Opens a polyline's lists to the tests.
class CBarePLine : public CPLine {
public:
    using CPLine::CPLine;
    CUIntArray& Flags() { return m_SegPenFlagList; }
    CArray<DWORD, DWORD&>& Colors() { return m_SegPenColorList; }
    CGePointArray& InsertPoints() { return m_InsertPointList; }
    // What the six lists have at each index: point, bulge, tags, colour and flag.
    std::vector<std::wstring> Entries() {
        std::vector<std::wstring> entries;
        for (INT_PTR i = 0; i < m_PointList.GetSize(); ++i) {
            CString text;
            text.Format(L"(%g, %g) %g [%s|%s] %06lX %u", m_PointList[i].x, m_PointList[i].y, m_BulgeList[i],
                        m_ParmNameList[i].GetString(), m_ParmMsgList[i].GetString(), m_SegPenColorList[i],
                        m_SegPenFlagList[i]);
            entries.push_back(text.GetString());
        }
        return entries;
    }
    // Six parallel lists, or a failure.
    void ExpectParallel(INT_PTR size) {
        EXPECT_EQ(size, m_PointList.GetSize());
        EXPECT_EQ(size, m_BulgeList.GetSize());
        EXPECT_EQ(size, m_ParmNameList.GetSize());
        EXPECT_EQ(size, m_ParmMsgList.GetSize());
        EXPECT_EQ(size, m_SegPenColorList.GetSize());
        EXPECT_EQ(size, m_SegPenFlagList.GetSize());
    }
};

// (0, 0), (10, 0), (20, 0), ... with the bulges given.
void Fill(CPLine& line, std::initializer_list<double> bulges) {
    double x = 0;
    for (double bulge : bulges) {
        line.AddPoint(CGePoint2d(x, 0), bulge);
        x += 10;
    }
}

double Bulge(CPLine& line, int i) {
    return line.GetBulgeList()->GetAt(i);
}

CGePoint2d Vertex(CPLine& line, int i) {
    return line.GetPointList()->GetAt(i);
}

} // namespace

// ---- Vertices ------------------------------------------------------------------------------------------------------

TEST(PLine, ANewPolylineIsEmptyOpenAndUnlocked) {
    CPLine line;
    EXPECT_EQ(0, line.GetVertexCount());
    EXPECT_EQ(-1, line.GetSelSelLine());
    EXPECT_EQ(0, line.IsClosed());
    EXPECT_EQ(0, line.GetLockMode());
    EXPECT_TRUE(line.GetParmName().IsEmpty());
    EXPECT_TRUE(line.GetMsgInfo().IsEmpty());
    EXPECT_EQ(CString(L"多线段"), line.GetName());
    EXPECT_EQ(0x80000005u, CPLine::classCPLine.m_wSchema);
    EXPECT_TRUE(line.IsKindOf(RUNTIME_CLASS(CDrawable)));
}

TEST(PLine, AddingFillsAllListsWithTheExplicitColourOfTheMoment) {
    CBarePLine line;
    line.SetPenColor(0x112233);
    line.AddPoint(CGePoint2d(1, 2));
    line.SetPenColor(0x445566);
    line.AddPoint(CGePoint2d(3, 4), -0.5);
    EXPECT_EQ(2, line.GetVertexCount());
    line.ExpectParallel(2);
    EXPECT_EQ(0.0, Bulge(line, 0));
    EXPECT_EQ(-0.5, Bulge(line, 1));
    EXPECT_EQ(0x112233u, line.Colors()[0]);
    EXPECT_EQ(0x445566u, line.Colors()[1]);
    EXPECT_EQ(0u, line.Flags()[1]);
}

TEST(PLine, TheConstructorForHostsLeavesTheFlagsEmpty) {
    CGePoint2d points[] = {CGePoint2d(1, 2), CGePoint2d(3, 4)};
    CBarePLine line(2, points);
    EXPECT_EQ(2, line.GetVertexCount());
    EXPECT_EQ(2, line.GetPointList()->GetSize());
    EXPECT_EQ(2, line.GetBulgeList()->GetSize());
    EXPECT_EQ(2, line.Colors().GetSize());
    EXPECT_EQ(0, line.Flags().GetSize());
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { line.RemovePoint(0); }));
    EXPECT_EQ(2, line.GetPointList()->GetSize()) << "all six lists or none";
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { line.SetSLPenColor(0, 0xFF); }));
    EXPECT_EQ(0u, line.Colors()[0]);
}

TEST(PLine, TheConstructorForHostsTakesNoPoints) {
    CPLine none(3, nullptr);
    EXPECT_EQ(0, none.GetVertexCount());
    CGePoint2d point;
    CPLine negative(-2, &point);
    EXPECT_EQ(-2, negative.GetVertexCount());
    EXPECT_EQ(0, negative.GetPointList()->GetSize());
}

TEST(PLine, SetPointBeyondTheEndAppendsAVertexThatIsNotCounted) {
    CBarePLine line;
    Fill(line, {0.5, 0.25});
    line.SetPoint(1, CGePoint2d(7, 8));
    EXPECT_POINT(7, 8, Vertex(line, 1));
    EXPECT_EQ(0.25, Bulge(line, 1)) << "nothing but the point";
    line.SetPoint(2, CGePoint2d(30, 0));
    line.SetPoint(99, CGePoint2d(40, 0));
    EXPECT_EQ(2, line.GetVertexCount());
    line.ExpectParallel(4);
    EXPECT_POINT(40, 0, Vertex(line, 3));
    EXPECT_EQ(0.0, Bulge(line, 3));
    line.AddPoint(CGePoint2d(50, 0));
    EXPECT_EQ(3, line.GetVertexCount()) << "a later add counts one more, not the list";
    line.ExpectParallel(5);
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { line.SetPoint(-1, CGePoint2d()); }));
}

TEST(PLine, RemovingTakesTheEntryOutOfAllListsAndLeavesTheOtherBulges) {
    CBarePLine line;
    Fill(line, {0.1, 0.2, 0.3, 0.4});
    line.SetSLineInfo(2, L"two", L"zwei");
    EXPECT_EQ(1, line.RemovePoint(1));
    EXPECT_EQ(3, line.GetVertexCount());
    line.ExpectParallel(3);
    EXPECT_EQ(0.1, Bulge(line, 0)) << "it now reaches the vertex after next, with its old bulge";
    EXPECT_EQ(0.3, Bulge(line, 1));
    EXPECT_POINT(20, 0, Vertex(line, 1));
    CString name;
    CString msg;
    EXPECT_EQ(1, line.GetSLineInfo(1, name, msg));
    EXPECT_EQ(CString(L"two"), name);
    EXPECT_EQ(CString(L"zwei"), msg);
}

TEST(PLine, RemovingAtTheCountDoesNothingAndANegativeIndexIsInvalid) {
    CBarePLine line;
    Fill(line, {0, 0});
    line.SetPoint(2, CGePoint2d(30, 0)); // In the list and not counted.
    EXPECT_EQ(0, line.RemovePoint(2));
    EXPECT_EQ(0, line.RemovePoint(100));
    line.ExpectParallel(3);
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { line.RemovePoint(-1); }));
    line.ExpectParallel(3);
    EXPECT_EQ(2, line.GetVertexCount());
}

TEST(PLine, InsertingCopiesTheBulgeOfTheSegmentInWhichThePointComesToLie) {
    CBarePLine line;
    line.SetPenColor(0x0A0B0C);
    Fill(line, {0.1, 0.2, 0.3});
    line.SetSLPenColor(1, 0xFF);
    EXPECT_EQ(1, line.InsertPoint(1, CGePoint2d(5, 5)));
    EXPECT_EQ(4, line.GetVertexCount());
    line.ExpectParallel(4);
    EXPECT_POINT(5, 5, Vertex(line, 1));
    EXPECT_EQ(0.1, Bulge(line, 0));
    EXPECT_EQ(0.1, Bulge(line, 1));
    EXPECT_EQ(0.2, Bulge(line, 2));
    EXPECT_EQ(0u, line.Flags()[1]);
    EXPECT_EQ(0x0A0B0Cu, line.Colors()[1]);
    EXPECT_EQ(1u, line.Flags()[2]) << "the old entry moved up in this list too";
    EXPECT_EQ(1, line.InsertPoint(4, CGePoint2d(9, 9)));
    EXPECT_POINT(9, 9, Vertex(line, 4));
    EXPECT_EQ(0.3, Bulge(line, 4)) << "at the end: of the last segment";
}

TEST(PLine, InsertingInFrontTakesTheLastVertexsBulge) {
    CPLine line;
    Fill(line, {0.1, 0.2, 0.3});
    EXPECT_EQ(1, line.InsertPoint(0, CGePoint2d(-10, 0)));
    EXPECT_POINT(-10, 0, Vertex(line, 0));
    EXPECT_EQ(0.3, Bulge(line, 0));
}

TEST(PLine, InsertingNeedsAVertexAndAnIndexThatIsOne) {
    CBarePLine line;
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { line.InsertPoint(0, CGePoint2d()); }));
    EXPECT_EQ(0, line.GetVertexCount());
    line.ExpectParallel(0);
    Fill(line, {0.1, 0.2});
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { line.InsertPoint(4, CGePoint2d()); })) << "there is no bulge 3";
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { line.InsertPoint(-1, CGePoint2d()); }));
    EXPECT_EQ(2, line.GetVertexCount());
    line.ExpectParallel(2);
}

TEST(PLine, InsertingAndRemovingKeepAllListsInStep) {
    CBarePLine line;
    Fill(line, {0.1, 0.2, 0.3});
    for (int i = 0; i < 3; ++i) {
        const CString digit(static_cast<wchar_t>(L'0' + i));
        line.SetSLineInfo(i, L"n" + digit, L"m" + digit);
        line.SetSLPenColor(i, 0xA0 + static_cast<DWORD>(i));
    }
    line.SetPenColor(0xB1);
    EXPECT_EQ(1, line.InsertPoint(0, CGePoint2d(1, 2)));
    line.SetPenColor(0xB2);
    EXPECT_EQ(1, line.InsertPoint(2, CGePoint2d(3, 4)));
    line.SetPenColor(0xB3);
    EXPECT_EQ(1, line.InsertPoint(5, CGePoint2d(5, 6)));
    line.ExpectParallel(6);
    EXPECT_EQ((std::vector<std::wstring>{
                  L"(1, 2) 0.3 [|] 0000B1 0",
                  L"(0, 0) 0.1 [n0|m0] 0000A0 1",
                  L"(3, 4) 0.1 [|] 0000B2 0",
                  L"(10, 0) 0.2 [n1|m1] 0000A1 1",
                  L"(20, 0) 0.3 [n2|m2] 0000A2 1",
                  L"(5, 6) 0.3 [|] 0000B3 0",
              }),
              line.Entries());
    EXPECT_EQ(6, line.GetVertexCount());
    EXPECT_EQ(1, line.RemovePoint(3));
    EXPECT_EQ(1, line.RemovePoint(0));
    EXPECT_EQ(1, line.RemovePoint(3));
    line.ExpectParallel(3);
    EXPECT_EQ((std::vector<std::wstring>{
                  L"(0, 0) 0.1 [n0|m0] 0000A0 1",
                  L"(3, 4) 0.1 [|] 0000B2 0",
                  L"(20, 0) 0.3 [n2|m2] 0000A2 1",
              }),
              line.Entries());
    EXPECT_EQ(3, line.GetVertexCount());
}

TEST(PLine, AVertexAtTheEndStartsWithoutTagsInTheColourOfTheMoment) {
    CBarePLine line;
    line.AddPoint(CGePoint2d(1, 2), 0.5);
    line.SetSLineInfo(0, L"n", L"m");
    line.SetSLPenColor(0, 0xFF);
    line.SetPenColor(0xB1);
    line.SetPoint(1, CGePoint2d(3, 4));
    line.SetPenColor(0xB2);
    line.AddPoint(CGePoint2d(5, 6));
    line.SetPenColor(0xB3);
    line.AddPoint(CGePoint2d(7, 8), 0.25);
    line.SetPoint(0, CGePoint2d(9, 9)); // Replaces the point and nothing else.
    line.ExpectParallel(4);
    EXPECT_EQ((std::vector<std::wstring>{
                  L"(9, 9) 0.5 [n|m] 0000FF 1",
                  L"(3, 4) 0 [|] 0000B1 0",
                  L"(5, 6) 0 [|] 0000B2 0",
                  L"(7, 8) 0.25 [|] 0000B3 0",
              }),
              line.Entries());
}

// ---- Segments ------------------------------------------------------------------------------------------------------

TEST(PLine, AnArcIsWhateverDiffersFromExactlyZero) {
    CPLine line;
    Fill(line, {0.0, 1e-300, -0.0, 0.5});
    EXPECT_FALSE(line.IsArc(0));
    EXPECT_TRUE(line.IsArc(1));
    EXPECT_FALSE(line.IsArc(2));
    EXPECT_TRUE(line.IsArc(3));
    EXPECT_EQ(0, line.IsArc(-1));
    EXPECT_EQ(0, line.IsArc(4));
}

TEST(PLine, BulgesAreSetWithinTheList) {
    CPLine line;
    Fill(line, {0, 0});
    EXPECT_EQ(1, line.SetBulge(1, 0.75));
    EXPECT_EQ(0.75, Bulge(line, 1));
    EXPECT_EQ(0, line.SetBulge(2, 0.75));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { line.SetBulge(-1, 0.75); }));
}

TEST(PLine, ASegmentsTagsAreItsOwn) {
    CPLine line;
    Fill(line, {0, 0});
    CString name = L"x";
    CString msg = L"y";
    EXPECT_EQ(0, line.GetSLineInfo(2, name, msg));
    EXPECT_EQ(0, line.GetSLineInfo(-1, name, msg));
    EXPECT_EQ(CString(L"x"), name) << "left alone";
    EXPECT_EQ(0, line.SetSLineInfo(2, L"a", L"b"));
    EXPECT_EQ(0, line.SetSLineInfo(-1, L"a", L"b"));
    EXPECT_EQ(1, line.SetSLineInfo(0, L"a", L"b"));
    EXPECT_EQ(1, line.GetSLineInfo(0, name, msg));
    EXPECT_EQ(CString(L"a"), name);
    EXPECT_EQ(CString(L"b"), msg);
    line.SetParmName(L"whole");
    line.SetMsgInfo(L"message");
    EXPECT_EQ(1, line.GetSLineInfo(0, name, msg));
    EXPECT_EQ(CString(L"a"), name);
    EXPECT_EQ(CString(L"whole"), line.GetParmName());
    EXPECT_EQ(CString(L"message"), line.GetMsgInfo());
    EXPECT_EQ(CString(L"a"), line.GetParmNameList()->GetAt(0));
    EXPECT_EQ(CString(L"b"), line.GetParmMsgList()->GetAt(0));
}

TEST(PLine, ASegmentTakesAColourOfItsOwnAndGivesItBackKeepingTheValue) {
    CBarePLine line;
    Fill(line, {0, 0});
    EXPECT_EQ(1, line.SetSLPenColor(1, 0x123456));
    EXPECT_EQ(1u, line.Flags()[1]);
    EXPECT_EQ(0x123456u, line.Colors()[1]);
    EXPECT_EQ(0u, line.Flags()[0]);
    EXPECT_EQ(1, line.ResetPenColor(1, 0x654321));
    EXPECT_EQ(0u, line.Flags()[1]);
    EXPECT_EQ(0x654321u, line.Colors()[1]);
    EXPECT_EQ(0, line.SetSLPenColor(2, 1));
    EXPECT_EQ(0, line.ResetPenColor(2, 1));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { line.SetSLPenColor(-1, 1); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { line.ResetPenColor(-1, 1); }));
}

// ---- Grips ---------------------------------------------------------------------------------------------------------

TEST(PLine, VerticesAndMidpointsTakeTurnsAndAClosedOneEndsWithAMidpoint) {
    CPLine line;
    Fill(line, {0, 1, 0.5});
    Grips open(line);
    ASSERT_EQ(5, open.Size());
    EXPECT_POINT(0, 0, open[0]);
    EXPECT_POINT(5, 0, open[1]);
    EXPECT_POINT(10, 0, open[2]);
    EXPECT_POINT(15, -5, open[3]); // A half circle on the right.
    EXPECT_POINT(20, 0, open[4]);
    EXPECT_EQ(1, open[0].type);
    EXPECT_EQ(4, open[1].type);
    EXPECT_EQ(4, open[3].type);
    line.SetClose(1);
    Grips closed(line);
    ASSERT_EQ(6, closed.Size());
    EXPECT_POINT(10, 5, closed[5]); // From (20, 0) back to (0, 0): the right is upwards; 10 * 0.5.
    EXPECT_EQ(4, closed[5].type);
}

TEST(PLine, TheMaskChoosesTheKindsOfGrips) {
    CPLine line;
    Fill(line, {0, 0, 0});
    line.AddInsertPoint(CGePoint2d(77, 88));
    EXPECT_EQ(3, Grips(line, 1).Size());
    Grips insert(line, 2);
    ASSERT_EQ(1, insert.Size());
    EXPECT_POINT(77, 88, insert[0]);
    EXPECT_EQ(2, Grips(line, 4).Size());
    Grips all(line, 7);
    ASSERT_EQ(6, all.Size());
    EXPECT_POINT(77, 88, all[5]);
    EXPECT_EQ(0, Grips(line, 8).Size());
    line.ClearInsertPoints();
    EXPECT_EQ(0, Grips(line, 2).Size());
}

TEST(PLine, UncountedVerticesHaveGrips) {
    CPLine line;
    Fill(line, {0, 0});
    line.SetPoint(2, CGePoint2d(50, 0));
    EXPECT_EQ(5, Grips(line).Size());
}

TEST(PLine, TheMiddleBetweenCoincidentVerticesIsTheVertex) {
    CPLine line;
    line.AddPoint(CGePoint2d(3, 4), 0.5);
    line.SetClose(1);
    Grips single(line);
    ASSERT_EQ(2, single.Size());
    EXPECT_POINT(3, 4, single[1]);
    EXPECT_EQ(4, single[1].type);
    line.AddPoint(CGePoint2d(3, 4), 0.0);
    line.SetClose(0);
    Grips pair(line);
    ASSERT_EQ(3, pair.Size());
    EXPECT_POINT(3, 4, pair[1]);
}

TEST(PLine, ABadGripIsInvalidAndMovesNothing) {
    CPLine line;
    Fill(line, {0, 0});
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { line.moveGripPointsAt(Indices({}), CGeVector2d(1, 1)); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { MoveGrip(line, 3, 1, 1); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { MoveGrip(line, -1, 1, 1); }));
    EXPECT_POINT(0, 0, Vertex(line, 0));
    EXPECT_POINT(10, 0, Vertex(line, 1));
    CPLine empty;
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { MoveGrip(empty, 0, 1, 1); }));
}

TEST(PLine, DraggingAStraightSegmentsMiddleBendsItAndDraggingItBackStraightensIt) {
    CPLine line;
    Fill(line, {0, 0});
    MoveGrip(line, 1, 0, 2);
    EXPECT_EQ(-0.4, Bulge(line, 0)) << "upwards is on the left: the stored sign is turned";
    EXPECT_POINT(0, 0, Vertex(line, 0));
    EXPECT_POINT(10, 0, Vertex(line, 1));
    Grips grips(line);
    EXPECT_POINT(5, 2, grips[1]);
    MoveGrip(line, 1, 0, -2);
    EXPECT_EQ(0.0, Bulge(line, 0));
    EXPECT_FALSE(line.IsArc(0));
    MoveGrip(line, 1, 0, -5);
    EXPECT_EQ(1.0, Bulge(line, 0)) << "a half circle on the right";
}

TEST(PLine, OnlyTheFirstGripOfTheListMoves) {
    CPLine line;
    Fill(line, {0, 0, 0});
    line.moveGripPointsAt(Indices({2, 0, 4}), CGeVector2d(1, 2));
    EXPECT_POINT(0, 0, Vertex(line, 0));
    EXPECT_POINT(11, 2, Vertex(line, 1));
    EXPECT_POINT(20, 0, Vertex(line, 2));
}

TEST(PLine, DraggingTheClosingSegmentsMiddleBendsTheLastBulge) {
    CPLine line;
    Fill(line, {0, 0, 0});
    line.SetClose(1);
    MoveGrip(line, 5, 0, 5); // From (20, 0) to (0, 0) upwards is the right: 5 over 10.
    EXPECT_EQ(0.5, Bulge(line, 2));
    EXPECT_EQ(0.0, Bulge(line, 0));
    EXPECT_EQ(0.0, Bulge(line, 1));
}

TEST(PLine, DraggingTheMiddleBetweenCoincidentVerticesGivesNoBulge) {
    CPLine line;
    line.AddPoint(CGePoint2d(3, 4), 0.5);
    line.AddPoint(CGePoint2d(3, 4), 0.0);
    MoveGrip(line, 1, 7, 7);
    EXPECT_EQ(0.0, Bulge(line, 0));
    EXPECT_FALSE(std::signbit(Bulge(line, 0)));
}

TEST(PLine, StraightNeighboursOfADraggedVertexStayStraight) {
    CPLine line;
    Fill(line, {0, 0, 0});
    MoveGrip(line, 2, 3, 9);
    EXPECT_POINT(13, 9, Vertex(line, 1));
    EXPECT_EQ(0.0, Bulge(line, 0));
    EXPECT_EQ(0.0, Bulge(line, 1));
}

TEST(PLine, AnArcBesideADraggedVertexIsRebuiltThroughItsMiddleMovedByTheWholeVector) {
    CPLine line;
    Fill(line, {-1, -1, 0}); // Tops at (5, 5) and (15, 5).
    MoveGrip(line, 2, 0, 4); // The vertex moves to (10, 4), the tops to (5, 9) and (15, 9).
    // Before: chord (0, 0)-(10, 4), middle (5, 2), 7 to the top, half a chord sqrt(29); the top is on the left.
    EXPECT_DOUBLE_EQ(-7.0 / std::sqrt(29.0), Bulge(line, 0));
    // After it: chord (10, 4)-(20, 0), the same lengths.
    EXPECT_DOUBLE_EQ(-7.0 / std::sqrt(29.0), Bulge(line, 1));
    EXPECT_EQ(0.0, Bulge(line, 2));
}

TEST(PLine, AnArcMayComeOutOnTheOtherSideOfTheDraggedVertex) {
    CPLine line;
    Fill(line, {1, 0});       // Top at (5, -5).
    MoveGrip(line, 2, 0, 20); // To (10, 20); the top to (5, 15), left of the chord.
    // Middle (5, 10), 5 to the top, half a chord sqrt(125).
    EXPECT_DOUBLE_EQ(-5.0 / std::sqrt(125.0), Bulge(line, 0));
}

TEST(PLine, ARepairFlattensABulgeOfTenToTheMinusFourAndKeepsALargerOne) {
    CPLine line;
    Fill(line, {0.0001, 0.00011, 0});
    MoveGrip(line, 2, 0, 0);
    EXPECT_EQ(0.0, Bulge(line, 0));
    EXPECT_NE(0.0, Bulge(line, 1));
}

TEST(PLine, ATinyPositiveBulgeTurnsItsSignInARepair) {
    // Its top is on the left though it is positive; what is stored from a top on the left is negative.
    CPLine line;
    Fill(line, {0.0005, 0});
    MoveGrip(line, 2, 0, 0);
    EXPECT_DOUBLE_EQ(-0.0005, Bulge(line, 0));
}

TEST(PLine, TheClosingSegmentIsNotRepairedWhenItsFirstOrLastVertexMoves) {
    CPLine line;
    Fill(line, {-1, 0, -1});
    line.SetClose(1);
    MoveGrip(line, 0, 0, 3);
    EXPECT_EQ(-1.0, Bulge(line, 2));
    EXPECT_NE(-1.0, Bulge(line, 0)) << "the segment after the vertex is";
    MoveGrip(line, 4, 0, 3);
    EXPECT_EQ(-1.0, Bulge(line, 2));
}

TEST(PLine, AnOpenEndRepairsItsOneSegment) {
    CPLine line;
    Fill(line, {-1, -1, 0});
    MoveGrip(line, 4, 0, 4); // (20, 4): chord (10, 0)-(20, 4), middle (15, 2), top (15, 9).
    EXPECT_EQ(-1.0, Bulge(line, 0));
    EXPECT_DOUBLE_EQ(-7.0 / std::sqrt(29.0), Bulge(line, 1));
}

TEST(PLine, AMovedVertexIsAnOrdinaryPoint) {
    CPLine line;
    Fill(line, {0, 0});
    line.GetPointList()->GetAt(0).type = 8;
    EXPECT_EQ(8, Grips(line)[0].type);
    MoveGrip(line, 0, 1, 1);
    EXPECT_EQ(1, Vertex(line, 0).type);
}

TEST(PLine, ATransformMovesTheCountedVerticesAndNothingElse) {
    CPLine line;
    Fill(line, {0.5, -0.25});
    line.SetPoint(2, CGePoint2d(30, 0));
    line.AddInsertPoint(CGePoint2d(1, 1));
    line.transformBy(CGeMatrix2d::translation(CGeVector2d(100, 200)));
    EXPECT_POINT(100, 200, Vertex(line, 0));
    EXPECT_POINT(110, 200, Vertex(line, 1));
    EXPECT_POINT(30, 0, Vertex(line, 2));
    EXPECT_POINT(1, 1, Grips(line, 2)[0]);
}

TEST(PLine, AMirrorLeavesTheSignsOfTheBulges) {
    CPLine line;
    Fill(line, {1, 0});
    line.transformBy(CGeMatrix2d::mirroring(CGePoint2d(0, 0), CGePoint2d(1, 0)));
    EXPECT_EQ(1.0, Bulge(line, 0));
    EXPECT_POINT(5, -5, Grips(line)[1]) << "not (5, 5), the top's true mirror image";
}

// ---- Rows ----------------------------------------------------------------------------------------------------------

TEST(PLine, ItsRowsFollowTheBaseRows) {
    CPLine line;
    line.AddPoint(CGePoint2d(1.5, -2.5));
    line.SetClose(1);
    line.SetLockMode(7);
    line.SetParmName(L"n");
    line.SetMsgInfo(L"i");
    PropertyList rows(line);
    const ExpectedRow expected[] = {
        {L"m_X1", L"顶点x坐标", VT_R8, VT_R8},
        {L"m_Y1", L"顶点y坐标", VT_R8, VT_R8},
        {L"m_isClosed", L"闭合", VT_BOOL, VT_I4},
        {L"m_LockObjZoom", L"是否锁定线宽", VT_I4, VT_I4},
        {L"m_strParmName", L"参数名称", VT_BSTR, VT_BSTR},
        {L"m_strMsgInfo", L"扩展信息", VT_BSTR, VT_BSTR},
    };
    ASSERT_EQ(10, rows.list.GetSize());
    for (int i = 0; i < 6; ++i) {
        EXPECT_ROW(rows.list, 4 + i, expected[i]);
    }
    EXPECT_EQ(1.5, rows.list.GetRow(4)->GetValue().dblVal);
    EXPECT_EQ(-2.5, rows.list.GetRow(5)->GetValue().dblVal);
    EXPECT_EQ(1, rows.list.GetRow(6)->GetValue().lVal);
    EXPECT_EQ(7, rows.list.GetRow(7)->GetValue().lVal);
    EXPECT_EQ(CString(L"n"), CString(rows.list.GetRow(8)->GetValue().bstrVal));
    EXPECT_EQ(CString(L"i"), CString(rows.list.GetRow(9)->GetValue().bstrVal));
}

TEST(PLine, ChangedRowsReachTheFirstVertexAndTheWhole) {
    CPLine line;
    Fill(line, {0, 0});
    PropertyList rows(line);
    rows.Change(L"m_X1", COleVariant(5.5));
    rows.Change(L"m_LockObjZoom", COleVariant(256L, VT_I4));
    rows.Change(L"m_strParmName", COleVariant(L"n", VT_BSTR));
    rows.Change(L"m_strMsgInfo", COleVariant(L"i", VT_BSTR));
    rows.list.Find(L"m_Y1")->m_Value = COleVariant(9.0); // Not marked as changed.
    line.SetProperty(rows.list);
    EXPECT_POINT(5.5, 0, Vertex(line, 0));
    EXPECT_POINT(10, 0, Vertex(line, 1));
    EXPECT_EQ(256, line.GetLockMode()) << "not narrowed to a byte here";
    EXPECT_EQ(CString(L"n"), line.GetParmName());
    EXPECT_EQ(CString(L"i"), line.GetMsgInfo());
    EXPECT_EQ(0, line.IsClosed());
}

TEST(PLine, AChangedYReachesTheFirstVertexToo) {
    CPLine line;
    line.AddPoint(CGePoint2d(1, 2));
    line.AddPoint(CGePoint2d(3, 4));
    PropertyList rows(line);
    rows.Change(L"m_Y1", COleVariant(9.5));
    line.SetProperty(rows.list);
    EXPECT_POINT(1, 9.5, Vertex(line, 0));
    EXPECT_POINT(3, 4, Vertex(line, 1));
}

TEST(PLine, ATrueVariantClosesWithMinusOne) {
    CPLine line;
    Fill(line, {0, 0});
    PropertyList rows(line);
    COleVariant yes;
    yes.vt = VT_BOOL;
    yes.boolVal = VARIANT_TRUE;
    rows.Change(L"m_isClosed", yes);
    line.SetProperty(rows.list);
    EXPECT_EQ(-1, line.IsClosed());
    EXPECT_EQ(4, Grips(line).Size()) << "and counts as closed";
}

TEST(PLine, WithoutVerticesThereAreNoRowsToGiveAndTheCoordinatesAreSkipped) {
    CPLine empty;
    PropertyList rows;
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { empty.GetProperty(rows.list); }));
    CPLine line;
    Fill(line, {0});
    PropertyList other(line);
    other.Change(L"m_X1", COleVariant(5.5));
    other.Change(L"m_LockObjZoom", COleVariant(3L, VT_I4));
    empty.SetProperty(other.list);
    EXPECT_EQ(0, empty.GetPointList()->GetSize());
    EXPECT_EQ(3, empty.GetLockMode());
}
