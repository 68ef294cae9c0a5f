// The texts of the stages that the message boxes of the text formator and its line breaker end with.
// Layer 4: geometry; not for hosts.
#pragma once

#include "Truncate.h"
#include "VectorViewApi.h"

// A stage tells what is being attempted, with the present values. The texts are made only after a failure: made at
// every word, they would copy a long text once for each of its words.
namespace TextSteps {

enum class Extent { Entered = 300000, Counting, Measuring, Measured };
enum class Line { Entered = 30000, Skipped, AtWord, Measuring, Measured };
enum class Draw { Entered, Placed, Sized, AtLine, LineOut };

inline CString OfExtent(Extent stage, LPCTSTR own, LPCTSTR text, int startPos, int count, float width) {
    const int number = static_cast<int>(stage);
    const LPCTSTR shown = text != nullptr ? text : L"(null)";
    CString step;
    switch (stage) {
    case Extent::Entered:
        step.Format(L"%d", number);
        break;
    case Extent::Counting:
        step.Format(L"%d:lpString=%s", number, shown);
        break;
    case Extent::Measuring:
        // Compatibility 59: a stage text has a bracket without a partner.
        step.Format(L"%d:m_Str=%s,iLen=%d,lpString=%s,startPos=%d,cbString=%d)", number, own, ::lstrlenW(own), shown,
                    startPos, count);
        break;
    case Extent::Measured:
        step.Format(L"%d:width=%d", number, Truncate(width));
        break;
    }
    return step;
}

inline CString OfLine(Line stage, LPCTSTR text, int position, int begin, float width, float height) {
    const int number = static_cast<int>(stage);
    CString step;
    switch (stage) {
    case Line::Entered:
    case Line::Skipped:
    case Line::AtWord:
        step.Format(L"%d", number);
        break;
    case Line::Measuring:
        step.Format(L"%d:m_pText=%s,m_nPos=%d,begin=%d", number, text, position, begin);
        break;
    case Line::Measured:
        step.Format(L"%d:m_pText=%s,begin=%d,textwidth=%d,textHeight=%d", number, text, begin, Truncate(width),
                    Truncate(height));
        break;
    }
    return step;
}

inline CString OfDraw(Draw stage, LPCTSTR text, int x, float y, int width, int begin, int end) {
    CString step;
    switch (stage) {
    case Draw::Entered:
        step = L"300";
        break;
    case Draw::Placed:
        step.Format(L"301:x=%d,y=%d", x, Truncate(y));
        break;
    case Draw::Sized:
        step.Format(L"302:width=%d", width);
        break;
    case Draw::AtLine:
        step.Format(L"302:width=%d,begin=%d,end=%d", width, begin, end);
        break;
    case Draw::LineOut:
        step.Format(L"304:pString=%s,x=%d,y=%d,width=%d,begin=%d,end=%d", text, x, Truncate(y), width, begin, end);
        break;
    }
    return step;
}

} // namespace TextSteps
