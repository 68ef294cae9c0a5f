// CDrawable: the base of everything that a drawing holds, and the interface through which all other units use objects.
// Layer 5: drawables.
#pragma once

#include "DrawGeometry.h"
#include "DrawableState.h"
#include "DrawableProperty.h"
#include "Geometry2d.h"
#include "GraphInfo.h"
#include "PaintPass.h"
#include "Serialable.h"
#include "VectorViewCoordTran.h"

#include <KxAlive.h>
#include <afxtempl.h>

#include <memory>

using CGePointArray = CArray<CGePoint2d, CGePoint2d&>; // Points, in drawing units unless stated.
using CIndexArray = CArray<int, int&>;                 // Indices of grips.

// Kinds of grips that can be asked of getGripPoints.
inline constexpr int kGripVertices = 1;
inline constexpr int kGripInsertPoints = 2;
inline constexpr int kGripMidpoints = 4;
inline constexpr int kGripPainted = kGripVertices | kGripMidpoints; // What the paint and the grip command ask for.

// The `type` of a snap candidate that is the foot of a perpendicular.
inline constexpr int kSnapFoot = 8;

class NRVECTORVIEW_API CDrawable : public CSerialable {
    DECLARE_SERIAL(CDrawable)
public:
    // A stream may hold any number; in a state that is none of these most kinds draw nothing.
    enum DrawState : int {
        Selected = 0, // Drawn dotted, with grips.
        Dragging = 1, // A rubber-band copy of a command: drawn by inversion, so that a second drawing erases it.
        Normal = 2    // Drawn as it is.
    };

    CDrawable() = default;
    ~CDrawable() override {
        if (m_pWatch != nullptr) {
            m_pWatch->OnDrawableFreed();
        }
    }

    // What a pen is made of: a GDI style, a width in pixels and a COLORREF.
    struct PenLook {
        short style; // PS_SOLID and so on.
        int width;   // Pixels.
        DWORD color; // COLORREF.
    };

    // ---- The virtual interface, in this order ----

    // Draws the grips in the state Selected; the Draw of every kind ends with this one. The concrete kinds report
    // whatever is thrown in a message box, and the paint continues with the next object.
    virtual void Draw(CDC* pDC, CDrawGeometry* pGeom);
    // Appends the grips of the kinds in `mask`, in drawing units. Only polylines look at the mask.
    virtual void getGripPoints(CGePointArray& out, int mask);
    // Moves the grip of the first index in `indices` (the others are ignored) by v, in drawing units. An empty array
    // raises the invalid-argument exception in the concrete classes.
    virtual void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v);
    // A square of GripHalf around each of `grips`, which are drawing units.
    virtual void DrawGripPoints(CDC* pDC, CGePointArray& grips, CDrawGeometry* pGeom);
    // Moves the geometry by a matrix in drawing units; nothing in this base.
    virtual void transformBy(const CGeMatrix2d& m);
    // The Chinese word for the kind, for display.
    virtual CString GetName();
    // Extent in drawing units; 0 means that there is none.
    virtual int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max);
    // Distance in drawing units; 100.0 for a hidden object and for a kind without a test (some kinds: 1000.0).
    // The caller compares it with a tolerance of its own.
    virtual float HitTest(CGePoint2d p);
    // Appends the feet of the perpendiculars from p, with `type` 8; always 1.
    virtual int GetClosetPt(CGePoint2d p, CGePointArray& out);
    // Appends a row for each editable field, and takes over the rows that were changed since.
    virtual void GetProperty(CDrawableProperty& list);
    virtual void SetProperty(CDrawableProperty& list);
    // Names every field that belongs to the content, stored or not, for a history; not those that follow from painting
    // or from a hit test, and not the draw state. A kind of a host that overrides it is kept whole and fast: it
    // calls that of its base, then `exchange.Level<Kind>()`, then names its own fields.
    virtual void ExchangeState(CStateExchange& exchange);

    // ---- Attributes ----

    // An index of the colour table, kColorByLayer or kColorExplicit.
    short GetPenColorIndex() { return m_PenColorIndex; }
    void SetPenColorIndex(short index) { m_PenColorIndex = index; }
    // The entry of the colour table for an index of it; otherwise the explicit colour, also for an object by layer.
    DWORD GetPenColor();
    void SetPenColor(DWORD color); // A COLORREF, which becomes the explicit colour.
    // Stored for hosts; the library does not use it.
    short GetColorBrush() { return m_ColorBrush; }
    void SetColorBrush(short index) { m_ColorBrush = index; }
    float GetLineWide() { return m_LineWide; } // Drawing units, or pixels when the width is locked; -1 by layer.
    // Whole widths only; properties and files can also set a fraction.
    void SetLineWide(short width) { m_LineWide = width; }
    // A GDI pen style; -1 by layer.
    short GetLineType() { return m_LineType; }
    void SetLineType(short type) { m_LineType = type; }
    // Stored for hosts; the library does not use it.
    float GetScale() { return m_Scale; }
    void SetScale(float scale) { m_Scale = scale; }
    // An index of the layer table, for what is by layer. Any number is stored.
    short GetLayer() { return m_Layer; }
    void SetLayer(short layer) { m_Layer = layer; }
    int GetID() { return m_ID; }          // Stored for hosts; the library does not use it.
    int IsDelete() { return m_IsDelete; } // Nonzero in a stream: the object is not drawn. Nothing here sets it.
    // How it is drawn. SetDrawState leaves the document's list of selected objects as it is.
    enum DrawState GetDrawState() { return m_DrawState; }
    void SetDrawState(enum DrawState state) { m_DrawState = state; }
    // 0 hides the object: most kinds are neither drawn nor hit then.
    int GetIsShow() { return m_IsShow; }
    void SetIsShow(int show) { m_IsShow = show; }
    // Asks the object's state; CGraphicDocument::IsSelected asks the list.
    int IsSelected() { return m_DrawState == Selected; }
    // 0 sets Normal, also for an object that was Dragging.
    void SetSelected(int selected) { m_DrawState = selected != 0 ? Selected : Normal; }
    // 0: no click selects it, and the command "offset" passes it over.
    int isCanSelect() { return m_CanBeSelect; }
    void SetCanBeSelect(int can) { m_CanBeSelect = can; }

    void Serialize(CArchive& ar) override; // Colours, width, line type, layer, state, visibility, selectability.

    // For code that keeps a pointer to the object while its owner may free it: the token tells whether that has
    // happened.
    CKxAliveToken GetAlive();

protected:
    // The frame of a Draw, also for the kinds of a host. `body` draws the strokes; it sets the text of the stage that
    // it has reached, "0" at first, and returns whether the grips follow. These are drawn in the stage `gripStage`.
    // Whatever is thrown, an exception of the layer or anything else, ends in the message box that names `function` and
    // the stage; nothing is thrown to the caller.
    template <class Body>
    void DrawInFrame(CDC* pDC, CDrawGeometry* pGeom, LPCTSTR function, LPCTSTR gripStage, Body body) {
        LPCTSTR stage = L"0";
        try {
            if (body(stage)) {
                stage = gripStage;
                CDrawable::Draw(pDC, pGeom);
            }
        } catch (CException* e) {
            e->Delete();
            ReportDrawFailure(function, stage);
        } catch (...) {
            ReportDrawFailure(function, stage);
        }
    }
    // Neither hidden nor deleted.
    bool IsToBeDrawn() const { return m_IsShow != 0 && m_IsDelete == 0; }

    // Whether this object, drawn into the context, changes no pixel that is kept: only in the paint of a view's own
    // window, and in the state Normal, which shows no grips. Draw then makes no stroke, but changes whatever else it
    // usually changes for the next object.
    bool IsOutOfSight(CDC* pDC, CDrawGeometry* pGeom, const CPixelBox& box, double penWidth) const {
        const CPaintPass* pass = pGeom->GetPass();
        return pass != nullptr && m_DrawState == Normal && pass->IsOutOfSight(pDC, this, box, penWidth);
    }

    // The attributes of this moment, by-layer values looked up. Draw asks these and nothing else.
    DWORD InnerGetPenColor(CDrawGeometry* pGeom);
    float InnerGetLineWide(CDrawGeometry* pGeom);
    short InnerGetLineType(CDrawGeometry* pGeom);
    // Width of the pen in pixels: the stored one when locked, else that of the zoom and at least `floorWidth`.
    float PenWidth(CDrawGeometry* pGeom, bool locked, float floorWidth = 1.0f);
    // All three; the width is PenWidth, truncated.
    PenLook ResolvePen(CDrawGeometry* pGeom, bool locked, float floorWidth = 1.0f);

    // Signed distance from p to the segment a-b in drawing units, positive on the left of it; beyond an end the
    // distance to that end. A segment without length gives not-a-number.
    static float DistanceLine(CGePoint2d a, CGePoint2d b, CGePoint2d p);
    // The foot of p on the infinite line through a and b, with `type` 8. Not-a-number when a and b are one point.
    static CGePoint2d PerpendicularFoot(CGePoint2d a, CGePoint2d b, CGePoint2d p);
    // Half the size of a grip in pixels, without its middle.
    static int GripHalf(CDrawGeometry* pGeom);
    // Reports a failed Draw in a message box: "<function>出错:step=" and the stage reached.
    static void ReportDrawFailure(LPCTSTR function, LPCTSTR step);

    short m_PenColorIndex = kColorByLayer; // See GetPenColorIndex.
    DWORD m_PenColor = 0;                  // COLORREF
    short m_ColorBrush = -1;               // Stored for hosts.
    float m_LineWide = -1.0f;              // Drawing units, or pixels when the width is locked; -1 by layer.
    short m_LineType = -1;                 // GDI pen style; -1 by layer.
    float m_Scale = 1.0f;                  // Stored for hosts; the library does not use it.
    short m_Layer = 0;                     // Index of the layer table.
    int m_ID = 0;                          // Stored for hosts.
    int m_IsDelete = 0;                    // Nonzero: not drawn.
    int m_IsShow = 1;                      // 0: hidden.
    enum DrawState m_DrawState = Normal;   // Stored too.
    int m_CanBeSelect = 1;                 // 0: can't be selected.

private:
    friend class CHistoryBaseline;

    CDrawableWatch* m_pWatch = nullptr; // The record of the history that knows the object; null without one.
    std::unique_ptr<CKxAlive> m_Alive;  // Made at the first call of GetAlive: in a large drawing few objects need one.
};
