// IniDataGet and IniStrGet over a fuzzed file, with a fuzzed title and key.
#include "FuzzSupport.h"
#include "ZelGameBase/ZelCommon.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    std::string strTitle;
    std::string strContent;
    FuzzSplit(pData, nSize, strTitle, strContent);
    FuzzWriteFile("fuzz.ini", reinterpret_cast<const uint8_t*>(strContent.data()), strContent.size());
    const std::string strKey = strTitle.substr(strTitle.size() / 2);
    int nValue = 0;
    IniDataGet("fuzz.ini", strTitle.c_str(), strKey.c_str(), &nValue, 0);
    char szText[1024];
    IniStrGet("fuzz.ini", strTitle.c_str(), strKey.c_str(), szText, 1, sizeof(szText));
    unsigned nProfile = 0;
    ProfileIntGet("fuzz.ini", strTitle.c_str(), strKey.c_str(), &nProfile);
    return 0;
}
