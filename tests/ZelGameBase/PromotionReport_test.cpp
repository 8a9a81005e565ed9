#include "ZelGameBase/PromotionReport.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "ZelGameBase/ReportFixture.h"

namespace {

const char kPublicOn[] = "[Setting]\nPublic=1\n";

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

// Only with both switches on and a whole endpoint does a report go out: the
// event, the fields, and the codes as configured or by default.
TEST_F(PromotionReportTest, PostsOnlyWithBothSwitchesOnAndAWholeEndpoint)
{
    const std::string strOn = "Enable=1\nServer=127.0.0.1\nAction=/p\n";
    const struct {
        const char* szPublic;
        std::string strPopular;
        const char* szCodes;  // null: nothing is posted
    } kCases[] = {
        {"[Setting]\nPublic=0\n", "", nullptr},  // the master switch off leaves the promotion file unread
        {kPublicOn, "Enable=0\nServer=127.0.0.1\nAction=/p\n", nullptr},
        {kPublicOn, "Server=127.0.0.1\nAction=/p\n", nullptr},
        {kPublicOn, "Enable=1\nServer=127.0.0.1\n", nullptr},
        {kPublicOn, "Enable=7\nGamecode=31\nUsercode=a=b\n" + strOn, "&Gamecode=31&Usercode=a=b"},
    };
    for (const auto& c : kCases) {
        const std::size_t nBefore = m_server.Requests().size();
        WriteFile("ini/PublicSet.ini", c.szPublic);
        WriteFile("ini/Popularize.ini", "[Popular]\n" + c.strPopular);
        PromotionReport(-2);
        WorkersWait();
        EXPECT_TRUE(&c != kCases || DebugText().find("Popularize") == std::string::npos) << DebugText();
        const std::vector<std::string> setRequest = m_server.Requests();
        ASSERT_EQ(setRequest.size(), nBefore + (c.szCodes != nullptr)) << c.szPublic << c.strPopular;
        if (c.szCodes == nullptr)
            continue;
        const std::string strBody = LoopbackHttpServer::BodyOf(setRequest.back());
        const std::string strCodes = c.szCodes;
        EXPECT_EQ(setRequest.back().rfind("POST /p HTTP/1.1\r\n", 0), 0u);
        EXPECT_EQ(strBody.rfind("Posttype=-2&", 0), 0u) << strBody;
        EXPECT_NE(strBody.find("MAC="), std::string::npos) << strBody;
        EXPECT_EQ(strBody.substr(strBody.size() - std::min(strBody.size(), strCodes.size())), strCodes) << strBody;
    }
    EXPECT_NE(DebugText().find("Enable not found in ini/Popularize.ini"), std::string::npos) << DebugText();
}

TEST(AdapterMacGet, ClearsItsOutputFirst)
{
    unsigned char setMac[6] = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE};
    AdapterMacGet(setMac);
    // Either an adapter's address or twelve zeros, never the old bytes.
    EXPECT_NE(std::count(setMac, setMac + 6, 0xEE), 6);
}

}  // namespace
