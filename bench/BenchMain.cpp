// ClientDataBench [--data DIR] [Google Benchmark options]
//
// Runs in DIR (default: the working directory), a folder written by
// "gendata --scale 10". Measures the resident memory of a full load first,
// on a fresh heap, then runs the timed benchmarks and prints one line per
// figure: each a ratio of two measurements taken in this run.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "ClientData/ClientDataMgr.h"

void LoadBenchmarksRegister();
void LookupBenchmarksRegister();
void PeerBenchmarksRegister();

namespace {

struct Measured {
    double dNs = 0;        // per iteration, real (or manual) time
    double dCpuNs = 0;     // per iteration, processor time
    bool bMedian = false;  // taken from the median of repetitions
    bool bError = false;
};

// Forwards to the console and keeps each benchmark's time per iteration.
class CFigureReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& setRun) override
    {
        for (const Run& run : setRun) {
            Measured& measured = m_mapMeasured[run.run_name.function_name];
            const bool bMedian = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (run.run_type == Run::RT_Aggregate && !bMedian)
                continue;
            if (measured.bMedian && !bMedian)
                continue;
            const double dScale = 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
            measured.dNs = run.GetAdjustedRealTime() * dScale;
            measured.dCpuNs = run.GetAdjustedCPUTime() * dScale;
            measured.bMedian = bMedian;
            measured.bError = run.error_occurred;
        }
        ConsoleReporter::ReportRuns(setRun);
    }
    const Measured* Find(const std::string& strName) const
    {
        auto it = m_mapMeasured.find(strName);
        return it != m_mapMeasured.end() ? &it->second : nullptr;
    }

private:
    std::map<std::string, Measured> m_mapMeasured;
};

std::string TimeText(double dNs)
{
    char szText[64];
    if (dNs >= 1e6)
        std::snprintf(szText, sizeof(szText), "%.1f ms", dNs / 1e6);
    else if (dNs >= 1e4)
        std::snprintf(szText, sizeof(szText), "%.1f us", dNs / 1e3);
    else
        std::snprintf(szText, sizeof(szText), "%.1f ns", dNs);
    return szText;
}

void FiguresPrint(const CFigureReporter& reporter)
{
    std::printf("\n== Figures (each a ratio of two measurements of this run) ==\n");
    for (const std::string& strLine : FigureNotes())
        std::printf("%s\n", strLine.c_str());
    for (const Figure& figure : Figures()) {
        const Measured* pBench = reporter.Find(figure.strBench);
        if (pBench != nullptr && figure.strBase.empty()) {
            const double dBench = figure.bCpuTime ? pBench->dCpuNs : pBench->dNs;
            std::printf("%-44s %10.1f ns (target <= %.0f ns: %s)\n", figure.strLabel.c_str(), dBench, figure.dNsTarget,
                        dBench <= figure.dNsTarget ? "met" : "NOT met");
            continue;
        }
        const Measured* pBase = reporter.Find(figure.strBase);
        if (pBench == nullptr || pBase == nullptr)
            continue;  // filtered out
        if (pBench->bError || pBase->bError || pBase->dNs <= 0 || pBase->dCpuNs <= 0) {
            std::printf("%-44s FAILED (see the benchmark's error above)\n", figure.strLabel.c_str());
            continue;
        }
        const double dBench = figure.bCpuTime ? pBench->dCpuNs : pBench->dNs;
        const double dBase = figure.bCpuTime ? pBase->dCpuNs : pBase->dNs;
        const double dRatio = dBench / dBase;
        std::string strTarget;
        if (figure.dRatioTarget > 0) {
            char szTarget[64];
            std::snprintf(szTarget, sizeof(szTarget), "; target <= %.1fx: %s", figure.dRatioTarget,
                          dRatio <= figure.dRatioTarget ? "met" : "NOT met");
            strTarget = szTarget;
        }
        if (figure.dNsTarget > 0) {
            char szTarget[64];
            std::snprintf(szTarget, sizeof(szTarget), "; target <= %.0f ns: %s", figure.dNsTarget,
                          dBench <= figure.dNsTarget ? "met" : "NOT met");
            strTarget = szTarget;
        }
        std::printf("%-44s %10.4fx  (%s vs %s%s)\n", figure.strLabel.c_str(), dRatio, TimeText(dBench).c_str(),
                    TimeText(dBase).c_str(), strTarget.c_str());
    }
}

constexpr double kMemoryTarget = 1.2;

// Resident memory added by a full load against the bytes of records and texts
// the tables hold; measured before anything else has used the heap.
void MemoryMeasure()
{
    const std::size_t nBefore = ResidentBytes();
    IClientDataMgr* pMgr = QueryClientDataMgr();
    pMgr->LoadDeferList();
    pMgr->ReloadDeferred(false);
    pMgr->ReloadDeferred(true);
    const std::size_t nAfter = ResidentBytes();
    const std::size_t nHeld = HeldBytes(*static_cast<CClientDataMgr*>(pMgr));
    DestroyClientDataMgr();

    const double dRatio = nHeld > 0 ? static_cast<double>(nAfter - nBefore) / static_cast<double>(nHeld) : 0;
    char szLine[256];
    std::snprintf(szLine, sizeof(szLine), "%-44s %10.4fx  (resident %.1f MB vs records %.1f MB; target <= %.1fx: %s)",
                  "memory after full load / records held", dRatio, (nAfter - nBefore) / 1048576.0, nHeld / 1048576.0,
                  kMemoryTarget, dRatio <= kMemoryTarget ? "met" : "NOT met");
    FigureNoteAdd(szLine);
}

}  // namespace

int main(int argc, char** argv)
{
    std::vector<char*> setArg;
    std::string strRoot = ".";
    for (int i = 0; i < argc; ++i) {
        if (std::strcmp(argv[i], "--data") == 0 && i + 1 < argc)
            strRoot = argv[++i];
        else
            setArg.push_back(argv[i]);
    }
    std::error_code error;
    std::filesystem::current_path(strRoot, error);
    if (error) {
        std::fprintf(stderr, "cannot enter the data folder %s\n", strRoot.c_str());
        return 2;
    }
    BenchDataRootSet(std::filesystem::current_path().string());

    MemoryMeasure();
    LoadBenchmarksRegister();
    LookupBenchmarksRegister();
    PeerBenchmarksRegister();

    int nArgs = static_cast<int>(setArg.size());
    benchmark::Initialize(&nArgs, setArg.data());
    if (benchmark::ReportUnrecognizedArguments(nArgs, setArg.data()))
        return 1;
    CFigureReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    FiguresPrint(reporter);
    benchmark::Shutdown();
    TableRegistry::Destroy();
    return 0;
}
