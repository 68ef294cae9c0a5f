// A sample drawing with every kind of geometry: a mounting plate with a bolt circle, slots and a rounded outline.
// Layer 14: tools.
#include "samples.h"

#include <Circle.h>
#include <CombRect.h>
#include <MemoryInfo.h>
#include <PLine.h>

#include <cmath>
#include <vector>

namespace {

const double kPi = std::acos(-1.0);
const Gdiplus::Color kEdge(255, 255, 255);
const Gdiplus::Color kHole(0, 200, 220);
const Gdiplus::Color kAxis(240, 150, 40);
const Gdiplus::Color kFrame(128, 128, 128);

// Tenths of a millimetre.
const double kLength = 2400;
const double kDepth = 1400;
const double kCorner = 200;
const CGePoint2d kHub(700, 700);

struct Vertex {
    double x;
    double y;
    double bulge;
    const wchar_t* name;
};

CGePoint2d AroundHub(double radius, double degrees) {
    return CGePoint2d(kHub.x + radius * std::cos(degrees * kPi / 180), kHub.y + radius * std::sin(degrees * kPi / 180));
}

// The bulge of an arc of that many degrees, anticlockwise.
double BulgeOf(double degrees) {
    return std::tan(degrees / 4 * kPi / 180);
}

void Outline(CVectorView& view, const std::vector<Vertex>& vertices, const Gdiplus::Color& color, int wide) {
    CGePointArray points;
    CBulgeArray bulges;
    CStringArray names;
    CStringArray messages;
    for (const Vertex& vertex : vertices) {
        CGePoint2d point(vertex.x, vertex.y);
        double bulge = vertex.bulge;
        points.Add(point);
        bulges.Add(bulge);
        names.Add(vertex.name);
        messages.Add(CString());
    }
    view.AddPLine(points, bulges, color, names, messages, wide, 1, 0, 0);
}

void Axis(CVectorView& view, double x1, double y1, double x2, double y2) {
    view.AddLine(CGePoint2d(x1, y1), CGePoint2d(x2, y2), kAxis, 1)->SetLineType(PS_DASHDOT);
}

CCircle* Hole(CVectorView& view, CGePoint2d center, double radius) {
    auto* hole = new CCircle;
    KX_ADD_MEMORY(hole);
    hole->SetCenter(center);
    hole->setRadius(radius);
    hole->SetPenColor(kHole.ToCOLORREF());
    view.GetDocument()->AddDrawAobject(hole);
    return hole;
}

// Rounded corners, and a half-round notch in the upper edge: there the bulge is negative.
void AddPlate(CVectorView& view) {
    const double round = BulgeOf(90);
    Outline(view,
            {{kCorner, 0, 0, L"lower edge"},
             {kLength - kCorner, 0, round, L""},
             {kLength, kCorner, 0, L"right edge"},
             {kLength, kDepth - kCorner, round, L""},
             {kLength - kCorner, kDepth, 0, L""},
             {1350, kDepth, -1, L"notch"},
             {1050, kDepth, 0, L""},
             {kCorner, kDepth, round, L""},
             {0, kDepth - kCorner, 0, L"left edge"},
             {0, kCorner, round, L""}},
            kEdge, 8);
}

void AddSlots(CVectorView& view) {
    for (const double y : {450.0, 950.0}) {
        Outline(view, {{1450, y - 90, 0, L""}, {1950, y - 90, 1, L""}, {1950, y + 90, 0, L""}, {1450, y + 90, 1, L""}},
                kHole, 5);
        Axis(view, 1300, y, 2100, y);
    }
    // A slot along a circle about the hub: the inner side runs the other way, with a negative bulge.
    const CGePoint2d innerStart = AroundHub(480, -30);
    const CGePoint2d innerEnd = AroundHub(480, 30);
    const CGePoint2d outerStart = AroundHub(560, -30);
    const CGePoint2d outerEnd = AroundHub(560, 30);
    Outline(view,
            {{outerStart.x, outerStart.y, BulgeOf(60), L""},
             {outerEnd.x, outerEnd.y, 1, L""},
             {innerEnd.x, innerEnd.y, -BulgeOf(60), L""},
             {innerStart.x, innerStart.y, 1, L""}},
            kHole, 5);
}

void AddBoltCircle(CVectorView& view) {
    const double pitch = 360;
    Hole(view, kHub, 180)->SetLineWide(5);
    for (int i = 0; i < 6; ++i) {
        Hole(view, AroundHub(pitch, 60 * i + 30), 45);
    }
    // The pitch circle in three arcs, the last of them across the axis; by centre and through points.
    const Gdiplus::PointF center(static_cast<float>(kHub.x), static_cast<float>(kHub.y));
    for (const double start : {40.0, 160.0}) {
        view.AddArc(CGePoint2d(center), static_cast<float>(pitch), static_cast<float>(start * kPi / 180),
                    static_cast<float>((start + 100) * kPi / 180), kAxis, L"", L"", 0, 0)
            ->SetLineType(PS_DASHDOT);
    }
    view.AddArc(AroundHub(pitch, 280), AroundHub(pitch, 330), AroundHub(pitch, 20), kAxis, L"pitch circle", L"", 0, 0)
        ->SetLineType(PS_DASHDOT);
    view.AddCenterPoint(kHub, L"hub", L"", kAxis, 0);
    view.AddCenterPoint(CGePoint2d(kLength - kCorner, kCorner), L"", L"", kAxis, 0);
    // Two dowel pins, filled.
    for (const double y : {kCorner, kDepth - kCorner}) {
        Hole(view, CGePoint2d(kCorner, y), 50)->SetFill(1);
    }
}

void AddMeasures(CVectorView& view) {
    Axis(view, kHub.x - 620, kHub.y, kHub.x + 450, kHub.y);
    Axis(view, kHub.x, kHub.y - 620, kHub.x, kHub.y + 620);
    // Below: the hub, and the length. On the right: the slots, and the depth.
    AddLabel(view, {0, -100}, {kHub.x, -100}, {0, -140});
    AddLabel(view, {kHub.x, -100}, {kLength, -100}, {0, -140});
    AddLabel(view, {0, -100}, {kLength, -100}, {0, -340});
    const double right = kLength + 100;
    AddLabel(view, {right, 450}, {right, 0}, {140, 0});
    AddLabel(view, {right, 950}, {right, 450}, {140, 0});
    AddLabel(view, {right, kDepth}, {right, 950}, {140, 0});
    AddLabel(view, {right, kDepth}, {right, 0}, {360, 0});
}

void AddFrame(CVectorView& view) {
    auto* frame = new CCombRect;
    KX_ADD_MEMORY(frame);
    frame->SetPenColor(kFrame.ToCOLORREF());
    frame->SetLineType(PS_DOT);
    frame->SetVectorId(L"plate");
    frame->SetPoint(CGePoint2d(-60, -60), CGePoint2d(kLength + 60, kDepth + 60));
    view.GetDocument()->AddDrawAobject(frame);
}

} // namespace

void MakeMechanicalPart(CVectorView& view) {
    AddPlate(view);
    AddSlots(view);
    AddBoltCircle(view);
    AddMeasures(view);
    AddFrame(view);
}
