#include "ClientData/ItemTypeTable.h"

#include <cstddef>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

// A run of consecutive integer columns stored into consecutive fields of one
// width.
struct ColumnRun {
    std::size_t nOffset;
    std::size_t nWidth;
    std::size_t nCount;
};

// A field (scalar or array) as a run of columns; the width comes from the
// field's own type, so the struct is the one place that states it.
template <class Field>
constexpr ColumnRun ColumnsOf(std::size_t nOffset)
{
    using Element = std::remove_all_extents_t<Field>;
    return {nOffset, sizeof(Element), sizeof(Field) / sizeof(Element)};
}
#define ITEM_COLUMNS(field) ColumnsOf<decltype(ItemTypeInfo::field)>(offsetof(ItemTypeInfo, field))

// Columns 2 to 53 in file order.
constexpr ColumnRun kColumnRuns[] = {
    ITEM_COLUMNS(ucAttrA), ITEM_COLUMNS(usAttrB), ITEM_COLUMNS(ucAttrC), ITEM_COLUMNS(usAttrD), ITEM_COLUMNS(dwAttrE),
    ITEM_COLUMNS(usAttrF), ITEM_COLUMNS(dwAttrG), ITEM_COLUMNS(usAttrH), ITEM_COLUMNS(dwAttrI), ITEM_COLUMNS(ucAttrJ),
    ITEM_COLUMNS(usAttrK), ITEM_COLUMNS(dwAttrL), ITEM_COLUMNS(usAttrM), ITEM_COLUMNS(dwAttrN), ITEM_COLUMNS(usIndexed),
    ITEM_COLUMNS(usAttrO), ITEM_COLUMNS(dwAttrP), ITEM_COLUMNS(usAttrQ), ITEM_COLUMNS(dwAttrR),
};
#undef ITEM_COLUMNS

constexpr int kFirstIntColumn = 2;
constexpr int kTextColumn = 54;

constexpr std::size_t ColumnAmount()
{
    std::size_t nAmount = 0;
    for (const ColumnRun& run : kColumnRuns)
        nAmount += run.nCount;
    return nAmount;
}
static_assert(ColumnAmount() == kTextColumn - kFirstIntColumn, "columns 2 to 53 each have a field");

constexpr bool WidthsKnown()
{
    for (const ColumnRun& run : kColumnRuns)
        if (run.nWidth != 1 && run.nWidth != 2 && run.nWidth != 4)
            return false;
    return true;
}
static_assert(WidthsKnown(), "FieldStore handles 8-, 16- and 32-bit fields");

// Stores the low nWidth bytes' worth of nValue (the value cut to the field).
void FieldStore(unsigned char* pField, std::size_t nWidth, uint32_t nValue)
{
    if (nWidth == 1) {
        const uint8_t n = static_cast<uint8_t>(nValue);
        std::memcpy(pField, &n, sizeof(n));
    } else if (nWidth == 2) {
        const uint16_t n = static_cast<uint16_t>(nValue);
        std::memcpy(pField, &n, sizeof(n));
    } else {
        std::memcpy(pField, &nValue, sizeof(nValue));
    }
}

// The first line "Amount=<n>" (column 0, cut to 59 characters); false when
// it does not begin with "Amount=" followed by a number.
bool AmountParse(const char* szField, uint32_t& nAmount)
{
    char szLine[60];
    SafeStrCopy(szLine, sizeof(szLine), szField);
    static const char kPrefix[] = "Amount=";
    if (std::strncmp(szLine, kPrefix, sizeof(kPrefix) - 1) != 0)
        return false;
    const char* pText = szLine + sizeof(kPrefix) - 1;
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

CItemTypeTable::CItemTypeTable() { m_strFileName = "ItemType.dat"; }

void CItemTypeTable::Load()
{
    CDataFileReader reader;
    if (!reader.Open(m_strFilePath.c_str(), 1, ' ')) {
        LogSave("error on open %s.", m_strFileName.c_str());
        return;
    }
    const CDataRow* pFirst = reader.GetRecord(0);
    if (pFirst == nullptr || !AmountParse(pFirst->GetStr(0, ""), m_nAmount))
        return;

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

        // The first record of an id stays; later ones are dropped unread.
        const uint32_t idType = static_cast<uint32_t>(pRow->GetInt(0, 0));
        auto [it, bAdded] = m_mapItem.try_emplace(idType);
        if (!bAdded)
            continue;
        ItemTypeInfo& info = it->second;
        info.idType = idType;
        info.strName.Set(szName);
        RecordRead(*pRow, info);
    }
}

void CItemTypeTable::RecordRead(const CDataRow& row, ItemTypeInfo& info) const
{
    unsigned char* pRecord = reinterpret_cast<unsigned char*>(&info);
    int nColumn = kFirstIntColumn;
    for (const ColumnRun& run : kColumnRuns)
        for (std::size_t i = 0; i < run.nCount; ++i)
            FieldStore(pRecord + run.nOffset + i * run.nWidth, run.nWidth,
                       static_cast<uint32_t>(row.GetInt(nColumn++, 0)));
    SafeStrCopy(info.szText, sizeof(info.szText), row.GetStr(kTextColumn, ""));
}

// A name is added unless some entry, cut to its first 15 characters, equals
// it. A name of 16 characters or more never equals a cut entry, so it is
// added again for every record that carries it; the client's data has always
// been read this way, and HasItemName never finds such a name.
void CItemTypeTable::NameListAdd(const char* szName)
{
    const std::size_t nLength = BoundedLength(szName, kNameCompareSize);
    if (nLength < kNameCompareSize && m_setNameKey.find(std::string_view(szName, nLength)) != m_setNameKey.end())
        return;
    m_setName.emplace_back(szName);
    m_setNameKey.emplace(szName, nLength < kNameCompareSize ? nLength : kNameCompareSize - 1);
}

void CItemTypeTable::Clear() { m_mapItem.clear(); }

const char* CItemTypeTable::GetItemName(uint32_t idType)
{
    const auto it = m_mapItem.find(idType);
    return it == m_mapItem.end() ? nullptr : it->second.strName.Get();
}

const ItemTypeInfo* CItemTypeTable::FindItemType(uint32_t idType)
{
    const auto it = m_mapItem.find(idType);
    return it == m_mapItem.end() ? nullptr : &it->second;
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
    return m_setNameKey.find(std::string_view(szName, nLength)) != m_setNameKey.end();
}

uint32_t CItemTypeTable::GetIndexedValue(uint32_t idType, int nIndex)
{
    if (nIndex < 1 || nIndex > 9)
        return 0;
    const ItemTypeInfo* pInfo = FindItemType(idType);
    return pInfo == nullptr ? 0 : pInfo->usIndexed[nIndex - 1];
}
