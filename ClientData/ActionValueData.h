// Action value table ("ini/Action.dat"): an integer per 64-bit action key,
// with wildcard keys that stand for whole groups of digits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "ClientData/DataTable.h"
#include "ClientData/FlatIndex.h"
#include "ClientData/TableDesc.h"

// Lines of blank-separated tokens: the key (a decimal 64-bit number; lines
// where it does not parse are skipped) and the value (decimal, 0 when
// absent). When a key repeats, the first line is kept.
class CActionValueData final : public CDataTable {
public:
    CActionValueData() = default;
    ~CActionValueData() = default;
    ZEL_DELETING_DESTRUCTOR

    // Empties the table, then reads the file; a missing file logs nothing.
    void Load() override;
    void Clear() override;

    // Slot 7: never fails. With an empty table, a built-in rule on the signed
    // remainder q = K mod 1000: q 100-103 give 66; 110, 120, 121 give 25;
    // 451-453, 460, 465, 470 give 10; anything else 33. Otherwise the value of
    // the first key present among K and seven wildcard forms of it (see
    // ActionValueKeys), else 33.
    virtual int GetActionValue(int64_t nKey);

    std::size_t GetLoadedAmount() const { return m_mapValue.size(); }
    // Every value held, by key.
    const std::map<int64_t, int>& Values() const { return m_mapValue; }

private:
    std::map<int64_t, int> m_mapValue;
    // The same values for the lookup: its eight keys cost a probe each, not
    // a tree search each.
    CFlatIndex<int64_t, int> m_index;
};

extern const TableDesc kActionValueDesc;

// Amount of keys GetActionValue tries.
constexpr int kActionValueKeyAmount = 8;

// The keys GetActionValue tries, in order (digit positions count from the
// least significant, 0): K; digits 0-2 set to 999; 3-5 to 999; 6-8 to 999;
// 9-10 to 99; 6-10 to 99999; 3-8 to 999999; finally digits 9-10 replaced by
// the value 999999 and, in that result, digits 3-5 by the value 999999. The
// last step writes six nines into two- and three-digit groups on purpose: the
// excess carries into the digits above, and data files are keyed that way.
void ActionValueKeys(int64_t nKey, int64_t (&nKeys)[kActionValueKeyAmount]);
