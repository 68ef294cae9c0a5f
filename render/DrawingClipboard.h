// CDrawingClipboard: drawings on the clipboard, between programs: objects as a stream of their own, and pictures.
// Layer 8: render.
#pragma once

#include "DrawingRender.h"

// Each function opens the clipboard for `owner`, whose window owns it afterwards, and closes it again. The results are
// false, without a message, where another program has the clipboard open, or memory does not suffice or the picture
// fails.
class NRVECTORVIEW_API CDrawingClipboard {
public:
    // The stream of CObjectStream, in the registered format "NRVectorView Objects"; false where `objects` has none.
    static bool CopyObjects(CWnd* owner, CGraphicDocument* document, const CDrawableArray& objects);
    // An enhanced metafile (CF_ENHMETAFILE) and the file in the registered format "PNG".
    static bool CopyPicture(CWnd* owner, CGraphicDocument* document, const CRenderOptions& options);
    static bool HasObjects(); // Whether PasteObjects would find any. Does not open the clipboard.
    // The bytes for CObjectStream or COperationPlaceObjects; the block may be longer than the stream.
    static bool PasteObjects(CWnd* owner, CByteArray& bytes);
};
