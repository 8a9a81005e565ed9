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
        const char *szText, *szSection, *szKey;
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
    // Everything up to 0x20 is skipped; upper-case prefixes are no prefixes; a
    // number stops at the first digit its base lacks and wraps at 32 bits.
    const std::pair<const char*, unsigned> kCases[] = {
        {"42", 42u},   {"\x01\x1F 42", 42u}, {"-1", 0xFFFFFFFFu}, {"--1", 0u},           {"0x1F", 31u},
        {"0X1F", 0u},  {"0o17", 15u},       {"0b101", 5u},       {"0b102", 2u},         {"0x", 0u},
        {"x", 0u},     {"12abc", 12u},      {"", kDefault},      {"4294967297", 1u},
    };
    for (const auto& c : kCases) EXPECT_EQ(ProfileParseInt(c.first, kDefault), c.second) << c.first;
    EXPECT_EQ(ProfileParseInt(std::string("\0" "5", 2), kDefault), static_cast<unsigned>(kDefault));
    EXPECT_EQ(ProfileParseInt("", -1), 0xFFFFFFFFu);
}
