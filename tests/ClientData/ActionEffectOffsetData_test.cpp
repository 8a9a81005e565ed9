#include "ClientData/ActionEffectOffsetData.h"

#include <vector>

#include "ClientData/Catalogue.h"
#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

static_assert(std::is_same_v<CatalogueSlot<94>::Class, CActionEffectOffsetData>);

namespace {

using ActionEffectOffsetDataTest = RegistryFolderTest<TableRegistry>;

TEST_F(ActionEffectOffsetDataTest, SectionNumberSplitsIntoIdVariantAndSubVariant)
{
    // 0 and below are skipped; for the same triple the first in file order answers.
    WriteFile("ini/ActionEffectOffset.ini", "[1234567]\nnOffsetX=1\nnOffsetY=-2\nnOffsetZ=3\n[0]\n[-1234567]\n[name]\n"
                                            "[7]\nnOffsetZ=9\n[1234567]\nnOffsetX=100\n");
    CActionEffectOffsetData table;
    table.Load();
    const auto* pOffset = CallSlot<const ActionEffectOffset*>(&table, 7, 123, 456, 7);
    ASSERT_NE(pOffset, nullptr);
    EXPECT_EQ(std::vector<int>({pOffset->nOffsetX, pOffset->nOffsetY, pOffset->nOffsetZ}),
              (std::vector<int>{1, -2, 3}));
    ASSERT_NE(table.GetActionEffectOffset(0, 0, 7), nullptr);
    EXPECT_EQ(table.GetActionEffectOffset(0, 0, 7)->nOffsetZ, 9);
    EXPECT_EQ(table.GetActionEffectOffset(0, 0, 0), nullptr);
    EXPECT_EQ(table.GetActionEffectOffset(123, 456, 8), nullptr);
    EXPECT_EQ(table.GetLoadedAmount(), 3u);
}

TEST_F(ActionEffectOffsetDataTest, MissingFileLogsNothingAndGarbageIsHarmless)
{
    CActionEffectOffsetData table;
    table.Load();
    EXPECT_EQ(LogEntryCount(), 0);

    std::string strGarbage = "[2147483647]\nnOffsetX=" + std::string(4000, '8') + "\n";
    for (int i = 0; i < 20000; ++i) strGarbage += static_cast<char>((i * 7919 + 13) % 256);
    WriteFile("ini/ActionEffectOffset.ini", strGarbage);
    table.Load();
    ASSERT_NE(table.GetActionEffectOffset(214748, 364, 7), nullptr);
    EXPECT_EQ(table.GetActionEffectOffset(214748, 364, 7)->nOffsetX, 2147483647);
}

}  // namespace
