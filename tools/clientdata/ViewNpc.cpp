// Views of the two NPC type tables ("npc" for "ini/Npc.ini", "npc-ex" for
// "NewNpc.ini"), by NPC type id. A repeated id shows once, as the first-wins
// lookup answers it.
#include <cstdint>
#include <string>
#include <vector>

#include "ClientData/ClientDataMgr.h"
#include "ClientData/NpcTypeStore.h"
#include "TableView.h"

namespace {

// The records a table's lookup answers, in file order: of a repeated id only
// the one the first-wins lookup returns.
template <class Table, class Emit>
void EachAnsweredRecord(Table& table, Emit emit)
{
    for (const auto& pInfo : table.Records())
        if (table.GetNpcType(pInfo->nId) == pInfo.get())
            emit(*pInfo);
}

void NpcRecord(const NpcTypeInfo& info, ViewRecord& record)
{
    record.strKey = std::to_string(info.nId);
    record.AddInt("Id", info.nId);
    record.AddText("Name", info.szName);
    record.AddText("Effect", info.szEffect);
    record.AddInt("SimpleObjId", info.nSimpleObjId);
    record.AddInt("StandByMotion", info.nStandByMotion);
    record.AddInt("BlazeMotion", info.nBlazeMotion);
    record.AddInt("BlazeMotion1", info.nBlazeMotion1);
    record.AddInt("BlazeMotion2", info.nBlazeMotion2);
    record.AddInt("RestMotion", info.nRestMotion);
    record.AddText("Note", info.szNote);
    record.AddInt("ZoomPercent", info.nZoomPercent);
    record.AddInt("MouseSign", info.nMouseSign);
    record.AddInt("ChangeDir", info.nChangeDir);
    record.AddInt("FrontBlock", info.nFrontBlock);
    record.AddInt("BackBlock", info.nBackBlock);
    record.AddInt("LeftBlock", info.nLeftBlock);
    record.AddInt("RightBlock", info.nRightBlock);
    record.AddInt("LeftWeapon", info.nLeftWeapon);
    record.AddInt("RightWeapon", info.nRightWeapon);
}

void NpcExRecord(const NpcTypeInfoEx& info, ViewRecord& record)
{
    record.strKey = std::to_string(info.nId);
    record.AddInt("Id", info.nId);
    record.AddText("Name", info.szName);
    record.AddInt("FixDir", info.nFixDir);
    record.AddInt("ZoomPercent", info.nZoomPercent);
    record.AddInt("Look", info.nLook);
    record.AddInt("Head", info.nHead);
    record.AddInt("Hair", info.nHair);
    record.AddInt("Armor", info.nArmor);
    record.AddInt("Armet", info.nArmet);
    record.AddInt("RightWeapon", info.nRightWeapon);
    record.AddInt("LeftWeapon", info.nLeftWeapon);
    record.AddInt("Misc", info.nMisc);
    record.AddInt("Mount", info.nMount);
    record.AddText("Effect", info.szEffect);
    record.AddInt("StandByMotion", info.nStandByMotion);
    record.AddInt("BlazeMotion", info.nBlazeMotion);
    record.AddInt("BlazeMotion1", info.nBlazeMotion1);
    record.AddInt("BlazeMotion2", info.nBlazeMotion2);
    record.AddInt("RestMotion", info.nRestMotion);
    record.AddText("Note", info.szNote);
    record.AddInt("MouseSign", info.nMouseSign);
    record.AddInt("FrontBlock", info.nFrontBlock);
    record.AddInt("BackBlock", info.nBackBlock);
    record.AddInt("LeftBlock", info.nLeftBlock);
    record.AddInt("RightBlock", info.nRightBlock);
    record.AddInt("NameHeight", info.nNameHeight);
    record.AddInt("Face3D", info.nFace3D);
    record.AddInt("Alpha", info.nAlpha);
    record.AddInt("ScriptId", info.nScriptId);
}

void NpcAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    EachAnsweredRecord(*mgr.GetNpc(), [&](const NpcTypeInfo& info) {
        setRecord.emplace_back();
        NpcRecord(info, setRecord.back());
    });
}

bool NpcGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    uint32_t nId = 0;
    const NpcTypeInfo* pInfo = ViewSingleKeyU32(setKey, nId) ? mgr.GetNpc()->GetNpcType(nId) : nullptr;
    if (pInfo != nullptr)
        NpcRecord(*pInfo, record);
    return pInfo != nullptr;
}

void NpcExAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    EachAnsweredRecord(*mgr.GetNewNpc(), [&](const NpcTypeInfoEx& info) {
        setRecord.emplace_back();
        NpcExRecord(info, setRecord.back());
    });
}

bool NpcExGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    uint32_t nId = 0;
    const NpcTypeInfoEx* pInfo = ViewSingleKeyU32(setKey, nId) ? mgr.GetNewNpc()->GetNpcType(nId) : nullptr;
    if (pInfo != nullptr)
        NpcExRecord(*pInfo, record);
    return pInfo != nullptr;
}

const TableViewRegistration kNpcView({"npc", "NPC_TYPE_ID", &NpcAll, &NpcGet});
const TableViewRegistration kNpcExView({"npc-ex", "NPC_TYPE_ID", &NpcExAll, &NpcExGet});

}  // namespace
