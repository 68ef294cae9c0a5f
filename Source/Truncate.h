// How a floating-point value becomes a pixel or a count: truncation with one defined answer for what does not fit.
// Layer 3: base.
#pragma once

#include <climits>
#include <cstdint>

// Towards zero. A value outside the range of int, and a not-a-number, gives INT_MIN. That is the processor's own
// answer; drawings with coordinates far outside a window depend on it.
inline int Truncate(double value) {
    return value > -2147483649.0 && value < 2147483648.0 ? static_cast<int>(value) : INT_MIN;
}

// As Truncate(double).
inline int Truncate(float value) {
    return value >= -2147483648.0f && value < 2147483648.0f ? static_cast<int>(value) : INT_MIN;
}

// Sum in 32 bits that wraps around, so that a grip's square around an INT_MIN pixel stays defined.
inline int WrapAdd(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

// Difference in 32 bits that wraps around.
inline int WrapSubtract(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

// Product in 32 bits that wraps around.
inline int WrapMultiply(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}
