#include "ZelGameBase/PromotionReport.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "ZelGameBase/ReportFixture.h"

namespace {

const char kPublicOn[] = "[Setting]\nPublic=1\n";
const char kEndpoint[] = "Server=127.0.0.1\nAction=/popular/report.aspx\n";

// Resolving the host's own name must not ask a name server on the network:
// the name must stand in /etc/hosts, after the address of its line.
bool HostNameIsLocal()
{
    char szHost[256] = {};
    if (gethostname(szHost, sizeof(szHost) - 1) != 0)
        return false;
    std::ifstream hosts("/etc/hosts");
    for (std::string strLine; std::getline(hosts, strLine);) {
        std::istringstream words(strLine.substr(0, strLine.find('#')));
        std::string strWord;
        for (words >> strWord; words >> strWord;)
            if (strWord == szHost)
                return true;
    }
    return false;
}

// True when strBody is "Posttype=<nType>&", an optional "LocalIP=a.b.c.d&", a
// "MAC=" of twelve upper-case hexadecimal digits, "&" and then strTail.
bool IsPromotionBody(std::string strBody, int nType, const std::string& strTail)
{
    const std::string strHead = "Posttype=" + std::to_string(nType) + "&";
    unsigned n[4];
    int nUsed = 0;
    if (strBody.compare(0, strHead.size(), strHead) != 0)
        return false;
    strBody.erase(0, strHead.size());
    if (std::sscanf(strBody.c_str(), "LocalIP=%3u.%3u.%3u.%3u&%n", &n[0], &n[1], &n[2], &n[3], &nUsed) == 4 &&
        nUsed > 0)
        strBody.erase(0, static_cast<std::size_t>(nUsed));
    return strBody.size() == 17 + strTail.size() && strBody.compare(0, 4, "MAC=") == 0 &&
           strBody.find_first_not_of("0123456789ABCDEF", 4) == 16 &&
           strBody.compare(16, std::string::npos, "&" + strTail) == 0;
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
    } kCases[] = {
        {"192.168.1.20", setMac, "29", "0", "Posttype=1&LocalIP=192.168.1.20&MAC=001A2B3C4D5E&Gamecode=29&Usercode=0"},
        {nullptr, setMac, "29", "0", "Posttype=1&MAC=001A2B3C4D5E&Gamecode=29&Usercode=0"},
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

TEST_F(PromotionReportTest, PostsTheBodyWithDefaultOrConfiguredCodes)
{
    WriteFile("ini/PublicSet.ini", kPublicOn);
    const struct {
        const char* szPopular;
        int nType;
        const char* szTail;
    } kCases[] = {
        {"Enable=1\n", 3, "Gamecode=29&Usercode=0"},
        {"Enable=7\nGamecode=31\nUsercode=a=b\n", -2, "Gamecode=31&Usercode=a=b"},
    };
    for (const auto& c : kCases) {
        WriteFile("ini/Popularize.ini", std::string("[Popular]\n") + c.szPopular + kEndpoint);
        PromotionReport(c.nType);
        WorkersWait();
        const std::string strRequest = m_server.Requests().back();
        const std::string strHead = LoopbackHttpServer::HeadOf(strRequest);
        EXPECT_EQ(strHead.substr(0, strHead.find("\r\n")), "POST /popular/report.aspx HTTP/1.1");
        EXPECT_NE(strHead.find("\r\nContent-Type: application/x-www-form-urlencoded"), std::string::npos);
        EXPECT_TRUE(IsPromotionBody(LoopbackHttpServer::BodyOf(strRequest), c.nType, c.szTail)) << strRequest;
    }
    EXPECT_EQ(m_server.Requests().size(), 2u);
}

TEST_F(PromotionReportTest, SwitchesOffOrNoEndpointSendNothing)
{
    const std::pair<const char*, const char*> kCases[] = {
        {"[Setting]\nPublic=0\n", ""},  // the master switch off leaves the promotion file unread
        {"[Setting]\nPublic=0\n", "Enable=1\nServer=127.0.0.1\nAction=/p\n"},
        {"[Other]\nPublic=1\n", "Enable=1\nServer=127.0.0.1\nAction=/p\n"},
        {kPublicOn, "Enable=0\nServer=127.0.0.1\nAction=/p\n"},
        {kPublicOn, "Server=127.0.0.1\nAction=/p\n"},
        {kPublicOn, "Enable=1\nAction=/p\n"},
        {kPublicOn, "Enable=1\nServer=127.0.0.1\n"},
    };
    for (const auto& c : kCases) {
        WriteFile("ini/PublicSet.ini", c.first);
        WriteFile("ini/Popularize.ini", std::string("[Popular]\n") + c.second);
        PromotionReport(1);
        WorkersWait();
        EXPECT_TRUE(&c != kCases || DebugText().find("Popularize") == std::string::npos) << DebugText();
    }
    EXPECT_NE(DebugText().find("Enable not found in ini/Popularize.ini"), std::string::npos) << DebugText();
    EXPECT_TRUE(m_server.Requests().empty());
}

TEST(AdapterMacGet, ClearsItsOutputFirst)
{
    unsigned char setMac[6] = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE};
    AdapterMacGet(setMac);
    // Either an adapter's address or twelve zeros, never the old bytes.
    EXPECT_NE(std::count(setMac, setMac + 6, 0xEE), 6);
}

}  // namespace
