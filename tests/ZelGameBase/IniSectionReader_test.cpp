#include "ZelGameBase/IniSectionReader.h"

#include <cstdio>
#include <string>

#include "Support/TestSupport.h"
#include "ZelGameBase/Platform/Platform.h"

namespace {

// "Loose" stands before the first section and belongs to none.
const char kText[] =
    "Loose=1\n[ Magic ]\r\n  Name = Fire Ball  \r\nname=second\n; Power=1\n// Power=2\nPower=12ab\n"
    "Big=99999999999\nPath=a=b\nEmpty=\nNoEqualSign\n[Other]]x\rPower=3\r[MAGIC]\nPower=4";

using IniSectionReaderTest = DataFolderTest;

// The index as "title@line{key@line ...}" per section.
std::string LinesOf(const std::string& strText)
{
    CIniSectionReader reader;
    reader.OpenText(std::string(strText));
    std::string strLines;
    for (int i = 0; i < reader.GetSectionAmount(); ++i) {
        strLines += std::string(reader.GetTitle(i)) + "@" + std::to_string(reader.GetTitleLine(i)) + "{";
        for (int k = 0; k < reader.GetKeyAmount(i); ++k)
            strLines +=
                (k > 0 ? " " : "") + std::string(reader.GetKeyAt(i, k)) + "@" + std::to_string(reader.GetKeyLine(i, k));
        strLines += "}";
    }
    return strLines;
}

TEST_F(IniSectionReaderTest, ListsSectionsAndKeysInFileOrderAndLooksUpInsideOneSection)
{
    // A repeated title is a section of its own; every key keeps its line.
    EXPECT_EQ(LinesOf(kText),
              "Magic@2{Name@3 name@4 Power@7 Big@8 Path@9 Empty@10}Other@12{Power@13}MAGIC@14{Power@15}");
    CIniSectionReader reader;
    reader.OpenText(kText);
    EXPECT_STREQ(reader.GetValueAt(0, 0).data(), "Fire Ball");  // views are C texts too
    EXPECT_EQ(reader.GetKeyAt(0, 6), "");
    EXPECT_EQ(reader.GetKeyAmount(3), 0);
    const struct {
        int nSection;
        const char* szKey;
        bool bFound;
        const char* szText;
        int nInt;
        int nKey;
    } kCases[] = {
        {0, "NAME", true, "Fire Ball", 0, 0},  // first occurrence wins, case folded
        {0, "Power", true, "12ab", 12, 2},     // comment lines hide the earlier ones
        {0, "Big", true, "99999999999", 2147483647, 3},
        {0, "Path", true, "a=b", 0, 4},  // the value is all after the first "="
        {0, "Empty", true, "", 0, 5},
        {0, "NoEqualSign", false, "", -1, -1},
        {0, "Loose", false, "", -1, -1},
        {0, "Nam", false, "", -1, -1},
        {1, "Power", true, "3", 3, 0},  // lone carriage returns end lines
        {2, "Power", true, "4", 4, 0},
        {5, "Power", false, "", -1, -1},
        {-1, "Power", false, "", -1, -1},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(reader.FindKey(c.nSection, c.szKey), c.nKey) << c.szKey;
        char szText[64] = "";
        EXPECT_EQ(reader.GetText(c.nSection, c.szKey, szText, sizeof(szText)), c.bFound) << c.szKey;
        EXPECT_STREQ(szText, c.szText) << c.szKey;
        EXPECT_EQ(reader.GetInt(c.nSection, c.szKey, -1), c.nInt) << c.szKey;
    }
    EXPECT_EQ(reader.FindKey(0, nullptr), -1);
    char szSmall[5];
    EXPECT_TRUE(reader.GetText(0, "Name", szSmall, sizeof(szSmall)));
    EXPECT_STREQ(szSmall, "Fire");
}

TEST_F(IniSectionReaderTest, BothFlagsReadTheFileOnceWithTheSameResult)
{
    WriteFile("ini/t.ini", kText);
    for (int nFlag : {0, 1}) {
        CIniSectionReader reader;
        const unsigned long nBefore = PlatformReadFileCount();
        ASSERT_TRUE(reader.Open("ini\\t.ini", nFlag));
        const unsigned long nAfterOpen = PlatformReadFileCount();
        EXPECT_EQ(nAfterOpen - nBefore, nFlag == 0 ? 0ul : 1ul);  // a stream, or one whole-file image
        // Every key is answered from memory: the file may even be gone.
        std::rename("ini/t.ini", "ini/gone.ini");
        for (int i = 0; i < reader.GetKeyAmount(0); ++i) {
            std::string_view value;
            EXPECT_TRUE(reader.GetValue(0, std::string(reader.GetKeyAt(0, i)).c_str(), value));
        }
        EXPECT_EQ(reader.GetInt(0, "Power", 0), 12) << nFlag;
        EXPECT_EQ(reader.GetSectionAmount(), 3) << nFlag;
        EXPECT_EQ(PlatformReadFileCount(), nAfterOpen);
        std::rename("ini/gone.ini", "ini/t.ini");
    }
}

TEST(IniSectionReader, NumbersEveryHeaderAndKeyLineAndSurvivesBadInput)
{
    const std::pair<std::string, std::string> kCases[] = {
        {"[A]\nk=1\n\nk=2\n", "A@1{k@2 k@4}"},      // a blank line counts; a repeated key keeps its own line
        {"[A]\r\nk=1\r\n\r\nk=2", "A@1{k@2 k@4}"},  // a carriage return and line feed are one break
        {"[A]\rk=1\r\rk=2\r", "A@1{k@2 k@4}"},      // a lone carriage return is a break of its own
        {"[A]\n\rk=1", "A@1{k@3}"},                 // a line feed, then a carriage return: two breaks
        {"[A]\r\r\nk=1", "A@1{k@3}"},               // a lone carriage return, then one pair
        // Lines before the first section, comments and lines without "=" all count.
        {"x=0\r\n; c\n// c\r[A]\r\n\r\n  k = 1 \nnone\n [B] \r\r\nk=2", "A@4{k@6}B@8{k@10}"},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(LinesOf(c.first), c.second) << c.first;
    CIniSectionReader reader;
    reader.OpenText(kText);
    for (int nOut : {-1, 3}) {
        EXPECT_EQ(reader.GetTitleLine(nOut), 0);
        EXPECT_EQ(reader.GetKeyLine(nOut, 0), 0);
    }
    EXPECT_EQ(reader.GetKeyLine(0, 6), 0);
    EXPECT_EQ(reader.GetKeyLine(0, -1), 0);

    EXPECT_FALSE(reader.Open("missing.ini", 0) || reader.Open("missing.ini", 1));
    EXPECT_EQ(reader.GetSectionAmount(), 0);
    reader.OpenText(std::string("\xFF\xFE\x00\x01[\x80]", 7));
    EXPECT_EQ(reader.GetInt(0, "K", 3), 3);
    reader.OpenText("[S]\nK=" + std::string(100000, 'v'));
    std::string_view value;
    EXPECT_TRUE(reader.GetValue(0, "K", value));
    EXPECT_EQ(value.size(), 100000u);
    EXPECT_FALSE(reader.GetText(0, "K", nullptr, 0));
    reader.OpenText(std::string("[A\0B]\nK\0=1\nK=2", 15));
    EXPECT_EQ(reader.GetInt(0, "K", 0), 2);  // "K\0" is a different key
    EXPECT_EQ(reader.GetTitle(0), std::string_view("A\0B", 3));
}

}  // namespace
