// "ini/ActionEffectOffset.ini" through the action effect offset table.
#include "ClientData/ActionEffectOffsetData.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    FuzzTableFile<CActionEffectOffsetData>(
        "ini/ActionEffectOffset.ini", pData, nSize, [&](CActionEffectOffsetData& table) {
            for (std::size_t i = 0; i + 2 < setNumber.size(); ++i)
                table.GetActionEffectOffset(static_cast<int>(setNumber[i]), static_cast<int>(setNumber[i + 1]),
                                            static_cast<int>(setNumber[i + 2]));
        });
    return 0;
}
