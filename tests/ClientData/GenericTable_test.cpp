#include "ClientData/GenericTable.h"

#include <utility>
#include <vector>

#include "ClientData/Catalogue.h"
#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

using GenericTableTest = RegistryFolderTest<TableRegistry>;

const CatalogueEntry kFixed{999, "Fixed", "ini\\Fixed.ini", CatalogueKind::SECTIONS, &kSectionTableDesc, true};
const CatalogueEntry kResolved{998, "Resolved", "Resolved.dat", CatalogueKind::COLUMNS, &kColumnTableDesc, true};

TEST_F(GenericTableTest, SectionedFileGivesOneRecordPerSection)
{
    WriteFile("ini/Fixed.ini",
              "; header comment\r\n\r\n[1001]\r\nName = Sword of dawn \r\nLevel=12\r\nlevel=99\r\n"
              "[1002]\r\nName=\xB5\xB6\r\n[1001]\r\nName=second\r\n[abc]\r\nKey=v\r\n");
    CSectionTable table(kFixed);
    EXPECT_STREQ(TableFileName(table).c_str(), "");
    table.Load();
    ASSERT_EQ(table.GetKind(), IGenericTable::KIND_SECTIONS);
    EXPECT_EQ(table.GetRecordAmount(), 4);
    // The first of two [1001] wins; a section with a name has no id, and its
    // name finds it.
    const std::vector<int> setFound = {table.FindRecord(1001),        table.FindRecord(1002),
                                       table.FindRecord(0),           table.FindRecord(7),
                                       table.FindRecordByName("abc"), table.FindRecordByName("1001"),
                                       table.FindRecordByName("ABC")};
    EXPECT_EQ(setFound, (std::vector<int>{0, 1, -1, -1, 3, 0, -1}));
    EXPECT_EQ(table.GetRecordId(3), 0u);
    EXPECT_STREQ(table.GetValueText(0, "name", ""), "Sword of dawn");
    EXPECT_EQ(table.GetValueInt(0, "LEVEL", -1), 12);  // first occurrence
    EXPECT_STREQ(table.GetValueText(1, "Name", ""), "\xB5\xB6");
    EXPECT_STREQ(table.GetValueText(1, "Level", "none"), "none");
    EXPECT_EQ(table.GetFieldAmount(0), 3);
    EXPECT_STREQ(table.GetFieldText(0, 2), "99");
    EXPECT_STREQ(table.GetRecordTitle(3), "abc");
}

TEST_F(GenericTableTest, ColumnFileGivesOneRecordPerLine)
{
    WriteFile("ini/Resolved.dat", "// id name value\n1 one 10\n2  two\n1 again 30\n;3 comment 0\nname 4\n");
    CColumnTable table(kResolved);
    EXPECT_STREQ(TableFileName(table).c_str(), "Resolved.dat");
    table.BuildFilePath();
    table.Load();
    ASSERT_EQ(table.GetKind(), IGenericTable::KIND_COLUMNS);
    EXPECT_EQ(table.GetRecordAmount(), 4);
    EXPECT_EQ(table.FindRecord(1), 0);
    EXPECT_EQ(std::make_pair(table.FindRecord(0), table.FindRecordByName("name")), std::make_pair(-1, 3));
    EXPECT_EQ(table.GetFieldAmount(1), 3);  // two blanks make an empty field
    EXPECT_STREQ(table.GetFieldText(1, 1), "");
    EXPECT_EQ(std::make_pair(table.GetFieldInt(2, 2, -1), table.GetFieldInt(2, 9, -1)), std::make_pair(30, -1));
    EXPECT_STREQ(table.GetValueText(0, "one", "column"), "column");
}

TEST_F(GenericTableTest, QueriesThroughSlotsMissSafely)
{
    WriteFile("ini/Fixed.ini", "[5]\nA=1\n");
    CSectionTable table(kFixed);
    table.Load();
    EXPECT_EQ(CallSlot<int>(&table, 7), 1);
    EXPECT_EQ(CallSlot<int>(&table, 8, 5u), 0);
    EXPECT_EQ(CallSlot<unsigned>(&table, 9, 0), 5u);
    EXPECT_STREQ(CallSlot<const char*>(&table, 10, 0), "5");
    EXPECT_EQ(CallSlot<int>(&table, 11, 0), 1);
    EXPECT_STREQ(CallSlot<const char*>(&table, 12, 0, 0), "1");
    EXPECT_EQ(CallSlot<int>(&table, 13, 0, 0, -1), 1);
    EXPECT_STREQ(CallSlot<const char*>(&table, 14, 0, "a", "d"), "1");
    EXPECT_EQ(CallSlot<int>(&table, 15, 0, "A", -1), 1);
    EXPECT_EQ(CallSlot<int>(&table, 16), IGenericTable::KIND_SECTIONS);
    EXPECT_STREQ(CallSlot<const char*>(&table, 17, 0, 0), "A");
    EXPECT_EQ(CallSlot<int>(&table, 18, "5"), 0);
    // Misses: out-of-range indexes and absent keys.
    for (int nIndex : {-1, 1, 1 << 30}) {
        EXPECT_STREQ(table.GetRecordTitle(nIndex), "");
        EXPECT_STREQ(table.GetFieldText(nIndex, 0), "");
        EXPECT_EQ(table.GetValueInt(nIndex, "A", -7), -7);
        EXPECT_EQ(table.GetRecordId(nIndex), 0u);
    }
    EXPECT_STREQ(table.GetValueText(0, nullptr, "d"), "d");
}

TEST_F(GenericTableTest, MissingFileLogsReloadReplacesAndClearEmpties)
{
    CSectionTable table(kFixed);
    table.Load();
    EXPECT_EQ(LogText(), "error on open ini\\Fixed.ini. -- Mon Mar 07 14:05:09 2011\n");
    EXPECT_EQ(table.GetKind(), IGenericTable::KIND_EMPTY);

    // The kind is the catalogue's: lines before any section are no records.
    WriteFile("ini/Fixed.ini", "1 2 3\n");
    table.Load();
    EXPECT_EQ(table.GetRecordAmount(), 0);
    EXPECT_EQ(table.GetKind(), IGenericTable::KIND_SECTIONS);
    // A second Load replaces the first: no record may outlive its file image.
    WriteFile("ini/Fixed.ini", "[5]\nk=v\n");
    table.Load();
    ASSERT_EQ(table.GetRecordAmount(), 1);
    EXPECT_STREQ(table.GetRecordTitle(0), "5");
    EXPECT_STREQ(table.GetRecordTitle(1), "");
    table.Clear();
    EXPECT_EQ(table.GetRecordAmount(), 0);
    EXPECT_EQ(table.FindRecord(1), -1);
}

}  // namespace
