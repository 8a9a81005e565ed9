#include "ZelGameBase/ErrorReport.h"

#include <string>

#include "ZelGameBase/ReportFixture.h"

namespace {

const char kSetup[] = "[DumpError]\nEnable=1\nServer=127.0.0.1\nAction=/dump/error.php\nClient=Zel\n";
// What every posted report begins with here: no version.dat, and the test
// program is neither in the working folder nor carries a version resource.
const char kBareHead[] = "client=Zel&msg=ReleaseVer: MsgVer:271 , FileVer:, FileTime:==";

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

TEST_F(ErrorReportTest, OnlyFourReportsArePostedNetErrorsWithoutLimitAndEachCutAtTheBodySize)
{
    WriteFile("ini/GameSetup.ini", kSetup);
    for (int i = 0; i < 5; ++i)
        ErrorPost(("report " + std::to_string(i)).c_str());
    ErrorPost(nullptr);
    WorkersWait();
    EXPECT_EQ(m_server.Requests().size(), 4u);

    for (int i = 0; i < 5; ++i)
        NetErrorPost("net %d", i);
    NetErrorPost("%s", std::string(6000, 'x').c_str());
    WorkersWait();
    const std::vector<std::string> setRequest = m_server.Requests();
    ASSERT_EQ(setRequest.size(), 10u);
    int nNetLines = 0;
    for (const std::string& strRequest : setRequest)
        nNetLines += LoopbackHttpServer::BodyOf(strRequest).find("==net ") != std::string::npos;
    EXPECT_EQ(nNetLines, 5);
    const std::string strCut = kBareHead + std::string(1023 - sizeof(kBareHead) + 1, 'x');
    int nCut = 0;
    for (const std::string& strRequest : setRequest)
        nCut += LoopbackHttpServer::BodyOf(strRequest) == strCut;
    EXPECT_EQ(nCut, 1);
    EXPECT_EQ(LogEntryCount(), 0);
}

TEST_F(ErrorReportTest, LogOnlyFormsPostNothingAndAHexDumpStopsAt256Bytes)
{
    WriteFile("ini/GameSetup.ini", kSetup);
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

}  // namespace
