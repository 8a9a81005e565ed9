#include "ClientData/MagicData.h"

#include <cstring>
#include <map>
#include <set>
#include <tuple>

#include "ClientData/Catalogue.h"
#include "ClientData/IClientDataMgr.h"
#include "Support/BoundarySupport.h"
#include "Support/TableSupport.h"
#include "Support/VtableCall.h"

namespace {

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

TEST_F(MagicDataTest, AnExtraSectionForNoRecordIsLoggedWithItsLine)
{
    CMagicData table;
    LoadFiles(table, MagicLine(1, 2), "[102]\nTypeMask=1\n[103]\nTypeMask=2\n");
    EXPECT_EQ(LogEntryCount(), 1);
    EXPECT_NE(LogText().find(ZEL_STAR "ASSERT(FALSE) in 227 line of ClientData\\MagicData" ZEL_STAR " -- "),
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
