// Figures that reach far beyond a device: what can be seen of them is where GDI would draw it, whatever their size, and
// it takes no noticeable time.

#include "Arc.h"
#include "CenterPoint.h"
#include "CombRect.h"
#include "PLine.h"
#include "support/DrawStage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr COLORREF kInk = 0x302010;
constexpr DWORD kWhite = 0xFFFFFF;

bool HasInkNear(const std::vector<DWORD>& picture, int x, int y) {
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            const int nx = std::clamp(x + dx, 0, 99);
            const int ny = std::clamp(y + dy, 0, 99);
            if (picture[static_cast<size_t>(ny * 100 + nx)] != kWhite) {
                return true;
            }
        }
    }
    return false;
}

int InkCount(const std::vector<DWORD>& picture) {
    return static_cast<int>(picture.size() - static_cast<size_t>(std::count(picture.begin(), picture.end(), kWhite)));
}

// Each inked pixel of one is on or beside one of the other.
void ExpectSamePath(const std::vector<DWORD>& a, const std::vector<DWORD>& b) {
    ASSERT_GT(InkCount(a), 0);
    EXPECT_NEAR(InkCount(a), InkCount(b), 3);
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            const auto at = static_cast<size_t>(y * 100 + x);
            if (a[at] != kWhite) {
                ASSERT_TRUE(HasInkNear(b, x, y)) << x << ", " << y;
            }
            if (b[at] != kWhite) {
                ASSERT_TRUE(HasInkNear(a, x, y)) << x << ", " << y;
            }
        }
    }
}

struct Inked {
    Inked() : pen(PS_SOLID, 1, kInk) {
        old = dc.SelectObject(&pen);
        dc.SelectStockObject(NULL_BRUSH);
    }
    ~Inked() { dc.SelectObject(old); }
    RecordingDC dc{100, 100};
    CPen pen;
    CPen* old;
};

} // namespace

TEST(DCRange, AFarArcRunsWhereGdiWouldDrawIt) {
    // A circle of radius 20000 through the picture, of which GDI is still capable.
    const int boxes[][4] = {{-39950, -19950, 51, 20051}, {-19950, 40, 20051, 40041}, {30, -20030, 40031, 19971}};
    for (const auto& box : boxes) {
        // From a quarter of the way on the right, anticlockwise to the lower left: most of the circle.
        const int startX = box[2];
        const int startY = box[1];
        const int endX = box[0];
        const int endY = box[3] + 7000;
        Inked distant;
        distant.dc.Arc(box[0], box[1], box[2], box[3], startX, startY, endX, endY);
        Inked plain;
        ::Arc(plain.dc.m_hDC, box[0], box[1], box[2], box[3], startX, startY, endX, endY);
        if (InkCount(plain.dc.Pixels()) > 0) {
            ExpectSamePath(plain.dc.Pixels(), distant.dc.Pixels());
        } else {
            EXPECT_EQ(0, InkCount(distant.dc.Pixels()));
        }
        Inked back;
        back.dc.Arc(box[0], box[1], box[2], box[3], endX, endY, startX, startY);
        EXPECT_EQ(InkCount(plain.dc.Pixels()) == 0, InkCount(back.dc.Pixels()) != 0) << "the other part of the circle";
    }
}

TEST(DCRange, AFarEllipseIsItsOutlineAndItsFilling) {
    CBrush red(0x0000FF);
    Inked distant;
    CBrush* old = distant.dc.SelectObject(&red);
    distant.dc.Ellipse(-39950, -19950, 51, 20051);
    distant.dc.SelectObject(old);
    Inked plain;
    ::SelectObject(plain.dc.m_hDC, red.m_hObject);
    ::Ellipse(plain.dc.m_hDC, -39950, -19950, 51, 20051);
    ::SelectObject(plain.dc.m_hDC, ::GetStockObject(NULL_BRUSH));
    const std::vector<DWORD> a = plain.dc.Pixels();
    const std::vector<DWORD> b = distant.dc.Pixels();
    int different = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        different += a[i] != b[i];
    }
    EXPECT_LT(different, 200) << "no more than an edge a pixel off";
    EXPECT_EQ(0x0000FFu, distant.dc.Pixel(10, 50));
    EXPECT_EQ(0x00FFFFFFu, distant.dc.Pixel(70, 50));
}

TEST(DCRange, AFarLineRunsBetweenItsEnds) {
    Inked inked;
    inked.dc.MoveTo(-1000000, -1000000);
    inked.dc.LineTo(1000000, 1000000);
    EXPECT_EQ(kInk, inked.dc.Pixel(0, 0));
    EXPECT_EQ(kInk, inked.dc.Pixel(50, 50));
    EXPECT_EQ(kInk, inked.dc.Pixel(99, 99));
    EXPECT_EQ(100, InkCount(inked.dc.Pixels()));
    const CPoint position = inked.dc.GetCurrentPosition();
    EXPECT_EQ(CPoint(1000000, 1000000), position) << "the current position is the far end";
    inked.dc.LineTo(1000000, 20); // Out of sight.
    inked.dc.LineTo(-1000000, 20);
    EXPECT_EQ(199, InkCount(inked.dc.Pixels()));
    inked.dc.MoveTo(5, 30);
    inked.dc.LineTo(8, 30); // Near again: three pixels.
    EXPECT_EQ(202, InkCount(inked.dc.Pixels()));
}

TEST(DCRange, FarFiguresUnderInversionAreTakenOffByASecondDrawing) {
    Inked inked;
    const std::vector<DWORD> before = inked.dc.Pixels();
    inked.dc.SetROP2(R2_NOT);
    inked.dc.SelectStockObject(WHITE_BRUSH);
    for (int i = 0; i < 2; ++i) {
        inked.dc.MoveTo(-2000000000, -1900000000);
        inked.dc.LineTo(2000000000, 1900000000);
        inked.dc.Arc(-2000000, 40, 2000000, 4000040, 2000000, 40, -2000000, 40);
        inked.dc.Ellipse(50, -1000000, 2000050, 1000000);
        EXPECT_EQ(i == 0, before != inked.dc.Pixels());
    }
}

TEST(DCRange, AnArcOrEllipseWithoutWidthOrHeightIsNotDrawnHoweverWideThePen) {
    for (const int width : {500, 2000}) {
        Inked inked;
        CPen pen(PS_SOLID, width, kInk);
        inked.dc.SelectObject(&pen);
        for (const CRect& box : {CRect(50, 50, 50, 50), CRect(20, 50, 80, 50), CRect(50, 20, 50, 80)}) {
            inked.dc.Arc(box.left, box.top, box.right, box.bottom, 90, 50, 50, 90);
            inked.dc.Ellipse(box.left, box.top, box.right, box.bottom);
        }
        EXPECT_EQ(0, InkCount(inked.dc.Pixels())) << width;
        inked.dc.Ellipse(50, 50, 52, 52);
        EXPECT_EQ(100 * 100, InkCount(inked.dc.Pixels())) << "one of two pixels is a disc of the pen, " << width;
        inked.dc.SelectObject(&inked.pen);
    }
}

TEST(DCRange, APenIsAtMostSixteenBitsWide) {
    const struct {
        int asked;
        LONG width;
    } cases[] = {{0, 0}, {5, 5}, {32767, 32767}, {32768, 32767}, {2147483647, 32767}, {-2147483647 - 1, 0}};
    for (const auto& c : cases) {
        LOGPEN log = {};
        CPen pen(PS_SOLID, c.asked, kInk);
        pen.GetLogPen(&log);
        EXPECT_EQ(c.width, log.lopnWidth.x) << c.asked;
        CPen late;
        late.CreatePen(PS_DOT, c.asked, kInk);
        late.GetLogPen(&log);
        EXPECT_EQ(c.width, log.lopnWidth.x) << c.asked;
    }
}

TEST(DCRange, ADrawingFullOfExtremeCoordinatesIsPaintedQuickly) {
    const double values[] = {33000,
                             1e5,
                             1e6,
                             1e7,
                             1e9,
                             2147483647.0,
                             1e12,
                             1e300,
                             std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};
    const ULONGLONG begin = ::GetTickCount64();
    for (const double v : values) {
        for (const CDrawable::DrawState state : {CDrawable::Selected, CDrawable::Dragging, CDrawable::Normal}) {
            for (const int type : {PS_SOLID, PS_DASH, PS_DOT}) {
                DrawStage stage;
                CPLine line;
                line.AddPoint(CGePoint2d(10, 10));
                line.AddPoint(CGePoint2d(v, 20), 0.5);
                line.AddPoint(CGePoint2d(10, v), 0.002);
                line.AddPoint(CGePoint2d(-v, -v), -1);
                line.SetClose(1);
                CCircle circle;
                circle.setRadius(v);
                circle.SetFill(type);
                CArc arc;
                arc.SetCenter(CGePoint2d(50, -v));
                arc.setRadius(v);
                arc.SetStartAngle(0.5);
                arc.SetEndAngle(2.5);
                CCenterPoint mark;
                mark.SetCenter(CGePoint2d(v, v));
                CCombRect frame;
                frame.SetPoint(CGePoint2d(-v, 5), CGePoint2d(v, -v));
                for (CDrawable* object :
                     {static_cast<CDrawable*>(&line), static_cast<CDrawable*>(&circle), static_cast<CDrawable*>(&arc),
                      static_cast<CDrawable*>(&mark), static_cast<CDrawable*>(&frame)}) {
                    object->SetLineWide(5);
                    object->SetLineType(static_cast<short>(type));
                    object->SetDrawState(state);
                    EXPECT_FALSE(stage.Draw(*object).empty());
                }
            }
        }
    }
    EXPECT_LT(::GetTickCount64() - begin, 20000u) << "GDI alone takes minutes for one of these, or ends the process";
}
