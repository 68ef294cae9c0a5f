// The demo's clipboard: objects as a drawing's stream, placed by a click, and pictures of them as EMF and PNG.
// Layer 13: demo.
#include "DemoIds.h"
#include "HostFrame.h"
#include "HostText.h"

#include <DrawingClipboard.h>
#include <OperationPlaceObjects.h>
#include <afxres.h>

namespace {

const CSize LargestPicture(1600, 1200); // pixels

void ShowFailure(UINT text) {
    AfxMessageBox(LoadText(text), MB_OK | MB_ICONWARNING);
}

} // namespace

// While a text is edited, the keys of the clipboard are for that text.
bool CHostFrame::GiveToEdit(UINT message) {
    wchar_t name[16] = L"";
    const HWND focus = ::GetFocus();
    if (focus == nullptr || ::GetClassNameW(focus, name, 16) == 0 || ::_wcsicmp(name, L"Edit") != 0) {
        return false;
    }
    ::SendMessageW(focus, message, 0, 0);
    return true;
}

void CHostFrame::OnCopyObjects() {
    CGraphicDocument* document = m_view.GetDocument();
    const CDrawableArray& selected = *document->GetSelectedDrawableObjs();
    if (!GiveToEdit(WM_COPY) && !selected.IsEmpty() && !CDrawingClipboard::CopyObjects(this, document, selected)) {
        ShowFailure(IDS_CANNOT_COPY);
    }
}

// Copies what is selected, or all where nothing is.
void CHostFrame::OnCopyPicture() {
    CRenderOptions options;
    options.selectedOnly = !m_view.GetDocument()->GetSelectedDrawableObjs()->IsEmpty();
    options.size = LargestPicture;
    options.margin = 4;
    options.colors = CRenderOptions::BlackOnWhite;
    if (!CDrawingClipboard::CopyPicture(this, m_view.GetDocument(), options)) {
        ShowFailure(IDS_CANNOT_COPY);
    }
}

void CHostFrame::OnPasteObjects() {
    if (GiveToEdit(WM_PASTE) || !CDrawingClipboard::HasObjects()) {
        return;
    }
    CByteArray bytes;
    if (!CDrawingClipboard::PasteObjects(this, bytes) || !m_view.PlaceObjects(bytes)) {
        ShowFailure(IDS_CANNOT_PASTE);
    }
}

// ---- The view's part

bool CHostView::PlaceObjects(const CByteArray& bytes) {
    BreakOff();
    COperationPlaceObjects* tool = COperationPlaceObjects::Make(this, &m_Graphic, &m_CoordTran, GetDocument(),
                                                                bytes.GetData(), static_cast<size_t>(bytes.GetSize()));
    if (tool == nullptr || GetManager()->SetCommand(tool, 1) == 0) {
        return false;
    }
    m_row = -1;
    m_placing = true;
    return true;
}
