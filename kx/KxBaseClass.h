// Comparison of doubles with a tolerance, and splitting of strings.
// Layer 2: kx (uses afx).
#pragma once

#include <afxcoll.h>

#include "KXBaseOpr.h"

namespace kxcommon {

// -1, 0 or 1 as a is less than, equal to or greater than b; a difference below 1e-9 is equal. Infinities compare as
// such. A not-a-number is equal to another one and greater than every number.
NRKX_API int CompareDbl(double a, double b);

} // namespace kxcommon

namespace KxMfc {

// Functions on texts.
class NRKX_API Fun {
public:
    // Puts the pieces of text between the separators into pieces, whose former content is removed, and returns their
    // number, which is always one more than that of the separators found from the left. So neighbouring separators and
    // those at the ends give empty pieces, an empty text gives one empty piece, and an empty separator gives the text
    // whole.
    static int Split(const CString& text, const CString& separator, CStringArray& pieces);
};

} // namespace KxMfc
