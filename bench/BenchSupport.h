// Shared pieces of the benchmark suite: the data folder, the floor (reading
// the same bytes and splitting them into lines), the figure list that the
// reporter prints as ratios, and the bytes the tables hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

class CClientDataMgr;

// The data folder the suite runs in (the working directory after start).
const std::string& BenchDataRoot();
void BenchDataRootSet(const std::string& strRoot);

// Every file the start-up reads: the data folder without the alternative set,
// the text resources and the debug log.
const std::vector<std::string>& StartupFiles();

// Reads every byte of each file into memory and splits it into lines once;
// returns the number of lines (so the work cannot be dropped).
std::size_t FloorRead(const std::vector<std::string>& setFile);
// The floor's two steps: every byte of a file (empty when it cannot be
// read), and the text split into setLine, reused from file to file (returns
// the number of lines).
std::string BenchFileRead(const std::string& strPath);
std::size_t BenchLinesSplit(const std::string& strData, std::vector<std::string_view>& setLine);

// Whether a file exists (relative to the data folder).
bool BenchFileExists(const std::string& strPath);

// The process's processor time (the suite runs one thread).
struct CProcessorClock {
    using time_point = std::clock_t;
    static time_point now() { return std::clock(); }
    static double SecondsSince(time_point start) { return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC; }
};

// One printed line: a benchmark against a base benchmark (a ratio) or alone
// (ns per lookup against a bound).
struct Figure {
    std::string strLabel;
    std::string strBench;  // the measured benchmark
    std::string strBase;   // the base it is divided by
    double dRatioTarget;   // 0: no ratio target
    double dNsTarget;      // 0: no absolute target
    bool bCpuTime;         // compare the processor times Google Benchmark took
};
void FigureAdd(const Figure& figure);
const std::vector<Figure>& Figures();

// A figure measured outside Google Benchmark (memory), printed as given.
void FigureNoteAdd(const std::string& strLine);
const std::vector<std::string>& FigureNotes();

// The bytes of the values the loaded manager's tables hold, as their
// descriptions show the records.
std::size_t HeldBytes(CClientDataMgr& mgr);

// Resident set size of this process in bytes.
std::size_t ResidentBytes();

// A deterministic sequence for probe keys.
class CBenchRng {
public:
    explicit CBenchRng(uint32_t nSeed) : m_nState(nSeed) {}
    uint32_t Next()
    {
        m_nState = m_nState * 1664525u + 1013904223u;
        return m_nState >> 8;
    }
    std::size_t Below(std::size_t n) { return n == 0 ? 0 : Next() % n; }

private:
    uint32_t m_nState;
};

constexpr std::size_t kProbeAmount = 1024;
