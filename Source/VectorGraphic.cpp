#include "VectorGraphic.h"

#include "Document.h"
#include "GdiScope.h"
#include "MemoryInfo.h"

namespace {

constexpr INT_PTR kFetchDistance = 3; // In objects; drawing so many takes about as long as one access to the memory.

// Asks for the memory of an object that is drawn soon. Objects are scattered over the heap, and a paint waits longer
// for their memory than it computes. This is only a hint to the processor; it reads nothing and can't fail.
void FetchAhead(const CDrawableArray& list, INT_PTR index) {
    if (index < list.GetSize()) {
        const auto* object = reinterpret_cast<const char*>(list.GetAt(index));
        for (size_t offset = 0; offset < sizeof(CDrawable) + 64; offset += 64) {
            __builtin_prefetch(object + offset);
        }
    }
}

} // namespace

CVectorGraphic::CVectorGraphic() : m_pDocument(new CGraphicDocument), m_pDrawGeometry(nullptr) {
    KX_ADD_MEMORY(m_pDocument);
    m_pDrawGeometry = new CDrawGeometry(this, m_pDocument->GetLayerManager());
    KX_ADD_MEMORY(m_pDrawGeometry);
}

CVectorGraphic::~CVectorGraphic() {
    if (m_pDocument != nullptr && m_bExternalDocument == 0) {
        KX_REMOVE_MEMORY(m_pDocument);
        delete m_pDocument;
    }
    KX_REMOVE_MEMORY(m_pDrawGeometry);
    delete m_pDrawGeometry;
}

void CVectorGraphic::SetDocument(CGraphicDocument* doc, int external) {
    if (m_pDocument != nullptr && m_bExternalDocument == 0) {
        KX_REMOVE_MEMORY(m_pDocument);
        delete m_pDocument;
    }
    m_bExternalDocument = external;
    m_pDocument = doc;
    m_pDrawGeometry->SetLayerManager(doc->GetLayerManager());
    doc->SetVectorViewCoordTran(m_pCoordTran);
}

const CEditingOptions& CVectorGraphic::GetEditingOptions() const {
    return m_pDocument->GetEditingOptions();
}

void CVectorGraphic::SetVectorViewCoordTran(CVectorViewCoordTran* tran) {
    m_pCoordTran = tran;
    m_pDocument->SetVectorViewCoordTran(tran);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void CVectorGraphic::OnDraw(CDC* pDC, int erase) {
    CDrawable* drawing = nullptr; // The object that is being drawn, for the message.
    const auto drawAll = [&](CDrawableArray* list) {
        for (INT_PTR i = 0; i < list->GetSize(); ++i) {
            FetchAhead(*list, i + kFetchDistance);
            drawing = list->GetAt(i);
            drawing->Draw(pDC, m_pDrawGeometry);
        }
    };
    const auto report = [&] {
        CString text;
        text.Format(L"pDrawObj=%d", static_cast<int>(reinterpret_cast<INT_PTR>(drawing)));
        AfxMessageBox(L"CVectorGraphic::OnDraw出错:" + text);
    };
    try {
        if (erase == 1) {
            CRect clip;
            pDC->GetClipBox(&clip);
            CBrush brush(m_pDocument->GetBKColor());
            CScopedBrush selected(pDC, &brush);
            pDC->PatBlt(clip.left, clip.top, clip.Width(), clip.Height(), PATCOPY);
            selected.Restore();
        }
        drawAll(m_pDocument->GetNetDrawableObjs());
        drawAll(m_pDocument->GetDrawableObjs());
        CDrawable* current = m_pDocument->GetCurrentObject();
        // A preview that its command draws again after the paint would be erased by that.
        const bool returns = current != nullptr && current->GetDrawState() == CDrawable::Dragging && erase == 1 &&
                             GetEditingOptions().previewsReturn;
        if (current != nullptr && !returns) {
            drawing = current;
            current->Draw(pDC, m_pDrawGeometry);
        }
    } catch (CException* e) {
        e->Delete();
        report();
    } catch (...) {
        report();
    }
}

void CVectorGraphic::OnDraw(CDC* pDC, CDrawable* obj) {
    obj->Draw(pDC, m_pDrawGeometry);
}

void CVectorGraphic::DrawROPNOTGrip(CDC* pDC, CPoint p, int kind) {
    CPen pen(PS_SOLID, 2, RGB(255, 0, 0));
    // Compatibility 90: a snap marker leaves the raster mode at `R2_NOT`.
    pDC->SetROP2(R2_NOT);
    CScopedPen selectedPen(pDC, &pen);
    CScopedStockBrush selectedBrush(pDC, NULL_BRUSH);
    // Wrapping sums, because the pixel of a point far outside the window is INT_MIN.
    const float scale = GetEditingOptions().pixelScale;
    const auto scaled = [=](int d) { return Truncate(static_cast<float>(d) * scale); };
    const auto x = [&](int d) { return WrapAdd(p.x, scaled(d)); };
    const auto y = [&](int d) { return WrapAdd(p.y, scaled(d)); };
    if ((kind & 8) != 0) {
        pDC->Rectangle(x(-4), y(-4), x(4), y(4));
        pDC->MoveTo(x(-4), y(-5));
        pDC->LineTo(x(-4), y(-8));
        pDC->MoveTo(x(5), y(4));
        pDC->LineTo(x(8), y(4));
    } else if ((kind & 4) != 0) {
        pDC->MoveTo(x(-7), y(5));
        pDC->LineTo(x(7), y(5));
        pDC->LineTo(x(0), y(-7));
        pDC->LineTo(x(-7), y(5));
    } else if ((kind & 2) != 0) {
        pDC->MoveTo(x(-4), y(4));
        pDC->LineTo(x(4), y(-4));
        pDC->MoveTo(x(-4), y(-4));
        pDC->LineTo(x(4), y(4));
    } else if ((kind & 1) != 0) {
        pDC->Rectangle(x(-7), y(-7), x(7), y(7));
    }
    selectedBrush.Restore();
    selectedPen.Restore();
    // The raster mode stays R2_NOT.
}
