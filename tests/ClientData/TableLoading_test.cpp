// How tables load: which path each reads, what a second Load does with what
// is held, when the action types are read, the lines a table logs of its own
// faults, and the item types' count line and name rule.
#include <cstdio>
#include <vector>

#include "Support/TableSupport.h"
#include "Support/VtableCall.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

using TableLoadingTest = RegistryFolderTest<TableRegistry>;

// Npc.ini is read from its fixed path whatever the base built; NewNpc.ini
// and Monster.dat only from the built path.
TEST_F(TableLoadingTest, EachTableReadsItsOwnPath)
{
    WriteFile("ini/Npc.ini", "[NpcType5]\nName=Fixed\n");
    WriteFile("ini/NewNpc.ini", "[NpcType9]\n");
    WriteFile("ini/Monster.dat", "[5]\nName=A\n");
    CNpcTypeInfoTable npc;
    CNpcTypeInfoExTable newNpc;
    CMonsterTypeTable monster;
    npc.SetDefer();
    npc.BuildFilePath();  // no name: "ini/"
    for (CDataTable* pTable :
         {static_cast<CDataTable*>(&npc), static_cast<CDataTable*>(&newNpc), static_cast<CDataTable*>(&monster)})
        pTable->Load();
    EXPECT_NE(npc.GetNpcType(5), nullptr);
    EXPECT_EQ(newNpc.GetNpcType(9), nullptr);
    EXPECT_EQ(monster.GetMonsterType(5), nullptr);
    newNpc.BuildFilePath();
    monster.BuildFilePath();
    newNpc.Load();
    monster.Load();
    EXPECT_NE(newNpc.GetNpcType(9), nullptr);
    EXPECT_NE(monster.GetMonsterType(5), nullptr);
}

TEST_F(TableLoadingTest, ASecondLoadOfItemTypesOrSoundEventsAddsToWhatIsHeld)
{
    CItemTypeTable items;
    items.BuildFilePath();
    WriteFile("ini/ItemType.dat",
              "Amount=3\n" + ItemLine(5, "first", 100) + ItemLine(5, "second") + ItemLine(6, "six"));
    items.Load();
    WriteFile("ini/ItemType.dat", "Amount=2\n" + ItemLine(6, "newsix") + ItemLine(8, "eight"));
    items.Load();  // only new ids are added
    EXPECT_EQ(std::string(items.GetItemName(5)) + items.GetItemName(6) + items.GetItemName(8), "firstsixeight");
    EXPECT_EQ(items.GetIndexedValue(5, 1), 137u);
    EXPECT_EQ(items.GetLoadedAmount(), 3u);

    CSoundEvent sounds;
    WriteFile("ini/SoundEvent.ini", "1 a.wav\n2 b.wav\n");
    sounds.Load();
    WriteFile("ini/SoundEvent.ini", "2 c.wav\n3 d.wav\n");
    sounds.Load();
    std::remove("ini/SoundEvent.ini");
    sounds.Load();  // a missing file keeps what is held
    EXPECT_EQ(std::string(sounds.GetSoundEventText(1)) + sounds.GetSoundEventText(2) + sounds.GetSoundEventText(3),
              "a.wavc.wavd.wav");
    EXPECT_STREQ(TableFileName(sounds).c_str(), "");  // a fixed path: nothing to resolve

    // The action values start again from nothing.
    CActionValueData values;
    WriteFile("ini/Action.dat", "5101 7\n");
    values.Load();
    WriteFile("ini/Action.dat", "1 2\n");
    values.Load();
    EXPECT_EQ(values.GetActionValue(5101), 33);
}

TEST_F(TableLoadingTest, ActionTypesLoadOnTheFirstQueryOnlyAndNeverRetryAMissingFile)
{
    CActionTypeData table;
    EXPECT_EQ(ActionNameList().size(), static_cast<std::size_t>(kActionNameAmount));  // constructed, nothing read
    WriteFile("ini/ActionType.ini", "11 _ACTION_DANCE1\n");
    EXPECT_EQ(table.GetMonsterActionType(0), 0);  // the first query of either kind loads both
    EXPECT_EQ(table.GetActionType(0), 11);
    EXPECT_EQ(LogEntryCount(), 1);
    WriteFile("ini/ActionType.ini", "22 _ACTION_DANCE1\n");
    WriteFile("ini/MonsterActionType.ini", "33 _ACTION_DANCE1\n");
    table.Load();  // already loaded: nothing happens
    EXPECT_EQ(std::make_pair(table.GetActionType(0), table.GetMonsterActionType(0)), std::make_pair(11, 0));
    EXPECT_EQ(LogEntryCount(), 1);
    table.Clear();  // forgets the load, so the next query reads again
    EXPECT_EQ(std::make_pair(table.GetActionType(0), table.GetMonsterActionType(0)), std::make_pair(22, 33));
}

TEST_F(TableLoadingTest, TheActionNameListLivesAsLongAsItsTable)
{
    {
        CActionTypeData table;
    }
    EXPECT_TRUE(ActionNameList().empty());
}

TEST_F(TableLoadingTest, CommonSettingsLogEachMissingValueWithItsLine)
{
    WriteFile("ini/Common.ini", "[Playerface]\nMaleFaceAmount=3\n[Statuary]\nLeaderScale = 7\n");
    CCommonIni table;
    table.Load();
    const std::string strLog = LogText();
    EXPECT_EQ(LogEntryCount(), 7);
    EXPECT_NE(strLog.find(ZEL_STAR "ASSERT(::IniDataGet(szIniFile, szTitle, szSubtitle, m_nFemaleFaceAmount)) in "),
              std::string::npos);
    // "LeaderScale = 7" is found without a value: no assertion.
    EXPECT_EQ(strLog.find("m_nLeaderScale"), std::string::npos);
    // The readers' own misses go to the debugger, not the log.
    EXPECT_NE(DebugText().find("Error: [Playerface] FemaleFaceAmount not found in ini/Common.ini.\n"),
              std::string::npos);
    std::remove("ini/Common.ini");  // a missing file logs all nine
    table.Load();
    EXPECT_EQ(LogEntryCount(), 7 + 9);
}

class ItemTypeTableTest : public TableTest<CItemTypeTable> {
protected:
    CItemTypeTable& Load(const std::string& strContent) { return TableTest::Load("ini/ItemType.dat", strContent); }
};

TEST_F(ItemTypeTableTest, FirstLineAnnouncesHowManyLinesAreRead)
{
    // Only column 0 is parsed, so a blank after "=" splits the count off.
    const std::pair<const char*, std::size_t> kCases[] = {
        {"Amount=2", 2}, {"Amount=9", 3}, {"Amount=0", 0}, {"Amount= 9", 0},
        {"amount=2", 0}, {"Count=2", 0},  {"Amount=x", 0},
    };
    for (const auto& c : kCases) {
        m_table.Clear();
        Load(std::string(c.first) + "\n" + ItemLine(1, "a") + ItemLine(2, "b") + ItemLine(3, "c"));
        EXPECT_EQ(m_table.GetLoadedAmount(), c.second) << c.first;
    }
    EXPECT_EQ(LogEntryCount(), 0);
}

TEST_F(ItemTypeTableTest, NamesOf16CharactersOrMoreAreNeverMatched)
{
    const std::string str15 = "ABCDEFGHIJKLMNO";
    const std::string str16 = "PQRSTUVWXYZabcde";
    Load("Amount=7\n" + ItemLine(1, str16) + ItemLine(2, str16) + ItemLine(3, str16) + ItemLine(4, str15) +
         ItemLine(5, str15) + ItemLine(6, str15 + "Z") + ItemLine(7, "PQRSTUVWXYZabcd"));
    // The 16-character name stands once per record; the 15-character one once.
    // "ABCDEFGHIJKLMNOZ" is added (too long to match), and "PQRSTUVWXYZabcd"
    // is not: it equals the cut entry of the 16-character name.
    EXPECT_EQ(m_table.GetNameList(), (std::vector<std::string>{str16, str16, str16, str15, str15 + "Z"}));
    const std::pair<const char*, bool> kCases[] = {
        {"ABCDEFGHIJKLMNO", true},
        {"PQRSTUVWXYZabcd", true},
        {"PQRSTUVWXYZabcde", false},
        {"ABCDEFGHIJKLMNOZ", false},
        {"ABCDEFGHIJKLMN", false},
        {"abcdefghijklmno", false},
        {"", false},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(CallSlot<bool>(&m_table, 10, c.first), c.second) << c.first;
    EXPECT_FALSE(m_table.HasItemName(nullptr));
    m_table.Clear();  // the names stay
    EXPECT_TRUE(m_table.HasItemName("ABCDEFGHIJKLMNO"));
}

}  // namespace
