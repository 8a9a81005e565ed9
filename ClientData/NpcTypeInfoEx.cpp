#include "ClientData/NpcTypeInfoEx.h"

#include "ClientData/Catalogue.h"

namespace {

#define NPC(member, key) FIELD(NpcTypeInfoEx, member, key)
const FieldDesc kNpcExFields[] = {
    NPC(nId, "Id").FromTitle().Gen("NpcType%d", 3001, 1),
    NPC(szName, "Name").GenGbk(2, 6),
    NPC(nFixDir, "FixDir").Gen(0, 7),
    NPC(nZoomPercent, "ZoomPercent").Gen(90, 110),
    NPC(nLook, "Look").Gen(110, 299),
    NPC(nHead, "Head").Gen(1, 30),
    NPC(nHair, "Hair").Gen(1, 40),
    NPC(nArmor, "Armor").Gen(130010, 133000),
    NPC(nArmet, "Armet").Gen(111010, 113000).Sometimes(60),
    NPC(nRightWeapon, "RWeapon").Gen(420010, 423000),
    NPC(nLeftWeapon, "LWeapon").Gen(900010, 900500).Sometimes(30),
    NPC(nMisc, "Misc").Gen(0, 9).Sometimes(10),
    NPC(nMount, "Mount").Gen(200001, 200040).Sometimes(15),
    NPC(szEffect, "Effect").Gen("npc_halo%d", 1, 9).Sometimes(25),
    NPC(nStandByMotion, "StandByMotion").Gen(100, 110),
    NPC(nBlazeMotion, "BlazeMotion").Gen(120, 130).Sometimes(30),
    NPC(nBlazeMotion1, "BlazeMotion1").Gen(131, 140).Sometimes(20),
    NPC(nBlazeMotion2, "BlazeMotion2").Gen(141, 150).Sometimes(20),
    NPC(nRestMotion, "RestMotion").Gen(150, 160),
    NPC(szNote, "Note").Gen("null|NULL|shop|depot|task|teleport|guild", 0, 0),
    NPC(nMouseSign, "MouseSign").Gen(0, 12),
    NPC(nFrontBlock, "FrontBlock").Gen(0, 2).Sometimes(50),
    NPC(nBackBlock, "BackBlock").Gen(0, 2).Sometimes(50),
    NPC(nLeftBlock, "LeftBlock").Gen(0, 2).Sometimes(50),
    NPC(nRightBlock, "RightBlock").Gen(0, 2).Sometimes(50),
    NPC(nNameHeight, "NameHeight").Gen(0, 30),
    NPC(nFace3D, "Face3D").Gen(1, 60).Sometimes(40),
    NPC(nAlpha, "Alpha").Gen(50, 200).Sometimes(10),
    NPC(nScriptId, "ScriptID").Gen(10000, 19999).Sometimes(70),
};
#undef NPC

const NpcTypeFormat kNpcExFormat = {
    RecordDesc(kNpcExFields),
    offsetof(NpcTypeInfoEx, szNote),
    true,  // "null" and "Null" are no note either
    "ClientData\\NpcTypeInfoEx",
    34,
};

}  // namespace

const NpcTypeFormat& CNpcTypeInfoExTable::GetFormat() { return kNpcExFormat; }

CNpcTypeInfoExTable::CNpcTypeInfoExTable() { m_strFileName = CatalogueFileOf<CNpcTypeInfoExTable>(); }

void CNpcTypeInfoExTable::Load()
{
    // The placeholder of the failure is the bare name, not the path.
    m_store.Load(m_strFilePath.c_str(), m_strFileName.c_str(), kNpcExFormat);
}

const TableDesc kNpcTypeInfoExDesc = {&kNpcExFormat.record,
                                      TABLE_KEY_NUMBERS,
                                      "Id",
                                      &NpcTypeForEach<CNpcTypeInfoExTable>,
                                      &NpcTypeFind<CNpcTypeInfoExTable>,
                                      nullptr,
                                      nullptr,
                                      320};
