// The colour table behind every colour index in drawings.
// Layer 5: drawables.
#pragma once

#include "VectorViewApi.h"

// Roles of colour indices, in objects, layers and documents. Files hold them.
inline constexpr short kColorByLayer = -1;
inline constexpr short kColorExplicit = -2;
inline constexpr short kColorBlack = 7;
inline constexpr short kColorWhite = 137;

// A process-wide singleton, made on first use without a lock: everything here runs on the view's thread.
class NRVECTORVIEW_API CGraphColorInfo {
public:
    static CGraphColorInfo* GetInstance();
    // Frees the instance, if any; a later GetInstance makes a new one.
    static void Release();
    virtual ~CGraphColorInfo();
    CGraphColorInfo(const CGraphColorInfo&) = delete;
    CGraphColorInfo& operator=(const CGraphColorInfo&) = delete;

    // The entry as a COLORREF, 0x00BBGGRR, its alpha dropped. An index outside the table gives black.
    DWORD GetColor(int index);
    // The first index whose raw entry, 0xAARRGGBB, equals `color`; 137 for none. No inverse of GetColor: the two work
    // on different byte orders, as the interface has it.
    int GetColorIndex(DWORD color);

private:
    CGraphColorInfo();

    int m_Capacity = 500;
    int m_Count = 0;
    DWORD* m_pColors = nullptr; // 0xAARRGGBB
    static CGraphColorInfo* _instance;
};

// A colour in GDI+ form, 0xAARRGGBB, as a COLORREF; the alpha goes. The same exchange turns one back, without alpha.
inline DWORD ExchangeRedBlue(DWORD color) {
    return ((color & 0x000000FF) << 16) | (color & 0x0000FF00) | ((color & 0x00FF0000) >> 16);
}
