// What the rows of the benchmark share: a clock, medians of interleaved rounds, and pictures to compare.
// Layer 15: bench.
#pragma once

#include <afxwin.h>

#include <algorithm>
#include <vector>

namespace bench {

inline double Milliseconds() {
    static const double perSecond = [] {
        LARGE_INTEGER frequency;
        ::QueryPerformanceFrequency(&frequency);
        return static_cast<double>(frequency.QuadPart);
    }();
    LARGE_INTEGER now;
    ::QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) * 1000.0 / perSecond;
}

template <class Code>
double Time(Code code) {
    const double begin = Milliseconds();
    code();
    return Milliseconds() - begin;
}

inline double Median(std::vector<double> values) {
    if (values.empty()) {
        return 0.0;
    }
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

// Milliseconds of the library and of the limit for the same work.
struct Comparison {
    double library = 0.0;
    double limit = 0.0;
};

// In turn, after a round that is not counted.
template <class Library, class Limit>
Comparison Compare(int rounds, Library library, Limit limit) {
    std::vector<double> libraryTimes;
    std::vector<double> limitTimes;
    library();
    limit();
    for (int i = 0; i < rounds; ++i) {
        libraryTimes.push_back(Time(library));
        limitTimes.push_back(Time(limit));
    }
    return {Median(libraryTimes), Median(limitTimes)};
}

// The pixels of a context's upper left part, row by row.
std::vector<DWORD> Pixels(HDC dc, int width, int height);

} // namespace bench
