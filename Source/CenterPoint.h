// CCenterPoint: a mark that hosts place, a cross with a circle of half its size.
// Layer 5: drawables.
#pragma once

#include "Drawable.h"

class NRVECTORVIEW_API CCenterPoint : public CDrawable {
    DECLARE_SERIAL(CCenterPoint)
public:
    CCenterPoint() = default;
    CCenterPoint(Gdiplus::PointF center); // Drawing units; the cross is 140 of them long.

    // Two names of the same value, in drawing units; both belong to the interface for hosts.
    CGePoint2d Center() { return CGePoint2d(m_CircleX, m_CircleY); }
    CGePoint2d GetCenter() { return Center(); }
    int GetLockMode() { return m_LockMode; } // See SetLockMode.
    // Tags of the host: stored and shown, never interpreted.
    CString GetParmName() { return m_strParmName; }
    CString GetMsgInfo() { return m_strMsgInfo; }
    CString GetName() override;
    int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) override;
    // 1.0 for every point of the disc; 1000.0 outside of it and for a hidden mark.
    float HitTest(CGePoint2d p) override;
    // Centre, then the points at the right, top, left and bottom.
    void getGripPoints(CGePointArray& out, int mask) override;

    // Drawing units. Nothing repaints.
    void SetCenter(CGePoint2d center);
    void SetCenter(Gdiplus::PointF center) { SetCenter(CGePoint2d(center)); }
    // Nonzero: the line width is in pixels at every zoom; 0: it is in drawing units.
    void SetLockMode(int mode) { m_LockMode = mode; }
    // Tags of the host: stored and shown, never interpreted.
    void SetParmName(CString name) { m_strParmName = name; }
    void SetMsgInfo(CString info) { m_strMsgInfo = info; }
    void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) override;
    // Moves the centre; the radius stays.
    void transformBy(const CGeMatrix2d& m) override;
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;
    void ExchangeState(CStateExchange& exchange) override;

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override; // Centre, radius, filling, tags and lock.

protected:
    // The centre, in drawing units.
    double m_CircleX = 0.0;
    double m_CircleY = 0.0;
    double m_Radius = 70.0; // Half the length of the cross, in drawing units.
    int m_Fill = 0;         // Stored and loaded; the mark is never filled.
    // Tags of the host: stored and shown, never interpreted.
    CString m_strParmName;
    CString m_strMsgInfo;
    int m_LockMode = 0; // See SetLockMode.
};
