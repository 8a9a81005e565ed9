#include "Allocation/ReplacedAllocation.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<long> g_nAllocations{0};
std::atomic<long> g_nFailFrom{0};

void* Allocate(std::size_t nSize)
{
    const long nCount = ++g_nAllocations;
    const long nFailFrom = g_nFailFrom.load();
    if (nFailFrom != 0 && nCount >= nFailFrom)
        return nullptr;
    return std::malloc(nSize ? nSize : 1);
}
}  // namespace

long AllocationCount() { return g_nAllocations.load(); }

void AllocationFailFrom(long nCount) { g_nFailFrom = nCount; }

void* operator new(std::size_t nSize)
{
    if (void* p = Allocate(nSize))
        return p;
    throw std::bad_alloc();
}
void* operator new(std::size_t nSize, const std::nothrow_t&) noexcept { return Allocate(nSize); }
// The replaced forms pair malloc with free by design.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }
#pragma GCC diagnostic pop
