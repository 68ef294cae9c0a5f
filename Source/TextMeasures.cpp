#include "TextMeasures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace {

constexpr WCHAR kSample[] = L"ABCabc";
constexpr int kSampleLength = 6;

constexpr LONG kDesignHeight = 1000; // Pixels of a cell: at this size the rounding to pixels is negligible.
constexpr wchar_t kTabled = 0x0530;  // Latin, Greek and Cyrillic have a measured advance.
constexpr double kWidestCell = 2.0;  // Of an East Asian character, in cell heights.

// At small sizes a device rounds each advance to a whole pixel, and its hints may add one.
constexpr double kPixelsMore = 2.0;
constexpr double kSizesMore = 1.1;

thread_local CTextMeasures* g_walk = nullptr;

struct Range {
    wchar_t first, last;
};

// Letters that are drawn one by one, each in a cell of its own.
constexpr Range kMeasured[] = {{0x0020, 0x024F}, {0x0370, 0x0482}, {0x048A, 0x052F}};
constexpr Range kInCells[] = {{0x2010, 0x2027}, {0x2030, 0x205E}, {0x20A0, 0x20BF}, {0x2100, 0x23FF},
                              {0x2460, 0x26FF}, {0x3000, 0x3029}, {0x3030, 0x3098}, {0x309B, 0x30FF},
                              {0x3105, 0x318E}, {0x3200, 0x9FFF}, {0xF900, 0xFAFF}, {0xFF01, 0xFFEE}};

template <size_t Count>
bool IsIn(const Range (&ranges)[Count], wchar_t character) {
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [=](const Range& range) { return character >= range.first && character <= range.last; });
}

// A font that is selected as long as this lives.
class SelectedFont {
public:
    SelectedFont(HDC dc, const LOGFONTW& description)
        : m_dc(dc), m_font(::CreateFontIndirectW(&description)), m_old(::SelectObject(dc, m_font)) {}
    ~SelectedFont() {
        ::SelectObject(m_dc, m_old);
        ::DeleteObject(m_font);
    }
    SelectedFont(const SelectedFont&) = delete;
    SelectedFont& operator=(const SelectedFont&) = delete;

private:
    HDC m_dc;
    HFONT m_font;
    HGDIOBJ m_old;
};

LOGFONTW Design(const LOGFONTW& font) {
    LOGFONTW design = font;
    design.lfHeight = kDesignHeight;
    design.lfWidth = 0;
    design.lfEscapement = 0;
    return design;
}

} // namespace

size_t CTextMeasures::Hash::operator()(const LOGFONTW& font) const {
    std::uint64_t words[sizeof font / sizeof(std::uint64_t)] = {};
    std::memcpy(words, &font, sizeof words);
    std::uint64_t hash = 0;
    for (const std::uint64_t word : words) {
        hash = (hash ^ word) * 0x9E3779B97F4A7C15u;
        hash ^= hash >> 32;
    }
    return static_cast<size_t>(hash);
}

bool CTextMeasures::Same::operator()(const LOGFONTW& a, const LOGFONTW& b) const {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

CTextMeasures::~CTextMeasures() {
    if (m_Screen != nullptr) {
        ::ReleaseDC(nullptr, m_Screen);
    }
}

CTextWalk::CTextWalk() : m_Outer(g_walk) {
    g_walk = &m_Measures;
}

CTextWalk::~CTextWalk() {
    g_walk = m_Outer;
}

CTextMeasures* CTextWalk::Measures() {
    return g_walk;
}

HDC CTextMeasures::Device() {
    if (m_hDC != nullptr) {
        return m_hDC;
    }
    if (m_Screen == nullptr) {
        m_Screen = ::GetDC(nullptr);
    }
    return m_Screen;
}

int CTextMeasures::MeasureLine(HDC dc) {
    SIZE size = {};
    ::GetTextExtentPoint32W(dc, kSample, kSampleLength, &size);
    return static_cast<int>(size.cy);
}

int CTextMeasures::LineHeight(const LOGFONTW& font) {
    const auto known = m_LineHeights.find(font);
    if (known != m_LineHeights.end()) {
        return known->second;
    }
    const SelectedFont selected(Device(), font);
    const int height = MeasureLine(Device());
    m_LineHeights.emplace(font, height);
    return height;
}

CTextMeasures::Face& CTextMeasures::FaceOf(const LOGFONTW& font) {
    const LOGFONTW design = Design(font);
    Face& face = m_Faces[design];
    if (face.advance.empty()) {
        const SelectedFont selected(Device(), design);
        TEXTMETRICW metrics = {};
        ::GetTextMetricsW(Device(), &metrics);
        face.average = static_cast<double>(metrics.tmAveCharWidth) / kDesignHeight;
        face.advance.assign(kTabled, -1.0);
    }
    return face;
}

double CTextMeasures::AdvanceOf(const LOGFONTW& font, Face& face, wchar_t character) {
    double& advance = face.advance[character];
    if (advance < 0.0) {
        const SelectedFont selected(Device(), Design(font));
        SIZE size = {};
        ::GetTextExtentPoint32W(Device(), &character, 1, &size);
        advance = static_cast<double>(size.cx) / kDesignHeight;
    }
    return advance;
}

std::optional<double> CTextMeasures::LongestLine(const LOGFONTW& font, LPCWSTR text, int length) {
    Face& face = FaceOf(font);
    double cells = 0.0;
    for (int i = 0; i < length; ++i) {
        if (IsIn(kMeasured, text[i])) {
            cells += AdvanceOf(font, face, text[i]);
        } else if (IsIn(kInCells, text[i])) {
            cells += kWidestCell;
        } else {
            return std::nullopt;
        }
    }
    const double height = std::fabs(static_cast<double>(font.lfHeight));
    const double stretch = font.lfWidth == 0 || !(face.average > 0.0)
                               ? 1.0
                               : std::max(1.0, std::fabs(static_cast<double>(font.lfWidth)) / (face.average * height));
    return (cells * height * kSizesMore + kPixelsMore * length) * stretch;
}
