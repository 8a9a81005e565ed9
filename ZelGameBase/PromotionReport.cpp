#include "ZelGameBase/PromotionReport.h"

#include <cstring>

#include "ZelGameBase/Platform/PlatformReport.h"
#include "ZelGameBase/ReportPost.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

constexpr const char* kPublicSetFile = "ini/PublicSet.ini";
constexpr const char* kPopularizeFile = "ini/Popularize.ini";
constexpr int kSwitchSize = 16;
constexpr int kSettingSize = 260;
constexpr int kBodySize = 4096;

// A switch is on when its key is present and converts to non-zero.
bool SwitchIsOn(const char* szFile, const char* szSection, const char* szKey)
{
    char szValue[kSwitchSize] = {};
    return IniStrGet(szFile, szSection, szKey, szValue, 0, sizeof(szValue)) != 0 && CrtAtoi(szValue) != 0;
}

void AppendBounded(char* szText, int nSize, const char* szTail)
{
    const std::size_t nLength = std::strlen(szText);
    if (nLength + 1 < static_cast<std::size_t>(nSize))
        std::strncat(szText, szTail, static_cast<std::size_t>(nSize) - 1 - nLength);
}

unsigned PromotionMain(void* pArgument)
{
    char szBody[kBodySize] = {};
    SafeStrCopy(szBody, sizeof(szBody), static_cast<const char*>(pArgument));
    delete[] static_cast<char*>(pArgument);

    char szLocalIp[64] = {};
    const bool bLocalIp = PlatformLocalAddressGet(szLocalIp, sizeof(szLocalIp));
    unsigned char setMac[6];
    AdapterMacGet(setMac);
    // Untouched, hence the defaults, when the keys are missing.
    char szGameCode[kSettingSize] = "29";
    char szUserCode[kSettingSize] = "0";
    IniStrGet(kPopularizeFile, "Popular", "Gamecode", szGameCode, 0, sizeof(szGameCode));
    IniStrGet(kPopularizeFile, "Popular", "Usercode", szUserCode, 0, sizeof(szUserCode));
    PromotionFieldsAppend(szBody, sizeof(szBody), bLocalIp ? szLocalIp : nullptr, setMac, szGameCode, szUserCode);

    char szServer[kSettingSize] = {};
    char szAction[kSettingSize] = {};
    if (IniStrGet(kPopularizeFile, "Popular", "Server", szServer, 0, sizeof(szServer)) != 0 &&
        IniStrGet(kPopularizeFile, "Popular", "Action", szAction, 0, sizeof(szAction)) != 0)
        ReportFormPost(szServer, szAction, szBody);
    return 0;
}

}  // namespace

void PromotionFieldsAppend(char* szBody, int nSize, const char* szLocalIp, const unsigned char* pMac,
                           const char* szGameCode, const char* szUserCode)
{
    if (szLocalIp != nullptr) {
        AppendBounded(szBody, nSize, "&LocalIP=");
        AppendBounded(szBody, nSize, szLocalIp);
    }
    char szMac[32] = {};
    SafeSprintf(szMac, sizeof(szMac), "%02X%02X%02X%02X%02X%02X", pMac[0], pMac[1], pMac[2], pMac[3], pMac[4], pMac[5]);
    AppendBounded(szBody, nSize, "&MAC=");
    AppendBounded(szBody, nSize, szMac);
    AppendBounded(szBody, nSize, "&Gamecode=");
    AppendBounded(szBody, nSize, szGameCode);
    AppendBounded(szBody, nSize, "&Usercode=");
    AppendBounded(szBody, nSize, szUserCode);
}

void PromotionReport(int nPostType)
{
    // The master switch is read first: when it is off, the promotion file is
    // not touched.
    if (!SwitchIsOn(kPublicSetFile, "Setting", "Public") || !SwitchIsOn(kPopularizeFile, "Popular", "Enable"))
        return;
    char* pText = new char[kSettingSize]();
    SafeSprintf(pText, kSettingSize, "Posttype=%d", nPostType);
    if (!ReportWorkerStart(PromotionMain, pText))
        delete[] pText;
}

void AdapterMacGet(unsigned char* pAddress)
{
    if (pAddress == nullptr)
        return;
    // Cleared first: with no adapter read, twelve zeros are sent.
    std::memset(pAddress, 0, 6);
    if (PlatformAdapterAddressGet(pAddress) == AdapterQuery::Failed)
        LogAssert("dwStatus == ERROR_SUCCESS", 790, "ZelGameBase\\ZelGameBase");
}
