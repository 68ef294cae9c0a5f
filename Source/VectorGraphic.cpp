#include "VectorGraphic.h"

#include "Document.h"
#include "GdiScope.h"
#include "MemDC.h"
#include "MemoryInfo.h"

#include <memory>
#include <optional>
#include <typeinfo>

namespace {

// Gives the geometry a pass for the duration of a paint, where the context is the buffer of a view's window. A context
// whose class is derived from that of the buffer gets none, and so every drawing call.
class CPassScope {
public:
    // `painter` is the token of the geometry's owner, which may be freed during the paint.
    CPassScope(CDrawGeometry& geometry, CDC* pDC, const CKxAliveToken& painter)
        : m_Geometry(geometry), m_pOuter(geometry.GetPass()), m_Painter(painter) {
        const auto* buffer = dynamic_cast<const CMemDC*>(pDC);
        if (buffer != nullptr && typeid(*pDC) == typeid(CMemDC) && !pDC->IsPrinting()) {
            m_Pass.emplace(pDC, buffer->GetRect());
        }
        geometry.SetPass(m_Pass ? &*m_Pass : nullptr);
    }
    ~CPassScope() {
        if (m_Painter.IsAlive()) {
            m_Geometry.SetPass(m_pOuter);
        }
    }
    CPassScope(const CPassScope&) = delete;
    CPassScope& operator=(const CPassScope&) = delete;

private:
    CDrawGeometry& m_Geometry;
    CPaintPass* const m_pOuter;
    const CKxAliveToken m_Painter;
    std::optional<CPaintPass> m_Pass;
};

// Prefetches the memory of the object that the paint reaches some objects after `index`. Objects are scattered over the
// heap, and where few of them are seen, waiting for their memory takes longer than computing. This reads nothing and
// can't fail.
void FetchAhead(const CDrawableArray& list, INT_PTR index) {
    constexpr INT_PTR kDistance = 8; // In objects: computing so many takes as long as one memory access.
    constexpr int kLine = 64;        // Bytes.
    if (index + kDistance < list.GetSize()) {
        const auto* object = reinterpret_cast<const char*>(list.GetData()[index + kDistance]);
        __builtin_prefetch(object);
        __builtin_prefetch(object + kLine);
    }
}

} // namespace

CVectorGraphic::CVectorGraphic() : m_pDocument(nullptr), m_pDrawGeometry(nullptr) {
    auto document = std::make_unique<CGraphicDocument>();
    auto geometry = std::make_unique<CDrawGeometry>(this, document->GetLayerManager());
    m_pDocument = document.release();
    KX_ADD_MEMORY(m_pDocument);
    m_pDrawGeometry = geometry.release();
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
    CPaintPass* pass = nullptr;
    const CKxAliveToken alive(m_Alive);
    const auto draw = [&](CDrawable* object) {
        drawing = object;
        if (pass != nullptr) {
            pass->Enter(object);
        }
        object->Draw(pDC, m_pDrawGeometry);
        return alive.IsAlive();
    };
    const auto drawAll = [&](CDrawableArray* list) {
        for (INT_PTR i = 0; i < list->GetSize(); ++i) {
            FetchAhead(*list, i);
            if (!draw(list->GetAt(i))) {
                return false;
            }
        }
        return true;
    };
    const auto report = [&] {
        CString text;
        text.Format(L"pDrawObj=%d", static_cast<int>(reinterpret_cast<INT_PTR>(drawing)));
        AfxMessageBox(L"CVectorGraphic::OnDraw出错:" + text);
    };
    try {
        // Compatibility 118: only the value 1 fills the background.
        if (erase == 1) {
            CRect clip;
            pDC->GetClipBox(&clip);
            CBrush brush(m_pDocument->GetBKColor());
            CScopedBrush selected(pDC, &brush);
            pDC->PatBlt(clip.left, clip.top, clip.Width(), clip.Height(), PATCOPY);
            selected.Restore();
        }
        const CPassScope own(*m_pDrawGeometry, pDC, alive);
        pass = m_pDrawGeometry->GetPass();
        if (!drawAll(m_pDocument->GetNetDrawableObjs()) || !drawAll(m_pDocument->GetDrawableObjs())) {
            return;
        }
        CDrawable* current = m_pDocument->GetCurrentObject();
        // The paint would erase a preview that its command draws again afterwards.
        const bool returns = current != nullptr && current->GetDrawState() == CDrawable::Dragging && erase == 1 &&
                             GetEditingOptions().previewsReturn;
        if (current != nullptr && !returns) {
            draw(current);
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
