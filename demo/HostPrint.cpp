#include "HostPrint.h"

#include "DemoIds.h"
#include "HostFrame.h"
#include "HostText.h"

#include <DrawingRender.h>

#include <commdlg.h>

#include <algorithm>
#include <cmath>

namespace {

const double MillimetresPerInch = 25.4;

// A4 with five millimetres left free.
CPaperSheet PlainSheet(bool landscape) {
    CPaperSheet sheet;
    const auto dots = [&sheet](double millimetres) {
        return static_cast<int>(std::lround(millimetres * sheet.dotsPerInch / MillimetresPerInch));
    };
    sheet.all = landscape ? CSize(dots(297), dots(210)) : CSize(dots(210), dots(297));
    sheet.printable = CRect(dots(5), dots(5), sheet.all.cx - dots(5), sheet.all.cy - dots(5));
    return sheet;
}

CPaperSheet SheetOf(const CDC& printer) {
    CPaperSheet sheet;
    sheet.all = CSize(printer.GetDeviceCaps(PHYSICALWIDTH), printer.GetDeviceCaps(PHYSICALHEIGHT));
    const CPoint corner(printer.GetDeviceCaps(PHYSICALOFFSETX), printer.GetDeviceCaps(PHYSICALOFFSETY));
    sheet.printable = CRect(corner, CSize(printer.GetDeviceCaps(HORZRES), printer.GetDeviceCaps(VERTRES)));
    sheet.dotsPerInch = printer.GetDeviceCaps(LOGPIXELSX);
    return sheet;
}

// Asks for a printer, or returns the default one where `quietly`; null when there is none or the user cancels.
HDC AskForPrinter(CWnd* owner, bool landscape, bool quietly) {
    PRINTDLGW dialog = {};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = owner->GetSafeHwnd();
    dialog.Flags = PD_RETURNDEFAULT;
    // The default printer's settings, which get the sheet's direction.
    if (!::PrintDlgW(&dialog) || dialog.hDevMode == nullptr) {
        if (!quietly) {
            AfxMessageBox(LoadText(IDS_NO_PRINTER), MB_OK | MB_ICONINFORMATION);
        }
        return nullptr;
    }
    if (auto* mode = static_cast<DEVMODEW*>(::GlobalLock(dialog.hDevMode))) {
        mode->dmFields |= DM_ORIENTATION;
        mode->dmOrientation = landscape ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
        ::GlobalUnlock(dialog.hDevMode);
    }
    HDC printer = nullptr;
    if (quietly) {
        const auto* names = static_cast<DEVNAMES*>(::GlobalLock(dialog.hDevNames));
        const auto* mode = static_cast<DEVMODEW*>(::GlobalLock(dialog.hDevMode));
        if (names != nullptr && mode != nullptr) {
            const auto* text = reinterpret_cast<const wchar_t*>(names);
            printer = ::CreateICW(text + names->wDriverOffset, text + names->wDeviceOffset, nullptr, mode);
        }
        ::GlobalUnlock(dialog.hDevNames);
        ::GlobalUnlock(dialog.hDevMode);
    } else {
        // One page: nothing to choose from.
        dialog.Flags = PD_RETURNDC | PD_NOSELECTION | PD_NOPAGENUMS | PD_USEDEVMODECOPIESANDCOLLATE;
        printer = ::PrintDlgW(&dialog) ? dialog.hDC : nullptr;
    }
    ::GlobalFree(dialog.hDevMode);
    ::GlobalFree(dialog.hDevNames);
    return printer;
}

CPaperSheet DefaultSheet(CWnd* owner, bool landscape) {
    const HDC printer = AskForPrinter(owner, landscape, true);
    if (printer == nullptr) {
        return PlainSheet(landscape);
    }
    CDC dc;
    dc.Attach(printer);
    return SheetOf(dc);
}

CRenderOptions OptionsOf(CSize dots, double dotsPerInch, const CPaperChoice& choice) {
    CRenderOptions options = CDrawingRender::PaperOptions(dots, dotsPerInch, choice.n);
    if (!choice.black) {
        options.colors = CRenderOptions::Stored;
    }
    return options;
}

} // namespace

CPaperChoice FirstPaperChoice(CGraphicDocument* document) {
    CPaperChoice choice;
    CGePoint2d low;
    CGePoint2d high;
    choice.landscape = document->GetRect(low, high) != 0 && high.x - low.x > high.y - low.y;
    return choice;
}

bool PrintDrawing(CWnd* owner, CGraphicDocument* document, const CPaperChoice& choice) {
    const HDC printer = AskForPrinter(owner, choice.landscape, false);
    if (printer == nullptr) {
        return false;
    }
    CDC dc;
    dc.Attach(printer);
    const CPaperSheet sheet = SheetOf(dc);
    CDrawingRender render(document, OptionsOf(sheet.printable.Size(), sheet.dotsPerInch, choice));
    DOCINFOW job = {};
    job.cbSize = sizeof(job);
    const CString title = document->GetTitle();
    job.lpszDocName = title;
    bool done = render.Status() == RenderStatus::Done && dc.StartDoc(&job) > 0;
    if (done) {
        done = dc.StartPage() > 0 && render.Paint(&dc) == RenderStatus::Done && dc.EndPage() > 0;
        if (done) {
            dc.EndDoc();
        } else {
            dc.AbortDoc();
        }
    }
    if (!done) {
        AfxMessageBox(LoadText(IDS_PRINT_FAILED), MB_OK | MB_ICONWARNING);
    }
    return done;
}

// ---- The preview

BEGIN_MESSAGE_MAP(CPrintPreview, CDialog)
    ON_WM_DRAWITEM()
    ON_CBN_SELCHANGE(IDC_PREVIEW_SCALE, &CPrintPreview::OnChoice)
    ON_CBN_EDITCHANGE(IDC_PREVIEW_SCALE, &CPrintPreview::OnScaleEdited)
    ON_BN_CLICKED(IDC_PREVIEW_BLACK, &CPrintPreview::OnChoice)
    ON_BN_CLICKED(IDC_PREVIEW_LANDSCAPE, &CPrintPreview::OnChoice)
    ON_BN_CLICKED(IDC_PREVIEW_PRINT, &CPrintPreview::OnPrint)
END_MESSAGE_MAP()

CPrintPreview::CPrintPreview(CWnd* parent, CGraphicDocument* document)
    : CDialog(IDD_HOST_PREVIEW, parent), m_document(document), m_choice(FirstPaperChoice(document)) {}

BOOL CPrintPreview::OnInitDialog() {
    CDialog::OnInitDialog();
    const HWND scale = ::GetDlgItem(m_hWnd, IDC_PREVIEW_SCALE);
    for (const wchar_t* text : {LoadText(IDS_FIT_SHEET), L"1:1", L"1:2", L"1:5", L"1:10", L"1:20", L"1:50", L"1:100"}) {
        ::SendMessageW(scale, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    }
    ::SendMessageW(scale, CB_SETCURSEL, 0, 0);
    CheckDlgButton(IDC_PREVIEW_BLACK, m_choice.black ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(IDC_PREVIEW_LANDSCAPE, m_choice.landscape ? BST_CHECKED : BST_UNCHECKED);
    ShowFacts();
    return TRUE;
}

// "1:n", or n alone; anything else fits the drawing.
void CPrintPreview::TakeScale(const CString& text) {
    const CString number = text.Mid(text.Find(L':') + 1);
    wchar_t* end = nullptr;
    const double n = std::wcstod(number, &end);
    m_choice.n = end != number && *end == L'\0' && n > 0.0 && n <= 1e6 ? n : 0.0;
}

void CPrintPreview::OnChoice() {
    const HWND scale = ::GetDlgItem(m_hWnd, IDC_PREVIEW_SCALE);
    const LRESULT row = ::SendMessageW(scale, CB_GETCURSEL, 0, 0);
    wchar_t text[64] = L"";
    if (row >= 0 && ::SendMessageW(scale, CB_GETLBTEXTLEN, static_cast<WPARAM>(row), 0) < 64) {
        ::SendMessageW(scale, CB_GETLBTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text));
    } else {
        ::GetWindowTextW(scale, text, 64);
    }
    TakeScale(text);
    m_choice.black = IsDlgButtonChecked(IDC_PREVIEW_BLACK) == BST_CHECKED;
    m_choice.landscape = IsDlgButtonChecked(IDC_PREVIEW_LANDSCAPE) == BST_CHECKED;
    ShowFacts();
}

void CPrintPreview::OnScaleEdited() {
    CString text;
    GetDlgItem(IDC_PREVIEW_SCALE)->GetWindowText(text);
    TakeScale(text);
    ShowFacts();
}

// Shows the scale, and whether the drawing is larger than the sheet.
void CPrintPreview::ShowFacts() {
    m_sheet = DefaultSheet(this, m_choice.landscape);
    const CPaperSheet& sheet = m_sheet;
    const CRenderOptions options = OptionsOf(sheet.printable.Size(), sheet.dotsPerInch, m_choice);
    CDrawingRender render(m_document, options);
    const double unit = static_cast<double>(render.Mapping().GetScale()); // in drawing units for a dot
    CString text;
    CGePoint2d low;
    CGePoint2d high;
    if (render.Status() != RenderStatus::Done) {
        text = LoadText(IDS_SCALE_RANGE);
    } else if (m_document->GetRect(low, high) == 0) {
        text = LoadText(IDS_EMPTY_DRAWING);
    } else {
        text.Format(LoadText(IDS_SHEET_SCALE), unit * sheet.dotsPerInch / MillimetresPerInch);
        if (high.x - low.x > unit * sheet.printable.Width() || high.y - low.y > unit * sheet.printable.Height()) {
            text += LoadText(IDS_OFF_SHEET);
        }
    }
    SetDlgItemText(IDC_PREVIEW_FACTS, text);
    GetDlgItem(IDC_PREVIEW_SHEET)->Invalidate();
}

void CPrintPreview::OnDrawItem(int id, LPDRAWITEMSTRUCT draw) {
    if (id != IDC_PREVIEW_SHEET) {
        CDialog::OnDrawItem(id, draw);
        return;
    }
    const CRect area(draw->rcItem);
    const CPaperSheet& sheet = m_sheet;
    const int edge = 8; // pixels around the sheet
    const double small =
        std::min((area.Width() - 2.0 * edge) / sheet.all.cx, (area.Height() - 2.0 * edge) / sheet.all.cy);
    const auto pixels = [small](int dots) { return static_cast<int>(std::lround(dots * small)); };
    const CSize size(pixels(sheet.all.cx), pixels(sheet.all.cy));
    const CPoint corner(area.left + (area.Width() - size.cx) / 2, area.top + (area.Height() - size.cy) / 2);
    CDC* dc = CDC::FromHandle(draw->hDC);
    CBrush grey(::GetSysColor(COLOR_BTNSHADOW));
    CBrush white(RGB(255, 255, 255));
    dc->FillRect(area, &grey);
    dc->FillRect(CRect(corner, size), &white);
    // The picture begins at the origin and does not clip.
    const CSize printable(std::max(1, pixels(sheet.printable.Width())), std::max(1, pixels(sheet.printable.Height())));
    CDrawingRender render(m_document, OptionsOf(printable, sheet.dotsPerInch * small, m_choice));
    CDWordArray picture;
    if (render.Pixels(picture) != RenderStatus::Done) {
        return;
    }
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = printable.cx;
    info.bmiHeader.biHeight = -printable.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    ::SetDIBitsToDevice(draw->hDC, corner.x + pixels(sheet.printable.left), corner.y + pixels(sheet.printable.top),
                        static_cast<DWORD>(printable.cx), static_cast<DWORD>(printable.cy), 0, 0, 0,
                        static_cast<UINT>(printable.cy), picture.GetData(), &info, DIB_RGB_COLORS);
}

void CPrintPreview::OnPrint() {
    if (PrintDrawing(this, m_document, m_choice)) {
        EndDialog(IDOK);
    }
}

// ---- The main window's commands

void CHostFrame::OnPrintPreview() {
    m_view.BreakOff();
    CPrintPreview(this, m_view.GetDocument()).DoModal();
}

void CHostFrame::OnPrint() {
    m_view.BreakOff();
    PrintDrawing(this, m_view.GetDocument(), FirstPaperChoice(m_view.GetDocument()));
}
