#include "ClientData/NpcTypeInfo.h"

#include <cstddef>
#include <tuple>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

static_assert(sizeof(NpcTypeInfo) == 272, "record size");
static_assert(offsetof(NpcTypeInfo, szEffect) == 20 && offsetof(NpcTypeInfo, nSimpleObjId) == 84);
static_assert(offsetof(NpcTypeInfo, szNote) == 108 && offsetof(NpcTypeInfo, nZoomPercent) == 236);

class NpcTypeInfoTest : public RegistryFolderTest<TableRegistry> {
protected:
    CNpcTypeInfoTable m_table;
};

TEST_F(NpcTypeInfoTest, ReadsEveryKeyWithItsDefaults)
{
    WriteFile("ini/Npc.ini",
              "[NpcType1201]\nName=Smith\nEffect=" + std::string(30, 'e') +
                  "\nSimpleObjID=1\nStandByMotion=2\nBlazeMotion=3\nBlazeMotion1=4\nBlazeMotion2=5\nRestMotion=6\n"
                  "Note=Sells swords\nZoomPercent=7\nMouseSign=8\nChangeDir=9\nFrontBlock=10\nBackBlock=11\n"
                  "LeftBlock=12\nRightBlock=13\nl_weapon=14\nr_weapon=15\n"
                  "[NpcType1202]\nName=Plain\n");
    m_table.Load();
    const NpcTypeInfo* pSmith = m_table.GetNpcType(1201);
    ASSERT_NE(pSmith, nullptr);
    EXPECT_STREQ(pSmith->szName, "Smith");
    EXPECT_EQ(std::string(pSmith->szEffect), std::string(30, 'e'));  // 64 bytes hold it whole
    EXPECT_STREQ(pSmith->szNote, "Sells swords");
    const int setInt[] = {pSmith->nSimpleObjId, pSmith->nStandByMotion, pSmith->nBlazeMotion, pSmith->nBlazeMotion1,
                          pSmith->nBlazeMotion2, pSmith->nRestMotion,   pSmith->nZoomPercent, pSmith->nMouseSign,
                          pSmith->nChangeDir,    pSmith->nFrontBlock,   pSmith->nBackBlock,   pSmith->nLeftBlock,
                          pSmith->nRightBlock,   pSmith->nLeftWeapon,   pSmith->nRightWeapon};
    for (int i = 0; i < 15; ++i) EXPECT_EQ(setInt[i], i + 1) << "field " << i;

    const NpcTypeInfo* pPlain = m_table.GetNpcType(1202);
    ASSERT_NE(pPlain, nullptr);
    EXPECT_EQ(std::tie(pPlain->nZoomPercent, pPlain->nChangeDir, pPlain->nMouseSign), std::make_tuple(100, 1, 0));
}

// Slot 7 is GetNpcType.
TEST_F(NpcTypeInfoTest, FirstSectionWinsTheIdFollowsSevenCharactersAndOnlyUpperCaseNullEmptiesTheNote)
{
    WriteFile("ini/Npc.ini",
              "[NpcType10]\nName=First\n[NpcType10]\nName=Second\n[Xxxxxxx1201]\nName=AnyPrefix\n"
              "[NpcType]\nName=Zero\n[Npc]\nName=Short\n[NpcType12ab]\nName=Digits\n"
              "[NpcType1]\nNote=NULL\n[NpcType2]\nNote=null\n[NpcType3]\nNote=Null\n");
    m_table.Load();
    EXPECT_EQ(m_table.GetLoadedAmount(), 9u);
    const auto Find = [&](uint32_t nId) { return CallSlot<const NpcTypeInfo*>(&m_table, 7, nId); };
    ASSERT_NE(Find(10), nullptr);
    EXPECT_STREQ(Find(10)->szName, "First");
    EXPECT_STREQ(Find(1201)->szName, "AnyPrefix");
    EXPECT_STREQ(Find(0)->szName, "Zero");  // [Npc] gives 0 as well, but comes later
    EXPECT_STREQ(Find(12)->szName, "Digits");
    EXPECT_EQ(Find(11), nullptr);
    EXPECT_EQ(std::string(Find(1)->szNote) + "|" + Find(2)->szNote + "|" + Find(3)->szNote, "|null|Null");
}

TEST_F(NpcTypeInfoTest, MissingFileLogsTheFixedPathWhateverWasBuiltAndAFailedAllocationItsUnitAndLine)
{
    m_table.Load();
    EXPECT_NE(LogText().find("ini/Npc.ini load error! -- "), std::string::npos) << LogText();
    EXPECT_EQ(m_table.GetNpcType(0), nullptr);
    NpcTypeAllocFailLog(CNpcTypeInfoTable::GetFormat());
    EXPECT_NE(LogText().find(ZEL_STAR "ASSERT(pInfo) in 31 line of ClientData\\NpcTypeInfo" ZEL_STAR " -- "),
              std::string::npos);

    WriteFile("ini/Npc.ini", "[NpcType5]\nName=Fixed\n");
    m_table.SetDefer();
    m_table.BuildFilePath();  // no name: "ini/", which Load ignores
    m_table.Load();
    ASSERT_NE(m_table.GetNpcType(5), nullptr);
    m_table.Clear();
    EXPECT_EQ(m_table.GetNpcType(5), nullptr);
    EXPECT_EQ(m_table.GetLoadedAmount(), 0u);
}

}  // namespace
