// "Monster.dat" through the monster type table.
#include "ClientData/MonsterTypeTable.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    const std::vector<std::string> setWord = FuzzWordsIn(pData, nSize);
    FuzzTableFile<CMonsterTypeTable>("ini/Monster.dat", pData, nSize, [&](CMonsterTypeTable& table) {
        for (int64_t nId : setNumber) {
            if (const MonsterTypeInfo* pInfo = table.GetMonsterType(static_cast<int>(nId))) {
                FUZZ_CHECK_TEXT(pInfo->szName);
                FUZZ_CHECK_TEXT(pInfo->szDisappearEffect);
                FUZZ_CHECK_TEXT(pInfo->szDefyEffect);
            }
            table.CanTakeStatus(static_cast<int>(nId));
        }
        for (const std::string& strWord : setWord)
            if (const MonsterTypeInfo* pInfo = table.FindMonsterByName(strWord.c_str()))
                FUZZ_CHECK_TEXT(pInfo->szName);
        table.FindMonsterByName(nullptr);
    });
    return 0;
}
