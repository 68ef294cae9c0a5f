#include "PLine.h"

#include "ObjectSchema.h"

#include <algorithm>

IMPLEMENT_SERIAL(CPLine, CDrawable, VERSIONABLE_SCHEMA | 5)

namespace {

// Schemas of the older forms: each has what the one before had and the fields named here.
enum Schema : UINT {
    kSchemaLock = 2,  // the lock
    kSchemaBulge = 3, // bulges and the whole polyline's tags
    kSchemaTags = 4   // each segment's tags
};

// Overwrites the entry of a list, or appends it.
template <class List, class Value>
void PutAt(List& list, int index, Value& value) {
    if (index < list.GetSize()) {
        list[index] = value;
    } else {
        list.Add(value);
    }
}

void RaiseUnless(bool valid) {
    if (!valid) {
        AfxThrowInvalidArgException();
    }
}

// The middle of a segment on its arc; the vertex itself for a segment without length.
CGePoint2d SegmentMidpoint(const CGePoint2d& start, const CGePoint2d& end, double bulge) {
    CGePoint2d mid = start == end ? CGePoint2d(start.x, start.y) : CDraw_Common::GetArcMidHighPt(start, end, bulge);
    mid.type = kSnapMidpoint;
    return mid;
}

// The bulge to store for an arc from a to b whose point farthest from the chord is `mid`; 0 when a and b are one point.
double BulgeThrough(const CGePoint2d& a, const CGePoint2d& b, const CGePoint2d& mid) {
    double bulge = 0.0;
    return CDraw_Common::CalTwoPoint_Bulge(a, b, mid, bulge) != 0 ? bulge * -1.0 : 0.0;
}

} // namespace

// ---- Construction --------------------------------------------------------------------------------------------------

// Compatibility 38: the constructor for hosts leaves the flags empty.
CPLine::CPLine(int n, CGePoint2d* pts) : m_VertexCount(pts != nullptr ? n : 0) {
    for (int i = 0; i < m_VertexCount; ++i) {
        double bulge = 0.0;
        CString empty;
        m_PointList.Add(pts[i]);
        m_BulgeList.Add(bulge);
        m_ParmNameList.Add(empty);
        m_ParmMsgList.Add(empty);
        m_SegPenColorList.Add(m_PenColor);
    }
}

// ---- Queries -------------------------------------------------------------------------------------------------------

CString CPLine::GetName() {
    return L"多线段";
}

int CPLine::IsArc(int i) {
    return i >= 0 && i < m_PointList.GetSize() && m_BulgeList[i] != 0.0;
}

int CPLine::GetSLineInfo(int i, CString& name, CString& msg) {
    if (i < 0 || i >= m_PointList.GetSize()) {
        return 0;
    }
    name = m_ParmNameList[i];
    msg = m_ParmMsgList[i];
    return 1;
}

void CPLine::getGripPoints(CGePointArray& out, int mask) {
    const INT_PTR count = m_PointList.GetSize();
    for (INT_PTR i = 0; i < count; ++i) {
        if ((mask & kGripVertices) != 0) {
            out.Add(m_PointList[i]);
        }
        const bool last = i == count - 1;
        if ((!last || m_isClosed != 0) && (mask & kGripMidpoints) != 0) {
            CGePoint2d mid = SegmentMidpoint(m_PointList[i], m_PointList[last ? 0 : i + 1], m_BulgeList[i]);
            out.Add(mid);
        }
    }
    if ((mask & kGripInsertPoints) != 0) {
        for (INT_PTR i = 0; i < m_InsertPointList.GetSize(); ++i) {
            out.Add(m_InsertPointList[i]);
        }
    }
}

// ---- Vertices ------------------------------------------------------------------------------------------------------

// Appends one entry to each of the six lists; the caller sets m_VertexCount.
void CPLine::AppendVertex(CGePoint2d p, double bulge, CString name, CString msg) {
    m_PointList.Add(p);
    m_BulgeList.Add(bulge);
    m_ParmNameList.Add(name);
    m_ParmMsgList.Add(msg);
    m_SegPenColorList.Add(m_PenColor);
    m_SegPenFlagList.Add(0);
}

void CPLine::RemoveVerticesFrom(int index) {
    m_PointList.SetSize(index);
    m_BulgeList.SetSize(index);
    m_ParmNameList.SetSize(index);
    m_ParmMsgList.SetSize(index);
    m_SegPenColorList.SetSize(index);
    m_SegPenFlagList.SetSize(index);
}

void CPLine::AddPoint(CGePoint2d p) {
    AddPoint(p, 0.0);
}

void CPLine::AddPoint(CGePoint2d p, double bulge) {
    m_VertexCount = WrapAdd(m_VertexCount, 1);
    AppendVertex(p, bulge, CString(), CString());
}

int CPLine::InsertPoint(int i, CGePoint2d p) {
    // A vertex before the first one divides the closing segment.
    double bulge = m_BulgeList[i > 0 ? i - 1 : m_PointList.GetUpperBound()];
    if (i < m_PointList.GetSize()) {
        RaiseUnless(i >= 0);
        CString empty;
        UINT noColorOfItsOwn = 0;
        m_PointList.InsertAt(i, p);
        m_BulgeList.InsertAt(i, bulge);
        m_ParmNameList.InsertAt(i, empty);
        m_ParmMsgList.InsertAt(i, empty);
        m_SegPenColorList.InsertAt(i, m_PenColor);
        m_SegPenFlagList.InsertAt(i, noColorOfItsOwn);
    } else {
        AppendVertex(p, bulge, CString(), CString());
    }
    m_VertexCount = WrapAdd(m_VertexCount, 1);
    return 1;
}

// The segment before the vertex keeps its bulge and now ends at the next vertex.
int CPLine::RemovePoint(int i) {
    if (i >= m_VertexCount) {
        return 0;
    }
    // All six lists lose an entry, or none does.
    RaiseUnless(i >= 0 && i < m_PointList.GetSize() && i < m_BulgeList.GetSize() && i < m_ParmNameList.GetSize() &&
                i < m_ParmMsgList.GetSize() && i < m_SegPenColorList.GetSize() && i < m_SegPenFlagList.GetSize());
    m_PointList.RemoveAt(i);
    m_BulgeList.RemoveAt(i);
    m_ParmNameList.RemoveAt(i);
    m_ParmMsgList.RemoveAt(i);
    m_SegPenColorList.RemoveAt(i);
    m_SegPenFlagList.RemoveAt(i);
    --m_VertexCount;
    return 1;
}

// Compatibility 37: `SetPoint` beyond the end appends a vertex that is not counted.
// Such a vertex is painted, but neither hit nor measured nor stored.
void CPLine::SetPoint(int i, CGePoint2d p) {
    if (i < m_PointList.GetSize()) {
        m_PointList[i] = p;
    } else {
        AppendVertex(p, 0.0, CString(), CString());
    }
}

// ---- Segments ------------------------------------------------------------------------------------------------------

int CPLine::SetBulge(int i, double b) {
    if (i >= m_BulgeList.GetSize()) {
        return 0;
    }
    m_BulgeList[i] = b;
    return 1;
}

int CPLine::SetSLineInfo(int i, CString name, CString msg) {
    if (i < 0 || i >= m_PointList.GetSize()) {
        return 0;
    }
    m_ParmNameList[i] = name;
    m_ParmMsgList[i] = msg;
    return 1;
}

int CPLine::SetSLPenColor(int i, DWORD c) {
    if (i >= m_SegPenColorList.GetSize()) {
        return 0;
    }
    m_SegPenFlagList[i] = 1;
    m_SegPenColorList[i] = c;
    return 1;
}

int CPLine::ResetPenColor(int i, DWORD c) {
    if (i >= m_SegPenColorList.GetSize()) {
        return 0;
    }
    m_SegPenFlagList[i] = 0;
    m_SegPenColorList[i] = c;
    return 1;
}

void CPLine::AddInsertPoint(CGePoint2d p) {
    m_InsertPointList.Add(p);
}

// ---- Grips and transforms ------------------------------------------------------------------------------------------

// Compatibility 39: the closing segment is not repaired when its first or last vertex moves.
// An arc next to a moved vertex is computed anew through its middle, which is moved by the whole vector too; a straight
// neighbour stays straight, and a bulge below kStraightHit becomes 0.
void CPLine::moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) {
    CGePointArray grips; // vertex 0, the middle of segment 0, vertex 1, ...
    CPLine::getGripPoints(grips, kGripPainted);
    const int g = indices.GetAt(0);
    const int lastGrip = static_cast<int>(grips.GetUpperBound());
    const CGePoint2d moved = grips.GetAt(g) + v;
    const int m = g / 2;

    if (g % 2 != 0) {
        // The last grip is a midpoint only of a closed polyline: that of the segment back to vertex 0.
        const int next = g == lastGrip ? 0 : g + 1;
        if (m < m_BulgeList.GetSize()) {
            m_BulgeList[m] = BulgeThrough(grips[g - 1], grips[next], moved);
        }
        return;
    }

    m_PointList[m] = m_PointList[m] + v;
    const auto repair = [&](int segment, int midGrip, const CGePoint2d& start, const CGePoint2d& end) {
        double& bulge = m_BulgeList[segment];
        bulge = CDraw_Common::GetAbs(bulge) > kStraightHit ? BulgeThrough(start, end, grips[midGrip] + v) : 0.0;
    };
    if (g >= 2) {
        repair(m - 1, g - 1, grips[g - 2], moved);
    }
    if (g + 1 < lastGrip) {
        repair(m, g + 1, moved, grips[g + 2]);
    }
}

// Compatibility 84: a mirror keeps the signs of the bulges.
void CPLine::transformBy(const CGeMatrix2d& m) {
    for (int i = 0; i < m_VertexCount; ++i) {
        m_PointList[i].transformBy(m);
    }
}

// ---- Rows ----------------------------------------------------------------------------------------------------------

void CPLine::GetProperty(CDrawableProperty& list) {
    CDrawable::GetProperty(list);
    PropertyRows::AddDouble(list, L"m_X1", L"顶点x坐标", m_PointList[0].x);
    PropertyRows::AddDouble(list, L"m_Y1", L"顶点y坐标", m_PointList[0].y);
    PropertyRows::AddFlag(list, L"m_isClosed", L"闭合", m_isClosed);
    PropertyRows::AddLong(list, L"m_LockObjZoom", L"是否锁定线宽", m_LockMode);
    PropertyRows::AddText(list, L"m_strParmName", L"参数名称", m_strParmName);
    PropertyRows::AddText(list, L"m_strMsgInfo", L"扩展信息", m_strMsgInfo);
}

void CPLine::SetProperty(CDrawableProperty& list) {
    CDrawable::SetProperty(list);
    if (!m_PointList.IsEmpty()) {
        PropertyRows::TakeDouble(list, L"m_X1", m_PointList[0].x);
        PropertyRows::TakeDouble(list, L"m_Y1", m_PointList[0].y);
    }
    PropertyRows::TakeFlag(list, L"m_isClosed", m_isClosed);
    PropertyRows::TakeLong(list, L"m_LockObjZoom", m_LockMode);
    PropertyRows::TakeText(list, L"m_strParmName", m_strParmName);
    PropertyRows::TakeText(list, L"m_strMsgInfo", m_strMsgInfo);
}

// Leaves out the segment that the last hit test found.
void CPLine::ExchangeState(CStateExchange& exchange) {
    CDrawable::ExchangeState(exchange);
    exchange.Level<CPLine>();
    exchange.Value(m_VertexCount);
    exchange.Value(m_PLineReserved);
    exchange.List(m_PointList);
    exchange.List(m_InsertPointList);
    exchange.List(m_BulgeList);
    exchange.List(m_ParmNameList);
    exchange.List(m_ParmMsgList);
    exchange.List(m_SegPenColorList);
    exchange.List(m_SegPenFlagList);
    exchange.Value(m_isClosed);
    exchange.Value(m_LockMode);
    exchange.Text(m_strMsgInfo);
    exchange.Text(m_strParmName);
}

// ---- Streaming -----------------------------------------------------------------------------------------------------

void CPLine::Serialize(CArchive& ar) {
    CDrawable::Serialize(ar);
    if (ar.IsStoring()) {
        ar << static_cast<int>(kCurrentSchema) << m_VertexCount << m_LockMode << m_PLineReserved << m_isClosed
           << m_strParmName << m_strMsgInfo;
        StoreVertices(ar);
        return;
    }
    // What is read overwrites the lists, so that a preview, which reads the same polyline at each move of the mouse,
    // takes no memory anew. In the end, also where reading fails, they are as long as what was read.
    struct CRestRemoved {
        CPLine& line;
        ~CRestRemoved() { line.RemoveVerticesFrom(std::max(line.m_VertexCount, 0)); }
    };
    m_VertexCount = 0;
    const CRestRemoved rest = {*this};
    const bool current = IsCurrentForm(ar);
    const UINT schema = current ? kCurrentSchema : ObjectSchema(ar);
    if (current) {
        int version = 0;
        ar >> version;
    }
    int count = 0;
    ar >> count;
    // Schema 1, and any unknown one, has the first form.
    const bool known = schema >= kSchemaLock && schema <= kCurrentSchema;
    if (known) {
        ar >> m_LockMode;
    }
    ar >> m_PLineReserved >> m_isClosed;
    if (known && schema >= kSchemaBulge) {
        ar >> m_strParmName >> m_strMsgInfo;
    }
    LoadVertices(ar, count, known ? schema : 1);
}

// Counted vertices only, without their colours.
void CPLine::StoreVertices(CArchive& ar) {
    for (int i = 0; i < m_VertexCount; ++i) {
        ar << m_PointList[i].x << m_PointList[i].y << m_BulgeList[i] << m_ParmNameList[i] << m_ParmMsgList[i];
    }
}

// Read vertex by vertex: a count beyond the end of the stream allocates no memory for missing vertices, and what was
// read until then is a polyline with a true count. A count below 0 is kept as read.
void CPLine::LoadVertices(CArchive& ar, int count, UINT schema) {
    if (count < 1) {
        m_VertexCount = count;
        return;
    }
    while (m_VertexCount < count) {
        double x = 0.0;
        double y = 0.0;
        double bulge = 0.0;
        CString name;
        CString msg;
        ar >> x >> y;
        if (schema >= kSchemaBulge) {
            ar >> bulge;
        }
        if (schema >= kSchemaTags) {
            ar >> name >> msg;
        }
        CGePoint2d point(x, y);
        UINT flag = 0;
        PutAt(m_PointList, m_VertexCount, point);
        PutAt(m_BulgeList, m_VertexCount, bulge);
        PutAt(m_ParmNameList, m_VertexCount, name);
        PutAt(m_ParmMsgList, m_VertexCount, msg);
        PutAt(m_SegPenColorList, m_VertexCount, m_PenColor);
        PutAt(m_SegPenFlagList, m_VertexCount, flag);
        ++m_VertexCount;
    }
}
