// The handler behind every abstract slot. GCC and MinGW-w64 fill the abstract
// slots of a vtable with the runtime's __cxa_pure_virtual; defining it here
// replaces the runtime's, which would end the process. Vtables refer to it
// only weakly, so the foundation library's link options ask every program
// and library that links it to take this unit in.
#include "ZelGameBase/StackTrace.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelGameBase.h"

// Returns 0, so that a call into an abstract slot returns (with 0 where it
// expected a value) and the program goes on.
extern "C" int __cxa_pure_virtual()
{
    char szStack[1024] = {};
    StackTraceText(6, szStack, sizeof(szStack), nullptr);
    char szText[1024] = {};
    SafeSprintf(szText, sizeof(szText), "Error:_purecall [%s]", szStack);
    // The text is logged as it stands: a "%%" in it becomes "%".
    LogMsgSave("%s", szText);
    return 0;
}
