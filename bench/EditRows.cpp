// A mouse move with a preview or a snap search, and the press of a click. Layer 15: bench.
#include "BenchTools.h"
#include "BenchView.h"
#include "CommandOperationManager.h"
#include "Line.h"
#include "Rows.h"

#include <cmath>

namespace bench {

namespace {

constexpr int kMoves = 40;

void Send(BenchView& view, UINT message, int x, int y) {
    view.SendMessage(message, 0, MAKELPARAM(x, y));
}

// Milliseconds of one mouse move, the median of many at different places.
double MoveTime(BenchView& view) {
    std::vector<double> times;
    for (int i = 0; i < kMoves; ++i) {
        const int x = 100 + i * 17 % 700;
        times.push_back(Time([&] {
            Send(view, WM_MOUSEMOVE, x, 300 + i);
            ::GdiFlush();
        }));
    }
    return Median(times);
}

// The limit of a search: one pass over the end points of objects that have a block of memory each.
double BareScan(CGraphicDocument& document) {
    struct Segment {
        double x1, y1, x2, y2;
        char rest[160]; // What else a program keeps of an object.
    };
    std::vector<std::unique_ptr<Segment>> segments;
    CDrawableArray& objects = *document.GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        auto segment = std::make_unique<Segment>();
        if (auto* line = DYNAMIC_DOWNCAST(CLine, objects[i])) {
            const CGePoint2d start = line->GetStartPoint();
            const CGePoint2d end = line->GetEndPoint();
            segment->x1 = start.x, segment->y1 = start.y, segment->x2 = end.x, segment->y2 = end.y;
        }
        segments.push_back(std::move(segment));
    }
    std::vector<double> times;
    double least = 1e20;
    for (int i = 0; i < 15; ++i) {
        const double px = 37.0 * i;
        const double py = 29.0 * i;
        times.push_back(Time([&] {
            for (const auto& each : segments) {
                const Segment& s = *each;
                // The distance to the segment, as a program would compute it.
                const double wayX = s.x2 - s.x1;
                const double wayY = s.y2 - s.y1;
                const double length = wayX * wayX + wayY * wayY;
                const double t = std::min(1.0, std::max(0.0, ((px - s.x1) * wayX + (py - s.y1) * wayY) / length));
                const double dx = px - s.x1 - t * wayX;
                const double dy = py - s.y1 - t * wayY;
                least = std::min(least, std::sqrt(dx * dx + dy * dy));
            }
        }));
    }
    return least < 0.0 ? 0.0 : Median(times);
}

} // namespace

void EditRows(std::vector<Row>& rows, int objects) {
    const bool known = objects == 100000;
    const char* preview = "drag preview of polylines, a move";
    const char* move = "S3, mouse move in a command, nothing to snap to";
    const char* press = "S1, the press of a click that hits nothing";
    if (IsWanted(preview)) {
        BenchView view;
        const int moved = objects / 100;
        Fill(*view.GetDocument(), Scene::Polylines, moved);
        CDrawableArray& list = *view.GetDocument()->GetDrawableObjs();
        for (INT_PTR i = 0; i < list.GetSize(); ++i) {
            view.GetDocument()->AddSelected(list[i]);
        }
        view.Repaint();
        view.DoCommand(L"translation");
        Send(view, WM_MOUSEMOVE, 90, 90);
        Send(view, WM_LBUTTONDOWN, 90, 90);
        Send(view, WM_LBUTTONUP, 90, 90);
        rows.push_back({preview, moved, MoveTime(view), 0.0, 0.0, known ? 8.0 : 0.0, false});
        static_cast<CCommandOperationManager*>(view.GetCommandOperationManager())->Cancel();
    }
    if (IsWanted(move)) {
        BenchView view;
        Fill(*view.GetDocument(), Scene::Mixed, objects);
        view.Repaint();
        view.GetVectorViewCoordTran()->SetOriginX(-5000);
        view.DoCommand(L"line");
        Send(view, WM_MOUSEMOVE, 90, 90);
        const double limit = BareScan(*view.GetDocument());
        rows.push_back({move, objects, MoveTime(view), limit, 0.0, known ? 8.0 : 0.0, false});
        static_cast<CCommandOperationManager*>(view.GetCommandOperationManager())->Cancel();
    }
    if (IsWanted(press)) {
        BenchView view;
        Fill(*view.GetDocument(), Scene::Lines, objects);
        // At a place where nothing is hit, so that the walk reaches the end.
        view.GetVectorViewCoordTran()->SetOriginX(-5000);
        std::vector<double> walks;
        for (int i = 0; i < 15; ++i) {
            walks.push_back(Time([&] { Send(view, WM_LBUTTONDOWN, 30 * i, 100); }));
            Send(view, WM_LBUTTONUP, 30 * i, 100);
        }
        rows.push_back({press, objects, Median(walks), BareScan(*view.GetDocument()), known ? 1.5 : 0.0, 0.0, false});
    }
}

} // namespace bench
