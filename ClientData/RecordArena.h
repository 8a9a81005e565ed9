// A table's records in a few large blocks instead of one heap block each:
// fewer allocations, and records that lie side by side, in the order they
// were added. A record stays where it is until Clear, which frees every block.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

#include "ZelGameBase/AllocationTry.h"

template <class T, std::size_t kPerBlock = 256>
class CRecordArena {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>,
                  "records are plain data, dropped without destruction");

public:
    // Room for one more record, its bytes undefined; null when out of memory.
    T* Add()
    {
        const std::size_t nBlock = m_nUsed / kPerBlock;
        if (nBlock == m_setBlock.size()) {
            std::unique_ptr<T[]> pBlock(new (std::nothrow) T[kPerBlock]);
            if (!pBlock || !AllocationTry([&] { m_setBlock.push_back(std::move(pBlock)); }))
                return nullptr;
        }
        return &m_setBlock[nBlock][m_nUsed++ % kPerBlock];
    }
    // Takes back the record the last Add gave.
    void DropLast()
    {
        if (m_nUsed > 0)
            --m_nUsed;
    }
    std::size_t Size() const { return m_nUsed; }
    // The record added nIndex-th (nIndex < Size()).
    T& operator[](std::size_t nIndex) { return m_setBlock[nIndex / kPerBlock][nIndex % kPerBlock]; }
    const T& operator[](std::size_t nIndex) const { return m_setBlock[nIndex / kPerBlock][nIndex % kPerBlock]; }

    void Clear()
    {
        m_setBlock.clear();
        m_setBlock.shrink_to_fit();
        m_nUsed = 0;
    }

private:
    std::vector<std::unique_ptr<T[]>> m_setBlock;
    std::size_t m_nUsed = 0;
};
