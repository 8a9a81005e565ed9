#include "ZelGameBase/PromotionReport.h"

#include <unistd.h>

#include <fstream>
#include <regex>
#include <sstream>
#include <string>

#include "ZelGameBase/ReportFixture.h"

namespace {

const char kPublicOn[] = "[Setting]\nPublic=1\n";
const char kEndpoint[] = "Server=127.0.0.1\nAction=/popular/report.aspx\n";

// Resolving the host's own name must not ask a name server on the network.
bool HostNameIsLocal()
{
    char szHost[256] = {};
    if (gethostname(szHost, sizeof(szHost) - 1) != 0)
        return false;
    std::ifstream hosts("/etc/hosts");
    std::stringstream text;
    text << hosts.rdbuf();
    return std::regex_search(text.str(), std::regex("[ \t]" + std::string(szHost) + "([ \t\r\n]|$)"));
}

class PromotionReportTest : public ReportTest {
protected:
    void SetUp() override
    {
        ReportTest::SetUp();
        if (!HostNameIsLocal())
            GTEST_SKIP() << "the host name is not in /etc/hosts";
    }
};

TEST(PromotionFieldsAppend, KeepsTheFixedOrderAndEncodesNothing)
{
    const unsigned char setMac[6] = {0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
    const unsigned char setZero[6] = {};
    struct {
        const char* szLocalIp;
        const unsigned char* pMac;
        const char* szGame;
        const char* szUser;
        const char* szExpected;
    } setCase[] = {
        {"192.168.1.20", setMac, "29", "0", "Posttype=1&LocalIP=192.168.1.20&MAC=001A2B3C4D5E&Gamecode=29&Usercode=0"},
        {nullptr, setMac, "29", "0", "Posttype=1&MAC=001A2B3C4D5E&Gamecode=29&Usercode=0"},
        {nullptr, setZero, "a&b", "c=d", "Posttype=1&MAC=000000000000&Gamecode=a&b&Usercode=c=d"},
    };
    for (const auto& test : setCase) {
        char szBody[256] = "Posttype=1";
        PromotionFieldsAppend(szBody, sizeof(szBody), test.szLocalIp, test.pMac, test.szGame, test.szUser);
        EXPECT_STREQ(szBody, test.szExpected);
    }
    char szSmall[16] = "Posttype=1";
    PromotionFieldsAppend(szSmall, sizeof(szSmall), nullptr, setMac, "29", "0");
    EXPECT_STREQ(szSmall, "Posttype=1&MAC=");
}

TEST_F(PromotionReportTest, PostsTheBodyWithDefaultCodes)
{
    WriteFile("ini/PublicSet.ini", kPublicOn);
    WriteFile("ini/Popularize.ini", std::string("[Popular]\nEnable=1\n") + kEndpoint);
    PromotionReport(3);

    const std::vector<std::string> setRequest = m_server.WaitRequests(1);
    ASSERT_EQ(setRequest.size(), 1u);
    const std::string strHead = LoopbackHttpServer::HeadOf(setRequest[0]);
    EXPECT_EQ(strHead.substr(0, strHead.find("\r\n")), "POST /popular/report.aspx HTTP/1.1");
    for (const char* szLine : {"\r\nUser-Agent: MyAgent\r\n", "\r\nAccept: Accept: */*\r\n",
                               "\r\nContent-Type: application/x-www-form-urlencoded\r\n"})
        EXPECT_NE((strHead + "\r\n").find(szLine), std::string::npos) << szLine;
    const std::string strBody = LoopbackHttpServer::BodyOf(setRequest[0]);
    EXPECT_TRUE(std::regex_match(
        strBody, std::regex(R"(Posttype=3(&LocalIP=\d+\.\d+\.\d+\.\d+)?&MAC=[0-9A-F]{12}&Gamecode=29&Usercode=0)")))
        << strBody;
}

TEST_F(PromotionReportTest, PostsTheConfiguredCodes)
{
    WriteFile("ini/PublicSet.ini", kPublicOn);
    WriteFile("ini/Popularize.ini", std::string("[Popular]\nEnable=7\nGamecode=31\nUsercode=a=b\n") + kEndpoint);
    PromotionReport(-2);
    const std::vector<std::string> setRequest = m_server.WaitRequests(1);
    ASSERT_EQ(setRequest.size(), 1u);
    const std::string strBody = LoopbackHttpServer::BodyOf(setRequest[0]);
    EXPECT_EQ(strBody.rfind("Posttype=-2&", 0), 0u) << strBody;
    EXPECT_NE(strBody.find("&Gamecode=31&Usercode=a=b"), std::string::npos) << strBody;
}

TEST_F(PromotionReportTest, SwitchesOffOrNoEndpointSendNothing)
{
    struct {
        const char* szPublicSet;
        const char* szPopularize;
    } setCase[] = {
        {"[Setting]\nPublic=0\n", "[Popular]\nEnable=1\nServer=127.0.0.1\nAction=/p\n"},
        {"[Other]\nPublic=1\n", "[Popular]\nEnable=1\nServer=127.0.0.1\nAction=/p\n"},
        {kPublicOn, "[Popular]\nEnable=0\nServer=127.0.0.1\nAction=/p\n"},
        {kPublicOn, "[Popular]\nServer=127.0.0.1\nAction=/p\n"},
        {kPublicOn, "[Popular]\nEnable=1\nAction=/p\n"},
        {kPublicOn, "[Popular]\nEnable=1\nServer=127.0.0.1\n"},
    };
    for (const auto& test : setCase) {
        WriteFile("ini/PublicSet.ini", test.szPublicSet);
        WriteFile("ini/Popularize.ini", test.szPopularize);
        PromotionReport(1);
        WorkersWait();
    }
    EXPECT_TRUE(m_server.Requests().empty());
}

TEST_F(PromotionReportTest, MasterSwitchOffLeavesThePromotionFileUnread)
{
    WriteFile("ini/Popularize.ini", "[Popular]\n");
    WriteFile("ini/PublicSet.ini", "[Setting]\nPublic=0\n");
    PromotionReport(1);
    EXPECT_EQ(DebugText().find("Popularize"), std::string::npos) << DebugText();

    WriteFile("ini/PublicSet.ini", kPublicOn);
    PromotionReport(1);
    EXPECT_NE(DebugText().find("Enable not found in ini/Popularize.ini"), std::string::npos) << DebugText();
    EXPECT_EQ(ReportWorkerCount(), 0);
}

TEST(AdapterMacGet, ClearsItsOutputFirst)
{
    unsigned char setMac[6] = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE};
    AdapterMacGet(setMac);
    // Either an adapter's address or twelve zeros, never the old bytes.
    EXPECT_FALSE(setMac[0] == 0xEE && setMac[1] == 0xEE && setMac[2] == 0xEE && setMac[3] == 0xEE &&
                 setMac[4] == 0xEE && setMac[5] == 0xEE);
}

}  // namespace
