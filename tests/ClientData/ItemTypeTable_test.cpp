#include "ClientData/ItemTypeTable.h"

#include <cstddef>
#include <vector>

#include "Support/TableSupport.h"
#include "Support/VtableCall.h"

namespace {

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
