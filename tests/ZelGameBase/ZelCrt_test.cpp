// The scans and the ctime text are compared with the C runtime's own by the
// Wine differential program; here what it cannot decide.
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

TEST(ZelCrt, ScansReportTheEndOfInputAndWordsAreCut)
{
    // Blanks or a lone sign before the end: Windows' runtime answers the end
    // of the input, Wine's a matching failure.
    for (const char* szText : {" \t", "-"}) {
        const char* p = szText;
        int32_t nValue = 0;
        EXPECT_EQ(CrtScanInt32(p, &nValue), SCAN_INPUT_END) << szText;
        EXPECT_EQ(p, szText);
    }
    char szWord[4];
    const char* p = "  abcdef next";
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
