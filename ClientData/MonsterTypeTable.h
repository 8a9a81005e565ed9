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
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ClientData/DataTable.h"
#include "ClientData/RecordArena.h"
#include "ClientData/TableDesc.h"

// The client reads this record by layout: field order and buffer sizes are
// fixed. Each field's key, default and width are stated once, in the
// table's description (kMonsterTypeDesc); texts keep at most their buffer
// less one character.
struct MonsterTypeInfo {
    int nId;  // the section title, parsed as "%d"
    char szName[16];
    int nSizeAdd;
    int nZoomPercent;
    int nMaxLife;
    int nLevel;
    int nWhiteBlack;
    int nBattleLev;
    int nNameAltitude;  // 100 when the section does not give it
    int nSort;
    int nExtraExp;
    char szDisappearEffect[128];
    char szDisappearSound[128];
    int nLeftWeapon;
    int nRightWeapon;
    char szEffect[128];
    int nNameHeight;
    char szAttackEffect[128];
    char szAppearEffect[128];
    int nDefyStatus;  // non-zero: statuses do not take
    int nLockDir;
    char szDefyEffect[128];
};

class CMonsterTypeTable : public CDataTable {
public:
    CMonsterTypeTable();
    ~CMonsterTypeTable();
    ZEL_DELETING_DESTRUCTOR

    // Reads m_strFilePath. Sections whose title does not start with a
    // non-zero number are skipped silently; an unreadable file logs
    // "error on open <file name>." and leaves the table empty.
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

    std::size_t GetLoadedAmount() const { return m_arena.Size(); }
    // Every record read, in file order, repeated ids included.
    const CRecordArena<MonsterTypeInfo>& Records() const { return m_arena; }

private:
    struct IdEntry {
        const MonsterTypeInfo* pLast;  // the record a backward walk meets first
        bool bDefy;                    // some record of the id defies statuses
    };

    void BuildIndex();
    // The records from nFirst on, whose title lines setLine gives: a later
    // record of the same id or name shadows them.
    void ReportShadowed(std::size_t nFirst, const std::vector<int>& setLine) const;

    CRecordArena<MonsterTypeInfo> m_arena;  // file order
    std::unordered_map<int, IdEntry> m_mapId;
    std::unordered_map<std::string_view, const MonsterTypeInfo*> m_mapName;  // views into the records
};

extern const TableDesc kMonsterTypeDesc;
