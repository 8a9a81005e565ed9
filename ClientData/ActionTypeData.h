// Action type table: the action number that players ("ini/ActionType.ini")
// and monsters ("ini/MonsterActionType.ini") use for each position of the
// built-in action name list. Loads itself on the first query.
#pragma once

#include <cstddef>

#include "ClientData/ActionType.h"
#include "ClientData/DataTable.h"
#include "ClientData/TableDesc.h"

class CActionTypeData final : public CDataTable {
public:
    // Fills the process-wide action name list.
    CActionTypeData();
    // Empties the process-wide action name list.
    ~CActionTypeData();
    ZEL_DELETING_DESTRUCTOR

    // Reads both files once: a second call returns at once, even when a file
    // was missing ("Load Error %s not find"), until Clear.
    void Load() override;
    // Zeroes both arrays and forgets that they were loaded.
    void Clear() override;

    // Slot 7: the player action number of a name position; loads first when
    // not yet loaded. 0 for a position of 512 or more, for 290 to 511 and for
    // names no line mapped. Negative positions are a caller error and give 0.
    virtual int GetActionType(int nPosition);
    // Slot 8: the same for monsters.
    virtual int GetMonsterActionType(int nPosition);

    // Lines of both files that mapped a listed name.
    std::size_t GetLoadedAmount() const { return m_nMapped; }

private:
    // Reads one file into one array; false when it cannot be opened.
    bool LoadFile(const char* szPath, int* pActionType);
    int ActionAt(const int* pActionType, int nPosition);

    bool m_bLoaded = false;  // distinct from the base's version flag
    int m_nActionType[kActionPositionAmount] = {};
    int m_nMonsterActionType[kActionPositionAmount] = {};
    std::size_t m_nMapped = 0;
};

extern const TableDesc kActionTypeDesc;
