#include "ClientData/MonsterSpeakTable.h"

#include <tuple>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

class MonsterSpeakTableTest : public RegistryFolderTest<TableRegistry> {
protected:
    const MonsterSpeakInfo* Load(const std::string& strSection)
    {
        WriteFile("ini/monsterspeak.ini", "[77]\n" + strSection);
        m_table.Clear();
        m_table.Load();
        return m_table.GetMonsterSpeak(77);
    }

    CMonsterSpeakTable m_table;
};

TEST_F(MonsterSpeakTableTest, DefaultShareAndOccasionProbability)
{
    // What is left of 1000 is shared by the lines without a probability; share
    // 1 when nothing is left, every line has its own or the division gives 0.
    // Empty texts do not count. No Amount: share 0 and the occasion key is not
    // read; lines without text still make share 1. A negative sum leaves more.
    const struct {
        const char* szSection;
        unsigned nShare;
        int nOccasionProbability, nEntryAmount;
    } kCases[] = {
        {"AttackAmount=3\nAttack0=a\nAttackProbability0=500\nAttack1=b\nAttack2=c\nAttackProbability=40\n", 250, 40, 3},
        {"AttackAmount=3\nAttack0=a\nAttackProbability0=1000\nAttack1=b\nAttack2=c\n", 1, 1, 3},
        {"AttackAmount=1\nAttack0=a\nAttackProbability0=300\n", 1, 1, 1},
        {"AttackAmount=3\nAttack0=a\nAttackProbability0=999\nAttack1=b\nAttack2=c\nAttack3=d\n", 1, 1, 3},
        {"AttackAmount=4\nAttack0=\nAttack1=b\nAttack3=d\nAttackProbability3=100\n", 900, 1, 2},
        {"AttackAmount=0\nAttack0=a\nAttackProbability=40\n", 0, 1, 0},
        {"AttackAmount=-2\nAttackProbability=40\n", 0, 1, 0},
        {"AttackAmount=2\nAttackProbability=40\n", 1, 40, 0},
        {"AttackAmount=2\nAttack0=a\nAttackProbability0=-1000\nAttack1=b\n", 2000, 1, 2},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.szSection);
        const MonsterSpeakInfo* pInfo = Load(c.szSection);
        ASSERT_NE(pInfo, nullptr);
        EXPECT_EQ(pInfo->setOccasion[MONSTER_SPEAK_ATTACK].nDefaultShare, c.nShare);
        EXPECT_EQ(pInfo->setOccasion[MONSTER_SPEAK_ATTACK].nProbability, c.nOccasionProbability);
        EXPECT_EQ(static_cast<int>(pInfo->setOccasion[MONSTER_SPEAK_ATTACK].setEntry.size()), c.nEntryAmount);
    }
}

TEST_F(MonsterSpeakTableTest, OccasionsLandInTheirRecordOrder)
{
    const MonsterSpeakInfo* pInfo =
        Load("BornAmount=1\nBorn0=hello\nBornProbability=5\nDeadAmount=1\nDead0=bye\nSkillAmount=1\nSkill0=zap\n"
             "BeatAmount=1\nBeat0=ouch\nAttackAmount=1\nAttack0=hit\n");
    ASSERT_NE(pInfo, nullptr);
    const char* kText[] = {"hit", "ouch", "bye", "zap", "hello"};
    for (int n = 0; n < MONSTER_SPEAK_OCCASION_AMOUNT; ++n) {
        ASSERT_EQ(pInfo->setOccasion[n].setEntry.size(), 1u) << n;
        EXPECT_STREQ(pInfo->setOccasion[n].setEntry[0].strText.c_str(), kText[n]);
        EXPECT_EQ(pInfo->setOccasion[n].nDefaultShare, 1000u);
    }
    EXPECT_EQ(pInfo->setOccasion[MONSTER_SPEAK_BORN].nProbability, 5);
    EXPECT_EQ(pInfo->setOccasion[MONSTER_SPEAK_DEAD].nProbability, 1);
}

TEST_F(MonsterSpeakTableTest, LinesAreReadOnlyBelowTheAmountAndCut)
{
    const MonsterSpeakInfo* pInfo = Load("SkillAmount=2147483647\nSkill00=lead\nSkill7=seven\nSkill2=two\nskill5=" +
                                         std::string(1500, 'y') + "\nDeadAmount=1\nDead1=beyond\n");
    ASSERT_NE(pInfo, nullptr);
    const auto& setSkill = pInfo->setOccasion[MONSTER_SPEAK_SKILL].setEntry;
    ASSERT_EQ(setSkill.size(), 3u);
    EXPECT_STREQ(setSkill[0].strText.c_str(), "two");  // in the string's own buffer
    EXPECT_EQ(setSkill[0].strText.capacity(), 15u);
    EXPECT_EQ(std::string(setSkill[1].strText.c_str(), setSkill[1].strText.size()), std::string(1023, 'y'));
    EXPECT_EQ(setSkill[1].strText.capacity(), 1023u);  // on the heap
    EXPECT_STREQ(setSkill[2].strText.c_str(), "seven");
    EXPECT_TRUE(pInfo->setOccasion[MONSTER_SPEAK_DEAD].setEntry.empty());
}

// The client's queries by slot: 7 GetMonsterSpeak, 8 GetSpeakAmount,
// 9 GetSpeakText, 10 GetOccasionProbability, 11 PickSpeakText.
TEST_F(MonsterSpeakTableTest, QueriesThroughTheRawSlots)
{
    WriteFile("ini/monsterspeak.ini",
              "[77]\nBeatAmount=3\nBeat0=a\nBeatProbability0=600\nBeat1=b\nBeat2=c\nBeatProbability=30\n"
              "[77]\nBeatAmount=1\nBeat0=later\n[4294967295]\nDeadAmount=1\nDead0=x\n");
    m_table.Load();
    EXPECT_EQ(m_table.GetLoadedAmount(), 2u);
    ASSERT_NE(CallSlot<const MonsterSpeakInfo*>(&m_table, 7, 77u), nullptr);
    EXPECT_EQ(CallSlot<const MonsterSpeakInfo*>(&m_table, 7, 78u), nullptr);
    EXPECT_EQ(CallSlot<int>(&m_table, 8, 77u, static_cast<int>(MONSTER_SPEAK_BEAT)), 3);  // the first [77] stays
    EXPECT_EQ(CallSlot<int>(&m_table, 8, 77u, 5), 0);

    const std::tuple<int, const char*, int> kTexts[] = {{2, "c", 200}, {0, "a", 600}, {3, "(null)", 0}};
    for (const auto& [nIndex, szExpected, nExpected] : kTexts) {
        int nProbability = -1;
        const char* szText = CallSlot<const char*>(&m_table, 9, 77u, 1, nIndex, &nProbability);
        EXPECT_STREQ(szText ? szText : "(null)", szExpected);
        EXPECT_EQ(nProbability, nExpected) << nIndex;
    }
    EXPECT_EQ(CallSlot<int>(&m_table, 10, 77u, 1), 30);
    EXPECT_EQ(CallSlot<int>(&m_table, 10, 77u, 0), 1);
    EXPECT_EQ(CallSlot<int>(&m_table, 10, 5u, 0), 0);

    const std::pair<int, const char*> kPicks[] = {{0, "a"},   {599, "a"}, {600, "b"},     {799, "b"},
                                                  {800, "c"}, {999, "c"}, {1000, "(null)"}, {-1, "(null)"}};
    for (const auto& pick : kPicks) {
        const char* szText = CallSlot<const char*>(&m_table, 11, 77u, 1, pick.first);
        EXPECT_STREQ(szText ? szText : "(null)", pick.second) << pick.first;
    }
    // A title beyond 32 bits saturates as atoi does.
    EXPECT_EQ(m_table.GetSpeakAmount(2147483647u, MONSTER_SPEAK_DEAD), 1);
}

TEST_F(MonsterSpeakTableTest, MissingFileStaysEmptyAndSilent)
{
    m_table.Load();
    EXPECT_EQ(m_table.GetLoadedAmount(), 0u);
    EXPECT_EQ(LogEntryCount(), 0);
    EXPECT_EQ(m_table.PickSpeakText(1, 0, 0), nullptr);
}

}  // namespace
