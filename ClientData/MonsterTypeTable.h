// Monster types from "Monster.dat" (ini format, one section per monster type):
// display name, size and zoom, life, level, name label height, weapons and the
// effect and sound names played when the monster appears, attacks and
// vanishes.
//
// Sections are kept in file order and a repeated id is kept as it comes; every
// lookup answers as if it walked the records from the last to the first, so a
// later section wins over an earlier one with the same id or name. The
// answers come from indexes built right after loading.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string_view>
#include <unordered_map>

#include "ClientData/DataTable.h"

// The client reads this record by layout: field order and buffer sizes are
// fixed. Keys of the monster's section in parentheses.
struct MonsterTypeInfo {
    int nId;                      // the section title, parsed as "%d"
    char szName[16];              // "Name": at most 15 characters kept
    int nSizeAdd;                 // "SizeAdd"
    int nZoomPercent;             // "ZoomPercent"
    int nMaxLife;                 // "MaxLife"
    int nLevel;                   // "Level"
    int nWhiteBlack;              // "WhiteBlack"
    int nBattleLev;               // "Battlelev"
    int nNameAltitude;            // "NameAltitude": 100 when missing
    int nSort;                    // "Sort"
    int nExtraExp;                // "ExtraExp"
    char szDisappearEffect[128];  // "DisappearEffect"
    char szDisappearSound[128];   // "DisappearSound"
    int nLeftWeapon;              // "l_weapon"
    int nRightWeapon;             // "r_weapon"
    char szEffect[128];           // "effect"
    int nNameHeight;              // "NameHeight"
    char szAttackEffect[128];     // "attackeffect"
    char szAppearEffect[128];     // "appeareffect"
    int nDefyStatus;              // "DefyStatus": non-zero, statuses do not take
    int nLockDir;                 // "LockDir"
    char szDefyEffect[128];       // "DefyEffect"
};

class CMonsterTypeTable : public CDataTable {
public:
    CMonsterTypeTable();
    ~CMonsterTypeTable();
    ZEL_DELETING_DESTRUCTOR

    // Reads m_strFilePath. Sections whose title does not start with a
    // non-zero number are skipped silently; an unreadable file logs
    // "error on open Monster.dat." and leaves the table empty.
    void Load() override;
    void Clear() override;

    // Slot 7: the last record with id nId; null for 0 or an unknown id.
    // Record pointers stay valid until the next Clear or Load.
    virtual const MonsterTypeInfo* GetMonsterType(int nId);
    // Slot 8: the last record whose name equals szName byte for byte (so a
    // name longer than 15 characters never matches); null on a miss or a null
    // name.
    virtual const MonsterTypeInfo* FindMonsterByName(const char* szName);
    // Slot 9: 0 when any record with id nId has a non-zero defy status, even
    // if a later one has none; 1 otherwise (id 0, unknown ids included).
    virtual int CanTakeStatus(int nId);

    std::size_t GetLoadedAmount() const { return m_nAmount; }
    // Every record read, in file order, repeated ids included (for tools).
    const std::deque<std::unique_ptr<MonsterTypeInfo>>& Records() const { return m_setInfo; }

private:
    struct IdEntry {
        const MonsterTypeInfo* pLast;  // the record a backward walk meets first
        bool bDefy;                    // some record of the id defies statuses
    };

    void BuildIndex();

    std::deque<std::unique_ptr<MonsterTypeInfo>> m_setInfo;  // file order
    std::size_t m_nAmount = 0;
    std::unordered_map<int, IdEntry> m_mapId;
    std::unordered_map<std::string_view, const MonsterTypeInfo*> m_mapName;  // views into the records
};
