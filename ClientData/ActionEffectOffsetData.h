// Action effect offset table ("ini/ActionEffectOffset.ini"): a 3D offset for
// an effect, per (id, variant, sub-variant).
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <tuple>
#include <vector>

#include "ClientData/DataTable.h"
#include "ClientData/TableDesc.h"

struct ActionEffectOffset {
    int32_t nId;  // section number / 10000
    int32_t nOffsetX;
    int32_t nOffsetY;
    int32_t nOffsetZ;
    int32_t nVariant;     // (section number mod 10000) / 10
    int32_t nSubVariant;  // section number mod 10
};

// One section per record, titled with a decimal number N > 0 (others are
// skipped): the last digit is the sub-variant, the three before it the
// variant, the digits above them the id. Keys "nOffsetX", "nOffsetY",
// "nOffsetZ", 0 when absent. A missing file logs nothing.
class CActionEffectOffsetData final : public CDataTable {
public:
    CActionEffectOffsetData() = default;
    ~CActionEffectOffsetData() = default;
    ZEL_DELETING_DESTRUCTOR

    void Load() override;
    void Clear() override;

    // Slot 7: the first record in file order with all three equal; null on a
    // miss. Valid until the next Clear or Load.
    virtual const ActionEffectOffset* GetActionEffectOffset(int nId, int nVariant, int nSubVariant);

    std::size_t GetLoadedAmount() const { return m_setOffset.size(); }
    // Every record held, in file order.
    const std::vector<ActionEffectOffset>& Offsets() const { return m_setOffset; }

private:
    using Key = std::tuple<int32_t, int32_t, int32_t>;

    std::vector<ActionEffectOffset> m_setOffset;  // file order
    // The first record of each (id, variant, sub-variant), grown after each
    // load.
    std::map<Key, std::size_t> m_mapFirst;
};

extern const TableDesc kActionEffectOffsetDesc;
