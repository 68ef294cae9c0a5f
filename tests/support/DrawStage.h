// A painter with a mapping and a recording context: one object's drawing as a list of calls. Layer 16: tests.
#pragma once

#include "DrawGeometry.h"
#include "Drawable.h"
#include "VectorGraphic.h"
#include "VectorViewCoordTran.h"
#include "support/RecordingDC.h"

#include <string>
#include <vector>

using Calls = std::vector<std::string>;

// Scale 1 and a client height of 100: the drawing point (x, y) is the pixel (x, 100 - y). The one layer of a new
// drawing is white, solid and one unit wide.
struct DrawStage {
    DrawStage() : geometry(&graphic, nullptr) {
        tran.SethScreen(100);
        graphic.SetVectorViewCoordTran(&tran);
        geometry.SetLayerManager(Layers());
    }
    CLayerManager* Layers();

    // What the object draws on a context that has nothing but its defaults.
    Calls Draw(CDrawable& object);

    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
    CDrawGeometry geometry;
    RecordingDC dc{100, 100};
};

// An object of any kind with the deleted mark, which otherwise only a stream sets.
template <class Kind>
class Deleted : public Kind {
public:
    Deleted() { this->m_IsDelete = 1; }
};

// Any of the kinds, with a failing getGripPoints.
template <class Kind>
class Gripless : public Kind {
public:
    void getGripPoints(CGePointArray&, int) override { AfxThrowInvalidArgException(); }
};
