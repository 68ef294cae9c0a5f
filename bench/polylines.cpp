// Painting and hit-testing 10,000 polylines of 10 vertices, every third segment an arc: the library's loop beside the
// bare GDI calls of the same sequence, in one run. Prints a table and one line of JSON. Layer 14: bench.

#include "BenchTools.h"

#include "DrawGeometry.h"
#include "Document.h"
#include "PLine.h"
#include "VectorGraphic.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int kPolylines = 10000;
constexpr int kVertices = 10;
constexpr int kWidth = 1000;
constexpr int kHeight = 800;
constexpr int kRounds = 9;
constexpr double kTarget = 1.15;
constexpr int kHits = 20; // Positions of the pointer in each round.

using Polylines = std::vector<std::unique_ptr<CPLine>>;

Polylines MakePolylines() {
    std::mt19937 random(2024);
    const auto between = [&](double low, double high) { return low + (high - low) * random() / 4294967296.0; };
    Polylines lines;
    for (int i = 0; i < kPolylines; ++i) {
        auto line = std::make_unique<CPLine>();
        CGePoint2d p(between(50, kWidth - 50), between(50, kHeight - 50));
        line->SetPenColor(random() & 0xFFFFFF);
        for (int k = 0; k < kVertices; ++k) {
            line->AddPoint(p, k % 3 == 2 ? between(0.2, 1.0) * (k % 2 == 0 ? 1 : -1) : 0.0);
            p = CGePoint2d(p.x + between(-40, 40), p.y + between(-40, 40));
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

// ---- The bare loop -------------------------------------------------------------------------------------------------

struct Call {
    enum Kind { BkMode, GetRop, Rop, Pen, OldPen, Move, Line, Bow } kind;
    int a[8];
    COLORREF color;
};

// Writes down what a drawing asks of its context, and passes nothing on.
class CaptureDC : public CDC {
public:
    using CDC::Arc;
    using CDC::LineTo;
    using CDC::MoveTo;
    using CDC::SelectObject;

    CaptureDC() { CreateCompatibleDC(nullptr); }
    int SetBkMode(int mode) override { return Add({Call::BkMode, {mode}, 0}, OPAQUE); }
    int GetROP2() const override { return const_cast<CaptureDC*>(this)->Add({Call::GetRop, {}, 0}, R2_COPYPEN); }
    int SetROP2(int mode) override { return Add({Call::Rop, {mode}, 0}, R2_COPYPEN); }
    CPen* SelectObject(CPen* pen) override {
        LOGPEN log = {};
        if (pen == nullptr || pen->GetLogPen(&log) == 0) {
            Add({Call::OldPen, {}, 0}, 0);
        } else {
            Add({Call::Pen, {static_cast<int>(log.lopnStyle), static_cast<int>(log.lopnWidth.x)}, log.lopnColor}, 0);
        }
        return nullptr;
    }
    CPoint MoveTo(int x, int y) override {
        Add({Call::Move, {x, y}, 0}, 0);
        return CPoint();
    }
    BOOL LineTo(int x, int y) override { return Add({Call::Line, {x, y}, 0}, TRUE); }
    BOOL Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) override {
        return Add({Call::Bow, {x1, y1, x2, y2, x3, y3, x4, y4}, 0}, TRUE);
    }

    std::vector<Call> calls;

private:
    int Add(const Call& call, int result) {
        calls.push_back(call);
        return result;
    }
};

void PaintBare(HDC dc, const std::vector<Call>& calls) {
    HPEN pen = nullptr;
    HGDIOBJ old = nullptr;
    int sum = 0;
    for (const Call& call : calls) {
        const int* a = call.a;
        switch (call.kind) {
        case Call::BkMode:
            ::SetBkMode(dc, a[0]);
            break;
        case Call::GetRop:
            sum += ::GetROP2(dc);
            break;
        case Call::Rop:
            ::SetROP2(dc, a[0]);
            // The last call of a segment: its pen is freed.
            ::DeleteObject(pen);
            break;
        case Call::Pen:
            pen = ::CreatePen(a[0], a[1], call.color);
            old = ::SelectObject(dc, pen);
            break;
        case Call::OldPen:
            ::SelectObject(dc, old);
            break;
        case Call::Move:
            ::MoveToEx(dc, a[0], a[1], nullptr);
            break;
        case Call::Line:
            ::LineTo(dc, a[0], a[1]);
            break;
        case Call::Bow:
            ::Arc(dc, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7]);
            break;
        }
    }
    if (sum < 0) {
        std::puts("no raster mode");
    }
}

} // namespace

int main() {
    const Polylines lines = MakePolylines();
    CVectorViewCoordTran tran;
    tran.SetScreenSize(CSize(kWidth, kHeight));
    CVectorGraphic graphic;
    graphic.SetVectorViewCoordTran(&tran);
    CDrawGeometry geometry(&graphic, graphic.GetDocument()->GetLayerManager());

    CaptureDC capture;
    for (const auto& line : lines) {
        line->Draw(&capture, &geometry);
    }

    bench::Picture picture(kWidth, kHeight);
    const auto paint = [&] {
        for (const auto& line : lines) {
            line->Draw(&picture.DC(), &geometry);
        }
    };
    const auto bare = [&] { PaintBare(picture.DC().m_hDC, capture.calls); };

    picture.Clear();
    paint();
    const std::vector<DWORD> painted = picture.Pixels();
    picture.Clear();
    bare();
    if (painted != picture.Pixels()) {
        std::puts("polylines: the two loops do not paint the same picture");
        return 2;
    }
    const bench::Comparison result = bench::Compare(kRounds, paint, bare);

    float nearest = 1000.0f;
    std::vector<double> hits;
    for (int round = 0; round <= kRounds; ++round) {
        const double time = bench::Time([&] {
            for (int i = 0; i < kHits; ++i) {
                const CGePoint2d p(50.0 * i, 40.0 * i);
                for (const auto& line : lines) {
                    nearest = std::min(nearest, line->HitTest(p));
                }
            }
        });
        if (round > 0) { // The first is the warm-up.
            hits.push_back(time / kHits);
        }
    }

    const double hit = bench::Median(hits);
    std::printf("%-44s %10s %10s %7s\n", "10,000 polylines of 10 vertices", "library ms", "bare ms", "ratio");
    std::printf("%-44s %10.1f %10.1f %7.3f  (target %.2f)\n", "painting into a memory bitmap", result.library,
                result.bare, result.Ratio(), kTarget);
    std::printf("%-44s %10.2f %10s %7s  (nearest %.2f)\n", "hit test of a position", hit, "", "",
                static_cast<double>(nearest));
    std::printf("{\"bench\":\"polylines\",\"objects\":%d,\"segments\":%d,\"calls\":%d,\"paint_ms\":%.3f,"
                "\"bare_ms\":%.3f,\"paint_ratio\":%.4f,\"hit_ms\":%.4f}\n",
                kPolylines, kPolylines * (kVertices - 1), static_cast<int>(capture.calls.size()), result.library,
                result.bare, result.Ratio(), hit);
    return 0;
}
