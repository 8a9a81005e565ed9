#include "ClientData/MonsterTypeTable.h"


#include "ClientData/Catalogue.h"
#include "ClientData/RecordRead.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

const FieldDesc kMonsterFields[] = {
    FIELD(MonsterTypeInfo, nId, "Id").FromTitle().Gen(1001, 1),
    FIELD(MonsterTypeInfo, szName, "Name").GenGbk(2, 6),
    FIELD(MonsterTypeInfo, nSizeAdd, "SizeAdd").Gen(0, 5),
    FIELD(MonsterTypeInfo, nZoomPercent, "ZoomPercent").Gen(80, 200),
    FIELD(MonsterTypeInfo, nMaxLife, "MaxLife").Gen(60, 240000),
    FIELD(MonsterTypeInfo, nLevel, "Level").Gen(1, 140),
    FIELD(MonsterTypeInfo, nWhiteBlack, "WhiteBlack").Gen(0, 1).Sometimes(30),
    FIELD(MonsterTypeInfo, nBattleLev, "Battlelev").Gen(0, 14),
    // A monster without it shows its name label at the usual height.
    FIELD(MonsterTypeInfo, nNameAltitude, "NameAltitude").Default(100).Gen(90, 260).Sometimes(70),
    FIELD(MonsterTypeInfo, nSort, "Sort").Gen(0, 7),
    FIELD(MonsterTypeInfo, nExtraExp, "ExtraExp").Gen(0, 20),
    FIELD(MonsterTypeInfo, szDisappearEffect, "DisappearEffect").Gen("monster_die%d", 1, 12),
    FIELD(MonsterTypeInfo, szDisappearSound, "DisappearSound").Gen("sound/monster/die_%d.wav", 100, 180),
    FIELD(MonsterTypeInfo, nLeftWeapon, "l_weapon").Gen(410010, 419990).Sometimes(40),
    FIELD(MonsterTypeInfo, nRightWeapon, "r_weapon").Gen(420010, 429990).Sometimes(40),
    FIELD(MonsterTypeInfo, szEffect, "effect").Gen("mon_aura%d", 1, 30).Sometimes(50),
    FIELD(MonsterTypeInfo, nNameHeight, "NameHeight").Gen(0, 40),
    FIELD(MonsterTypeInfo, szAttackEffect, "attackeffect").Gen("mon_hit%d", 1, 40),
    FIELD(MonsterTypeInfo, szAppearEffect, "appeareffect").Gen("mon_born%d", 1, 9).Sometimes(60),
    FIELD(MonsterTypeInfo, nDefyStatus, "DefyStatus").Gen(1, 1).Sometimes(4),
    FIELD(MonsterTypeInfo, nLockDir, "LockDir").Gen(0, 1).Sometimes(4),
    FIELD(MonsterTypeInfo, szDefyEffect, "DefyEffect").Gen("boss_defy%d", 1, 5).Sometimes(4),
};
const RecordDesc kMonsterRecord(kMonsterFields);

// The title as "%d" reads it ("1005abc" is 1005); 0 when it holds no number.
int MonsterIdParse(const char* szTitle)
{
    int nId = 0;
    if (CrtScanInt32(szTitle, &nId) != SCAN_CONVERTED)
        return 0;
    return nId;
}

void TitleFindings(const char* szFile, const CIniSectionReader& reader, int nSection, int nId)
{
    const char* szTitle = reader.GetTitle(nSection).data();
    if (nId == 0)
        LoadFindingReport(szFile, reader.GetTitleLine(nSection), FINDING_ERROR, "bad-title",
                          "section [%s] has no id but 0: the monster is skipped", szTitle);
    else if (std::to_string(nId) != szTitle)
        LoadFindingReport(szFile, reader.GetTitleLine(nSection), FINDING_WARNING, "bad-title",
                          "section [%s] is read as id %d", szTitle, nId);
}

}  // namespace

CMonsterTypeTable::CMonsterTypeTable() { m_strFileName = CatalogueFileOf<CMonsterTypeTable>(); }

CMonsterTypeTable::~CMonsterTypeTable() = default;

void CMonsterTypeTable::Load()
{
    CIniSectionReader reader;
    const char* szPath = m_strFilePath.c_str();
    if (!reader.Open(szPath, 1)) {
        LogSave("error on open %s.", m_strFileName.c_str());
        return;
    }
    const std::size_t nFirst = m_arena.Size();
    std::vector<int> setLine;  // for findings
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        const int nId = MonsterIdParse(reader.GetTitle(nSection).data());
        if (LoadFindingsWanted())
            TitleFindings(szPath, reader, nSection, nId);
        if (nId == 0)
            continue;
        MonsterTypeInfo* pInfo = m_arena.Add();
        if (pInfo == nullptr)
            break;  // out of memory: keep what was read
        *pInfo = MonsterTypeInfo();
        pInfo->nId = nId;
        RecordReadSection(kMonsterRecord, reader, nSection, pInfo, szPath);
        if (LoadFindingsWanted())
            setLine.push_back(reader.GetTitleLine(nSection));
    }
    BuildIndex();
    if (LoadFindingsWanted())
        ReportShadowed(nFirst, setLine);
}

void CMonsterTypeTable::Clear()
{
    m_mapId.clear();
    m_mapName.clear();
    m_arena.Clear();
}

// Walking forward and letting each record replace the earlier one leaves
// exactly what a walk from the last record backwards would meet first.
void CMonsterTypeTable::BuildIndex()
{
    m_mapId.clear();
    m_mapName.clear();
    m_mapId.reserve(m_arena.Size());
    m_mapName.reserve(m_arena.Size());
    for (std::size_t i = 0; i < m_arena.Size(); ++i) {
        const MonsterTypeInfo* pInfo = &m_arena[i];
        IdEntry& entry = m_mapId.try_emplace(pInfo->nId, IdEntry{nullptr, false}).first->second;
        entry.pLast = pInfo;
        entry.bDefy = entry.bDefy || pInfo->nDefyStatus != 0;
        m_mapName[std::string_view(pInfo->szName)] = pInfo;
    }
}

// A record that neither lookup answers is read for nothing. What shadows a
// record of this load is a later one of the same load.
void CMonsterTypeTable::ReportShadowed(std::size_t nFirst, const std::vector<int>& setLine) const
{
    std::unordered_map<const MonsterTypeInfo*, int> mapLine;
    for (std::size_t i = nFirst; i < m_arena.Size(); ++i)
        mapLine.emplace(&m_arena[i], setLine[i - nFirst]);
    for (std::size_t i = nFirst; i < m_arena.Size(); ++i) {
        const MonsterTypeInfo& info = m_arena[i];
        const int nLine = setLine[i - nFirst];
        const MonsterTypeInfo* pById = m_mapId.at(info.nId).pLast;
        if (pById != &info)
            LoadFindingReport(m_strFilePath.c_str(), nLine, FINDING_WARNING, "duplicate-id",
                              "id %d is given again at line %d: lookups answer the later section", info.nId,
                              mapLine[pById]);
        const MonsterTypeInfo* pByName = m_mapName.at(std::string_view(info.szName));
        if (info.szName[0] != '\0' && pByName != &info && pByName->nId != info.nId)
            LoadFindingReport(m_strFilePath.c_str(), nLine, FINDING_WARNING, "duplicate-name",
                              "the name %s is given again at line %d: a lookup by name answers the later monster",
                              info.szName, mapLine[pByName]);
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

namespace {

void MonsterForEach(CDataTable& table, RecordSinkFn fn, void* pContext)
{
    CMonsterTypeTable& monsters = static_cast<CMonsterTypeTable&>(table);
    const CRecordArena<MonsterTypeInfo>& records = monsters.Records();
    for (std::size_t i = 0; i < records.Size(); ++i)
        if (monsters.GetMonsterType(records[i].nId) == &records[i])
            fn(&records[i], RecordKeyOf(records[i].nId), pContext);
}

const void* MonsterFind(CDataTable& table, const RecordKey& key)
{
    return static_cast<CMonsterTypeTable&>(table).GetMonsterType(static_cast<int>(key.nNumber[0]));
}

void MonsterVisit(CDataTable& table, const void* pRecord, FieldVisitor& visitor)
{
    const int nId = static_cast<const MonsterTypeInfo*>(pRecord)->nId;
    visitor.Number("CanTakeStatus", static_cast<CMonsterTypeTable&>(table).CanTakeStatus(nId));
}

}  // namespace

const TableDesc kMonsterTypeDesc = {&kMonsterRecord, TABLE_KEY_NUMBERS, "Id",    &MonsterForEach,
                                    &MonsterFind,    &MonsterVisit,     nullptr, 2000};
