// CVectorView: the child window that a host embeds to show and edit a drawing, and the host's calls to fill one.
// Layer 11: views and dialogs. This is the header that a host includes.
#pragma once

#include "CommandOperation.h"
#include "Document.h"
#include "DrawCommon.h"
#include "GdiplusValues.h"
#include "OperationHost.h"
#include "VectorGraphic.h"

#include <afxwin.h>
#include <KxAlive.h>

#include <memory>

class CDialog_DrawAbleProperty;
class CDrawingHistory;
class CPLine;

// Owns mapping, painter, document and command engine. All of them exist before the window does, so a host can fill the
// drawing first. Call it on the thread of its window only.
class NRVECTORVIEW_API CVectorView : public CWnd, public COperationHost {
    DECLARE_DYNAMIC(CVectorView)
public:
    CVectorView();
    ~CVectorView() override;
    CVectorView(const CVectorView&) = delete;
    CVectorView& operator=(const CVectorView&) = delete;

    // The window, as that of CWnd: a null class name means a class of the layer. 0 when Windows refuses it.
    virtual int Create(const wchar_t* className, const wchar_t* windowName, unsigned long style, const RECT& rect,
                       CWnd* parent, unsigned int id, CCreateContext* context = nullptr);

    // ---- The view as a whole ----

    // Paints the drawing into a device context of the host, who provides clip and background. 0, after a message, when
    // that failed.
    virtual int VectorPaint(CDC* dc);
    // A stream from the host's buffer: 0 for a null or empty one, else 1. Neither repaints nor fits.
    virtual int LoadFile(unsigned char* data, unsigned int size);
    // Starts a command by its word, or "open", or "save". Always leaves the document marked as modified.
    void DoCommand(CString word);
    // Fits the drawing into the client area and repaints. Until the first call the mapping has no window size.
    void ZoomAll();
    // Never null. The painter's, which owns it unless a host has set its own.
    CGraphicDocument* GetDocument() { return m_Graphic.GetDocument(); }
    CVectorViewCoordTran* GetVectorViewCoordTran() { return &m_CoordTran; } // The mapping; owned by the view.
    // The engine, a CCommandOperationManager unless a host has made another; owned by the view. Null while it has none.
    CCommandOperation* GetCommandOperationManager() { return m_pManager; }
    // Null unless a derived view has set it.
    CDialog_DrawAbleProperty* GetDlgDrawAbleProperty() { return m_pDlgDrawAbleProperty; }

    // ---- Undo and redo ----

    // Off at first, at no cost. While it is on, a step is marked after each command, grip edit, property edit,
    // parameter edit, and call of this class outside a command. 0 turns it off again and forgets all steps. Follows
    // CVectorGraphic::SetDocument. A command that runs at this moment is not undone as a whole. Gives 1 when it is on,
    // and 0 also when there is no memory for it.
    int EnableHistory(int enable);
    // Null while it is off. When the document had a history before, such as that of another view on it, this is that
    // one; otherwise the view owns it. Objects that a host changes by their own setters are part of the next step,
    // unless it calls Mark.
    CDrawingHistory* GetHistory();
    // 1 when the drawing has changed; 0 also while it is off. A running command is ended first, and so is the edit of a
    // parameter, which stores its text by the rules of its end.
    int Undo();
    int Redo();
    // By the steps that are marked; 0 while it is off.
    int CanUndo();
    int CanRedo();

    // ---- Filling a drawing ----
    // Each call makes one object with an explicit colour (the alpha is dropped), puts it on top, and returns it; the
    // document owns it. `redraw` nonzero repaints: pass 0 and repaint once when adding many.

    // A line. `parm` and `msg` are tags of the host, which the object keeps; `lock` is its SetLockMode.
    CDrawable* AddLine(CGePoint2d a, CGePoint2d b, Gdiplus::Color c, CString parm, CString msg, int lock, int redraw);
    // Never repaints.
    CDrawable* AddLine(CGePoint2d a, CGePoint2d b, Gdiplus::Color c, int canSelect);
    // A fixed line under the drawing, in the net list. Never repaints.
    CDrawable* AddNetLine(CGePoint2d a, CGePoint2d b, Gdiplus::Color c, int canSelect);
    // Angles in radians, anticlockwise from the positive x axis.
    CDrawable* AddArc(CGePoint2d center, float radius, float start, float end, Gdiplus::Color c, CString parm,
                      CString msg, int lock, int redraw);
    // Through three points; null when they lie on a line.
    CDrawable* AddArc(CGePoint2d p1, CGePoint2d p2, CGePoint2d p3, Gdiplus::Color c, CString parm, CString msg,
                      int lock, int redraw);
    // A mark with the width of its lines in pixels.
    CDrawable* AddCenterPoint(CGePoint2d p, CString parm, CString msg, Gdiplus::Color c, int redraw);
    // Null when the numbers of points and bulges differ. Raises the invalid-argument exception when the arrays of names
    // and messages are shorter than `pts`. `wide`: its low 16 bits, signed, are the line width.
    CDrawable* AddPLine(CGePointArray& pts, CBulgeArray& bulges, Gdiplus::Color c, CStringArray& names,
                        CStringArray& msgs, int wide, int closed, int lock, int redraw);
    // Always closed.
    CDrawable* AddPLine(CGePointArray& pts, CBulgeArray& bulges, Gdiplus::Color c, CStringArray& names,
                        CStringArray& msgs, int lock, int redraw);
    // `onTop` zero puts it at the very bottom. Never repaints.
    CDrawable* AddPLine(CGePointArray& pts, CBulgeArray& bulges, Gdiplus::Color c, int closed, int canSelect,
                        int onTop);
    // Angles in degrees.
    CDrawable* AddText(CGePoint2d p, CString text, double angle, Gdiplus::Color c, int redraw);
    CDrawable* AddText(CGePoint2d p, CString text, double angle, Gdiplus::Color c, double height, int canSelect,
                       int redraw);
    // Parameter texts. Their expression, which a host's OnAcceptEditData may apply, is that of a number without a sign;
    // of AddParmTextNoRegExp it is empty, and of AddParmTextForSS the word "$shishu$". The double after the strings is
    // ignored. `height` is in drawing units; without it the number is the height of a line of the window's font in
    // pixels, plus 5.
    CDrawable* AddParmText(CGePoint2d p, CString text, CString name, double, Gdiplus::Color c, int redraw);
    CDrawable* AddParmText(CGePoint2d p, CString text, CString name, double, Gdiplus::Color c, double height,
                           int redraw);
    CDrawable* AddParmTextNoRegExp(CGePoint2d p, CString& text, CString& name, double, Gdiplus::Color c, double height,
                                   int redraw);
    CDrawable* AddParmTextForSS(CGePoint2d p, CString& text, CString& name, double, Gdiplus::Color c, double height,
                                int redraw);
    // A plain text; the name is ignored.
    CDrawable* AddParmTextNoEdit(CGePoint2d p, CString& text, CString& name, double, Gdiplus::Color c, double height,
                                 int redraw);
    // Turns every object of the drawing, not the net, by `angle` radians. Does not repaint.
    void transformBy(double angle, CGePoint2d center);
    // The first polyline with a curved segment within four pixels of client pixel p, and that segment; else null, with
    // `segment` that of the last polyline passed.
    CPLine* GetPLine_IsArc(CPoint p, int& segment);

protected:
    // ---- Hooks ----

    // Makes the engine. Called inside the constructor, where an override is not reached: a derived view calls its own
    // from its own constructor, and its override frees the engine already there.
    virtual void OnCreateCommandOperationManager();
    // Called at the end of each window paint, with the off-screen context and 1.
    virtual int DrawSpecInfo(CDC* dc, int n);
    // Called before an undo or a redo: ends what is running. 0 refuses it. May free the view.
    virtual int OnBeforeUndo();

    // Deregisters and deletes the engine. While there is none, messages get only the window's default processing.
    void FreeCommandOperationManager();

    // ---- Window messages ----

    // Each handles the message of its name, with points in client pixels; OnMouseWheel has a point of the screen. Mouse
    // and key messages are given to the engine first, then to the window's default processing.
    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnNcDestroy();
    afx_msg void OnSize(UINT nType, int cx, int cy); // The mapping stays: a host calls ZoomAll.
    afx_msg void OnPaint();                          // Through an off-screen bitmap.
    afx_msg BOOL OnEraseBkgnd(CDC* dc);              // Nothing: the paint clears.
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point); // The default processing alone.
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMButtonUp(UINT nFlags, CPoint point);     // The default processing alone.
    afx_msg void OnMButtonDblClk(UINT nFlags, CPoint point); // Calls ZoomAll.
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint point);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg BOOL OnSetCursor(CWnd* wnd, UINT nHitTest, UINT message);
    // As those of CWnd.
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* scrollBar);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* scrollBar);
    DECLARE_MESSAGE_MAP()

    CKxAlive m_Alive;                                           // Ends with the window, and with the object.
    CVectorViewCoordTran m_CoordTran;                           // The mapping.
    CVectorGraphic m_Graphic;                                   // The painter.
    CCommandOperation* m_pManager = nullptr;                    // The engine; owned.
    CDialog_DrawAbleProperty* m_pDlgDrawAbleProperty = nullptr; // Nothing here assigns it; a derived view may.

private:
    // ---- What the engine's tools ask of their window ----

    CCommandOperation* OperationEngine() override;
    bool IsOperationOrtho() override;
    void TrackOperationGrip(const CGePoint2d& point) override;
    void EndOperation() override;
    void ShowOperationObject(CDrawable* object) override;
    void OnEngineAtRest(const wchar_t* chinese, const wchar_t* english) override;

    friend class CViewHistory;
    void OnHistoryTravelled();
    int Travel(int (CDrawingHistory::*go)());
    bool IsCommandRunning();
    CCommandOperationManager* Manager();
    void RepaintAll();
    void PreRedrawEngine();
    void ReturnPreview();
    // Calls the engine, if there is one, then the window's default processing, if the window still exists.
    template <class Call>
    LRESULT TellEngineThenDefault(Call call);

    std::unique_ptr<CDrawingHistory> m_pHistory; // Freed before painter and document.
};
