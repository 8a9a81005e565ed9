#include "ClientData/ActionCtrlData.h"

#include <cstdio>

#include "ClientData/ActionType.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

const char kFile[] = "ini/ActionCtrl.ini";

// The title as a decimal 64-bit number; 0 when it does not begin with one.
int64_t TitleKey(const char* szTitle)
{
    int64_t nKey = 0;
    if (CrtScanInt64(szTitle, &nKey) != SCAN_CONVERTED)
        return 0;
    return nKey;
}

}  // namespace

void CActionCtrlData::Load()
{
    CIniSectionReader reader;
    if (!reader.Open(kFile, 1)) {
        LogSave("%s load error!", kFile);
        return;
    }
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        ActionCtrlInfo info = {};
        // Signed remainder: at most 7 segments; a negative count reads none.
        info.nSection = reader.GetInt(nSection, "Section", 0) % kActionCtrlSegmentMax;
        for (int i = 0; i < info.nSection; ++i) {
            char szKey[32];
            std::snprintf(szKey, sizeof(szKey), "TimePercent%d", i);
            info.nTimePercent[i] = reader.GetInt(nSection, szKey, 0);
            std::snprintf(szKey, sizeof(szKey), "MovePercent%d", i);
            info.nMovePercent[i] = reader.GetInt(nSection, szKey, 0);
        }
        m_mapCtrl.emplace(TitleKey(reader.GetTitle(nSection).data()), info);  // first section wins
    }
}

const ActionCtrlInfo* CActionCtrlData::Find(int64_t nKey) const
{
    const auto it = m_mapCtrl.find(nKey);
    return it == m_mapCtrl.end() ? nullptr : &it->second;
}

void ActionCtrlKeys(int64_t nKey, int64_t (&nKeys)[kActionCtrlKeyAmount])
{
    nKeys[0] = nKey;
    nKeys[1] = nKey % 1000000 + 999000000;
    nKeys[2] = ActionKeyReplaceDigits(nKeys[1], 3, 5, 999);
    nKeys[3] = ActionKeyReplaceDigits(nKeys[2], 0, 2, 999);
}

const ActionCtrlInfo* CActionCtrlData::GetActionCtrl(int64_t nKey)
{
    // The client's chain then tries the last key three more times through
    // further replacements of groups 0-2 and 3-5, which cannot change it;
    // left out.
    int64_t nKeys[kActionCtrlKeyAmount];
    ActionCtrlKeys(nKey, nKeys);
    for (int64_t nTry : nKeys)
        if (const ActionCtrlInfo* pInfo = Find(nTry))
            return pInfo;
    return nullptr;
}
