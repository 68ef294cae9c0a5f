#include "NrvWindow.h"

#include "NrvCall.h"

#include "CommandWords.h"
#include "InPlaceEdit.h"
#include "Line.h"
#include "Circle.h"
#include "MemoryInfo.h"
#include "PLine.h"
#include "TextParm.h"
#include "VectorGraphic.h"

namespace {

CPoint PixelOf(LPARAM lParam) {
    return CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
}

// Whether the command's right button restores what it has moved; a grip edit, which has no word, always does.
bool Restores(const CString& word) {
    const CommandWord* row = FindCommandWord(word);
    return row == nullptr || (row->flags & kCommandRestores) != 0;
}

} // namespace

// ---- The engine ----------------------------------------------------------------------------------------------------

template <class Base>
int CNrvEngine<Base>::DoCommand(CString word) {
    // Keeps the engine alive during this call, unless a host replaces it: the control owns it and outlives the call.
    CNrvControl& control = m_Control;
    control.SetWord(word);
    const int installed = Base::DoCommand(word);
    control.SetWord(L"");
    return installed;
}

template <class Base>
CCommandOperation::ResultState CNrvEngine<Base>::OnRButtonDown(unsigned int nFlags, CGePoint2d point) {
    m_RightButton = true;
    const auto state = Base::OnRButtonDown(nFlags, point);
    m_RightButton = false;
    return state;
}

template <class Base>
void CNrvEngine<Base>::OnToolBegun(CCommandOperation*) {
    m_Control.ToolBegun();
}

template <class Base>
void CNrvEngine<Base>::OnToolEnded(CCommandOperation*, CCommandOperationManager::ToolEnd how) {
    using End = CCommandOperationManager::ToolEnd;
    // The right button of these commands ends them as done.
    const bool restored = m_RightButton && how == End::Done && Restores(m_Control.GetWord());
    m_Control.ToolEnded(restored ? End::Cancelled : how);
}

// ---- Both views ----------------------------------------------------------------------------------------------------

template <class Base, class ToolEngine>
CNrvWindow<Base, ToolEngine>::CNrvWindow(int32_t kind) : CNrvControl(kind) {
    // The constructor of the base has made its own engine, because it calls the base's own hook.
    CNrvWindow::OnCreateCommandOperationManager();
}

template <class Base, class ToolEngine>
CNrvWindow<Base, ToolEngine>::~CNrvWindow() {
    // The engine refers to the control, which still exists here.
    this->FreeCommandOperationManager();
}

template <class Base, class ToolEngine>
void CNrvWindow<Base, ToolEngine>::OnCreateCommandOperationManager() {
    this->FreeCommandOperationManager();
    this->m_pManager = new ToolEngine(*this, this, &this->m_Graphic, &this->m_CoordTran, this->GetDocument());
    KX_ADD_MEMORY(this->m_pManager);
}

template <class Base, class ToolEngine>
void CNrvWindow<Base, ToolEngine>::FocusView() {
    const HWND own = this->m_hWnd;
    const HWND focus = ::GetFocus();
    if (own != nullptr && focus != own && !(::IsChild(own, focus) && ::IsWindowVisible(focus))) {
        ::SetFocus(own);
    }
}

template <class Base, class ToolEngine>
bool CNrvWindow<Base, ToolEngine>::CanRestore() {
    // Before the base point there is nothing to restore, and such a command would raise while reading its empty memory.
    return Restores(GetWord()) && (FindCommandWord(GetWord()) == nullptr || clicks > 0);
}

template <class Base, class ToolEngine>
void CNrvWindow<Base, ToolEngine>::BreakOff() {
    CCommandOperationManager* engine = Engine();
    if (engine != nullptr && engine->GetHasCommand() != 0 && CanRestore()) {
        engine->OnRButtonDown(0, CGePoint2d(m_Cursor));
        engine = Engine();
    }
    if (engine != nullptr) {
        engine->Cancel();
    }
    Repaint();
}

template <class Base, class ToolEngine>
int CNrvWindow<Base, ToolEngine>::OnBeforeUndo() {
    CCommandOperationManager* engine = Engine();
    if (engine != nullptr && engine->GetHasCommand() != 0) {
        BreakOff();
    }
    return HasEnded() ? 0 : Base::OnBeforeUndo();
}

template <class Base, class ToolEngine>
int CNrvWindow<Base, ToolEngine>::DrawSpecInfo(CDC* dc, int n) {
    if (Wants(NRV_N_PAINT)) {
        CNrvNote note(NRV_N_PAINT);
        note.dc = dc->m_hDC;
        const int saved = ::SaveDC(note.dc);
        Send(note);
        ::RestoreDC(note.dc, saved);
    }
    return HasEnded() ? 1 : Base::DrawSpecInfo(dc, n);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

template <class Base, class ToolEngine>
BOOL CNrvWindow<Base, ToolEngine>::PreTranslateMessage(MSG* message) {
    const HWND own = this->m_hWnd;
    if (own != nullptr && message->hwnd != own && ::IsChild(own, message->hwnd)) {
        const CWnd* box = CWnd::FromHandlePermanent(message->hwnd);
        if (box != nullptr && !box->IsKindOf(RUNTIME_CLASS(CInPlaceEdit)) && HandleToolKey(*message)) {
            return TRUE;
        }
    }
    return Base::PreTranslateMessage(message);
}

template <class Base, class ToolEngine>
bool CNrvWindow<Base, ToolEngine>::HandleToolKey(const MSG& message) {
    CCommandOperationManager* engine = Engine();
    if (engine == nullptr || engine->GetHasCommand() == 0) {
        return false;
    }
    switch (message.message) {
    case WM_RBUTTONDOWN:
        BreakOff();
        return true;
    case WM_CHAR:
        // From the first character on the mouse must not overwrite the distance.
        if (message.wParam >= L' ') {
            engine->SetInEdit(1);
        }
        return false;
    case WM_KEYDOWN:
        switch (message.wParam) {
        case VK_RETURN:
            engine->Execute();
            FocusView();
            return true;
        case VK_ESCAPE:
            BreakOff();
            FocusView();
            return true;
        case VK_BACK:
        case VK_DELETE:
        case VK_LEFT:
        case VK_RIGHT:
        case VK_HOME:
        case VK_END:
            engine->SetInEdit(1);
            return false;
        default:
            return false;
        }
    default:
        return false;
    }
}

template <class Base, class ToolEngine>
void CNrvWindow<Base, ToolEngine>::QueueHit(uint32_t code, CPoint pixel) {
    if (!Wants(code)) {
        return;
    }
    CNrvNote note(code);
    CDrawable* object = HitAt(pixel, note.segment);
    note.id = Ids().IdOf(object);
    note.kind = NrvKindOf(object);
    note.pixel = pixel;
    Mapping().LPToDP(pixel, note.point);
    Queue(std::move(note));
}

template <class Base, class ToolEngine>
LRESULT CNrvWindow<Base, ToolEngine>::OnLeftButton(WPARAM wParam, LPARAM lParam) {
    m_Pressed = PixelOf(lParam);
    CCommandOperationManager* engine = Engine();
    const bool running = engine != nullptr && engine->GetHasCommand() != 0;
    ++clicks;
    // A parameter view takes the focus itself, which ends an open edit, and reports the click itself.
    const bool parm = GetKind() == NRV_HANDLE_PARM_VIEW;
    if (!parm) {
        FocusView();
    }
    const LRESULT result = Base::WindowProc(WM_LBUTTONDOWN, wParam, lParam);
    if (!parm && !running && !HasEnded()) {
        QueueHit(NRV_N_CLICK, m_Pressed);
    }
    return result;
}

template <class Base, class ToolEngine>
LRESULT CNrvWindow<Base, ToolEngine>::OnRightButton(WPARAM wParam, LPARAM lParam) {
    CCommandOperationManager* engine = Engine();
    const bool running = engine != nullptr && engine->GetHasCommand() != 0;
    if (GetKind() != NRV_HANDLE_PARM_VIEW) {
        FocusView();
    }
    if (running && FindCommandWord(GetWord()) != nullptr && Restores(GetWord()) && !CanRestore()) {
        BreakOff();
        return 0;
    }
    const LRESULT result = Base::WindowProc(WM_RBUTTONDOWN, wParam, lParam);
    Repaint(); // Some cancelled commands leave their previews on the window.
    return result;
}

template <class Base, class ToolEngine>
LRESULT CNrvWindow<Base, ToolEngine>::OnMove(WPARAM wParam, LPARAM lParam) {
    m_Cursor = PixelOf(lParam);
    const LRESULT result = Base::WindowProc(WM_MOUSEMOVE, wParam, lParam);
    if (HasEnded()) {
        return result;
    }
    if (Wants(NRV_N_CURSOR)) {
        CNrvNote note(NRV_N_CURSOR);
        note.pixel = m_Cursor;
        Mapping().LPToDP(m_Cursor, note.point);
        Queue(std::move(note));
    }
    if (Wants(NRV_N_HOVER)) {
        int32_t segment = -1;
        const CDrawable* object = HitAt(m_Cursor, segment);
        if (object != m_Hover) {
            m_Hover = object;
            QueueHit(NRV_N_HOVER, m_Cursor);
        }
    }
    return result;
}

template <class Base, class ToolEngine>
void CNrvWindow<Base, ToolEngine>::GiveFirstMapping() {
    CRect client;
    ::GetClientRect(this->m_hWnd, &client);
    if (freshMapping && client.Height() > 0) {
        // One drawing unit per pixel, with the origin in the lower left corner.
        freshMapping = false;
        Mapping().SetScreenSize(client.Size());
    }
}

template <class Base, class ToolEngine>
LRESULT CNrvWindow<Base, ToolEngine>::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    CCommandOperationManager* engine = Engine();
    const bool running = engine != nullptr && engine->GetHasCommand() != 0;
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST && GetKind() == NRV_HANDLE_PARM_VIEW) {
        // Passes the message on to the tooltip, which other message loops do not call.
        MSG relayed = {this->m_hWnd, message, wParam, lParam, static_cast<DWORD>(::GetMessageTime()), {}};
        ::GetCursorPos(&relayed.pt);
        Base::PreTranslateMessage(&relayed);
    }
    switch (message) {
    case WM_GETDLGCODE:
        // Tab leaves the view for the next control of a dialog; Escape is for a running command.
        return running ? DLGC_WANTALLKEYS : DLGC_WANTARROWS;
    case WM_SIZE: {
        const LRESULT result = Base::WindowProc(message, wParam, lParam);
        if (!HasEnded()) {
            GiveFirstMapping();
        }
        return result;
    }
    case WM_LBUTTONDOWN:
        return OnLeftButton(wParam, lParam);
    case WM_RBUTTONDOWN:
        return OnRightButton(wParam, lParam);
    case WM_MBUTTONDOWN:
        FocusView();
        break;
    case WM_MOUSEMOVE:
        return OnMove(wParam, lParam);
    case WM_LBUTTONDBLCLK: {
        const LRESULT result = Base::WindowProc(message, wParam, lParam);
        if (!HasEnded()) {
            QueueHit(NRV_N_DOUBLE_CLICK, PixelOf(lParam));
        }
        return result;
    }
    case WM_KEYDOWN:
        if (wParam == VK_ESCAPE && running) {
            BreakOff();
            return 0;
        }
        if (wParam == VK_SHIFT || wParam == VK_CONTROL) {
            // Any key clears the selection when no command runs; these two begin a shortcut.
            return this->DefWindowProc(message, wParam, lParam);
        }
        break;
    case WM_DESTROY:
        // The engine does not free a running tool.
        if (engine != nullptr) {
            engine->Cancel();
        }
        break;
    default:
        break;
    }
    return Base::WindowProc(message, wParam, lParam);
}

template class CNrvEngine<CCommandOperationManager>;
template class CNrvEngine<CCommandOperationManager_ViewParm>;
template class CNrvWindow<CVectorView, CNrvEngine<CCommandOperationManager>>;
template class CNrvWindow<CVectorViewParm, CNrvEngine<CCommandOperationManager_ViewParm>>;

// ---- The parameter view --------------------------------------------------------------------------------------------
// A handler may end the view during a hook, which therefore keeps it alive. The base ignores the hook's result then.

void CNrvParmView::OpenEdit(CTextParm* parm) {
    CGePoint2d a;
    CGePoint2d b;
    parm->GetParmEditRect(a, b);
    CPoint topLeft;
    CPoint bottomRight;
    m_CoordTran.DPToLP(a, topLeft);
    m_CoordTran.DPToLP(b, bottomRight);
    DoEditParm(parm, CRect(WrapAdd(topLeft.x, -1), topLeft.y, bottomRight.x, bottomRight.y), 0, 0, L"");
}

void CNrvParmView::Notify(UINT code) {
    const auto keep = shared_from_this();
    if (code == kVpnQueryEdit) {
        CNrvNote note(NRV_N_EDIT_OPENING);
        note.id = Ids().IdOf(m_Notify.pText);
        note.text = m_Notify.pText->GetText();
        if (Send(note) == 0) {
            m_Notify.nKind = kVpkRefused;
        }
        return;
    }
    if (code != kVpnClick) {
        return; // A double click is reported with the object under it.
    }
    CNrvNote note(NRV_N_CLICK);
    CDrawable* object = nullptr;
    switch (m_Notify.nKind) {
    case kVpkLine:
        object = m_Notify.pLine;
        break;
    case kVpkCircle:
    case kVpkArc:
        object = m_Notify.pCircle;
        break;
    case kVpkPLine:
        object = m_Notify.pPLine;
        note.segment = m_Notify.nSelLine;
        break;
    default:
        object = m_Notify.pText;
        break;
    }
    note.id = Ids().IdOf(object);
    note.kind = NrvKindOf(object);
    note.pixel = PressedPixel();
    Mapping().LPToDP(note.pixel, note.point);
    Queue(std::move(note));
}

int CNrvParmView::OnAcceptEditData(CTextParm* parm, CString text) {
    const auto keep = shared_from_this();
    CNrvNote note(NRV_N_EDIT_ACCEPT);
    note.id = Ids().IdOf(parm);
    note.text = text;
    return Send(note);
}

void CNrvParmView::OnEditChanging(CTextParm* parm, CString& oldText, CString& newText) {
    const auto keep = shared_from_this();
    CNrvNote note(NRV_N_EDIT_STORING);
    note.id = Ids().IdOf(parm);
    note.text = newText;
    CString* const outer = textToStore;
    textToStore = &newText;
    try {
        Send(note, &oldText);
    } catch (...) {
        textToStore = outer;
        throw;
    }
    textToStore = outer;
    if (newText != oldText && !HasEnded()) {
        Changing(NRV_CHANGE_MODIFIED, {note.id});
    }
}

void CNrvParmView::OnEditChanged(CTextParm* parm, CString oldText, CString newText) {
    const auto keep = shared_from_this();
    CNrvNote note(NRV_N_EDIT_STORED);
    note.id = Ids().IdOf(parm);
    note.text = newText;
    if (newText != oldText) {
        Watch().Enter(parm);
        GetDocument()->SetModifiedFlag(TRUE);
        // Sent at once, like the other events of an edit: the text is stored, and the next edit may open before the key
        // that ended this one has been handled.
        CNrvNote changed(NRV_N_CHANGED);
        changed.reason = NRV_CHANGE_MODIFIED;
        changed.ids = {note.id};
        Send(changed);
    }
    Send(note, &oldText);
}

void CNrvParmView::OnEndEdit(CTextParm* parm) {
    const auto keep = shared_from_this();
    CNrvNote note(NRV_N_EDIT_ENDED);
    note.id = Ids().IdOf(parm);
    Send(note);
}

void CNrvParmView::OnEditTabDown(CTextParm* current) {
    const auto keep = shared_from_this();
    CNrvNote note(NRV_N_EDIT_NEXT);
    note.id = Ids().IdOfGone(current);
    if (Send(note) != 0 && !HasEnded()) {
        CVectorViewParm::OnEditTabDown(current);
    }
}
