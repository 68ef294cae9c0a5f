#include "NrvControl.h"

#include "NrvCall.h"

#include "Arc.h"
#include "CenterPoint.h"
#include "CombRect.h"
#include "CommandWords.h"
#include "Line.h"
#include "PLine.h"
#include "TextParm.h"
#include "VectorLabel.h"
#include "vectorview.h"

#include <utility>

int32_t NrvKindOf(const CDrawable* object) {
    // An arc is a circle, and a parameter is a text: the derived class is asked for first.
    const std::pair<const CRuntimeClass*, int32_t> kinds[] = {
        {RUNTIME_CLASS(CLine), NRV_KIND_LINE},
        {RUNTIME_CLASS(CArc), NRV_KIND_ARC},
        {RUNTIME_CLASS(CCircle), NRV_KIND_CIRCLE},
        {RUNTIME_CLASS(CPLine), NRV_KIND_POLYLINE},
        {RUNTIME_CLASS(CTextParm), NRV_KIND_PARM},
        {RUNTIME_CLASS(CText), NRV_KIND_TEXT},
        {RUNTIME_CLASS(CCenterPoint), NRV_KIND_CENTER_POINT},
        {RUNTIME_CLASS(CKXVectorLabel), NRV_KIND_LABEL},
        {RUNTIME_CLASS(CCombRect), NRV_KIND_FRAME},
    };
    if (object == nullptr) {
        return NRV_KIND_NONE;
    }
    for (const auto& kind : kinds) {
        if (object->IsKindOf(kind.first)) {
            return kind.second;
        }
    }
    return NRV_KIND_OTHER;
}

// ---- What it belongs to --------------------------------------------------------------------------------------------

CGraphicDocument& CNrvControl::Document() {
    return *View().GetDocument();
}

CVectorViewCoordTran& CNrvControl::Mapping() {
    return *View().GetVectorViewCoordTran();
}

CCommandOperationManager* CNrvControl::Engine() {
    return DYNAMIC_DOWNCAST(CCommandOperationManager, View().GetCommandOperationManager());
}

HWND CNrvControl::Window() {
    return IsWindow() ? View().m_hWnd : nullptr;
}

void CNrvControl::End() {
    m_Ended = true;
    m_Notes.clear();
    m_Watch.Abandon();
}

void CNrvControl::Repaint() {
    if (Window() != nullptr) {
        ::InvalidateRect(Window(), nullptr, TRUE);
    }
}

bool CNrvControl::TakeOver() {
    if (IsWindow()) {
        return true;
    }
    const DWORD own = ::GetCurrentThreadId();
    DWORD owner = 0;
    if (!m_Owner.compare_exchange_strong(owner, own) && owner != own) {
        return false;
    }
    ++m_OwnerDepth;
    return true;
}

void CNrvControl::GiveBack() {
    if (!IsWindow() && --m_OwnerDepth == 0) {
        m_Owner = 0;
    }
}

// ---- Objects -------------------------------------------------------------------------------------------------------

CDrawable* CNrvControl::Find(NrvId id) {
    CDrawable* object = m_Ids.Find(id);
    return object != nullptr && (IndexOf(object) >= 0 || IsInNet(object)) ? object : nullptr;
}

bool CNrvControl::IsInNet(CDrawable* object) {
    const CDrawableArray& net = *Document().GetNetDrawableObjs();
    for (INT_PTR i = 0; i < net.GetSize(); ++i) {
        if (net.GetAt(i) == object) {
            return true;
        }
    }
    return false;
}

INT_PTR CNrvControl::IndexOf(const CDrawable* object) {
    const CDrawableArray& objects = *Document().GetDrawableObjs();
    const INT_PTR size = objects.GetSize();
    // Guesses first: hosts go through the list, and work on the newest object.
    for (const INT_PTR guess : {m_Hint, m_Hint + 1, size - 1}) {
        if (guess >= 0 && guess < size && objects.GetAt(guess) == object) {
            return m_Hint = guess;
        }
    }
    for (INT_PTR i = 0; i < size; ++i) {
        if (objects.GetAt(i) == object) {
            return m_Hint = i;
        }
    }
    return -1;
}

CDrawable* CNrvControl::HitAt(CPoint pixel, int32_t& segment) {
    segment = -1;
    CGePoint2d point;
    Mapping().LPToDP(pixel, point);
    const bool parm = m_Kind == NRV_HANDLE_PARM_VIEW;
    const float aperture = kPickAperture * Document().GetEditingOptions().pixelScale;
    const CDrawableArray& objects = *Document().GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        CDrawable* object = objects.GetAt(i);
        const float pixels = Mapping().DToL(static_cast<double>(object->HitTest(point)));
        // A parameter view reports some kinds only, and treats a distance that is not-a-number as a hit. The other view
        // selects what may be selected.
        const bool hit = parm ? !(aperture < pixels) && NrvKindOf(object) <= NRV_KIND_TEXT
                              : object->isCanSelect() != 0 && pixels <= aperture;
        if (!hit) {
            continue;
        }
        if (auto* pline = DYNAMIC_DOWNCAST(CPLine, object)) {
            segment = pline->GetSelSelLine();
        }
        return object;
    }
    return nullptr;
}

// ---- Events --------------------------------------------------------------------------------------------------------

void CNrvControl::SetCallback(NrvCallback callback, void* user) {
    m_Callback = callback;
    m_User = user;
}

int32_t CNrvControl::Send(const CNrvNote& note, const CString* oldText) {
    NrvEvent event = {};
    event.answer = note.code == NRV_N_MESSAGE ? 0 : 1;
    if (m_Ended || !Wants(note.code)) {
        return event.answer;
    }
    const auto keep = shared_from_this();
    // The host's code runs in the program's module state, as outside of a call.
    const CNrvFrame::CHostCode hostCode;
    event.header.window = Window();
    event.header.code = note.code;
    event.size = sizeof event;
    event.source = m_Handle;
    event.id = note.id;
    event.ids = note.ids.empty() ? nullptr : note.ids.data();
    event.count = static_cast<uint32_t>(note.ids.size());
    event.text = note.text.IsEmpty() ? L"" : static_cast<LPCTSTR>(note.text);
    event.old_text = oldText != nullptr ? static_cast<LPCTSTR>(*oldText) : L"";
    event.x = note.point.x;
    event.y = note.point.y;
    event.px = static_cast<int32_t>(note.pixel.x);
    event.py = static_cast<int32_t>(note.pixel.y);
    event.kind = note.kind;
    event.segment = note.segment;
    event.reason = note.reason;
    event.hdc = note.dc;
    const HWND window = Window();
    if (window != nullptr) {
        event.header.identity = static_cast<uintptr_t>(::GetDlgCtrlID(window));
    }
    if (m_Callback != nullptr) {
        m_Callback(&event, m_User);
    }
    const HWND parent = !m_Ended && Window() != nullptr ? ::GetParent(window) : nullptr;
    if (parent != nullptr) {
        ::SendMessageW(parent, WM_NOTIFY, event.header.identity, reinterpret_cast<LPARAM>(&event));
    }
    return event.answer;
}

void CNrvControl::Queue(CNrvNote note) {
    if (!m_Ended && Wants(note.code)) {
        m_Notes.push_back(std::move(note));
    }
}

void CNrvControl::QueueSelection() {
    const CDrawableArray& selected = *Document().GetSelectedDrawableObjs();
    const auto size = static_cast<size_t>(selected.GetSize());
    bool same = size == m_Selection.size();
    for (size_t i = 0; same && i < size; ++i) {
        same = selected.GetAt(static_cast<INT_PTR>(i)) == m_Selection[i];
    }
    if (same) {
        return;
    }
    CNrvNote note(NRV_N_SELECTION);
    m_Selection.clear();
    for (size_t i = 0; i < size; ++i) {
        CDrawable* object = selected.GetAt(static_cast<INT_PTR>(i));
        m_Selection.push_back(object);
        if (Wants(NRV_N_SELECTION)) {
            note.ids.push_back(m_Ids.IdOf(object));
        }
    }
    Queue(std::move(note));
}

void CNrvControl::Settle() {
    const auto keep = shared_from_this();
    while (!m_Ended) {
        QueueEnd();
        QueueSelection();
        if (m_Notes.empty()) {
            return;
        }
        const CNrvNote note = std::move(m_Notes.front());
        m_Notes.pop_front();
        Send(note);
    }
}

bool CNrvControl::Changing(int32_t reason, std::vector<NrvId> ids, LPCTSTR word) {
    CNrvNote note(NRV_N_CHANGING);
    note.reason = reason;
    note.ids = std::move(ids);
    note.text = word;
    Send(note);
    return !m_Ended;
}

void CNrvControl::Changed(int32_t reason, std::vector<NrvId> ids) {
    Document().SetModifiedFlag(TRUE);
    Repaint();
    MarkStep(reason, ids);
    CNrvNote note(NRV_N_CHANGED);
    note.reason = reason;
    note.ids = std::move(ids);
    Queue(std::move(note));
}

void CNrvControl::MarkStep(int32_t reason, const std::vector<NrvId>& ids) {
    CDrawingHistory* history = View().GetHistory();
    if (history == nullptr) {
        return;
    }
    switch (reason) {
    case NRV_CHANGE_MODIFIED:
        history->MarkChanged(ids.size() == 1 ? m_Ids.Find(ids.front()) : nullptr, L"修改对象", L"Change object");
        break;
    case NRV_CHANGE_REMOVED:
        history->Mark(L"删除对象", L"Remove object");
        break;
    case NRV_CHANGE_ORDER:
        history->Mark(L"调整次序", L"Change order");
        break;
    case NRV_CHANGE_LAYERS:
        history->Mark(L"修改图层", L"Change layers");
        break;
    case NRV_CHANGE_BACKGROUND:
        history->Mark(L"修改背景", L"Change background");
        break;
    default: // What is added has been marked already; a load and a clearing begin the history anew.
        break;
    }
}

void CNrvControl::OnHistoryChanged(CDrawingHistory*, Change change) {
    static constexpr int32_t kReasons[] = {NRV_STEPS_NEW, NRV_STEPS_UNDONE, NRV_STEPS_REDONE, NRV_STEPS_FORGOTTEN,
                                           NRV_STEPS_SAVED};
    CNrvNote note(NRV_N_STEPS);
    note.reason = kReasons[change];
    Queue(std::move(note));
}

bool CNrvControl::QueueDifference() {
    if (!m_Watch.IsOn()) {
        return false;
    }
    const CNrvDifference difference = m_Watch.End(Document());
    const auto queue = [&](int32_t reason, const auto& objects, auto idOf) {
        if (objects.empty()) {
            return false;
        }
        CNrvNote note(NRV_N_CHANGED);
        note.reason = reason;
        for (const auto object : objects) {
            note.ids.push_back(idOf(object));
        }
        Queue(std::move(note));
        return true;
    };
    const auto idOf = [&](CDrawable* object) { return m_Ids.IdOf(object); };
    const bool removed =
        queue(NRV_CHANGE_REMOVED, difference.removed, [&](const CDrawable* gone) { return m_Ids.IdOfGone(gone); });
    const bool added = queue(NRV_CHANGE_ADDED, difference.added, idOf);
    const bool modified = queue(NRV_CHANGE_MODIFIED, difference.modified, idOf);
    return removed || added || modified;
}

// ---- Commands ------------------------------------------------------------------------------------------------------

void CNrvControl::ToolBegun() {
    QueueEnd();
    clicks = 0;
    m_Word = m_NextWord.IsEmpty() ? CString(L"grip") : m_NextWord;
    CNrvNote begun(NRV_N_COMMAND_BEGUN);
    begun.text = m_Word;
    Queue(begun);
    CNrvNote changing(NRV_N_CHANGING);
    changing.reason = NRV_CHANGE_COMMAND;
    changing.text = m_Word;
    Queue(std::move(changing));
    if (Wants(NRV_N_CHANGED)) {
        m_Watch.Begin(Document());
    }
}

void CNrvControl::ToolEnded(CCommandOperationManager::ToolEnd how) {
    using End = CCommandOperationManager::ToolEnd;
    CNrvNote ended(NRV_N_COMMAND_ENDED);
    ended.text = m_Word;
    ended.reason = how == End::Done ? NRV_END_DONE : how == End::Cancelled ? NRV_END_CANCELLED : NRV_END_LOST;
    if (how == End::Done && !Document().GetEditingOptions().modifiedByChange) {
        // A command that a word starts has set the flag; the move of a grip has not.
        Document().SetModifiedFlag(TRUE);
    }
    m_Word.Empty();
    m_End.emplace(std::move(ended));
}

// Not in ToolEnded, because a cancelled tool restores its objects after that.
void CNrvControl::QueueEnd() {
    if (m_End) {
        QueueDifference();
        Queue(*m_End);
        m_End.reset();
    }
}

// ---- Messages ------------------------------------------------------------------------------------------------------

namespace {

// The answer to a question that is not shown.
int HarmlessAnswer(UINT type) {
    switch (type & MB_TYPEMASK) {
    case MB_OK:
        return IDOK;
    case MB_YESNO:
        return IDNO;
    case MB_ABORTRETRYIGNORE:
        return IDABORT;
    default:
        return IDCANCEL;
    }
}

} // namespace

CNrvControl::CQuiet::CQuiet(CNrvControl& control, bool later)
    : m_Control(control), m_Before(control.m_MessageCount), m_Later(later ? 1 : 0) {
    control.m_LastMessage.Empty();
    ++control.m_Quiet;
    control.m_Later += m_Later;
}

CNrvControl::CQuiet::~CQuiet() {
    --m_Control.m_Quiet;
    m_Control.m_Later -= m_Later;
}

int CNrvControl::OnMessage(LPCTSTR text, UINT type, UINT help) {
    const auto keep = shared_from_this();
    m_LastMessage = text;
    ++m_MessageCount;
    const bool silent = !IsWindow() || m_Quiet != 0 || m_Messages == NRV_MESSAGES_SILENT;
    CNrvNote note(NRV_N_MESSAGE);
    note.text = text;
    note.reason = static_cast<int32_t>(type);
    if (m_Later != 0) {
        Queue(std::move(note));
        return HarmlessAnswer(type);
    }
    const int32_t answer = Send(note);
    if (answer != 0) {
        return answer;
    }
    return silent || m_Ended ? HarmlessAnswer(type) : NrvShowMessageBox(text, type, help);
}
