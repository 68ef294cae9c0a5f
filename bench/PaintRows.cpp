// Repaints of a view's window beside the bare calls, pixel by pixel the same. Layer 15: bench.
#include "BenchTools.h"
#include "BenchView.h"
#include "Rows.h"

namespace bench {

namespace {

// Enough for a median; fewer where a paint takes seconds.
int RoundsFor(int objects) {
    return objects > 100000 ? 3 : objects > 10000 ? 9 : 25;
}

bool PaintRow(std::vector<Row>& rows, BenchView& view, Scene scene, int objects, bool part) {
    const std::string name = std::string(NameOf(scene)) + (part ? ", window repaint, 1 % seen" : ", window repaint");
    if (!IsWanted(name)) {
        return true;
    }
    const BareDrawing bare(view.Graphic());
    view.SetBare(nullptr, part);
    view.Repaint();
    const std::vector<DWORD> library = view.Shown();
    view.SetBare(&bare, part);
    view.Repaint();
    const bool same = library == view.Shown();
    const Comparison times = Compare(
        RoundsFor(objects),
        [&] {
            view.SetBare(nullptr, part);
            view.Repaint();
        },
        [&] {
            view.SetBare(&bare, part);
            view.Repaint();
        });
    Row row = {std::string(NameOf(scene)) + (part ? ", window repaint, 1 % seen" : ", window repaint"),
               objects,
               times.library,
               times.limit,
               0.0,
               0.0,
               false};
    if (!part) {
        row.targetRatio = scene == Scene::Mixed ? 2.0 : 1.05;
    } else if (objects == 100000) {
        row.target = scene == Scene::Lines ? 5.0 : scene == Scene::Polylines ? 10.0 : 30.0;
    }
    if (!same) {
        row.name += " DIFFERENT PIXELS";
    }
    rows.push_back(row);
    return same;
}

} // namespace

bool PaintRows(std::vector<Row>& rows, int objects) {
    bool same = true;
    for (const Scene scene : {Scene::Lines, Scene::Polylines, Scene::Mixed}) {
        BenchView view;
        Fill(*view.GetDocument(), scene, objects);
        same = PaintRow(rows, view, scene, objects, false) && same;
        // A tenth of the width and of the height, in the middle.
        CVectorViewCoordTran& tran = *view.GetVectorViewCoordTran();
        tran.SetScale(0.1f);
        tran.SetOriginX(kWidth * 0.45);
        tran.SetOriginY(kHeight * 0.45);
        same = PaintRow(rows, view, scene, objects, true) && same;
    }
    return same;
}

} // namespace bench
