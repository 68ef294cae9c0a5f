#include "Document.h"

#include "DrawingHistory.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "TextMeasures.h"
#include "VectorLabel.h"

#include <algorithm>
#include <cmath>

IMPLEMENT_DYNAMIC(CGraphicDocument, CDocument)

namespace {

INT_PTR IndexOf(const CDrawableArray& list, const CDrawable* obj) {
    const CDrawable* const* data = list.GetData();
    const INT_PTR size = list.GetSize();
    for (INT_PTR i = 0; i < size; ++i) {
        if (data[i] == obj) {
            return i;
        }
    }
    return -1;
}

void RemoveFirst(CDrawableArray& list, const CDrawable* obj) {
    const INT_PTR index = IndexOf(list, obj);
    if (index >= 0) {
        list.RemoveAt(index);
    }
}

void FreeAll(CDrawableArray& list) {
    for (INT_PTR i = 0; i < list.GetSize(); ++i) {
        CDrawable* obj = list[i];
        KX_REMOVE_MEMORY(obj);
        delete obj;
    }
    list.RemoveAll();
}

// False for an object that has no extent, and for one whose extent is not finite: it would make the extent of the whole
// drawing, and so every fit, not-a-number.
bool ExtentOf(CDrawable& object, CVectorViewCoordTran* tran, const CEditingOptions& options, CGePoint2d& min,
              CGePoint2d& max) {
    if (object.GetRect(tran, min, max) == 0) {
        return false;
    }
    if (options.textsAsShown) {
        if (auto* label = DYNAMIC_DOWNCAST(CKXVectorLabel, &object)) {
            label->MergeFigure(options.figureHeight, min, max);
        }
    }
    return std::isfinite(min.x) && std::isfinite(min.y) && std::isfinite(max.x) && std::isfinite(max.y);
}

} // namespace

CGraphicDocument::CGraphicDocument() = default;

CGraphicDocument::~CGraphicDocument() {
    if (m_pHistory != nullptr) {
        m_pHistory->Attach(nullptr);
    }
    Reset();
    FreeAll(m_NetDrawableObjs);
}

// ---- Lists and queries ---------------------------------------------------------------------------------------------

// Compatibility 62: a first object without an extent stretches the box to the origin.
int CGraphicDocument::GetRect(CGePoint2d& min, CGePoint2d& max) {
    if (m_DrawableObjs.IsEmpty()) {
        return 0;
    }
    const CTextWalk walk;
    if (!ExtentOf(*m_DrawableObjs[0], m_pCoordTran, m_EditingOptions, min, max)) {
        // The maximum starts from a tiny positive number and not from a large negative one.
        min.SetPoint(1e20, 1e20);
        max.SetPoint(1e-20, 1e-20);
    }
    for (INT_PTR i = 1; i < m_DrawableObjs.GetSize(); ++i) {
        CGePoint2d low;
        CGePoint2d high;
        if (ExtentOf(*m_DrawableObjs[i], m_pCoordTran, m_EditingOptions, low, high)) {
            min.SetPoint(std::min(min.x, low.x), std::min(min.y, low.y));
            max.SetPoint(std::max(max.x, high.x), std::max(max.y, high.y));
        }
    }
    return 1;
}

int CGraphicDocument::IsSelected(CDrawable* obj) {
    return IndexOf(m_SelectedDrawableObjs, obj) >= 0;
}

// ---- Editing -------------------------------------------------------------------------------------------------------

void CGraphicDocument::AddDrawAobject(CDrawable* obj) {
    if (obj != nullptr && IndexOf(m_DrawableObjs, obj) < 0) {
        m_DrawableObjs.Add(obj);
    }
}

void CGraphicDocument::AddDrawAobjectFront(CDrawable* obj) {
    if (obj != nullptr && IndexOf(m_DrawableObjs, obj) < 0) {
        m_DrawableObjs.InsertAt(0, obj);
    }
}

void CGraphicDocument::AddNetobject(CDrawable* obj) {
    if (obj != nullptr) {
        m_NetDrawableObjs.Add(obj);
    }
}

void CGraphicDocument::DeleteNet() {
    FreeAll(m_NetDrawableObjs);
}

// Compatibility 116: `DeleteObject` frees nothing.
void CGraphicDocument::DeleteObject(CDrawable* obj) {
    RemoveFirst(m_DrawableObjs, obj);
    RemoveFirst(m_SelectedDrawableObjs, obj);
    if (m_pCurrentObject == obj) {
        m_pCurrentObject = nullptr;
    }
}

void CGraphicDocument::DeleteAllSelectedObject() {
    CDrawableArray erased;
    erased.Copy(m_SelectedDrawableObjs);
    m_SelectedDrawableObjs.RemoveAll();
    for (INT_PTR i = 0; i < erased.GetSize(); ++i) {
        DeleteObject(erased[i]);
        if (m_pHistory != nullptr) {
            m_pHistory->Adopt(erased[i]);
        }
    }
}

void CGraphicDocument::MoveToTop(CDrawable* obj) {
    const INT_PTR index = IndexOf(m_DrawableObjs, obj);
    if (index >= 0) {
        m_DrawableObjs.RemoveAt(index);
        m_DrawableObjs.Add(obj);
    }
}

void CGraphicDocument::AddSelected(CDrawable* obj) {
    if (IndexOf(m_SelectedDrawableObjs, obj) < 0) {
        m_SelectedDrawableObjs.Add(obj);
        obj->SetDrawState(CDrawable::Selected);
    }
}

void CGraphicDocument::RemoveSelected(CDrawable* obj) {
    const INT_PTR index = IndexOf(m_SelectedDrawableObjs, obj);
    if (index >= 0) {
        m_SelectedDrawableObjs.RemoveAt(index);
        obj->SetDrawState(CDrawable::Normal);
    }
}

void CGraphicDocument::RemoveAllSelected() {
    for (INT_PTR i = 0; i < m_SelectedDrawableObjs.GetSize(); ++i) {
        m_SelectedDrawableObjs[i]->SetDrawState(CDrawable::Normal);
    }
    m_SelectedDrawableObjs.RemoveAll();
}

// Compatibility 117: the older `AddLine` ignores its first six arguments.
CLine* CGraphicDocument::AddLine(short, short, float, float, short, int, float x1, float y1, float x2, float y2) {
    CTracedOwner<CLine> line(new CLine);
    KX_ADD_MEMORY(line.get());
    line->SetStartPoint(CGePoint2d(x1, y1));
    line->SetEndPoint(CGePoint2d(x2, y2));
    CDrawable* obj = line.get();
    m_DrawableObjs.Add(obj);
    return line.release();
}

void CGraphicDocument::Reset() {
    RemoveAllSelected();
    FreeAll(m_DrawableObjs);
    FreeAll(m_SpareDrawableObjs);
    if (m_pHistory != nullptr) {
        m_pHistory->Restart();
    }
}

// ---- Colours -------------------------------------------------------------------------------------------------------

void CGraphicDocument::SetBKColor(DWORD color) {
    m_BKColor = color;
    m_BKColorIndex = kColorExplicit;
}

DWORD CGraphicDocument::GetBKColor() {
    return m_BKColorIndex == kColorExplicit ? m_BKColor : CGraphColorInfo::GetInstance()->GetColor(m_BKColorIndex);
}

BOOL CGraphicDocument::OnNewDocument() {
    return CDocument::OnNewDocument();
}

void CGraphicDocument::SetModifiedFlag(BOOL modified) {
    CDocument::SetModifiedFlag(modified);
    if (!modified && m_pHistory != nullptr) {
        m_pHistory->SetClean();
    }
}
