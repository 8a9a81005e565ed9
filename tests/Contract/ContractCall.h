// How the contract program reaches the library: loaded at run time, the
// manager from its export, every operation by vtable slot index. Nothing of
// the library's own headers is used, so what is exercised is the binary
// contract alone.
#pragma once

#include <cstdint>

#if defined(_WIN32)
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#else
#include <dlfcn.h>
#endif

// Member functions of the 32-bit Windows library take the object in ECX and
// pop their own stack arguments (thiscall), as the client's compiler expects.
// On x86-64 (Windows and Linux) the object is simply the first argument.
#if defined(_WIN32) && defined(__i386__)
#define CONTRACT_MEMBER __attribute__((thiscall))
#else
#define CONTRACT_MEMBER
#endif

// Every argument and result the slots exchange (int, unsigned, bool, a
// pointer) fits one register-sized word on both targets.
using Word = intptr_t;

// Kept out of line so that the 32-bit build's call shape can be inspected
// in the program's disassembly.
template <class... Args>
__attribute__((noinline)) Word CallSlot(void* pObject, int nSlot, Args... args)
{
    using Fn = Word(CONTRACT_MEMBER*)(void*, Args...);
    void** pVtable = *static_cast<void***>(pObject);
    return reinterpret_cast<Fn>(pVtable[nSlot])(pObject, args...);
}

// Results narrower than a word come back in its low bits only.
inline int32_t WordToInt(Word n) { return static_cast<int32_t>(static_cast<uint32_t>(n)); }
inline uint32_t WordToUInt(Word n) { return static_cast<uint32_t>(n); }
inline bool WordToBool(Word n) { return (n & 0xFF) != 0; }

class CContractLibrary {
public:
    ~CContractLibrary() { Close(); }

    bool Open(const char* szPath)
    {
#if defined(_WIN32)
        m_hModule = LoadLibraryA(szPath);
#else
        m_hModule = dlopen(szPath, RTLD_NOW | RTLD_LOCAL);
#endif
        return m_hModule != nullptr;
    }

    void* Symbol(const char* szName)
    {
#if defined(_WIN32)
        return reinterpret_cast<void*>(GetProcAddress(m_hModule, szName));
#else
        return dlsym(m_hModule, szName);
#endif
    }

    void Close()
    {
        if (m_hModule == nullptr)
            return;
#if defined(_WIN32)
        FreeLibrary(m_hModule);
#else
        dlclose(m_hModule);
#endif
        m_hModule = nullptr;
    }

private:
#if defined(_WIN32)
    HMODULE m_hModule = nullptr;
#else
    void* m_hModule = nullptr;
#endif
};
