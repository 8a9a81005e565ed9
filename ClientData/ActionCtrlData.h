// Action control table ("ini/ActionCtrl.ini"): per action key, how an action
// is cut into segments of time and movement.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "ClientData/DataTable.h"
#include "ClientData/FlatIndex.h"
#include "ClientData/TableDesc.h"

constexpr int kActionCtrlSegmentMax = 8;

struct ActionCtrlInfo {
    int32_t nSection;                             // segments in use, -7..7: below 1 none is read
    int32_t nTimePercent[kActionCtrlSegmentMax];  // "TimePercent<i>", unread ones 0
    int32_t nMovePercent[kActionCtrlSegmentMax];  // "MovePercent<i>", unread ones 0
};

// One section per key, titled with a decimal 64-bit number. "Section" gives
// the segment count, of which only the remainder by 8 is kept (9 means one
// segment); then "TimePercent<i>" and "MovePercent<i>" for each segment i,
// 0 when absent. When two sections carry the same key the first is kept.
class CActionCtrlData final : public CDataTable {
public:
    CActionCtrlData() = default;
    ~CActionCtrlData() = default;
    ZEL_DELETING_DESTRUCTOR

    // Adds the file's sections; "%s load error!" when it cannot be read.
    void Load() override;
    void Clear() override;

    // Slot 7: the record of the first key of ActionCtrlKeys present, null
    // when none is. Valid until the next Clear.
    virtual const ActionCtrlInfo* GetActionCtrl(int64_t nKey);

    std::size_t GetLoadedAmount() const { return m_mapCtrl.size(); }
    // Every record held, by key.
    const std::map<int64_t, ActionCtrlInfo>& Ctrls() const { return m_mapCtrl; }

private:
    const ActionCtrlInfo* Find(int64_t nKey) const;

    std::map<int64_t, ActionCtrlInfo> m_mapCtrl;
    // The records by key, rebuilt after each load: one probe per key tried.
    CFlatIndex<int64_t, const ActionCtrlInfo*> m_index;
};

extern const TableDesc kActionCtrlDesc;

// Amount of keys GetActionCtrl tries.
constexpr int kActionCtrlKeyAmount = 4;

// The keys GetActionCtrl tries for K, in order; each starts from the one
// before, not from K: K; (K mod 1000000) + 999000000 (digits 6-8 become 999,
// higher digits are dropped); that with digits 3-5 set to 999; that with
// digits 0-2 set to 999, which is 999999999 for every K >= 0, so a section
// named 999999999 catches every action without a closer entry.
void ActionCtrlKeys(int64_t nKey, int64_t (&nKeys)[kActionCtrlKeyAmount]);
