// CPoint and CSize: the Windows records of a point and of a size with arithmetic.
// Classes: CSize, CPoint.
// Layer 1: afx.
#pragma once

#include "afxapi.h"

class CPoint;
class CRect;

class CSize : public tagSIZE {
public:
    CSize() noexcept { cx = cy = 0; }
    CSize(int initCX, int initCY) noexcept { cx = initCX, cy = initCY; }
    CSize(SIZE initSize) noexcept { cx = initSize.cx, cy = initSize.cy; }
    CSize(POINT initPt) noexcept { cx = initPt.x, cy = initPt.y; }
    CSize(DWORD dwSize) noexcept { cx = static_cast<short>(LOWORD(dwSize)), cy = static_cast<short>(HIWORD(dwSize)); }

    BOOL operator==(SIZE size) const noexcept { return cx == size.cx && cy == size.cy; }
    BOOL operator!=(SIZE size) const noexcept { return cx != size.cx || cy != size.cy; }
    void operator+=(SIZE size) noexcept { cx += size.cx, cy += size.cy; }
    void operator-=(SIZE size) noexcept { cx -= size.cx, cy -= size.cy; }
    void SetSize(int newCX, int newCY) noexcept { cx = newCX, cy = newCY; }

    CSize operator+(SIZE size) const noexcept { return CSize(cx + size.cx, cy + size.cy); }
    CSize operator-(SIZE size) const noexcept { return CSize(cx - size.cx, cy - size.cy); }
    CSize operator-() const noexcept { return CSize(-cx, -cy); }
    CPoint operator+(POINT point) const noexcept;
    CPoint operator-(POINT point) const noexcept;
    CRect operator+(const RECT* lpRect) const noexcept;
    CRect operator-(const RECT* lpRect) const noexcept;
};

class CPoint : public tagPOINT {
public:
    CPoint() noexcept { x = y = 0; }
    CPoint(int initX, int initY) noexcept { x = initX, y = initY; }
    CPoint(POINT initPt) noexcept { x = initPt.x, y = initPt.y; }
    CPoint(SIZE initSize) noexcept { x = initSize.cx, y = initSize.cy; }
    CPoint(LPARAM dwPoint) noexcept {
        x = static_cast<short>(LOWORD(dwPoint)), y = static_cast<short>(HIWORD(dwPoint));
    }

    void Offset(int xOffset, int yOffset) noexcept { x += xOffset, y += yOffset; }
    void Offset(POINT point) noexcept { x += point.x, y += point.y; }
    void Offset(SIZE size) noexcept { x += size.cx, y += size.cy; }
    void SetPoint(int newX, int newY) noexcept { x = newX, y = newY; }

    BOOL operator==(POINT point) const noexcept { return x == point.x && y == point.y; }
    BOOL operator!=(POINT point) const noexcept { return x != point.x || y != point.y; }
    void operator+=(SIZE size) noexcept { x += size.cx, y += size.cy; }
    void operator-=(SIZE size) noexcept { x -= size.cx, y -= size.cy; }
    void operator+=(POINT point) noexcept { x += point.x, y += point.y; }
    void operator-=(POINT point) noexcept { x -= point.x, y -= point.y; }

    CPoint operator+(SIZE size) const noexcept { return CPoint(x + size.cx, y + size.cy); }
    CPoint operator-(SIZE size) const noexcept { return CPoint(x - size.cx, y - size.cy); }
    CPoint operator-() const noexcept { return CPoint(-x, -y); }
    CPoint operator+(POINT point) const noexcept { return CPoint(x + point.x, y + point.y); }
    CSize operator-(POINT point) const noexcept { return CSize(x - point.x, y - point.y); }
    CRect operator+(const RECT* lpRect) const noexcept;
    CRect operator-(const RECT* lpRect) const noexcept;
};

inline CPoint CSize::operator+(POINT point) const noexcept {
    return CPoint(cx + point.x, cy + point.y);
}
inline CPoint CSize::operator-(POINT point) const noexcept {
    return CPoint(cx - point.x, cy - point.y);
}
