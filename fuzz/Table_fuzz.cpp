// One table of the catalogue (FUZZ_TABLE_SLOT) through the life the client
// gives it, every file it reads taken from the input (split at "@@FILE@@" in
// the catalogue's order: the main file, then the further files). After each
// Load, every record its lookups can answer is checked field by field through
// its description: every text buffer holds its terminator, every text the
// record shows is a C string. Then the table's own lookup is asked with the
// input's numbers and words, and the queries the client asks while it plays.
#include <cstring>

#include "ClientData/ClientDataMgr.h"
#include "TableQueries.h"

namespace {

constexpr int kSlot = FUZZ_TABLE_SLOT;
using Table = typename CatalogueSlot<kSlot>::Class;
const CatalogueEntry& kEntry = CatalogueEntryOf(kSlot);

class CTextCheck final : public FieldVisitor {
public:
    void Number(const char*, int64_t) override {}
    void Text(const char*, const char* szText) override { (void)std::strlen(szText); }
};

void RecordCheck(CDataTable& table, const void* pRecord)
{
    const TableDesc& desc = *kEntry.pDesc;
    if (desc.pRecord != nullptr) {
        for (const FieldDesc& field : *desc.pRecord) {
            if (!field.bMember)
                continue;
            const char* pField = static_cast<const char*>(pRecord) + field.nOffset;
            if (field.type == FieldType::Text && std::memchr(pField, 0, field.nSize) == nullptr)
                std::abort();  // the client reads the buffer as a C string
            if (field.type == FieldType::Text || field.type == FieldType::Scrambled)
                FuzzCheckLength(FieldTextGet(field, pRecord), field.TextLimit() + 1);
        }
    }
    CTextCheck check;
    if (desc.pfnVisit != nullptr)
        desc.pfnVisit(table, pRecord, check);
}

struct Walk {
    CDataTable* pTable;
};

void RecordAnswered(const void* pRecord, const RecordKey& key, void* pContext)
{
    CDataTable& table = *static_cast<Walk*>(pContext)->pTable;
    RecordCheck(table, pRecord);
    if (kEntry.pDesc->pfnFind(table, key) == nullptr)
        std::abort();  // a record the lookups can answer is found by its key
}

void Ask(Table& table, const FuzzKeys& keys)
{
    Walk walk{&table};
    kEntry.pDesc->pfnForEach(table, &RecordAnswered, &walk);
    const TableDesc& desc = *kEntry.pDesc;
    for (std::size_t i = 0; i + 3 < keys.setNumber.size(); ++i) {
        const int64_t* pNumber = &keys.setNumber[i];
        const RecordKey key{4, {pNumber[0], pNumber[1], pNumber[2], pNumber[3]}, nullptr};
        if (const void* pRecord = desc.pfnFind(table, key))
            RecordCheck(table, pRecord);
    }
    for (const std::string& strWord : keys.setWord)
        if (const void* pRecord = desc.pfnFind(table, RecordKey{0, {0, 0, 0, 0}, strWord.c_str()}))
            RecordCheck(table, pRecord);
    FuzzQueries(table, keys);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    const std::vector<std::string> setPath = CatalogueDataFilesOf(kSlot);
    const std::vector<std::string> setFile = FuzzSplitFiles(pData, nSize, setPath.size());
    for (std::size_t i = 0; i < setPath.size(); ++i)
        FuzzWriteFile(setPath[i], reinterpret_cast<const uint8_t*>(setFile[i].data()), setFile[i].size());
    const FuzzKeys keys{FuzzNumbersIn(pData, nSize), FuzzWordsIn(pData, nSize)};
    FuzzTableLifeOf<Table>([] { return new Table(MakeTable<Table>(kEntry)); }, [&](Table& table) { Ask(table, keys); });
    return 0;
}
