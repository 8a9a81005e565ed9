// The general-purpose ini parsers inih and SimpleIni on the start-up's files,
// beside the library in the same run: each reads every file as the floor
// does, parses the sectioned ones (a file whose first line that is neither
// blank nor a comment opens a section) and splits the others into lines.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
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

std::string FileRead(const std::string& strPath)
{
    std::string strData;
    std::FILE* pFile = std::fopen(strPath.c_str(), "rb");
    if (pFile == nullptr)
        return strData;
    std::fseek(pFile, 0, SEEK_END);
    const long nSize = std::ftell(pFile);
    std::fseek(pFile, 0, SEEK_SET);
    strData.resize(static_cast<std::size_t>(nSize > 0 ? nSize : 0));
    strData.resize(std::fread(strData.data(), 1, strData.size(), pFile));
    std::fclose(pFile);
    return strData;
}

bool IsSectioned(const std::string& strData)
{
    std::size_t nAt = strData.find_first_not_of(" \t\r\n");
    while (nAt != std::string::npos && (strData[nAt] == ';' || strData.compare(nAt, 2, "//") == 0)) {
        nAt = strData.find('\n', nAt);
        nAt = nAt == std::string::npos ? nAt : strData.find_first_not_of(" \t\r\n", nAt);
    }
    return nAt != std::string::npos && strData[nAt] == '[';
}

std::size_t LinesSplit(const std::string& strData)
{
    std::vector<std::string_view> setLine;
    for (std::size_t nAt = 0; nAt < strData.size();) {
        const void* pEnd = std::memchr(strData.data() + nAt, '\n', strData.size() - nAt);
        const std::size_t nEnd = pEnd != nullptr
                                     ? static_cast<std::size_t>(static_cast<const char*>(pEnd) - strData.data())
                                     : strData.size();
        setLine.emplace_back(strData.data() + nAt, nEnd - nAt);
        nAt = nEnd + 1;
    }
    return setLine.size();
}

// Reads every start-up file, handing the sectioned ones to parse.
template <class Parse>
void BM_Peer(benchmark::State& state, Parse parse)
{
    const std::vector<std::string>& setFile = StartupFiles();
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        std::size_t nUnits = 0;
        for (const std::string& strPath : setFile) {
            const std::string strData = FileRead(strPath);
            nUnits += IsSectioned(strData) ? parse(strData) : LinesSplit(strData);
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
