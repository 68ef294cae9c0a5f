// The description of a text's font for GDI.
// Layer 5: drawables.
#pragma once

#include <afxwin.h>

#include <algorithm>

namespace TextFont {

// `height` and `width` in pixels; a positive height is that of the character cell, and width 0 leaves the width to the
// font. `escapement` in tenths of a degree. Only the first 31 characters of the name are used.
inline LOGFONTW Describe(int height, int width, int escapement, const CString& faceName) {
    LOGFONTW font = {};
    font.lfHeight = height;
    font.lfWidth = width;
    font.lfEscapement = escapement;
    font.lfWeight = FW_NORMAL;
    font.lfOutPrecision = OUT_TT_PRECIS;
    const LPCTSTR name = faceName;
    std::copy_n(name, std::min<int>(faceName.GetLength(), LF_FACESIZE - 1), font.lfFaceName);
    return font;
}

} // namespace TextFont
