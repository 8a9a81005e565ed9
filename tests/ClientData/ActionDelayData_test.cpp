#include "ClientData/ActionDelayData.h"

#include <tuple>

#include "ClientData/Catalogue.h"
#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

static_assert(std::is_same_v<CatalogueSlot<163>::Class, CActionDelayData>);

namespace {

using ActionDelayDataTest = RegistryFolderTest<TableRegistry>;

TEST_F(ActionDelayDataTest, ReadsOneRecordPerSectionFirstSectionWins)
{
    // A repeated [100] is passed over; [walk] is not a number: action 0.
    WriteFile("ini/ActionDelay.ini", "[100]\nWoundDelay=10\nBlockDelay=20\nDieDelay=30\n[200]\nBlockDelay=5\n"
                                     "[100]\nWoundDelay=99\n[walk]\nWoundDelay=7\n");
    CActionDelayData table;
    table.Load();
    const auto* pDelay = CallSlot<const ActionDelayInfo*>(&table, 7, uint32_t{100});
    ASSERT_NE(pDelay, nullptr);
    EXPECT_EQ(std::tie(pDelay->WoundDelay, pDelay->BlockDelay, pDelay->DieDelay), std::make_tuple(10u, 20u, 30u));
    ASSERT_TRUE(table.GetActionDelay(200) && table.GetActionDelay(0));
    EXPECT_EQ(std::make_pair(table.GetActionDelay(200)->WoundDelay, table.GetActionDelay(200)->BlockDelay),
              std::make_pair(0u, 5u));
    EXPECT_EQ(table.GetActionDelay(0)->WoundDelay, 7u);
    EXPECT_EQ(table.GetActionDelay(300), nullptr);
    table.Clear();
    EXPECT_EQ(table.GetActionDelay(100), nullptr);
}

TEST_F(ActionDelayDataTest, MissingFileIsLoggedAndGarbageIsHarmless)
{
    CActionDelayData table;
    table.Load();
    EXPECT_NE(LogText().find("ini/ActionDelay.ini load error!"), std::string::npos) << LogText();
    EXPECT_EQ(table.GetLoadedAmount(), 0u);

    std::string strGarbage = "[" + std::string(5000, '9') + "]\nWoundDelay=" + std::string(3000, '1') + "\n[";
    for (int i = 0; i < 20000; ++i) strGarbage += static_cast<char>((i * 7919 + 13) % 256);
    WriteFile("ini/ActionDelay.ini", strGarbage);
    table.Load();
    EXPECT_NE(table.GetActionDelay(2147483647u), nullptr);  // the title saturates as atol does
}

}  // namespace
