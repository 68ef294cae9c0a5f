// CCircle: a circle by centre and radius, hollow or filled.
// Layer 5: drawables.
#pragma once

#include "Drawable.h"

class NRVECTORVIEW_API CCircle : public CDrawable {
    DECLARE_SERIAL(CCircle)
public:
    CCircle() = default;
    // Drawing units. `fill` nonzero fills; without it the circle is hollow.
    CCircle(Gdiplus::PointF center, float radius);
    CCircle(Gdiplus::PointF center, float radius, int fill);

    // Drawing units.
    CGePoint2d Center() { return CGePoint2d(m_CircleX, m_CircleY); }
    double Radius() { return m_Radius; }
    int IsFill() { return m_Fill; }          // Nonzero: filled.
    int GetLockMode() { return m_LockMode; } // See SetLockMode.
    // Tags of the host: stored and shown, never interpreted.
    CString GetParmName() { return m_strParmName; }
    CString GetMsgInfo() { return m_strMsgInfo; }
    CString GetName() override;
    int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) override;
    // The distance to the outline, also for a filled circle.
    float HitTest(CGePoint2d p) override;
    // Centre, then the points at the right, top, left and bottom.
    void getGripPoints(CGePointArray& out, int mask) override;

    // Drawing units. Nothing repaints.
    void SetCenter(CGePoint2d center);
    void SetCenter(Gdiplus::PointF center) { SetCenter(CGePoint2d(center)); }
    void setRadius(double radius) { m_Radius = radius; }
    // Nonzero fills.
    void SetFill(int fill) { m_Fill = fill; }
    // Nonzero: the width of the outline is in pixels at every zoom; 0: it is in drawing units. Only the width depends
    // on it.
    void SetLockMode(int mode) { m_LockMode = mode; }
    // Tags of the host: stored and shown, never interpreted.
    void SetParmName(CString name) { m_strParmName = name; }
    void SetMsgInfo(CString info) { m_strMsgInfo = info; }
    // The radius may become negative: a grip dragged past the centre makes it so.
    void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) override;
    // Moves the centre; the radius stays, also under a matrix that scales.
    void transformBy(const CGeMatrix2d& m) override;
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;
    void ExchangeState(CStateExchange& exchange) override;

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override; // Centre, radius, filling, tags and lock.

protected:
    // Centre and radius, in drawing units.
    double m_CircleX = 0.0;
    double m_CircleY = 0.0;
    double m_Radius = 0.0;
    int m_Fill = 0; // Nonzero fills.
    // Tags of the host: stored and shown, never interpreted.
    CString m_strParmName;
    CString m_strMsgInfo;
    int m_LockMode = 0; // See SetLockMode.
};
