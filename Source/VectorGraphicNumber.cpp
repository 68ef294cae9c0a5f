// CVectorGraphic: the number display, which shows numeric values with one decimal at most. Layer 7: painter.

#include "VectorGraphic.h"

#include "Truncate.h"

#include <KXBaseOpr.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cwchar>

namespace {

constexpr int kDecimals = 1;
constexpr double kShownAsNothing = 0.0001; // Below this a value counts as zero, and so does a fraction.

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

} // namespace

CString CVectorGraphic::GetTextParm_ShowText(CString& s) {
    if (IsNumeric(s) == 0) {
        return s;
    }
    if (s == L"0" || m_NeedShowDecimal != 0) {
        return s;
    }
    return CStr(_wtof(s), kDecimals);
}

int CVectorGraphic::IsNumeric(const CString& s) {
    const CScopeTimer timer("IsNumeric(const CString & sData)");
    const int length = s.GetLength();
    const wchar_t* text = s;
    if (length == 0) {
        return 0;
    }
    if (length == 1 && IsDigit(text[0])) {
        return 1;
    }
    // A single minus sign passes, because no later character fails; CStr turns it into the empty string.
    const int start = text[0] == L'-' ? 1 : 0;
    int dots = 0;
    for (int i = start; i < length; ++i) {
        const wchar_t c = text[i];
        if (i == start) {
            if (c == L'0') {
                // After a leading zero nothing or a point may follow.
                if (i + 1 < length) {
                    if (text[i + 1] != L'.') {
                        return 0;
                    }
                    ++dots;
                    ++i;
                }
            } else if (!IsDigit(c)) {
                return 0;
            }
        } else if (c == L'.' && dots == 0) {
            ++dots;
        } else if (!IsDigit(c)) {
            return 0;
        }
    }
    return 1;
}

CString CVectorGraphic::CStr(double value, int decimals) {
    decimals = std::max(decimals, 0);
    const double whole = std::floor(value);
    const double frac = value - whole;
    double factor = 0.0;
    Pow(10.0, decimals, factor);
    const double scaled = frac * factor;
    int n = Truncate(std::floor(scaled));
    // The fraction above the floor is rounded half up, so that halves of negative values go towards zero: -2.25 becomes
    // -2.2.
    if (scaled - static_cast<double>(n) >= 0.5) {
        n = WrapAdd(n, 1);
    }
    const double r = static_cast<double>(n) / factor + whole;
    if (std::fabs(r) < kShownAsNothing) {
        return CString();
    }
    CString format = L"%.0f";
    // The fraction before rounding decides whether there is a decimal: 12.04 becomes "12.0" and 12 becomes "12".
    if (!(frac < kShownAsNothing)) {
        format.Format(L"%d", decimals);
        format = L"%." + format + L"f";
    }
    CString result;
    result.Format(format, r);
    return result;
}

// Compatibility 61: powers multiply by ten whatever the base.
bool CVectorGraphic::Pow(double base, int n, double& result) {
    if (n < 0) {
        return false;
    }
    if (n == 0) {
        result = base == 0.0 ? 0.0 : 1.0;
        return true;
    }
    result = base;
    for (int i = 1; i < n; ++i) {
        result *= 10.0;
    }
    return true;
}
