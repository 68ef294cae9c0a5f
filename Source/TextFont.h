// The font of a text as GDI wants it.
// Layer 5: drawables.
#pragma once

#include <afxwin.h>

#include <algorithm>

namespace TextFont {

// A positive height, so that it is that of the cell. Width 0 leaves it to the font. The escapement is in tenths of a
// degree. Of the name the first 31 characters count.
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
