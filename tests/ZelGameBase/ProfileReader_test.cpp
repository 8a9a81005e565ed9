#include "ZelGameBase/Platform/ProfileReader.h"

#include <string>

#include <gtest/gtest.h>

namespace {

const int kDefault = 777;

unsigned Get(const std::string& strText, const char* szSection, const char* szKey)
{
    return ProfileGetInt(strText.data(), strText.size(), szSection, szKey, kDefault);
}

}  // namespace

TEST(ProfileReader, FindsKeysByWindowsRules)
{
    const struct {
        const char* szText;
        const char* szSection;
        const char* szKey;
        unsigned nExpected;
    } kCases[] = {
        {"[Sec]\nKey=5\n", "sEC", "kEY", 5},                     // names fold ASCII case
        {"  [  Sec  ]  \n \t Key \t=\t 6 \n", "Sec", "Key", 6},  // blanks everywhere are ignored
        {"[Sec]junk]\nKey=7", "Sec", "Key", 7},                  // the name ends at the first "]"
        {"[Sec]\n ; Key=8\n", "Sec", "Key", kDefault},          // a comment is never found
        {"Key=1\n[Sec]\n", "Sec", "Key", kDefault},             // keys before the first section
        {"[Sec]\nA=1\n[Sec]\nKey=2\n", "Sec", "Key", kDefault},  // only the first same-named section
        {"[Sec]\nKey=1\nkey=2\n", "Sec", "Key", 1},             // the first occurrence wins
        {"[Sec]\r\nKey=3\r\n", "Sec", "Key", 3},
        {"[Sec]\rKey=4\rNext=1", "Sec", "Key", 4},               // a lone CR ends a line
        {"[Sec]\nKey=\"12\"\n", "Sec", "Key", 12},             // one pair of outer quotes goes
        {"[Sec]\nKey=\"14\n", "Sec", "Key", 0},                 // an unmatched quote stays
        {"[Sec]\nKey=\"\"\n", "Sec", "Key", kDefault},           // nothing left inside the quotes
        {"[Sec]\nKey=\n", "Sec", "Key", kDefault},
        {"[Sec]\nKey\n", "Sec", "Key", kDefault},
        {"[Sec]\nKey=abc\n", "Sec", "Key", 0},
        {"[Sec]\nKey=12 ; note\n", "Sec", "Key", 12},           // no comments after a value
        {"[Sec\nKey=1\n", "Sec", "Key", kDefault},               // no "]": not a header
        {"", "Sec", "Key", kDefault},
        {"[Sec]\nK\x01" "ey=1\nKey=2\n\xFF\xFE", "SEC", "Key", 2},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(Get(c.szText, c.szSection, c.szKey), c.nExpected) << c.szText;
}

TEST(ProfileReader, ConvertsLikeTheSystemIntegerParser)
{
    const struct {
        const char* szValue;
        unsigned nExpected;
    } kCases[] = {
        {"42", 42u},
        {"\x01\x1F 42", 42u},  // everything up to 0x20 is skipped
        {"-1", 0xFFFFFFFFu},
        {"--1", 0u},
        {"0x1F", 31u},
        {"0X1F", 0u},          // upper-case prefixes are not prefixes
        {"0o17", 15u},
        {"0b101", 5u},
        {"0b102", 2u},         // stops at the first digit the base does not have
        {"0x", 0u},
        {"4294967297", 1u},    // wraps at 32 bits
        {"12abc", 12u},
        {"x", 0u},
        {"", kDefault},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(ProfileParseInt(c.szValue, kDefault), c.nExpected) << c.szValue;
    EXPECT_EQ(ProfileParseInt(std::string("\0" "5", 2), kDefault), static_cast<unsigned>(kDefault));
    EXPECT_EQ(ProfileParseInt("", -1), 0xFFFFFFFFu);
}
