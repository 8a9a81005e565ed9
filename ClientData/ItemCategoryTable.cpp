#include "ClientData/ItemCategoryTable.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <new>
#include <string>

#include "ClientData/Catalogue.h"
#include "ClientData/RecordRead.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

// A section: the category's name, and the item type ids that belong to it,
// "1000-1005,2000" (or "NULL" for none).
const FieldDesc kCategoryFields[] = {
    FILE_FIELD(char[64], "Name").FromTitle().Gen("Helmet|Necklace|Armor|Ring|Boots|Blade|Sword|Bow|Wand|Gem", 0, 0),
    FILE_FIELD(char[1024], "IDRange").Gen("%d-%d", 100000, 1500000),
};
const RecordDesc kCategoryRecord(kCategoryFields);
const char* const kIdRangeKey = kCategoryFields[1].szKey;

// Whether a piece is what the range syntax means: "n" or "n-m".
bool RangeWellFormed(const std::string& strPiece)
{
    const char* p = strPiece.c_str();
    const auto digits = [&p] {
        const char* pStart = p;
        while (*p >= '0' && *p <= '9')
            ++p;
        return p != pStart;
    };
    if (!digits())
        return false;
    if (*p == '-') {
        ++p;
        if (!digits())
            return false;
    }
    return *p == '\0';
}

// One comma-separated piece: "n" is the range (n, n); anything holding a '-'
// is read as "%d-%d", a bound that does not parse staying 0.
CItemCategoryTable::Range RangeParse(const std::string& strPiece)
{
    if (strPiece.find('-') == std::string::npos) {
        const uint32_t id = static_cast<uint32_t>(CrtAtoi(strPiece.c_str()));
        return {id, id};
    }
    int32_t nLow = 0;
    int32_t nHigh = 0;
    const char* pText = strPiece.c_str();
    if (CrtScanInt32(pText, &nLow) == SCAN_CONVERTED && *pText == '-') {
        ++pText;
        CrtScanInt32(pText, &nHigh);
    }
    return {static_cast<uint32_t>(nLow), static_cast<uint32_t>(nHigh)};
}

}  // namespace

void CItemCategoryTable::Load()
{
    const char* szPath = CatalogueFileOf<CItemCategoryTable>();
    CIniSectionReader reader;
    if (!reader.Open(szPath, 1)) {
        LogSave("ItemCategory.dat read error!");
        return;
    }
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        const std::string_view title = reader.GetTitle(nSection);
        std::string_view value;
        if (title.empty() || !reader.GetValue(nSection, kIdRangeKey, value) || value.empty())
            continue;
        if (CrtCompareNoCase(value.data(), value.size(), "NULL", 4) == 0) {
            if (LoadFindingsWanted())
                LoadFindingReport(szPath, reader.GetTitleLine(nSection), FINDING_NOTE, "no-range",
                                  "%s=%s: the section adds no id to [%s]", kIdRangeKey, value.data(), title.data());
            continue;
        }
        // A title met again extends the same category.
        Category& category = m_mapCategory.try_emplace(std::string(title)).first->second;
        RangesAdd(category, value, szPath, reader.GetKeyLine(nSection, reader.FindKey(nSection, kIdRangeKey)));
    }
    for (auto& entry : m_mapCategory)
        MergedBuild(entry.second);
}

void CItemCategoryTable::RangesAdd(Category& category, std::string_view value, const char* szPath, int nLine)
{
    std::size_t nStart = 0;
    for (;;) {
        const std::size_t nComma = value.find(',', nStart);
        const std::size_t nEnd = nComma == std::string_view::npos ? value.size() : nComma;
        const std::string strPiece(value.substr(nStart, nEnd - nStart));
        category.setRange.push_back(RangeParse(strPiece));
        if (LoadFindingsWanted() && !RangeWellFormed(strPiece))
            LoadFindingReport(szPath, nLine, FINDING_WARNING, "bad-range", "the piece \"%s\" is read as %u-%u",
                              strPiece.c_str(), category.setRange.back().idLow, category.setRange.back().idHigh);
        else if (LoadFindingsWanted() && category.setRange.back().idLow > category.setRange.back().idHigh)
            LoadFindingReport(szPath, nLine, FINDING_WARNING, "reversed-range",
                              "the range %s runs high to low: it holds no id", strPiece.c_str());
        if (nComma == std::string_view::npos)
            break;
        nStart = nComma + 1;
    }
}

// The lookup index for IsInCategory: the ranges that hold ids, sorted by low
// bound and merged where they overlap or touch.
void CItemCategoryTable::MergedBuild(Category& category)
{
    std::vector<Range>& setMerged = category.setMerged;
    setMerged.clear();
    for (const Range& range : category.setRange)
        if (range.idLow <= range.idHigh)
            setMerged.push_back(range);
    std::sort(setMerged.begin(), setMerged.end(), [](const Range& a, const Range& b) { return a.idLow < b.idLow; });
    std::size_t nKept = 0;
    for (const Range& range : setMerged) {
        Range& last = setMerged[nKept == 0 ? 0 : nKept - 1];
        if (nKept > 0 && (last.idHigh == UINT32_MAX || range.idLow <= last.idHigh + 1))
            last.idHigh = std::max(last.idHigh, range.idHigh);
        else
            setMerged[nKept++] = range;
    }
    setMerged.resize(nKept);
}

void CItemCategoryTable::Clear() { m_mapCategory.clear(); }

const CItemCategoryTable::Category* CItemCategoryTable::CategoryFind(const char* szName) const
{
    if (szName == nullptr)
        return nullptr;
    const auto it = m_mapCategory.find(std::string_view(szName));
    return it == m_mapCategory.end() ? nullptr : &it->second;
}

const std::vector<CItemCategoryTable::Range>* CItemCategoryTable::FindRanges(const char* szName) const
{
    const Category* pCategory = CategoryFind(szName);
    return pCategory == nullptr ? nullptr : &pCategory->setRange;
}

int CItemCategoryTable::IsInCategory(const char* szName, uint32_t idType)
{
    const Category* pCategory = CategoryFind(szName);
    if (pCategory == nullptr)
        return 0;
    const std::vector<Range>& setMerged = pCategory->setMerged;
    // The last merged range starting at or below idType is the only candidate.
    const auto it = std::upper_bound(setMerged.begin(), setMerged.end(), idType,
                                     [](uint32_t id, const Range& range) { return id < range.idLow; });
    return it != setMerged.begin() && idType <= std::prev(it)->idHigh ? 1 : 0;
}

void CItemCategoryTable::GetCategoryIds(const char* szName, CClientArray<uint32_t>* pOut)
{
    const Category* pCategory = CategoryFind(szName);
    if (pCategory == nullptr || pOut == nullptr)
        return;
    // One growth for the whole answer.
    uint64_t nTotal = 0;
    for (const Range& range : pCategory->setRange)
        if (range.idLow <= range.idHigh)
            nTotal = std::min<uint64_t>(kMaxExpandedIds, nTotal + (uint64_t{range.idHigh} - range.idLow + 1));
    std::size_t nAmount = static_cast<std::size_t>(nTotal);
    if (!pOut->ReserveMore(nAmount))
        return;
    for (const Range& range : pCategory->setRange) {
        if (range.idLow > range.idHigh)
            continue;
        // Counted without overflow: the range may end at the top id.
        for (uint32_t id = range.idLow; nAmount > 0; ++id) {
            pOut->PushBack(id);
            --nAmount;
            if (id == range.idHigh)
                break;
        }
    }
}

namespace {

void CategoryForEach(CDataTable& table, RecordSinkFn fn, void* pContext)
{
    static_cast<CItemCategoryTable&>(table).ForEachCategory(
        [&](const std::string& strName, const std::vector<CItemCategoryTable::Range>& setRange) {
            // A name holding a zero byte is no C string a lookup could pass.
            if (strName.find('\0') == std::string::npos)
                fn(&setRange, RecordKey{0, {0, 0, 0, 0}, strName.c_str()}, pContext);
        });
}

const void* CategoryFind(CDataTable& table, const RecordKey& key)
{
    return static_cast<CItemCategoryTable&>(table).FindRanges(key.szName);
}

// The ranges as the file writes them, and how many ids they hold.
void CategoryVisit(CDataTable&, const void* pRecord, FieldVisitor& visitor)
{
    const auto& setRange = *static_cast<const std::vector<CItemCategoryTable::Range>*>(pRecord);
    std::string strRanges;
    uint64_t nIds = 0;
    for (const CItemCategoryTable::Range& range : setRange) {
        strRanges += strRanges.empty() ? "" : ",";
        strRanges += range.idLow == range.idHigh ? std::to_string(range.idLow)
                                                 : std::to_string(range.idLow) + "-" + std::to_string(range.idHigh);
        nIds += range.idLow <= range.idHigh ? uint64_t{range.idHigh} - range.idLow + 1 : 0;
    }
    visitor.Text(kIdRangeKey, strRanges.c_str());
    visitor.Number("IdAmount", static_cast<int64_t>(nIds));
}

}  // namespace

const TableDesc kItemCategoryDesc = {&kCategoryRecord, TABLE_KEY_NAME, "Name",  &CategoryForEach,
                                     &CategoryFind,    &CategoryVisit, nullptr, 10};
