// Painting 100,000 lines through the painter beside the bare GDI loop with the same pens and points, and the snap
// search of one mouse move over them. Prints a table and one line of JSON. Layer 14: bench.

#include "BenchTools.h"
#include "CommandOperationManager.h"
#include "Document.h"
#include "Line.h"
#include "vectorview.h"

#include <random>

namespace {

constexpr int kLines = 100000;
constexpr int kWidth = 1000;
constexpr int kHeight = 800;
constexpr int kRounds = 25;
constexpr double kTarget = 1.15;
constexpr double kFrame = 1000.0 / 60.0; // Milliseconds.

struct Stroke {
    int x1, y1, x2, y2;
    COLORREF color;
    int style;
    int width;
};

// A view without a window: with painter, document and engine.
class BenchView : public CVectorView {
public:
    CVectorGraphic& Graphic() { return m_Graphic; }
};

std::vector<Stroke> Fill(BenchView& view) {
    std::mt19937 random(7);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    std::vector<Stroke> strokes;
    for (int i = 0; i < kLines; ++i) {
        const Stroke s = {below(kWidth), below(kHeight), 0, 0, random() & 0xFFFFFF, i % 8 == 0 ? PS_DASH : PS_SOLID, 1};
        Stroke stroke = s;
        stroke.x2 = s.x1 + below(81) - 40;
        stroke.y2 = s.y1 + below(81) - 40;
        auto* line = new CLine;
        line->SetStartPoint(CGePoint2d(stroke.x1, kHeight - stroke.y1));
        line->SetEndPoint(CGePoint2d(stroke.x2, kHeight - stroke.y2));
        line->SetPenColor(stroke.color);
        line->SetLineType(static_cast<short>(stroke.style));
        line->SetLineWide(1);
        CDrawable* object = line;
        view.GetDocument()->GetDrawableObjs()->Add(object); // Without the search for doubles.
        strokes.push_back(stroke);
    }
    return strokes;
}

void PaintBare(HDC dc, const std::vector<Stroke>& strokes) {
    for (const Stroke& s : strokes) {
        ::SetBkMode(dc, TRANSPARENT);
        HPEN pen = ::CreatePen(s.style, s.width, s.color);
        HGDIOBJ old = ::SelectObject(dc, pen);
        ::MoveToEx(dc, s.x1, s.y1, nullptr);
        ::LineTo(dc, s.x2, s.y2);
        ::SelectObject(dc, old);
        ::DeleteObject(pen);
    }
}

} // namespace

int main() {
    BenchView view;
    view.GetVectorViewCoordTran()->SetScreenSize(CSize(kWidth, kHeight));
    const std::vector<Stroke> strokes = Fill(view);
    bench::Picture picture(kWidth, kHeight);

    picture.Clear();
    PaintBare(picture.DC().m_hDC, strokes);
    const std::vector<DWORD> bare = picture.Pixels();
    picture.Clear();
    view.Graphic().OnDraw(&picture.DC(), 0);
    if (picture.Pixels() != bare) {
        std::puts("lines: the two loops do not paint the same picture");
        return 2;
    }

    const bench::Comparison paint = bench::Compare(
        kRounds, [&] { view.Graphic().OnDraw(&picture.DC(), 0); }, [&] { PaintBare(picture.DC().m_hDC, strokes); });

    // The search that each mouse move makes, at a place where nothing snaps, so that it runs to the end.
    std::vector<double> searches;
    int hits = 0;
    for (int i = 0; i <= kRounds; ++i) {
        CGePoint2d hit;
        const double time = bench::Time(
            [&] { hits += view.GetCommandOperationManager()->GetGripPoint(CGePoint2d(-5000, -5000), hit); });
        if (i > 0) {
            searches.push_back(time);
        }
    }
    const double search = bench::Median(searches);

    std::printf("%-44s %10s %10s %7s\n", "100,000 lines", "library ms", "bare ms", "ratio");
    std::printf("%-44s %10.1f %10.1f %7.3f  (target %.2f)\n", "painting into a memory bitmap", paint.library,
                paint.bare, paint.Ratio(), kTarget);
    std::printf("%-44s %10.1f %10s %7s  (one frame at 60 Hz: %.1f)\n", "snap search of a mouse move", search, "", "",
                kFrame);
    std::printf("{\"bench\":\"lines\",\"objects\":%d,\"paint_ms\":%.3f,\"bare_ms\":%.3f,\"paint_ratio\":%.4f,"
                "\"snap_search_ms\":%.3f,\"hits\":%d}\n",
                kLines, paint.library, paint.bare, paint.Ratio(), search, hits);
    return 0;
}
