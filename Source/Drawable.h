// CDrawable: the base of everything that a drawing holds, and the whole interface between objects and the rest.
// Layer 5: drawables.
#pragma once

#include "DrawGeometry.h"
#include "DrawableProperty.h"
#include "Geometry2d.h"
#include "GraphInfo.h"
#include "Serialable.h"
#include "VectorViewCoordTran.h"

#include <KxAlive.h>
#include <afxtempl.h>

#include <memory>

using CGePointArray = CArray<CGePoint2d, CGePoint2d&>;
using CIndexArray = CArray<int, int&>;

// Kinds of grips that getGripPoints is asked for.
inline constexpr int kGripVertices = 1;
inline constexpr int kGripInsertPoints = 2;
inline constexpr int kGripMidpoints = 4;
inline constexpr int kGripPainted = kGripVertices | kGripMidpoints; // What the paint and the grip command ask for.

// The `type` of a snap candidate that is the foot of a perpendicular.
inline constexpr int kSnapFoot = 8;

class NRVECTORVIEW_API CDrawable : public CSerialable {
    DECLARE_SERIAL(CDrawable)
public:
    enum DrawState : int { // A stream may bring any number.
        Selected = 0,      // Dotted, with grips.
        Dragging = 1, // A rubber-band copy that a command holds: drawn by inversion, a second drawing takes it off.
        Normal = 2
    };

    CDrawable() = default;

    // ---- The virtual interface, in this order ----

    // Draws the grips in the state Selected; every object's own Draw ends with this one. The concrete kinds report
    // whatever is thrown in a message box and let the paint go on.
    virtual void Draw(CDC* pDC, CDrawGeometry* pGeom);
    // Appends the grips of the kinds in `mask`, in drawing units. Only polylines look at the mask.
    virtual void getGripPoints(CGePointArray& out, int mask);
    // Moves the grip whose index stands first in `indices` (the others are not looked at) by v, in drawing units.
    // An empty array raises the invalid-argument exception in the concrete classes.
    virtual void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v);
    virtual void DrawGripPoints(CDC* pDC, CGePointArray& grips, CDrawGeometry* pGeom);
    virtual void transformBy(const CGeMatrix2d& m);
    // The kind's own word, for people.
    virtual CString GetName();
    // Extent in drawing units; 0 means that there is none.
    virtual int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max);
    // Distance in drawing units; 100.0 for a hidden object and for a kind without a test (some kinds: 1000.0).
    // The tolerance is the caller's.
    virtual float HitTest(CGePoint2d p);
    // Appends the feet of the perpendiculars from p, with `type` 8; always 1.
    virtual int GetClosetPt(CGePoint2d p, CGePointArray& out);
    virtual void GetProperty(CDrawableProperty& list);
    virtual void SetProperty(CDrawableProperty& list);

    // ---- Attributes ----

    short GetPenColorIndex() { return m_PenColorIndex; }
    void SetPenColorIndex(short index) { m_PenColorIndex = index; }
    // By an index of the colour table that entry, otherwise the explicit colour, also for an object by layer.
    DWORD GetPenColor();
    // Also makes the colour explicit.
    void SetPenColor(DWORD color);
    short GetColorBrush() { return m_ColorBrush; }
    void SetColorBrush(short index) { m_ColorBrush = index; }
    float GetLineWide() { return m_LineWide; }
    // Whole widths only; a fraction comes through properties and files.
    void SetLineWide(short width) { m_LineWide = width; }
    short GetLineType() { return m_LineType; }
    void SetLineType(short type) { m_LineType = type; }
    float GetScale() { return m_Scale; }
    void SetScale(float scale) { m_Scale = scale; }
    short GetLayer() { return m_Layer; }
    void SetLayer(short layer) { m_Layer = layer; }
    int GetID() { return m_ID; }
    int IsDelete() { return m_IsDelete; }
    enum DrawState GetDrawState() { return m_DrawState; }
    void SetDrawState(enum DrawState state) { m_DrawState = state; }
    int GetIsShow() { return m_IsShow; }
    void SetIsShow(int show) { m_IsShow = show; }
    // Asks the object's state; CGraphicDocument::IsSelected asks the list.
    int IsSelected() { return m_DrawState == Selected; }
    // 0 leads to Normal, so it ends Dragging too.
    void SetSelected(int selected) { m_DrawState = selected != 0 ? Selected : Normal; }
    int isCanSelect() { return m_CanBeSelect; }
    void SetCanBeSelect(int can) { m_CanBeSelect = can; }

    void Serialize(CArchive& ar) override;

    // For whoever keeps a pointer to the object while its owner may free it: the token tells whether that has happened.
    CKxAliveToken GetAlive();

protected:
    // The attributes as they stand at this moment, by-layer values looked up. Draw asks these and nothing else.
    DWORD InnerGetPenColor(CDrawGeometry* pGeom);
    float InnerGetLineWide(CDrawGeometry* pGeom);
    short InnerGetLineType(CDrawGeometry* pGeom);
    // Width of the pen in pixels: as it stands when locked, else through the zoom and at least `floorWidth`.
    float PenWidth(CDrawGeometry* pGeom, bool locked, float floorWidth = 1.0f);

    // Signed distance from p to the segment a-b in drawing units, positive on the left; beyond an end the distance to
    // that end. A segment without length gives not-a-number.
    static float DistanceLine(CGePoint2d a, CGePoint2d b, CGePoint2d p);
    // The foot of p on the infinite line through a and b, with `type` 8; unguarded for one point.
    static CGePoint2d PerpendicularFoot(CGePoint2d a, CGePoint2d b, CGePoint2d p);
    // "<function>出错:step=" and the stage reached, in a message box: how a failed Draw is reported.
    static void ReportDrawFailure(LPCTSTR function, LPCTSTR step);

    short m_PenColorIndex = kColorByLayer;
    DWORD m_PenColor = 0; // COLORREF
    short m_ColorBrush = -1;
    float m_LineWide = -1.0f; // Drawing units, or pixels when the width is locked; -1 by layer.
    short m_LineType = -1;    // GDI pen style; -1 by layer.
    float m_Scale = 1.0f;     // Kept for hosts; nothing here reads it.
    short m_Layer = 0;
    int m_ID = 0;
    int m_IsDelete = 0;
    int m_IsShow = 1;
    enum DrawState m_DrawState = Normal;
    int m_CanBeSelect = 1;

private:
    std::unique_ptr<CKxAlive> m_Alive; // Made when first asked for: of a large drawing few objects are.
};
