// How a floating-point value becomes a pixel or a count: truncation with one defined answer for what does not fit.
// Layer 3: base.
#pragma once

#include <climits>
#include <cstdint>

// Towards zero. A value outside the range of int, and a NaN, gives INT_MIN: that is the processor's own answer,
// and drawings far outside any window have always been drawn with it.
inline int Truncate(double value) {
    return value > -2147483649.0 && value < 2147483648.0 ? static_cast<int>(value) : INT_MIN;
}

inline int Truncate(float value) {
    return value >= -2147483648.0f && value < 2147483648.0f ? static_cast<int>(value) : INT_MIN;
}

// Sum in 32 bits that wraps around, so that a grip's square around an INT_MIN pixel stays defined.
inline int WrapAdd(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

inline int WrapSubtract(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

inline int WrapMultiply(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}
