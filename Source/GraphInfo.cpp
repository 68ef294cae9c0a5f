#include "GraphInfo.h"

#include "MemoryInfo.h"

#include <algorithm>
#include <iterator>

namespace {

// The named colours of GDI+ in alphabetical order. Files hold indices, so the order must not change.
// clang-format off
constexpr DWORD kNamedColors[] = {
    0xFFF0F8FF, // 0 AliceBlue
    0xFFFAEBD7, // 1 AntiqueWhite
    0xFF00FFFF, // 2 Aqua
    0xFF7FFFD4, // 3 Aquamarine
    0xFFF0FFFF, // 4 Azure
    0xFFF5F5DC, // 5 Beige
    0xFFFFE4C4, // 6 Bisque
    0xFF000000, // 7 Black
    0xFFFFEBCD, // 8 BlanchedAlmond
    0xFF0000FF, // 9 Blue
    0xFF8A2BE2, // 10 BlueViolet
    0xFFA52A2A, // 11 Brown
    0xFFDEB887, // 12 BurlyWood
    0xFF5F9EA0, // 13 CadetBlue
    0xFF7FFF00, // 14 Chartreuse
    0xFFD2691E, // 15 Chocolate
    0xFFFF7F50, // 16 Coral
    0xFF6495ED, // 17 CornflowerBlue
    0xFFFFF8DC, // 18 Cornsilk
    0xFFDC143C, // 19 Crimson
    0xFF00FFFF, // 20 Cyan
    0xFF00008B, // 21 DarkBlue
    0xFF008B8B, // 22 DarkCyan
    0xFFB8860B, // 23 DarkGoldenrod
    0xFFA9A9A9, // 24 DarkGray
    0xFF006400, // 25 DarkGreen
    0xFFBDB76B, // 26 DarkKhaki
    0xFF8B008B, // 27 DarkMagenta
    0xFF556B2F, // 28 DarkOliveGreen
    0xFFFF8C00, // 29 DarkOrange
    0xFF9932CC, // 30 DarkOrchid
    0xFF8B0000, // 31 DarkRed
    0xFFE9967A, // 32 DarkSalmon
    0xFF8FBC8B, // 33 DarkSeaGreen
    0xFF483D8B, // 34 DarkSlateBlue
    0xFF2F4F4F, // 35 DarkSlateGray
    0xFF00CED1, // 36 DarkTurquoise
    0xFF9400D3, // 37 DarkViolet
    0xFFFF1493, // 38 DeepPink
    0xFF00BFFF, // 39 DeepSkyBlue
    0xFF696969, // 40 DimGray
    0xFF1E90FF, // 41 DodgerBlue
    0xFFB22222, // 42 Firebrick
    0xFFFFFAF0, // 43 FloralWhite
    0xFF228B22, // 44 ForestGreen
    0xFFFF00FF, // 45 Fuchsia
    0xFFDCDCDC, // 46 Gainsboro
    0xFFF8F8FF, // 47 GhostWhite
    0xFFFFD700, // 48 Gold
    0xFFDAA520, // 49 Goldenrod
    0xFF808080, // 50 Gray
    0xFF008000, // 51 Green
    0xFFADFF2F, // 52 GreenYellow
    0xFFF0FFF0, // 53 Honeydew
    0xFFFF69B4, // 54 HotPink
    0xFFCD5C5C, // 55 IndianRed
    0xFF4B0082, // 56 Indigo
    0xFFFFFFF0, // 57 Ivory
    0xFFF0E68C, // 58 Khaki
    0xFFE6E6FA, // 59 Lavender
    0xFFFFF0F5, // 60 LavenderBlush
    0xFF7CFC00, // 61 LawnGreen
    0xFFFFFACD, // 62 LemonChiffon
    0xFFADD8E6, // 63 LightBlue
    0xFFF08080, // 64 LightCoral
    0xFFE0FFFF, // 65 LightCyan
    0xFFFAFAD2, // 66 LightGoldenrodYellow
    0xFFD3D3D3, // 67 LightGray
    0xFF90EE90, // 68 LightGreen
    0xFFFFB6C1, // 69 LightPink
    0xFFFFA07A, // 70 LightSalmon
    0xFF20B2AA, // 71 LightSeaGreen
    0xFF87CEFA, // 72 LightSkyBlue
    0xFF778899, // 73 LightSlateGray
    0xFFB0C4DE, // 74 LightSteelBlue
    0xFFFFFFE0, // 75 LightYellow
    0xFF00FF00, // 76 Lime
    0xFF32CD32, // 77 LimeGreen
    0xFFFAF0E6, // 78 Linen
    0xFFFF00FF, // 79 Magenta
    0xFF800000, // 80 Maroon
    0xFF66CDAA, // 81 MediumAquamarine
    0xFF0000CD, // 82 MediumBlue
    0xFFBA55D3, // 83 MediumOrchid
    0xFF9370DB, // 84 MediumPurple
    0xFF3CB371, // 85 MediumSeaGreen
    0xFF7B68EE, // 86 MediumSlateBlue
    0xFF00FA9A, // 87 MediumSpringGreen
    0xFF48D1CC, // 88 MediumTurquoise
    0xFFC71585, // 89 MediumVioletRed
    0xFF191970, // 90 MidnightBlue
    0xFFF5FFFA, // 91 MintCream
    0xFFFFE4E1, // 92 MistyRose
    0xFFFFE4B5, // 93 Moccasin
    0xFFFFDEAD, // 94 NavajoWhite
    0xFF000080, // 95 Navy
    0xFFFDF5E6, // 96 OldLace
    0xFF808000, // 97 Olive
    0xFF6B8E23, // 98 OliveDrab
    0xFFFFA500, // 99 Orange
    0xFFFF4500, // 100 OrangeRed
    0xFFDA70D6, // 101 Orchid
    0xFFEEE8AA, // 102 PaleGoldenrod
    0xFF98FB98, // 103 PaleGreen
    0xFFAFEEEE, // 104 PaleTurquoise
    0xFFDB7093, // 105 PaleVioletRed
    0xFFFFEFD5, // 106 PapayaWhip
    0xFFFFDAB9, // 107 PeachPuff
    0xFFCD853F, // 108 Peru
    0xFFFFC0CB, // 109 Pink
    0xFFDDA0DD, // 110 Plum
    0xFFB0E0E6, // 111 PowderBlue
    0xFF800080, // 112 Purple
    0xFFFF0000, // 113 Red
    0xFFBC8F8F, // 114 RosyBrown
    0xFF4169E1, // 115 RoyalBlue
    0xFF8B4513, // 116 SaddleBrown
    0xFFFA8072, // 117 Salmon
    0xFFF4A460, // 118 SandyBrown
    0xFF2E8B57, // 119 SeaGreen
    0xFFFFF5EE, // 120 SeaShell
    0xFFA0522D, // 121 Sienna
    0xFFC0C0C0, // 122 Silver
    0xFF87CEEB, // 123 SkyBlue
    0xFF6A5ACD, // 124 SlateBlue
    0xFF708090, // 125 SlateGray
    0xFFFFFAFA, // 126 Snow
    0xFF00FF7F, // 127 SpringGreen
    0xFF4682B4, // 128 SteelBlue
    0xFFD2B48C, // 129 Tan
    0xFF008080, // 130 Teal
    0xFFD8BFD8, // 131 Thistle
    0xFFFF6347, // 132 Tomato
    0x00FFFFFF, // 133 Transparent
    0xFF40E0D0, // 134 Turquoise
    0xFFEE82EE, // 135 Violet
    0xFFF5DEB3, // 136 Wheat
    0xFFFFFFFF, // 137 White
    0xFFF5F5F5, // 138 WhiteSmoke
    0xFFFFFF00, // 139 Yellow
    0xFF9ACD32, // 140 YellowGreen
};
// clang-format on

} // namespace

CGraphColorInfo* CGraphColorInfo::_instance = nullptr;

CGraphColorInfo* CGraphColorInfo::GetInstance() {
    CGraphColorInfo* instance = __atomic_load_n(&_instance, __ATOMIC_ACQUIRE);
    if (instance == nullptr) {
        auto* made = new CGraphColorInfo;
        KX_ADD_MEMORY(made);
        if (__atomic_compare_exchange_n(&_instance, &instance, made, false, __ATOMIC_ACQ_REL, __ATOMIC_ACQUIRE)) {
            return made;
        }
        // Another thread was first.
        KX_REMOVE_MEMORY(made);
        delete made;
    }
    return instance;
}

void CGraphColorInfo::Release() {
    if (_instance != nullptr) {
        KX_REMOVE_MEMORY(_instance);
        delete _instance;
        _instance = nullptr;
    }
}

CGraphColorInfo::CGraphColorInfo() : m_Count(static_cast<int>(std::size(kNamedColors))) {
    m_pColors = new DWORD[static_cast<size_t>(m_Capacity)];
    KX_ADD_MEMORY(m_pColors);
    std::copy(std::begin(kNamedColors), std::end(kNamedColors), m_pColors);
}

CGraphColorInfo::~CGraphColorInfo() {
    KX_REMOVE_MEMORY(m_pColors);
    delete[] m_pColors;
}

DWORD CGraphColorInfo::GetColor(int index) {
    return index >= 0 && index < m_Count ? ExchangeRedBlue(m_pColors[index]) : RGB(0, 0, 0);
}

int CGraphColorInfo::GetColorIndex(DWORD color) {
    const DWORD* begin = m_pColors;
    const DWORD* end = begin + m_Count;
    const DWORD* found = std::find(begin, end, color);
    return found != end ? static_cast<int>(found - begin) : kColorWhite;
}
