// "ItemType.dat" through the item type table.
#include "ClientData/ItemTypeTable.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    const std::vector<std::string> setWord = FuzzWordsIn(pData, nSize);
    FuzzTableFile<CItemTypeTable>("ini/ItemType.dat", pData, nSize, [&](CItemTypeTable& table) {
        for (int64_t nId : setNumber) {
            const uint32_t idType = static_cast<uint32_t>(nId);
            FuzzCheckLength(table.GetItemName(idType), 256);
            if (const ItemTypeInfo* pInfo = table.FindItemType(idType)) {
                FUZZ_CHECK_TEXT(pInfo->szText);
                ItemTypeInfo copy;
                if (!table.GetItemType(idType, &copy) || copy.idType != pInfo->idType)
                    std::abort();
            }
            for (int nIndex = 0; nIndex <= 10; ++nIndex)
                table.GetIndexedValue(idType, nIndex);
        }
        for (const std::string& strWord : setWord)
            table.HasItemName(strWord.c_str());
        table.HasItemName(nullptr);
    });
    return 0;
}
