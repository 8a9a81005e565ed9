#include "ClientData/ActionCtrlData.h"

#include "ClientData/Catalogue.h"
#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

static_assert(std::is_same_v<CatalogueSlot<165>::Class, CActionCtrlData>);

namespace {

class ActionCtrlDataTest : public RegistryFolderTest<TableRegistry> {
protected:
    // A section whose first time percentage marks it.
    static std::string Section(const std::string& strTitle, int nMark)
    {
        return "[" + strTitle + "]\nSection=1\nTimePercent0=" + std::to_string(nMark) + "\n";
    }

    // The mark of the record slot 7 answers, -1 on a miss.
    int MarkOf(int64_t nKey)
    {
        const auto* pCtrl = CallSlot<const ActionCtrlInfo*>(&m_table, 7, nKey);
        return pCtrl == nullptr ? -1 : pCtrl->nTimePercent[0];
    }

    CActionCtrlData m_table;
};

TEST_F(ActionCtrlDataTest, SegmentCountIsTheRemainderByEight)
{
    WriteFile("ini/ActionCtrl.ini",
              "[1]\nSection=3\nTimePercent2=30\nTimePercent3=40\nMovePercent0=11\n"
              "[2]\nSection=8\nTimePercent0=10\n"
              "[4]\nSection=15\nMovePercent6=66\nMovePercent7=77\n"
              "[1]\nSection=1\n");  // a repeated key: the first section stays
    m_table.Load();
    const ActionCtrlInfo *p1 = m_table.GetActionCtrl(1), *p2 = m_table.GetActionCtrl(2), *p4 = m_table.GetActionCtrl(4);
    ASSERT_TRUE(p1 && p2 && p4);
    // Segments beyond the count are not read.
    EXPECT_EQ(std::vector<int>({p1->nSection, p1->nTimePercent[2], p1->nTimePercent[3], p1->nMovePercent[0]}),
              (std::vector<int>{3, 30, 0, 11}));
    EXPECT_EQ(std::vector<int>({p2->nSection, p2->nTimePercent[0]}), (std::vector<int>{0, 0}));
    EXPECT_EQ(std::vector<int>({p4->nSection, p4->nMovePercent[6], p4->nMovePercent[7]}), (std::vector<int>{7, 66, 0}));
}

TEST_F(ActionCtrlDataTest, WildcardChainTriesItsExactKeysInOrder)
{
    WriteFile("ini/ActionCtrl.ini", Section("123456789", 1) + Section("999456789", 2) + Section("999999789", 3) +
                                        Section("123999789", 4) + Section("5123456000", 5));
    m_table.Load();
    const std::pair<int64_t, int> cases[] = {
        {123456789, 1},   // the key itself
        {555456789, 2},   // digits 6-8 become 999
        {7000456789, 2},  // ... and the digits above them are dropped
        {555111789, 3},   // then digits 3-5 of that become 999
        {123111789, 3},   // never "digits 3-5 of the key": 123999789 is not tried
        {555111788, -1},  // no catch-all section
        {5123456000, 5},
    };
    for (const auto& c : cases) EXPECT_EQ(MarkOf(c.first), c.second) << c.first;

    m_table.Clear();
    WriteFile("ini/ActionCtrl.ini", Section("999999999", 9) + Section("20", 2));
    m_table.Load();
    for (int64_t nKey : {int64_t{1}, int64_t{123456789}, int64_t{98765432101}}) EXPECT_EQ(MarkOf(nKey), 9) << nKey;
    EXPECT_EQ(MarkOf(20), 2);
}

TEST_F(ActionCtrlDataTest, MissingFileAndGarbage)
{
    m_table.Load();
    EXPECT_NE(LogText().find("ini/ActionCtrl.ini load error!"), std::string::npos);
    EXPECT_EQ(m_table.GetActionCtrl(999999999), nullptr);

    std::string strGarbage =
        "[99999999999999999999999]\nSection=-3\n[-7]\nSection=2147483647\n[-5]\nSection=-3\nTimePercent0=9\n";
    for (int i = 0; i < 20000; ++i) strGarbage += static_cast<char>((i * 7919 + 13) % 256);
    WriteFile("ini/ActionCtrl.ini", strGarbage + "\n[x" + std::string(10000, 'y') + "]\nSection=7\n");
    m_table.Load();
    ASSERT_NE(m_table.GetActionCtrl(-7), nullptr);
    EXPECT_EQ(m_table.GetActionCtrl(-7)->nSection, 7);  // 2147483647 mod 8
    // The remainder keeps the sign: a negative count reads no segment.
    ASSERT_NE(m_table.GetActionCtrl(-5), nullptr);
    EXPECT_EQ(m_table.GetActionCtrl(-5)->nSection, -3);
    EXPECT_EQ(m_table.GetActionCtrl(-5)->nTimePercent[0], 0);
    for (int64_t nKey : {INT64_MAX, INT64_MIN, int64_t{-1}}) m_table.GetActionCtrl(nKey);
}

}  // namespace
