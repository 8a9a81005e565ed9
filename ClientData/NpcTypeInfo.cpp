#include "ClientData/NpcTypeInfo.h"

#include <string>

namespace {

#define NPC_INT(key, field, def) SECTION_INT(NpcTypeInfo, key, field, def)
#define NPC_TEXT(key, field) SECTION_TEXT(NpcTypeInfo, key, field)
const SectionKey kNpcKeys[] = {
    NPC_TEXT("Name", szName),
    NPC_TEXT("Effect", szEffect),
    NPC_TEXT("Note", szNote),
    NPC_INT("SimpleObjID", nSimpleObjId, 0),
    NPC_INT("StandByMotion", nStandByMotion, 0),
    NPC_INT("BlazeMotion", nBlazeMotion, 0),
    NPC_INT("BlazeMotion1", nBlazeMotion1, 0),
    NPC_INT("BlazeMotion2", nBlazeMotion2, 0),
    NPC_INT("RestMotion", nRestMotion, 0),
    NPC_INT("ZoomPercent", nZoomPercent, 100),
    NPC_INT("MouseSign", nMouseSign, 0),
    NPC_INT("ChangeDir", nChangeDir, 1),
    NPC_INT("FrontBlock", nFrontBlock, 0),
    NPC_INT("BackBlock", nBackBlock, 0),
    NPC_INT("LeftBlock", nLeftBlock, 0),
    NPC_INT("RightBlock", nRightBlock, 0),
    NPC_INT("l_weapon", nLeftWeapon, 0),
    NPC_INT("r_weapon", nRightWeapon, 0),
};
#undef NPC_INT
#undef NPC_TEXT

const NpcTypeFormat kNpcFormat = {
    kNpcKeys, sizeof(kNpcKeys) / sizeof(kNpcKeys[0]), offsetof(NpcTypeInfo, szNote),
    false,  // only "NULL" itself is no note
    "ClientData\\NpcTypeInfo", 31,
};

}  // namespace

const NpcTypeFormat& CNpcTypeInfoTable::GetFormat() { return kNpcFormat; }

void CNpcTypeInfoTable::Load()
{
    // Built in place: this table never reads the path the base builds.
    const std::string strPath = std::string("ini/") + "Npc.ini";
    m_store.Load(strPath.c_str(), strPath.c_str(), kNpcFormat);
}
