// The allocation test program replaces the global allocation functions
// (ReplacedAllocation.cpp): every allocation is counted, and a test can make
// every allocation from a given count on fail, as a process out of memory
// sees it (the throwing forms throw std::bad_alloc, the others return null).
#pragma once

// Allocations made so far by the whole program.
long AllocationCount();
// From the nCount-th allocation on, every allocation fails; 0 ends that.
void AllocationFailFrom(long nCount);
