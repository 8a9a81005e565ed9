#include "ClientData/ItemTypeTable.h"

#include <cstddef>
#include <vector>

#include "Support/TableSupport.h"
#include "Support/VtableCall.h"

namespace {

// The layout the client reads.
static_assert(offsetof(ItemTypeInfo, strName) == 4 && offsetof(ItemTypeInfo, ucAttrA) == 520);
static_assert(offsetof(ItemTypeInfo, dwAttrE) == 540 && offsetof(ItemTypeInfo, usIndexed) == 600);
static_assert(offsetof(ItemTypeInfo, dwAttrR) == 640 && offsetof(ItemTypeInfo, szText) == 644);
static_assert(sizeof(ItemTypeInfo) == 900);

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

TEST_F(ItemTypeTableTest, FirstRecordOfAnIdWinsAcrossLoads)
{
    Load("Amount=3\n" + ItemLine(5, "first", 100) + ItemLine(5, "second", 200) + ItemLine(6, "six", 300));
    EXPECT_STREQ(m_table.GetItemName(5), "first");
    EXPECT_EQ(m_table.GetIndexedValue(5, 1), 137u);

    // A second Load keeps what is held and adds only new ids.
    Load("Amount=2\n" + ItemLine(6, "newsix") + ItemLine(8, "eight"));
    EXPECT_STREQ(m_table.GetItemName(6), "six");
    EXPECT_STREQ(m_table.GetItemName(8), "eight");
    EXPECT_EQ(m_table.GetLoadedAmount(), 3u);

    m_table.Clear();
    EXPECT_EQ(m_table.FindItemType(5), nullptr);
    EXPECT_EQ(m_table.GetItemName(5), nullptr);
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
}

// Slots 7 GetItemName, 8 FindItemType, 9 GetItemType (a copy), 10 HasItemName,
// 11 GetIndexedValue.
TEST_F(ItemTypeTableTest, SlotsAnswerThroughTheVtableAndIndexedValuesRunOneToNine)
{
    Load("Amount=2\n" + ItemLine(42, "Jade\xB1\xA6", 0, "note") + ItemLine(9, "n", 1000));
    for (int nIndex = 1; nIndex <= 9; ++nIndex)
        EXPECT_EQ(m_table.GetIndexedValue(9, nIndex), 1000u + 36 + nIndex) << nIndex;
    for (int nIndex : {0, 10, -1, 1 << 30})
        EXPECT_EQ(m_table.GetIndexedValue(9, nIndex), 0u) << nIndex;
    EXPECT_EQ(m_table.GetIndexedValue(10, 1), 0u);  // missing id

    EXPECT_STREQ(CallSlot<const char*>(&m_table, 7, 42u), "Jade\xB1\xA6");
    EXPECT_EQ(CallSlot<const char*>(&m_table, 7, 43u), nullptr);
    const ItemTypeInfo* pFound = CallSlot<const ItemTypeInfo*>(&m_table, 8, 42u);
    ASSERT_NE(pFound, nullptr);
    EXPECT_EQ(CallSlot<const ItemTypeInfo*>(&m_table, 8, 43u), nullptr);

    ItemTypeInfo info;
    info.idType = 12345;
    EXPECT_FALSE((CallSlot<bool, uint32_t, ItemTypeInfo*>(&m_table, 9, 43u, &info)));
    EXPECT_EQ(info.idType, 12345u);
    EXPECT_FALSE((CallSlot<bool, uint32_t, ItemTypeInfo*>(&m_table, 9, 42u, nullptr)));
    ASSERT_TRUE((CallSlot<bool, uint32_t, ItemTypeInfo*>(&m_table, 9, 42u, &info)));
    EXPECT_EQ(info.idType, 42u);
    EXPECT_STREQ(info.szText, "note");
    EXPECT_STREQ(info.strName.Get(), "Jade\xB1\xA6");  // the copy carries its key
    const std::string strImage(reinterpret_cast<const char*>(pFound), sizeof(ItemTypeInfo));
    EXPECT_EQ(strImage.find("Jade"), std::string::npos);  // held scrambled

    EXPECT_TRUE((CallSlot<bool, const char*>(&m_table, 10, "Jade\xB1\xA6")));
    EXPECT_EQ((CallSlot<uint32_t, uint32_t, int>(&m_table, 11, 42u, 3)), 39u);
}

}  // namespace
