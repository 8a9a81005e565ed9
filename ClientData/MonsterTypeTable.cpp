#include "ClientData/MonsterTypeTable.h"

#include <new>

#include "ClientData/SectionKeys.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

// The keys in the order the format reads them.
const SectionKey kMonsterKeys[] = {
    SECTION_INT(MonsterTypeInfo, "SizeAdd", nSizeAdd, 0),
    SECTION_INT(MonsterTypeInfo, "ZoomPercent", nZoomPercent, 0),
    SECTION_INT(MonsterTypeInfo, "MaxLife", nMaxLife, 0),
    SECTION_INT(MonsterTypeInfo, "Level", nLevel, 0),
    SECTION_INT(MonsterTypeInfo, "WhiteBlack", nWhiteBlack, 0),
    SECTION_INT(MonsterTypeInfo, "ExtraExp", nExtraExp, 0),
    SECTION_INT(MonsterTypeInfo, "l_weapon", nLeftWeapon, 0),
    SECTION_INT(MonsterTypeInfo, "r_weapon", nRightWeapon, 0),
    // A monster without it shows its name label at the usual height.
    SECTION_INT(MonsterTypeInfo, "NameAltitude", nNameAltitude, 100),
    SECTION_INT(MonsterTypeInfo, "Battlelev", nBattleLev, 0),
    SECTION_INT(MonsterTypeInfo, "Sort", nSort, 0),
    SECTION_INT(MonsterTypeInfo, "NameHeight", nNameHeight, 0),
    SECTION_INT(MonsterTypeInfo, "LockDir", nLockDir, 0),
    SECTION_TEXT(MonsterTypeInfo, "Name", szName),
    SECTION_TEXT(MonsterTypeInfo, "DisappearEffect", szDisappearEffect),
    SECTION_TEXT(MonsterTypeInfo, "DisappearSound", szDisappearSound),
    SECTION_TEXT(MonsterTypeInfo, "effect", szEffect),
    SECTION_TEXT(MonsterTypeInfo, "attackeffect", szAttackEffect),
    SECTION_TEXT(MonsterTypeInfo, "appeareffect", szAppearEffect),
    SECTION_INT(MonsterTypeInfo, "DefyStatus", nDefyStatus, 0),
    SECTION_TEXT(MonsterTypeInfo, "DefyEffect", szDefyEffect),
};

// The title as "%d" reads it ("1005abc" is 1005); 0 when it holds no number.
int MonsterIdParse(std::string_view title)
{
    const char* szTitle = title.data();  // terminated by the reader
    int nId = 0;
    if (CrtScanInt32(szTitle, &nId) != SCAN_CONVERTED)
        return 0;
    return nId;
}

}  // namespace

CMonsterTypeTable::CMonsterTypeTable() { m_strFileName = "Monster.dat"; }

CMonsterTypeTable::~CMonsterTypeTable() = default;

void CMonsterTypeTable::Load()
{
    CIniSectionReader reader;
    if (!reader.Open(m_strFilePath.c_str(), 1)) {
        LogSave("error on open %s.", m_strFileName.c_str());
        return;
    }
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        const int nId = MonsterIdParse(reader.GetTitle(nSection));
        if (nId == 0)
            continue;
        std::unique_ptr<MonsterTypeInfo> pInfo(new (std::nothrow) MonsterTypeInfo());
        if (!pInfo)
            break;  // out of memory: keep what was read
        pInfo->nId = nId;
        SectionKeysRead(reader, nSection, kMonsterKeys, pInfo.get());
        m_setInfo.push_back(std::move(pInfo));
        ++m_nAmount;
    }
    BuildIndex();
}

void CMonsterTypeTable::Clear()
{
    m_mapId.clear();
    m_mapName.clear();
    m_setInfo.clear();
    m_nAmount = 0;
}

// Walking forward and letting each record replace the earlier one leaves
// exactly what a walk from the last record backwards would meet first.
void CMonsterTypeTable::BuildIndex()
{
    m_mapId.clear();
    m_mapName.clear();
    m_mapId.reserve(m_setInfo.size());
    m_mapName.reserve(m_setInfo.size());
    for (const std::unique_ptr<MonsterTypeInfo>& pInfo : m_setInfo) {
        IdEntry& entry = m_mapId.try_emplace(pInfo->nId, IdEntry{nullptr, false}).first->second;
        entry.pLast = pInfo.get();
        entry.bDefy = entry.bDefy || pInfo->nDefyStatus != 0;
        m_mapName[std::string_view(pInfo->szName)] = pInfo.get();
    }
}

const MonsterTypeInfo* CMonsterTypeTable::GetMonsterType(int nId)
{
    if (nId == 0)
        return nullptr;
    const auto it = m_mapId.find(nId);
    return it != m_mapId.end() ? it->second.pLast : nullptr;
}

const MonsterTypeInfo* CMonsterTypeTable::FindMonsterByName(const char* szName)
{
    if (szName == nullptr)
        return nullptr;
    const auto it = m_mapName.find(std::string_view(szName));
    return it != m_mapName.end() ? it->second : nullptr;
}

int CMonsterTypeTable::CanTakeStatus(int nId)
{
    if (nId == 0)
        return 1;
    const auto it = m_mapId.find(nId);
    return (it != m_mapId.end() && it->second.bDefy) ? 0 : 1;
}
