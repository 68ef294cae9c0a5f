// CCommandOperationManager: routes a view's events to the running tool, and does the default where none runs.
// Layer 10: manager.
#pragma once

#include "CommandOperation.h"

#include <memory>
#include <optional>

struct CEngineEvents;

// One for each view. Owns the running tool, the rubber band, the tracked grips and the assistant lines.
class NRVECTORVIEW_API CCommandOperationManager : public CCommandOperation {
    DECLARE_DYNAMIC(CCommandOperationManager)
public:
    // All are borrowed. `wnd` may have no window yet; `graphic`, `tran` and `document` are those of one view.
    CCommandOperationManager(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                             CGraphicDocument* document);
    // Does not free a running tool, nor does anything else afterwards: a host that frees a view, or replaces its
    // engine, while a command runs calls Cancel first. Otherwise the tool stays allocated and registered.
    ~CCommandOperationManager() override;

    // ---- Events; the view gives client pixels, and all but OnMButtonDown turn them into drawing units ----

    void Execute() override;
    // Breaks the running tool off and frees it; inside an event of this engine, at the end of the outermost one.
    void Cancel() override;
    ResultState OnLButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnLButtonUp(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseMove(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnMouseWheel(unsigned int nFlags, short zDelta, CGePoint2d point) override;
    ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;
    ResultState OnKeyDown(unsigned int nChar, unsigned int nRepCnt, unsigned int nFlags) override;
    void PreRedraw() override;
    // After a window paint: draws band, marker and preview of the running tool for the last place of the mouse, where
    // the editing options ask for it.
    void ReturnPreview();
    ResultState OnSetCursor(CWnd* wnd, unsigned int nHitTest, unsigned int message) override;

    void SetInEdit(int inEdit) override;
    // Between two points in drawing units.
    using CCommandOperation::DrawShirrLine;
    void DrawShirrLine(CPoint p1, CPoint p2, int erasing) override;
    void ErasShirrLine() override;
    void SetOsnapMode(int mode) override;

    // Where a pan by the middle button begins, in client pixels.
    virtual ResultState OnMButtonDown(unsigned int nFlags, CGePoint2d pixel);

    // ---- Commands ----

    // 1 when a tool was installed. Words are compared with case; an unknown one gives 0 and changes nothing.
    virtual int DoCommand(CString word);
    // The click with no tool running; drawing units.
    virtual ResultState OnDefaultLButtonDown(unsigned int nFlags, CGePoint2d point);
    // The cursor with no tool running; RS_Done when it was set.
    virtual ResultState OnDefaultSetCursor(CWnd* wnd, unsigned int nHitTest, unsigned int message);
    // Cancels and frees the running tool and takes over `op`; gives 1. `inCommand` 0 holds it without giving it events.
    // 0 when this object was freed by what the old tool's end set off: `op` is freed then. The running tool itself may
    // be given again: only `inCommand` changes then.
    int SetCommand(CCommandOperation* op, int inCommand);
    // Ends the running tool for any state but RS_Continue and RS_Capture, without Cancel, and frees it; inside an event
    // of this engine, at the end of the outermost one.
    void CheckResultState(ResultState state);
    // Installs a temporary tool that asks for it with RS_Capture; otherwise `op` stays the caller's.
    void CheckResultState(CCommandOperation* op, ResultState state);

    // ---- Tracking ----

    // Starts tracking a grip, unless it is tracked already.
    void AddGripPoint(CGePoint2d point);
    // The dotted lines from tracked grips through the cursor, a client pixel, on a context that inverts.
    void DrawAssistantLine(CDC* dc, CPoint cursor);
    void ErasDrawAssistantLine(CDC* dc); // The same lines once more, which takes them off.
    // The ortho lock, set by the host only.
    void SetDrawObjLatus(int lock) { m_DrawObjLatus = lock; }
    int GetDrawObjLatus() { return m_DrawObjLatus; }

    // How a tool ended: it did its work, it was broken off, or an object that it held was freed.
    enum class ToolEnd { Done, Cancelled, Lost };

protected:
    // Told of each tool that becomes the running one, before it gets an event, and of each that no longer is, which is
    // still allocated then. Nothing may be called on the engine here. The base does nothing.
    virtual void OnToolBegun(CCommandOperation* tool);
    virtual void OnToolEnded(CCommandOperation* tool, ToolEnd how);
    // Lets `point` follow tracked grips that lie in the cursor's pixel column or row; nonzero when it took anything.
    int GetInTrackGripPoint(CPoint cursor, CGePoint2d& point);

private:
    // The drawing point under client pixels, an ordinary point.
    CGePoint2d ToDrawing(const CGePoint2d& pixel) const;
    // The running tool, after a check that every access to it makes: a tool one of whose drawing objects has been freed
    // is freed here, without Cancel. Null when there is none.
    CCommandOperation* CurrentTool();
    // The current tool, if it gets events; otherwise null.
    CCommandOperation* RunningTool();
    // Leaves no tool running. The tool is freed when the outermost event scope closes; null when none was running.
    CCommandOperation* TakeOutCommand(ToolEnd how);
    // Cancels and frees the running tool, by Cancel or OnCancel, and every one that a host starts in return. False when
    // this object was freed meanwhile.
    bool MakeRoom(bool byOnCancel);
    CRect ClientRect() const;

    // The window is told that something may have changed: at once, or when the outermost event is over.
    void AtRest(LPCTSTR chinese, LPCTSTR english);

    int m_InCommand = 0; // Nonzero while m_pCommand gets the events.
    int m_DrawObjLatus = 0;
    HCURSOR m_hDefaultCursor;
    CGePointArray m_GripPoints;                // Tracked, in the order of first hit; drawing units.
    CArray<CPoint, CPoint&> m_AssistantPoints; // The lines on the window, two entries each, in client pixels.
    std::optional<CGePoint2d> m_LastPixel;     // Of the last move of the mouse, in client pixels.
    CGePoint2d m_MButtonPoint;                 // Last position of the pan, in client pixels.
    std::shared_ptr<CEngineEvents> m_Events;
    LPCTSTR m_Chinese = nullptr; // What the running tool does; null for a tool of a host. Not owned.
    LPCTSTR m_English = nullptr;
};
