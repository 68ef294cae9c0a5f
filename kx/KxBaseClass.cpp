#include "KxBaseClass.h"

#include <cmath>

namespace {

const double Tolerance = 1e-9;

} // namespace

namespace kxcommon {

int CompareDbl(double a, double b) {
    const bool noA = std::isnan(a);
    const bool noB = std::isnan(b);
    if (noA || noB) {
        return static_cast<int>(noA) - static_cast<int>(noB);
    }
    // Equal infinities are compared first, because their difference is not-a-number.
    if (a == b || std::fabs(a - b) < Tolerance) {
        return 0;
    }
    return a < b ? -1 : 1;
}

} // namespace kxcommon

namespace KxMfc {

int Fun::Split(const CString& text, const CString& separator, CStringArray& pieces) {
    pieces.RemoveAll();
    int start = 0;
    if (!separator.IsEmpty()) {
        for (int at = text.Find(separator, start); at >= 0; at = text.Find(separator, start)) {
            pieces.Add(text.Mid(start, at - start));
            start = at + separator.GetLength();
        }
    }
    pieces.Add(text.Mid(start));
    return static_cast<int>(pieces.GetSize());
}

} // namespace KxMfc
