// Gives a derived view the property dialog, whose class stays the library's own.
// Layer 11: views and dialogs.
#pragma once

#include "VectorViewApi.h"

class CDialog_DrawAbleProperty;
class CVectorView;

// Makes the dialog, not yet shown, in the view's upper right corner, as a window owned by `owner`; null when Windows
// refuses. A view that keeps it as its m_pDlgDrawAbleProperty frees it in its destructor.
NRVECTORVIEW_API CDialog_DrawAbleProperty* CreateDrawAbleProperty(CVectorView* view, CWnd* owner);
// Shows the dialog with the rows of the first selected object of `view`, or hides it.
NRVECTORVIEW_API void ShowDrawAbleProperty(CDialog_DrawAbleProperty* dialog, CVectorView* view, int show);
// 1 while the dialog is on the screen; 0 also for null.
NRVECTORVIEW_API int IsDrawAblePropertyShown(CDialog_DrawAbleProperty* dialog);
// Empties the dialog, for example before a host frees the object that it shows. Null is ignored.
NRVECTORVIEW_API void EmptyDrawAbleProperty(CDialog_DrawAbleProperty* dialog);
