// CText: what it is made with, its box, hits, grips, moves and rows. Drawing is in TextDraw_test.cpp.

#include "MemoryInfo.h"
#include "support/AfxCaught.h"
#include "support/TextObjects.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// At (10, 20), 30 wide, measured as 8 high.
void Place(OpenText& text) {
    text.SetPos(CGePoint2d(10, 20));
    text.SetTextWide(30.0f);
    text.m_MinCalHeight = 8.0f;
}

void ExpectGrip(const CGePoint2d& grip, double x, double y) {
    EXPECT_NEAR(x, grip.x, 1e-12);
    EXPECT_NEAR(y, grip.y, 1e-12);
    EXPECT_EQ(1, grip.type);
}

} // namespace

TEST(Text, ANewTextIsEmptyTwentyHighAndTransparentInTheDefaultFace) {
    OpenText text;
    EXPECT_TRUE(text.GetPos() == CGePoint2d(0, 0));
    EXPECT_EQ(20.0f, text.GetTextHeight());
    EXPECT_EQ(20.0f, text.GetTextWide());
    EXPECT_EQ(0.0f, text.GetTextRatio());
    EXPECT_EQ(0.0f, text.GetOffWide());
    EXPECT_EQ(0.0f, text.m_Spare);
    EXPECT_EQ(0.0f, text.m_Angle);
    EXPECT_EQ(0.0f, text.m_MinCalHeight);
    EXPECT_TRUE(text.GetText().IsEmpty());
    EXPECT_EQ(CString(L"宋体"), text.m_fontFaceName);
    EXPECT_EQ(TRANSPARENT, text.GetBKMode());
    EXPECT_EQ(0xFFFFFFul, text.GetBKColor());
    EXPECT_EQ(CString(L"多行文字"), text.GetName());
    EXPECT_EQ(CDrawable::Normal, text.GetDrawState());
}

TEST(Text, CanBeMadeByNameInTheCurrentSchema) {
    CRuntimeClass* record = CRuntimeClass::FromName(L"CText");
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(0x80000005u, record->m_wSchema);
    std::unique_ptr<CObject> object(record->CreateObject());
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CDrawable)));
}

TEST(Text, SettersKeepWhatTheyAreGiven) {
    OpenText text;
    text.SetTextHeight(-3.5f);
    text.SetTextWide(0.25f);
    text.SetTextRatio(1.5f);
    text.SetOffWide(7.0f);
    text.SetText(L"甲");
    text.SetBKColor(0x123456);
    text.SetBKMode(OPAQUE);
    text.SetAngle(45.9f);
    EXPECT_EQ(-3.5f, text.GetTextHeight());
    EXPECT_EQ(0.25f, text.GetTextWide());
    EXPECT_EQ(1.5f, text.GetTextRatio());
    EXPECT_EQ(7.0f, text.GetOffWide());
    EXPECT_EQ(CString(L"甲"), text.GetText());
    EXPECT_EQ(0x123456ul, text.GetBKColor());
    EXPECT_EQ(OPAQUE, text.GetBKMode());
    EXPECT_EQ(45.9f, text.m_Angle);
}

// ---- Extent --------------------------------------------------------------------------------------------------------

TEST(Text, TheExtentIsTheBoxBelowTheInsertionPointWhateverTheRotation) {
    OpenText text;
    Place(text);
    text.SetAngle(90.0f);
    CGePoint2d min;
    CGePoint2d max;
    ASSERT_EQ(1, text.GetRect(nullptr, min, max));
    EXPECT_TRUE(min == CGePoint2d(10, 12));
    EXPECT_TRUE(max == CGePoint2d(40, 20));
}

TEST(Text, AHiddenTextHasNoExtentAndAnErasedOneStillHas) {
    OpenText text;
    Place(text);
    CGePoint2d min(1, 2);
    CGePoint2d max(3, 4);
    text.SetIsShow(0);
    EXPECT_EQ(0, text.GetRect(nullptr, min, max));
    EXPECT_TRUE(min == CGePoint2d(1, 2));
    EXPECT_TRUE(max == CGePoint2d(3, 4));
    text.SetIsShow(1);
    text.m_IsDelete = 1;
    EXPECT_EQ(1, text.GetRect(nullptr, min, max));
}

TEST(Text, TheExtentMeasuresTheHeightOnTheScreenWhenNoPaintHasDoneSo) {
    Scene scene;
    OpenText text;
    text.SetTextHeight(40.0f);
    text.m_MinCalHeight = -1.0f;
    CGePoint2d min;
    CGePoint2d max;
    ASSERT_EQ(1, text.GetRect(&scene.tran, min, max));
    EXPECT_NEAR(40.0, max.y - min.y, 2.0) << "a cell height of 40 pixels at one unit a pixel";
    const float measured = text.m_MinCalHeight;
    EXPECT_EQ(static_cast<double>(measured), max.y - min.y);
    // Measured once: another zoom changes nothing any more.
    scene.Zoom(0.1f);
    ASSERT_EQ(1, text.GetRect(&scene.tran, min, max));
    EXPECT_EQ(measured, text.m_MinCalHeight);
}

TEST(Text, AHeightBelowOnePixelIsItsOwnMeasureWithoutADevice) {
    Scene scene;
    OpenText text;
    text.SetTextHeight(5.0f);
    scene.Zoom(10.0f);
    EXPECT_EQ(5.0f, text.GetMinCalHeight(nullptr, &scene.tran));
    text.SetTextHeight(-5.0f);
    EXPECT_EQ(-5.0f, text.GetMinCalHeight(nullptr, &scene.tran));
    text.SetTextHeight(kInfinity);
    EXPECT_EQ(kInfinity, text.GetMinCalHeight(nullptr, &scene.tran));
    text.SetTextHeight(kNaN);
    EXPECT_TRUE(std::isnan(text.GetMinCalHeight(nullptr, &scene.tran)));
}

TEST(Text, TheMeasureScalesWithTheZoomItWasTakenAt) {
    Scene scene;
    OpenText text;
    text.SetTextHeight(20.0f);
    scene.Zoom(0.5f); // 40 pixels, given back as about 20 units.
    EXPECT_NEAR(20.0f, text.GetMinCalHeight(nullptr, &scene.tran), 1.0f);
}

// ---- Hits ----------------------------------------------------------------------------------------------------------

TEST(Text, AHitInsideTheBoxOfWholeUnitsIsZero) {
    OpenText text;
    text.SetPos(CGePoint2d(10.5, 20.7));
    text.SetTextWide(30.0f);
    text.m_MinCalHeight = 8.5f;
    // Left 12.5, top 12.2, right 40.5 and bottom 20.7 truncated, the last one plus 2.
    EXPECT_EQ(0.0f, text.HitTest(CGePoint2d(12.0, 12.0)));
    EXPECT_EQ(0.0f, text.HitTest(CGePoint2d(39.9, 21.9)));
    EXPECT_NE(0.0f, text.HitTest(CGePoint2d(11.9, 15.0)));
    EXPECT_NE(0.0f, text.HitTest(CGePoint2d(40.0, 15.0))) << "the right edge is outside";
    EXPECT_NE(0.0f, text.HitTest(CGePoint2d(20.0, 22.0))) << "and so is the last row";
    EXPECT_NE(0.0f, text.HitTest(CGePoint2d(20.0, 11.9)));
}

TEST(Text, OutsideTheBoxTheDistanceIsToItsCentre) {
    OpenText text;
    text.SetPos(CGePoint2d(10.5, 20.7));
    text.SetTextWide(30.0f);
    text.m_MinCalHeight = 8.5f;
    EXPECT_EQ(13.5f, text.HitTest(CGePoint2d(26.0, 30.5))) << "centre (26, 17), the point not truncated";
}

TEST(Text, OneOffsetOfTwoIsAddedBeforeTheTruncationAndOneAfterIt) {
    OpenText text;
    text.SetTextWide(30.0f);
    text.m_MinCalHeight = 8.0f;
    text.SetPos(CGePoint2d(-1.5, -0.5));
    EXPECT_EQ(0.0f, text.HitTest(CGePoint2d(0.5, -3.0))) << "left edge: -1.5 + 2, truncated to 0";
    EXPECT_EQ(0.0f, text.HitTest(CGePoint2d(5.0, 1.5))) << "last row: -0.5 truncated to 0, plus 2";
}

TEST(Text, BoxAndPointAreTruncatedTowardsZeroAlsoBelowIt) {
    OpenText narrow;
    narrow.SetPos(CGePoint2d(-4.5, 0.0));
    narrow.SetTextWide(1.7f);
    narrow.m_MinCalHeight = 8.5f;
    // Left -2.5 and right -2.8 are both -2: nothing is between them. The centre is (-2, -3).
    EXPECT_FLOAT_EQ(3.0413813f, narrow.HitTest(CGePoint2d(-2.5, 0.0))) << "the root of 9.25";
    OpenText text;
    text.SetPos(CGePoint2d(-10.0, 0.0));
    text.SetTextWide(9.5f);
    text.m_MinCalHeight = 8.5f;
    // Left -8, top -8.5, right -0.5.
    EXPECT_EQ(0.0f, text.HitTest(CGePoint2d(-8.9, -8.9))) << "the point becomes (-8, -8), the top -8";
    EXPECT_NE(0.0f, text.HitTest(CGePoint2d(-0.9, 0.0))) << "the point becomes 0, the right edge too";
}

TEST(Text, TheCentreIsHalvedTowardsZero) {
    OpenText text;
    text.SetPos(CGePoint2d(-7.0, 0.0));
    text.SetTextWide(5.0f);
    text.m_MinCalHeight = 5.0f;
    // Box -5 to -2 and -5 to 2: centre (-3, -1).
    EXPECT_EQ(10.0f, text.HitTest(CGePoint2d(-3.0, 9.0)));
}

TEST(Text, TheRotationHasNoEffectOnHits) {
    OpenText text;
    Place(text);
    text.SetAngle(90.0f);
    EXPECT_EQ(0.0f, text.HitTest(CGePoint2d(35, 15)));
    EXPECT_NE(0.0f, text.HitTest(CGePoint2d(12, 45)));
}

TEST(Text, BeforeTheFirstPaintTheBoxHasNoDepthBelowTheInsertionPoint) {
    OpenText text;
    text.SetPos(CGePoint2d(0, 20));
    EXPECT_EQ(0.0f, text.HitTest(CGePoint2d(10, 20)));
    EXPECT_EQ(0.0f, text.HitTest(CGePoint2d(10, 21.9)));
    EXPECT_NE(0.0f, text.HitTest(CGePoint2d(10, 19)));
}

TEST(Text, AHiddenTextHitsAsOneThousand) {
    OpenText text;
    Place(text);
    text.SetIsShow(0);
    EXPECT_EQ(1000.0f, text.HitTest(CGePoint2d(20, 15)));
    text.SetIsShow(1);
    text.m_IsDelete = 1;
    EXPECT_EQ(0.0f, text.HitTest(CGePoint2d(20, 15))) << "being erased plays no part";
}

TEST(Text, HitsWithoutBoundsDoNoHarm) {
    OpenText text;
    text.SetPos(CGePoint2d(1e300, -1e300));
    text.SetTextWide(kInfinity);
    text.m_MinCalHeight = kNaN;
    text.HitTest(CGePoint2d(0, 0));
    text.HitTest(CGePoint2d(std::nan(""), 1e300));
    text.SetPos(CGePoint2d(std::nan(""), std::nan("")));
    text.HitTest(CGePoint2d(0, 0));
    // All edges at INT_MIN, the bottom at 2 more: the sums wrap around, and the centre is (0, 1).
    EXPECT_EQ(5.0f, text.HitTest(CGePoint2d(3, 5)));
}

// ---- Grips ---------------------------------------------------------------------------------------------------------

TEST(Text, GripsAreTheCornersTurnedByTheExactAngle) {
    OpenText text;
    Place(text);
    text.SetAngle(45.9f);
    for (int mask : {0, 5, 15}) {
        CGePointArray grips;
        text.getGripPoints(grips, mask);
        ASSERT_EQ(4, grips.GetSize());
        ExpectGrip(grips[0], 10.0, 20.0);
        ExpectGrip(grips[1], 30.877383320647947, 41.543789492165274);
        ExpectGrip(grips[2], 15.745010531244073, 14.432697781160547);
        ExpectGrip(grips[3], 36.62239385189202, 35.97648727332582);
    }
}

TEST(Text, GripsTurnByTurnsOfTenDigitsAlsoAtAngleZero) {
    OpenText text;
    Place(text);
    CGePointArray grips;
    text.getGripPoints(grips, 5);
    // The full turn is short of the circle by 1.8e-10, so the far corner of an upright text is lifted by that much.
    EXPECT_NE(20.0, grips[1].y);
    ExpectGrip(grips[1], 40.0, 20.00000000538759);
    text.SetAngle(90.0f);
    grips.RemoveAll();
    text.getGripPoints(grips, 5);
    ExpectGrip(grips[1], 9.999999995959307, 50.0);
    ExpectGrip(grips[2], 18.0, 20.000000001077517);
    ExpectGrip(grips[3], 17.999999995959307, 50.00000000107752);
}

TEST(Text, OnlyTheFirstIndexMovesItsGrip) {
    OpenText text;
    Place(text);
    text.SetAngle(90.0f);
    text.moveGripPointsAt(Indices({0, 1}), CGeVector2d(1.5, -2));
    EXPECT_TRUE(text.GetPos() == CGePoint2d(11.5, 18));
    EXPECT_EQ(30.0f, text.GetTextWide());
    text.moveGripPointsAt(Indices({1}), CGeVector2d(2.25, 100));
    EXPECT_EQ(32.25f, text.GetTextWide()) << "by the x of the move, also for a turned text";
    EXPECT_TRUE(text.GetPos() == CGePoint2d(11.5, 18));
    for (int grip : {2, 3, 4, -1}) {
        text.moveGripPointsAt(Indices({grip}), CGeVector2d(50, 50));
    }
    EXPECT_EQ(32.25f, text.GetTextWide());
    EXPECT_TRUE(text.GetPos() == CGePoint2d(11.5, 18));
}

TEST(Text, AWidthIsAddedInDoubleAndStoredAsFloat) {
    OpenText text;
    text.SetTextWide(16777216.0f);
    text.moveGripPointsAt(Indices({1}), CGeVector2d(1.5, 0));
    EXPECT_EQ(16777218.0f, text.GetTextWide()) << "16777217.5 is nearer to 18 than to 16";
}

TEST(Text, NoIndexAtAllIsAnInvalidArgument) {
    OpenText text;
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { text.moveGripPointsAt(Indices({}), CGeVector2d(1, 1)); }));
}

TEST(Text, ATransformMovesTheInsertionPointAndNothingElse) {
    OpenText text;
    Place(text);
    text.SetAngle(30.0f);
    text.transformBy(CGeMatrix2d::scaling(3, CGePoint2d(0, 0)));
    EXPECT_TRUE(text.GetPos() == CGePoint2d(30, 60));
    EXPECT_EQ(20.0f, text.GetTextHeight());
    EXPECT_EQ(30.0f, text.GetTextWide());
    EXPECT_EQ(30.0f, text.m_Angle);
}

TEST(Text, HasNoFeetOfPerpendiculars) {
    OpenText text;
    CGePointArray feet;
    EXPECT_EQ(1, text.GetClosetPt(CGePoint2d(1, 1), feet));
    EXPECT_EQ(0, feet.GetSize());
}

// ---- Rows ----------------------------------------------------------------------------------------------------------

TEST(Text, ItsRowsFollowThoseOfEveryObject) {
    OpenText text;
    const Rows rows(text);
    const ExpectedRow expected[] = {
        {L"m_StartX", L"位置x坐标", VT_R8},    {L"m_StartY", L"位置y坐标", VT_R8},
        {L"m_Angle", L"旋转", VT_R4},          {L"m_TextWide", L"宽度", VT_R4},
        {L"m_Text", L"内容", VT_BSTR},         {L"m_fontFaceName", L"字体", VT_BSTR},
        {L"m_TextHeight", L"字体高度", VT_R4}, {L"m_TextHeight", L"文字宽高比", VT_R4},
    };
    ASSERT_EQ(12, rows.list.GetSize());
    EXPECT_EQ(CString(L"color"), rows.list.GetRow(0)->GetKey());
    for (int i = 0; i < 8; ++i) {
        const CSimpleProperty* row = rows.list.GetRow(4 + i);
        EXPECT_EQ(CString(expected[i].key), row->GetKey()) << i;
        EXPECT_EQ(CString(expected[i].label), row->GetLabel()) << i;
        EXPECT_EQ(CString(expected[i].label), row->m_Description) << i;
        EXPECT_EQ(expected[i].type, row->m_Type) << i;
        EXPECT_EQ(expected[i].type, row->GetValue().vt) << i;
    }
}

TEST(Text, ChangedRowsAreTakenBack) {
    OpenText text;
    Rows rows(text);
    rows.Change(0, COleVariant(static_cast<short>(9), VT_I2));
    rows.Change(4, COleVariant(1.25));
    rows.Change(5, COleVariant(-2.5));
    rows.Change(6, COleVariant(30.5f));
    rows.Change(7, COleVariant(77.0f));
    rows.Change(8, COleVariant(L"新", VT_BSTR));
    rows.Change(9, COleVariant(L"Arial", VT_BSTR));
    rows.Change(10, COleVariant(12.0f));
    text.SetProperty(rows.list);
    EXPECT_EQ(9, text.GetPenColorIndex());
    EXPECT_TRUE(text.GetPos() == CGePoint2d(1.25, -2.5));
    EXPECT_EQ(30.5f, text.m_Angle);
    EXPECT_EQ(77.0f, text.GetTextWide());
    EXPECT_EQ(CString(L"新"), text.GetText());
    EXPECT_EQ(CString(L"Arial"), text.m_fontFaceName);
    EXPECT_EQ(12.0f, text.GetTextHeight());
}

TEST(Text, UnchangedRowsAreNotTakenBack) {
    OpenText text;
    Rows rows(text);
    rows.list.GetRow(8)->m_Value = COleVariant(L"no", VT_BSTR);
    text.SetProperty(rows.list);
    EXPECT_TRUE(text.GetText().IsEmpty());
}

TEST(Text, TheRatioIsShownAndAnEditOfItChangesNothing) {
    OpenText text;
    text.SetTextRatio(0.5f);
    Rows rows(text);
    EXPECT_EQ(0.5f, rows.list.GetRow(11)->GetValue().fltVal) << "the row shows the ratio";
    rows.Change(11, COleVariant(2.0f));
    text.SetProperty(rows.list);
    EXPECT_EQ(0.5f, text.GetTextRatio());
    EXPECT_EQ(20.0f, text.GetTextHeight()) << "and its key belongs to the height, whose row is unchanged";
}

TEST(Text, ARowUnderTheRatiosOwnKeyIsTaken) {
    // No object makes such a row; a host may.
    OpenText text;
    CDrawableProperty list;
    auto* row = new CSimpleProperty(L"m_TextRatio", L"", L"", VT_R4, COleVariant(3.0f));
    KX_ADD_MEMORY(row);
    list.Add(row);
    row->m_Changed = 1;
    text.SetProperty(list);
    EXPECT_EQ(3.0f, text.GetTextRatio());
    list.Clear();
}
