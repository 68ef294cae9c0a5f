// CNrvControl: what the C interface keeps for each view and each drawing without a window: ids, events, messages.
// Layer 12: capi.
#pragma once

#include "NrvIds.h"
#include "NrvWatch.h"

#include "CommandOperationManager.h"
#include "Document.h"
#include "DrawingHistory.h"

#include <atomic>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

class CVectorGraphic;
class CVectorView;

// An event that waits until its source has finished.
struct CNrvNote {
    explicit CNrvNote(uint32_t what) : code(what) {}
    uint32_t code;
    NrvId id = 0;
    int32_t kind = 0;
    int32_t segment = -1;
    int32_t reason = 0;
    CPoint pixel;
    CGePoint2d point;
    CString text;
    std::vector<NrvId> ids;
    HDC dc = nullptr;
};

// A second base of the two view classes of this layer. Calls and window messages hold a reference while they run, so
// that the object outlives its window until the last of them has left it.
class CNrvControl : public std::enable_shared_from_this<CNrvControl>, public CDrawingHistoryListener {
public:
    explicit CNrvControl(int32_t kind) : m_Kind(kind), m_Thread(::GetCurrentThreadId()) {}
    CNrvControl(const CNrvControl&) = delete;
    CNrvControl& operator=(const CNrvControl&) = delete;
    virtual ~CNrvControl() = default;

    // ---- What it belongs to ----

    virtual CVectorView& View() = 0;
    virtual CVectorGraphic& Graphic() = 0;
    CGraphicDocument& Document();
    CVectorViewCoordTran& Mapping();
    CCommandOperationManager* Engine();
    // One of enum NrvHandleKind.
    int32_t GetKind() const { return m_Kind; }
    bool IsWindow() const { return m_Kind != NRV_HANDLE_DRAWING; }
    // Null for a drawing without a window, and after the window's end.
    HWND Window();
    void SetHandle(NrvHandle handle) { m_Handle = handle; }
    NrvHandle GetHandle() const { return m_Handle; }
    DWORD GetThread() const { return m_Thread; }
    bool HasEnded() const { return m_Ended; }
    void End();
    void Repaint();
    // Gives the view the focus, unless one of its edit boxes has it.
    virtual void FocusView() = 0;
    // Cancels the running command; objects that it has moved are restored.
    virtual void BreakOff() = 0;

    // A drawing belongs to one thread at a time. False while it belongs to another one.
    bool TakeOver();
    void GiveBack();

    // ---- Objects ----

    CNrvIds& Ids() { return m_Ids; }
    // The object, when it is in the drawing or in the net; else null.
    CDrawable* Find(NrvId id);
    bool IsInNet(CDrawable* object);
    // The index in the drawing's list; -1 for none.
    INT_PTR IndexOf(const CDrawable* object);
    // The object that a click on a client pixel takes; null for none. `segment` is that of a polyline, else -1.
    CDrawable* HitAt(CPoint pixel, int32_t& segment);
    CNrvWatch& Watch() { return m_Watch; }

    // ---- Events ----

    bool Wants(uint32_t code) const { return (m_Mask & NRV_EVENT_BIT(code)) != 0; }
    uint32_t GetMask() const { return m_Mask; }
    void SetMask(uint32_t mask) { m_Mask = mask; }
    void SetCallback(NrvCallback callback, void* user);
    // Sends it now and returns the host's answer. The control may end during the call.
    int32_t Send(const CNrvNote& note, const CString* oldText = nullptr);
    // Sent by Settle.
    void Queue(CNrvNote note);
    // Sends the waiting events, and one when the selection has changed. Called when no code of the library runs above
    // that of the host on the stack.
    void Settle();
    // Announces a change. False when the control has ended meanwhile.
    bool Changing(int32_t reason, std::vector<NrvId> ids = {}, LPCTSTR word = L"");
    // A change by a call of the host is complete. Outside a command it is a step of the history.
    void Changed(int32_t reason, std::vector<NrvId> ids = {});
    void OnHistoryChanged(CDrawingHistory* history, Change change) override;
    // Queues what has changed since the watch began. True when anything has.
    bool QueueDifference();

    // ---- Commands, told by the engine ----

    void SetWord(LPCTSTR word) { m_NextWord = word; }
    const CString& GetWord() const { return m_Word; }
    void ToolBegun();
    void ToolEnded(CCommandOperationManager::ToolEnd how);

    // ---- Messages ----

    // Called in place of a message box; returns the button that answers it.
    int OnMessage(LPCTSTR text, UINT type, UINT help);
    int32_t GetMessages() const { return m_Messages; }
    void SetMessages(int32_t mode) { m_Messages = mode; }
    const CString& GetLastMessage() const { return m_LastMessage; }

    // While it exists, messages are counted and never shown in a box. With `later` the host gets them only in Settle,
    // so that it can't change what is being worked on.
    class CQuiet {
    public:
        explicit CQuiet(CNrvControl& control, bool later = false);
        ~CQuiet();
        CQuiet(const CQuiet&) = delete;
        CQuiet& operator=(const CQuiet&) = delete;
        int Count() const { return m_Control.m_MessageCount - m_Before; }

    private:
        CNrvControl& m_Control;
        int m_Before;
        int m_Later;
    };

    // ---- State of the functions ----

    int32_t showDecimals = 1;
    int32_t snapMode = kOsnapAll;
    int clicks = 0;                 // Since the running command began.
    bool freshMapping = true;       // True until something has given the mapping a scale.
    CString* textToStore = nullptr; // While NRV_N_EDIT_STORING is sent.

private:
    void MarkStep(int32_t reason, const std::vector<NrvId>& ids);
    void QueueSelection();
    // Queues what the ended tool did, and its end.
    void QueueEnd();

    int32_t m_Kind;
    NrvHandle m_Handle = nullptr;
    DWORD m_Thread;
    std::atomic<DWORD> m_Owner{0}; // The thread that is calling a function for a drawing; 0 for none.
    int m_OwnerDepth = 0;
    bool m_Ended = false;
    CNrvIds m_Ids;
    INT_PTR m_Hint = 0; // The list index of the object found last.
    CNrvWatch m_Watch;
    NrvCallback m_Callback = nullptr;
    void* m_User = nullptr;
    uint32_t m_Mask = 0xFFFFFFFFu & ~(NRV_EVENT_BIT(NRV_N_HOVER) | NRV_EVENT_BIT(NRV_N_PAINT));
    std::deque<CNrvNote> m_Notes;
    std::vector<const CDrawable*> m_Selection; // As last reported. Compared only.
    CString m_NextWord;                        // Of the tool that a command word installs.
    CString m_Word;                            // Of the running tool.
    std::optional<CNrvNote> m_End;             // The end of the tool that has ended in the present event.
    int32_t m_Messages = NRV_MESSAGES_BOX;
    int m_Quiet = 0;
    int m_Later = 0; // How many of the open quiet spans have `later`.
    int m_MessageCount = 0;
    CString m_LastMessage;
};

// The kind of an object as the interface numbers it; 0 for null.
int32_t NrvKindOf(const CDrawable* object);
