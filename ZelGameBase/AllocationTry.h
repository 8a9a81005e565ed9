// Loading never throws to the client. The standard containers report running
// out of memory by throwing; a loader runs its allocating step through
// AllocationTry and, on false, stops and keeps what it had read.
#pragma once

#include <new>
#include <stdexcept>

// Runs fn; false when it ran out of memory (std::bad_alloc) or asked for more
// than a container can hold (std::length_error, which a size taken from a
// huge file gives on a 32-bit build).
template <class Fn>
bool AllocationTry(Fn&& fn) noexcept
{
    try {
        fn();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const std::length_error&) {
        return false;
    }
}
