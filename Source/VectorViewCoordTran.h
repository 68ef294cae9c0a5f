// The one mapping between drawing points (DP: drawing units, y up) and client pixels (LP: y down) of a view.
// Layer 4: geometry.
#pragma once

#include "Geometry2d.h"
#include "Truncate.h"

// Results are rounded to single precision where each function says so, so that a drawing has the same pixels wherever
// it is shown.
class NRVECTORVIEW_API CVectorViewCoordTran {
public:
    CVectorViewCoordTran() = default;
    virtual ~CVectorViewCoordTran() = default;

    // Drawing units per pixel; smaller is larger on the screen.
    float GetScale() const { return scale; }
    // The drawing x of the left edge and the drawing y of the bottom edge (pixel row `hScreen`) of the client area.
    double GetOriginX() const { return originX; }
    double GetOriginY() const { return originY; }
    // The height of the client area in pixels.
    int GethScreen() const { return hScreen; }
    void SethScreen(int height) { hScreen = height; }
    // Drawing units; any value is stored.
    void SetOriginX(double x) { originX = x; }
    void SetOriginY(double y) { originY = y; }
    // Width and height of the client area in pixels. The streams hold the height only.
    CSize GetScreenSize() const { return CSize(wScreen, hScreen); }
    void SetScreenSize(CSize size);

    // Any value is stored, also 0, with which lengths in pixels become infinite. Always 1.
    int SetScale(float unitsPerPixel);
    // Zoom about a pixel: the drawing point under it stays there, up to single-precision rounding. Without a limit.
    void SetScale(CPoint pixel, float unitsPerPixel);
    // Moves the picture by pixels, to the right and down. Where an origin would not be finite nothing changes.
    void Pan(const CGeVector2d& pixels);
    // Becomes the same as `other`, except where the scale or an origin of that is no finite number: then nothing
    // changes and the result is false. Fits and zooms of the user are stored by it.
    bool TakeIfFinite(const CVectorViewCoordTran& other);

    // A drawing point to a client pixel with its fraction, rounded to single precision.
    void DPToLP(double x, double y, float* lx, float* ly) const {
        *lx = static_cast<float>((x - originX) / static_cast<double>(scale));
        *ly = static_cast<float>(hScreen) - static_cast<float>((y - originY) / static_cast<double>(scale));
    }
    // The float results as doubles, with no more digits.
    void DPToLP_Double(double x, double y, double* lx, double* ly) const;
    // Truncated towards zero.
    void DPToLP(double x, double y, int* lx, int* ly) const;
    void DPToLP(const CGePoint2d& point, CPoint& pixel) const;
    // A client pixel to the drawing point.
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
