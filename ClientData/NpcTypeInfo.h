// NPC types from "ini/Npc.ini", the older NPC file: one section
// [NpcType<id>] per type, giving a simple object, motions, zoom, mouse sign,
// blocking sides and weapons. The first section of an id wins.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ClientData/DataTable.h"
#include "ClientData/NpcTypeStore.h"

// Read by the client by layout. Keys in parentheses; missing keys are 0 or
// empty except where noted.
struct NpcTypeInfo {
    uint32_t nId;        // from the section title after "NpcType"
    char szName[16];     // "Name"
    char szEffect[64];   // "Effect"
    int nSimpleObjId;    // "SimpleObjID"
    int nStandByMotion;  // "StandByMotion"
    int nBlazeMotion;    // "BlazeMotion"
    int nBlazeMotion1;   // "BlazeMotion1"
    int nBlazeMotion2;   // "BlazeMotion2"
    int nRestMotion;     // "RestMotion"
    char szNote[128];    // "Note"; exactly "NULL" reads as empty
    int nZoomPercent;    // "ZoomPercent", 100 when missing
    int nMouseSign;      // "MouseSign"
    int nChangeDir;      // "ChangeDir", 1 when missing
    int nFrontBlock;     // "FrontBlock"
    int nBackBlock;      // "BackBlock"
    int nLeftBlock;      // "LeftBlock"
    int nRightBlock;     // "RightBlock"
    int nLeftWeapon;     // "l_weapon"
    int nRightWeapon;    // "r_weapon"
};

class CNpcTypeInfoTable : public CDataTable {
public:
    CNpcTypeInfoTable() = default;
    ~CNpcTypeInfoTable() = default;
    ZEL_DELETING_DESTRUCTOR

    // Always reads the fixed path "ini/Npc.ini", never the built path; an
    // unreadable file logs "ini/Npc.ini load error!".
    void Load() override;
    void Clear() override { m_store.Clear(); }

    // Slot 7: the first record in file order with that id; null on a miss.
    // Valid until the next Clear or Load.
    virtual const NpcTypeInfo* GetNpcType(uint32_t nId) { return m_store.Find(nId); }

    std::size_t GetLoadedAmount() const { return m_store.GetAmount(); }
    // Every record read, in file order (for tools).
    const std::vector<std::unique_ptr<NpcTypeInfo>>& Records() const { return m_store.Records(); }
    // How this file differs from the other NPC file (keys, defaults, the
    // "NULL" note test, the assertion's unit and line).
    static const NpcTypeFormat& GetFormat();

private:
    NpcTypeStore<NpcTypeInfo> m_store;
};
