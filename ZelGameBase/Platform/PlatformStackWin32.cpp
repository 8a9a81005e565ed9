// Win32 half of the stack walk: the system's captured back trace, an unwind
// from an exception context, and the tool-help module snapshot looked up at
// run time in KERNEL32.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <tlhelp32.h>

#include "ZelGameBase/Platform/PlatformReport.h"
#include "ZelGameBase/Platform/PlatformStack.h"
#include "ZelGameBase/ZelCommon.h"

static_assert(sizeof(ZelExceptionPointers) == sizeof(EXCEPTION_POINTERS),
              "fault handlers pass the system's exception pointers as they are");

namespace {

using SnapshotCreateFn = HANDLE(WINAPI*)(DWORD, DWORD);
using ModuleWalkFn = BOOL(WINAPI*)(HANDLE, tagMODULEENTRY32*);

// The tool-help functions, looked up once and kept for the process's life.
struct ToolHelp {
    SnapshotCreateFn pfnSnapshotCreate;
    ModuleWalkFn pfnModuleFirst;
    ModuleWalkFn pfnModuleNext;
};

template <class Fn>
Fn ProcAddressGet(HMODULE hModule, const char* szName)
{
    return reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(hModule, szName)));
}

const ToolHelp& ToolHelpGet()
{
    static const ToolHelp s_toolHelp = [] {
        ToolHelp toolHelp{};
        if (HMODULE hKernel = GetModuleHandleA("KERNEL32")) {
            toolHelp.pfnSnapshotCreate = ProcAddressGet<SnapshotCreateFn>(hKernel, "CreateToolhelp32Snapshot");
            toolHelp.pfnModuleFirst = ProcAddressGet<ModuleWalkFn>(hKernel, "Module32First");
            toolHelp.pfnModuleNext = ProcAddressGet<ModuleWalkFn>(hKernel, "Module32Next");
        }
        return toolHelp;
    }();
    return s_toolHelp;
}

constexpr DWORD kReadable = PAGE_READONLY | PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READ |
                            PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
constexpr DWORD kExecutable = PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;

// True when all nSize bytes at pAddress lie in committed pages with one of
// the wanted protections.
bool PagesAllow(const void* pAddress, SIZE_T nSize, DWORD nWanted)
{
    MEMORY_BASIC_INFORMATION info;
    if (pAddress == nullptr || VirtualQuery(pAddress, &info, sizeof(info)) == 0)
        return false;
    if (info.State != MEM_COMMIT || (info.Protect & PAGE_GUARD) != 0 || (info.Protect & nWanted) == 0)
        return false;
    const auto* pEnd = static_cast<const char*>(info.BaseAddress) + info.RegionSize;
    return static_cast<const char*>(pAddress) + nSize <= pEnd;
}

bool IsCode(const void* pAddress) { return PagesAllow(pAddress, 1, kExecutable); }

int WalkContext(void** ppAddress, int nMax, const ZelExceptionPointers& exception)
{
    if (exception.pContextRecord == nullptr)
        return 0;
    CONTEXT context = *static_cast<const CONTEXT*>(exception.pContextRecord);
    int nFound = 0;
#if defined(_M_X64) || defined(__x86_64__)
    // x64 code keeps no frame-pointer chain: unwind with the image's tables.
    while (nFound < nMax && IsCode(reinterpret_cast<void*>(context.Rip))) {
        ppAddress[nFound++] = reinterpret_cast<void*>(context.Rip);
        DWORD64 nImageBase = 0;
        PRUNTIME_FUNCTION pFunction = RtlLookupFunctionEntry(context.Rip, &nImageBase, nullptr);
        if (pFunction != nullptr) {
            void* pHandlerData = nullptr;
            DWORD64 nEstablisher = 0;
            RtlVirtualUnwind(UNW_FLAG_NHANDLER, nImageBase, context.Rip, pFunction, &context, &pHandlerData,
                             &nEstablisher, nullptr);
        } else {
            // A leaf function: the return address is on top of the stack.
            const void* pTop = reinterpret_cast<const void*>(context.Rsp);
            if (!PagesAllow(pTop, sizeof(DWORD64), kReadable))
                break;
            context.Rip = *static_cast<const DWORD64*>(pTop);
            context.Rsp += sizeof(DWORD64);
        }
    }
#else
    void* pCode = exception.pExceptionRecord != nullptr
                      ? static_cast<const EXCEPTION_RECORD*>(exception.pExceptionRecord)->ExceptionAddress
                      : reinterpret_cast<void*>(context.Eip);
    const void* pFrame = reinterpret_cast<const void*>(context.Ebp);
    while (nFound < nMax && IsCode(pCode)) {
        ppAddress[nFound++] = pCode;
        if (!PagesAllow(pFrame, 2 * sizeof(void*), kReadable))
            break;
        // The saved frame pointer, then the return address.
        void* const* pLink = static_cast<void* const*>(pFrame);
        pFrame = pLink[0];
        pCode = pLink[1];
    }
#endif
    return nFound;
}

}  // namespace

int PlatformStackWalk(void** ppAddress, int nMax, const ZelExceptionPointers* pException, const void* pFirstReturn)
{
    if (pException != nullptr)
        return WalkContext(ppAddress, nMax, *pException);
    constexpr DWORD kCapture = 62;  // the most older systems capture at once
    void* setCaptured[kCapture];
    const int nCaptured = RtlCaptureStackBackTrace(0, kCapture, setCaptured, nullptr);
    return StackFromCaller(setCaptured, nCaptured, pFirstReturn, IsCode, ppAddress, nMax);
}

bool PlatformModuleOfAddress(const void* pAddress, char* szName, int nNameSize, const void** ppBase)
{
    const ToolHelp& toolHelp = ToolHelpGet();
    if (toolHelp.pfnSnapshotCreate == nullptr || toolHelp.pfnModuleFirst == nullptr ||
        toolHelp.pfnModuleNext == nullptr)
        return false;
    const HANDLE hSnapshot = toolHelp.pfnSnapshotCreate(TH32CS_SNAPMODULE, GetCurrentProcessId());
    if (hSnapshot == INVALID_HANDLE_VALUE)
        return false;
    tagMODULEENTRY32 entry{};
    entry.dwSize = sizeof(entry);
    bool bFound = false;
    for (BOOL bMore = toolHelp.pfnModuleFirst(hSnapshot, &entry); bMore && !bFound;
         bMore = toolHelp.pfnModuleNext(hSnapshot, &entry)) {
        const auto* pBase = reinterpret_cast<const char*>(entry.modBaseAddr);
        const auto* pAt = static_cast<const char*>(pAddress);
        if (pAt >= pBase && pAt < pBase + entry.modBaseSize) {
            SafeStrCopy(szName, nNameSize, entry.szExePath);
            *ppBase = pBase;
            bFound = true;
        }
    }
    CloseHandle(hSnapshot);
    return bFound;
}
