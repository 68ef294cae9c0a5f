// Tests of the helper libraries' basics: registry, stopwatch, message sink, comparison, splitting, alive tokens.
#include <KXBaseOpr.h>
#include <KxAlive.h>
#include <KxBaseClass.h>
#include <KxFoundation.h>

#include "support/DebugOutput.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

CKXMemoryManager* Registry() {
    return CKXMemoryManager::Instance();
}

// A pointer to no block: the registry never reads the memory of a block.
void* Fake(uintptr_t number) {
    return reinterpret_cast<void*>(0x7000000000ull + number * 16);
}

int CountAt(const wchar_t* file, int line) {
    CArray<CKXMemorySite, CKXMemorySite&> sites;
    Registry()->GetSites(sites);
    for (INT_PTR i = 0; i < sites.GetSize(); ++i) {
        if (sites[i].file == file && sites[i].line == line) {
            return sites[i].count;
        }
    }
    return 0;
}

} // namespace

// ---- Memory registry

TEST(KxMemoryManager, InstanceIsAlwaysTheSame) {
    EXPECT_EQ(Registry(), Registry());
}

TEST(KxMemoryManager, CountFollowsAddAndRemove) {
    const int before = Registry()->GetCount();
    Registry()->AddMemoryInfo(Fake(1), "a.cpp", 10);
    Registry()->AddMemoryInfo(Fake(2), "a.cpp", 10);
    EXPECT_EQ(before + 2, Registry()->GetCount());
    EXPECT_TRUE(Registry()->IsKnown(Fake(1)));
    EXPECT_FALSE(Registry()->IsKnown(Fake(3)));
    EXPECT_EQ(2, CountAt(L"a.cpp", 10));
    Registry()->RemoveMemoryInfo(Fake(1), "b.cpp", 99);
    EXPECT_EQ(before + 1, Registry()->GetCount());
    EXPECT_FALSE(Registry()->IsKnown(Fake(1)));
    EXPECT_EQ(1, CountAt(L"a.cpp", 10));
    Registry()->RemoveMemoryInfo(Fake(2), "b.cpp", 99);
    EXPECT_EQ(before, Registry()->GetCount());
    EXPECT_EQ(0, CountAt(L"a.cpp", 10));
}

TEST(KxMemoryManager, ThreadsAddAndRemoveAtTheSameTime) {
    constexpr int kThreads = 4;
    constexpr uintptr_t kPointers = 3000;
    const int before = Registry()->GetCount();
    const int unknown = Registry()->GetUnknownCount();
    std::vector<std::thread> threads;
    for (uintptr_t number = 0; number < kThreads; ++number) {
        threads.emplace_back([number] {
            for (int round = 0; round < 20; ++round) {
                for (uintptr_t i = 0; i < kPointers; ++i) {
                    Registry()->AddMemoryInfo(Fake(1000000 + number * kPointers + i), "threads.cpp", round);
                }
                for (uintptr_t i = 0; i < kPointers; ++i) {
                    Registry()->RemoveMemoryInfo(Fake(1000000 + number * kPointers + i), "threads.cpp", round);
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(before, Registry()->GetCount());
    EXPECT_EQ(unknown, Registry()->GetUnknownCount());
}

TEST(KxMemoryManager, NullIsIgnored) {
    const int before = Registry()->GetCount();
    const int unknown = Registry()->GetUnknownCount();
    Registry()->AddMemoryInfo(nullptr, "a.cpp", 1);
    Registry()->RemoveMemoryInfo(nullptr, "a.cpp", 1);
    EXPECT_EQ(before, Registry()->GetCount());
    EXPECT_EQ(unknown, Registry()->GetUnknownCount());
    EXPECT_FALSE(Registry()->IsKnown(nullptr));
}

TEST(KxMemoryManager, UnknownPointerIsToleratedAndCounted) {
    const int before = Registry()->GetCount();
    const int unknown = Registry()->GetUnknownCount();
    Registry()->RemoveMemoryInfo(Fake(77), "a.cpp", 1);
    EXPECT_EQ(before, Registry()->GetCount());
    EXPECT_EQ(unknown + 1, Registry()->GetUnknownCount());
}

TEST(KxMemoryManager, SecondRemoveOfTheSamePointerIsUnknown) {
    const int unknown = Registry()->GetUnknownCount();
    Registry()->AddMemoryInfo(Fake(5), "a.cpp", 1);
    Registry()->RemoveMemoryInfo(Fake(5), "a.cpp", 1);
    EXPECT_EQ(unknown, Registry()->GetUnknownCount());
    Registry()->RemoveMemoryInfo(Fake(5), "a.cpp", 1);
    EXPECT_EQ(unknown + 1, Registry()->GetUnknownCount());
}

TEST(KxMemoryManager, AddedTwiceCountsOnceAtTheLaterPlace) {
    const int before = Registry()->GetCount();
    Registry()->AddMemoryInfo(Fake(6), "old.cpp", 1);
    Registry()->AddMemoryInfo(Fake(6), "new.cpp", 2);
    EXPECT_EQ(before + 1, Registry()->GetCount());
    EXPECT_EQ(0, CountAt(L"old.cpp", 1));
    EXPECT_EQ(1, CountAt(L"new.cpp", 2));
    Registry()->RemoveMemoryInfo(Fake(6), "new.cpp", 2);
}

TEST(KxMemoryManager, NullFileNameIsAnEmptyOne) {
    Registry()->AddMemoryInfo(Fake(7), nullptr, 3);
    EXPECT_EQ(1, CountAt(L"", 3));
    Registry()->RemoveMemoryInfo(Fake(7), nullptr, 3);
}

TEST(KxMemoryManager, SitesComeSortedByFileAndLine) {
    Registry()->AddMemoryInfo(Fake(11), "zz_b.cpp", 5);
    Registry()->AddMemoryInfo(Fake(12), "zz_a.cpp", 20);
    Registry()->AddMemoryInfo(Fake(13), "zz_a.cpp", 3);
    Registry()->AddMemoryInfo(Fake(14), "zz_a.cpp", 20);
    const CString report = Registry()->GetReport();
    const int first = report.Find(L"zz_a.cpp(3): 1\n");
    const int second = report.Find(L"zz_a.cpp(20): 2\n");
    const int third = report.Find(L"zz_b.cpp(5): 1\n");
    EXPECT_GT(first, 0);
    EXPECT_GT(second, first);
    EXPECT_GT(third, second);
    CString head;
    head.Format(L"%d live blocks\n", Registry()->GetCount());
    EXPECT_EQ(0, report.Find(head));
    for (uintptr_t i = 11; i <= 14; ++i) {
        Registry()->RemoveMemoryInfo(Fake(i), "", 0);
    }
    EXPECT_EQ(-1, Registry()->GetReport().Find(L"zz_a.cpp"));
}

TEST(KxMemoryManager, TwoCopiesOfOneFileNameAreOnePlace) {
    const char one[] = "zz_same.cpp";
    const std::string two = one;
    Registry()->AddMemoryInfo(Fake(21), one, 8);
    Registry()->AddMemoryInfo(Fake(22), two.c_str(), 8);
    EXPECT_EQ(2, CountAt(L"zz_same.cpp", 8));
    Registry()->RemoveMemoryInfo(Fake(21), one, 8);
    Registry()->RemoveMemoryInfo(Fake(22), one, 8);
}

TEST(KxMemoryManager, ReusedBufferWithAnotherNameIsAnotherPlace) {
    char name[] = "zz_first.cpp";
    Registry()->AddMemoryInfo(Fake(31), name, 8);
    memcpy(name, "zz_other", 8);
    Registry()->AddMemoryInfo(Fake(32), name, 8);
    EXPECT_EQ(1, CountAt(L"zz_first.cpp", 8));
    EXPECT_EQ(1, CountAt(L"zz_other.cpp", 8));
    Registry()->RemoveMemoryInfo(Fake(31), name, 8);
    Registry()->RemoveMemoryInfo(Fake(32), name, 8);
}

TEST(KxMemoryManager, ManyBlocksComeAndGoInAnyOrder) {
    const int before = Registry()->GetCount();
    const int unknown = Registry()->GetUnknownCount();
    const uintptr_t count = 50000;
    const uintptr_t stride = 7919; // no common divisor with count: a walk in disorder that meets every block once
    for (uintptr_t i = 0; i < count; ++i) {
        Registry()->AddMemoryInfo(Fake(1000 + i), "many.cpp", static_cast<int>(i % 300));
    }
    EXPECT_EQ(before + 50000, Registry()->GetCount());
    EXPECT_EQ(167, CountAt(L"many.cpp", 199)); // 50000 = 166 * 300 + 200
    EXPECT_EQ(166, CountAt(L"many.cpp", 200));
    for (uintptr_t i = 0; i < count; ++i) {
        const uintptr_t at = i * stride % count;
        Registry()->RemoveMemoryInfo(Fake(1000 + at), "many.cpp", 0);
        if (i % 1000 == 0) {
            // What has not been removed yet is still found.
            for (uintptr_t j = i + 1; j < count; j += 997) {
                ASSERT_TRUE(Registry()->IsKnown(Fake(1000 + j * stride % count)));
            }
            ASSERT_FALSE(Registry()->IsKnown(Fake(1000 + at)));
        }
    }
    EXPECT_EQ(before, Registry()->GetCount());
    EXPECT_EQ(unknown, Registry()->GetUnknownCount());
}

// ---- Stopwatch

TEST(KxScopeTimer, WritesNothingWhileSwitchedOff) {
    const DebugOutput output;
    ASSERT_FALSE(CScopeTimer::IsEnabled());
    { const CScopeTimer timer("quiet"); }
    EXPECT_EQ(L"", output.Text());
}

TEST(KxScopeTimer, LogsItsLabelAndTimeAtTheEndOfItsScope) {
    const DebugOutput output;
    CScopeTimer::Enable(1);
    {
        const CScopeTimer narrow("narrow label");
        EXPECT_EQ(L"", output.Text());
    }
    { const CScopeTimer wide(L"wide label"); }
    CScopeTimer::Enable(0);
    const std::wstring text = output.Text();
    double microseconds = -1;
    EXPECT_EQ(0u, text.find(L"narrow label: "));
    EXPECT_EQ(1, swscanf(text.c_str(), L"narrow label: %lf us", &microseconds));
    EXPECT_GE(microseconds, 0);
    EXPECT_NE(std::wstring::npos, text.find(L" us\nwide label: "));
    EXPECT_EQ(L'\n', text.back());
}

TEST(KxScopeTimer, OneThatStartedWhileOffStaysSilent) {
    const DebugOutput output;
    {
        const CScopeTimer timer("late");
        CScopeTimer::Enable(1);
    }
    CScopeTimer::Enable(0);
    EXPECT_EQ(L"", output.Text());
}

// ---- Message sink

namespace {

struct Heard {
    CString text;
    int level = 0;
    int times = 0;
};

void Listen(const CString& text, int level, void* context) {
    Heard* heard = static_cast<Heard*>(context);
    heard->text = text;
    heard->level = level;
    ++heard->times;
}

} // namespace

TEST(KxError, PrintInfoReachesDebuggerAndListener) {
    const DebugOutput output;
    Heard heard;
    EXPECT_EQ(nullptr, KXERROR::SetListener(Listen, &heard));
    KXERROR::PrintInfo(L"layer 100% %s", 3);
    void* context = nullptr;
    EXPECT_EQ(&Listen, KXERROR::SetListener(nullptr, nullptr, &context));
    EXPECT_EQ(&heard, context);
    KXERROR::PrintInfo(L"no sink is set", 1);
    EXPECT_EQ(1, heard.times);
    EXPECT_EQ(3, heard.level);
    EXPECT_EQ(CString(L"layer 100% %s"), heard.text);
    EXPECT_EQ(L"3: layer 100% %s\n1: no sink is set\n", output.Text());
}

TEST(KxError, ListenerGetsChineseAsItIs) {
    Heard heard;
    KXERROR::SetListener(Listen, &heard);
    KXERROR::PrintInfo(L"图层不存在", 2);
    KXERROR::SetListener(nullptr, nullptr);
    EXPECT_EQ(CString(L"图层不存在"), heard.text);
}

// ---- Comparison

TEST(KxCompareDbl, TellsLessFromGreater) {
    EXPECT_EQ(-1, kxcommon::CompareDbl(1.0, 2.0));
    EXPECT_EQ(1, kxcommon::CompareDbl(2.0, 1.0));
    EXPECT_EQ(0, kxcommon::CompareDbl(-3.5, -3.5));
}

TEST(KxCompareDbl, DifferenceBelowOneBillionthIsEqual) {
    EXPECT_EQ(0, kxcommon::CompareDbl(0.0, 0.9e-9));
    EXPECT_EQ(0, kxcommon::CompareDbl(0.9e-9, 0.0));
    EXPECT_EQ(-1, kxcommon::CompareDbl(0.0, 1e-9)); // the tolerance itself is no longer equal
    EXPECT_EQ(1, kxcommon::CompareDbl(1e-9, 0.0));
    EXPECT_EQ(-1, kxcommon::CompareDbl(3.14159265, 3.1415926535));
    EXPECT_EQ(0, kxcommon::CompareDbl(3.14159265358979, 3.1415926535));
}

TEST(KxCompareDbl, InfinitiesCompareAsSuch) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(0, kxcommon::CompareDbl(inf, inf));
    EXPECT_EQ(0, kxcommon::CompareDbl(-inf, -inf));
    EXPECT_EQ(1, kxcommon::CompareDbl(inf, 1e308));
    EXPECT_EQ(-1, kxcommon::CompareDbl(-inf, inf));
}

TEST(KxCompareDbl, NotANumberIsAfterEveryNumber) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(0, kxcommon::CompareDbl(nan, nan));
    EXPECT_EQ(1, kxcommon::CompareDbl(nan, inf));
    EXPECT_EQ(-1, kxcommon::CompareDbl(0.0, nan));
}

// ---- Splitting

namespace {

std::vector<std::wstring> Pieces(const wchar_t* text, const wchar_t* separator) {
    CStringArray pieces;
    pieces.Add(L"left from before");
    const int count = KxMfc::Fun::Split(text, separator, pieces);
    EXPECT_EQ(count, static_cast<int>(pieces.GetSize()));
    std::vector<std::wstring> result;
    for (INT_PTR i = 0; i < pieces.GetSize(); ++i) {
        result.push_back(std::wstring(static_cast<const wchar_t*>(pieces[i])));
    }
    return result;
}

typedef std::vector<std::wstring> List;

} // namespace

TEST(KxSplit, CutsAtEachSeparator) {
    EXPECT_EQ((List{L"翼缘厚度", L"mm", L"8-40"}), Pieces(L"翼缘厚度||mm||8-40", L"||"));
    EXPECT_EQ((List{L"a", L"b"}), Pieces(L"a,b", L","));
}

TEST(KxSplit, TextWithoutSeparatorIsOnePiece) {
    EXPECT_EQ((List{L"a|b"}), Pieces(L"a|b", L"||"));
}

TEST(KxSplit, EmptyTextIsOneEmptyPiece) {
    EXPECT_EQ((List{L""}), Pieces(L"", L"||"));
}

TEST(KxSplit, SeparatorsAtTheEndsAndSideBySideGiveEmptyPieces) {
    EXPECT_EQ((List{L"", L"a"}), Pieces(L"||a", L"||"));
    EXPECT_EQ((List{L"a", L""}), Pieces(L"a||", L"||"));
    EXPECT_EQ((List{L"", L"", L""}), Pieces(L"||||", L"||"));
}

TEST(KxSplit, SeparatorsAreFoundFromTheLeft) {
    EXPECT_EQ((List{L"a", L"|b"}), Pieces(L"a|||b", L"||"));
}

TEST(KxSplit, EmptySeparatorGivesTheTextWhole) {
    EXPECT_EQ((List{L"abc"}), Pieces(L"abc", L""));
    EXPECT_EQ((List{L""}), Pieces(L"", L""));
}

TEST(KxSplit, ComparesWithCase) {
    EXPECT_EQ((List{L"1x2", L"3"}), Pieces(L"1x2X3", L"X"));
}

TEST(KxAlive, ATokenIsAliveUntilItsOwnerEnds) {
    CKxAlive owner;
    const CKxAliveToken token(owner);
    EXPECT_TRUE(token.IsAlive());
    owner.End();
    EXPECT_FALSE(token.IsAlive());
}

TEST(KxAlive, ATokenOutlivesItsOwnerAndAnswersFalse) {
    auto owner = std::make_unique<CKxAlive>();
    const CKxAliveToken token(*owner);
    const CKxAliveToken copy(token);
    owner.reset();
    EXPECT_FALSE(token.IsAlive());
    EXPECT_FALSE(copy.IsAlive());
}

TEST(KxAlive, ATokenTakenAfterTheEndIsAliveUntilTheNextEnd) {
    CKxAlive owner;
    const CKxAliveToken former(owner);
    owner.End();
    const CKxAliveToken next(owner);
    EXPECT_FALSE(former.IsAlive());
    EXPECT_TRUE(next.IsAlive());
    owner.End();
    EXPECT_FALSE(next.IsAlive());
}
