#include "ClientData/MonsterTypeTable.h"

#include <cstddef>

#include "Support/TableSupport.h"
#include "Support/VtableCall.h"

namespace {

// The client reads the record by layout.
static_assert(sizeof(MonsterTypeInfo) == 844, "record size");
static_assert(offsetof(MonsterTypeInfo, szName) == 4 && offsetof(MonsterTypeInfo, nSizeAdd) == 20);
static_assert(offsetof(MonsterTypeInfo, szDisappearEffect) == 56 && offsetof(MonsterTypeInfo, nLeftWeapon) == 312);
static_assert(offsetof(MonsterTypeInfo, nDefyStatus) == 708 && offsetof(MonsterTypeInfo, szDefyEffect) == 716);

class MonsterTypeTableTest : public TableTest<CMonsterTypeTable> {
protected:
    void Load(const std::string& strContent) { TableTest::Load("ini/Monster.dat", strContent); }
};

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
        EXPECT_EQ(m_table.GetMonsterType(nId)->nNameAltitude, 100);  // the label's usual height
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
    m_table.Clear();
    EXPECT_EQ(m_table.GetMonsterType(1005), nullptr);
    EXPECT_EQ(m_table.FindMonsterByName("Shared"), nullptr);
    EXPECT_EQ(m_table.CanTakeStatus(1005), 1);
}

TEST_F(MonsterTypeTableTest, NamesAreFoundOnlyAsKeptAndByteForByte)
{
    Load("[1]\nName=ABCDEFGHIJKLMNOPQRST\n[2]\nName=wolf\n");
    EXPECT_EQ(m_table.FindMonsterByName("ABCDEFGHIJKLMNOPQRST"), nullptr);
    EXPECT_EQ(m_table.FindMonsterByName("ABCDEFGHIJKLMNO")->nId, 1);
    EXPECT_EQ(m_table.FindMonsterByName("Wolf"), nullptr);
    EXPECT_EQ(m_table.FindMonsterByName(nullptr), nullptr);
}

TEST_F(MonsterTypeTableTest, ReadsOnlyTheBuiltPath)
{
    WriteFile("ini/Monster.dat", "[5]\nName=A\n");
    m_table.Load();  // no path built yet
    EXPECT_EQ(m_table.GetLoadedAmount(), 0u);
    EXPECT_NE(LogText().find("error on open Monster.dat. -- "), std::string::npos) << LogText();
}

}  // namespace
