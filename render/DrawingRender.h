// CDrawingRender: pictures of a drawing without a window, as PNG, as enhanced metafile and as SVG, by one set of
// options. Layer 8: render.
#pragma once

#include "Document.h"
#include "VectorGraphic.h"

#include <afxcoll.h>

// What the three forms have in common:
// - The painter is the library's own CVectorGraphic with a mapping of its own, so that a picture shows what a view of
//   the same size, scale and origin shows. PNG and EMF are made of the objects' own GDI calls; the SVG is written from
//   the objects' data with the attributes that the painter resolves, and has no pixels in its geometry.
// - Selected objects are painted as unselected ones, without grips, unless `grips` asks for them. Any other state is
//   shown as a view shows it.
// - The document is as before afterwards: mapping, current object, states and measured text heights are restored. Only
// the figure of a label has the place that this paint gave it, as after every paint.
struct CRenderOptions {
    // Which part of the drawing is shown.
    enum Place {
        Fit,     // The whole drawing (or what is selected, with `selectedOnly`) with a margin, as CVectorView::ZoomAll.
        Window,  // The rectangle from windowMin to windowMax in drawing units, centred where the proportions differ.
        AsStored // The document's own scale and origin: what its view shows, from the top left corner on.
    };
    // How the colours are shown.
    enum Colors {
        Stored,       // As they are.
        BlackOnWhite, // Every stroke and text black, every filled area and the background white.
        Monochrome    // The same, texts without smoothing as well: two colours, and one bit a pixel in a PNG.
    };

    // Pixels, 1 to 32767 each and at most 2^27 together. A 0 is replaced by the number that fits the proportion of what
    // is shown. With a scale above 0 the size is ignored, unless `keepSize` is set.
    CSize size = CSize(1024, 768);
    // Drawing units per pixel; above 0 the size of the picture follows from what is shown. Not for AsStored.
    double scale = 0.0;
    // With a scale: the size is as given, for example that of a sheet of paper, with what is shown in its middle.
    bool keepSize = false;

    Place place = Fit; // See Place.
    // Of Fit alone. In percent of the picture (10 pixels at least), both sides together; or in pixels.
    int margin = 15;
    bool marginInPixels = false; // See margin.
    // Of Window: the two corners, in drawing units.
    CGePoint2d windowMin;
    CGePoint2d windowMax;

    // `background` counts with `ownBackground`; otherwise the drawing's own (white with the two black forms).
    bool transparent = false;
    bool ownBackground = false;
    COLORREF background = RGB(255, 255, 255);
    Colors colors = Stored; // See Colors.
    // Multiplies the painter's pen widths, which are whole pixels; the results are 1 pixel at least. A dash pattern is
    // enlarged with its line.
    double lineWidthScale = 1.0;
    // Pixels, 1 to 1000: thinner lines are widened to it. For paper, where one dot is hardly visible.
    int leastLineWidth = 1;

    bool selectedOnly = false; // Only the document's selected objects, without the net.
    bool includeNet = true;    // The background lines too.
    bool grips = false;        // PNG and EMF only.
    bool showDecimals = true;  // The painter's number display; a parameter view hides decimals.
};

// The result of making a picture.
enum class RenderStatus {
    Done,       // The picture is made.
    BadOptions, // A size, scale or window out of range.
    NoResource, // GDI or memory refuses.
    NoEncoder   // The system has no PNG encoder, or it failed.
};

class NRVECTORVIEW_API CDrawingRender {
public:
    // Borrows the document for its own life, which is one picture or several with the same options. The document must
    // not be painted, edited or freed meanwhile, and needs a mapping, as every document of a painter has.
    CDrawingRender(CGraphicDocument* document, const CRenderOptions& options);
    ~CDrawingRender();
    CDrawingRender(const CDrawingRender&) = delete;
    CDrawingRender& operator=(const CDrawingRender&) = delete;

    // For a sheet of paper whose printable area has so many dots: black on white, thin lines a quarter of a millimetre
    // wide. `n` 0 fits the drawing; otherwise it is shown as 1:n in the middle, a drawing unit being a millimetre.
    static CRenderOptions PaperOptions(CSize dots, double dotsPerInch, double n);

    // Done or BadOptions; with BadOptions the functions below return it too.
    RenderStatus Status() const;
    // In pixels.
    CSize Size() const;
    const CVectorViewCoordTran& Mapping() const; // Between the drawing and the picture's pixels.

    // Paints onto a context of the caller, whose unit is the pixel, with the top left corner at its origin. No
    // background where the options say transparent. What lies outside the picture is not clipped.
    RenderStatus Paint(CDC* dc);
    // 32-bit pixels from the top, 0xAARRGGBB, for `pixels.GetSize() == width * height`. The alpha of a transparent
    // picture comes from painting twice, on black and on white, and comparing: a pixel that is the same on both is
    // opaque, smoothed edges of texts are in between. Colours are not premultiplied.
    RenderStatus Pixels(CDWordArray& pixels);
    // A PNG file as bytes, at 96 dots per inch: 1 bit a pixel in Monochrome with a background, else 24, and 32 with
    // alpha where it is transparent.
    RenderStatus Png(CByteArray& file);
    // An enhanced metafile. Its frame is the picture's size on the screen that it refers to, in 0.01 mm. Metafile hands
    // the handle to the caller, who frees it by DeleteEnhMetaFile; Emf gives the bytes of a file.
    RenderStatus Metafile(HENHMETAFILE& metafile);
    RenderStatus Emf(CByteArray& file);
    // UTF-8 bytes. Left out, and counted by LeftOut after the call, are objects with a coordinate that is no finite
    // number, of a kind that the library does not know, in the state Dragging unless they are lines, and objects that
    // fail to draw.
    RenderStatus Svg(CByteArray& file);
    int LeftOut() const;

private:
    RenderStatus Arrange();
    RenderStatus ArrangeFit();
    // Whether the painter's own fitting gave a usable scale.
    bool ZoomAll();
    void ArrangeBox(const CGePoint2d& min, const CGePoint2d& max, CSize margin);
    // Fills in the sides that are 0, or both with a scale given. False when the picture has no size or is too large.
    bool MakeSize(const CGePoint2d& min, const CGePoint2d& max, int marginPercent, int marginPixels);
    // The extent in drawing units of those objects that have a finite one.
    bool BoxOf(CGePoint2d& min, CGePoint2d& max);
    void SaveStates();
    void RestoreStates();
    bool IsPlain() const;
    COLORREF Background();
    RenderStatus PaintOn(CDC* dc, bool fill, COLORREF background);
    RenderStatus PaintPixels(CDWordArray& pixels, COLORREF background);

    CGraphicDocument* m_pDocument;
    CRenderOptions m_Options;
    CVectorViewCoordTran* m_pOldTran;
    CVectorViewCoordTran m_Tran;
    CVectorGraphic m_Graphic;
    CSize m_Size;
    RenderStatus m_Status = RenderStatus::Done;
    int m_LeftOut = 0;
    // What painting changes in the drawing.
    CDrawable* m_pCurrent;
    CDrawableArray m_Selected; // Painted as normal ones.
    CArray<float, float> m_TextHeights;
};
