// CPLine: a chain of vertices joined by straight or curved segments, open or closed, each segment with its own tags.
// Layer 5: drawables.
#pragma once

#include "DrawCommon.h"
#include "Drawable.h"

// Below this magnitude of a bulge a segment is straight for hit tests and perpendicular feet, and a
// moved vertex makes it straight. Painting and extents have a limit ten times as high, kStraightDrawn: between the two
// a segment is painted as straight and hit as an arc.
inline constexpr double kStraightHit = 0.0001;

// The `type` of a grip in the middle of a segment.
inline constexpr int kSnapMidpoint = 4;

class NRVECTORVIEW_API CPLine : public CDrawable {
    DECLARE_SERIAL(CPLine)
public:
    CPLine() = default;
    // Without pen flags: drawing such a polyline fails with a message until a load fills them. Only for hosts.
    CPLine(int n, CGePoint2d* pts);

    // ---- Geometry and queries ----

    // The number of counted vertices. SetPoint may append vertices to the list that are not counted.
    int GetVertexCount() { return m_VertexCount; }
    // The lists themselves, which callers may read and change. Entry i belongs to vertex i and to the segment from it
    // to the next one; the entry of the last vertex belongs to the closing segment.
    CGePointArray* GetPointList() { return &m_PointList; }
    CBulgeArray* GetBulgeList() { return &m_BulgeList; }
    CArray<CString, CString&>* GetParmNameList() { return &m_ParmNameList; }
    CArray<CString, CString&>* GetParmMsgList() { return &m_ParmMsgList; }
    // Nonzero when the bulge differs from exactly 0.0; 0 outside the vertices.
    int IsArc(int i);
    int IsClosed() { return m_isClosed; }    // Nonzero: a segment joins the last vertex to the first one.
    int GetLockMode() { return m_LockMode; } // See SetLockMode.
    // The segment that the last HitTest found; -1 for none.
    int GetSelSelLine() { return m_SelLine; }
    // Tags of the host for the whole polyline: stored and shown, never interpreted.
    CString GetParmName() { return m_strParmName; }
    CString GetMsgInfo() { return m_strMsgInfo; }
    // The tags of one segment; 0 outside the vertices.
    int GetSLineInfo(int i, CString& name, CString& msg);
    CString GetName() override;
    int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) override;
    // 1000.0 when hidden or without a segment. For a curved segment the distance to its whole circle. Stores the
    // nearest segment for GetSelSelLine.
    float HitTest(CGePoint2d p) override;
    // Appends the feet on the infinite lines of the straight segments; always 1.
    int GetClosetPt(CGePoint2d p, CGePointArray& out) override;
    // The foot of p on the infinite line through a and b.
    CGePoint2d GetClosetPt(CGePoint2d a, CGePoint2d b, CGePoint2d p);
    // Both for a polyline of one straight segment; 0 for any other polyline. The first is the distance from p to the
    // segment, in drawing units; the second is 1 when p is on the line or on its left, seen from the first vertex.
    double GetClosestDistance(CGePoint2d p);
    int isLeft(CGePoint2d p);
    // By `mask`: each vertex followed by the middle of its segment (`type` 4), then the insert points.
    void getGripPoints(CGePointArray& out, int mask) override;

    // ---- Editing ----

    // Appends a counted vertex without tags; `bulge` is that of the segment from it to the next one.
    void AddPoint(CGePoint2d p, double bulge);
    // An index at or beyond the size of the list appends a vertex, which is not counted. A negative index raises the
    // invalid-argument exception.
    void SetPoint(int i, CGePoint2d p);
    // 0 for an index at or beyond the size; a negative one raises the invalid-argument exception. The same holds for
    // SetSLPenColor and ResetPenColor.
    int SetBulge(int i, double b);
    int SetSLPenColor(int i, DWORD c); // Gives the segment a colour of its own, a COLORREF, which no stream holds.
    // Stores the colour too, but the segment is drawn in the polyline's own colour again.
    int ResetPenColor(int i, DWORD c);
    int SetSLineInfo(int i, CString name, CString msg); // The tags of one segment; 0 outside the vertices.
    void SetClose(int closed) { m_isClosed = closed; }  // See IsClosed.
    // Nonzero: the width is in pixels at every zoom; 0: it is in drawing units.
    void SetLockMode(int mode) { m_LockMode = mode; }
    // Tags of the host: stored and shown, never interpreted.
    void SetParmName(CString name) { m_strParmName = name; }
    void SetMsgInfo(CString info) { m_strMsgInfo = info; }
    // Further snap points, in drawing units; neither stored nor transformed.
    void AddInsertPoint(CGePoint2d p);
    void ClearInsertPoints() { m_InsertPointList.RemoveAll(); }
    // Indices as getGripPoints numbers them with mask 5; others raise the invalid-argument exception.
    void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) override;
    // Transforms the counted vertices; bulges stay, also under a mirror.
    void transformBy(const CGeMatrix2d& m) override;
    // Raises the invalid-argument exception for a polyline without a vertex.
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;
    void ExchangeState(CStateExchange& exchange) override;

    // New virtual operations, after those of CDrawable and in this order.
    virtual void AddPoint(CGePoint2d p); // Appends a counted vertex with a straight segment after it.
    // Before vertex i, or at the end, with the bulge of the segment that it divides. 1, or the invalid-argument
    // exception.
    virtual int InsertPoint(int i, CGePoint2d p);
    // 1; 0 for an index at or beyond the counted vertices. A negative one raises the invalid-argument exception.
    virtual int RemovePoint(int i);

    // ---- Painting ----

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;
    // Vertices blue, midpoints yellow.
    void DrawGripPoints(CDC* pDC, CGePointArray& grips, CDrawGeometry* pGeom) override;

    // ---- Streaming ----

    void Serialize(CArchive& ar) override; // The counted vertices with bulges and tags, closing, lock.

protected:
    // Strokes segment by segment, each with its own pen. 0 for an empty list and for an arc without a circle.
    int DrawPolyLine(CDC* pDC, CDrawGeometry* pGeom, CGePointArray& pts, CBulgeArray& bulges, int penStyle);

private:
    bool IsPathOutOfSight(CDC* pDC, CDrawGeometry* pGeom, double penWidth) const;
    void AppendVertex(CGePoint2d p, double bulge, CString name, CString msg);
    void RemoveVerticesFrom(int index); // At most the length of each list.
    void StoreVertices(CArchive& ar);
    void LoadVertices(CArchive& ar, int count, UINT schema);

protected:
    int m_VertexCount = 0;           // The counted vertices.
    int m_PLineReserved = 0;         // Stored and loaded; the library does not use it.
    CGePointArray m_PointList;       // Drawing units.
    CGePointArray m_InsertPointList; // See AddInsertPoint.
    CBulgeArray m_BulgeList;         // Of the segment from each vertex to the next one.
    // The tags of these segments.
    CArray<CString, CString&> m_ParmNameList;
    CArray<CString, CString&> m_ParmMsgList;
    CArray<DWORD, DWORD&> m_SegPenColorList; // COLORREFs. Neither these nor the flags are stored.
    CUIntArray m_SegPenFlagList;             // 1 where the segment has a colour of its own.
    int m_SelLine = -1;                      // See GetSelSelLine.
    int m_isClosed = 0;                      // See IsClosed.
    int m_LockMode = 0;                      // See SetLockMode.
    // Tags of the host for the whole polyline: stored and shown, never interpreted.
    CString m_strMsgInfo;
    CString m_strParmName;
};
