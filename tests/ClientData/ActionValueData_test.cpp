#include "ClientData/ActionValueData.h"

#include "ClientData/Catalogue.h"
#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

static_assert(std::is_same_v<CatalogueSlot<148>::Class, CActionValueData>);

namespace {

class ActionValueDataTest : public RegistryFolderTest<TableRegistry> {
protected:
    int ValueOf(int64_t nKey) { return CallSlot<int>(&m_table, 7, nKey); }

    CActionValueData m_table;
};

TEST_F(ActionValueDataTest, EmptyTableAnswersFromTheBuiltInRule)
{
    m_table.Load();  // no file
    EXPECT_EQ(LogEntryCount(), 0);
    const std::pair<int64_t, int> cases[] = {
        {5101, 66}, {103, 66}, {104, 33}, {110, 25}, {121, 25},    {122, 33},  {451, 10},
        {7460, 10}, {465, 10}, {470, 10}, {454, 33}, {101000, 33}, {-100, 33}, {INT64_MAX, 33},
    };
    for (const auto& c : cases) EXPECT_EQ(ValueOf(c.first), c.second) << c.first;
}

TEST_F(ActionValueDataTest, WildcardKeysAreTriedInOrder)
{
    int64_t nKeys[kActionValueKeyAmount];
    ActionValueKeys(123456789, nKeys);
    const int64_t nExpected[kActionValueKeyAmount] = {
        123456789,        123456999, 123999789, 999456789, 99123456789, 99999456789, 999999789,
        1000000122999789,  // six nines in groups of two and three: the excess carries
    };
    for (int i = 0; i < kActionValueKeyAmount; ++i) EXPECT_EQ(nKeys[i], nExpected[i]) << i;

    // Each file holds the keys from step i on; the query answers step i.
    for (int nFirst = 0; nFirst < kActionValueKeyAmount; ++nFirst) {
        std::string strFile = "1 0\n";  // keeps the table non-empty
        for (int i = nFirst; i < kActionValueKeyAmount; ++i)
            strFile += std::to_string(nKeys[i]) + " " + std::to_string(100 + i) + "\n";
        WriteFile("ini/Action.dat", strFile);
        m_table.Load();
        EXPECT_EQ(ValueOf(123456789), 100 + nFirst) << nFirst;
    }
}

TEST_F(ActionValueDataTest, FirstLineWinsAndUnparsableKeysAreSkipped)
{
    WriteFile("ini/Action.dat",
              "5101 7\n5101 8\n"  // a repeated key: the first line stays
              "x5102 9\n"         // no number: skipped
              "5103\n"            // no value: 0
              "-5105 -4\n");
    m_table.Load();
    EXPECT_EQ(m_table.GetLoadedAmount(), 3u);
    EXPECT_EQ(ValueOf(5101), 7);
    EXPECT_EQ(ValueOf(5103), 0);
    EXPECT_EQ(ValueOf(-5105), -4);
    EXPECT_EQ(ValueOf(7460), 33);  // no built-in rule once the table holds keys

    std::string strGarbage = std::string(70, '7') + " 5\n99999999999999999999 1\n" + std::string(9000, '1') + "\n";
    for (int i = 0; i < 20000; ++i) strGarbage += static_cast<char>((i * 7919 + 13) % 256);
    WriteFile("ini/Action.dat", strGarbage);
    m_table.Load();  // starts again from nothing
    EXPECT_EQ(ValueOf(5101), 33);
    for (int64_t nKey : {INT64_MAX, INT64_MIN, int64_t{-1}}) ValueOf(nKey);
}

}  // namespace
