#include "ZelGameBase/ErrorReport.h"

#include <cerrno>
#include <string>

#include "ZelGameBase/ReportFixture.h"

namespace {

const char kSetup[] = "[DumpError]\nEnable=1\nServer=127.0.0.1\nAction=/dump/error.php\nClient=Zel\n";
// What every posted report begins with here: no version.dat, and the test
// program is neither in the working folder nor carries a version resource.
const char kBareHead[] = "client=Zel&msg=ReleaseVer: MsgVer:271 , FileVer:, FileTime:==";

// "The main thread could not connect; the test thread ..." "... failed too!" / "... connected!"
#define CONNECT_TRIED "\xD6\xF7\xCF\xDF\xB3\xCC\xC1\xAC\xBD\xD3\xCA\xA7\xB0\xDC\xA3\xAC\xB2\xE2\xCA\xD4\xCF\xDF\xB3\xCC"
#define CONNECT_FAILED CONNECT_TRIED "\xD2\xB2\xC1\xAC\xBD\xD3\xCA\xA7\xB0\xDC!"
#define CONNECT_DONE CONNECT_TRIED "\xC1\xAC\xBD\xD3\xB3\xC9\xB9\xA6!"
#define IP_ADDRESS "IP\xB5\xD8\xD6\xB7"

class ErrorReportTest : public ReportTest {
protected:
    void SetUp() override
    {
        ReportTest::SetUp();
        ErrorPostCountReset();
    }
};

TEST_F(ErrorReportTest, ReportIsLoggedAndPostedAsOneUnencodedForm)
{
    WriteFile("ini/GameSetup.ini", kSetup);
    WriteFile("version.dat", "2.0.1\n");
    ErrorReport(nullptr, "disk %d & retry=%s", 5, "a b");

    const std::vector<std::string> setRequest = m_server.WaitRequests(1);
    ASSERT_EQ(setRequest.size(), 1u);
    const std::string strHead = LoopbackHttpServer::HeadOf(setRequest[0]) + "\r\n";
    const std::string strBody = LoopbackHttpServer::BodyOf(setRequest[0]);
    EXPECT_EQ(strHead.substr(0, strHead.find("\r\n")), "POST /dump/error.php HTTP/1.1");
    for (const std::string& strLine : {std::string("User-Agent: MyAgent"), std::string("Accept: Accept: */*"),
                                       std::string("Content-Type: application/x-www-form-urlencoded"),
                                       "Content-Length: " + std::to_string(strBody.size())})
        EXPECT_NE(strHead.find("\r\n" + strLine + "\r\n"), std::string::npos) << strLine;

    // The release text keeps its line break; the stack entries precede the
    // message, which keeps "&" and "=" as they are.
    const std::string strStart = "client=Zel&msg=ReleaseVer:2.0.1\n MsgVer:271 , FileVer:, FileTime:==(";
    const std::string strTail = ") disk 5 & retry=a b\n";
    EXPECT_TRUE(strBody.size() > strStart.size() + strTail.size() &&
                strBody.compare(0, strStart.size(), strStart) == 0 &&
                strBody.compare(strBody.size() - strTail.size(), strTail.size(), strTail) == 0)
        << strBody;
    // The log holds the stack entries and the message.
    const std::string strLogged = strBody.substr(strBody.find("==(") + 2) + " -- Mon Mar 07 14:05:09 2011\n";
    EXPECT_NE(LogText().find(strLogged), std::string::npos);
}

TEST_F(ErrorReportTest, SettingsThatStopThePostStillLeaveTheLogEntry)
{
    const char* setSetup[] = {
        "[DumpError]\nEnable=0\nServer=127.0.0.1\nAction=/e\nClient=Zel\n",
        "[DumpError]\nEnable=2\nServer=127.0.0.1\nAction=/e\nClient=Zel\n",
        "[DumpError]\nServer=127.0.0.1\nAction=/e\nClient=Zel\n",
        "[DumpError]\nEnable=1\nAction=/e\nClient=Zel\n",
        "[DumpError]\nEnable=1\nServer=127.0.0.1\nClient=Zel\n",
        "[DumpError]\nEnable=1\nServer=127.0.0.1\nAction=/e\n",
        "[Other]\nEnable=1\nServer=127.0.0.1\nAction=/e\nClient=Zel\n",
    };
    for (const char* szSetup : setSetup) {
        WriteFile("ini/GameSetup.ini", szSetup);
        ErrorPostCountReset();
        ErrorReport(nullptr, "case %s", szSetup);
        WorkersWait();
        EXPECT_NE(LogText().find(std::string("case ") + szSetup), std::string::npos) << szSetup;
    }
    EXPECT_TRUE(m_server.Requests().empty());
}

TEST_F(ErrorReportTest, OnlyFourReportsArePostedButNetErrorsHaveNoLimit)
{
    WriteFile("ini/GameSetup.ini", kSetup);
    for (int i = 0; i < 5; ++i)
        ErrorPost(("report " + std::to_string(i)).c_str());
    ErrorPost(nullptr);
    WorkersWait();
    EXPECT_EQ(m_server.Requests().size(), 4u);

    for (int i = 0; i < 6; ++i)
        NetErrorPost("net %d", i);
    WorkersWait();
    const std::vector<std::string> setRequest = m_server.Requests();
    ASSERT_EQ(setRequest.size(), 10u);
    int nNetLines = 0;
    for (const std::string& strRequest : setRequest)
        nNetLines += LoopbackHttpServer::BodyOf(strRequest).find("==net ") != std::string::npos;
    EXPECT_EQ(nNetLines, 6);
    EXPECT_EQ(LogEntryCount(), 0);
}

TEST_F(ErrorReportTest, OverlongReportsAreCutAtTheBodySize)
{
    WriteFile("ini/GameSetup.ini", kSetup);
    NetErrorPost("%s", std::string(6000, 'x').c_str());
    const std::vector<std::string> setRequest = m_server.WaitRequests(1);
    ASSERT_EQ(setRequest.size(), 1u);
    EXPECT_EQ(LoopbackHttpServer::BodyOf(setRequest[0]), kBareHead + std::string(1023 - sizeof(kBareHead) + 1, 'x'));
}

TEST_F(ErrorReportTest, ConnectTestPostsItsOutcome)
{
    WriteFile("ini/GameSetup.ini", kSetup);
    const int nOpen = m_server.Port();
    const int nClosed = LoopbackHttpServer::ClosedPort();
    const struct {
        const char* szAddress;
        int nPort;
        std::string strMessage;
    } setCase[] = {
        {"127.0.0.1", nOpen, CONNECT_DONE "--" IP_ADDRESS "[127.0.0.1:" + std::to_string(nOpen) + "]\n"},
        {"127.0.0.1", nClosed,
         CONNECT_FAILED "--connect failed!errno: " + std::to_string(ECONNREFUSED) +
             ".--" IP_ADDRESS "[127.0.0.1:" + std::to_string(nClosed) + "]\n"},
        {"127.0.0.x", nOpen,
         CONNECT_FAILED "--Create Server Addr failed!--" IP_ADDRESS "[127.0.0.x:" + std::to_string(nOpen) + "]\n"},
    };
    for (const auto& test : setCase) {
        const std::size_t nBefore = m_server.Requests().size();
        ConnectTest(test.szAddress, test.nPort);
        WorkersWait();
        const std::vector<std::string> setRequest = m_server.Requests();
        ASSERT_EQ(setRequest.size(), nBefore + 1) << test.strMessage;
        EXPECT_EQ(LoopbackHttpServer::BodyOf(setRequest.back()), kBareHead + test.strMessage);
    }
    EXPECT_EQ(m_server.BareConnections(), 1);
}

TEST_F(ErrorReportTest, LogOnlyFormsPostNothing)
{
    WriteFile("ini/GameSetup.ini", kSetup);
    ErrorLogSave(nullptr, "bad %s", "slot");
    EXPECT_EQ(ReportWorkerCount(), 0);
    EXPECT_EQ(LogText().rfind("Error:bad slot [(", 0), 0u) << LogText();
    EXPECT_NE(LogText().find(") ] -- Mon Mar 07 14:05:09 2011\n"), std::string::npos);

    // A hex dump writes at most 256 bytes as bare hexadecimal.
    const unsigned char setTwo[] = {0x0A, 0xFF};
    HexDumpLog(setTwo, 2);
    HexDumpLog(std::string(300, '\x01').data(), 300);
    std::string strExpected;
    for (int i = 0; i < 256; ++i)
        strExpected += "1 ";
    EXPECT_NE(LogText().find("\na ff  -- Mon Mar 07 14:05:09 2011\n" + strExpected + " -- "), std::string::npos);
}

}  // namespace
