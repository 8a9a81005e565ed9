// Differential checks, run on Windows (or Wine): the foundation's portable
// versions of system behaviours against the system's own.
//   - the private-profile integer reader against GetPrivateProfileIntA;
//   - the scanf-style scanners against the C runtime's sscanf ("%d", "%u",
//     "%x", "%I64d"), called in msvcrt.dll itself, not through MinGW's own
//     stdio;
//   - the ctime text against the runtime's ctime;
//   - the portable rand sequence against the runtime's srand / rand;
//   - the platform layer's file opening against the system's kinds of file:
//     only a regular file opens (a device, a pipe or a folder does not).
// Prints one line per disagreement and a summary; exits 1 on any
// disagreement that is not a known difference of Wine from Windows.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>

#include "ZelGameBase/EncryptData.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/Platform/ProfileReader.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

int g_nCases = 0;
int g_nFailures = 0;
int g_nKnown = 0;

void Report(bool bAgree, bool bKnownWineDifference, const std::string& strWhat)
{
    ++g_nCases;
    if (bAgree)
        return;
    if (bKnownWineDifference) {
        ++g_nKnown;
        std::printf("known Wine difference: %s\n", strWhat.c_str());
        return;
    }
    ++g_nFailures;
    std::printf("DIFFERENT: %s\n", strWhat.c_str());
}

struct ProfileCase {
    const char* szText;
    int nDefault;
    const char* szSection = "S";
    const char* szKey = "K";
};

// clang-format off
const ProfileCase kProfileCases[] = {
    {"[S]\nK=42\n", 7}, {"[Sec]\nKey=5\n", 7, "sEC", "kEY"}, {"  [S]  \n  K  =  7  \n", 1}, {"[S]\nK=-5\n", 0},
    {"[S]\nK=+5\n", 0}, {"[S]\nK=0x1f\n", 0}, {"[S]\nK=0o17\n", 0}, {"[S]\nK=0b101\n", 0}, {"[S]\nK=12abc\n", 0},
    {"[S]\nK=abc\n", 9}, {"[S]\nK=\n", 9}, {"[S]\nK\n", 9}, {"[S]\nA=1\n", 9}, {"[T]\nK=1\n", 9},
    {"[S]\nK=1\nK=2\n", 9}, {"[S]\nA=1\n[S]\nK=2\n", 9}, {"[S]\nK=\"15\"\n", 0}, {"[S]\nK='16'\n", 0},
    {"[S]\nK=4294967296\n", 0}, {"[S]\nK=99999999999\n", 0}, {"[S]\nK=4294967295\n", 0}, {"[S]\rK=3\r", 0},
    {"[S]\r\nK=4\r\n", 0}, {"[S]\n;K=5\nK=6\n", 0}, {"[S]\nK=\t8\t\n", 0}, {"[S]\nK=1 2\n", 0}, {"[S]\nK=- 5\n", 3},
    {"[S]\nK=--5\n", 3}, {"[S]\nK=2\n", -1}, {"[S]\nA=2\n", -1}, {"[A]\nK=1\n[S]\nK=2\n[B]\nK=3\n", 0},
    {"[S]K=5\nK=6\n", 0}, {"[S] ; note\nK=7\n", 0}, {"[S]\nK =  \"\" \n", 4}, {"[S]\nK=0x\n", 4},
    {"[S]\nK=007\n", 0}, {"[S]\nK=-0x10\n", 0},
};
// Where Wine's reader is known to part from Windows' (our emulation follows
// Windows): reported, not failed.
const ProfileCase kWineProfileCases[] = {
    {"[S]\nK=0X1F\n", 0}, {"[S]\nK=000000000000000000000000000012\n", 0}, {"K=5\n[S]\nA=1\n", 0, "", "K"},
    {"[S]x]\nK=5\n", 0}, {"[S]\n;K=5\n", 0, "S", ";K"},
};
// clang-format on

std::string FullPath(const char* szName)
{
    char szPath[MAX_PATH];
    const DWORD n = GetFullPathNameA(szName, sizeof(szPath), szPath, nullptr);
    return n > 0 && n < sizeof(szPath) ? std::string(szPath, n) : std::string(szName);
}

// One case: a file of its own (the system caches the last profile read).
void CheckProfileCase(const ProfileCase& c, int nIndex, bool bKnownWineDifference)
{
    char szName[32];
    std::snprintf(szName, sizeof(szName), "profile_%02d.ini", nIndex);
    FILE* pFile = std::fopen(szName, "wb");
    if (pFile == nullptr)
        return;
    std::fputs(c.szText, pFile);
    std::fclose(pFile);
    const std::string strPath = FullPath(szName);
    const unsigned nSystem = GetPrivateProfileIntA(c.szSection, c.szKey, c.nDefault, strPath.c_str());
    const unsigned nOurs = ProfileGetInt(c.szText, std::strlen(c.szText), c.szSection, c.szKey, c.nDefault);
    char szWhat[160];
    std::snprintf(szWhat, sizeof(szWhat), "profile %s [%s] %s: system %u, ours %u", szName, c.szSection, c.szKey,
                  nSystem, nOurs);
    Report(nSystem == nOurs, bKnownWineDifference, szWhat);
    DeleteFileA(szName);
}

void CheckProfile()
{
    int nIndex = 0;
    for (const ProfileCase& c : kProfileCases)
        CheckProfileCase(c, nIndex++, false);
    for (const ProfileCase& c : kWineProfileCases)
        CheckProfileCase(c, nIndex++, true);
    // A file that does not exist gives the default.
    const unsigned nSystem = GetPrivateProfileIntA("S", "K", 444444, FullPath("no_such_profile.ini").c_str());
    Report(nSystem == 444444u, false, "profile of a missing file: system " + std::to_string(nSystem));
}

using SscanfFn = int(__cdecl*)(const char*, const char*, ...);

// Wine's scanf reports a matching failure (0) where Windows' runtime reports
// the end of the input (EOF): blanks only, or a lone sign, before the end.
bool IsWineScanEndCase(const char* szInput)
{
    const char* p = szInput;
    while (CrtIsSpace(static_cast<unsigned char>(*p)))
        ++p;
    if (*p == '+' || *p == '-')
        ++p;
    return *p == '\0' && *szInput != '\0';
}

// By kind: plain numbers with blanks and signs, 32-bit and 64-bit limits and
// beyond, no number at all, prefixes and other bases.
const char* const kScanInputs[][6] = {
    {"123", "  -45", "+7", "0012", "12 34", "\t\n8"},
    {"2147483647", "2147483648", "-2147483648", "-2147483649", "4294967295", "4294967296"},
    {"99999999999", "-99999999999", "9223372036854775807", "9223372036854775808", "-9223372036854775808"},
    {"-9223372036854775809", "18446744073709551616", "123456789012345678901234567890"},
    {"abc", "", "   ", "-", "+", "--1"},
    {"0x1F", "1f", "FFFFFFFF", "100000000", "1e5"},
};

std::string Quoted(const char* sz) { return std::string("\"") + sz + "\""; }

// One conversion of szInput by the system's sscanf and by ours: the result,
// the value and the characters used must agree.
template <class T>
void CheckScanOne(SscanfFn pfnSscanf, const char* szInput, const char* szConversion,
                  ScanResult (*pfnOurs)(const char*&, T*), bool bShowUsed)
{
    T nSystem = 0, nOurs = 0;
    int nUsedSystem = 0;
    const int nRetSystem = pfnSscanf(szInput, (std::string(szConversion) + "%n").c_str(), &nSystem, &nUsedSystem);
    const char* p = szInput;
    const int nRetOurs = pfnOurs(p, &nOurs);
    const bool bAgree = nRetSystem == nRetOurs && (nRetOurs != 1 || (nSystem == nOurs && nUsedSystem == p - szInput));
    Report(bAgree, IsWineScanEndCase(szInput),
           std::string(szConversion) + " of " + Quoted(szInput) + ": system " + std::to_string(nRetSystem) + "/" +
               std::to_string(nSystem) + (bShowUsed ? "/" + std::to_string(nUsedSystem) : "") + ", ours " +
               std::to_string(nRetOurs) + "/" + std::to_string(nOurs) +
               (bShowUsed ? "/" + std::to_string(p - szInput) : ""));
}

void CheckScan(SscanfFn pfnSscanf)
{
    for (const auto& setInput : kScanInputs)
        for (const char* szInput : setInput) {
            if (szInput == nullptr)
                continue;
            CheckScanOne<int32_t>(pfnSscanf, szInput, "%d", CrtScanInt32, true);
            CheckScanOne<uint32_t>(pfnSscanf, szInput, "%u", CrtScanUInt32, false);
            CheckScanOne<uint32_t>(pfnSscanf, szInput, "%x", CrtScanHex32, false);
            CheckScanOne<int64_t>(pfnSscanf, szInput, "%I64d", CrtScanInt64, false);
        }
}

void CheckCtime()
{
    const time_t kTimes[] = {0, 86399, 951782400, 1299506709, 1700000000, 2147483647};
    for (time_t t : kTimes) {
        const struct tm* pLocal = std::localtime(&t);
        const char* szSystem = std::ctime(&t);
        if (pLocal == nullptr || szSystem == nullptr)
            continue;
        const LocalTime local{pLocal->tm_year + 1900, pLocal->tm_mon + 1, pLocal->tm_mday, pLocal->tm_hour,
                              pLocal->tm_min,         pLocal->tm_sec,     pLocal->tm_wday};
        char szOurs[32];
        CrtFormatCtime(local, szOurs);
        Report(std::strcmp(szSystem, szOurs) == 0, false,
               "ctime of " + std::to_string(static_cast<long long>(t)) + ": system " + szSystem + " ours " + szOurs);
    }
}

using SrandFn = void(__cdecl*)(unsigned);
using RandFn = int(__cdecl*)();

void CheckRand(SrandFn pfnSrand, RandFn pfnRand)
{
    const uint32_t kSeeds[] = {0, 1, 42, 0x2F6B1C95u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, kEncryptDataSeed};
    for (uint32_t nSeed : kSeeds) {
        pfnSrand(nSeed);
        CCrtRandom ours(nSeed);
        int nFirstBad = -1;
        for (int i = 0; i < 1000 && nFirstBad < 0; ++i)
            if (pfnRand() != ours.Next())
                nFirstBad = i;
        Report(nFirstBad < 0, false,
               "rand after srand(" + std::to_string(nSeed) + ") parts at call " + std::to_string(nFirstBad));
    }
}

void CheckFileKinds()
{
    if (std::FILE* pFile = std::fopen("kind.txt", "wb")) {
        std::fputs("1=x\n", pFile);
        std::fclose(pFile);
    }
    CreateDirectoryA("kind-folder", nullptr);
    const char kPipe[] = "\\\\.\\pipe\\clientdata-file-kind";
    const HANDLE hPipe = CreateNamedPipeA(kPipe, PIPE_ACCESS_OUTBOUND, PIPE_TYPE_BYTE, 1, 0, 0, 0, nullptr);
    const struct {
        const char* szPath;
        bool bOpens;
    } kCases[] = {{"kind.txt", true}, {"NUL", false}, {"kind-folder", false}, {kPipe, false}, {"missing.txt", false}};
    for (const auto& c : kCases) {
        CPlatformFile file;
        const bool bOpened = file.Open(c.szPath);
        std::string strData;
        const bool bRead = PlatformReadFile(c.szPath, strData);
        Report(bOpened == c.bOpens && bRead == c.bOpens, false,
               std::string("file kind of ") + c.szPath + (c.bOpens ? ": should open" : ": should be refused"));
    }
    if (hPipe != INVALID_HANDLE_VALUE)
        CloseHandle(hPipe);
}

template <class Fn>
Fn CrtFunction(HMODULE hCrt, const char* szName)
{
    return hCrt != nullptr ? reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(hCrt, szName))) : nullptr;
}

}  // namespace

int main()
{
    CheckProfile();
    // The runtime's own entry points, not MinGW's replacements.
    HMODULE hCrt = GetModuleHandleA("msvcrt.dll");
    const auto pfnSscanf = CrtFunction<SscanfFn>(hCrt, "sscanf");
    const auto pfnSrand = CrtFunction<SrandFn>(hCrt, "srand");
    const auto pfnRand = CrtFunction<RandFn>(hCrt, "rand");
    if (pfnSscanf == nullptr || pfnSrand == nullptr || pfnRand == nullptr) {
        Report(false, false, "msvcrt.dll sscanf, srand or rand not found");
    } else {
        CheckScan(pfnSscanf);
        CheckRand(pfnSrand, pfnRand);
    }
    CheckCtime();
    CheckFileKinds();
    std::printf("%d cases: %d different, %d known Wine differences\n", g_nCases, g_nFailures, g_nKnown);
    return g_nFailures == 0 ? 0 : 1;
}
