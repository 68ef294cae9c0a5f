#include "DCSpace.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr double kMetafileReach = 1 << 20;

} // namespace

// --- mapping -----------------------------------------------------------------------------------------------------

AfxDeviceMap::AfxDeviceMap(HDC dc) : advanced(::GetGraphicsMode(dc) == GM_ADVANCED) {
    POINT window = {};
    POINT viewport = {};
    ::GetWindowOrgEx(dc, &window);
    ::GetViewportOrgEx(dc, &viewport);
    if (::GetMapMode(dc) != MM_TEXT) {
        SIZE logical = {1, 1};
        SIZE device = {1, 1};
        ::GetWindowExtEx(dc, &logical);
        ::GetViewportExtEx(dc, &device);
        if (logical.cx != 0 && logical.cy != 0) {
            xx = static_cast<double>(device.cx) / logical.cx;
            yy = static_cast<double>(device.cy) / logical.cy;
        }
    }
    dx = viewport.x - xx * window.x;
    dy = viewport.y - yy * window.y;
    XFORM world = {};
    if (advanced && ::GetWorldTransform(dc, &world)) {
        const double pageX = xx;
        const double pageY = yy;
        dx += pageX * static_cast<double>(world.eDx);
        dy += pageY * static_cast<double>(world.eDy);
        xx = pageX * static_cast<double>(world.eM11);
        yx = pageX * static_cast<double>(world.eM21);
        xy = pageY * static_cast<double>(world.eM12);
        yy = pageY * static_cast<double>(world.eM22);
    }
    const DWORD layout = ::GetLayout(dc);
    if (layout != GDI_ERROR && (layout & LAYOUT_RTL) != 0) {
        // The width from which the context counts is known to GDI only: it is taken from a point near the corner.
        POINT corner = window;
        ::LPtoDP(dc, &corner, 1);
        const double shift = std::floor(corner.x + Of(window.x, window.y).x + 0.5);
        xx = -xx;
        yx = -yx;
        dx = shift - dx;
    }
}

double AfxDeviceMap::ScaleX() const {
    return std::hypot(xx, xy);
}

double AfxDeviceMap::ScaleY() const {
    return std::hypot(yx, yy);
}

bool AfxDeviceMap::IsIdentity() const {
    return xx == 1 && yy == 1 && !IsTurned() && dx == 0 && dy == 0;
}

// --- what the device is ------------------------------------------------------------------------------------------

AfxBox AfxDeviceBox(HDC dc, DWORD type) {
    if (type == OBJ_ENHMETADC) {
        return {-kMetafileReach, -kMetafileReach, kMetafileReach, kMetafileReach};
    }
    int width = 0;
    int height = 0;
    if (type == OBJ_MEMDC) {
        BITMAP bitmap = {};
        ::GetObject(::GetCurrentObject(dc, OBJ_BITMAP), sizeof(bitmap), &bitmap);
        width = static_cast<int>(bitmap.bmWidth);
        height = static_cast<int>(bitmap.bmHeight);
    } else {
        width = std::max(::GetDeviceCaps(dc, HORZRES), ::GetDeviceCaps(dc, PHYSICALWIDTH));
        height = std::max(::GetDeviceCaps(dc, VERTRES), ::GetDeviceCaps(dc, PHYSICALHEIGHT));
    }
    const auto high = [](int size) { return static_cast<double>(size > 0x7FFF ? size + 0x7FFF : 0x7FFF); };
    return {-0x8000, -0x8000, high(width), high(height)};
}

bool AfxIsInPath(HDC dc) {
    // No function tells an open path from none. Only an open one can be ended, and a saved state has the path too.
    const int saved = ::SaveDC(dc);
    if (saved == 0) {
        return false;
    }
    const bool open = ::EndPath(dc) != FALSE;
    ::RestoreDC(dc, saved);
    return open;
}

double AfxPenWidthOnDevice(HDC dc, const AfxDeviceMap& map) {
    LOGPEN pen = {};
    if (::GetObject(::GetCurrentObject(dc, OBJ_PEN), sizeof(pen), &pen) != sizeof(pen) || pen.lopnStyle == PS_NULL) {
        return 0;
    }
    return std::floor(std::fabs(static_cast<double>(pen.lopnWidth.x)) * map.ScaleX() + 0.5);
}

// --- drawing in device units -------------------------------------------------------------------------------------

AfxDeviceUnits::AfxDeviceUnits(HDC dc, const AfxDeviceMap& map, bool withPen) : m_dc(dc), m_saved(0) {
    LOGPEN pen = {};
    if (withPen && ::GetObject(::GetCurrentObject(dc, OBJ_PEN), sizeof(pen), &pen) == sizeof(pen) &&
        pen.lopnWidth.x != 0 && map.ScaleX() != 1) {
        const double width = std::clamp(AfxPenWidthOnDevice(dc, map), 1.0, 32767.0);
        m_pen = ::CreatePen(static_cast<int>(pen.lopnStyle), static_cast<int>(width), pen.lopnColor);
    }
    m_saved = ::SaveDC(dc);
    if (m_pen != nullptr) {
        ::SelectObject(dc, m_pen);
    }
    const DWORD layout = ::GetLayout(dc);
    if (layout != GDI_ERROR && (layout & LAYOUT_RTL) != 0) {
        ::SetLayout(dc, layout & ~static_cast<DWORD>(LAYOUT_RTL));
    }
    if (map.advanced) {
        ::ModifyWorldTransform(dc, nullptr, MWT_IDENTITY);
    }
    ::SetMapMode(dc, MM_TEXT);
    ::SetWindowOrgEx(dc, 0, 0, nullptr);
    ::SetViewportOrgEx(dc, 0, 0, nullptr);
}

AfxDeviceUnits::~AfxDeviceUnits() {
    if (m_saved != 0) {
        ::RestoreDC(m_dc, m_saved);
    }
    if (m_pen != nullptr) {
        ::DeleteObject(m_pen);
    }
}
