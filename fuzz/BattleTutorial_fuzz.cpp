// "BattleTutorial.ini" through the tutorial script table.
#include "ClientData/BattleTutorial.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    FuzzTableFile<CBattleTutorialTable>("ini/BattleTutorial.ini", pData, nSize, [&](CBattleTutorialTable& table) {
        for (int64_t nId : setNumber) {
            const int nScript = static_cast<int>(nId);
            table.GetScript(nScript);
            table.GetScriptType(nScript);
            const int nAmount = table.GetCommandAmount(nScript);
            for (int i = -1; i <= nAmount && i < 32; ++i)
                if (const TutorialCommand* pCommand = table.GetCommand(nScript, i)) {
                    FUZZ_CHECK_TEXT(pCommand->szText);
                    if (pCommand->nCode < 1 || pCommand->nCode > 170)
                        std::abort();  // the loader keeps executable commands only
                }
        }
    });
    return 0;
}
