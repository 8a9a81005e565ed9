#include "ClientData/ActionEffectOffsetData.h"

#include "ClientData/Catalogue.h"
#include "ClientData/RecordRead.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

const FieldDesc kOffsetFields[] = {
    // id * 10000 + variant * 10 + sub-variant
    FILE_FIELD(int32_t, "Number").FromTitle().Gen(10000, 1),
    FIELD(ActionEffectOffset, nOffsetX, "nOffsetX").Gen(-40, 40),
    FIELD(ActionEffectOffset, nOffsetY, "nOffsetY").Gen(-40, 40),
    // Most effects sit at the ground; the key is left out then.
    FIELD(ActionEffectOffset, nOffsetZ, "nOffsetZ").Gen(10, 220).Sometimes(70),
};
const RecordDesc kOffsetRecord(kOffsetFields);

}  // namespace

void CActionEffectOffsetData::Load()
{
    const char* szPath = CatalogueFileOf<CActionEffectOffsetData>();
    CIniSectionReader reader;
    if (!reader.Open(szPath, 1))
        return;
    const std::size_t nFirst = m_setOffset.size();
    std::vector<int> setLine;  // each new record's title line, for findings
    m_setOffset.reserve(nFirst + static_cast<std::size_t>(reader.GetSectionAmount()));
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        const int nNumber = CrtAtoi(reader.GetTitle(nSection).data());
        if (nNumber <= 0) {
            if (LoadFindingsWanted())
                LoadFindingReport(szPath, reader.GetTitleLine(nSection), FINDING_ERROR, "bad-title",
                                  "section [%s] is not a number above 0: skipped", reader.GetTitle(nSection).data());
            continue;
        }
        ActionEffectOffset offset;
        offset.nId = nNumber / 10000;
        offset.nVariant = nNumber % 10000 / 10;
        offset.nSubVariant = nNumber % 10;
        RecordReadSection(kOffsetRecord, reader, nSection, &offset, szPath);
        m_setOffset.push_back(offset);
        if (LoadFindingsWanted())
            setLine.push_back(reader.GetTitleLine(nSection));
    }
    // The records this load added join the index behind the earlier ones.
    for (std::size_t i = nFirst; i < m_setOffset.size(); ++i) {
        const ActionEffectOffset& offset = m_setOffset[i];
        const bool bFirst = m_mapFirst.emplace(Key(offset.nId, offset.nVariant, offset.nSubVariant), i).second;
        if (!bFirst && LoadFindingsWanted())
            LoadFindingReport(szPath, setLine[i - nFirst], FINDING_WARNING, "duplicate-id",
                              "id %d, variant %d, sub-variant %d were given before: lookups answer the first",
                              offset.nId, offset.nVariant, offset.nSubVariant);
    }
}

void CActionEffectOffsetData::Clear()
{
    m_setOffset.clear();
    m_mapFirst.clear();
}

const ActionEffectOffset* CActionEffectOffsetData::GetActionEffectOffset(int nId, int nVariant, int nSubVariant)
{
    const auto it = m_mapFirst.find(Key(nId, nVariant, nSubVariant));
    return it == m_mapFirst.end() ? nullptr : &m_setOffset[it->second];
}

namespace {

void OffsetForEach(CDataTable& table, RecordSinkFn fn, void* pContext)
{
    CActionEffectOffsetData& offsets = static_cast<CActionEffectOffsetData&>(table);
    for (const ActionEffectOffset& offset : offsets.Offsets())
        if (offsets.GetActionEffectOffset(offset.nId, offset.nVariant, offset.nSubVariant) == &offset)
            fn(&offset, RecordKey{3, {offset.nId, offset.nVariant, offset.nSubVariant, 0}, nullptr}, pContext);
}

const void* OffsetFind(CDataTable& table, const RecordKey& key)
{
    return static_cast<CActionEffectOffsetData&>(table).GetActionEffectOffset(
        static_cast<int>(key.nNumber[0]), static_cast<int>(key.nNumber[1]), static_cast<int>(key.nNumber[2]));
}

}  // namespace

const TableDesc kActionEffectOffsetDesc = {
    &kOffsetRecord, TABLE_KEY_NUMBERS, "Id Variant SubVariant", &OffsetForEach, &OffsetFind, nullptr, nullptr, 300};
