// The demo's main window: the scale of what is measured in pixels, by the monitor that the window is on.
// Layer 13: demo.
#include "HostFrame.h"

#include "CommandLine.h"

#include <algorithm>

namespace {

const int IconSize = 16;

// The dots per inch of the window's monitor, where the system gives them for each; otherwise those of the screen.
int FindDots(HWND window) {
    const int percent = _wtoi(FindOption(L"--scale"));
    if (percent > 0) {
        return CHostFrame::UnscaledDots * std::min(std::max(percent, 100), 400) / 100;
    }
    using Function = UINT(WINAPI*)(HWND);
    const auto address =
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"user32.dll"), "GetDpiForWindow"));
    if (address != nullptr) {
        return static_cast<int>(reinterpret_cast<Function>(address)(window));
    }
    CClientDC dc(CWnd::FromHandle(window));
    return dc.GetDeviceCaps(LOGPIXELSX);
}

} // namespace

int CHostFrame::Scaled(int pixels) const {
    return ::MulDiv(pixels, m_dots, UnscaledDots);
}

void CHostFrame::ApplyScale() {
    m_dots = FindDots(m_hWnd);
    MakeImages(Scaled(IconSize));
    if (m_toolbar != nullptr) {
        ::SendMessageW(m_toolbar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(m_images));
        ::SendMessageW(m_toolbar, TB_SETBUTTONSIZE, 0, MAKELPARAM(Scaled(IconSize + 7), Scaled(IconSize + 6)));
        ::SendMessageW(m_toolbar, TB_AUTOSIZE, 0, 0);
    }
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof(metrics);
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    LOGFONTW description = metrics.lfStatusFont; // In the dots of the screen.
    CClientDC screen(nullptr);
    description.lfHeight = ::MulDiv(description.lfHeight, m_dots, screen.GetDeviceCaps(LOGPIXELSY));
    m_font.DeleteObject();
    m_font.CreateFontIndirect(&description);
    m_status.SetFont(&m_font);
    const double scale = static_cast<double>(m_dots) / UnscaledDots;
    m_view.SetPixelScale(static_cast<float>(scale), m_font);
    m_section.SetPixelScale(static_cast<float>(scale));
    m_examples.SetFontAndScale(m_font, static_cast<float>(scale));
}

// The window has moved to a monitor of another scale. Windows proposes the rectangle in which it looks as large as
// before.
LRESULT CHostFrame::OnDpiChanged(WPARAM, LPARAM place) {
    ApplyScale();
    const auto* rect = reinterpret_cast<const RECT*>(place);
    if (rect != nullptr) {
        MoveWindow(rect);
    }
    LayOut();
    return 0;
}
