// The section reader over a fuzzed file: every section, every key, and a
// fuzzed lookup. Line numbers grow through the file, and every key is found
// at or before its own position.
#include <cstdlib>
#include <cstring>

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
    int nLine = 0;
    for (int i = 0; i < reader.GetSectionAmount(); ++i) {
        if (reader.GetTitleLine(i) <= nLine)
            std::abort();
        nLine = reader.GetTitleLine(i);
        for (int k = 0; k < reader.GetKeyAmount(i); ++k) {
            if (reader.GetKeyLine(i, k) <= nLine)
                std::abort();
            nLine = reader.GetKeyLine(i, k);
            const std::string_view key = reader.GetKeyAt(i, k);
            const int nFound = reader.FindKey(i, key.data());
            // A key holding a zero byte is a shorter text to FindKey.
            if (std::memchr(key.data(), '\0', key.size()) == nullptr && (nFound < 0 || nFound > k))
                std::abort();
            reader.GetInt(i, key.data(), 0);
        }
        char szText[16];
        reader.GetText(i, strKey.c_str(), szText, sizeof(szText));
    }
    return 0;
}
