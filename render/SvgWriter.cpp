#include "SvgWriter.h"

#include "Arc.h"
#include "CenterPoint.h"
#include "CombRect.h"
#include "DrawCommon.h"
#include "Line.h"
#include "PLine.h"
#include "RenderDC.h"
#include "TextFont.h"
#include "TextParm.h"
#include "Truncate.h"
#include "VectorLabel.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kTurn = 6.283185307179586;
constexpr int kMeasured = 1000; // The height in pixels of the cell in which a face is measured.
constexpr double kTickOvershoot = 2.5;

// The place of the painter's stroke, in pixels to the right of and below the exact place, on average over all
// fractions.
constexpr double kOddWidth = 0.5;   // Its middle is that of a pixel, half a pixel right of and below its number.
constexpr double kTruncated = -0.5; // For truncated coordinates; rounded ones stay in place on average.
constexpr double kBoxEnd = -0.25;   // A circle's box lacks its last row and column.

// Gives access to what a Draw of the library reads of its own object and no accessor returns.
struct DrawableAccess : CDrawable {
    static auto Color() { return &DrawableAccess::InnerGetPenColor; }
    static auto Wide() { return &DrawableAccess::InnerGetLineWide; }
    static auto Type() { return &DrawableAccess::InnerGetLineType; }
    static auto Width() { return &DrawableAccess::PenWidth; }
};

struct PLineAccess : CPLine {
    static auto Flags() { return &PLineAccess::m_SegPenFlagList; }
    static auto Colors() { return &PLineAccess::m_SegPenColorList; }
};

struct TextAccess : CText {
    static auto Angle() { return &TextAccess::m_Angle; }
    static auto Face() { return &TextAccess::m_fontFaceName; }
};

struct LabelAccess : CKXVectorLabel {
    static auto PlaceFigure() { return &LabelAccess::DoDrawText; }
};

bool IsDashed(int style) {
    return CRenderDC::Pattern(style) != nullptr;
}

bool IsHidden(CDrawable* object) {
    return object->GetIsShow() == 0 || object->IsDelete() != 0;
}

// Normal, or selected and shown as normal.
bool IsPlainState(CDrawable* object) {
    return object->GetDrawState() == CDrawable::Normal || object->GetDrawState() == CDrawable::Selected;
}

bool IsDirection(const CGeVector2d& v) {
    return std::isfinite(v.x) && std::isfinite(v.y);
}

} // namespace

CSvgWriter::CSvgWriter(CGraphicDocument* document, const CRenderOptions& options, CVectorGraphic& graphic, CSize size)
    : m_pDocument(document), m_Options(options), m_pTran(graphic.GetVectorViewCoordTran()),
      m_Geometry(&graphic, document->GetLayerManager()), m_Size(size) {
    if (!m_Measure.CreateCompatibleDC(nullptr)) {
        AfxThrowResourceException();
    }
}

// ---- The file ------------------------------------------------------------------------------------------------------

const CSvgBuffer& CSvgWriter::Write(COLORREF background) {
    m_Background = background;
    const double scale = m_pTran->GetScale();
    const double box[4] = {m_pTran->GetOriginX(), -(m_pTran->GetOriginY() + scale * m_pTran->GethScreen()),
                           scale * m_Size.cx, scale * m_Size.cy};
    const bool sound = std::all_of(box, box + 4, [](double value) { return std::isfinite(value); });
    m_Text += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"";
    SvgText::AppendInteger(m_Text, m_Size.cx);
    Put("\" height=\"");
    SvgText::AppendInteger(m_Text, m_Size.cy);
    Put("\" viewBox=\"");
    for (int i = 0; i < 4; ++i) {
        Put(i == 0 ? "" : " ");
        Put(sound ? box[i] : i < 2 ? 0.0 : 1.0);
    }
    Put("\" xml:space=\"preserve\">\n");
    if (!m_Options.transparent) {
        Put("<rect");
        Put(" x", sound ? box[0] : 0.0);
        Put(" y", sound ? box[1] : 0.0);
        Put(" width", sound ? box[2] : 1.0);
        Put(" height", sound ? box[3] : 1.0);
        Put(" fill=\"");
        SvgText::AppendColor(m_Text, background);
        Put("\"/>\n");
    }
    Put("<g fill=\"none\" stroke-linejoin=\"round\">\n");
    if (m_Options.selectedOnly) {
        WriteList(m_pDocument->GetSelectedDrawableObjs(), "layer");
    } else {
        if (m_Options.includeNet) {
            WriteList(m_pDocument->GetNetDrawableObjs(), "net");
        }
        WriteList(m_pDocument->GetDrawableObjs(), "layer");
    }
    Put("</g>\n");
    WriteStyles();
    Put("</svg>\n");
    return m_Text;
}

void CSvgWriter::WriteList(CDrawableArray* list, const char* prefix) {
    m_GroupCount.clear();
    for (INT_PTR i = 0; i < list->GetSize(); ++i) {
        CDrawable* object = list->GetAt(i);
        if (!m_InLayer || object->GetLayer() != m_Layer) {
            EndLayer();
            BeginLayer(object->GetLayer(), prefix);
        }
        WriteObject(object);
    }
    EndLayer();
}

void CSvgWriter::BeginLayer(int layer, const char* prefix) {
    Put("<g id=\"");
    Put(prefix);
    SvgText::AppendInteger(m_Text, layer);
    const int count = ++m_GroupCount[layer];
    if (count > 1) {
        Put("-");
        SvgText::AppendInteger(m_Text, count);
    }
    Put("\"><title>");
    const CLayerInfo* info = layer >= 0 ? m_pDocument->GetLayerManager()->GetLayerInfo(layer) : nullptr;
    if (info != nullptr) {
        SvgText::AppendText(m_Text, CString(info->GetName()));
    } else {
        Put("Layer ");
        SvgText::AppendInteger(m_Text, layer);
    }
    Put("</title>\n");
    m_Layer = layer;
    m_InLayer = true;
}

void CSvgWriter::EndLayer() {
    if (m_InLayer) {
        Put("</g>\n");
    }
    m_InLayer = false;
}

CSvgWriter::WriteKind CSvgWriter::KindOf(CDrawable* object) {
    // A class of a host is written as the kind of the library that it derives from; a derived kind is tested before its
    // base.
    static const struct {
        const CRuntimeClass* kind;
        WriteKind write;
    } kKinds[] = {{RUNTIME_CLASS(CLine), &CSvgWriter::WriteLine},
                  {RUNTIME_CLASS(CPLine), &CSvgWriter::WritePLine},
                  {RUNTIME_CLASS(CArc), &CSvgWriter::WriteArc},
                  {RUNTIME_CLASS(CCircle), &CSvgWriter::WriteCircle},
                  {RUNTIME_CLASS(CCenterPoint), &CSvgWriter::WriteCenterPoint},
                  {RUNTIME_CLASS(CCombRect), &CSvgWriter::WriteCombRect},
                  {RUNTIME_CLASS(CTextParm), &CSvgWriter::WriteTextParm},
                  {RUNTIME_CLASS(CText), &CSvgWriter::WriteText},
                  {RUNTIME_CLASS(CKXVectorLabel), &CSvgWriter::WriteLabel}};
    for (const auto& row : kKinds) {
        if (object->IsKindOf(row.kind)) {
            return row.write;
        }
    }
    return nullptr;
}

void CSvgWriter::WriteObject(CDrawable* object) {
    const size_t begun = m_Text.Size();
    const WriteKind write = KindOf(object);
    bool shown = false;
    m_Broken = false;
    try {
        shown = write != nullptr && (this->*write)(object);
    } catch (CException* e) {
        e->Delete();
    }
    if (!shown || m_Broken) {
        m_Text.CutTo(begun);
        ++m_LeftOut;
    }
}

// ---- Numbers and strokes -------------------------------------------------------------------------------------------

void CSvgWriter::Put(double value) {
    if (!SvgText::AppendNumber(m_Text, value)) {
        m_Broken = true;
    }
}

void CSvgWriter::Put(const char* name, double value) {
    m_Text += name;
    m_Text += "=\"";
    Put(value);
    m_Text += '"';
}

void CSvgWriter::Point(const CGePoint2d& p) {
    Put(p.x);
    m_Text += ' ';
    Put(-p.y);
}

CSvgWriter::Pen CSvgWriter::PenOf(CDrawable* object, bool locked, float floorWidth) {
    Pen pen;
    pen.color = CRenderDC::StrokeColor(m_Options, (object->*DrawableAccess::Color())(&m_Geometry));
    pen.style = (object->*DrawableAccess::Type())(&m_Geometry);
    const int given = Truncate((object->*DrawableAccess::Width())(&m_Geometry, locked, floorWidth));
    // Written so that a width that is not-a-number counts as fixed.
    pen.fixed = locked || !(m_pTran->DToL((object->*DrawableAccess::Wide())(&m_Geometry)) >= 1.0f);
    CRenderOptions unscaled;
    pen.pixels = CRenderDC::StrokeWidth(m_Options, given);
    const bool thin = CRenderDC::StrokeWidth(unscaled, given) == 1;
    if (!thin && IsDashed(pen.style)) {
        pen.style = PS_SOLID; // As GDI draws such a pen.
    }
    pen.stepped = pen.pixels == 1;
    return pen;
}

// `stretch` is the length of one step of the pattern along the line.
void CSvgWriter::Stroke(const Pen& pen, double stretch) {
    if (pen.style == PS_NULL) {
        return;
    }
    const double pixel = m_pTran->GetScale(); // In drawing units.
    Put(" stroke=\"");
    SvgText::AppendColor(m_Text, pen.color);
    Put("\"");
    Put(" stroke-width", pen.pixels * pixel);
    if (IsDashed(pen.style)) {
        Put(" stroke-dasharray=\"");
        PutPattern(pen.style, pen.stepped ? pixel * stretch : pixel * pen.pixels);
        Put("\"");
    } else if (pen.pixels > 1) {
        Put(" stroke-linecap=\"round\"");
    }
    if (pen.fixed) {
        const int style = IsDashed(pen.style) ? pen.style : PS_SOLID;
        m_Fixed.emplace(pen.pixels, style);
        Put(" class=\"");
        PutClass(pen.pixels, style);
        Put("\"");
    }
    PutPlace(pen.cut + (pen.pixels % 2 != 0 ? kOddWidth : 0.0));
}

void CSvgWriter::PutPlace(double pixels) {
    if (pixels != 0.0) {
        const double units = pixels * m_pTran->GetScale();
        Put(" transform=\"translate(");
        Put(units);
        Put(" ");
        Put(units);
        Put(")\"");
    }
}

void CSvgWriter::PutPattern(int style, double unit) {
    const double* part = CRenderDC::Pattern(style);
    for (bool first = true; *part != 0; ++part, first = false) {
        Put(first ? "" : " ");
        Put(*part * unit);
    }
}

void CSvgWriter::PutClass(int pixels, int style) {
    Put("px");
    SvgText::AppendInteger(m_Text, pixels);
    Put("s");
    SvgText::AppendInteger(m_Text, style);
}

// The lengths of fixed strokes in pixels, for programs that support them; others use the attributes in drawing units,
// which are the same at the size that was asked for.
void CSvgWriter::WriteStyles() {
    if (m_Fixed.empty()) {
        return;
    }
    Put("<style>@supports (vector-effect: non-scaling-stroke) {\n");
    for (const auto& [pixels, style] : m_Fixed) {
        Put(".");
        PutClass(pixels, style);
        Put(" { vector-effect: non-scaling-stroke; stroke-width: ");
        SvgText::AppendInteger(m_Text, pixels);
        Put("px;");
        if (style != PS_SOLID) {
            Put(" stroke-dasharray: ");
            PutPattern(style, pixels);
            Put(";");
        }
        Put(" }\n");
    }
    Put("}</style>\n");
}

void CSvgWriter::EndPath(const Pen& pen) {
    Put("\"");
    Stroke(pen);
    Put("/>\n");
}

void CSvgWriter::WriteStraight(const Pen& pen, const CGePoint2d& a, const CGePoint2d& b, bool thereAndBack) {
    Put("<path d=\"M");
    Point(a);
    Put("L");
    Point(b);
    if (thereAndBack && IsDashed(pen.style)) {
        // The pattern of the second stroke begins at the other end and fills gaps of the first one.
        Put("M");
        Point(b);
        Put("L");
        Point(a);
    }
    Put("\"");
    const double steps = std::max(std::fabs(b.x - a.x), std::fabs(b.y - a.y));
    const double stretch = std::hypot(b.x - a.x, b.y - a.y) / steps;
    Stroke(pen, std::isfinite(stretch) ? stretch : 1.0);
    Put("/>\n");
}

void CSvgWriter::ArcTo(double radius, bool large, bool clockwise, const CGePoint2d& end) {
    Put("A");
    Put(radius);
    Put(" ");
    Put(radius);
    Put(large ? " 0 1 " : " 0 0 ");
    Put(clockwise ? "1 " : "0 ");
    Point(end);
}

void CSvgWriter::Circle(const CGePoint2d& center, double radius, Pen pen, bool filled) {
    pen.cut = kTruncated + kBoxEnd;
    Put("<circle");
    Put(" cx", center.x);
    Put(" cy", -center.y);
    Put(" r", std::fabs(radius));
    Stroke(pen);
    // A filled figure takes the context's own brush, which is white.
    Put(filled ? " fill=\"#ffffff\"/>\n" : "/>\n");
}

// ---- The kinds -----------------------------------------------------------------------------------------------------

bool CSvgWriter::WriteLine(CDrawable* object) {
    auto* line = static_cast<CLine*>(object);
    if (IsHidden(line)) {
        return true;
    }
    Pen pen = PenOf(line, line->GetLockMode() == 1);
    const bool inverted = line->GetDrawState() == CDrawable::Dragging; // Such as the finished sides of a rectangle.
    if (inverted) {
        pen.color = ~m_Background & 0xFFFFFF;
        pen.style = PS_SOLID;
    }
    WriteStraight(pen, line->GetStartPoint(), line->GetEndPoint(), false);
    return inverted || IsPlainState(line);
}

bool CSvgWriter::WritePLine(CDrawable* object) {
    auto* line = static_cast<CPLine*>(object);
    const CGePointArray& vertices = *line->GetPointList();
    if (IsHidden(line) || line->GetVertexCount() == 0 || vertices.IsEmpty()) {
        return true;
    }
    const CBulgeArray& bulges = *line->GetBulgeList();
    const CUIntArray& flags = line->*PLineAccess::Flags();
    const Pen whole = PenOf(line, line->GetLockMode() != 0);
    Pen open = whole; // Of the path that is being written.
    bool isOpen = false;
    const INT_PTR segments = vertices.GetSize() - (line->IsClosed() != 0 ? 0 : 1);
    for (INT_PTR i = 0; i < segments && i < flags.GetSize(); ++i) {
        const CGePoint2d start = vertices[i];
        const CGePoint2d end = vertices[i + 1 < vertices.GetSize() ? i + 1 : 0];
        const double bulge = i < bulges.GetSize() ? bulges[i] : 0.0;
        const bool straight = CDraw_Common::GetAbs(bulge) < kStraightDrawn;
        Pen pen = whole;
        if (flags[i] == 1) {
            pen.color = CRenderDC::StrokeColor(m_Options, (line->*PLineAccess::Colors())[i]);
        }
        CGePoint2d center;
        double radius = 0.0;
        const CGePoint2d top = straight ? end : CDraw_Common::GetArcMidHighPt(start, end, bulge);
        if (!straight && CArc::Calarc(start, top, end, center, radius) == 0) {
            break; // The painting ends there too.
        }
        if (IsDashed(pen.style) && straight) {
            WriteStraight(pen, start, end, true);
            continue;
        }
        if (isOpen && (pen.color != open.color || IsDashed(pen.style))) {
            EndPath(open);
            isOpen = false;
        }
        if (!isOpen) {
            Put("<path d=\"M");
            Point(start);
            open = pen;
            isOpen = true;
        }
        if (straight) {
            Put("L");
            Point(end);
            continue;
        }
        // The radius is computed from the bulge: that of the built arc has only the digits of a float.
        // The average shift lies between the quarter pixel of an arc and none, that of straight parts.
        open.cut = open.pixels % 2 != 0 ? kBoxEnd : 0.0;
        const double chord = std::hypot(end.x - start.x, end.y - start.y);
        const double size = CDraw_Common::GetAbs(bulge);
        const bool leftOfWay = (end - start).CrossProduct(top - start) > 0.0;
        ArcTo(chord * (1.0 + size * size) / (4.0 * size), size > 1.0, leftOfWay, end);
    }
    if (isOpen) {
        EndPath(open);
    }
    return IsPlainState(line);
}

bool CSvgWriter::WriteCircle(CDrawable* object) {
    auto* circle = static_cast<CCircle*>(object);
    if (IsHidden(circle)) {
        return true;
    }
    Circle(circle->Center(), circle->Radius(), PenOf(circle, circle->GetLockMode() != 0), circle->IsFill() != 0);
    return IsPlainState(circle);
}

bool CSvgWriter::WriteArc(CDrawable* object) {
    auto* arc = static_cast<CArc*>(object);
    if (IsHidden(arc)) {
        return true;
    }
    Pen pen = PenOf(arc, arc->GetLockMode() != 0, 0.0f);
    pen.cut = kTruncated + kBoxEnd;
    const CGePoint2d center = arc->Center();
    const auto at = [&](double angle) {
        return CGePoint2d(center.x + arc->Radius() * std::cos(angle), center.y + arc->Radius() * std::sin(angle));
    };
    const CGePoint2d start = at(arc->GetStartAngle());
    const CGePoint2d end = at(arc->GetEndAngle());
    double sweep = std::fmod(arc->GetEndAngle() - arc->GetStartAngle(), kTurn);
    if (sweep <= 0.0) {
        sweep += kTurn;
    }
    if (start.x == end.x && start.y == end.y) {
        Circle(center, arc->Radius(), pen, false);
    } else {
        Put("<path d=\"M");
        Point(start);
        ArcTo(std::fabs(arc->Radius()), sweep > kTurn / 2, false, end);
        EndPath(pen);
    }
    return IsPlainState(arc);
}

bool CSvgWriter::WriteCenterPoint(CDrawable* object) {
    auto* mark = static_cast<CCenterPoint*>(object);
    CGePoint2d min;
    CGePoint2d max;
    if (IsHidden(mark) || mark->GetRect(m_pTran, min, max) == 0) {
        return true;
    }
    Pen pen = PenOf(mark, mark->GetLockMode() != 0);
    pen.cut = kTruncated;
    const CGePoint2d center = mark->Center();
    WriteStraight(pen, CGePoint2d(center.x, max.y), CGePoint2d(center.x, min.y), false);
    WriteStraight(pen, CGePoint2d(min.x, center.y), CGePoint2d(max.x, center.y), false);
    Circle(center, (max.x - min.x) / 4.0, pen, false);
    return IsPlainState(mark);
}

// Written hidden or not, and in every state.
bool CSvgWriter::WriteCombRect(CDrawable* object) {
    auto* frame = static_cast<CCombRect*>(object);
    CGePoint2d a;
    CGePoint2d b;
    frame->GetPoint(a, b);
    Pen pen = PenOf(frame, true);
    pen.style = (frame->*DrawableAccess::Type())(&m_Geometry);
    pen.pixels = CRenderDC::StrokeWidth(m_Options, 1);
    pen.stepped = pen.pixels == 1;
    // A pattern begins anew on each side, as GDI draws it.
    const CGePoint2d corners[] = {a, CGePoint2d(b.x, a.y), b, CGePoint2d(a.x, b.y), a};
    for (int side = 0; side < 4; ++side) {
        if (side == 0 || IsDashed(pen.style)) {
            Put(side == 0 ? "<path d=\"M" : "M");
            Point(corners[side]);
        }
        if (side < 3 || IsDashed(pen.style)) {
            Put("L");
            Point(corners[side + 1]);
        } else {
            Put("Z");
        }
    }
    EndPath(pen);
    return true;
}

// ---- Texts ---------------------------------------------------------------------------------------------------------

const CSvgWriter::Face& CSvgWriter::FaceOf(const CString& name) {
    const auto found = m_Faces.find(name);
    if (found != m_Faces.end()) {
        return found->second;
    }
    Face face;
    const LOGFONTW description = TextFont::Describe(kMeasured, 0, 0, name);
    CFont font;
    TEXTMETRIC measures = {};
    if (font.CreateFontIndirect(&description)) {
        CFont* old = m_Measure.SelectObject(&font);
        if (m_Measure.GetTextMetrics(&measures) && measures.tmHeight > 0) {
            const double cell = measures.tmHeight;
            face.ascent = measures.tmAscent / cell;
            face.em = (measures.tmHeight - measures.tmInternalLeading) / cell;
            face.average = std::max(0.01, measures.tmAveCharWidth / cell);
        }
        m_Measure.SelectObject(old);
    }
    return m_Faces.emplace(name, face).first->second;
}

double CSvgWriter::WidthOf(const CString& face, const CString& text) {
    const LOGFONTW description = TextFont::Describe(kMeasured, 0, 0, face);
    CFont font;
    if (!font.CreateFontIndirect(&description)) {
        return 0.0;
    }
    CFont* old = m_Measure.SelectObject(&font);
    const CSize size = m_Measure.GetTextExtent(text, text.GetLength());
    m_Measure.SelectObject(old);
    return static_cast<double>(size.cx) / kMeasured;
}

void CSvgWriter::Run(CText* text, const CString& shown, double ratio, bool box) {
    if (shown.IsEmpty()) {
        return;
    }
    const CString& name = text->*TextAccess::Face();
    const Face& face = FaceOf(name);
    double height = text->GetTextHeight();
    if (Truncate(m_pTran->DToL(height)) < 1) {
        height = m_pTran->GetScale(); // A text too small for a pixel is shown one pixel high.
    }
    const int tenths = WrapMultiply(Truncate(text->*TextAccess::Angle()), 10) % 3600; // The font's angle.
    CString drawn = name.Left(LF_FACESIZE - 1);
    Put(box ? "<g" : "<text");
    Put(" transform=\"translate(");
    Point(text->GetPos());
    Put(")");
    if (tenths != 0) {
        Put(" rotate(");
        Put(-tenths / 10.0);
        Put(")");
    }
    if (ratio != 0.0) {
        Put(" scale(");
        Put(std::fabs(ratio) / 2.0 / face.average);
        Put(" 1)");
    }
    Put("\"");
    if (box) {
        Put("><rect");
        Put(" width", WidthOf(name, shown) * height);
        Put(" height", height);
        Put(" fill=\"");
        SvgText::AppendColor(m_Text, m_Options.colors == CRenderOptions::Stored ? text->GetBKColor() : 0xFFFFFF);
        Put("\"/><text");
    }
    Put(" y", face.ascent * height);
    Put(" font-size", face.em * height);
    Put(" font-family=\"");
    SvgText::AppendFamily(m_Text, drawn);
    Put(", sans-serif\" fill=\"");
    SvgText::AppendColor(m_Text, CRenderDC::StrokeColor(m_Options, (text->*DrawableAccess::Color())(&m_Geometry)));
    Put("\">");
    SvgText::AppendText(m_Text, shown);
    Put(box ? "</text></g>\n" : "</text>\n");
}

bool CSvgWriter::WriteText(CDrawable* object) {
    auto* text = static_cast<CText*>(object);
    if (!IsHidden(text)) {
        Run(text, text->GetText(), 0.0, text->GetBKMode() == OPAQUE);
    }
    return IsHidden(text) || text->GetDrawState() != CDrawable::Dragging;
}

bool CSvgWriter::WriteTextParm(CDrawable* object) {
    auto* text = static_cast<CTextParm*>(object);
    if (!IsHidden(text)) {
        CString stored = text->GetText();
        const int pixels = std::max(1, Truncate(m_pTran->DToL(text->GetTextHeight())));
        // A width of zero pixels means the font's own width.
        const double ratio = text->GetTextRatio();
        Run(text, m_Geometry.GetTextParm_ShowText(stored), std::fabs(pixels / 2 * ratio) < 1.0 ? 0.0 : ratio, false);
    }
    return IsHidden(text) || text->GetDrawState() != CDrawable::Dragging;
}

// ---- The label -----------------------------------------------------------------------------------------------------

void CSvgWriter::Tick(const CGeVector2d& u, const CGePoint2d& p, double len, double half, const Pen& pen) {
    // A quarter turn clockwise on the screen; with y upwards it is the other direction.
    const CGeVector2d way = CGeVector2d(u.x + u.y, u.y - u.x) * len;
    const CGeVector2d q = CGeVector2d(-way.y, way.x).normal() * half;
    if (!IsDirection(q)) {
        return;
    }
    const CGePoint2d first = p + way;
    const CGePoint2d last = p - way;
    Put("<path d=\"M");
    Point(first + q);
    for (const CGePoint2d& corner : {first - q, last - q, last + q}) {
        Put("L");
        Point(corner);
    }
    // The bar is filled after its outline.
    Put("Z\" fill=\"#ffffff\" paint-order=\"stroke\"");
    Stroke(pen);
    Put("/>\n");
}

bool CSvgWriter::WriteLabel(CDrawable* object) {
    auto* label = static_cast<CKXVectorLabel*>(object);
    if (label->IsDelete() != 0) {
        return true;
    }
    Pen pen = PenOf(label, label->GetLockMode() == 1);
    pen.cut = kTruncated;
    const CGePoint2d a = label->GetLeftLabelStartPt();
    const CGePoint2d b = label->GetLeftLabelEntPt();
    const CGePoint2d c = label->GetRightLabelStartPt();
    const CGePoint2d d = label->GetRightLabelEndPt();
    const CGeVector2d u = (b - a).normal();
    const double len = label->GetLabelLength();
    const CGeVector2d beyond = u * len * kTickOvershoot;
    if (IsDirection(u)) {
        Tick(u, b, len, label->GetLabelWidth() / 2.0, pen);
        Tick(u, d, len, label->GetLabelWidth() / 2.0, pen);
        WriteStraight(pen, a, b + beyond, false);
    }
    const CGeVector2d hole = (d - b).normal() * label->GetTextHoleWidth();
    if (!label->GetHasTextHole()) {
        WriteStraight(pen, b, d, false);
    } else if (IsDirection(hole)) {
        const CGePoint2d middle((b.x + d.x) / 2, (b.y + d.y) / 2);
        WriteStraight(pen, b, middle - hole, false);
        WriteStraight(pen, middle + hole, d, false);
    }
    if (IsDirection(u)) {
        WriteStraight(pen, c, d + beyond, false);
    }
    if (label->GetTextShow() != 0) {
        // Drawing the label places its figure and sets the text.
        (label->*LabelAccess::PlaceFigure())(&m_Measure, &m_Geometry, b, d);
        CText* figure = label->GetLabelText();
        if (!IsHidden(figure) && figure->GetDrawState() != CDrawable::Dragging) {
            Run(figure, figure->GetText(), 0.0, false);
        }
    }
    return IsPlainState(label);
}
