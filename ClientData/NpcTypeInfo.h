// NPC types from "ini/Npc.ini", the older NPC file: one section
// [NpcType<id>] per type, giving a simple object, motions, zoom, mouse sign,
// blocking sides and weapons. The first section of an id wins.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ClientData/DataTable.h"
#include "ClientData/NpcTypeStore.h"
#include "ClientData/TableDesc.h"

// Read by the client by layout. Each field's key and default are stated once,
// in the table's description (kNpcTypeInfoDesc); missing keys are 0 or empty
// except where noted.
struct NpcTypeInfo {
    uint32_t nId;  // from the section title after "NpcType"
    char szName[16];
    char szEffect[64];
    int nSimpleObjId;
    int nStandByMotion;
    int nBlazeMotion;
    int nBlazeMotion1;
    int nBlazeMotion2;
    int nRestMotion;
    char szNote[128];  // exactly "NULL" reads as empty
    int nZoomPercent;  // 100 when missing
    int nMouseSign;
    int nChangeDir;  // 1 when missing
    int nFrontBlock;
    int nBackBlock;
    int nLeftBlock;
    int nRightBlock;
    int nLeftWeapon;
    int nRightWeapon;
};

class CNpcTypeInfoTable : public CDataTable {
public:
    CNpcTypeInfoTable() = default;
    ~CNpcTypeInfoTable() = default;
    ZEL_DELETING_DESTRUCTOR

    // Always reads its fixed path, never the built path; an unreadable file
    // logs "<path> load error!".
    void Load() override;
    void Clear() override { m_store.Clear(); }

    // Slot 7: the first record in file order with that id; null on a miss.
    // Valid until the next Clear or Load.
    virtual const NpcTypeInfo* GetNpcType(uint32_t nId) { return m_store.Find(nId); }

    std::size_t GetLoadedAmount() const { return m_store.GetAmount(); }
    // Every record read, in file order.
    const std::vector<std::unique_ptr<NpcTypeInfo>>& Records() const { return m_store.Records(); }
    // How this file differs from the other NPC file (description, the "NULL"
    // note test, the assertion's unit and line).
    static const NpcTypeFormat& GetFormat();

private:
    NpcTypeStore<NpcTypeInfo> m_store;
};

extern const TableDesc kNpcTypeInfoDesc;
