// The sample-data generator: writes a complete client data folder, the same
// bytes for the same options on every machine. Each table with a format of
// its own has a generator unit that registers itself by file; every other
// catalogue file is written by the generic generator.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The generator's own random sequence, independent of the C library.
class CDataRng {
public:
    explicit CDataRng(uint32_t nSeed) : m_nState(nSeed) {}
    uint32_t Next()
    {
        m_nState = m_nState * 1664525u + 1013904223u;
        return m_nState >> 8;
    }
    // A number in [nLow, nHigh].
    int Range(int nLow, int nHigh) { return nLow + static_cast<int>(Next() % static_cast<uint32_t>(nHigh - nLow + 1)); }
    bool Chance(int nPercent) { return Range(1, 100) <= nPercent; }

private:
    uint32_t m_nState;
};

struct GenOptions {
    std::string strRoot;  // the data folder written
    int nScale = 1;       // 1: the bundled sample; 10: the benchmark set
    bool bFaulty = false; // plant one instance of every fault lint detects
};

class CGenContext {
public:
    explicit CGenContext(const GenOptions& options) : m_options(options), m_rng(20110307u) {}

    const GenOptions& Options() const { return m_options; }
    int Scale() const { return m_options.nScale; }
    bool Faulty() const { return m_options.bFaulty; }
    CDataRng& Rng() { return m_rng; }

    // A name of nChars GBK characters (two bytes each).
    std::string GbkName(int nChars);
    // Writes a file below the root, creating folders. With bCrLf every "\n"
    // is written as "\r\n".
    void Write(const std::string& strPath, const std::string& strText, bool bCrLf = false);

private:
    GenOptions m_options;
    CDataRng m_rng;
};

// A generator for one file of the catalogue (the path as the catalogue
// names it, for example "ItemType.dat" or "ini/Npc.ini").
using GeneratorFn = void (*)(CGenContext& context);

struct GeneratorRegistration {
    GeneratorRegistration(const char* szFile, GeneratorFn fn);
};

// The generators registered so far, by catalogue file.
struct RegisteredGenerator {
    std::string strFile;
    GeneratorFn fn;
};
const std::vector<RegisteredGenerator>& RegisteredGenerators();

// The alternative-set path of a bare name: ini/200/<stem>_200<ext>.
std::string AlternativePathOf(const std::string& strBareName);
