// "ini/Npc.ini" through the NPC type table.
#include "ClientData/NpcTypeInfo.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    FuzzTableFile<CNpcTypeInfoTable>("ini/Npc.ini", pData, nSize, [&](CNpcTypeInfoTable& table) {
        for (int64_t nId : setNumber)
            if (const NpcTypeInfo* pInfo = table.GetNpcType(static_cast<uint32_t>(nId))) {
                FUZZ_CHECK_TEXT(pInfo->szName);
                FUZZ_CHECK_TEXT(pInfo->szEffect);
                FUZZ_CHECK_TEXT(pInfo->szNote);
            }
    });
    return 0;
}
