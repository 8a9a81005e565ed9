// The general-purpose ini parsers inih and SimpleIni on the start-up's files,
// beside the library in the same run: each reads every file as the floor
// does, parses the sectioned ones (a file whose first line that is neither
// blank nor a comment opens a section) and splits the others into lines.
#include <benchmark/benchmark.h>

#include <string>
#include <string_view>
#include <vector>

#include "BenchSupport.h"

#ifdef BENCH_HAVE_INIH
#include <ini.h>
#endif
#ifdef BENCH_HAVE_SIMPLEINI
// The Debian library is built on ICU; CSimpleIniA takes the bytes unconverted.
#define SI_CONVERT_ICU
#include <SimpleIni.h>
#endif

namespace {

using Clock = CProcessorClock;

bool IsSectioned(const std::string& strData)
{
    std::size_t nAt = strData.find_first_not_of(" \t\r\n");
    while (nAt != std::string::npos && (strData[nAt] == ';' || strData.compare(nAt, 2, "//") == 0)) {
        nAt = strData.find('\n', nAt);
        nAt = nAt == std::string::npos ? nAt : strData.find_first_not_of(" \t\r\n", nAt);
    }
    return nAt != std::string::npos && strData[nAt] == '[';
}

// Reads every start-up file, handing the sectioned ones to parse.
template <class Parse>
void BM_Peer(benchmark::State& state, Parse parse)
{
    const std::vector<std::string>& setFile = StartupFiles();
    std::vector<std::string_view> setLine;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        std::size_t nUnits = 0;
        for (const std::string& strPath : setFile) {
            const std::string strData = BenchFileRead(strPath);
            nUnits += IsSectioned(strData) ? parse(strData) : BenchLinesSplit(strData, setLine);
        }
        benchmark::DoNotOptimize(nUnits);
        state.SetIterationTime(Clock::SecondsSince(start));
    }
}

void PeerRegister(const char* szName, void (*pfnBench)(benchmark::State&))
{
    const std::string strBench = std::string("peer/") + szName;
    benchmark::RegisterBenchmark(strBench.c_str(), pfnBench)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(2.0);
    FigureAdd({std::string("peer ") + szName + " / floor", strBench, "startup/floor", 0, 0, false});
    FigureAdd({std::string("start-up / peer ") + szName, "startup/full", strBench, 0, 0, false});
}

#ifdef BENCH_HAVE_INIH
void BM_PeerInih(benchmark::State& state)
{
    BM_Peer(state, [](const std::string& strData) {
        std::size_t nValues = 0;
        ini_parse_string(
            strData.c_str(),
            [](void* pUser, const char*, const char*, const char*) {
                ++*static_cast<std::size_t*>(pUser);
                return 1;
            },
            &nValues);
        return nValues;
    });
}
#endif

#ifdef BENCH_HAVE_SIMPLEINI
void BM_PeerSimpleIni(benchmark::State& state)
{
    BM_Peer(state, [](const std::string& strData) {
        CSimpleIniA ini(false, true, false);  // ASCII, multiple keys kept, no multi-line values
        ini.LoadData(strData.data(), strData.size());
        CSimpleIniA::TNamesDepend setSection;
        ini.GetAllSections(setSection);
        return static_cast<std::size_t>(setSection.size());
    });
}
#endif

}  // namespace

void PeerBenchmarksRegister()
{
#ifdef BENCH_HAVE_INIH
    PeerRegister("inih", BM_PeerInih);
#endif
#ifdef BENCH_HAVE_SIMPLEINI
    PeerRegister("SimpleIni", BM_PeerSimpleIni);
#endif
}
