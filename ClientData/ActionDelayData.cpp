#include "ClientData/ActionDelayData.h"

#include "ClientData/Catalogue.h"
#include "ClientData/RecordRead.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

const FieldDesc kDelayFields[] = {
    FILE_FIELD(uint32_t, "Action").FromTitle().Gen(100, 1),
    FIELD(ActionDelayInfo, WoundDelay, "WoundDelay").Gen(50, 400),
    FIELD(ActionDelayInfo, BlockDelay, "BlockDelay").Gen(50, 300),
    FIELD(ActionDelayInfo, DieDelay, "DieDelay").Gen(200, 1000),
};
const RecordDesc kDelayRecord(kDelayFields);

}  // namespace

void CActionDelayData::Load()
{
    const char* szPath = CatalogueFileOf<CActionDelayData>();
    CIniSectionReader reader;
    if (!reader.Open(szPath, 1)) {
        LogSave("%s load error!", szPath);
        return;
    }
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        // The title converts as atol does: a non-numeric title is action 0.
        const uint32_t nAction = static_cast<uint32_t>(CrtAtoi(reader.GetTitle(nSection).data()));
        ActionDelayInfo info;
        RecordReadSection(kDelayRecord, reader, nSection, &info, szPath);
        if (!m_mapDelay.emplace(nAction, info).second && LoadFindingsWanted())  // the first section wins
            LoadFindingReport(szPath, reader.GetTitleLine(nSection), FINDING_WARNING, "duplicate-id",
                              "action %u was given before: lookups answer the first section", nAction);
    }
}

const ActionDelayInfo* CActionDelayData::GetActionDelay(uint32_t nAction)
{
    const auto it = m_mapDelay.find(nAction);
    return it == m_mapDelay.end() ? nullptr : &it->second;
}

namespace {

const void* DelayFind(CDataTable& table, const RecordKey& key)
{
    return static_cast<CActionDelayData&>(table).GetActionDelay(static_cast<uint32_t>(key.nNumber[0]));
}

}  // namespace

const TableDesc kActionDelayDesc = {
    &kDelayRecord, TABLE_KEY_NUMBERS, "Action", &MapRecordsEach<CActionDelayData, &CActionDelayData::Delays>,
    &DelayFind,    nullptr,           nullptr,  200};
