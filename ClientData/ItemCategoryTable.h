// Item categories from "ini/ItemCategory.dat": each section names a category
// and its "IDRange" key lists item type ids and ranges of them, such as
// "1000-1005,2000". The client asks whether an item type belongs to a
// category, or for every id of a category.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "ClientData/DataTable.h"
#include "ClientData/TableDesc.h"

class CItemCategoryTable : public CDataTable {
public:
    // Both bounds inclusive; a range written high-first holds no id.
    struct Range {
        uint32_t idLow;
        uint32_t idHigh;
    };

    CItemCategoryTable() = default;
    ~CItemCategoryTable() = default;
    ZEL_DELETING_DESTRUCTOR

    // Reads "ini/ItemCategory.dat" (a fixed path) and appends its ranges to
    // the categories already held; a section whose IDRange is empty or "NULL"
    // (any case) adds nothing.
    void Load() override;
    void Clear() override;

    // Slot 7: 1 when some range of category szName (compared byte for byte)
    // holds idType, else 0 (also for an unknown category or a null name).
    virtual int IsInCategory(const char* szName, uint32_t idType);
    // Slot 8: appends to *pOut every id of every range of category szName,
    // range by range in file order, each from low up to high. Appends
    // nothing for an unknown category or a null name or output. A category
    // that would give more than kMaxExpandedIds ids stops there. *pOut is the
    // client's array, grown by its own rule; when it cannot grow, nothing is
    // appended.
    virtual void GetCategoryIds(const char* szName, CClientArray<uint32_t>* pOut);

    // Categories held.
    std::size_t GetLoadedAmount() const { return m_mapCategory.size(); }
    // A category's ranges in file order; null when unknown.
    const std::vector<Range>* FindRanges(const char* szName) const;
    // Every category held, by name.
    template <class Fn>
    void ForEachCategory(Fn fn) const
    {
        for (const auto& entry : m_mapCategory)
            fn(entry.first, entry.second.setRange);
    }

    // Guards the caller against a garbage range such as 0-4000000000.
    static constexpr std::size_t kMaxExpandedIds = std::size_t(1) << 24;

private:
    struct Category {
        std::vector<Range> setRange;   // file order, as written
        std::vector<Range> setMerged;  // the non-empty ranges, sorted and merged
    };

    void RangesAdd(Category& category, std::string_view value, const char* szPath, int nLine);
    static void MergedBuild(Category& category);
    const Category* CategoryFind(const char* szName) const;

    std::map<std::string, Category, std::less<>> m_mapCategory;
};

extern const TableDesc kItemCategoryDesc;
