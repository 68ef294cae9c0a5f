// Drawings from mutated streams, painted for good: whatever fonts, pens, coordinates and scale they ask for, no paint
// faults and none takes long.

#include "DrawGeometry.h"
#include "PLine.h"
#include "VectorGraphic.h"
#include "support/RecordingDC.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

#ifdef NR_GUARDED
constexpr int kRounds = 2500; // each block of memory has pages of its own, which takes many times as long
#else
constexpr int kRounds = 25000;
#endif

// Every kind, in every form that has fields of its own.
const char* const kFiles[] = {
    "text_schema5",   "text_schema5",     "text_version5",       "parm_schema5", "parm_schema5",  "parm_version5",
    "label_version6", "texts_mixed",      "line_schema5",        "lines_two",    "pline_schema5", "circle_schema5",
    "arc_schema5",    "combrect_schema5", "centerpoint_schema5", "curves",       "curves"};

// Bit patterns: whole numbers, floats and the upper halves of doubles at which something ends.
const unsigned kExtremes[] = {0,          1,          0xFFFFFFFF, 0x7FFFFFFF, 0x80000000, 0x7FC00000, 0x7F800000,
                              0x7E967699, 0x447A0000, 0x46FFFE00, 0x47C35000, 0x4E6E6B28, 0xCE6E6B28, 0x43F00000,
                              0x7FF00000, 0x7FEFFFFF, 0x40C38800, 0x41CDCD65, 0xC1CDCD65, 0x3A83126F};

// The processor time of this thread in milliseconds: other programs on the machine don't count.
double SpentTime() {
    FILETIME made;
    FILETIME ended;
    ULARGE_INTEGER kernel;
    ULARGE_INTEGER user;
    ::GetThreadTimes(::GetCurrentThread(), &made, &ended, reinterpret_cast<FILETIME*>(&kernel),
                     reinterpret_cast<FILETIME*>(&user));
    return static_cast<double>(kernel.QuadPart + user.QuadPart) / 10000;
}

Bytes Mutated(const Bytes& golden, std::mt19937& random) {
    Bytes bytes = golden;
    for (unsigned i = random() % 4; i < 4; ++i) {
        // After the version word, which would end in a message. Mostly whole fields change: a single byte in the middle
        // of a number rarely makes it large.
        const size_t at = 4 + random() % (bytes.size() - 4);
        if (random() % 3 == 0) {
            bytes[at] = static_cast<BYTE>(random());
        } else {
            const unsigned value = kExtremes[random() % std::size(kExtremes)];
            std::memcpy(bytes.data() + at, &value, std::min<size_t>(4, bytes.size() - at));
        }
    }
    return bytes;
}

// Drawing of these is known to end in a message box, which is tested where it belongs.
bool Speaks(CDrawable& object) {
    auto* line = DYNAMIC_DOWNCAST(CPLine, &object);
    return object.GetLayer() < 0 || (line != nullptr && line->IsClosed() != 0 && line->GetPointList()->IsEmpty());
}

void PaintMutations(unsigned seed, int rounds) {
    std::vector<Bytes> goldens;
    for (const char* name : kFiles) {
        goldens.push_back(ReadTestData(std::string(name) + ".nrv"));
    }
    std::mt19937 random(seed);
    RecordingDC dc(400, 300);
    CVectorGraphic graphic;
    LoneDocument lone;
    graphic.SetVectorViewCoordTran(&lone.tran);
    CDrawGeometry geometry(&graphic, nullptr);
    geometry.SetLayerManager(graphic.GetDocument()->GetLayerManager());
    int painted = 0;
    double longest = 0;
    int longestRound = 0;
    for (int round = 0; round < rounds; ++round) {
        lone.LoadRaw(Mutated(goldens[random() % goldens.size()], random));
        const auto state = static_cast<CDrawable::DrawState>(random() % 3);
        dc.Clear();
        const double begin = SpentTime();
        for (INT_PTR i = 0; i < lone.Objects().GetSize(); ++i) {
            CDrawable& object = *lone.Objects()[i];
            if (!Speaks(object)) {
                object.SetDrawState(state);
                object.Draw(&dc, &geometry);
                ++painted;
            }
        }
        const double time = SpentTime() - begin;
        if (time > longest) {
            longest = time;
            longestRound = round;
        }
        ASSERT_LT(time, 2000) << "seed " << seed << ", round " << round;
    }
    testing::Test::RecordProperty("longest_milliseconds", std::to_string(longest));
    std::printf("seed %u: %d rounds, %d objects painted, the longest paint %.0f ms (round %d)\n", seed, rounds, painted,
                longest, longestRound);
    EXPECT_GT(painted, rounds / 2) << "most mutations should still load something";
}

} // namespace

// A suite each, so that they run side by side.
TEST(MutatedPaint1, PaintsEndWithoutAFaultAndWithinTwoSeconds) {
    PaintMutations(1, kRounds);
}

TEST(MutatedPaint2, PaintsEndWithoutAFaultAndWithinTwoSeconds) {
    PaintMutations(2, kRounds);
}

TEST(MutatedPaint3, PaintsEndWithoutAFaultAndWithinTwoSeconds) {
    PaintMutations(3, kRounds);
}

TEST(MutatedPaint4, PaintsEndWithoutAFaultAndWithinTwoSeconds) {
    PaintMutations(4, kRounds);
}
