// What CText and CTextParm draw: whole sequences of calls in each state and at each zoom, and what is measured by it.

#include "Document.h"
#include "support/BitmapFont.h"
#include "support/BoxAnswer.h"
#include "support/RecordingDC.h"
#include "support/TextObjects.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using Calls = std::vector<std::string>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// Pixels (x, 600 - y) on a picture of 800 by 600.
struct Stage : Scene {
    Calls Draw(CDrawable& object) {
        dc.Clear();
        object.Draw(&dc, &geometry);
        return dc.Calls();
    }
    RecordingDC dc{800, 600};
};

// The extent of the sample text in that font by the plain calls, in pixels.
int SampleHeight(int height, int escapement = 0, LPCWSTR face = L"宋体") {
    const HDC dc = ::CreateCompatibleDC(nullptr);
    LOGFONTW description = {};
    description.lfHeight = height;
    description.lfEscapement = escapement;
    description.lfWeight = 400;
    description.lfOutPrecision = OUT_TT_PRECIS;
    std::wcsncpy(description.lfFaceName, face, LF_FACESIZE - 1);
    const HFONT font = ::CreateFontIndirectW(&description);
    const HGDIOBJ old = ::SelectObject(dc, font);
    SIZE size = {};
    EXPECT_TRUE(::GetTextExtentPoint32W(dc, L"ABCabc", 6, &size));
    ::SelectObject(dc, old);
    ::DeleteObject(font);
    ::DeleteDC(dc);
    return size.cy;
}

// The font that is selected while the text is drawn.
class FontWatcher : public RecordingDC {
public:
    BOOL TextOut(int x, int y, LPCTSTR text, int count) override {
        ::GetObjectW(::GetCurrentObject(m_hDC, OBJ_FONT), sizeof(font), &font);
        return RecordingDC::TextOut(x, y, text, count);
    }
    LOGFONTW font = {};
};

// Fails once, in the named call.
class FailingDC : public RecordingDC {
public:
    // Plain: what it throws is no CException.
    explicit FailingDC(const char* call, int occurrence = 1, bool plain = false)
        : m_call(call), m_left(occurrence), m_plain(plain) {}

    int SetBkMode(int mode) override {
        Fail("SetBkMode");
        return RecordingDC::SetBkMode(mode);
    }
    COLORREF SetTextColor(COLORREF color) override {
        Fail("SetTextColor");
        return RecordingDC::SetTextColor(color);
    }
    using RecordingDC::SelectObject;
    CFont* SelectObject(CFont* font) override {
        Fail("SelectFont");
        return RecordingDC::SelectObject(font);
    }
    BOOL TextOut(int x, int y, LPCTSTR text, int count) override {
        Fail("TextOut");
        return RecordingDC::TextOut(x, y, text, count);
    }
    BOOL Rectangle(int x1, int y1, int x2, int y2) override {
        Fail("Rectangle");
        return RecordingDC::Rectangle(x1, y1, x2, y2);
    }

private:
    void Fail(const std::string& call) {
        if (call == m_call && --m_left == 0) {
            if (m_plain) {
                throw 1;
            }
            AfxThrowResourceException();
        }
    }
    std::string m_call;
    int m_left;
    bool m_plain;
};

const char* const kFont20 = "SelectObject(font height=20 width=0 escapement=0 weight=400 italic=0 face=\"宋体\")";

OpenText& Prepare(OpenText& text) {
    text.SetPos(CGePoint2d(10.9, 20.5));
    text.SetTextHeight(20.7f);
    text.SetText(L"Ab中");
    text.SetPenColor(0x00123456);
    return text;
}

OpenParm& Prepare(OpenParm& parm, LPCWSTR value) {
    parm.SetPos(CGePoint2d(10.9, 20.5));
    parm.SetTextHeight(20.7f);
    parm.SetText(value);
    parm.SetPenColor(0x00123456);
    return parm;
}

} // namespace

// ---- CText ---------------------------------------------------------------------------------------------------------

TEST(TextDraw, ANormalTextIsOneRunInAFontMadeForIt) {
    Stage stage;
    OpenText text;
    const Calls expected = {"SetBkMode(1)",
                            "SetBkColor(0x00FFFFFF)",
                            kFont20,
                            "SetTextColor(0x00123456)",
                            "TextOut(10,579,\"Ab中\")",
                            "SelectObject(font default)",
                            "SetTextColor(0x00000000)"};
    EXPECT_TRUE(SameCalls(expected, stage.Draw(Prepare(text)))) << "600 - 20.5 is 579.5, truncated";
}

TEST(TextDraw, TheFontAsksForTrueTypeAndACellHeight) {
    Scene scene;
    FontWatcher dc;
    OpenText text;
    Prepare(text).SetAngle(45.9f);
    text.Draw(&dc, &scene.geometry);
    EXPECT_EQ(20, dc.font.lfHeight);
    EXPECT_EQ(0, dc.font.lfWidth);
    EXPECT_EQ(450, dc.font.lfEscapement) << "whole degrees only";
    EXPECT_EQ(0, dc.font.lfOrientation);
    EXPECT_EQ(400, dc.font.lfWeight);
    EXPECT_EQ(0, dc.font.lfItalic + dc.font.lfUnderline + dc.font.lfStrikeOut + dc.font.lfCharSet);
    EXPECT_EQ(OUT_TT_PRECIS, dc.font.lfOutPrecision);
    EXPECT_EQ(0, dc.font.lfClipPrecision + dc.font.lfQuality + dc.font.lfPitchAndFamily);
    EXPECT_STREQ(L"宋体", dc.font.lfFaceName);
}

TEST(TextDraw, AnglesLoseTheirFractionTowardsZero) {
    Scene scene;
    OpenText text;
    Prepare(text);
    for (const auto& [angle, escapement] :
         {std::pair<float, int>{-45.9f, -450}, {0.9f, 0}, {359.9f, 3590}, {720.0f, 7200}, {kNaN, 0}, {kInfinity, 0}}) {
        FontWatcher dc;
        text.SetAngle(angle);
        text.Draw(&dc, &scene.geometry);
        EXPECT_EQ(escapement, dc.font.lfEscapement) << angle;
    }
}

TEST(TextDraw, BackgroundModeAndColourAreTheTextsOwnAndStay) {
    Stage stage;
    OpenText text;
    Prepare(text).SetBKMode(OPAQUE);
    text.SetBKColor(0x00112233);
    const Calls calls = stage.Draw(text);
    EXPECT_EQ("SetBkMode(2)", calls[0]);
    EXPECT_EQ("SetBkColor(0x00112233)", calls[1]);
    EXPECT_EQ(OPAQUE, stage.dc.GetBkMode());
    EXPECT_EQ(0x00112233u, stage.dc.GetBkColor());
}

TEST(TextDraw, ATextByLayerHasTheLayersColour) {
    Stage stage;
    OpenText text;
    Prepare(text).SetPenColorIndex(-1);
    EXPECT_EQ("SetTextColor(0x00FFFFFF)", stage.Draw(text)[3]);
    text.SetLayer(1); // No such layer: the stored colour.
    EXPECT_EQ("SetTextColor(0x00123456)", stage.Draw(text)[3]);
}

TEST(TextDraw, ASelectedTextIsDrawnTheSameWithItsGrips) {
    Stage stage;
    OpenText text;
    Prepare(text).SetTextWide(30.0f);
    text.SetSelected(1);
    const Calls calls = stage.Draw(text);
    ASSERT_EQ(15u, calls.size());
    EXPECT_EQ("TextOut(10,579,\"Ab中\")", calls[4]);
    EXPECT_EQ("SelectObject(pen style=0 width=0 color=0x00FF0000)", calls[7]);
    EXPECT_EQ("SelectStockObject(5)", calls[8]);
    EXPECT_EQ("Rectangle(7,576,14,583)", calls[9]);
    EXPECT_EQ("Rectangle(37,576,44,583)", calls[10]) << "40.9 is pixel 40";
    // The lower grips are below by the height that this paint measured: 579.5 and that many pixels.
    const int below = 579 + SampleHeight(20);
    EXPECT_EQ("Rectangle(7," + std::to_string(below - 3) + ",14," + std::to_string(below + 4) + ")", calls[11]);
    EXPECT_EQ("SelectObject(brush default)", calls[13]);
    EXPECT_EQ("SelectObject(pen default)", calls[14]);
}

TEST(TextDraw, ADraggedTextIsADottedLineAsWideAsItsBoxWithoutRotation) {
    Stage stage;
    OpenText text;
    Prepare(text).SetTextWide(30.0f);
    text.SetAngle(90.0f);
    text.SetDrawState(CDrawable::Dragging);
    const Calls expected = {"SetROP2(6)", "SelectObject(pen style=2 width=0 color=0x00FFFFFF)", "MoveTo(10,579)",
                            "LineTo(40,579)", "SelectObject(pen default)"};
    EXPECT_TRUE(SameCalls(expected, stage.Draw(text)));
    EXPECT_EQ(R2_NOT, stage.dc.GetROP2()) << "left in force";
    EXPECT_EQ(0.0f, text.m_MinCalHeight) << "nothing is measured";
}

TEST(TextDraw, AnUnknownStateDrawsTheTextWithoutGrips) {
    Stage stage;
    OpenText text;
    Prepare(text).m_DrawState = static_cast<enum CDrawable::DrawState>(9);
    EXPECT_EQ(7u, stage.Draw(text).size());
}

TEST(TextDraw, AHiddenAndAnErasedTextDrawNothing) {
    Stage stage;
    OpenText text;
    Prepare(text).SetIsShow(0);
    EXPECT_TRUE(stage.Draw(text).empty());
    text.SetIsShow(1);
    text.m_IsDelete = 1;
    EXPECT_TRUE(stage.Draw(text).empty());
    EXPECT_EQ(0.0f, text.m_MinCalHeight);
}

TEST(TextDraw, AnEmptyTextDrawsNothingAndIsStillMeasured) {
    Stage stage;
    OpenText text;
    Prepare(text).SetText(L"");
    EXPECT_EQ("TextOut(10,579,\"\")", stage.Draw(text)[4]);
    EXPECT_EQ(static_cast<float>(SampleHeight(20)), text.m_MinCalHeight);
}

TEST(TextDraw, EachPaintMeasuresAnewInTheUnitsOfItsZoom) {
    Stage stage;
    OpenText text;
    Prepare(text).SetTextHeight(40.0f);
    stage.Draw(text);
    EXPECT_EQ(static_cast<float>(SampleHeight(40)), text.m_MinCalHeight);
    stage.Zoom(0.25f); // 160 pixels, of which each is a quarter unit.
    stage.Draw(text);
    EXPECT_EQ(static_cast<float>(SampleHeight(160)) * 0.25f, text.m_MinCalHeight);
    // The contents of the text have no effect.
    text.SetText(L"g̃Ä");
    const float before = text.m_MinCalHeight;
    stage.Draw(text);
    EXPECT_EQ(before, text.m_MinCalHeight);
}

TEST(TextDraw, ATextThatBecomesTooSmallIsDrawnAtOnePixel) {
    Scene scene;
    OpenText text;
    Prepare(text);
    scene.Zoom(100.0f);
    FontWatcher dc;
    text.Draw(&dc, &scene.geometry);
    EXPECT_EQ(1, dc.font.lfHeight);
    EXPECT_EQ(static_cast<float>(SampleHeight(1)) * 100.0f, text.m_MinCalHeight) << "and that font is measured";
}

TEST(TextDraw, UnusableHeightsBecomeOnePixel) {
    Scene scene;
    OpenText text;
    Prepare(text);
    for (float height : {0.0f, -0.0f, -50.0f, 0.99f, kNaN, kInfinity, -kInfinity, 3e38f}) {
        FontWatcher dc;
        text.SetTextHeight(height);
        text.SetTextWide(height);
        text.Draw(&dc, &scene.geometry);
        EXPECT_EQ(1, dc.font.lfHeight) << height;
    }
    text.SetTextHeight(20.0f);
    for (float scale : {0.0f, -1.0f, kNaN, kInfinity}) {
        FontWatcher dc;
        scene.Zoom(scale);
        text.Draw(&dc, &scene.geometry);
        EXPECT_EQ(1, dc.font.lfHeight) << scale;
    }
}

TEST(TextDraw, PlacesOutsideAllWindowsDoNoHarm) {
    Stage stage;
    OpenText text;
    Prepare(text).SetPos(CGePoint2d(1e300, std::numeric_limits<double>::quiet_NaN()));
    text.SetSelected(1);
    EXPECT_EQ("TextOut(-2147483648,-2147483648,\"Ab中\")", stage.Draw(text)[4]);
    text.SetDrawState(CDrawable::Dragging);
    EXPECT_EQ("MoveTo(-2147483648,-2147483648)", stage.Draw(text)[2]);
}

TEST(TextDraw, OfALongFaceNameThirtyOneCharactersCount) {
    Scene scene;
    FontWatcher dc;
    OpenText text;
    Prepare(text).m_fontFaceName = CString(L'甲', 200);
    text.Draw(&dc, &scene.geometry);
    EXPECT_EQ(std::wstring(31, L'甲'), dc.font.lfFaceName);
    text.m_fontFaceName.Empty();
    text.Draw(&dc, &scene.geometry);
    EXPECT_STREQ(L"", dc.font.lfFaceName);
}

TEST(TextDraw, AHundredThousandCharactersAreDrawnByOneCall) {
    Stage stage;
    OpenText text;
    Prepare(text).SetText(CString(L'长', 100000));
    const DWORD start = ::GetTickCount();
    const Calls calls = stage.Draw(text);
    EXPECT_LT(::GetTickCount() - start, 10000u);
    ASSERT_EQ(7u, calls.size());
    EXPECT_EQ(100000u * 3 + std::string("TextOut(10,579,\"\")").size(), calls[4].size());
}

TEST(TextDraw, LineFeedsAndSurrogatePairsAreDrawnUnchanged) {
    Stage stage;
    OpenText text;
    Prepare(text).SetText(L"a\n\xD840\xDC40z");
    EXPECT_EQ("TextOut(10,579,\"a\n𠁀z\")", stage.Draw(text)[4]);
    EXPECT_EQ(CString(L"a\n\xD840\xDC40z"), text.GetText());
}

TEST(TextDraw, MeasuringDoesNotDisturbTextsThatAreShared) {
    Stage stage;
    OpenText text;
    const CString shared(L"shared");
    Prepare(text).SetText(shared);
    stage.Draw(text);
    EXPECT_EQ(CString(L"shared"), shared);
    EXPECT_EQ(shared, text.GetText());
}

TEST(TextDraw, PaintsLeakNoFonts) {
    // Handles run out at about 65,500 a process; without a font the default one would be measured.
    Scene scene;
    Canvas canvas(8, 8);
    OpenText text;
    Prepare(text).SetText(L"x");
    text.SetTextHeight(40.0f);
    text.Draw(&canvas.DC(), &scene.geometry);
    const float measured = text.m_MinCalHeight;
    for (int i = 0; i < 70000; ++i) {
        text.Draw(&canvas.DC(), &scene.geometry);
        ASSERT_EQ(measured, text.m_MinCalHeight) << "paint " << i;
    }
}

TEST(DesktopTextDraw, AFailureIsShownWithItsStageAndFontAndColourAreRestored) {
    Scene scene;
    const struct {
        const char* call;
        int occurrence;
        const char* stage;
    } failures[] = {{"SetBkMode", 1, "1"},   {"SelectFont", 1, "2"},    {"SetTextColor", 1, "2"}, {"TextOut", 1, "31"},
                    {"SelectFont", 2, "35"}, {"SetTextColor", 2, "36"}, {"Rectangle", 2, "4"}};
    for (const auto& failure : failures) {
        BoxAnswer boxes({IDOK});
        FailingDC dc(failure.call, failure.occurrence);
        const HGDIOBJ font = ::GetCurrentObject(dc.m_hDC, OBJ_FONT);
        const HGDIOBJ pen = ::GetCurrentObject(dc.m_hDC, OBJ_PEN);
        OpenText text;
        Prepare(text).SetSelected(1);
        text.Draw(&dc, &scene.geometry);
        ASSERT_EQ(1u, boxes.Texts().size()) << failure.call;
        EXPECT_EQ(std::string(u8"CText::Draw出错:step=") + failure.stage, boxes.Texts()[0]) << failure.call;
        if (std::string(failure.call) != "SelectFont") {
            EXPECT_EQ(font, ::GetCurrentObject(dc.m_hDC, OBJ_FONT)) << failure.call;
        }
        EXPECT_EQ(pen, ::GetCurrentObject(dc.m_hDC, OBJ_PEN)) << failure.call;
        if (std::string(failure.call) == "TextOut") {
            EXPECT_EQ(0u, dc.GetTextColor()) << failure.call;
        }
    }
    BoxAnswer boxes({IDOK});
    RecordingDC dc;
    OpenText text;
    Prepare(text).SetPenColorIndex(-1);
    text.SetLayer(-1);
    text.Draw(&dc, &scene.geometry);
    ASSERT_EQ(1u, boxes.Texts().size());
    EXPECT_EQ(u8"CText::Draw出错:step=0", boxes.Texts()[0]) << "a layer that can't be";
    EXPECT_TRUE(dc.Calls().empty());
}

// ---- CTextParm -----------------------------------------------------------------------------------------------------

TEST(TextParmDraw, AParameterIsNeverDrawnOnABackground) {
    Stage stage;
    OpenParm parm;
    Prepare(parm, L"12.04").SetBKMode(OPAQUE);
    parm.SetBKColor(0x00112233);
    const Calls expected = {"SetBkMode(1)",
                            kFont20,
                            "SetTextColor(0x00123456)",
                            "TextOut(10,579,\"12.04\")",
                            "SelectObject(font default)",
                            "SetTextColor(0x00000000)"};
    EXPECT_TRUE(SameCalls(expected, stage.Draw(parm)));
}

TEST(TextParmDraw, WithoutDecimalsNumbersShowShortAndTheValueStays) {
    Stage stage;
    stage.graphic.SetNeedShowDecimal(0);
    OpenParm parm;
    Prepare(parm, L"12.04");
    EXPECT_EQ("TextOut(10,579,\"12.0\")", stage.Draw(parm)[3]);
    EXPECT_EQ(CString(L"12.04"), parm.GetText());
    parm.SetText(L"0.04");
    EXPECT_EQ("TextOut(10,579,\"\")", stage.Draw(parm)[3]);
    parm.SetText(L"12a");
    EXPECT_EQ("TextOut(10,579,\"12a\")", stage.Draw(parm)[3]);
    OpenText text;
    Prepare(text).SetText(L"12.04");
    EXPECT_EQ("TextOut(10,579,\"12.04\")", stage.Draw(text)[4]) << "plain texts are not numbers";
}

TEST(TextParmDraw, TheRatioWidensTheFontByHalfHeights) {
    Scene scene;
    OpenParm parm;
    Prepare(parm, L"x").SetTextHeight(21.0f);
    for (const auto& [ratio, width] : {std::pair<float, int>{0.0f, 0}, {1.0f, 10}, {1.59f, 15}, {-0.19f, -1}}) {
        FontWatcher dc;
        parm.SetTextRatio(ratio);
        parm.SetAngle(30.9f);
        parm.Draw(&dc, &scene.geometry);
        EXPECT_EQ(width, dc.font.lfWidth) << ratio;
        EXPECT_EQ(300, dc.font.lfEscapement);
        EXPECT_EQ(OUT_TT_PRECIS, dc.font.lfOutPrecision);
    }
    OpenText text;
    Prepare(text).SetTextRatio(2.0f);
    FontWatcher dc;
    text.Draw(&dc, &scene.geometry);
    EXPECT_EQ(0, dc.font.lfWidth) << "a plain text has no use for it";
}

TEST(TextParmDraw, TheHeightIsMeasuredOnceAndKeptThroughZooms) {
    Stage stage;
    OpenParm parm;
    Prepare(parm, L"12").SetTextHeight(40.0f);
    stage.Draw(parm);
    const float measured = parm.m_MinCalHeight;
    EXPECT_EQ(static_cast<float>(SampleHeight(40)), measured);
    stage.Zoom(0.1f);
    stage.Draw(parm);
    EXPECT_EQ(measured, parm.m_MinCalHeight);
    parm.m_MinCalHeight = 0.0f;
    stage.Draw(parm);
    EXPECT_EQ(static_cast<float>(static_cast<double>(static_cast<float>(SampleHeight(400)) * 0.1f)),
              parm.m_MinCalHeight);
}

TEST(TextParmDraw, AnEmptyValueIsMeasuredByTheSample) {
    Stage stage;
    OpenParm parm;
    stage.Draw(Prepare(parm, L""));
    EXPECT_EQ(static_cast<float>(SampleHeight(20)), parm.m_MinCalHeight);
}

TEST(TextParmDraw, SelectedItShowsGripsAndDraggedADottedLine) {
    Stage stage;
    OpenParm parm;
    Prepare(parm, L"x").SetTextWide(30.0f);
    parm.SetSelected(1);
    Calls calls = stage.Draw(parm);
    ASSERT_EQ(14u, calls.size());
    EXPECT_EQ("Rectangle(7,576,14,583)", calls[8]);
    parm.SetDrawState(CDrawable::Dragging);
    const Calls expected = {"SetROP2(6)", "SelectObject(pen style=2 width=0 color=0x00FFFFFF)", "MoveTo(10,579)",
                            "LineTo(40,579)", "SelectObject(pen default)"};
    EXPECT_TRUE(SameCalls(expected, stage.Draw(parm)));
}

TEST(TextParmDraw, AHiddenAndAnErasedParameterDrawNothingAndOneOfTypeFourDraws) {
    Stage stage;
    OpenParm parm;
    Prepare(parm, L"x").SetParmType(4);
    parm.SetNeedEditBox(0);
    EXPECT_EQ(6u, stage.Draw(parm).size());
    parm.SetIsShow(0);
    EXPECT_TRUE(stage.Draw(parm).empty());
    parm.SetIsShow(1);
    parm.m_IsDelete = 1;
    EXPECT_TRUE(stage.Draw(parm).empty());
}

TEST(TextParmDraw, TooSmallOrBoundlessHeightsAreDrawnAtOnePixel) {
    Scene scene;
    OpenParm parm;
    Prepare(parm, L"x").SetTextRatio(kInfinity);
    for (float height : {0.0f, -5.0f, kNaN, kInfinity}) {
        FontWatcher dc;
        parm.SetTextHeight(height);
        parm.Draw(&dc, &scene.geometry);
        EXPECT_EQ(1, dc.font.lfHeight) << height;
    }
}

TEST(DesktopTextDraw, WhateverIsThrownIsShown) {
    Scene scene;
    BoxAnswer boxes({IDOK, IDOK});
    OpenText text;
    OpenParm parm;
    FailingDC first("TextOut", 1, true);
    Prepare(text).Draw(&first, &scene.geometry);
    FailingDC second("TextOut", 1, true);
    Prepare(parm, L"x").Draw(&second, &scene.geometry);
    ASSERT_EQ(2u, boxes.Texts().size());
    EXPECT_EQ(u8"CText::Draw出错:step=31", boxes.Texts()[0]);
    EXPECT_EQ(u8"CTextParm::Draw出错:step=3", boxes.Texts()[1]);
}

TEST(TextDraw, AFontWithoutOutlinesIsDrawnLikeAnyOther) {
    const BitmapFont bitmap;
    Stage stage;
    OpenText text;
    Prepare(text).m_fontFaceName = L"NR Bitmap";
    const Calls expected = {"SetBkMode(1)",
                            "SetBkColor(0x00FFFFFF)",
                            "SelectObject(font height=20 width=0 escapement=0 weight=400 italic=0 face=\"NR Bitmap\")",
                            "SetTextColor(0x00123456)",
                            "TextOut(10,579,\"Ab中\")",
                            "SelectObject(font default)",
                            "SetTextColor(0x00000000)"};
    EXPECT_TRUE(SameCalls(expected, stage.Draw(text)));
    EXPECT_EQ(static_cast<float>(SampleHeight(20, 0, L"NR Bitmap")), text.m_MinCalHeight);
}

TEST(DesktopTextParmDraw, AFailureIsShownWithItsOwnStages) {
    Scene scene;
    const struct {
        const char* call;
        int occurrence;
        const char* stage;
    } failures[] = {{"SetBkMode", 1, "2"},  {"SelectFont", 1, "3"},   {"TextOut", 1, "3"},
                    {"SelectFont", 2, "4"}, {"SetTextColor", 2, "4"}, {"Rectangle", 1, "5"}};
    for (const auto& failure : failures) {
        BoxAnswer boxes({IDOK});
        FailingDC dc(failure.call, failure.occurrence);
        OpenParm parm;
        Prepare(parm, L"x").SetSelected(1);
        parm.Draw(&dc, &scene.geometry);
        ASSERT_EQ(1u, boxes.Texts().size()) << failure.call;
        EXPECT_EQ(std::string(u8"CTextParm::Draw出错:step=") + failure.stage, boxes.Texts()[0]) << failure.call;
    }
    BoxAnswer boxes({IDOK});
    RecordingDC dc;
    OpenParm parm;
    Prepare(parm, L"x").SetPenColorIndex(-1);
    parm.SetLayer(-1);
    parm.Draw(&dc, &scene.geometry);
    ASSERT_EQ(1u, boxes.Texts().size());
    EXPECT_EQ(u8"CTextParm::Draw出错:step=1", boxes.Texts()[0]);
}
