#include "ZelGameBase/DataFileReader.h"

#include <filesystem>
#include <string>
#include <vector>

#include "Support/TestSupport.h"

namespace {

using Records = std::vector<std::vector<std::string>>;

class DataFileReaderTest : public DataFolderTest {
protected:
    // Reads the file in one mode; every record as its list of fields.
    Records Read(const std::string& strText, int nMode, char cSeparator = ' ')
    {
        WriteFile("t.dat", strText);
        CDataFileReader reader;
        EXPECT_TRUE(reader.Open("t.dat", nMode, cSeparator));
        Records records;
        for (int i = 0; i < reader.GetRecordAmount(); ++i) {
            records.emplace_back();
            for (int j = 0; j < reader.GetRecord(i)->GetFieldAmount(); ++j)
                records.back().push_back(reader.GetRecord(i)->GetStr(j, "?"));
        }
        return records;
    }

    // Both modes must agree; returns mode 1's records.
    Records ReadBoth(const std::string& strText, char cSeparator = ' ')
    {
        const Records records = Read(strText, 0, cSeparator);
        EXPECT_EQ(Read(strText, 1, cSeparator), records);
        return records;
    }

    // The line of every record, read in mode 0, in mode 1 and from an image;
    // the three must agree.
    std::vector<int> Lines(const std::string& strText)
    {
        WriteFile("t.dat", strText);
        std::vector<int> setLine[3];
        for (int nSource = 0; nSource < 3; ++nSource) {
            CDataFileReader reader;
            if (nSource < 2)
                EXPECT_TRUE(reader.Open("t.dat", nSource, ' '));
            else
                reader.OpenImage(std::string(strText), ' ');
            for (int i = 0; i < reader.GetRecordAmount(); ++i)
                setLine[nSource].push_back(reader.GetRecord(i)->GetLine());
        }
        EXPECT_EQ(setLine[1], setLine[0]);
        EXPECT_EQ(setLine[2], setLine[0]);
        return setLine[0];
    }
};

}  // namespace

TEST_F(DataFileReaderTest, FiltersSplitsAndCutsLinesTheSameInBothModes)
{
    const std::pair<std::string, Records> kCases[] = {
        {"a  b\n", {{"a", "", "b"}}},
        {"a b \r\n", {{"a", "b", ""}}},
        {"; comment\n// comment\n\n\r\n \n", {{"", ""}}},  // a blank line is a record of two empty fields
        {" x\n", {{"", "x"}}},
        {"/\n/x /\n", {{"/"}, {"/x", "/"}}},  // one slash is no comment
        {"1\t2 3\n", {{"1\t2", "3"}}},        // only the separator splits; nothing is trimmed
        {"last", {{"last"}}},                 // no final line feed
        {"a\rb\n", {{"a\rb"}}},               // a lone carriage return stays inside
        {std::string("a b\0c d\ne\n", 10), {{"a", "b"}, {"e"}}},
        {"", {}},
        {"\xA1\xEF\xD2\xBB 7\n", {{"\xA1\xEF\xD2\xBB", "7"}}},
        // A long line arrives in pieces of 2047 characters.
        {std::string(2047, 'a') + std::string(2047, 'b') + "c d\n",
         {{std::string(2047, 'a')}, {std::string(2047, 'b')}, {"c", "d"}}},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(ReadBoth(c.first), c.second) << c.first;
    EXPECT_EQ(ReadBoth("a,b,,c\n", ','), (Records{{"a", "b", "", "c"}}));
    EXPECT_EQ(ReadBoth(std::string(100000, 'z')).size(), 49u);
}

TEST_F(DataFileReaderTest, RecordsKeepTheLineTheyStartOn)
{
    const std::string strLong = std::string(2047, 'a') + std::string(2047, 'b') + "c\n";
    const std::pair<std::string, std::vector<int>> kCases[] = {
        {"a\n;c\n\n//d\r\nb\r\n\r\n \nc", {1, 5, 7, 8}},  // dropped lines count; CR LF is one break
        {"a\rb\nc\n", {1, 2}},                            // a lone carriage return ends no line
        {std::string("a b\0c d\ne\n", 10), {1, 2}},
        {strLong + "x\n", {1, 1, 1, 2}},               // every piece of a long line carries its number
        {std::string(2047, 'a') + "\nx\n", {1, 2}},    // the line feed alone is a dropped piece
        {std::string(2046, 'a') + "\r\nx\n", {1, 2}},  // a break split between two pieces
    };
    for (const auto& c : kCases)
        EXPECT_EQ(Lines(c.first), c.second) << c.first.substr(0, 40);
    CDataRow row;
    row.Split("a b", ' ');
    EXPECT_EQ(row.GetLine(), 0);
}

TEST_F(DataFileReaderTest, FieldsByIndexWithDefaultsAndOpenFailuresWithoutLog)
{
    WriteFile("t.dat", "1001 12ab  -3 99999999999\n");
    std::filesystem::create_directory("folder.dat");
    CDataFileReader reader;
    ASSERT_TRUE(reader.Open("t.dat", 1, ' '));
    const CDataRow* pRow = reader.GetRecord(0);
    ASSERT_NE(pRow, nullptr);
    const struct {
        int nIndex;
        const char* szText;
        int nValue;
    } kCases[] = {
        {0, "1001", 1001}, {1, "12ab", 12}, {2, "", 0}, {3, "-3", -3}, {4, "99999999999", 2147483647},
        {5, "def", -9},    {-1, "def", -9},
    };
    for (const auto& c : kCases) {
        EXPECT_STREQ(pRow->GetStr(c.nIndex, "def"), c.szText) << c.nIndex;
        EXPECT_EQ(pRow->GetInt(c.nIndex, -9), c.nValue) << c.nIndex;
    }
    EXPECT_EQ(reader.GetRecord(1), nullptr);
    EXPECT_EQ(reader.GetRecord(-1), nullptr);

    EXPECT_FALSE(reader.Open("t.dat", 2, ' '));  // an unknown mode
    EXPECT_EQ(reader.GetRecordAmount(), 0);
    for (int nMode : {0, 1})
        for (const char* szName : {"missing.dat", "folder.dat", static_cast<const char*>(nullptr)})
            EXPECT_FALSE(reader.Open(szName, nMode, ' '));
    EXPECT_EQ(LogEntryCount(), 0);
}
