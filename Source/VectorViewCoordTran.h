// The one mapping between drawing points (DP: drawing units, y up) and client pixels (LP: y down) of a view.
// Layer 4: geometry.
#pragma once

#include "Geometry2d.h"
#include "Truncate.h"

// Results pass through single precision on purpose: pixels are to come out the same wherever a drawing is shown.
class NRVECTORVIEW_API CVectorViewCoordTran {
public:
    CVectorViewCoordTran() = default;
    virtual ~CVectorViewCoordTran() = default;

    // Drawing units per pixel; smaller is larger on the screen.
    float GetScale() const { return scale; }
    // The drawing x of the left edge, the drawing y of the bottom edge (pixel row `hScreen`) of the client area.
    double GetOriginX() const { return originX; }
    double GetOriginY() const { return originY; }
    int GethScreen() const { return hScreen; }
    void SethScreen(int height) { hScreen = height; }
    void SetOriginX(double x) { originX = x; }
    void SetOriginY(double y) { originY = y; }
    CSize GetScreenSize() const { return CSize(wScreen, hScreen); }
    void SetScreenSize(CSize size);

    // Any value is taken, also 0, which makes later lengths infinite; always 1.
    int SetScale(float unitsPerPixel);
    // Zoom about a pixel: the drawing point under it stays there, up to single-precision rounding.
    void SetScale(CPoint pixel, float unitsPerPixel);

    void DPToLP(double x, double y, float* lx, float* ly) const {
        *lx = static_cast<float>((x - originX) / static_cast<double>(scale));
        *ly = static_cast<float>(hScreen) - static_cast<float>((y - originY) / static_cast<double>(scale));
    }
    // The float results widened: no digit more than the float form.
    void DPToLP_Double(double x, double y, double* lx, double* ly) const;
    // Truncated towards zero.
    void DPToLP(double x, double y, int* lx, int* ly) const;
    void DPToLP(const CGePoint2d& point, CPoint& pixel) const;
    void LPToDP(float lx, float ly, double* x, double* y) const;
    // Writes x and y of `point`; its `type` stays.
    void LPToDP(CPoint pixel, CGePoint2d& point) const;
    // Lengths: drawing units to pixels, pixels to drawing units (the product in single precision).
    float DToL(double length) const { return static_cast<float>(length / static_cast<double>(scale)); }
    double LToD(float length) const { return static_cast<double>(length * scale); }

private:
    float scale = 1.0f;
    double originX = 0.0;
    double originY = 0.0;
    int hScreen = 0;
    int wScreen = 0;
};
