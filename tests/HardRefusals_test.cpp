// A whole session in which the system refuses one request: memory, an object of GDI, or a call on a file, each in turn.

#include "CommandOperationManager.h"
#include "MemoryInfo.h"
#include "support/BoxAnswer.h"
#include "support/FaultNote.h"
#include "support/LongSession.h"
#include "support/UiLanguage.h"
#include "support/ViewHost.h"
#include "support/WatchedCalls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <sstream>

namespace {

// What one run leaves: the figures are differences.
struct Left {
    LONG refused = 0;
    LONG blocks = 0;
    LONG objects = 0;
    int registered = 0;
    std::string step; // in which the refusal came
    std::vector<std::string> texts;
    std::vector<std::string> thrown;
};

// Words that are kept without taking memory, which is being counted: a line each.
class Lines {
public:
    void Add(const std::string& line) {
        m_length += line.copy(m_text + m_length, sizeof m_text - m_length - 2);
        m_text[m_length++] = '\n';
    }
    std::vector<std::string> Take() {
        std::vector<std::string> lines;
        std::istringstream text(std::string(m_text, m_length));
        for (std::string line; std::getline(text, line);) {
            lines.push_back(line);
        }
        m_length = 0;
        return lines;
    }

private:
    char m_text[20000];
    size_t m_length = 0;
};

Left RunRefused(WatchedCalls& calls, const TemporaryPath& path, WatchedCalls::Kind kind, LONG nth) {
    static Lines texts;
    static Lines thrown;
    const char* current = "";
    const char* refusedIn = nullptr;
    const LONG blocks = calls.Blocks();
    const LONG objects = calls.DrawingObjects();
    const int registered = CKXMemoryManager::Instance()->GetCount();
    {
        BoxAnswer boxes({IDOK});
        std::vector<std::string> names;
        calls.Refuse(kind, nth);
        RunLongSession(
            path,
            [&](const char* step) {
                if (calls.Refused() != 0 && refusedIn == nullptr) {
                    refusedIn = current;
                }
                current = step;
            },
            names);
        for (const std::string& text : boxes.Texts()) {
            texts.Add(text);
        }
        for (const std::string& name : names) {
            thrown.Add(name);
        }
    }
    Left left;
    left.refused = calls.Refused();
    calls.RefuseNone();
    left.registered = CKXMemoryManager::Instance()->GetCount() - registered;
    left.objects = calls.DrawingObjects() - objects;
    left.blocks = calls.Blocks() - blocks;
    left.step = refusedIn != nullptr ? refusedIn : current;
    left.texts = texts.Take();
    left.thrown = thrown.Take();
    return left;
}

// How a message of the library or of the layer begins; those about a file name it.
bool IsKnownText(const std::string& text) {
    static const char* const kBeginnings[] = {"CArc::Draw出错:step=",
                                              "CCircle::Draw出错:step=",
                                              "CGraphicDocument::Serialize错误",
                                              "CLine::Draw出错:step=",
                                              "CPLine::Draw出错:step=",
                                              "CText::Draw出错:step=",
                                              "CTextFormator::",
                                              "CTextParm::Draw出错:step=",
                                              "CVectorGraphic::OnDraw出错:",
                                              "CVectorView::OnPaint() 错误",
                                              "CVectorView::VectorPaint() 错误",
                                              "KLineBreaker::GetLine出错:",
                                              "A required resource was not available.",
                                              "An argument was not valid.",
                                              "Out of memory."};
    return text.find(".nrv'") != std::string::npos ||
           std::any_of(std::begin(kBeginnings), std::end(kBeginnings),
                       [&](const char* begin) { return text.rfind(begin, 0) == 0; });
}

bool IsKnownException(const std::string& name) {
    return name == "CMemoryException" || name == "CResourceException" || name == "CInvalidArgException" ||
           name == "CArchiveException" || name == "bad_alloc";
}

// For each n until nothing is refused any more.
void RefuseEach(WatchedCalls::Kind kind) {
    const UiLanguage english(UiLanguage::kEnglish);
    const TemporaryPath path;
    const Bytes old = ReadTestData("lines_two.nrv");
    WatchedCalls calls;
    // What is taken once for the whole process: window classes, tables, the state of exceptions in each module.
    for (int i = 0; i < 3; ++i) {
        path.Write(old);
        RunRefused(calls, path, kind, 0);
    }
    const Left none = RunRefused(calls, path, kind, 0);
    EXPECT_EQ(0, none.blocks);
    EXPECT_EQ(0, none.objects);
    EXPECT_EQ(0, none.registered);
    EXPECT_EQ(0u, none.texts.size() + none.thrown.size());
    const Bytes whole = path.Read();
    ASSERT_NE(old, whole);
    const int beside = FilesInTheMaking();
    int messages = 0;
    int exceptions = 0;
    int losses = 0;
    LONG nth = 1;
    for (;; ++nth) {
        ASSERT_GT(100000, nth);
        path.Write(old);
        NoteForFault("refused: " + std::to_string(nth));
        Left left = RunRefused(calls, path, kind, nth);
        if (left.refused == 0) {
            break;
        }
        SCOPED_TRACE(testing::Message() << left.step << ", request " << nth);
        messages += static_cast<int>(left.texts.size());
        exceptions += static_cast<int>(left.thrown.size());
        for (const std::string& text : left.texts) {
            EXPECT_TRUE(IsKnownText(text)) << text;
        }
        for (const std::string& name : left.thrown) {
            EXPECT_TRUE(IsKnownException(name)) << name;
        }
        const Bytes file = path.Read();
        if (kind == WatchedCalls::Files) {
            EXPECT_TRUE(file == old || file == whole) << file.size();
            EXPECT_EQ(1u, left.texts.size());
        }
        LoneDocument lone;
        EXPECT_EQ(-1, lone.LoadRaw(file)) << "whatever was saved can be loaded";
        EXPECT_EQ(beside, FilesInTheMaking());
        if (left.blocks != 0 || left.objects != 0 || left.registered != 0) {
            // Once more: the first failure of its kind takes what stays for the whole process.
            path.Write(old);
            left = RunRefused(calls, path, kind, nth);
            EXPECT_EQ(0, left.objects);
            if (left.blocks > 0 || left.registered != 0) {
                ++losses;
                std::printf("%s, request %ld: %ld blocks, %d registered objects stay\n", left.step.c_str(), nth,
                            left.blocks, left.registered);
            }
        }
    }
    NoteForFault("");
    std::printf("%ld requests refused in turn: %d messages, %d exceptions let out, %d runs that leave something\n",
                nth - 1, messages, exceptions, losses);
    EXPECT_LT(6, nth);
    EXPECT_EQ(0, losses);
}

} // namespace

TEST(HardRefusals, ASessionSurvivesTheRefusalOfEachRequestForMemory) {
    RefuseEach(WatchedCalls::Memory);
}

TEST(HardRefusals, ARectangleHasAllItsSidesOrNone) {
    ViewHost host;
    auto& manager = *static_cast<CCommandOperationManager*>(host.view.GetCommandOperationManager());
    WatchedCalls calls;
    for (LONG nth = 1; nth < 100; ++nth) {
        host.view.DoCommand(L"rect");
        calls.Refuse(WatchedCalls::Memory, nth);
        // Not by messages: the system hides a fault in a window procedure.
        try {
            manager.OnLButtonDown(0, CGePoint2d(50, 50));
        } catch (...) {
        }
        const bool refused = calls.Refused() != 0;
        calls.RefuseNone();
        manager.OnMouseMove(0, CGePoint2d(80, 90));
        manager.OnRButtonDown(0, CGePoint2d(80, 90));
        EXPECT_EQ(0, host.view.GetCommandOperationManager()->GetHasCommand());
        if (!refused) {
            EXPECT_LT(4, nth);
            return;
        }
    }
    FAIL() << "each time something was refused";
}

TEST(HardRefusals, ASessionSurvivesTheRefusalOfEachObjectOfGdi) {
    RefuseEach(WatchedCalls::Drawing);
}

TEST(HardRefusals, ASessionSurvivesTheRefusalOfEachCallOnAFile) {
    RefuseEach(WatchedCalls::Files);
}
