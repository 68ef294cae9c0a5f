// CDrawGeometry: gives every Draw the mapping, the layers and the number display of the painter.
// Layer 5: drawables (the class); its source belongs to the painter, which it calls.
#pragma once

#include "VectorViewApi.h"

#include <KxAlive.h>

struct CEditingOptions;
class CLayerManager;
class CPaintPass;
class CVectorGraphic;
class CVectorViewCoordTran;

// One for each painter. Owns nothing.
class NRVECTORVIEW_API CDrawGeometry {
public:
    // Both are borrowed; `graphic` may be null.
    CDrawGeometry(CVectorGraphic* graphic, CLayerManager* layers);
    virtual ~CDrawGeometry() = default;

    // The layer table in which by-layer attributes are looked up; not owned.
    CLayerManager* GetLayerManager() { return m_pLayerManager; }
    void SetLayerManager(CLayerManager* layers) { m_pLayerManager = layers; }
    // The painter's mapping; there must be a painter.
    CVectorViewCoordTran* GetVectorViewCoordTran();
    // Those of the painter's document; without a painter the classic ones.
    const CEditingOptions& GetEditingOptions() const;
    // The string to draw for a parameter's value: what the painter's number display makes of it, or the value itself
    // when there is no painter.
    CString GetTextParm_ShowText(CString& s);

    CKxAliveToken GetAlive() const { return CKxAliveToken(m_Alive); } // Whether this object still exists.

    // The paint of the painter's own window that is running; null otherwise. Not for hosts.
    CPaintPass* GetPass() const { return m_pPass; }
    void SetPass(CPaintPass* pass) { m_pPass = pass; }

private:
    CPaintPass* m_pPass = nullptr;
    CVectorGraphic* m_pVectorGraphic;
    CLayerManager* m_pLayerManager;
    CKxAlive m_Alive;
};
