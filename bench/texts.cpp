// Painting 10,000 short texts against the bare GDI calls of the same sequence, the measuring of each paint included:
// of one height and angle, and of mixed ones; as texts, as parameters and as dimension labels.
// Layer 14: bench.

#include "BenchTools.h"
#include "Document.h"
#include "DrawGeometry.h"
#include "TextParm.h"
#include "VectorGraphic.h"
#include "VectorLabel.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kTexts = 10000;
constexpr int kRounds = 7;
constexpr int kWidth = 1600;
constexpr int kHeight = 1000;
constexpr COLORREF kColor = 0x00204060;
constexpr double kLimit = 1.15;

// What one text looks like, in pixels: the mapping has scale 1.
struct Look {
    int x;
    int y;
    int height;
    int angle;
    wchar_t words[12];
};

std::vector<Look> Looks(bool mixed) {
    std::vector<Look> looks(kTexts);
    for (int i = 0; i < kTexts; ++i) {
        Look& look = looks[static_cast<size_t>(i)];
        look.x = 20 + i * 37 % (kWidth - 140);
        look.y = 40 + i * 53 % (kHeight - 80);
        look.height = mixed ? 8 + i * 7 % 33 : 14;
        look.angle = mixed ? i * 11 % 360 : 0;
        _snwprintf(look.words, 12, L"文%d", i);
    }
    return looks;
}

LOGFONTW FontOf(const Look& look) {
    LOGFONTW font = {};
    font.lfHeight = look.height;
    font.lfEscapement = look.angle * 10;
    font.lfWeight = FW_NORMAL;
    font.lfOutPrecision = OUT_TT_PRECIS;
    std::wcscpy(font.lfFaceName, L"宋体");
    return font;
}

// The measuring that is part of each text's paint.
void BareMeasure(HDC dc, HFONT font, const Look& look) {
    alignas(OUTLINETEXTMETRICW) unsigned char room[696];
    auto* metrics = reinterpret_cast<OUTLINETEXTMETRICW*>(room);
    ::GetDeviceCaps(dc, LOGPIXELSY);
    ::GetOutlineTextMetricsW(dc, sizeof room, metrics);
    LOGFONTW design;
    ::GetObjectW(font, sizeof design, &design);
    design.lfHeight = -static_cast<LONG>(metrics->otmEMSquare);
    design.lfWidth = 0;
    const HFONT designFont = ::CreateFontIndirectW(&design);
    const HDC memory = ::CreateCompatibleDC(dc);
    const HGDIOBJ old = ::SelectObject(memory, designFont);
    int positions[12];
    SIZE size;
    ::GetTextExtentExPointW(dc, look.words, static_cast<int>(std::wcslen(look.words)), 0, nullptr, positions, &size);
    ::GetOutlineTextMetricsW(memory, sizeof room, metrics);
    ::SelectObject(memory, old);
    ::DeleteObject(memory);
    ::DeleteObject(designFont);
}

void BareText(HDC dc, const Look& look) {
    ::SetBkMode(dc, TRANSPARENT);
    ::SetBkColor(dc, 0xFFFFFF);
    const LOGFONTW description = FontOf(look);
    const HFONT font = ::CreateFontIndirectW(&description);
    const HGDIOBJ old = ::SelectObject(dc, font);
    const COLORREF oldColor = ::SetTextColor(dc, kColor);
    BareMeasure(dc, font, look);
    ::TextOutW(dc, look.x, look.y, look.words, static_cast<int>(std::wcslen(look.words)));
    SIZE size;
    ::GetTextExtentPoint32W(dc, L"ABCabc", 6, &size);
    ::SelectObject(dc, old);
    ::SetTextColor(dc, oldColor);
    ::DeleteObject(font);
}

void BareParm(HDC dc, const Look& look) {
    ::SetBkMode(dc, TRANSPARENT);
    const LOGFONTW description = FontOf(look);
    const HFONT font = ::CreateFontIndirectW(&description);
    const HGDIOBJ old = ::SelectObject(dc, font);
    const COLORREF oldColor = ::SetTextColor(dc, kColor);
    ::TextOutW(dc, look.x, look.y, look.words, static_cast<int>(std::wcslen(look.words)));
    ::SelectObject(dc, old);
    ::SetTextColor(dc, oldColor);
    ::DeleteObject(font);
}

void BareStroke(HDC dc, int x1, int y1, int x2, int y2) {
    ::MoveToEx(dc, x1, y1, nullptr);
    ::LineTo(dc, x2, y2);
}

// A tick around (x, y): 6 pixels out along the diagonal, 1.41 to either side.
void BareTick(HDC dc, int x, int y) {
    const POINT points[4] = {{x + 4, y - 8}, {x + 7, y - 5}, {x - 5, y + 7}, {x - 8, y + 4}};
    ::MoveToEx(dc, points[0].x, points[0].y, nullptr);
    for (int i = 1; i <= 4; ++i) {
        ::LineTo(dc, points[i % 4].x, points[i % 4].y);
    }
    const HRGN region = ::CreatePolygonRgn(points, 4, ALTERNATE);
    const HBRUSH brush = ::CreateSolidBrush(0xFFFFFF);
    ::FillRgn(dc, region, brush);
    ::DeleteObject(brush);
    ::DeleteObject(region);
}

void BareLabel(HDC dc, const Look& look) {
    const int x = look.x;
    const int y = look.y;
    ::SetBkMode(dc, TRANSPARENT);
    const HPEN pen = ::CreatePen(PS_SOLID, 1, kColor);
    const HGDIOBJ old = ::SelectObject(dc, pen);
    BareTick(dc, x, y);
    BareTick(dc, x + 80, y);
    BareStroke(dc, x, y + 30, x, y - 15);
    BareStroke(dc, x, y, x + 30, y);
    BareStroke(dc, x + 50, y, x + 80, y);
    BareStroke(dc, x + 80, y + 30, x + 80, y - 15);
    ::SelectObject(dc, old);
    ::DeleteObject(pen);
}

struct Stage {
    Stage() : geometry(&graphic, graphic.GetDocument()->GetLayerManager()) {
        tran.SethScreen(kHeight);
        graphic.SetVectorViewCoordTran(&tran);
    }
    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
    CDrawGeometry geometry;
};

using Objects = std::vector<std::unique_ptr<CDrawable>>;

template <class Kind>
Objects Texts(const std::vector<Look>& looks) {
    Objects objects;
    for (const Look& look : looks) {
        auto text = std::make_unique<Kind>();
        text->SetPos(CGePoint2d(look.x, kHeight - look.y));
        text->SetTextHeight(static_cast<float>(look.height));
        text->SetAngle(static_cast<float>(look.angle));
        text->SetText(look.words);
        text->SetPenColor(kColor);
        objects.push_back(std::move(text));
    }
    return objects;
}

Objects Labels(const std::vector<Look>& looks) {
    Objects objects;
    for (const Look& look : looks) {
        auto label = std::make_unique<CKXVectorLabel>();
        const double x = look.x;
        const double y = kHeight - look.y;
        label->SetLeftLabel(CGePoint2d(x, y - 30), CGePoint2d(x, y));
        label->SetRightLabel(CGePoint2d(x + 80, y - 30), CGePoint2d(x + 80, y));
        label->SetLabelLength(6);
        label->SetLabelWidth(4);
        label->SetTextHoleWidth(10);
        label->SetLineWide(1);
        label->SetLineType(0);
        label->SetPenColor(kColor);
        objects.push_back(std::move(label));
    }
    return objects;
}

struct Row {
    const char* name;
    bench::Comparison times;
    bool same;
};

template <class Bare>
Row Measure(const char* name, const std::vector<Look>& looks, const Objects& objects, Bare bare) {
    Stage stage;
    bench::Picture picture(kWidth, kHeight);
    const auto paintLibrary = [&] {
        for (const auto& object : objects) {
            object->Draw(&picture.DC(), &stage.geometry);
        }
    };
    const auto paintBare = [&] {
        for (const Look& look : looks) {
            bare(picture.DC().m_hDC, look);
        }
    };
    // The ratio means something only when both paint the same picture.
    picture.Clear();
    paintLibrary();
    ::GdiFlush();
    const std::vector<DWORD> library = picture.Pixels();
    picture.Clear();
    paintBare();
    ::GdiFlush();
    const bool same = library == picture.Pixels();
    return {name, bench::Compare(kRounds, paintLibrary, paintBare), same};
}

} // namespace

int main() {
    const std::vector<Look> equal = Looks(false);
    const std::vector<Look> mixed = Looks(true);
    const Row rows[] = {
        Measure("texts_equal", equal, Texts<CText>(equal), BareText),
        Measure("texts_mixed", mixed, Texts<CText>(mixed), BareText),
        Measure("parameters_equal", equal, Texts<CTextParm>(equal), BareParm),
        Measure("parameters_mixed", mixed, Texts<CTextParm>(mixed), BareParm),
        Measure("labels", equal, Labels(equal), BareLabel),
    };
    std::printf("%d objects, median of %d rounds\n", kTexts, kRounds);
    std::printf("%-20s %12s %12s %8s %8s\n", "", "library ms", "bare ms", "ratio", "limit");
    for (const Row& row : rows) {
        std::printf("%-20s %12.1f %12.1f %8.3f %8.2f%s\n", row.name, row.times.library, row.times.bare,
                    row.times.Ratio(), kLimit, row.same ? "" : "  DIFFERENT PICTURES");
    }
    std::printf("{\"benchmark\": \"texts\", \"objects\": %d, \"rounds\": %d, \"rows\": [", kTexts, kRounds);
    const char* separator = "";
    for (const Row& row : rows) {
        std::printf("%s{\"name\": \"%s\", \"library_ms\": %.2f, \"bare_ms\": %.2f, \"ratio\": %.4f, \"limit\": %.2f, "
                    "\"same_picture\": %s}",
                    separator, row.name, row.times.library, row.times.bare, row.times.Ratio(), kLimit,
                    row.same ? "true" : "false");
        separator = ", ";
    }
    std::printf("]}\n");
    return std::all_of(std::begin(rows), std::end(rows), [](const Row& row) { return row.same; }) ? 0 : 1;
}
