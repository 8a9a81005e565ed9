#include "ClientData/NpcTypeInfo.h"

#include "ClientData/Catalogue.h"

namespace {

#define NPC(member, key) FIELD(NpcTypeInfo, member, key)
const FieldDesc kNpcFields[] = {
    NPC(nId, "Id").FromTitle().Gen("NpcType%d", 1001, 1),
    NPC(szName, "Name").GenGbk(2, 6),
    NPC(szEffect, "Effect").Gen("npc_glow%d", 1, 20).Sometimes(30),
    NPC(nSimpleObjId, "SimpleObjID").Gen(1, 900),
    NPC(nStandByMotion, "StandByMotion").Gen(100, 110),
    NPC(nBlazeMotion, "BlazeMotion").Gen(120, 130),
    NPC(nBlazeMotion1, "BlazeMotion1").Gen(131, 140).Sometimes(40),
    NPC(nBlazeMotion2, "BlazeMotion2").Gen(141, 150).Sometimes(40),
    NPC(nRestMotion, "RestMotion").Gen(150, 160),
    NPC(szNote, "Note").Gen("NULL|shop|depot|task|teleport|guild", 0, 0),
    NPC(nZoomPercent, "ZoomPercent").Default(100).Gen(80, 150).Sometimes(50),
    NPC(nMouseSign, "MouseSign").Gen(0, 12),
    NPC(nChangeDir, "ChangeDir").Default(1).Gen(0, 0).Sometimes(20),
    NPC(nFrontBlock, "FrontBlock").Gen(0, 2),
    NPC(nBackBlock, "BackBlock").Gen(0, 2),
    NPC(nLeftBlock, "LeftBlock").Gen(0, 2),
    NPC(nRightBlock, "RightBlock").Gen(0, 2),
    NPC(nLeftWeapon, "l_weapon").Gen(410010, 410990).Sometimes(25),
    NPC(nRightWeapon, "r_weapon").Gen(420010, 420990).Sometimes(25),
};
#undef NPC

const NpcTypeFormat kNpcFormat = {
    RecordDesc(kNpcFields),
    offsetof(NpcTypeInfo, szNote),
    false,  // only "NULL" itself is no note
    "ClientData\\NpcTypeInfo",
    31,
};

}  // namespace

const NpcTypeFormat& CNpcTypeInfoTable::GetFormat() { return kNpcFormat; }

void CNpcTypeInfoTable::Load()
{
    // Always the fixed path: this table never reads the path the base builds.
    const char* szPath = CatalogueFileOf<CNpcTypeInfoTable>();
    m_store.Load(szPath, szPath, kNpcFormat);
}

const TableDesc kNpcTypeInfoDesc = {&kNpcFormat.record,
                                    TABLE_KEY_NUMBERS,
                                    "Id",
                                    &NpcTypeForEach<CNpcTypeInfoTable>,
                                    &NpcTypeFind<CNpcTypeInfoTable>,
                                    nullptr,
                                    nullptr,
                                    450};
