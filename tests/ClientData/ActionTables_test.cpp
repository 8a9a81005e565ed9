// The fixed action names, and the digit arithmetic behind the wildcard keys
// of the action values.
#include <climits>
#include <tuple>
#include <vector>

#include "ClientData/ActionType.h"
#include "ClientData/ActionValueData.h"
#include "Support/TableSupport.h"
#include "Support/VtableCall.h"

namespace {

// Each name stands once (a repeated one would hide its later position); the
// client's own spellings are pinned by the action-type rule of the table test.
TEST(ActionType, NamesKeepTheirPositionsAndMatchOnlyAsSpelled)
{
    for (int i = 0; i < kActionNameAmount; ++i)
        ASSERT_EQ(ActionPositionOf(ActionNameAt(i)), i) << i;
    EXPECT_EQ(ActionNameAt(kActionNameAmount), nullptr);
    for (const char* szName : {"_ACTION_USE_ITEM", "_action_standby", "_ACTION_STANDBY ", ""})
        EXPECT_EQ(ActionPositionOf(szName), -1) << szName;
}

TEST(ActionType, ReplaceDigitsKeepsTheOtherGroupsAndCarriesWideValues)
{
    const struct {
        long long nKey;
        int nFrom, nTo;
        long long nValue, nExpected;
    } kCases[] = {
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
    for (const auto& c : kCases)
        EXPECT_EQ(ActionKeyReplaceDigits(c.nKey, c.nFrom, c.nTo, c.nValue), c.nExpected) << c.nKey;
    // Keys near the limits wrap instead of overflowing (the sanitizer build checks).
    ActionKeyReplaceDigits(LLONG_MAX, 9, 10, 999999);
    ActionKeyReplaceDigits(LLONG_MIN, 3, 5, 999999);
}

class ActionValueDataTest : public TableTest<CActionValueData> {
protected:
    int ValueOf(int64_t nKey) { return CallSlot<int>(&m_table, 7, nKey); }
};

TEST_F(ActionValueDataTest, WildcardKeysAreTriedInOrder)
{
    int64_t nKeys[kActionValueKeyAmount];
    ActionValueKeys(123456789, nKeys);
    const int64_t nExpected[kActionValueKeyAmount] = {
        123456789,        123456999, 123999789, 999456789, 99123456789, 99999456789, 999999789,
        1000000122999789,  // six nines in groups of two and three: the excess carries
    };
    EXPECT_EQ(std::vector<int64_t>(nKeys, nKeys + kActionValueKeyAmount),
              std::vector<int64_t>(nExpected, nExpected + kActionValueKeyAmount));
    // The lookup's own arithmetic gives what the digit replacement gives,
    // signs and wrapping included.
    for (int64_t nKey : {int64_t{0}, int64_t{-1234567}, int64_t{12345678901}, int64_t{-999999345678901},
                         int64_t{LLONG_MAX}, int64_t{LLONG_MIN}}) {
        int64_t nTried[kActionValueKeyAmount];
        ActionValueKeys(nKey, nTried);
        const int64_t nWide = ActionKeyReplaceDigits(nKey, 9, 10, 999999);
        const int64_t nReplaced[kActionValueKeyAmount] = {
            nKey,
            ActionKeyReplaceDigits(nKey, 0, 2, 999),
            ActionKeyReplaceDigits(nKey, 3, 5, 999),
            ActionKeyReplaceDigits(nKey, 6, 8, 999),
            ActionKeyReplaceDigits(nKey, 9, 10, 99),
            ActionKeyReplaceDigits(nKey, 6, 10, 99999),
            ActionKeyReplaceDigits(nKey, 3, 8, 999999),
            ActionKeyReplaceDigits(nWide, 3, 5, 999999),
        };
        EXPECT_EQ(std::vector<int64_t>(nTried, nTried + kActionValueKeyAmount),
                  std::vector<int64_t>(nReplaced, nReplaced + kActionValueKeyAmount))
            << nKey;
    }

    // Each file holds the keys from step i on; the query answers step i.
    for (int nFirst = 0; nFirst < kActionValueKeyAmount; ++nFirst) {
        std::string strFile = "1 0\n";  // keeps the table non-empty
        for (int i = nFirst; i < kActionValueKeyAmount; ++i)
            strFile += std::to_string(nKeys[i]) + " " + std::to_string(100 + i) + "\n";
        Load("ini/Action.dat", strFile);
        EXPECT_EQ(ValueOf(123456789), 100 + nFirst) << nFirst;
    }
}

}  // namespace
