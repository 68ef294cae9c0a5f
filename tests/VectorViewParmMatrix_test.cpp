// Every public call of view, document and engine, made by a host at every moment of an open parameter edit: no fault,
// nothing leaked, and a view that still works.

#include "support/BoxAnswer.h"
#include "support/FaultNote.h"

#include <CommandOperationManager.h>
#include <KXBaseOpr.h>
#include <PropertyDialogHost.h>
#include <TextParm.h>
#include <VectorViewParm.h>

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <set>
#include <string>
#include <vector>

namespace {

const Gdiplus::Color kColor(0xFFFFFFFF);
constexpr UINT kViewId = 77;

void Register(CObject* object) {
    CKXMemoryManager::Instance()->AddMemoryInfo(object, __FILE__, __LINE__);
}

void Free(CObject* object) {
    CKXMemoryManager::Instance()->RemoveMemoryInfo(object, __FILE__, __LINE__);
    delete object;
}

class Case;

// Passes every hook on to its case. The view may be deleted inside `Reached`, so that nothing of it is touched
// afterwards.
class MatrixView : public CVectorViewParm {
public:
    explicit MatrixView(Case* owner) : m_pCase(owner) {}

    CInPlaceEdit& Edit() { return m_Edit; }
    CTextParm* EditParm() { return m_pEditParm; }
    CVectorGraphic& Graphic() { return m_Graphic; }
    void EditAt(CTextParm* parm) { DoEditParm(parm, CRect(50, 50, 150, 70), 0, 0, L""); }
    void Walk(CTextParm* from) { OnEditTabDown(from); }
    void EndEngine() { FreeCommandOperationManager(); }
    void RenewEngine() { OnCreateCommandOperationManager(); }
    void ShowDialog(CWnd* owner) {
        if (m_pDlgDrawAbleProperty == nullptr) {
            m_pDlgDrawAbleProperty = CreateDrawAbleProperty(this, owner);
        }
        ShowDrawAbleProperty(m_pDlgDrawAbleProperty, this, 1);
    }

protected:
    void OnPreEditParm(CTextParm* parm, unsigned int&, int&, CString&) override;
    int OnAcceptEditData(CTextParm* parm, CString text) override;
    void OnEditChanging(CTextParm* parm, CString& oldText, CString& newText) override;
    void OnEditChanged(CTextParm* parm, CString oldText, CString newText) override;
    void OnEndEdit(CTextParm* parm) override;

private:
    Case* m_pCase;
};

class MatrixParent : public CWnd {
public:
    Case* owner = nullptr;

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

// How the host behaves in a case.
struct Host {
    const char* name;
    bool accepts;
    bool strict;
    bool isWindowed;
};

struct Call {
    const char* name;
    std::function<void(Case&)> make;
};

// What the user or the host does with the open edit.
struct Action {
    const char* name;
    std::function<void(Case&)> make;
};

// One view with an edit of A open in it; the drawing is A, B, a line, C. At the moment `at`, the first time that it is
// reached, the host makes `call`.
class Case {
public:
    Case(MatrixParent& parentWindow, CWnd& otherWindow, const Host& how, std::string moment, const Call* what)
        : parent(parentWindow), other(otherWindow), host(how), at(std::move(moment)), call(what) {
        parent.owner = this;
        view = new MatrixView(this);
        view->GetVectorViewCoordTran()->SetScreenSize(CSize(500, 300));
        if (host.isWindowed) {
            EXPECT_TRUE(view->Create(AfxRegisterWndClass(CS_DBLCLKS), L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 500, 300),
                                     &parent, kViewId, nullptr));
        }
        a = Add(L"A", L"10", 50);
        b = Add(L"B", L"20", 100);
        view->AddLine(CGePoint2d(300, 250), CGePoint2d(400, 250), kColor, 1);
        c = Add(L"C", L"30", 150);
        CMemFile file;
        view->GetDocument()->StoreToMemFile(&file);
        bytes.resize(static_cast<size_t>(file.GetLength()));
        file.SeekToBegin();
        file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
        view->SetStrictRefusal(host.strict);
        view->EditAt(a);
        view->Edit().SetEditText(L"7");
        isListening = true;
    }
    ~Case() {
        isListening = false;
        if (view != nullptr) {
            if (auto* engine = view->GetCommandOperationManager()) {
                engine->Cancel();
            }
            delete view;
        }
        for (CTextParm* parm : unlinked) {
            Free(parm);
        }
        parent.owner = nullptr;
    }

    CTextParm* Add(const wchar_t* name, const wchar_t* text, int y) {
        auto* parm =
            static_cast<CTextParm*>(view->AddParmText(CGePoint2d(50, 300 - y), text, name, 0.0, kColor, 20.0, 0));
        parm->SetTextEditWide(100.0f);
        // Measures the height, as the first paint does.
        CGePoint2d low;
        CGePoint2d high;
        parm->GetRect(view->GetVectorViewCoordTran(), low, high);
        return parm;
    }
    // A hook or a notification is reached.
    void Reached(const char* moment) {
        if (!isListening) {
            return;
        }
        moments.insert(moment);
        if (at == moment && !isMade) {
            isMade = true;
            call->make(*this);
        }
    }
    bool IsListed(const CDrawable* obj) const {
        CDrawableArray* objs = view->GetDocument()->GetDrawableObjs();
        for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
            if (objs->GetAt(i) == obj) {
                return true;
            }
        }
        return false;
    }
    CGePoint2d On(CTextParm* parm) const { return CGePoint2d(parm->GetPos().x + 6, parm->GetPos().y - 6); }
    void Press(int x, int y) {
        if (view != nullptr && view->m_hWnd != nullptr) {
            view->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        }
        if (view != nullptr && view->m_hWnd != nullptr) {
            view->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(x, y));
        }
    }
    void ToBox(UINT message, UINT key) {
        if (view->Edit().m_hWnd != nullptr) {
            view->Edit().SendMessage(message, key, 1);
        }
    }
    // What the host does when all is over: the view, if there still is one, edits a new parameter.
    void ExpectUsable() {
        isListening = false;
        isOver = true;
        if (view == nullptr) {
            return;
        }
        if (view->EditParm() != nullptr) {
            view->DoEndEdit();
        }
        view->ResetVectorView();
        EXPECT_EQ(nullptr, view->EditParm());
        CTextParm* parm = Add(L"X", L"1", 50);
        view->EditAt(parm);
        EXPECT_EQ(parm, view->EditParm());
        view->Edit().SetEditText(L"9");
        view->DoEndEdit();
        EXPECT_EQ(nullptr, view->EditParm());
        if (view->Edit().m_hWnd != nullptr) {
            EXPECT_EQ(L"9", parm->GetText());
            EXPECT_FALSE(view->Edit().IsWindowVisible());
        }
    }

    MatrixParent& parent;
    CWnd& other;
    const Host& host;
    MatrixView* view = nullptr; // Null once a call has deleted it.
    CTextParm* a = nullptr;     // Compared only, after calls.
    CTextParm* b = nullptr;
    CTextParm* c = nullptr;
    std::vector<BYTE> bytes;
    std::vector<CTextParm*> unlinked; // Taken out of the drawing; freed at the end.
    std::set<std::string> moments;    // Those that were reached.
    bool isMade = false;
    bool isOver = false;

private:
    std::string at;
    const Call* call;
    bool isListening = false;
};

void MatrixView::OnPreEditParm(CTextParm*, unsigned int&, int&, CString&) {
    m_pCase->Reached("pre");
}

int MatrixView::OnAcceptEditData(CTextParm*, CString) {
    Case& owner = *m_pCase;
    owner.Reached("accept");
    return owner.host.accepts || owner.isOver;
}

void MatrixView::OnEditChanging(CTextParm*, CString&, CString&) {
    m_pCase->Reached("changing");
}

void MatrixView::OnEditChanged(CTextParm*, CString, CString) {
    m_pCase->Reached("changed");
}

void MatrixView::OnEndEdit(CTextParm*) {
    m_pCase->Reached("end");
}

BOOL MatrixParent::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    const auto* record = reinterpret_cast<NMVECTORPARM*>(lParam);
    if (record->idFrom != kViewId || owner == nullptr) {
        return CWnd::OnNotify(wParam, lParam, pResult);
    }
    owner->Reached(record->code == kVpnQueryEdit ? "query" : record->code == kVpnClick ? "click" : "dblclk");
    *pResult = 0;
    return TRUE;
}

// ---- Calls ---------------------------------------------------------------------------------------------------------

void Unlink(Case& x, CTextParm* parm) {
    if (x.IsListed(parm)) {
        x.view->GetDocument()->DeleteObject(parm);
        x.unlinked.push_back(parm);
    }
}

void DeleteObject(Case& x, CTextParm* parm) {
    if (x.IsListed(parm)) {
        x.view->GetDocument()->DeleteObject(parm);
        Free(parm);
    }
}

// Another parameter takes the place of A, at the same address whatever the heap does.
void ReplaceInPlace(Case& x) {
    if (!x.IsListed(x.a)) {
        return;
    }
    x.view->GetDocument()->DeleteObject(x.a);
    const auto at = reinterpret_cast<void*>(x.a);
    x.a->~CTextParm();
    auto* made = new (at) CTextParm;
    made->SetParmName(L"N");
    made->SetText(L"new");
    x.view->GetDocument()->AddDrawAobject(made);
}

void Load(Case& x) {
    x.view->LoadFile(x.bytes.data(), static_cast<unsigned int>(x.bytes.size()));
}

void LoadRubbish(Case& x) {
    BYTE two[] = {2, 0, 0, 0};
    x.view->LoadFile(two, sizeof(two));
}

void OpenFromFile(Case& x) {
    CMemFile file;
    file.Write(x.bytes.data(), static_cast<UINT>(x.bytes.size()));
    x.view->GetDocument()->OpenDocument(file);
}

// The caller of SetDocument renews the engine, which keeps the address of the document.
void ReplaceDocument(Case& x) {
    auto* document = new CGraphicDocument;
    Register(document);
    x.view->GetCommandOperationManager()->Cancel();
    x.view->EndEngine();
    x.view->Graphic().SetDocument(document, 0);
    x.view->RenewEngine();
}

void Paint(Case& x) {
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    x.view->VectorPaint(&dc);
}

void Send(Case& x, UINT message, WPARAM wParam, LPARAM lParam) {
    if (x.view->m_hWnd != nullptr) {
        x.view->SendMessage(message, wParam, lParam);
    }
}

void TabThroughLoop(Case& x) {
    if (x.view->Edit().m_hWnd != nullptr) {
        MSG msg = {};
        msg.hwnd = x.view->Edit().m_hWnd;
        msg.message = WM_KEYDOWN;
        msg.wParam = VK_TAB;
        msg.lParam = 1;
        AfxPreTranslateMessage(&msg);
    }
}

void CancelCommand(Case& x) {
    if (auto* engine = x.view->GetCommandOperationManager()) {
        engine->Cancel();
    }
}

const std::vector<Call> kCalls = {
    // The view.
    {"LoadFile", Load},
    {"LoadFile of nothing", [](Case& x) { x.view->LoadFile(nullptr, 0); }},
    {"LoadFile of rubbish", LoadRubbish},
    {"ResetVectorView", [](Case& x) { x.view->ResetVectorView(); }},
    {"DoEndEdit", [](Case& x) { x.view->DoEndEdit(); }},
    {"DoEditForClicked on a line", [](Case& x) { x.view->DoEditForClicked(0, CGePoint2d(350, 250)); }},
    {"DoEditForClicked on a parameter", [](Case& x) { x.view->DoEditForClicked(0, CGePoint2d(56, 144)); }},
    {"DoEditForClicked on nothing", [](Case& x) { x.view->DoEditForClicked(0, CGePoint2d(450, 20)); }},
    {"DoEditParm of another", [](Case& x) { x.view->EditAt(x.IsListed(x.c) ? x.c : nullptr); }},
    {"DoEditParm of the same", [](Case& x) { x.view->EditAt(x.IsListed(x.a) ? x.a : nullptr); }},
    {"DoEditParm of another and its end",
     [](Case& x) {
         x.view->EditAt(x.IsListed(x.c) ? x.c : nullptr);
         if (x.view != nullptr) {
             x.view->DoEndEdit();
         }
     }},
    {"DoEditParm of nothing", [](Case& x) { x.view->EditAt(nullptr); }},
    {"OnEditTabDown", [](Case& x) { x.view->Walk(x.a); }},
    {"SendClickNotify", [](Case& x) { x.view->SendClickNotify(nullptr); }},
    {"ZoomAll", [](Case& x) { x.view->ZoomAll(); }},
    {"DoCommand line", [](Case& x) { x.view->DoCommand(L"line"); }},
    // No command of a text: nothing here would answer its dialog.
    {"DoCommand circle", [](Case& x) { x.view->DoCommand(L"circle"); }},
    {"DoCommand viewmove", [](Case& x) { x.view->DoCommand(L"viewmove"); }},
    {"DoCommand erase of A",
     [](Case& x) {
         if (x.IsListed(x.a)) {
             x.view->GetDocument()->AddSelected(x.a);
             x.unlinked.push_back(x.a);
             x.view->DoCommand(L"erase");
             if (x.IsListed(x.a)) {
                 x.unlinked.pop_back();
             }
         }
     }},
    {"VectorPaint", Paint},
    {"transformBy", [](Case& x) { x.view->transformBy(1.0, CGePoint2d()); }},
    {"AddLine with a repaint",
     [](Case& x) { x.view->AddLine(CGePoint2d(), CGePoint2d(1, 1), kColor, L"", L"", 0, 1); }},
    {"AddParmText", [](Case& x) { x.Add(L"D", L"1", 200); }},
    {"GetPLine_IsArc",
     [](Case& x) {
         int segment = 0;
         x.view->GetPLine_IsArc(CPoint(5, 5), segment);
     }},
    {"GetTextParmDrawObj", [](Case& x) { x.view->GetTextParmDrawObj(L"A"); }},
    {"SetTooltipText", [](Case& x) { x.view->SetTooltipText(L"tip", 1); }},
    {"SetToolTip", [](Case& x) { x.view->SetToolTip(0, CPoint(56, 56)); }},
    {"InitToolTip and ActivateTooltip",
     [](Case& x) {
         x.view->InitToolTip();
         x.view->ActivateTooltip(1);
     }},
    {"EnableWheel and SetNeedShowDecimal",
     [](Case& x) {
         x.view->EnableWheel(0);
         x.view->SetNeedShowDecimal(1);
     }},
    {"a property dialog on A",
     [](Case& x) {
         if (x.view->m_hWnd != nullptr && x.IsListed(x.a)) {
             x.view->GetDocument()->AddSelected(x.a);
             x.view->ShowDialog(&x.parent);
         }
     }},
    {"DestroyWindow", [](Case& x) { x.view->DestroyWindow(); }},
    {"DestroyWindow of the box",
     [](Case& x) {
         if (x.view->Edit().m_hWnd != nullptr) {
             x.view->Edit().DestroyWindow();
         }
     }},
    {"deletion of the view",
     [](Case& x) {
         CancelCommand(x);
         MatrixView* view = x.view;
         x.view = nullptr;
         delete view;
     }},
    {"the focus to the view",
     [](Case& x) {
         if (x.view->m_hWnd != nullptr) {
             x.view->SetFocus();
         }
     }},
    {"the focus to another window", [](Case& x) { x.other.SetFocus(); }},
    {"a message box", [](Case&) { AfxMessageBox(L"wait"); }},
    {"a move of the mouse", [](Case& x) { Send(x, WM_MOUSEMOVE, 0, MAKELPARAM(56, 56)); }},
    {"a turn of the wheel", [](Case& x) { Send(x, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), MAKELPARAM(56, 56)); }},
    {"a new size", [](Case& x) { x.view->m_hWnd != nullptr ? x.view->MoveWindow(0, 0, 400, 200) : void(); }},
    {"the menu's fit", [](Case& x) { Send(x, WM_COMMAND, 32790, 0); }},
    {"the menu's move", [](Case& x) { Send(x, WM_COMMAND, 32791, 0); }},
    {"a press", [](Case& x) { Send(x, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(56, 156)); }},
    {"a double click", [](Case& x) { Send(x, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(56, 156)); }},
    {"a Tab", TabThroughLoop},
    {"an Escape", [](Case& x) { x.ToBox(WM_CHAR, VK_ESCAPE); }},
    // The box.
    {"SetTextParm", [](Case& x) { x.view->Edit().SetTextParm(nullptr); }},
    {"SetEditText", [](Case& x) { x.view->Edit().SetEditText(L"8"); }},
    {"EndEdit of the box", [](Case& x) { x.view->Edit().EndEdit(); }},
    {"ShowEdit of the box", [](Case& x) { x.view->Edit().ShowEdit(CRect(1, 1, 9, 9), L"x", 0, 0, L""); }},
    // The document.
    {"Reset", [](Case& x) { x.view->GetDocument()->Reset(); }},
    {"OpenDocument of bytes",
     [](Case& x) { x.view->GetDocument()->OpenDocument(x.bytes.data(), static_cast<unsigned int>(x.bytes.size())); }},
    {"OpenDocument of a file", OpenFromFile},
    {"OnNewDocument", [](Case& x) { x.view->GetDocument()->OnNewDocument(); }},
    {"StoreToMemFile",
     [](Case& x) {
         CMemFile file;
         x.view->GetDocument()->StoreToMemFile(&file);
     }},
    {"DeleteObject of A", [](Case& x) { Unlink(x, x.a); }},
    {"DeleteObject of B", [](Case& x) { Unlink(x, x.b); }},
    {"DeleteObject and deletion of A", [](Case& x) { DeleteObject(x, x.a); }},
    {"DeleteObject and deletion of B", [](Case& x) { DeleteObject(x, x.b); }},
    {"DeleteObject and deletion of C", [](Case& x) { DeleteObject(x, x.c); }},
    {"another parameter at the address of A", ReplaceInPlace},
    {"DeleteAllSelectedObject",
     [](Case& x) {
         if (x.IsListed(x.a)) {
             x.view->GetDocument()->AddSelected(x.a);
             x.unlinked.push_back(x.a);
             x.view->GetDocument()->DeleteAllSelectedObject();
         }
     }},
    {"MoveToTop", [](Case& x) { x.view->GetDocument()->MoveToTop(x.a); }},
    {"DeleteNet", [](Case& x) { x.view->GetDocument()->DeleteNet(); }},
    {"AddCurrentObject and removeCurrentObject",
     [](Case& x) {
         x.view->GetDocument()->AddCurrentObject(x.view->GetDocument()->GetCurrentObject());
         x.view->GetDocument()->removeCurrentObject();
     }},
    {"RemoveAllSelected", [](Case& x) { x.view->GetDocument()->RemoveAllSelected(); }},
    {"another document", ReplaceDocument},
    // The engine.
    {"Cancel", CancelCommand},
    {"Execute",
     [](Case& x) {
         if (auto* engine = x.view->GetCommandOperationManager()) {
             engine->Execute();
         }
     }},
    {"the end of the engine",
     [](Case& x) {
         CancelCommand(x);
         x.view->EndEngine();
     }},
};

// ---- Actions -------------------------------------------------------------------------------------------------------

// What is done with the open edit, each with the moments that it reaches: "open" and "refused" outside of every hook,
// the others within one.
const Action kNothing = {"nothing", [](Case& x) { x.Reached("open"); }};
const Action kRefusal = {"a refused end", [](Case& x) {
                             x.view->DoEndEdit();
                             if (x.view != nullptr) {
                                 x.Reached("refused");
                             }
                         }};
const Action kEnd = {"DoEndEdit", [](Case& x) { x.view->DoEndEdit(); }};
const Action kReset = {"ResetVectorView", [](Case& x) { x.view->ResetVectorView(); }};
const Action kFocus = {"focus elsewhere", [](Case& x) { x.other.SetFocus(); }};
const Action kTab = {"Tab", TabThroughLoop};
const Action kReturn = {"Return without PreTranslateMessage", [](Case& x) { x.ToBox(WM_CHAR, VK_RETURN); }};
const Action kPressOnParameter = {"a press on another parameter", [](Case& x) { x.Press(56, 156); }};
const Action kPressOnNothing = {"a press on nothing", [](Case& x) { x.Press(450, 280); }};
const Action kDoubleClick = {"a double click",
                             [](Case& x) { Send(x, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(350, 50)); }};

#ifdef NR_GUARDED
constexpr size_t kStep = 3;
#else
constexpr size_t kStep = 1;
#endif

struct VectorViewParmMatrix : testing::Test {
    void SetUp() override {
        ASSERT_TRUE(parent.CreateEx(0, AfxRegisterWndClass(0), L"host", WS_POPUP | WS_VISIBLE, 20, 20, 640, 420,
                                    nullptr, nullptr))
            << "no window without a display";
        ASSERT_TRUE(other.Create(WS_CHILD | WS_VISIBLE, CRect(520, 10, 620, 40), &parent, 78));
        parent.SetForegroundWindow();
        Pump();
    }
    void TearDown() override {
        parent.DestroyWindow();
        Pump();
    }
    static void Pump() {
        MSG msg;
        while (::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE)) {
            ::DispatchMessage(&msg);
        }
    }
    // One case from its view to the end of it; the moments that it reached.
    std::set<std::string> Run(const Host& host, const Action& action, const std::string& at, const Call* call) {
        const std::string name =
            std::string(host.name) + "; " + action.name + "; in " + at + ": " + (call != nullptr ? call->name : "-");
        SCOPED_TRACE(name);
        NoteForFault(name);
        // One for each case: a later box may have the handle of an earlier one, and would not be answered again.
        BoxAnswer boxes;
        const int alive = CKXMemoryManager::Instance()->GetCount();
        const int unknown = CKXMemoryManager::Instance()->GetUnknownCount();
        std::set<std::string> moments;
        {
            Case x(parent, other, host, at, call);
            action.make(x);
            EXPECT_EQ(call != nullptr, x.isMade);
            x.ExpectUsable();
            moments = x.moments;
        }
        EXPECT_EQ(alive, CKXMemoryManager::Instance()->GetCount());
        EXPECT_EQ(unknown, CKXMemoryManager::Instance()->GetUnknownCount());
        // What is posted belongs to this case.
        Pump();
        return moments;
    }
    // Every call at every moment that the actions reach; in the guarded build, which is several times slower, a third
    // of the calls at each moment, and at the next moment another third.
    void RunAll(const Host& host, const std::vector<const Action*>& actions) {
        int cases = 0;
        int places = 0;
        for (const Action* action : actions) {
            for (const std::string& at : Run(host, *action, "", nullptr)) {
                ++places;
                for (size_t i = static_cast<size_t>(places) % kStep; i < kCalls.size(); i += kStep) {
                    Run(host, *action, at, &kCalls[i]);
                    ++cases;
                }
                ASSERT_FALSE(HasFailure());
            }
        }
        NoteForFault("");
        std::printf("%s: %d calls at %d moments of %d actions: %d cases\n", host.name, static_cast<int>(kCalls.size()),
                    places, static_cast<int>(actions.size()), cases);
    }

    MatrixParent parent;
    CEdit other;
};

// A suite each, since a suite has a limit in time.
struct VectorViewParmMatrixRefused : VectorViewParmMatrix {};
struct VectorViewParmMatrixStrict : VectorViewParmMatrix {};
struct VectorViewParmMatrixAlone : VectorViewParmMatrix {};

TEST_F(VectorViewParmMatrix, EveryCallAtEveryMomentOfAnEditIsSurvived) {
    RunAll({"a host that accepts", true, false, true},
           {&kNothing, &kEnd, &kReset, &kTab, &kPressOnParameter, &kPressOnNothing, &kDoubleClick});
}

TEST_F(VectorViewParmMatrixRefused, EveryCallAtEveryMomentOfARefusedEditIsSurvived) {
    RunAll({"a host that refuses", false, false, true}, {&kRefusal, &kFocus, &kTab, &kReturn});
}

TEST_F(VectorViewParmMatrixStrict, EveryCallAtEveryMomentOfAStrictlyRefusedEditIsSurvived) {
    RunAll({"a host that refuses strictly", false, true, true}, {&kRefusal, &kFocus, &kTab, &kPressOnParameter});
}

TEST_F(VectorViewParmMatrixAlone, EveryCallAtEveryMomentOfAnEditWithoutAWindowIsSurvived) {
    RunAll({"a host without a window", true, false, false}, {&kNothing, &kEnd, &kReset});
}

} // namespace
