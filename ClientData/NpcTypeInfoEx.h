// NPC types from "NewNpc.ini": NPCs dressed like player characters (look,
// head, hair, armour, helmet, weapons, mount, 3D face, script id). One
// section [NpcType<id>] per type; the first section of an id wins.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ClientData/DataTable.h"
#include "ClientData/NpcTypeStore.h"
#include "ClientData/TableDesc.h"

// Read by the client by layout. Each field's key is stated once, in the
// table's description (kNpcTypeInfoExDesc); missing keys are 0 or empty.
struct NpcTypeInfoEx {
    uint32_t nId;  // from the section title after "NpcType"
    char szName[16];
    int nFixDir;
    int nZoomPercent;
    int nLook;
    int nHead;
    int nHair;
    int nArmor;
    int nArmet;  // the helmet
    int nRightWeapon;
    int nLeftWeapon;
    int nMisc;
    int nMount;
    char szEffect[16];  // at most 15 characters kept
    int nStandByMotion;
    int nBlazeMotion;
    int nBlazeMotion1;
    int nBlazeMotion2;
    int nRestMotion;
    char szNote[128];  // "NULL" in any case reads as empty
    int nMouseSign;
    int nFrontBlock;
    int nBackBlock;
    int nLeftBlock;
    int nRightBlock;
    int nNameHeight;
    int nFace3D;
    int nAlpha;
    int nScriptId;
};

class CNpcTypeInfoExTable : public CDataTable {
public:
    CNpcTypeInfoExTable();
    ~CNpcTypeInfoExTable() = default;
    ZEL_DELETING_DESTRUCTOR

    // Reads m_strFilePath (empty until BuildFilePath); an unreadable file logs
    // "<file name> load error!".
    void Load() override;
    void Clear() override { m_store.Clear(); }

    // Slot 7: the first record in file order with that id; null on a miss.
    // Valid until the next Clear or Load.
    virtual const NpcTypeInfoEx* GetNpcType(uint32_t nId) { return m_store.Find(nId); }

    std::size_t GetLoadedAmount() const { return m_store.GetAmount(); }
    // Every record read, in file order.
    const std::vector<std::unique_ptr<NpcTypeInfoEx>>& Records() const { return m_store.Records(); }
    // How this file differs from the other NPC file (description, the "NULL"
    // note test, the assertion's unit and line).
    static const NpcTypeFormat& GetFormat();

private:
    NpcTypeStore<NpcTypeInfoEx> m_store;
};

extern const TableDesc kNpcTypeInfoExDesc;
