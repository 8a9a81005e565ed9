#include "ClientData/ActionValueData.h"

#include <cinttypes>

#include "ClientData/Catalogue.h"
#include "ClientData/RecordRead.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

// A line: the key (a decimal 64-bit number) and the value.
const FieldDesc kValueFields[] = {
    FILE_FIELD(int64_t, "Key").FromTitle().Gen(1001001001, 1),
    FieldOf<int>("Value", 0).Gen(10, 70),
};
const RecordDesc kValueRecord(kValueFields);

constexpr int kDefaultValue = 33;

int BuiltInValue(int64_t nKey)
{
    const int64_t q = nKey % 1000;  // negative for a negative key
    if (q >= 100 && q <= 103)
        return 66;
    if (q == 110 || q == 120 || q == 121)
        return 25;
    if ((q >= 451 && q <= 453) || q == 460 || q == 465 || q == 470)
        return 10;
    return kDefaultValue;
}

}  // namespace

namespace {

constexpr uint64_t PowerOfTen(int nExponent)
{
    uint64_t n = 1;
    for (int i = 0; i < nExponent; ++i)
        n *= 10;
    return n;
}

// ActionKeyReplaceDigits with the digit positions fixed, so that its
// divisions are by constants. The parts below and above the group keep the
// key's sign, as truncating division leaves them; the sum wraps as the
// client's does.
template <int nFrom, int nTo>
int64_t DigitsReplaced(int64_t nKey, uint64_t nValue)
{
    constexpr uint64_t nLowScale = PowerOfTen(nFrom);
    constexpr uint64_t nHighScale = PowerOfTen(nTo + 1);
    const bool bNegative = nKey < 0;
    const uint64_t nMagnitude = bNegative ? 0 - static_cast<uint64_t>(nKey) : static_cast<uint64_t>(nKey);
    const uint64_t nOuter = nMagnitude / nHighScale * nHighScale + nMagnitude % nLowScale;
    return static_cast<int64_t>((bNegative ? 0 - nOuter : nOuter) + nValue * nLowScale);
}

}  // namespace

void ActionValueKeys(int64_t nKey, int64_t (&nKeys)[kActionValueKeyAmount])
{
    nKeys[0] = nKey;
    nKeys[1] = DigitsReplaced<0, 2>(nKey, 999);
    nKeys[2] = DigitsReplaced<3, 5>(nKey, 999);
    nKeys[3] = DigitsReplaced<6, 8>(nKey, 999);
    nKeys[4] = DigitsReplaced<9, 10>(nKey, 99);
    nKeys[5] = DigitsReplaced<6, 10>(nKey, 99999);
    nKeys[6] = DigitsReplaced<3, 8>(nKey, 999999);
    nKeys[7] = DigitsReplaced<3, 5>(DigitsReplaced<9, 10>(nKey, 999999), 999999);
}

void CActionValueData::Load()
{
    Clear();
    const char* szPath = CatalogueFileOf<CActionValueData>();
    CDataFileReader reader;
    if (!reader.Open(szPath, 1, ' '))
        return;
    for (int i = 0; i < reader.GetRecordAmount(); ++i) {
        const CDataRow* pRow = reader.GetRecord(i);
        char szKey[64];
        SafeStrCopy(szKey, sizeof(szKey), pRow->GetStr(0, ""));
        const char* pText = szKey;
        int64_t nKey = 0;
        if (CrtScanInt64(pText, &nKey) != SCAN_CONVERTED) {
            if (LoadFindingsWanted())
                LoadFindingReport(szPath, pRow->GetLine(), FINDING_ERROR, "bad-key",
                                  "%s is not a number: the line is skipped", szKey);
            continue;
        }
        int nValue = 0;
        RecordReadColumns(kValueRecord, *pRow, 0, &nValue, szPath);
        if (!m_mapValue.emplace(nKey, nValue).second && LoadFindingsWanted())  // the first line wins
            LoadFindingReport(szPath, pRow->GetLine(), FINDING_WARNING, "duplicate-id",
                              "key %" PRId64 " was given before: lookups answer the first line", nKey);
    }
    m_index.BuildFrom(m_mapValue);
}

void CActionValueData::Clear()
{
    m_mapValue.clear();
    m_index.Clear();
}

int CActionValueData::GetActionValue(int64_t nKey)
{
    if (m_mapValue.empty())
        return BuiltInValue(nKey);
    int64_t nKeys[kActionValueKeyAmount];
    ActionValueKeys(nKey, nKeys);
    for (int64_t nTry : nKeys) {
        const int* pValue = m_index.Find(nTry);
        if (pValue != nullptr)
            return *pValue;
    }
    return kDefaultValue;
}

namespace {

// The value the lookup answers is no record of the table: a wildcard or the
// built-in rule may give it. It is handed out from one place per call.
const void* ValueFind(CDataTable& table, const RecordKey& key)
{
    static int s_nAnswer;
    s_nAnswer = static_cast<CActionValueData&>(table).GetActionValue(key.nNumber[0]);
    return &s_nAnswer;
}

}  // namespace

const TableDesc kActionValueDesc = {
    &kValueRecord, TABLE_KEY_NUMBERS, "Key",   &MapRecordsEach<CActionValueData, &CActionValueData::Values>,
    &ValueFind,    nullptr,           nullptr, 600};
