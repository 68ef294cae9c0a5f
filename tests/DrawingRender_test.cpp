// CDrawingRender: where a picture lies, its pixels, PNG and EMF.

#include <DrawingRender.h>

#include "support/TestData.h"
#include "support/ViewHost.h"
#include "support/WatchedCalls.h"

#include <Circle.h>
#include <CombRect.h>
#include <Line.h>
#include <PLine.h>
#include <TextParm.h>
#include <VectorLabel.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

constexpr DWORD kBlack = 0xFF000000;
constexpr DWORD kWhite = 0xFFFFFFFF;
constexpr DWORD kRed = 0xFFFF0000; // 0xAARRGGBB

// Keeps failed draws from showing boxes, which would wait for an answer.
class CRenderTestApp : public CWinApp {
public:
    int DoMessageBox(LPCTSTR, UINT, UINT) override { return IDOK; }
} g_App;

// A drawing whose mapping is scale 1 with a height of 100.
struct Drawing {
    Drawing() {
        tran.SetScreenSize(CSize(100, 100));
        graphic.SetVectorViewCoordTran(&tran);
    }
    CGraphicDocument& Document() { return *graphic.GetDocument(); }
    template <class Kind>
    Kind* Add(Kind* object) {
        Document().AddDrawAobject(object);
        return object;
    }
    CLine* Line(double x1, double y1, double x2, double y2, COLORREF color = RGB(255, 0, 0)) {
        auto* line = new CLine;
        line->SetStartPoint(CGePoint2d(x1, y1));
        line->SetEndPoint(CGePoint2d(x2, y2));
        line->SetPenColor(color);
        return Add(line);
    }

    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
};

// One pixel for one unit, the unit square of 100 with its origin in the lower left corner.
CRenderOptions Hundred() {
    CRenderOptions options;
    options.size = CSize(100, 100);
    options.place = CRenderOptions::Window;
    options.windowMin = CGePoint2d(0, 0);
    options.windowMax = CGePoint2d(100, 100);
    return options;
}

struct Shot {
    Shot(CGraphicDocument& document, const CRenderOptions& options) {
        CDrawingRender render(&document, options);
        size = render.Size();
        status = render.Pixels(pixels);
    }
    DWORD At(int x, int y) const { return pixels[static_cast<INT_PTR>(y) * size.cx + x]; }
    int Count(DWORD color) const {
        int count = 0;
        for (INT_PTR i = 0; i < pixels.GetSize(); ++i) {
            count += pixels[i] == color;
        }
        return count;
    }
    CSize size;
    RenderStatus status;
    CDWordArray pixels;
};

DWORD BigEndian(const CByteArray& file, INT_PTR at) {
    return static_cast<DWORD>(file[at]) << 24 | static_cast<DWORD>(file[at + 1]) << 16 |
           static_cast<DWORD>(file[at + 2]) << 8 | file[at + 3];
}

// ---- Where the picture lies ----------------------------------------------------------------------------------------

TEST(DrawingRender, AWindowIsShownWithItsLowerLeftCornerBelowTheLastRow) {
    Drawing drawing;
    drawing.Line(10, 50, 90, 50);
    const Shot shot(drawing.Document(), Hundred());
    ASSERT_EQ(RenderStatus::Done, shot.status);
    // y 50 is row 100 - 50; the last pixel of a line is not inked.
    EXPECT_EQ(80, shot.Count(kRed));
    EXPECT_EQ(kRed, shot.At(10, 50));
    EXPECT_EQ(kRed, shot.At(89, 50));
    EXPECT_EQ(kBlack, shot.At(90, 50));
    EXPECT_EQ(100 * 100 - 80, shot.Count(kBlack));
}

TEST(DrawingRender, AWindowOfAnotherProportionIsCentred) {
    Drawing drawing;
    CRenderOptions options = Hundred();
    options.size = CSize(400, 100);
    CDrawingRender render(&drawing.Document(), options);
    EXPECT_EQ(1.0f, render.Mapping().GetScale());
    EXPECT_EQ(-150.0, render.Mapping().GetOriginX());
    EXPECT_EQ(0.0, render.Mapping().GetOriginY());
}

TEST(DrawingRender, FitsAsAViewFits) {
    Drawing drawing;
    drawing.Line(0, 0, 1000, 500);
    CRenderOptions options;
    options.size = CSize(1100, 500);
    CDrawingRender render(&drawing.Document(), options);
    // 15 percent of 500 are 75 pixels: 500 units on 425 pixels.
    EXPECT_EQ(static_cast<float>(500.0 / 425.0), render.Mapping().GetScale());
}

TEST(DrawingRender, TakesAMissingSideFromTheDrawing) {
    Drawing drawing;
    drawing.Line(0, 0, 200, 50);
    CRenderOptions options;
    options.size = CSize(800, 0);
    EXPECT_EQ(CSize(800, 200), CDrawingRender(&drawing.Document(), options).Size());
    options.size = CSize(0, 100);
    EXPECT_EQ(CSize(400, 100), CDrawingRender(&drawing.Document(), options).Size());
}

TEST(DrawingRender, TakesTheSizeFromAScale) {
    Drawing drawing;
    drawing.Line(0, 0, 200, 50);
    CRenderOptions options;
    options.scale = 0.5;
    options.marginInPixels = true;
    options.margin = 20;
    CDrawingRender render(&drawing.Document(), options);
    EXPECT_EQ(CSize(420, 120), render.Size());
    EXPECT_EQ(0.5f, render.Mapping().GetScale());
    EXPECT_EQ(-5.0, render.Mapping().GetOriginX()); // Half of 20 pixels at half a unit.
}

TEST(DrawingRender, AScaleOnASheetOfGivenSizeIsCentred) {
    Drawing drawing;
    drawing.Line(10, 20, 210, 70);
    CRenderOptions options;
    options.scale = 0.5;
    options.keepSize = true;
    options.size = CSize(1000, 300);
    CDrawingRender render(&drawing.Document(), options);
    EXPECT_EQ(CSize(1000, 300), render.Size());
    EXPECT_EQ(0.5f, render.Mapping().GetScale());
    // 500 by 150 units around (110, 45).
    EXPECT_EQ(-140.0, render.Mapping().GetOriginX());
    EXPECT_EQ(-30.0, render.Mapping().GetOriginY());
}

TEST(DrawingRender, APaperShowsAUnitAsAMillimetreOrAll) {
    Drawing drawing;
    drawing.Line(0, 0, 254, 127);
    CRenderOptions options = CDrawingRender::PaperOptions(CSize(3300, 2400), 300, 2);
    // At 1:2 the line is 127 mm long: 1500 dots.
    CDrawingRender render(&drawing.Document(), options);
    EXPECT_EQ(CSize(3300, 2400), render.Size());
    EXPECT_NEAR(1500.0, 254.0 / render.Mapping().GetScale(), 0.001);
    // A quarter of a millimetre is 2.95 dots.
    EXPECT_EQ(3, options.leastLineWidth);
    EXPECT_EQ(CRenderOptions::BlackOnWhite, options.colors);
    // All of it in 98 percent of 3300 dots.
    options = CDrawingRender::PaperOptions(CSize(3300, 2400), 300, 0);
    CDrawingRender fitted(&drawing.Document(), options);
    EXPECT_NEAR(254.0 / 3234.0, fitted.Mapping().GetScale(), 0.0001);
}

TEST(DrawingRender, AsStoredKeepsTheViewsScaleAndOrigin) {
    Drawing drawing;
    drawing.tran.SetScale(2.0f);
    drawing.tran.SetOriginX(7.0);
    drawing.tran.SethScreen(33);
    CRenderOptions options;
    options.place = CRenderOptions::AsStored;
    options.size = CSize(10, 20);
    CDrawingRender render(&drawing.Document(), options);
    EXPECT_EQ(2.0f, render.Mapping().GetScale());
    EXPECT_EQ(7.0, render.Mapping().GetOriginX());
    EXPECT_EQ(33, render.Mapping().GethScreen());
    EXPECT_EQ(CSize(10, 20), render.Size());
}

TEST(DrawingRender, OnePointIsShownInTheMiddle) {
    Drawing drawing;
    drawing.Line(40, 70, 40, 70);
    CRenderOptions options;
    options.size = CSize(100, 60);
    CDrawingRender render(&drawing.Document(), options);
    EXPECT_EQ(1.0f, render.Mapping().GetScale());
    EXPECT_EQ(-10.0, render.Mapping().GetOriginX());
    EXPECT_EQ(40.0, render.Mapping().GetOriginY());
}

TEST(DrawingRender, WhatIsNoNumberDoesNotSpoilTheFit) {
    Drawing drawing;
    drawing.Line(0, 0, std::nan(""), HUGE_VAL);
    drawing.Line(0, 0, 80, 80);
    drawing.Add(new CPLine); // Without vertices it has no extent to tell.
    CRenderOptions options;
    options.size = CSize(100, 100);
    options.margin = 20;
    CDrawingRender render(&drawing.Document(), options);
    EXPECT_EQ(1.0f, render.Mapping().GetScale());
    EXPECT_EQ(-10.0, render.Mapping().GetOriginX());
}

TEST(DrawingRender, RefusesWhatIsOutOfRange) {
    Drawing drawing;
    drawing.Line(0, 0, 1, 1);
    std::vector<CRenderOptions> bad(10, Hundred());
    bad[0].size = CSize(0, 0);
    bad[0].place = CRenderOptions::AsStored;
    bad[1].size = CSize(32768, 1);
    bad[2].size = CSize(20000, 20000);
    bad[3].size = CSize(-1, 10);
    bad[4].windowMax = CGePoint2d(0, 5);
    bad[5].windowMax.x = std::nan("");
    bad[6].lineWidthScale = 0.0;
    bad[7].margin = 100;
    bad[8].scale = 1e-9;
    bad[9].lineWidthScale = std::nan("");
    for (size_t i = 0; i < bad.size(); ++i) {
        CDrawingRender render(&drawing.Document(), bad[i]);
        EXPECT_EQ(RenderStatus::BadOptions, render.Status()) << i;
        CByteArray file;
        EXPECT_EQ(RenderStatus::BadOptions, render.Png(file)) << i;
        EXPECT_EQ(RenderStatus::BadOptions, render.Emf(file)) << i;
        EXPECT_EQ(RenderStatus::BadOptions, render.Svg(file)) << i;
        EXPECT_EQ(0, file.GetSize());
    }
}

// ---- Colours, widths, what is shown --------------------------------------------------------------------------------

TEST(DrawingRender, TheBackgroundIsTheDrawingsOrTheOneThatIsGiven) {
    Drawing drawing;
    drawing.Document().SetBKColor(RGB(1, 2, 3));
    CRenderOptions options = Hundred();
    EXPECT_EQ(0xFF010203, Shot(drawing.Document(), options).At(0, 0));
    options.ownBackground = true;
    options.background = RGB(9, 8, 7);
    EXPECT_EQ(0xFF090807, Shot(drawing.Document(), options).At(99, 99));
}

TEST(DrawingRender, ATransparentPictureHasInkAndNothingElse) {
    Drawing drawing;
    drawing.Line(10, 50, 90, 50, RGB(200, 0, 100));
    CRenderOptions options = Hundred();
    options.transparent = true;
    const Shot shot(drawing.Document(), options);
    EXPECT_EQ(0xFFC80064, shot.At(10, 50));
    EXPECT_EQ(0u, shot.At(10, 51));
    EXPECT_EQ(80, shot.Count(0xFFC80064));
    EXPECT_EQ(100 * 100 - 80, shot.Count(0));
}

TEST(DrawingRender, BlackOnWhiteKeepsFilledAreasWhite) {
    Drawing drawing;
    auto* circle = drawing.Add(new CCircle(Gdiplus::PointF(50, 50), 30, 1));
    circle->SetPenColor(RGB(255, 255, 0));
    drawing.Line(0, 90, 100, 90, RGB(255, 255, 255));
    CRenderOptions options = Hundred();
    options.colors = CRenderOptions::BlackOnWhite;
    const Shot shot(drawing.Document(), options);
    EXPECT_EQ(kWhite, shot.At(0, 0));
    EXPECT_EQ(kBlack, shot.At(50, 10));
    EXPECT_EQ(kBlack, shot.At(20, 50));
    EXPECT_EQ(kWhite, shot.At(50, 50));
    EXPECT_EQ(100 * 100, shot.Count(kBlack) + shot.Count(kWhite));
}

TEST(DrawingRender, MonochromeTextsHaveTwoColours) {
    Drawing drawing;
    auto* text = drawing.Add(new CText);
    text->SetText(L"Oval 8");
    text->SetTextHeight(40);
    text->SetPos(CGePoint2d(0, 80));
    text->SetPenColor(RGB(0, 255, 0));
    CRenderOptions options = Hundred();
    options.colors = CRenderOptions::Monochrome;
    const Shot shot(drawing.Document(), options);
    EXPECT_GT(shot.Count(kBlack), 50);
    EXPECT_EQ(100 * 100, shot.Count(kBlack) + shot.Count(kWhite));
}

TEST(DrawingRender, AWidthScaleWidensEveryLine) {
    Drawing drawing;
    drawing.Line(10, 50, 90, 50);
    CRenderOptions options = Hundred();
    options.lineWidthScale = 3.0;
    const Shot shot(drawing.Document(), options);
    EXPECT_EQ(kRed, shot.At(50, 49));
    EXPECT_EQ(kRed, shot.At(50, 50));
    EXPECT_EQ(kRed, shot.At(50, 51));
    EXPECT_EQ(kBlack, shot.At(50, 48));
    EXPECT_EQ(kBlack, shot.At(50, 52));
}

TEST(DrawingRender, ALeastWidthWidensThinLinesAlone) {
    Drawing drawing;
    drawing.Line(10, 50, 90, 50);
    drawing.Line(10, 20, 90, 20)->SetLineWide(7);
    CRenderOptions options = Hundred();
    options.leastLineWidth = 3;
    const Shot shot(drawing.Document(), options);
    const auto height = [&shot](int x) {
        int count = 0;
        for (int y = 0; y < 100; ++y) {
            count += shot.At(x, y) == kRed;
        }
        return count;
    };
    EXPECT_EQ(3 + 7, height(50));
}

TEST(DrawingRender, ADashedLineStaysDashedWhenWidened) {
    Drawing drawing;
    drawing.Line(0, 50, 100, 50)->SetLineType(PS_DOT);
    CRenderOptions options = Hundred();
    options.lineWidthScale = 4.0;
    const Shot shot(drawing.Document(), options);
    int gaps = 0;
    for (int x = 0; x < 100; ++x) {
        gaps += shot.At(x, 50) == kBlack;
    }
    // Dots and gaps of three widths each: four times 12 and 12, and 4 of the next dot.
    EXPECT_NEAR(48, gaps, 2);
}

TEST(DrawingRender, ShowsTheNetUnlessToldNotTo) {
    Drawing drawing;
    auto* net = new CLine;
    net->SetStartPoint(CGePoint2d(0, 20));
    net->SetEndPoint(CGePoint2d(100, 20));
    net->SetPenColor(RGB(255, 0, 0));
    drawing.Document().AddNetobject(net);
    CRenderOptions options = Hundred();
    EXPECT_EQ(100, Shot(drawing.Document(), options).Count(kRed));
    options.includeNet = false;
    EXPECT_EQ(0, Shot(drawing.Document(), options).Count(kRed));
}

TEST(DrawingRender, ShowsSelectedObjectsPlainlyAndAloneWhenAsked) {
    Drawing drawing;
    CLine* chosen = drawing.Line(10, 50, 90, 50);
    drawing.Line(10, 20, 90, 20);
    drawing.Document().AddSelected(chosen);
    CRenderOptions options = Hundred();
    EXPECT_EQ(160, Shot(drawing.Document(), options).Count(kRed));
    options.selectedOnly = true;
    EXPECT_EQ(80, Shot(drawing.Document(), options).Count(kRed));
    options.grips = true;
    // Dotted, and three blue squares.
    const Shot shot(drawing.Document(), options);
    EXPECT_LT(shot.Count(kRed), 60);
    EXPECT_EQ(3 * 24, shot.Count(0xFF0000FF));
}

TEST(DrawingRender, SelectedOnlyFitsWhatIsSelected) {
    Drawing drawing;
    drawing.Document().AddSelected(drawing.Line(1000, 1000, 1085, 1085));
    drawing.Line(0, 0, 1e6, 1e6);
    CRenderOptions options;
    options.size = CSize(100, 100);
    options.selectedOnly = true;
    CDrawingRender render(&drawing.Document(), options);
    EXPECT_EQ(1.0f, render.Mapping().GetScale());
    EXPECT_EQ(992.5, render.Mapping().GetOriginX());
}

TEST(DrawingRender, LeavesTheDrawingAsItWas) {
    Drawing drawing;
    CLine* line = drawing.Line(0, 0, 50, 50);
    auto* text = drawing.Add(new CText);
    text->SetText(L"x");
    text->SetPos(CGePoint2d(0, 90));
    CLine building;
    drawing.Document().AddSelected(line);
    drawing.Document().AddCurrentObject(&building);
    // Nothing measured the text yet: the grip below it lies on it.
    const auto depth = [text] {
        CGePointArray grips;
        text->getGripPoints(grips, 5);
        return grips[2].y;
    };
    ASSERT_EQ(90.0, depth());
    CByteArray file;
    {
        CRenderOptions options;
        CDrawingRender render(&drawing.Document(), options);
        render.Png(file);
        render.Emf(file);
        render.Svg(file);
    }
    EXPECT_EQ(90.0, depth());
    EXPECT_EQ(CDrawable::Selected, line->GetDrawState());
    EXPECT_EQ(&building, drawing.Document().GetCurrentObject());
    EXPECT_EQ(&drawing.tran, drawing.Document().GetVectorViewCoordTran());
    EXPECT_EQ(100, drawing.tran.GethScreen());
    EXPECT_EQ(1.0f, drawing.tran.GetScale());
    drawing.Document().removeCurrentObject();
}

// ---- PNG -----------------------------------------------------------------------------------------------------------

TEST(DrawingRender, APngSaysItsSizeAndDepth) {
    Drawing drawing;
    drawing.Line(0, 0, 50, 50);
    CRenderOptions options = Hundred();
    options.size = CSize(101, 67);
    const struct {
        bool transparent;
        CRenderOptions::Colors colors;
        int depth;
        int kind;
    } cases[] = {{false, CRenderOptions::Stored, 8, 2},
                 {true, CRenderOptions::Stored, 8, 6},
                 {false, CRenderOptions::Monochrome, 1, 0}};
    for (const auto& c : cases) {
        options.transparent = c.transparent;
        options.colors = c.colors;
        CByteArray file;
        ASSERT_EQ(RenderStatus::Done, CDrawingRender(&drawing.Document(), options).Png(file));
        ASSERT_GT(file.GetSize(), 60);
        EXPECT_EQ(0x89504E47u, BigEndian(file, 0));
        EXPECT_EQ(101u, BigEndian(file, 16));
        EXPECT_EQ(67u, BigEndian(file, 20));
        EXPECT_EQ(c.depth, file[24]);
        EXPECT_EQ(c.kind, file[25]);
        EXPECT_EQ(0x49454E44u, BigEndian(file, file.GetSize() - 8)); // IEND
    }
}

// ---- EMF -----------------------------------------------------------------------------------------------------------

// What a metafile shows when it is played onto black pixels of that size.
CDWordArray* Played(const CByteArray& file, CSize size, CDWordArray& pixels) {
    HENHMETAFILE metafile = ::SetEnhMetaFileBits(static_cast<UINT>(file.GetSize()), file.GetData());
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = -size.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC dc = ::CreateCompatibleDC(nullptr);
    HBITMAP bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    const RECT all = {0, 0, size.cx, size.cy};
    EXPECT_TRUE(::PlayEnhMetaFile(dc, metafile, &all));
    ::GdiFlush();
    pixels.SetSize(static_cast<INT_PTR>(size.cx) * size.cy);
    for (INT_PTR i = 0; i < pixels.GetSize(); ++i) {
        pixels[i] = static_cast<DWORD*>(bits)[i] | 0xFF000000;
    }
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    ::DeleteObject(bitmap);
    ::DeleteEnhMetaFile(metafile);
    return &pixels;
}

// How many pixels of `a` have a colour that no pixel of `b` has there or next to it.
int FarPixels(const CDWordArray& a, const CDWordArray& b, int width) {
    const int height = static_cast<int>(a.GetSize()) / width;
    int missing = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            bool found = false;
            for (int v = std::max(0, y - 1); v <= std::min(height - 1, y + 1); ++v) {
                for (int u = std::max(0, x - 1); u <= std::min(width - 1, x + 1); ++u) {
                    found = found || b[static_cast<INT_PTR>(v) * width + u] == a[static_cast<INT_PTR>(y) * width + x];
                }
            }
            missing += found ? 0 : 1;
        }
    }
    return missing;
}

int CALLBACK CollectText(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM given) {
    auto& found = *reinterpret_cast<std::wstring*>(given);
    if (record->iType == EMR_EXTTEXTOUTW) {
        const auto& text = *reinterpret_cast<const EMREXTTEXTOUTW*>(record);
        const auto* begin = reinterpret_cast<const BYTE*>(record) + text.emrtext.offString;
        found.append(reinterpret_cast<const wchar_t*>(begin), text.emrtext.nChars);
        found += L'|';
    }
    return 1;
}

TEST(DrawingRender, AMetafileHasTheScreensFrameAndThePicturesBounds) {
    Drawing drawing;
    drawing.Line(10, 50, 90, 50);
    CRenderOptions options = Hundred();
    options.size = CSize(200, 100);
    CByteArray file;
    ASSERT_EQ(RenderStatus::Done, CDrawingRender(&drawing.Document(), options).Emf(file));
    ENHMETAHEADER header = {};
    ASSERT_GE(file.GetSize(), static_cast<INT_PTR>(sizeof(header)));
    memcpy(&header, file.GetData(), sizeof(header));
    EXPECT_EQ(static_cast<DWORD>(ENHMETA_SIGNATURE), header.dSignature);
    EXPECT_EQ(static_cast<DWORD>(file.GetSize()), header.nBytes);
    EXPECT_EQ(0, header.rclFrame.left);
    EXPECT_EQ(0, header.rclFrame.top);
    // 200 and 100 pixels in hundredths of a millimetre of the device that the header names, rounded.
    EXPECT_NEAR(200.0 * 100 * header.szlMillimeters.cx / header.szlDevice.cx, header.rclFrame.right, 0.5001);
    EXPECT_NEAR(100.0 * 100 * header.szlMillimeters.cy / header.szlDevice.cy, header.rclFrame.bottom, 0.5001);
    // The background fills the picture.
    EXPECT_EQ(0, header.rclBounds.left);
    EXPECT_EQ(0, header.rclBounds.top);
    EXPECT_NEAR(199, header.rclBounds.right, 1);
    EXPECT_NEAR(99, header.rclBounds.bottom, 1);
}

// The frame holds hundredths of a millimetre, so that playing scales by a little: a pixel's colour is found within one
// pixel in the other picture. Nothing overlaps here: where objects overlap, the last visible pixel of one may vanish.
TEST(DrawingRender, APlayedMetafileShowsThePicture) {
    Drawing drawing;
    drawing.Line(5, 15, 95, 19);
    drawing.Line(10, 10, 90, 10)->SetLineType(PS_DASH);
    drawing.Add(new CCircle(Gdiplus::PointF(50, 45), 18, 1))->SetPenColor(RGB(0, 255, 0));
    auto* line = drawing.Add(new CPLine);
    line->AddPoint(CGePoint2d(20, 85), 0.3);
    line->AddPoint(CGePoint2d(80, 95), 0);
    line->SetPenColor(RGB(0, 0, 255));
    const CRenderOptions options = Hundred();
    CByteArray file;
    ASSERT_EQ(RenderStatus::Done, CDrawingRender(&drawing.Document(), options).Emf(file));
    CDWordArray played;
    Played(file, CSize(100, 100), played);
    const Shot shot(drawing.Document(), options);
    EXPECT_EQ(0, FarPixels(shot.pixels, played, 100));
    EXPECT_EQ(0, FarPixels(played, shot.pixels, 100));
    EXPECT_GT(shot.Count(0xFF00FF00), 60);
    EXPECT_GT(shot.Count(kRed), 100);
}

TEST(DrawingRender, APlayedSampleAgreesWithItsPicture) {
    for (const char* name : {"truss.nrv", "mechanical_part.nrv", "texts.nrv"}) {
        Drawing drawing;
        Bytes bytes = ReadTestData(std::string("../../samples/") + name);
        ASSERT_EQ(1, drawing.Document().OpenDocument(bytes.data(), static_cast<unsigned int>(bytes.size())));
        CRenderOptions options;
        options.size = CSize(800, 600);
        options.colors = CRenderOptions::Monochrome;
        CByteArray file;
        ASSERT_EQ(RenderStatus::Done, CDrawingRender(&drawing.Document(), options).Emf(file));
        CDWordArray played;
        Played(file, options.size, played);
        const Shot shot(drawing.Document(), options);
        const int ink = shot.Count(kBlack);
        EXPECT_GT(ink, 2000) << name;
        // In a hundred pixels of ink one may be alone: where strokes and white areas overlap, and in texts, whose
        // height is scaled like all else and then a whole number again.
        const int alone = FarPixels(shot.pixels, played, 800) + FarPixels(played, shot.pixels, 800);
        EXPECT_LE(alone, ink / 100) << name << " has " << ink << " pixels of ink";
    }
}

TEST(DrawingRender, AMetafileHoldsTextsAsTexts) {
    Drawing drawing;
    for (const wchar_t* words : {L"宽度 120", L"R 7"}) {
        auto* text = drawing.Add(new CText);
        text->SetText(words);
        text->SetPos(CGePoint2d(10, 60));
    }
    CByteArray file;
    ASSERT_EQ(RenderStatus::Done, CDrawingRender(&drawing.Document(), Hundred()).Emf(file));
    HENHMETAFILE metafile = ::SetEnhMetaFileBits(static_cast<UINT>(file.GetSize()), file.GetData());
    std::wstring found;
    ::EnumEnhMetaFile(nullptr, metafile, CollectText, &found, nullptr);
    ::DeleteEnhMetaFile(metafile);
    EXPECT_EQ(L"宽度 120|R 7|", found);
}

// ---- Whatever a stream holds ---------------------------------------------------------------------------------------

TEST(DrawingRender, RendersWhateverAStreamBrings) {
    std::mt19937 random(7);
    for (const char* name : {"curves.nrv", "texts_mixed.nrv", "label_version7.nrv", "lines_two.nrv"}) {
        const Bytes whole = ReadTestData(name);
        ASSERT_GT(whole.size(), 38u);
        for (int round = 0; round < 60; ++round) {
            Bytes bytes = whole;
            for (int change = 0; change < 4; ++change) {
                bytes[38 + random() % (bytes.size() - 38)] = static_cast<BYTE>(random());
            }
            Drawing drawing;
            drawing.Document().OpenDocument(bytes.data(), static_cast<unsigned int>(bytes.size()));
            CRenderOptions options;
            options.size = CSize(40, 30);
            CDrawingRender render(&drawing.Document(), options);
            CByteArray file;
            EXPECT_EQ(RenderStatus::Done, render.Png(file)) << name << round;
            EXPECT_EQ(RenderStatus::Done, render.Emf(file)) << name << round;
            EXPECT_EQ(RenderStatus::Done, render.Svg(file)) << name << round;
        }
    }
}

// ---- Beside a view -------------------------------------------------------------------------------------------------

TEST(DesktopDrawingRender, APictureIsTheViewPixelByPixel) {
    ViewHost host;
    CVectorView& view = host.view;
    view.AddLine(CGePoint2d(10, 10), CGePoint2d(390, 170), Gdiplus::Color(255, 200, 0), 0);
    view.AddCenterPoint(CGePoint2d(300, 80), L"", L"", Gdiplus::Color(0, 255, 0), 0);
    view.AddText(CGePoint2d(40, 200), L"截面 W 310", 30, Gdiplus::Color(255, 255, 255), 0);
    auto* circle = new CCircle(Gdiplus::PointF(200, 150), 77, 1);
    view.GetDocument()->AddDrawAobject(circle);
    auto* label = new CKXVectorLabel;
    label->SetLeftLabel(CGePoint2d(60, 40), CGePoint2d(60, 90));
    label->SetRightLabel(CGePoint2d(180, 40), CGePoint2d(180, 90));
    view.GetDocument()->AddDrawAobject(label);
    const Picture shown = host.TakeFresh();
    CRenderOptions options;
    options.place = CRenderOptions::AsStored;
    options.size = CSize(400, 300);
    const Shot shot(*view.GetDocument(), options);
    ASSERT_EQ(400, shown.width);
    ASSERT_EQ(300, shown.height);
    int differing = 0;
    int ink = 0;
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 400; ++x) {
            const COLORREF seen = shown.At(x, y);
            const DWORD pixel = kBlack | static_cast<DWORD>(GetRValue(seen)) << 16 |
                                static_cast<DWORD>(GetGValue(seen)) << 8 | GetBValue(seen);
            differing += pixel != shot.At(x, y);
            ink += pixel != kBlack;
        }
    }
    EXPECT_EQ(0, differing);
    EXPECT_GT(ink, 15000);
}

TEST(DrawingRender, WithAnyRequestForMemoryRefusedItSaysSoAndLeavesTheDrawingAsItWas) {
    for (const char* form : {"png", "emf", "svg"}) {
        SCOPED_TRACE(form);
        LONG refusals = 0;
        for (LONG nth = 1;; ++nth) {
            ASSERT_LT(nth, 5000);
            Drawing d;
            CLine* line = d.Line(0, 0, 90, 90);
            d.Document().AddSelected(line);
            line->SetDrawState(CDrawable::Selected);
            d.Add(new CText)->SetText(L"310");
            CByteArray file;
            RenderStatus status = RenderStatus::NoResource;
            LONG refused = 0;
            {
                WatchedCalls calls;
                calls.Refuse(WatchedCalls::Memory, nth);
                try {
                    CDrawingRender render(&d.Document(), Hundred());
                    status = *form == 'p' ? render.Png(file) : *form == 'e' ? render.Emf(file) : render.Svg(file);
                } catch (CMemoryException* e) { // Of the painter that it makes for itself.
                    e->Delete();
                } catch (const std::bad_alloc&) {
                }
                refused = calls.Refused();
            }
            EXPECT_EQ(CDrawable::Selected, line->GetDrawState()) << nth;
            EXPECT_EQ(&d.tran, d.Document().GetVectorViewCoordTran()) << nth;
            if (refused == 0) {
                EXPECT_EQ(RenderStatus::Done, status);
                EXPECT_LT(0, file.GetSize());
                break;
            }
            // A picture with a text less is one too: what fails to draw is reported by the painter.
            EXPECT_TRUE(status != RenderStatus::BadOptions) << nth;
            EXPECT_EQ(status == RenderStatus::Done, file.GetSize() > 0) << nth;
            ++refusals;
        }
        EXPECT_LT(3, refusals);
    }
}

} // namespace
