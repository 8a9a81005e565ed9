// "ini/Common.ini" through the common settings.
#include "ClientData/CommonIni.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzTableFile<CCommonIni>("ini/Common.ini", pData, nSize, [](CCommonIni& table) {
        table.GetMaleFaceAmount();
        table.GetFemaleFaceAmount();
        table.GetEmblemAmount();
        table.GetLeaderScale();
        table.GetLeaderMaxLife();
        table.GetAssistantScale();
        table.GetAssistantMaxLife();
        table.GetSubLeaderScale();
        table.GetSubLeaderMaxLife();
    });
    return 0;
}
