// Views of the item type table ("item", by item type id) and the item
// category table ("item-category", by category name). Items are listed by
// id; categories in the order their file first names them, since the table
// keeps them by name. A repeated id or title shows once, as the lookup
// answers it.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "ClientData/ClientDataMgr.h"
#include "TableView.h"
#include "ZelGameBase/IniSectionReader.h"

namespace {

// The integer fields of an item record in layout order: a name, where the
// field lies, its element width and element count (an array's elements are
// shown as Name1, Name2, ...).
struct ItemField {
    const char* szName;
    std::size_t nOffset;
    std::size_t nWidth;
    std::size_t nCount;
};
template <class Field>
constexpr ItemField FieldOf(const char* szName, std::size_t nOffset)
{
    using Element = std::remove_all_extents_t<Field>;
    return {szName, nOffset, sizeof(Element), sizeof(Field) / sizeof(Element)};
}
#define VIEW_FIELD(name, field) FieldOf<decltype(ItemTypeInfo::field)>(name, offsetof(ItemTypeInfo, field))
const ItemField kFields[] = {
    VIEW_FIELD("AttrA", ucAttrA),   VIEW_FIELD("AttrB", usAttrB), VIEW_FIELD("AttrC", ucAttrC),
    VIEW_FIELD("AttrD", usAttrD),   VIEW_FIELD("AttrE", dwAttrE), VIEW_FIELD("AttrF", usAttrF),
    VIEW_FIELD("AttrG", dwAttrG),   VIEW_FIELD("AttrH", usAttrH), VIEW_FIELD("AttrI", dwAttrI),
    VIEW_FIELD("AttrJ", ucAttrJ),   VIEW_FIELD("AttrK", usAttrK), VIEW_FIELD("AttrL", dwAttrL),
    VIEW_FIELD("AttrM", usAttrM),   VIEW_FIELD("AttrN", dwAttrN), VIEW_FIELD("Indexed", usIndexed),
    VIEW_FIELD("AttrO", usAttrO),   VIEW_FIELD("AttrP", dwAttrP), VIEW_FIELD("AttrQ", usAttrQ),
    VIEW_FIELD("AttrR", dwAttrR),
};
#undef VIEW_FIELD

uint32_t FieldValue(const unsigned char* pField, std::size_t nWidth)
{
    if (nWidth == 1)
        return *pField;
    if (nWidth == 2) {
        uint16_t n = 0;
        std::memcpy(&n, pField, sizeof(n));
        return n;
    }
    uint32_t n = 0;
    std::memcpy(&n, pField, sizeof(n));
    return n;
}

void ItemRecord(CItemTypeTable& table, const ItemTypeInfo& info, ViewRecord& record)
{
    record.strKey = std::to_string(info.idType);
    record.AddInt("Id", info.idType);
    const std::string strName = info.strName.Get();
    record.AddText("Name", strName);
    const unsigned char* pRecord = reinterpret_cast<const unsigned char*>(&info);
    for (const ItemField& field : kFields) {
        for (std::size_t i = 0; i < field.nCount; ++i) {
            const std::string strName = field.nCount == 1 ? field.szName : field.szName + std::to_string(i + 1);
            record.AddInt(strName.c_str(), FieldValue(pRecord + field.nOffset + i * field.nWidth, field.nWidth));
        }
    }
    record.AddText("Text", info.szText);
    // Whether the client's name lookup finds it: names of 16 bytes or more never are.
    record.AddInt("NameFound", table.HasItemName(strName.c_str()) ? 1 : 0);
}

void ItemAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    CItemTypeTable& table = *mgr.GetItemType();
    for (const auto& item : table.Items()) {
        setRecord.emplace_back();
        ItemRecord(table, item.second, setRecord.back());
    }
}

bool ItemGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    uint32_t idType = 0;
    if (!ViewSingleKeyU32(setKey, idType))
        return false;
    CItemTypeTable& table = *mgr.GetItemType();
    const ItemTypeInfo* pInfo = table.FindItemType(idType);
    if (pInfo == nullptr)
        return false;
    ItemRecord(table, *pInfo, record);
    return true;
}

// Ranges as the file writes them: "n" for a single id, "low-high" otherwise.
void CategoryRecord(const std::string& strName, const std::vector<CItemCategoryTable::Range>& setRange,
                    ViewRecord& record)
{
    std::string strRanges;
    long long nIds = 0;
    for (const CItemCategoryTable::Range& range : setRange) {
        if (!strRanges.empty())
            strRanges += ",";
        strRanges += std::to_string(range.idLow);
        if (range.idHigh != range.idLow)
            strRanges += "-" + std::to_string(range.idHigh);
        if (range.idLow <= range.idHigh)
            nIds += static_cast<long long>(range.idHigh - range.idLow) + 1;
    }
    record.strKey = strName;
    record.AddText("Name", strName);
    record.AddText("IDRange", strRanges);
    record.AddInt("IdAmount", nIds);
}

void CategoryAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    CItemCategoryTable& table = *mgr.GetItemCategory();
    CIniSectionReader reader;
    if (!reader.Open("ini/ItemCategory.dat", 1))
        return;
    std::set<std::string> setSeen;
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        const std::string strTitle(reader.GetTitle(nSection));
        if (!setSeen.insert(strTitle).second)
            continue;
        if (const auto* pRanges = table.FindRanges(strTitle.c_str())) {
            setRecord.emplace_back();
            CategoryRecord(strTitle, *pRanges, setRecord.back());
        }
    }
}

bool CategoryGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    if (setKey.size() != 1)
        return false;
    const auto* pRanges = mgr.GetItemCategory()->FindRanges(setKey[0].c_str());
    if (pRanges == nullptr)
        return false;
    CategoryRecord(setKey[0], *pRanges, record);
    return true;
}

const TableViewRegistration kItem({"item", "ID", &ItemAll, &ItemGet});
const TableViewRegistration kItemCategory({"item-category", "NAME", &CategoryAll, &CategoryGet});

}  // namespace
