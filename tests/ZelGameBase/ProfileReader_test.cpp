// The cases the Wine differential program, which compares the reader with
// the system's own, cannot decide: Wine parts from Windows there.
#include "ZelGameBase/Platform/ProfileReader.h"

#include <string>

#include <gtest/gtest.h>

namespace {

const int kDefault = 777;

TEST(ProfileReader, FindsKeysByWindowsRules)
{
    const struct {
        const char *szText, *szSection, *szKey;
        unsigned nExpected;
    } kCases[] = {
        {"[Sec]junk]\nKey=7", "Sec", "Key", 7},         // the name ends at the first "]"
        {"[Sec]\n ; Key=8\n", "Sec", "Key", kDefault},  // a comment is never found
        {"Key=1\n[Sec]\n", "Sec", "Key", kDefault},     // keys before the first section
        {"[Sec]\nKey=\"14\n", "Sec", "Key", 0},         // an unmatched quote stays
        {"[Sec]\nKey=12 ; note\n", "Sec", "Key", 12},   // no comments after a value
        {"[Sec\nKey=1\n", "Sec", "Key", kDefault},      // no "]": not a header
        {"", "Sec", "Key", kDefault},
        {"[Sec]\nK\x01"
         "ey=1\nKey=2\n\xFF\xFE",
         "SEC", "Key", 2},
    };
    for (const auto& c : kCases) {
        const std::string strText = c.szText;
        EXPECT_EQ(ProfileGetInt(strText.data(), strText.size(), c.szSection, c.szKey, kDefault), c.nExpected)
            << c.szText;
    }
}

TEST(ProfileReader, ConvertsLikeTheSystemIntegerParser)
{
    // Everything up to 0x20 is skipped; upper-case prefixes are no prefixes; a
    // number stops at the first digit its base lacks.
    const std::pair<const char*, unsigned> kCases[] = {
        {"\x01\x1F 42", 42u}, {"0X1F", 0u}, {"0b102", 2u}, {"000000000000000000000000000012", 12u}};
    for (const auto& c : kCases)
        EXPECT_EQ(ProfileParseInt(c.first, kDefault), c.second) << c.first;
    EXPECT_EQ(ProfileParseInt(std::string("\0"
                                          "5",
                                          2),
                              kDefault),
              static_cast<unsigned>(kDefault));
}

}  // namespace
