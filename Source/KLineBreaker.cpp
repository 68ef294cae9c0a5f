// KLineBreaker: finds the lines of one text. Layer: geometry.

#include "KLineBreaker.h"

#include "TextFormator.h"
#include "Truncate.h"

namespace {

constexpr float kWidthTolerance = 0.001f;

} // namespace

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
    // The stage is a text with the values of that moment. It is put together only when something failed: written out
    // at every word, a long text would be copied as often as it has words.
    enum { kEntered = 30000, kSkipped, kAtWord, kMeasuring, kMeasured } stage = kEntered;
    const auto report = [&] {
        CString step;
        if (stage == kMeasuring) {
            step.Format(L"%d:m_pText=%s,m_nPos=%d,begin=%d", stage, m_pText, m_nPos, begin);
        } else if (stage == kMeasured) {
            step.Format(L"%d:m_pText=%s,begin=%d,textwidth=%d,textHeight=%d", stage, m_pText, begin, Truncate(m_Width),
                        Truncate(m_Height));
        } else {
            step.Format(L"%d", stage);
        }
        AfxMessageBox(L"KLineBreaker::GetLine出错:strStep=" + step);
    };
    try {
        if (m_pText == nullptr) {
            AfxThrowInvalidArgException();
        }
        if (!SkipBlanks()) {
            return 0;
        }
        stage = kSkipped;
        begin = m_nPos;
        for (;;) {
            stage = kAtWord;
            if (!SkipBlanks()) {
                end = m_nPos;
                return 1;
            }
            NextWord();
            if (m_nPos == m_nLen) {
                // The last word never forces a break, so it is not measured.
                end = m_nPos;
                return 1;
            }
            stage = kMeasuring;
            formator.GetTextExtent(hdc, m_pText + begin, begin, m_nPos - begin, m_Width, m_Height);
            stage = kMeasured;
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
