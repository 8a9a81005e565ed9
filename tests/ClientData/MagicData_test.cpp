#include "ClientData/MagicData.h"

#include <cstring>
#include <map>
#include <set>
#include <tuple>

#include "ClientData/Catalogue.h"
#include "ClientData/IClientDataMgr.h"
#include "Support/BoundarySupport.h"
#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

static_assert(std::is_same_v<CatalogueSlot<11>::Class, CMagicData>);
static_assert(std::is_same_v<CatalogueSlot<11>::Interface, IMagicData>);

namespace {

// A "MagicType.ini" line: 61 columns, numbers "0" and texts "-" unless given.
std::string MagicLine(const std::map<int, std::string>& mapColumn)
{
    static const std::set<int> kTextColumns = {3, 38, 39, 40, 41, 42, 44, 45, 46, 47, 53};
    std::string strLine;
    for (int nColumn = 1; nColumn <= 61; ++nColumn) {
        const auto it = mapColumn.find(nColumn);
        strLine += it != mapColumn.end() ? it->second : kTextColumns.count(nColumn) ? "-" : "0";
        strLine += nColumn < 61 ? (nColumn % 2 ? " " : "\t") : "\n";
    }
    return strLine;
}

std::string MagicLine(unsigned nType, unsigned nLevel, const std::map<int, std::string>& mapMore = {})
{
    std::map<int, std::string> mapColumn = mapMore;
    mapColumn[1] = std::to_string(nType);
    mapColumn[8] = std::to_string(nLevel);
    return MagicLine(mapColumn);
}

// A learnable candidate: profession (column 18), learn flag (26), need level (27).
std::string LearnLine(unsigned nType, unsigned nLevel, unsigned nProfession, unsigned nFlag, unsigned nNeedLevel)
{
    return MagicLine(
        nType, nLevel,
        {{18, std::to_string(nProfession)}, {26, std::to_string(nFlag)}, {27, std::to_string(nNeedLevel)}});
}

class MagicDataTest : public RegistryFolderTest<TableRegistry> {
protected:
    void LoadFiles(CMagicData& table, const std::string& strMain, const std::string& strExtra)
    {
        WriteFile("ini/MagicType.ini", strMain);
        WriteFile("ini/MagicTypeEx.ini", strExtra);
        table.BuildFilePath();
        table.Load();
    }

    // File positions of the records a list holds.
    static std::vector<int> Positions(CMagicData& table, const std::vector<const MagicTypeInfo*>& setInfo)
    {
        std::vector<int> setPosition;
        for (const MagicTypeInfo* pInfo : setInfo)
            for (int i = 0; i < table.GetAmount(); ++i)
                if (table.GetMagicTypeByIndex(i) == pInfo)
                    setPosition.push_back(i);
        return setPosition;
    }
    // The file positions in a list, read through its amount and item slots.
    static std::vector<int> ListPositions(CMagicData& table, int nAmountSlot, int nItemSlot)
    {
        std::vector<const MagicTypeInfo*> setInfo;
        for (int i = 0; i < CallSlot<int>(&table, nAmountSlot); ++i)
            setInfo.push_back(CallSlot<const MagicTypeInfo*>(&table, nItemSlot, i));
        return Positions(table, setInfo);
    }
};

TEST_F(MagicDataTest, EveryLineBeforeTheFirstBlankMakesARecordAndColumn51DefaultsTo300)
{
    for (const char* szBlank : {"\n", "  \t \r\n"}) {
        CMagicData table;
        EXPECT_EQ(table.GetMagicType(0, 0), nullptr);  // nothing read yet
        EXPECT_EQ(table.FindFirstLearnable(0), nullptr);
        EXPECT_EQ(table.IsIntoneAction(0, false, false), 0);
        LoadFiles(table,
                  MagicLine(1, 0, {{51, "0"}}) + MagicLine(2, 0, {{51, "7"}}) +
                      "3 4 Name 5\n"  // short: the missing columns count as 0
                      "abc 5 6\n" +   // the scan stops at once: all fields stay 0
                      szBlank +
                      MagicLine(5, 1),
                  "");
        ASSERT_EQ(table.GetAmount(), 4) << szBlank;
        EXPECT_EQ(table.GetMagicType(5, 1), nullptr);
        const std::pair<int, uint32_t> kColumn51[] = {{0, 300}, {1, 7}, {2, 300}, {3, 300}};
        for (const auto& [nIndex, nValue] : kColumn51)
            EXPECT_EQ(table.GetMagicTypeByIndex(nIndex)->Column51, nValue) << nIndex;
        EXPECT_EQ(table.GetMagicTypeByIndex(3)->Type, 0u);
        EXPECT_EQ(table.GetMagicTypeByIndex(4), nullptr);
        EXPECT_EQ(table.GetMagicTypeByIndex(-1), nullptr);
        TableRegistry::Destroy();
    }
}

TEST_F(MagicDataTest, FirstRecordInFileOrderAnswersAndTakesTheExtraSection)
{
    CMagicData table;
    LoadFiles(table, MagicLine(5, 1, {{2, "11"}}) + MagicLine(5, 2) + MagicLine(5, 1, {{2, "22"}}),
              "[501]\nSelfMask=0\nAppendDisc=text\n");
    const auto* pFirst = CallSlot<const MagicTypeInfo*>(&table, 10, uint32_t{5}, uint32_t{1});
    ASSERT_EQ(pFirst, table.GetMagicTypeByIndex(0));
    EXPECT_EQ(pFirst->SelfMask, 0u);
    EXPECT_STREQ(pFirst->AppendDisc, "text");
    EXPECT_EQ(table.GetMagicTypeByIndex(2)->SelfMask, 1u);       // the later twin is untouched
    EXPECT_STREQ(table.GetMagicTypeByIndex(2)->AppendDisc, "");  // no section: the fresh record's empty text
    EXPECT_EQ(table.GetMagicType(5, 3), nullptr);

    MagicTypeInfo copy;
    std::memset(&copy, 0xAB, sizeof(copy));
    EXPECT_EQ(CallSlot<int>(&table, 9, uint32_t{5}, 9, &copy), 0);
    EXPECT_EQ(reinterpret_cast<const unsigned char*>(&copy)[100], 0xAB);  // a miss leaves the buffer alone
    EXPECT_EQ(CallSlot<int>(&table, 9, uint32_t{5}, 1, &copy), 1);
    EXPECT_EQ(std::memcmp(&copy, pFirst, sizeof(copy)), 0);
}

TEST_F(MagicDataTest, ExtraSectionsAddressTypeTimesHundredPlusLevel)
{
    CMagicData table;
    LoadFiles(table, MagicLine(12, 5) + MagicLine(0, 5) + MagicLine(0, 0) + MagicLine(1, 100),
              "[1205]\nCheckMask=3\nIntoneEffect=spark\nSecondSenderEffect=flash\n"
              "[5]\nTypeMask=4\n"
              "[1205]\nTargetMask=6\n"  // keys it lacks fall back to their defaults
              "[10100]\nTypeMask=1\n"   // level 100 cannot be addressed: type 101, level 0
              "[walk]\nEquipPos=8\n");  // not a number: type 0, level 0
    const MagicTypeInfo* pInfo = table.GetMagicType(12, 5);
    ASSERT_NE(pInfo, nullptr);
    EXPECT_EQ(std::tie(pInfo->CheckMask, pInfo->TargetMask, pInfo->SelfMask), std::make_tuple(0u, 6u, 1u));
    EXPECT_EQ(std::string(pInfo->IntoneEffect) + "|" + pInfo->AppendDisc + "|" + pInfo->SecondSenderEffect,
              "|NULL|NULL");
    EXPECT_EQ(table.GetMagicType(0, 5)->TypeMask, 4u);
    EXPECT_EQ(table.GetMagicType(0, 0)->EquipPos, 8u);
    EXPECT_EQ(table.GetMagicType(1, 100)->TypeMask, 0u);
    EXPECT_STREQ(table.GetMagicType(1, 100)->AppendDisc, "");  // no section reached it
    EXPECT_EQ(LogEntryCount(), 1);
    EXPECT_NE(LogText().find(ZEL_STAR "ASSERT(FALSE) in 227 line of ClientData\\MagicData" ZEL_STAR),
              std::string::npos);
}

TEST_F(MagicDataTest, AlternativeMainFileBringsTheAlternativeExtraFile)
{
    WriteFile("ini/200/MagicType_200.ini", MagicLine(3, 2));
    WriteFile("ini/200/MagicTypeEx_200.ini", "[302]\nXpAddition=9\n");
    WriteFile("ini/MagicTypeEx.ini", "[302]\nXpAddition=1\n");
    struct MgrGuard {
        ~MgrGuard() { DestroyClientDataMgr(); }
    } guard;  // the manager goes before the folder
    IClientDataMgr* pMgr = QueryClientDataMgr();
    pMgr->SetVersionQuery([] { return 200; });
    auto* pTable = CallSlot<IMagicData*>(pMgr, 11);
    ASSERT_EQ(pTable, pMgr->GetMagicType());
    pTable->SetDefer();
    pTable->BuildFilePath();
    pTable->Load();
    ASSERT_NE(pTable->GetMagicType(3, 2), nullptr);
    EXPECT_EQ(pTable->GetMagicType(3, 2)->XpAddition, 9u);
}

TEST_F(MagicDataTest, IntoneActionsAreAsymmetricOnPurposeAndActionSetsSkipZero)
{
    CMagicData table;
    // Record 2 names no intone action: its zero fields match action 0.
    LoadFiles(table, MagicLine(1, 1, {{35, "100"}}) + MagicLine(2, 1, {{35, "4294967295"}}),
              "[101]\nIntoneActionEx1=10\nMountIntoneAction2=20\nFlyIntoneAction3=30\nTargetAction=200\n"
              "IntoneActionEx2=11\nIntoneActionEx3=12\nMountIntoneAction1=21\nMountIntoneAction3=22\n"
              "FlyIntoneAction1=31\nFlyIntoneAction2=32\n[201]\nFlyTargetAction=300\n");
    const struct {
        int nAction;
        bool bMounted, bFlying;
        int nResult;
    } cases[] = {
        {10, false, false, 1}, {10, true, false, 0},  {10, false, true, 1},  {10, true, true, 0},
        {20, true, false, 1},  {20, false, false, 0}, {20, false, true, 0},  {30, false, true, 1},
        {30, false, false, 0}, {30, true, true, 0},   {13, false, false, 0}, {0, false, false, 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CallSlot<int>(&table, 11, c.nAction, c.bMounted, c.bFlying), c.nResult)
            << c.nAction << " " << c.bMounted << c.bFlying;

    const std::pair<int, int> senders[] = {{100, 1}, {-1, 1}, {0, 0}, {200, 0}};
    for (const auto& c : senders)
        EXPECT_EQ(CallSlot<int>(&table, 14, c.first), c.second) << c.first;
    const std::pair<int, int> targets[] = {{200, 1}, {300, 1}, {0, 0}, {100, 0}};
    for (const auto& c : targets)
        EXPECT_EQ(CallSlot<int>(&table, 15, c.first), c.second) << c.first;
}

class MagicLearnTest : public MagicDataTest {
protected:
    void SetUp() override
    {
        MagicDataTest::SetUp();
        LoadFiles(m_table,
                  LearnLine(1, 1, 9999, 1, 1) +      // 0: any profession
                      LearnLine(2, 0, 105, 1, 3) +   // 1: profession 10
                      LearnLine(2, 1, 105, 1, 5) +   // 2: a higher level of type 2
                      LearnLine(3, 0, 110, 1, 2) +   // 3: profession 11
                      LearnLine(4, 0, 100, 0, 1) +   // 4: not learnable
                      LearnLine(5, 0, 0, 1, 6) +     // 5: any profession
                      LearnLine(6, 1, 101, 1, 10) +  // 6
                      LearnLine(7, 0, 104, 2, 7) +   // 7: flag 2 is not 1
                      LearnLine(6, 0, 101, 1, 8),    // 8: type 6 again, lower need level
                  "");
    }

    std::vector<int> Collect(uint32_t nProfession, uint32_t nLevel)
    {
        CClientArray<const MagicTypeInfo*> setInfo;
        ArrayFill(setInfo, {nullptr, nullptr, nullptr});  // emptied first
        CallSlot<void>(&m_table, 13, nProfession, nLevel, &setInfo);
        return Positions(m_table, VectorOf(setInfo));
    }

    CMagicData m_table;
};

TEST_F(MagicLearnTest, FindFirstNeedsLevelZeroAndCollectKeepsTheFirstQualifyingRecordOfEachType)
{
    for (const auto& c : {std::pair<uint32_t, int>{10, 1}, {11, 3}, {12, 5}})
        EXPECT_EQ(CallSlot<const MagicTypeInfo*>(&m_table, 12, c.first), m_table.GetMagicTypeByIndex(c.second));
    EXPECT_EQ(Collect(10, 5), (std::vector<int>{0, 1}));
    EXPECT_EQ(Collect(10, 10), (std::vector<int>{0, 1, 5, 6}));
    EXPECT_EQ(Collect(10, 9), (std::vector<int>{0, 1, 5, 8}));
    EXPECT_EQ(Collect(11, 100), (std::vector<int>{0, 3, 5}));
    EXPECT_EQ(Collect(10, 0), (std::vector<int>{}));
    EXPECT_EQ(Collect(999, 4294967295u), (std::vector<int>{0, 5}));  // 9999 / 10 is 999 anyway
}

TEST_F(MagicLearnTest, LevelAndRangeLists)
{
    CallSlot<void>(&m_table, 16, uint32_t{5}, uint32_t{10});
    EXPECT_EQ(ListPositions(m_table, 18, 20), (std::vector<int>{2}));
    CallSlot<void>(&m_table, 17, uint32_t{10}, uint32_t{5}, uint32_t{10});
    EXPECT_EQ(ListPositions(m_table, 19, 21), (std::vector<int>{5, 6, 8}));  // 5 < NeedLevel <= 10
    EXPECT_EQ(ListPositions(m_table, 18, 20), (std::vector<int>{2}));        // each list keeps its own result
    m_table.BuildLevelList(1, 10);
    EXPECT_EQ(ListPositions(m_table, 18, 20), (std::vector<int>{0}));
    m_table.BuildLevelRangeList(5, 10, 10);
    EXPECT_EQ(ListPositions(m_table, 19, 21), (std::vector<int>{}));
    m_table.BuildLevelRangeList(4294967295u, 0, 11);
    EXPECT_EQ(ListPositions(m_table, 19, 21), (std::vector<int>{0, 3, 5}));
    EXPECT_EQ(m_table.GetRangeListItem(3), nullptr);
    EXPECT_EQ(m_table.GetRangeListItem(-1), nullptr);
    EXPECT_EQ(m_table.GetLevelListItem(1), nullptr);
    CallSlot<void>(&m_table, 22);
    EXPECT_EQ(m_table.GetLevelListAmount(), 0);
    EXPECT_EQ(m_table.GetRangeListAmount(), 0);
}

}  // namespace
