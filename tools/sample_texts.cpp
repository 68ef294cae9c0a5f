// A drawing of texts: a plate with dimension labels on all four sides, texts turned in steps, a table of parameters.
// Layer 14: tools.
#include "samples.h"

#include <MemoryInfo.h>
#include <Text.h>
#include <TextParm.h>

#include <cmath>

namespace {

const COLORREF White = RGB(255, 255, 255);
const COLORREF Yellow = RGB(255, 220, 60);
const COLORREF Cyan = RGB(0, 200, 220);
const COLORREF Green = RGB(80, 200, 110);

// The document owns what it is given.
template <typename Kind>
Kind& Add(CVectorView& view, COLORREF color) {
    auto* object = new Kind;
    KX_ADD_MEMORY(object);
    object->SetPenColor(color);
    view.GetDocument()->AddDrawAobject(object);
    return *object;
}

void Line(CVectorView& view, double x1, double y1, double x2, double y2) {
    view.AddLine(CGePoint2d(x1, y1), CGePoint2d(x2, y2), Gdiplus::Color(255, 255, 255), 1);
}

void Frame(CVectorView& view, double x1, double y1, double x2, double y2) {
    Line(view, x1, y1, x2, y1);
    Line(view, x2, y1, x2, y2);
    Line(view, x2, y2, x1, y2);
    Line(view, x1, y2, x1, y1);
}

void Place(CText& text, double x, double y, float height, float width, LPCTSTR words, float angle = 0) {
    text.SetPos(CGePoint2d(x, y));
    text.SetTextHeight(height);
    text.SetTextWide(width);
    text.SetText(words);
    text.SetAngle(angle);
}

} // namespace

CKXVectorLabel& AddLabel(CVectorView& view, CGePoint2d left, CGePoint2d right, CGeVector2d away) {
    auto& label = Add<CKXVectorLabel>(view, Green);
    label.SetLeftLabel(left, left + away);
    label.SetRightLabel(right, right + away);
    label.SetLabelLength(18);
    label.SetLabelWidth(8);
    label.SetHasTextHole(false);
    label.SetTextShow(1);
    return label;
}

namespace {

// Extension lines that begin a little off the points, and a dimension line with a gap.
void Label(CVectorView& view, CGePoint2d left, CGePoint2d right, double dx, double dy) {
    const CGeVector2d whole(dx, dy);
    const CGeVector2d gap = whole * 0.15;
    CKXVectorLabel& label = AddLabel(view, left, right, whole);
    label.SetLeftLabelStartPt(left + gap);
    label.SetRightLabelStartPt(right + gap);
    label.SetHasTextHole(true);
    label.SetTextHoleWidth(90);
}

} // namespace

void MakeTexts(CVectorView& view) {
    Frame(view, 600, 500, 2200, 1300);
    Place(Add<CText>(view, White), 1150, 970, 120, 500, L"钢板 Plate");
    Label(view, CGePoint2d(600, 1300), CGePoint2d(2200, 1300), 0, 200);
    Label(view, CGePoint2d(600, 500), CGePoint2d(2200, 500), 0, -200);
    Label(view, CGePoint2d(600, 500), CGePoint2d(600, 1300), -200, 0);
    Label(view, CGePoint2d(2200, 1300), CGePoint2d(2200, 500), 200, 0);

    const double turn = 3.14159265358979 / 6;
    for (int i = 0; i < 12; ++i) {
        const double x = 3200 + 150 * std::cos(i * turn);
        const double y = 1250 + 150 * std::sin(i * turn);
        Place(Add<CText>(view, i % 2 == 0 ? Cyan : Yellow), x, y, 60, 260, L"旋转 Turn", static_cast<float>(30 * i));
    }

    const struct {
        LPCTSTR label;
        LPCTSTR name;
        LPCTSTR value;
        LPCTSTR description;
    } rows[] = {{L"长度 L", L"L", L"1600", L"板的长度"},
                {L"宽度 B", L"B", L"800", L"板的宽度"},
                {L"厚度 t", L"t", L"12.50", L"板的厚度"},
                {L"密度 ρ", L"rho", L"7.85", L"钢的密度"}};
    Place(Add<CText>(view, White), 2800, 760, 80, 400, L"参数表");
    double top = 640;
    for (const auto& row : rows) {
        Frame(view, 2800, top - 110, 3250, top);
        Frame(view, 3250, top - 110, 3700, top);
        Place(Add<CText>(view, White), 2830, top - 20, 70, 400, row.label);
        auto& parm = Add<CTextParm>(view, Yellow);
        Place(parm, 3280, top - 20, 70, 380, row.value);
        parm.SetParmName(row.name);
        parm.SetParmDes(row.description);
        top -= 110;
    }
}
