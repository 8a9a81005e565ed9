#include "ClientData/ItemCategoryTable.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <new>
#include <string>

#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

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
    CIniSectionReader reader;
    if (!reader.Open("ini/ItemCategory.dat", 1)) {
        LogSave("ItemCategory.dat read error!");
        return;
    }
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        const std::string_view title = reader.GetTitle(nSection);
        std::string_view value;
        if (title.empty() || !reader.GetValue(nSection, "IDRange", value) || value.empty())
            continue;
        if (CrtCompareNoCase(value.data(), value.size(), "NULL", 4) == 0)
            continue;
        // A title met again extends the same category.
        Category& category = m_mapCategory.try_emplace(std::string(title)).first->second;
        RangesAdd(category, value);
    }
    for (auto& entry : m_mapCategory)
        MergedBuild(entry.second);
}

void CItemCategoryTable::RangesAdd(Category& category, std::string_view value)
{
    std::size_t nStart = 0;
    for (;;) {
        const std::size_t nComma = value.find(',', nStart);
        const std::size_t nEnd = nComma == std::string_view::npos ? value.size() : nComma;
        category.setRange.push_back(RangeParse(std::string(value.substr(nStart, nEnd - nStart))));
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
