// CDrawGeometry: what every Draw gets beside the device context, the mapping and the layers.
// Layer 5: drawables (the class); its source stands with the painter, whom it asks.
#pragma once

#include "VectorViewApi.h"

class CLayerManager;
class CVectorGraphic;
class CVectorViewCoordTran;

// One for each painter. Owns nothing.
class NRVECTORVIEW_API CDrawGeometry {
public:
    CDrawGeometry(CVectorGraphic* graphic, CLayerManager* layers);
    virtual ~CDrawGeometry() = default;

    CLayerManager* GetLayerManager() { return m_pLayerManager; }
    void SetLayerManager(CLayerManager* layers) { m_pLayerManager = layers; }
    // The painter's mapping; asks for a painter.
    CVectorViewCoordTran* GetVectorViewCoordTran();
    // The string to draw for a parameter's value: the painter's number display, or the value as it stands when there
    // is no painter.
    CString GetTextParm_ShowText(CString& s);

private:
    CVectorGraphic* m_pVectorGraphic;
    CLayerManager* m_pLayerManager;
};
