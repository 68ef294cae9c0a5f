// CTextMeasures: the sizes of fonts, worked out once for all texts of one paint or of one walk over the extents.
// Layer 4: geometry (it uses device contexts and pixels, and nothing of drawings).
#pragma once

#include <afxwin.h>

#include <optional>
#include <unordered_map>
#include <vector>

// A local variable of the paint or walk; nothing is kept after it. Fonts are described as TextFont::Describe does.
class CTextMeasures {
public:
    // For the texts that are drawn into `dc`, or, when it is null, measured on the screen.
    explicit CTextMeasures(HDC dc) : m_hDC(dc) {}
    ~CTextMeasures();
    CTextMeasures(const CTextMeasures&) = delete;
    CTextMeasures& operator=(const CTextMeasures&) = delete;

    // The height in pixels that the device tells for the line "ABCabc" in that font.
    int LineHeight(const LOGFONTW& font);
    // The length in pixels that the text has at most in that font. Nothing for a text with a character whose ink may
    // reach beyond its own cell: those of scripts that are composed.
    std::optional<double> LongestLine(const LOGFONTW& font, LPCWSTR text, int length);

    // As LineHeight, with the font that is selected in `dc`.
    static int MeasureLine(HDC dc);

private:
    struct Hash {
        size_t operator()(const LOGFONTW& font) const;
    };
    struct Same {
        bool operator()(const LOGFONTW& a, const LOGFONTW& b) const;
    };
    // A face at a large size, from which all its sizes follow.
    struct Face {
        double average = 0.0; // Of the characters, in cell heights.
        std::vector<double>
            advance; // Of each simple character below kTabled, in cell heights; negative: not known yet.
    };
    Face& FaceOf(const LOGFONTW& font);
    double AdvanceOf(const LOGFONTW& font, Face& face, wchar_t character);
    HDC Device();

    const HDC m_hDC;
    HDC m_Screen = nullptr; // Released with this object.
    std::unordered_map<LOGFONTW, int, Hash, Same> m_LineHeights;
    std::unordered_map<LOGFONTW, Face, Hash, Same> m_Faces;
};

// Declares a walk of this thread over the extents of many objects: texts that measure themselves on the screen share
// it.
class CTextWalk {
public:
    CTextWalk();
    ~CTextWalk();
    CTextWalk(const CTextWalk&) = delete;
    CTextWalk& operator=(const CTextWalk&) = delete;

    // Of the innermost walk; null outside of any.
    static CTextMeasures* Measures();

private:
    CTextMeasures m_Measures{nullptr};
    CTextMeasures* const m_Outer;
};
