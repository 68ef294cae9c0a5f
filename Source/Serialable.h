// CSerialable: the root of everything that is stored in a drawing, and the rounding to pixels.
// Layer 5: drawables.
#pragma once

#include "VectorViewApi.h"

// The schema in each class record. Objects of schemas 1 to 4 are older forms, distinguished by each class's Serialize.
inline constexpr UINT kCurrentSchema = 5;
inline constexpr UINT kNoSchema = 0xFFFFFFFF; // The object schema of an archive outside ReadObject.

class NRVECTORVIEW_API CSerialable : public CObject {
    DECLARE_SERIAL(CSerialable)
public:
    CSerialable() = default;

    // Compatibility 34: rounding to one decimal gives whole numbers.
    // The nearest integer to x, halves upwards, for d = 0, which all callers pass. For a d above 0 the fraction is
    // first rounded to d decimals, and the result is the whole part: GetNear(2.96, 1) is 3, GetNear(2.94, 1) is 2. A
    // negative d raises the processor's exception for an integer division by zero.
    static int GetNear(double x, int d) {
        // The usual case is inline, because every coordinate of every stroke is rounded here.
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
    // floor(x) + 1 for d = 0, also for a whole x. Only for hosts.
    static int GetNear_X(double x, int d);

    // Stores or loads the fields of a class after those of its base; docs/stream.md has them all. Here it is the word 5
    // before the fields of every object, which the older schemas do not have. The archive's exceptions pass through.
    void Serialize(CArchive& ar) override;

protected:
    // Compatibility 96: version words are read and not checked.
    // Whether the object being read has the current form, in which every level begins with a version word.
    static bool IsCurrentForm(CArchive& ar);

private:
    static int GetNearInSteps(double x, int d);
};
