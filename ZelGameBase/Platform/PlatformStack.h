// Shared by the two stack walkers of the platform layer.
#pragma once

// From a captured stack whose first entries are the walker's own frames: the
// entries from the one equal to pFirstReturn (from the start when none is),
// up to the first that is not code, at most nMax of them. Returns how many
// were written to ppAddress.
int StackFromCaller(void* const* setCaptured, int nCaptured, const void* pFirstReturn, bool (*pfnIsCode)(const void*),
                    void** ppAddress, int nMax);
