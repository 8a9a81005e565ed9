#include "ClientData/ItemTypeTable.h"

#include <cstddef>
#include <vector>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

// The layout the client reads.
static_assert(offsetof(ItemTypeInfo, strName) == 4);
static_assert(offsetof(ItemTypeInfo, ucAttrA) == 520);
static_assert(offsetof(ItemTypeInfo, dwAttrE) == 540);
static_assert(offsetof(ItemTypeInfo, usIndexed) == 600);
static_assert(offsetof(ItemTypeInfo, dwAttrR) == 640);
static_assert(offsetof(ItemTypeInfo, szText) == 644);
static_assert(sizeof(ItemTypeInfo) == 900);

// One record line: id, name, columns 2 to 53 from nBase + column, text.
std::string Line(const std::string& strId, const std::string& strName, int nBase = 0,
                 const std::string& strText = "text")
{
    std::string strLine = strId + " " + strName;
    for (int nColumn = 2; nColumn <= 53; ++nColumn)
        strLine += " " + std::to_string(nBase + nColumn);
    return strLine + " " + strText + "\n";
}

class ItemTypeTableTest : public RegistryFolderTest<TableRegistry> {
protected:
    // Writes ini/ItemType.dat and loads it into a fresh table.
    CItemTypeTable& Load(const std::string& strContent)
    {
        WriteFile("ini/ItemType.dat", strContent);
        m_table.BuildFilePath();
        m_table.Load();
        return m_table;
    }

    CItemTypeTable m_table;
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
        Load(std::string(c.first) + "\n" + Line("1", "a") + Line("2", "b") + Line("3", "c"));
        EXPECT_EQ(m_table.GetLoadedAmount(), c.second) << c.first;
    }
    EXPECT_EQ(LogEntryCount(), 0);
}

TEST_F(ItemTypeTableTest, ColumnsLandInTheirFieldsCutToWidth)
{
    // 70000 + column overflows both 8 and 16 bits.
    CItemTypeTable& table =
        Load("Amount=2\n" + Line("77", "Blade", 70000, "trailing") + "7 " + std::string(400, 'n') + " -1 300\n");
    const ItemTypeInfo* pInfo = table.FindItemType(77);
    ASSERT_NE(pInfo, nullptr);
    const std::pair<uint32_t, uint32_t> kFields[] = {
        {pInfo->idType, 77},           {pInfo->ucAttrA[0], 70002 & 0xFF},     {pInfo->usAttrB[3], 70010 & 0xFFFF},
        {pInfo->ucAttrC, 70011 & 0xFF}, {pInfo->dwAttrE[1], 70014},          {pInfo->ucAttrJ[5], 70029 & 0xFF},
        {pInfo->dwAttrN, 70036},       {pInfo->usIndexed[8], 70045 & 0xFFFF}, {pInfo->dwAttrR, 70053}};
    for (const auto& field : kFields) EXPECT_EQ(field.first, field.second);
    EXPECT_STREQ(pInfo->szText, "trailing");

    // Missing columns read as 0 and the empty text; -1 wraps to the width.
    const ItemTypeInfo* pShort = table.FindItemType(7);
    ASSERT_NE(pShort, nullptr);
    EXPECT_EQ(std::tie(pShort->ucAttrA[0], pShort->ucAttrA[1], pShort->dwAttrR), std::make_tuple(0xFF, 300 & 0xFF, 0u));
    EXPECT_STREQ(pShort->szText, "");
    EXPECT_EQ(std::string(table.GetItemName(7)), std::string(255, 'n'));
}

TEST_F(ItemTypeTableTest, FirstRecordOfAnIdWinsAcrossLoads)
{
    m_table.BuildFilePath();
    m_table.Load();  // a missing file logs the bare name
    EXPECT_NE(LogText().find("error on open ItemType.dat. -- "), std::string::npos) << LogText();
    EXPECT_FALSE(m_table.HasItemName(""));
    CItemTypeTable& table =
        Load("Amount=3\n" + Line("5", "first", 100) + Line("5", "second", 200) + Line("6", "six", 300));
    EXPECT_STREQ(table.GetItemName(5), "first");
    EXPECT_EQ(table.GetIndexedValue(5, 1), 137u);

    // A second Load keeps what is held and adds only new ids.
    Load("Amount=2\n" + Line("6", "newsix") + Line("8", "eight"));
    EXPECT_STREQ(table.GetItemName(6), "six");
    EXPECT_STREQ(table.GetItemName(8), "eight");
    EXPECT_EQ(table.GetLoadedAmount(), 3u);

    table.Clear();
    EXPECT_EQ(table.FindItemType(5), nullptr);
    EXPECT_EQ(table.GetItemName(5), nullptr);
}

TEST_F(ItemTypeTableTest, NamesOf16CharactersOrMoreAreNeverMatched)
{
    const std::string str15 = "ABCDEFGHIJKLMNO";
    const std::string str16 = "PQRSTUVWXYZabcde";
    CItemTypeTable& table =
        Load("Amount=7\n" + Line("1", str16) + Line("2", str16) + Line("3", str16) + Line("4", str15) +
             Line("5", str15) + Line("6", str15 + "Z") + Line("7", "PQRSTUVWXYZabcd"));
    // The 16-character name stands once per record; the 15-character one once.
    // "ABCDEFGHIJKLMNOZ" is added (too long to match), and "PQRSTUVWXYZabcd"
    // is not: it equals the cut entry of the 16-character name.
    EXPECT_EQ(table.GetNameList(), (std::vector<std::string>{str16, str16, str16, str15, str15 + "Z"}));
    const std::pair<const char*, bool> kCases[] = {
        {"ABCDEFGHIJKLMNO", true},  {"PQRSTUVWXYZabcd", true},  {"PQRSTUVWXYZabcde", false},
        {"ABCDEFGHIJKLMNOZ", false}, {"ABCDEFGHIJKLMN", false}, {"abcdefghijklmno", false}, {"", false},
    };
    for (const auto& c : kCases) EXPECT_EQ(CallSlot<bool>(&table, 10, c.first), c.second) << c.first;
    EXPECT_FALSE(table.HasItemName(nullptr));
}

TEST_F(ItemTypeTableTest, SlotsAnswerThroughTheVtableAndIndexedValuesRunOneToNine)
{
    Load("Amount=2\n" + Line("42", "Jade\xB1\xA6", 0, "note") + Line("9", "n", 1000));
    for (int nIndex = 1; nIndex <= 9; ++nIndex)
        EXPECT_EQ(m_table.GetIndexedValue(9, nIndex), 1000u + 36 + nIndex) << nIndex;
    for (int nIndex : {0, 10, -1, 1 << 30}) EXPECT_EQ(m_table.GetIndexedValue(9, nIndex), 0u) << nIndex;
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

TEST_F(ItemTypeTableTest, GarbageNeverCrashes)
{
    std::string strBinary = "Amount=4294967295\n";
    for (int i = 0; i < 4000; ++i) strBinary += static_cast<char>((i * 131 + 7) & 0xFF);
    const std::string kInputs[] = {
        strBinary,
        "Amount=3\n" + std::string(5000, 'n') + " " + std::string(3000, 'm') + "\n",
        "Amount=2\nx y z\n  \n99999999999999999999 -99999999999999 abc\n",
        std::string("Amount=1\0garbage\n", 17),
        "",
    };
    for (const std::string& strInput : kInputs) {
        TableRegistry::Destroy();
        CItemTypeTable table;
        WriteFile("ini/ItemType.dat", strInput);
        table.BuildFilePath();
        table.Load();
        for (const auto& strName : table.GetNameList()) table.HasItemName(strName.c_str());
        table.GetItemName(0);
        table.GetIndexedValue(0, 5);
    }
    EXPECT_EQ(LogEntryCount(), 0);
}

}  // namespace
