// The demo's drawing view: what a host adds to CVectorView so that typed distances, Escape and the focus work.
// Layer 13: demo.
#pragma once

#include <vectorview.h>

#include "HostEngine.h"

class CHostView : public CVectorView {
public:
    CHostView();

    BOOL CreateIn(CWnd* parent, const RECT& rect, UINT id);
    CHostEngine* GetManager() { return static_cast<CHostEngine*>(GetCommandOperationManager()); }
    // Starts the command of a row of the table.
    void RunCommand(int row);
    // The row of the running command; -1 when none runs, or one that a click has started.
    int GetCommandRow();
    // The left clicks that the running command has got.
    int GetClicks() const { return m_clicks; }
    // The library's editing options: all on, or off for the classic behaviour.
    void SetClassic(bool classic);
    // The factor for apertures, markers and the figure beside the band; the caller owns the font of that figure.
    void SetPixelScale(float scale, CFont& font);
    bool IsClassic();
    // Gives a white or black object the colour that is visible on its background, white on dark ones and black on light
    // ones. Other colours stay.
    void MakeReadable(CDrawable* object);
    bool CanSelectAll();
    void SelectAll();
    // Selects the object at a place in client pixels instead of all others, unless it is selected already; null where
    // there is none.
    CDrawable* SelectAt(CPoint point);
    // Whether the right button was pressed while no command was running, which asks for a menu. True only once for each
    // press.
    bool TakeMenuWish();
    // Shows the length and the angle of the band beside the mouse, or hides them where there is no band.
    void ShowBandFigure();
    // Cancels the running command and repaints, which removes its previews from the window.
    void BreakOff(bool takeFocus = true);
    // The view does not take the focus itself; without it neither keys nor the wheel would arrive. An edit box keeps
    // it.
    void TakeFocus();
    // Gives the mapping the window's size; called once for an empty drawing, which has no extent to fit.
    void ResetMapping();
    // Shows or hides the rows of the selected object, which an edit writes straight back.
    void ToggleProperties();
    bool HasProperties();
    // Called before objects are freed that the property window may show.
    void EmptyProperties();
    // Shows the objects of a stream at the mouse and adds them at the next click. False for an incomplete stream.
    bool PlaceObjects(const CByteArray& bytes);
    bool IsPlacing() { return GetCommandRow() < 0 && m_placing; }
    // Begins the history anew after a change that is no step, such as a drawing that is made or recovered.
    void RestartHistory();
    // The drawing point under the mouse; false while the mouse has not been over the view yet.
    bool GetCursorPoint(CGePoint2d& point);

protected:
    void OnCreateCommandOperationManager() override;
    // Cancels what runs, as Escape does.
    int OnBeforeUndo() override;
    BOOL PreTranslateMessage(MSG* message) override;

    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    DECLARE_MESSAGE_MAP()

private:
    bool HandleEditKey(const MSG& message);
    bool CanRestore();
    bool HasLightBackground();
    void OnCommandDone();

    HWND m_figure = nullptr; // A static control, which lets the mouse through.
    CString m_figureText;
    float m_pixelScale = 1.0f;
    HFONT m_font = nullptr;
    bool m_wantsMenu = false;
    CPoint m_cursor;
    bool m_hasCursor = false;
    int m_row = -1;         // row of the command started last
    bool m_placing = false; // the command started last places objects
    int m_clicks = 0;       // left clicks since
};
