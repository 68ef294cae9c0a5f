// CCommandOperation: the base of every interactive tool and of the manager that runs them.
// Layer 9: command operations.
#pragma once

#include "Command.h"
#include "Drawable.h"

#include <KxAlive.h>
#include <afxcmn.h>
#include <afxtempl.h>

#include <optional>
#include <vector>

class CCommandOperationManager;
class CGraphicDocument;
class COperationHost;
class CVectorGraphic;
struct CEditingOptions;

// Apertures in pixels.
inline constexpr float kSnapAperture = 7.0f;
inline constexpr float kPickAperture = 4.0f;

// Bits of the osnap mode: 1, 2 and 4 are kinds of grips (see Drawable.h), 8 asks for perpendicular feet as well.
inline constexpr int kOsnapPerpendicular = 8;
inline constexpr int kOsnapAll = 15;

// A tool is built with new, registered with the leak tracer, run by the manager until it gives back a state that ends
// it, and freed by the manager once no event of the engine runs any more. It never deletes itself and never starts its
// successor. All pointers are borrowed.
//
// A message box, a dialog, or a message sent to the edit box runs code of the host, which may end the tool, free the
// view or free drawing objects. A tool that continues afterwards takes a token of m_Alive before the call and calls
// GoesOn right after it.
class NRVECTORVIEW_API CCommandOperation : public CCommand {
    DECLARE_DYNAMIC(CCommandOperation)
public:
    // What an event handler of a tool returns.
    enum ResultState {
        RS_Continue = 0,   // Handled or ignored; the tool stays. Also: nothing was hit.
        RS_Done = 1,       // The tool has done its work and ends.
        RS_Cancelled = 2,  // The tool was cancelled and ends. Also: no snap point.
        RS_NotHandled = 5, // A key that means nothing here.
        RS_Capture = 7     // The tool wants further events; a temporary one asks to be installed.
    };

    // The edit box for typed distances is created here, hidden, as a child of the window; without a window there is
    // none. So the manager has none: it is constructed before its view's window is created.
    CCommandOperation(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran, CGraphicDocument* document);
    ~CCommandOperation() override;
    CCommandOperation(const CCommandOperation&) = delete;
    CCommandOperation& operator=(const CCommandOperation&) = delete;

    // ---- Events. Points are drawing units, already snapped by the manager; ForL means client pixels ----

    // Called at once for commands that act at once, and by the host, through the manager, to confirm a typed distance.
    virtual void Execute();
    virtual void Cancel(); // Takes off what the tool shows, before it is freed; nothing in this base.
    // `nFlags` as Windows sends them. The result tells whether the tool stays.
    virtual ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) = 0;
    virtual ResultState OnLButtonUp(unsigned int nFlags, CGePoint2d point) = 0;
    // Takes a drawn snap marker off the window, before the view scrolls and would move its pixels. 1 when it did.
    virtual int RefreshGrip();
    // Moves the snap marker. RS_Continue when the mouse is on a snap point, RS_Cancelled when not.
    virtual ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point);
    // The wheel, after which the manager sends a move to the same point; the right button; a key (RS_NotHandled).
    virtual ResultState OnMouseWheel(unsigned int nFlags, short zDelta, CGePoint2d point) = 0;
    virtual ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) = 0;
    virtual ResultState OnKeyDown(unsigned int nChar, unsigned int nRepCnt, unsigned int nFlags);
    virtual ResultState OnCancel(); // A temporary tool takes its place: calls Cancel and returns RS_Cancelled.
    virtual ResultState OnMouseMoveForL(unsigned int nFlags, CPoint point);  // After OnMouseMove.
    virtual ResultState OnButtonDownForL(unsigned int nFlags, CPoint point); // After OnLButtonDown.
    // Called just before a repaint, which wipes whatever was inverted onto the window.
    virtual void PreRedraw();
    virtual ResultState OnLButtonDblClk(unsigned int nFlags, CPoint point); // For hosts: no view calls it.
    // RS_Done (1) when a cursor was set.
    virtual ResultState OnSetCursor(CWnd* wnd, unsigned int nHitTest, unsigned int message);

    // ---- Services ----

    // Set by the host: while nonzero, moves of the mouse do not change the distance that is being typed.
    virtual void SetInEdit(int inEdit);
    // The rubber band of the view, in client pixels; the last argument is ignored.
    virtual void DrawShirrLine(CPoint p1, CPoint p2, int erasing);
    virtual void ErasShirrLine(); // Takes the band off; does nothing where none is drawn.
    // The snap search: the first accepted candidate in object and grip order, not the nearest. Nonzero on a hit.
    virtual int GetGripPoint(CGePoint2d point, CGePoint2d& result);
    virtual void SetOsnapMode(int mode); // Bits as in kOsnapAll.

protected:
    // A veto on a snap candidate: 0 refuses it. `gripIndex` counts the candidates of that object in this search.
    virtual int OnGetGripPoint(CDrawable* object, int gripIndex, CGePoint2d point);

public:
    void DrawShirrLine(CGePoint2d from, CGePoint2d to); // The band between two points in drawing units.
    // For hosts: always the search of this base, for a point in client pixels; the result is in whole pixels.
    int GetGripPointForL(CGePoint2d pixel, CGePoint2d& result);
    int GetHasCommand() { return m_pCommand != nullptr; } // Of the engine: whether a tool is running.
    // For a host that has repainted the window itself: the repaint wiped the band, which must not be inverted again.
    void ResetErasShirrLineState() { m_ShirrDrawn = 0; }

protected:
    // ---- What the tools share ----

    // The client area to invert on; without a window a memory context, as the null window's would be the screen.
    class NRVECTORVIEW_API CViewDC : public CDC {
    public:
        explicit CViewDC(CWnd* wnd); // Throws the resource exception where Windows gives no context.
        ~CViewDC() override;

    private:
        HWND m_hWindow;
    };

    // The window's interface for tools; null where the window does not have it.
    COperationHost* Host() const;
    CCommandOperation* Engine() const;      // The engine of that window; null where there is none.
    const CEditingOptions& Options() const; // The classic ones without a painter.
    void NoteChange();                      // Marks the document as modified, where the options ask for it.
    // Whether the engine draws a preview again after a paint, and whether the host ends the tool by Cancel.
    bool IsReturning() const;
    bool IsBrokenOff() const;
    // Tells whether the engine still exists, for a tool that acts at once and so is never the running one.
    CKxAliveToken EngineAlive() const;
    // For an object that the tool keeps across events: once it has been freed, the tool is freed too, without Cancel.
    void Hold(CDrawable* object) { m_Held.push_back(object->GetAlive()); }
    // Called after foreign code: whether the owner of the token and all objects of Hold still exist. Where the document
    // has been freed, the tool continues with the painter's present one.
    bool GoesOn(const CKxAliveToken& token);
    bool IsDocumentWhole() const { return m_DocumentAlive && m_DocumentAlive->IsAlive() && !HasLostObject(); }
    // Starts tracking a grip on the view's engine.
    void TrackGripPoint(const CGePoint2d& point);
    // Ends this tool from within itself, and repaints.
    void EndRunningOperation();
    // Tells the property dialog, where there is one, which object was clicked; null empties it.
    void AnnounceToPropertyDialog(CDrawable* object);
    // Asks for a repaint of the whole client area; nothing without a window.
    void RequestRedraw();
    // Empties a scratch array and keeps its memory for the next object.
    static void ClearScratch(CGePointArray& points) { points.RemoveAt(0, points.GetSize()); }
    // The square test of all searches, inclusive on its four edges.
    static bool IsWithin(const CGePoint2d& grip, const CGePoint2d& point, int aperture);
    // Whether the object is within four pixels of the point. A hidden object's 100.0 is an ordinary distance here.
    bool IsHit(CDrawable* object, const CGePoint2d& point) const;
    // The undermost object of that kind that is hit; selection and selectability play no part. Null when there is none.
    CDrawable* FirstHit(const CGePoint2d& point, const CRuntimeClass* kind) const;
    // The aperture in drawing units, cut to a whole number: it may be 0, and then only an exact hit counts.
    int ApertureUnits(float pixels) const;
    // The first candidate of `grips` that is within the aperture and passes the veto; nonzero on a hit.
    int FindCandidate(CDrawable* object, CGePointArray& grips, const CGePoint2d& point, int aperture,
                      CGePoint2d& result);
    // Draws the objects by inversion, in the state Dragging for the moment of the drawing.
    void InvertObject(CDC* dc, CDrawable* object);
    // Replaces one coordinate of `point` by that of `base`, so that the line between them is horizontal or vertical.
    // The differences are cut to whole units first; equal ones give a horizontal line.
    static void OrthoStep(const CGePoint2d& base, CGePoint2d& point);
    // Whether the host has switched the ortho lock on.
    bool IsOrthoOn() const;
    // Puts the edit box beside the middle of the band from `from` to `to`, thirty pixels off it on the left of `move`,
    // holding the length in whole units, selected and focused. The box tells the view and its parents of each change:
    // false when the tool must not go on after that.
    bool PlaceEditBox(const CGePoint2d& from, const CGePoint2d& to, const CGeVector2d& move);
    // The whole number typed into the edit box; 0 when it does not begin with one.
    int TypedDistance();

    CCommandOperation* m_pCommand = nullptr; // The manager's running operation, owned by it.
    CWnd* m_pWnd;                            // Null, or without a window, for a tool that works alone.
    CVectorViewCoordTran* m_pCoordTran;      // The view's mapping.
    CGraphicDocument* m_pDocument;           // The painter's document.
    CVectorGraphic* m_pGraphic;              // The painter; null only for a host's tool that shows nothing.
    CPoint m_ShirrStart;            // The rubber band, in client pixels: the manager's copy is the view's one band.
    CPoint m_ShirrEnd;              // Its other end.
    int m_ShirrDrawn = 0;           // Nonzero: it is on the window.
    int m_ShirrPenStyle = PS_SOLID; // Solid, or dotted along an axis.
    int m_Step = 0;                 // How far a transforming tool is.
    HCURSOR m_hCursor;              // Of the tool; owned.
    int m_SnapEnabled = 1;          // 0: no snap search and no marker.
    CGePoint2d m_SnapMark;          // Where the marker is drawn, in drawing units.
    int m_SnapMarkDrawn = 0;        // Nonzero: it is on the window.
    CEdit m_Edit;                   // For typed distances; hidden at first.
    int m_InEdit = 0;               // See SetInEdit.
    int m_OsnapMode = kOsnapAll;    // See SetOsnapMode.
    CGePoint2d m_LastPoint;         // The last accepted point, from which perpendiculars are dropped.
    CKxAlive m_Alive;               // Ends when the tool is no longer the running one, and with the engine.

private:
    friend class CCommandOperationManager;

    // Where the document has been freed, the painter's present one takes its place.
    void FollowDocument();
    bool HasLostObject() const;
    void InvertSnapMark(CDC* dc);

    bool m_Returning = false; // Set by the engine: see IsReturning and IsBrokenOff.
    bool m_BreakingOff = false;
    std::optional<CKxAliveToken> m_DocumentAlive;
    std::vector<CKxAliveToken> m_Held;
};
