// The action tables: the fixed names and their numbers, delays, control
// segments, effect offsets and values, each through the slot the client calls.
#include <climits>
#include <tuple>
#include <vector>

#include "ClientData/ActionCtrlData.h"
#include "ClientData/ActionDelayData.h"
#include "ClientData/ActionEffectOffsetData.h"
#include "ClientData/ActionType.h"
#include "ClientData/ActionTypeData.h"
#include "ClientData/ActionValueData.h"
#include "ClientData/Catalogue.h"
#include "Support/TableSupport.h"
#include "Support/VtableCall.h"

static_assert(std::is_same_v<CatalogueSlot<94>::Class, CActionEffectOffsetData>);
static_assert(std::is_same_v<CatalogueSlot<148>::Class, CActionValueData>);
static_assert(std::is_same_v<CatalogueSlot<163>::Class, CActionDelayData>);
static_assert(std::is_same_v<CatalogueSlot<165>::Class, CActionCtrlData>);
static_assert(std::is_same_v<CatalogueSlot<200>::Class, CActionTypeData>);

namespace {

TEST(ActionType, NamesKeepTheirPositionsAndMatchOnlyAsSpelled)
{
    for (int i = 0; i < kActionNameAmount; ++i)
        ASSERT_EQ(ActionPositionOf(ActionNameAt(i)), i) << i;
    EXPECT_STREQ(ActionNameAt(122), "_ACTION_USE_ITEm");
    EXPECT_STREQ(ActionNameAt(289), "_ACTION_SKILL_SEAL");
    EXPECT_EQ(ActionNameAt(290), nullptr);
    for (const char* szName : {"_ACTION_USE_ITEM", "_action_standby", "_ACTION_STANDBY ", ""})
        EXPECT_EQ(ActionPositionOf(szName), -1) << szName;
}

TEST(ActionType, ReplaceDigitsKeepsTheOtherGroupsAndCarriesWideValues)
{
    const struct {
        long long nKey;
        int nFrom, nTo;
        long long nValue, nExpected;
    } kCases[] = {
        {123456789, 0, 2, 999, 123456999},
        {123456789, 6, 8, 999, 999456789},
        {123456789, 9, 10, 99, 99123456789},
        // Six nines in a two-digit group carry four digits further up.
        {12345678901, 9, 10, 999999, 999999345678901},
        {999999345678901, 3, 5, 999999, 1000000344999901},
        // Division truncates toward zero: a negative key keeps its sign in both parts.
        {-1234567, 0, 2, 999, -1233001},
        {-1234567, 3, 5, 999, -1567},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(ActionKeyReplaceDigits(c.nKey, c.nFrom, c.nTo, c.nValue), c.nExpected) << c.nKey;
    // Keys near the limits wrap instead of overflowing (the sanitizer build checks).
    ActionKeyReplaceDigits(LLONG_MAX, 9, 10, 999999);
    ActionKeyReplaceDigits(LLONG_MIN, 3, 5, 999999);
}

// The name list lives as long as the table that filled it, so each test
// makes its own table.
using ActionTypeDataTest = RegistryFolderTest<TableRegistry>;

// Slot 7 answers the player's number of a name position, slot 8 the monster's.
TEST_F(ActionTypeDataTest, LaterLinesWinAndNumbersSaturateThroughSlots7And8)
{
    WriteFile("ini/ActionType.ini",
              "; player actions\n100 _ACTION_STANDBY\r\n"
              "555 _ACTION_USE_ITEM\n"  // upper-case M: not a listed name
              "556 _ACTION_USE_ITEm\n"
              "101 _ACTION_STANDBY\n"  // the later line wins
              "-3 _ACTION_SKILL_SEAL\n99999999999999 _ACTION_JUMP\n");
    WriteFile("ini/MonsterActionType.ini", "900 _ACTION_STANDBY\n");
    {
        CActionTypeData table;
        EXPECT_EQ(CallSlot<int>(&table, 7, 8), 101);
        EXPECT_EQ(CallSlot<int>(&table, 8, 8), 900);
        EXPECT_EQ(table.GetActionType(122), 556);
        EXPECT_EQ(table.GetActionType(289), -3);
        EXPECT_EQ(table.GetActionType(38), INT_MAX);  // as atoi reads it
        EXPECT_EQ(table.GetMonsterActionType(122), 0);
        for (int nPosition : {290, 511, 512, 100000, -1})
            EXPECT_EQ(table.GetActionType(nPosition), 0) << nPosition;
        EXPECT_EQ(LogEntryCount(), 0);
    }
    EXPECT_TRUE(ActionNameList().empty());  // the destructor empties the name list
}

TEST_F(ActionTypeDataTest, LoadsOnTheFirstQueryOnlyAndNeverRetriesAMissingFile)
{
    CActionTypeData table;
    EXPECT_EQ(ActionNameList().size(), static_cast<std::size_t>(kActionNameAmount));  // constructed, nothing read
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

using ActionDelayDataTest = TableTest<CActionDelayData>;

TEST_F(ActionDelayDataTest, FirstSectionOfAnActionWinsAndTitlesReadAsAtol)
{
    // A repeated [100] is passed over; [walk] is action 0; a huge title saturates.
    Load("ini/ActionDelay.ini",
         "[100]\nWoundDelay=10\nBlockDelay=20\nDieDelay=30\n[200]\nBlockDelay=5\n"
         "[100]\nWoundDelay=99\n[walk]\nWoundDelay=7\n[" +
             std::string(50, '9') + "]\n");
    const auto* pDelay = CallSlot<const ActionDelayInfo*>(&m_table, 7, uint32_t{100});
    ASSERT_NE(pDelay, nullptr);
    EXPECT_EQ(std::tie(pDelay->WoundDelay, pDelay->BlockDelay, pDelay->DieDelay), std::make_tuple(10u, 20u, 30u));
    ASSERT_TRUE(m_table.GetActionDelay(0) && m_table.GetActionDelay(2147483647u));
    EXPECT_EQ(m_table.GetActionDelay(0)->WoundDelay, 7u);
    EXPECT_EQ(m_table.GetActionDelay(300), nullptr);
    m_table.Clear();
    EXPECT_EQ(m_table.GetActionDelay(100), nullptr);
}

using ActionEffectOffsetDataTest = TableTest<CActionEffectOffsetData>;

TEST_F(ActionEffectOffsetDataTest, SectionNumberSplitsIntoIdVariantAndSubVariant)
{
    // 0 and below are skipped; for the same triple the first in file order answers.
    Load("ini/ActionEffectOffset.ini",
         "[1234567]\nnOffsetX=1\nnOffsetY=-2\nnOffsetZ=3\n[0]\n[-1234567]\n[name]\n"
         "[7]\nnOffsetZ=9\n[1234567]\nnOffsetX=100\n[2147483647]\n");
    const auto* pOffset = CallSlot<const ActionEffectOffset*>(&m_table, 7, 123, 456, 7);
    ASSERT_NE(pOffset, nullptr);
    EXPECT_EQ(std::vector<int>({pOffset->nOffsetX, pOffset->nOffsetY, pOffset->nOffsetZ}),
              (std::vector<int>{1, -2, 3}));
    ASSERT_NE(m_table.GetActionEffectOffset(0, 0, 7), nullptr);
    EXPECT_EQ(m_table.GetActionEffectOffset(0, 0, 7)->nOffsetZ, 9);
    EXPECT_NE(m_table.GetActionEffectOffset(214748, 364, 7), nullptr);
    EXPECT_EQ(m_table.GetActionEffectOffset(0, 0, 0), nullptr);
    EXPECT_EQ(m_table.GetActionEffectOffset(123, 456, 8), nullptr);
    EXPECT_EQ(m_table.GetLoadedAmount(), 4u);
}

class ActionValueDataTest : public TableTest<CActionValueData> {
protected:
    int ValueOf(int64_t nKey) { return CallSlot<int>(&m_table, 7, nKey); }
};

TEST_F(ActionValueDataTest, EmptyTableAnswersFromTheBuiltInRule)
{
    m_table.Load();  // no file
    const std::pair<int64_t, int> kCases[] = {
        {5101, 66}, {103, 66}, {104, 33}, {110, 25}, {121, 25},    {122, 33},  {451, 10},
        {7460, 10}, {465, 10}, {470, 10}, {454, 33}, {101000, 33}, {-100, 33}, {INT64_MAX, 33},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(ValueOf(c.first), c.second) << c.first;
}

TEST_F(ActionValueDataTest, WildcardKeysAreTriedInOrder)
{
    int64_t nKeys[kActionValueKeyAmount];
    ActionValueKeys(123456789, nKeys);
    const int64_t nExpected[kActionValueKeyAmount] = {
        123456789,        123456999, 123999789, 999456789, 99123456789, 99999456789, 999999789,
        1000000122999789,  // six nines in groups of two and three: the excess carries
    };
    EXPECT_EQ(std::vector<int64_t>(nKeys, nKeys + kActionValueKeyAmount),
              std::vector<int64_t>(nExpected, nExpected + kActionValueKeyAmount));

    // Each file holds the keys from step i on; the query answers step i.
    for (int nFirst = 0; nFirst < kActionValueKeyAmount; ++nFirst) {
        std::string strFile = "1 0\n";  // keeps the table non-empty
        for (int i = nFirst; i < kActionValueKeyAmount; ++i)
            strFile += std::to_string(nKeys[i]) + " " + std::to_string(100 + i) + "\n";
        Load("ini/Action.dat", strFile);
        EXPECT_EQ(ValueOf(123456789), 100 + nFirst) << nFirst;
    }
}

TEST_F(ActionValueDataTest, FirstLineWinsUnparsableKeysAreSkippedAndALoadStartsAfresh)
{
    Load("ini/Action.dat",
         "5101 7\n5101 8\n"  // a repeated key: the first line stays
         "x5102 9\n"         // no number: skipped
         "5103\n"            // no value: 0
         "-5105 -4\n");
    EXPECT_EQ(m_table.GetLoadedAmount(), 3u);
    EXPECT_EQ(ValueOf(5101), 7);
    EXPECT_EQ(ValueOf(5103), 0);
    EXPECT_EQ(ValueOf(-5105), -4);
    EXPECT_EQ(ValueOf(7460), 33);  // no built-in rule once the table holds keys
    Load("ini/Action.dat", "1 2\n");
    EXPECT_EQ(ValueOf(5101), 33);
}

class ActionCtrlDataTest : public TableTest<CActionCtrlData> {
protected:
    // A section whose first time percentage marks it.
    static std::string Section(const std::string& strTitle, int nMark)
    {
        return "[" + strTitle + "]\nSection=1\nTimePercent0=" + std::to_string(nMark) + "\n";
    }

    // The mark of the record slot 7 answers, -1 on a miss.
    int MarkOf(int64_t nKey)
    {
        const auto* pCtrl = CallSlot<const ActionCtrlInfo*>(&m_table, 7, nKey);
        return pCtrl == nullptr ? -1 : pCtrl->nTimePercent[0];
    }
};

TEST_F(ActionCtrlDataTest, SegmentCountIsTheSignedRemainderByEight)
{
    Load("ini/ActionCtrl.ini",
         "[1]\nSection=3\nTimePercent2=30\nTimePercent3=40\nMovePercent0=11\n"
         "[2]\nSection=8\nTimePercent0=10\n"
         "[4]\nSection=15\nMovePercent6=66\nMovePercent7=77\n"
         "[1]\nSection=1\n"  // a repeated key: the first section stays
         "[-7]\nSection=2147483647\n[-5]\nSection=-3\nTimePercent0=9\n");
    const ActionCtrlInfo *p1 = m_table.GetActionCtrl(1), *p2 = m_table.GetActionCtrl(2), *p4 = m_table.GetActionCtrl(4);
    const ActionCtrlInfo *p7 = m_table.GetActionCtrl(-7), *p5 = m_table.GetActionCtrl(-5);
    ASSERT_TRUE(p1 && p2 && p4 && p7 && p5);
    // Segments beyond the count are not read.
    EXPECT_EQ(std::vector<int>({p1->nSection, p1->nTimePercent[2], p1->nTimePercent[3], p1->nMovePercent[0]}),
              (std::vector<int>{3, 30, 0, 11}));
    EXPECT_EQ(std::vector<int>({p2->nSection, p2->nTimePercent[0]}), (std::vector<int>{0, 0}));
    EXPECT_EQ(std::vector<int>({p4->nSection, p4->nMovePercent[6], p4->nMovePercent[7]}), (std::vector<int>{7, 66, 0}));
    EXPECT_EQ(p7->nSection, 7);
    // The remainder keeps the sign: a negative count reads no segment.
    EXPECT_EQ(std::make_pair(p5->nSection, p5->nTimePercent[0]), std::make_pair(-3, 0));
}

TEST_F(ActionCtrlDataTest, WildcardChainTriesItsExactKeysInOrder)
{
    Load("ini/ActionCtrl.ini", Section("123456789", 1) + Section("999456789", 2) + Section("999999789", 3) +
                                   Section("123999789", 4) + Section("5123456000", 5));
    const std::pair<int64_t, int> kCases[] = {
        {123456789, 1},   // the key itself
        {555456789, 2},   // digits 6-8 become 999
        {7000456789, 2},  // ... and the digits above them are dropped
        {555111789, 3},   // then digits 3-5 of that become 999
        {123111789, 3},   // never "digits 3-5 of the key": 123999789 is not tried
        {555111788, -1},  // no catch-all section
        {5123456000, 5},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(MarkOf(c.first), c.second) << c.first;

    m_table.Clear();
    Load("ini/ActionCtrl.ini", Section("999999999", 9) + Section("20", 2));
    for (int64_t nKey : {int64_t{1}, int64_t{123456789}, int64_t{98765432101}})
        EXPECT_EQ(MarkOf(nKey), 9) << nKey;
    EXPECT_EQ(MarkOf(20), 2);
    EXPECT_EQ(MarkOf(INT64_MAX), 9);
    // Negative keys keep their sign through the digit arithmetic (the
    // sanitizer build checks that nothing overflows).
    MarkOf(INT64_MIN);
    MarkOf(-1);
}

}  // namespace
