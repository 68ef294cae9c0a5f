// KLineBreaker: finds the lines of one text for CTextFormator::DrawTextW. Not exported.
// Layer 4: geometry.
#pragma once

#include <windows.h>

class CTextFormator;

// Blanks (line feeds and tabs among them) separate words. A line ends with the word that reaches the width, so that it
// may be wider by that word. Two high characters in a row end a word.
// Only the low 8 bits of a character decide whether it is a blank or a high one.
class KLineBreaker {
public:
    // The text is not owned. `height` is the result of GetHeight until the first measurement; a text of one word is
    // never measured.
    KLineBreaker(const wchar_t* text, int length, float height) : m_pText(text), m_nLen(length), m_Height(height) {}

    // The next line with a word in it, as the index of its first character and the index after its last word. 0 when
    // there is none. A failure is shown in a message box and gives 1.
    int GetLine(CTextFormator& formator, HDC hdc, int width, int& begin, int& end);
    int GetPosition() const { return m_nPos; }
    // Of the part that was measured last, in pixels.
    float GetWidth() const { return m_Width; }
    float GetHeight() const { return m_Height; }

    static bool IsBlank(wchar_t c) { return (c & 0xFF) <= 32; }
    static bool IsHigh(wchar_t c) { return (c & 0xFF) >= 128; }

private:
    bool SkipBlanks();
    void NextWord();

    const wchar_t* m_pText;
    int m_nLen;
    int m_nPos = 0;
    float m_Width = 0.0f;
    float m_Height;
};
