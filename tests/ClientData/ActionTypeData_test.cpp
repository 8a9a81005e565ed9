#include "ClientData/ActionTypeData.h"

#include "ClientData/Catalogue.h"
#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

static_assert(std::is_same_v<CatalogueSlot<200>::Class, CActionTypeData>);

namespace {

using ActionTypeDataTest = RegistryFolderTest<TableRegistry>;

TEST_F(ActionTypeDataTest, MapsNamesToPlayerAndMonsterNumbersThroughSlots7And8)
{
    WriteFile("ini/ActionType.ini",
              "; player actions\n100 _ACTION_STANDBY\r\n"
              "555 _ACTION_USE_ITEM\n"  // upper-case M: not a listed name
              "556 _ACTION_USE_ITEm\n"
              "101 _ACTION_STANDBY\n"  // the later line wins
              "-3 _ACTION_SKILL_SEAL\n");
    WriteFile("ini/MonsterActionType.ini", "900 _ACTION_STANDBY\n");
    CActionTypeData table;
    EXPECT_EQ(CallSlot<int>(&table, 7, 8), 101);
    EXPECT_EQ(CallSlot<int>(&table, 8, 8), 900);
    EXPECT_EQ(table.GetActionType(122), 556);
    EXPECT_EQ(table.GetActionType(289), -3);
    EXPECT_EQ(table.GetMonsterActionType(122), 0);
    for (int nPosition : {290, 511, 512, 100000, -1}) EXPECT_EQ(table.GetActionType(nPosition), 0) << nPosition;
    EXPECT_EQ(LogEntryCount(), 0);
}

TEST_F(ActionTypeDataTest, LoadsOnTheFirstQueryOnlyAndNeverRetriesAMissingFile)
{
    CActionTypeData table;  // reads nothing yet
    EXPECT_EQ(ActionNameList().size(), static_cast<std::size_t>(kActionNameAmount));
    WriteFile("ini/ActionType.ini", "11 _ACTION_DANCE1\n");
    EXPECT_EQ(table.GetMonsterActionType(0), 0);  // the first query of either kind loads both
    EXPECT_EQ(table.GetActionType(0), 11);
    EXPECT_EQ(LogEntryCount(), 1);
    EXPECT_NE(LogText().find("Load Error ini/MonsterActionType.ini not find"), std::string::npos) << LogText();

    WriteFile("ini/ActionType.ini", "22 _ACTION_DANCE1\n");
    WriteFile("ini/MonsterActionType.ini", "33 _ACTION_DANCE1\n");
    table.Load();  // already loaded: nothing happens
    EXPECT_EQ(table.GetActionType(0), 11);
    EXPECT_EQ(table.GetMonsterActionType(0), 0);
    EXPECT_EQ(LogEntryCount(), 1);

    table.Clear();  // forgets the load, so the next query reads again
    EXPECT_EQ(table.GetActionType(0), 22);
    EXPECT_EQ(table.GetMonsterActionType(0), 33);
}

TEST_F(ActionTypeDataTest, GarbageNeverBreaksTheLoad)
{
    std::string strGarbage(std::string(5000, 'x') + " _ACTION_STANDBY\n");
    for (int i = 0; i < 20000; ++i) strGarbage += static_cast<char>((i * 7919 + 13) % 256);
    WriteFile("ini/ActionType.ini", strGarbage + "\n\n99999999999999 _ACTION_JUMP\n");
    WriteFile("ini/MonsterActionType.ini", std::string(100000, ' '));
    {
        CActionTypeData table;
        EXPECT_EQ(table.GetActionType(38), 2147483647);  // the number saturates as atoi does
        EXPECT_EQ(table.GetMonsterActionType(0), 0);
    }
    EXPECT_TRUE(ActionNameList().empty());  // the destructor empties the name list
}

}  // namespace
