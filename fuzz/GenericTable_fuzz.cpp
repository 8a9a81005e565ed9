// The generic tables of both kinds, read from a bare name (so through the
// resolved path) and from a fixed path. Every query slot is asked about
// records at both ends and one index past either end, with the input's
// numbers and words as ids, names and keys.
#include <algorithm>

#include "ClientData/Catalogue.h"
#include "ClientData/GenericTable.h"
#include "FuzzTable.h"

namespace {

// Bare-named and fixed-path entries of the catalogue, of each kind.
constexpr int kBareSlot = 13;    // sections
constexpr int kFixedSlot = 19;   // sections
constexpr int kColumnSlot = 73;  // columns
static_assert(CatalogueEntryOf(kColumnSlot).kind == CatalogueKind::COLUMNS);

// As atoi reads a title: blanks, a sign, then a digit.
bool TitleHoldsNumber(const char* szTitle)
{
    while (*szTitle == ' ' || (*szTitle >= '\t' && *szTitle <= '\r'))
        ++szTitle;
    if (*szTitle == '+' || *szTitle == '-')
        ++szTitle;
    return *szTitle >= '0' && *szTitle <= '9';
}

void CheckText(const char* szText)
{
    if (szText == nullptr)
        std::abort();  // every text query answers a string, "" at worst
    (void)std::strlen(szText);
}

void AskEverything(IGenericTable& table, const std::vector<int64_t>& setNumber, const std::vector<std::string>& setWord)
{
    // The first records, the last one and one past either end: the queries
    // are the same code for every record, and asking all of a large input
    // would slow the search without reaching anything new.
    const int nAmount = table.GetRecordAmount();
    for (int nIndex = -1; nIndex <= nAmount; nIndex = nIndex < 16 ? nIndex + 1 : std::max(nIndex + 1, nAmount - 1)) {
        const unsigned nId = table.GetRecordId(nIndex);
        const int nFound = table.FindRecord(nId);
        // The first record of an id, never a later one. A record whose title
        // holds no number has no id: FindRecord(0) answers a record titled 0.
        if (nIndex >= 0 && nIndex < nAmount && TitleHoldsNumber(table.GetRecordTitle(nIndex)) &&
            (nFound < 0 || nFound > nIndex || table.GetRecordId(nFound) != nId))
            std::abort();
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
    for (const std::string& strWord : setWord) {
        const int nFound = table.FindRecordByName(strWord.c_str());
        if (nFound >= 0 && std::strcmp(table.GetRecordTitle(nFound), strWord.c_str()) != 0)
            std::abort();  // a name finds the record titled so
    }
    table.GetKind();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    const std::vector<std::string> setWord = FuzzWordsIn(pData, nSize);
    auto ask = [&](IGenericTable& table) { AskEverything(table, setNumber, setWord); };
    FuzzEnterScratchFolder();
    for (int nSlot : {kBareSlot, kFixedSlot, kColumnSlot})
        FuzzWriteFile(CatalogueDataPath(CatalogueEntryOf(nSlot).szFile), pData, nSize);
    for (int nSlot : {kBareSlot, kFixedSlot})
        FuzzTableLifeOf<CSectionTable>([nSlot] { return new CSectionTable(CatalogueEntryOf(nSlot)); }, ask);
    FuzzTableLifeOf<CColumnTable>([] { return new CColumnTable(CatalogueEntryOf(kColumnSlot)); }, ask);
    return 0;
}
