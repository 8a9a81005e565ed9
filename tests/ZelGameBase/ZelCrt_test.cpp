#include "ZelGameBase/ZelCrt.h"

#include <climits>
#include <string>
#include <utility>

#include <gtest/gtest.h>

TEST(ZelCrt, AtoiSaturatesLikeTheClientRuntime)
{
    const std::pair<const char*, int> kCases[] = {
        {"12ab", 12}, {" \t\n\v\f\r-7", -7}, {"+5", 5}, {"2147483648", INT_MAX}, {"99999999999999999999", INT_MAX},
        {"-2147483648", INT_MIN}, {"-2147483649", INT_MIN}, {"", 0}, {"- 5", 0}, {"--5", 0},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(CrtAtoi(c.first), c.second) << '"' << c.first << '"';
    EXPECT_EQ(CrtAtoi(nullptr), 0);
}

TEST(ZelCrt, ScansWrapAndReportTheEndOfInput)
{
    const struct {
        const char* szText;
        ScanResult result;
        int32_t nValue;
        int nConsumed;
    } kCases[] = {
        {"  42x", SCAN_CONVERTED, 42, 4},        {"-17", SCAN_CONVERTED, -17, 3},
        {"2147483648", SCAN_CONVERTED, INT_MIN, 10}, {"-4294967295", SCAN_CONVERTED, 1, 11},
        {"x1", SCAN_NO_MATCH, 0, 0},             {"-x", SCAN_NO_MATCH, 0, 0},
        {" \t", SCAN_INPUT_END, 0, 0},           {"-", SCAN_INPUT_END, 0, 0},
    };
    for (const auto& c : kCases) {
        const char* p = c.szText;
        int32_t nValue = 0;
        EXPECT_EQ(CrtScanInt32(p, &nValue), c.result) << c.szText;
        EXPECT_EQ(nValue, c.nValue) << c.szText;
        EXPECT_EQ(p - c.szText, c.nConsumed) << c.szText;
    }
    const char* p = "-1";
    uint32_t nUnsigned = 0;
    EXPECT_EQ(CrtScanUInt32(p, &nUnsigned), SCAN_CONVERTED);
    EXPECT_EQ(nUnsigned, 0xFFFFFFFFu);
    p = "4294967297";
    EXPECT_EQ(CrtScanUInt32(p, &nUnsigned), SCAN_CONVERTED);
    EXPECT_EQ(nUnsigned, 1u);
    p = "0x1fG";
    EXPECT_EQ(CrtScanHex32(p, &nUnsigned), SCAN_CONVERTED);
    EXPECT_EQ(nUnsigned, 0x1Fu);
    EXPECT_STREQ(p, "G");
    int64_t nWide = 0;
    p = "9223372036854775808";
    EXPECT_EQ(CrtScanInt64(p, &nWide), SCAN_CONVERTED);
    EXPECT_EQ(nWide, INT64_MIN);
    char szWord[4];
    p = "  abcdef next";
    EXPECT_EQ(CrtScanWord(p, szWord, sizeof(szWord)), SCAN_CONVERTED);
    EXPECT_STREQ(szWord, "abc");  // cut, but the whole word is consumed
    EXPECT_STREQ(p, " next");
}

TEST(ZelCrt, CompareNoCaseFoldsAsciiOnly)
{
    EXPECT_EQ(CrtCompareNoCase("[PlayerFace]", "[PLAYERFACE]"), 0);
    EXPECT_LT(CrtCompareNoCase("abc", "abd"), 0);
    EXPECT_GT(CrtCompareNoCase("abc", "ab"), 0);
    // GBK bytes and Latin-1 letters are not folded: 0xC9 ("É") differs from 0xE9.
    EXPECT_NE(CrtCompareNoCase("\xC9", "\xE9"), 0);
    EXPECT_EQ(CrtCompareNoCase("\xA1\xEFx", "\xA1\xEFX"), 0);
    // "_" sorts before letters, as _stricmp compares lower-cased bytes.
    EXPECT_LT(CrtCompareNoCase("_", "A"), 0);
    EXPECT_EQ(CrtCompareNoCase("Ab\0x", 4, "aB\0y", 3), 1);
    EXPECT_EQ(CrtCompareNoCase("Ab\0x", 3, "aB\0y", 3), 0);
}

TEST(ZelCrt, CtimeTextPadsTheDay)
{
    const std::pair<LocalTime, const char*> kCases[] = {
        {{2011, 3, 7, 14, 5, 9, 1}, "Mon Mar 07 14:05:09 2011\n"},
        {{2012, 1, 5, 0, 0, 0, 4}, "Thu Jan 05 00:00:00 2012\n"},
        {{1999, 12, 31, 23, 59, 59, 5}, "Fri Dec 31 23:59:59 1999\n"},
        {{2011, 9, 11, 9, 1, 2, 0}, "Sun Sep 11 09:01:02 2011\n"},
    };
    for (const auto& c : kCases) {
        char szText[26];
        CrtFormatCtime(c.first, szText);
        EXPECT_STREQ(szText, c.second);
    }
}
