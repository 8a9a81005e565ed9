// Keyed lookups against the literal walk: every table's own query, through
// its description, against a linear scan over the records its lookups can
// answer, as the description lists them with their keys. Each case first
// checks that the query answers every probe the walk finds with the same
// record; a difference fails the case instead of timing it.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "ClientData/Catalogue.h"
#include "ClientData/ClientDataMgr.h"
#include "ClientData/StrRes.h"

namespace {

// What a record shows, as one text: two answers are the same when they
// show the same.
class CShown final : public FieldVisitor {
public:
    void Number(const char* szKey, int64_t nValue) override { m_strText += szKey + std::to_string(nValue) + ";"; }
    void Text(const char* szKey, const char* szText) override { m_strText += std::string(szKey) + szText + ";"; }
    std::string m_strText;
};

struct KeyedRecord {
    RecordKey key;
    std::string strName;  // the name of a key by name, kept alive
    const void* pRecord;
};

bool SameKey(const RecordKey& a, const RecordKey& b)
{
    if ((a.szName == nullptr) != (b.szName == nullptr))
        return false;
    if (a.szName != nullptr)
        return std::strcmp(a.szName, b.szName) == 0;
    return a.nAmount == b.nAmount && std::memcmp(a.nNumber, b.nNumber, sizeof(a.nNumber)) == 0;
}

// One table's lookups: the records with their keys, and the probes (mostly
// keys that exist, drawn evenly; one in eight a miss).
struct TableCase {
    CDataTable* pTable;
    const TableDesc* pDesc;
    std::vector<KeyedRecord> setRecord;
    std::vector<RecordKey> setProbe;
    std::vector<std::string> setMissName;
    std::string strError;

    TableCase(CDataTable& table, const TableDesc& desc) : pTable(&table), pDesc(&desc)
    {
        desc.pfnForEach(table, &Collect, this);
        for (KeyedRecord& record : setRecord)
            if (record.key.szName != nullptr)
                record.key.szName = record.strName.c_str();
        CBenchRng rng(20110307u);
        for (std::size_t i = 0; i < kProbeAmount; ++i) {
            if (i % 8 != 7 && !setRecord.empty()) {
                setProbe.push_back(setRecord[rng.Below(setRecord.size())].key);
                continue;
            }
            setMissName.push_back("NoSuchRecord" + std::to_string(i));
            setProbe.push_back(RecordKey{setRecord.empty() ? 1 : setRecord[0].key.nAmount,
                                         {-1000003 - static_cast<int64_t>(i), 999, 999, 999},
                                         nullptr});
        }
        for (std::size_t i = 0, nMiss = 0; i < setProbe.size(); ++i)
            if (i % 8 == 7 || setRecord.empty())
                setProbe[i].szName =
                    !setRecord.empty() && setRecord[0].key.szName != nullptr ? setMissName[nMiss++].c_str() : nullptr;
        // A key the walk finds must give that record; a miss may still be
        // answered, by a table whose lookup falls back to wildcard keys.
        for (const RecordKey& probe : setProbe)
            if (Walk(probe) != nullptr && Shown(Query(probe)) != Shown(Walk(probe)))
                strError = "the table and the literal walk answer differently";
    }

    static void Collect(const void* pRecord, const RecordKey& key, void* pContext)
    {
        TableCase& tableCase = *static_cast<TableCase*>(pContext);
        tableCase.setRecord.push_back(KeyedRecord{key, key.szName != nullptr ? key.szName : "", pRecord});
    }

    const void* Query(const RecordKey& key) const { return pDesc->pfnFind(*pTable, key); }
    const void* Walk(const RecordKey& key) const
    {
        for (const KeyedRecord& record : setRecord)
            if (SameKey(record.key, key))
                return record.pRecord;
        return nullptr;
    }
    std::string Shown(const void* pRecord) const
    {
        if (pRecord == nullptr)
            return "(none)";
        CShown shown;
        TableRecordVisit(*pTable, *pDesc, pRecord, shown);
        return shown.m_strText;
    }
};

// The probes through Find: the table's query or the literal walk.
template <const void* (TableCase::*Find)(const RecordKey&) const>
void BM_Probe(benchmark::State& state, const TableCase* pCase)
{
    if (!pCase->strError.empty()) {
        state.SkipWithError(pCase->strError.c_str());
        return;
    }
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize((pCase->*Find)(pCase->setProbe[i++ % kProbeAmount]));
    state.counters["records"] = static_cast<double>(pCase->setRecord.size());
}

// The text resources, which no accessor reaches: a later line overrides.
void BM_StrRes(benchmark::State& state, const CStrRes* pStrRes)
{
    std::vector<uint32_t> setId;
    for (const auto& text : pStrRes->Texts())
        setId.push_back(text.first);
    CBenchRng rng(20110307u);
    std::vector<uint32_t> setProbe;
    for (std::size_t i = 0; i < kProbeAmount; ++i)
        setProbe.push_back(setId.empty() || i % 8 == 7 ? 4000000000u + static_cast<uint32_t>(i)
                                                       : setId[rng.Below(setId.size())]);
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(const_cast<CStrRes*>(pStrRes)->Get(setProbe[i++ % kProbeAmount]));
}

// Tables of their own, loaded from the standard set and kept to the end of
// the run, outside any registry: a manager that the start-up figures build
// meanwhile does not reach them.
struct TableFree {
    void operator()(CDataTable* pTable) const { pTable->DeletingDestructor(1); }
};
using OwnedTable = std::unique_ptr<CDataTable, TableFree>;

template <int Slot>
OwnedTable TableLoaded()
{
    using Table = typename CatalogueSlot<Slot>::Class;
    OwnedTable pTable(new Table(MakeTable<Table>(CatalogueEntryOf(Slot))));
    pTable->BuildFilePath();
    pTable->Load();
    return pTable;
}

void LookupRegister(const CatalogueEntry& entry, CDataTable& table)
{
    static std::vector<std::unique_ptr<TableCase>> setCase;
    if (entry.pDesc->keyKind == TABLE_KEY_NONE)
        return;
    setCase.push_back(std::make_unique<TableCase>(table, *entry.pDesc));
    if (setCase.back()->setRecord.empty() || (entry.bGeneric && setCase.back()->setRecord.size() < 100))
        return;  // nothing to look up, or a generic table too small to tell
    const std::string strLookup = std::string("lookup/") + entry.szName;
    const std::string strWalk = std::string("walk/") + entry.szName;
    benchmark::RegisterBenchmark(strLookup.c_str(), BM_Probe<&TableCase::Query>, setCase.back().get());
    benchmark::RegisterBenchmark(strWalk.c_str(), BM_Probe<&TableCase::Walk>, setCase.back().get())
        ->Unit(benchmark::kMicrosecond);
    FigureAdd({std::string("lookup ") + entry.szName + " / literal walk", strLookup, strWalk, 0, 50, true});
}

}  // namespace

void LookupBenchmarksRegister()
{
    static std::vector<OwnedTable> setTable;
#define CLIENTDATA_TABLE(slot, name, iface, cls, file, kind, desc) setTable.push_back(TableLoaded<slot>());
#define CLIENTDATA_GENERIC(slot, name, file, kind) setTable.push_back(TableLoaded<slot>());
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
#undef CLIENTDATA_GENERIC
    TableRegistry::Destroy();
    for (std::size_t i = 0; i < setTable.size(); ++i)
        LookupRegister(kCatalogue[i], *setTable[i]);

    static CStrRes strRes;
    strRes.Load("ini/StrRes.ini");
    benchmark::RegisterBenchmark("lookup/StrRes", BM_StrRes, &strRes);
    FigureAdd({"lookup StrRes", "lookup/StrRes", "", 0, 50, true});
}
