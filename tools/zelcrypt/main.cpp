// zelcrypt: scrambles and unscrambles data files with the product's file
// scrambler, so data maintainers can edit a plain copy and ship the
// scrambled one.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "ZelGameBase/EncryptData.h"
#include "ZelGameBase/Platform/Platform.h"

namespace {

const char kUsage[] =
    "usage: zelcrypt encrypt FILE [--seed N]\n"
    "           writes the scrambled form of the plain FILE to FILE.encrypt\n"
    "       zelcrypt decrypt FILE OUTPUT [--seed N]\n"
    "           writes the plain form of the scrambled FILE to OUTPUT\n"
    "N (decimal, or hexadecimal with 0x) defaults to the game's data seed.\n";

// Names the file, then what went wrong with it.
int Fail(const std::string& strFile, const char* szWhat)
{
    std::fprintf(stderr, "zelcrypt: %s: %s\n", strFile.c_str(), szWhat);
    return 1;
}

// Takes "--seed N" out of the arguments; false when N is missing or not a number.
bool SeedTake(std::vector<std::string>& setArg, uint32_t& nSeed)
{
    for (std::size_t i = 0; i < setArg.size(); ++i) {
        if (setArg[i] != "--seed")
            continue;
        if (i + 1 >= setArg.size())
            return false;
        const char* szValue = setArg[i + 1].c_str();
        char* pEnd = nullptr;
        const unsigned long long nValue = std::strtoull(szValue, &pEnd, 0);
        if (*szValue == '\0' || *szValue == '-' || *pEnd != '\0' || nValue > 0xFFFFFFFFull)
            return false;
        nSeed = static_cast<uint32_t>(nValue);
        const auto at = setArg.begin() + static_cast<std::ptrdiff_t>(i);
        setArg.erase(at, at + 2);
        return true;
    }
    return true;
}

int Encrypt(const std::string& strFile, uint32_t nSeed)
{
    CEncryptData data(nSeed);
    if (!data.EncryptFile(strFile.c_str()))
        return Fail(strFile, "cannot read it or write its .encrypt file");
    std::printf("%s.encrypt\n", strFile.c_str());
    return 0;
}

int Decrypt(const std::string& strFile, const std::string& strOutput, uint32_t nSeed)
{
    CEncryptData data(nSeed);
    if (!data.Load(strFile.c_str()))
        return Fail(strFile, "cannot read it");
    FILE* pFile = PlatformOpenFile(strOutput.c_str(), "wb");
    if (pFile == nullptr)
        return Fail(strOutput, "cannot create it");
    const std::size_t nSize = static_cast<std::size_t>(data.GetSize());
    bool bWritten = nSize == 0 || std::fwrite(data.GetBuffer(), nSize, 1, pFile) == 1;
    bWritten = std::fclose(pFile) == 0 && bWritten;
    if (!bWritten)
        return Fail(strOutput, "write failed");
    std::printf("%s\n", strOutput.c_str());
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> setArg(argv + 1, argv + argc);
    uint32_t nSeed = kEncryptDataSeed;
    if (!SeedTake(setArg, nSeed)) {
        std::fputs("zelcrypt: --seed needs a number from 0 to 4294967295\n", stderr);
        return 2;
    }
    if (setArg.size() == 2 && setArg[0] == "encrypt")
        return Encrypt(setArg[1], nSeed);
    if (setArg.size() == 3 && setArg[0] == "decrypt")
        return Decrypt(setArg[1], setArg[2], nSeed);
    const bool bHelp = setArg.size() == 1 && (setArg[0] == "--help" || setArg[0] == "-h");
    std::fputs(kUsage, bHelp ? stdout : stderr);
    return bHelp ? 0 : 2;
}
