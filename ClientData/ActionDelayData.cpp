#include "ClientData/ActionDelayData.h"

#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {
const char kFile[] = "ini/ActionDelay.ini";
}

void CActionDelayData::Load()
{
    CIniSectionReader reader;
    if (!reader.Open(kFile, 1)) {
        LogSave("%s load error!", kFile);
        return;
    }
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        // The title converts as atol does: a non-numeric title is action 0.
        const uint32_t nAction = static_cast<uint32_t>(CrtAtoi(reader.GetTitle(nSection).data()));
        ActionDelayInfo info;
        info.WoundDelay = static_cast<uint32_t>(reader.GetInt(nSection, "WoundDelay", 0));
        info.BlockDelay = static_cast<uint32_t>(reader.GetInt(nSection, "BlockDelay", 0));
        info.DieDelay = static_cast<uint32_t>(reader.GetInt(nSection, "DieDelay", 0));
        m_mapDelay.emplace(nAction, info);  // first section wins
    }
}

const ActionDelayInfo* CActionDelayData::GetActionDelay(uint32_t nAction)
{
    const auto it = m_mapDelay.find(nAction);
    return it == m_mapDelay.end() ? nullptr : &it->second;
}
