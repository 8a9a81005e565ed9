// "ini/monsterspeak.ini" through the monster speech table.
#include "ClientData/MonsterSpeakTable.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    FuzzTableFile<CMonsterSpeakTable>("ini/monsterspeak.ini", pData, nSize, [&](CMonsterSpeakTable& table) {
        for (int64_t nId : setNumber) {
            const uint32_t nType = static_cast<uint32_t>(nId);
            table.GetMonsterSpeak(nType);
            for (int nOccasion = -1; nOccasion <= 8; ++nOccasion) {
                const int nAmount = table.GetSpeakAmount(nType, nOccasion);
                for (int i = -1; i <= nAmount && i < 16; ++i) {
                    int nProbability = 0;
                    table.GetSpeakText(nType, nOccasion, i, &nProbability);
                    table.GetSpeakText(nType, nOccasion, i, nullptr);
                }
                table.GetOccasionProbability(nType, nOccasion);
                for (int nRoll : {-1, 0, 1, 50, 99, 100, 1000})
                    table.PickSpeakText(nType, nOccasion, nRoll);
            }
        }
    });
    return 0;
}
