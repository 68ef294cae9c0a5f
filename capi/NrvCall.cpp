#include "NrvCall.h"

#include "vectorview.h"

#include <afxwin.h>

#include <new>
#include <unordered_map>

// ---- The frame -----------------------------------------------------------------------------------------------------

namespace {

thread_local CNrvFrame* t_innermost = nullptr;

// The application object of this module's state. It has no message loop and no window; it gets the message boxes.
class CNrvApp : public CWinApp {
public:
    int DoMessageBox(LPCTSTR text, UINT type, UINT help) override {
        CNrvControl* control = CNrvFrame::Current();
        return control != nullptr ? control->OnMessage(text, type, help) : CWinApp::DoMessageBox(text, type, help);
    }
    // Does nothing: the hourglass has one counter for all threads.
    void DoWaitCursor(int) override {}
    int ShowMessageBox(LPCTSTR text, UINT type, UINT help) { return CWinApp::DoMessageBox(text, type, help); }
};

// Made while the module state that it belongs to is current, and never freed.
CNrvApp* OwnApp() {
    static CNrvApp* const app = [] {
        AFX_MANAGE_STATE(AfxGetStaticModuleState());
        return new CNrvApp;
    }();
    return app;
}

} // namespace

void NrvMakeApp() {
    OwnApp();
}

CNrvFrame::CNrvFrame(std::shared_ptr<CNrvControl> control)
    : m_Control(std::move(control)), m_Outer(t_innermost), m_State(AfxGetStaticModuleState()) {
    t_innermost = this;
}

CNrvFrame::~CNrvFrame() {
    t_innermost = m_Outer;
}

CNrvControl* CNrvFrame::Current() {
    return t_innermost != nullptr ? t_innermost->m_Control.get() : nullptr;
}

bool CNrvFrame::IsOutermost() const {
    for (const CNrvFrame* frame = m_Outer; frame != nullptr; frame = frame->m_Outer) {
        if (frame->m_Control == m_Control) {
            return false;
        }
    }
    return true;
}

int NrvShowMessageBox(LPCTSTR text, UINT type, UINT help) {
    return OwnApp()->ShowMessageBox(text, type, help);
}

// ---- Handles -------------------------------------------------------------------------------------------------------

namespace NrvHandles {
namespace {

struct Table {
    SRWLOCK lock = SRWLOCK_INIT;
    std::unordered_map<NrvHandle, std::shared_ptr<CNrvControl>> controls;
    uintptr_t lastDrawing = 0;
};

// Never freed: windows may end during the end of the process.
Table& TheTable() {
    static Table* const table = new Table;
    return *table;
}

} // namespace

void Enter(NrvHandle handle, std::shared_ptr<CNrvControl> control) {
    Table& table = TheTable();
    ::AcquireSRWLockExclusive(&table.lock);
    try {
        table.controls[handle].swap(control);
    } catch (...) {
        ::ReleaseSRWLockExclusive(&table.lock);
        throw;
    }
    ::ReleaseSRWLockExclusive(&table.lock);
    if (control != nullptr) {
        // The thread of this window has ended without destroying it. The object's destructor would destroy the window
        // that has the same handle now, so the object stays allocated.
        new std::shared_ptr<CNrvControl>(std::move(control));
    }
}

std::shared_ptr<CNrvControl> Find(NrvHandle handle) {
    Table& table = TheTable();
    ::AcquireSRWLockShared(&table.lock);
    const auto found = table.controls.find(handle);
    auto control = found != table.controls.end() ? found->second : nullptr;
    ::ReleaseSRWLockShared(&table.lock);
    return control;
}

void Remove(NrvHandle handle) {
    Table& table = TheTable();
    std::shared_ptr<CNrvControl> removed; // Freed after the lock is released.
    ::AcquireSRWLockExclusive(&table.lock);
    const auto found = table.controls.find(handle);
    if (found != table.controls.end()) {
        removed.swap(found->second);
        table.controls.erase(found);
    }
    ::ReleaseSRWLockExclusive(&table.lock);
}

NrvHandle NewDrawingHandle() {
    // Window handles are even, these are odd. No value is used twice, so that a handle of a freed drawing is
    // recognized.
    Table& table = TheTable();
    ::AcquireSRWLockExclusive(&table.lock);
    const uintptr_t value = ++table.lastDrawing;
    ::ReleaseSRWLockExclusive(&table.lock);
    return reinterpret_cast<NrvHandle>((value << 2) | 3);
}

} // namespace NrvHandles

NrvResult NrvCheckHandle(NrvHandle handle, NrvNeeds needs, std::shared_ptr<CNrvControl>& control) {
    if (!NrvEnsureInitialized()) {
        return NRV_E_SYSTEM;
    }
    control = NrvHandles::Find(handle);
    if (control == nullptr) {
        return NRV_E_HANDLE;
    }
    if (control->IsWindow()) {
        const DWORD thread = ::GetWindowThreadProcessId(static_cast<HWND>(handle), nullptr);
        if (thread == 0) {
            return NRV_E_HANDLE;
        }
        if (thread != ::GetCurrentThreadId()) {
            return NRV_E_THREAD;
        }
    }
    const int32_t kind = control->GetKind();
    const bool fits = needs == NrvNeeds::Any || (needs == NrvNeeds::Window && control->IsWindow()) ||
                      (needs == NrvNeeds::ParmView && kind == NRV_HANDLE_PARM_VIEW) ||
                      (needs == NrvNeeds::Drawing && kind == NRV_HANDLE_DRAWING);
    if (!fits) {
        return NRV_E_KIND;
    }
    return control->TakeOver() ? NRV_OK : NRV_E_BUSY;
}

// ---- Exceptions, buffers -------------------------------------------------------------------------------------------

NrvResult NrvResultOfException() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return NRV_E_MEMORY;
    } catch (CException* e) {
        NrvResult result = NRV_E_SYSTEM;
        if (e->IsKindOf(RUNTIME_CLASS(CMemoryException))) {
            result = NRV_E_MEMORY;
        } else if (e->IsKindOf(RUNTIME_CLASS(CInvalidArgException))) {
            result = NRV_E_STATE; // The object lacks a part that others of its kind have.
        }
        e->Delete();
        return result;
    } catch (...) {
        return NRV_E_SYSTEM;
    }
}

NrvResult NrvGive(const CString& text, NrvChar* buffer, uint32_t capacity, uint32_t* length) {
    if (length == nullptr || (buffer == nullptr && capacity != 0)) {
        return NRV_E_ARGUMENT;
    }
    const auto needed = static_cast<uint32_t>(text.GetLength());
    *length = needed;
    if (buffer == nullptr) {
        return NRV_OK;
    }
    if (capacity <= needed) {
        if (capacity != 0) {
            buffer[0] = 0;
        }
        return NRV_E_BUFFER;
    }
    const LPCTSTR characters = text;
    std::copy(characters, characters + needed, buffer);
    buffer[needed] = 0;
    return NRV_OK;
}
