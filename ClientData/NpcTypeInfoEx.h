// NPC types from "NewNpc.ini": NPCs dressed like player characters (look,
// head, hair, armour, helmet, weapons, mount, 3D face, script id). One
// section [NpcType<id>] per type; the first section of an id wins.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ClientData/DataTable.h"
#include "ClientData/NpcTypeStore.h"

// Read by the client by layout. Keys in parentheses; missing keys are 0 or
// empty.
struct NpcTypeInfoEx {
    uint32_t nId;        // from the section title after "NpcType"
    char szName[16];     // "Name"
    int nFixDir;         // "FixDir"
    int nZoomPercent;    // "ZoomPercent"
    int nLook;           // "Look"
    int nHead;           // "Head"
    int nHair;           // "Hair"
    int nArmor;          // "Armor"
    int nArmet;          // "Armet": the helmet
    int nRightWeapon;    // "RWeapon"
    int nLeftWeapon;     // "LWeapon"
    int nMisc;           // "Misc"
    int nMount;          // "Mount"
    char szEffect[16];   // "Effect": at most 15 characters kept
    int nStandByMotion;  // "StandByMotion"
    int nBlazeMotion;    // "BlazeMotion"
    int nBlazeMotion1;   // "BlazeMotion1"
    int nBlazeMotion2;   // "BlazeMotion2"
    int nRestMotion;     // "RestMotion"
    char szNote[128];    // "Note"; "NULL" in any case reads as empty
    int nMouseSign;      // "MouseSign"
    int nFrontBlock;     // "FrontBlock"
    int nBackBlock;      // "BackBlock"
    int nLeftBlock;      // "LeftBlock"
    int nRightBlock;     // "RightBlock"
    int nNameHeight;     // "NameHeight"
    int nFace3D;         // "Face3D"
    int nAlpha;          // "Alpha"
    int nScriptId;       // "ScriptID"
};

class CNpcTypeInfoExTable : public CDataTable {
public:
    CNpcTypeInfoExTable() { m_strFileName = "NewNpc.ini"; }
    ~CNpcTypeInfoExTable() = default;
    ZEL_DELETING_DESTRUCTOR

    // Reads m_strFilePath (empty until BuildFilePath); an unreadable file logs
    // "NewNpc.ini load error!".
    void Load() override;
    void Clear() override { m_store.Clear(); }

    // Slot 7: the first record in file order with that id; null on a miss.
    // Valid until the next Clear or Load.
    virtual const NpcTypeInfoEx* GetNpcType(uint32_t nId) { return m_store.Find(nId); }

    std::size_t GetLoadedAmount() const { return m_store.GetAmount(); }
    // Every record read, in file order (for tools).
    const std::vector<std::unique_ptr<NpcTypeInfoEx>>& Records() const { return m_store.Records(); }
    // How this file differs from the other NPC file (keys, defaults, the
    // "NULL" note test, the assertion's unit and line).
    static const NpcTypeFormat& GetFormat();

private:
    NpcTypeStore<NpcTypeInfoEx> m_store;
};
