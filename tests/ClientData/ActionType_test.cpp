#include "ClientData/ActionType.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

TEST(ActionTypeTest, NamesKeepTheirPositionsAndMatchOnlyAsSpelled)
{
    for (int i = 0; i < kActionNameAmount; ++i) ASSERT_EQ(ActionPositionOf(ActionNameAt(i)), i) << i;
    EXPECT_STREQ(ActionNameAt(122), "_ACTION_USE_ITEm");
    EXPECT_STREQ(ActionNameAt(289), "_ACTION_SKILL_SEAL");
    EXPECT_EQ(ActionNameAt(290), nullptr);
    for (const char* szName : {"_ACTION_USE_ITEM", "_action_standby", "_ACTION_STANDBY ", ""})
        EXPECT_EQ(ActionPositionOf(szName), -1) << szName;
}

TEST(ActionTypeTest, ReplaceDigitsKeepsTheOtherGroupsAndCarriesWideValues)
{
    const struct {
        long long nKey;
        int nFrom, nTo;
        long long nValue, nExpected;
    } cases[] = {
        {123456789, 0, 2, 999, 123456999},
        {123456789, 6, 8, 999, 999456789},
        {123456789, 9, 10, 99, 99123456789},
        // Six nines in a two-digit group carry four digits further up.
        {12345678901, 9, 10, 999999, 999999345678901},
        {999999345678901, 3, 5, 999999, 1000000344999901},
        // Division truncates toward zero: a negative key keeps its sign in both parts.
        {-1234567, 0, 2, 999, -1233001},
        {-1234567, 3, 5, 999, -1567},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ActionKeyReplaceDigits(c.nKey, c.nFrom, c.nTo, c.nValue), c.nExpected) << c.nKey;
    // Keys near the limits wrap instead of overflowing (the sanitizer build checks).
    ActionKeyReplaceDigits(LLONG_MAX, 9, 10, 999999);
    ActionKeyReplaceDigits(LLONG_MIN, 3, 5, 999999);
}

}  // namespace
