#include "ParmHost.h"

#include "BoxAnswer.h"

std::string Narrow(const CString& text) {
    return Utf8(text);
}

namespace {

constexpr UINT kViewId = 77;

std::string NameOf(CText* text) {
    if (text == nullptr) {
        return "none";
    }
    auto* parm = DYNAMIC_DOWNCAST(CTextParm, text);
    return parm != nullptr ? Narrow(parm->GetParmName()) : Narrow(text->GetText());
}

} // namespace

LRESULT ParmParent::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_MOUSEWHEEL) {
        wheels.push_back(static_cast<short>(HIWORD(wParam)));
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

BOOL ParmParent::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    auto* record = reinterpret_cast<NMVECTORPARM*>(lParam);
    if (record->idFrom != kViewId) {
        return CWnd::OnNotify(wParam, lParam, pResult);
    }
    last = *record;
    lastParam = wParam;
    std::string line;
    if (record->code == kVpnQueryEdit) {
        line = "query " + NameOf(record->pText);
    } else if (record->code == kVpnClick) {
        line = "click " + std::to_string(record->nKind);
        if (record->nKind == kVpkParm || record->nKind == kVpkText) {
            line += " " + NameOf(record->pText);
        }
    } else if (record->code == kVpnDblClk) {
        line = "dblclk";
    } else {
        line = "code " + std::to_string(static_cast<int>(record->code));
    }
    log->push_back(line);
    if (onNotify) {
        onNotify(record);
    }
    *pResult = 0;
    return TRUE;
}

void ParmView::Log(const char* what, CTextParm* parm, const std::string& more) {
    if (log != nullptr) {
        log->push_back(std::string(what) + " " + (parm != nullptr ? Narrow(parm->GetParmName()) : "none") + more);
    }
}

LRESULT ParmView::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (onDefault) {
        onDefault(message);
    }
    return CVectorViewParm::DefWindowProc(message, wParam, lParam);
}

void ParmView::OnPreEditParm(CTextParm* parm, unsigned int& n, int& m, CString& text) {
    Log("pre", parm);
    // What a hook writes here has no effect.
    n = 100;
    m = 100;
    text = L"ignored";
    if (onPre) {
        onPre(parm);
    }
}

int ParmView::OnAcceptEditData(CTextParm* parm, CString text) {
    Log("accept", parm, " " + Narrow(text));
    return onAccept ? onAccept(parm, text) : CVectorViewParm::OnAcceptEditData(parm, text);
}

void ParmView::OnEditChanging(CTextParm* parm, CString& oldText, CString& newText) {
    Log("changing", parm, " " + Narrow(oldText) + ">" + Narrow(newText));
    if (onChanging) {
        onChanging(parm, oldText, newText);
    }
}

void ParmView::OnEditChanged(CTextParm* parm, CString oldText, CString newText) {
    Log("changed", parm, " " + Narrow(oldText) + ">" + Narrow(newText));
    if (onChanged) {
        onChanged(parm);
    }
}

void ParmView::OnEndEdit(CTextParm* parm) {
    Log("end", parm);
    if (onEnd) {
        onEnd(parm);
    }
}

void ParmView::OnEditTabDown(CTextParm* current) {
    // The parameter may have been freed with the edit that has just ended.
    if (log != nullptr) {
        log->push_back("tab");
    }
    CVectorViewParm::OnEditTabDown(current);
}

// ---- Windows -------------------------------------------------------------------------------------------------------

void ParmViewFixture::SetUp() {
    parent.log = &log;
    view.log = &log;
    const CString windowClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW));
    ASSERT_TRUE(parent.CreateEx(0, windowClass, L"host", WS_POPUP | WS_VISIBLE, 20, 20, 640, 420, nullptr, nullptr))
        << "no window without a display";
    ASSERT_TRUE(view.Create(windowClass, L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 500, 300), &parent, kViewId, nullptr));
    ASSERT_TRUE(other.Create(WS_CHILD | WS_VISIBLE, CRect(520, 10, 620, 40), &parent, 78));
    view.GetVectorViewCoordTran()->SetScreenSize(CSize(500, 300));
    parent.SetForegroundWindow();
    other.SetFocus();
    // Without PreTranslateMessage, which makes the tooltip.
    Pump(false);
    log.clear();
}

void ParmViewFixture::TearDown() {
    log.clear();
    view.onPre = nullptr;
    view.onAccept = nullptr;
    view.onChanging = nullptr;
    view.onChanged = nullptr;
    view.onEnd = nullptr;
    view.onDefault = nullptr;
    parent.onNotify = nullptr;
    if (parent.m_hWnd != nullptr) {
        parent.DestroyWindow();
    }
    // Messages that the windows left must not reach the next test.
    MSG msg;
    while (::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE)) {
    }
}

CTextParm* ParmViewFixture::AddParm(const wchar_t* name, const wchar_t* text, int x, int y) {
    auto* parm = static_cast<CTextParm*>(
        view.AddParmText(CGePoint2d(x, 300 - y), text, name, 0.0, Gdiplus::Color(0xFFFFFFFF), 20.0, 0));
    parm->SetTextEditWide(100.0f);
    return parm;
}

void ParmViewFixture::Paint() {
    view.Invalidate();
    view.UpdateWindow();
}

void ParmViewFixture::Pump(bool translated) {
    MSG msg;
    while (::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (translated && AfxPreTranslateMessage(&msg)) {
            continue;
        }
        ::TranslateMessage(&msg);
        ::DispatchMessage(&msg);
    }
}

void ParmViewFixture::Click(int x, int y) {
    // The system delivers a press to the window under the pointer.
    CPoint point(x, y);
    HWND target = view.m_hWnd;
    if (IsBoxShown() && BoxRect().PtInRect(point)) {
        target = view.Edit().m_hWnd;
        ::MapWindowPoints(view.m_hWnd, target, &point, 1);
    }
    ::PostMessage(target, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(point.x, point.y));
    ::PostMessage(target, WM_LBUTTONUP, 0, MAKELPARAM(point.x, point.y));
    Pump();
}

void ParmViewFixture::Click(CTextParm* parm) {
    const CGePoint2d pos = parm->GetPos();
    Click(static_cast<int>(pos.x) + 6, 300 - static_cast<int>(pos.y) + 6);
}

void ParmViewFixture::Key(UINT key, bool translated) {
    ::PostMessage(::GetFocus(), WM_KEYDOWN, key, 1);
    Pump(translated);
}

void ParmViewFixture::ControlKey(UINT key) {
    BYTE keys[256] = {};
    BYTE before[256] = {};
    ::GetKeyboardState(before);
    keys[VK_CONTROL] = 0x80;
    keys[VK_LCONTROL] = 0x80;
    ::SetKeyboardState(keys);
    // The loop of Pump would ask for the present state of the keys: handled here, with the key held.
    MSG msg = {};
    msg.hwnd = ::GetFocus();
    msg.message = WM_KEYDOWN;
    msg.wParam = key;
    msg.lParam = static_cast<LPARAM>((::MapVirtualKey(key, MAPVK_VK_TO_VSC) << 16) | 1);
    if (!AfxPreTranslateMessage(&msg)) {
        ::TranslateMessage(&msg);
        ::DispatchMessage(&msg);
    }
    MSG character;
    while (::PeekMessage(&character, nullptr, WM_CHAR, WM_CHAR, PM_REMOVE)) {
        if (!AfxPreTranslateMessage(&character)) {
            ::DispatchMessage(&character);
        }
    }
    ::SetKeyboardState(before);
    Pump();
}

void ParmViewFixture::Type(const wchar_t* text) {
    for (; *text != 0; ++text) {
        ::PostMessage(::GetFocus(), WM_CHAR, *text, 1);
    }
    Pump();
}

Events ParmViewFixture::Take() {
    Events taken;
    taken.swap(log);
    return taken;
}

CString ParmViewFixture::BoxText() {
    CString text;
    view.Edit().GetWindowText(text);
    return text;
}

CRect ParmViewFixture::BoxRect() {
    CRect rect;
    view.Edit().GetWindowRect(&rect);
    view.ScreenToClient(&rect);
    return rect;
}

std::vector<BYTE> ParmViewFixture::Store() {
    CMemFile file;
    EXPECT_EQ(1, view.GetDocument()->StoreToMemFile(&file));
    std::vector<BYTE> bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}
