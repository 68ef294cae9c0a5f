// CLine: the straight segment.
// Layer 5: drawables.
#pragma once

#include "Drawable.h"

class NRVECTORVIEW_API CLine : public CDrawable {
    DECLARE_SERIAL(CLine)
public:
    CLine() = default;

    // Drawing units.
    CGePoint2d GetStartPoint() { return CGePoint2d(m_X1, m_Y1); }
    CGePoint2d GetEndPoint() { return CGePoint2d(m_X2, m_Y2); }
    CString GetName() override;
    int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) override;
    float HitTest(CGePoint2d p) override;
    // The foot of the perpendicular on the infinite line, also beyond the ends of the segment.
    int GetClosetPt(CGePoint2d p, CGePointArray& out) override;
    // Start, midpoint, end.
    void getGripPoints(CGePointArray& out, int mask) override;

    // Drawing units. Nothing repaints.
    void SetStartPoint(CGePoint2d p);
    void SetEndPoint(CGePoint2d p);
    void SetStartPoint(Gdiplus::PointF p) { SetStartPoint(CGePoint2d(p)); }
    void SetEndPoint(Gdiplus::PointF p) { SetEndPoint(CGePoint2d(p)); }
    // 1: the width is in pixels at every zoom. Any other value: it is in drawing units. Only the width depends on it.
    void SetLockMode(int mode) { m_LockMode = mode; }
    int GetLockMode() { return m_LockMode; }
    // Tags of the host: stored and shown, never interpreted.
    CString GetParmName() { return m_strParmName; }
    void SetParmName(CString name) { m_strParmName = name; }
    CString GetMsgInfo() { return m_strMsgInfo; }
    void SetMsgInfo(CString info) { m_strMsgInfo = info; }
    void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) override;
    void transformBy(const CGeMatrix2d& m) override;
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;
    void ExchangeState(CStateExchange& exchange) override;

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override; // The ends, the tags and the lock.

private:
    double m_X1 = 0.0;
    double m_Y1 = 0.0;
    double m_X2 = 0.0;
    double m_Y2 = 0.0;
    CString m_strParmName; // Tags of the host: stored and shown, never interpreted.
    CString m_strMsgInfo;
    int m_LockMode = 0;
};
