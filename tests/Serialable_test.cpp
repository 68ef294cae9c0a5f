// The pixel rounding that drawings share, and the leading word of every stored object.

#include "Serialable.h"

#include <gtest/gtest.h>

#include <limits>

TEST(Serialable, RoundsToTheNearestPixelWithHalvesUpwards) {
    EXPECT_EQ(3, CSerialable::GetNear(2.5, 0));
    EXPECT_EQ(2, CSerialable::GetNear(2.49, 0));
    EXPECT_EQ(0, CSerialable::GetNear(-0.5, 0));
    EXPECT_EQ(-2, CSerialable::GetNear(-2.5, 0));
    EXPECT_EQ(-3, CSerialable::GetNear(-2.51, 0));
    EXPECT_EQ(7, CSerialable::GetNear(7.0, 0));
}

TEST(Serialable, RoundingToOneDecimalGivesWholeNumbersAndRoundsUpFrom95) {
    EXPECT_EQ(3, CSerialable::GetNear(2.96, 1));
    EXPECT_EQ(3, CSerialable::GetNear(2.95, 1));
    EXPECT_EQ(2, CSerialable::GetNear(2.94, 1));
    EXPECT_EQ(2, CSerialable::GetNear(2.5, 1));
}

TEST(Serialable, GetNearXOfAWholeNumberIsOneMore) {
    EXPECT_EQ(3, CSerialable::GetNear_X(2.0, 0));
    EXPECT_EQ(3, CSerialable::GetNear_X(2.7, 0));
    EXPECT_EQ(-2, CSerialable::GetNear_X(-2.5, 0));
    EXPECT_EQ(2, CSerialable::GetNear_X(2.3, 1));  // 2 + 4 / 10
    EXPECT_EQ(3, CSerialable::GetNear_X(2.95, 1)); // 2 + 10 / 10
}

TEST(Serialable, ValuesThatFitNoIntAreDefinedAndHarmless) {
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    // The whole part gives INT_MIN, and so does the fraction; their sum wraps to 0. Far on the right the fraction is
    // taken up by one, as what is left of it is no less than a half: INT_MIN + INT_MIN + 1 wraps to 1.
    EXPECT_EQ(0, CSerialable::GetNear(nan, 0));
    EXPECT_EQ(1, CSerialable::GetNear(inf, 0));
    EXPECT_EQ(0, CSerialable::GetNear(-inf, 0));
    EXPECT_EQ(1, CSerialable::GetNear(1e300, 0));
    EXPECT_EQ(0, CSerialable::GetNear(-1e300, 0));
}

TEST(Serialable, RoundingHoldsUpToTheLastInteger) {
    EXPECT_EQ(2147483647, CSerialable::GetNear(2147483647.0, 0));
    EXPECT_EQ(2147483647, CSerialable::GetNear(2147483646.5, 0));
    EXPECT_EQ(2147483646, CSerialable::GetNear(2147483646.25, 0));
    EXPECT_EQ(INT_MIN, CSerialable::GetNear(2147483647.5, 0)) << "a step further wraps";
    EXPECT_EQ(INT_MIN, CSerialable::GetNear(-2147483648.0, 0));
    EXPECT_EQ(INT_MIN, CSerialable::GetNear(-2147483647.75, 0));
    EXPECT_EQ(-2147483647, CSerialable::GetNear(-2147483647.5, 0));
}

TEST(Serialable, NextToAWholeNumberRoundingGoesToIt) {
    EXPECT_EQ(0, CSerialable::GetNear(-1e-20, 0)); // Its fraction, 1 - 1e-20, is a whole 1 in double.
    EXPECT_EQ(0, CSerialable::GetNear(1e-20, 0));
    EXPECT_EQ(0, CSerialable::GetNear(-0.0, 0));
    EXPECT_EQ(0, CSerialable::GetNear(0.49999999999999994, 0));
    EXPECT_EQ(-1, CSerialable::GetNear(-0.50000000000000011, 0));
}

namespace {

LONG CALLBACK NoteDivision(EXCEPTION_POINTERS* info) {
    if (info->ExceptionRecord->ExceptionCode == EXCEPTION_INT_DIVIDE_BY_ZERO) {
        ::SetEnvironmentVariable(L"NR_DIVISION_SEEN", L"1");
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

TEST(Serialable, ANegativeNumberOfDecimalsIsAnIntegerDivisionFault) {
    ::SetEnvironmentVariable(L"NR_DIVISION_SEEN", nullptr);
    void* handler = ::AddVectoredExceptionHandler(1, NoteDivision);
    CSerialable::GetNear(2.5, -1);
    ::RemoveVectoredExceptionHandler(handler);
    wchar_t seen[4] = {};
    EXPECT_EQ(1u, ::GetEnvironmentVariable(L"NR_DIVISION_SEEN", seen, 4));
    ::SetEnvironmentVariable(L"NR_DIVISION_SEEN", nullptr);
}

TEST(Serialable, StoresTheWordFiveAndCanBeMadeByName) {
    CRuntimeClass* record = CRuntimeClass::FromName(L"CSerialable");
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(0x80000005u, record->m_wSchema);
    CObject* object = record->CreateObject();
    ASSERT_NE(nullptr, object);
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        object->Serialize(ar);
    }
    delete object;
    EXPECT_EQ(4u, file.GetLength());
    BYTE bytes[4] = {};
    file.SeekToBegin();
    file.Read(bytes, 4);
    EXPECT_EQ(5, bytes[0]);
    EXPECT_EQ(0, bytes[1] | bytes[2] | bytes[3]);
}

TEST(Serialable, ReadsTheWordOnlyInTheCurrentForm) {
    const struct {
        UINT schema;
        ULONGLONG consumed;
    } cases[] = {{5, 4}, {0xFFFFFFFF, 4}, {0, 0}, {1, 0}, {4, 0}, {6, 0}};
    for (const auto& row : cases) {
        BYTE bytes[8] = {};
        CMemFile file;
        file.Attach(bytes, sizeof bytes);
        CArchive ar(&file, CArchive::load);
        ar.SetObjectSchema(row.schema);
        CSerialable object;
        object.Serialize(ar);
        ar.Flush(); // Gives the unread bytes back.
        EXPECT_EQ(row.consumed, file.GetPosition()) << "schema " << row.schema;
        ar.Close();
        file.Detach();
    }
}
