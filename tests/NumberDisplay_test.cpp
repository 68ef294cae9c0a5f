// The number display of CVectorGraphic: what counts as a number, how it is rounded, and when it shows as nothing.

#include "DrawGeometry.h"
#include "KXBaseOpr.h"
#include "VectorGraphic.h"
#include "support/DebugOutput.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

namespace {

class Display : public CVectorGraphic {
public:
    using CVectorGraphic::CStr;
    using CVectorGraphic::IsNumeric;
    using CVectorGraphic::Pow;

    CString Show(LPCTSTR value) {
        CString text(value);
        const CString shown = GetTextParm_ShowText(text);
        EXPECT_EQ(CString(value), text) << "the stored value stays";
        return shown;
    }
};

} // namespace

TEST(NumberDisplay, ADigitStringWithAnOptionalPointAndSignIsNumeric) {
    Display display;
    for (LPCTSTR text : {L"0", L"7", L"12", L"0.5", L"-3.", L"0.", L"5.2", L"10", L"100.001", L"-1", L"0.000", L"1."}) {
        EXPECT_EQ(1, display.IsNumeric(text)) << CStringA(CString(text)).GetString();
    }
}

TEST(NumberDisplay, LeadingZerosPlusSignsExponentsAndSecondPointsAreNotNumeric) {
    Display display;
    for (LPCTSTR text : {L"", L"007", L".5", L"1.2.3", L"1e3", L"+1", L"abc", L".", L"-.5", L"--1", L"1-", L"00",
                         L"-01", L"0.1.", L" 1", L"1 ", L"1,5", L"0x10", L"x"}) {
        EXPECT_EQ(0, display.IsNumeric(text)) << CStringA(CString(text)).GetString();
    }
}

TEST(NumberDisplay, OnlyTheDigitsZeroToNineAreDigits) {
    Display display;
    EXPECT_EQ(0, display.IsNumeric(L"１２")) << "full-width digits";
    EXPECT_EQ(0, display.IsNumeric(L"1\x0662")) << "an Arabic digit";
    EXPECT_EQ(0, display.IsNumeric(L"\xFF11"));
}

TEST(NumberDisplay, ALoneMinusSignAndMinusZeroAreNumericAndShowAsNothing) {
    Display display;
    display.SetNeedShowDecimal(0);
    EXPECT_EQ(1, display.IsNumeric(L"-"));
    EXPECT_EQ(1, display.IsNumeric(L"-0"));
    EXPECT_EQ(1, display.IsNumeric(L"-0."));
    EXPECT_EQ(CString(), display.Show(L"-"));
    EXPECT_EQ(CString(), display.Show(L"-0"));
}

TEST(NumberDisplay, ValuesShowWithOneDecimalRoundedHalfUp) {
    Display display;
    display.SetNeedShowDecimal(0);
    EXPECT_EQ(CString(L"12.5"), display.Show(L"12.50"));
    EXPECT_EQ(CString(L"12"), display.Show(L"12"));
    EXPECT_EQ(CString(L"12.0"), display.Show(L"12.04")) << "the fraction before rounding decides on the decimal";
    EXPECT_EQ(CString(L"3.0"), display.Show(L"2.96"));
    EXPECT_EQ(CString(L"12"), display.Show(L"12.00001"));
    EXPECT_EQ(CString(L"12.3"), display.Show(L"12.25")) << "half up; 12.25 is exact in binary";
    EXPECT_EQ(CString(L"1000000.1"), display.Show(L"1000000.125"));
}

TEST(NumberDisplay, NegativeValuesRoundTowardsTheLargerOne) {
    Display display;
    display.SetNeedShowDecimal(0);
    EXPECT_EQ(CString(L"-2.5"), display.Show(L"-2.5"));
    EXPECT_EQ(CString(L"-2.2"), display.Show(L"-2.25")) << "floor -3, fraction 0.75, 7.5 tenths become 8";
    EXPECT_EQ(CString(L"-3"), display.Show(L"-3."));
    EXPECT_EQ(CString(L"-2.0"), display.Show(L"-2.04"));
}

TEST(NumberDisplay, WhatComesOutAsZeroShowsAsNothingExceptTheStringZero) {
    Display display;
    display.SetNeedShowDecimal(0);
    EXPECT_EQ(CString(L"0"), display.Show(L"0"));
    EXPECT_EQ(CString(), display.Show(L"0.0"));
    EXPECT_EQ(CString(), display.Show(L"0."));
    EXPECT_EQ(CString(), display.Show(L"0.04"));
    EXPECT_EQ(CString(), display.Show(L"-0.04"));
    EXPECT_EQ(CString(L"0.1"), display.Show(L"0.05"));
}

TEST(NumberDisplay, AFractionBelowATenThousandthCountsAsNone) {
    Display display;
    display.SetNeedShowDecimal(0);
    EXPECT_EQ(CString(L"12"), display.Show(L"12.00009"));
    EXPECT_EQ(CString(L"12.0"), display.Show(L"12.00011"));
    EXPECT_EQ(CString(L"-2"), display.Show(L"-1.99995")) << "the floor is -2";
    EXPECT_EQ(CString(L"-2.0"), display.Show(L"-2.00005")) << "the floor is -3";
}

TEST(NumberDisplay, AResultBelowATenThousandthIsZero) {
    Display display;
    EXPECT_EQ(CString(L"0.0002"), display.CStr(0.0002, 4));
    EXPECT_EQ(CString(L"0.00011"), display.CStr(0.00011, 5));
    EXPECT_EQ(CString(), display.CStr(0.00009, 5));
}

TEST(NumberDisplay, TheCheckRunsUnderAStopwatchAndBeforeTheDecimalsAreAskedFor) {
    Display display; // With decimals, as at the start: the check has no effect, but it runs.
    const DebugOutput output;
    CScopeTimer::Enable(1);
    display.Show(L"12.50");
    CScopeTimer::Enable(0);
    EXPECT_EQ(0u, output.Text().find(L"IsNumeric(const CString & sData): "));
}

TEST(NumberDisplay, WhatIsNoNumberShowsUnchanged) {
    Display display;
    display.SetNeedShowDecimal(0);
    EXPECT_EQ(CString(L"abc"), display.Show(L"abc"));
    EXPECT_EQ(CString(L"007"), display.Show(L"007"));
    EXPECT_EQ(CString(), display.Show(L""));
    EXPECT_EQ(CString(L"参数"), display.Show(L"参数"));
}

TEST(NumberDisplay, WithDecimalsEverythingShowsUnchangedWhichIsHowAPainterBegins) {
    Display display;
    EXPECT_EQ(CString(L"12.50"), display.Show(L"12.50"));
    EXPECT_EQ(CString(L"0.04"), display.Show(L"0.04"));
    display.SetNeedShowDecimal(0);
    EXPECT_EQ(CString(L"12.5"), display.Show(L"12.50"));
    display.SetNeedShowDecimal(-5);
    EXPECT_EQ(CString(L"12.50"), display.Show(L"12.50"));
}

TEST(NumberDisplay, PowersMultiplyByTenWhateverTheBase) {
    Display display;
    double result = 77.0;
    EXPECT_FALSE(display.Pow(10.0, -1, result));
    EXPECT_EQ(77.0, result) << "untouched";
    EXPECT_TRUE(display.Pow(10.0, 0, result));
    EXPECT_EQ(1.0, result);
    EXPECT_TRUE(display.Pow(0.0, 0, result));
    EXPECT_EQ(0.0, result);
    EXPECT_TRUE(display.Pow(10.0, 3, result));
    EXPECT_EQ(1000.0, result);
    EXPECT_TRUE(display.Pow(2.0, 3, result));
    EXPECT_EQ(200.0, result) << "2 by 10 by 10, not 8";
}

TEST(NumberDisplay, MoreDecimalsRoundAtTheirOwnPlace) {
    Display display;
    EXPECT_EQ(CString(L"1.24"), display.CStr(1.235, 2)) << "the nearest double lies above";
    EXPECT_EQ(CString(L"1.125"), display.CStr(1.125, 3));
    EXPECT_EQ(CString(L"3"), display.CStr(3.0, 2));
    EXPECT_EQ(CString(L"3"), display.CStr(2.5, 0));
}

TEST(NumberDisplay, ANegativeNumberOfDecimalsCountsAsNone) {
    Display display;
    EXPECT_EQ(CString(L"3"), display.CStr(2.5, -1)) << "half up";
    EXPECT_EQ(CString(L"-2"), display.CStr(-2.25, -3)) << "floor -3, fraction 0.75, which is one whole";
    EXPECT_EQ(CString(L"7"), display.CStr(7.0, INT_MIN));
    EXPECT_EQ(CString(), display.CStr(0.25, -1));
}

TEST(NumberDisplay, ValuesBeyondAllBoundsDoNoHarm) {
    Display display;
    display.SetNeedShowDecimal(0);
    display.CStr(std::numeric_limits<double>::infinity(), 1);
    display.CStr(std::numeric_limits<double>::quiet_NaN(), 1);
    EXPECT_EQ(301, display.CStr(1e300, 1).GetLength());
    // A hundred thousand digits: an infinity for the runtime.
    const CString digits(L'9', 100000);
    EXPECT_EQ(1, display.IsNumeric(digits));
    CString copy = digits;
    EXPECT_LT(display.GetTextParm_ShowText(copy).GetLength(), 100);
    CString large(L'1', 40);
    EXPECT_EQ(40, display.GetTextParm_ShowText(large).GetLength());
}

TEST(NumberDisplay, ADrawingContextWithoutAPainterShowsTheValueUnchanged) {
    CDrawGeometry alone(nullptr, nullptr);
    CString value(L"12.04");
    EXPECT_EQ(value, alone.GetTextParm_ShowText(value));
}
