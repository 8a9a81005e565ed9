// POSIX half of the stack walk: the unwinder's backtrace, a frame-pointer
// walk from a signal context, and the loaded-object list.
#include <execinfo.h>
#include <link.h>
#include <sys/uio.h>
#include <ucontext.h>
#include <unistd.h>

#include <string>

#include "ZelGameBase/Platform/PlatformReport.h"
#include "ZelGameBase/Platform/PlatformStack.h"
#include "ZelGameBase/ZelCommon.h"

namespace {

// What the loaded-object list says about one address.
struct AddressLookup {
    ElfW(Addr) nAddress;
    bool bFound;
    bool bExecutable;
    const char* szName;
    ElfW(Addr) nBase;
};

int LookupCallback(dl_phdr_info* pInfo, size_t, void* pData)
{
    auto* pLookup = static_cast<AddressLookup*>(pData);
    for (ElfW(Half) i = 0; i < pInfo->dlpi_phnum; ++i) {
        const ElfW(Phdr)& segment = pInfo->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD)
            continue;
        const ElfW(Addr) nStart = pInfo->dlpi_addr + segment.p_vaddr;
        if (pLookup->nAddress < nStart || pLookup->nAddress >= nStart + segment.p_memsz)
            continue;
        pLookup->bFound = true;
        pLookup->bExecutable = (segment.p_flags & PF_X) != 0;
        pLookup->szName = pInfo->dlpi_name;
        pLookup->nBase = pInfo->dlpi_addr;
        return 1;
    }
    return 0;
}

AddressLookup LookupAddress(const void* pAddress)
{
    AddressLookup lookup{reinterpret_cast<ElfW(Addr)>(pAddress), false, false, nullptr, 0};
    dl_iterate_phdr(LookupCallback, &lookup);
    return lookup;
}

bool IsCode(const void* pAddress) { return LookupAddress(pAddress).bExecutable; }

// Reads memory that may not be mapped without faulting.
bool ReadMemory(const void* pFrom, void* pTo, std::size_t nSize)
{
    iovec local{pTo, nSize};
    iovec remote{const_cast<void*>(pFrom), nSize};
    return process_vm_readv(getpid(), &local, 1, &remote, 1, 0) == static_cast<ssize_t>(nSize);
}

// Frame-pointer walk from a signal context: the fault address, then the
// return address each saved frame pointer's frame holds.
int WalkContext(void** ppAddress, int nMax, const ZelExceptionPointers& exception)
{
    const auto* pContext = static_cast<const ucontext_t*>(exception.pContextRecord);
    if (pContext == nullptr || nMax <= 0)
        return 0;
#if defined(__x86_64__)
    void* pCode = reinterpret_cast<void*>(pContext->uc_mcontext.gregs[REG_RIP]);
    const void* pFrame = reinterpret_cast<const void*>(pContext->uc_mcontext.gregs[REG_RBP]);
#elif defined(__aarch64__)
    void* pCode = reinterpret_cast<void*>(pContext->uc_mcontext.pc);
    const void* pFrame = reinterpret_cast<const void*>(pContext->uc_mcontext.regs[29]);
#else
    void* pCode = nullptr;
    const void* pFrame = nullptr;
#endif
    int nFound = 0;
    while (nFound < nMax && pCode != nullptr && IsCode(pCode)) {
        ppAddress[nFound++] = pCode;
        void* setLink[2];  // saved frame pointer, return address
        if (!ReadMemory(pFrame, setLink, sizeof(setLink)))
            break;
        pFrame = setLink[0];
        pCode = setLink[1];
    }
    return nFound;
}

}  // namespace

int PlatformStackWalk(void** ppAddress, int nMax, const ZelExceptionPointers* pException, const void* pFirstReturn)
{
    if (pException != nullptr)
        return WalkContext(ppAddress, nMax, *pException);
    // The walk's own frames come first; the caller's frame is found by the
    // return address it gave.
    constexpr int kCapture = 64;
    void* setCaptured[kCapture];
    const int nCaptured = backtrace(setCaptured, kCapture);
    return StackFromCaller(setCaptured, nCaptured, pFirstReturn, IsCode, ppAddress, nMax);
}

bool PlatformModuleOfAddress(const void* pAddress, char* szName, int nNameSize, const void** ppBase)
{
    const AddressLookup lookup = LookupAddress(pAddress);
    if (!lookup.bFound)
        return false;
    // The main program is listed without a name.
    std::string strName = lookup.szName != nullptr ? lookup.szName : "";
    if (strName.empty()) {
        char szPath[261] = {};
        const ssize_t nLength = readlink("/proc/self/exe", szPath, sizeof(szPath) - 1);
        if (nLength > 0)
            strName.assign(szPath, static_cast<std::size_t>(nLength));
    }
    SafeStrCopy(szName, nNameSize, strName.c_str());
    *ppBase = reinterpret_cast<const void*>(lookup.nBase);
    return true;
}
