// The geometry of the curved kinds held against itself over thousands of seeded shapes.

#include "Arc.h"
#include "CenterPoint.h"
#include "CombRect.h"
#include "MemoryInfo.h"
#include "PLine.h"
#include "support/CurveTools.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <random>

namespace {

constexpr int kShapes = 5000;

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    // A coordinate, of any size from thousandths to a hundred thousand.
    double Coordinate() { return Between(-1, 1) * std::pow(10.0, Between(-1, 5)); }
    CGePoint2d Point() { return CGePoint2d(Coordinate(), Coordinate()); }
    double Between(double low, double high) { return low + (high - low) * Unit(); }
    // A bulge well above the limits of straightness, of either sign.
    double Bulge() { return (Unit() < 0.5 ? -1 : 1) * std::pow(10.0, Between(-2, 0.6)); }
    int Below(int n) { return static_cast<int>(m_engine() % static_cast<unsigned>(n)); }
    // Any 64 bits as a double: denormals, infinities, not-a-numbers with their payload, negative zeros.
    double Bits() {
        const unsigned long long bits = static_cast<unsigned long long>(m_engine()) << 32 | m_engine();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    CString Text() {
        CString text;
        for (int i = Below(4) == 0 ? Below(700) : Below(6); i > 0; --i) {
            text += static_cast<wchar_t>(1 + m_engine() % 0xFFFF);
        }
        return text;
    }

private:
    double Unit() { return m_engine() / 4294967296.0; }
    std::mt19937 m_engine;
};

double Turn(double angle) {
    return angle < 0 ? angle + 2 * std::acos(-1.0) : angle;
}

// The sweep of an arc, anticlockwise from its start, in radians.
double Sweep(double start, double end) {
    return Turn(end - start);
}

struct Box {
    explicit Box(CDrawable& object) { EXPECT_EQ(1, object.GetRect(nullptr, min, max)); }
    bool Contains(const CGePoint2d& p, double slack) const {
        return p.x >= min.x - slack && p.x <= max.x + slack && p.y >= min.y - slack && p.y <= max.y + slack;
    }
    CGePoint2d min;
    CGePoint2d max;
};

// A polyline of 2 to 8 vertices, every third segment or so an arc.
std::unique_ptr<CPLine> RandomPolyline(Random& random) {
    auto line = std::make_unique<CPLine>();
    for (int i = 2 + random.Below(7); i > 0; --i) {
        line->AddPoint(random.Point(), random.Below(3) == 0 ? random.Bulge() : 0.0);
    }
    return line;
}

// A point of a bulged segment, `t` of the way along its sweep, from the definition: the angle at the centre is four
// times the arc tangent of the bulge.
CGePoint2d OnSegment(const CGePoint2d& a, const CGePoint2d& b, double bulge, double t) {
    const double whole = 4 * std::atan(bulge); // Anticlockwise for a positive bulge.
    const double chord = a.distance(b);
    const double radius = chord / 2 / std::sin(std::fabs(whole) / 2);
    // The chord leaves the tangent at `a` by half the angle; each part of the sweep has a chord of its own.
    const double part = whole * t;
    const double direction = std::atan2(b.y - a.y, b.x - a.x) - whole / 2 + part / 2;
    const double length = 2 * radius * std::sin(std::fabs(part) / 2);
    return CGePoint2d(a.x + length * std::cos(direction), a.y + length * std::sin(direction));
}

} // namespace

// ---- Circles through points ----------------------------------------------------------------------------------------

TEST(CurvesProperty, AnArcThroughThreePointsPassesThroughThem) {
    Random random(1);
    for (int i = 0; i < kShapes; ++i) {
        const CGePoint2d p1 = random.Point();
        const CGePoint2d p2 = random.Point();
        const CGePoint2d p3 = random.Point();
        double x = 0;
        double y = 0;
        double radius = 0;
        double start = 0;
        double end = 0;
        ASSERT_EQ(1, CArc::Calarc(p1, p2, p3, &x, &y, &radius, &start, &end)) << i;
        const CGePoint2d center(x, y);
        // The centre of a nearly flat triple is far away, so that its coordinates are less precise.
        const double slack = radius * 1e-6;
        for (const CGePoint2d& p : {p1, p2, p3}) {
            ASSERT_NEAR(radius, center.distance(p), slack) << i;
        }
        // Anticlockwise from the start comes the second point before the end.
        const double to2 = Sweep(start, (p2 - center).angle());
        ASSERT_GT(to2, 0.0) << i;
        ASSERT_LT(to2, Sweep(start, end)) << i;
        // The ends are the first and the third point, in either order.
        const CGePoint2d first(x + radius * std::cos(start), y + radius * std::sin(start));
        ASSERT_LE(std::min(first.distance(p1), first.distance(p3)), slack + 1e-6) << i;
    }
}

TEST(CurvesProperty, ABulgeTakenToItsTopAndBackKeepsItsValue) {
    Random random(2);
    for (int i = 0; i < kShapes; ++i) {
        const CGePoint2d a = random.Point();
        const CGePoint2d b = random.Point();
        const double bulge = random.Bulge();
        double back = 0;
        ASSERT_EQ(1, CDraw_Common::CalTwoPoint_Bulge(a, b, CDraw_Common::GetArcMidHighPt(a, b, bulge), back));
        ASSERT_NEAR(bulge, -back, std::fabs(bulge) * 1e-9) << i;
    }
}

TEST(CurvesProperty, TheTopOfABulgeIsTheMiddleOfItsSweep) {
    Random random(3);
    for (int i = 0; i < kShapes; ++i) {
        const CGePoint2d a = random.Point();
        const CGePoint2d b = random.Point();
        const double bulge = random.Bulge();
        const CGePoint2d middle = OnSegment(a, b, bulge, 0.5);
        const CGePoint2d top = CDraw_Common::GetArcMidHighPt(a, b, bulge);
        ASSERT_NEAR(0, top.distance(middle), a.distance(b) * std::fabs(bulge) * 1e-9 + 1e-9) << i;
    }
}

// ---- Extents -------------------------------------------------------------------------------------------------------

TEST(CurvesProperty, AnArcsBoxContainsItsPoints) {
    Random random(4);
    for (int i = 0; i < kShapes; ++i) {
        CArc arc;
        arc.SetCenter(random.Point());
        arc.setRadius(std::fabs(random.Coordinate()));
        arc.SetStartAngle(random.Between(0, 6.283185307));
        arc.SetEndAngle(random.Between(0, 6.283185307));
        const Box box(arc);
        const double sweep = Sweep(arc.GetStartAngle(), arc.GetEndAngle());
        for (int k = 0; k <= 50; ++k) {
            const double angle = arc.GetStartAngle() + sweep * k / 50;
            const CGePoint2d p(arc.Center().x + arc.Radius() * std::cos(angle),
                               arc.Center().y + arc.Radius() * std::sin(angle));
            ASSERT_TRUE(box.Contains(p, arc.Radius() * 1e-9 + 1e-9)) << i << " at " << k;
        }
    }
}

TEST(CurvesProperty, APolylinesBoxContainsItsCurve) {
    Random random(5);
    for (int i = 0; i < kShapes; ++i) {
        const std::unique_ptr<CPLine> line = RandomPolyline(random);
        const int count = line->GetVertexCount();
        // A negative closing bulge reports the rest of its circle: that one is left out.
        const bool closed = random.Below(2) == 0;
        if (closed) {
            line->SetClose(1);
            line->SetBulge(count - 1, std::fabs(line->GetBulgeList()->GetAt(count - 1)));
        }
        const Box box(*line);
        for (int k = 0; k < (closed ? count : count - 1); ++k) {
            const CGePoint2d a = line->GetPointList()->GetAt(k);
            const CGePoint2d b = line->GetPointList()->GetAt((k + 1) % count);
            const double bulge = line->GetBulgeList()->GetAt(k);
            for (int step = 0; step <= 20; ++step) {
                const double t = step / 20.0;
                const CGePoint2d p = bulge == 0.0 ? a + (b - a) * t : OnSegment(a, b, bulge, t);
                // The radius is a float.
                const double radius = bulge == 0.0 ? 0.0 : a.distance(b) * (1 / std::fabs(bulge) + std::fabs(bulge));
                ASSERT_TRUE(box.Contains(p, radius * 1e-6 + 1e-6)) << i << " segment " << k << " at " << t;
            }
        }
    }
}

TEST(CurvesProperty, ACirclesBoxTouchesItsQuadrants) {
    Random random(6);
    for (int i = 0; i < kShapes; ++i) {
        CCircle circle;
        circle.SetCenter(random.Point());
        circle.setRadius(std::fabs(random.Coordinate()));
        const Box box(circle);
        Grips grips(circle);
        for (int k = 0; k < 5; ++k) {
            ASSERT_TRUE(box.Contains(grips[k], 0)) << i;
        }
        ASSERT_EQ(box.max.x, grips[1].x) << i;
        ASSERT_EQ(box.min.y, grips[4].y) << i;
    }
}

// ---- Hits ----------------------------------------------------------------------------------------------------------

TEST(CurvesProperty, APointOfTheCurveIsHit) {
    Random random(7);
    for (int i = 0; i < kShapes; ++i) {
        const std::unique_ptr<CPLine> line = RandomPolyline(random);
        const int k = random.Below(line->GetVertexCount() - 1);
        const CGePoint2d a = line->GetPointList()->GetAt(k);
        const CGePoint2d b = line->GetPointList()->GetAt(k + 1);
        const double bulge = line->GetBulgeList()->GetAt(k);
        const double t = random.Between(0.01, 0.99);
        const CGePoint2d p = bulge == 0.0 ? a + (b - a) * t : OnSegment(a, b, bulge, t);
        const double radius = bulge == 0.0 ? 1.0 : a.distance(b) * (1 / std::fabs(bulge) + std::fabs(bulge));
        ASSERT_LE(line->HitTest(p), static_cast<float>(radius * 1e-6 + a.distance(b) * 1e-6)) << i;
        ASSERT_GE(line->GetSelSelLine(), 0) << i;
    }
}

// ---- Grips ---------------------------------------------------------------------------------------------------------

TEST(CurvesProperty, AVertexDraggedThereAndBackIsWhereItWasAndStraightSegmentsStayStraight) {
    Random random(8);
    for (int i = 0; i < kShapes; ++i) {
        const std::unique_ptr<CPLine> line = RandomPolyline(random);
        line->SetClose(random.Below(2));
        const int m = random.Below(line->GetVertexCount());
        std::vector<CGePoint2d> before;
        std::vector<double> bulges;
        for (int k = 0; k < line->GetVertexCount(); ++k) {
            before.push_back(line->GetPointList()->GetAt(k));
            bulges.push_back(line->GetBulgeList()->GetAt(k));
        }
        const CGeVector2d v(random.Coordinate(), random.Coordinate());
        MoveGrip(*line, 2 * m, v.x, v.y);
        MoveGrip(*line, 2 * m, -v.x, -v.y);
        for (int k = 0; k < line->GetVertexCount(); ++k) {
            const CGePoint2d& now = line->GetPointList()->GetAt(k);
            ASSERT_NEAR(before[static_cast<size_t>(k)].x, now.x, 1e-9) << i;
            ASSERT_NEAR(before[static_cast<size_t>(k)].y, now.y, 1e-9) << i;
            const double was = bulges[static_cast<size_t>(k)];
            const bool neighbour = k == m || k == m - 1;
            if (was == 0.0 || !neighbour) {
                ASSERT_EQ(was, line->GetBulgeList()->GetAt(k)) << i;
            }
        }
    }
}

TEST(CurvesProperty, AMiddleDraggedAcrossItsChordAndBackKeepsItsBulge) {
    Random random(9);
    for (int i = 0; i < kShapes; ++i) {
        CPLine line;
        const CGePoint2d a = random.Point();
        const CGePoint2d b = random.Point();
        const double bulge = random.Bulge();
        line.AddPoint(a, bulge);
        line.AddPoint(b);
        const CGeVector2d across = (b - a).perpVector() * random.Between(-2, 2);
        MoveGrip(line, 1, across.x, across.y);
        ASSERT_EQ(0.0, line.GetPointList()->GetAt(0).distance(a)) << i;
        ASSERT_EQ(0.0, line.GetPointList()->GetAt(1).distance(b)) << i;
        MoveGrip(line, 1, -across.x, -across.y);
        ASSERT_NEAR(bulge, line.GetBulgeList()->GetAt(0), 1e-6) << i;
    }
}

TEST(CurvesProperty, AGripOfACircleOrAMarkDraggedThereAndBackLeavesIt) {
    Random random(10);
    for (int i = 0; i < kShapes; ++i) {
        CCircle circle;
        circle.SetCenter(random.Point());
        circle.setRadius(random.Coordinate());
        CCenterPoint mark;
        mark.SetCenter(random.Point());
        for (CDrawable* object : {static_cast<CDrawable*>(&circle), static_cast<CDrawable*>(&mark)}) {
            Grips before(*object);
            const int grip = random.Below(5);
            const CGeVector2d v(random.Coordinate(), random.Coordinate());
            MoveGrip(*object, grip, v.x, v.y);
            MoveGrip(*object, grip, -v.x, -v.y);
            Grips after(*object);
            for (int k = 0; k < 5; ++k) {
                ASSERT_NEAR(before[k].x, after[k].x, 1e-9) << i;
                ASSERT_NEAR(before[k].y, after[k].y, 1e-9) << i;
            }
        }
    }
}

TEST(CurvesProperty, ADraggedPointOfAnArcLiesOnTheNewArc) {
    Random random(11);
    for (int i = 0; i < kShapes; ++i) {
        CArc arc;
        arc.SetCenter(random.Point());
        arc.setRadius(random.Between(1, 1000));
        arc.SetStartAngle(random.Between(0, 6.28));
        arc.SetEndAngle(random.Between(0, 6.28));
        const int grip = 1 + random.Below(3);
        const CGePoint2d target = Grips(arc)[grip] + CGeVector2d(random.Between(-50, 50), random.Between(-50, 50));
        const CGePoint2d old = Grips(arc)[grip];
        MoveGrip(arc, grip, target.x - old.x, target.y - old.y);
        ASSERT_LE(arc.HitTest(target), static_cast<float>(arc.Radius() * 1e-6 + 1e-6)) << i;
    }
}

// ---- Matrices ------------------------------------------------------------------------------------------------------

TEST(CurvesProperty, AnArcFollowsEverySimilarityAndVerticesFollowEveryMatrix) {
    Random random(12);
    for (int i = 0; i < kShapes; ++i) {
        const CGeMatrix2d turn = CGeMatrix2d::rotation(random.Between(0, 6.28), CGePoint2d(1, 2));
        const CGeMatrix2d flip = CGeMatrix2d::mirroring(CGePoint2d(0, 0), CGePoint2d(random.Between(-5, 5), 3));
        const CGeMatrix2d size = CGeMatrix2d::scaling(random.Between(0.1, 5), CGePoint2d(-3, 1));
        const CGeMatrix2d all = random.Below(2) == 0 ? turn * size : flip * size;
        CArc arc;
        arc.SetCenter(CGePoint2d(random.Between(-100, 100), random.Between(-100, 100)));
        arc.setRadius(random.Between(1, 100));
        const double start = random.Between(0, 6.28);
        const double sweep = random.Between(0.1, 6.1);
        arc.SetStartAngle(start);
        arc.SetEndAngle(std::fmod(start + sweep, 6.283185307));
        CGePoint2d middle = Grips(arc)[2];
        CGePoint2d first = Grips(arc)[1];
        CGePoint2d last = Grips(arc)[3];
        arc.transformBy(all);
        Grips after(arc);
        middle.transformBy(all);
        first.transformBy(all);
        last.transformBy(all);
        ASSERT_NEAR(0, after[2].distance(middle), 1e-2) << i;
        // A mirror exchanges the ends.
        ASSERT_NEAR(0, std::min(after[1].distance(first), after[1].distance(last)), 1e-2) << i;

        const std::unique_ptr<CPLine> line = RandomPolyline(random);
        CGePoint2d vertex = line->GetPointList()->GetAt(1);
        line->transformBy(all);
        vertex.transformBy(all);
        ASSERT_EQ(vertex.x, line->GetPointList()->GetAt(1).x) << i;
        ASSERT_EQ(vertex.y, line->GetPointList()->GetAt(1).y) << i;
    }
}

// ---- Streams -------------------------------------------------------------------------------------------------------

TEST(CurvesProperty, ARoundTripThroughAStreamIsExactToTheBit) {
    Random random(13);
    for (int i = 0; i < kShapes; ++i) {
        LoneDocument lone;
        auto* line = new CPLine;
        auto* arc = new CArc;
        auto* mark = new CCenterPoint;
        auto* frame = new CCombRect;
        CDrawable* objects[] = {line, arc, mark, frame};
        for (int k = random.Below(9); k > 0; --k) {
            line->AddPoint(CGePoint2d(random.Bits(), random.Bits()), random.Bits());
            line->SetSLineInfo(line->GetVertexCount() - 1, random.Text(), random.Text());
        }
        line->SetClose(random.Below(3) - 1);
        line->SetLockMode(random.Below(1000) - 500);
        line->SetParmName(random.Text());
        line->SetMsgInfo(random.Text());
        arc->SetCenter(CGePoint2d(random.Bits(), random.Bits()));
        arc->setRadius(random.Bits());
        arc->SetStartAngle(random.Bits());
        arc->SetEndAngle(random.Bits());
        arc->SetFill(random.Below(5));
        arc->SetMsgInfo(random.Text());
        mark->SetCenter(CGePoint2d(random.Bits(), random.Bits()));
        mark->SetParmName(random.Text());
        frame->SetVectorId(random.Text());
        frame->SetPoint(CGePoint2d(random.Bits(), random.Bits()), CGePoint2d(random.Bits(), random.Bits()));
        for (CDrawable* object : objects) {
            object->SetPenColor(static_cast<DWORD>(random.Below(0x1000000)));
            object->SetLayer(static_cast<short>(random.Below(9)));
            object->SetScale(static_cast<float>(random.Coordinate()));
            object->SetIsShow(random.Below(3));
            KX_ADD_MEMORY(object);
            lone.document.AddDrawAobject(object);
        }
        const Bytes stored = lone.Store();
        LoneDocument other;
        ASSERT_EQ(-1, other.LoadRaw(stored)) << i;
        ASSERT_EQ(stored, other.Store()) << i;
        auto* copy = DYNAMIC_DOWNCAST(CPLine, other.Objects()[0]);
        ASSERT_EQ(line->GetVertexCount(), copy->GetVertexCount()) << i;
        for (int k = 0; k < line->GetVertexCount(); ++k) {
            const CGePoint2d& was = line->GetPointList()->GetAt(k);
            const CGePoint2d& now = copy->GetPointList()->GetAt(k);
            ASSERT_EQ(0, std::memcmp(&was.x, &now.x, 8)) << i;
            ASSERT_EQ(0, std::memcmp(&was.y, &now.y, 8)) << i;
        }
    }
}

template <class Kind>
void ExpectTags(Kind&& object) {
    object.SetParmName(L"R");
    object.SetMsgInfo(L"radius");
    object.SetLockMode(7);
    EXPECT_EQ(L"R", object.GetParmName());
    EXPECT_EQ(L"radius", object.GetMsgInfo());
    EXPECT_EQ(7, object.GetLockMode());
}

TEST(CurvesProperty, TheTagsOfAHostAreKeptAsTheyAre) {
    ExpectTags(CCircle());
    ExpectTags(CCenterPoint());
    CPLine line;
    line.SetMsgInfo(L"side");
    EXPECT_EQ(L"side", line.GetMsgInfo());
}
