// CVectorGraphic: the painter of a drawing and the owner of its document: paint loop, marker, fitting, number display.
// Layer 7: painter.
#pragma once

#include "Drawable.h"
#include "VectorViewApi.h"

class CGraphicDocument;

class NRVECTORVIEW_API CVectorGraphic : public CObject {
public:
    CVectorGraphic();
    ~CVectorGraphic() override;
    CVectorGraphic(const CVectorGraphic&) = delete;
    CVectorGraphic& operator=(const CVectorGraphic&) = delete;

    CGraphicDocument* GetDocument() { return m_pDocument; }
    CVectorViewCoordTran* GetVectorViewCoordTran() { return m_pCoordTran; }
    // Another document than the present one. `external` nonzero: it belongs to the caller. The command engine keeps the
    // document that it was made with, so whoever calls this on a live view replaces the engine as well.
    void SetDocument(CGraphicDocument* doc, int external);
    // Borrowed; handed on to the document.
    void SetVectorViewCoordTran(CVectorViewCoordTran* tran);

    // ---- Painting ----

    // The whole drawing: net, objects from index 0 upwards, current object. Only `erase` equal to 1 clears the clip box
    // first. A failure is shown in a message box and ends the loop; nothing is thrown.
    void OnDraw(CDC* pDC, int erase);
    // One object, for previews.
    void OnDraw(CDC* pDC, CDrawable* obj);
    // The snap marker, by inversion: the same call once more takes it off. `kind` is a point's `type`; the first bit of
    // 8, 4, 2, 1 that is set decides the shape. Leaves `pDC` in R2_NOT.
    void DrawROPNOTGrip(CDC* pDC, CPoint p, int kind);

    // ---- Fitting ----

    // The margin counts in pixels when SetZoomByPixs was given nonzero, else in percent; 15 percent at first.
    void SetZoomAllMargin(int margin) { m_ZoomAllMargin = margin; }
    void SetZoomByPixs(int byPixels) { m_ZoomByPixs = byPixels; }
    // Fits the drawing into rc, in client pixels, and tells the mapping the window's size. Does not repaint.
    void ZoomAll(CRect rc);

    // ---- Number display ----

    // 0 shows numeric values with one decimal at most.
    void SetNeedShowDecimal(int need) { m_NeedShowDecimal = need; }
    // The string to draw for a parameter's value.
    CString GetTextParm_ShowText(CString& s);

protected:
    void ZoomAll_ByPixs(CRect rc);
    void ZoomAll_ByPrecent(CRect rc);
    int IsNumeric(const CString& s);
    // The value rounded half up to `decimals`; a value that comes out as zero is the empty string.
    CString CStr(double value, int decimals);
    bool Pow(double base, int n, double& result);

private:
    void StoreOrigin(const CRect& rc, const CGePoint2d& corner);

    CGraphicDocument* m_pDocument;
    CDrawGeometry* m_pDrawGeometry;
    CVectorViewCoordTran* m_pCoordTran = nullptr;
    int m_bExternalDocument = 0;
    int m_ZoomAllMargin = 15;
    int m_ZoomByPixs = 0;
    int m_NeedShowDecimal = 1;
};
