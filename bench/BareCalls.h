// The GDI calls that a drawing makes, written down once and repeated without the library: the limit of a paint.
// Layer 15: bench.
#pragma once

#include <afxwin.h>

#include <vector>

class CGraphicDocument;
class CVectorGraphic;

namespace bench {

// The calls of one object, and the pixels that they reach without the width of a pen.
class BareDrawing {
public:
    // Asks each object of the painter's drawing once. Texts are drawn without being measured.
    explicit BareDrawing(CVectorGraphic& graphic);

    void Paint(HDC dc) const;
    // Only the objects that reach into the rectangle: a program that scans a list of boxes.
    void PaintPart(HDC dc, const RECT& seen) const;

private:
    friend class CaptureDC;
    enum class Kind { BkMode, BkColor, TextColor, Rop, Stock, Pen, Font, Old, Move, Line, Arc, Ellipse, Text };
    struct Call {
        Kind kind;
        int numbers[8];
        COLORREF color;
        int extra; // index of the font or of the text
    };
    struct Object {
        size_t begin, end;
        RECT reach;
    };
    void PaintObject(HDC dc, const Object& object) const;

    std::vector<Call> m_calls;
    std::vector<Object> m_objects;
    std::vector<LOGFONTW> m_fonts;
    std::vector<CString> m_texts;
};

} // namespace bench
