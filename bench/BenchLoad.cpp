// Start-up and per-table Load, each against the floor of reading the same
// files into memory and splitting them into lines.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "ClientData/ClientDataMgr.h"

namespace {

// Processor time, not wall time: the machine is shared, and waiting for a
// core would otherwise land in the figures. Reads from the page cache count,
// as they run on our processor time in the kernel.
using Clock = CProcessorClock;

// Start-up and each table's load against their floors.
constexpr double kLoadTarget = 6.0;

double SecondsSince(Clock::time_point start) { return Clock::SecondsSince(start); }

void BM_StartupFull(benchmark::State& state)
{
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        IClientDataMgr* pMgr = QueryClientDataMgr();
        pMgr->LoadDeferList();
        pMgr->ReloadDeferred(false);
        pMgr->ReloadDeferred(true);
        state.SetIterationTime(SecondsSince(start));
        DestroyClientDataMgr();
    }
}

// Every table cleared and loaded again on a live manager, as the second
// reload of the start-up does.
void BM_StartupReload(benchmark::State& state)
{
    IClientDataMgr* pMgr = QueryClientDataMgr();
    pMgr->LoadDeferList();
    pMgr->ReloadDeferred(false);
    pMgr->ReloadDeferred(true);
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        pMgr->ReloadDeferred(false);
        pMgr->ReloadDeferred(true);
        state.SetIterationTime(SecondsSince(start));
    }
    DestroyClientDataMgr();
}

void BM_StartupFloor(benchmark::State& state)
{
    const std::vector<std::string>& setFile = StartupFiles();
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        benchmark::DoNotOptimize(FloorRead(setFile));
        state.SetIterationTime(SecondsSince(start));
    }
    state.counters["files"] = static_cast<double>(setFile.size());
}

// Load of one specified table standing alone (no manager alive), timed
// without the Clear before it.
template <class T>
void BM_TableLoad(benchmark::State& state)
{
    {
        T table;
        table.BuildFilePath();
        for (auto _ : state) {
            table.Clear();
            const Clock::time_point start = Clock::now();
            table.Load();
            state.SetIterationTime(SecondsSince(start));
        }
        state.counters["records"] = static_cast<double>(table.GetLoadedAmount());
    }
    TableRegistry::Destroy();
}

void BM_TableFloor(benchmark::State& state, std::vector<std::string> setFile)
{
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        benchmark::DoNotOptimize(FloorRead(setFile));
        state.SetIterationTime(SecondsSince(start));
    }
}

template <class T>
void TableLoadRegister(const char* szName, std::vector<std::string> setFile)
{
    std::vector<std::string> setPresent;
    for (const std::string& strFile : setFile)
        if (BenchFileExists(strFile))
            setPresent.push_back(strFile);
    if (setPresent.empty())
        return;  // the set lacks the table's files: nothing to compare
    const std::string strLoad = std::string("load/") + szName;
    const std::string strFloor = std::string("floor/") + szName;
    benchmark::RegisterBenchmark(strLoad.c_str(), BM_TableLoad<T>)->UseManualTime()->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(strFloor.c_str(), BM_TableFloor, setPresent)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
    FigureAdd({std::string("Load ") + szName + " / floor", strLoad, strFloor, kLoadTarget, 0, false});
}

}  // namespace

void LoadBenchmarksRegister()
{
    benchmark::RegisterBenchmark("startup/full", BM_StartupFull)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(2.0);
    benchmark::RegisterBenchmark("startup/floor", BM_StartupFloor)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(2.0);
    benchmark::RegisterBenchmark("startup/reload", BM_StartupReload)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(2.0);
    FigureAdd({"start-up / floor", "startup/full", "startup/floor", kLoadTarget, 0, false});
    FigureAdd({"reload / first load", "startup/reload", "startup/full", 1.0, 0, false});

    // Every table with a design of its own, with the files the catalogue
    // gives it.
#define CLIENTDATA_TABLE(slot, name, iface, cls, file, kind, desc) \
    TableLoadRegister<cls>(#name, CatalogueDataFilesOf(slot));
#define CLIENTDATA_GENERIC(slot, name, file, kind)
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
#undef CLIENTDATA_GENERIC
}
