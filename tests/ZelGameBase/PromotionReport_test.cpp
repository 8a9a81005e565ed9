#include "ZelGameBase/PromotionReport.h"

#include <unistd.h>

#include <algorithm>
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
    const struct {
        const char* szLocalIp;
        const unsigned char* pMac;
        const char *szGame, *szUser, *szExpected;
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

TEST_F(PromotionReportTest, PostsTheBodyWithDefaultOrConfiguredCodes)
{
    WriteFile("ini/PublicSet.ini", kPublicOn);
    const struct {
        const char* szPopular;
        int nType;
        const char* szBody;
    } setCase[] = {
        {"Enable=1\n", 3, R"(Posttype=3(&LocalIP=\d+\.\d+\.\d+\.\d+)?&MAC=[0-9A-F]{12}&Gamecode=29&Usercode=0)"},
        {"Enable=7\nGamecode=31\nUsercode=a=b\n", -2, R"(Posttype=-2&.*&Gamecode=31&Usercode=a=b)"},
    };
    for (const auto& test : setCase) {
        WriteFile("ini/Popularize.ini", std::string("[Popular]\n") + test.szPopular + kEndpoint);
        PromotionReport(test.nType);
        WorkersWait();
        const std::string strRequest = m_server.Requests().back();
        const std::string strHead = LoopbackHttpServer::HeadOf(strRequest);
        EXPECT_EQ(strHead.substr(0, strHead.find("\r\n")), "POST /popular/report.aspx HTTP/1.1");
        EXPECT_NE(strHead.find("\r\nContent-Type: application/x-www-form-urlencoded"), std::string::npos);
        const std::string strBody = LoopbackHttpServer::BodyOf(strRequest);
        EXPECT_TRUE(std::regex_match(strBody, std::regex(test.szBody))) << strBody;
    }
    EXPECT_EQ(m_server.Requests().size(), 2u);
}

TEST_F(PromotionReportTest, SwitchesOffOrNoEndpointSendNothing)
{
    const std::pair<const char*, const char*> setCase[] = {
        {"[Setting]\nPublic=0\n", "Enable=1\nServer=127.0.0.1\nAction=/p\n"},
        {"[Other]\nPublic=1\n", "Enable=1\nServer=127.0.0.1\nAction=/p\n"},
        {kPublicOn, "Enable=0\nServer=127.0.0.1\nAction=/p\n"},
        {kPublicOn, "Server=127.0.0.1\nAction=/p\n"},
        {kPublicOn, "Enable=1\nAction=/p\n"},
        {kPublicOn, "Enable=1\nServer=127.0.0.1\n"},
    };
    for (const auto& test : setCase) {
        WriteFile("ini/PublicSet.ini", test.first);
        WriteFile("ini/Popularize.ini", std::string("[Popular]\n") + test.second);
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
    EXPECT_NE(std::count(setMac, setMac + 6, 0xEE), 6);
}

}  // namespace
