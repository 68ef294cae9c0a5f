// CKXVectorLabel: its points, extent, hits, grips and rows. Drawing is in VectorLabelDraw_test.cpp.

#include "support/AfxCaught.h"
#include "support/TextObjects.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

namespace {

// A horizontal label: extension lines 30 long, upwards from (0, 0) and (100, 0).
void Place(OpenLabel& label) {
    label.SetLeftLabel(CGePoint2d(0, 0), CGePoint2d(0, 30));
    label.SetRightLabel(CGePoint2d(100, 0), CGePoint2d(100, 30));
}

} // namespace

TEST(VectorLabel, ANewLabelHasNoLengthAGapAndNoFigure) {
    OpenLabel label;
    EXPECT_TRUE(label.GetLeftLabelStartPt() == CGePoint2d());
    EXPECT_TRUE(label.GetRightLabelEndPt() == CGePoint2d());
    EXPECT_EQ(3.0, label.GetLabelLength());
    EXPECT_EQ(1.0, label.GetLabelWidth());
    EXPECT_EQ(3.0, label.GetTextHoleWidth());
    EXPECT_TRUE(label.GetHasTextHole());
    EXPECT_EQ(0, label.GetTextShow());
    EXPECT_EQ(1, label.GetLockMode());
    EXPECT_EQ(CString(L"标注"), label.GetName());
}

TEST(VectorLabel, CanBeMadeByNameAndIsNoText) {
    CRuntimeClass* record = CRuntimeClass::FromName(L"CKXVectorLabel");
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(0x80000005u, record->m_wSchema);
    std::unique_ptr<CObject> object(record->CreateObject());
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CDrawable)));
    EXPECT_FALSE(object->IsKindOf(RUNTIME_CLASS(CText)));
}

TEST(VectorLabel, PointsAreCopiedWithTheirKind) {
    OpenLabel label;
    CGePoint2d marked(1, 2);
    marked.type = 4;
    label.SetLeftLabel(marked, CGePoint2d(3, 4));
    EXPECT_EQ(4, label.GetLeftLabelStartPt().type);
    EXPECT_TRUE(label.GetLeftLabelEntPt() == CGePoint2d(3, 4));
    label.SetLeftLabelStartPt(CGePoint2d(5, 6));
    label.SetLeftLabelEntPt(CGePoint2d(7, 8));
    label.SetRightLabelStartPt(CGePoint2d(9, 10));
    label.SetRightLabelEndPt(marked);
    EXPECT_TRUE(label.GetLeftLabelStartPt() == CGePoint2d(5, 6));
    EXPECT_TRUE(label.GetLeftLabelEntPt() == CGePoint2d(7, 8));
    EXPECT_TRUE(label.GetRightLabelStartPt() == CGePoint2d(9, 10));
    EXPECT_EQ(4, label.GetRightLabelEndPt().type);
}

TEST(VectorLabel, SettersKeepWhatTheyAreGiven) {
    OpenLabel label;
    label.SetLabelLength(-1.5);
    label.SetLabelWidth(2.5);
    label.SetTextHoleWidth(0.0);
    label.SetHasTextHole(false);
    label.SetTextShow(9);
    label.SetLockMode(2);
    EXPECT_EQ(-1.5, label.GetLabelLength());
    EXPECT_EQ(2.5, label.GetLabelWidth());
    EXPECT_EQ(0.0, label.GetTextHoleWidth());
    EXPECT_FALSE(label.GetHasTextHole());
    EXPECT_EQ(9, label.GetTextShow());
    EXPECT_EQ(2, label.GetLockMode());
}

TEST(VectorLabel, TheExtentIsThePointsAndATickAroundThemAlsoWhenHidden) {
    OpenLabel label;
    label.SetLeftLabel(CGePoint2d(5, -1), CGePoint2d(-2, 30));
    label.SetRightLabel(CGePoint2d(100, 0), CGePoint2d(90, 31));
    label.SetTextShow(1);
    CGePoint2d min;
    CGePoint2d max;
    for (int show : {1, 0}) {
        label.SetIsShow(show);
        ASSERT_EQ(1, label.GetRect(nullptr, min, max));
        EXPECT_TRUE(min == CGePoint2d(-5, -4));
        EXPECT_TRUE(max == CGePoint2d(103, 34));
    }
}

TEST(VectorLabel, TheExtentPassesOverCoordinatesThatAreNoNumbers) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    CGePoint2d min;
    CGePoint2d max;
    OpenLabel label; // Its ticks are 3 units large.
    label.SetLeftLabel(CGePoint2d(0, 10), CGePoint2d(nan, nan));
    label.SetRightLabel(CGePoint2d(40, -5), CGePoint2d(nan, nan));
    EXPECT_EQ(1, label.GetRect(nullptr, min, max));
    EXPECT_EQ(-3.0, min.x);
    EXPECT_EQ(-8.0, min.y);
    EXPECT_EQ(43.0, max.x);
    EXPECT_EQ(13.0, max.y);
    // Wherever the number is, and for each coordinate separately.
    label.SetLeftLabel(CGePoint2d(nan, 7), CGePoint2d(nan, nan));
    label.SetRightLabel(CGePoint2d(nan, nan), CGePoint2d(20, 9));
    EXPECT_EQ(1, label.GetRect(nullptr, min, max));
    EXPECT_EQ(17.0, min.x);
    EXPECT_EQ(4.0, min.y);
    EXPECT_EQ(23.0, max.x);
    EXPECT_EQ(12.0, max.y);
    // An infinity is a number.
    label.SetLeftLabelStartPt(CGePoint2d(-infinite, 7));
    EXPECT_EQ(1, label.GetRect(nullptr, min, max));
    EXPECT_EQ(-infinite, min.x);
    EXPECT_EQ(23.0, max.x);
    // None at all.
    label.SetLeftLabel(CGePoint2d(nan, nan), CGePoint2d(nan, nan));
    label.SetRightLabel(CGePoint2d(nan, nan), CGePoint2d(nan, nan));
    EXPECT_EQ(1, label.GetRect(nullptr, min, max));
    EXPECT_TRUE(std::isnan(min.x) && std::isnan(min.y) && std::isnan(max.x) && std::isnan(max.y));
}

TEST(VectorLabel, TheDistanceIsToTheNearestOfItsThreeLinesTheGapIncluded) {
    OpenLabel label;
    Place(label);
    EXPECT_EQ(4.0f, label.HitTest(CGePoint2d(50, 34))) << "over the middle of the gap";
    EXPECT_EQ(6.0f, label.HitTest(CGePoint2d(-6, 15))) << "left of the left extension line";
    EXPECT_EQ(5.0f, label.HitTest(CGePoint2d(103, -4))) << "beyond the foot of the right one";
    EXPECT_EQ(2.0f, label.HitTest(CGePoint2d(98, 15)));
}

TEST(VectorLabel, TheStoredFigureCountsEvenWhenItIsNotShown) {
    OpenLabel label;
    label.SetLeftLabel(CGePoint2d(0, 1000), CGePoint2d(0, 1030));
    label.SetRightLabel(CGePoint2d(100, 1000), CGePoint2d(100, 1030));
    ASSERT_EQ(0, label.GetTextShow());
    // The figure of a new label is at the origin, 20 wide and without height: from 2 to 20 and from 0 to 2.
    EXPECT_EQ(0.0f, label.HitTest(CGePoint2d(10, 1)));
}

TEST(VectorLabel, AHiddenLabelHitsAsOneThousand) {
    OpenLabel label;
    Place(label);
    label.SetIsShow(0);
    EXPECT_EQ(1000.0f, label.HitTest(CGePoint2d(0, 10)));
    label.SetIsShow(1);
    label.m_IsDelete = 1;
    EXPECT_EQ(0.0f, label.HitTest(CGePoint2d(0, 10)));
}

TEST(VectorLabel, ALineWithoutLengthDoesNotCount) {
    OpenLabel label;
    label.SetLeftLabel(CGePoint2d(0, 30), CGePoint2d(0, 30));
    label.SetRightLabel(CGePoint2d(100, 0), CGePoint2d(100, 30));
    EXPECT_EQ(5.0f, label.HitTest(CGePoint2d(50, 35)));
    EXPECT_EQ(5.0f, label.HitTest(CGePoint2d(105, 10)));
}

TEST(VectorLabel, WithNothingButNotANumberItIsNotHit) {
    OpenLabel label;
    label.SetRightLabel(CGePoint2d(0, 0), CGePoint2d(0, 0));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(1000.0f, label.HitTest(CGePoint2d(nan, nan)));
}

TEST(VectorLabel, TheGripsAreTheEndsOfTheDimensionLineAndDoNotMove) {
    OpenLabel label;
    Place(label);
    CGePointArray grips;
    label.getGripPoints(grips, 0);
    ASSERT_EQ(2, grips.GetSize());
    EXPECT_TRUE(grips[0] == CGePoint2d(0, 30));
    EXPECT_TRUE(grips[1] == CGePoint2d(100, 30));
    label.moveGripPointsAt(Indices({0}), CGeVector2d(5, 5));
    label.moveGripPointsAt(Indices({1}), CGeVector2d(5, 5));
    label.moveGripPointsAt(Indices({}), CGeVector2d(5, 5)); // Does not look at the array.
    EXPECT_TRUE(label.GetLeftLabelEntPt() == CGePoint2d(0, 30));
    EXPECT_TRUE(label.GetRightLabelEndPt() == CGePoint2d(100, 30));
}

TEST(VectorLabel, ATransformMovesTheFourPointsAndNoSize) {
    OpenLabel label;
    Place(label);
    label.transformBy(CGeMatrix2d::scaling(2, CGePoint2d(0, 0)) * CGeMatrix2d::translation(CGeVector2d(1, 1)));
    EXPECT_TRUE(label.GetLeftLabelStartPt() == CGePoint2d(2, 2));
    EXPECT_TRUE(label.GetLeftLabelEntPt() == CGePoint2d(2, 62));
    EXPECT_TRUE(label.GetRightLabelStartPt() == CGePoint2d(202, 2));
    EXPECT_TRUE(label.GetRightLabelEndPt() == CGePoint2d(202, 62));
    EXPECT_EQ(3.0, label.GetLabelLength());
}

TEST(VectorLabel, TheLockModeIsItsOnlyRowAfterThoseOfEveryObject) {
    OpenLabel label;
    Rows rows(label);
    ASSERT_EQ(5, rows.list.GetSize());
    const CSimpleProperty* row = rows.list.GetRow(4);
    EXPECT_EQ(CString(L"m_LockBojZoom"), row->GetKey());
    EXPECT_EQ(CString(L"是否锁定线宽"), row->GetLabel());
    EXPECT_EQ(CString(L"是否锁定线宽"), row->m_Description);
    EXPECT_EQ(VT_I4, row->m_Type);
    EXPECT_EQ(1, row->GetValue().lVal);
    rows.list.GetRow(4)->m_Value = COleVariant(0L, VT_I4);
    label.SetProperty(rows.list);
    EXPECT_EQ(1, label.GetLockMode()) << "not marked as changed";
    rows.list.GetRow(4)->m_Changed = 1;
    label.SetProperty(rows.list);
    EXPECT_EQ(0, label.GetLockMode());
}
