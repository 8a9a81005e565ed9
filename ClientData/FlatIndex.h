// A lookup index built once after a load: keys to values in one
// open-addressing table, at most half full, probed linearly. A lookup costs
// one hash and mostly one cache line, and never allocates.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

template <class Key, class Value>
class CFlatIndex {
public:
    // Replaces the index by the nAmount pairs that each(add) hands to add;
    // every key once.
    template <class Each>
    void Build(std::size_t nAmount, Each&& each)
    {
        m_setSlot.clear();
        if (nAmount == 0)
            return;
        int nBits = 1;
        while ((std::size_t{1} << nBits) < 2 * nAmount)
            ++nBits;
        m_nShift = 64 - nBits;
        m_setSlot.assign(std::size_t{1} << nBits, Slot{Key(), Value(), false});
        each([this](Key key, Value value) {
            std::size_t i = SlotOf(key);
            while (m_setSlot[i].bUsed)
                i = (i + 1) & (m_setSlot.size() - 1);
            m_setSlot[i] = Slot{key, value, true};
        });
    }
    // Replaces the index by the entries of a map of unique keys: a pointer
    // to each mapped record, or the mapped value itself.
    template <class Map>
    void BuildFrom(const Map& map)
    {
        Build(map.size(), [&map](auto add) {
            for (const auto& entry : map) {
                if constexpr (std::is_pointer_v<Value>)
                    add(entry.first, &entry.second);
                else
                    add(entry.first, entry.second);
            }
        });
    }
    void Clear() { m_setSlot.clear(); }

    // The value of key; null when the index lacks it.
    const Value* Find(Key key) const
    {
        if (m_setSlot.empty())
            return nullptr;
        for (std::size_t i = SlotOf(key);; i = (i + 1) & (m_setSlot.size() - 1)) {
            const Slot& slot = m_setSlot[i];
            if (!slot.bUsed)
                return nullptr;
            if (slot.key == key)
                return &slot.value;
        }
    }

private:
    struct Slot {
        Key key;
        Value value;
        bool bUsed;
    };

    // The high bits of a product by a large odd constant: every key bit counts.
    std::size_t SlotOf(Key key) const
    {
        return static_cast<std::size_t>((static_cast<uint64_t>(key) * 0x9E3779B97F4A7C15ull) >> m_nShift);
    }

    std::vector<Slot> m_setSlot;
    int m_nShift = 63;
};
