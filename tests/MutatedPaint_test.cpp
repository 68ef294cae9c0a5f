// Drawings from mutated streams, used as a user does: whatever fonts, pens, coordinates and scale they ask for, no
// paint, hit test, grip or property faults, no paint takes long, and what is saved again can be loaded.

#include "DrawGeometry.h"
#include "PLine.h"
#include "VectorGraphic.h"
#include "support/FaultNote.h"
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
bool ShowsBox(CDrawable& object) {
    auto* line = DYNAMIC_DOWNCAST(CPLine, &object);
    return object.GetLayer() < 0 || (line != nullptr && line->IsClosed() != 0 && line->GetPointList()->IsEmpty());
}

// A step of a user. Where a stream's lists do not fit each other, such as vertices and bulges, an operation may end in
// the invalid-argument exception of the array, and in nothing else.
template <class Step>
void Try(Step step) {
    try {
        step();
    } catch (CInvalidArgException* e) {
        e->Delete();
    }
}

// The hit test, a grip moved, the extent, and every row read, marked as changed and taken back.
void Use(CDrawable& object, CVectorViewCoordTran& tran, std::mt19937& random) {
    const CGePoint2d p(static_cast<double>(random() % 500), static_cast<double>(random() % 500));
    const unsigned number = static_cast<unsigned>(random());
    Try([&] { object.HitTest(p); });
    Try([&] {
        CGePointArray grips;
        object.getGripPoints(grips, static_cast<int>(number % 16));
        object.GetClosetPt(p, grips);
    });
    Try([&] {
        CGePointArray grips;
        object.getGripPoints(grips, kGripPainted);
        if (grips.GetSize() > 0) {
            int index = static_cast<int>(number % static_cast<unsigned>(std::min<INT_PTR>(grips.GetSize(), 1000)));
            CIndexArray indices;
            indices.Add(index);
            object.moveGripPointsAt(indices, CGeVector2d(10, -5));
        }
    });
    Try([&] {
        CGePoint2d low;
        CGePoint2d high;
        object.GetRect(&tran, low, high);
    });
    CDrawableProperty rows;
    Try([&] { object.GetProperty(rows); });
    for (int i = 0; i < rows.GetSize(); ++i) {
        rows.GetRow(i)->m_Changed = 1;
    }
    Try([&] { object.SetProperty(rows); });
    rows.Clear();
    Try([&] { object.transformBy(CGeMatrix2d::rotation(0.3, p)); });
}

// For a run by hand: NR_ROUNDS replaces the number of rounds of each suite, NR_SEED is added to its seed. To repeat a
// fault, NR_FROM is the first round that is painted, and the stream of that round is written to the file NR_FILE.
int FromEnvironment(const wchar_t* name, int otherwise) {
    wchar_t text[16] = {};
    return ::GetEnvironmentVariableW(name, text, 16) != 0 ? _wtoi(text) : otherwise;
}

void KeepStream(const Bytes& bytes) {
    wchar_t path[MAX_PATH] = {};
    if (::GetEnvironmentVariableW(L"NR_FILE", path, MAX_PATH) != 0) {
        CFile(path, CFile::modeCreate | CFile::modeWrite).Write(bytes.data(), static_cast<UINT>(bytes.size()));
    }
}

void PaintMutations(unsigned seed, int rounds) {
    rounds = FromEnvironment(L"NR_ROUNDS", rounds);
    seed += static_cast<unsigned>(FromEnvironment(L"NR_SEED", 0));
    std::vector<Bytes> goldens;
    for (const char* name : kFiles) {
        goldens.push_back(ReadTestData(std::string(name) + ".nrv"));
    }
    std::mt19937 random(seed);
    RecordingDC dc(400, 300);
    CVectorGraphic graphic;
    LoneDocument lone;
    LoneDocument again;
    graphic.SetVectorViewCoordTran(&lone.tran);
    CDrawGeometry geometry(&graphic, nullptr);
    geometry.SetLayerManager(graphic.GetDocument()->GetLayerManager());
    const int from = FromEnvironment(L"NR_FROM", 0);
    int painted = 0;
    int unlike = 0;
    double longest = 0;
    int longestRound = 0;
    for (int round = 0; round < rounds; ++round) {
        const Bytes& golden = goldens[random() % goldens.size()];
        const Bytes bytes = Mutated(golden, random);
        lone.LoadRaw(bytes);
        NoteForFault("seed " + std::to_string(seed) + ", round " + std::to_string(round));
        const auto state = static_cast<CDrawable::DrawState>(random() % 3);
        dc.Clear();
        if (from != 0 && round == from) {
            KeepStream(bytes);
        }
        const double begin = SpentTime();
        for (INT_PTR i = 0; i < lone.Objects().GetSize(); ++i) {
            CDrawable& object = *lone.Objects()[i];
            if (round >= from && !ShowsBox(object)) {
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
        for (INT_PTR i = 0; i < lone.Objects().GetSize(); ++i) {
            Use(*lone.Objects()[i], lone.tran, random);
        }
        const Bytes saved = lone.Store();
        ASSERT_EQ(-1, again.LoadRaw(saved)) << "seed " << seed << ", round " << round;
        // The first round may quiet a not-a-number.
        const Bytes stored = again.Store();
        ASSERT_EQ(-1, again.LoadRaw(stored)) << "seed " << seed << ", round " << round;
        unlike += again.Store() == stored ? 0 : 1;
    }
    testing::Test::RecordProperty("longest_milliseconds", std::to_string(longest));
    std::printf("seed %u: %d rounds, %d objects painted, the longest paint %.0f ms (round %d)\n", seed, rounds, painted,
                longest, longestRound);
    EXPECT_EQ(0, unlike) << "what was stored and loaded is stored alike";
    EXPECT_GT(painted, (rounds - from) / 2) << "most mutations should still load something";
}

} // namespace

// A suite each, so that they run side by side.
TEST(MutatedPaint1, AreUsedWithoutAFaultAndPaintedWithinTwoSeconds) {
    PaintMutations(1, kRounds);
}

TEST(MutatedPaint2, AreUsedWithoutAFaultAndPaintedWithinTwoSeconds) {
    PaintMutations(2, kRounds);
}

TEST(MutatedPaint3, AreUsedWithoutAFaultAndPaintedWithinTwoSeconds) {
    PaintMutations(3, kRounds);
}

TEST(MutatedPaint4, AreUsedWithoutAFaultAndPaintedWithinTwoSeconds) {
    PaintMutations(4, kRounds);
}
