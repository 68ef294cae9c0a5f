#include "Circle.h"

#include "DrawStrokes.h"
#include "ObjectSchema.h"

#include <cmath>

IMPLEMENT_SERIAL(CCircle, CDrawable, VERSIONABLE_SCHEMA | 5)

namespace {

enum Grip { kGripCenter = 0, kGripRight = 1, kGripTop = 2, kGripLeft = 3, kGripBottom = 4 };

// The stock object selected for a filled circle is a palette, which no context takes as a brush. The
// selection fails without a message, and the circle is filled with the brush that is in the context already.
// Compatibility 43: a filled circle takes whatever brush is selected.
constexpr int kStockFilled = DEFAULT_PALETTE;

} // namespace

// ---- Construction --------------------------------------------------------------------------------------------------

CCircle::CCircle(Gdiplus::PointF center, float radius) : m_CircleX(center.X), m_CircleY(center.Y), m_Radius(radius) {}

CCircle::CCircle(Gdiplus::PointF center, float radius, int fill)
    : m_CircleX(center.X), m_CircleY(center.Y), m_Radius(radius), m_Fill(fill) {}

// ---- Geometry and queries ------------------------------------------------------------------------------------------

CString CCircle::GetName() {
    return L"圆";
}

int CCircle::GetRect(CVectorViewCoordTran*, CGePoint2d& min, CGePoint2d& max) {
    if (m_IsShow == 0) {
        return 0;
    }
    // A negative radius gives a minimum above the maximum.
    min.SetPoint(m_CircleX - m_Radius, m_CircleY - m_Radius);
    max.SetPoint(m_CircleX + m_Radius, m_CircleY + m_Radius);
    return 1;
}

float CCircle::HitTest(CGePoint2d p) {
    if (m_IsShow == 0) {
        return 100.0f;
    }
    return static_cast<float>(std::fabs(p.distance(Center()) - m_Radius));
}

void CCircle::getGripPoints(CGePointArray& out, int) {
    CGePoint2d grips[] = {Center(), CGePoint2d(m_CircleX + m_Radius, m_CircleY),
                          CGePoint2d(m_CircleX, m_CircleY + m_Radius), CGePoint2d(m_CircleX - m_Radius, m_CircleY),
                          CGePoint2d(m_CircleX, m_CircleY - m_Radius)};
    for (CGePoint2d& grip : grips) {
        out.Add(grip);
    }
}

// ---- Editing -------------------------------------------------------------------------------------------------------

void CCircle::SetCenter(CGePoint2d center) {
    m_CircleX = center.x;
    m_CircleY = center.y;
}

void CCircle::moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) {
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

void CCircle::transformBy(const CGeMatrix2d& m) {
    SetCenter(Center().transformBy(m));
}

void CCircle::GetProperty(CDrawableProperty& list) {
    CDrawable::GetProperty(list);
    PropertyRows::AddDouble(list, L"m_CircleX", L"中心点x坐标", m_CircleX);
    PropertyRows::AddDouble(list, L"m_CircleY", L"中心点y坐标", m_CircleY);
    PropertyRows::AddDouble(list, L"m_Radius", L"半径", m_Radius);
    PropertyRows::AddFlag(list, L"m_Fill", L"填充", m_Fill);
    PropertyRows::AddText(list, L"m_strParmName", L"参数名称", m_strParmName);
    PropertyRows::AddText(list, L"m_strMsgInfo", L"扩展信息", m_strMsgInfo);
    PropertyRows::AddLong(list, L"m_LockObjZoom", L"是否锁定线宽", m_LockMode);
}

void CCircle::SetProperty(CDrawableProperty& list) {
    CDrawable::SetProperty(list);
    PropertyRows::TakeDouble(list, L"m_CircleX", m_CircleX);
    PropertyRows::TakeDouble(list, L"m_CircleY", m_CircleY);
    PropertyRows::TakeDouble(list, L"m_Radius", m_Radius);
    PropertyRows::TakeFlag(list, L"m_Fill", m_Fill);
    PropertyRows::TakeText(list, L"m_strParmName", m_strParmName);
    PropertyRows::TakeText(list, L"m_strMsgInfo", m_strMsgInfo);
    // Only the low byte of the lock is taken back, so 256 unlocks.
    // Compatibility 44: the lock's row takes only the low byte.
    PropertyRows::TakeLowByte(list, L"m_LockObjZoom", m_LockMode);
}

void CCircle::ExchangeState(CStateExchange& exchange) {
    CDrawable::ExchangeState(exchange);
    exchange.Level<CCircle>();
    exchange.Value(m_CircleX);
    exchange.Value(m_CircleY);
    exchange.Value(m_Radius);
    exchange.Value(m_Fill);
    exchange.Text(m_strParmName);
    exchange.Text(m_strMsgInfo);
    exchange.Value(m_LockMode);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void CCircle::Draw(CDC* pDC, CDrawGeometry* pGeom) {
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
        StrokeRound(pDC, m_DrawState, look, m_Fill != 0 ? kStockFilled : NULL_BRUSH,
                    [&] { pDC->Ellipse(Truncate(px - pr), Truncate(py - pr), Truncate(px + pr), Truncate(py + pr)); });
        return true;
    });
}

// ---- Streaming -----------------------------------------------------------------------------------------------------

void CCircle::Serialize(CArchive& ar) {
    CDrawable::Serialize(ar);
    if (ar.IsStoring()) {
        ar << static_cast<int>(kCurrentSchema) << m_CircleX << m_CircleY << m_Radius << m_Fill << m_strParmName
           << m_strMsgInfo << m_LockMode;
        return;
    }
    // Schemas 1 and 2 lack the last fields; every other one, known or not, has the current fields.
    const UINT schema = ObjectSchema(ar);
    if (IsCurrentForm(ar)) {
        int version = 0;
        ar >> version;
    }
    ar >> m_CircleX >> m_CircleY >> m_Radius >> m_Fill;
    if (schema != 1) {
        ar >> m_strParmName >> m_strMsgInfo;
        if (schema != 2) {
            ar >> m_LockMode;
        }
    }
}
