// CVectorGraphic: the painter of a drawing and the owner of its document: paint loop, marker, fitting, number display.
// Layer 7: painter.
#pragma once

#include "Drawable.h"
#include "VectorViewApi.h"

#include <KxAlive.h>

struct CEditingOptions;
class CGraphicDocument;

class NRVECTORVIEW_API CVectorGraphic : public CObject {
public:
    CVectorGraphic();
    ~CVectorGraphic() override;
    CVectorGraphic(const CVectorGraphic&) = delete;
    CVectorGraphic& operator=(const CVectorGraphic&) = delete;

    // Never null. Owned by this object, but for an external one of SetDocument.
    CGraphicDocument* GetDocument() { return m_pDocument; }
    CVectorViewCoordTran* GetVectorViewCoordTran() { return m_pCoordTran; } // Null until one is set. Not owned.
    // Those of the document.
    const CEditingOptions& GetEditingOptions() const;
    // Replaces the document. Nonzero `external`: it belongs to the caller and is not freed here. The
    // command engine keeps the document that it was made with, so a caller with a live view must replace the engine
    // too.
    void SetDocument(CGraphicDocument* doc, int external);
    // Not owned; also given to the document.
    void SetVectorViewCoordTran(CVectorViewCoordTran* tran);

    // ---- Painting ----

    // The whole drawing: net objects, objects from index 0 upwards, current object. `erase` 1, and no other value,
    // first fills the clip box with the background. A failure is shown in a message box and ends the drawing; nothing
    // is thrown.
    void OnDraw(CDC* pDC, int erase);
    // One object, for previews.
    void OnDraw(CDC* pDC, CDrawable* obj);
    // The snap marker, by inversion: the same call once more erases it. `kind` is a point's `type`; the first bit of 8,
    // 4, 2, 1 that is set decides the shape. The raster mode of `pDC` stays R2_NOT.
    void DrawROPNOTGrip(CDC* pDC, CPoint p, int kind);

    // ---- Fitting ----

    // The margin is in pixels after SetZoomByPixs with a nonzero value, else in percent; 15 percent at first.
    void SetZoomAllMargin(int margin) { m_ZoomAllMargin = margin; }
    void SetZoomByPixs(int byPixels) { m_ZoomByPixs = byPixels; }
    // Fits the drawing into rc, in client pixels, and tells the mapping the window's size. Does not repaint. Where the
    // fit of an extreme drawing would have a scale or an origin that is not finite, scale and origin stay.
    void ZoomAll(CRect rc);

    // ---- Number display ----

    // 0: numeric values are shown with one decimal at most.
    void SetNeedShowDecimal(int need) { m_NeedShowDecimal = need; }
    // The string to draw for a parameter's value.
    CString GetTextParm_ShowText(CString& s);

protected:
    // ZoomAll with the margin in pixels, and in percent but ten pixels at least.
    void ZoomAll_ByPixs(CRect rc);
    void ZoomAll_ByPrecent(CRect rc);
    // 1 for digits with at most one point and perhaps a minus sign before them, without needless leading zeros.
    int IsNumeric(const CString& s);
    // Compatibility 60: a value that comes out as zero is shown as nothing.
    // The value rounded half up to `decimals`, as text.
    CString CStr(double value, int decimals);
    // Powers of ten, for CStr; false for a negative n.
    bool Pow(double base, int n, double& result);

private:
    bool StoreFit(CVectorViewCoordTran& fitted, const CRect& rc, const CGePoint2d& corner);

    CGraphicDocument* m_pDocument;
    CDrawGeometry* m_pDrawGeometry;
    CVectorViewCoordTran* m_pCoordTran = nullptr;
    int m_bExternalDocument = 0;
    int m_ZoomAllMargin = 15;
    int m_ZoomByPixs = 0;
    int m_NeedShowDecimal = 1;
    CKxAlive m_Alive; // A failed drawing is shown in a message box, inside which a host may free the view.
};
