// Every public call of view, document and engine in every state of a view: no fault, and nothing left allocated.
// Layer 16: tests.
#pragma once

#include "support/ViewHost.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class CCommandOperation;
class CCommandOperationManager;

// A view on the heap in a parent window, 400 by 300 pixels at scale 1, with a small drawing: two lines, a polyline of
// two vertices and a closed one of four. The drawing point (x, y) is on pixel (x, 300 - y).
class CallHost {
public:
    virtual ~CallHost();

    CVectorView* view = nullptr; // Null once it has been freed.
    // What the host does the next time that the view gets a message of an edit box or that a dialog opens; done once.
    std::function<void()> inside;
    // Pointers that may stay registered with the leak tracer: a running tool whose engine was freed, erased objects.
    std::vector<void*> mayStay;
    int staysMore = 0; // Blocks that stay besides these.

    bool HasWindow() const { return view != nullptr && view->m_hWnd != nullptr; }
    CGraphicDocument& Document() { return *view->GetDocument(); }
    CCommandOperationManager& Manager();
    CCommandOperation* Tool();
    // Messages at drawing points; nothing without a window.
    void Send(UINT message, WPARAM wParam, double x, double y);
    void MoveTo(double x, double y) { Send(WM_MOUSEMOVE, 0, x, y); }
    void ClickAt(double x, double y);
    void FreeView();
    void RunInside();

    // What only a derived view may do.
    virtual void ReplaceDocument(CGraphicDocument* document, int isExternal) = 0;
    virtual void ReplaceEngine() = 0;
    virtual void GivePropertyDialog() = 0;

    // For ReplaceDocument with a document that the host owns.
    std::unique_ptr<CGraphicDocument> external;

protected:
    void Show(CVectorView* newView);
    void NoteWhatStays();

private:
    std::unique_ptr<ParentWindow> m_parent;
};

// For a view class with a default constructor. Notifications of its edit boxes call `inside`.
template <class View>
class CallHostOf : public CallHost {
public:
    CallHostOf() { Show(new Open(*this)); }

    void ReplaceDocument(CGraphicDocument* document, int isExternal) override {
        static_cast<Open*>(view)->m_Graphic.SetDocument(document, isExternal);
    }
    void ReplaceEngine() override {
        NoteWhatStays();
        static_cast<Open*>(view)->OnCreateEngine();
    }
    void GivePropertyDialog() override { static_cast<Open*>(view)->GiveDialog(); }

private:
    class Open : public View {
    public:
        explicit Open(CallHostOf& host) : m_Host(host) {}
        using View::m_Graphic;
        void OnCreateEngine() {
            View::FreeCommandOperationManager();
            View::OnCreateCommandOperationManager();
        }
        void GiveDialog();

    protected:
        BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
            if (lParam != 0 && m_Host.inside) {
                m_Host.RunInside(); // This object may be freed by it.
                return TRUE;
            }
            return View::OnCommand(wParam, lParam);
        }

    private:
        CallHostOf& m_Host;
    };
};

struct CallRow {
    std::string name;
    std::function<void(CallHost&)> act;
};

// The columns: the public calls.
std::vector<CallRow> PublicCalls();
// What a user and a host do afterwards; the driver lets each of them be the first.
std::vector<CallRow> LaterEvents();

// Calls everything in every state, each time on a fresh host, then sends the view further events and frees it. Without
// a `trigger` the call comes between two events; otherwise within that event, through CallHost::inside.
struct CallState {
    std::string name;
    std::function<void(CallHost&)> enter;
    std::function<void(CallHost&)> trigger = nullptr;
};

// Prints the size. `make` makes a fresh host.
void RunCallMatrix(const char* title, const std::vector<CallState>& states, const std::vector<CallRow>& calls,
                   const std::function<std::unique_ptr<CallHost>()>& make);

#include "PropertyDialogHost.h"

template <class View>
void CallHostOf<View>::Open::GiveDialog() {
    if (this->m_pDlgDrawAbleProperty == nullptr) {
        this->m_pDlgDrawAbleProperty = CreateDrawAbleProperty(this, this->GetParent());
    }
    if (this->m_pDlgDrawAbleProperty != nullptr) {
        ShowDrawAbleProperty(this->m_pDlgDrawAbleProperty, this, 1);
    }
}
