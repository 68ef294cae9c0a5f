// CCommandOperation: the base of every interactive tool and of the manager that runs them.
// Layer 8: command operations.
#pragma once

#include "Command.h"
#include "Drawable.h"

#include <afxcmn.h>
#include <afxtempl.h>

class CCommandOperationManager;
class CDialog_DrawAbleProperty;
class CGraphicDocument;
class CVectorGraphic;

// Cursors of the library, by resource number.
inline constexpr UINT kCursorDefault = 131;

// Apertures in pixels.
inline constexpr float kSnapAperture = 7.0f;
inline constexpr float kPickAperture = 4.0f;

// Bits of the osnap mode: 1, 2 and 4 are kinds of grips (see Drawable.h), 8 asks for perpendicular feet as well.
inline constexpr int kOsnapPerpendicular = 8;
inline constexpr int kOsnapAll = 15;

// A tool is built with new, registered, run by the manager until it gives back a state that ends it, and deleted by the
// manager. It never deletes itself and never starts its successor. All pointers are borrowed.
class NRVECTORVIEW_API CCommandOperation : public CCommand {
    DECLARE_DYNAMIC(CCommandOperation)
public:
    enum ResultState {
        RS_Continue = 0, // Handled or ignored; the tool stays. Also: nothing was hit.
        RS_Done = 1,
        RS_Cancelled = 2,
        RS_NotHandled = 5, // A key that means nothing here.
        RS_Capture = 7     // The tool wants further events; a temporary one asks to be installed.
    };

    // The edit box for typed distances is made here, hidden; without a window to stand in, there is none. So the
    // manager has none: it is built before its view's window is, and no distance is ever typed into it.
    CCommandOperation(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran, CGraphicDocument* document);
    ~CCommandOperation() override;
    CCommandOperation(const CCommandOperation&) = delete;
    CCommandOperation& operator=(const CCommandOperation&) = delete;

    // ---- Events. Points are drawing units, already snapped by the manager; ForL stands for client pixels ----

    // At once for commands that act at once; from the host, through the manager, to confirm a typed distance.
    virtual void Execute();
    virtual void Cancel();
    virtual ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) = 0;
    virtual ResultState OnLButtonUp(unsigned int nFlags, CGePoint2d point) = 0;
    // Takes a standing snap marker off the window: before the view scrolls, since it would stay behind. 1 when it did.
    virtual int RefreshGrip();
    // Moves the snap marker. RS_Continue when the mouse stands on a snap point, RS_Cancelled when not.
    virtual ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point);
    virtual ResultState OnMouseWheel(unsigned int nFlags, short zDelta, CGePoint2d point) = 0;
    virtual ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) = 0;
    virtual ResultState OnKeyDown(unsigned int nChar, unsigned int nRepCnt, unsigned int nFlags);
    virtual ResultState OnCancel();
    virtual ResultState OnMouseMoveForL(unsigned int nFlags, CPoint point);
    virtual ResultState OnButtonDownForL(unsigned int nFlags, CPoint point);
    // Just before a repaint, which wipes whatever was inverted onto the window.
    virtual void PreRedraw();
    virtual ResultState OnLButtonDblClk(unsigned int nFlags, CPoint point);
    // RS_Done (1) when a cursor was set.
    virtual ResultState OnSetCursor(CWnd* wnd, unsigned int nHitTest, unsigned int message);

    // ---- Services ----

    // From the host: while nonzero the mouse leaves a distance alone that is being typed.
    virtual void SetInEdit(int inEdit);
    // The rubber band of the view, in client pixels; the last argument is dropped.
    virtual void DrawShirrLine(CPoint p1, CPoint p2, int erasing);
    virtual void ErasShirrLine();
    // The snap search: the first accepted candidate in object and grip order, not the nearest. Nonzero on a hit.
    virtual int GetGripPoint(CGePoint2d point, CGePoint2d& result);
    virtual void SetOsnapMode(int mode);

protected:
    // A veto on a snap candidate: 0 refuses it. `gripIndex` counts the candidates of that object in this search.
    virtual int OnGetGripPoint(CDrawable* object, int gripIndex, CGePoint2d point);

public:
    void DrawShirrLine(CGePoint2d from, CGePoint2d to);
    // The search of this base for a point in client pixels, also in tools with a search of their own; the result is in
    // whole pixels. For hosts.
    int GetGripPointForL(CGePoint2d pixel, CGePoint2d& result);
    int GetHasCommand() { return m_pCommand != nullptr; }
    // For a host that has repainted the window itself: the band is gone and must not be inverted back.
    void ResetErasShirrLineState() { m_ShirrDrawn = 0; }

protected:
    // ---- What the tools share ----

    // Tells, across a modal box or a call that sends messages, whether the tool is still there, and the manager that it
    // runs under: whatever ran inside may have replaced the tool, or taken the whole view away, and then nothing of
    // tool, document and view may be touched. Lives on the stack.
    class NRVECTORVIEW_API CLifeWatch {
    public:
        explicit CLifeWatch(CCommandOperation* op) : CLifeWatch(op, op->ManagerAsOperation()) {}
        CLifeWatch(CCommandOperation* op, CCommandOperation* manager) : m_Tool(op), m_Manager(manager) {}
        CLifeWatch(const CLifeWatch&) = delete;
        CLifeWatch& operator=(const CLifeWatch&) = delete;
        bool IsGone() const { return m_Tool.isGone || m_Manager.isGone; }

    private:
        friend class CCommandOperation;
        // An entry with the watched object, which tells its entries when it goes; null is never gone.
        struct NRVECTORVIEW_API CEntry {
            explicit CEntry(CCommandOperation* op);
            ~CEntry();
            CEntry(const CEntry&) = delete;
            CEntry& operator=(const CEntry&) = delete;
            CCommandOperation* watched;
            CEntry* outer;
            bool isGone = false;
        };
        CEntry m_Tool;
        CEntry m_Manager;
    };

    // The client area to invert on. Without a window it is a context that nobody sees: the null window's would be the
    // whole screen.
    class NRVECTORVIEW_API CViewDC : public CDC {
    public:
        explicit CViewDC(CWnd* wnd);
        ~CViewDC() override;

    private:
        HWND m_hWindow;
    };

    // The manager and the property dialog of the view that the tool runs in; null outside one.
    CCommandOperationManager* Manager() const;
    CDialog_DrawAbleProperty* PropertyDialog() const;
    // Starts tracking a grip on the view's manager.
    void TrackGripPoint(const CGePoint2d& point);
    // Ends this tool from within itself: the manager deletes it, so nothing of it may be touched afterwards.
    void EndRunningOperation();
    // Tells the property dialog, where there is one, which object was clicked; null empties it.
    void AnnounceToPropertyDialog(CDrawable* object);
    void EmptyPropertyDialog();
    // Asks for a repaint of the whole client area; nothing without a window.
    void RequestRedraw() { RequestRedrawOf(m_pWnd->GetSafeHwnd()); }
    // Of a window that may have gone by now.
    static void RequestRedrawOf(HWND window);
    // Empties a scratch array and keeps its memory for the next object.
    static void ClearScratch(CGePointArray& points) { points.RemoveAt(0, points.GetSize()); }
    // The square test of all searches, inclusive on its four edges.
    static bool IsWithin(const CGePoint2d& grip, const CGePoint2d& point, int aperture);
    // Whether the object lies within four pixels of the point. A hidden object's 100.0 is an ordinary distance here, so
    // that it can be picked in a view zoomed far out.
    bool IsHit(CDrawable* object, const CGePoint2d& point) const;
    // The undermost object of the drawing that is hit and of that kind; selection and selectability play no part. Null
    // when there is none.
    CDrawable* FirstHit(const CGePoint2d& point, const CRuntimeClass* kind) const;
    // The aperture in drawing units, cut to a whole number: it may be 0, and then only an exact hit counts.
    int ApertureUnits(float pixels) const;
    // The first candidate of `grips` that lies within the aperture and passes the veto; nonzero on a hit.
    int FindCandidate(CDrawable* object, CGePointArray& grips, const CGePoint2d& point, int aperture,
                      CGePoint2d& result);
    // Draws the objects by inversion, in the state Dragging for the moment of the drawing.
    void InvertObject(CDC* dc, CDrawable* object);
    // One coordinate of `point` replaced by that of `base`, so that the two stand level or upright; differences are cut
    // to whole units first, and a tie is level.
    static void OrthoStep(const CGePoint2d& base, CGePoint2d& point);
    // Whether the host has switched the ortho lock on.
    bool IsOrthoOn() const;
    // Puts the edit box beside the middle of the band from `from` to `to`, thirty pixels off it on the left of `move`,
    // holding the length in whole units, selected and focused. False when the tool was deleted by what its messages set
    // off: the box tells the view's parents of each change.
    bool PlaceEditBox(const CGePoint2d& from, const CGePoint2d& to, const CGeVector2d& move);
    // The whole number typed into the edit box; 0 when it does not begin with one.
    int TypedDistance();

    CCommandOperation* m_pCommand = nullptr; // The manager's running operation, owned by it.
    CWnd* m_pWnd;
    CVectorViewCoordTran* m_pCoordTran;
    CGraphicDocument* m_pDocument;
    CVectorGraphic* m_pGraphic;
    CPoint m_ShirrStart; // The rubber band, in client pixels: the manager's copy is the view's one band.
    CPoint m_ShirrEnd;
    int m_ShirrDrawn = 0;
    int m_ShirrPenStyle = PS_SOLID;
    int m_Step = 0;
    HCURSOR m_hCursor;
    int m_SnapEnabled = 1;
    CGePoint2d m_SnapMark; // Where the marker stands, in drawing units.
    int m_SnapMarkDrawn = 0;
    CEdit m_Edit;
    int m_InEdit = 0;
    int m_OsnapMode = kOsnapAll;
    CGePoint2d m_LastPoint; // The last accepted point, from which perpendiculars are dropped.

private:
    CCommandOperation* ManagerAsOperation() const;
    void InvertSnapMark(CDC* dc);

    CLifeWatch::CEntry* m_pWatch = nullptr; // The innermost of those that stand.
};
