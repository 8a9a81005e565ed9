// Counting two bytes of a text in one pass, for reserving before an index is
// built.
#pragma once

#include <cstddef>
#include <cstdint>

struct ByteCounts {
    uint32_t nFirst;
    uint32_t nSecond;
};

// How often cFirst and cSecond occur in the nSize bytes at pText. Counted in
// 32-bit lanes, which the compiler vectorises; a count past 2^32 wraps,
// which only makes a caller reserve less.
inline ByteCounts BytesCount(const char* pText, std::size_t nSize, char cFirst, char cSecond)
{
    ByteCounts counts{0, 0};
    for (std::size_t i = 0; i < nSize; ++i) {
        counts.nFirst += pText[i] == cFirst ? 1u : 0u;
        counts.nSecond += pText[i] == cSecond ? 1u : 0u;
    }
    return counts;
}
