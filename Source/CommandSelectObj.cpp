#include "CommandSelectObj.h"

#include "Document.h"

IMPLEMENT_DYNAMIC(CCommandSelectObj, CCommandOperation)

CCommandOperation::ResultState CCommandSelectObj::OnLButtonDown(unsigned int, CGePoint2d point) {
    const CDrawableArray& selected = *m_pDocument->GetSelectedDrawableObjs();
    for (INT_PTR i = 0; i < selected.GetSize(); ++i) {
        CDrawable* object = selected.GetAt(i);
        if (IsHit(object, point)) {
            AnnounceToPropertyDialog(object);
            return RS_Continue;
        }
    }
    const CKxAliveToken engine = EngineAlive();
    const CDrawableArray& objects = *m_pDocument->GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        CDrawable* object = objects.GetAt(i);
        if (object->isCanSelect() == 0 || !IsHit(object, point)) {
            continue;
        }
        // An object is selected when it is in the list and in that state. One that was saved as selected is loaded in
        // the state alone, and a click selects it like any other.
        if (m_pDocument->IsSelected(object) == 0 || object->IsSelected() == 0) {
            object->SetDrawState(CDrawable::Selected);
            Hold(object);
            AnnounceToPropertyDialog(object);
            if (!GoesOn(engine)) {
                return RS_Done;
            }
            RequestRedraw();
            m_pDocument->AddSelected(object);
            return RS_Done;
        }
        AnnounceToPropertyDialog(object);
        if (!engine.IsAlive()) {
            break;
        }
    }
    return RS_Continue;
}
