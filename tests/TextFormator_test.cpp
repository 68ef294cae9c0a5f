// CTextFormator: its table of positions, the shifted measure, advances, lines and their rotation.

#include "KLineBreaker.h"
#include "MemoryInfo.h"
#include "TextFormator.h"
#include "TextSteps.h"
#include "support/BitmapFont.h"
#include "support/BoxAnswer.h"
#include "support/TextObjects.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

// A font selected into a picture's device context.
struct Device {
    explicit Device(LPCWSTR face = L"宋体", int height = 24) {
        LOGFONTW description = {};
        description.lfHeight = height;
        description.lfWeight = FW_NORMAL;
        std::wcsncpy(description.lfFaceName, face, LF_FACESIZE - 1);
        font = ::CreateFontIndirectW(&description);
        old = ::SelectObject(canvas.Handle(), font);
    }
    ~Device() {
        ::SelectObject(canvas.Handle(), old);
        ::DeleteObject(font);
    }
    HDC Handle() { return canvas.Handle(); }

    Canvas canvas{64, 64};
    HFONT font;
    HGDIOBJ old;
};

class OpenFormator : public CTextFormator {
public:
    using CTextFormator::m_CharPos;
    using CTextFormator::m_Height;
    using CTextFormator::m_Str;

    // Set up for a text, and then given positions of the test's own.
    void Rig(CString& text, const std::vector<float>& positions, float height) {
        Device device;
        ASSERT_EQ(static_cast<size_t>(text.GetLength()), positions.size());
        ASSERT_EQ(1, SetupPixel(device.Handle(), device.font, 24.0f, text));
        std::copy(positions.begin(), positions.end(), const_cast<float*>(m_CharPos));
        m_Height = height;
    }
    // Ten pixels for each character.
    void RigEven(CString& text, float height = 20.0f) {
        std::vector<float> positions;
        for (int i = 1; i <= text.GetLength(); ++i) {
            positions.push_back(10.0f * static_cast<float>(i));
        }
        Rig(text, positions, height);
    }
};

// One ExtTextOutW as a metafile records it.
struct Output {
    std::wstring text;
    int x;
    int y;
    UINT options;
    std::vector<int> advances;
};

// Everything that is drawn on Handle() until Take.
class Recorder {
public:
    Recorder() : m_hDC(::CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr)) {}
    HDC Handle() { return m_hDC; }
    std::vector<Output> Take() {
        std::vector<Output> outputs;
        const HENHMETAFILE file = ::CloseEnhMetaFile(m_hDC);
        ::EnumEnhMetaFile(nullptr, file, &OnRecord, &outputs, nullptr);
        ::DeleteEnhMetaFile(file);
        return outputs;
    }

private:
    static int CALLBACK OnRecord(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM context) {
        if (record->iType == EMR_EXTTEXTOUTW) {
            const auto* out = reinterpret_cast<const EMREXTTEXTOUTW*>(record);
            const auto* bytes = reinterpret_cast<const BYTE*>(record);
            Output output;
            output.text.assign(reinterpret_cast<const wchar_t*>(bytes + out->emrtext.offString), out->emrtext.nChars);
            output.x = out->emrtext.ptlReference.x;
            output.y = out->emrtext.ptlReference.y;
            output.options = out->emrtext.fOptions & (ETO_OPAQUE | ETO_CLIPPED);
            const auto* advances = reinterpret_cast<const int*>(bytes + out->emrtext.offDx);
            output.advances.assign(advances, advances + out->emrtext.nChars);
            reinterpret_cast<std::vector<Output>*>(context)->push_back(output);
        }
        return 1;
    }

    HDC m_hDC;
};

int Blocks() {
    return CKXMemoryManager::Instance()->GetCount();
}

} // namespace

// ---- Setting up ----------------------------------------------------------------------------------------------------

TEST(TextFormator, ANewFormatorHasNoTableAndNoRotation) {
    OpenFormator formator;
    EXPECT_EQ(nullptr, formator.m_CharPos);
    EXPECT_EQ(0.0, formator.m_Rotation);
}

TEST(TextFormator, TheTableHoldsTheDevicesPositionsOfTheFontAsDrawn) {
    Device device;
    CString text(L"Wi中文.i");
    OpenFormator formator;
    ASSERT_EQ(1, formator.SetupPixel(device.Handle(), device.font, 24.0f, text));
    int expected[6];
    SIZE size;
    ASSERT_TRUE(::GetTextExtentExPointW(device.Handle(), text, 6, 0, nullptr, expected, &size));
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(static_cast<float>(expected[i]), formator.m_CharPos[i]) << i;
    }
    EXPECT_GT(formator.m_CharPos[0], formator.m_CharPos[1] - formator.m_CharPos[0]) << "a W is wider than an i";
    EXPECT_EQ(static_cast<const wchar_t*>(text), formator.m_Str) << "the caller's own buffer";
}

TEST(TextFormator, TheHeightsAreThoseOfTheDesignSizeScaledWithoutRounding) {
    Device device;
    // What the design size measures, by the plain calls.
    OUTLINETEXTMETRICW metrics[3];
    ASSERT_NE(0u, ::GetOutlineTextMetricsW(device.Handle(), 696, metrics));
    const UINT em = metrics->otmEMSquare;
    Device design(L"宋体", -static_cast<int>(em));
    ASSERT_NE(0u, ::GetOutlineTextMetricsW(design.Handle(), 696, metrics));
    const float height = static_cast<float>(metrics->otmTextMetrics.tmHeight);
    const float leading = static_cast<float>(metrics->otmTextMetrics.tmExternalLeading);

    CString text(L"x");
    OpenFormator formator;
    ASSERT_EQ(1, formator.SetupPixel(device.Handle(), device.font, 7.3f, text));
    EXPECT_FLOAT_EQ(height * 7.3f / static_cast<float>(em), formator.m_Height);
    EXPECT_FLOAT_EQ((height + leading) * 7.3f / static_cast<float>(em), formator.GetLinespace());
    EXPECT_NE(std::floor(formator.m_Height), formator.m_Height);
}

TEST(TextFormator, ASizeInPointsIsASeventySecondOfAnInch) {
    Device device;
    ASSERT_EQ(96, ::GetDeviceCaps(device.Handle(), LOGPIXELSY));
    CString text(L"x");
    OpenFormator points;
    OpenFormator pixels;
    ASSERT_EQ(1, points.Setup(device.Handle(), device.font, 54.0f, text));
    ASSERT_EQ(1, pixels.SetupPixel(device.Handle(), device.font, 72.0f, text));
    EXPECT_EQ(pixels.GetLinespace(), points.GetLinespace());
}

TEST(TextFormator, AnEmptyTextHasAnEmptyTable) {
    Device device;
    CString text;
    OpenFormator formator;
    EXPECT_EQ(1, formator.SetupPixel(device.Handle(), device.font, 24.0f, text));
    EXPECT_NE(nullptr, formator.m_CharPos);
    EXPECT_GT(formator.GetLinespace(), 0.0f);
}

TEST(TextFormator, AFontOfPixelsCannotBeSetUp) {
    const BitmapFont bitmap;
    Device device(L"NR Bitmap", 8);
    CString text(L"abc");
    OpenFormator formator;
    EXPECT_EQ(0, formator.Setup(device.Handle(), device.font, 8.0f, text));
    EXPECT_EQ(0, formator.SetupPixel(device.Handle(), device.font, 8.0f, text));
    EXPECT_EQ(nullptr, formator.m_CharPos);
    EXPECT_EQ(static_cast<const wchar_t*>(text), formator.m_Str) << "the text is set already";
}

TEST(TextFormator, WithoutATableNothingIsMeasuredOrDrawn) {
    CString text(L"abc");
    OpenFormator formator;
    EXPECT_EQ(0, formator.SetupPixel(nullptr, nullptr, 8.0f, text));
    float width = 7.0f;
    float height = 7.0f;
    EXPECT_EQ(1, formator.GetTextExtent(nullptr, text, 0, 2, width, height));
    EXPECT_EQ(0.0f, width);
    Recorder recorder;
    const RECT rect = {0, 0, 100, 100};
    EXPECT_EQ(0, formator.TextOutW(recorder.Handle(), 0, 0, text, 0, 3));
    EXPECT_EQ(0ul, formator.DrawTextW(recorder.Handle(), text, -1, &rect, 0));
    EXPECT_TRUE(recorder.Take().empty());
}

TEST(TextFormator, AFailedSecondSetupLeavesNoTable) {
    Device device;
    CString text(L"abc");
    OpenFormator formator;
    ASSERT_EQ(1, formator.SetupPixel(device.Handle(), device.font, 24.0f, text));
    EXPECT_EQ(0, formator.SetupPixel(nullptr, device.font, 24.0f, text));
    EXPECT_EQ(nullptr, formator.m_CharPos);
    ASSERT_EQ(1, formator.SetupPixel(device.Handle(), device.font, 24.0f, text));
    EXPECT_NE(nullptr, formator.m_CharPos);
}

TEST(TextFormator, ItsArraysAreRegisteredAndTakenOffAgain) {
    Device device;
    const int before = Blocks();
    const int unknown = CKXMemoryManager::Instance()->GetUnknownCount();
    {
        CString text(L"abc");
        OpenFormator formator;
        ASSERT_EQ(1, formator.SetupPixel(device.Handle(), device.font, 24.0f, text));
        EXPECT_EQ(before + 1, Blocks()) << "the table; the device's figures are gone";
        EXPECT_TRUE(CKXMemoryManager::Instance()->IsKnown(formator.m_CharPos));
        ASSERT_EQ(1, formator.SetupPixel(device.Handle(), device.font, 24.0f, text));
        EXPECT_EQ(before + 1, Blocks());
        Recorder recorder;
        formator.TextOutW(recorder.Handle(), 0, 0, text, 0, 3);
        recorder.Take();
        EXPECT_EQ(before + 1, Blocks());
    }
    EXPECT_EQ(before, Blocks());
    EXPECT_EQ(unknown, CKXMemoryManager::Instance()->GetUnknownCount());
}

TEST(TextFormator, ACopySharesTheTableWithItsSource) {
    Device device;
    const int before = Blocks();
    CString text(L"abc");
    {
        OpenFormator copy;
        {
            OpenFormator source;
            source.m_Rotation = 1.5;
            ASSERT_EQ(1, source.SetupPixel(device.Handle(), device.font, 24.0f, text));
            copy = source;
            const OpenFormator second(source);
            EXPECT_EQ(source.m_CharPos, copy.m_CharPos);
            EXPECT_EQ(source.m_CharPos, second.m_CharPos);
            EXPECT_EQ(1.5, copy.m_Rotation);
            EXPECT_EQ(source.m_Str, copy.m_Str);
            EXPECT_EQ(source.GetLinespace(), copy.GetLinespace());
        }
        EXPECT_EQ(before + 1, Blocks()) << "the copy still has it";
        float width = 0.0f;
        float height = 0.0f;
        copy.GetTextExtent(nullptr, text, 0, 1, width, height);
        EXPECT_GT(width, 0.0f);
    }
    EXPECT_EQ(before, Blocks());
}

TEST(TextFormator, SetupsLeakNoDeviceContextsAndFonts) {
    // Handles run out at about 65,500 a process, and each setup makes one of either kind.
    Device device;
    CString text(L"x");
    CTextFormator formator;
    for (int i = 0; i < 70000; ++i) {
        ASSERT_EQ(1, formator.SetupPixel(device.Handle(), device.font, 24.0f, text)) << i;
    }
}

// ---- Measuring -----------------------------------------------------------------------------------------------------

TEST(TextFormator, TheMeasureIsOneCharacterFurtherOnThanTheNamedPart) {
    CString text(L"abcd");
    OpenFormator formator;
    formator.Rig(text, {10.0f, 30.0f, 60.0f, 100.0f}, 17.5f);
    float width = 0.0f;
    float height = 0.0f;
    EXPECT_EQ(1, formator.GetTextExtent(nullptr, text, 0, 2, width, height));
    EXPECT_EQ(50.0f, width) << "60 - 10: the characters b and c";
    EXPECT_EQ(17.5f, height);
    EXPECT_EQ(1, formator.GetTextExtent(nullptr, text, 1, 1, width, height));
    EXPECT_EQ(30.0f, width);
}

TEST(TextFormator, APartThatEndsWithTheTextTakesTheLastEntryForTheMissingOne) {
    CString text(L"abcd");
    OpenFormator formator;
    formator.Rig(text, {10.0f, 30.0f, 60.0f, 100.0f}, 17.5f);
    float width = 0.0f;
    float height = 0.0f;
    formator.GetTextExtent(nullptr, text, 1, 3, width, height);
    EXPECT_EQ(70.0f, width) << "100 - 30";
    formator.GetTextExtent(nullptr, text, 3, 1, width, height);
    EXPECT_EQ(0.0f, width);
}

TEST(TextFormator, AnIndexOutsideTheTableTakesTheNearestEntry) {
    CString text(L"abcd");
    OpenFormator formator;
    formator.Rig(text, {10.0f, 30.0f, 60.0f, 100.0f}, 17.5f);
    float width = 0.0f;
    float height = 0.0f;
    formator.GetTextExtent(nullptr, text, -5, 6, width, height);
    EXPECT_EQ(20.0f, width) << "from the first entry to the one of index 1";
    formator.GetTextExtent(nullptr, text, 2, 1000, width, height);
    EXPECT_EQ(40.0f, width);
    formator.GetTextExtent(nullptr, text, INT_MAX, INT_MAX, width, height);
    EXPECT_EQ(0.0f, width);
    formator.GetTextExtent(nullptr, text, INT_MIN, 1, width, height);
    EXPECT_EQ(0.0f, width);
}

TEST(TextFormator, ACountBelowOneMeansTheTextsOwnLength) {
    CString text(L"abcd");
    OpenFormator formator;
    formator.Rig(text, {10.0f, 30.0f, 60.0f, 100.0f}, 17.5f);
    float width = 0.0f;
    float height = 0.0f;
    for (int count : {0, -1, INT_MIN}) {
        formator.GetTextExtent(nullptr, L"ab", 0, count, width, height);
        EXPECT_EQ(50.0f, width) << count;
    }
}

// ---- Drawing one stretch -------------------------------------------------------------------------------------------

TEST(TextFormator, EachAdvanceIsTruncatedOnItsOwn) {
    CString text(L"abcdef");
    OpenFormator formator;
    formator.Rig(text, {10.9f, 30.7f, 30.7f, 25.0f, 44.9f, 65.8f}, 20.0f);
    Recorder recorder;
    EXPECT_NE(0, formator.TextOutW(recorder.Handle(), 5, -7, text, 0, 6));
    const std::vector<Output> out = recorder.Take();
    ASSERT_EQ(1u, out.size());
    EXPECT_EQ(L"abcdef", out[0].text);
    EXPECT_EQ(5, out[0].x);
    EXPECT_EQ(-7, out[0].y);
    EXPECT_EQ(0u, out[0].options) << "no clip rectangle and no background";
    // 10.9; 19.8; nothing; backwards counts as nothing; 19.9; 20.9. Carrying on would have made one of them larger.
    EXPECT_EQ((std::vector<int>{10, 19, 0, 0, 19, 20}), out[0].advances);
}

TEST(TextFormator, APartBeginsAtItsOwnEntryOfTheTable) {
    CString text(L"abcd");
    OpenFormator formator;
    formator.Rig(text, {10.0f, 30.0f, 60.0f, 100.0f}, 20.0f);
    Recorder recorder;
    formator.TextOutW(recorder.Handle(), 0, 0, static_cast<const wchar_t*>(text) + 2, 2, 2);
    const std::vector<Output> out = recorder.Take();
    ASSERT_EQ(1u, out.size());
    EXPECT_EQ(L"cd", out[0].text);
    EXPECT_EQ((std::vector<int>{30, 40}), out[0].advances);
}

TEST(TextFormator, ACountBeyondTheTableEndsWithTheText) {
    CString text(L"abcd");
    OpenFormator formator;
    formator.RigEven(text);
    Recorder recorder;
    formator.TextOutW(recorder.Handle(), 0, 0, text, 0, INT_MAX);
    formator.TextOutW(recorder.Handle(), 0, 0, L"abcdef", 0, 6);
    formator.TextOutW(recorder.Handle(), 0, 0, L"xy", 100, 2);
    const std::vector<Output> out = recorder.Take();
    ASSERT_EQ(3u, out.size());
    EXPECT_EQ(L"abcd", out[0].text);
    EXPECT_EQ((std::vector<int>{10, 10, 10, 10}), out[0].advances);
    EXPECT_EQ(L"abcdef", out[1].text) << "a longer text: the last entry is used again for what follows";
    EXPECT_EQ((std::vector<int>{10, 10, 10, 10, 0, 0}), out[1].advances);
    EXPECT_EQ((std::vector<int>{0, 0}), out[2].advances);
}

TEST(TextFormator, ANegativeCountOrPlaceDoesNoHarm) {
    CString text(L"abcd");
    OpenFormator formator;
    formator.RigEven(text);
    Recorder recorder;
    formator.TextOutW(recorder.Handle(), 0, 0, text, 0, -3);
    formator.TextOutW(recorder.Handle(), 0, 0, text, -2, 4);
    formator.TextOutW(recorder.Handle(), 0, 0, nullptr, 0, 4);
    const std::vector<Output> out = recorder.Take();
    ASSERT_FALSE(out.empty());
    EXPECT_EQ((std::vector<int>{0, 0, 10, 10}), out.back().advances);
}

// ---- Lines ---------------------------------------------------------------------------------------------------------

TEST(TextFormator, ALineEndsWithTheWordThatReachesTheWidth) {
    CString text(L"aaa bbb ccc");
    OpenFormator formator;
    formator.RigEven(text, 20.0f);
    Recorder recorder;
    // "aaa" measures 30; "aaa bbb" measures 70 and stays whole on the line of 50.
    const RECT rect = {5, 7, 55, 8};
    EXPECT_EQ(40ul, formator.DrawTextW(recorder.Handle(), text, -1, &rect, 0xFFFF));
    const std::vector<Output> out = recorder.Take();
    ASSERT_EQ(2u, out.size()) << "the rectangle's bottom limits nothing";
    EXPECT_EQ(L"aaa bbb", out[0].text);
    EXPECT_EQ(5, out[0].x);
    EXPECT_EQ(7, out[0].y);
    EXPECT_EQ(L"ccc", out[1].text);
    EXPECT_EQ(5, out[1].x);
    EXPECT_EQ(27, out[1].y);
    EXPECT_EQ((std::vector<int>{10, 10, 10}), out[1].advances);
}

TEST(TextFormator, LinesBreakByTheShiftedMeasure) {
    CString text(L"aa bb cc");
    OpenFormator formator;
    // The blank after "aa" is 100 wide: it counts in the measure of "aa", of which the first character doesn't.
    formator.Rig(text, {10, 20, 120, 130, 140, 150, 160, 170}, 20.0f);
    Recorder recorder;
    const RECT rect = {0, 0, 105, 0};
    formator.DrawTextW(recorder.Handle(), text, -1, &rect, 0);
    const std::vector<Output> out = recorder.Take();
    ASSERT_EQ(2u, out.size());
    EXPECT_EQ(L"aa", out[0].text) << "120 - 10, though the word itself is 20 wide";
    EXPECT_EQ(L"bb cc", out[1].text);
}

TEST(TextFormator, TheWidthCountsAsReachedAThousandthOfAPixelBefore) {
    CString text(L"aaa bbb ccc");
    OpenFormator formator;
    formator.RigEven(text);
    for (const auto& [width, lines] : {std::pair<int, size_t>{30, 3}, {31, 2}}) {
        Recorder recorder;
        const RECT rect = {0, 0, width, 0};
        formator.DrawTextW(recorder.Handle(), text, -1, &rect, 0);
        EXPECT_EQ(lines, recorder.Take().size()) << width;
    }
    const_cast<float*>(formator.m_CharPos)[3] = 39.9995f; // "aaa" now measures 29.9995.
    Recorder recorder;
    const RECT rect = {0, 0, 30, 0};
    formator.DrawTextW(recorder.Handle(), text, -1, &rect, 0);
    EXPECT_EQ(L"aaa", recorder.Take().front().text);
    const_cast<float*>(formator.m_CharPos)[3] = 39.998f; // 29.998: two thousandths short.
    Recorder wider;
    formator.DrawTextW(wider.Handle(), text, -1, &rect, 0);
    EXPECT_EQ(L"aaa bbb", wider.Take().front().text);
}

TEST(TextFormator, TheNextLineKeepsTheFractionOfTheHeightAndTheSumDoesNot) {
    CString text(L"a b c d");
    OpenFormator formator;
    formator.RigEven(text, 10.75f);
    Recorder recorder;
    const RECT rect = {0, 0, 1, 0};
    EXPECT_EQ(40ul, formator.DrawTextW(recorder.Handle(), text, -1, &rect, 0)) << "four times 10";
    const std::vector<Output> out = recorder.Take();
    ASSERT_EQ(4u, out.size());
    EXPECT_EQ(10, out[1].y);
    EXPECT_EQ(21, out[2].y) << "21.5, truncated";
    EXPECT_EQ(32, out[3].y) << "32.25";
}

TEST(TextFormator, LinesTurnAboutTheTopLeftCornerOfTheRectangle) {
    CString text(L"a b c");
    OpenFormator formator;
    formator.RigEven(text, 20.5f);
    formator.m_Rotation = 1.57079632675;
    Recorder recorder;
    const RECT rect = {100, 50, 101, 0};
    formator.DrawTextW(recorder.Handle(), text, -1, &rect, 0);
    const std::vector<Output> out = recorder.Take();
    ASSERT_EQ(3u, out.size());
    EXPECT_EQ(100, out[0].x);
    EXPECT_EQ(50, out[0].y);
    // A quarter turn: the lines below are to the left by 20.5 and 41.
    EXPECT_EQ(79, out[1].x);
    EXPECT_EQ(50, out[1].y);
    EXPECT_EQ(59, out[2].x);
}

TEST(TextFormator, TurnedLinesLeftOfThePictureAreTruncatedTowardsZero) {
    CString text(L"a b c");
    OpenFormator formator;
    formator.RigEven(text, 20.5f);
    formator.m_Rotation = 1.57079632675;
    Recorder recorder;
    const RECT rect = {0, 50, 1, 0};
    formator.DrawTextW(recorder.Handle(), text, -1, &rect, 0);
    const std::vector<Output> out = recorder.Take();
    ASSERT_EQ(3u, out.size());
    EXPECT_EQ(-20, out[1].x) << "-20.5";
    EXPECT_EQ(-41, out[2].x);
}

TEST(TextFormator, ALineFeedAndATabStartNoLineAndTrailingBlanksAreTrimmed) {
    CString text(L" \ta\nb\t c \n");
    OpenFormator formator;
    formator.RigEven(text);
    Recorder recorder;
    const RECT rect = {0, 0, 1000, 0};
    formator.DrawTextW(recorder.Handle(), text, -1, &rect, 0);
    const std::vector<Output> out = recorder.Take();
    ASSERT_EQ(1u, out.size());
    EXPECT_EQ(L"a\nb\t c", out[0].text);
    EXPECT_EQ((std::vector<int>{10, 10, 10, 10, 10, 10}), out[0].advances);
}

TEST(TextFormator, AWordIsNeverSplit) {
    CString text(L"wwwwwwwwww a");
    OpenFormator formator;
    formator.RigEven(text);
    Recorder recorder;
    const RECT rect = {0, 0, 20, 0};
    formator.DrawTextW(recorder.Handle(), text, -1, &rect, 0);
    const std::vector<Output> out = recorder.Take();
    ASSERT_EQ(2u, out.size());
    EXPECT_EQ(L"wwwwwwwwww", out[0].text);
}

TEST(TextFormator, NoTextAndNothingButBlanksDrawNothing) {
    CString text(L" \t\n 　");
    OpenFormator formator;
    formator.RigEven(text);
    Recorder recorder;
    const RECT rect = {0, 0, 10, 0};
    EXPECT_EQ(0ul, formator.DrawTextW(recorder.Handle(), nullptr, -1, &rect, 0));
    EXPECT_EQ(0ul, formator.DrawTextW(recorder.Handle(), text, -1, &rect, 0));
    EXPECT_EQ(0ul, formator.DrawTextW(recorder.Handle(), nullptr, 5, nullptr, 0));
    EXPECT_TRUE(recorder.Take().empty());
}

TEST(TextFormator, ATextOfOneWordIsDrawnWithoutBeingMeasured) {
    CString text(L"word");
    OpenFormator formator;
    formator.RigEven(text);
    Recorder recorder;
    const RECT rect = {3, 4, 5, 6};
    formator.DrawTextW(recorder.Handle(), text, 4, &rect, 0);
    const std::vector<Output> out = recorder.Take();
    ASSERT_EQ(1u, out.size());
    EXPECT_EQ(L"word", out[0].text);
    EXPECT_EQ(4, out[0].y);
}

TEST(TextFormator, APositiveCountLimitsTheTextAndOneBeyondItEndsWithIt) {
    CString text(L"aa bb cc");
    OpenFormator formator;
    formator.RigEven(text);
    const RECT rect = {0, 0, 1000, 0};
    for (const auto& [count, drawn] : {std::pair<int, const wchar_t*>{4, L"aa b"},
                                       {1, L"a"},
                                       {0, L"aa bb cc"},
                                       {-7, L"aa bb cc"},
                                       {INT_MAX, L"aa bb cc"}}) {
        Recorder recorder;
        formator.DrawTextW(recorder.Handle(), text, count, &rect, 0);
        const std::vector<Output> out = recorder.Take();
        ASSERT_EQ(1u, out.size()) << count;
        EXPECT_EQ(drawn, out[0].text) << count;
    }
}

TEST(TextFormator, ALongTextTakesTimeInProportion) {
    Device device;
    CString text;
    for (int i = 0; i < 25000; ++i) {
        text += L"abc ";
    }
    OpenFormator formator;
    const DWORD start = ::GetTickCount();
    ASSERT_EQ(1, formator.SetupPixel(device.Handle(), device.font, 24.0f, text));
    const RECT rect = {0, 0, 1000, 0};
    EXPECT_GT(formator.DrawTextW(device.Handle(), text, -1, &rect, 0), 1000ul);
    const RECT wide = {0, 0, INT_MAX, 0};
    formator.DrawTextW(device.Handle(), text, -1, &wide, 0);
    // A stage text for each of the 25,000 words would copy 5 GB.
    EXPECT_LT(::GetTickCount() - start, 20000u);
}

// ---- Words ---------------------------------------------------------------------------------------------------------

namespace {

// The lines of a text when each word fills one.
std::vector<std::wstring> Words(LPCWSTR letters) {
    CString text(letters);
    OpenFormator formator;
    formator.RigEven(text);
    KLineBreaker breaker(text, text.GetLength(), 0.0f);
    std::vector<std::wstring> words;
    int begin = 0;
    int end = 0;
    while (breaker.GetLine(formator, nullptr, 0, begin, end) != 0) {
        words.emplace_back(static_cast<const wchar_t*>(text) + begin, static_cast<size_t>(end - begin));
    }
    return words;
}

using WordList = std::vector<std::wstring>;

} // namespace

TEST(KLineBreaker, CharactersAreClassedByTheirLowEightBitsAlone) {
    EXPECT_TRUE(KLineBreaker::IsBlank(L' '));
    EXPECT_TRUE(KLineBreaker::IsBlank(L'\n'));
    EXPECT_TRUE(KLineBreaker::IsBlank(0x3000)) << "the wide blank";
    EXPECT_TRUE(KLineBreaker::IsBlank(0x4E20)) << "a Chinese character, low byte 0x20";
    EXPECT_TRUE(KLineBreaker::IsBlank(0x4E00)) << "the numeral one, low byte 0";
    EXPECT_FALSE(KLineBreaker::IsBlank(0x4E21));
    EXPECT_FALSE(KLineBreaker::IsBlank(0x00A0)) << "low byte 0xA0";
    EXPECT_TRUE(KLineBreaker::IsHigh(0x0080));
    EXPECT_TRUE(KLineBreaker::IsHigh(0x6587)) << "low byte 0x87";
    EXPECT_FALSE(KLineBreaker::IsHigh(0x4E2D)) << "low byte 0x2D";
    EXPECT_FALSE(KLineBreaker::IsHigh(L'z'));
}

TEST(KLineBreaker, TwoHighCharactersInARowEndAWord) {
    EXPECT_EQ((WordList{L"\x6587\x6587", L"\x6587\x6587"}), Words(L"\x6587\x6587\x6587\x6587"));
    EXPECT_EQ((WordList{L"\x6587\x6587", L"\x6587"}), Words(L"\x6587\x6587\x6587"));
    EXPECT_EQ((WordList{L"a\x6587\x6587", L"b"}), Words(L"a\x6587\x6587"
                                                        L"b"))
        << "the pair ends the word that it is in";
    EXPECT_EQ((WordList{L"\x6587\x4E2D\x6587\x4E2D"}), Words(L"\x6587\x4E2D\x6587\x4E2D")) << "never two in a row";
}

TEST(KLineBreaker, FourCharactersWithLowBytesBelow128AreOneWord) {
    EXPECT_EQ((WordList{L"\x4E2D\x4E2D\x4E2D\x4E2D"}), Words(L"\x4E2D\x4E2D\x4E2D\x4E2D"));
}

TEST(KLineBreaker, AChineseCharacterWithALowByteOf32SeparatesWords) {
    EXPECT_EQ((WordList{L"\x4E2D", L"\x4E2D"}), Words(L"\x4E2D\x4E20\x4E2D"));
}

TEST(KLineBreaker, SurrogatesOfAPairStayTogetherWhenTheirBytesAreLow) {
    // U+2010F: D840 DD0F, the second one with a low byte of 15, a blank.
    EXPECT_EQ((WordList{L"\xD840"}), Words(L"\xD840\xDD0F"));
    // U+20040: D840 DC40.
    EXPECT_EQ((WordList{L"\xD840\xDC40"}), Words(L"\xD840\xDC40"));
}

TEST(KLineBreaker, TheLastWordIsNotMeasured) {
    CString text(L"aa bb");
    OpenFormator formator;
    formator.RigEven(text, 33.0f);
    KLineBreaker breaker(text, 5, 1.5f);
    int begin = -1;
    int end = -1;
    ASSERT_EQ(1, breaker.GetLine(formator, nullptr, 1000, begin, end));
    EXPECT_EQ(0, begin);
    EXPECT_EQ(5, end);
    EXPECT_EQ(20.0f, breaker.GetWidth()) << "of the first word";
    EXPECT_EQ(33.0f, breaker.GetHeight());
    EXPECT_EQ(0, breaker.GetLine(formator, nullptr, 1000, begin, end));

    KLineBreaker single(text, 2, 1.5f);
    ASSERT_EQ(1, single.GetLine(formator, nullptr, 1, begin, end));
    EXPECT_EQ(0.0f, single.GetWidth());
    EXPECT_EQ(1.5f, single.GetHeight());
}

TEST(KLineBreaker, BlanksAtTheEndBelongToTheLineAndTheirEndIsTheTexts) {
    CString text(L"aa  ");
    OpenFormator formator;
    formator.RigEven(text);
    KLineBreaker breaker(text, 4, 0.0f);
    int begin = -1;
    int end = -1;
    ASSERT_EQ(1, breaker.GetLine(formator, nullptr, 1000, begin, end));
    EXPECT_EQ(4, end);
}

// ---- Messages of failures ------------------------------------------------------------------------------------------

TEST(TextFormator, StagesOfAMeasureTellItsValues) {
    using namespace TextSteps;
    EXPECT_EQ(CString(L"300000"), OfExtent(Extent::Entered, L"m", L"t", 1, 2, 3.9f));
    EXPECT_EQ(CString(L"300001:lpString=t"), OfExtent(Extent::Counting, L"m", L"t", 1, 2, 3.9f));
    EXPECT_EQ(CString(L"300002:m_Str=mm,iLen=2,lpString=t,startPos=1,cbString=2)"),
              OfExtent(Extent::Measuring, L"mm", L"t", 1, 2, 3.9f))
        << "the closing bracket has no opening one";
    EXPECT_EQ(CString(L"300003:width=3"), OfExtent(Extent::Measured, L"m", L"t", 1, 2, 3.9f));
}

TEST(TextFormator, StagesOfALineTellItsValues) {
    using namespace TextSteps;
    EXPECT_EQ(CString(L"30000"), OfLine(Line::Entered, L"t", 1, 2, 3, 4));
    EXPECT_EQ(CString(L"30001"), OfLine(Line::Skipped, L"t", 1, 2, 3, 4));
    EXPECT_EQ(CString(L"30002"), OfLine(Line::AtWord, L"t", 1, 2, 3, 4));
    EXPECT_EQ(CString(L"30003:m_pText=t,m_nPos=1,begin=2"), OfLine(Line::Measuring, L"t", 1, 2, 3, 4));
    EXPECT_EQ(CString(L"30004:m_pText=t,begin=2,textwidth=3,textHeight=4"),
              OfLine(Line::Measured, L"t", 1, 2, 3.9f, 4.9f));
}

TEST(TextFormator, StagesOfADrawingTellItsValues) {
    using namespace TextSteps;
    EXPECT_EQ(CString(L"300"), OfDraw(Draw::Entered, L"t", 1, 2.9f, 3, 4, 5));
    EXPECT_EQ(CString(L"301:x=1,y=2"), OfDraw(Draw::Placed, L"t", 1, 2.9f, 3, 4, 5));
    EXPECT_EQ(CString(L"302:width=3"), OfDraw(Draw::Sized, L"t", 1, 2.9f, 3, 4, 5));
    EXPECT_EQ(CString(L"302:width=3,begin=4,end=5"), OfDraw(Draw::AtLine, L"t", 1, 2.9f, 3, 4, 5));
    EXPECT_EQ(CString(L"304:pString=t,x=1,y=2,width=3,begin=4,end=5"), OfDraw(Draw::LineOut, L"t", 1, 2.9f, 3, 4, 5));
}

TEST(DesktopTextFormator, AFailureIsShownWithItsStageAndSurvived) {
    BoxAnswer boxes({IDOK});
    CString text(L"ab");
    OpenFormator formator;
    formator.RigEven(text);
    float width = 0.0f;
    float height = 0.0f;
    EXPECT_EQ(1, formator.GetTextExtent(nullptr, nullptr, 0, 0, width, height));
    EXPECT_EQ(0ul, formator.DrawTextW(nullptr, text, -1, nullptr, 0));
    KLineBreaker breaker(nullptr, 3, 0.0f);
    int begin = 0;
    int end = 0;
    EXPECT_EQ(1, breaker.GetLine(formator, nullptr, 10, begin, end));
    ASSERT_EQ(3u, boxes.Texts().size());
    EXPECT_EQ(u8"CTextFormator::GetTextExtent错误:strStep=300001:lpString=(null)", boxes.Texts()[0]);
    EXPECT_EQ(u8"CTextFormator::DrawText出错，step=300", boxes.Texts()[1]);
    EXPECT_EQ(u8"KLineBreaker::GetLine出错:strStep=30000", boxes.Texts()[2]);
}
