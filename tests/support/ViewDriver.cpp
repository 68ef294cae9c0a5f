#include "ViewDriver.h"

#include "Arc.h"
#include "Document.h"
#include "MemoryInfo.h"
#include "OperationCreateObjAb.h"
#include "TextParm.h"
#include "VectorLabel.h"
#include "support/PrivateFields.h"

#include <gtest/gtest.h>

#include <algorithm>

// ---- The watcher ---------------------------------------------------------------------------------------------------

// Forwards everything. The engine frees both when the outermost event is over.
class SpyTool : public CCommandOperation {
public:
    SpyTool(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran, CGraphicDocument* document,
            CCommandOperation* inner, std::vector<std::string>& results)
        : CCommandOperation(wnd, graphic, tran, document), m_Inner(inner), m_Results(results) {}
    ~SpyTool() override {
        KX_REMOVE_MEMORY(m_Inner);
        delete m_Inner;
    }

    void Execute() override { m_Inner->Execute(); }
    void Cancel() override {
        PeekAt(*m_Inner, ToolAlive()).End(); // The engine does the same with a tool of its own.
        m_Inner->Cancel();
    }
    ResultState OnLButtonDown(unsigned int f, CGePoint2d p) override {
        return Note("down", [&] { return m_Inner->OnLButtonDown(f, p); });
    }
    ResultState OnLButtonUp(unsigned int f, CGePoint2d p) override {
        return Note("up", [&] { return m_Inner->OnLButtonUp(f, p); });
    }
    int RefreshGrip() override { return m_Inner->RefreshGrip(); }
    ResultState OnMouseMove(unsigned int f, CGePoint2d p) override {
        return Note("move", [&] { return m_Inner->OnMouseMove(f, p); });
    }
    ResultState OnMouseWheel(unsigned int f, short d, CGePoint2d p) override {
        return Note("wheel", [&] { return m_Inner->OnMouseWheel(f, d, p); });
    }
    ResultState OnRButtonDown(unsigned int f, CGePoint2d p) override {
        return Note("right", [&] { return m_Inner->OnRButtonDown(f, p); });
    }
    ResultState OnKeyDown(unsigned int c, unsigned int n, unsigned int f) override {
        return Note("key", [&] { return m_Inner->OnKeyDown(c, n, f); });
    }
    ResultState OnCancel() override { return m_Inner->OnCancel(); }
    ResultState OnMouseMoveForL(unsigned int f, CPoint p) override { return m_Inner->OnMouseMoveForL(f, p); }
    ResultState OnButtonDownForL(unsigned int f, CPoint p) override { return m_Inner->OnButtonDownForL(f, p); }
    void PreRedraw() override { m_Inner->PreRedraw(); }
    ResultState OnSetCursor(CWnd* w, unsigned int h, unsigned int m) override { return m_Inner->OnSetCursor(w, h, m); }
    void SetInEdit(int inEdit) override { m_Inner->SetInEdit(inEdit); }
    int GetGripPoint(CGePoint2d p, CGePoint2d& r) override { return m_Inner->GetGripPoint(p, r); }
    void SetOsnapMode(int mode) override { m_Inner->SetOsnapMode(mode); }

    CCommandOperation* Inner() { return m_Inner; }

private:
    template <typename F>
    ResultState Note(const char* event, F call) {
        const ResultState state = call();
        m_Results.push_back(std::string(event) + " " + std::to_string(static_cast<int>(state)));
        return state;
    }

    CCommandOperation* m_Inner;
    std::vector<std::string>& m_Results;
};

namespace {

int DifferenceOutside(const CRect& left, const Picture& a, const Picture& b) {
    int count = 0;
    for (int y = 0; y < a.height; ++y) {
        for (int x = 0; x < a.width; ++x) {
            count += !left.PtInRect(CPoint(x, y)) && a.At(x, y) != b.At(x, y) ? 1 : 0;
        }
    }
    return count;
}

} // namespace

// ---- Events --------------------------------------------------------------------------------------------------------

ViewDriver::ViewDriver() = default;

ViewDriver::ViewDriver(CSize client) : ViewHost(client) {}

ViewDriver::~ViewDriver() {
    Manager().Cancel();
}

void ViewDriver::Start(LPCTSTR word) {
    view.DoCommand(word);
    Watch();
}

void ViewDriver::Watch() {
    CCommandOperation*& tool = PeekAt<CCommandOperation>(Manager(), RunningTool());
    if (tool != nullptr && dynamic_cast<SpyTool*>(tool) == nullptr) {
        CCommandOperation* spy =
            new SpyTool(&view, nullptr, view.GetVectorViewCoordTran(), view.GetDocument(), tool, m_results);
        KX_ADD_MEMORY(spy);
        tool = spy;
    }
}

CPoint ViewDriver::PixelOf(double x, double y) {
    CPoint pixel;
    Tran().DPToLP(CGePoint2d(x, y), pixel);
    return pixel;
}

void ViewDriver::MoveTo(double x, double y, UINT flags) {
    Move(PixelOf(x, y), flags);
}

void ViewDriver::PressAt(double x, double y) {
    Send(WM_LBUTTONDOWN, MK_LBUTTON, PixelOf(x, y));
    // A press with no tool running may have taken a grip.
    Watch();
}

void ViewDriver::ClickAt(double x, double y) {
    PressAt(x, y);
    Send(WM_LBUTTONUP, 0, PixelOf(x, y));
}

void ViewDriver::RightAt(double x, double y) {
    RightClick(PixelOf(x, y));
}

void ViewDriver::Wheel(int delta, double x, double y) {
    CPoint screen = PixelOf(x, y);
    view.ClientToScreen(&screen);
    ::SetCursorPos(screen.x, screen.y);
    Send(WM_MOUSEWHEEL, MAKEWPARAM(0, delta), screen);
}

void ViewDriver::MiddleDrag(double x1, double y1, double x2, double y2) {
    const CPoint from = PixelOf(x1, y1);
    const CPoint to = PixelOf(x2, y2);
    Send(WM_MBUTTONDOWN, MK_MBUTTON, from);
    Move(to, MK_MBUTTON);
    Send(WM_MBUTTONUP, 0, to);
}

// ---- The state -----------------------------------------------------------------------------------------------------

CCommandOperationManager& ViewDriver::Manager() {
    return *static_cast<CCommandOperationManager*>(view.GetCommandOperationManager());
}

CCommandOperation* ViewDriver::Tool() {
    CCommandOperation* tool = PeekAt<CCommandOperation>(Manager(), RunningTool());
    auto* spy = dynamic_cast<SpyTool*>(tool);
    return spy != nullptr ? spy->Inner() : tool;
}

bool ViewDriver::IsRunning() {
    return Tool() != nullptr && PeekAt(Manager(), InCommand()) != 0;
}

std::string ViewDriver::ToolName() {
    CCommandOperation* tool = Tool();
    return tool != nullptr ? tool->GetRuntimeClass()->m_lpszClassName : "";
}

std::string ViewDriver::TakeResults() {
    std::string text;
    for (const std::string& result : m_results) {
        text += (text.empty() ? "" : ", ") + result;
    }
    m_results.clear();
    return text;
}

int ViewDriver::ClickCount() {
    auto* tool = DYNAMIC_DOWNCAST(COperationCreateObjAb, Tool());
    return tool != nullptr ? PeekAt(*tool, Clicks()) : -1;
}

int ViewDriver::Step() {
    return Tool() != nullptr ? PeekAt(*Tool(), ToolStep()) : -1;
}

bool ViewDriver::IsBandDrawn() {
    return PeekAt<CCommandOperation>(Manager(), BandDrawn()) != 0;
}

CPoint ViewDriver::BandStart() {
    return PeekAt<CCommandOperation>(Manager(), BandFrom());
}

CPoint ViewDriver::BandEnd() {
    return PeekAt<CCommandOperation>(Manager(), BandTo());
}

int ViewDriver::BandPenStyle() {
    return PeekAt<CCommandOperation>(Manager(), BandStyle());
}

bool ViewDriver::IsMarkDrawn() {
    return Tool() != nullptr && PeekAt(*Tool(), MarkDrawn()) != 0;
}

CGePoint2d ViewDriver::Mark() {
    return PeekAt(*Tool(), MarkAt());
}

CGePoint2d ViewDriver::LastPoint() {
    return PeekAt(*Tool(), AcceptedPoint());
}

std::vector<CGePoint2d> ViewDriver::Tracked() {
    const CGePointArray& grips = PeekAt(Manager(), TrackedGrips());
    std::vector<CGePoint2d> result;
    for (INT_PTR i = 0; i < grips.GetSize(); ++i) {
        result.push_back(grips.GetAt(i));
    }
    return result;
}

INT_PTR ViewDriver::AssistantEnds() {
    return PeekAt(Manager(), Assistants()).GetSize();
}

HWND ViewDriver::EditBox() {
    if (Tool() == nullptr) {
        return nullptr;
    }
    HWND edit = PeekAt(*Tool(), ToolEdit()).GetSafeHwnd();
    return ::IsWindowVisible(edit) ? edit : nullptr;
}

std::string ViewDriver::EditText() {
    CString text;
    if (Tool() != nullptr) {
        PeekAt(*Tool(), ToolEdit()).GetWindowText(text);
    }
    return Utf8(text);
}

void ViewDriver::TypeInEdit(LPCTSTR text) {
    ASSERT_NE(Tool(), nullptr);
    PeekAt(*Tool(), ToolEdit()).SetWindowText(text);
}

// ---- Filling -------------------------------------------------------------------------------------------------------

CLine* ViewDriver::AddLine(double x1, double y1, double x2, double y2) {
    auto* line = new CLine;
    KX_ADD_MEMORY(line);
    line->SetStartPoint(CGePoint2d(x1, y1));
    line->SetEndPoint(CGePoint2d(x2, y2));
    Document().AddDrawAobject(line);
    return line;
}

CPLine* ViewDriver::AddPolyline(const std::vector<CGePoint2d>& points, bool closed) {
    auto* line = new CPLine;
    KX_ADD_MEMORY(line);
    for (const CGePoint2d& point : points) {
        line->AddPoint(point);
    }
    line->SetClose(closed ? 1 : 0);
    Document().AddDrawAobject(line);
    return line;
}

void ViewDriver::Select(CDrawable* object) {
    Document().AddSelected(object);
}

std::vector<BYTE> ViewDriver::Store() {
    CMemFile file;
    Document().StoreToMemFile(&file);
    std::vector<BYTE> bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

int ViewDriver::DifferenceFromFresh() {
    const CRect box = EditBoxPlace();
    const Picture seen = Take();
    return DifferenceOutside(box, seen, TakeFresh());
}

int ViewDriver::DifferenceBesideEditBox(ViewDriver& other) {
    return DifferenceOutside(other.EditBoxPlace(), Take(), other.Take());
}

CRect ViewDriver::EditBoxPlace() {
    CRect box(0, 0, 0, 0);
    if (EditBox() != nullptr) {
        ::GetWindowRect(EditBox(), &box);
        view.ScreenToClient(&box);
    }
    return box;
}

// ---- Words ---------------------------------------------------------------------------------------------------------

namespace {

std::string Figure(double value) {
    char text[40];
    snprintf(text, sizeof text, "%g", value == 0.0 ? 0.0 : value); // No negative zeros.
    return text;
}

std::string At(const CGePoint2d& p) {
    return "(" + Figure(p.x) + "," + Figure(p.y) + ")";
}

std::string Shape(CDrawable* object) {
    if (auto* line = DYNAMIC_DOWNCAST(CLine, object)) {
        return "line " + At(line->GetStartPoint()) + "-" + At(line->GetEndPoint());
    }
    if (auto* line = DYNAMIC_DOWNCAST(CPLine, object)) {
        std::string text = "pline";
        for (INT_PTR i = 0; i < line->GetPointList()->GetSize(); ++i) {
            text += " " + At(line->GetPointList()->GetAt(i));
        }
        return text;
    }
    if (auto* arc = DYNAMIC_DOWNCAST(CArc, object)) {
        return "arc " + At(arc->Center()) + " r " + Figure(arc->Radius()) + " from " + Figure(arc->GetStartAngle()) +
               " to " + Figure(arc->GetEndAngle());
    }
    if (auto* circle = DYNAMIC_DOWNCAST(CCircle, object)) {
        return "circle " + At(circle->Center()) + " r " + Figure(circle->Radius());
    }
    if (auto* text = DYNAMIC_DOWNCAST(CText, object)) {
        return (object->IsKindOf(RUNTIME_CLASS(CTextParm)) ? "textparm " : "text ") + At(text->GetPos()) + " " +
               Utf8(text->GetText());
    }
    if (auto* label = DYNAMIC_DOWNCAST(CKXVectorLabel, object)) {
        return "label " + At(label->GetLeftLabelStartPt()) + "-" + At(label->GetLeftLabelEntPt()) + " " +
               At(label->GetRightLabelStartPt()) + "-" + At(label->GetRightLabelEndPt());
    }
    return object->GetRuntimeClass()->m_lpszClassName;
}

} // namespace

std::string Words(CDrawable* object) {
    const char* const states[] = {" selected ", " dragging ", " normal "};
    return Shape(object) + states[object->GetDrawState()] + std::to_string(object->GetPenColorIndex());
}

std::string ViewDriver::AllWords() {
    std::string text;
    for (INT_PTR i = 0; i < Count(); ++i) {
        text += (i > 0 ? "; " : "") + Words(Object(i));
    }
    return text;
}

// ---- Dialogs -------------------------------------------------------------------------------------------------------

DialogScript* DialogScript::s_current = nullptr;

DialogScript::DialogScript(std::vector<Step> steps) : m_steps(std::move(steps)) {
    s_current = this;
    m_hook = ::SetWindowsHookEx(WH_CBT, Hook, nullptr, ::GetCurrentThreadId());
}

DialogScript::DialogScript(std::vector<Step> steps, Step further) : DialogScript(std::move(steps)) {
    m_further = std::move(further);
}

DialogScript::~DialogScript() {
    ::UnhookWindowsHookEx(m_hook);
    s_current = nullptr;
}

// Whether the window is a dialog that was not there before.
bool DialogScript::Notice(HWND dialog) {
    wchar_t name[16] = {};
    ::GetClassName(dialog, name, 16);
    if (std::wstring(name) != L"#32770" ||
        std::find(m_answered.begin(), m_answered.end(), dialog) != m_answered.end()) {
        return false;
    }
    m_answered.push_back(dialog);
    ++m_count;
    return true;
}

LRESULT CALLBACK DialogScript::Hook(int code, WPARAM wParam, LPARAM lParam) {
    DialogScript* script = s_current;
    const auto window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_DESTROYWND && script != nullptr) {
        auto& answered = script->m_answered;
        answered.erase(std::remove(answered.begin(), answered.end(), window), answered.end());
    } else if (code == HCBT_ACTIVATE && script != nullptr && script->Notice(window)) {
        if (script->m_count <= script->m_steps.size()) {
            script->m_steps[script->m_count - 1](window);
        } else if (script->m_further) {
            script->m_further(window);
        } else {
            ADD_FAILURE() << "a dialog too many";
            ::PostMessage(window, WM_COMMAND, IDCANCEL, 0);
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

DialogScript::Step DialogScript::Answer(int button) {
    return [=](HWND dialog) { ::PostMessage(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0); };
}

DialogScript::Step DialogScript::TypeAndAnswer(int control, std::wstring text, int button) {
    return [=](HWND dialog) {
        ::SetDlgItemText(dialog, control, text.c_str());
        ::PostMessage(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0);
    };
}
