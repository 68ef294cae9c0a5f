// COperationCreateObjAb: the base of every tool that puts a new object into the drawing by clicks.
// Layer 9: command operations.
#pragma once

#include "CommandOperation.h"

class NRVECTORVIEW_API COperationCreateObjAb : public CCommandOperation {
    DECLARE_DYNAMIC(COperationCreateObjAb)
public:
    // As that of CCommandOperation.
    COperationCreateObjAb(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran, CGraphicDocument* document);
    // Frees the object being built, for a host that has ended the tool by its state, without Cancel.
    ~COperationCreateObjAb() override;

    void Execute() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;
    // Lets the tool erase what it drew: an override of ErasShirrLine resets its own state here.
    void PreRedraw() override;

    // The object being built; null when there is none. Owned by the tool until it is part of the drawing.
    CDrawable* GetCurrentObject() { return m_pCurrentObject; }
    // Shows the object being built through the document's current slot; 0 when there is none.
    int AddCurrentObjectToDocument();
    void RemoveCurrentObjectAtDocument();                // Empties that slot.
    void ResetErasShirrLineState() { m_ShirrDrawn = 0; } // As that of CCommandOperation.

protected:
    // Unlike the base search: hidden objects are skipped, the object being built is searched last, and the
    // perpendicular foot, offered only once there is a point to drop it from, is searched before the grips.
    int GetGripPoint(CGePoint2d point, CGePoint2d& result) override;
    // Called on each new object before its geometry is set: gives it the document's foreground colour.
    virtual void OnCreateObject(CDrawable* object);

    // Moves the marker; when it is on a snap point, that point becomes a tracked one.
    void MoveMarkerAndTrack(unsigned int nFlags, const CGePoint2d& point);
    // Clears the current slot and frees the object being built.
    void DiscardCurrentObject();

    int m_ClickCount = 0;                  // The state of every creating tool.
    CDrawable* m_pCurrentObject = nullptr; // Owned until it has been given to the document.
};
