// CPLine: a chain of vertices joined by straight or curved segments, open or closed, each segment with its own tags.
// Layer 5: drawables.
#pragma once

#include "DrawCommon.h"
#include "Drawable.h"

// Below this magnitude of a bulge a segment is hit and measured to as straight, and a dragged vertex straightens it.
// Painting and extents have a limit ten times as high, kStraightDrawn: between the two a segment is painted straight
// and hit as an arc. Both are in stored drawings' behaviour; they are not to be made one.
inline constexpr double kStraightHit = 0.0001;

// The `type` of a grip in the middle of a segment.
inline constexpr int kSnapMidpoint = 4;

class NRVECTORVIEW_API CPLine : public CDrawable {
    DECLARE_SERIAL(CPLine)
public:
    CPLine() = default;
    // Has no pen flags: such a polyline can't be painted until a load fills them. For hosts; nothing here calls it.
    CPLine(int n, CGePoint2d* pts);

    // ---- Geometry and queries ----

    // The counted vertices. SetPoint may append vertices to the list that aren't counted.
    int GetVertexCount() { return m_VertexCount; }
    // The lists themselves, which callers may read and change. Entry i belongs to vertex i and to the segment from it
    // to the next; the last vertex's entry is the closing segment's.
    CGePointArray* GetPointList() { return &m_PointList; }
    CBulgeArray* GetBulgeList() { return &m_BulgeList; }
    CArray<CString, CString&>* GetParmNameList() { return &m_ParmNameList; }
    CArray<CString, CString&>* GetParmMsgList() { return &m_ParmMsgList; }
    // Nonzero when the bulge differs from exactly 0.0; 0 outside the vertices.
    int IsArc(int i);
    int IsClosed() { return m_isClosed; }
    int GetLockMode() { return m_LockMode; }
    // The segment that the last HitTest found; -1 for none.
    int GetSelSelLine() { return m_SelLine; }
    CString GetParmName() { return m_strParmName; }
    CString GetMsgInfo() { return m_strMsgInfo; }
    // The tags of one segment; 0 outside the vertices.
    int GetSLineInfo(int i, CString& name, CString& msg);
    CString GetName() override;
    int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) override;
    // 1000.0 when hidden or without a segment. A curved segment is measured to its full circle. Remembers the segment.
    float HitTest(CGePoint2d p) override;
    // Feet on the infinite lines of the straight segments.
    int GetClosetPt(CGePoint2d p, CGePointArray& out) override;
    CGePoint2d GetClosetPt(CGePoint2d a, CGePoint2d b, CGePoint2d p);
    // Both for one straight segment of two vertices; 0 for any other polyline.
    double GetClosestDistance(CGePoint2d p);
    int isLeft(CGePoint2d p);
    // By `mask`: each vertex followed by the middle of its segment (`type` 4), then the insert points.
    void getGripPoints(CGePointArray& out, int mask) override;

    // ---- Editing ----

    void AddPoint(CGePoint2d p, double bulge);
    // At or beyond the size of the list it appends a vertex, which is not counted. A negative index raises.
    void SetPoint(int i, CGePoint2d p);
    // 0 at or beyond the size; a negative index raises. So do the two for colours.
    int SetBulge(int i, double b);
    int SetSLPenColor(int i, DWORD c);
    // Stores the colour too, and gives the segment back to the polyline's own colour.
    int ResetPenColor(int i, DWORD c);
    int SetSLineInfo(int i, CString name, CString msg);
    void SetClose(int closed) { m_isClosed = closed; }
    // Any nonzero value keeps the width in pixels at every zoom.
    void SetLockMode(int mode) { m_LockMode = mode; }
    void SetParmName(CString name) { m_strParmName = name; }
    void SetMsgInfo(CString info) { m_strMsgInfo = info; }
    // Further snap points, in drawing units; neither stored nor transformed.
    void AddInsertPoint(CGePoint2d p);
    void ClearInsertPoints() { m_InsertPointList.RemoveAll(); }
    // Index as getGripPoints numbers with mask 5. Bad indices raise.
    void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) override;
    // Moves the vertices; bulges stay, also under a mirror.
    void transformBy(const CGeMatrix2d& m) override;
    // Raises without a vertex.
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;

    // Behind the virtual interface of CDrawable, in this order.
    virtual void AddPoint(CGePoint2d p);
    // Before vertex i, or at the end, with the bulge of the segment in which it comes to lie. 1, or raises.
    virtual int InsertPoint(int i, CGePoint2d p);
    virtual int RemovePoint(int i);

    // ---- Painting ----

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;
    // Vertices blue, midpoints yellow.
    void DrawGripPoints(CDC* pDC, CGePointArray& grips, CDrawGeometry* pGeom) override;

    // ---- Streaming ----

    void Serialize(CArchive& ar) override;

protected:
    // Strokes segment by segment, each with its own pen. 0 for an empty list and for an arc that can't be built.
    int DrawPolyLine(CDC* pDC, CDrawGeometry* pGeom, CGePointArray& pts, CBulgeArray& bulges, int penStyle);

private:
    void AppendVertex(CGePoint2d p, double bulge, CString name, CString msg);
    void RemoveAllVertices();
    void StoreVertices(CArchive& ar);
    void LoadVertices(CArchive& ar, int count, UINT schema);

protected:
    int m_VertexCount = 0;
    int m_PLineReserved = 0; // Kept and stored; nothing reads it.
    CGePointArray m_PointList;
    CGePointArray m_InsertPointList;
    CBulgeArray m_BulgeList;
    CArray<CString, CString&> m_ParmNameList;
    CArray<CString, CString&> m_ParmMsgList;
    CArray<DWORD, DWORD&> m_SegPenColorList; // COLORREFs; these and the flags aren't stored.
    CUIntArray m_SegPenFlagList;             // 1 where the segment has a colour of its own.
    int m_SelLine = -1;
    int m_isClosed = 0;
    int m_LockMode = 0;
    CString m_strMsgInfo; // Tags of the whole: the host's own, never interpreted.
    CString m_strParmName;
};
