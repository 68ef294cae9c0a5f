// CTextFormator: measures one text in a given font, and lays it out line by line along a rotated baseline.
// Layer 4: geometry (it knows device contexts and pixels, and nothing of drawings).
#pragma once

#include "VectorViewApi.h"

#include <memory>

// A value for the stack. All figures are device pixels. The text given to Setup must live unchanged for as long as the
// formator is used: it is neither owned nor copied. The texts of the other operations are that text, or begin at the
// same index, because all indices lead into one table of positions; an index outside it is held to it.
class NRVECTORVIEW_API CTextFormator {
public:
    CTextFormator() = default;
    // Copies share the table of positions.
    CTextFormator(const CTextFormator&) = default;
    CTextFormator& operator=(const CTextFormator&) = default;
    virtual ~CTextFormator() = default;

    // The size in points. 1, or 0 for a font without outlines, which leaves the formator without a table.
    int Setup(HDC hdc, HFONT font, float size, CString& text);
    // The size in pixels. `font` must be selected into `hdc`.
    int SetupPixel(HDC hdc, HFONT font, float size, CString& text);

    // From the top of one line to the top of the next.
    float GetLinespace() { return m_Linespace; }
    // From the table, without the device: the extent of the characters startPos + 1 to startPos + cbString (the text's
    // own length for a cbString below 1), one further than the names say. Always 1.
    int GetTextExtent(HDC hdc, const wchar_t* lpString, int startPos, int cbString, float& width, float& height);

    // Draws `count` characters from `lpString`, the first of which has the index `begin`, each advance truncated to
    // pixels. The result of the device; 0 without a table.
    int TextOutW(HDC hdc, int x, int y, const wchar_t* lpString, int begin, int count);
    // Breaks the text at the width of `rect` and draws the lines from its top left corner, about which they are
    // rotated. The height drawn, each line truncated. Nothing clips; `format` is ignored. nCount below 1: all of it.
    unsigned long DrawTextW(HDC hdc, const wchar_t* lpString, int nCount, const RECT* rect, unsigned int format);

    // Of the baseline, in radians; set by the caller.
    double m_Rotation = 0.0;

protected:
    // Entry `index` of the table, the nearest one for an index outside it, 0 without a table.
    float PositionAt(long long index) const;
    // How many of `count` characters from `text`, which has the index `begin`, can be read: those of the table, and
    // behind it up to the end of the text.
    int ReadableCount(const wchar_t* text, int begin, int count) const;

    const float* m_CharPos = nullptr; // Entry i: the extent of the first i + 1 characters. Lies in m_Table.
    float m_Height = 0.0f;            // Of one line.
    float m_Linespace = 0.0f;
    const wchar_t* m_Str = nullptr; // Not owned.

private:
    std::shared_ptr<const float> m_Table;
    int m_Count = 0; // Entries.
};
