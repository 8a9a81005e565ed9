#include "ZelGameBase/PromotionReport.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace {

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

TEST(AdapterMacGet, ClearsItsOutputFirst)
{
    unsigned char setMac[6] = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE};
    AdapterMacGet(setMac);
    // Either an adapter's address or twelve zeros, never the old bytes.
    EXPECT_NE(std::count(setMac, setMac + 6, 0xEE), 6);
}

}  // namespace
