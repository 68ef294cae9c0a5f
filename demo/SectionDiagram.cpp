#include "SectionDiagram.h"

#include "DemoIds.h"
#include "HostText.h"

#include <TextParm.h>
#include <vectorview.h>

#include "SectionDrawing.h"

namespace {

const Gdiplus::Color Steel(225, 230, 240);
const Gdiplus::Color Weld(240, 150, 40);
const Gdiplus::Color Dimension(90, 150, 120);
const Gdiplus::Color Caption(150, 165, 185);
const Gdiplus::Color Value(255, 255, 255);
const Gdiplus::Color Result(0, 210, 225);

const double ValueHeight = 19.0;
const double CaptionHeight = 17.0;

// How a parameter is checked by its own expression.
enum class Kind { Number, Real, Free };

struct Parameter {
    const wchar_t* name;
    double WeldedSection::*size; // none for the section's name
    Kind kind;
    double x, y; // top left corner of the value
    float wide;  // of the edit box
    const wchar_t* description;
};

// In the order in which Tab walks.
const Parameter Parameters[] = {
    {L"h", &WeldedSection::height, Kind::Number, 40, 400, 68, LoadText(IDS_PARM_H)},
    {L"b", &WeldedSection::width, Kind::Number, 202, 555, 64, LoadText(IDS_PARM_B)},
    {L"tw", &WeldedSection::web, Kind::Number, 316, 424, 60, LoadText(IDS_PARM_TW)},
    {L"tf", &WeldedSection::flange, Kind::Number, 376, 508, 56, LoadText(IDS_PARM_TF)},
    {L"s", &WeldedSection::fillet, Kind::Number, 316, 355, 60, LoadText(IDS_PARM_S)},
    {L"L", &WeldedSection::length, Kind::Real, 204, 202, 76, LoadText(IDS_PARM_L)},
    {SectionDiagram::NameOfSection, nullptr, Kind::Free, 60, 618, 150, LoadText(IDS_PARM_NAME)},
};

struct Row {
    const wchar_t* name;
    const wchar_t* caption;
    const wchar_t* unit;
    const wchar_t* description;
    bool locked; // of the locked type; the others only have no edit box
    double y;
};

const Row Rows[] = {
    {L"A", LoadText(IDS_ROW_A), L"cm²", LoadText(IDS_DES_A), false, 118},
    {L"Ix", LoadText(IDS_ROW_IX), L"cm⁴", LoadText(IDS_DES_IX), false, 92},
    {L"Iy", LoadText(IDS_ROW_IY), L"cm⁴", LoadText(IDS_DES_IY), false, 66},
    {L"g", LoadText(IDS_ROW_G), L"kg/m", LoadText(IDS_DES_G), false, 40},
    {L"G", LoadText(IDS_ROW_MASS), L"kg", LoadText(IDS_DES_MASS), true, 14},
};

// The scheme, which always has the same proportions.
const double Left = 130;
const double Right = 310;
const double Top = 510;
const double Bottom = 270;
const double Flange = 24;
const double WebLeft = 209;
const double WebRight = 231;
const double Leg = 16;

void Line(CVectorView& view, double x1, double y1, double x2, double y2, const Gdiplus::Color& color) {
    view.AddLine(CGePoint2d(x1, y1), CGePoint2d(x2, y2), color, 1);
}

void Text(CVectorView& view, double x, double y, const wchar_t* text, const Gdiplus::Color& color,
          double height = CaptionHeight) {
    CDrawable* object = AddPlainText(view, CGePoint2d(x, y), text, color, height);
    static_cast<CText*>(object)->SetTextWide(static_cast<float>(height * 2.0));
}

void AddParameter(CVectorView& view, const Parameter& row, const WeldedSection& section) {
    const CGePoint2d at(row.x, row.y);
    CString name = row.name;
    CString text = row.size != nullptr ? FormatLength(section.*row.size) : CString(L"GL-1");
    CDrawable* object = nullptr;
    switch (row.kind) {
    case Kind::Number:
        object = view.AddParmText(at, text, name, 0.0, Value, ValueHeight, 0);
        break;
    case Kind::Real:
        object = view.AddParmTextForSS(at, text, name, 0.0, Value, ValueHeight, 0);
        break;
    case Kind::Free:
        object = view.AddParmTextNoRegExp(at, text, name, 0.0, Value, ValueHeight, 0);
        break;
    }
    auto* parm = static_cast<CTextParm*>(object);
    parm->SetParmDes(row.description);
    parm->SetTextEditWide(row.wide);
}

void MakeScheme(CVectorView& view) {
    for (const bool upper : {true, false}) {
        const double outer = upper ? Top : Bottom;
        const double inner = upper ? Top - Flange : Bottom + Flange;
        Line(view, Left, outer, Right, outer, Steel);
        Line(view, Left, inner, Right, inner, Steel);
        Line(view, Left, outer, Left, inner, Steel);
        Line(view, Right, outer, Right, inner, Steel);
        const double leg = upper ? -Leg : Leg;
        Line(view, WebLeft - Leg, inner, WebLeft, inner + leg, Weld);
        Line(view, WebRight + Leg, inner, WebRight, inner + leg, Weld);
    }
    Line(view, WebLeft, Bottom + Flange, WebLeft, Top - Flange, Steel);
    Line(view, WebRight, Bottom + Flange, WebRight, Top - Flange, Steel);

    // Dimensions. The values are in their gaps or beside them.
    AddDimension(view, CGePoint2d(Left, Bottom), CGePoint2d(Left, Top), 72, 5, 30, Dimension);
    AddDimension(view, CGePoint2d(Left, Top), CGePoint2d(Right, Top), 36, 5, 100, Dimension);
    AddDimension(view, CGePoint2d(Right, Top), CGePoint2d(Right, Top - Flange), 34, 5, 0, Dimension);
    const double web = 414;
    Line(view, WebLeft - 34, web, WebLeft, web, Dimension);
    Line(view, WebRight, web, 290, web, Dimension);
    for (const double x : {WebLeft, WebRight}) {
        Line(view, x - 4, web - 4, x + 4, web + 4, Dimension);
    }
    const double weld = Bottom + Flange + Leg / 3;
    Line(view, WebRight + Leg / 2, weld + 3, 268, 345, Dimension);
    Line(view, 268, 345, 290, 345, Dimension);

    // The member from the side, with its length below it.
    Line(view, Left, 236, Right, 236, Steel);
    Line(view, Left, 231, Right, 231, Steel);
    Line(view, Left, 219, Right, 219, Steel);
    Line(view, Left, 214, Right, 214, Steel);
    Line(view, Left, 214, Left, 236, Steel);
    Line(view, Right, 214, Right, 236, Steel);
    AddDimension(view, CGePoint2d(Right, 214), CGePoint2d(Left, 214), 22, 5, 96, Dimension);
}

} // namespace

void SectionDiagram::Make(CVectorView& view) {
    const WeldedSection section;
    // Added first, so that a click on a value takes it and not a line beside it.
    for (const Parameter& row : Parameters) {
        AddParameter(view, row, section);
    }
    for (const Row& row : Rows) {
        auto* parm = static_cast<CTextParm*>(
            view.AddParmText(CGePoint2d(220, row.y), L"0", row.name, 0.0, Result, ValueHeight, 0));
        parm->SetParmDes(row.description);
        parm->SetTextEditWide(90);
        if (row.locked) {
            parm->SetParmType(TypeLocked);
        } else {
            parm->SetNeedEditBox(0);
        }
    }
    MakeScheme(view);

    Text(view, 12, 618, LoadText(IDS_CAPTION_NAME), Caption);
    Text(view, 236, 618, LoadText(IDS_CAPTION_SECTION), Caption);
    Text(view, 22, 400, L"h", Dimension);
    Text(view, 184, 555, L"b", Dimension);
    Text(view, 293, 424, L"tw", Dimension);
    Text(view, 357, 508, L"tf", Dimension);
    Text(view, 300, 355, L"s", Dimension);
    Text(view, 186, 202, L"L", Dimension);
    Line(view, 12, 156, 420, 156, Dimension);
    Text(view, 12, 150, LoadText(IDS_CAPTION_RESULTS), Caption);
    for (const Row& row : Rows) {
        Text(view, 28, row.y, row.caption, Caption);
        Text(view, 326, row.y, row.unit, Caption);
    }
}

void SectionDiagram::ShowFigures(CVectorView& view, const WeldedSection& section) {
    const SectionFigures figures = ComputeFigures(section);
    const struct {
        const wchar_t* name;
        double value;
    } values[] = {{L"A", figures.area / 1e2},
                  {L"Ix", figures.inertiaX / 1e4},
                  {L"Iy", figures.inertiaY / 1e4},
                  {L"g", figures.massPerMetre},
                  {L"G", figures.mass}};
    for (const auto& value : values) {
        if (CTextParm* parm = Find(view, value.name)) {
            parm->SetText(FormatLength(value.value));
        }
    }
}

CTextParm* SectionDiagram::Find(CVectorView& view, const wchar_t* name) {
    CDrawableArray* list = view.GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < list->GetSize(); ++i) {
        auto* parm = DYNAMIC_DOWNCAST(CTextParm, list->GetAt(i));
        if (parm != nullptr && parm->GetParmName() == name) {
            return parm;
        }
    }
    return nullptr;
}

double* SectionDiagram::ValueOf(WeldedSection& section, const wchar_t* name) {
    for (const Parameter& row : Parameters) {
        if (row.size != nullptr && wcscmp(row.name, name) == 0) {
            return &(section.*row.size);
        }
    }
    return nullptr;
}
