// CCommandSelectObj: the pick of the default click. It exists for one call and is never the running tool.
// Layer 9: command operations.
#pragma once

#include "PlainOperation.h"

class CCommandSelectObj : public COperationOf<CCommandOperation> {
    DECLARE_DYNAMIC(CCommandSelectObj)
public:
    using COperationOf::COperationOf;

    // RS_Done when an object was newly selected, RS_Continue when not: the click then looks for a grip. Selections
    // add up, and the lowest object within the aperture is taken, not the nearest.
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnKeyDown(unsigned int, unsigned int, unsigned int) override { return RS_Continue; }
    // Declared for the order of the virtual operations; nothing calls it.
    virtual ResultState OnMButtonDown(unsigned int, CGePoint2d) { return RS_Continue; }
};
