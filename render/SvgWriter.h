// CSvgWriter: one drawing as an SVG file, each object in the exact numbers of its data.
// Layer 8: render.
#pragma once

#include "DrawingRender.h"
#include "SvgText.h"

#include <map>
#include <set>

class CCircle;
class CText;

// The file's coordinates are drawing units with y downwards, that is the drawing's y negated, which loses nothing; the
// viewBox is the picture's window. Attributes are those that the painter resolves at the picture's scale: colours,
// styles, and pen widths in whole pixels. A width that comes from drawing units scales with the picture (stroke-width
// in units); one that is locked or was raised to 1 stays in pixels (vector-effect). A transform of less than a pixel
// moves a stroke to where the painter has it on average. Objects are in drawing order; a group begins whenever the
// layer changes, so that groups never change what lies on top.
class CSvgWriter {
public:
    // All borrowed. `graphic` shows the document and has the picture's mapping.
    CSvgWriter(CGraphicDocument* document, const CRenderOptions& options, CVectorGraphic& graphic, CSize size);

    const CSvgBuffer& Write(COLORREF background);
    int LeftOut() const { return m_LeftOut; }

private:
    struct Pen {
        COLORREF color = 0;
        int pixels = 1;     // The width on the picture.
        bool fixed = false; // Stays this many pixels at every size of the picture; else scales with it.
        int style = PS_SOLID;
        bool stepped = false; // A pattern that GDI counts in steps from pixel to pixel, not along the line.
        double cut = 0.0;     // How far rounding moves the painter's stroke on average: see PutPlace.
    };
    // The place of a face in the cell by which GDI measures heights; for a cell of height 1.
    struct Face {
        double ascent = 0.8;
        double em = 1.0;
        double average = 0.5;
    };
    struct Before {
        bool operator()(const CString& a, const CString& b) const { return a.Compare(b) < 0; }
    };
    using WriteKind = bool (CSvgWriter::*)(CDrawable*);
    // The one table of kinds: how each is written. Null for a class that is no kind of the library's.
    static WriteKind KindOf(CDrawable* object);

    void WriteList(CDrawableArray* list, const char* prefix);
    void WriteObject(CDrawable* object);
    void BeginLayer(int layer, const char* prefix);
    void EndLayer();

    // Each appends its elements and returns false when this format does not show the object; a number that is not
    // finite sets m_Broken.
    bool WriteLine(CDrawable* object);
    bool WritePLine(CDrawable* object);
    bool WriteCircle(CDrawable* object);
    bool WriteArc(CDrawable* object);
    bool WriteCenterPoint(CDrawable* object);
    bool WriteCombRect(CDrawable* object);
    bool WriteText(CDrawable* object);
    bool WriteTextParm(CDrawable* object);
    bool WriteLabel(CDrawable* object);

    Pen PenOf(CDrawable* object, bool locked, float floorWidth = 1.0f);
    void Stroke(const Pen& pen, double stretch = 1.0);
    // Moves an element by that many pixels to the right and downwards.
    void PutPlace(double pixels);
    void PutPattern(int style, double unit);
    void PutClass(int pixels, int style);
    void WriteStyles();
    void WriteStraight(const Pen& pen, const CGePoint2d& a, const CGePoint2d& b, bool thereAndBack);
    void ArcTo(double radius, bool large, bool clockwise, const CGePoint2d& end);
    // Ends the path element that is open: the end of its data, and the attributes of its stroke.
    void EndPath(const Pen& pen);
    void Circle(const CGePoint2d& center, double radius, Pen pen, bool filled);
    void Tick(const CGeVector2d& u, const CGePoint2d& p, double len, double half, const Pen& pen);
    // One text; `ratio` as in CTextParm, `box`: with its background.
    void Run(CText* text, const CString& shown, double ratio, bool box);
    const Face& FaceOf(const CString& name);
    double WidthOf(const CString& face, const CString& text);

    void Put(const char* text) { m_Text += text; }
    void Put(const char* name, double value);
    void Put(double value);
    void Point(const CGePoint2d& p);

    CGraphicDocument* m_pDocument;
    const CRenderOptions& m_Options;
    CVectorViewCoordTran* m_pTran;
    CDrawGeometry m_Geometry;
    CSize m_Size;
    COLORREF m_Background = 0;               // Also where no background is written: what an inverted line inverts.
    CDC m_Measure;                           // For measuring, and for labels to place their figures.
    std::map<CString, Face, Before> m_Faces; // By name.
    std::map<int, int> m_GroupCount;         // By layer.
    std::set<std::pair<int, int>> m_Fixed;   // Widths in pixels and styles of the strokes that keep them.
    CSvgBuffer m_Text;
    int m_Layer = -1;
    bool m_InLayer = false;
    bool m_Broken = false;
    int m_LeftOut = 0;
};
