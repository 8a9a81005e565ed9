#include "ClientData/CommonIni.h"

#include <cstdio>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

class CommonIniTest : public RegistryFolderTest<TableRegistry> {
protected:
    // Slots 7 to 15 in order.
    std::vector<int> Values(CCommonIni& table)
    {
        std::vector<int> setValue;
        for (int nSlot = 7; nSlot <= 15; ++nSlot) setValue.push_back(CallSlot<int>(&table, nSlot));
        return setValue;
    }
};

TEST_F(CommonIniTest, ReadsNineValuesInSlotOrder)
{
    WriteFile("ini/Common.ini",
              "[PLAYERFACE]\r\nMaleFaceAmount=12 FemaleFaceAmount=10\r\n[EmblemAmount]\r\nEmblemAmount=40\r\n"
              "[Statuary]\r\nLeaderScale=120\r\nLeaderMaxLife=5000\r\nAssistantScale=110\r\n"
              "AssistantMaxLife=3000\r\nSubLeaderScale=105\r\nSubLeaderMaxLife=2000\r\n");
    CCommonIni table;
    table.Load();
    EXPECT_EQ(Values(table), (std::vector<int>{12, 10, 120, 110, 105, 5000, 3000, 2000, 40}));
    EXPECT_EQ(LogEntryCount(), 0);
    table.Clear();  // keeps the values
    EXPECT_EQ(table.GetEmblemAmount(), 40);
}

TEST_F(CommonIniTest, EachMissingValueLogsItsOwnAssertion)
{
    WriteFile("ini/Common.ini", "[Playerface]\nMaleFaceAmount=3\n[Statuary]\nLeaderScale = 7\n");
    CCommonIni table;
    table.Load();
    EXPECT_EQ(table.GetMaleFaceAmount(), 3);
    // "LeaderScale = 7" is read as found without a value: the member stays.
    EXPECT_EQ(table.GetLeaderScale(), 0);
    const std::string strLog = LogText();
    EXPECT_EQ(LogEntryCount(), 7);
    EXPECT_NE(strLog.find("\xA1\xEF" "ASSERT(::IniDataGet(szIniFile, szTitle, szSubtitle, m_nFemaleFaceAmount)) in 23 "
                          "line of ClientData\\CommonIni\xA1\xEF -- Mon Mar 07 14:05:09 2011\n"),
              std::string::npos);
    EXPECT_NE(strLog.find("m_nEmblemAmount)) in 27 line"), std::string::npos);
    EXPECT_NE(strLog.find("m_nSubLeaderMaxLife)) in 41 line"), std::string::npos);
    EXPECT_EQ(strLog.find("m_nLeaderScale"), std::string::npos);
    // The readers' own misses go to the debugger, not the log.
    EXPECT_NE(DebugText().find("Error: [Playerface] FemaleFaceAmount not found in ini/Common.ini.\n"),
              std::string::npos);
    std::remove("ini/Common.ini");  // a missing file logs all nine
    table.Load();
    EXPECT_EQ(LogEntryCount(), 7 + 9);
    EXPECT_EQ(table.GetLoadedAmount(), 0u);
}

}  // namespace
