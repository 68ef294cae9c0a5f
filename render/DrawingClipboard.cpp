#include "DrawingClipboard.h"

#include "ObjectStream.h"

#include <cstring>

namespace {

UINT ObjectsFormat() {
    return ::RegisterClipboardFormatW(L"NRVectorView Objects");
}

UINT PngFormat() {
    return ::RegisterClipboardFormatW(L"PNG");
}

// The open clipboard for the length of a block.
class CClipboardScope {
public:
    explicit CClipboardScope(CWnd* owner) : m_Open(::OpenClipboard(owner->GetSafeHwnd()) != FALSE) {}
    ~CClipboardScope() {
        if (m_Open) {
            ::CloseClipboard();
        }
    }
    CClipboardScope(const CClipboardScope&) = delete;
    CClipboardScope& operator=(const CClipboardScope&) = delete;
    bool IsOpen() const { return m_Open; }

private:
    bool m_Open;
};

// The clipboard owns the copy afterwards.
bool PutBytes(UINT format, const CByteArray& bytes) {
    HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, static_cast<SIZE_T>(bytes.GetSize()));
    void* block = memory != nullptr ? ::GlobalLock(memory) : nullptr;
    if (block != nullptr) {
        std::memcpy(block, bytes.GetData(), static_cast<size_t>(bytes.GetSize()));
        ::GlobalUnlock(memory);
    }
    if (block == nullptr || ::SetClipboardData(format, memory) == nullptr) {
        ::GlobalFree(memory);
        return false;
    }
    return true;
}

} // namespace

bool CDrawingClipboard::CopyObjects(CWnd* owner, CGraphicDocument* document, const CDrawableArray& objects) {
    CByteArray bytes;
    if (!CObjectStream::Store(document, objects, bytes)) {
        return false;
    }
    const CClipboardScope clipboard(owner);
    return clipboard.IsOpen() && ::EmptyClipboard() && PutBytes(ObjectsFormat(), bytes);
}

bool CDrawingClipboard::CopyPicture(CWnd* owner, CGraphicDocument* document, const CRenderOptions& options) {
    HENHMETAFILE metafile = nullptr;
    CByteArray png;
    bool done = false;
    {
        CDrawingRender render(document, options);
        done = render.Metafile(metafile) == RenderStatus::Done && render.Png(png) == RenderStatus::Done;
    }
    const CClipboardScope clipboard(owner);
    done = done && clipboard.IsOpen() && ::EmptyClipboard();
    if (done && ::SetClipboardData(CF_ENHMETAFILE, metafile) != nullptr) {
        return PutBytes(PngFormat(), png);
    }
    ::DeleteEnhMetaFile(metafile);
    return false;
}

bool CDrawingClipboard::HasObjects() {
    return ::IsClipboardFormatAvailable(ObjectsFormat()) != FALSE;
}

bool CDrawingClipboard::PasteObjects(CWnd* owner, CByteArray& bytes) {
    bytes.RemoveAll();
    const CClipboardScope clipboard(owner);
    const HANDLE memory = clipboard.IsOpen() ? ::GetClipboardData(ObjectsFormat()) : nullptr;
    const void* block = memory != nullptr ? ::GlobalLock(memory) : nullptr;
    if (block == nullptr) {
        return false;
    }
    bytes.SetSize(static_cast<INT_PTR>(::GlobalSize(memory)));
    std::memcpy(bytes.GetData(), block, static_cast<size_t>(bytes.GetSize()));
    ::GlobalUnlock(memory);
    return true;
}
