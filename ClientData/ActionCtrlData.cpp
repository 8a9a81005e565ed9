#include "ClientData/ActionCtrlData.h"

#include <cinttypes>

#include "ClientData/ActionType.h"
#include "ClientData/Catalogue.h"
#include "ClientData/RecordRead.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

#define CTRL_SEGMENT(i)                                                      \
    FIELD_AT(ActionCtrlInfo, nTimePercent, i, "TimePercent" #i).Gen(0, 100), \
        FIELD_AT(ActionCtrlInfo, nMovePercent, i, "MovePercent" #i).Gen(0, 100)
const FieldDesc kCtrlFields[] = {
    FILE_FIELD(int64_t, "Key").FromTitle().Gen(1000001, 1),
    FIELD(ActionCtrlInfo, nSection, "Section").Gen(1, 4),
    CTRL_SEGMENT(0),
    CTRL_SEGMENT(1),
    CTRL_SEGMENT(2),
    CTRL_SEGMENT(3),
    CTRL_SEGMENT(4),
    CTRL_SEGMENT(5),
    CTRL_SEGMENT(6),
    CTRL_SEGMENT(7),
};
#undef CTRL_SEGMENT
const RecordDesc kCtrlRecord(kCtrlFields);

// The title as a decimal 64-bit number; 0 when it does not begin with one.
int64_t TitleKey(const char* szTitle)
{
    int64_t nKey = 0;
    if (CrtScanInt64(szTitle, &nKey) != SCAN_CONVERTED)
        return 0;
    return nKey;
}

// Only the signed remainder of "Section" by 8 counts: at most 7 segments,
// and a negative count reads none. The percentages beyond the count are not
// part of the record.
void SegmentsKeep(ActionCtrlInfo& info, const char* szPath, int nLine)
{
    const int32_t nGiven = info.nSection;
    info.nSection = nGiven % kActionCtrlSegmentMax;
    for (int i = info.nSection < 0 ? 0 : info.nSection; i < kActionCtrlSegmentMax; ++i)
        info.nTimePercent[i] = info.nMovePercent[i] = 0;
    if (nGiven != info.nSection && LoadFindingsWanted())
        LoadFindingReport(szPath, nLine, FINDING_WARNING, "segment-count",
                          "Section=%d keeps %d segments: only the remainder by 8 counts", nGiven, info.nSection);
}

}  // namespace

void CActionCtrlData::Load()
{
    const char* szPath = CatalogueFileOf<CActionCtrlData>();
    CIniSectionReader reader;
    if (!reader.Open(szPath, 1)) {
        LogSave("%s load error!", szPath);
        return;
    }
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        ActionCtrlInfo info = {};
        RecordReadSection(kCtrlRecord, reader, nSection, &info, szPath);
        SegmentsKeep(info, szPath, reader.GetTitleLine(nSection));
        const int64_t nKey = TitleKey(reader.GetTitle(nSection).data());
        if (!m_mapCtrl.emplace(nKey, info).second && LoadFindingsWanted())  // the first section wins
            LoadFindingReport(szPath, reader.GetTitleLine(nSection), FINDING_WARNING, "duplicate-id",
                              "key %" PRId64 " was given before: lookups answer the first section", nKey);
    }
    m_index.BuildFrom(m_mapCtrl);
}

void CActionCtrlData::Clear()
{
    m_mapCtrl.clear();
    m_index.Clear();
}

const ActionCtrlInfo* CActionCtrlData::Find(int64_t nKey) const
{
    const ActionCtrlInfo* const* ppInfo = m_index.Find(nKey);
    return ppInfo == nullptr ? nullptr : *ppInfo;
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

namespace {

const void* CtrlFind(CDataTable& table, const RecordKey& key)
{
    return static_cast<CActionCtrlData&>(table).GetActionCtrl(key.nNumber[0]);
}

}  // namespace

const TableDesc kActionCtrlDesc = {
    &kCtrlRecord, TABLE_KEY_NUMBERS, "Key",   &MapRecordsEach<CActionCtrlData, &CActionCtrlData::Ctrls>,
    &CtrlFind,    nullptr,           nullptr, 300};
