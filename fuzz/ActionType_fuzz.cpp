// "ini/ActionType.ini" and "ini/MonsterActionType.ini" through the action
// type table; the input holds both files, split at "@@FILE@@".
#include "ClientData/ActionTypeData.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    const std::vector<std::string> setFile = FuzzSplitFiles(pData, nSize, 2);
    FuzzWriteFile("ini/ActionType.ini", reinterpret_cast<const uint8_t*>(setFile[0].data()), setFile[0].size());
    FuzzWriteFile("ini/MonsterActionType.ini", reinterpret_cast<const uint8_t*>(setFile[1].data()),
                  setFile[1].size());
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    FuzzTableLife<CActionTypeData>([&](CActionTypeData& table) {
        for (int nPosition : {-1, 0, 1, 100, 289, 290, 291, 100000})
            table.GetActionType(nPosition), table.GetMonsterActionType(nPosition);
        for (int64_t nId : setNumber)
            table.GetActionType(static_cast<int>(nId)), table.GetMonsterActionType(static_cast<int>(nId));
    });
    return 0;
}
