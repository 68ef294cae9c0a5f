// The two views of the C interface, and the drawing without a window.
// Layer 12: capi.
#pragma once

#include "NrvControl.h"

#include "CommandOperationManagerViewParm.h"
#include "VectorViewParm.h"

// The engine of a view of this layer: tells its control which tools begin and end. `Base` is the engine of the view.
template <class Base>
class CNrvEngine : public Base {
public:
    CNrvEngine(CNrvControl& control, CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
               CGraphicDocument* document)
        : Base(wnd, graphic, tran, document), m_Control(control) {}
    int DoCommand(CString word) override;
    CCommandOperation::ResultState OnRButtonDown(unsigned int nFlags, CGePoint2d point) override;

protected:
    void OnToolBegun(CCommandOperation* tool) override;
    void OnToolEnded(CCommandOperation* tool, CCommandOperationManager::ToolEnd how) override;

private:
    CNrvControl& m_Control;
    bool m_RightButton = false; // While a press of the right button is handled.
};

// Adds to a view what a host's own subclass would add: the focus, Escape, typed distances, and the events. `Base` is
// one of the two exported views, `ToolEngine` its engine.
template <class Base, class ToolEngine>
class CNrvWindow : public Base, public CNrvControl {
public:
    explicit CNrvWindow(int32_t kind);
    ~CNrvWindow() override;

    CVectorView& View() override { return *this; }
    CVectorGraphic& Graphic() override { return this->m_Graphic; }
    void FocusView() override;
    void BreakOff() override;
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    void OnCreateCommandOperationManager() override;
    // Cancels what runs, as Escape does.
    int OnBeforeUndo() override;
    int DrawSpecInfo(CDC* dc, int n) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    CPoint PressedPixel() const { return m_Pressed; }

private:
    // Handles a key, or the right button, in the edit box of a running tool. True when it is used up.
    bool HandleToolKey(const MSG& message);
    // Whether the running tool's right button restores what it has moved.
    bool CanRestore();
    void QueueHit(uint32_t code, CPoint pixel);
    LRESULT OnLeftButton(WPARAM wParam, LPARAM lParam);
    LRESULT OnRightButton(WPARAM wParam, LPARAM lParam);
    LRESULT OnMove(WPARAM wParam, LPARAM lParam);
    void GiveFirstMapping();

    CPoint m_Pressed;                   // Where the left button was pressed last, in client pixels.
    CPoint m_Cursor;                    // The last mouse position, in client pixels.
    const CDrawable* m_Hover = nullptr; // Compared only.
};

// The drawing view. Without a window it serves as the drawing that a host creates.
class CNrvView : public CNrvWindow<CVectorView, CNrvEngine<CCommandOperationManager>> {
public:
    explicit CNrvView(int32_t kind = NRV_HANDLE_VIEW) : CNrvWindow(kind) {}
};

class CNrvParmView : public CNrvWindow<CVectorViewParm, CNrvEngine<CCommandOperationManager_ViewParm>> {
public:
    CNrvParmView() : CNrvWindow(NRV_HANDLE_PARM_VIEW) { showDecimals = 0; }
    // Opens the box over the parameter, as a click on it does.
    void OpenEdit(CTextParm* parm);
    void SetOpenText(const CString& text) { m_Edit.SetEditText(text); }
    int IsWheelEnabled() const { return m_bEnableWheel == 1; }

protected:
    void Notify(UINT code) override;
    int OnAcceptEditData(CTextParm* parm, CString text) override;
    void OnEditChanging(CTextParm* parm, CString& oldText, CString& newText) override;
    void OnEditChanged(CTextParm* parm, CString oldText, CString newText) override;
    void OnEndEdit(CTextParm* parm) override;
    void OnEditTabDown(CTextParm* current) override;
};
