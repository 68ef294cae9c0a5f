// Recorded drawing of lines in every state, the paint loop, the snap marker and the off-screen bitmap.

#include "Document.h"
#include "Line.h"
#include "MemDC.h"
#include "MemoryInfo.h"
#include "VectorGraphic.h"
#include "support/AfxCaught.h"
#include "support/RecordingDC.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Calls = std::vector<std::string>;

// A painter whose mapping puts the drawing point (x, y) on pixel (x, 300 - y) at scale 1.
struct Painter {
    Painter() {
        tran.SethScreen(300);
        graphic.SetVectorViewCoordTran(&tran);
        graphic.GetDocument()->SetBKColor(RGB(1, 2, 3));
    }
    CLine* Add(double x1, double y1, double x2, double y2) {
        auto* line = new CLine;
        line->SetStartPoint(CGePoint2d(x1, y1));
        line->SetEndPoint(CGePoint2d(x2, y2));
        graphic.GetDocument()->AddDrawAobject(line);
        return line;
    }
    Calls Draw(CDrawable* object) {
        dc.Clear();
        graphic.OnDraw(&dc, object);
        return dc.Calls();
    }
    Calls Paint(int erase) {
        dc.Clear();
        graphic.OnDraw(&dc, erase);
        return dc.Calls();
    }
    CLayerInfo* Layer() { return graphic.GetDocument()->GetLayerManager()->GetLayerInfo(0); }
    // The pen of a drawn line: the second call, after the background mode.
    std::string Pen(CDrawable* object) {
        const Calls calls = Draw(object);
        return calls.size() > 1 ? calls[1] : "";
    }
    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
    RecordingDC dc;
};

} // namespace

// ---- One line ------------------------------------------------------------------------------------------------------

TEST(LineDraw, ANormalLineIsStrokedOnceInItsResolvedPen) {
    Painter p;
    CLine* line = p.Add(10, 20, 110.5, 70.25);
    line->SetPenColor(0x00112233);
    line->SetLineType(PS_DASH);
    line->SetLineWide(3);
    EXPECT_TRUE(SameCalls({"SetBkMode(1)", "SelectObject(pen style=1 width=3 color=0x00112233)", "MoveTo(10,280)",
                           "LineTo(111,230)", "SelectObject(pen default)"},
                          p.Draw(line)));
}

TEST(LineDraw, PixelsAreRoundedWithHalvesUpwards) {
    Painter p;
    // 300 - 20.5 = 279.5 and 300 - 69.6 = 230.4.
    CLine* line = p.Add(-10.5, 20.5, 10.49, 69.6);
    const Calls calls = p.Draw(line);
    EXPECT_EQ("MoveTo(-10,280)", calls[2]);
    EXPECT_EQ("LineTo(10,230)", calls[3]);
}

TEST(LineDraw, ASelectedLineIsDottedAndShowsThreeGrips) {
    Painter p;
    CLine* line = p.Add(10, 20, 110, 70);
    line->SetLineWide(2);
    line->SetDrawState(CDrawable::Selected);
    EXPECT_TRUE(
        SameCalls({"SetBkMode(1)", "SelectObject(pen style=2 width=2 color=0x00FFFFFF)", "MoveTo(10,280)",
                   "LineTo(110,230)", "SelectObject(pen default)", "SelectObject(pen style=0 width=0 color=0x00FF0000)",
                   "SelectStockObject(5)", "Rectangle(7,277,14,284)", "Rectangle(57,252,64,259)",
                   "Rectangle(107,227,114,234)", "SelectObject(brush default)", "SelectObject(pen default)"},
                  p.Draw(line)));
}

TEST(LineDraw, GripsAreTruncatedWhereTheLineIsRounded) {
    Painter p;
    CLine* line = p.Add(10.9, 20.1, 110.9, 20.1); // 300 - 20.1 = 279.9
    line->SetDrawState(CDrawable::Selected);
    const Calls calls = p.Draw(line);
    EXPECT_EQ("MoveTo(11,280)", calls[2]);
    EXPECT_EQ("Rectangle(7,276,14,283)", calls[7]); // Around (10, 279).
}

TEST(LineDraw, ADraggedLineIsInvertedWithASolidPenAndPutsEveryModeBack) {
    Painter p;
    CLine* line = p.Add(10, 20, 110, 70);
    line->SetLineType(PS_DASH);
    line->SetLineWide(4);
    line->SetDrawState(CDrawable::Dragging);
    EXPECT_TRUE(
        SameCalls({"SetBkMode(1)", "SelectObject(pen style=0 width=4 color=0x00FFFFFF)", "SetROP2(6)", "MoveTo(10,280)",
                   "LineTo(110,230)", "SelectObject(pen default)", "SetROP2(13)", "SetBkMode(2)"},
                  p.Draw(line)));
}

TEST(LineDraw, ADraggedLinePutsTheModesBackThatItFound) {
    Painter p;
    p.dc.SetROP2(R2_MASKPEN);
    p.dc.SetBkMode(TRANSPARENT);
    CLine* line = p.Add(10, 20, 110, 70);
    line->SetDrawState(CDrawable::Dragging);
    const Calls calls = p.Draw(line);
    ASSERT_EQ(8u, calls.size());
    EXPECT_EQ("SetROP2(9)", calls[6]);
    EXPECT_EQ("SetBkMode(1)", calls[7]);
}

TEST(LineDraw, TwoDragsOfOneLineLeaveNoPixel) {
    Painter p;
    CLine* line = p.Add(10, 20, 110, 70);
    line->SetLineWide(5);
    line->SetDrawState(CDrawable::Dragging);
    const std::vector<DWORD> before = p.dc.Pixels();
    p.Draw(line);
    EXPECT_NE(before, p.dc.Pixels());
    p.Draw(line);
    EXPECT_EQ(before, p.dc.Pixels());
}

TEST(LineDraw, AnyOtherStateDrawsNothing) {
    Painter p;
    CLine* line = p.Add(10, 20, 110, 70);
    line->SetDrawState(static_cast<enum CDrawable::DrawState>(3));
    EXPECT_TRUE(SameCalls({}, p.Draw(line)));
}

TEST(LineDraw, HiddenAndDeletedLinesDrawNothing) {
    Painter p;
    CLine* line = p.Add(10, 20, 110, 70);
    line->SetIsShow(0);
    EXPECT_TRUE(SameCalls({}, p.Draw(line)));
    line->SetIsShow(-1);
    EXPECT_EQ(5u, p.Draw(line).size()) << "any nonzero shows";
    class Deleted : public CLine {
    public:
        Deleted() { m_IsDelete = 1; }
    } deleted;
    deleted.SetEndPoint(CGePoint2d(10, 0));
    EXPECT_TRUE(SameCalls({}, p.Draw(&deleted)));
    EXPECT_EQ(3.0f, deleted.HitTest(CGePoint2d(5, 3))) << "and yet it hits";
}

// ---- The pen -------------------------------------------------------------------------------------------------------

TEST(LineDraw, EverythingByLayerIsWhiteSolidAndOneUnitWide) {
    Painter p;
    CLine* line = p.Add(0, 0, 1, 1);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00FFFFFF)", p.Pen(line));
    p.tran.SetScale(0.25f);
    EXPECT_EQ("SelectObject(pen style=0 width=4 color=0x00FFFFFF)", p.Pen(line));
}

TEST(LineDraw, AnUnlockedWidthScalesIsCutAndNeverBelowOne) {
    Painter p;
    CLine* line = p.Add(0, 0, 1, 1);
    line->SetLineWide(3);
    p.tran.SetScale(2.0f); // 1.5
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00FFFFFF)", p.Pen(line));
    p.tran.SetScale(10.0f); // 0.3
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00FFFFFF)", p.Pen(line));
    p.tran.SetScale(0.5f);
    EXPECT_EQ("SelectObject(pen style=0 width=6 color=0x00FFFFFF)", p.Pen(line));
}

TEST(LineDraw, ALockedWidthIsPixelsAtEveryZoomAndOnlyTheValueOneLocks) {
    Painter p;
    CLine* line = p.Add(0, 0, 1, 1);
    line->SetLineWide(3);
    line->SetLockMode(1);
    for (float scale : {0.01f, 1.0f, 500.0f}) {
        p.tran.SetScale(scale);
        EXPECT_EQ("SelectObject(pen style=0 width=3 color=0x00FFFFFF)", p.Pen(line));
    }
    p.tran.SetScale(0.5f);
    line->SetLockMode(2);
    EXPECT_EQ("SelectObject(pen style=0 width=6 color=0x00FFFFFF)", p.Pen(line));
}

TEST(LineDraw, ALockedWidthByLayerTakesTheLayersAsPixels) {
    Painter p;
    CLine* line = p.Add(0, 0, 1, 1);
    line->SetLockMode(1);
    p.Layer()->m_LineWide = 7.9f;
    p.tran.SetScale(100.0f);
    EXPECT_EQ("SelectObject(pen style=0 width=7 color=0x00FFFFFF)", p.Pen(line));
}

TEST(LineDraw, OnlyExactlyMinusOneIsByLayer) {
    Painter p;
    p.Layer()->m_LineWide = 5.0f;
    class Wide : public CLine {
    public:
        explicit Wide(float width) { m_LineWide = width; }
    };
    Wide byLayer(-1.0f);
    EXPECT_EQ("SelectObject(pen style=0 width=5 color=0x00FFFFFF)", p.Pen(&byLayer));
    Wide nearly(-0.9999999f);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00FFFFFF)", p.Pen(&nearly));
}

TEST(LineDraw, WithoutALayerTheOwnValuesAreUsed) {
    Painter p;
    class Layerless : public CLine {
    public:
        Layerless() {
            m_Layer = 1;
            m_PenColor = 0x00445566;
        }
        using CLine::InnerGetLineType;
        using CLine::InnerGetLineWide;
        using CLine::InnerGetPenColor;
        using CLine::PenWidth;
    } line;
    CDrawGeometry geometry(&p.graphic, p.graphic.GetDocument()->GetLayerManager());
    EXPECT_EQ(-1.0f, line.InnerGetLineWide(&geometry));
    EXPECT_EQ(-1, line.InnerGetLineType(&geometry));
    EXPECT_EQ(0x00445566u, line.InnerGetPenColor(&geometry));
    EXPECT_EQ(-1.0f, line.PenWidth(&geometry, true)) << "locked: the stored value";
    EXPECT_EQ(1.0f, line.PenWidth(&geometry, false));
    // Unlocked the width is raised to 1; locked the pen gets -1, of which GDI takes the amount. No GDI pen has the
    // style -1: it makes a solid one.
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00445566)", p.Pen(&line));
    line.SetLockMode(1);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00445566)", p.Pen(&line));
    CLine* plain = p.Add(0, 0, 1, 1);
    plain->SetLayer(1);
    EXPECT_EQ("SelectObject(pen style=0 width=1 color=0x00000000)", p.Pen(plain)) << "black by default";
}

TEST(LineDraw, TheLineTypeComesFromTheLayer) {
    Painter p;
    p.Layer()->m_LineType = PS_DASHDOT;
    CLine* line = p.Add(0, 0, 1, 1);
    EXPECT_EQ("SelectObject(pen style=3 width=1 color=0x00FFFFFF)", p.Pen(line));
    line->SetLineType(PS_DASH);
    EXPECT_EQ("SelectObject(pen style=1 width=1 color=0x00FFFFFF)", p.Pen(line)) << "its own comes before the layer's";
    line->SetLineType(-1);
    line->SetDrawState(CDrawable::Selected);
    EXPECT_EQ("SelectObject(pen style=2 width=1 color=0x00FFFFFF)", p.Pen(line));
}

TEST(LineDraw, AFractionalWidthScales) {
    Painter p;
    class Thin : public CLine {
    public:
        Thin() { m_LineWide = 0.4f; }
    } line;
    const struct {
        float scale;
        const char* pen;
    } cases[] = {{0.1f, "SelectObject(pen style=0 width=4 color=0x00FFFFFF)"},
                 {0.13f, "SelectObject(pen style=0 width=3 color=0x00FFFFFF)"},  // 3.08
                 {0.2f, "SelectObject(pen style=0 width=2 color=0x00FFFFFF)"},   // exactly 2
                 {0.21f, "SelectObject(pen style=0 width=1 color=0x00FFFFFF)"},  // 1.9
                 {0.4f, "SelectObject(pen style=0 width=1 color=0x00FFFFFF)"},   // exactly 1
                 {0.5f, "SelectObject(pen style=0 width=1 color=0x00FFFFFF)"},   // 0.8, raised
                 {80.0f, "SelectObject(pen style=0 width=1 color=0x00FFFFFF)"}}; // 0.005, raised
    for (const auto& row : cases) {
        p.tran.SetScale(row.scale);
        EXPECT_EQ(row.pen, p.Pen(&line)) << row.scale;
    }
    line.SetLockMode(1);
    EXPECT_EQ("SelectObject(pen style=0 width=0 color=0x00FFFFFF)", p.Pen(&line)) << "locked: 0.4 pixels, cut";
}

TEST(LineDraw, ALayerThatNamesItsColourByIndexShowsRedAndBlueExchanged) {
    Painter p;
    CLine* line = p.Add(0, 0, 1, 1);
    p.Layer()->m_ColorIndex = 10; // BlueViolet, 0x00E22B8A as a COLORREF.
    EXPECT_NE(std::string::npos, p.Pen(line).find("color=0x008A2BE2"));
    line->SetPenColorIndex(10);
    EXPECT_NE(std::string::npos, p.Pen(line).find("color=0x00E22B8A")) << "in an object the index is right";
    line->SetPenColorIndex(-1);
    p.Layer()->m_ColorIndex = -2;
    p.Layer()->m_Color = 0x00E22B8A;
    EXPECT_NE(std::string::npos, p.Pen(line).find("color=0x00E22B8A"))
        << "an explicit colour of a layer is not exchanged";
}

TEST(LineDraw, CoordinatesOutsideAllRangeDrawSomethingDefined) {
    Painter p;
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    // Far on the right rounding gives 1, far on the left 0, and y is flipped. Grips truncate: the lowest integer,
    // around which the square wraps.
    const struct {
        double bad;
        const char* from;
        const char* to;
    } cases[] = {{inf, "MoveTo(1,300)", "LineTo(10,0)"},
                 {-inf, "MoveTo(0,300)", "LineTo(10,1)"},
                 {nan, "MoveTo(0,300)", "LineTo(10,0)"},
                 {1e300, "MoveTo(1,300)", "LineTo(10,0)"},
                 {-1e300, "MoveTo(0,300)", "LineTo(10,1)"}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.bad);
        CLine* line = p.Add(row.bad, 0, 10, row.bad);
        const Calls normal = p.Draw(line);
        ASSERT_EQ(5u, normal.size());
        EXPECT_EQ(row.from, normal[2]);
        EXPECT_EQ(row.to, normal[3]);
        line->SetDrawState(CDrawable::Selected);
        const Calls selected = p.Draw(line);
        ASSERT_EQ(12u, selected.size());
        EXPECT_EQ("Rectangle(2147483645,297,-2147483644,304)", selected[7]);
        EXPECT_EQ("Rectangle(2147483645,2147483645,-2147483644,-2147483644)", selected[8]);
        EXPECT_EQ("Rectangle(7,2147483645,14,-2147483644)", selected[9]);
    }
}

// ---- The paint loop ------------------------------------------------------------------------------------------------

TEST(VectorGraphic, ClearingFillsTheClipBoxWithTheBackground) {
    Painter p;
    p.dc.SetClip(CRect(10, 20, 110, 70));
    EXPECT_TRUE(SameCalls({"SelectObject(brush style=0 color=0x00030201)", "PatBlt(10,20,100,50,0x00F00021)",
                           "SelectObject(brush default)"},
                          p.Paint(1)));
    p.graphic.GetDocument()->SetBKColorIndex(137);
    EXPECT_EQ("SelectObject(brush style=0 color=0x00FFFFFF)", p.Paint(1)[0]);
}

TEST(VectorGraphic, AHiddenBackgroundComesBackInThePaint) {
    Painter p;
    EXPECT_EQ("SelectObject(brush style=0 color=0x00030201)", p.Paint(1)[0]);
    p.graphic.GetDocument()->SetBKColorIndex(7);
    EXPECT_EQ("SelectObject(brush style=0 color=0x00000000)", p.Paint(1)[0]);
    p.graphic.GetDocument()->SetBKColorIndex(-2);
    EXPECT_EQ("SelectObject(brush style=0 color=0x00030201)", p.Paint(1)[0]);
}

TEST(VectorGraphic, ABackgroundIndexOutsideTheTableIsBlack) {
    Painter p;
    for (short index : {short{-1}, short{-3}, short{141}, short{499}, short{500}, short{32767}, short{-32768}}) {
        p.graphic.GetDocument()->SetBKColorIndex(index);
        EXPECT_EQ("SelectObject(brush style=0 color=0x00000000)", p.Paint(1)[0]) << index;
    }
}

TEST(VectorGraphic, OnlyTheValueOneClears) {
    Painter p;
    for (int erase : {0, 2, -1}) {
        EXPECT_TRUE(SameCalls({}, p.Paint(erase))) << erase;
    }
}

TEST(VectorGraphic, NetLiesUndermostThenTheDrawingThenTheCurrentObject) {
    Painter p;
    auto* net = new CLine;
    net->SetStartPoint(CGePoint2d(1, 0));
    p.graphic.GetDocument()->AddNetobject(net);
    p.Add(2, 0, 0, 0);
    p.Add(3, 0, 0, 0);
    CLine current;
    current.SetStartPoint(CGePoint2d(4, 0));
    p.graphic.GetDocument()->AddCurrentObject(&current);
    Calls starts;
    for (const std::string& call : p.Paint(0)) {
        if (call.rfind("MoveTo", 0) == 0) {
            starts.push_back(call);
        }
    }
    EXPECT_EQ((Calls{"MoveTo(1,300)", "MoveTo(2,300)", "MoveTo(3,300)", "MoveTo(4,300)"}), starts);
    p.graphic.GetDocument()->removeCurrentObject();
}

TEST(VectorGraphic, ItOwnsItsDocumentUntilItIsGivenAnother) {
    CKXMemoryManager* registry = CKXMemoryManager::Instance();
    auto* given = new CGraphicDocument;
    KX_ADD_MEMORY(given);
    CGraphicDocument outside;
    const int before = registry->GetCount(); // With the two documents' layers.
    {
        CVectorGraphic graphic;
        const CGraphicDocument* born = graphic.GetDocument();
        EXPECT_EQ(before + 3, registry->GetCount()) << "document, its layer, geometry";
        EXPECT_TRUE(registry->IsKnown(born));
        graphic.SetDocument(&outside, 1);
        EXPECT_EQ(before + 1, registry->GetCount()) << "the own one went, with its layer";
        EXPECT_FALSE(registry->IsKnown(born));
        graphic.SetDocument(given, 0);
        EXPECT_EQ(before + 1, registry->GetCount()) << "the external one stays";
        EXPECT_TRUE(registry->IsKnown(given));
        EXPECT_EQ(given, graphic.GetDocument());
    }
    EXPECT_EQ(before - 2, registry->GetCount()) << "the given one was the painter's, with its layer";
    EXPECT_FALSE(registry->IsKnown(given));
    EXPECT_STREQ("Layer 0", outside.GetLayerManager()->GetLayerInfo(0)->GetName());
}

TEST(VectorGraphic, AGivenDocumentIsFreedByTheNextOne) {
    CKXMemoryManager* registry = CKXMemoryManager::Instance();
    CGraphicDocument outside;
    CVectorGraphic graphic;
    auto* given = new CGraphicDocument;
    KX_ADD_MEMORY(given);
    graphic.SetDocument(given, 0);
    const int before = registry->GetCount();
    graphic.SetDocument(&outside, -1); // Any nonzero is external.
    EXPECT_EQ(before - 2, registry->GetCount());
    EXPECT_FALSE(registry->IsKnown(given));
}

TEST(VectorGraphic, AnExternalDocumentIsPaintedWithItsOwnLayersAndKeepsItsObjects) {
    CVectorViewCoordTran tran;
    CGraphicDocument outside;
    {
        CVectorGraphic graphic;
        graphic.SetVectorViewCoordTran(&tran);
        graphic.SetDocument(&outside, 1);
        EXPECT_EQ(&outside, graphic.GetDocument());
        EXPECT_EQ(&tran, outside.GetVectorViewCoordTran());
        outside.GetLayerManager()->GetLayerInfo(0)->m_Color = 0x00010203;
        outside.GetLayerManager()->GetLayerInfo(0)->m_ColorIndex = -2;
        outside.AddLine(0, 0, 0, 0, 0, 0, 0, 0, 1, 1);
        RecordingDC dc;
        graphic.OnDraw(&dc, 0);
        EXPECT_NE(std::string::npos, dc.Calls()[1].find("color=0x00010203")) << "the new document's layers are asked";
    }
    EXPECT_EQ(1, outside.GetDrawableObjs()->GetSize());
}

// ---- The marker ----------------------------------------------------------------------------------------------------

namespace {

Calls Marker(int kind) {
    Painter p;
    p.graphic.DrawROPNOTGrip(&p.dc, CPoint(100, 100), kind);
    return p.dc.Calls();
}

Calls Framed(std::initializer_list<const char*> shape) {
    Calls calls = {"SetROP2(6)", "SelectObject(pen style=0 width=2 color=0x000000FF)", "SelectStockObject(5)"};
    calls.insert(calls.end(), shape.begin(), shape.end());
    calls.push_back("SelectObject(brush default)");
    calls.push_back("SelectObject(pen default)");
    return calls;
}

} // namespace

TEST(VectorGraphic, AFootIsASmallSquareWithTwoTicksAndHidesEveryOtherBit) {
    const Calls expected =
        Framed({"Rectangle(96,96,104,104)", "MoveTo(96,95)", "LineTo(96,92)", "MoveTo(105,104)", "LineTo(108,104)"});
    EXPECT_TRUE(SameCalls(expected, Marker(8)));
    EXPECT_TRUE(SameCalls(expected, Marker(9)));
    EXPECT_TRUE(SameCalls(expected, Marker(15)));
}

TEST(VectorGraphic, AMidpointIsATriangleAnInsertPointACrossAVertexASquare) {
    EXPECT_TRUE(
        SameCalls(Framed({"MoveTo(93,105)", "LineTo(107,105)", "LineTo(100,93)", "LineTo(93,105)"}), Marker(4)));
    EXPECT_TRUE(SameCalls(Framed({"MoveTo(96,104)", "LineTo(104,96)", "MoveTo(96,96)", "LineTo(104,104)"}), Marker(2)));
    EXPECT_TRUE(SameCalls(Framed({"Rectangle(93,93,107,107)"}), Marker(1)));
    EXPECT_TRUE(
        SameCalls(Framed({"MoveTo(93,105)", "LineTo(107,105)", "LineTo(100,93)", "LineTo(93,105)"}), Marker(7)));
}

TEST(VectorGraphic, AMarkerOfNoKindOnlySelects) {
    EXPECT_TRUE(SameCalls(Framed({}), Marker(0)));
    EXPECT_TRUE(SameCalls(Framed({}), Marker(16)));
}

TEST(VectorGraphic, TwoMarkersAtOnePlaceLeaveNoPixel) {
    for (int kind : {1, 2, 4, 8}) {
        Painter p;
        const std::vector<DWORD> before = p.dc.Pixels();
        p.graphic.DrawROPNOTGrip(&p.dc, CPoint(100, 100), kind);
        EXPECT_NE(before, p.dc.Pixels()) << kind;
        p.graphic.DrawROPNOTGrip(&p.dc, CPoint(100, 100), kind);
        EXPECT_EQ(before, p.dc.Pixels()) << kind;
        EXPECT_EQ(R2_NOT, p.dc.GetROP2());
    }
}

// ---- The off-screen bitmap -----------------------------------------------------------------------------------------

TEST(MemDC, TheBufferIsTheClipBoxAndItsCoordinatesAreTheTargets) {
    RecordingDC target;
    target.SetClip(CRect(10, 20, 110, 70));
    {
        CMemDC memory(&target);
        EXPECT_NE(target.m_hDC, memory.m_hDC);
        EXPECT_EQ(CPoint(10, 20), memory.GetWindowOrg());
        BITMAP bitmap = {};
        ::GetObject(::GetCurrentObject(memory.m_hDC, OBJ_BITMAP), sizeof bitmap, &bitmap);
        EXPECT_EQ(100, bitmap.bmWidth);
        EXPECT_EQ(50, bitmap.bmHeight);
        memory.FillSolidRect(10, 20, 100, 50, RGB(9, 8, 7));
        memory.SetPixel(60, 45, RGB(1, 2, 3));
        EXPECT_EQ(RGB(255, 255, 255), target.Pixel(60, 45)) << "nothing shows before the end";
    }
    ASSERT_EQ(1u, target.Calls().size());
    EXPECT_EQ(0u, target.Calls()[0].find("BitBlt(10,20,100,50,")) << target.Calls()[0];
    EXPECT_NE(std::string::npos, target.Calls()[0].find("10,20,0x00CC0020")) << target.Calls()[0];
    EXPECT_EQ(RGB(1, 2, 3), target.Pixel(60, 45));
    EXPECT_EQ(RGB(9, 8, 7), target.Pixel(10, 20));
    EXPECT_EQ(RGB(255, 255, 255), target.Pixel(9, 20));
}

TEST(MemDC, APrinterIsWrappedAndNotBuffered) {
    RecordingDC target;
    target.SetPrinting(true);
    {
        CMemDC memory(&target);
        EXPECT_EQ(target.m_hDC, memory.m_hDC);
        EXPECT_TRUE(memory.IsPrinting());
        memory.SetPixel(5, 5, RGB(1, 2, 3));
    }
    EXPECT_TRUE(SameCalls({}, target.Calls()));
    EXPECT_EQ(RGB(1, 2, 3), target.Pixel(5, 5));
    EXPECT_EQ(R2_COPYPEN, target.GetROP2()) << "the wrapped context can still be used";
}

TEST(MemDC, APrintersTwoHandlesAreBothTaken) {
    RecordingDC target;
    target.SetPrinting(true);
    CDC attributes;
    ASSERT_TRUE(attributes.CreateCompatibleDC(nullptr));
    target.SetAttribDC(attributes.m_hDC);
    {
        CMemDC memory(&target);
        EXPECT_EQ(target.m_hDC, memory.m_hDC);
        EXPECT_EQ(attributes.m_hDC, memory.m_hAttribDC);
    }
    target.SetAttribDC(target.m_hDC);
    EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), ::GetObjectType(target.m_hDC)) << "neither was the wrapper's to free";
    EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), ::GetObjectType(attributes.m_hDC));
}

TEST(MemDC, ARefusedBitmapIsAResourceExceptionAndNothingIsCopied) {
    // GDI makes no bitmap for a context that is none.
    RecordingDC target;
    const HDC handle = target.Detach();
    EXPECT_TRUE(Throws<CResourceException>([&] { CMemDC memory(&target); }));
    EXPECT_TRUE(SameCalls({}, target.Calls()));
    target.Attach(handle);
}
