#include "CommandOperationManager.h"

#include "CommandSelectGripPoint.h"
#include "CommandSelectObj.h"
#include "CommandWords.h"
#include "Document.h"
#include "EventScope.h"
#include "OperationPlaceObjects.h"
#include "VectorGraphic.h"
#include "resource.h"

IMPLEMENT_DYNAMIC(CCommandOperationManager, CCommandOperation)

namespace {

// A tool registered with the leak tracer.
CToolOwner Registered(CCommandOperation* tool) {
    KX_ADD_MEMORY(tool);
    return CToolOwner(tool);
}

// Sets a flag of the engine for the length of a block; an engine that has been freed in it is not touched.
class CFlagScope {
public:
    CFlagScope(bool& flag, const CKxAlive& engine) : m_Flag(flag), m_Engine(engine) { m_Flag = true; }
    CFlagScope(const CFlagScope&) = delete;
    CFlagScope& operator=(const CFlagScope&) = delete;
    ~CFlagScope() {
        if (m_Engine.IsAlive()) {
            m_Flag = false;
        }
    }

private:
    bool& m_Flag;
    CKxAliveToken m_Engine;
};

} // namespace

CCommandOperationManager::CCommandOperationManager(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                                   CGraphicDocument* document)
    : CCommandOperation(wnd, graphic, tran, document),
      m_hDefaultCursor(::LoadCursor(VectorViewModule(), MAKEINTRESOURCE(IDC_CURSOR_OPERATION))),
      m_Events(std::make_shared<CEngineEvents>()) {
    m_Events->window = wnd;
}

// Compatibility 97: a running tool is not freed with its engine.
CCommandOperationManager::~CCommandOperationManager() {
    if (m_pCommand != nullptr) {
        m_pCommand->m_Alive.End();
    }
    m_Events->window = nullptr;
    if (m_hDefaultCursor != nullptr) {
        ::DestroyCursor(m_hDefaultCursor);
    }
}

CGePoint2d CCommandOperationManager::ToDrawing(const CGePoint2d& pixel) const {
    CGePoint2d point;
    m_pCoordTran->LPToDP(static_cast<float>(pixel.x), static_cast<float>(pixel.y), &point.x, &point.y);
    return point;
}

// ---- Events --------------------------------------------------------------------------------------------------------

// A tool may open a modal box or send messages in its handlers, and the code that runs then may end the tool, start
// another or free the view. After each call a tool that has ended gets no further event, and its result does not end
// the next one. When the engine has been freed, nothing of it is used; the token of its running tool has ended too.

void CCommandOperationManager::Execute() {
    const CEventScope scope(m_Events);
    if (CCommandOperation* op = CurrentTool()) {
        op->Execute();
    }
}

void CCommandOperationManager::Cancel() {
    const CEventScope scope(m_Events);
    if (CurrentTool() != nullptr) {
        CCommandOperation* ended = TakeOutCommand(ToolEnd::Cancelled);
        const CFlagScope breakingOff(m_BreakingOff, m_Alive);
        ended->Cancel();
        ended->m_Edit.DestroyWindow();
    }
}

CCommandOperation::ResultState CCommandOperationManager::OnLButtonDown(unsigned int nFlags, CGePoint2d point) {
    const CEventScope scope(m_Events);
    const CPoint pixel(Truncate(point.x), Truncate(point.y));
    point = ToDrawing(point);
    GetInTrackGripPoint(pixel, point);
    // Tracking ends at every click. Assistant lines on the window are forgotten, not erased: the next repaint wipes
    // them.
    m_GripPoints.RemoveAll();
    m_AssistantPoints.RemoveAll();
    CCommandOperation* op = RunningTool();
    if (op == nullptr) {
        // The click may take a grip: earlier changes do not belong to the step of that edit.
        const CKxAliveToken engine(m_Alive);
        const std::shared_ptr<CEngineEvents> events = m_Events;
        events->Change(nullptr, nullptr);
        if (events->depth == 1) {
            events->TellAtRest();
        }
        if (!engine.IsAlive()) {
            return RS_Continue;
        }
        events->Change(nullptr, nullptr);
        OnDefaultLButtonDown(nFlags, point);
        return RS_Continue;
    }
    const CKxAliveToken running(op->m_Alive);
    CGePoint2d hit;
    if (op->GetGripPoint(point, hit) != 0) {
        point = hit;
    }
    const ResultState state = op->OnLButtonDown(nFlags, point);
    if (running.IsAlive()) {
        op->OnButtonDownForL(nFlags, pixel);
    }
    if (running.IsAlive()) {
        CheckResultState(state);
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager::OnLButtonUp(unsigned int nFlags, CGePoint2d point) {
    const CEventScope scope(m_Events);
    point = ToDrawing(point);
    // Compatibility 5: a release snaps by the manager's own search.
    CGePoint2d hit;
    if (GetGripPoint(point, hit) != 0) {
        point = hit;
    }
    if (CCommandOperation* op = RunningTool()) {
        const CKxAliveToken running(op->m_Alive);
        const ResultState state = op->OnLButtonUp(nFlags, point);
        if (running.IsAlive()) {
            CheckResultState(state);
        }
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    const CEventScope scope(m_Events);
    const CGePoint2d pixel = point;
    m_LastPixel = pixel;
    point = ToDrawing(point);
    const CKxAliveToken engine(m_Alive);
    if (CCommandOperation* op = RunningTool()) {
        const CKxAliveToken running(op->m_Alive);
        CGePoint2d hit;
        if (op->GetGripPoint(point, hit) != 0) {
            point = hit;
            AddGripPoint(point);
        }
        op->OnMouseMove(nFlags, point);
        if (running.IsAlive()) {
            op->OnMouseMoveForL(nFlags, CPoint(Truncate(pixel.x), Truncate(pixel.y)));
        }
    }
    if (!engine.IsAlive()) {
        return RS_Continue;
    }
    if ((nFlags & MK_MBUTTON) != 0) {
        const CGeVector2d d = pixel - m_MButtonPoint;
        m_pCoordTran->Pan(d);
        m_MButtonPoint = pixel;
        if (CCommandOperation* op = CurrentTool()) {
            op->RefreshGrip();
        }
        RequestRedraw();
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager::OnMouseWheel(unsigned int nFlags, short zDelta,
                                                                      CGePoint2d point) {
    const CEventScope scope(m_Events);
    // Compatibility 6: a preview jumps by the window's place at a wheel message.
    // The point of the wheel is in screen coordinates and is taken for client pixels.
    if (Options().previewsReturn) {
        m_LastPixel = point; // With this option the view gives client pixels.
    }
    point = ToDrawing(point);
    if (CCommandOperation* op = RunningTool()) {
        const CKxAliveToken running(op->m_Alive);
        op->OnMouseWheel(nFlags, zDelta, point);
        if (running.IsAlive()) {
            op->OnMouseMove(nFlags, point);
        }
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager::OnRButtonDown(unsigned int nFlags, CGePoint2d point) {
    const CEventScope scope(m_Events);
    point = ToDrawing(point);
    if (CCommandOperation* op = RunningTool()) {
        const CKxAliveToken running(op->m_Alive);
        const ResultState state = op->OnRButtonDown(nFlags, point);
        if (running.IsAlive()) {
            CheckResultState(state);
        }
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager::OnKeyDown(unsigned int nChar, unsigned int nRepCnt,
                                                                   unsigned int nFlags) {
    const CEventScope scope(m_Events);
    if (CCommandOperation* op = RunningTool()) {
        op->OnKeyDown(nChar, nRepCnt, nFlags);
    } else if (m_pCommand == nullptr) {
        // Compatibility 98: any key deselects.
        m_Events->Change(nullptr, nullptr);
        m_pDocument->RemoveAllSelected();
        RequestRedraw();
        AnnounceToPropertyDialog(nullptr);
    }
    return RS_Continue;
}

void CCommandOperationManager::PreRedraw() {
    const CEventScope scope(m_Events);
    CCommandOperation* op = CurrentTool();
    if (Options().previewsReturn) {
        // Erased here, because it may reach beyond the part that is repainted.
        ErasShirrLine();
        if (op != nullptr) {
            op->RefreshGrip();
        }
    } else {
        // The repaint wipes the band.
        m_ShirrDrawn = 0;
    }
    if (op != nullptr) {
        op->PreRedraw();
    }
}

void CCommandOperationManager::ReturnPreview() {
    const CEventScope scope(m_Events);
    if (!Options().previewsReturn || !m_LastPixel || m_Returning || RunningTool() == nullptr) {
        return;
    }
    const CFlagScope returning(m_Returning, m_Alive);
    try {
        OnMouseMove(0, *m_LastPixel);
    } catch (CException* e) {
        e->Delete(); // The next mouse move fails in the same way and reports it.
    } catch (...) {
    }
}

CCommandOperation::ResultState CCommandOperationManager::OnSetCursor(CWnd* wnd, unsigned int nHitTest,
                                                                     unsigned int message) {
    const CEventScope scope(m_Events);
    if (CCommandOperation* op = RunningTool()) {
        return op->OnSetCursor(wnd, nHitTest, message);
    }
    return OnDefaultSetCursor(wnd, nHitTest, message) == RS_Done ? RS_Done : RS_Continue;
}

void CCommandOperationManager::SetInEdit(int inEdit) {
    const CEventScope scope(m_Events);
    if (CCommandOperation* op = CurrentTool()) {
        op->SetInEdit(inEdit);
    }
}

void CCommandOperationManager::SetOsnapMode(int mode) {
    const CEventScope scope(m_Events);
    m_OsnapMode = mode;
    if (CCommandOperation* op = CurrentTool()) {
        op->SetOsnapMode(mode);
    }
}

CCommandOperation::ResultState CCommandOperationManager::OnMButtonDown(unsigned int, CGePoint2d pixel) {
    m_MButtonPoint = pixel;
    return RS_Continue;
}

// ---- Commands ------------------------------------------------------------------------------------------------------

int CCommandOperationManager::DoCommand(CString word) {
    const CommandWord* row = FindCommandWord(word);
    if (row == nullptr) {
        return 0;
    }
    const CKxAliveToken engine(m_Alive);
    AtRest(nullptr, nullptr); // Earlier changes do not belong to the step of this command.
    if (!engine.IsAlive()) {
        return 0;
    }
    CToolOwner op = Registered(row->create(m_pWnd, m_pGraphic, m_pCoordTran, m_pGraphic->GetDocument()));
    switch (row->running) {
    case CommandRunning::Installed:
        // The new tool has made an edit box, a child window, and the view's host was notified: it may have freed the
        // engine.
        if (!engine.IsAlive() || SetCommand(op.release(), 1) == 0) {
            return 0;
        }
        m_Chinese = row->chinese;
        m_English = row->english;
        return 1;
    case CommandRunning::AtOnce:
        op->Execute();
        break;
    case CommandRunning::AtOnceAndKept:
        op.release()->Execute();
        break;
    }
    if (engine.IsAlive()) {
        AtRest(row->chinese, row->english);
    }
    return 0;
}

void CCommandOperationManager::AtRest(LPCTSTR chinese, LPCTSTR english) {
    m_Events->Change(chinese, english);
    if (m_Events->depth == 0) {
        const std::shared_ptr<CEngineEvents> events = m_Events; // A host that is told may free this object.
        events->TellAtRest();
    }
}

CCommandOperation::ResultState CCommandOperationManager::OnDefaultLButtonDown(unsigned int nFlags, CGePoint2d point) {
    FollowDocument();
    const CKxAliveToken engine(m_Alive);
    {
        const CToolOwner select = Registered(new CCommandSelectObj(m_pWnd, m_pGraphic, m_pCoordTran, m_pDocument));
        if (select->OnLButtonDown(nFlags, point) != RS_Continue) {
            // An object has just been selected: no grip is taken by the same click.
            return RS_Continue;
        }
    }
    if (!engine.IsAlive()) {
        return RS_Continue;
    }
    CToolOwner grip = Registered(new CCommandSelectGripPoint(m_pWnd, m_pGraphic, m_pCoordTran, m_pDocument));
    const ResultState taken = grip->OnLButtonDown(nFlags, point);
    if (taken != RS_Continue && engine.IsAlive()) {
        CheckResultState(grip.release(), taken);
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager::OnDefaultSetCursor(CWnd*, unsigned int, unsigned int) {
    if (m_hDefaultCursor == nullptr) {
        return RS_Continue;
    }
    ::SetCursor(m_hDefaultCursor);
    return RS_Done;
}

int CCommandOperationManager::SetCommand(CCommandOperation* op, int inCommand) {
    if (op != m_pCommand) {
        CToolOwner owner(op);
        if (!MakeRoom(false)) {
            return 0;
        }
        m_Events->ended.reserve(m_Events->ended.size() + 1);
        m_pCommand = owner.release();
        const bool paste = op != nullptr && op->IsKindOf(RUNTIME_CLASS(COperationPlaceObjects)) != 0;
        m_Chinese = paste ? L"粘贴" : nullptr;
        m_English = paste ? L"Paste" : nullptr;
        if (op != nullptr) {
            OnToolBegun(op);
        }
    }
    m_InCommand = inCommand;
    if (op != nullptr) {
        const CEventScope scope(m_Events);
        op->SetOsnapMode(m_OsnapMode);
    }
    m_GripPoints.RemoveAll();
    return 1;
}

void CCommandOperationManager::CheckResultState(ResultState state) {
    if (state != RS_Continue && state != RS_Capture) {
        const CEventScope scope(m_Events);
        const ToolEnd how = state == RS_Cancelled ? ToolEnd::Cancelled : ToolEnd::Done;
        if (CCommandOperation* ended = TakeOutCommand(how)) {
            ended->m_Edit.DestroyWindow();
        }
    }
}

// Compatibility 99: a taken grip ignores the host's snap mode.
void CCommandOperationManager::CheckResultState(CCommandOperation* op, ResultState state) {
    if (state != RS_Capture) {
        return;
    }
    if (op != m_pCommand) {
        CToolOwner owner(op);
        if (!MakeRoom(true)) {
            return;
        }
        m_Events->ended.reserve(m_Events->ended.size() + 1);
        m_pCommand = owner.release();
        const bool grip = m_pCommand->IsKindOf(RUNTIME_CLASS(CCommandSelectGripPoint)) != 0;
        m_Chinese = grip ? L"夹点编辑" : nullptr;
        m_English = grip ? L"Grip edit" : nullptr;
        if (op != nullptr) {
            OnToolBegun(op);
        }
    }
    m_InCommand = 1;
}

CCommandOperation* CCommandOperationManager::CurrentTool() {
    FollowDocument();
    if (m_pCommand != nullptr) {
        m_pCommand->FollowDocument();
        if (m_pCommand->HasLostObject()) {
            // Without Cancel, which may touch the objects.
            TakeOutCommand(ToolEnd::Lost);
        }
    }
    return m_pCommand;
}

CCommandOperation* CCommandOperationManager::RunningTool() {
    CCommandOperation* op = CurrentTool();
    return m_InCommand != 0 ? op : nullptr;
}

CCommandOperation* CCommandOperationManager::TakeOutCommand(ToolEnd how) {
    // The tool is taken out before it is cancelled and its edit box destroyed: both may send messages, and the code
    // that runs then must not find a tool that is ending.
    CCommandOperation* op = m_pCommand;
    m_InCommand = 0;
    m_pCommand = nullptr;
    if (op != nullptr) {
        op->m_Alive.End();
        m_Events->ended.emplace_back(op);
        m_Events->Change(m_Chinese, m_English);
        if (Options().repaintsAtEnd) {
            RequestRedraw();
        }
        OnToolEnded(op, how);
    }
    return op;
}

void CCommandOperationManager::OnToolBegun(CCommandOperation*) {}

void CCommandOperationManager::OnToolEnded(CCommandOperation*, ToolEnd) {}

bool CCommandOperationManager::MakeRoom(bool byOnCancel) {
    const CKxAliveToken engine(m_Alive);
    // A host may answer the end of a tool by starting another one, which has to be ended too.
    while (engine.IsAlive() && m_pCommand != nullptr) {
        const CEventScope scope(m_Events);
        if (CurrentTool() == nullptr) {
            break;
        }
        CCommandOperation* ended = TakeOutCommand(ToolEnd::Cancelled);
        if (byOnCancel) {
            ended->OnCancel();
        } else {
            ended->Cancel();
        }
        ended->m_Edit.DestroyWindow();
    }
    return engine.IsAlive();
}
