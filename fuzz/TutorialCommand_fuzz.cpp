// ParseTutorialCommand on one line (the input up to its first NUL).
#include <string>

#include "ClientData/BattleTutorial.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::string strLine(reinterpret_cast<const char*>(pData), nSize);
    TutorialCommand command;
    std::memset(&command, 0x5A, sizeof(command));
    const bool bParsed = ParseTutorialCommand(&command, strLine.c_str());
    FUZZ_CHECK_TEXT(command.szText);
    if (command.nCode < 0 || command.nCode > 170 || (bParsed && command.nCode == 0))
        std::abort();
    ParseTutorialCommand(&command, "");
    return 0;
}
