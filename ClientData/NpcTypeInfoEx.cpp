#include "ClientData/NpcTypeInfoEx.h"

namespace {

#define NPC_INT(key, field) SECTION_INT(NpcTypeInfoEx, key, field, 0)
#define NPC_TEXT(key, field) SECTION_TEXT(NpcTypeInfoEx, key, field)
const SectionKey kNpcExKeys[] = {
    NPC_TEXT("Name", szName),
    NPC_TEXT("Effect", szEffect),
    NPC_TEXT("Note", szNote),
    NPC_INT("FixDir", nFixDir),
    NPC_INT("ZoomPercent", nZoomPercent),
    NPC_INT("Look", nLook),
    NPC_INT("Head", nHead),
    NPC_INT("Hair", nHair),
    NPC_INT("Armor", nArmor),
    NPC_INT("Armet", nArmet),
    NPC_INT("RWeapon", nRightWeapon),
    NPC_INT("LWeapon", nLeftWeapon),
    NPC_INT("Misc", nMisc),
    NPC_INT("Mount", nMount),
    NPC_INT("StandByMotion", nStandByMotion),
    NPC_INT("BlazeMotion", nBlazeMotion),
    NPC_INT("BlazeMotion1", nBlazeMotion1),
    NPC_INT("BlazeMotion2", nBlazeMotion2),
    NPC_INT("RestMotion", nRestMotion),
    NPC_INT("MouseSign", nMouseSign),
    NPC_INT("FrontBlock", nFrontBlock),
    NPC_INT("BackBlock", nBackBlock),
    NPC_INT("LeftBlock", nLeftBlock),
    NPC_INT("RightBlock", nRightBlock),
    NPC_INT("NameHeight", nNameHeight),
    NPC_INT("Face3D", nFace3D),
    NPC_INT("Alpha", nAlpha),
    NPC_INT("ScriptID", nScriptId),
};
#undef NPC_INT
#undef NPC_TEXT

const NpcTypeFormat kNpcExFormat = {
    kNpcExKeys, sizeof(kNpcExKeys) / sizeof(kNpcExKeys[0]), offsetof(NpcTypeInfoEx, szNote),
    true,  // "null" and "Null" are no note either
    "ClientData\\NpcTypeInfoEx", 34,
};

}  // namespace

const NpcTypeFormat& CNpcTypeInfoExTable::GetFormat() { return kNpcExFormat; }

void CNpcTypeInfoExTable::Load()
{
    // The placeholder of the failure is the bare name, not the path.
    m_store.Load(m_strFilePath.c_str(), m_strFileName.c_str(), kNpcExFormat);
}
