// A text-resource file through CStrRes (LoadStrRes's reader), loaded twice
// so that the second load overrides the first.
#include "ClientData/StrRes.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    FuzzWriteFile("str.ini", pData, nSize);
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    CStrRes res;
    res.Load("str.ini");
    res.Load("str.ini");
    for (int64_t nId : setNumber)
        if (res.Get(static_cast<uint32_t>(nId)) == nullptr)
            std::abort();  // a miss is the empty text, never null
    for (const auto& entry : res.Texts())
        if (std::strcmp(res.Get(entry.first), entry.second.c_str()) != 0)
            std::abort();
    return 0;
}
