// The frame around each function of the C interface and each message of its windows: finds the control, checks the
// thread, lets no exception out, and sends the events when all is settled.
// Layer 12: capi.
#pragma once

#include "NrvArguments.h"
#include "NrvControl.h"

#include <afxstat_.h>

// One entry into a control; made on the stack. While it exists the library's own module state is current, so that a
// message box becomes an event of the innermost entry's control.
class CNrvFrame {
public:
    explicit CNrvFrame(std::shared_ptr<CNrvControl> control);
    ~CNrvFrame();
    CNrvFrame(const CNrvFrame&) = delete;
    CNrvFrame& operator=(const CNrvFrame&) = delete;

    // The control of the innermost entry of this thread; null outside of all.
    static CNrvControl* Current();
    // Whether no other entry into the same control is on the stack.
    bool IsOutermost() const;
    CNrvControl& Control() const { return *m_Control; }

    // Put around calls of the host's code: makes the program's module state current.
    class CHostCode {
    public:
        CHostCode() : m_State(AfxGetAppModuleState()) {}

    private:
        AFX_MAINTAIN_STATE2 m_State;
    };

private:
    std::shared_ptr<CNrvControl> m_Control;
    CNrvFrame* m_Outer;
    AFX_MAINTAIN_STATE2 m_State;
};

// Makes, once, the application object of this module's state, which gets the calls of message boxes.
void NrvMakeApp();
// Shows a box, as it would be shown without this layer.
int NrvShowMessageBox(LPCTSTR text, UINT type, UINT help);

// The table of all handles, for any thread.
namespace NrvHandles {

void Enter(NrvHandle handle, std::shared_ptr<CNrvControl> control);
// Null when the handle is not in the table.
std::shared_ptr<CNrvControl> Find(NrvHandle handle);
void Remove(NrvHandle handle);
// For a drawing without a window: a value that no window handle has.
NrvHandle NewDrawingHandle();

} // namespace NrvHandles

// Registers the window classes once. False when Windows refuses.
bool NrvEnsureInitialized();

// What a function works on, in addition to any valid handle.
enum class NrvNeeds { Any, Window, ParmView, Drawing };

// Checks a handle; NRV_OK with `control` set when the function may continue. The thread then owns the drawing until
// GiveBack.
NrvResult NrvCheckHandle(NrvHandle handle, NrvNeeds needs, std::shared_ptr<CNrvControl>& control);

// The result for a thrown exception; called in its handler.
NrvResult NrvResultOfException();

template <class Body>
NrvResult NrvGuarded(Body body) noexcept {
    try {
        return body();
    } catch (...) {
        return NrvResultOfException();
    }
}

// Runs `body` with the control of a handle, as one function of the interface.
template <class Body>
NrvResult NrvCall(NrvHandle handle, NrvNeeds needs, Body body) noexcept {
    return NrvGuarded([&]() -> NrvResult {
        std::shared_ptr<CNrvControl> control;
        const NrvResult checked = NrvCheckHandle(handle, needs, control);
        if (checked != NRV_OK) {
            return checked;
        }
        struct Owned {
            CNrvControl& control;
            ~Owned() { control.GiveBack(); }
        };
        const Owned owned{*control};
        const CNrvFrame frame(control);
        const NrvResult result = NrvGuarded([&]() -> NrvResult { return body(*control); });
        control->Settle();
        return control->HasEnded() && needs != NrvNeeds::Drawing ? static_cast<NrvResult>(NRV_E_ENDED) : result;
    });
}

template <class Body>
NrvResult NrvCall(NrvHandle handle, Body body) noexcept {
    return NrvCall(handle, NrvNeeds::Any, body);
}

// The same with an object of the drawing or of its net.
template <class Body>
NrvResult NrvObjectCall(NrvHandle handle, NrvId id, Body body) noexcept {
    return NrvCall(handle, NrvNeeds::Any, [&](CNrvControl& control) -> NrvResult {
        CDrawable* object = control.Find(id);
        return object != nullptr ? body(control, *object) : static_cast<NrvResult>(NRV_E_OBJECT);
    });
}

// A change of one object. `edit` with false only says whether the change is possible, which is asked before and after
// the host was told that the object is about to change; with true it makes it.
template <class Edit>
NrvResult NrvEditCall(NrvHandle handle, NrvId id, Edit edit) noexcept {
    return NrvObjectCall(handle, id, [&](CNrvControl& control, CDrawable& before) -> NrvResult {
        const NrvResult possible = edit(control, before, false);
        if (possible != NRV_OK) {
            return possible;
        }
        if (!control.Changing(NRV_CHANGE_MODIFIED, {id})) {
            return NRV_E_ENDED;
        }
        CDrawable* object = control.Find(id);
        if (object == nullptr) {
            return NRV_E_OBJECT;
        }
        // The handler may have changed it.
        const NrvResult still = edit(control, *object, false);
        if (still != NRV_OK) {
            return still;
        }
        const NrvResult result = edit(control, *object, true);
        control.Watch().Enter(object);
        control.Changed(NRV_CHANGE_MODIFIED, {id});
        return result;
    });
}
