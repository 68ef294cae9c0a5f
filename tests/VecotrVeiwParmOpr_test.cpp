// The reader of parameter lists: what it lists, what it replaces, and that it leaks nothing.

#include "support/BoxAnswer.h"

#include <KXBaseOpr.h>
#include <VecotrVeiwParmOpr.h>
#include <vectorview.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Keeps the texts of message boxes; a reader runs where there is no user to answer a box.
class QuietApp : public CWinApp {
public:
    int DoMessageBox(LPCTSTR prompt, UINT, UINT) override {
        said.push_back(Utf8(prompt));
        return IDOK;
    }
    std::vector<std::string> said;
};

QuietApp g_App;

using Bytes = std::vector<unsigned char>;
using Names = std::vector<std::string>;

const Gdiplus::Color kColor(0xFFFFFFFF);

Bytes StoreOf(CVectorView& view) {
    CMemFile file;
    EXPECT_EQ(1, view.GetDocument()->StoreToMemFile(&file));
    Bytes bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

// Lines and texts of every sort among the parameters that are named.
Bytes Drawing(const std::vector<const wchar_t*>& names) {
    CVectorView view;
    view.AddLine(CGePoint2d(0, 0), CGePoint2d(9, 9), kColor, L"no parameter", L"", 0, 0);
    for (const wchar_t* each : names) {
        CString text = L"12";
        CString name = each;
        view.AddParmText(CGePoint2d(1, 2), text, name, 0, kColor, 20, 0);
        view.AddParmTextNoEdit(CGePoint2d(1, 2), text, name, 0, kColor, 20, 0);
        view.AddText(CGePoint2d(1, 2), text, 0, kColor, 0);
    }
    return StoreOf(view);
}

Names List() {
    CStringArray names;
    CVecotrVeiwParmOpr::Instance().GetParm(names);
    Names list;
    for (INT_PTR i = 0; i < names.GetSize(); ++i) {
        list.push_back(Utf8(names[i]));
    }
    return list;
}

int Load(Bytes bytes) {
    return CVecotrVeiwParmOpr::Instance().LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size()));
}

struct VecotrVeiwParmOpr : testing::Test {
    void SetUp() override {
        CVecotrVeiwParmOpr::Instance().ReleaseVector();
        g_App.said.clear();
    }
    void TearDown() override { CVecotrVeiwParmOpr::Instance().ReleaseVector(); }
};

TEST_F(VecotrVeiwParmOpr, ListsTheParametersInDrawingOrderWithDoubles) {
    EXPECT_EQ(1, Load(Drawing({L"height", L"width", L"height", L"", L"\xD840\xDC0B板厚"})));
    EXPECT_EQ((Names{"height", "width", "height", "", "𠀋板厚"}), List());
}

TEST_F(VecotrVeiwParmOpr, ParametersWithoutExpressionAndTheKeywordOnesAreListedToo) {
    CVectorView view;
    CString text = L"1";
    CString a = L"A";
    CString b = L"B";
    CString c = L"C";
    view.AddParmTextNoRegExp(CGePoint2d(), text, a, 0, kColor, 20, 0);
    view.AddParmTextForSS(CGePoint2d(), text, b, 0, kColor, 20, 0);
    view.AddParmTextNoEdit(CGePoint2d(), text, c, 0, kColor, 20, 0);
    Load(StoreOf(view));
    EXPECT_EQ((Names{"A", "B"}), List());
}

TEST_F(VecotrVeiwParmOpr, PlainTextsAloneGiveAnEmptyList) {
    CVectorView view;
    CString text = L"1";
    CString name = L"A";
    view.AddParmTextNoEdit(CGePoint2d(), text, name, 0, kColor, 20, 0);
    EXPECT_EQ(1, Load(StoreOf(view)));
    EXPECT_EQ(Names{}, List());
}

TEST_F(VecotrVeiwParmOpr, TheLastLoadWins) {
    Load(Drawing({L"A", L"B"}));
    Load(Drawing({L"C"}));
    EXPECT_EQ(Names{"C"}, List());
}

TEST_F(VecotrVeiwParmOpr, TheListIsAppended) {
    Load(Drawing({L"A"}));
    CStringArray names;
    names.Add(L"before");
    EXPECT_EQ(1, CVecotrVeiwParmOpr::Instance().GetParm(names));
    EXPECT_EQ(1, CVecotrVeiwParmOpr::Instance().GetParm(names));
    ASSERT_EQ(3, names.GetSize());
    EXPECT_EQ(L"before", names[0]);
    EXPECT_EQ(L"A", names[2]);
}

TEST_F(VecotrVeiwParmOpr, ANullOrEmptyBufferLoadsAsAnEmptyDrawing) {
    Bytes bytes = Drawing({L"A"});
    Load(bytes);
    EXPECT_EQ(1, CVecotrVeiwParmOpr::Instance().LoadFile(nullptr, 10));
    EXPECT_EQ(Names{}, List());
    Load(bytes);
    EXPECT_EQ(1, CVecotrVeiwParmOpr::Instance().LoadFile(bytes.data(), 0));
    EXPECT_EQ(Names{}, List());
    EXPECT_TRUE(g_App.said.empty());
}

TEST_F(VecotrVeiwParmOpr, AnUnreadableStreamGivesOneAndTheOldListIsGone) {
    Load(Drawing({L"A"}));
    const int two = 2;
    Bytes bytes(sizeof(two));
    memcpy(bytes.data(), &two, sizeof(two));
    EXPECT_EQ(1, Load(bytes));
    EXPECT_EQ(Names{}, List());
    EXPECT_EQ(std::vector<std::string>{"文件格式错误!"}, g_App.said);
}

TEST_F(VecotrVeiwParmOpr, ACutStreamGivesWhatCameBeforeTheCut) {
    CVectorView view;
    view.AddParmText(CGePoint2d(), L"1", L"A", 0, kColor, 20, 0);
    view.AddParmText(CGePoint2d(), L"1", L"B", 0, kColor, 20, 0);
    Bytes bytes = StoreOf(view);
    bytes.resize(bytes.size() - 1);
    EXPECT_EQ(1, Load(bytes));
    EXPECT_EQ(Names{"A"}, List());
    EXPECT_EQ(std::vector<std::string>{"CGraphicDocument::Serialize错误"}, g_App.said);
}

TEST_F(VecotrVeiwParmOpr, BothLoadsAreTheSame) {
    const Bytes bytes = Drawing({L"A", L"B"});
    EXPECT_EQ(1, CVecotrVeiwParmOpr::Instance().LoadFileV2(bytes.data(), static_cast<unsigned int>(bytes.size())));
    EXPECT_EQ((Names{"A", "B"}), List());
    EXPECT_EQ(1, CVecotrVeiwParmOpr::Instance().LoadFileV2(nullptr, 0));
    EXPECT_EQ(Names{}, List());
}

TEST_F(VecotrVeiwParmOpr, AListBeforeTheFirstLoadAddsNothing) {
    CStringArray names;
    EXPECT_EQ(0, CVecotrVeiwParmOpr::Instance().GetParm(names));
    EXPECT_EQ(0, names.GetSize());
}

TEST_F(VecotrVeiwParmOpr, AReleasedReaderLoadsAgain) {
    Load(Drawing({L"A"}));
    CVecotrVeiwParmOpr::Instance().ReleaseVector();
    CVecotrVeiwParmOpr::Instance().ReleaseVector();
    Load(Drawing({L"B"}));
    EXPECT_EQ(Names{"B"}, List());
}

TEST_F(VecotrVeiwParmOpr, ReleasingFreesEverything) {
    const Bytes bytes = Drawing({L"A", L"B"});
    CKXMemoryManager* registry = CKXMemoryManager::Instance();
    // The colour table and the like are made once.
    Load(bytes);
    CVecotrVeiwParmOpr::Instance().ReleaseVector();
    const int alive = registry->GetCount();
    const int unknown = registry->GetUnknownCount();
    Load(bytes);
    EXPECT_LT(alive, registry->GetCount());
    CVecotrVeiwParmOpr::Instance().ReleaseVector();
    EXPECT_EQ(alive, registry->GetCount());
    EXPECT_EQ(unknown, registry->GetUnknownCount());
}

TEST_F(VecotrVeiwParmOpr, AThousandLoadsDoNotGrow) {
    const Bytes bytes = Drawing({L"A", L"B", L"C"});
    Load(bytes);
    const int alive = CKXMemoryManager::Instance()->GetCount();
    for (int i = 0; i < 1000; ++i) {
        Load(bytes);
        ASSERT_EQ(3u, List().size());
    }
    EXPECT_EQ(alive, CKXMemoryManager::Instance()->GetCount());
}

} // namespace
