// The colour table: order, byte order, edges.

#include "GraphInfo.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

TEST(GraphInfo, WellKnownColoursAreAtTheirIndices) {
    CGraphColorInfo* table = CGraphColorInfo::GetInstance();
    EXPECT_EQ(0x00FFF8F0u, table->GetColor(0));   // AliceBlue F0F8FF
    EXPECT_EQ(0x00FFFF00u, table->GetColor(2));   // Aqua 00FFFF
    EXPECT_EQ(0x00000000u, table->GetColor(7));   // Black
    EXPECT_EQ(0x00FF0000u, table->GetColor(9));   // Blue 0000FF
    EXPECT_EQ(0x00E22B8Au, table->GetColor(10));  // BlueViolet 8A2BE2
    EXPECT_EQ(0x00FFFF00u, table->GetColor(20));  // Cyan
    EXPECT_EQ(0x004763FFu, table->GetColor(132)); // Tomato FF6347
    EXPECT_EQ(0x00D0E040u, table->GetColor(134)); // Turquoise 40E0D0
    EXPECT_EQ(0x00FFFFFFu, table->GetColor(137)); // White
    EXPECT_EQ(0x0000FFFFu, table->GetColor(139)); // Yellow FFFF00
    EXPECT_EQ(0x0032CD9Au, table->GetColor(140)); // YellowGreen 9ACD32
}

TEST(GraphInfo, DarkSeaGreenHasItsPublishedValue) {
    EXPECT_EQ(0x008BBC8Fu, CGraphColorInfo::GetInstance()->GetColor(33));
    EXPECT_EQ(33, CGraphColorInfo::GetInstance()->GetColorIndex(0xFF8FBC8B));
}

TEST(GraphInfo, TransparentShowsAsWhite) {
    EXPECT_EQ(0x00FFFFFFu, CGraphColorInfo::GetInstance()->GetColor(133));
}

TEST(GraphInfo, AnIndexOutsideTheTableIsBlack) {
    CGraphColorInfo* table = CGraphColorInfo::GetInstance();
    for (int index : {-3, -1, 141, 499, 500, 65533, 0x7fffffff, -0x7fffffff - 1}) {
        EXPECT_EQ(0u, table->GetColor(index)) << index;
    }
}

TEST(GraphInfo, IndicesAreFoundByTheRawEntryAndNotByAColorref) {
    CGraphColorInfo* table = CGraphColorInfo::GetInstance();
    EXPECT_EQ(7, table->GetColorIndex(0xFF000000));
    EXPECT_EQ(137, table->GetColorIndex(0x00000000)) << "unknown colours give white";
    EXPECT_EQ(133, table->GetColorIndex(0x00FFFFFF)) << "Transparent comes before any other such entry";
    EXPECT_EQ(2, table->GetColorIndex(0xFF00FFFF)) << "Aqua hides Cyan";
    EXPECT_EQ(45, table->GetColorIndex(0xFFFF00FF)) << "Fuchsia hides Magenta";
    EXPECT_EQ(137, table->GetColorIndex(0xFFFFFFFF));
    EXPECT_EQ(140, table->GetColorIndex(0xFF9ACD32));
}

TEST(GraphInfo, AChecksumOfEveryEntryAndItsIndexIsThatOfThePublishedList) {
    // Formed independently from the published list; it would change with any entry, and with any two exchanged.
    CGraphColorInfo* table = CGraphColorInfo::GetInstance();
    unsigned long long sum = 0;
    for (int i = 0; i < 141; ++i) {
        sum += static_cast<unsigned long long>(i + 1) * table->GetColor(i);
    }
    EXPECT_EQ(102009339036ull, sum);
}

TEST(GraphInfo, EveryEntryButTransparentIsOpaque) {
    CGraphColorInfo* table = CGraphColorInfo::GetInstance();
    for (int i = 0; i < 141; ++i) {
        const DWORD color = table->GetColor(i);
        const DWORD rgb = (color & 0xFF) << 16 | (color & 0xFF00) | (color & 0xFF0000) >> 16;
        // The first entry of a colour is found: 20 Cyan is 2 Aqua, 79 Magenta is 45 Fuchsia, 133 shows as 137 White.
        const int first = i == 20 ? 2 : i == 79 ? 45 : i == 133 ? 137 : i;
        EXPECT_EQ(first, table->GetColorIndex(0xFF000000 | rgb)) << i;
        EXPECT_EQ(i == 133 || i == 137 ? 133 : 137, table->GetColorIndex(rgb)) << i;
    }
}

TEST(GraphInfo, TheInstanceAndItsTableAreRegisteredWhileTheyLive) {
    CGraphColorInfo::Release();
    CKXMemoryManager* registry = CKXMemoryManager::Instance();
    const int before = registry->GetCount();
    const int unknown = registry->GetUnknownCount();
    CGraphColorInfo* table = CGraphColorInfo::GetInstance();
    EXPECT_TRUE(registry->IsKnown(table));
    EXPECT_EQ(before + 2, registry->GetCount()) << "the instance and its array";
    EXPECT_EQ(table, CGraphColorInfo::GetInstance());
    EXPECT_EQ(before + 2, registry->GetCount());
    CGraphColorInfo::Release();
    EXPECT_EQ(before, registry->GetCount());
    EXPECT_EQ(unknown, registry->GetUnknownCount());
}

TEST(GraphInfo, AReleasedTableIsMadeAnew) {
    CGraphColorInfo::GetInstance();
    CGraphColorInfo::Release();
    CGraphColorInfo::Release();
    EXPECT_EQ(0x00FFFFFFu, CGraphColorInfo::GetInstance()->GetColor(137));
}
