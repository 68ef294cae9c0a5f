// CLine: the straight segment. The other kinds repeat its pattern.
// Layer 5: drawables.
#pragma once

#include "Drawable.h"

class NRVECTORVIEW_API CLine : public CDrawable {
    DECLARE_SERIAL(CLine)
public:
    CLine() = default;

    CGePoint2d GetStartPoint() { return CGePoint2d(m_X1, m_Y1); }
    CGePoint2d GetEndPoint() { return CGePoint2d(m_X2, m_Y2); }
    CString GetName() override;
    int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) override;
    float HitTest(CGePoint2d p) override;
    // The foot on the infinite line: not clipped to the segment.
    int GetClosetPt(CGePoint2d p, CGePointArray& out) override;
    // Start, midpoint, end.
    void getGripPoints(CGePointArray& out, int mask) override;

    void SetStartPoint(CGePoint2d p);
    void SetEndPoint(CGePoint2d p);
    void SetStartPoint(Gdiplus::PointF p) { SetStartPoint(CGePoint2d(p)); }
    void SetEndPoint(Gdiplus::PointF p) { SetEndPoint(CGePoint2d(p)); }
    // 1 keeps the line's width in pixels at every zoom; any other value lets it scale. Geometry is never locked.
    void SetLockMode(int mode) { m_LockMode = mode; }
    int GetLockMode() { return m_LockMode; }
    CString GetParmName() { return m_strParmName; }
    void SetParmName(CString name) { m_strParmName = name; }
    CString GetMsgInfo() { return m_strMsgInfo; }
    void SetMsgInfo(CString info) { m_strMsgInfo = info; }
    void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) override;
    void transformBy(const CGeMatrix2d& m) override;
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override;

private:
    double m_X1 = 0.0;
    double m_Y1 = 0.0;
    double m_X2 = 0.0;
    double m_Y2 = 0.0;
    CString m_strParmName; // The host's own tags: stored, shown, never interpreted.
    CString m_strMsgInfo;
    int m_LockMode = 0;
};
