// CSerialable: the root of everything that is stored in a drawing, and the pixel rounding that most objects share.
// Layer 5: drawables.
#pragma once

#include "VectorViewApi.h"

// The schema in each class record. Objects of schemas 1 to 4 are older forms, told apart by each class's Serialize.
inline constexpr UINT kCurrentSchema = 5;
inline constexpr UINT kNoSchema = 0xFFFFFFFF; // What an archive holds outside ReadObject.

class NRVECTORVIEW_API CSerialable : public CObject {
    DECLARE_SERIAL(CSerialable)
public:
    CSerialable() = default;

    // Nearest integer to x, halves upwards, for d = 0, which is what all callers pass. For d above 0 the fraction is
    // looked at to d decimals and the result is still whole: GetNear(2.96, 1) is 3. A negative d is an integer
    // division by zero.
    static int GetNear(double x, int d) {
        // Every coordinate of every stroke comes through here: the plain case is the same steps without a call.
        if (d == 0 && x > -2147483648.0 && x < 2147483647.0) {
            int whole = static_cast<int>(x);
            if (static_cast<double>(whole) > x) {
                --whole;
            }
            // 1.0 for a tiny negative x, whose distance to -1 rounds up: 0 again.
            return x - static_cast<double>(whole) >= 0.5 ? whole + 1 : whole;
        }
        return GetNearInSteps(x, d);
    }
    // The step above: floor(x) + 1 for d = 0, also for a whole x. Kept for hosts.
    static int GetNear_X(double x, int d);

    // A word 5 in front of every object; absent in the older schemas.
    void Serialize(CArchive& ar) override;

protected:
    // Whether the object being read has the current form, in which every level begins with a version word.
    static bool IsCurrentForm(CArchive& ar);

private:
    static int GetNearInSteps(double x, int d);
};
