// "ini/ItemCategory.dat" through the item category table.
#include "ClientData/ItemCategoryTable.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    const std::vector<std::string> setWord = FuzzWordsIn(pData, nSize);
    FuzzTableFile<CItemCategoryTable>("ini/ItemCategory.dat", pData, nSize, [&](CItemCategoryTable& table) {
        CClientArray<uint32_t> setId;
        for (const std::string& strWord : setWord) {
            // The expansion of a wide range is bounded (kMaxExpandedIds) but
            // takes long; expand only categories of modest size.
            uint64_t nIds = 0;
            if (const auto* pRanges = table.FindRanges(strWord.c_str()))
                for (const CItemCategoryTable::Range& range : *pRanges)
                    nIds += range.idHigh >= range.idLow ? uint64_t(range.idHigh) - range.idLow + 1 : 0;
            setId.Clear();
            if (nIds <= 65536)
                table.GetCategoryIds(strWord.c_str(), &setId);
            for (int64_t nId : setNumber)
                table.IsInCategory(strWord.c_str(), static_cast<uint32_t>(nId));
            for (std::size_t i = 0; i < setId.size() && i < 8; ++i)
                if (!table.IsInCategory(strWord.c_str(), setId[i]))
                    std::abort();  // every id the category lists is in it
        }
        table.IsInCategory(nullptr, 0);
    });
    return 0;
}
