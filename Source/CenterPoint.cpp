#include "CenterPoint.h"

#include "DrawStrokes.h"

IMPLEMENT_SERIAL(CCenterPoint, CDrawable, VERSIONABLE_SCHEMA | 5)

namespace {

enum Grip { kGripCenter = 0, kGripRight = 1, kGripTop = 2, kGripLeft = 3, kGripBottom = 4 };

// Ten times the distance that most other kinds report when they are not hit.
constexpr float kNotHit = 1000.0f;
constexpr float kHit = 1.0f;

} // namespace

// ---- Construction --------------------------------------------------------------------------------------------------

CCenterPoint::CCenterPoint(Gdiplus::PointF center) : m_CircleX(center.X), m_CircleY(center.Y) {}

// ---- Geometry and queries ------------------------------------------------------------------------------------------

CString CCenterPoint::GetName() {
    return L"插入点";
}

int CCenterPoint::GetRect(CVectorViewCoordTran*, CGePoint2d& min, CGePoint2d& max) {
    if (m_IsShow == 0) {
        return 0;
    }
    min.SetPoint(m_CircleX - m_Radius, m_CircleY - m_Radius);
    max.SetPoint(m_CircleX + m_Radius, m_CircleY + m_Radius);
    return 1;
}

float CCenterPoint::HitTest(CGePoint2d p) {
    if (m_IsShow == 0) {
        return kNotHit;
    }
    return p.distance(Center()) > m_Radius ? kNotHit : kHit;
}

void CCenterPoint::getGripPoints(CGePointArray& out, int) {
    CGePoint2d grips[] = {Center(), CGePoint2d(m_CircleX + m_Radius, m_CircleY),
                          CGePoint2d(m_CircleX, m_CircleY + m_Radius), CGePoint2d(m_CircleX - m_Radius, m_CircleY),
                          CGePoint2d(m_CircleX, m_CircleY - m_Radius)};
    for (CGePoint2d& grip : grips) {
        out.Add(grip);
    }
}

// ---- Editing -------------------------------------------------------------------------------------------------------

void CCenterPoint::SetCenter(CGePoint2d center) {
    m_CircleX = center.x;
    m_CircleY = center.y;
}

void CCenterPoint::moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) {
    switch (indices.GetAt(0)) {
    case kGripCenter:
        SetCenter(Center() + v);
        break;
    case kGripRight:
        m_Radius += v.x;
        break;
    case kGripTop:
        m_Radius += v.y;
        break;
    case kGripLeft:
        m_Radius -= v.x;
        break;
    case kGripBottom:
        m_Radius -= v.y;
        break;
    default:
        break;
    }
}

void CCenterPoint::transformBy(const CGeMatrix2d& m) {
    SetCenter(Center().transformBy(m));
}

void CCenterPoint::GetProperty(CDrawableProperty& list) {
    CDrawable::GetProperty(list);
    PropertyRows::AddDouble(list, L"m_CircleX", L"中心点x坐标", m_CircleX);
    PropertyRows::AddDouble(list, L"m_CircleY", L"中心点y坐标", m_CircleY);
    PropertyRows::AddDouble(list, L"m_Radius", L"半径", m_Radius);
    PropertyRows::AddFlag(list, L"m_Fill", L"填充", m_Fill);
    PropertyRows::AddText(list, L"m_strParmName", L"参数名称", m_strParmName);
    PropertyRows::AddText(list, L"m_strMsgInfo", L"扩展信息", m_strMsgInfo);
    PropertyRows::AddLong(list, L"m_LockObjZoom", L"是否锁定线宽", m_LockMode);
}

void CCenterPoint::SetProperty(CDrawableProperty& list) {
    CDrawable::SetProperty(list);
    PropertyRows::TakeDouble(list, L"m_CircleX", m_CircleX);
    PropertyRows::TakeDouble(list, L"m_CircleY", m_CircleY);
    PropertyRows::TakeDouble(list, L"m_Radius", m_Radius);
    PropertyRows::TakeFlag(list, L"m_Fill", m_Fill);
    PropertyRows::TakeText(list, L"m_strParmName", m_strParmName);
    PropertyRows::TakeText(list, L"m_strMsgInfo", m_strMsgInfo);
    // Only the low byte of the lock is taken back, so 256 unlocks.
    PropertyRows::TakeLowByte(list, L"m_LockObjZoom", m_LockMode);
}

void CCenterPoint::ExchangeState(CStateExchange& exchange) {
    CDrawable::ExchangeState(exchange);
    exchange.Level<CCenterPoint>();
    exchange.Value(m_CircleX);
    exchange.Value(m_CircleY);
    exchange.Value(m_Radius);
    exchange.Value(m_Fill);
    exchange.Text(m_strParmName);
    exchange.Text(m_strMsgInfo);
    exchange.Value(m_LockMode);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

// A failure is reported under the name of the circle's Draw.
void CCenterPoint::Draw(CDC* pDC, CDrawGeometry* pGeom) {
    // Compatibility 50: a failed mark reports the name of the circle's `Draw`.
    DrawInFrame(pDC, pGeom, L"CCircle::Draw", L"3", [&](LPCTSTR& stage) {
        if (!IsToBeDrawn()) {
            return false;
        }
        const PenLook look = ResolvePen(pGeom, m_LockMode != 0);
        const CVectorViewCoordTran* tran = pGeom->GetVectorViewCoordTran();
        float px = 0.0f;
        float py = 0.0f;
        tran->DPToLP(m_CircleX, m_CircleY, &px, &py);
        const float pr = tran->DToL(m_Radius);
        stage = L"1";
        if (IsOutOfSight(pDC, pGeom, RoundBox(px, py, pr), look.width)) {
            pDC->SetBkMode(TRANSPARENT);
            return false;
        }
        StrokeRound(pDC, m_DrawState, look, NULL_BRUSH, [&] {
            const float half = pr / 2;
            pDC->MoveTo(Truncate(px), Truncate(py - pr));
            pDC->LineTo(Truncate(px), Truncate(py + pr));
            pDC->MoveTo(Truncate(px - pr), Truncate(py));
            pDC->LineTo(Truncate(px + pr), Truncate(py));
            pDC->Ellipse(Truncate(px - half), Truncate(py - half), Truncate(px + half), Truncate(py + half));
        });
        return true;
    });
}

// ---- Streaming -----------------------------------------------------------------------------------------------------

void CCenterPoint::Serialize(CArchive& ar) {
    CDrawable::Serialize(ar);
    if (ar.IsStoring()) {
        ar << static_cast<int>(kCurrentSchema) << m_CircleX << m_CircleY << m_Radius << m_Fill << m_strParmName
           << m_strMsgInfo << m_LockMode;
        return;
    }
    // Unlike a circle's, the older forms have all fields; only the version word is missing.
    if (IsCurrentForm(ar)) {
        int version = 0;
        ar >> version;
    }
    ar >> m_CircleX >> m_CircleY >> m_Radius >> m_Fill >> m_strParmName >> m_strMsgInfo >> m_LockMode;
}
