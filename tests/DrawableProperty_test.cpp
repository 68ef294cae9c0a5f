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

TEST(DrawableProperty, ANullRowOfAHostIsPassedOver) {
    CDrawableProperty list;
    list.Add(nullptr);
    PropertyRows::AddLong(list, L"k", L"label", 1);
    ASSERT_NE(nullptr, list.Find(L"k"));
    EXPECT_EQ(CString(L"label"), list.Find(L"k")->GetLabel());
    EXPECT_EQ(nullptr, list.Find(L"other"));
    EXPECT_EQ(nullptr, list.GetRow(0));
    list.Clear();
}

TEST(DrawableProperty, ASecondRowOfAKeyIsNeverTakenBack) {
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

// ---- Taking back ---------------------------------------------------------------------------------------------------

namespace {

// One field of each kind and a row for each, with other values.
struct EveryKind {
    EveryKind() {
        PropertyRows::AddText(list, L"text", L"text", L"新");
        PropertyRows::AddShort(list, L"short", L"short", -32768);
        PropertyRows::AddLong(list, L"long", L"long", 0x12345678);
        PropertyRows::AddFloat(list, L"float", L"float", 0.1f);
        PropertyRows::AddDouble(list, L"double", L"double", 0.1);
        PropertyRows::AddFlag(list, L"flag", L"flag", 1);
        PropertyRows::AddLong(list, L"byte", L"byte", 0x17F);
    }
    ~EveryKind() { list.Clear(); }
    void Take() {
        PropertyRows::TakeText(list, L"text", text);
        PropertyRows::TakeShort(list, L"short", number);
        PropertyRows::TakeLong(list, L"long", whole);
        PropertyRows::TakeFloat(list, L"float", single);
        PropertyRows::TakeDouble(list, L"double", real);
        PropertyRows::TakeFlag(list, L"flag", flag);
        PropertyRows::TakeLowByte(list, L"byte", byte);
    }
    void ExpectUntouched() const {
        EXPECT_EQ(CString(L"旧"), text);
        EXPECT_EQ(11, number);
        EXPECT_EQ(12, whole);
        EXPECT_EQ(13.5f, single);
        EXPECT_EQ(14.5, real);
        EXPECT_EQ(15, flag);
        EXPECT_EQ(16, byte);
    }
    CDrawableProperty list;
    CString text = L"旧";
    short number = 11;
    int whole = 12;
    float single = 13.5f;
    double real = 14.5;
    int flag = 15;
    int byte = 16;
};

} // namespace

TEST(DrawableProperty, UnchangedRowsLeaveEveryKindOfFieldAlone) {
    EveryKind every;
    every.Take();
    every.ExpectUntouched();
}

TEST(DrawableProperty, MissingRowsLeaveEveryKindOfFieldAlone) {
    EveryKind every;
    every.list.Clear();
    every.Take();
    every.ExpectUntouched();
}

TEST(DrawableProperty, ChangedRowsAreTakenIntoEveryKindOfField) {
    EveryKind every;
    for (int i = 0; i < every.list.GetSize(); ++i) {
        every.list.GetRow(i)->m_Changed = 1;
    }
    every.Take();
    EXPECT_EQ(CString(L"新"), every.text);
    EXPECT_EQ(-32768, every.number);
    EXPECT_EQ(0x12345678, every.whole);
    EXPECT_EQ(0.1f, every.single);
    EXPECT_EQ(0.1, every.real);
    EXPECT_EQ(1, every.flag);
    EXPECT_EQ(127, every.byte) << "the low byte of 0x17F";
    EXPECT_EQ(1, every.list.GetRow(0)->m_Changed) << "nothing resets the mark";
}

TEST(DrawableProperty, ATextOfTheListIsTakenWithItsZeroCharacters) {
    CDrawableProperty list;
    PropertyRows::AddText(list, L"t", L"t", L"");
    CSimpleProperty* row = list.GetRow(0);
    row->m_Changed = 1;
    CString field = L"old";
    PropertyRows::TakeText(list, L"t", field);
    EXPECT_TRUE(field.IsEmpty());
    ::SysFreeString(row->m_Value.bstrVal);
    row->m_Value.bstrVal = ::SysAllocStringLen(L"a\0b", 3);
    PropertyRows::TakeText(list, L"t", field);
    EXPECT_EQ(3, field.GetLength());
    ::SysFreeString(row->m_Value.bstrVal);
    row->m_Value.bstrVal = nullptr; // The null pointer is an empty text.
    PropertyRows::TakeText(list, L"t", field);
    EXPECT_TRUE(field.IsEmpty());
    list.Clear();
}

TEST(DrawableProperty, AValueIsTakenBitByBitWithoutConversion) {
    CDrawableProperty list;
    PropertyRows::AddFloat(list, L"f", L"f", 1.0f); // 0x3F800000
    list.GetRow(0)->m_Changed = 1;
    int whole = 0;
    PropertyRows::TakeLong(list, L"f", whole);
    EXPECT_EQ(0x3F800000, whole);
    list.Clear();
}

TEST(DrawableProperty, TheDestructorLeavesTheRowsToTheirOwner) {
    CKXMemoryManager* registry = CKXMemoryManager::Instance();
    const int before = registry->GetCount();
    CSimpleProperty* row = nullptr;
    {
        CDrawableProperty list;
        PropertyRows::AddLong(list, L"k", L"k", 7);
        row = list.GetRow(0);
    }
    EXPECT_EQ(before + 1, registry->GetCount());
    EXPECT_TRUE(registry->IsKnown(row));
    EXPECT_EQ(7, row->GetValue().lVal);
    CDrawableProperty owner;
    owner.Add(row);
    owner.Clear();
    EXPECT_EQ(before, registry->GetCount());
}
