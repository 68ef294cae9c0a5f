// The sizes of fonts that the texts of one pass share.

#include "SegmentDistance.h"
#include "Text.h"
#include "TextFont.h"
#include "TextMeasures.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace {

class MemoryDC {
public:
    MemoryDC() : m_dc(::CreateCompatibleDC(nullptr)) {}
    ~MemoryDC() { ::DeleteDC(m_dc); }
    MemoryDC(const MemoryDC&) = delete;
    MemoryDC& operator=(const MemoryDC&) = delete;

    HDC Get() const { return m_dc; }
    SIZE Measure(const LOGFONTW& description, const wchar_t* text) const {
        const HFONT font = ::CreateFontIndirectW(&description);
        const HGDIOBJ old = ::SelectObject(m_dc, font);
        SIZE size = {};
        ::GetTextExtentPoint32W(m_dc, text, static_cast<int>(std::wcslen(text)), &size);
        ::SelectObject(m_dc, old);
        ::DeleteObject(font);
        return size;
    }

private:
    HDC m_dc;
};

// The two cosines that decide, each through two roots, as the distance is defined.
float DistanceByRoots(CGePoint2d a, CGePoint2d b, CGePoint2d p) {
    const CGeVector2d ap = p - a;
    const CGeVector2d ab = b - a;
    if (ap.normal().dotProduct(ab.normal()) < 0.0) {
        return static_cast<float>(ap.length());
    }
    const CGeVector2d bp = p - b;
    if (bp.normal().dotProduct(a - b) < 0.0) {
        return static_cast<float>(bp.length());
    }
    return static_cast<float>(ab.perpVector().dotProduct(ap) / ab.length());
}

bool SameBits(float a, float b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

} // namespace

TEST(TextMeasures, TheLineHeightIsThatOfTheDevice) {
    const MemoryDC dc;
    CTextMeasures measures(dc.Get());
    for (const int height : {1, 2, 9, 14, 40, 300}) {
        for (const int escapement : {0, 450, 900, 2700}) {
            const LOGFONTW font = TextFont::Describe(height, 0, escapement, L"宋体");
            const int expected = static_cast<int>(dc.Measure(font, L"ABCabc").cy);
            EXPECT_EQ(expected, measures.LineHeight(font)) << height << ", " << escapement;
            EXPECT_EQ(expected, measures.LineHeight(font)) << "asked again";
        }
    }
}

TEST(TextMeasures, NoTextIsLongerThanItsLongestLine) {
    const MemoryDC dc;
    CTextMeasures measures(dc.Get());
    const wchar_t* const texts[] = {L"", L"i", L"WWWWWWWW", L"M12-345", L"中文标注（一）", L"Ф 20×3", L"\x0416\x0429"};
    for (const wchar_t* face : {L"宋体", L"DejaVu Sans", L"No Such Face"}) {
        for (const int height : {1, 3, 7, 12, 33, 120}) {
            for (const int width : {0, 1, 20, 200}) {
                const LOGFONTW font = TextFont::Describe(height, width, 0, face);
                for (const wchar_t* text : texts) {
                    const auto longest = measures.LongestLine(font, text, static_cast<int>(std::wcslen(text)));
                    ASSERT_TRUE(longest.has_value());
                    EXPECT_GE(*longest, static_cast<double>(dc.Measure(font, text).cx))
                        << CStringA(text).GetString() << ", " << height << ", " << width;
                }
            }
        }
    }
}

TEST(TextMeasures, AComposedScriptHasNoKnownLength) {
    const MemoryDC dc;
    CTextMeasures measures(dc.Get());
    const LOGFONTW font = TextFont::Describe(12, 0, 0, L"宋体");
    for (const wchar_t* text : {L"e\x0301", L"\x0627\x0644", L"\x0E01\x0E33", L"\xD83D\xDE00", L"a\tb", L"\xFDFD"}) {
        EXPECT_FALSE(measures.LongestLine(font, text, static_cast<int>(std::wcslen(text))).has_value());
    }
}

TEST(TextMeasures, AWalkOverExtentsGivesEachTextItsOwnHeight) {
    CVectorViewCoordTran tran;
    tran.SetScale(0.5f);
    std::vector<float> alone;
    std::vector<float> inWalk;
    for (std::vector<float>* heights : {&alone, &inWalk}) {
        const std::unique_ptr<CTextWalk> walk(heights == &inWalk ? new CTextWalk : nullptr);
        for (const float height : {0.1f, 4.0f, 20.0f, 20.0f, 33.0f}) {
            CText text;
            text.SetTextHeight(height);
            CGePoint2d min;
            CGePoint2d max;
            text.GetRect(&tran, min, max);
            heights->push_back(static_cast<float>(max.y - min.y));
        }
    }
    EXPECT_EQ(alone, inWalk);
    EXPECT_EQ(alone[2], alone[3]);
    EXPECT_LT(alone[1], alone[2]);
}

TEST(SegmentDistance, HasTheBitsOfTheDistanceByRoots) {
    std::mt19937_64 random(11);
    const auto number = [&]() -> double {
        const double special[] = {0.0, -0.0, 1.0, 1e-160, 1e160, 1e-310, 1e300, 3.5, -7.0, INFINITY, NAN};
        switch (random() % 4) {
        case 0:
            return special[random() % std::size(special)];
        case 1: { // any bits
            const std::uint64_t bits = random();
            double value = 0.0;
            std::memcpy(&value, &bits, sizeof value);
            return value;
        }
        case 2:
            return static_cast<double>(static_cast<int>(random() % 21)) - 10.0;
        default:
            return static_cast<double>(random() % 1000000) / 997.0 - 500.0;
        }
    };
    int apart = 0;
    for (int i = 0; i < 1000000; ++i) {
        const CGePoint2d a(number(), number());
        const CGePoint2d b(number(), number());
        const CGePoint2d p(number(), number());
        const float expected = DistanceByRoots(a, b, p);
        const float actual = SegmentDistance(a.x, a.y, b.x, b.y, p);
        const bool both = std::isnan(expected) && std::isnan(actual);
        ASSERT_TRUE(both || SameBits(expected, actual)) << a.x << ' ' << a.y << ' ' << b.x << ' ' << b.y << ' ' << p.x
                                                        << ' ' << p.y << ": " << expected << ", " << actual;
        apart += expected > 0.0f ? 1 : 0;
    }
    EXPECT_GT(apart, 100000);
}
