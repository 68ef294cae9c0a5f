// CPoint, CSize, CRect: the Windows records with arithmetic. All inline.
// Classes: CRect.
// Layer 1: afx.
#pragma once

#include "atlpoint_.h"

// Right and bottom are outside. Operations on two rectangles need both normalised.
class CRect : public tagRECT {
public:
    CRect() noexcept { left = top = right = bottom = 0; }
    CRect(int l, int t, int r, int b) noexcept { left = l, top = t, right = r, bottom = b; }
    CRect(const RECT& srcRect) noexcept { ::CopyRect(this, &srcRect); }
    CRect(LPCRECT lpSrcRect) noexcept { ::CopyRect(this, lpSrcRect); }
    CRect(POINT point, SIZE size) noexcept {
        left = point.x, top = point.y;
        right = left + size.cx, bottom = top + size.cy;
    }
    CRect(POINT topLeft, POINT bottomRight) noexcept {
        left = topLeft.x, top = topLeft.y, right = bottomRight.x, bottom = bottomRight.y;
    }

    int Width() const noexcept { return right - left; }
    int Height() const noexcept { return bottom - top; }
    CSize Size() const noexcept { return CSize(right - left, bottom - top); }
    CPoint& TopLeft() noexcept { return *reinterpret_cast<CPoint*>(&left); }
    CPoint& BottomRight() noexcept { return *reinterpret_cast<CPoint*>(&right); }
    const CPoint& TopLeft() const noexcept { return *reinterpret_cast<const CPoint*>(&left); }
    const CPoint& BottomRight() const noexcept { return *reinterpret_cast<const CPoint*>(&right); }
    CPoint CenterPoint() const noexcept { return CPoint((left + right) / 2, (top + bottom) / 2); }
    operator LPRECT() noexcept { return this; }
    operator LPCRECT() const noexcept { return this; }
    BOOL IsRectEmpty() const noexcept { return ::IsRectEmpty(this); }
    BOOL IsRectNull() const noexcept { return left == 0 && right == 0 && top == 0 && bottom == 0; }
    BOOL PtInRect(POINT point) const noexcept { return ::PtInRect(this, point); }

    void SwapLeftRight() noexcept { SwapLeftRight(this); }
    static void WINAPI SwapLeftRight(LPRECT lpRect) noexcept {
        LONG temp = lpRect->left;
        lpRect->left = lpRect->right;
        lpRect->right = temp;
    }
    void SetRect(int x1, int y1, int x2, int y2) noexcept { ::SetRect(this, x1, y1, x2, y2); }
    void SetRect(POINT topLeft, POINT bottomRight) noexcept {
        ::SetRect(this, topLeft.x, topLeft.y, bottomRight.x, bottomRight.y);
    }
    void SetRectEmpty() noexcept { ::SetRectEmpty(this); }
    void CopyRect(LPCRECT lpSrcRect) noexcept { ::CopyRect(this, lpSrcRect); }
    BOOL EqualRect(LPCRECT lpRect) const noexcept { return ::EqualRect(this, lpRect); }
    void InflateRect(int x, int y) noexcept { ::InflateRect(this, x, y); }
    void InflateRect(SIZE size) noexcept { ::InflateRect(this, size.cx, size.cy); }
    void InflateRect(LPCRECT lpRect) noexcept { InflateRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    void InflateRect(int l, int t, int r, int b) noexcept { left -= l, top -= t, right += r, bottom += b; }
    void DeflateRect(int x, int y) noexcept { ::InflateRect(this, -x, -y); }
    void DeflateRect(SIZE size) noexcept { ::InflateRect(this, -size.cx, -size.cy); }
    void DeflateRect(LPCRECT lpRect) noexcept { DeflateRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    void DeflateRect(int l, int t, int r, int b) noexcept { left += l, top += t, right -= r, bottom -= b; }
    void OffsetRect(int x, int y) noexcept { ::OffsetRect(this, x, y); }
    void OffsetRect(SIZE size) noexcept { ::OffsetRect(this, size.cx, size.cy); }
    void OffsetRect(POINT point) noexcept { ::OffsetRect(this, point.x, point.y); }
    void MoveToX(int x) noexcept { right = Width() + x, left = x; }
    void MoveToY(int y) noexcept { bottom = Height() + y, top = y; }
    void MoveToXY(int x, int y) noexcept { MoveToX(x), MoveToY(y); }
    void MoveToXY(POINT point) noexcept { MoveToX(point.x), MoveToY(point.y); }
    void NormalizeRect() noexcept {
        if (left > right) {
            SwapLeftRight();
        }
        if (top > bottom) {
            LONG temp = top;
            top = bottom;
            bottom = temp;
        }
    }
    BOOL IntersectRect(LPCRECT lpRect1, LPCRECT lpRect2) noexcept { return ::IntersectRect(this, lpRect1, lpRect2); }
    BOOL UnionRect(LPCRECT lpRect1, LPCRECT lpRect2) noexcept { return ::UnionRect(this, lpRect1, lpRect2); }
    BOOL SubtractRect(LPCRECT lpRectSrc1, LPCRECT lpRectSrc2) noexcept {
        return ::SubtractRect(this, lpRectSrc1, lpRectSrc2);
    }
    CRect MulDiv(int nMultiplier, int nDivisor) const noexcept {
        return CRect(::MulDiv(left, nMultiplier, nDivisor), ::MulDiv(top, nMultiplier, nDivisor),
                     ::MulDiv(right, nMultiplier, nDivisor), ::MulDiv(bottom, nMultiplier, nDivisor));
    }

    CRect& operator=(const RECT& srcRect) noexcept {
        ::CopyRect(this, &srcRect);
        return *this;
    }
    BOOL operator==(const RECT& rect) const noexcept { return ::EqualRect(this, &rect); }
    BOOL operator!=(const RECT& rect) const noexcept { return !::EqualRect(this, &rect); }
    void operator+=(POINT point) noexcept { OffsetRect(point); }
    void operator+=(SIZE size) noexcept { OffsetRect(size); }
    void operator+=(LPCRECT lpRect) noexcept { InflateRect(lpRect); }
    void operator-=(POINT point) noexcept { ::OffsetRect(this, -point.x, -point.y); }
    void operator-=(SIZE size) noexcept { ::OffsetRect(this, -size.cx, -size.cy); }
    void operator-=(LPCRECT lpRect) noexcept { DeflateRect(lpRect); }
    void operator&=(const RECT& rect) noexcept { ::IntersectRect(this, this, &rect); }
    void operator|=(const RECT& rect) noexcept { ::UnionRect(this, this, &rect); }
    CRect operator+(POINT point) const noexcept {
        return Changed([&](CRect& r) { r += point; });
    }
    CRect operator+(SIZE size) const noexcept {
        return Changed([&](CRect& r) { r += size; });
    }
    CRect operator+(LPCRECT lpRect) const noexcept {
        return Changed([&](CRect& r) { r += lpRect; });
    }
    CRect operator-(POINT point) const noexcept {
        return Changed([&](CRect& r) { r -= point; });
    }
    CRect operator-(SIZE size) const noexcept {
        return Changed([&](CRect& r) { r -= size; });
    }
    CRect operator-(LPCRECT lpRect) const noexcept {
        return Changed([&](CRect& r) { r -= lpRect; });
    }
    CRect operator&(const RECT& rect) const noexcept {
        return Changed([&](CRect& r) { r &= rect; });
    }
    CRect operator|(const RECT& rect) const noexcept {
        return Changed([&](CRect& r) { r |= rect; });
    }

private:
    template <typename F>
    CRect Changed(F change) const noexcept {
        CRect rect(*static_cast<const RECT*>(this));
        change(rect);
        return rect;
    }
};

inline CRect CSize::operator+(const RECT* lpRect) const noexcept {
    return CRect(lpRect) + *this;
}
inline CRect CSize::operator-(const RECT* lpRect) const noexcept {
    return CRect(lpRect) - *this;
}
inline CRect CPoint::operator+(const RECT* lpRect) const noexcept {
    return CRect(lpRect) + *this;
}
inline CRect CPoint::operator-(const RECT* lpRect) const noexcept {
    return CRect(lpRect) - *this;
}
