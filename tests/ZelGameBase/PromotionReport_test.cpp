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

// Resolving the host's own name must not ask a name server on the network.
bool HostNameIsLocal()
{
    char szHost[256] = {};
    if (gethostname(szHost, sizeof(szHost) - 1) != 0)
        return false;
    // A line of /etc/hosts is an address followed by the names it answers.
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

// True when strBody is "Posttype=<nType>", an optional "LocalIP=a.b.c.d", a
// "MAC=" of twelve upper-case hexadecimal digits and then strTail, joined
// by "&".
bool IsPromotionBody(const std::string& strBody, int nType, const std::string& strTail)
{
    const std::string strHead = "Posttype=" + std::to_string(nType) + "&";
    if (strBody.compare(0, strHead.size(), strHead) != 0 || strBody.size() < strHead.size() + strTail.size() ||
        strBody.compare(strBody.size() - strTail.size(), strTail.size(), strTail) != 0)
        return false;
    std::string strMiddle = strBody.substr(strHead.size(), strBody.size() - strHead.size() - strTail.size());
    if (strMiddle.compare(0, 8, "LocalIP=") == 0) {
        const std::size_t nAnd = strMiddle.find('&');
        unsigned a, b, c, d;
        char szRest[2];
        if (nAnd == std::string::npos ||
            std::sscanf(strMiddle.substr(8, nAnd - 8).c_str(), "%u.%u.%u.%u%1s", &a, &b, &c, &d, szRest) != 4)
            return false;
        strMiddle.erase(0, nAnd + 1);
    }
    return strMiddle.size() == 4 + 12 + 1 && strMiddle.compare(0, 4, "MAC=") == 0 && strMiddle.back() == '&' &&
           strMiddle.find_first_not_of("0123456789ABCDEF", 4) == strMiddle.size() - 1;
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
        const char* szTail;
    } setCase[] = {
        {"Enable=1\n", 3, "Gamecode=29&Usercode=0"},
        {"Enable=7\nGamecode=31\nUsercode=a=b\n", -2, "Gamecode=31&Usercode=a=b"},
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
        EXPECT_TRUE(IsPromotionBody(strBody, test.nType, test.szTail)) << strBody;
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
