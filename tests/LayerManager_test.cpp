// The layer table: names, limits, and its own stream.

#include "LayerManager.h"
#include "support/TestData.h"

#include <KXBaseOpr.h>
#include <KxFoundation.h>
#include <gtest/gtest.h>

namespace {

Bytes StoreLayers(CSerialable& object) {
    CMemFile file(1024);
    {
        CArchive ar(&file, CArchive::store);
        object.Serialize(ar);
    }
    Bytes bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

// The cause of the exception that reading raised, or -1.
int Read(CSerialable& object, Bytes bytes, UINT schema = kNoSchema) {
    bytes.reserve(bytes.size() + 1);
    CMemFile file;
    file.Attach(bytes.data(), static_cast<UINT>(bytes.size()));
    int cause = -1;
    try {
        CArchive ar(&file, CArchive::load);
        ar.SetObjectSchema(schema);
        object.Serialize(ar);
        ar.Close();
    } catch (CArchiveException* e) {
        cause = e->m_cause;
        e->Delete();
    }
    file.Detach();
    return cause;
}

} // namespace

TEST(LayerManager, ANewTableHasOneWhiteSolidLayerOfWidthOne) {
    CLayerManager layers;
    ASSERT_EQ(1, layers.GetLayerCount());
    const CLayerInfo* layer = layers.GetLayerInfo(0);
    EXPECT_STREQ("Layer 0", layer->GetName());
    EXPECT_EQ(137, layer->m_ColorIndex);
    EXPECT_EQ(0, layer->m_LineType);
    EXPECT_EQ(1.0f, layer->m_LineWide);
    EXPECT_EQ(1, layer->m_State);
    EXPECT_EQ(nullptr, layers.GetLayerInfo(1));
}

TEST(LayerManager, ANegativeIndexIsAnInvalidArgument) {
    CLayerManager layers;
    bool thrown = false;
    try {
        layers.GetLayerInfo(-1);
    } catch (CInvalidArgException* e) {
        thrown = true;
        e->Delete();
    }
    EXPECT_TRUE(thrown);
}

TEST(LayerManager, OneHundredAndOneLayersFit) {
    CLayerManager layers;
    for (int i = 1; i <= 100; ++i) {
        EXPECT_EQ(i, layers.AddLayer("x"));
    }
    EXPECT_EQ(-1, layers.AddLayer("x"));
    EXPECT_EQ(101, layers.GetLayerCount());
    layers.RemoveAll();
    EXPECT_EQ(0, layers.GetLayerCount());
    EXPECT_EQ(0, layers.AddLayer("again"));
}

TEST(LayerManager, ANameOfTwentyCharactersFitsAndOneMoreIsRefused) {
    CLayerInfo layer;
    layer.SetName("12345678901234567890");
    EXPECT_STREQ("12345678901234567890", layer.GetName());
    layer.SetName("123456789012345678901");
    EXPECT_STREQ("12345678901234567890", layer.GetName());
    layer.SetName(nullptr);
    EXPECT_STREQ("12345678901234567890", layer.GetName());
    layer.SetName("");
    EXPECT_STREQ("", layer.GetName());
}

namespace {

void NoteMessage(const CString& text, int level, void* context) {
    *static_cast<CString*>(context) = text;
    EXPECT_EQ(1, level);
}

} // namespace

TEST(LayerManager, ARefusedNameIsReported) {
    CString said;
    KXERROR::SetListener(NoteMessage, &said);
    CLayerInfo layer;
    layer.SetName("123456789012345678901");
    KXERROR::SetListener(nullptr, nullptr);
    EXPECT_EQ(CString(L"图层名称长度超过20"), said);
}

TEST(LayerManager, ALayerIsStoredFieldByField) {
    CLayerInfo layer;
    layer.SetName("ab");
    layer.m_ColorIndex = -2;
    layer.m_Color = 0x00112233;
    layer.m_LineType = 2;
    layer.m_LineWide = 0.5f;
    const Bytes expected = {5, 0, 0,    0,    5,    0,    0,    0,    2,    0, 0, 0, 'a', 'b', 1, 0,
                            0, 0, 0xFE, 0xFF, 0xFF, 0xFF, 0x33, 0x22, 0x11, 0, 2, 0, 0,   0,   0, 0x3F};
    EXPECT_EQ(expected, StoreLayers(layer));
    CLayerInfo second;
    EXPECT_EQ(-1, Read(second, expected));
    EXPECT_STREQ("ab", second.GetName());
    EXPECT_EQ(-2, second.m_ColorIndex);
    EXPECT_EQ(0x00112233u, second.m_Color);
    EXPECT_EQ(0.5f, second.m_LineWide);
}

TEST(LayerManager, AnOlderSchemaOfALayerHasNoVersionWords) {
    const Bytes body = {1, 0, 0, 0, 'z', 9, 0, 0, 0, 7, 0, 0, 0, 1, 2, 3, 0, 4, 0, 0, 0, 0x80, 0x3F};
    CLayerInfo layer;
    EXPECT_EQ(-1, Read(layer, body, 3));
    EXPECT_STREQ("z", layer.GetName());
    EXPECT_EQ(9, layer.m_State);
    EXPECT_EQ(7, layer.m_ColorIndex);
    EXPECT_EQ(4, layer.m_LineType);
    EXPECT_EQ(1.0f, layer.m_LineWide);
}

TEST(LayerManager, ALongNameInAStreamKeepsItsFirstTwentyBytesAndIsConsumedWhole) {
    Bytes bytes = {5, 0, 0, 0, 5, 0, 0, 0, 0xD0, 7, 0, 0}; // 2000 bytes.
    for (int i = 0; i < 2000; ++i) {
        bytes.push_back(static_cast<BYTE>('A' + i % 26));
    }
    const Bytes rest = {1, 0, 0, 0, 8, 0, 0, 0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0x40};
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    CLayerInfo layer;
    EXPECT_EQ(-1, Read(layer, bytes));
    EXPECT_STREQ("ABCDEFGHIJKLMNOPQRST", layer.GetName());
    EXPECT_EQ(8, layer.m_ColorIndex);
    EXPECT_EQ(2.0f, layer.m_LineWide);
}

TEST(LayerManager, ANegativeNameLengthIsACorruptStream) {
    const Bytes bytes = {5, 0, 0, 0, 5, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0};
    CLayerInfo layer;
    layer.SetName("kept");
    EXPECT_EQ(CArchiveException::badIndex, Read(layer, bytes));
    EXPECT_STREQ("kept", layer.GetName());
}

TEST(LayerManager, AHugeNameLengthEndsWithTheStream) {
    const Bytes bytes = {5, 0, 0, 0, 5, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0x7F, 'a', 'b'};
    CLayerInfo layer;
    EXPECT_EQ(CArchiveException::endOfFile, Read(layer, bytes));
}

TEST(LayerManager, TheTableHasNoLeadingWordAndRoundTrips) {
    CLayerManager layers;
    layers.AddLayer("second");
    layers.GetLayerInfo(1)->m_LineWide = 3.5f;
    const Bytes bytes = StoreLayers(layers);
    ASSERT_GE(bytes.size(), 12u);
    EXPECT_EQ((Bytes{100, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0}), Bytes(bytes.begin(), bytes.begin() + 12));
    CLayerManager loaded;
    loaded.AddLayer("goes");
    EXPECT_EQ(-1, Read(loaded, bytes));
    ASSERT_EQ(2, loaded.GetLayerCount());
    EXPECT_STREQ("second", loaded.GetLayerInfo(1)->GetName());
    EXPECT_EQ(3.5f, loaded.GetLayerInfo(1)->m_LineWide);
}

TEST(LayerManager, LoadedLayersAreRegistered) {
    CKXMemoryManager* registry = CKXMemoryManager::Instance();
    CLayerManager layers;
    layers.AddLayer("second");
    const Bytes bytes = StoreLayers(layers);
    const int outside = registry->GetCount();
    {
        CLayerManager loaded;
        loaded.RemoveAll();
        ASSERT_EQ(outside, registry->GetCount());
        ASSERT_EQ(-1, Read(loaded, bytes));
        EXPECT_EQ(outside + 2, registry->GetCount());
        EXPECT_TRUE(registry->IsKnown(loaded.GetLayerInfo(0)));
        EXPECT_TRUE(registry->IsKnown(loaded.GetLayerInfo(1)));
    }
    EXPECT_EQ(outside, registry->GetCount());
}

TEST(LayerManager, TheFlagOfATableRoundTripsWithAnyValue) {
    for (const Bytes& flag : {Bytes{0, 0, 0, 0}, Bytes{0x78, 0x56, 0x34, 0x12}, Bytes{0xFE, 0xFF, 0xFF, 0xFF}}) {
        Bytes bytes = {100, 0, 0, 0};
        bytes.insert(bytes.end(), flag.begin(), flag.end());
        bytes.insert(bytes.end(), 4, 0); // No layer.
        CLayerManager layers;
        EXPECT_EQ(-1, Read(layers, bytes));
        EXPECT_EQ(bytes, StoreLayers(layers));
    }
}

TEST(LayerManager, ATableWithoutLayersLoadsEmpty) {
    CLayerManager layers;
    EXPECT_EQ(-1, Read(layers, {100, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(0, layers.GetLayerCount());
    EXPECT_EQ(nullptr, layers.GetLayerInfo(0));
}

TEST(LayerManager, ALayerThatIsTwiceInAStreamIsRefusedAndFreedOnce) {
    CLayerManager layers;
    Bytes bytes = StoreLayers(layers);
    bytes[8] = 2;
    bytes.push_back(2); // Back to object 2, the layer.
    bytes.push_back(0);
    const auto before = CKXMemoryManager::Instance()->GetCount();
    {
        CLayerManager loaded;
        EXPECT_EQ(CArchiveException::badIndex, Read(loaded, bytes));
        EXPECT_EQ(1, loaded.GetLayerCount());
    }
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}

TEST(LayerManager, ANullLayerAndAnObjectOfAnotherKindAreACorruptTable) {
    const auto before = CKXMemoryManager::Instance()->GetCount();
    {
        CLayerManager layers;
        EXPECT_EQ(CArchiveException::badIndex, Read(layers, {100, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0, 0}));
        EXPECT_EQ(0, layers.GetLayerCount());
        Bytes bytes = {100, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0xFF, 0xFF, 5, 0, 5, 0, 'C', 'L', 'i', 'n', 'e'};
        bytes.insert(bytes.end(), 200, 0);
        EXPECT_EQ(CArchiveException::badClass, Read(layers, bytes));
        EXPECT_EQ(0, layers.GetLayerCount());
    }
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}

TEST(LayerManager, ANegativeCountReadsNoLayer) {
    CLayerManager layers;
    EXPECT_EQ(-1, Read(layers, {100, 0, 0, 0, 1, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 1, 2, 3}));
    EXPECT_EQ(0, layers.GetLayerCount());
    EXPECT_EQ(0, layers.AddLayer("first"));
}

TEST(LayerManager, TheLoadedLimitCountsAndMayLieBelowOrAboveTheCount) {
    CLayerManager two;
    two.AddLayer("second");
    Bytes bytes = StoreLayers(two);
    const struct {
        BYTE limit;
        int fit;
    } cases[] = {{0, 0}, {1, 0}, {2, 1}, {4, 3}};
    for (const auto& row : cases) {
        bytes[0] = row.limit;
        CLayerManager layers;
        ASSERT_EQ(-1, Read(layers, bytes));
        ASSERT_EQ(2, layers.GetLayerCount()) << "loading asks no limit";
        for (int i = 0; i < row.fit; ++i) {
            EXPECT_EQ(2 + i, layers.AddLayer("more")) << int{row.limit};
        }
        EXPECT_EQ(-1, layers.AddLayer("too many")) << int{row.limit};
        EXPECT_EQ(row.limit, StoreLayers(layers)[0]);
    }
}

TEST(LayerManager, ALayerAddedWithTooLongANameIsThereWithoutOne) {
    CLayerManager layers;
    EXPECT_EQ(1, layers.AddLayer("123456789012345678901"));
    EXPECT_EQ(2, layers.AddLayer(nullptr));
    ASSERT_EQ(3, layers.GetLayerCount());
    EXPECT_STREQ("", layers.GetLayerInfo(1)->GetName());
    EXPECT_STREQ("", layers.GetLayerInfo(2)->GetName());
    EXPECT_EQ(137, layers.GetLayerInfo(1)->m_ColorIndex);
}

TEST(LayerManager, EveryPrefixOfATableEndsWithTheStream) {
    CLayerManager layers;
    layers.AddLayer("b");
    const Bytes bytes = StoreLayers(layers);
    for (size_t length = 0; length < bytes.size(); ++length) {
        CLayerManager loaded;
        EXPECT_EQ(CArchiveException::endOfFile,
                  Read(loaded, Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length))))
            << length;
    }
}
