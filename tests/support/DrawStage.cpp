#include "support/DrawStage.h"

#include "Document.h"

CLayerManager* DrawStage::Layers() {
    return graphic.GetDocument()->GetLayerManager();
}

Calls DrawStage::Draw(CDrawable& object) {
    dc.Clear();
    object.Draw(&dc, &geometry);
    return dc.Calls();
}
