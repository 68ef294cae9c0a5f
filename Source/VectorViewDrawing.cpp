// CVectorView: the calls with which a host fills, rotates and queries a drawing. Layer 11: views and dialogs.

#include "vectorview.h"

#include "Arc.h"
#include "CenterPoint.h"
#include "Circle.h"
#include "DrawingHistory.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "PLine.h"
#include "Text.h"
#include "TextParm.h"

#include <memory>
#include <utility>

namespace {

// Types of the parameters that this file makes.
constexpr short kParmTypePlain = 0;
constexpr short kParmTypeSized = 2;

// The expression that a host's validation reads from the parameter: digits with at most one point, no sign.
constexpr wchar_t kNumberExpression[] = L"^((\\d\\.?\\d*)|([1-9]\\d*\\.?\\d*))$";
// A keyword, not a pattern, by which a host recognizes the parameters made by AddParmTextForSS.
constexpr wchar_t kShiShu[] = L"$shishu$";

// Black in GDI+ form (0xAARRGGBB), though the field is a COLORREF (0x00BBGGRR).
constexpr DWORD kTextBackground = 0xFF000000;

// Compatibility 125: the size of an added parameter mixes pixels and drawing units.
constexpr int kWideMargin = 50;
constexpr int kHeightMargin = 5;

Gdiplus::PointF Narrow(const CGePoint2d& p) {
    return Gdiplus::PointF(static_cast<float>(p.x), static_cast<float>(p.y));
}

// A registered object with an explicit colour.
template <class Object, class... Args>
CTracedOwner<Object> Make(Gdiplus::Color color, Args... args) {
    CTracedOwner<Object> obj(new Object(args...));
    KX_ADD_MEMORY(obj.get());
    obj->SetPenColor(ExchangeRedBlue(color.GetValue()));
    return obj;
}

void Tag(CLine* obj, const CString& parm, const CString& msg, int lock) {
    obj->SetParmName(parm);
    obj->SetMsgInfo(msg);
    obj->SetLockMode(lock);
}

void Tag(CCircle* obj, const CString& parm, const CString& msg, int lock) {
    obj->SetParmName(parm);
    obj->SetMsgInfo(msg);
    obj->SetLockMode(lock);
}

// Null, with nothing allocated, when the sizes differ.
CTracedOwner<CPLine> MakePLine(CGePointArray& pts, CBulgeArray& bulges, Gdiplus::Color color) {
    if (pts.GetSize() != bulges.GetSize()) {
        return nullptr;
    }
    auto pline = Make<CPLine>(color);
    for (INT_PTR i = 0; i < pts.GetSize(); ++i) {
        pline->AddPoint(pts[i]);
        pline->GetBulgeList()->SetAt(i, bulges[i]);
    }
    return pline;
}

// Raises the invalid-argument exception for arrays shorter than the polyline.
void NameSegments(CPLine* pline, CStringArray& names, CStringArray& msgs) {
    for (int i = 0; i < pline->GetVertexCount(); ++i) {
        pline->SetSLineInfo(i, names[i], msgs[i]);
    }
}

template <class Object>
CTracedOwner<Object> MakeText(const CGePoint2d& p, const CString& text, Gdiplus::Color color) {
    auto obj = Make<Object>(color);
    obj->SetText(text);
    obj->SetPos(p);
    obj->SetBKMode(OPAQUE);
    obj->SetBKColor(kTextBackground);
    return obj;
}

// In pixels, in the default font of the window's context; without a window, the screen's measures the same way.
CSize MeasureInDefaultFont(HWND window, const CString& text) {
    CSize size;
    HDC dc = ::GetDC(window);
    ::GetTextExtentPoint32W(dc, text, text.GetLength(), &size);
    ::ReleaseDC(window, dc);
    return size;
}

// Width of a text that is drawn `height` units high.
float ScaledWide(const CSize& size, double height) {
    // An empty text may measure as nothing at all.
    const double wide = size.cy != 0 ? size.cx * height / size.cy : 0.0;
    return static_cast<float>(wide + kWideMargin);
}

CTracedOwner<CTextParm> MakeSizedParm(HWND window, const CGePoint2d& p, const CString& text, const CString& name,
                                      Gdiplus::Color color, double height, LPCTSTR expression) {
    auto obj = MakeText<CTextParm>(p, text, color);
    obj->SetParmName(name);
    obj->SetParmType(kParmTypeSized);
    obj->SetParmRegularExp(expression);
    obj->SetTextHeight(static_cast<float>(height));
    obj->SetTextWide(ScaledWide(MeasureInDefaultFont(window, text), height));
    return obj;
}

// One step of the history, where it is on.
CDrawable* Marked(CVectorView* view, CDrawable* obj) {
    if (CDrawingHistory* history = view->GetHistory()) {
        history->MarkAdded(obj, L"添加对象", L"Add object");
    }
    return obj;
}

// Adds the object on top of the drawing. Repaints when asked to, but not without a window: that would be the desktop.
CDrawable* Enter(CVectorView* view, CTracedOwner<CDrawable> obj, int redraw) {
    view->GetDocument()->AddDrawAobject(obj.get());
    CDrawable* entered = obj.release();
    if (redraw != 0 && view->m_hWnd != nullptr) {
        view->InvalidateRect(nullptr, TRUE);
    }
    return Marked(view, entered);
}

} // namespace

// ---- Lines and curves ----------------------------------------------------------------------------------------------

CDrawable* CVectorView::AddLine(CGePoint2d a, CGePoint2d b, Gdiplus::Color c, CString parm, CString msg, int lock,
                                int redraw) {
    auto line = Make<CLine>(c);
    line->SetStartPoint(a);
    line->SetEndPoint(b);
    Tag(line.get(), parm, msg, lock);
    return Enter(this, std::move(line), redraw);
}

CDrawable* CVectorView::AddLine(CGePoint2d a, CGePoint2d b, Gdiplus::Color c, int canSelect) {
    auto line = Make<CLine>(c);
    line->SetStartPoint(a);
    line->SetEndPoint(b);
    line->SetCanBeSelect(canSelect);
    return Enter(this, std::move(line), 0);
}

CDrawable* CVectorView::AddNetLine(CGePoint2d a, CGePoint2d b, Gdiplus::Color c, int canSelect) {
    auto pline = Make<CPLine>(c);
    pline->AddPoint(a);
    pline->AddPoint(b);
    pline->SetCanBeSelect(canSelect);
    GetDocument()->AddNetobject(pline.get());
    return pline.release();
}

CDrawable* CVectorView::AddArc(CGePoint2d center, float radius, float start, float end, Gdiplus::Color c, CString parm,
                               CString msg, int lock, int redraw) {
    // The centre is narrowed to float here, as older files store it; a host that needs more digits sets it afterwards.
    auto arc = Make<CArc>(c, Narrow(center), radius, start, end);
    Tag(arc.get(), parm, msg, lock);
    return Enter(this, std::move(arc), redraw);
}

CDrawable* CVectorView::AddArc(CGePoint2d p1, CGePoint2d p2, CGePoint2d p3, Gdiplus::Color c, CString parm, CString msg,
                               int lock, int redraw) {
    CGePoint2d center;
    double radius = 0.0;
    double start = 0.0;
    double end = 0.0;
    if (CArc::Calarc(p1, p2, p3, &center.x, &center.y, &radius, &start, &end) == 0) {
        return nullptr;
    }
    return AddArc(center, static_cast<float>(radius), static_cast<float>(start), static_cast<float>(end), c, parm, msg,
                  lock, redraw);
}

CDrawable* CVectorView::AddCenterPoint(CGePoint2d p, CString parm, CString msg, Gdiplus::Color c, int redraw) {
    auto mark = Make<CCenterPoint>(c, Narrow(p));
    mark->SetParmName(parm);
    mark->SetMsgInfo(msg);
    mark->SetLockMode(1);
    return Enter(this, std::move(mark), redraw);
}

// ---- Polylines -----------------------------------------------------------------------------------------------------

CDrawable* CVectorView::AddPLine(CGePointArray& pts, CBulgeArray& bulges, Gdiplus::Color c, CStringArray& names,
                                 CStringArray& msgs, int wide, int closed, int lock, int redraw) {
    auto pline = MakePLine(pts, bulges, c);
    if (pline == nullptr) {
        return nullptr;
    }
    NameSegments(pline.get(), names, msgs);
    pline->SetLockMode(lock);
    pline->SetClose(closed);
    // The low half with its sign: 0xFFFF is -1, by layer.
    pline->SetLineWide(static_cast<short>(wide));
    return Enter(this, std::move(pline), redraw);
}

CDrawable* CVectorView::AddPLine(CGePointArray& pts, CBulgeArray& bulges, Gdiplus::Color c, CStringArray& names,
                                 CStringArray& msgs, int lock, int redraw) {
    auto pline = MakePLine(pts, bulges, c);
    if (pline == nullptr) {
        return nullptr;
    }
    NameSegments(pline.get(), names, msgs);
    pline->SetLockMode(lock);
    pline->SetClose(1);
    return Enter(this, std::move(pline), redraw);
}

CDrawable* CVectorView::AddPLine(CGePointArray& pts, CBulgeArray& bulges, Gdiplus::Color c, int closed, int canSelect,
                                 int onTop) {
    auto pline = MakePLine(pts, bulges, c);
    if (pline == nullptr) {
        return nullptr;
    }
    pline->SetClose(closed);
    pline->SetCanBeSelect(canSelect);
    if (onTop == 0) {
        GetDocument()->AddDrawAobjectFront(pline.get());
        return Marked(this, pline.release());
    }
    return Enter(this, std::move(pline), 0);
}

// ---- Texts ---------------------------------------------------------------------------------------------------------

CDrawable* CVectorView::AddText(CGePoint2d p, CString text, double angle, Gdiplus::Color c, int redraw) {
    auto obj = MakeText<CText>(p, text, c);
    obj->SetAngle(static_cast<float>(angle));
    return Enter(this, std::move(obj), redraw);
}

CDrawable* CVectorView::AddText(CGePoint2d p, CString text, double angle, Gdiplus::Color c, double height,
                                int canSelect, int redraw) {
    auto obj = MakeText<CText>(p, text, c);
    obj->SetAngle(static_cast<float>(angle));
    obj->SetTextHeight(static_cast<float>(height));
    obj->SetCanBeSelect(canSelect);
    return Enter(this, std::move(obj), redraw);
}

CDrawable* CVectorView::AddParmText(CGePoint2d p, CString text, CString name, double, Gdiplus::Color c, int redraw) {
    auto obj = MakeText<CTextParm>(p, text, c);
    obj->SetParmName(name);
    obj->SetParmType(kParmTypePlain);
    obj->SetParmRegularExp(kNumberExpression);
    const CSize size = MeasureInDefaultFont(m_hWnd, text);
    obj->SetTextHeight(static_cast<float>(size.cy + kHeightMargin));
    obj->SetTextWide(static_cast<float>(size.cx + kWideMargin));
    return Enter(this, std::move(obj), redraw);
}

CDrawable* CVectorView::AddParmText(CGePoint2d p, CString text, CString name, double, Gdiplus::Color c, double height,
                                    int redraw) {
    return Enter(this, MakeSizedParm(m_hWnd, p, text, name, c, height, kNumberExpression), redraw);
}

CDrawable* CVectorView::AddParmTextNoRegExp(CGePoint2d p, CString& text, CString& name, double, Gdiplus::Color c,
                                            double height, int redraw) {
    return Enter(this, MakeSizedParm(m_hWnd, p, text, name, c, height, L""), redraw);
}

CDrawable* CVectorView::AddParmTextForSS(CGePoint2d p, CString& text, CString& name, double, Gdiplus::Color c,
                                         double height, int redraw) {
    return Enter(this, MakeSizedParm(m_hWnd, p, text, name, c, height, kShiShu), redraw);
}

CDrawable* CVectorView::AddParmTextNoEdit(CGePoint2d p, CString& text, CString&, double, Gdiplus::Color c,
                                          double height, int redraw) {
    // Compatibility 124: `AddParmTextNoEdit` makes a plain text.
    auto obj = MakeText<CText>(p, text, c);
    obj->SetTextHeight(static_cast<float>(height));
    return Enter(this, std::move(obj), redraw);
}

// ---- Transforms and queries ----------------------------------------------------------------------------------------

void CVectorView::transformBy(double angle, CGePoint2d center) {
    const CHistoryGroup step(GetHistory(), L"旋转图形", L"Rotate drawing");
    const CGeMatrix2d m = CGeMatrix2d::rotation(angle, center);
    CDrawableArray* objs = GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        objs->GetAt(i)->transformBy(m);
    }
}

CPLine* CVectorView::GetPLine_IsArc(CPoint p, int& segment) {
    CGePoint2d d;
    m_CoordTran.LPToDP(p, d);
    CDrawableArray* objs = GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        CDrawable* obj = objs->GetAt(i);
        const float pixels = m_CoordTran.DToL(static_cast<double>(obj->HitTest(d)));
        if (!(kPickAperture * m_Graphic.GetEditingOptions().pixelScale >= pixels)) {
            continue;
        }
        if (auto* pline = DYNAMIC_DOWNCAST(CPLine, obj)) {
            // After a straight segment the search continues, and `segment` keeps that segment's index.
            segment = pline->GetSelSelLine();
            if (pline->IsArc(segment) != 0) {
                return pline;
            }
        }
    }
    return nullptr;
}
