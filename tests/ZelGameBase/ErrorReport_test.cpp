// The report senders, which the data layer never starts: what they write to
// the debug log, and that their workers start, run and end on their own
// (scripts/run-tsan.sh runs these under the thread checker). Posts go to a
// loopback port where nothing listens.
#include "ZelGameBase/ErrorReport.h"

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include "Support/TestSupport.h"
#include "ZelGameBase/PromotionReport.h"
#include "ZelGameBase/ReportPost.h"

namespace {

class ErrorReportTest : public DataFolderTest {
protected:
    void SetUp() override
    {
        DataFolderTest::SetUp();
        setenv("no_proxy", "*", 1);
        ReportPortSet(1);
        ErrorPostCountReset();
    }
    void TearDown() override
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (ReportWorkerCount() != 0 && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        EXPECT_EQ(ReportWorkerCount(), 0);
        ReportPortSet(0);
        DataFolderTest::TearDown();
    }
};

TEST_F(ErrorReportTest, SendersRunOnTheirOwnWorkersAndOnlyTheReportIsLogged)
{
    WriteFile("ini/GameSetup.ini", "[DumpError]\nEnable=1\nServer=127.0.0.1\nAction=/e\nClient=Zel\n");
    ErrorReport(nullptr, "disk %d & retry=%s", 5, "a b");
    for (int i = 0; i < 5; ++i) {
        ErrorPost(("report " + std::to_string(i)).c_str());
        NetErrorPost("net %d", i);
    }
    ErrorPost(nullptr);
    // The stack entries, then the message as it was formatted.
    const std::string strLog = LogText();
    EXPECT_EQ(strLog.rfind("(", 0), 0u) << strLog;
    EXPECT_NE(strLog.find(") disk 5 & retry=a b\n -- Mon Mar 07 14:05:09 2011\n"), std::string::npos) << strLog;
    EXPECT_EQ(LogEntryCount(), 1);
}

TEST_F(ErrorReportTest, LogOnlyFormsPostNothingAndAHexDumpStopsAt256Bytes)
{
    ErrorLogSave(nullptr, "bad %s", "slot");
    EXPECT_EQ(ReportWorkerCount(), 0);
    EXPECT_EQ(LogText().rfind("Error:bad slot [(", 0), 0u) << LogText();
    EXPECT_NE(LogText().find(") ] -- Mon Mar 07 14:05:09 2011\n"), std::string::npos);

    const unsigned char setTwo[] = {0x0A, 0xFF};
    HexDumpLog(setTwo, 2);
    HexDumpLog(std::string(300, '\x01').data(), 300);
    std::string strExpected;
    for (int i = 0; i < 256; ++i)
        strExpected += "1 ";
    EXPECT_NE(LogText().find("\na ff  -- Mon Mar 07 14:05:09 2011\n" + strExpected + " -- "), std::string::npos);
}

TEST(PromotionFieldsAppend, KeepsTheFixedOrderEncodesNothingAndCutsAtTheBuffer)
{
    const unsigned char setMac[6] = {0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
    const unsigned char setZero[6] = {};
    const struct {
        const char* szLocalIp;
        const unsigned char* pMac;
        const char *szGame, *szUser, *szExpected;
    } kCases[] = {
        {"192.168.1.20", setMac, "29", "0", "Posttype=1&LocalIP=192.168.1.20&MAC=001A2B3C4D5E&Gamecode=29&Usercode=0"},
        {nullptr, setZero, "a&b", "c=d", "Posttype=1&MAC=000000000000&Gamecode=a&b&Usercode=c=d"},
    };
    for (const auto& c : kCases) {
        char szBody[256] = "Posttype=1";
        PromotionFieldsAppend(szBody, sizeof(szBody), c.szLocalIp, c.pMac, c.szGame, c.szUser);
        EXPECT_STREQ(szBody, c.szExpected);
    }
    char szSmall[16] = "Posttype=1";
    PromotionFieldsAppend(szSmall, sizeof(szSmall), nullptr, setMac, "29", "0");
    EXPECT_STREQ(szSmall, "Posttype=1&MAC=");
}

}  // namespace
