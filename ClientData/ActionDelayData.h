// Action delay table ("ini/ActionDelay.ini"): per action number, how long the
// wound, block and die reactions wait.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "ClientData/DataTable.h"
#include "ClientData/TableDesc.h"

struct ActionDelayInfo {
    uint32_t WoundDelay;
    uint32_t BlockDelay;
    uint32_t DieDelay;
};

// One section per action, titled with its decimal number; keys "WoundDelay",
// "BlockDelay", "DieDelay", each 0 when absent. When two sections carry the
// same number the first one is kept.
class CActionDelayData final : public CDataTable {
public:
    CActionDelayData() = default;
    ~CActionDelayData() = default;
    ZEL_DELETING_DESTRUCTOR

    // Adds the file's sections; "%s load error!" when it cannot be read.
    void Load() override;
    void Clear() override { m_mapDelay.clear(); }

    // Slot 7: the delays of an action, null on a miss. Valid until the next
    // Clear.
    virtual const ActionDelayInfo* GetActionDelay(uint32_t nAction);

    std::size_t GetLoadedAmount() const { return m_mapDelay.size(); }
    // Every record held, by action number.
    const std::map<uint32_t, ActionDelayInfo>& Delays() const { return m_mapDelay; }

private:
    std::map<uint32_t, ActionDelayInfo> m_mapDelay;
};

extern const TableDesc kActionDelayDesc;
