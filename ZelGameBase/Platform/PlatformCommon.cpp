// The parts of the platform layer that both halves share: built on the
// primitives each half provides.
#include <cstdio>

#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/Platform/PlatformStack.h"

bool PlatformAppendText(const char* szPath, const char* szText)
{
    FILE* pFile = PlatformOpenFile(szPath, "a+");
    if (pFile == nullptr)
        return false;
    std::fputs(szText, pFile);
    std::fclose(pFile);
    return true;
}

int StackFromCaller(void* const* setCaptured, int nCaptured, const void* pFirstReturn, bool (*pfnIsCode)(const void*),
                    void** ppAddress, int nMax)
{
    int nFirst = 0;
    for (int i = 0; i < nCaptured; ++i) {
        if (setCaptured[i] == pFirstReturn) {
            nFirst = i;
            break;
        }
    }
    int nFound = 0;
    for (int i = nFirst; i < nCaptured && nFound < nMax && pfnIsCode(setCaptured[i]); ++i)
        ppAddress[nFound++] = setCaptured[i];
    return nFound;
}
