// MemIniStrGet and MemIniDataGet over a fuzzed image (no terminator).
#include <vector>

#include "FuzzSupport.h"
#include "ZelGameBase/ZelCommon.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    std::string strTitle;
    std::string strContent;
    FuzzSplit(pData, nSize, strTitle, strContent);
    // An exact-size copy, so that a read past the image is caught.
    std::vector<char> setImage(strContent.begin(), strContent.end());
    const std::string strKey = strTitle.substr(strTitle.size() / 2);
    char szText[1024];
    MemIniStrGet(setImage.data(), static_cast<unsigned>(setImage.size()), strTitle.c_str(), strKey.c_str(), szText,
                 0, sizeof(szText));
    int nValue = 0;
    MemIniDataGet(setImage.data(), static_cast<unsigned>(setImage.size()), strTitle.c_str(), strKey.c_str(), &nValue,
                  1);
    return 0;
}
