#include "HostFrame.h"

#include "CommandTable.h"
#include "DemoIds.h"
#include "HostText.h"

#include <DrawingHistory.h>
#include <afxres.h>
#include <resource.h>

#include <algorithm>
#include <iterator>

namespace {

struct Background {
    short index;    // into the library's colour table
    COLORREF color; // with an explicit one
};
const Background Backgrounds[CHostFrame::BackgroundCount] = {
    {kColorBlack, 0},
    {kColorExplicit, RGB(16, 32, 64)},
    {kColorExplicit, RGB(48, 48, 48)},
    {kColorWhite, 0},
};

const UINT DpiChanged = 0x02E0; // WM_DPICHANGED, of newer systems than these headers are asked for.
const UINT_PTR RecoveryTimer = 1;
const UINT RecoveryPause = 2000; // Milliseconds.

// As many decimals as one pixel is worth, at most six.
CString FormatCoordinate(double value, double unitsPerPixel) {
    int decimals = 0;
    for (double step = 1.0; decimals < 6 && step > unitsPerPixel; step /= 10.0) {
        ++decimals;
    }
    CString text;
    text.Format(L"%.*f", decimals, value);
    return text;
}

} // namespace

BEGIN_MESSAGE_MAP(CHostFrame, CWnd)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_WM_PAINT()
    ON_WM_CLOSE()
    ON_WM_DESTROY()
    ON_WM_INITMENUPOPUP()
    ON_WM_MENUSELECT()
    ON_WM_CONTEXTMENU()
    ON_WM_TIMER()
    ON_WM_DROPFILES()
    ON_WM_MEASUREITEM()
    ON_WM_DRAWITEM()
    ON_MESSAGE(DpiChanged, &CHostFrame::OnDpiChanged)
    ON_COMMAND(ID_FILE_NEW, &CHostFrame::OnFileNew)
    ON_COMMAND(ID_FILE_OPEN, &CHostFrame::OnFileOpen)
    ON_COMMAND(ID_FILE_SAVE, &CHostFrame::OnFileSave)
    ON_COMMAND(ID_FILE_SAVE_AS, &CHostFrame::OnFileSaveAs)
    ON_COMMAND(ID_HOST_PRINT_PREVIEW, &CHostFrame::OnPrintPreview)
    ON_COMMAND(ID_FILE_PRINT, &CHostFrame::OnPrint)
    ON_COMMAND(ID_EDIT_COPY, &CHostFrame::OnCopyObjects)
    ON_COMMAND(ID_EDIT_PASTE, &CHostFrame::OnPasteObjects)
    ON_COMMAND(ID_HOST_COPY_PICTURE, &CHostFrame::OnCopyPicture)
    ON_COMMAND(ID_APP_EXIT, &CHostFrame::OnFileExit)
    ON_COMMAND(ID_HOST_ZOOM_ALL, &CHostFrame::OnZoomAll)
    ON_COMMAND(ID_HOST_ORTHO, &CHostFrame::OnOrtho)
    ON_COMMAND(ID_HOST_BREAK_OFF, &CHostFrame::OnBreakOff)
    ON_COMMAND(ID_HOST_DESELECT, &CHostFrame::OnDeselect)
    ON_COMMAND(ID_HOST_ERASE, &CHostFrame::OnErase)
    ON_COMMAND(ID_HOST_ABOUT, &CHostFrame::OnAbout)
    ON_COMMAND(ID_HOST_NEXT_PANE, &CHostFrame::OnNextPane)
    ON_COMMAND(ID_HOST_SHOW_SECTION, &CHostFrame::OnShowSection)
    ON_COMMAND(ID_HOST_DRAW_SECTION, &CHostFrame::OnDrawSection)
    ON_COMMAND(ID_HOST_PROPERTIES, &CHostFrame::OnProperties)
    ON_COMMAND(ID_HOST_CLASSIC, &CHostFrame::OnClassic)
    ON_COMMAND(ID_EDIT_UNDO, &CHostFrame::OnUndo)
    ON_COMMAND(ID_EDIT_REDO, &CHostFrame::OnRedo)
    ON_COMMAND(ID_HOST_SELECT_ALL, &CHostFrame::OnSelectAll)
    ON_COMMAND_RANGE(ID_HOST_RECENT_FIRST, ID_HOST_RECENT_LAST, &CHostFrame::OnRecent)
    ON_COMMAND_RANGE(ID_HOST_EXAMPLE_FIRST, ID_HOST_EXAMPLE_LAST, &CHostFrame::OnExample)
    ON_NOTIFY(kVpnClick, IDC_HOST_SECTION, &CHostFrame::OnSectionClick)
    ON_COMMAND_RANGE(ID_HOST_SNAP_FIRST, ID_HOST_SNAP_LAST, &CHostFrame::OnSnap)
    ON_COMMAND_RANGE(ID_HOST_BACKGROUND_FIRST, ID_HOST_BACKGROUND_LAST, &CHostFrame::OnBackground)
    ON_COMMAND_RANGE(ID_HOST_COMMAND_FIRST, ID_HOST_COMMAND_LAST, &CHostFrame::OnRunCommand)
END_MESSAGE_MAP()

CString CHostFrame::GetSnapName(UINT i) {
    return LoadTextLine(ID_HOST_SNAP_FIRST + i, 0);
}

// ---- Construction

CHostFrame::~CHostFrame() {
    if (m_images != nullptr) {
        ::ImageList_Destroy(m_images);
    }
}

BOOL CHostFrame::CreateFrame() {
    const HICON icon = AfxGetApp()->LoadIcon(IDI_DEMO);
    const LPCTSTR className =
        AfxRegisterWndClass(0, ::LoadCursorW(nullptr, IDC_ARROW), reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1), icon);
    RECT work = {0, 0, 1280, 800};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const int width = std::min(1120L, work.right - work.left);
    const int height = std::min(780L, work.bottom - work.top);
    const BOOL made =
        CreateEx(0, className, L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, work.left + (work.right - width) / 2,
                 work.top + (work.bottom - height) / 2, width, height, nullptr, nullptr);
    if (made && m_dots != UnscaledDots) {
        // The monitor and its scale are known now.
        const int wide = std::min<int>(Scaled(width), work.right - work.left);
        const int high = std::min<int>(Scaled(height), work.bottom - work.top);
        MoveWindow(work.left + (work.right - work.left - wide) / 2, work.top + (work.bottom - work.top - high) / 2,
                   wide, high);
        m_view.ResetMapping();
    }
    return made;
}

int CHostFrame::OnCreate(LPCREATESTRUCT create) {
    if (CWnd::OnCreate(create) == -1) {
        return -1;
    }
    ApplyScale(); // For the pictures of menus and toolbar,
    MakeMenus();
    MakeToolbar();
    const CRect nothing(0, 0, 0, 0);
    if (!m_status.Create(WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, nothing, this, IDC_HOST_STATUS) ||
        !m_view.CreateIn(this, CRect(0, 0, create->cx, create->cy), IDC_HOST_VIEW) || !MakeSectionPane() ||
        !m_examples.CreateIn(&m_view, IDC_HOST_EXAMPLES, [this](UINT id) { PostMessage(WM_COMMAND, id); })) {
        return -1;
    }
    m_keys = ::LoadAcceleratorsW(AfxGetInstanceHandle(), MAKEINTRESOURCEW(IDR_DEMO_KEYS));
    ApplyScale(); // and for what has been made meanwhile.
    LayOut();
    m_view.ResetMapping();
    DragAcceptFiles();
    SetTimer(RecoveryTimer, RecoveryPause, nullptr);
    return 0;
}

// One picture for each row of the table, in front of them that of the zoom to extents, and those of undo and redo.
void CHostFrame::MakeImages(int size) {
    if (m_images != nullptr) {
        ::ImageList_Destroy(m_images);
    }
    m_images = ::ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, CommandRowCount + 3, 0);
    for (int i = -1; i < CommandRowCount + 2; ++i) {
        const UINT number = i < 0                  ? IDI_ZOOMALL
                            : i < CommandRowCount  ? CommandRows[i].icon
                            : i == CommandRowCount ? IDI_UNDO
                                                   : IDI_REDO;
        const HINSTANCE module = AfxFindResourceHandle(MAKEINTRESOURCE(number), RT_GROUP_ICON);
        const HICON icon =
            static_cast<HICON>(::LoadImageW(module, MAKEINTRESOURCEW(number), IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
        ::ImageList_ReplaceIcon(m_images, -1, icon);
        ::DestroyIcon(icon);
    }
}

void CHostFrame::AddButton(UINT id, int image, const wchar_t* tip) {
    TBBUTTON button = {};
    button.iBitmap = image;
    button.idCommand = static_cast<int>(id);
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = BTNS_BUTTON;
    button.iString = reinterpret_cast<INT_PTR>(tip); // not shown as text: it becomes the tip
    ::SendMessageW(m_toolbar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
}

void CHostFrame::AddButtonGap() {
    TBBUTTON gap = {};
    gap.fsStyle = BTNS_SEP;
    ::SendMessageW(m_toolbar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&gap));
}

void CHostFrame::MakeToolbar() {
    m_toolbar = ::CreateWindowExW(
        0, TOOLBARCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS, 0, 0, 0,
        0, m_hWnd, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(IDC_HOST_TOOLBAR)), AfxGetInstanceHandle(), nullptr);
    if (m_toolbar == nullptr) {
        return;
    }
    ::SendMessageW(m_toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    ::SendMessageW(m_toolbar, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
    ::SendMessageW(m_toolbar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(m_images));
    AddButton(ID_HOST_ZOOM_ALL, 0, PlainCaption(LoadTextLine(ID_HOST_ZOOM_ALL, 0)));
    AddButton(ID_EDIT_UNDO, UndoImage, PlainCaption(LoadTextLine(ID_EDIT_UNDO, 0)));
    AddButton(ID_EDIT_REDO, RedoImage, PlainCaption(LoadTextLine(ID_EDIT_REDO, 0)));
    AddButtonGap();
    for (int i = 0; i < CommandRowCount; ++i) {
        const CommandWord& row = CommandRows[i];
        if (i > 0 && row.menu != CommandRows[i - 1].menu) {
            AddButtonGap();
        }
        // Of several rows with one picture only the first gets a button.
        const auto samePicture = [&row](const CommandWord& other) { return other.icon == row.icon; };
        if (std::none_of(CommandRows, CommandRows + i, samePicture)) {
            AddButton(static_cast<UINT>(ID_HOST_COMMAND_FIRST + i), i + 1, PlainCaption(i));
        }
    }
    ::SendMessageW(m_toolbar, TB_AUTOSIZE, 0, 0);
}

// ---- Status bar and title

void CHostFrame::SetStatus(int pane, const CString& text) {
    if (m_shown[pane] == text) {
        return;
    }
    m_shown[pane] = text;
    const auto at = std::find(m_statusPanes.begin(), m_statusPanes.end(), pane);
    if (at != m_statusPanes.end()) {
        m_status.SetText(text, static_cast<int>(at - m_statusPanes.begin()), 0);
    }
    ArrangeStatus();
}

void CHostFrame::ArrangeStatus() {
    CRect client;
    GetClientRect(&client);
    CClientDC dc(&m_status);
    CFont* former = dc.SelectObject(&m_font);
    const auto widthOf = [&](int pane) { return static_cast<int>(dc.GetTextExtent(m_shown[pane]).cx) + Scaled(14); };
    const int least[] = {0, Scaled(170), Scaled(145), Scaled(150)};
    int rest = client.Width() - Scaled(16) - widthOf(PaneCommand); // Without the grip at the corner of the window.
    std::vector<int> panes;
    std::vector<int> widths;
    for (const int pane : {PanePoint, PaneModes, PaneScale}) {
        const int width = std::max(least[pane], widthOf(pane));
        if (width > rest) {
            break;
        }
        rest -= width;
        panes.push_back(pane);
        widths.push_back(width);
    }
    dc.SelectObject(former);
    // From the left: the prompt, the point, the scale, the modes.
    std::vector<int> shown = {PaneCommand};
    std::vector<int> edges = {client.Width() - Scaled(16)};
    for (size_t i = 0; i < panes.size(); ++i) {
        edges[0] -= widths[i];
    }
    for (const int pane : {PanePoint, PaneScale, PaneModes}) {
        const auto at = std::find(panes.begin(), panes.end(), pane);
        if (at != panes.end()) {
            shown.push_back(pane);
            edges.push_back(edges.back() + widths[static_cast<size_t>(at - panes.begin())]);
        }
    }
    edges.back() = -1;
    if (shown == m_statusPanes && edges == m_statusEdges) {
        return;
    }
    m_statusPanes = shown;
    m_statusEdges = edges;
    m_status.SetParts(static_cast<int>(edges.size()), edges.data());
    for (size_t i = 0; i < shown.size(); ++i) {
        m_status.SetText(m_shown[shown[i]], static_cast<int>(i), 0);
    }
}

CString CHostFrame::DescribeCommand() {
    if (m_inSection) {
        const CString hint = m_section.GetHint();
        return m_drawsSection || m_section.IsRefused() ? hint : hint + LoadText(IDS_DRAW_SECTION);
    }
    const int row = m_view.GetCommandRow();
    if (!m_view.GetManager()->GetHasCommand()) {
        return LoadText(IDS_READY);
    }
    if (m_view.IsPlacing()) {
        return LoadText(IDS_PLACING);
    }
    if (row < 0) {
        return LoadText(IDS_GRIP);
    }
    return PlainCaption(row) + LoadText(IDS_COLON) + GetPrompt(row, m_view.GetClicks()) + LoadText(IDS_ESCAPE);
}

void CHostFrame::UpdateShown() {
    if (m_hWnd == nullptr || m_view.m_hWnd == nullptr) {
        return;
    }
    m_view.ShowBandFigure();
    SetStatus(PaneCommand, DescribeCommand());
    for (int i = 0; i < CommandRowCount; ++i) {
        const UINT id = static_cast<UINT>(ID_HOST_COMMAND_FIRST + i);
        ::SendMessageW(m_toolbar, TB_ENABLEBUTTON, id, IsEnabled(id) ? TRUE : FALSE);
    }
    for (const UINT id : {ID_HOST_ZOOM_ALL, ID_EDIT_UNDO, ID_EDIT_REDO}) {
        ::SendMessageW(m_toolbar, TB_ENABLEBUTTON, id, IsEnabled(id) ? TRUE : FALSE);
    }

    const double scale = static_cast<double>(m_view.GetVectorViewCoordTran()->GetScale());
    CGePoint2d point;
    if (m_view.GetCursorPoint(point)) {
        SetStatus(PanePoint, L"X " + FormatCoordinate(point.x, scale) + L"   Y " + FormatCoordinate(point.y, scale));
    }
    CString text;
    text.Format(LoadText(IDS_SCALE), scale);
    SetStatus(PaneScale, text);

    text = m_ortho ? LoadText(IDS_ORTHO) : L"";
    for (UINT i = 0; i < SnapCount; ++i) {
        if (m_osnap & (1 << i)) {
            text += GetSnapName(i) + L" ";
        }
    }
    SetStatus(PaneModes, text);

    const CString title =
        GetShownName() + (m_view.GetDocument()->IsModified() ? L" *" : L"") + L" - " + LoadText(IDS_TITLE);
    if (title != m_title) {
        m_title = title;
        SetWindowText(title);
    }
    ShowExamples();
    ShowActivePane();
}

// Over a drawing without changes: an empty one, or the section that is shown at the start.
void CHostFrame::ShowExamples() {
    CGraphicDocument* document = m_view.GetDocument();
    const bool untouched = m_path.IsEmpty() && !document->IsModified() && !m_view.GetManager()->GetHasCommand() &&
                           !m_view.CanUndo() && !m_view.CanRedo() &&
                           (m_drawsSection || document->GetDrawableObjs()->IsEmpty());
    CRect place;
    m_view.GetClientRect(&place);
    place.DeflateRect(Scaled(8), Scaled(8));
    m_examples.Show(untouched, place);
}

// ---- Commands

void CHostFrame::OnProperties() {
    m_view.ToggleProperties();
}

void CHostFrame::OnRunCommand(UINT id) {
    const int row = static_cast<int>(id) - ID_HOST_COMMAND_FIRST;
    if (row < CommandRowCount && IsEnabled(id)) {
        m_view.RunCommand(row);
    }
}

void CHostFrame::OnErase() {
    if (IsEnabled(ID_HOST_ERASE)) {
        m_view.RunCommand(FindCommandRow(L"erase"));
    }
}

void CHostFrame::OnUndo() {
    // The edit box of a running command has the keys of its own; the menu means the drawing.
    if (m_view.GetManager()->GetHasCommand() || !GiveToEdit(WM_UNDO)) {
        m_view.Undo();
    }
}

void CHostFrame::OnRedo() {
    m_view.Redo();
}

void CHostFrame::OnSelectAll() {
    if (IsEnabled(ID_HOST_SELECT_ALL)) {
        m_view.SelectAll();
    }
}

void CHostFrame::OnClassic() {
    m_view.BreakOff();
    m_view.SetClassic(!m_view.IsClassic());
    m_view.Invalidate();
}

void CHostFrame::OnZoomAll() {
    if (!m_inSection) {
        m_view.ZoomAll();
    } else if (m_section.FinishEdit()) {
        m_section.ZoomAll();
    }
}

void CHostFrame::OnOrtho() {
    m_ortho = !m_ortho;
    m_view.GetManager()->SetDrawObjLatus(m_ortho);
}

void CHostFrame::OnBreakOff() {
    m_view.BreakOff();
}

void CHostFrame::OnDeselect() {
    m_view.GetDocument()->RemoveAllSelected();
    m_view.Invalidate();
}

void CHostFrame::OnTimer(UINT_PTR id) {
    if (id == RecoveryTimer && !m_view.GetManager()->GetHasCommand()) {
        m_recovery.Keep(*m_view.GetDocument());
    }
}

void CHostFrame::OnSnap(UINT id) {
    m_osnap ^= 1 << (id - ID_HOST_SNAP_FIRST);
    m_view.GetManager()->SetOsnapMode(m_osnap);
}

// By the drawing, since an undo may have changed it; black for one that no item gives.
UINT CHostFrame::GetBackgroundItem() {
    CGraphicDocument* document = m_view.GetDocument();
    UINT found = 0;
    for (UINT i = 0; i < BackgroundCount; ++i) {
        const Background& background = Backgrounds[i];
        const bool same = background.index == kColorExplicit ? document->GetBKColor() == background.color
                                                             : document->GetBKColorIndex() == background.index;
        found = same ? i : found;
    }
    return ID_HOST_BACKGROUND_FIRST + found;
}

void CHostFrame::OnBackground(UINT id) {
    const Background& background = Backgrounds[id - ID_HOST_BACKGROUND_FIRST];
    CGraphicDocument* document = m_view.GetDocument();
    if (background.index == kColorExplicit) {
        document->SetBKColor(background.color);
    } else {
        document->SetBKColorIndex(background.index);
    }
    const CDrawableArray& objects = *document->GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        m_view.MakeReadable(objects.GetAt(i));
    }
    document->SetModifiedFlag(TRUE); // the background is saved with the drawing
    if (CDrawingHistory* history = m_view.GetHistory()) {
        const CString name = PlainCaption(LoadText(IDS_MENU_BACKGROUND));
        history->Mark(name, name);
    }
    m_view.Invalidate();
}

void CHostFrame::OnAbout() {
    AfxMessageBox(LoadText(IDS_ABOUT), MB_OK | MB_ICONINFORMATION);
}
