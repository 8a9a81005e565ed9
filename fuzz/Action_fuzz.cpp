// "ini/Action.dat" through the action value table.
#include "ClientData/ActionValueData.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    FuzzTableFile<CActionValueData>("ini/Action.dat", pData, nSize, [&](CActionValueData& table) {
        for (int64_t nKey : setNumber) {
            table.GetActionValue(nKey);
            table.GetActionValue(-nKey);
        }
    });
    return 0;
}
