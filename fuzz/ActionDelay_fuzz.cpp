// "ini/ActionDelay.ini" through the action delay table.
#include "ClientData/ActionDelayData.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    FuzzTableFile<CActionDelayData>("ini/ActionDelay.ini", pData, nSize, [&](CActionDelayData& table) {
        for (int64_t nId : setNumber)
            table.GetActionDelay(static_cast<uint32_t>(nId));
    });
    return 0;
}
