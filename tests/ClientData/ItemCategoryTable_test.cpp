#include "ClientData/ItemCategoryTable.h"

#include <algorithm>
#include <vector>

#include "Support/BoundarySupport.h"
#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

class ItemCategoryTableTest : public RegistryFolderTest<TableRegistry> {
protected:
    CItemCategoryTable& Load(const std::string& strContent)
    {
        WriteFile("ini/ItemCategory.dat", strContent);
        m_table.Load();
        return m_table;
    }

    std::vector<uint32_t> Ids(const char* szName)
    {
        CClientArray<uint32_t> setId;
        m_table.GetCategoryIds(szName, &setId);
        return VectorOf(setId);
    }

    CItemCategoryTable m_table;
};

TEST_F(ItemCategoryTableTest, RangesExpandInFileOrderThroughTheSlots)
{
    Load("[Sword]\nIDRange=1000-1005,2000\n");
    const std::pair<uint32_t, int> kCases[] = {{999, 0},  {1000, 1}, {1005, 1}, {1006, 0},
                                               {1999, 0}, {2000, 1}, {2001, 0}};
    for (const auto& c : kCases)
        EXPECT_EQ((CallSlot<int, const char*, uint32_t>(&m_table, 7, "Sword", c.first)), c.second) << c.first;

    CClientArray<uint32_t> setId;
    ArrayFill(setId, {7u});
    CallSlot<void, const char*, CClientArray<uint32_t>*>(&m_table, 8, "Sword", &setId);
    EXPECT_EQ(VectorOf(setId), (std::vector<uint32_t>{7, 1000, 1001, 1002, 1003, 1004, 1005, 2000}));
    EXPECT_EQ(setId.capacity(), 8u);  // one growth: the larger of 1.5 times 1 and the size needed
    EXPECT_EQ(LogEntryCount(), 0);
}

TEST_F(ItemCategoryTableTest, SectionsOfOneTitleExtendOneCategoryInOrder)
{
    Load("[Gem]\nIDRange=50,10-12\n[Ring]\nIDRange = 7\n[Gem]\nIDRange=3-1,1\n[gem]\nIDRange=99\n");
    // The high-first range 3-1 is kept but yields nothing.
    EXPECT_EQ(Ids("Gem"), (std::vector<uint32_t>{50, 10, 11, 12, 1}));
    EXPECT_EQ(Ids("gem"), (std::vector<uint32_t>{99}));  // titles compare byte for byte
    EXPECT_EQ(Ids("Ring"), (std::vector<uint32_t>{7}));
    EXPECT_EQ(m_table.FindRanges("Gem")->size(), 4u);
    EXPECT_EQ(m_table.IsInCategory("Gem", 2), 0);
    EXPECT_EQ(m_table.IsInCategory("Gem", 1), 1);
    EXPECT_EQ(m_table.IsInCategory("Gem", 11), 1);
    EXPECT_EQ(m_table.GetLoadedAmount(), 3u);
}

TEST_F(ItemCategoryTableTest, NullAndEmptyRangesDefineNothing)
{
    m_table.Load();
    EXPECT_NE(LogText().find("ItemCategory.dat read error! -- "), std::string::npos) << LogText();
    Load("[A]\nIDRange=null\n[B]\nIDRange=NuLL\n[C]\nIDRange=\n[D]\nOther=5\n[]\nIDRange=4\n[E]\nIDRange=5\n");
    for (const char* szName : {"A", "B", "C", "D", ""})
        EXPECT_EQ(m_table.FindRanges(szName), nullptr) << szName;
    EXPECT_EQ(m_table.GetLoadedAmount(), 1u);

    CClientArray<uint32_t> setId;
    ArrayFill(setId, {1u, 2u});
    m_table.GetCategoryIds("Unknown", &setId);
    m_table.GetCategoryIds(nullptr, &setId);
    m_table.GetCategoryIds("E", nullptr);
    EXPECT_EQ(VectorOf(setId), (std::vector<uint32_t>{1, 2}));
    EXPECT_EQ(m_table.IsInCategory("Unknown", 5), 0);
    EXPECT_EQ(m_table.IsInCategory(nullptr, 5), 0);
}

TEST_F(ItemCategoryTableTest, PiecesParseAsTheFormatReadsThem)
{
    const struct {
        const char* szRange;
        std::vector<uint32_t> setId;
    } kCases[] = {
        {"5-x", {}},   // high bound fails: 5-0 is high-first
        {"x-5", {0}},  // the low bound fails and reading stops: 0-0
        {"8- 10", {8, 9, 10}},
        {"8 -10", {}},        // the '-' must follow the number at once
        {"1,,2", {1, 0, 2}},  // an empty piece is id 0
        {"-2", {}},
        {"4294967295", {2147483647u}},                          // a single id goes through atoi, which saturates
        {"4294967294-4294967295", {4294967294u, 4294967295u}},  // "%d" wraps; ends at the top id
    };
    for (const auto& c : kCases) {
        m_table.Clear();
        Load(std::string("[K]\nIDRange=") + c.szRange + "\n");
        EXPECT_EQ(Ids("K"), c.setId) << c.szRange;
    }
}

TEST_F(ItemCategoryTableTest, LookupsAgreeWithTheRangesAndHugeRangesAreCut)
{
    Load("[Mix]\nIDRange=30-40,35-50,52,60-55,51,100-100,0\n");
    const std::vector<uint32_t> setId = Ids("Mix");
    for (uint32_t id = 0; id <= 110; ++id) {
        const bool bListed = std::find(setId.begin(), setId.end(), id) != setId.end();
        EXPECT_EQ(m_table.IsInCategory("Mix", id), bListed ? 1 : 0) << id;
    }
    // A huge range answers whole but expands only up to the cap.
    m_table.Clear();
    Load("[All]\nIDRange=0-2147483647\n");
    EXPECT_EQ(m_table.IsInCategory("All", 2147483647u), 1);
    EXPECT_EQ(Ids("All").size(), CItemCategoryTable::kMaxExpandedIds);
}

}  // namespace
