#include "ZelGameBase/StackTrace.h"

#include <cstdio>
#include <cstring>

#include "ZelGameBase/Platform/PlatformReport.h"
#include "ZelGameBase/ZelCommon.h"

#if defined(_MSC_VER)
#include <intrin.h>
#define ZEL_NOINLINE __declspec(noinline)
#define ZEL_RETURN_ADDRESS() _ReturnAddress()
#else
#define ZEL_NOINLINE __attribute__((noinline))
#define ZEL_RETURN_ADDRESS() __builtin_return_address(0)
#endif

namespace {

// Enough for any frame count a caller asks for; deeper frames are dropped.
constexpr int kMaxFrames = 64;
// Module names are file paths of at most 260 characters.
constexpr int kModuleNameSize = 261;

// Appends one formatted entry to szOut (nLength characters so far), cutting
// at the buffer's end.
void AppendEntry(char* szOut, int nOutSize, int* pnLength, const char* szFormat, const char* szModule,
                 const void* pOffset, int nIndex)
{
    if (*pnLength >= nOutSize - 1)
        return;
    char* szAt = szOut + *pnLength;
    const int nRoom = nOutSize - *pnLength;
    if (szModule != nullptr)
        std::snprintf(szAt, static_cast<std::size_t>(nRoom), szFormat, szModule, pOffset, nIndex);
    else
        std::snprintf(szAt, static_cast<std::size_t>(nRoom), szFormat, pOffset, nIndex);
    *pnLength += static_cast<int>(std::strlen(szAt));
}

const void* OffsetOf(const void* pAddress, const void* pBase)
{
    return reinterpret_cast<const void*>(reinterpret_cast<const char*>(pAddress) -
                                         reinterpret_cast<const char*>(pBase));
}

}  // namespace

ZEL_NOINLINE void* StackTraceText(int nFrameCount, char* szOut, int nOutSize, const ZelExceptionPointers* pException)
{
    const bool bText = szOut != nullptr && nOutSize > 0;
    if (bText)
        szOut[0] = '\0';
    void* setAddress[kMaxFrames];
    const int nWanted = nFrameCount < 0 ? 0 : (nFrameCount < kMaxFrames ? nFrameCount + 1 : kMaxFrames);
    const int nFound = PlatformStackWalk(setAddress, nWanted, pException, ZEL_RETURN_ADDRESS());
    if (nFound == 0)
        return nullptr;
    if (szOut == nullptr)
        return setAddress[nFound - 1];
    if (!bText)
        return szOut;
    char szPrevious[kModuleNameSize] = {};
    const void* pBase = nullptr;  // of the last module found
    int nLength = 0;
    for (int i = 0; i < nFound; ++i) {
        char szModule[kModuleNameSize] = {};
        const void* pModuleBase = nullptr;
        if (!ModuleOfAddress(setAddress[i], szModule, sizeof(szModule), &pModuleBase)) {
            AppendEntry(szOut, nOutSize, &nLength, "(%s %p:%i) ", "unknown", OffsetOf(setAddress[i], pBase), i);
            szPrevious[0] = '\0';
            continue;
        }
        pBase = pModuleBase;
        const void* pOffset = OffsetOf(setAddress[i], pBase);
        if (std::strcmp(szModule, szPrevious) != 0)
            AppendEntry(szOut, nOutSize, &nLength, "(%s %p:%i) ", szModule, pOffset, i);
        else
            AppendEntry(szOut, nOutSize, &nLength, "(%p:%i) ", nullptr, pOffset, i);
        SafeStrCopy(szPrevious, sizeof(szPrevious), szModule);
    }
    return szOut;
}

bool ModuleOfAddress(const void* pAddress, char* szName, int nNameSize, const void** ppBase)
{
    if (szName == nullptr || nNameSize <= 0 || ppBase == nullptr)
        return false;
    return PlatformModuleOfAddress(pAddress, szName, nNameSize, ppBase);
}
