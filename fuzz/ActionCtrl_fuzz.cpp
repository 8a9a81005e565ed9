// "ini/ActionCtrl.ini" through the action control table.
#include "ClientData/ActionCtrlData.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    FuzzTableFile<CActionCtrlData>("ini/ActionCtrl.ini", pData, nSize, [&](CActionCtrlData& table) {
        for (int64_t nKey : setNumber)
            if (const ActionCtrlInfo* pInfo = table.GetActionCtrl(nKey))
                if (pInfo->nSection <= -kActionCtrlSegmentMax || pInfo->nSection >= kActionCtrlSegmentMax)
                    std::abort();
    });
    return 0;
}
