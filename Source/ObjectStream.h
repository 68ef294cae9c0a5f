// CObjectStream: some objects of a drawing as a stream of their own, and objects back from one: what a clipboard
// carries from one program to another. Layer 6: document.
#pragma once

#include "Document.h"

// The stream is that of a drawing which holds these objects and nothing else: any reader of drawings can read it.
class NRVECTORVIEW_API CObjectStream {
public:
    // Stores those of `objects` that are in the document's list, in its order, in the state Normal; their own states
    // stay. False, with `bytes` empty, where there is none, or one can't be stored.
    static bool Store(CGraphicDocument* document, const CDrawableArray& objects, CByteArray& bytes);
    // Appends the objects of a stream in its order, in the state Normal. The caller owns them; they are registered with
    // the leak tracer. `length` in bytes; the bytes are only read. False, without a message and with nothing appended,
    // for a stream that is not whole or has no object.
    static bool Load(const void* bytes, size_t length, CDrawableArray& objects);
};
