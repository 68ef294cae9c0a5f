#include "Drawable.h"

#include "EditingOptions.h"
#include "GdiScope.h"
#include "LayerManager.h"
#include "SegmentDistance.h"

#include <cmath>

IMPLEMENT_SERIAL(CDrawable, CSerialable, VERSIONABLE_SCHEMA | 5)

namespace {

constexpr float kWideByLayer = -1.0f;
constexpr COLORREF kGripBlue = 0xFF0000; // 0x00BBGGRR

// Versions of the attribute block: 5 has neither visibility nor selectability, 7 has both, any other has visibility
// only.
constexpr int kVersionPlain = 5;
constexpr int kVersionCurrent = 7;

// Compatibility 32: a layer that names its colour by index shows red and blue exchanged.
// GetColor has already exchanged red and blue of the table's entry. White, the default layer's colour, looks the same
// either way.
DWORD LayerColor(const CLayerInfo& layer) {
    return layer.m_ColorIndex == kColorExplicit
               ? layer.m_Color
               : ExchangeRedBlue(CGraphColorInfo::GetInstance()->GetColor(layer.m_ColorIndex));
}

} // namespace

CKxAliveToken CDrawable::GetAlive() {
    if (m_Alive == nullptr) {
        m_Alive = std::make_unique<CKxAlive>();
    }
    return CKxAliveToken(*m_Alive);
}

// ---- Geometry and queries ------------------------------------------------------------------------------------------

void CDrawable::getGripPoints(CGePointArray&, int) {}

CString CDrawable::GetName() {
    return L"对象";
}

int CDrawable::GetRect(CVectorViewCoordTran*, CGePoint2d& min, CGePoint2d& max) {
    min = CGePoint2d();
    max = CGePoint2d();
    return 0;
}

float CDrawable::HitTest(CGePoint2d) {
    return 100.0f;
}

int CDrawable::GetClosetPt(CGePoint2d, CGePointArray&) {
    return 1;
}

float CDrawable::DistanceLine(CGePoint2d a, CGePoint2d b, CGePoint2d p) {
    return SegmentDistance(a.x, a.y, b.x, b.y, p);
}

CGePoint2d CDrawable::PerpendicularFoot(CGePoint2d a, CGePoint2d b, CGePoint2d p) {
    // The line as A x + B y + C = 0.
    const double A = b.y - a.y;
    const double B = a.x - b.x;
    const double C = a.y * (b.x - a.x) - a.x * (b.y - a.y);
    const double D = A * A + B * B;
    CGePoint2d foot((B * B * p.x - A * B * p.y - A * C) / D, (A * A * p.y - A * B * p.x - B * C) / D);
    foot.type = kSnapFoot;
    return foot;
}

// ---- Editing -------------------------------------------------------------------------------------------------------

void CDrawable::moveGripPointsAt(const CIndexArray&, const CGeVector2d&) {}

void CDrawable::transformBy(const CGeMatrix2d&) {}

DWORD CDrawable::GetPenColor() {
    const auto index = static_cast<unsigned short>(m_PenColorIndex);
    return index < static_cast<unsigned short>(kColorExplicit) ? CGraphColorInfo::GetInstance()->GetColor(index)
                                                               : m_PenColor;
}

void CDrawable::SetPenColor(DWORD color) {
    m_PenColor = color;
    m_PenColorIndex = kColorExplicit;
}

// Compatibility 35: an edit of the width also writes the layer, and the layer's row is never taken back.
// The row of the layer has the key of the line type, and SetProperty looks for it under the key of the width: a width
// of 2.0 moves the object to layer 0. Both keys are part of the interface.
void CDrawable::GetProperty(CDrawableProperty& list) {
    PropertyRows::Add(list, L"color", L"颜色", L"指定对象的颜色", VT_I2, COleVariant(m_PenColorIndex, VT_I2));
    PropertyRows::Add(list, L"LineWide", L"线宽", L"指定线宽度", VT_R4, COleVariant(m_LineWide));
    PropertyRows::AddEnum(list, L"LineType", L"线型", L"指定线型", VT_I2, COleVariant(m_LineType, VT_I2));
    PropertyRows::AddEnum(list, L"LineType", L"图层", L"指定图层", VT_I2, COleVariant(m_Layer, VT_I2));
}

void CDrawable::SetProperty(CDrawableProperty& list) {
    PropertyRows::TakeShort(list, L"color", m_PenColorIndex);
    PropertyRows::TakeFloat(list, L"LineWide", m_LineWide);
    PropertyRows::TakeShort(list, L"LineType", m_LineType);
    PropertyRows::TakeShort(list, L"LineWide", m_Layer);
}

void CDrawable::ExchangeState(CStateExchange& exchange) {
    exchange.Level<CDrawable>();
    exchange.Value(m_PenColorIndex);
    exchange.Value(m_PenColor);
    exchange.Value(m_ColorBrush);
    exchange.Value(m_LineWide);
    exchange.Value(m_LineType);
    exchange.Value(m_Scale);
    exchange.Value(m_Layer);
    exchange.Value(m_ID);
    exchange.Value(m_IsDelete);
    exchange.Value(m_IsShow);
    exchange.Value(m_CanBeSelect);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void CDrawable::Draw(CDC* pDC, CDrawGeometry* pGeom) {
    if (m_DrawState == Selected) {
        CGePointArray grips;
        getGripPoints(grips, kGripPainted);
        DrawGripPoints(pDC, grips, pGeom);
    }
}

void CDrawable::DrawGripPoints(CDC* pDC, CGePointArray& grips, CDrawGeometry* pGeom) {
    CPen pen(PS_SOLID, 0, kGripBlue);
    CScopedPen selectedPen(pDC, &pen);
    CScopedStockBrush selectedBrush(pDC, NULL_BRUSH);
    const CVectorViewCoordTran* tran = pGeom->GetVectorViewCoordTran();
    const int half = GripHalf(pGeom);
    for (INT_PTR i = 0; i < grips.GetSize(); ++i) {
        int x = 0;
        int y = 0;
        tran->DPToLP(grips[i].x, grips[i].y, &x, &y);
        pDC->Rectangle(WrapSubtract(x, half), WrapSubtract(y, half), WrapAdd(x, half + 1), WrapAdd(y, half + 1));
    }
    selectedBrush.Restore();
    selectedPen.Restore();
}

int CDrawable::GripHalf(CDrawGeometry* pGeom) {
    return Truncate(3.0f * pGeom->GetEditingOptions().pixelScale);
}

DWORD CDrawable::InnerGetPenColor(CDrawGeometry* pGeom) {
    switch (m_PenColorIndex) {
    case kColorExplicit:
        return m_PenColor;
    case kColorByLayer: {
        const CLayerInfo* layer = pGeom->GetLayerManager()->GetLayerInfo(m_Layer);
        return layer != nullptr ? LayerColor(*layer) : m_PenColor;
    }
    default:
        return GetPenColor();
    }
}

float CDrawable::InnerGetLineWide(CDrawGeometry* pGeom) {
    if (std::fabs(static_cast<double>(m_LineWide - kWideByLayer)) < kSameCoordinate) {
        if (const CLayerInfo* layer = pGeom->GetLayerManager()->GetLayerInfo(m_Layer)) {
            return layer->m_LineWide;
        }
    }
    return m_LineWide;
}

short CDrawable::InnerGetLineType(CDrawGeometry* pGeom) {
    if (m_LineType == -1) {
        if (const CLayerInfo* layer = pGeom->GetLayerManager()->GetLayerInfo(m_Layer)) {
            return layer->m_LineType;
        }
    }
    return m_LineType;
}

float CDrawable::PenWidth(CDrawGeometry* pGeom, bool locked, float floorWidth) {
    const float width = InnerGetLineWide(pGeom);
    if (locked) {
        return width;
    }
    const float pixels = pGeom->GetVectorViewCoordTran()->DToL(width);
    return floorWidth > pixels ? floorWidth : pixels;
}

CDrawable::PenLook CDrawable::ResolvePen(CDrawGeometry* pGeom, bool locked, float floorWidth) {
    const short style = InnerGetLineType(pGeom);
    const int width = Truncate(PenWidth(pGeom, locked, floorWidth));
    return {style, width, InnerGetPenColor(pGeom)};
}

void CDrawable::ReportDrawFailure(LPCTSTR function, LPCTSTR step) {
    AfxMessageBox(CString(function) + L"出错:step=" + step);
}

// ---- Streaming -----------------------------------------------------------------------------------------------------

void CDrawable::Serialize(CArchive& ar) {
    CSerialable::Serialize(ar);
    if (ar.IsStoring()) {
        ar << kVersionCurrent << m_PenColorIndex << m_PenColor << m_ColorBrush << m_LineWide << m_LineType << m_Scale
           << m_Layer << m_ID << m_IsDelete << static_cast<int>(m_DrawState) << m_IsShow << m_CanBeSelect;
        return;
    }
    int version = kVersionPlain;
    if (IsCurrentForm(ar)) {
        ar >> version;
    }
    int state = 0;
    ar >> m_PenColorIndex >> m_PenColor >> m_ColorBrush >> m_LineWide >> m_LineType >> m_Scale >> m_Layer >> m_ID >>
        m_IsDelete >> state;
    if (version != kVersionPlain) {
        ar >> m_IsShow;
        if (version == kVersionCurrent) {
            ar >> m_CanBeSelect;
        }
    }
    // A drawing that was saved while an object was selected loads it in that state, but in no list of selected objects.
    m_DrawState = static_cast<enum DrawState>(state);
}
