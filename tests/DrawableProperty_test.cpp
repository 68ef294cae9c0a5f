// Keyed rows: look-up, ownership, and what is taken back.

#include "DrawableProperty.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

TEST(DrawableProperty, FindGivesTheFirstRowOfAKeyWithCase) {
    CDrawableProperty list;
    PropertyRows::AddShort(list, L"color", L"1", 1);
    PropertyRows::AddShort(list, L"color", L"2", 2);
    ASSERT_NE(nullptr, list.Find(L"color"));
    EXPECT_EQ(CString(L"1"), list.Find(L"color")->GetLabel());
    EXPECT_EQ(nullptr, list.Find(L"Color"));
    EXPECT_EQ(nullptr, list.Find(L""));
    list.Clear();
    EXPECT_EQ(nullptr, list.Find(L"color"));
}

TEST(DrawableProperty, ARowBehindAnotherOfItsKeyIsNeverTakenBack) {
    CDrawableProperty list;
    PropertyRows::AddLong(list, L"k", L"first", 1);
    PropertyRows::AddLong(list, L"k", L"second", 2);
    list.GetRow(1)->m_Changed = 1;
    int field = 77;
    PropertyRows::TakeLong(list, L"k", field);
    EXPECT_EQ(77, field);
    list.GetRow(0)->m_Changed = -1; // Nonzero counts.
    PropertyRows::TakeLong(list, L"k", field);
    EXPECT_EQ(1, field);
    list.Clear();
}

TEST(DrawableProperty, ClearFreesAndDeregistersEveryRow) {
    const auto before = CKXMemoryManager::Instance()->GetCount();
    CDrawableProperty list;
    PropertyRows::AddText(list, L"a", L"a", L"text");
    PropertyRows::AddEnum(list, L"b", L"b", L"b", VT_I2, COleVariant(static_cast<short>(1), VT_I2));
    EXPECT_EQ(before + 2, CKXMemoryManager::Instance()->GetCount());
    list.Clear();
    list.Clear();
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
    EXPECT_EQ(0, list.GetSize());
}

TEST(DrawableProperty, AFlagTakesTheSixteenBitValueWithItsSign) {
    CDrawableProperty list;
    PropertyRows::AddFlag(list, L"f", L"f", 1);
    EXPECT_EQ(VT_BOOL, list.GetRow(0)->m_Type);
    EXPECT_EQ(VT_I4, list.GetRow(0)->m_Value.vt);
    list.GetRow(0)->m_Value.ChangeType(VT_BOOL);
    list.GetRow(0)->m_Changed = 1;
    int field = 5;
    PropertyRows::TakeFlag(list, L"f", field);
    EXPECT_EQ(-1, field);
    list.Clear();
}

TEST(DrawableProperty, ALowByteIsTakenWithItsSign) {
    CDrawableProperty list;
    PropertyRows::AddLong(list, L"n", L"n", 256);
    list.GetRow(0)->m_Changed = 1;
    int field = 5;
    PropertyRows::TakeLowByte(list, L"n", field);
    EXPECT_EQ(0, field);
    list.GetRow(0)->m_Value = COleVariant(255L, VT_I4);
    PropertyRows::TakeLowByte(list, L"n", field);
    EXPECT_EQ(-1, field);
    list.Clear();
}

TEST(DrawableProperty, ATextRowWhoseVariantIsNoTextGivesAnEmptyOne) {
    CDrawableProperty list;
    PropertyRows::AddText(list, L"t", L"t", L"old");
    list.GetRow(0)->m_Value = COleVariant(12L, VT_I4);
    list.GetRow(0)->m_Changed = 1;
    CString field = L"kept?";
    PropertyRows::TakeText(list, L"t", field);
    EXPECT_TRUE(field.IsEmpty());
    list.Clear();
}

TEST(DrawableProperty, ARowWithoutAValueHoldsAnEmptyVariant) {
    const CSimpleProperty row(L"k", L"d", L"l", VT_R8);
    EXPECT_EQ(VT_EMPTY, row.GetValue().vt);
    EXPECT_EQ(VT_R8, row.m_Type);
    const CEnumProperty mark(L"k", L"d", L"l", VT_I2);
    EXPECT_TRUE(mark.IsKindOf(RUNTIME_CLASS(CSimpleProperty)));
}
