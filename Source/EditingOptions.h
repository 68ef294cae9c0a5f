// CEditingOptions: what a host may choose instead of the classic behaviour of commands, previews and picks.
// Layer 3: base.
#pragma once

// A plain record, held by the document (CGraphicDocument::SetEditingOptions). Every switch is off by default, which is
// exactly the classic behaviour; docs/editing-options.md describes both. A change takes effect at the next event; it
// asks for no repaint, and nothing of it is stored in drawings.
struct CEditingOptions {
    // Straight segments of a dragged polyline are stroked once, so that inversion shows them whole.
    bool strokesOnce = false;
    // Objects that a command moves, and a circle, arc or label that it draws, offer it no snap points.
    bool noSelfSnap = false;
    // Band, marker and preview are taken off before a window paint and drawn again after it, for the last place of the
    // mouse. The engine gets the point of a wheel message in client pixels.
    bool previewsReturn = false;
    // The end of every command asks for a repaint.
    bool repaintsAtEnd = false;
    // The document is marked as modified by a change of the drawing, not by a word; a command that the host breaks off
    // changes nothing.
    bool modifiedByChange = false;
    // The figure of a dimension is `figureHeight` high and counts in the drawing's extent. A text is hit over its whole
    // width as painted, along its angle.
    bool textsAsShown = false;
    // The preview of a rectangle inverts each pixel of its outline once, and its finished sides are ordinary lines.
    bool cleanRectangle = false;
    // The right button before the base point ends a transforming command.
    bool transformsEndEarly = false;

    // Drawing units; used with textsAsShown.
    float figureHeight = 100.0f;
    // Factor for what is measured in pixels: apertures of snaps and picks, markers, grips. 1 at 96 dots per inch, 2 at
    // 192.
    float pixelScale = 1.0f;

    // All switches on.
    static CEditingOptions Comfortable() {
        CEditingOptions options;
        options.strokesOnce = options.noSelfSnap = options.previewsReturn = options.repaintsAtEnd = true;
        options.modifiedByChange = options.textsAsShown = true;
        options.cleanRectangle = options.transformsEndEarly = true;
        return options;
    }
};
