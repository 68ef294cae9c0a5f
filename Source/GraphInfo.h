// The colour table that the colour indices of objects, layers and documents refer to.
// Layer 5: drawables.
#pragma once

#include "VectorViewApi.h"

// Colour indices with a meaning of their own, in objects, layers and documents. They are stored in files.
inline constexpr short kColorByLayer = -1;  // The colour of the object's layer.
inline constexpr short kColorExplicit = -2; // The COLORREF that is stored beside the index.
inline constexpr short kColorBlack = 7;     // An entry of the table: black.
inline constexpr short kColorWhite = 137;   // An entry of the table: white.

// A process-wide singleton, made on first use and never changed, so that any thread may use it. Release must not run
// while another thread does.
class NRVECTORVIEW_API CGraphColorInfo {
public:
    static CGraphColorInfo* GetInstance(); // Never null. Not the caller's to free.
    // Frees the instance, if there is one; a later GetInstance makes a new one.
    static void Release();
    virtual ~CGraphColorInfo();
    CGraphColorInfo(const CGraphColorInfo&) = delete;
    CGraphColorInfo& operator=(const CGraphColorInfo&) = delete;

    // The entry as a COLORREF, 0x00BBGGRR, its alpha dropped. An index outside the table gives black.
    DWORD GetColor(int index);
    // Compatibility 33: `GetColorIndex` is no inverse of `GetColor`.
    // The first index whose entry, in its stored form 0xAARRGGBB, equals `color`; 137 for none.
    int GetColorIndex(DWORD color);

private:
    CGraphColorInfo();

    int m_Capacity = 500;
    int m_Count = 0;
    DWORD* m_pColors = nullptr; // 0xAARRGGBB
    static CGraphColorInfo* _instance;
};

// A colour in GDI+ form, 0xAARRGGBB, as a COLORREF without the alpha; and a COLORREF as 0x00RRGGBB.
inline DWORD ExchangeRedBlue(DWORD color) {
    return ((color & 0x000000FF) << 16) | (color & 0x0000FF00) | ((color & 0x00FF0000) >> 16);
}
