#include "Line.h"

#include "DrawStrokes.h"
#include "ObjectSchema.h"
#include "SegmentDistance.h"

#include <algorithm>
#include <cmath>

IMPLEMENT_SERIAL(CLine, CDrawable, VERSIONABLE_SCHEMA | 5)

namespace {

enum Grip { kGripStart = 0, kGripMiddle = 1, kGripEnd = 2 };

// The rounded pixel is rounded to single precision before GDI gets it, which changes some pixels beyond 2^24.
int ThroughFloat(int pixel) {
    return Truncate(static_cast<float>(pixel));
}

} // namespace

// ---- Geometry and queries ------------------------------------------------------------------------------------------

CString CLine::GetName() {
    return L"直线";
}

int CLine::GetRect(CVectorViewCoordTran*, CGePoint2d& min, CGePoint2d& max) {
    if (m_IsShow == 0) {
        return 0;
    }
    min.SetPoint(std::min(m_X1, m_X2), std::min(m_Y1, m_Y2));
    max.SetPoint(std::max(m_X1, m_X2), std::max(m_Y1, m_Y2));
    return 1;
}

float CLine::HitTest(CGePoint2d p) {
    if (m_IsShow == 0) {
        return 100.0f;
    }
    return std::fabs(SegmentDistance(m_X1, m_Y1, m_X2, m_Y2, p));
}

// Compatibility 9: a perpendicular is dropped on the infinite line.
int CLine::GetClosetPt(CGePoint2d p, CGePointArray& out) {
    CGePoint2d foot = PerpendicularFoot(GetStartPoint(), GetEndPoint(), p);
    out.Add(foot);
    return 1;
}

void CLine::getGripPoints(CGePointArray& out, int) {
    CGePoint2d start(m_X1, m_Y1);
    CGePoint2d middle(m_X1 + (m_X2 - m_X1) / 2, m_Y1 + (m_Y2 - m_Y1) / 2);
    CGePoint2d end(m_X2, m_Y2);
    out.Add(start);
    out.Add(middle);
    out.Add(end);
}

// ---- Editing -------------------------------------------------------------------------------------------------------

void CLine::SetStartPoint(CGePoint2d p) {
    m_X1 = p.x;
    m_Y1 = p.y;
}

void CLine::SetEndPoint(CGePoint2d p) {
    m_X2 = p.x;
    m_Y2 = p.y;
}

void CLine::moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) {
    const int grip = indices.GetAt(0);
    if (grip == kGripStart || grip == kGripMiddle) {
        SetStartPoint(GetStartPoint() + v);
    }
    if (grip == kGripEnd || grip == kGripMiddle) {
        SetEndPoint(GetEndPoint() + v);
    }
}

void CLine::transformBy(const CGeMatrix2d& m) {
    SetStartPoint(GetStartPoint().transformBy(m));
    SetEndPoint(GetEndPoint().transformBy(m));
}

void CLine::GetProperty(CDrawableProperty& list) {
    CDrawable::GetProperty(list);
    PropertyRows::AddDouble(list, L"m_X1", L"起点x坐标", m_X1);
    PropertyRows::AddDouble(list, L"m_Y1", L"起点y坐标", m_Y1);
    PropertyRows::AddDouble(list, L"m_X2", L"终点x坐标", m_X2);
    PropertyRows::AddDouble(list, L"m_Y2", L"终点y坐标", m_Y2);
    PropertyRows::AddText(list, L"m_strParmName", L"参数名称", m_strParmName);
    PropertyRows::AddText(list, L"m_strMsgInfo", L"扩展信息", m_strMsgInfo);
    PropertyRows::AddLong(list, L"m_LockBojZoom", L"是否锁定线宽", m_LockMode);
}

void CLine::SetProperty(CDrawableProperty& list) {
    CDrawable::SetProperty(list);
    PropertyRows::TakeDouble(list, L"m_X1", m_X1);
    PropertyRows::TakeDouble(list, L"m_Y1", m_Y1);
    PropertyRows::TakeDouble(list, L"m_X2", m_X2);
    PropertyRows::TakeDouble(list, L"m_Y2", m_Y2);
    PropertyRows::TakeText(list, L"m_strParmName", m_strParmName);
    PropertyRows::TakeText(list, L"m_strMsgInfo", m_strMsgInfo);
    PropertyRows::TakeLong(list, L"m_LockBojZoom", m_LockMode);
}

void CLine::ExchangeState(CStateExchange& exchange) {
    CDrawable::ExchangeState(exchange);
    exchange.Level<CLine>();
    exchange.Value(m_X1);
    exchange.Value(m_Y1);
    exchange.Value(m_X2);
    exchange.Value(m_Y2);
    exchange.Text(m_strParmName);
    exchange.Text(m_strMsgInfo);
    exchange.Value(m_LockMode);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void CLine::Draw(CDC* pDC, CDrawGeometry* pGeom) {
    DrawInFrame(pDC, pGeom, L"CLine::Draw", L"2", [&](LPCTSTR& stage) {
        if (!IsToBeDrawn()) {
            return false;
        }
        // Compatibility 119: only the value 1 locks the width of a line or a label.
        const PenLook look = ResolvePen(pGeom, m_LockMode == 1);
        const CVectorViewCoordTran* tran = pGeom->GetVectorViewCoordTran();
        float x1 = 0.0f;
        float y1 = 0.0f;
        float x2 = 0.0f;
        float y2 = 0.0f;
        tran->DPToLP(m_X1, m_Y1, &x1, &y1);
        tran->DPToLP(m_X2, m_Y2, &x2, &y2);
        stage = L"1";
        if (IsOutOfSight(pDC, pGeom, {x1, y1, x2, y2}, look.width)) {
            pDC->SetBkMode(TRANSPARENT);
            return false;
        }
        StrokeOutline(pDC, m_DrawState, look, R2_NOT, [&] {
            pDC->MoveTo(ThroughFloat(PixelOf(x1)), ThroughFloat(PixelOf(y1)));
            pDC->LineTo(ThroughFloat(PixelOf(x2)), ThroughFloat(PixelOf(y2)));
        });
        return true;
    });
}

// ---- Streaming -----------------------------------------------------------------------------------------------------

void CLine::Serialize(CArchive& ar) {
    CDrawable::Serialize(ar);
    if (ar.IsStoring()) {
        ar << static_cast<int>(kCurrentSchema) << m_X1 << m_Y1 << m_X2 << m_Y2 << m_strParmName << m_strMsgInfo
           << m_LockMode;
        return;
    }
    // Older schemas have fewer fields; an unknown schema reads nothing here and keeps the values of a new line.
    const bool current = IsCurrentForm(ar);
    const UINT schema = ObjectSchema(ar);
    if (!current && (schema < 1 || schema > 3)) {
        return;
    }
    if (current) {
        int version = 0;
        ar >> version;
    }
    ar >> m_X1 >> m_Y1 >> m_X2 >> m_Y2;
    if (current || schema >= 2) {
        ar >> m_strParmName >> m_strMsgInfo;
    }
    if (current || schema == 3) {
        ar >> m_LockMode;
    }
}
