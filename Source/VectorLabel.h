// CKXVectorLabel: a dimension label of two extension lines, a dimension line with ticks and a gap, and the measured
// length as a figure.
// Layer 5: drawables.
#pragma once

#include "Text.h"

class NRVECTORVIEW_API CKXVectorLabel : public CDrawable {
    DECLARE_SERIAL(CKXVectorLabel)
public:
    CKXVectorLabel() = default;

    // ---- Geometry and queries ----

    CString GetName() override;
    // The box of the four points, larger by the size of a tick on each side, without the figure. Coordinates that are
    // not-a-number are passed over. Always 1, also when hidden.
    int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) override;
    // Adds the box of the figure, as it is shown with a height of `figureHeight` drawing units, to an extent; nothing
    // where no figure is shown.
    void MergeFigure(float figureHeight, CGePoint2d& min, CGePoint2d& max);
    // The least distance to the three lines, the gap included, and to the figure as last drawn, also when it is not
    // shown; 1000.0 when hidden.
    float HitTest(CGePoint2d p) override;
    // The two ends of the dimension line. They are shown and can't be moved.
    void getGripPoints(CGePointArray& out, int mask) override;

    // An extension line runs from its start, at the measured object, to its end, on the dimension line.
    CGePoint2d GetLeftLabelStartPt() const { return m_LeftLabelStartPt; }
    CGePoint2d GetLeftLabelEntPt() const { return m_LeftLabelEndPt; }
    CGePoint2d GetRightLabelStartPt() const { return m_RightLabelStartPt; }
    CGePoint2d GetRightLabelEndPt() const { return m_RightLabelEndPt; }
    // Size of a tick, stroke width of a tick, and half the gap in the dimension line: drawing units.
    double GetLabelLength() const { return m_LabelLength; }
    double GetLabelWidth() const { return m_LabelWidth; }
    double GetTextHoleWidth() const { return m_TextHoleWidth; }
    // Whether the dimension line has the gap.
    bool GetHasTextHole() const { return m_bHasTextHole; }
    // Nonzero: the figure is shown.
    int GetTextShow() const { return m_TextShow; }
    // 1: the line width is in pixels at every zoom. Any other value: it is in drawing units.
    int GetLockMode() const { return m_LockMode; }
    // The figure, with the place of the last paint that showed it.
    CText* GetLabelText() { return &m_LabelText; }

    // ---- Editing ----

    // Drawing units, by the rules of the queries above. Nothing repaints.
    void SetLeftLabel(const CGePoint2d& start, const CGePoint2d& end);
    void SetRightLabel(const CGePoint2d& start, const CGePoint2d& end);
    void SetLeftLabelStartPt(CGePoint2d p) { m_LeftLabelStartPt = p; }
    void SetLeftLabelEntPt(CGePoint2d p) { m_LeftLabelEndPt = p; }
    void SetRightLabelStartPt(CGePoint2d p) { m_RightLabelStartPt = p; }
    void SetRightLabelEndPt(CGePoint2d p) { m_RightLabelEndPt = p; }
    void SetLabelLength(double length) { m_LabelLength = length; }
    void SetLabelWidth(double width) { m_LabelWidth = width; }
    void SetTextHoleWidth(double width) { m_TextHoleWidth = width; }
    // See the queries of the same names.
    void SetHasTextHole(bool has) { m_bHasTextHole = has; }
    void SetTextShow(int show) { m_TextShow = show; }
    void SetLockMode(int mode) { m_LockMode = mode; }
    void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) override;
    void transformBy(const CGeMatrix2d& m) override;
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;
    void ExchangeState(CStateExchange& exchange) override;

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override; // The four points, the sizes, the lock and the figure.

protected:
    // All strokes, in pixels. a and b: start and end of the left extension line; c and d: of the right one; len: size
    // of a tick; half: half its stroke width; hole: half the gap.
    void DoDrawLable(CDC* pDC, CGePoint2d a, CGePoint2d b, CGePoint2d c, CGePoint2d d, double len, double half,
                     double hole);
    // One oblique tick around p; u is the unit vector of the extension line.
    void DoDrawLable_WidthBian(CDC* pDC, CGeVector2d u, CGePoint2d p, double len, double half);
    // The dimension line.
    void DoDrawLabel_TextHole(CDC* pDC, CGePoint2d p1, CGePoint2d p2, double hole);
    // The figure, between p and q in drawing units.
    void DoDrawText(CDC* pDC, CDrawGeometry* pGeom, CGePoint2d p, CGePoint2d q);

private:
    // Text, place, angle and height of the figure between p and q; `lifted`: by its height along the extension line.
    void LayOutFigure(const CGePoint2d& p, const CGePoint2d& q, float height, bool lifted);
    // The same, beyond the dimension line and never upside down; on a vertical line it is read upwards.
    void LayOutReadable(const CGePoint2d& p, const CGePoint2d& q, float height);

    CGePoint2d m_LeftLabelStartPt;
    CGePoint2d m_LeftLabelEndPt;
    CGePoint2d m_RightLabelStartPt;
    CGePoint2d m_RightLabelEndPt;
    double m_LabelLength = 3.0;
    double m_LabelWidth = 1.0;
    double m_TextHoleWidth = 3.0;
    bool m_bHasTextHole = true;
    int m_TextShow = 0;
    CText m_LabelText; // Set anew by every paint that shows it; stored nevertheless.
    int m_LockMode = 1;
};
