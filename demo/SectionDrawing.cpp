#include "SectionDrawing.h"

#include "DemoIds.h"
#include "HostText.h"

#include <KXBaseOpr.h>
#include <Text.h>
#include <VectorLabel.h>

#include <algorithm>

namespace {

const Gdiplus::Color Steel(240, 240, 240);
const Gdiplus::Color Weld(240, 150, 40);
const Gdiplus::Color Axis(200, 70, 70);
const Gdiplus::Color Dimension(80, 200, 110);
const Gdiplus::Color Figure(0, 200, 220);

class Sheet {
public:
    Sheet(CVectorView& view, const WeldedSection& section) : m_view(view), m_section(section) {
        m_text = std::max(section.height, section.width) / 24.0;
    }

    void DrawOutline();
    void DrawWelds();
    void DrawAxes();
    void DrawDimensions();
    void DrawFigures(const CString& name);
    std::vector<CDrawable*> Take() { return std::move(m_objects); }

private:
    void Keep(CDrawable* object) { m_objects.push_back(object); }
    void Line(double x1, double y1, double x2, double y2, const Gdiplus::Color& color) {
        Keep(m_view.AddLine(CGePoint2d(x1, y1), CGePoint2d(x2, y2), color, 1));
    }
    void Text(double x, double y, const CString& text, const Gdiplus::Color& color) {
        CDrawable* object = AddPlainText(m_view, CGePoint2d(x, y), text, color, m_text);
        // The drawing is fitted by this width too. A Chinese character is as wide as it is high, others half of that.
        double wide = 0.0;
        for (int i = 0; i < text.GetLength(); ++i) {
            wide += text[i] < 0x2E80 ? 0.56 : 1.0;
        }
        static_cast<CText*>(object)->SetTextWide(static_cast<float>(wide * m_text));
        Keep(object);
    }
    void Label(double x1, double y1, double x2, double y2, double offset) {
        Keep(AddDimension(m_view, CGePoint2d(x1, y1), CGePoint2d(x2, y2), offset, m_text / 5.0, 0.0, Dimension));
    }
    void Polygon(CGePointArray& points, const Gdiplus::Color& color) {
        CBulgeArray bulges;
        bulges.SetSize(points.GetSize());
        for (INT_PTR i = 0; i < points.GetSize(); ++i) {
            double straight = 0.0;
            bulges.SetAt(i, straight);
        }
        Keep(m_view.AddPLine(points, bulges, color, 1, 1, 1));
    }
    void Triangle(double x, double y, double dx, double dy);

    CVectorView& m_view;
    const WeldedSection& m_section;
    double m_text = 0.0;
    std::vector<CDrawable*> m_objects;
};

void Add(CGePointArray& points, double x, double y) {
    CGePoint2d point(x, y);
    points.Add(point);
}

// Web and flanges are three plates that touch.
void Sheet::DrawOutline() {
    const double right = m_section.width / 2.0;
    const double top = m_section.height / 2.0;
    const double inner = m_section.GetWebHeight() / 2.0;
    const double web = m_section.web / 2.0;
    for (const double side : {1.0, -1.0}) {
        CGePointArray flange;
        Add(flange, -right, side * top);
        Add(flange, right, side * top);
        Add(flange, right, side * inner);
        Add(flange, -right, side * inner);
        Polygon(flange, Steel);
    }
    Line(-web, -inner, -web, inner, Steel);
    Line(web, -inner, web, inner, Steel);
}

void Sheet::Triangle(double x, double y, double dx, double dy) {
    CGePointArray points;
    Add(points, x, y);
    Add(points, x + dx, y);
    Add(points, x, y + dy);
    Polygon(points, Weld);
}

void Sheet::DrawWelds() {
    const double leg = m_section.fillet;
    if (leg <= 0.0) {
        return;
    }
    const double x = m_section.web / 2.0;
    const double y = m_section.GetWebHeight() / 2.0;
    Triangle(x, y, leg, -leg);
    Triangle(-x, y, -leg, -leg);
    Triangle(-x, -y, -leg, leg);
    Triangle(x, -y, leg, leg);
}

void Sheet::DrawAxes() {
    const double x = m_section.width / 2.0 + m_text;
    const double y = m_section.height / 2.0 + m_text;
    Line(-x, 0, x, 0, Axis);
    Line(0, -y, 0, y, Axis);
    Text(x + m_text * 0.2, m_text / 2.0, L"x", Axis);
    Text(-m_text * 0.25, y + m_text * 1.1, L"y", Axis);
}

void Sheet::DrawDimensions() {
    const double right = m_section.width / 2.0;
    const double top = m_section.height / 2.0;
    const double away = 3.2 * m_text;
    const CString width = FormatLength(m_section.width);
    const CString height = FormatLength(m_section.height);
    const auto half = [this](const CString& text) { return text.GetLength() * 0.28 * m_text; };
    // The figures are on the dimension lines, and left of the upright one.
    Label(-right, top, right, top, away);
    Text(-half(width), top + away + m_text * 1.2, width, Dimension);
    Label(-right, -top, -right, top, away);
    Text(-right - away - m_text * 0.5 - 2.0 * half(height), m_text / 2.0, height, Dimension);

    // Thicknesses are written beside the plates: between ticks there is no space for them.
    Text(right + m_text * 0.4, top - m_section.flange / 2.0 + m_text / 2.0, L"t = " + FormatLength(m_section.flange),
         Dimension);
    const double leader = m_section.web / 2.0;
    Line(leader, -top * 0.3, leader + m_text * 1.2, -top * 0.3, Dimension);
    Text(leader + m_text * 1.5, -top * 0.3 + m_text / 2.0, L"t = " + FormatLength(m_section.web), Dimension);
}

void Sheet::DrawFigures(const CString& name) {
    const SectionFigures figures = ComputeFigures(m_section);
    const double left = -m_section.width / 2.0;
    double y = -m_section.height / 2.0 - 2.0 * m_text;
    const auto row = [&](const CString& text) {
        Text(left, y, text, Figure);
        y -= 1.5 * m_text;
    };
    CString text;
    row(name + L"  " + LoadText(IDS_SECTION_NAME) + FormatLength(m_section.height) + L"×" +
        FormatLength(m_section.width) + L"×" + FormatLength(m_section.web) + L"×" + FormatLength(m_section.flange) +
        LoadText(IDS_SECTION_LENGTH) + FormatLength(m_section.length));
    text.Format(L"A = %.2f cm²", figures.area / 1e2);
    row(text);
    text.Format(LoadText(IDS_SECTION_INERTIA), figures.inertiaX / 1e4, figures.inertiaY / 1e4);
    row(text);
    text.Format(LoadText(IDS_SECTION_MASS), figures.massPerMetre, figures.mass);
    row(text);
}

} // namespace

std::vector<CDrawable*> DrawSection(CVectorView& view, const WeldedSection& section, const CString& name) {
    Sheet sheet(view, section);
    sheet.DrawOutline();
    sheet.DrawWelds();
    sheet.DrawAxes();
    sheet.DrawDimensions();
    sheet.DrawFigures(name);
    return sheet.Take();
}

void RemoveObjects(CVectorView& view, const std::vector<DrawnObject>& objects) {
    CGraphicDocument* document = view.GetDocument();
    for (const auto& [object, alive] : objects) {
        CDrawableArray* list = document->GetDrawableObjs();
        bool there = false;
        for (INT_PTR i = 0; i < list->GetSize() && !there && alive.IsAlive(); ++i) {
            there = list->GetAt(i) == object;
        }
        // An object that the user has erased belongs to the history.
        if (there) {
            document->DeleteObject(object);
            CKXMemoryManager::Instance()->RemoveMemoryInfo(object, __FILE__, __LINE__);
            delete object;
        }
    }
}

CString FormatLength(double value) {
    CString text;
    text.Format(L"%.2f", value);
    text.TrimRight(L'0');
    text.TrimRight(L'.');
    return text;
}

CDrawable* AddDimension(CVectorView& view, CGePoint2d a, CGePoint2d b, double offset, double size, double gap,
                        const Gdiplus::Color& color) {
    const CGeVector2d along = (b - a).normal();
    const CGeVector2d across(-along.y * offset, along.x * offset);
    auto* label = new CKXVectorLabel;
    CKXMemoryManager::Instance()->AddMemoryInfo(label, __FILE__, __LINE__);
    label->SetPenColor(RGB(color.GetR(), color.GetG(), color.GetB()));
    const double start = 0.15; // of the offset: the extension lines keep clear of the object
    label->SetLeftLabel(a + across * start, a + across);
    label->SetRightLabel(b + across * start, b + across);
    label->SetLabelLength(size);
    label->SetLabelWidth(size / 3.0);
    label->SetHasTextHole(gap > 0.0);
    label->SetTextHoleWidth(gap / 2.0);
    view.GetDocument()->AddDrawAobject(label);
    return label;
}

CDrawable* AddPlainText(CVectorView& view, CGePoint2d topLeft, const CString& text, const Gdiplus::Color& color,
                        double height) {
    CDrawable* object = view.AddText(topLeft, text, 0.0, color, height, 1, 0);
    static_cast<CText*>(object)->SetBKMode(TRANSPARENT);
    return object;
}
