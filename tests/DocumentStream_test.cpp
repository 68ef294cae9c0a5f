// The document's stream, byte by byte: empty, one line, two lines, every schema of a line, every prefix, hostile bytes.

#include "Document.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "VectorGraphic.h"
#include "support/RecordingDC.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

namespace {

CLine* OnlyLine(LoneDocument& lone) {
    if (lone.Objects().GetSize() != 1) {
        ADD_FAILURE() << "expected one object, found " << lone.Objects().GetSize();
        return nullptr;
    }
    return DYNAMIC_DOWNCAST(CLine, lone.Objects()[0]);
}

template <class T>
void Put(Bytes& bytes, size_t at, T value) {
    std::memcpy(bytes.data() + at, &value, sizeof value);
}

template <class T>
void Append(Bytes& bytes, T value) {
    const auto* raw = reinterpret_cast<const BYTE*>(&value);
    bytes.insert(bytes.end(), raw, raw + sizeof value);
}

// The place of the count of objects in the header.
constexpr size_t kCountAt = 34;

// What the process has taken from the system for itself, in bytes, used or not.
size_t CommittedBytes() {
    size_t sum = 0;
    MEMORY_BASIC_INFORMATION info = {};
    for (const char* at = nullptr; ::VirtualQuery(at, &info, sizeof info) == sizeof info;
         at = static_cast<const char*>(info.BaseAddress) + info.RegionSize) {
        if (info.State == MEM_COMMIT && info.Type == MEM_PRIVATE) {
            sum += info.RegionSize;
        }
    }
    return sum;
}

// A file that notes what the process holds each time it is read from: also in the read that finds its end, where
// whatever was taken ahead of the bytes is still held.
class MeasuringFile : public CMemFile {
public:
    UINT Read(void* buffer, UINT count) override {
        most = std::max(most, CommittedBytes());
        ++reads;
        return CMemFile::Read(buffer, count);
    }
    size_t most = 0;
    int reads = 0;
};

// By how many bytes the process grew at most while a document read the stream; -1 when the stream did not end early.
long long GrowthOfTruncatedLoad(LoneDocument& lone, Bytes bytes) {
    MeasuringFile file;
    file.Attach(bytes.data(), static_cast<UINT>(bytes.size()), 0);
    const size_t before = CommittedBytes();
    bool ended = false;
    try {
        CArchive ar(&file, CArchive::load | CArchive::bNoFlushOnDelete, 4096);
        lone.document.ReadData(ar);
    } catch (CArchiveException* e) {
        ended = e->m_cause == CArchiveException::endOfFile;
        e->Delete();
    }
    file.Detach();
    EXPECT_LE(2, file.reads);
    return ended ? static_cast<long long>(file.most) - static_cast<long long>(before) : -1;
}

constexpr long long kSmallGrowth = 4 << 20;

// A kind of object that counts its objects, and fails in the middle of being read.
class CCountedDrawable : public CDrawable {
    DECLARE_SERIAL(CCountedDrawable)
public:
    enum Failure { None, ReadsPastTheEnd, ThrowsException, ThrowsNumber };
    CCountedDrawable() {
        ++alive;
        ++made;
    }
    ~CCountedDrawable() override { --alive; }
    void Serialize(CArchive& ar) override {
        CDrawable::Serialize(ar);
        if (!ar.IsLoading()) {
            return;
        }
        switch (failure) {
        case ReadsPastTheEnd: {
            BYTE bytes[1000];
            ar.EnsureRead(bytes, sizeof bytes);
            break;
        }
        case ThrowsException:
            AfxThrowMemoryException();
        case ThrowsNumber:
            throw 7;
        default:
            break;
        }
    }
    static int alive;
    static int made;
    static Failure failure;
};

int CCountedDrawable::alive = 0;
int CCountedDrawable::made = 0;
CCountedDrawable::Failure CCountedDrawable::failure = None;

IMPLEMENT_SERIAL(CCountedDrawable, CDrawable, VERSIONABLE_SCHEMA | 5)

// Three counted objects in a stream.
Bytes CountedStream() {
    LoneDocument lone;
    for (int i = 0; i < 3; ++i) {
        auto* object = new CCountedDrawable;
        KX_ADD_MEMORY(object);
        lone.document.AddDrawAobject(object);
    }
    return lone.Store();
}

} // namespace

// ---- What is written -----------------------------------------------------------------------------------------------

TEST(DocumentStream, AnEmptyDrawingIsExactlyTheHeader) {
    LoneDocument lone;
    EXPECT_EQ(ReadTestData("empty.nrv"), lone.Store());
    EXPECT_EQ(38u, lone.Store().size());
}

TEST(DocumentStream, ALineIsWrittenFieldByFieldAsInTheGoldenStream) {
    LoneDocument lone;
    const Bytes golden = ReadTestData("line_schema5.nrv");
    ASSERT_EQ(1, lone.Load(golden));
    EXPECT_EQ(golden, lone.Store());
}

TEST(DocumentStream, ASecondLineBringsAClassIndexInPlaceOfTheClassRecord) {
    LoneDocument lone;
    const Bytes golden = ReadTestData("lines_two.nrv");
    ASSERT_EQ(1, lone.Load(golden));
    ASSERT_EQ(2, lone.Objects().GetSize());
    EXPECT_EQ(golden, lone.Store());
    const size_t one = ReadTestData("line_schema5.nrv").size() - 38;
    EXPECT_LT(golden.size(), 38 + 2 * one);
}

TEST(DocumentStream, TheHeaderHoldsBackgroundScaleOriginAndScreenHeight) {
    LoneDocument lone;
    lone.document.SetBKColor(0x00112233);
    lone.tran.SetScale(0.25f);
    lone.tran.SetOriginX(-1.5);
    lone.tran.SetOriginY(1e300);
    lone.tran.SethScreen(777);
    const Bytes bytes = lone.Store();
    const Bytes expected = {1,    0,    0,    0,    0x33, 0x22, 0x11, 0,    0xFE, 0xFF, 0,    0,    0x80,
                            0x3E, 0,    0,    0,    0,    0,    0,    0xF8, 0xBF, 0x9C, 0x75, 0x00, 0x88,
                            0x3C, 0xE4, 0x37, 0x7E, 9,    3,    0,    0,    0,    0,    0,    0};
    EXPECT_EQ(expected, bytes);
    LoneDocument second;
    ASSERT_EQ(1, second.Load(bytes));
    EXPECT_EQ(-2, second.document.GetBKColorIndex());
    EXPECT_EQ(0x00112233u, second.document.GetBKColor());
    EXPECT_EQ(expected, second.Store());
}

TEST(DocumentStream, AnExplicitBackgroundIsStoredAlsoWhereAnIndexHidesIt) {
    LoneDocument lone;
    lone.document.SetBKColor(0x00112233);
    lone.document.SetBKColorIndex(9);
    const Bytes bytes = lone.Store();
    ASSERT_EQ(38u, bytes.size());
    EXPECT_EQ((Bytes{0x33, 0x22, 0x11, 0, 9, 0}), Bytes(bytes.begin() + 4, bytes.begin() + 10));
    LoneDocument second;
    second.document.SetBKColor(0x00445566);
    ASSERT_EQ(1, second.Load(bytes));
    EXPECT_EQ(9, second.document.GetBKColorIndex());
    EXPECT_EQ(0x00FF0000u, second.document.GetBKColor()) << "the table's blue";
    EXPECT_EQ(bytes, second.Store());
    second.document.SetBKColorIndex(-2);
    EXPECT_EQ(0x00112233u, second.document.GetBKColor());
}

TEST(DocumentStream, ANullEntryIsCountedAndNotWritten) {
    LoneDocument lone;
    const Bytes golden = ReadTestData("lines_two.nrv");
    ASSERT_EQ(1, lone.Load(golden));
    CDrawable* none = nullptr;
    lone.Objects().InsertAt(1, none);
    Bytes expected = golden;
    ASSERT_EQ(2, expected[kCountAt]);
    expected[kCountAt] = 3;
    EXPECT_EQ(expected, lone.Store());
    lone.Objects().RemoveAt(1);
}

TEST(DocumentStream, NetForegroundSelectionCurrentObjectLayersAndScreenWidthAreNotStored) {
    LoneDocument lone;
    CLine* line = lone.document.AddLine(0, 0, 0, 0, 0, 0, 1, 2, 3, 4);
    line->SetDrawState(CDrawable::Selected); // The object's state is stored, its place in the selection list is not.
    lone.tran.SetScreenSize(CSize(1, 300));
    const Bytes before = lone.Store();
    auto* net = new CLine;
    KX_ADD_MEMORY(net);
    lone.document.AddNetobject(net);
    EXPECT_EQ(before, lone.Store());
    lone.document.SetFGColorIndex(3);
    EXPECT_EQ(before, lone.Store());
    lone.document.AddSelected(line);
    ASSERT_EQ(1, lone.document.IsSelected(line));
    EXPECT_EQ(before, lone.Store());
    CLine current;
    lone.document.AddCurrentObject(&current);
    EXPECT_EQ(before, lone.Store());
    lone.document.GetLayerManager()->AddLayer("second");
    lone.document.GetLayerManager()->GetLayerInfo(0)->m_LineWide = 9.0f;
    EXPECT_EQ(before, lone.Store());
    lone.tran.SetScreenSize(CSize(500, 300));
    EXPECT_EQ(before, lone.Store());
    lone.document.removeCurrentObject();
}

TEST(DocumentStream, StoringToNoFileIsRefused) {
    LoneDocument lone;
    EXPECT_EQ(0, lone.document.StoreToMemFile(nullptr));
}

TEST(DocumentStream, SeventyThousandUnitsOfTextTakeTheLongestLengthForm) {
    LoneDocument lone;
    auto* line = new CLine;
    line->SetParmName(CString(L'x', 70000));
    lone.document.AddDrawAobject(line);
    const Bytes stored = lone.Store();
    // Header, class record, base block, version and four doubles come before the name.
    const size_t at = 38 + 11 + 48 + 4 + 32;
    const Bytes prefix(stored.begin() + static_cast<std::ptrdiff_t>(at),
                       stored.begin() + static_cast<std::ptrdiff_t>(at + 10));
    EXPECT_EQ((Bytes{0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00}), prefix);
    LoneDocument second;
    second.Load(stored);
    ASSERT_NE(nullptr, OnlyLine(second));
    EXPECT_EQ(70000, OnlyLine(second)->GetParmName().GetLength());
}

// ---- What is read --------------------------------------------------------------------------------------------------

TEST(DocumentStream, EverySchemaOfALineReadsItsOwnFields) {
    const struct {
        int schema;
        bool geometry;
        bool texts;
        int lock;
    } cases[] = {{0, false, false, 0}, {1, true, false, 0}, {2, true, true, 0},  {3, true, true, 1},
                 {4, false, false, 0}, {5, true, true, 1},  {6, false, false, 0}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.schema);
        LoneDocument lone;
        ASSERT_EQ(1, lone.Load(ReadTestData("line_schema" + std::to_string(row.schema) + ".nrv")));
        CLine* line = OnlyLine(lone);
        ASSERT_NE(nullptr, line);
        EXPECT_EQ(row.geometry ? 1.5 : 0.0, line->GetStartPoint().x);
        EXPECT_EQ(row.geometry ? -2.25 : 0.0, line->GetStartPoint().y);
        EXPECT_EQ(row.geometry ? 1e9 : 0.0, line->GetEndPoint().x);
        EXPECT_EQ(row.geometry ? 0.1 : 0.0, line->GetEndPoint().y);
        EXPECT_EQ(row.texts ? CString(L"参数") : CString(), line->GetParmName());
        EXPECT_EQ(row.texts ? CString(L"info") : CString(), line->GetMsgInfo());
        EXPECT_EQ(row.lock, line->GetLockMode());
        EXPECT_EQ(-2, line->GetPenColorIndex());
        EXPECT_EQ(0x00302010u, line->GetPenColor());
        EXPECT_EQ(2.0f, line->GetLineWide());
        EXPECT_EQ(1, line->GetLineType());
        EXPECT_EQ(1.5f, line->GetScale());
        EXPECT_EQ(3, line->GetLayer());
        EXPECT_EQ(42, line->GetID());
        EXPECT_EQ(-1, line->GetColorBrush());
        EXPECT_EQ(0, line->IsDelete());
        EXPECT_EQ(CDrawable::Normal, line->GetDrawState());
        EXPECT_EQ(1, line->GetIsShow());
        EXPECT_EQ(row.schema == 5 ? 0 : 1, line->isCanSelect()) << "only the current form stores it";
    }
}

TEST(DocumentStream, EverySchemaOfALineReadsBrushDeletionAndState) {
    for (int schema = 0; schema <= 6; ++schema) {
        SCOPED_TRACE(schema);
        Bytes bytes = ReadTestData("line_schema" + std::to_string(schema) + ".nrv");
        // After header and class record; the current form has two words more.
        const size_t base = 38 + 11 + (schema == 5 ? 8 : 0);
        Put<short>(bytes, base + 6, -30000);
        Put<int>(bytes, base + 24, 0x01020304);
        Put<int>(bytes, base + 28, 1);
        if (schema == 5) {
            Put<int>(bytes, base + 32, 0);
            Put<int>(bytes, base + 36, 7);
        }
        LoneDocument lone;
        ASSERT_EQ(1, lone.Load(bytes));
        CLine* line = OnlyLine(lone);
        ASSERT_NE(nullptr, line);
        EXPECT_EQ(-30000, line->GetColorBrush());
        EXPECT_EQ(0x01020304, line->IsDelete());
        EXPECT_EQ(CDrawable::Dragging, line->GetDrawState());
        EXPECT_EQ(schema == 5 ? 0 : 1, line->GetIsShow()) << "older forms have none: shown";
        EXPECT_EQ(schema == 5 ? 7 : 1, line->isCanSelect());
    }
}

TEST(DocumentStream, APlainDrawableLoadsDrawsAndIsStoredAgain) {
    // Header for one object, class record, the two words, the attributes: selected, so that grips would show.
    Bytes bytes = ReadTestData("empty.nrv");
    Put<int>(bytes, kCountAt, 1);
    const Bytes record = {0xFF, 0xFF, 5, 0, 9, 0, 'C', 'D', 'r', 'a', 'w', 'a', 'b', 'l', 'e', 5, 0, 0, 0, 7, 0, 0, 0};
    bytes.insert(bytes.end(), record.begin(), record.end());
    Append<short>(bytes, 9);
    Append<DWORD>(bytes, 0x00112233);
    Append<short>(bytes, -1);
    Append<float>(bytes, 2.5f);
    Append<short>(bytes, 1);
    Append<float>(bytes, 1.0f);
    Append<short>(bytes, 0);
    for (int value : {77, 0, 0, 1, 1}) { // Number, deletion, state, visibility, selectability.
        Append<int>(bytes, value);
    }
    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
    graphic.SetVectorViewCoordTran(&tran);
    ASSERT_EQ(1, graphic.GetDocument()->OpenDocument(bytes.data(), static_cast<unsigned int>(bytes.size())));
    ASSERT_EQ(1, graphic.GetDocument()->GetDrawableObjs()->GetSize());
    CDrawable* object = graphic.GetDocument()->GetDrawableObjs()->GetAt(0);
    EXPECT_EQ(RUNTIME_CLASS(CDrawable), object->GetRuntimeClass());
    EXPECT_EQ(77, object->GetID());
    EXPECT_EQ(2.5f, object->GetLineWide());
    RecordingDC dc;
    graphic.OnDraw(&dc, 0);
    EXPECT_TRUE(SameCalls({"SelectObject(pen style=0 width=0 color=0x00FF0000)", "SelectStockObject(5)",
                           "SelectObject(brush default)", "SelectObject(pen default)"},
                          dc.Calls()))
        << "it has no grips";
    CMemFile file;
    ASSERT_EQ(1, graphic.GetDocument()->StoreToMemFile(&file));
    Bytes stored(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(stored.data(), static_cast<UINT>(stored.size()));
    EXPECT_EQ(bytes, stored);
}

TEST(DocumentStream, ALoadKeepsTheNetOfTheView) {
    LoneDocument lone;
    auto* net = new CLine;
    KX_ADD_MEMORY(net);
    lone.document.AddNetobject(net);
    lone.document.AddLine(0, 0, 0, 0, 0, 0, 1, 2, 3, 4);
    const Bytes stored = lone.Store();
    ASSERT_EQ(1, lone.Load(stored));
    EXPECT_EQ(1, lone.Objects().GetSize());
    ASSERT_EQ(1, lone.document.GetNetDrawableObjs()->GetSize());
    EXPECT_EQ(net, lone.document.GetNetDrawableObjs()->GetAt(0));
    LoneDocument other;
    ASSERT_EQ(1, other.Load(stored));
    EXPECT_EQ(0, other.document.GetNetDrawableObjs()->GetSize()) << "and the stream has none";
}

TEST(DocumentStream, TheBaseBlockOfVersionFiveHasNeitherVisibilityNorSelectability) {
    LoneDocument lone;
    lone.Load(ReadTestData("line_base5.nrv"));
    ASSERT_NE(nullptr, OnlyLine(lone));
    EXPECT_EQ(1, OnlyLine(lone)->GetIsShow());
    EXPECT_EQ(1, OnlyLine(lone)->isCanSelect());
    EXPECT_EQ(1.5, OnlyLine(lone)->GetStartPoint().x);
}

TEST(DocumentStream, AnyOtherVersionOfTheBaseBlockHasVisibilityAlone) {
    for (const char* name : {"line_base6.nrv", "line_base8.nrv"}) {
        LoneDocument lone;
        lone.Load(ReadTestData(name));
        ASSERT_NE(nullptr, OnlyLine(lone)) << name;
        EXPECT_EQ(0, OnlyLine(lone)->GetIsShow()) << name;
        EXPECT_EQ(1, OnlyLine(lone)->isCanSelect()) << name;
        EXPECT_EQ(1.5, OnlyLine(lone)->GetStartPoint().x) << name;
    }
}

TEST(DocumentStream, TheBaseBlockOfVersionSevenHasBoth) {
    LoneDocument lone;
    lone.Load(ReadTestData("line_schema5.nrv"));
    ASSERT_NE(nullptr, OnlyLine(lone));
    EXPECT_EQ(1, OnlyLine(lone)->GetIsShow());
    EXPECT_EQ(0, OnlyLine(lone)->isCanSelect());
}

TEST(DocumentStream, TextsOfTheOldOneByteFormAreTheirSystemsCodePage) {
    LoneDocument lone;
    lone.Load(ReadTestData("line_onebyte.nrv"));
    ASSERT_NE(nullptr, OnlyLine(lone));
    EXPECT_EQ(CString(L"参数"), OnlyLine(lone)->GetParmName());
    EXPECT_EQ(CString(L"info"), OnlyLine(lone)->GetMsgInfo());
}

TEST(DocumentStream, ALineSavedWhileSelectedLoadsSelectedThoughTheSelectedListIsEmpty) {
    LoneDocument lone;
    lone.Load(ReadTestData("lines_two.nrv"));
    ASSERT_EQ(2, lone.Objects().GetSize());
    EXPECT_EQ(CDrawable::Normal, lone.Objects()[0]->GetDrawState());
    EXPECT_EQ(CDrawable::Selected, lone.Objects()[1]->GetDrawState());
    EXPECT_EQ(0, lone.document.GetSelectedDrawableObjs()->GetSize());
}

TEST(DocumentStream, LoadingTakesScaleOriginAndScreenHeightButNotTheWidth) {
    LoneDocument lone;
    lone.tran.SetScreenSize(CSize(123, 456));
    lone.Load(ReadTestData("lines_two.nrv"));
    EXPECT_EQ(0.5f, lone.tran.GetScale());
    EXPECT_EQ(-10.0, lone.tran.GetOriginX());
    EXPECT_EQ(20.5, lone.tran.GetOriginY());
    EXPECT_EQ(400, lone.tran.GethScreen());
    EXPECT_EQ(123, lone.tran.GetScreenSize().cx);
}

TEST(DocumentStream, ASavedScreenHeightShiftsTheDrawingInALowerWindow) {
    LoneDocument lone;
    lone.tran.SetScreenSize(CSize(400, 400));
    lone.Load(ReadTestData("line_schema5.nrv")); // Saved with a height of 600.
    CPoint pixel;
    lone.tran.DPToLP(CGePoint2d(0, 0), pixel);
    EXPECT_EQ(600, pixel.y); // 200 rows below the lower window's bottom edge.
}

TEST(DocumentStream, TheShiftOfASavedScreenHeightEndsWithZoomAll) {
    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
    graphic.SetVectorViewCoordTran(&tran);
    tran.SetScreenSize(CSize(400, 400));
    Bytes bytes = ReadTestData("empty.nrv");
    Put<int>(bytes, 30, 600);
    ASSERT_EQ(1, graphic.GetDocument()->OpenDocument(bytes.data(), static_cast<unsigned int>(bytes.size())));
    ASSERT_EQ(600, tran.GethScreen());
    graphic.GetDocument()->AddLine(0, 0, 0, 0, 0, 0, 0, 0, 340, 340);
    graphic.ZoomAll(CRect(0, 0, 400, 400)); // 340 units on 400 pixels less 60.
    EXPECT_EQ(400, tran.GethScreen());
    CPoint pixel;
    tran.DPToLP(CGePoint2d(0, 0), pixel);
    EXPECT_EQ(CPoint(30, 370), pixel);
    tran.DPToLP(CGePoint2d(340, 340), pixel);
    EXPECT_EQ(CPoint(370, 30), pixel);
}

TEST(DocumentStream, NullAndEmptyBuffersAreRefusedAndKeepTheDrawing) {
    LoneDocument lone;
    lone.Load(ReadTestData("line_schema5.nrv"));
    BYTE one = 0;
    EXPECT_EQ(0, lone.document.OpenDocument(nullptr, 10));
    EXPECT_EQ(0, lone.document.OpenDocument(&one, 0));
    EXPECT_EQ(1, lone.Objects().GetSize());
}

TEST(DocumentStream, AMemoryFileOfNoLengthResetsTheDrawing) {
    LoneDocument lone;
    lone.Load(ReadTestData("line_schema5.nrv"));
    CMemFile empty;
    EXPECT_EQ(1, lone.document.OpenDocument(empty));
    EXPECT_EQ(0, lone.Objects().GetSize());
}

TEST(DocumentStream, LoadingClearsTheModifiedFlag) {
    LoneDocument lone;
    lone.document.SetModifiedFlag(TRUE);
    lone.Load(ReadTestData("empty.nrv"));
    EXPECT_FALSE(lone.document.IsModified());
}

TEST(DocumentStream, BytesAfterTheLastObjectAreNotRead) {
    Bytes bytes = ReadTestData("line_schema5.nrv");
    bytes.insert(bytes.end(), {1, 2, 3, 4, 5});
    LoneDocument lone;
    EXPECT_EQ(-1, lone.LoadRaw(bytes));
    EXPECT_EQ(1, lone.Objects().GetSize());
}

TEST(DocumentStream, ANegativeCountReadsNoObject) {
    Bytes bytes = ReadTestData("line_schema5.nrv");
    Put<int>(bytes, kCountAt, -1);
    LoneDocument lone;
    EXPECT_EQ(-1, lone.LoadRaw(bytes));
    EXPECT_EQ(0, lone.Objects().GetSize());
}

TEST(DocumentStream, NullObjectsAreSkipped) {
    Bytes bytes = ReadTestData("empty.nrv");
    Put<int>(bytes, kCountAt, 3);
    bytes.insert(bytes.end(), 6, 0);
    LoneDocument lone;
    EXPECT_EQ(-1, lone.LoadRaw(bytes));
    EXPECT_EQ(0, lone.Objects().GetSize());
}

TEST(DocumentStream, XmlFormsAreEmpty) {
    LoneDocument lone;
    lone.Load(ReadTestData("line_schema5.nrv"));
    EXPECT_TRUE(lone.document.GetXML().IsEmpty());
    EXPECT_EQ(0, lone.document.LoadFromXML(L"<drawing/>"));
    EXPECT_EQ(1, lone.Objects().GetSize());
}

// ---- Bad bytes -----------------------------------------------------------------------------------------------------

TEST(DocumentStream, EveryPrefixOfEveryGoldenStreamLoadsWithoutAFaultOrALeak) {
    for (const char* name :
         {"empty.nrv", "line_schema0.nrv", "line_schema1.nrv", "line_schema2.nrv", "line_schema3.nrv",
          "line_schema4.nrv", "line_schema5.nrv", "line_schema6.nrv", "line_base5.nrv", "line_base6.nrv",
          "line_base8.nrv", "line_onebyte.nrv", "lines_two.nrv"}) {
        const Bytes golden = ReadTestData(name);
        const auto before = CKXMemoryManager::Instance()->GetCount();
        for (size_t length = 0; length < golden.size(); ++length) {
            LoneDocument lone;
            const int cause = lone.LoadRaw(Bytes(golden.begin(), golden.begin() + static_cast<std::ptrdiff_t>(length)));
            EXPECT_EQ(CArchiveException::endOfFile, cause) << name << " cut to " << length;
        }
        EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount()) << name;
    }
}

TEST(DocumentStream, WhatWasReadBeforeATruncationStays) {
    Bytes bytes = ReadTestData("lines_two.nrv");
    bytes.resize(bytes.size() - 1);
    LoneDocument lone;
    EXPECT_EQ(CArchiveException::endOfFile, lone.LoadRaw(bytes));
    EXPECT_EQ(1, lone.Objects().GetSize());
    EXPECT_EQ(0.5f, lone.tran.GetScale());
}

TEST(DocumentStream, HeaderFieldsTakeEffectAsTheyAreRead) {
    Bytes bytes = ReadTestData("lines_two.nrv");
    bytes.resize(20); // In the middle of the origin.
    LoneDocument lone;
    EXPECT_EQ(CArchiveException::endOfFile, lone.LoadRaw(bytes));
    EXPECT_EQ(0.5f, lone.tran.GetScale());
    EXPECT_EQ(0.0, lone.tran.GetOriginX());
}

TEST(DocumentStream, AHugeCountCostsNoMemoryAheadOfItsObjects) {
    Bytes bytes = ReadTestData("line_schema5.nrv");
    Put<int>(bytes, kCountAt, 0x7fffffff);
    LoneDocument lone;
    const long long growth = GrowthOfTruncatedLoad(lone, bytes);
    EXPECT_LE(0, growth);
    EXPECT_GT(kSmallGrowth, growth);
    EXPECT_EQ(1, lone.Objects().GetSize());
}

TEST(DocumentStream, TheMeterOfTheseTestsSeesMemoryThatIsTakenAndNotUsed) {
    const auto before = static_cast<long long>(CommittedBytes());
    void* block = ::VirtualAlloc(nullptr, 64 << 20, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    ASSERT_NE(nullptr, block);
    const auto with = static_cast<long long>(CommittedBytes());
    ::VirtualFree(block, 0, MEM_RELEASE);
    EXPECT_LE(64LL << 20, with - before);
}

TEST(DocumentStream, AHugeTextLengthCostsNoMemoryAheadOfItsBytes) {
    Bytes bytes = ReadTestData("line_schema5.nrv");
    const size_t at = 38 + 11 + 48 + 4 + 32;
    ASSERT_EQ(0xFF, bytes[at]);
    bytes.resize(at);
    const Bytes length = {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF};
    bytes.insert(bytes.end(), length.begin(), length.end());
    bytes.insert(bytes.end(), 64, BYTE('x'));
    LoneDocument lone;
    const long long growth = GrowthOfTruncatedLoad(lone, bytes);
    EXPECT_LE(0, growth);
    EXPECT_GT(kSmallGrowth, growth);
    EXPECT_EQ(0, lone.Objects().GetSize());
}

TEST(DocumentStream, AnObjectThatFailsHalfReadIsFreed) {
    // The registry lists an object only when it is whole, so the objects themselves are counted.
    const Bytes stream = CountedStream();
    ASSERT_EQ(0, CCountedDrawable::alive);
    const auto before = CKXMemoryManager::Instance()->GetCount();
    for (const auto failure :
         {CCountedDrawable::ReadsPastTheEnd, CCountedDrawable::ThrowsException, CCountedDrawable::ThrowsNumber}) {
        SCOPED_TRACE(failure);
        CCountedDrawable::failure = failure;
        CCountedDrawable::made = 0;
        LoneDocument lone;
        CMemFile file;
        Bytes bytes = stream;
        file.Attach(bytes.data(), static_cast<UINT>(bytes.size()), 0);
        bool failed = false;
        try {
            CArchive ar(&file, CArchive::load | CArchive::bNoFlushOnDelete, 4096);
            lone.document.ReadData(ar);
        } catch (CException* e) {
            failed = failure != CCountedDrawable::ThrowsNumber;
            e->Delete();
        } catch (int number) {
            failed = failure == CCountedDrawable::ThrowsNumber && number == 7;
        }
        file.Detach();
        EXPECT_TRUE(failed);
        EXPECT_EQ(1, CCountedDrawable::made);
        EXPECT_EQ(0, CCountedDrawable::alive);
        EXPECT_EQ(0, lone.Objects().GetSize());
    }
    CCountedDrawable::failure = CCountedDrawable::None;
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}

TEST(DocumentStream, EveryPrefixOfAStreamFreesWhatItMade) {
    const Bytes stream = CountedStream();
    const auto before = CKXMemoryManager::Instance()->GetCount();
    for (size_t length = 0; length < stream.size(); ++length) {
        CCountedDrawable::made = 0;
        {
            LoneDocument lone;
            EXPECT_EQ(CArchiveException::endOfFile,
                      lone.LoadRaw(Bytes(stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(length))));
            EXPECT_EQ(lone.Objects().GetSize(), CCountedDrawable::alive) << "half-read ones are gone: " << length;
        }
        EXPECT_EQ(0, CCountedDrawable::alive) << length;
    }
    EXPECT_EQ(3, CCountedDrawable::made) << "the longest prefix began all three";
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}

TEST(DocumentStream, ATagBackToACountedObjectFreesItOnce) {
    Bytes bytes = CountedStream();
    const Bytes one = [] {
        LoneDocument lone;
        auto* object = new CCountedDrawable;
        KX_ADD_MEMORY(object);
        lone.document.AddDrawAobject(object);
        return lone.Store();
    }();
    bytes.resize(one.size());
    Append<WORD>(bytes, 2);
    {
        LoneDocument lone;
        EXPECT_EQ(CArchiveException::badIndex, lone.LoadRaw(bytes));
        EXPECT_EQ(1, CCountedDrawable::alive);
    }
    EXPECT_EQ(0, CCountedDrawable::alive);
}

TEST(DocumentStream, AnUnknownClassIsACorruptStream) {
    Bytes bytes = ReadTestData("line_schema5.nrv");
    bytes[38 + 6] = 'D'; // "CLine" becomes "DLine".
    LoneDocument lone;
    EXPECT_EQ(CArchiveException::badClass, lone.LoadRaw(bytes));
    EXPECT_EQ(0, lone.Objects().GetSize());
}

TEST(DocumentStream, AStoredObjectThatIsNoDrawableIsACorruptStream) {
    for (const char* name : {"CLayerInfo", "CLayerManager", "CSerialable"}) {
        Bytes bytes = ReadTestData("lines_two.nrv");
        // The first line, then a class record of the other kind, then anything.
        bytes.resize(ReadTestData("line_schema5.nrv").size());
        Append<WORD>(bytes, 0xFFFF);
        Append<WORD>(bytes, 5);
        Append<WORD>(bytes, static_cast<WORD>(std::strlen(name)));
        bytes.insert(bytes.end(), name, name + std::strlen(name));
        bytes.insert(bytes.end(), 200, 0);
        LoneDocument lone;
        const auto before = CKXMemoryManager::Instance()->GetCount();
        EXPECT_EQ(CArchiveException::badClass, lone.LoadRaw(bytes)) << name;
        EXPECT_EQ(1, lone.Objects().GetSize()) << name;
        lone.document.Reset();
        EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount()) << name;
    }
}

TEST(DocumentStream, ATagBackToAnEarlierObjectIsACorruptStreamAndEntersNoListTwice) {
    Bytes bytes = ReadTestData("lines_two.nrv");
    bytes.resize(ReadTestData("line_schema5.nrv").size());
    Append<WORD>(bytes, 2); // Tag 1 is the class, tag 2 the line.
    LoneDocument lone;
    EXPECT_EQ(CArchiveException::badIndex, lone.LoadRaw(bytes));
    EXPECT_EQ(1, lone.Objects().GetSize());
}

TEST(DocumentStream, TagsThatConfuseClassesWithObjectsAreACorruptStream) {
    for (WORD tag : {WORD(1), WORD(0x8002), WORD(3), WORD(0x8003), WORD(0x7FFE), WORD(0xFFFE)}) {
        Bytes bytes = ReadTestData("lines_two.nrv");
        bytes.resize(ReadTestData("line_schema5.nrv").size());
        Append<WORD>(bytes, tag);
        bytes.insert(bytes.end(), 200, 0);
        LoneDocument lone;
        EXPECT_NE(-1, lone.LoadRaw(bytes)) << tag;
        EXPECT_EQ(1, lone.Objects().GetSize()) << tag;
    }
}

TEST(DocumentStream, TheLatestClassRecordOfAClassCounts) {
    // A line of schema 5, then a class record of schema 1, then the index of the first record.
    Bytes bytes = ReadTestData("line_schema5.nrv");
    const Bytes old = ReadTestData("line_schema1.nrv");
    Put<int>(bytes, kCountAt, 3);
    bytes.insert(bytes.end(), old.begin() + 38, old.end());
    Append<WORD>(bytes, 0x8001);
    bytes.insert(bytes.end(), old.begin() + 38 + 11, old.end()); // A body of schema 1.
    LoneDocument lone;
    EXPECT_EQ(-1, lone.LoadRaw(bytes));
    ASSERT_EQ(3, lone.Objects().GetSize());
    EXPECT_EQ(1e9, static_cast<CLine*>(lone.Objects()[2])->GetEndPoint().x);
}

TEST(DocumentStream, SeededMutationsNeverFaultAndNeverLeak) {
    const char* names[] = {"line_schema1.nrv", "line_schema3.nrv", "line_schema5.nrv",
                           "line_base6.nrv",   "line_onebyte.nrv", "lines_two.nrv"};
    std::mt19937 random(20260111);
    const auto before = CKXMemoryManager::Instance()->GetCount();
    for (const char* name : names) {
        const Bytes golden = ReadTestData(name);
        for (int round = 0; round < 4000; ++round) {
            Bytes bytes = golden;
            for (int changes = 1 + static_cast<int>(random() % 4); changes > 0; --changes) {
                const size_t at = 4 + random() % (bytes.size() - 4); // The version word stays: it shows a box.
                switch (random() % 3) {
                case 0:
                    bytes[at] = static_cast<BYTE>(random());
                    break;
                case 1:
                    bytes[at] = random() % 2 != 0 ? 0xFF : 0;
                    break;
                default:
                    bytes.erase(bytes.begin() + static_cast<std::ptrdiff_t>(at));
                    break;
                }
            }
            LoneDocument lone;
            lone.LoadRaw(bytes);
            EXPECT_LE(lone.Objects().GetSize(), 8);
        }
    }
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}
