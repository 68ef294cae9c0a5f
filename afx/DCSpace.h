// The device's side of a device context: how logical coordinates become device units, how far the device reaches, and
// drawing in device units. Known to device contexts only.
// Layer 1: afx.
#pragma once

#include "afxapi.h"

// Beyond 16 bits. In device units no usual device shows it, and GDI's own limits, which differ from system to system,
// lie further out. The time that GDI takes for a wide or dotted line and for any ellipse grows with its length, seen or
// not.
inline bool AfxIsFar(int coordinate) {
    return coordinate < -0x8000 || coordinate > 0x7FFF;
}

// True where logical coordinates within 16 bits can be left to GDI: one logical unit is one device unit. Other mappings
// may enlarge a near figure to a far one. Both calls read memory of the process and take a few nanoseconds, so each
// drawing call asks anew, and a mapping that a host set through Win32 counts at once.
inline bool AfxIsPlainMapping(HDC dc) {
    return ::GetMapMode(dc) == MM_TEXT && ::GetGraphicsMode(dc) == GM_COMPATIBLE;
}

struct AfxPoint {
    double x, y;
};

struct AfxBox {
    bool Contains(const AfxPoint& p) const { return p.x >= left && p.x <= right && p.y >= top && p.y <= bottom; }
    void Grow(double by) { left -= by, top -= by, right += by, bottom += by; }

    double left, top, right, bottom;
};

// The mapping of a context from logical coordinates to device units, as numbers: the world transform, the window and
// the viewport, and the mirroring of a right-to-left layout. Not for old-style metafiles, which answer no queries.
class AfxDeviceMap {
public:
    explicit AfxDeviceMap(HDC dc);
    AfxPoint Of(double x, double y) const { return {xx * x + yx * y + dx, xy * x + yy * y + dy}; }
    AfxPoint Way(double x, double y) const { return {xx * x + yx * y, xy * x + yy * y}; }
    // Device units of one logical unit to the right and downwards.
    double ScaleX() const;
    double ScaleY() const;
    bool IsIdentity() const;
    bool IsTurned() const { return xy != 0 || yx != 0; }

    double xx = 1, xy = 0, yx = 0, yy = 1, dx = 0, dy = 0;
    bool advanced; // GM_ADVANCED
};

// What lies beyond is not drawn. At least 16 bits, and all of a larger device. It does not depend on the clip box:
// under inversion a second drawing must meet the first exactly. An enhanced metafile may be played at any size and
// takes twenty bits.
AfxBox AfxDeviceBox(HDC dc, DWORD type);

// Between BeginPath and EndPath, whoever called them. Some microseconds.
bool AfxIsInPath(HDC dc);

// A LOGPEN's width in device units, or 0 for any other pen and one that draws nothing.
double AfxPenWidthOnDevice(HDC dc, const AfxDeviceMap& map);

// Until it is destroyed one logical unit of the context is a device unit, from the device's corner. What is selected
// or set meanwhile is put back, and so is the current position. A pen keeps its width in device units.
class AfxDeviceUnits {
public:
    AfxDeviceUnits(HDC dc, const AfxDeviceMap& map, bool withPen);
    ~AfxDeviceUnits();
    AfxDeviceUnits(const AfxDeviceUnits&) = delete;
    AfxDeviceUnits& operator=(const AfxDeviceUnits&) = delete;

private:
    HDC m_dc;
    int m_saved;
    HPEN m_pen = nullptr;
};
