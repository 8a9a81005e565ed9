#include "ClientData/ItemTypeTable.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "ClientData/Catalogue.h"
#include "ClientData/RecordRead.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

#define ITEM(member, key) FIELD(ItemTypeInfo, member, key)
#define ITEM_AT(member, i, key) FIELD_AT(ItemTypeInfo, member, i, key)
// Columns 0 to 54 in file order.
const FieldDesc kItemFields[] = {
    ITEM(idType, "Id").FromTitle().Gen(100000, 3),
    ITEM(strName, "Name").GenGbk(2, 6),
    ITEM_AT(ucAttrA, 0, "AttrA0").Gen(1, 15),
    ITEM_AT(ucAttrA, 1, "AttrA1").Gen(0, 9),
    ITEM_AT(ucAttrA, 2, "AttrA2").Gen(0, 9),
    ITEM_AT(ucAttrA, 3, "AttrA3").Gen(0, 9),
    ITEM_AT(ucAttrA, 4, "AttrA4").Gen(0, 9),
    ITEM_AT(usAttrB, 0, "AttrB0").Gen(1, 130),
    ITEM_AT(usAttrB, 1, "AttrB1").Gen(0, 2000),
    ITEM_AT(usAttrB, 2, "AttrB2").Gen(0, 2000),
    ITEM_AT(usAttrB, 3, "AttrB3").Gen(0, 2000),
    ITEM(ucAttrC, "AttrC").Gen(0, 4),
    ITEM(usAttrD, "AttrD").Gen(1, 99),
    ITEM_AT(dwAttrE, 0, "AttrE0").Gen(10, 5000),
    ITEM_AT(dwAttrE, 1, "AttrE1").Gen(0, 300),
    ITEM_AT(usAttrF, 0, "AttrF0").Gen(0, 5000),
    ITEM_AT(usAttrF, 1, "AttrF1").Gen(0, 5000),
    ITEM_AT(usAttrF, 2, "AttrF2").Gen(0, 5000),
    ITEM_AT(usAttrF, 3, "AttrF3").Gen(0, 5000),
    ITEM_AT(usAttrF, 4, "AttrF4").Gen(0, 5000),
    ITEM(dwAttrG, "AttrG").Gen(0, 100000),
    ITEM_AT(usAttrH, 0, "AttrH0").Gen(0, 999),
    ITEM_AT(usAttrH, 1, "AttrH1").Gen(0, 999),
    ITEM(dwAttrI, "AttrI").Gen(0, 100000),
    ITEM_AT(ucAttrJ, 0, "AttrJ0").Gen(0, 100),
    ITEM_AT(ucAttrJ, 1, "AttrJ1").Gen(0, 100),
    ITEM_AT(ucAttrJ, 2, "AttrJ2").Gen(0, 100),
    ITEM_AT(ucAttrJ, 3, "AttrJ3").Gen(0, 100),
    ITEM_AT(ucAttrJ, 4, "AttrJ4").Gen(0, 100),
    ITEM_AT(ucAttrJ, 5, "AttrJ5").Gen(0, 100),
    ITEM_AT(usAttrK, 0, "AttrK0").Gen(0, 3000),
    ITEM_AT(usAttrK, 1, "AttrK1").Gen(0, 3000),
    ITEM_AT(usAttrK, 2, "AttrK2").Gen(0, 3000),
    ITEM_AT(usAttrK, 3, "AttrK3").Gen(0, 3000),
    ITEM(dwAttrL, "AttrL").Gen(0, 50000),
    ITEM(usAttrM, "AttrM").Gen(0, 1000),
    ITEM(dwAttrN, "AttrN").Gen(0, 86400),
    ITEM_AT(usIndexed, 0, "Indexed1").Gen(0, 60000),
    ITEM_AT(usIndexed, 1, "Indexed2").Gen(0, 60000),
    ITEM_AT(usIndexed, 2, "Indexed3").Gen(0, 60000),
    ITEM_AT(usIndexed, 3, "Indexed4").Gen(0, 60000),
    ITEM_AT(usIndexed, 4, "Indexed5").Gen(0, 60000),
    ITEM_AT(usIndexed, 5, "Indexed6").Gen(0, 60000),
    ITEM_AT(usIndexed, 6, "Indexed7").Gen(0, 60000),
    ITEM_AT(usIndexed, 7, "Indexed8").Gen(0, 60000),
    ITEM_AT(usIndexed, 8, "Indexed9").Gen(0, 60000),
    ITEM_AT(usAttrO, 0, "AttrO0").Gen(0, 800),
    ITEM_AT(usAttrO, 1, "AttrO1").Gen(0, 800),
    ITEM_AT(usAttrO, 2, "AttrO2").Gen(0, 800),
    ITEM_AT(dwAttrP, 0, "AttrP0").Gen(0, 2000000),
    ITEM_AT(dwAttrP, 1, "AttrP1").Gen(0, 2000000),
    ITEM_AT(dwAttrP, 2, "AttrP2").Gen(0, 2000000),
    ITEM(usAttrQ, "AttrQ").Gen(0, 9),
    ITEM(dwAttrR, "AttrR").Gen(0, 1000999).Sometimes(10),
    ITEM(szText, "Text").GenGbk(4, 30),
};
#undef ITEM
#undef ITEM_AT
static_assert(sizeof(kItemFields) / sizeof(kItemFields[0]) == 55, "a line holds 55 columns");
const RecordDesc kItemRecord(kItemFields);

// The first line announces how many record lines follow.
const FieldDesc kAmountFields[] = {FILE_FIELD(uint32_t, "Amount")};
const RecordDesc kAmountRecord(kAmountFields);

// The first line "Amount=<n>" (column 0, cut to 59 characters); false when
// it does not begin with "Amount=" followed by a number.
bool AmountParse(const char* szField, uint32_t& nAmount)
{
    char szLine[60];
    SafeStrCopy(szLine, sizeof(szLine), szField);
    const char* szKey = kAmountFields[0].szKey;
    const std::size_t nKeyLength = std::strlen(szKey);
    if (std::strncmp(szLine, szKey, nKeyLength) != 0 || szLine[nKeyLength] != '=')
        return false;
    const char* pText = szLine + nKeyLength + 1;
    return CrtScanUInt32(pText, &nAmount) == SCAN_CONVERTED;
}

// Length of szText, counting no further than nLimit.
std::size_t BoundedLength(const char* szText, std::size_t nLimit)
{
    std::size_t nLength = 0;
    while (nLength < nLimit && szText[nLength] != '\0')
        ++nLength;
    return nLength;
}

}  // namespace

CShortTextSet::Slot CShortTextSet::SlotOf(const char* pText, std::size_t nLength)
{
    unsigned char bytes[sizeof(Slot)] = {};
    std::memcpy(bytes, pText, nLength);
    bytes[sizeof(Slot) - 1] = static_cast<unsigned char>(nLength + 1);
    Slot slot;
    std::memcpy(&slot, bytes, sizeof(slot));
    return slot;
}

std::size_t CShortTextSet::Probe(const Slot& key) const
{
    const std::size_t nMask = m_setSlot.size() - 1;
    // The high half of a product depends on every bit of its factor: it is
    // folded into the low bits that pick the slot.
    uint64_t nHash = (key.nLow * 0x9E3779B97F4A7C15ull ^ key.nHigh) * 0xC2B2AE3D27D4EB4Full;
    nHash ^= nHash >> 32;
    for (std::size_t i = static_cast<std::size_t>(nHash) & nMask;; i = (i + 1) & nMask) {
        const Slot& slot = m_setSlot[i];
        if (slot == key || (slot.nLow == 0 && slot.nHigh == 0))
            return i;
    }
}

bool CShortTextSet::Has(const char* pText, std::size_t nLength) const
{
    if (m_nAmount == 0 || nLength > kMaxLength)
        return false;
    const Slot key = SlotOf(pText, nLength);
    return m_setSlot[Probe(key)] == key;
}

void CShortTextSet::Add(const char* pText, std::size_t nLength)
{
    if (nLength > kMaxLength)
        return;
    // At most half full, so that a miss ends soon.
    if (2 * (m_nAmount + 1) > m_setSlot.size())
        Grow();
    const Slot key = SlotOf(pText, nLength);
    Slot& slot = m_setSlot[Probe(key)];
    if (slot == key)
        return;
    slot = key;
    ++m_nAmount;
}

void CShortTextSet::Grow()
{
    std::vector<Slot> setOld(std::max<std::size_t>(64, 2 * m_setSlot.size()), Slot{0, 0});
    setOld.swap(m_setSlot);
    for (const Slot& slot : setOld)
        if (slot.nLow != 0 || slot.nHigh != 0)
            m_setSlot[Probe(slot)] = slot;
}

CItemTypeTable::CItemTypeTable() { m_strFileName = CatalogueFileOf<CItemTypeTable>(); }

void CItemTypeTable::Load()
{
    CDataFileReader reader;
    if (!reader.Open(m_strFilePath.c_str(), 1, ' ')) {
        LogSave("error on open %s.", m_strFileName.c_str());
        return;
    }
    const char* szPath = m_strFilePath.c_str();
    const CDataRow* pFirst = reader.GetRecord(0);
    if (pFirst == nullptr || !AmountParse(pFirst->GetStr(0, ""), m_nAmount)) {
        if (LoadFindingsWanted())
            LoadFindingReport(szPath, pFirst != nullptr ? pFirst->GetLine() : 0, FINDING_ERROR, "bad-amount",
                              "the first line does not announce %s=<records>: nothing is read", kAmountFields[0].szKey);
        return;
    }

    // Lines past the announced amount are ignored; an absent line still counts.
    const int nLineAmount = reader.GetRecordAmount();
    uint32_t nCounted = 0;
    for (int nLine = 1; nCounted < m_nAmount && nLine < nLineAmount; ++nLine, ++nCounted) {
        const CDataRow* pRow = reader.GetRecord(nLine);
        if (pRow == nullptr)
            continue;
        char szName[CEncryptString::MAXESTR];
        SafeStrCopy(szName, sizeof(szName), pRow->GetStr(1, ""));
        NameListAdd(szName);
        if (LoadFindingsWanted() && std::strlen(szName) >= kNameCompareSize)
            LoadFindingReport(szPath, pRow->GetLine(), FINDING_WARNING, "long-name",
                              "a name of %u bytes is never found by name: only 15 take part",
                              static_cast<unsigned>(std::strlen(szName)));

        // The first record of an id stays; later ones are dropped unread.
        const uint32_t idType = static_cast<uint32_t>(pRow->GetInt(0, 0));
        auto [it, bAdded] = m_mapItem.try_emplace(idType);
        if (!bAdded) {
            if (LoadFindingsWanted())
                LoadFindingReport(szPath, pRow->GetLine(), FINDING_WARNING, "duplicate-id",
                                  "item type %u was read before: this line is dropped", idType);
            continue;
        }
        ItemTypeInfo& info = it->second;
        info.idType = idType;
        RecordReadColumns(kItemRecord, *pRow, 0, &info, szPath);
    }
    m_index.BuildFrom(m_mapItem);
    if (LoadFindingsWanted())
        AmountFindings(szPath, reader, nCounted);
}

// The announced amount against the lines that follow it.
void CItemTypeTable::AmountFindings(const char* szPath, const CDataFileReader& reader, uint32_t nCounted) const
{
    const int nLines = reader.GetRecordAmount() - 1;
    const int nFirstLine = reader.GetRecord(0)->GetLine();
    if (nCounted < m_nAmount)
        LoadFindingReport(szPath, nFirstLine, FINDING_WARNING, "amount-high",
                          "%u records are announced but only %u lines follow", m_nAmount, nCounted);
    else if (static_cast<uint32_t>(nLines) > m_nAmount)
        LoadFindingReport(szPath, reader.GetRecord(static_cast<int>(m_nAmount) + 1)->GetLine(), FINDING_ERROR,
                          "amount-low", "%u records are announced: this line and the %u after it are not read",
                          m_nAmount, static_cast<uint32_t>(nLines) - m_nAmount - 1);
}

// A name is added unless some entry, cut to its first 15 characters, equals
// it. A name of 16 characters or more never equals a cut entry, so it is
// added again for every record that carries it; the client's data has always
// been read this way, and HasItemName never finds such a name.
void CItemTypeTable::NameListAdd(const char* szName)
{
    const std::size_t nLength = BoundedLength(szName, kNameCompareSize);
    if (nLength < kNameCompareSize && m_setNameKey.Has(szName, nLength))
        return;
    m_setName.emplace_back(szName);
    m_setNameKey.Add(szName, nLength < kNameCompareSize ? nLength : kNameCompareSize - 1);
}

void CItemTypeTable::Clear()
{
    m_mapItem.clear();
    m_index.Clear();
}

const char* CItemTypeTable::GetItemName(uint32_t idType)
{
    const ItemTypeInfo* pInfo = CItemTypeTable::FindItemType(idType);
    return pInfo == nullptr ? nullptr : pInfo->strName.Get();
}

const ItemTypeInfo* CItemTypeTable::FindItemType(uint32_t idType)
{
    const ItemTypeInfo* const* ppInfo = m_index.Find(idType);
    return ppInfo == nullptr ? nullptr : *ppInfo;
}

bool CItemTypeTable::GetItemType(uint32_t idType, ItemTypeInfo* pInfo)
{
    const ItemTypeInfo* pFound = FindItemType(idType);
    if (pFound == nullptr || pInfo == nullptr)
        return false;
    *pInfo = *pFound;  // a plain copy, the scrambled name with its key
    return true;
}

bool CItemTypeTable::HasItemName(const char* szName)
{
    if (szName == nullptr)
        return false;
    const std::size_t nLength = BoundedLength(szName, kNameCompareSize);
    if (nLength >= kNameCompareSize)
        return false;
    return m_setNameKey.Has(szName, nLength);
}

uint32_t CItemTypeTable::GetIndexedValue(uint32_t idType, int nIndex)
{
    if (nIndex < 1 || nIndex > 9)
        return 0;
    const ItemTypeInfo* pInfo = FindItemType(idType);
    return pInfo == nullptr ? 0 : pInfo->usIndexed[nIndex - 1];
}

namespace {

const void* ItemFind(CDataTable& table, const RecordKey& key)
{
    return static_cast<CItemTypeTable&>(table).FindItemType(static_cast<uint32_t>(key.nNumber[0]));
}

// Whether a lookup by name finds the record's name (only 15 characters take part).
void ItemVisit(CDataTable& table, const void* pRecord, FieldVisitor& visitor)
{
    const ItemTypeInfo& info = *static_cast<const ItemTypeInfo*>(pRecord);
    visitor.Number("NameFound", static_cast<CItemTypeTable&>(table).HasItemName(info.strName.Get()) ? 1 : 0);
}

}  // namespace

const TableDesc kItemTypeDesc = {
    &kItemRecord, TABLE_KEY_NUMBERS, "Id",           &MapRecordsEach<CItemTypeTable, &CItemTypeTable::Items>,
    &ItemFind,    &ItemVisit,        &kAmountRecord, 3000};
