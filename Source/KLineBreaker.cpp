#include "KLineBreaker.h"

#include "TextFormator.h"
#include "TextSteps.h"

namespace {

constexpr float kWidthTolerance = 0.001f;

} // namespace

// Compatibility 58: a character's class comes from its low byte.
// True when a character that is no blank follows.
bool KLineBreaker::SkipBlanks() {
    while (m_nPos < m_nLen && IsBlank(m_pText[m_nPos])) {
        ++m_nPos;
    }
    return m_nPos < m_nLen;
}

void KLineBreaker::NextWord() {
    bool prevHigh = false;
    while (m_nPos < m_nLen) {
        const wchar_t c = m_pText[m_nPos];
        if (IsBlank(c)) {
            return;
        }
        const bool high = IsHigh(c);
        ++m_nPos;
        if (prevHigh && high) {
            return;
        }
        prevHigh = high;
    }
}

int KLineBreaker::GetLine(CTextFormator& formator, HDC hdc, int width, int& begin, int& end) {
    using TextSteps::Line;
    Line stage = Line::Entered;
    const auto report = [&] {
        AfxMessageBox(L"KLineBreaker::GetLine出错:strStep=" +
                      TextSteps::OfLine(stage, m_pText, m_nPos, begin, m_Width, m_Height));
    };
    try {
        if (m_pText == nullptr) {
            AfxThrowInvalidArgException();
        }
        if (!SkipBlanks()) {
            return 0;
        }
        stage = Line::Skipped;
        begin = m_nPos;
        for (;;) {
            stage = Line::AtWord;
            if (!SkipBlanks()) {
                end = m_nPos;
                return 1;
            }
            NextWord();
            if (m_nPos == m_nLen) {
                // There is no break after the last word, so it is not measured.
                end = m_nPos;
                return 1;
            }
            stage = Line::Measuring;
            formator.GetTextExtent(hdc, m_pText + begin, begin, m_nPos - begin, m_Width, m_Height);
            stage = Line::Measured;
            if (m_Width >= static_cast<float>(width) - kWidthTolerance) {
                end = m_nPos;
                return 1;
            }
        }
    } catch (CException* e) {
        e->Delete();
        report();
    } catch (...) {
        report();
    }
    return 1;
}
