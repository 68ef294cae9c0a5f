// Loading and saving a drawing, and the first extents of texts. Layer 15: bench.
#include "BenchTools.h"
#include "Document.h"
#include "Rows.h"
#include "Scenes.h"
#include "VectorGraphic.h"

#include <cstdint>
#include <cstring>

namespace bench {

namespace {

// The drawing's own file in memory. Null when it can't be written.
std::vector<BYTE> Stored(CGraphicDocument& document) {
    CMemFile file(1 << 20);
    document.StoreToMemFile(&file);
    std::vector<BYTE> bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

// The limit of loading and saving: the same bytes go through memory once, and each object has a block of its own.
double BareCopy(const std::vector<BYTE>& bytes, int objects) {
    const size_t each = std::max<size_t>(1, bytes.size() / static_cast<size_t>(objects));
    std::vector<std::vector<BYTE>> blocks;
    blocks.reserve(static_cast<size_t>(objects));
    return Time([&] {
        for (size_t at = 0; at + each <= bytes.size(); at += each) {
            blocks.emplace_back(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                                bytes.begin() + static_cast<std::ptrdiff_t>(at + each));
        }
    });
}

double Rate(int objects, double milliseconds) {
    return milliseconds > 0.0 ? objects / milliseconds / 1000.0 : 0.0;
}

} // namespace

void DataRows(std::vector<Row>& rows, int objects) {
    if (!IsWanted("load, S1") && !IsWanted("save, S1") && !IsWanted("first extents of new texts")) {
        return;
    }
    const int rounds = objects > 100000 ? 3 : 9;
    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
    graphic.SetVectorViewCoordTran(&tran);
    Fill(*graphic.GetDocument(), Scene::Lines, objects);
    std::vector<BYTE> bytes = Stored(*graphic.GetDocument());

    std::vector<double> loads;
    std::vector<double> saves;
    std::vector<double> copies;
    for (int i = 0; i <= rounds; ++i) {
        CVectorGraphic other;
        other.SetVectorViewCoordTran(&tran);
        const double load =
            Time([&] { other.GetDocument()->OpenDocument(bytes.data(), static_cast<unsigned int>(bytes.size())); });
        CMemFile file(1 << 20);
        const double save = Time([&] { graphic.GetDocument()->StoreToMemFile(&file); });
        const double copy = BareCopy(bytes, objects);
        if (i > 0) { // The first round is the warm-up.
            loads.push_back(load);
            saves.push_back(save);
            copies.push_back(copy);
        }
    }
    const bool known = objects == 100000;
    const double copied = Rate(objects, Median(copies));
    rows.push_back({"load, S1", objects, Rate(objects, Median(loads)), copied, 0.0, known ? 2.0 : 0.0, true});
    rows.push_back({"save, S1", objects, Rate(objects, Median(saves)), copied, 0.0, known ? 4.0 : 0.0, true});

    const int texts = objects / 4;
    std::vector<double> extents;
    for (int i = 0; i < 3; ++i) {
        CVectorGraphic fresh;
        fresh.SetVectorViewCoordTran(&tran);
        FillTexts(*fresh.GetDocument(), texts);
        CGePoint2d min;
        CGePoint2d max;
        extents.push_back(Time([&] { fresh.GetDocument()->GetRect(min, max); }));
    }
    rows.push_back({"first extents of new texts", texts, Median(extents), 0.0, 0.0, known ? 100.0 : 0.0, false});
}

} // namespace bench
