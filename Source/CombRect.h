// CCombRect: a frame with an identifier, by which a host marks a group of objects.
// Layer 5: drawables.
#pragma once

#include "Drawable.h"

// It has no grips and no extent and is never hit. Hosts make it and move it with SetPoint.
class NRVECTORVIEW_API CCombRect : public CDrawable {
    DECLARE_SERIAL(CCombRect)
public:
    CCombRect() = default;

    CString GetVectorId() const { return m_strVectorId; } // The host's name of the group; the library does not use it.
    void GetPoint(CGePoint2d& a, CGePoint2d& b);          // The corners as SetPoint gave them, in drawing units.

    // Stored with the frame.
    void SetVectorId(CString id) { m_strVectorId = id; }
    // Any two opposite corners; nothing is put into order.
    void SetPoint(const CGePoint2d& a, const CGePoint2d& b);
    // Moves every object of the list by the vector from `from` to `to`. The frame itself stays.
    // Compatibility 48: a frame does not move with a transformation.
    void transformBy(CArray<CDrawable*, CDrawable*&>*& list, CGePoint2d from, CGePoint2d to);
    using CDrawable::transformBy;
    void ExchangeState(CStateExchange& exchange) override;

    // Paints a hidden or deleted frame too.
    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override; // Identifier and corners.

private:
    CString m_strVectorId;
    CString m_strCombText; // Stored and loaded; the library does not use it.
    CGePoint2d m_Corner1;
    CGePoint2d m_Corner2;
};
