// CTextFormator: measures one text in a given font, and draws it line by line along a rotated baseline.
// Layer 4: geometry (it uses device contexts and pixels, and nothing of drawings).
#pragma once

#include "VectorViewApi.h"

#include <memory>

// Used as a local variable. All sizes are device pixels. The text given to Setup is neither owned nor copied and must
// not change while the formator is used. Other functions take that text again, or a part of it together with the index
// at which the part begins: all indices refer to the one table of positions that Setup makes. For an index outside the
// table the nearest entry is used.
class NRVECTORVIEW_API CTextFormator {
public:
    CTextFormator() = default;
    // Copies share the table of positions.
    CTextFormator(const CTextFormator&) = default;
    CTextFormator& operator=(const CTextFormator&) = default;
    virtual ~CTextFormator() = default;

    // `size` in points. 1; 0 for a font without outlines, and the formator then has no table.
    int Setup(HDC hdc, HFONT font, float size, CString& text);
    // `size` in pixels. `font` must be selected into `hdc`.
    int SetupPixel(HDC hdc, HFONT font, float size, CString& text);

    // From the top of one line to the top of the next.
    float GetLinespace() { return m_Linespace; }
    // From the table, without the device. The extent of the characters startPos + 1 to
    // startPos + cbString, one character further on than the names suggest. A cbString below 1 means the length of
    // lpString. Always 1.
    int GetTextExtent(HDC hdc, const wchar_t* lpString, int startPos, int cbString, float& width, float& height);

    // Draws `count` characters from `lpString`, the first of which has the index `begin`. Each advance is truncated to
    // whole pixels. The result is that of the device, and 0 without a table.
    int TextOutW(HDC hdc, int x, int y, const wchar_t* lpString, int begin, int count);
    // Breaks the text at the width of `rect` and draws the lines from its top left corner, about which they are
    // rotated. The result is the sum of the line heights, each truncated. There is no clipping, and `format` is
    // ignored. An nCount below 1 means the whole text.
    unsigned long DrawTextW(HDC hdc, const wchar_t* lpString, int nCount, const RECT* rect, unsigned int format);

    // The turn of the baseline in radians; set by the caller.
    double m_Rotation = 0.0;

protected:
    // Entry `index` of the table; the nearest entry for an index outside it; 0 without a table.
    float PositionAt(long long index) const;
    // How many of `count` characters from `text`, which has the index `begin`, may be read: those of the table, and
    // after them up to the terminating zero.
    int ReadableCount(const wchar_t* text, int begin, int count) const;

    const float* m_CharPos = nullptr; // Entry i: the extent of the first i + 1 characters. Part of m_Table.
    float m_Height = 0.0f;            // Of one line.
    float m_Linespace = 0.0f;         // See GetLinespace.
    const wchar_t* m_Str = nullptr;   // Not owned.

private:
    std::shared_ptr<const float> m_Table;
    int m_Count = 0; // Entries.
};
