// Random coordinates, many of which are difficult for arithmetic. Layer 16: tests.
#pragma once

#include <limits>
#include <random>

class EdgeNumbers {
public:
    explicit EdgeNumbers(unsigned seed) : m_engine(seed) {}
    double Between(double low, double high) { return low + (high - low) * m_engine() / 4294967296.0; }
    int Below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned>(limit)); }
    // One in `rarity` is a special number: not-a-number, infinite, huge, tiny, or a small whole one, which others are
    // likely to share.
    double Coordinate(int rarity = 4) {
        if (Below(rarity) != 0) {
            return Between(-500, 900);
        }
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        const double edges[] = {std::numeric_limits<double>::quiet_NaN(),
                                kInfinity,
                                -kInfinity,
                                0.0,
                                -0.0,
                                Between(-1e9, 1e9),
                                Between(-1e18, 1e18),
                                Between(-1e-18, 1e-18),
                                Between(-1e-160, 1e-160),
                                Between(-1e160, 1e160),
                                1.7e308,
                                5e-324,
                                static_cast<double>(Below(4)),
                                static_cast<double>(Below(4))};
        return edges[Below(14)];
    }

private:
    std::mt19937 m_engine;
};
