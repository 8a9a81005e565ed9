#include "ClientData/MonsterTypeTable.h"

#include <cstddef>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

// The client reads the record by layout.
static_assert(sizeof(MonsterTypeInfo) == 844, "record size");
static_assert(offsetof(MonsterTypeInfo, szName) == 4 && offsetof(MonsterTypeInfo, nSizeAdd) == 20);
static_assert(offsetof(MonsterTypeInfo, szDisappearEffect) == 56 && offsetof(MonsterTypeInfo, nLeftWeapon) == 312);
static_assert(offsetof(MonsterTypeInfo, nDefyStatus) == 708 && offsetof(MonsterTypeInfo, szDefyEffect) == 716);

class MonsterTypeTableTest : public RegistryFolderTest<TableRegistry> {
protected:
    void Load(const std::string& strContent)
    {
        WriteFile("ini/Monster.dat", strContent);
        m_table.BuildFilePath();
        m_table.Load();
    }

    CMonsterTypeTable m_table;
};

TEST_F(MonsterTypeTableTest, ReadsEveryKeyAndDefaultsNameAltitudeTo100)
{
    Load("[1001]\nName=Wolf\nSizeAdd=1\nZoomPercent=2\nMaxLife=3\nLevel=4\nWhiteBlack=5\nBattlelev=6\n"
         "NameAltitude=7\nSort=8\nExtraExp=9\nDisappearEffect=de\nDisappearSound=ds\nl_weapon=10\nr_weapon=11\n"
         "effect=fx\nNameHeight=12\nattackeffect=ae\nappeareffect=pe\nDefyStatus=13\nLockDir=14\nDefyEffect=dfx\n"
         "[1002]\nName=Bare\n");
    const MonsterTypeInfo* pWolf = m_table.GetMonsterType(1001);
    ASSERT_NE(pWolf, nullptr);
    EXPECT_STREQ(pWolf->szName, "Wolf");
    const int setInt[] = {pWolf->nSizeAdd,    pWolf->nZoomPercent, pWolf->nMaxLife,    pWolf->nLevel,
                          pWolf->nWhiteBlack, pWolf->nBattleLev,   pWolf->nNameAltitude, pWolf->nSort,
                          pWolf->nExtraExp,   pWolf->nLeftWeapon,  pWolf->nRightWeapon, pWolf->nNameHeight,
                          pWolf->nDefyStatus, pWolf->nLockDir};
    for (int i = 0; i < 14; ++i) EXPECT_EQ(setInt[i], i + 1) << "field " << i;
    EXPECT_EQ(std::string(pWolf->szDisappearEffect) + pWolf->szDisappearSound + pWolf->szEffect +
                  pWolf->szAttackEffect + pWolf->szAppearEffect + pWolf->szDefyEffect,
              "dedsfxaepedfx");

    const MonsterTypeInfo* pBare = m_table.GetMonsterType(1002);
    ASSERT_NE(pBare, nullptr);
    EXPECT_EQ(pBare->nNameAltitude, 100);
    EXPECT_EQ(pBare->nZoomPercent + pBare->szEffect[0], 0);
    EXPECT_EQ(m_table.GetLoadedAmount(), 2u);
}

TEST_F(MonsterTypeTableTest, TitlesReadAsDecimalNumbersSkippingZeroAndText)
{
    Load("[0]\nName=Zero\n[abc]\nName=Text\n[1005abc]\nName=Suffix\n[-7]\nName=Negative\n[ 42 ]\nName=Blank\n");
    EXPECT_EQ(m_table.GetLoadedAmount(), 3u);
    EXPECT_EQ(m_table.GetMonsterType(0), nullptr);
    EXPECT_EQ(m_table.FindMonsterByName("Zero"), nullptr);
    EXPECT_EQ(m_table.FindMonsterByName("Text"), nullptr);
    for (const auto& [nId, szName] : {std::pair<int, const char*>{1005, "Suffix"}, {-7, "Negative"}, {42, "Blank"}}) {
        ASSERT_NE(m_table.GetMonsterType(nId), nullptr) << nId;
        EXPECT_STREQ(m_table.GetMonsterType(nId)->szName, szName);
    }
}

// The client calls the lookups by slot: 7 GetMonsterType, 8 FindMonsterByName,
// 9 CanTakeStatus.
TEST_F(MonsterTypeTableTest, LaterSectionsWinThroughTheRawSlots)
{
    Load("[1005]\nName=First\nDefyStatus=3\n[2000]\nName=Shared\n[1005]\nName=Second\n[3000]\nName=Shared\n");
    auto pById = CallSlot<const MonsterTypeInfo*>(&m_table, 7, 1005);
    ASSERT_NE(pById, nullptr);
    EXPECT_STREQ(pById->szName, "Second");
    auto pByName = CallSlot<const MonsterTypeInfo*>(&m_table, 8, "Shared");
    ASSERT_NE(pByName, nullptr);
    EXPECT_EQ(pByName->nId, 3000);
    EXPECT_STREQ(CallSlot<const MonsterTypeInfo*>(&m_table, 8, "First")->szName, "First");
    // The later record has no defy status, the earlier one still counts.
    for (const auto& [nId, nCan] : {std::pair<int, int>{1005, 0}, {2000, 1}, {9999, 1}, {0, 1}})
        EXPECT_EQ(CallSlot<int>(&m_table, 9, nId), nCan) << nId;
}

TEST_F(MonsterTypeTableTest, NamesAreCutTo15AndCompareExactly)
{
    Load("[1]\nName=ABCDEFGHIJKLMNOPQRST\n[2]\nName=wolf\n[3]\nDefyEffect=" + std::string(200, 'x') + "\n");
    EXPECT_STREQ(m_table.GetMonsterType(1)->szName, "ABCDEFGHIJKLMNO");
    EXPECT_EQ(m_table.FindMonsterByName("ABCDEFGHIJKLMNOPQRST"), nullptr);
    EXPECT_EQ(m_table.FindMonsterByName("ABCDEFGHIJKLMNO")->nId, 1);
    EXPECT_EQ(m_table.FindMonsterByName("Wolf"), nullptr);
    EXPECT_EQ(m_table.FindMonsterByName(nullptr), nullptr);
    EXPECT_EQ(std::string(m_table.GetMonsterType(3)->szDefyEffect), std::string(127, 'x'));
}

TEST_F(MonsterTypeTableTest, UnreadableFileLogsTheBareNameClearEmptiesAndGarbageIsHarmless)
{
    m_table.Load();  // no path built yet
    EXPECT_NE(LogText().find("error on open Monster.dat. -- "), std::string::npos) << LogText();
    EXPECT_EQ(m_table.GetLoadedAmount(), 0u);

    Load("[5]\nName=A\nDefyStatus=1\n");
    EXPECT_EQ(m_table.CanTakeStatus(5), 0);
    m_table.Clear();
    EXPECT_EQ(m_table.GetMonsterType(5), nullptr);
    EXPECT_EQ(m_table.FindMonsterByName("A"), nullptr);
    EXPECT_EQ(m_table.CanTakeStatus(5), 1);
    EXPECT_EQ(m_table.GetLoadedAmount(), 0u);

    std::string strGarbage;  // garbage loads without harm
    for (int i = 0; i < 4096; ++i) strGarbage += static_cast<char>((i * 7919) % 251 + 1);
    Load(strGarbage + "\n[12\nName=\n[]\n[99999999999]\n=\n[3]" + std::string(3000, '=') + "\n");
    m_table.GetMonsterType(3);
    m_table.FindMonsterByName("");
}

}  // namespace
