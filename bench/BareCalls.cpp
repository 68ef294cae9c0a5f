#include "BareCalls.h"

#include "Document.h"
#include "VectorGraphic.h"

#include <algorithm>
#include <climits>

namespace bench {

// Writes down what a drawing asks of its context. Only the queries are passed on.
class CaptureDC : public CDC {
public:
    using CDC::LineTo;
    using CDC::MoveTo;
    using CDC::SelectObject;
    using CDC::TextOut;

    explicit CaptureDC(BareDrawing& drawing) : m_drawing(drawing) { CreateCompatibleDC(nullptr); }

    void Begin() { m_drawing.m_objects.push_back({m_drawing.m_calls.size(), 0, {INT_MAX, INT_MAX, INT_MIN, INT_MIN}}); }
    void End() { m_drawing.m_objects.back().end = m_drawing.m_calls.size(); }

    int SetBkMode(int mode) override { return Add(Kind::BkMode, {mode}, 0, TRANSPARENT); }
    COLORREF SetBkColor(COLORREF color) override { return static_cast<COLORREF>(Add(Kind::BkColor, {}, color, 0)); }
    COLORREF SetTextColor(COLORREF color) override { return static_cast<COLORREF>(Add(Kind::TextColor, {}, color, 0)); }
    int SetROP2(int mode) override { return Add(Kind::Rop, {mode}, 0, R2_COPYPEN); }
    int GetROP2() const override { return R2_COPYPEN; }
    CGdiObject* SelectStockObject(int index) override {
        Add(Kind::Stock, {index}, 0, 0);
        return CBrush::FromHandle(static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    }
    CBrush* SelectObject(CBrush*) override {
        Add(Kind::Stock, {WHITE_BRUSH}, 0, 0);
        return nullptr;
    }
    CPen* SelectObject(CPen* pen) override {
        LOGPEN log = {};
        if (pen == nullptr || pen->GetLogPen(&log) == 0) {
            Add(Kind::Old, {}, 0, 0);
        } else {
            Add(Kind::Pen, {static_cast<int>(log.lopnStyle), static_cast<int>(log.lopnWidth.x)}, log.lopnColor, 0);
        }
        return nullptr;
    }
    CFont* SelectObject(CFont* font) override {
        LOGFONTW log = {};
        if (font == nullptr || font->GetLogFont(&log) == 0) {
            Add(Kind::Old, {}, 0, 0);
            return nullptr;
        }
        Add(Kind::Font, {}, 0, 0);
        m_drawing.m_calls.back().extra = static_cast<int>(m_drawing.m_fonts.size());
        m_drawing.m_fonts.push_back(log);
        CDC::SelectObject(font); // For what the text measures afterwards.
        return nullptr;
    }
    CPoint MoveTo(int x, int y) override {
        Reach(x, y);
        Add(Kind::Move, {x, y}, 0, 0);
        return CPoint();
    }
    BOOL LineTo(int x, int y) override {
        Reach(x, y);
        return Add(Kind::Line, {x, y}, 0, TRUE);
    }
    BOOL Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) override {
        Reach(x1, y1);
        Reach(x2, y2);
        return Add(Kind::Arc, {x1, y1, x2, y2, x3, y3, x4, y4}, 0, TRUE);
    }
    BOOL Ellipse(int x1, int y1, int x2, int y2) override {
        Reach(x1, y1);
        Reach(x2, y2);
        return Add(Kind::Ellipse, {x1, y1, x2, y2}, 0, TRUE);
    }
    BOOL TextOut(int x, int y, LPCTSTR text, int count) override {
        const CSize size = GetTextExtent(text, count);
        const int around = static_cast<int>(size.cx) + static_cast<int>(size.cy);
        Reach(x - around, y - around);
        Reach(x + around, y + around);
        Add(Kind::Text, {x, y}, 0, 0);
        m_drawing.m_calls.back().extra = static_cast<int>(m_drawing.m_texts.size());
        m_drawing.m_texts.emplace_back(text, count);
        return TRUE;
    }

private:
    using Kind = BareDrawing::Kind;

    int Add(Kind kind, std::initializer_list<int> numbers, COLORREF color, int result) {
        BareDrawing::Call call = {kind, {}, color, 0};
        std::copy(numbers.begin(), numbers.end(), call.numbers);
        m_drawing.m_calls.push_back(call);
        return result;
    }
    void Reach(int x, int y) {
        RECT& reach = m_drawing.m_objects.back().reach;
        reach.left = std::min<LONG>(reach.left, x);
        reach.top = std::min<LONG>(reach.top, y);
        reach.right = std::max<LONG>(reach.right, x);
        reach.bottom = std::max<LONG>(reach.bottom, y);
    }

    BareDrawing& m_drawing;
};

BareDrawing::BareDrawing(CVectorGraphic& graphic) {
    CaptureDC capture(*this);
    CDrawableArray& objects = *graphic.GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        capture.Begin();
        graphic.OnDraw(&capture, objects[i]);
        capture.End();
    }
}

void BareDrawing::PaintObject(HDC dc, const Object& object) const {
    HGDIOBJ made = nullptr;
    HGDIOBJ old = nullptr;
    for (size_t i = object.begin; i < object.end; ++i) {
        const Call& call = m_calls[i];
        const int* a = call.numbers;
        switch (call.kind) {
        case Kind::BkMode:
            ::SetBkMode(dc, a[0]);
            break;
        case Kind::BkColor:
            ::SetBkColor(dc, call.color);
            break;
        case Kind::TextColor:
            ::SetTextColor(dc, call.color);
            break;
        case Kind::Rop:
            ::SetROP2(dc, a[0]);
            break;
        case Kind::Stock:
            ::SelectObject(dc, ::GetStockObject(a[0]));
            break;
        case Kind::Pen:
            made = ::CreatePen(a[0], a[1], call.color);
            old = ::SelectObject(dc, made);
            break;
        case Kind::Font:
            made = ::CreateFontIndirectW(&m_fonts[static_cast<size_t>(call.extra)]);
            old = ::SelectObject(dc, made);
            break;
        case Kind::Old:
            ::SelectObject(dc, old);
            ::DeleteObject(made);
            break;
        case Kind::Move:
            ::MoveToEx(dc, a[0], a[1], nullptr);
            break;
        case Kind::Line:
            ::LineTo(dc, a[0], a[1]);
            break;
        case Kind::Arc:
            ::Arc(dc, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7]);
            break;
        case Kind::Ellipse:
            ::Ellipse(dc, a[0], a[1], a[2], a[3]);
            break;
        case Kind::Text: {
            const CString& text = m_texts[static_cast<size_t>(call.extra)];
            ::TextOutW(dc, a[0], a[1], text, text.GetLength());
            break;
        }
        }
    }
}

void BareDrawing::Paint(HDC dc) const {
    for (const Object& object : m_objects) {
        PaintObject(dc, object);
    }
}

void BareDrawing::PaintPart(HDC dc, const RECT& seen) const {
    for (const Object& object : m_objects) {
        if (object.reach.right >= seen.left - 4 && object.reach.left <= seen.right + 4 &&
            object.reach.bottom >= seen.top - 4 && object.reach.top <= seen.bottom + 4) {
            PaintObject(dc, object);
        }
    }
}

} // namespace bench
