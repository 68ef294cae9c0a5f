#include "DrawGeometry.h"

#include "EditingOptions.h"
#include "VectorGraphic.h"

CDrawGeometry::CDrawGeometry(CVectorGraphic* graphic, CLayerManager* layers)
    : m_pVectorGraphic(graphic), m_pLayerManager(layers) {}

CVectorViewCoordTran* CDrawGeometry::GetVectorViewCoordTran() {
    return m_pVectorGraphic->GetVectorViewCoordTran();
}

const CEditingOptions& CDrawGeometry::GetEditingOptions() const {
    static const CEditingOptions classic;
    return m_pVectorGraphic != nullptr ? m_pVectorGraphic->GetEditingOptions() : classic;
}

CString CDrawGeometry::GetTextParm_ShowText(CString& s) {
    return m_pVectorGraphic != nullptr ? m_pVectorGraphic->GetTextParm_ShowText(s) : s;
}
