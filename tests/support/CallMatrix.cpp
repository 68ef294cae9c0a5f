#include "CallMatrix.h"

#include "CommandOperationManager.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "OperationCreateObjAb.h"
#include "PLine.h"
#include "support/FaultNote.h"
#include "support/FilledHeap.h"
#include "support/PrivateFields.h"
#include "support/ViewDriver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <set>

namespace {

constexpr const char* kToldDone = "CheckResultState Done";

// A tool of the host's own.
class HostTool : public CCommandOperation {
public:
    explicit HostTool(CVectorView& view)
        : CCommandOperation(&view, nullptr, view.GetVectorViewCoordTran(), view.GetDocument()) {
        KX_ADD_MEMORY(this);
    }
    ResultState OnLButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnLButtonUp(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override { return RS_Continue; }
    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Done; }
};

std::vector<BYTE> StoredDrawing() {
    CVectorView view;
    view.AddLine(CGePoint2d(10, 10), CGePoint2d(90, 10), Gdiplus::Color(0xFFFFFFFF), 1);
    CMemFile file;
    view.GetDocument()->StoreToMemFile(&file);
    std::vector<BYTE> bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

void DeleteObject(CallHost& host, CDrawable* object) {
    host.Document().DeleteObject(object);
    KX_REMOVE_MEMORY(object);
    delete object;
}

// Answers the dialogs of a run: each with Yes or OK, after the host has done what it does inside.
void AnswerDialog(CallHost& host, HWND dialog) {
    if (host.inside && dialog != nullptr) {
        host.RunInside();
    }
    if (::GetDlgItem(dialog, 1006) != nullptr) {
        ::SetDlgItemText(dialog, 1006, L"text");
    } else if (::GetDlgItem(dialog, 1002) != nullptr) {
        ::SetDlgItemText(dialog, 1002, L"30");
    }
    const int button = ::GetDlgItem(dialog, IDYES) != nullptr ? IDYES : IDOK;
    ::PostMessage(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0);
}

} // namespace

// ---- The host ------------------------------------------------------------------------------------------------------

CallHost::~CallHost() {
    FreeView();
}

void CallHost::Show(CVectorView* newView) {
    m_parent = std::make_unique<ParentWindow>();
    view = newView;
    view->GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
    ShowView(*view, *m_parent);
    const Gdiplus::Color white(0xFFFFFFFF);
    view->AddLine(CGePoint2d(50, 50), CGePoint2d(250, 150), white, 1);
    view->AddLine(CGePoint2d(20, 280), CGePoint2d(380, 280), white, 1);
    CGePointArray points;
    CBulgeArray bulges;
    const CGePoint2d corners[] = {{260, 60}, {340, 60}, {340, 140}, {260, 140}};
    for (CGePoint2d corner : corners) {
        double bulge = 0.0;
        points.Add(corner);
        bulges.Add(bulge);
    }
    view->AddPLine(points, bulges, white, 1, 1, 1);
    points.RemoveAll();
    bulges.RemoveAll();
    for (CGePoint2d end : {CGePoint2d(60, 200), CGePoint2d(220, 200)}) {
        double bulge = 0.0;
        points.Add(end);
        bulges.Add(bulge);
    }
    view->AddPLine(points, bulges, white, 0, 1, 1);
}

CCommandOperationManager& CallHost::Manager() {
    return *static_cast<CCommandOperationManager*>(view->GetCommandOperationManager());
}

CCommandOperation* CallHost::Tool() {
    return view != nullptr ? PeekAt<CCommandOperation>(Manager(), RunningTool()) : nullptr;
}

void CallHost::Send(UINT message, WPARAM wParam, double x, double y) {
    if (HasWindow()) {
        CPoint pixel;
        view->GetVectorViewCoordTran()->DPToLP(CGePoint2d(x, y), pixel);
        view->SendMessage(message, wParam, MAKELPARAM(pixel.x, pixel.y));
    }
}

void CallHost::ClickAt(double x, double y) {
    Send(WM_LBUTTONDOWN, MK_LBUTTON, x, y);
    Send(WM_LBUTTONUP, 0, x, y);
}

void CallHost::RunInside() {
    std::function<void()> act;
    act.swap(inside);
    act();
}

// A tool that runs while its engine is freed stays allocated, with the object that it builds.
void CallHost::NoteWhatStays() {
    if (CCommandOperation* tool = Tool()) {
        mayStay.push_back(tool);
        if (auto* creating = DYNAMIC_DOWNCAST(COperationCreateObjAb, tool)) {
            mayStay.push_back(creating->GetCurrentObject());
        }
    }
}

void CallHost::FreeView() {
    if (view != nullptr) {
        NoteWhatStays();
        delete view;
        view = nullptr;
    }
}

// ---- Calls and events ----------------------------------------------------------------------------------------------

std::vector<CallRow> PublicCalls() {
    static const std::vector<BYTE> drawing = StoredDrawing();
    const auto load = [](CallHost& h, std::vector<BYTE> bytes) {
        h.view->LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size()));
    };
    std::vector<CallRow> calls = {
        {"LoadFile", [=](CallHost& h) { load(h, drawing); }},
        {"LoadFile of a broken stream",
         [=](CallHost& h) {
             load(h, {1, 0, 0});
         }},
        {"LoadFile of nothing", [](CallHost& h) { h.view->LoadFile(nullptr, 0); }},
        {"Reset", [](CallHost& h) { h.Document().Reset(); }},
        {"Reset twice", [](CallHost& h) { h.Document().Reset(), h.Document().Reset(); }},
        {"OpenDocument from a memory file",
         [](CallHost& h) {
             CMemFile file;
             file.Write(drawing.data(), static_cast<UINT>(drawing.size()));
             h.Document().OpenDocument(file);
         }},
        {"StoreToMemFile",
         [](CallHost& h) {
             CMemFile file;
             h.Document().StoreToMemFile(&file);
         }},
        {"every object freed by the host",
         [](CallHost& h) {
             while (h.Document().GetDrawableObjs()->GetSize() > 0) {
                 DeleteObject(h, h.Document().GetDrawableObjs()->GetAt(0));
             }
         }},
        {"the selected objects freed by the host",
         [](CallHost& h) {
             while (h.Document().GetSelectedDrawableObjs()->GetSize() > 0) {
                 DeleteObject(h, h.Document().GetSelectedDrawableObjs()->GetAt(0));
             }
         }},
        {"the current object freed by the host",
         [](CallHost& h) {
             if (CDrawable* current = h.Document().GetCurrentObject()) {
                 DeleteObject(h, current);
             }
         }},
        {"the selected objects erased",
         [](CallHost& h) {
             CDrawableArray& selected = *h.Document().GetSelectedDrawableObjs();
             for (INT_PTR i = 0; i < selected.GetSize(); ++i) {
                 h.mayStay.push_back(selected[i]);
             }
             h.Document().DeleteAllSelectedObject();
         }},
        {"RemoveAllSelected", [](CallHost& h) { h.Document().RemoveAllSelected(); }},
        {"DeleteNet", [](CallHost& h) { h.Document().DeleteNet(); }},
        {"removeCurrentObject", [](CallHost& h) { h.Document().removeCurrentObject(); }},
        {"another document, the old one freed",
         [](CallHost& h) {
             auto* document = new CGraphicDocument;
             KX_ADD_MEMORY(document);
             h.ReplaceDocument(document, 0);
         }},
        {"another document of the host's own",
         [](CallHost& h) {
             h.external = std::make_unique<CGraphicDocument>();
             h.ReplaceDocument(h.external.get(), 1);
         }},
        {"DestroyWindow",
         [](CallHost& h) {
             if (h.HasWindow()) {
                 h.view->DestroyWindow();
             }
         }},
        {"the view freed", [](CallHost& h) { h.FreeView(); }},
        {"the engine replaced", [](CallHost& h) { h.ReplaceEngine(); }},
        {"an unknown word", [](CallHost& h) { h.view->DoCommand(L"nonsense"); }},
        {"Manager Cancel", [](CallHost& h) { h.Manager().Cancel(); }},
        {"Manager OnCancel", [](CallHost& h) { h.Manager().OnCancel(); }},
        {"Execute", [](CallHost& h) { h.Manager().Execute(); }},
        {"SetCommand of a tool", [](CallHost& h) { h.Manager().SetCommand(new HostTool(*h.view), 1); }},
        {"SetCommand of a held tool", [](CallHost& h) { h.Manager().SetCommand(new HostTool(*h.view), 0); }},
        {"SetCommand of the running tool", [](CallHost& h) { h.Manager().SetCommand(h.Tool(), 1); }},
        {kToldDone, [](CallHost& h) { h.Manager().CheckResultState(CCommandOperation::RS_Done); }},
        {"CheckResultState Capture of a tool",
         [](CallHost& h) { h.Manager().CheckResultState(new HostTool(*h.view), CCommandOperation::RS_Capture); }},
        {"OnDefaultLButtonDown", [](CallHost& h) { h.Manager().OnDefaultLButtonDown(0, CGePoint2d(50, 50)); }},
        {"settings of the engine",
         [](CallHost& h) {
             h.Manager().SetInEdit(1);
             h.Manager().SetInEdit(0);
             h.Manager().SetOsnapMode(3);
             h.Manager().SetOsnapMode(15);
             h.Manager().SetDrawObjLatus(1);
             h.Manager().AddGripPoint(CGePoint2d(1, 2));
             h.Manager().ResetErasShirrLineState();
             h.Manager().RefreshGrip();
             CGePoint2d found;
             h.Manager().GetGripPointForL(CGePoint2d(50, 250), found);
             h.Manager().GetGripPoint(CGePoint2d(50, 50), found);
         }},
        {"ZoomAll", [](CallHost& h) { h.view->ZoomAll(); }},
        {"VectorPaint",
         [](CallHost& h) {
             CDC dc;
             dc.CreateCompatibleDC(nullptr);
             h.view->VectorPaint(&dc);
         }},
        {"a repaint",
         [](CallHost& h) {
             if (h.HasWindow()) {
                 h.view->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
             }
         }},
        {"the property dialog",
         [](CallHost& h) {
             if (h.HasWindow()) {
                 h.GivePropertyDialog();
             }
         }},
        {"AddLine, transformBy, GetPLine_IsArc",
         [](CallHost& h) {
             h.view->AddLine(CGePoint2d(1, 1), CGePoint2d(5, 5), Gdiplus::Color(0xFFFFFFFF), 1);
             h.view->transformBy(0.1, CGePoint2d(0, 0));
             int segment = 0;
             h.view->GetPLine_IsArc(CPoint(50, 250), segment);
         }},
        {"the right button", [](CallHost& h) { h.Send(WM_RBUTTONDOWN, MK_RBUTTON, 100, 100); }},
        {"the wheel", [](CallHost& h) { h.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 100, 100); }},
    };
    for (LPCTSTR word : {L"line", L"pline", L"circle", L"copy", L"offset", L"viewmove", L"erase"}) {
        calls.push_back({"DoCommand " + Utf8(word), [=](CallHost& h) {
                             CDrawableArray& selected = *h.Document().GetSelectedDrawableObjs();
                             for (INT_PTR i = 0; word == std::wstring(L"erase") && i < selected.GetSize(); ++i) {
                                 h.mayStay.push_back(selected[i]);
                             }
                             h.view->DoCommand(word);
                         }});
    }
    return calls;
}

std::vector<CallRow> LaterEvents() {
    return {
        {"move", [](CallHost& h) { h.MoveTo(120, 90); }},
        {"click", [](CallHost& h) { h.ClickAt(130, 80); }},
        {"key", [](CallHost& h) { h.Send(WM_KEYDOWN, 'A', 0, 0); }},
        {"wheel", [](CallHost& h) { h.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, -120), 100, 100); }},
        {"pan", [](CallHost& h) { h.Send(WM_MOUSEMOVE, MK_MBUTTON, 140, 100); }},
        {"repaint",
         [](CallHost& h) {
             if (h.HasWindow()) {
                 h.view->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
             }
         }},
        {"Execute",
         [](CallHost& h) {
             if (h.view != nullptr) {
                 h.Manager().Execute();
             }
         }},
        {"release", [](CallHost& h) { h.Send(WM_LBUTTONUP, 0, 50, 50); }},
        {"right button", [](CallHost& h) { h.Send(WM_RBUTTONDOWN, MK_RBUTTON, 100, 100); }},
        {"Cancel",
         [](CallHost& h) {
             if (h.view != nullptr) {
                 h.Manager().Cancel();
             }
         }},
        {"another command",
         [](CallHost& h) {
             if (h.view != nullptr) {
                 h.view->DoCommand(L"circle");
             }
         }},
    };
}

// ---- The driver ----------------------------------------------------------------------------------------------------

void RunCallMatrix(const char* title, const std::vector<CallState>& states, const std::vector<CallRow>& calls,
                   const std::function<std::unique_ptr<CallHost>()>& make) {
    const FilledHeap heap;
    const std::vector<CallRow> events = LaterEvents();
    size_t cells = 0;
    {
        // Makes what the library allocates once for the whole process, before anything is counted.
        auto host = make();
        calls.front().act(*host);
    }
    for (const CallState& state : states) {
        for (size_t column = 0; column < calls.size(); ++column) {
            const std::string cell = state.name + " / " + calls[column].name;
            SCOPED_TRACE(cell);
            NoteForFault(cell);
            const int before = CKXMemoryManager::Instance()->GetCount();
            const size_t first = cells++ % events.size();
            auto host = make();
            bool isRectangle = false;
            {
                DialogScript dialogs({}, [&](HWND dialog) { AnswerDialog(*host, dialog); });
                state.enter(*host);
                isRectangle =
                    host->Tool() != nullptr &&
                    std::string(host->Tool()->GetRuntimeClass()->m_lpszClassName) == "COperationCreateRectangle";
                if (state.trigger) {
                    host->inside = [&] { calls[column].act(*host); };
                    state.trigger(*host);
                    EXPECT_FALSE(host->inside) << "the event ran no code of the host";
                    host->inside = nullptr;
                } else {
                    calls[column].act(*host);
                }
                for (size_t i = 0; i < events.size(); ++i) {
                    events[(first + i) % events.size()].act(*host);
                }
                if (host->view != nullptr) {
                    host->Manager().Cancel();
                    EXPECT_EQ(nullptr, host->Tool());
                    // The slot may show the object of a tool that stays allocated.
                    void* current = host->Document().GetCurrentObject();
                    const auto& stays = host->mayStay;
                    EXPECT_TRUE(current == nullptr || std::find(stays.begin(), stays.end(), current) != stays.end());
                }
                host->FreeView();
                host->external.reset();
            }
            int stays = host->staysMore;
            // An object that two calls have erased counts once.
            for (void* pointer : std::set<void*>(host->mayStay.begin(), host->mayStay.end())) {
                stays += CKXMemoryManager::Instance()->IsKnown(pointer);
            }
            const int left = CKXMemoryManager::Instance()->GetCount() - before - stays;
            // The sides of a rectangle that is broken off stay allocated, and so does the object that a tool is
            // building when the host tells the manager that the tool is done.
            const bool isToldDone = calls[column].name == kToldDone;
            EXPECT_TRUE(left == 0 || (isRectangle && left == 4) || (isToldDone && left == 1)) << left;
        }
    }
    NoteForFault("");
    std::printf("%s: %zu states x %zu calls, %zu cells\n", title, states.size(), calls.size(), cells);
}
