// The generic table, sectioned or column kind, read from a bare name (so
// through the resolved path) and from a fixed path. Every query slot is asked
// about records at both ends and one index past either end, with the input's
// numbers and words as ids and keys.
#include <algorithm>

#include "ClientData/Catalogue.h"
#include "ClientData/GenericTable.h"
#include "FuzzTable.h"

namespace {

// A bare-named and a fixed-path entry of the catalogue.
constexpr int kBareSlot = 13;   // "GameMap.ini"
constexpr int kFixedSlot = 19;  // "ini/GodArea.ini"
static_assert(CatalogueEntryOf(kBareSlot).szFile[0] == 'G' && CatalogueEntryOf(kFixedSlot).szFile[0] == 'i');

void CheckText(const char* szText)
{
    if (szText == nullptr)
        std::abort();  // every text query answers a string, "" at worst
    (void)std::strlen(szText);
}

void AskEverything(CGenericTable& table, const std::vector<int64_t>& setNumber, const std::vector<std::string>& setWord)
{
    // The first records, the last one and one past either end: the queries
    // are the same code for every record, and asking all of a large input
    // would slow the search without reaching anything new.
    const int nAmount = table.GetRecordAmount();
    for (int nIndex = -1; nIndex <= nAmount; nIndex = nIndex < 16 ? nIndex + 1 : std::max(nIndex + 1, nAmount - 1)) {
        const unsigned nId = table.GetRecordId(nIndex);
        const int nFound = table.FindRecord(nId);
        if (nIndex >= 0 && nIndex < nAmount && (nFound < 0 || nFound > nIndex || table.GetRecordId(nFound) != nId))
            std::abort();  // the first record of an id, never a later one
        CheckText(table.GetRecordTitle(nIndex));
        const int nFields = table.GetFieldAmount(nIndex);
        for (int nField = -1; nField <= nFields && nField < 64; ++nField) {
            CheckText(table.GetFieldText(nIndex, nField));
            CheckText(table.GetFieldName(nIndex, nField));
            table.GetFieldInt(nIndex, nField, 7);
        }
        for (const std::string& strWord : setWord) {
            CheckText(table.GetValueText(nIndex, strWord.c_str(), ""));
            table.GetValueInt(nIndex, strWord.c_str(), 7);
        }
        table.GetValueText(nIndex, nullptr, nullptr);
    }
    for (int64_t nNumber : setNumber)
        table.FindRecord(static_cast<unsigned>(nNumber));
    table.GetKind();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    const std::vector<std::string> setWord = FuzzWordsIn(pData, nSize);
    auto ask = [&](CGenericTable& table) { AskEverything(table, setNumber, setWord); };
    FuzzEnterScratchFolder();
    FuzzWriteFile("ini/GameMap.ini", pData, nSize);
    FuzzWriteFile("ini/GodArea.ini", pData, nSize);
    for (int nSlot : {kBareSlot, kFixedSlot})
        FuzzTableLifeOf<CGenericTable>([nSlot] { return new CGenericTable(CatalogueEntryOf(nSlot)); }, ask);
    return 0;
}
