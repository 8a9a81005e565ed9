// The section reader over a fuzzed file: every section, every key, and a
// fuzzed lookup.
#include "FuzzSupport.h"
#include "ZelGameBase/IniSectionReader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    std::string strKey;
    std::string strContent;
    FuzzSplit(pData, nSize, strKey, strContent);
    FuzzWriteFile("fuzz.ini", reinterpret_cast<const uint8_t*>(strContent.data()), strContent.size());
    CIniSectionReader reader;
    reader.Open("fuzz.ini", static_cast<int>(nSize & 1));
    for (int i = 0; i < reader.GetSectionAmount(); ++i) {
        reader.FindSection(reader.GetTitle(i).data());
        for (int k = 0; k < reader.GetKeyAmount(i); ++k)
            reader.GetInt(i, reader.GetKeyAt(i, k).data(), 0);
        char szText[16];
        reader.GetText(i, strKey.c_str(), szText, sizeof(szText));
    }
    return 0;
}
