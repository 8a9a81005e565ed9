#include "ZelGameBase/PromotionReport.h"

#include <unistd.h>

#include <algorithm>
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
    std::ifstream hosts("/etc/hosts");
    // A line of /etc/hosts is an address followed by the names it answers.
    for (std::string strLine; gethostname(szHost, sizeof(szHost) - 1) == 0 && std::getline(hosts, strLine);) {
        std::istringstream words(strLine.substr(0, strLine.find('#')));
        std::string strWord;
        for (words >> strWord; words >> strWord;)
            if (strWord == szHost)
                return true;
    }
    return false;
}

// True when strBody is "Posttype=<nType>&", an optional "LocalIP=a.b.c.d&", a
// "MAC=" of twelve upper-case hexadecimal digits, "&" and then strTail (which
// holds no pattern characters).
bool IsPromotionBody(const std::string& strBody, int nType, const std::string& strTail)
{
    const std::string strHead = "Posttype=" + std::to_string(nType) + "&";
    if (strBody.compare(0, strHead.size(), strHead) != 0)
        return false;
    std::size_t nAt = strHead.size();
    if (strBody.compare(nAt, 8, "LocalIP=") == 0) {
        const std::size_t nEnd = strBody.find('&', nAt);
        const std::string strAddress = strBody.substr(nAt + 8, nEnd - nAt - 8);
        const bool bDotted = !strAddress.empty() && strAddress.front() != '.' && strAddress.back() != '.' &&
                             strAddress.find("..") == std::string::npos &&
                             strAddress.find_first_not_of("0123456789.") == std::string::npos &&
                             std::count(strAddress.begin(), strAddress.end(), '.') == 3;
        if (nEnd == std::string::npos || !bDotted)
            return false;
        nAt = nEnd + 1;
    }
    const std::string strMac = strBody.substr(nAt, 17);
    return strMac.size() == 17 && strMac.compare(0, 4, "MAC=") == 0 && strMac[16] == '&' &&
           strMac.find_first_not_of("0123456789ABCDEF", 4) == 16 && strBody.substr(nAt + 17) == strTail;
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
        EXPECT_TRUE(IsPromotionBody(LoopbackHttpServer::BodyOf(strRequest), test.nType, test.szTail)) << strRequest;
    }
    EXPECT_EQ(m_server.Requests().size(), 2u);
}

TEST_F(PromotionReportTest, SwitchesOffOrNoEndpointSendNothing)
{
    const std::pair<const char*, const char*> setCase[] = {
        {"[Setting]\nPublic=0\n", ""},  // the master switch off leaves the promotion file unread
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
        EXPECT_TRUE(&test != setCase || DebugText().find("Popularize") == std::string::npos) << DebugText();
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
