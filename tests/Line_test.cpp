// CLine and the attributes it has from CDrawable: geometry, grips, hits, rows. Drawing is in LineDraw_test.cpp.

#include "Line.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

void Set(CLine& line, double x1, double y1, double x2, double y2) {
    line.SetStartPoint(CGePoint2d(x1, y1));
    line.SetEndPoint(CGePoint2d(x2, y2));
}

void ExpectEnds(CLine& line, double x1, double y1, double x2, double y2) {
    EXPECT_EQ(x1, line.GetStartPoint().x);
    EXPECT_EQ(y1, line.GetStartPoint().y);
    EXPECT_EQ(x2, line.GetEndPoint().x);
    EXPECT_EQ(y2, line.GetEndPoint().y);
}

struct Indices : CIndexArray {
    Indices(std::initializer_list<int> values) {
        for (int value : values) {
            Add(value);
        }
    }
};

} // namespace

// ---- Attributes ----------------------------------------------------------------------------------------------------

TEST(Drawable, ANewObjectFollowsItsLayerIsShownSelectableAndNormal) {
    CDrawable object;
    EXPECT_EQ(static_cast<short>(0xFFFF), object.GetPenColorIndex());
    EXPECT_EQ(0u, object.GetPenColor());
    EXPECT_EQ(-1, object.GetColorBrush());
    EXPECT_EQ(-1.0f, object.GetLineWide());
    EXPECT_EQ(-1, object.GetLineType());
    EXPECT_EQ(1.0f, object.GetScale());
    EXPECT_EQ(0, object.GetLayer());
    EXPECT_EQ(0, object.GetID());
    EXPECT_EQ(0, object.IsDelete());
    EXPECT_EQ(1, object.GetIsShow());
    EXPECT_EQ(CDrawable::Normal, object.GetDrawState());
    EXPECT_NE(0, object.isCanSelect());
}

TEST(Drawable, AnExplicitColourSetsItsIndex) {
    CDrawable object;
    object.SetPenColor(0x00123456);
    EXPECT_EQ(-2, object.GetPenColorIndex());
    EXPECT_EQ(0x00123456u, object.GetPenColor());
    object.SetPenColorIndex(-1);
    EXPECT_EQ(0x00123456u, object.GetPenColor()) << "by layer answers with the stored colour, not the layer's";
    object.SetPenColorIndex(9);
    EXPECT_EQ(0x00FF0000u, object.GetPenColor());
    object.SetPenColorIndex(-3); // 65533 unsigned: an index outside the table.
    EXPECT_EQ(0u, object.GetPenColor());
}

TEST(Drawable, SelectingEndsDraggingAndDeselectingLeadsToNormal) {
    CDrawable object;
    object.SetDrawState(CDrawable::Dragging);
    EXPECT_FALSE(object.IsSelected());
    object.SetSelected(0);
    EXPECT_EQ(CDrawable::Normal, object.GetDrawState());
    object.SetSelected(-7);
    EXPECT_EQ(CDrawable::Selected, object.GetDrawState());
    EXPECT_TRUE(object.IsSelected());
}

TEST(Drawable, TheBaseHasNoExtentNoGripsAndAFixedDistance) {
    CDrawable object;
    CGePoint2d min(1, 2);
    CGePoint2d max(3, 4);
    EXPECT_EQ(0, object.GetRect(nullptr, min, max));
    EXPECT_EQ(0.0, min.x + min.y + max.x + max.y);
    CGePointArray points;
    object.getGripPoints(points, 7);
    EXPECT_EQ(1, object.GetClosetPt(CGePoint2d(), points));
    EXPECT_EQ(0, points.GetSize());
    EXPECT_EQ(100.0f, object.HitTest(CGePoint2d()));
    EXPECT_EQ(CString(L"对象"), object.GetName());
    object.moveGripPointsAt(Indices{}, CGeVector2d(1, 1)); // Does not look at the array.
}

TEST(Drawable, ItsClassesCanBeMadeByNameInTheCurrentSchema) {
    for (LPCTSTR name : {L"CDrawable", L"CLine", L"CLayerInfo", L"CLayerManager"}) {
        CRuntimeClass* record = CRuntimeClass::FromName(name);
        ASSERT_NE(nullptr, record) << name;
        EXPECT_EQ(0x80000005u, record->m_wSchema) << name;
        std::unique_ptr<CObject> object(record->CreateObject());
        ASSERT_NE(nullptr, object) << name;
        EXPECT_EQ(record, object->GetRuntimeClass()) << name;
    }
    EXPECT_TRUE(CLine::classCLine.IsDerivedFrom(RUNTIME_CLASS(CSerialable)));
    EXPECT_EQ(&CLine::classCLine, CLine::GetThisClass());
}

// ---- Geometry ------------------------------------------------------------------------------------------------------

TEST(Line, ANewLineIsAPointAtTheOriginWithoutTags) {
    CLine line;
    ExpectEnds(line, 0, 0, 0, 0);
    EXPECT_TRUE(line.GetParmName().IsEmpty());
    EXPECT_TRUE(line.GetMsgInfo().IsEmpty());
    EXPECT_EQ(0, line.GetLockMode());
    EXPECT_EQ(CString(L"直线"), line.GetName());
}

TEST(Line, PointsOfFloatsAreWidened) {
    CLine line;
    line.SetStartPoint(Gdiplus::PointF(0.1f, 2.0f));
    line.SetEndPoint(Gdiplus::PointF(-0.1f, 3.5f));
    EXPECT_EQ(0.100000001490116119384765625, line.GetStartPoint().x);
    EXPECT_EQ(-0.100000001490116119384765625, line.GetEndPoint().x);
    EXPECT_EQ(3.5, line.GetEndPoint().y);
}

TEST(Line, GripsAreStartMiddleAndEndUnderEveryMask) {
    CLine line;
    Set(line, 1, 2, 5, -4);
    for (int mask : {0, 1, 2, 4, 5, 15}) {
        CGePointArray grips;
        line.getGripPoints(grips, mask);
        ASSERT_EQ(3, grips.GetSize());
        EXPECT_TRUE(grips[0] == CGePoint2d(1, 2));
        EXPECT_TRUE(grips[1] == CGePoint2d(3, -1));
        EXPECT_TRUE(grips[2] == CGePoint2d(5, -4));
        EXPECT_EQ(1, grips[1].type);
    }
}

TEST(Line, OnlyTheFirstIndexMovesItsGrip) {
    CLine line;
    Set(line, 0, 0, 10, 0);
    line.moveGripPointsAt(Indices{2, 0}, CGeVector2d(1, 2));
    ExpectEnds(line, 0, 0, 11, 2);
    line.moveGripPointsAt(Indices{0}, CGeVector2d(-1, 0));
    ExpectEnds(line, -1, 0, 11, 2);
    line.moveGripPointsAt(Indices{1}, CGeVector2d(1, 1));
    ExpectEnds(line, 0, 1, 12, 3);
    line.moveGripPointsAt(Indices{3}, CGeVector2d(100, 100));
    line.moveGripPointsAt(Indices{-1}, CGeVector2d(100, 100));
    ExpectEnds(line, 0, 1, 12, 3);
}

TEST(Line, NoIndexAtAllIsAnInvalidArgument) {
    CLine line;
    bool thrown = false;
    try {
        line.moveGripPointsAt(Indices{}, CGeVector2d(1, 1));
    } catch (CInvalidArgException* e) {
        thrown = true;
        e->Delete();
    }
    EXPECT_TRUE(thrown);
}

TEST(Line, ATransformMovesBothEnds) {
    CLine line;
    Set(line, 1, 0, 2, 0);
    line.transformBy(CGeMatrix2d::scaling(3, CGePoint2d(0, 2)));
    ExpectEnds(line, 3, -4, 6, -4); // Three times (1, -2) and (2, -2), from (0, 2).
}

TEST(Line, TheExtentIsOrderedAndAHiddenLineHasNone) {
    CLine line;
    Set(line, 5, -1, -2, 7);
    CGePoint2d min;
    CGePoint2d max;
    ASSERT_EQ(1, line.GetRect(nullptr, min, max));
    EXPECT_TRUE(min == CGePoint2d(-2, -1));
    EXPECT_TRUE(max == CGePoint2d(5, 7));
    line.SetIsShow(0);
    min.SetPoint(8, 8);
    EXPECT_EQ(0, line.GetRect(nullptr, min, max));
    EXPECT_TRUE(min == CGePoint2d(8, 8)) << "left as it was";
}

TEST(Line, TheDistanceIsToTheSegmentAndNeverNegative) {
    CLine line;
    Set(line, 0, 0, 10, 0);
    EXPECT_EQ(3.0f, line.HitTest(CGePoint2d(5, 3)));
    EXPECT_EQ(3.0f, line.HitTest(CGePoint2d(5, -3)));
    EXPECT_EQ(5.0f, line.HitTest(CGePoint2d(13, 4))) << "beyond the end: to the end";
    EXPECT_EQ(5.0f, line.HitTest(CGePoint2d(-3, 4)));
    EXPECT_EQ(2.0f, line.HitTest(CGePoint2d(10, 2))) << "level with the end: the perpendicular";
    EXPECT_EQ(0.0f, line.HitTest(CGePoint2d(0, 0))) << "on an end the direction has no length, and no test fires";
    EXPECT_EQ(0.0f, line.HitTest(CGePoint2d(10, 0)));
}

TEST(Line, TheDistanceIsPositiveOnTheLeft) {
    class Measured : public CLine {
    public:
        using CLine::DistanceLine;
    };
    const CGePoint2d a(0, 0);
    const CGePoint2d b(10, 0);
    EXPECT_EQ(3.0f, Measured::DistanceLine(a, b, CGePoint2d(5, 3)));
    EXPECT_EQ(-3.0f, Measured::DistanceLine(a, b, CGePoint2d(5, -3)));
    EXPECT_EQ(-3.0f, Measured::DistanceLine(b, a, CGePoint2d(5, 3)));
    EXPECT_EQ(-2.0f, Measured::DistanceLine(a, b, CGePoint2d(10, -2))) << "level with the end: still the perpendicular";
    EXPECT_EQ(-2.0f, Measured::DistanceLine(a, b, CGePoint2d(0, -2))) << "level with the start: the same";
    EXPECT_EQ(5.0f, Measured::DistanceLine(a, b, CGePoint2d(13, -4))) << "to an end there is no side";
    EXPECT_EQ(5.0f, Measured::DistanceLine(a, b, CGePoint2d(-3, -4)));
}

TEST(Line, TheMiddleDoesNotOverflow) {
    CLine line;
    Set(line, 1.5e308, -1.5e308, 1.7e308, -1.7e308);
    CGePointArray grips;
    line.getGripPoints(grips, 5);
    ASSERT_EQ(3, grips.GetSize());
    EXPECT_EQ(1.6e308, grips[1].x);
    EXPECT_EQ(-1.6e308, grips[1].y);
}

TEST(Line, ALineWithoutLengthHasNoDistance) {
    CLine line;
    Set(line, 1, 1, 1, 1);
    EXPECT_TRUE(std::isnan(line.HitTest(CGePoint2d(4, 5))));
}

TEST(Line, AHiddenLineHitsAsOneHundred) {
    CLine line;
    Set(line, 0, 0, 10, 0);
    line.SetIsShow(0);
    EXPECT_EQ(100.0f, line.HitTest(CGePoint2d(5, 0)));
}

TEST(Line, TheFootIsOnTheInfiniteLineAndMarkedAsOne) {
    CLine line;
    Set(line, 0, 0, 10, 10);
    CGePointArray feet;
    EXPECT_EQ(1, line.GetClosetPt(CGePoint2d(30, 10), feet));
    EXPECT_EQ(1, line.GetClosetPt(CGePoint2d(0, 10), feet));
    ASSERT_EQ(2, feet.GetSize());
    EXPECT_DOUBLE_EQ(20.0, feet[0].x) << "outside the segment";
    EXPECT_DOUBLE_EQ(20.0, feet[0].y);
    EXPECT_DOUBLE_EQ(5.0, feet[1].x);
    EXPECT_DOUBLE_EQ(5.0, feet[1].y);
    EXPECT_EQ(8, feet[0].type);
}

TEST(Line, TheFootOnALineWithoutLengthIsNoNumber) {
    CLine line;
    Set(line, 1, 1, 1, 1);
    CGePointArray feet;
    EXPECT_EQ(1, line.GetClosetPt(CGePoint2d(3, 3), feet));
    ASSERT_EQ(1, feet.GetSize());
    EXPECT_TRUE(std::isnan(feet[0].x));
}

// ---- Rows ----------------------------------------------------------------------------------------------------------

namespace {

struct Rows {
    explicit Rows(CDrawable& object) { object.GetProperty(list); }
    ~Rows() { list.Clear(); }
    void Change(int index, const COleVariant& value) {
        CSimpleProperty* row = list.GetRow(index);
        row->m_Value = value;
        row->m_Changed = 1;
    }
    CDrawableProperty list;
};

} // namespace

TEST(Line, RowsComeInOrderWithTheirKeysLabelsTypesAndValues) {
    class Varied : public CLine {
    public:
        Varied() { m_LineWide = 2.5f; }
    } line;
    line.SetPenColorIndex(-7);
    line.SetLineType(3);
    line.SetLayer(4);
    Set(line, 5.5, 6.5, 7.5, 8.5);
    line.SetParmName(L"名");
    line.SetMsgInfo(L"info");
    line.SetLockMode(-9);
    const Rows rows(line);
    const struct {
        LPCTSTR key;
        LPCTSTR label;
        LPCTSTR description;
        VARTYPE type;
        bool isEnum;
    } expected[] = {
        {L"color", L"颜色", L"指定对象的颜色", VT_I2, false},
        {L"LineWide", L"线宽", L"指定线宽度", VT_R4, false},
        {L"LineType", L"线型", L"指定线型", VT_I2, true},
        {L"LineType", L"图层", L"指定图层", VT_I2, true},
        {L"m_X1", L"起点x坐标", L"起点x坐标", VT_R8, false},
        {L"m_Y1", L"起点y坐标", L"起点y坐标", VT_R8, false},
        {L"m_X2", L"终点x坐标", L"终点x坐标", VT_R8, false},
        {L"m_Y2", L"终点y坐标", L"终点y坐标", VT_R8, false},
        {L"m_strParmName", L"参数名称", L"参数名称", VT_BSTR, false},
        {L"m_strMsgInfo", L"扩展信息", L"扩展信息", VT_BSTR, false},
        {L"m_LockBojZoom", L"是否锁定线宽", L"是否锁定线宽", VT_I4, false},
    };
    ASSERT_EQ(11, rows.list.GetSize());
    for (int i = 0; i < 11; ++i) {
        const CSimpleProperty* row = rows.list.GetRow(i);
        EXPECT_EQ(CString(expected[i].key), row->GetKey()) << i;
        EXPECT_EQ(CString(expected[i].label), row->GetLabel()) << i;
        EXPECT_EQ(CString(expected[i].description), row->m_Description) << i;
        EXPECT_EQ(expected[i].type, row->m_Type) << i;
        EXPECT_EQ(expected[i].type, row->GetValue().vt) << i;
        EXPECT_EQ(expected[i].isEnum, row->IsKindOf(RUNTIME_CLASS(CEnumProperty)) != FALSE) << i;
        EXPECT_EQ(0, row->m_Changed) << i;
    }
    const auto value = [&](int i) -> const COleVariant& { return rows.list.GetRow(i)->m_Value; };
    EXPECT_EQ(-7, value(0).iVal);
    EXPECT_EQ(2.5f, value(1).fltVal);
    EXPECT_EQ(3, value(2).iVal);
    EXPECT_EQ(4, value(3).iVal);
    EXPECT_EQ(5.5, value(4).dblVal);
    EXPECT_EQ(6.5, value(5).dblVal);
    EXPECT_EQ(7.5, value(6).dblVal);
    EXPECT_EQ(8.5, value(7).dblVal);
    EXPECT_EQ(CString(L"名"), CString(value(8).bstrVal));
    EXPECT_EQ(CString(L"info"), CString(value(9).bstrVal));
    EXPECT_EQ(-9, value(10).lVal);
}

namespace {

// Every row of a line with a value that a new line has nowhere.
void GiveOtherValues(Rows& rows) {
    const COleVariant values[] = {
        COleVariant(static_cast<short>(9), VT_I2),
        COleVariant(2.0f),
        COleVariant(static_cast<short>(3), VT_I2),
        COleVariant(static_cast<short>(4), VT_I2),
        COleVariant(11.5),
        COleVariant(12.5),
        COleVariant(13.5),
        COleVariant(14.5),
        COleVariant(L"名", VT_BSTR),
        COleVariant(L"info", VT_BSTR),
        COleVariant(1L, VT_I4),
    };
    for (int i = 0; i < 11; ++i) {
        rows.list.GetRow(i)->m_Value = values[i];
    }
}

} // namespace

TEST(Line, ChangedRowsAreTakenBack) {
    CLine line;
    line.SetLayer(6);
    Rows rows(line);
    GiveOtherValues(rows);
    for (int i = 0; i < rows.list.GetSize(); ++i) {
        rows.list.GetRow(i)->m_Changed = 1;
    }
    line.SetProperty(rows.list);
    EXPECT_EQ(9, line.GetPenColorIndex());
    EXPECT_EQ(2.0f, line.GetLineWide());
    EXPECT_EQ(3, line.GetLineType());
    EXPECT_EQ(0, line.GetLayer()) << "the low half of the width's bits, and not the 4 of its own row";
    ExpectEnds(line, 11.5, 12.5, 13.5, 14.5);
    EXPECT_EQ(CString(L"名"), line.GetParmName());
    EXPECT_EQ(CString(L"info"), line.GetMsgInfo());
    EXPECT_EQ(1, line.GetLockMode());
}

TEST(Line, OneChangedRowIsTakenBackAlone) {
    for (int changed = 4; changed < 11; ++changed) {
        SCOPED_TRACE(changed);
        CLine line;
        line.SetLayer(6);
        Rows rows(line);
        GiveOtherValues(rows);
        rows.list.GetRow(changed)->m_Changed = 1;
        line.SetProperty(rows.list);
        EXPECT_EQ(-1, line.GetPenColorIndex());
        EXPECT_EQ(-1.0f, line.GetLineWide());
        EXPECT_EQ(-1, line.GetLineType());
        EXPECT_EQ(6, line.GetLayer());
        ExpectEnds(line, changed == 4 ? 11.5 : 0, changed == 5 ? 12.5 : 0, changed == 6 ? 13.5 : 0,
                   changed == 7 ? 14.5 : 0);
        EXPECT_EQ(changed == 8, !line.GetParmName().IsEmpty());
        EXPECT_EQ(changed == 9, !line.GetMsgInfo().IsEmpty());
        EXPECT_EQ(changed == 10 ? 1 : 0, line.GetLockMode());
    }
}

TEST(Line, UnchangedRowsAreNotTakenBack) {
    CLine line;
    line.SetLayer(6);
    Set(line, 1, 2, 3, 4);
    Rows rows(line);
    GiveOtherValues(rows);
    line.SetProperty(rows.list);
    EXPECT_EQ(-1, line.GetPenColorIndex());
    EXPECT_EQ(-1.0f, line.GetLineWide());
    EXPECT_EQ(-1, line.GetLineType());
    EXPECT_EQ(6, line.GetLayer());
    ExpectEnds(line, 1, 2, 3, 4);
    EXPECT_TRUE(line.GetParmName().IsEmpty());
    EXPECT_TRUE(line.GetMsgInfo().IsEmpty());
    EXPECT_EQ(0, line.GetLockMode());
}

TEST(Line, AnEditOfTheLayerRowChangesNothing) {
    CLine line;
    line.SetLayer(2);
    line.SetLineType(1);
    Rows rows(line);
    rows.Change(3, COleVariant(static_cast<short>(5), VT_I2));
    line.SetProperty(rows.list);
    EXPECT_EQ(2, line.GetLayer());
    EXPECT_EQ(1, line.GetLineType());
}

TEST(Line, AnEditOfTheWidthAlsoWritesTheLowHalfOfItsBitsIntoTheLayer) {
    CLine line;
    line.SetLayer(2);
    {
        Rows rows(line);
        rows.Change(1, COleVariant(2.0f));
        line.SetProperty(rows.list);
    }
    EXPECT_EQ(2.0f, line.GetLineWide());
    EXPECT_EQ(0, line.GetLayer());
    Rows rows(line);
    rows.Change(1, COleVariant(0.1f)); // 0x3DCCCCCD
    line.SetProperty(rows.list);
    EXPECT_EQ(static_cast<short>(0xCCCD), line.GetLayer());
}
