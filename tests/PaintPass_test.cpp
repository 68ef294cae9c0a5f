// What a view's own paint leaves out: strokes and texts that its window can't show. The picture and what the objects
// keep are those of a paint that leaves nothing out.

#include "Arc.h"
#include "CenterPoint.h"
#include "Circle.h"
#include "Document.h"
#include "Line.h"
#include "MemDC.h"
#include "PLine.h"
#include "TextParm.h"
#include "VectorLabel.h"
#include "support/BoxAnswer.h"
#include "support/ViewHost.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    double Between(double low, double high) { return low + (high - low) * m_engine() / 4294967296.0; }
    int Below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned>(limit)); }
    // Mostly around the window, sometimes far away or no number.
    double Coordinate() {
        switch (Below(40)) {
        case 0:
            return Between(-1e12, 1e12);
        case 1:
            return kNaN;
        case 2:
            return Below(2) == 0 ? kInfinity : -kInfinity;
        default:
            return Between(-500, 900);
        }
    }

private:
    std::mt19937 m_engine;
};

CDrawable* MakeObject(Random& random) {
    CDrawable* object = nullptr;
    const double x = random.Coordinate();
    const double y = random.Coordinate();
    const auto size = static_cast<float>(random.Between(-5, 200));
    switch (random.Below(8)) {
    case 0: {
        auto* line = new CLine;
        line->SetStartPoint(CGePoint2d(x, y));
        line->SetEndPoint(CGePoint2d(random.Coordinate(), random.Coordinate()));
        line->SetLockMode(random.Below(2));
        object = line;
        break;
    }
    case 1:
        object = new CCircle(Gdiplus::PointF(static_cast<float>(x), static_cast<float>(y)), size);
        break;
    case 2:
        object = new CArc(Gdiplus::PointF(static_cast<float>(x), static_cast<float>(y)), size,
                          static_cast<float>(random.Between(0, 6)), static_cast<float>(random.Between(0, 6)));
        break;
    case 3: {
        auto* mark = new CCenterPoint;
        mark->SetCenter(CGePoint2d(x, y));
        object = mark;
        break;
    }
    case 4:
    case 5: {
        auto* line = new CPLine;
        const int count = 1 + random.Below(5);
        for (int i = 0; i < count; ++i) {
            // One in nine vertices on the one before: an arc without a circle, which ends the drawing of the polyline.
            const bool same = i > 0 && random.Below(9) == 0;
            const CGePoint2d p =
                same ? line->GetPointList()->GetAt(i - 1) : CGePoint2d(random.Coordinate(), random.Coordinate());
            line->AddPoint(p, random.Below(2) == 0 ? 0.0 : random.Between(-3, 3));
        }
        line->SetClose(random.Below(2));
        object = line;
        break;
    }
    case 6: {
        auto* text = random.Below(2) == 0 ? new CText : new CTextParm;
        const LPCTSTR words[] = {L"M12", L"中文标注", L"Wide WWWWWWWW", L"", L"e\x0301\x0302", L"j"};
        text->SetPos(CGePoint2d(x, y));
        text->SetText(words[random.Below(6)]);
        text->SetTextHeight(static_cast<float>(random.Between(0, 60)));
        text->SetTextRatio(random.Below(2) == 0 ? 0.0f : static_cast<float>(random.Between(0, 3)));
        text->SetAngle(static_cast<float>(random.Below(4) * 90 + random.Below(30)));
        object = text;
        break;
    }
    default: {
        auto* label = new CKXVectorLabel;
        const double length = random.Between(5, 80);
        label->SetLeftLabel(CGePoint2d(x, y - 30), CGePoint2d(x, y));
        label->SetRightLabel(CGePoint2d(x + length, y - 30), CGePoint2d(x + length, y));
        label->SetLabelLength(6);
        label->SetLabelWidth(4);
        object = label;
        break;
    }
    }
    object->SetPenColor(RGB(random.Below(200), random.Below(200), 255));
    object->SetLineType(static_cast<short>(random.Below(3)));
    object->SetLineWide(static_cast<short>(random.Below(12)));
    return object;
}

void Fill(CGraphicDocument& document, unsigned seed, int count) {
    Random random(seed);
    for (int i = 0; i < count; ++i) {
        document.AddDrawAobject(MakeObject(random));
    }
}

// The view's buffer under another class: a context that may look on, and so gets every call.
class WatchingBuffer : public CMemDC {
public:
    explicit WatchingBuffer(CDC* dc) : CMemDC(dc) {}
};

class PaintedView : public CVectorView {
public:
    // As the view's own paint, but of every object.
    void PaintAll() {
        CClientDC client(this);
        WatchingBuffer buffer(&client);
        m_Graphic.OnDraw(&buffer, 1);
    }
    // The view's own paint without a message, whose caller would swallow a fault.
    void PaintOwn() {
        CClientDC client(this);
        CMemDC buffer(&client);
        m_Graphic.OnDraw(&buffer, 1);
    }
};

struct PaintedHost {
    PaintedHost() {
        ShowView(view, parent);
        view.GetVectorViewCoordTran()->SetScreenSize(CSize(400, 300));
        view.GetDocument()->SetBKColor(RGB(0, 0, 0));
    }
    Picture Own() {
        view.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        return TakePicture(view);
    }
    void SetOptions(bool textsAsShown, float pixelScale) {
        CEditingOptions options;
        options.textsAsShown = textsAsShown;
        options.pixelScale = pixelScale;
        view.GetDocument()->SetEditingOptions(options);
    }
    Picture All() {
        view.PaintAll();
        return TakePicture(view);
    }
    ParentWindow parent;
    PaintedView view;
};

std::vector<float> Heights(CGraphicDocument& document) {
    std::vector<float> heights;
    CDrawableArray& objects = *document.GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        CGePoint2d min;
        CGePoint2d max;
        objects[i]->GetRect(nullptr, min, max);
        heights.push_back(static_cast<float>(max.y - min.y));
    }
    return heights;
}

} // namespace

TEST(PaintPass, RandomDrawingsLookTheSameAtEveryZoom) {
    PaintedHost own;
    PaintedHost all;
    int compared = 0;
    for (unsigned seed = 1; seed <= 30; ++seed) {
        for (PaintedHost* host : {&own, &all}) {
            host->view.GetDocument()->Reset();
            Fill(*host->view.GetDocument(), seed, 60);
        }
        for (const float scale : {1.0f, 0.2f, 0.03f, 7.0f}) {
            for (PaintedHost* host : {&own, &all}) {
                CVectorViewCoordTran& tran = *host->view.GetVectorViewCoordTran();
                tran.SetScale(scale);
                tran.SetOriginX(seed * 17 % 300);
                tran.SetOriginY(seed * 29 % 300);
            }
            const Picture expected = all.All();
            ASSERT_EQ(0, own.Own().Difference(expected)) << "seed " << seed << ", scale " << scale;
            ++compared;
        }
    }
    EXPECT_EQ(120, compared);
}

// The grips reach 3 * 4 pixels around their points. Each line runs along an edge of the window, 10 pixels outside.
TEST(PaintPass, LargeGripsOfASelectedLineOutsideAreDrawn) {
    PaintedHost host;
    host.SetOptions(false, 4.0f);
    const CGePoint2d lines[][2] = {{{-10, 100}, {-10, 200}}, {{410, 100}, {410, 200}}, {{100, -10}, {200, -10}}};
    for (const auto& ends : lines) {
        CDrawable* line = host.view.AddLine(ends[0], ends[1], Gdiplus::Color(0xFFFFFFFF), 1);
        line->SetDrawState(CDrawable::Normal);
        EXPECT_EQ(host.Own().Count(0), 400 * 300);
        line->SetDrawState(CDrawable::Selected);
        const Picture shown = host.Own();
        EXPECT_LT(shown.Count(0), 400 * 300 - 40);
        EXPECT_EQ(0, host.All().Difference(shown));
        line->SetDrawState(CDrawable::Normal);
    }
}

// The paint of a text notes the width that it is shown with, also where nothing of it is seen.
TEST(PaintPass, ATextOutOfSightIsHitOverItsShownWidthUntilTheOptionIsSwitchedOff) {
    PaintedHost host;
    CDrawable* texts[2] = {new CText, new CTextParm};
    for (CDrawable* object : texts) {
        auto* text = static_cast<CText*>(object);
        text->SetPos(CGePoint2d(-4000, 5000));
        text->SetText(L"MMMMMMMMMMMM");
        text->SetTextHeight(20);
        text->SetTextWide(20);
        host.view.GetDocument()->AddDrawAobject(text);
    }
    // Before a parameter text has been painted once it is never left out: it has no height yet.
    host.Own();
    for (const bool on : {false, true, false}) {
        host.SetOptions(on, 1.0f);
        host.Own();
        for (CDrawable* text : texts) {
            EXPECT_EQ(text->HitTest(CGePoint2d(-3995, 4995)), 0.0f);
            // Twelve wide letters of a height of 20 units are wider than 80.
            EXPECT_EQ(text->HitTest(CGePoint2d(-3920, 4995)) == 0.0f, on);
        }
    }
}

// The window's edges are at x = 0 and 400, y = 0 and 300; each line is moved across them pixel by pixel, with a pen as
// wide as given.
TEST(PaintPass, ALineIsDrawnAsLongAsItsPenReachesTheWindow) {
    PaintedHost own;
    PaintedHost all;
    CLine* lines[2] = {};
    for (int i = 0; i < 2; ++i) {
        CVectorView& view = i == 0 ? static_cast<CVectorView&>(own.view) : all.view;
        lines[i] = static_cast<CLine*>(view.AddLine(CGePoint2d(), CGePoint2d(), Gdiplus::Color(0xFFFFFFFF), 1));
        lines[i]->SetLockMode(1);
    }
    int seen = 0;
    for (const int width : {1, 9, 40}) {
        for (int offset = -30; offset <= 4; ++offset) {
            for (int side = 0; side < 4; ++side) {
                for (CLine* line : lines) {
                    const double x = side == 0 ? offset : side == 1 ? 400 - offset : 100;
                    const double y = side == 2 ? offset : side == 3 ? 300 - offset : 100;
                    line->SetLineWide(static_cast<short>(width));
                    line->SetStartPoint(CGePoint2d(x, y));
                    line->SetEndPoint(CGePoint2d(x + (side > 1 ? 120 : 0), y + (side > 1 ? 0 : 120)));
                }
                const Picture expected = all.All();
                seen += expected.Count(RGB(255, 255, 255)) > 0 ? 1 : 0;
                ASSERT_EQ(0, own.Own().Difference(expected)) << width << ", " << offset << ", side " << side;
            }
        }
    }
    EXPECT_GT(seen, 100);
}

// One long segment crosses the window, the others lie outside, with pens that reach in or don't.
TEST(PaintPass, TheSegmentsOfAPolylineThatCrossesTheWindowAreAllThere) {
    PaintedHost own;
    PaintedHost all;
    EXPECT_EQ(400 * 300, own.Own().Count(0));
    for (unsigned seed = 1; seed <= 60; ++seed) {
        for (PaintedHost* host : {&own, &all}) {
            Random random(seed);
            host->view.GetDocument()->Reset();
            auto* line = new CPLine;
            line->AddPoint(CGePoint2d(-200, random.Between(10, 80)), 0.0);
            line->AddPoint(CGePoint2d(600, random.Between(10, 80)), random.Between(-2, 2));
            for (int i = 0; i < 5; ++i) {
                line->AddPoint(CGePoint2d(random.Between(-60, 460), random.Between(-60, 0)),
                               i % 2 == 0 ? random.Between(-2, 2) : 0.0);
                line->AddPoint(CGePoint2d(random.Between(400, 500), random.Between(-60, 360)), 0.0);
            }
            line->SetClose(random.Below(2));
            line->SetPenColor(RGB(255, 255, 255));
            line->SetLineType(static_cast<short>(random.Below(3)));
            line->SetLineWide(static_cast<short>(1 + random.Below(30)));
            line->SetLockMode(random.Below(2));
            host->view.GetDocument()->AddDrawAobject(line);
        }
        for (const float scale : {1.0f, 0.3f}) {
            own.view.GetVectorViewCoordTran()->SetScale(scale);
            all.view.GetVectorViewCoordTran()->SetScale(scale);
            const Picture expected = all.All();
            EXPECT_LT(expected.Count(0), 400 * 300);
            ASSERT_EQ(0, own.Own().Difference(expected)) << "seed " << seed << ", scale " << scale;
        }
    }
}

TEST(PaintPass, AnObjectOutOfSightWhoseLayerFailsIsStillReported) {
    PaintedHost host;
    // Hidden, so that no message box uncovers a part of the view, whose paint would report once more.
    host.parent.ShowWindow(SW_HIDE);
    const auto add = [&](CDrawable* object, short layer) {
        object->SetLayer(layer); // The colour is by layer, the width is not.
        object->SetLineWide(1);
        object->SetLineType(PS_SOLID);
        host.view.GetDocument()->AddDrawAobject(object);
    };
    for (const short layer : {static_cast<short>(-1), static_cast<short>(500), static_cast<short>(0)}) {
        host.view.GetDocument()->Reset();
        auto* line = new CLine;
        line->SetStartPoint(CGePoint2d(-900, -900));
        line->SetEndPoint(CGePoint2d(-800, -900));
        add(line, layer);
        add(new CCircle(Gdiplus::PointF(-900.0f, -900.0f), 5.0f), layer);
        BoxAnswer boxes;
        host.view.PaintOwn();
        if (layer < 0) {
            const std::vector<std::string> expected = {"CLine::Draw出错:step=0", "CCircle::Draw出错:step=0"};
            EXPECT_EQ(expected, boxes.Texts());
        } else {
            EXPECT_TRUE(boxes.Texts().empty()) << layer;
        }
    }
}

TEST(PaintPass, ATextOutOfSightKeepsTheHeightOfThePaint) {
    PaintedHost own;
    PaintedHost all;
    for (PaintedHost* host : {&own, &all}) {
        for (int i = 0; i < 12; ++i) {
            auto* text = new CText;
            text->SetPos(CGePoint2d(-4000.0 - 10 * i, 5000.0));
            text->SetText(L"M12");
            text->SetTextHeight(5.0f + static_cast<float>(3 * i));
            text->SetAngle(static_cast<float>(i * 30));
            host->view.GetDocument()->AddDrawAobject(text);
        }
    }
    own.Own();
    all.All();
    const std::vector<float> heights = Heights(*own.view.GetDocument());
    EXPECT_EQ(Heights(*all.view.GetDocument()), heights);
    EXPECT_GT(heights.front(), 0.0f);
}

// The vertices are still counted; a refused block of memory leaves a polyline like that, too.
TEST(PaintPass, APolylineWhosePointsAHostHasTakenAwayIsPaintedWithoutAFault) {
    PaintedHost host;
    auto* line = new CPLine;
    line->SetPenColor(RGB(255, 0, 0));
    line->AddPoint(CGePoint2d(10, 10), 0.5);
    line->AddPoint(CGePoint2d(90, 90), 0.0);
    host.view.GetDocument()->AddDrawAobject(line);
    line->GetPointList()->RemoveAll();
    EXPECT_EQ(2, line->GetVertexCount());
    host.view.PaintOwn();
    EXPECT_EQ(0, host.Own().Count(RGB(255, 0, 0)));
}

TEST(PaintPass, AnObjectThatAnotherOneDrawsIsNeverLeftOut) {
    // A host's kind that shifts the context and draws a line, which by its own coordinates is far off.
    class Shifted : public CDrawable {
    public:
        Shifted() {
            line.SetStartPoint(CGePoint2d(5000, 100));
            line.SetEndPoint(CGePoint2d(5200, 100));
            line.SetPenColor(RGB(255, 255, 255));
            line.SetLineType(PS_SOLID);
        }
        void Draw(CDC* pDC, CDrawGeometry* pGeom) override {
            const CPoint old = pDC->SetViewportOrg(-4900, 0);
            line.Draw(pDC, pGeom);
            pDC->SetViewportOrg(old);
        }
        CLine line;
    };
    PaintedHost host;
    host.view.GetDocument()->AddDrawAobject(new Shifted);
    EXPECT_EQ(200, host.Own().Count(RGB(255, 255, 255)));
}

// The line is drawn at (100, 100) by the mapping that the object before it has set, and far outside by the first one.
TEST(PaintPass, AHostsObjectThatChangesTheMappingCountsForWhatFollows) {
    class Panned : public CDrawable {
    public:
        explicit Panned(CVectorViewCoordTran* mapping) : m_mapping(mapping) {}
        void Draw(CDC*, CDrawGeometry*) override { m_mapping->SetOriginX(4900); }

    private:
        CVectorViewCoordTran* m_mapping;
    };
    PaintedHost host;
    host.view.GetDocument()->AddDrawAobject(new Panned(host.view.GetVectorViewCoordTran()));
    CDrawable* line = host.view.AddLine(CGePoint2d(5000, 100), CGePoint2d(5200, 100), Gdiplus::Color(0xFFFFFFFF), 1);
    line->SetLineType(PS_SOLID);
    host.view.GetVectorViewCoordTran()->SetOriginX(0);
    EXPECT_EQ(200, host.Own().Count(RGB(255, 255, 255)));
}

// The mode is what the required leftover of a line is: the text drawing of a host after the paint shows it.
TEST(PaintPass, ALineOutOfSightStillLeavesTheBackgroundTransparent) {
    class ModeView : public CVectorView {
    public:
        int mode = 0;

    protected:
        int DrawSpecInfo(CDC* dc, int) override {
            mode = dc->GetBkMode();
            return 1;
        }
    };
    ParentWindow parent;
    ModeView view;
    ShowView(view, parent);
    EXPECT_EQ(OPAQUE, view.mode);
    view.AddLine(CGePoint2d(-900, -900), CGePoint2d(-800, -800), Gdiplus::Color(0xFFFFFFFF), 1);
    view.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_EQ(TRANSPARENT, view.mode);
}
