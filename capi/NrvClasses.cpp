// The window classes of the C interface: registration, window procedures, the edit boxes of the views.
// Layer 12: capi.

#include "NrvCall.h"
#include "NrvWindow.h"

#include "MemoryInfo.h"
#include "VectorViewApi.h"

#include <commctrl.h>

#include <mutex>

namespace {

constexpr UINT_PTR kBoxSubclass = 1;

void SettleGuarded(CNrvControl& control) {
    NrvGuarded([&]() -> NrvResult {
        control.Settle();
        return NRV_OK;
    });
}

// ---- The edit boxes of a view ----
// A message loop that calls NrvTranslateMessage asks the view before a key is dispatched. In any other loop the box
// asks the view when it gets the key.

bool IsForView(UINT message) {
    return message == WM_KEYDOWN || message == WM_CHAR || message == WM_SYSCHAR || message == WM_RBUTTONDOWN;
}

// Removes the character that the message loop has already made of the key, because the key has been used up.
void TakeCharacterOut(HWND box, WPARAM key) {
    if (key != VK_TAB && key != VK_RETURN && key != VK_ESCAPE) {
        return;
    }
    MSG character = {};
    if (::PeekMessageW(&character, box, WM_CHAR, WM_CHAR, PM_NOREMOVE) && character.wParam == key) {
        ::PeekMessageW(&character, box, WM_CHAR, WM_CHAR, PM_REMOVE);
    }
}

// The box of a parameter handles Escape itself, by its character: it restores the text.
bool UsesKey(HWND box, WPARAM key) {
    const CWnd* object = CWnd::FromHandlePermanent(box);
    const bool parm = object != nullptr && object->IsKindOf(RUNTIME_CLASS(CInPlaceEdit));
    return key == VK_RETURN || key == (parm ? VK_TAB : VK_ESCAPE);
}

LRESULT CALLBACK BoxProc(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (message == WM_NCDESTROY) {
        ::RemoveWindowSubclass(box, BoxProc, kBoxSubclass);
    }
    const HWND view = ::GetParent(box);
    const auto control = NrvHandles::Find(view);
    if (control == nullptr) {
        return ::DefSubclassProc(box, message, wParam, lParam);
    }
    LRESULT result = 0;
    const CNrvFrame frame(control);
    bool used = false;
    if (IsForView(message)) {
        if (message == WM_KEYDOWN && UsesKey(box, wParam)) {
            TakeCharacterOut(box, wParam);
        }
        MSG asked = {box, message, wParam, lParam, static_cast<DWORD>(::GetMessageTime()), {}};
        ::GetCursorPos(&asked.pt);
        NrvGuarded([&]() -> NrvResult {
            used = CWnd::WalkPreTranslateTree(view, &asked) != FALSE;
            return NRV_OK;
        });
    }
    if (!used) {
        result = ::DefSubclassProc(box, message, wParam, lParam);
        if (message == WM_GETDLGCODE) {
            result |= DLGC_WANTALLKEYS;
        }
    }
    if (frame.IsOutermost()) {
        SettleGuarded(*control);
    }
    return result;
}

void WatchBox(HWND child) {
    wchar_t name[8] = {};
    if (::GetClassNameW(child, name, 8) != 0 && ::lstrcmpiW(name, L"Edit") == 0) {
        ::SetWindowSubclass(child, BoxProc, kBoxSubclass, 0);
    }
}

// ---- The window procedures ----

template <class View>
std::shared_ptr<CNrvControl> Make(HWND window) {
    auto* made = new View;
    KX_ADD_MEMORY(static_cast<CWnd*>(made));
    std::shared_ptr<View> view(made, [](View* ended) {
        KX_REMOVE_MEMORY(static_cast<CWnd*>(ended));
        delete ended;
    });
    view->SetHandle(window);
    if (!view->Attach(window)) {
        return nullptr;
    }
    try {
        NrvHandles::Enter(window, view);
    } catch (...) {
        view->Detach();
        throw;
    }
    // The view must not paint over its edit boxes.
    ::SetWindowLongPtrW(window, GWL_STYLE, ::GetWindowLongPtrW(window, GWL_STYLE) | WS_CLIPCHILDREN);
    return view;
}

template <class View>
LRESULT CALLBACK ClassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    std::shared_ptr<CNrvControl> control;
    if (message == WM_NCCREATE) {
        if (NrvGuarded([&]() -> NrvResult { return (control = Make<View>(window)) ? NRV_OK : NRV_E_SYSTEM; }) !=
            NRV_OK) {
            return FALSE;
        }
    } else {
        control = NrvHandles::Find(window);
    }
    if (control == nullptr) {
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    const CNrvFrame frame(control);
    if (message == WM_PARENTNOTIFY && LOWORD(wParam) == WM_CREATE) {
        WatchBox(reinterpret_cast<HWND>(lParam));
    }
    const LRESULT result = AfxCallWndProc(&control->View(), window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        control->End();
        NrvHandles::Remove(window);
    } else if (frame.IsOutermost()) {
        SettleGuarded(*control);
    }
    return result;
}

// ---- The classes ----

class CClasses {
public:
    bool Register() {
        const bool first = RegisterOne(NRV_VIEW_CLASS, ClassProc<CNrvView>);
        return RegisterOne(NRV_PARM_VIEW_CLASS, ClassProc<CNrvParmView>) && first;
    }
    // Unregistered when the library is unloaded: the window procedures no longer exist then.
    ~CClasses() {
        ::UnregisterClassW(NRV_VIEW_CLASS, VectorViewModule());
        ::UnregisterClassW(NRV_PARM_VIEW_CLASS, VectorViewModule());
    }

private:
    static bool RegisterOne(LPCWSTR name, WNDPROC proc) {
        WNDCLASSEXW wc = {};
        wc.cbSize = sizeof wc;
        // With double clicks, which the middle button needs too; without a background or a device context of its own.
        wc.style = CS_DBLCLKS | CS_GLOBALCLASS;
        wc.lpfnWndProc = proc;
        wc.hInstance = VectorViewModule();
        wc.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
        wc.lpszClassName = name;
        return ::RegisterClassExW(&wc) != 0 || ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
    }
};

CClasses g_classes;

} // namespace

bool NrvEnsureInitialized() {
    static const bool done = [] {
        NrvMakeApp();
        return g_classes.Register();
    }();
    return done;
}

// ---- Functions -----------------------------------------------------------------------------------------------------

NrvResult NRV_CALL NrvInitialize(void) {
    return NrvGuarded([]() -> NrvResult { return NrvEnsureInitialized() ? NRV_OK : NRV_E_SYSTEM; });
}

NrvResult NRV_CALL NrvTranslateMessage(void* msg, int32_t* translated) {
    if (msg == nullptr || translated == nullptr) {
        return NRV_E_ARGUMENT;
    }
    *translated = 0;
    auto* message = static_cast<MSG*>(msg);
    HWND window = message->hwnd;
    std::shared_ptr<CNrvControl> control;
    while (window != nullptr && (control = NrvHandles::Find(window)) == nullptr) {
        window = ::GetParent(window);
    }
    if (control == nullptr) {
        return NRV_OK;
    }
    return NrvCall(window, NrvNeeds::Window, [&](CNrvControl&) -> NrvResult {
        *translated = CWnd::WalkPreTranslateTree(window, message) != FALSE;
        return NRV_OK;
    });
}
