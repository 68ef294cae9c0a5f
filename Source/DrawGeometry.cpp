// CDrawGeometry: what every Draw gets beside the device context. Layer: painter (it calls the painter).

#include "DrawGeometry.h"

#include "VectorGraphic.h"

CDrawGeometry::CDrawGeometry(CVectorGraphic* graphic, CLayerManager* layers)
    : m_pVectorGraphic(graphic), m_pLayerManager(layers) {}

CVectorViewCoordTran* CDrawGeometry::GetVectorViewCoordTran() {
    return m_pVectorGraphic->GetVectorViewCoordTran();
}

CString CDrawGeometry::GetTextParm_ShowText(CString& s) {
    return m_pVectorGraphic != nullptr ? m_pVectorGraphic->GetTextParm_ShowText(s) : s;
}
