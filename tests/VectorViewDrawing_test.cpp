// How a host fills a drawing: every adding operation with its defaults, the net, turning, and asking for arcs.

#include "support/BoxAnswer.h"
#include "support/RecordingDC.h"

#include <Arc.h>
#include <CenterPoint.h>
#include <Circle.h>
#include <DrawableProperty.h>
#include <KXBaseOpr.h>
#include <Line.h>
#include <PLine.h>
#include <TextParm.h>
#include <vectorview.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

const Gdiplus::Color kColor(0xFF102030);
constexpr char kDigits[] = "^((\\d\\.?\\d*)|([1-9]\\d*\\.?\\d*))$";

std::string Number(double value) {
    CStringA text;
    text.Format("%.9g", value);
    return text.GetString();
}

std::string At(const CGePoint2d& p) {
    return "(" + Number(p.x) + "," + Number(p.y) + ")";
}

// The angle has no accessor; the property rows have it.
float AngleOf(CText* text) {
    CDrawableProperty rows;
    text->GetProperty(rows);
    const float angle = rows.Find(L"m_Angle")->m_Value.fltVal;
    rows.Clear();
    return angle;
}

// All that an adding operation may set, as one line.
std::string Describe(CDrawable* obj) {
    CStringA hex;
    hex.Format("%06x", static_cast<unsigned>(obj->GetPenColor()));
    std::string line = obj->GetRuntimeClass()->m_lpszClassName;
    const auto add = [&line](const std::string& name, const std::string& value) { line += " " + name + "=" + value; };
    const auto tags = [&](int lock, const CString& parm, const CString& msg) {
        add("lock", std::to_string(lock));
        add("parm", Utf8(parm));
        add("msg", Utf8(msg));
    };
    if (auto* own = DYNAMIC_DOWNCAST(CLine, obj)) {
        line += " " + At(own->GetStartPoint()) + At(own->GetEndPoint());
        tags(own->GetLockMode(), own->GetParmName(), own->GetMsgInfo());
    } else if (auto* arc = DYNAMIC_DOWNCAST(CArc, obj)) {
        line += " " + At(arc->Center());
        add("r", Number(arc->Radius()));
        add("from", Number(arc->GetStartAngle()));
        add("to", Number(arc->GetEndAngle()));
        tags(arc->GetLockMode(), arc->GetParmName(), arc->GetMsgInfo());
    } else if (auto* mark = DYNAMIC_DOWNCAST(CCenterPoint, obj)) {
        line += " " + At(mark->Center());
        tags(mark->GetLockMode(), mark->GetParmName(), mark->GetMsgInfo());
    } else if (auto* pline = DYNAMIC_DOWNCAST(CPLine, obj)) {
        for (int i = 0; i < pline->GetVertexCount(); ++i) {
            CString name;
            CString msg;
            pline->GetSLineInfo(i, name, msg);
            line += " " + At(pline->GetPointList()->GetAt(i)) + "b" + Number(pline->GetBulgeList()->GetAt(i)) + "[" +
                    Utf8(name) + "/" + Utf8(msg) + "]";
        }
        add("closed", std::to_string(pline->IsClosed()));
        add("lock", std::to_string(pline->GetLockMode()));
    } else if (auto* text = DYNAMIC_DOWNCAST(CText, obj)) {
        CStringA back;
        back.Format("%d/%08x", text->GetBKMode(), static_cast<unsigned>(text->GetBKColor()));
        line += " " + At(text->GetPos()) + " '" + Utf8(text->GetText()) + "'";
        add("angle", Number(AngleOf(text)));
        add("back", back.GetString());
        add("height", Number(text->GetTextHeight()));
        add("wide", Number(text->GetTextWide()));
        if (auto* parm = DYNAMIC_DOWNCAST(CTextParm, obj)) {
            add("name", Utf8(parm->GetParmName()));
            add("type", std::to_string(parm->GetParmType()));
            add("box", std::to_string(parm->GetNeedEditBox()));
            add("exp", Utf8(parm->GetParmRegularExp()));
        }
    }
    add("select", std::to_string(obj->isCanSelect()));
    line += " colour " + std::string(hex.GetString()) + "/" + std::to_string(obj->GetPenColorIndex());
    line += " line " + std::to_string(obj->GetLineType()) + "/" + Number(obj->GetLineWide());
    return line;
}

// What every object has in common: the explicit colour with red lowest, line type and width by layer.
const std::string kCommon = " colour 302010/-2 line -1/-1";

struct Drawing : testing::Test {
    CVectorView view; // Never gets a window.
    CGePointArray pts;
    CBulgeArray bulges;
    CStringArray names;
    CStringArray msgs;

    void Vertex(double x, double y, double bulge, const wchar_t* name, const wchar_t* msg) {
        CGePoint2d p(x, y);
        pts.Add(p);
        bulges.Add(bulge);
        names.Add(name);
        msgs.Add(msg);
    }
    void TwoVertices() {
        Vertex(0, 0, 0.5, L"A", L"a");
        Vertex(10, 0, -1, L"B", L"b");
    }
    CDrawableArray& Objects() { return *view.GetDocument()->GetDrawableObjs(); }
    CDrawableArray& Net() { return *view.GetDocument()->GetNetDrawableObjs(); }
};

using VectorViewDrawing = Drawing;

CSize ScreenExtent(const CString& text) {
    CSize size;
    HDC dc = ::GetDC(nullptr);
    ::GetTextExtentPoint32W(dc, text, text.GetLength(), &size);
    ::ReleaseDC(nullptr, dc);
    return size;
}

// ---- The table -----------------------------------------------------------------------------------------------------

TEST_F(VectorViewDrawing, EveryAddingOperationSetsTheListedFieldsAndNothingElse) {
    TwoVertices();
    CString text = L"1200";
    CString name = L"B1";
    const CSize size = ScreenExtent(text);
    ASSERT_GT(size.cx, 0);
    ASSERT_GT(size.cy, 0);
    // Twice the measured height, so that the width is twice the measured one and the margin.
    const double twice = 2.0 * size.cy;
    const std::string twiceHigh = Number(2.0 * size.cy);
    const std::string twiceWide = Number(2.0 * size.cx + 50);
    const std::string sized = "CTextParm (5,6) '1200' angle=0 back=2/ff000000 height=" + twiceHigh +
                              " wide=" + twiceWide + " name=B1 type=2 box=1 exp=";

    struct Row {
        const char* call;
        std::function<CDrawable*()> add;
        std::string expected;
    };
    const CGePoint2d p(1, 2);
    const CGePoint2d q(3, 4);
    const CGePoint2d t(5, 6);
    const Row table[] = {
        {"AddLine with tags", [&] { return view.AddLine(p, q, kColor, L"P", L"M", 3, 0); },
         "CLine (1,2)(3,4) lock=3 parm=P msg=M select=1" + kCommon},
        {"AddLine, plain", [&] { return view.AddLine(p, q, kColor, 7); },
         "CLine (1,2)(3,4) lock=0 parm= msg= select=7" + kCommon},
        {"AddNetLine", [&] { return view.AddNetLine(p, q, kColor, 0); },
         "CPLine (1,2)b0[/] (3,4)b0[/] closed=0 lock=0 select=0" + kCommon},
        {"AddArc by angles", [&] { return view.AddArc(p, 2.5f, 0.25f, 1.5f, kColor, L"P", L"M", 1, 0); },
         "CArc (1,2) r=2.5 from=0.25 to=1.5 lock=1 parm=P msg=M select=1" + kCommon},
        // Half a circle; its angles are 0 and pi as a float has them.
        {"AddArc through points",
         [&] { return view.AddArc(CGePoint2d(1, 0), CGePoint2d(0, 1), CGePoint2d(-1, 0), kColor, L"P", L"M", 2, 0); },
         "CArc (0,0) r=1 from=0 to=3.14159274 lock=2 parm=P msg=M select=1" + kCommon},
        {"AddCenterPoint", [&] { return view.AddCenterPoint(p, L"P", L"M", kColor, 0); },
         "CCenterPoint (1,2) lock=1 parm=P msg=M select=1" + kCommon},
        {"AddPLine with width", [&] { return view.AddPLine(pts, bulges, kColor, names, msgs, 4, 0, 5, 0); },
         "CPLine (0,0)b0.5[A/a] (10,0)b-1[B/b] closed=0 lock=5 select=1 colour 302010/-2 line -1/4"},
        {"AddPLine, always closed", [&] { return view.AddPLine(pts, bulges, kColor, names, msgs, 5, 0); },
         "CPLine (0,0)b0.5[A/a] (10,0)b-1[B/b] closed=1 lock=5 select=1" + kCommon},
        {"AddPLine without names", [&] { return view.AddPLine(pts, bulges, kColor, 1, 0, 1); },
         "CPLine (0,0)b0.5[/] (10,0)b-1[/] closed=1 lock=0 select=0" + kCommon},
        {"AddText", [&] { return view.AddText(t, text, 30.5, kColor, 0); },
         "CText (5,6) '1200' angle=30.5 back=2/ff000000 height=20 wide=20 select=1" + kCommon},
        {"AddText with height", [&] { return view.AddText(t, text, 30.5, kColor, 8.25, 0, 0); },
         "CText (5,6) '1200' angle=30.5 back=2/ff000000 height=8.25 wide=20 select=0" + kCommon},
        {"AddParmText", [&] { return view.AddParmText(t, text, name, 99.0, kColor, 0); },
         "CTextParm (5,6) '1200' angle=0 back=2/ff000000 height=" + Number(size.cy + 5) +
             " wide=" + Number(size.cx + 50) + " name=B1 type=0 box=1 exp=" + kDigits + " select=1" + kCommon},
        {"AddParmText with height", [&] { return view.AddParmText(t, text, name, 99.0, kColor, twice, 0); },
         sized + kDigits + " select=1" + kCommon},
        {"AddParmTextNoRegExp", [&] { return view.AddParmTextNoRegExp(t, text, name, 99.0, kColor, twice, 0); },
         sized + " select=1" + kCommon},
        {"AddParmTextForSS", [&] { return view.AddParmTextForSS(t, text, name, 99.0, kColor, twice, 0); },
         sized + "$shishu$ select=1" + kCommon},
        {"AddParmTextNoEdit", [&] { return view.AddParmTextNoEdit(t, text, name, 99.0, kColor, twice, 0); },
         "CText (5,6) '1200' angle=0 back=2/ff000000 height=" + twiceHigh + " wide=20 select=1" + kCommon},
    };
    INT_PTR drawn = 0;
    INT_PTR net = 0;
    for (const Row& row : table) {
        SCOPED_TRACE(row.call);
        CDrawable* obj = row.add();
        ASSERT_NE(nullptr, obj);
        EXPECT_EQ(row.expected, Describe(obj));
        EXPECT_EQ(1, CKXMemoryManager::Instance()->IsKnown(obj));
        if (std::string(row.call) == "AddNetLine") {
            ++net;
        } else {
            ++drawn;
        }
        ASSERT_EQ(drawn, Objects().GetSize());
        ASSERT_EQ(net, Net().GetSize());
        // The new object is on top.
        EXPECT_EQ(obj, row.call == std::string("AddNetLine") ? Net()[net - 1] : Objects()[drawn - 1]);
    }
}

// ---- Lines, arcs ---------------------------------------------------------------------------------------------------

TEST_F(VectorViewDrawing, TheAlphaOfAColourIsDropped) {
    CDrawable* obj = view.AddLine(CGePoint2d(0, 0), CGePoint2d(1, 1), Gdiplus::Color(0x01AABBCC), 1);
    EXPECT_EQ(0x00CCBBAAu, obj->GetPenColor());
    EXPECT_EQ(-2, obj->GetPenColorIndex());
}

TEST_F(VectorViewDrawing, ANetLineIsInTheNetListOnly) {
    view.AddNetLine(CGePoint2d(-100, -100), CGePoint2d(100, 100), kColor, 1);
    EXPECT_EQ(0, Objects().GetSize());
    CGePoint2d min(7, 8);
    CGePoint2d max(9, 10);
    EXPECT_EQ(0, view.GetDocument()->GetRect(min, max));
    EXPECT_EQ(7.0, min.x);
    EXPECT_EQ(10.0, max.y);
}

TEST_F(VectorViewDrawing, ArcCentresAreNarrowedToFloat) {
    // 2^24 + 1 is the first whole number that a float has not.
    auto* arc =
        static_cast<CArc*>(view.AddArc(CGePoint2d(16777217.0, -16777217.0), 1.0f, 0.0f, 1.0f, kColor, L"", L"", 0, 0));
    EXPECT_EQ(16777216.0, arc->Center().x);
    EXPECT_EQ(-16777216.0, arc->Center().y);
    auto* mark = static_cast<CCenterPoint*>(view.AddCenterPoint(CGePoint2d(16777217.0, 0.1), L"", L"", kColor, 0));
    EXPECT_EQ(16777216.0, mark->Center().x);
    EXPECT_EQ(static_cast<double>(0.1f), mark->Center().y);
}

TEST_F(VectorViewDrawing, AnArcThroughThreePointsOnALineIsNull) {
    const int alive = CKXMemoryManager::Instance()->GetCount();
    EXPECT_EQ(nullptr, view.AddArc(CGePoint2d(0, 0), CGePoint2d(1, 1), CGePoint2d(2, 2), kColor, L"", L"", 0, 0));
    EXPECT_EQ(nullptr, view.AddArc(CGePoint2d(1, 1), CGePoint2d(1, 1), CGePoint2d(2, 5), kColor, L"", L"", 0, 0));
    EXPECT_EQ(0, Objects().GetSize());
    EXPECT_EQ(alive, CKXMemoryManager::Instance()->GetCount());
}

TEST_F(VectorViewDrawing, AnArcThroughThreePointsIsNarrowedToFloatAndOrdered) {
    // Radius 5 about (3, 4), given clockwise: the angles of (3, -4) and (-3, -4) are 2 pi - 0.9273 and pi + 0.9273.
    auto* arc =
        static_cast<CArc*>(view.AddArc(CGePoint2d(6, 0), CGePoint2d(3, -1), CGePoint2d(0, 0), kColor, L"", L"", 0, 0));
    ASSERT_NE(nullptr, arc);
    EXPECT_FLOAT_EQ(3.0f, static_cast<float>(arc->Center().x));
    EXPECT_FLOAT_EQ(4.0f, static_cast<float>(arc->Center().y));
    EXPECT_FLOAT_EQ(5.0f, static_cast<float>(arc->Radius()));
    for (const double value : {arc->Center().x, arc->Radius(), arc->GetStartAngle(), arc->GetEndAngle()}) {
        EXPECT_EQ(static_cast<double>(static_cast<float>(value)), value);
    }
    EXPECT_NEAR(4.06888787, arc->GetStartAngle(), 1e-5);
    EXPECT_NEAR(5.35589009, arc->GetEndAngle(), 1e-5);
}

// ---- Polylines -----------------------------------------------------------------------------------------------------

TEST_F(VectorViewDrawing, APolylineWithFewerBulgesThanPointsIsNull) {
    TwoVertices();
    CGePoint2d third(5, 5);
    pts.Add(third);
    const int alive = CKXMemoryManager::Instance()->GetCount();
    EXPECT_EQ(nullptr, view.AddPLine(pts, bulges, kColor, names, msgs, 1, 1, 1, 0));
    EXPECT_EQ(nullptr, view.AddPLine(pts, bulges, kColor, names, msgs, 1, 0));
    EXPECT_EQ(nullptr, view.AddPLine(pts, bulges, kColor, 1, 1, 1));
    EXPECT_EQ(0, Objects().GetSize());
    EXPECT_EQ(alive, CKXMemoryManager::Instance()->GetCount());
}

TEST_F(VectorViewDrawing, AWidthIsTheLowHalfOfTheNumberWithItsSign) {
    TwoVertices();
    const struct {
        int given;
        float stored;
    } rows[] = {{0x10002, 2.0f}, {0xFFFF, -1.0f}, {0x7FFF, 32767.0f}, {0x8000, -32768.0f}, {-3, -3.0f}, {0, 0.0f}};
    for (const auto& row : rows) {
        CDrawable* pline = view.AddPLine(pts, bulges, kColor, names, msgs, row.given, 0, 0, 0);
        EXPECT_EQ(row.stored, pline->GetLineWide()) << row.given;
    }
}

TEST_F(VectorViewDrawing, AShortArrayOfNamesRaisesAndLeavesNothingAllocated) {
    TwoVertices();
    CStringArray one;
    one.Add(L"A");
    const int alive = CKXMemoryManager::Instance()->GetCount();
    for (const bool namesAreShort : {true, false}) {
        try {
            view.AddPLine(pts, bulges, kColor, namesAreShort ? one : names, namesAreShort ? msgs : one, 1, 1, 1, 0);
            FAIL() << "nothing was raised";
        } catch (CInvalidArgException* e) {
            e->Delete();
        }
    }
    EXPECT_EQ(0, Objects().GetSize());
    EXPECT_EQ(alive, CKXMemoryManager::Instance()->GetCount());
}

TEST_F(VectorViewDrawing, LongerArraysOfNamesAreCutAndAPolylineWithoutPointsIsOne) {
    auto* empty = static_cast<CPLine*>(view.AddPLine(pts, bulges, kColor, names, msgs, 1, 0));
    ASSERT_NE(nullptr, empty);
    EXPECT_EQ(0, empty->GetVertexCount());
    TwoVertices();
    names.Add(L"more");
    msgs.Add(L"more");
    CDrawable* pline = view.AddPLine(pts, bulges, kColor, names, msgs, 1, 0);
    ASSERT_NE(nullptr, pline);
    EXPECT_EQ("CPLine (0,0)b0.5[A/a] (10,0)b-1[B/b] closed=1 lock=1 select=1" + kCommon, Describe(pline));
    // There is no third segment for the third name.
    CString name = L"before";
    CString msg = L"before";
    static_cast<CPLine*>(pline)->GetSLineInfo(2, name, msg);
    EXPECT_NE(L"more", name);
    EXPECT_NE(L"more", msg);
}

TEST_F(VectorViewDrawing, APolylineNotOnTopIsPutAtTheVeryBottom) {
    TwoVertices();
    CDrawable* first = view.AddLine(CGePoint2d(0, 0), CGePoint2d(1, 1), kColor, 1);
    CDrawable* below = view.AddPLine(pts, bulges, kColor, 0, 1, 0);
    CDrawable* above = view.AddPLine(pts, bulges, kColor, 0, 1, 2);
    ASSERT_EQ(3, Objects().GetSize());
    EXPECT_EQ(below, Objects()[0]);
    EXPECT_EQ(first, Objects()[1]);
    EXPECT_EQ(above, Objects()[2]);
}

TEST_F(VectorViewDrawing, SegmentsHaveTheColourOfThePolyline) {
    // Three segments, the last one back to the start: curved, curved, straight.
    TwoVertices();
    Vertex(10, 50, 0, L"C", L"c");
    CDrawable* pline = view.AddPLine(pts, bulges, kColor, names, msgs, 5, 0);
    const auto pens = [this] {
        RecordingDC dc;
        EXPECT_EQ(1, view.VectorPaint(&dc));
        std::vector<std::string> colors;
        for (const std::string& call : dc.Calls()) {
            if (call.find("SelectObject(pen style") == 0) {
                colors.push_back(call.substr(call.find("color")));
            }
        }
        return colors;
    };
    // 0x102030 with red lowest.
    EXPECT_EQ(std::vector<std::string>(3, "color=0x00302010)"), pens());
    // No segment has one of its own: they follow.
    pline->SetPenColor(RGB(1, 2, 3));
    EXPECT_EQ(std::vector<std::string>(3, "color=0x00030201)"), pens());
}

// ---- Texts ---------------------------------------------------------------------------------------------------------

TEST_F(VectorViewDrawing, AnEmptyParameterTextIsAsWideAsTheMargin) {
    CString none;
    CString name = L"N";
    EXPECT_EQ(50.0f, static_cast<CText*>(view.AddParmText(CGePoint2d(), none, name, 0, kColor, 0))->GetTextWide());
    EXPECT_EQ(50.0f, static_cast<CText*>(view.AddParmText(CGePoint2d(), none, name, 0, kColor, 12, 0))->GetTextWide());
}

TEST_F(VectorViewDrawing, HeightsAreNarrowedToFloat) {
    CString text = L"1";
    CString name = L"N";
    auto* parm = static_cast<CText*>(view.AddParmTextForSS(CGePoint2d(), text, name, 0, kColor, 0.1, 0));
    EXPECT_EQ(0.1f, parm->GetTextHeight());
}

TEST_F(VectorViewDrawing, AParameterTextThatIsNotEditedIsAPlainText) {
    CString text = L"1";
    CString name = L"N";
    CDrawable* obj = view.AddParmTextNoEdit(CGePoint2d(), text, name, 0, kColor, 5, 0);
    EXPECT_FALSE(obj->IsKindOf(RUNTIME_CLASS(CTextParm)));
    EXPECT_TRUE(obj->IsKindOf(RUNTIME_CLASS(CText)));
    EXPECT_EQ(L"1", text);
    EXPECT_EQ(L"N", name);
}

TEST_F(VectorViewDrawing, TextsAboveTheBasicPlaneAreStoredWhole) {
    CString text = L"\xD840\xDC0B"
                   L"直径\xD83D\xDE00";
    auto* parm = static_cast<CTextParm*>(view.AddParmText(CGePoint2d(), text, text, 0, kColor, 20.0, 0));
    EXPECT_EQ(text, parm->GetText());
    EXPECT_EQ(text, parm->GetParmName());
}

// ---- Turning and asking --------------------------------------------------------------------------------------------

TEST_F(VectorViewDrawing, TurningMovesTheDrawingAndNotTheNetNorTheView) {
    auto* line = static_cast<CLine*>(view.AddLine(CGePoint2d(2, 1), CGePoint2d(3, 1), kColor, 1));
    auto* net = static_cast<CPLine*>(view.AddNetLine(CGePoint2d(2, 1), CGePoint2d(3, 1), kColor, 1));
    // A quarter turn about (1, 1): one to the right becomes one up.
    view.transformBy(3.1415926535 / 2, CGePoint2d(1, 1));
    EXPECT_NEAR(1.0, line->GetStartPoint().x, 1e-9);
    EXPECT_NEAR(2.0, line->GetStartPoint().y, 1e-9);
    EXPECT_NEAR(1.0, line->GetEndPoint().x, 1e-9);
    EXPECT_NEAR(3.0, line->GetEndPoint().y, 1e-9);
    EXPECT_EQ(2.0, net->GetPointList()->GetAt(0).x);
    EXPECT_EQ(1.0f, view.GetVectorViewCoordTran()->GetScale());
    EXPECT_EQ(0.0, view.GetVectorViewCoordTran()->GetOriginX());
}

struct ArcAsking : Drawing {
    void SetUp() override { view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 400)); }
    // Half a circle of radius 50 about (200, 200), from (150, 200) to (250, 200).
    CDrawable* AddBow() {
        pts.RemoveAll();
        bulges.RemoveAll();
        Vertex(150, 200, 1, L"", L"");
        Vertex(250, 200, 0, L"", L"");
        return view.AddPLine(pts, bulges, kColor, 0, 1, 1);
    }
};

TEST_F(ArcAsking, FourPixelsFromTheArcIsNearEnough) {
    CDrawable* bow = AddBow();
    int segment = 77;
    // The arc is measured as its full circle: 54 pixels below the centre.
    EXPECT_EQ(bow, view.GetPLine_IsArc(CPoint(200, 254), segment));
    EXPECT_EQ(0, segment);
    // With a unit of half a pixel the half pixel can be given: 9 units are 4.5 pixels.
    segment = 77;
    view.GetVectorViewCoordTran()->SetScale(2.0f);
    view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 200));
    // Drawing y = 2 * (200 - py): py 71 is y 258, eight units, that is four pixels, outside the circle.
    EXPECT_EQ(bow, view.GetPLine_IsArc(CPoint(100, 71), segment));
}

TEST_F(ArcAsking, FourAndAHalfPixelsIsTooFar) {
    AddBow();
    int segment = 77;
    view.GetVectorViewCoordTran()->SetScale(2.0f);
    view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 200));
    view.GetVectorViewCoordTran()->SetOriginY(1.0);
    // Drawing y = 1 + 2 * (200 - 71) = 259: nine units, that is four and a half pixels.
    EXPECT_EQ(nullptr, view.GetPLine_IsArc(CPoint(100, 71), segment));
    EXPECT_EQ(77, segment);
}

TEST_F(ArcAsking, TheSearchGoesOnPastStraightSegmentsAndOtherKinds) {
    view.AddLine(CGePoint2d(200, 100), CGePoint2d(200, 300), kColor, 1);
    Vertex(200, 100, 0, L"", L"");
    Vertex(200, 300, 0, L"", L"");
    view.AddPLine(pts, bulges, kColor, 0, 1, 1);
    int segment = 77;
    EXPECT_EQ(nullptr, view.GetPLine_IsArc(CPoint(200, 250), segment));
    EXPECT_EQ(0, segment) << "the straight polyline's segment stays";
    CDrawable* bow = AddBow();
    EXPECT_EQ(bow, view.GetPLine_IsArc(CPoint(200, 250), segment));
}

// ---- Windows -------------------------------------------------------------------------------------------------------

struct DesktopVectorViewDrawing : Drawing {
    CWnd frame;

    void SetUp() override {
        const CString windowClass = AfxRegisterWndClass(0);
        ASSERT_TRUE(frame.CreateEx(0, windowClass, L"", WS_POPUP | WS_VISIBLE, 30, 30, 300, 200, nullptr, nullptr))
            << "no window without a display";
    }
    void TearDown() override {
        if (view.m_hWnd != nullptr) {
            view.DestroyWindow();
        }
        frame.DestroyWindow();
    }
    void MakeWindow() {
        ASSERT_TRUE(view.Create(AfxRegisterWndClass(0), L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 100), &frame, 5));
    }
    static void Settle(CWnd& wnd) {
        wnd.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        wnd.ValidateRect(nullptr);
    }
};

TEST_F(DesktopVectorViewDrawing, OnlyTheLastArgumentRepaintsAndAllOfTheClientArea) {
    MakeWindow();
    TwoVertices();
    CString text = L"1";
    CString name = L"N";
    const CGePoint2d p(1, 2);
    const CGePoint2d q(3, 4);
    using Add = std::function<void(int)>;
    const struct {
        const char* call;
        Add add;
        bool repaints;
    } rows[] = {
        {"AddLine", [&](int r) { view.AddLine(p, q, kColor, L"", L"", 0, r); }, true},
        {"AddLine plain", [&](int r) { view.AddLine(p, q, kColor, r); }, false},
        {"AddNetLine", [&](int r) { view.AddNetLine(p, q, kColor, r); }, false},
        {"AddArc", [&](int r) { view.AddArc(p, 1, 0, 1, kColor, L"", L"", 0, r); }, true},
        {"AddArc points", [&](int r) { view.AddArc(p, q, CGePoint2d(9, 1), kColor, L"", L"", 0, r); }, true},
        {"AddCenterPoint", [&](int r) { view.AddCenterPoint(p, L"", L"", kColor, r); }, true},
        {"AddPLine wide", [&](int r) { view.AddPLine(pts, bulges, kColor, names, msgs, 1, 1, 1, r); }, true},
        {"AddPLine closed", [&](int r) { view.AddPLine(pts, bulges, kColor, names, msgs, 1, r); }, true},
        {"AddPLine plain", [&](int r) { view.AddPLine(pts, bulges, kColor, 1, 1, r); }, false},
        {"AddText", [&](int r) { view.AddText(p, text, 0, kColor, r); }, true},
        {"AddText height", [&](int r) { view.AddText(p, text, 0, kColor, 5, 1, r); }, true},
        {"AddParmText", [&](int r) { view.AddParmText(p, text, name, 0, kColor, r); }, true},
        {"AddParmText height", [&](int r) { view.AddParmText(p, text, name, 0, kColor, 5, r); }, true},
        {"AddParmTextNoRegExp", [&](int r) { view.AddParmTextNoRegExp(p, text, name, 0, kColor, 5, r); }, true},
        {"AddParmTextForSS", [&](int r) { view.AddParmTextForSS(p, text, name, 0, kColor, 5, r); }, true},
        {"AddParmTextNoEdit", [&](int r) { view.AddParmTextNoEdit(p, text, name, 0, kColor, 5, r); }, true},
        {"transformBy", [&](int) { view.transformBy(0.1, p); }, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.call);
        for (const int redraw : {0, 1, 2, -1}) {
            Settle(view);
            row.add(redraw);
            CRect dirty;
            const bool repaints = view.GetUpdateRect(&dirty) != FALSE;
            EXPECT_EQ(row.repaints && redraw != 0, repaints) << redraw;
            if (repaints) {
                EXPECT_EQ(CRect(0, 0, 200, 100), dirty);
            }
        }
    }
}

TEST_F(DesktopVectorViewDrawing, AViewWithoutAWindowLeavesTheDesktopAlone) {
    Settle(frame);
    TwoVertices();
    CString text = L"1";
    CString name = L"N";
    view.AddLine(CGePoint2d(), CGePoint2d(1, 1), kColor, L"", L"", 0, 1);
    view.AddPLine(pts, bulges, kColor, names, msgs, 1, 1);
    view.AddParmText(CGePoint2d(), text, name, 0, kColor, 1);
    view.AddParmTextForSS(CGePoint2d(), text, name, 0, kColor, 5, 1);
    CRect dirty;
    EXPECT_FALSE(frame.GetUpdateRect(&dirty));
}

TEST_F(DesktopVectorViewDrawing, ADrawingFilledBeforeTheWindowIsShownInIt) {
    view.GetDocument()->SetBKColorIndex(kColorBlack);
    view.GetVectorViewCoordTran()->SetScreenSize(CSize(200, 100));
    view.AddLine(CGePoint2d(0, 50), CGePoint2d(199, 50), Gdiplus::Color(0xFFFF0000), 1);
    MakeWindow();
    view.UpdateWindow();
    HDC dc = ::GetDC(view.m_hWnd);
    EXPECT_EQ(RGB(255, 0, 0), ::GetPixel(dc, 100, 50));
    EXPECT_EQ(RGB(0, 0, 0), ::GetPixel(dc, 100, 40));
    ::ReleaseDC(view.m_hWnd, dc);
}

} // namespace
