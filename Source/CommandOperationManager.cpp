// CCommandOperationManager: routing of events, commands and the default click. Layer: manager.

#include "CommandOperationManager.h"

#include "CommandSelectGripPoint.h"
#include "CommandSelectObj.h"
#include "CommandWords.h"
#include "Document.h"
#include "MemoryInfo.h"
#include "VectorGraphic.h"

IMPLEMENT_DYNAMIC(CCommandOperationManager, CCommandOperation)

namespace {

// Deregisters and deletes a tool on every way out, until it has found its owner.
class CToolOwner {
public:
    explicit CToolOwner(CCommandOperation* op) : m_pOp(op) {}
    ~CToolOwner() {
        if (m_pOp != nullptr) {
            KX_REMOVE_MEMORY(m_pOp);
            delete m_pOp;
        }
    }
    CToolOwner(const CToolOwner&) = delete;
    CToolOwner& operator=(const CToolOwner&) = delete;
    CCommandOperation* operator->() const { return m_pOp; }
    CCommandOperation* Release() {
        CCommandOperation* op = m_pOp;
        m_pOp = nullptr;
        return op;
    }

private:
    CCommandOperation* m_pOp;
};

} // namespace

CCommandOperationManager::CCommandOperationManager(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                                   CGraphicDocument* document)
    : CCommandOperation(wnd, graphic, tran, document),
      m_hDefaultCursor(::LoadCursor(VectorViewModule(), MAKEINTRESOURCE(kCursorDefault))) {}

CCommandOperationManager::~CCommandOperationManager() {
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

void CCommandOperationManager::Execute() {
    if (m_pCommand != nullptr) {
        m_pCommand->Execute();
    }
}

void CCommandOperationManager::Cancel() {
    if (m_pCommand != nullptr) {
        const CToolOwner ended(TakeOutCommand());
        ended->Cancel();
    }
}

// What a tool does in its handlers may open a modal box or send messages, and what runs there may end the tool, start
// another or take the view away: behind each call, a tool that is gone gets nothing more, and its answer is not for the
// next one; a manager that is gone touches nothing.

CCommandOperation::ResultState CCommandOperationManager::OnLButtonDown(unsigned int nFlags, CGePoint2d point) {
    const CPoint pixel(Truncate(point.x), Truncate(point.y));
    point = ToDrawing(point);
    GetInTrackGripPoint(pixel, point);
    // Tracking ends at every click. Standing assistant lines are forgotten, not erased: they go with the next repaint.
    m_GripPoints.RemoveAll();
    m_AssistantPoints.RemoveAll();
    if (!IsRunning()) {
        OnDefaultLButtonDown(nFlags, point);
        return RS_Continue;
    }
    CCommandOperation* op = m_pCommand;
    const CLifeWatch watch(op, this);
    CGePoint2d hit;
    if (op->GetGripPoint(point, hit) != 0) {
        point = hit;
    }
    const ResultState state = op->OnLButtonDown(nFlags, point);
    if (!watch.IsGone()) {
        op->OnButtonDownForL(nFlags, pixel);
    }
    if (!watch.IsGone()) {
        CheckResultState(state);
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager::OnLButtonUp(unsigned int nFlags, CGePoint2d point) {
    point = ToDrawing(point);
    // The manager's own search, in its own mode, and not the tool's: unlike a press, and meant so.
    CGePoint2d hit;
    if (GetGripPoint(point, hit) != 0) {
        point = hit;
    }
    if (IsRunning()) {
        const CLifeWatch watch(m_pCommand, this);
        const ResultState state = m_pCommand->OnLButtonUp(nFlags, point);
        if (!watch.IsGone()) {
            CheckResultState(state);
        }
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager::OnMouseMove(unsigned int nFlags, CGePoint2d point) {
    const CGePoint2d pixel = point;
    point = ToDrawing(point);
    const CLifeWatch manager(this, nullptr);
    if (IsRunning()) {
        CCommandOperation* op = m_pCommand;
        const CLifeWatch watch(op, this);
        CGePoint2d hit;
        if (op->GetGripPoint(point, hit) != 0) {
            point = hit;
            AddGripPoint(point);
        }
        op->OnMouseMove(nFlags, point);
        if (!watch.IsGone()) {
            op->OnMouseMoveForL(nFlags, CPoint(Truncate(pixel.x), Truncate(pixel.y)));
        }
    }
    if (manager.IsGone()) {
        return RS_Continue;
    }
    if ((nFlags & MK_MBUTTON) != 0) {
        const CGeVector2d d = pixel - m_MButtonPoint;
        m_pCoordTran->Pan(d);
        m_MButtonPoint = pixel;
        if (m_pCommand != nullptr) {
            m_pCommand->RefreshGrip();
        }
        RequestRedraw();
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager::OnMouseWheel(unsigned int nFlags, short zDelta,
                                                                      CGePoint2d point) {
    // The wheel's point comes in screen coordinates and is taken for client pixels all the same: previews jump by the
    // window's place on the screen until the next move. Hosts see it so.
    point = ToDrawing(point);
    if (IsRunning()) {
        CCommandOperation* op = m_pCommand;
        const CLifeWatch watch(op, this);
        op->OnMouseWheel(nFlags, zDelta, point);
        if (!watch.IsGone()) {
            op->OnMouseMove(nFlags, point);
        }
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager::OnRButtonDown(unsigned int nFlags, CGePoint2d point) {
    point = ToDrawing(point);
    if (IsRunning()) {
        const CLifeWatch watch(m_pCommand, this);
        const ResultState state = m_pCommand->OnRButtonDown(nFlags, point);
        if (!watch.IsGone()) {
            CheckResultState(state);
        }
    }
    return RS_Continue;
}

CCommandOperation::ResultState CCommandOperationManager::OnKeyDown(unsigned int nChar, unsigned int nRepCnt,
                                                                   unsigned int nFlags) {
    if (IsRunning()) {
        m_pCommand->OnKeyDown(nChar, nRepCnt, nFlags);
        return RS_Continue;
    }
    if (m_pCommand == nullptr) {
        // Any key at all: this is how the user deselects.
        m_pDocument->RemoveAllSelected();
        RequestRedraw();
        EmptyPropertyDialog();
    }
    return RS_Continue;
}

void CCommandOperationManager::PreRedraw() {
    // The repaint wipes the band.
    m_ShirrDrawn = 0;
    if (m_pCommand != nullptr) {
        m_pCommand->PreRedraw();
    }
}

CCommandOperation::ResultState CCommandOperationManager::OnSetCursor(CWnd* wnd, unsigned int nHitTest,
                                                                     unsigned int message) {
    if (IsRunning()) {
        return m_pCommand->OnSetCursor(wnd, nHitTest, message);
    }
    return OnDefaultSetCursor(wnd, nHitTest, message) == RS_Done ? RS_Done : RS_Continue;
}

void CCommandOperationManager::SetInEdit(int inEdit) {
    if (m_pCommand != nullptr) {
        m_pCommand->SetInEdit(inEdit);
    }
}

void CCommandOperationManager::SetOsnapMode(int mode) {
    m_OsnapMode = mode;
    if (m_pCommand != nullptr) {
        m_pCommand->SetOsnapMode(mode);
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
    CCommandOperation* op = row->create(m_pWnd, m_pGraphic, m_pCoordTran, m_pGraphic->GetDocument());
    KX_ADD_MEMORY(op);
    switch (row->running) {
    case CommandRunning::Installed:
        return SetCommand(op, 1);
    case CommandRunning::AtOnce: {
        const CToolOwner owner(op);
        owner->Execute();
        return 0;
    }
    case CommandRunning::AtOnceAndKept:
        op->Execute();
        return 0;
    }
    return 0;
}

CCommandOperation::ResultState CCommandOperationManager::OnDefaultLButtonDown(unsigned int nFlags, CGePoint2d point) {
    const CLifeWatch manager(this, nullptr);
    {
        CCommandOperation* op = new CCommandSelectObj(m_pWnd, m_pGraphic, m_pCoordTran, m_pDocument);
        KX_ADD_MEMORY(op);
        const CToolOwner select(op);
        if (select->OnLButtonDown(nFlags, point) != RS_Continue) {
            // An object has just been selected: no grip is taken by the same click.
            return RS_Continue;
        }
    }
    if (manager.IsGone()) {
        return RS_Continue;
    }
    CCommandOperation* op = new CCommandSelectGripPoint(m_pWnd, m_pGraphic, m_pCoordTran, m_pDocument);
    KX_ADD_MEMORY(op);
    CToolOwner grip(op);
    const ResultState taken = grip->OnLButtonDown(nFlags, point);
    if (taken != RS_Continue && !manager.IsGone()) {
        CheckResultState(grip.Release(), taken);
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
    CToolOwner owner(op);
    if (!MakeRoom(false)) {
        return 0;
    }
    m_InCommand = inCommand;
    m_pCommand = owner.Release();
    op->SetOsnapMode(m_OsnapMode);
    m_GripPoints.RemoveAll();
    return 1;
}

void CCommandOperationManager::CheckResultState(ResultState state) {
    if (state != RS_Continue && state != RS_Capture) {
        const CToolOwner ended(TakeOutCommand());
    }
}

void CCommandOperationManager::CheckResultState(CCommandOperation* op, ResultState state) {
    if (state != RS_Capture) {
        return;
    }
    CToolOwner owner(op);
    if (MakeRoom(true)) {
        m_InCommand = 1;
        m_pCommand = owner.Release();
    }
}

CCommandOperation* CCommandOperationManager::TakeOutCommand() {
    // Before it is cancelled or deleted: either may send messages, and what runs there finds no tool that is ending.
    CCommandOperation* op = m_pCommand;
    m_InCommand = 0;
    m_pCommand = nullptr;
    return op;
}

bool CCommandOperationManager::MakeRoom(bool byOnCancel) {
    const CLifeWatch manager(this, nullptr);
    // A host may answer the end of a tool by starting another one: that one has to go as well.
    while (!manager.IsGone() && m_pCommand != nullptr) {
        const CToolOwner ended(TakeOutCommand());
        if (byOnCancel) {
            ended->OnCancel();
        } else {
            ended->Cancel();
        }
    }
    return !manager.IsGone();
}
