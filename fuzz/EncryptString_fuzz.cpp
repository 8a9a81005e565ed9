// The string scrambler: a text set and read back must come out unchanged
// when it fits, and leave the previous text when it does not.
#include <string>

#include "FuzzTable.h"
#include "ZelGameBase/EncryptData.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    const std::string strText(reinterpret_cast<const char*>(pData), nSize);
    const char* szText = strText.c_str();  // up to the first NUL
    const std::size_t nLength = std::strlen(szText);
    CEncryptString text;
    text.Set("previous");
    text.Set(szText);
    const std::string strExpected = nLength < CEncryptString::MAXESTR ? std::string(szText) : "previous";
    if (text.Get() != strExpected || text.GetLength() != strExpected.size())
        std::abort();
    CEncryptString copy = text;  // plain data: a byte copy reads the same
    if (copy.Get() != strExpected)
        std::abort();
    text.Set(nullptr);
    return 0;
}
