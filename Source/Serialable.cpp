#include "Serialable.h"

#include "ObjectSchema.h"
#include "Truncate.h"

#include <cmath>

IMPLEMENT_SERIAL(CSerialable, CObject, VERSIONABLE_SCHEMA | 5)

namespace {

int PowerOfTen(int d) {
    return d == 0 ? 1 : Truncate(std::pow(10.0, d));
}

int Divide(int n, int unit) {
    if (unit == 0) {
        // Raises the processor's own exception explicitly: a division by zero is undefined behaviour for the compiler.
        ::RaiseException(EXCEPTION_INT_DIVIDE_BY_ZERO, 0, 0, nullptr);
        return 0;
    }
    return n / unit;
}

} // namespace

int CSerialable::GetNearInSteps(double x, int d) {
    const double floored = std::floor(x);
    const int whole = Truncate(floored);
    const int unit = PowerOfTen(d);
    const double f = (x - static_cast<double>(whole)) * static_cast<double>(unit);
    int n = Truncate(std::floor(f));
    if (f - static_cast<double>(n) >= 0.5) {
        n = WrapAdd(n, 1);
    }
    return WrapAdd(whole, Divide(n, unit));
}

// Compatibility 127: `GetNear_X` of a whole number is one more.
int CSerialable::GetNear_X(double x, int d) {
    const int whole = Truncate(std::floor(x));
    const int unit = PowerOfTen(d);
    const double f = (x - static_cast<double>(whole)) * static_cast<double>(unit);
    const int n = WrapAdd(Truncate(std::floor(f)), 1);
    return WrapAdd(whole, Divide(n, unit));
}

void CSerialable::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        ar << static_cast<int>(kCurrentSchema);
    } else if (IsCurrentForm(ar)) {
        int word = 0;
        ar >> word;
    }
}

bool CSerialable::IsCurrentForm(CArchive& ar) {
    const UINT schema = ObjectSchema(ar);
    return schema == kCurrentSchema || schema == kNoSchema;
}
