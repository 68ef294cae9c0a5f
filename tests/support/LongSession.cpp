#include "LongSession.h"

#include "CommandOperationManager.h"
#include "ObjectStream.h"
#include "OperationPlaceObjects.h"
#include "TextParm.h"
#include "VectorViewParm.h"
#include "support/ViewHost.h"

#include <memory>
#include <new>

namespace {

class SessionView : public CVectorViewParm {
public:
    using CVectorViewParm::m_Edit;
    using CVectorViewParm::m_Graphic;
};

// The frame of the window may be refused too, which is no failure of a test.
class Frame : public CWnd {
public:
    Frame() {
        CreateEx(0, AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW)), L"frame",
                 WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 100, 80, 400, 300, nullptr, nullptr);
    }
    ~Frame() override { DestroyWindow(); }
};

void Click(CWnd& view, int x, int y) {
    view.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
    view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    view.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void Fill(CVectorView& view) {
    const Gdiplus::Color white(0xFFFFFFFF);
    view.AddLine(CGePoint2d(50, 50), CGePoint2d(250, 150), white, 1);
    CGePointArray points;
    CBulgeArray bulges;
    for (CGePoint2d corner : {CGePoint2d(260, 60), CGePoint2d(340, 60), CGePoint2d(340, 140)}) {
        double bulge = 0.4;
        points.Add(corner);
        bulges.Add(bulge);
    }
    view.AddPLine(points, bulges, white, 1, 1, 1);
    view.AddArc(CGePoint2d(100, 200), 30, 0, 2, white, L"", L"", 0, 0);
    view.AddText(CGePoint2d(150, 250), L"text", 30.0, white, 12.0, 1, 1);
    CString text = L"10";
    CString name = L"A";
    view.AddParmTextNoRegExp(CGePoint2d(50, 250), text, name, 0.0, white, 20.0, 0);
}

void Draw(CVectorView& view, LPCTSTR word) {
    view.DoCommand(word);
    Click(view, 40, 60);
    Click(view, 80, 90);
    Click(view, 120, 70);
    if (auto* manager = static_cast<CCommandOperationManager*>(view.GetCommandOperationManager())) {
        manager->Cancel();
    }
}

} // namespace

void RunLongSession(const TemporaryPath& path, const std::function<void(const char*)>& step,
                    std::vector<std::string>& thrown) {
    const auto attempt = [&](const char* name, const std::function<void()>& act) {
        step(name);
        try {
            act();
        } catch (CException* e) {
            thrown.push_back(e->GetRuntimeClass()->m_lpszClassName);
            e->Delete();
        } catch (const std::bad_alloc&) {
            thrown.push_back("bad_alloc");
        } catch (...) {
            thrown.push_back("something else");
        }
    };
    const auto repaint = [](CVectorView& view) {
        if (view.m_hWnd != nullptr) {
            view.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        }
    };
    std::unique_ptr<Frame> frame;
    std::unique_ptr<SessionView> view;
    attempt("frame", [&] { frame = std::make_unique<Frame>(); });
    attempt("view", [&] { view = std::make_unique<SessionView>(); });
    if (frame == nullptr || view == nullptr) {
        return;
    }
    view->GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
    attempt("window", [&] {
        if (frame->m_hWnd != nullptr) {
            view->Create(nullptr, L"view", WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), frame.get(), 1);
        }
    });
    attempt("fill", [&] { Fill(*view); });
    attempt("paint", [&] { repaint(*view); });
    if (view->m_hWnd != nullptr) {
        attempt("line", [&] { Draw(*view, L"line"); });
        attempt("polyline", [&] { Draw(*view, L"pline"); });
        attempt("circle", [&] { Draw(*view, L"circle"); });
        attempt("arc", [&] { Draw(*view, L"arc"); });
        attempt("paste", [&] {
            CByteArray bytes;
            CDrawableArray all;
            all.Copy(*view->GetDocument()->GetDrawableObjs());
            CObjectStream::Store(view->GetDocument(), all, bytes);
            auto* manager = static_cast<CCommandOperationManager*>(view->GetCommandOperationManager());
            auto* tool = COperationPlaceObjects::Make(view.get(), &view->m_Graphic, view->GetVectorViewCoordTran(),
                                                      view->GetDocument(), bytes.GetData(),
                                                      static_cast<size_t>(bytes.GetSize()));
            if (manager != nullptr && tool != nullptr && manager->SetCommand(tool, 1) != 0) {
                Click(*view, 200, 200);
                manager->Cancel();
            }
        });
        attempt("grip", [&] {
            Click(*view, 150, 200); // the line
            Click(*view, 50, 250);  // its end
            Click(*view, 70, 240);
        });
        attempt("copy", [&] {
            Click(*view, 150, 200);
            Draw(*view, L"copy");
        });
        attempt("parameter", [&] {
            Click(*view, 56, 56);
            if (view->m_Edit.GetSafeHwnd() != nullptr && view->m_Edit.IsWindowVisible()) {
                view->m_Edit.SetWindowText(L"20");
                view->m_Edit.SendMessage(WM_CHAR, VK_RETURN, 1);
            }
            view->SetFocus();
        });
        attempt("paint again", [&] { repaint(*view); });
    }
    attempt("save", [&] { view->GetDocument()->OnSaveDocument(path); });
    attempt("store", [&] {
        CMemFile file(1024);
        view->GetDocument()->StoreToMemFile(&file);
        const auto length = static_cast<UINT>(file.GetLength());
        BYTE* bytes = file.Detach();
        const std::unique_ptr<BYTE, void (*)(void*)> owner(bytes, &std::free);
        view->LoadFile(bytes, length);
    });
    attempt("open", [&] { view->GetDocument()->OnOpenDocument(path); });
    attempt("fit", [&] { view->ZoomAll(); });
    attempt("paint for a host", [&] {
        CDC dc;
        CBitmap bitmap;
        CDC screen;
        if (dc.CreateCompatibleDC(nullptr) && bitmap.CreateBitmap(64, 64, 1, 32, nullptr)) {
            CBitmap* old = dc.SelectObject(&bitmap);
            view->VectorPaint(&dc);
            dc.SelectObject(old);
        }
    });
    attempt("close", [&] {
        view.reset();
        frame.reset();
    });
    // The program is idle between two sessions.
    CGdiObject::DeleteTempMap();
    CDC::DeleteTempMap();
    CWnd::DeleteTempMap();
}
