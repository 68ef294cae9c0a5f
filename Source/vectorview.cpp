#include "vectorview.h"

#include "CommandOperationManager.h"
#include "Dialog_DrawAbleProperty.h"
#include "DrawingHistory.h"
#include "MemDC.h"
#include "MemoryInfo.h"
#include "ResourceScope.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(CVectorView, CWnd)

BEGIN_MESSAGE_MAP(CVectorView, CWnd)
    ON_WM_CREATE()
    ON_WM_NCDESTROY()
    ON_WM_SIZE()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_MOUSEMOVE()
    ON_WM_RBUTTONDOWN()
    ON_WM_MBUTTONDOWN()
    ON_WM_MBUTTONUP()
    ON_WM_MBUTTONDBLCLK()
    ON_WM_MOUSEWHEEL()
    ON_WM_KEYDOWN()
    ON_WM_SETCURSOR()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
END_MESSAGE_MAP()

namespace {

constexpr double kWheelIn = 0.8; // For each message, whatever its delta.
constexpr double kWheelOut = 1.2;
constexpr double kLeastPixels = 50.0; // The least extent of the whole drawing on the screen.

// The messages about a failed paint. An MFC exception first shows its own.
void ReportPaintFailure(CException* e, LPCTSTR text) {
    if (e != nullptr) {
        e->ReportError(MB_OK, 0);
        e->Delete();
    }
    AfxMessageBox(text);
}

} // namespace

// ---- Construction --------------------------------------------------------------------------------------------------

CVectorView::CVectorView() {
    m_Graphic.SetVectorViewCoordTran(&m_CoordTran);
    CVectorView::OnCreateCommandOperationManager();
}

CVectorView::~CVectorView() {
    // The engine is freed first, while the document still exists.
    FreeCommandOperationManager();
    if (m_pDlgDrawAbleProperty != nullptr && m_pDlgDrawAbleProperty->GetSafeHwnd() != nullptr) {
        m_pDlgDrawAbleProperty->SendMessage(WM_CLOSE);
    }
    // Deregistered also when it is null.
    KX_REMOVE_MEMORY(m_pDlgDrawAbleProperty);
    delete m_pDlgDrawAbleProperty;
}

int CVectorView::Create(const wchar_t* className, const wchar_t* windowName, unsigned long style, const RECT& rect,
                        CWnd* parent, unsigned int id, CCreateContext* context) {
    return CWnd::Create(className, windowName, style, rect, parent, id, context);
}

// ---- The view as a whole -------------------------------------------------------------------------------------------

int CVectorView::VectorPaint(CDC* dc) {
    LPCTSTR failure = L"CVectorView::VectorPaint() 错误";
    try {
        const CKxAliveToken alive(m_Alive);
        PreRedrawEngine();
        m_Graphic.OnDraw(dc, 0);
        if (alive.IsAlive()) {
            ReturnPreview();
        }
        return 1;
    } catch (CException* e) {
        ReportPaintFailure(e, failure);
    } catch (...) {
        ReportPaintFailure(nullptr, failure);
    }
    return 0;
}

int CVectorView::LoadFile(unsigned char* data, unsigned int size) {
    if (m_pDlgDrawAbleProperty != nullptr && data != nullptr && size != 0) {
        // The object that it shows is freed with the old drawing.
        m_pDlgDrawAbleProperty->LoadObject(nullptr);
    }
    return GetDocument()->OpenDocument(data, size);
}

void CVectorView::DoCommand(CString word) {
    // Commands and files show message boxes, and a host may close the window while one is open.
    const CKxAliveToken alive(m_Alive);
    if (CCommandOperationManager* manager = Manager()) {
        manager->DoCommand(word);
    }
    if (!alive.IsAlive()) {
        return;
    }
    const bool classic = !GetDocument()->GetEditingOptions().modifiedByChange;
    if (word == L"open") {
        const INT_PTR before = GetDocument()->GetDrawableObjs()->GetSize();
        {
            const CHistoryGroup step(GetHistory(), L"打开", L"Open");
            GetDocument()->OpenDocument();
        }
        if (!alive.IsAlive()) {
            return;
        }
        RepaintAll();
        if (!classic && GetDocument()->GetDrawableObjs()->GetSize() != before) {
            GetDocument()->SetModifiedFlag(TRUE);
        }
    }
    if (word == L"save") {
        GetDocument()->DoFileSave();
        if (!alive.IsAlive()) {
            return;
        }
    }
    // Compatibility 106: every word marks the document as modified.
    if (classic) {
        GetDocument()->SetModifiedFlag(TRUE);
    }
}

void CVectorView::ZoomAll() {
    if (m_hWnd == nullptr) {
        return;
    }
    CRect rect;
    GetClientRect(&rect);
    m_Graphic.ZoomAll(rect);
    RepaintAll();
}

void CVectorView::ReturnPreview() {
    if (CCommandOperationManager* manager = Manager()) {
        manager->ReturnPreview();
    }
}

void CVectorView::RepaintAll() {
    // Without a window the whole desktop would be repainted.
    if (m_hWnd != nullptr) {
        InvalidateRect(nullptr, TRUE);
    }
}

// ---- What the engine's tools ask of their window -------------------------------------------------------------------

CCommandOperationManager* CVectorView::Manager() {
    return DYNAMIC_DOWNCAST(CCommandOperationManager, m_pManager);
}

CCommandOperation* CVectorView::OperationEngine() {
    return Manager();
}

bool CVectorView::IsOperationOrtho() {
    CCommandOperationManager* manager = Manager();
    return manager != nullptr && manager->GetDrawObjLatus() != 0;
}

void CVectorView::TrackOperationGrip(const CGePoint2d& point) {
    if (CCommandOperationManager* manager = Manager()) {
        manager->AddGripPoint(point);
    }
}

void CVectorView::EndOperation() {
    if (CCommandOperationManager* manager = Manager()) {
        manager->CheckResultState(CCommandOperation::RS_Done);
    }
}

void CVectorView::ShowOperationObject(CDrawable* object) {
    if (m_pDlgDrawAbleProperty == nullptr) {
        return;
    }
    if (object == nullptr) {
        m_pDlgDrawAbleProperty->LoadObject(nullptr);
        return;
    }
    m_pDlgDrawAbleProperty->SetObject(object);
    if (m_pDlgDrawAbleProperty->GetSafeHwnd() != nullptr) {
        ::InvalidateRect(m_pDlgDrawAbleProperty->m_hWnd, nullptr, TRUE);
    }
}

// ---- Hooks ---------------------------------------------------------------------------------------------------------

void CVectorView::OnCreateCommandOperationManager() {
    m_pManager = new CCommandOperationManager(this, &m_Graphic, &m_CoordTran, GetDocument());
    KX_ADD_MEMORY(m_pManager);
}

int CVectorView::DrawSpecInfo(CDC*, int) {
    return 1;
}

void CVectorView::FreeCommandOperationManager() {
    // The pointer is cleared first: messages that come while the engine is being freed find none.
    CCommandOperation* manager = m_pManager;
    m_pManager = nullptr;
    if (manager != nullptr) {
        KX_REMOVE_MEMORY(manager);
        delete manager;
    }
}

void CVectorView::PreRedrawEngine() {
    if (m_pManager != nullptr) {
        m_pManager->PreRedraw();
    }
}

// ---- Window messages: life and paint -------------------------------------------------------------------------------

int CVectorView::OnCreate(LPCREATESTRUCT) {
    return Default() == -1 ? -1 : 0;
}

void CVectorView::OnNcDestroy() {
    m_Alive.End();
    CWnd::OnNcDestroy();
}

// Compatibility 3: resizing leaves the mapping alone.
void CVectorView::OnSize(UINT, int, int) {
    // The mapping keeps its old screen size until the next fit: the host calls ZoomAll when it wants one.
    Default();
}

void CVectorView::OnPaint() {
    LPCTSTR failure = L"CVectorView::OnPaint() 错误";
    bool begun = false;
    bool painted = false;
    // When the failure happened before BeginPaint, the window is still invalid: it would be painted again while the
    // message box is open, and fail again.
    const HWND window = m_hWnd;
    const auto validate = [&] {
        if (!begun) {
            ::ValidateRect(window, nullptr);
        }
    };
    // A failure of the drawing is shown in a message box of its own, and a host may free the view meanwhile.
    const CKxAliveToken alive(m_Alive);
    try {
        PreRedrawEngine();
        CPaintDC paint(this);
        begun = true;
        CMemDC memory(&paint);
        m_Graphic.OnDraw(&memory, 1);
        if (alive.IsAlive()) {
            DrawSpecInfo(&memory, 1);
        }
        painted = true;
    } catch (CException* e) {
        validate();
        ReportPaintFailure(e, failure);
    } catch (...) {
        validate();
        ReportPaintFailure(nullptr, failure);
    }
    // Only now has the off-screen picture been copied to the window.
    if (painted && alive.IsAlive()) {
        ReturnPreview();
    }
}

BOOL CVectorView::OnEraseBkgnd(CDC*) {
    return TRUE; // The paint loop clears.
}

// ---- Window messages: mouse and keys -------------------------------------------------------------------------------
// Nothing captures the mouse: a button released outside the window is never seen.

template <class Call>
LRESULT CVectorView::TellEngineThenDefault(Call call) {
    const CKxAliveToken alive(m_Alive);
    if (m_pManager != nullptr) {
        call();
    }
    // A host may have destroyed the window meanwhile, or freed the view.
    return alive.IsAlive() && m_hWnd != nullptr ? Default() : 0;
}

// Compatibility 4: the mouse is never captured.
void CVectorView::OnLButtonDown(UINT nFlags, CPoint point) {
    TellEngineThenDefault([&] { m_pManager->OnLButtonDown(nFlags, CGePoint2d(point)); });
}

void CVectorView::OnLButtonUp(UINT nFlags, CPoint point) {
    TellEngineThenDefault([&] { m_pManager->OnLButtonUp(nFlags, CGePoint2d(point)); });
}

void CVectorView::OnLButtonDblClk(UINT, CPoint) {
    // The engine is not called: it gets a double click as two presses and releases.
    const CResourceScope resources(VectorViewModule());
    Default();
}

void CVectorView::OnMouseMove(UINT nFlags, CPoint point) {
    TellEngineThenDefault([&] { m_pManager->OnMouseMove(nFlags, CGePoint2d(point)); });
}

void CVectorView::OnRButtonDown(UINT nFlags, CPoint point) {
    TellEngineThenDefault([&] { m_pManager->OnRButtonDown(nFlags, CGePoint2d(point)); });
}

void CVectorView::OnMButtonDown(UINT nFlags, CPoint point) {
    TellEngineThenDefault([&] {
        if (auto* manager = DYNAMIC_DOWNCAST(CCommandOperationManager, m_pManager)) {
            manager->OnMButtonDown(nFlags, CGePoint2d(point));
        }
    });
}

void CVectorView::OnMButtonUp(UINT, CPoint) {
    Default();
}

void CVectorView::OnMButtonDblClk(UINT, CPoint) {
    ZoomAll();
    Default();
}

BOOL CVectorView::OnMouseWheel(UINT nFlags, short zDelta, CPoint point) {
    CPoint cursor;
    ::GetCursorPos(&cursor);
    ScreenToClient(&cursor);
    CGePoint2d min;
    CGePoint2d max;
    if (GetDocument()->GetRect(min, max) == 0) {
        return static_cast<BOOL>(Default());
    }
    const double extent = std::max(max.x - min.x, max.y - min.y);
    // Compatibility 2: any wheel delta counts as one step.
    const double newScale = static_cast<double>(m_CoordTran.GetScale()) * (zDelta >= 0 ? kWheelIn : kWheelOut);
    if (extent / newScale > kLeastPixels) {
        CVectorViewCoordTran zoomed = m_CoordTran;
        zoomed.SetScale(cursor, static_cast<float>(newScale));
        m_CoordTran.TakeIfFinite(zoomed);
    }
    RepaintAll();
    // Compatibility 1: the wheel's point is in screen coordinates.
    // It is passed on unconverted.
    if (GetDocument()->GetEditingOptions().previewsReturn) {
        ScreenToClient(&point);
    }
    return static_cast<BOOL>(
        TellEngineThenDefault([&] { m_pManager->OnMouseWheel(nFlags, zDelta, CGePoint2d(point)); }));
}

void CVectorView::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) {
    TellEngineThenDefault([&] { m_pManager->OnKeyDown(nChar, nRepCnt, nFlags); });
}

BOOL CVectorView::OnSetCursor(CWnd* wnd, UINT nHitTest, UINT message) {
    AFX_MANAGE_STATE(AfxGetAppModuleState());
    if (m_pManager != nullptr && static_cast<int>(m_pManager->OnSetCursor(wnd, nHitTest, message)) == 1) {
        return TRUE;
    }
    return static_cast<BOOL>(Default());
}

void CVectorView::OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* scrollBar) {
    CWnd::OnHScroll(nSBCode, nPos, scrollBar);
}

void CVectorView::OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* scrollBar) {
    CWnd::OnVScroll(nSBCode, nPos, scrollBar);
}
