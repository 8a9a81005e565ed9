// The contract transcript: loads the library at run time, loads the data
// folder (the working directory, tests/Contract/data) as the client does, asks
// a fixed list of questions through raw vtable slots and writes every answer
// to a file. The same source is built for Linux and for Windows; the two
// transcripts of one data folder must be byte for byte the same.
//
//   ContractTranscript <library> <transcript file>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>

#if defined(_WIN32)
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#else
#include <dlfcn.h>
#endif

// Member functions of the 32-bit Windows library take the object in ECX and
// pop their own stack arguments (thiscall), as the client's compiler expects.
// On x86-64 (Windows and Linux) the object is simply the first argument.
#if defined(_WIN32) && defined(__i386__)
#define CONTRACT_MEMBER __attribute__((thiscall))
#else
#define CONTRACT_MEMBER
#endif

// Every argument and result the slots exchange (int, unsigned, bool, a
// pointer) fits one register-sized word on both targets.
using Word = intptr_t;

// Kept out of line so that the 32-bit build's call shape can be inspected
// in the program's disassembly.
template <class... Args>
__attribute__((noinline)) Word CallSlot(void* pObject, int nSlot, Args... args)
{
    using Fn = Word(CONTRACT_MEMBER*)(void*, Args...);
    void** pVtable = *static_cast<void***>(pObject);
    return reinterpret_cast<Fn>(pVtable[nSlot])(pObject, args...);
}

namespace {

// Results narrower than a word come back in its low bits only.
int32_t WordToInt(Word n) { return static_cast<int32_t>(static_cast<uint32_t>(n)); }
uint32_t WordToUInt(Word n) { return static_cast<uint32_t>(n); }
bool WordToBool(Word n) { return (n & 0xFF) != 0; }

// The library, loaded at run time as the client loads it.
#if defined(_WIN32)
using Library = HMODULE;
Library LibraryOpen(const char* szPath) { return LoadLibraryA(szPath); }
void* LibrarySymbol(Library hLibrary, const char* szName)
{
    return reinterpret_cast<void*>(GetProcAddress(hLibrary, szName));
}
void LibraryClose(Library hLibrary) { FreeLibrary(hLibrary); }
#else
using Library = void*;
Library LibraryOpen(const char* szPath) { return dlopen(szPath, RTLD_NOW | RTLD_LOCAL); }
void* LibrarySymbol(Library hLibrary, const char* szName) { return dlsym(hLibrary, szName); }
void LibraryClose(Library hLibrary) { dlclose(hLibrary); }
#endif

// Manager slots; the table base's IsDefer; the generic tables' slots.
enum : int { kLoadStrRes = 1, kGetStrRes, kSetVersionQuery, kGetVersionQuery, kLoadDeferList, kReloadDeferred = 8 };
enum : int { kFirstAccessor = 9, kLastAccessor = 205, kIsDefer = 4 };
enum : int { kRecordAmount = 7, kFindRecord, kRecordId, kRecordTitle, kFieldAmount, kFieldText, kFieldInt };
enum : int { kValueText = 14, kValueInt, kKind };
// Tables of the fixture (accessor slots); the common settings answer slots 7..15.
enum : int { kGameMap = 13, kAttackEffect = 15, kDamage = 16, kBuildingType = 27, kPortal = 47, kShop = 117 };
enum : int { kCommonIni = 151 };
// The line of a question that calls the manager itself.
constexpr int kManager = 0;

enum ResultKind { RESULT_NONE, RESULT_INT, RESULT_TEXT };

// An argument: a text when szText is set, else the number. Every argument is
// one word wide (int, unsigned, bool, pointer).
struct QueryArg {
    long long nValue;
    const char* szText;
};
constexpr QueryArg Int(long long n) { return QueryArg{n, nullptr}; }
constexpr QueryArg Text(const char* sz) { return QueryArg{0, sz}; }

struct QueryLine {
    const char* szLabel;
    int nTableSlot;  // accessor slot, or kManager
    int nQuerySlot;
    ResultKind result;
    int nArgAmount;  // 0..3
    QueryArg arg[3];
};

// The questions, in this order after the start-up.
const QueryLine kQueryLines[] = {
    // Text resources: the client's own file, then a second one that adds and overrides.
    {"LoadStrRes strres.txt", kManager, kLoadStrRes, RESULT_NONE, 1, {Text("strres.txt")}},
    {"LoadStrRes missing.txt", kManager, kLoadStrRes, RESULT_NONE, 1, {Text("missing.txt")}},
    {"LoadStrRes (empty)", kManager, kLoadStrRes, RESULT_NONE, 1, {Text("")}},
    {"GetStrRes 12", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(12)}},
    {"GetStrRes 0", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(0)}},
    {"GetStrRes 5", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(5)}},
    {"GetStrRes 7", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(7)}},
    {"GetStrRes 42", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(42)}},
    {"GetStrRes 100 (before)", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(100)}},
    {"GetStrRes 0xFFFFFFFF", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(0xFFFFFFFFLL)}},
    {"GetStrRes 2147483647", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(2147483647)}},
    {"GetStrRes 300", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(300)}},
    {"GetStrRes 3 (miss)", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(3)}},
    {"LoadStrRes strres2.txt", kManager, kLoadStrRes, RESULT_NONE, 1, {Text("strres2.txt")}},
    {"GetStrRes 100 (after)", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(100)}},
    {"GetStrRes 301", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(301)}},
    {"GetStrRes 12 (kept)", kManager, kGetStrRes, RESULT_TEXT, 1, {Int(12)}},

    {"CommonIni MaleFaceAmount", kCommonIni, 7, RESULT_INT, 0, {}},
    {"CommonIni FemaleFaceAmount", kCommonIni, 8, RESULT_INT, 0, {}},
    {"CommonIni LeaderScale", kCommonIni, 9, RESULT_INT, 0, {}},
    {"CommonIni AssistantScale", kCommonIni, 10, RESULT_INT, 0, {}},
    {"CommonIni SubLeaderScale", kCommonIni, 11, RESULT_INT, 0, {}},
    {"CommonIni LeaderMaxLife", kCommonIni, 12, RESULT_INT, 0, {}},
    {"CommonIni AssistantMaxLife", kCommonIni, 13, RESULT_INT, 0, {}},
    {"CommonIni SubLeaderMaxLife", kCommonIni, 14, RESULT_INT, 0, {}},
    {"CommonIni EmblemAmount", kCommonIni, 15, RESULT_INT, 0, {}},

    // Generic lookups beyond the record dumps: ids, keys, defaults.
    {"GameMap FindRecord 1000", kGameMap, kFindRecord, RESULT_INT, 1, {Int(1000)}},
    {"GameMap FindRecord 1001", kGameMap, kFindRecord, RESULT_INT, 1, {Int(1001)}},
    {"GameMap FindRecord 999", kGameMap, kFindRecord, RESULT_INT, 1, {Int(999)}},
    {"GameMap ValueText 1 NAME", kGameMap, kValueText, RESULT_TEXT, 3, {Int(1), Text("NAME"), Text("-")}},
    {"GameMap ValueText 0 File", kGameMap, kValueText, RESULT_TEXT, 3, {Int(0), Text("File"), Text("-")}},
    {"GameMap ValueText 0 absent", kGameMap, kValueText, RESULT_TEXT, 3, {Int(0), Text("Nope"), Text("-")}},
    {"GameMap ValueText 9 Name", kGameMap, kValueText, RESULT_TEXT, 3, {Int(9), Text("Name"), Text("-")}},
    {"GameMap ValueInt 1 pkallowed", kGameMap, kValueInt, RESULT_INT, 3, {Int(1), Text("pkallowed"), Int(-9)}},
    {"GameMap ValueInt 0 absent", kGameMap, kValueInt, RESULT_INT, 3, {Int(0), Text("Nope"), Int(-9)}},
    {"AttackEffect ValueInt 0 Delay", kAttackEffect, kValueInt, RESULT_INT, 3, {Int(0), Text("Delay"), Int(-1)}},
    {"AttackEffect ValueText 1 effect", kAttackEffect, kValueText, RESULT_TEXT, 3, {Int(1), Text("effect"), Text("-")}},
    {"Damage ValueText 0 Text", kDamage, kValueText, RESULT_TEXT, 3, {Int(0), Text("Text"), Text("-")}},
    {"Damage ValueInt 0 Scale", kDamage, kValueInt, RESULT_INT, 3, {Int(0), Text("Scale"), Int(0)}},
    {"BuildingType FindRecord 1", kBuildingType, kFindRecord, RESULT_INT, 1, {Int(1)}},
    {"BuildingType FindRecord -4", kBuildingType, kFindRecord, RESULT_INT, 1, {Int(0xFFFFFFFCLL)}},
    {"BuildingType ValueText 0 any", kBuildingType, kValueText, RESULT_TEXT, 3, {Int(0), Text("1"), Text("-")}},
    {"BuildingType FieldInt 0 9", kBuildingType, kFieldInt, RESULT_INT, 3, {Int(0), Int(9), Int(-7)}},
    {"Portal RecordAmount", kPortal, kRecordAmount, RESULT_INT, 0, {}},
    {"Portal FindRecord 1", kPortal, kFindRecord, RESULT_INT, 1, {Int(1)}},
    {"Shop FindRecord 11", kShop, kFindRecord, RESULT_INT, 1, {Int(11)}},
    {"Shop RecordTitle 0", kShop, kRecordTitle, RESULT_TEXT, 1, {Int(0)}},
};

// Generic tables whose every record is printed; those the fixture's
// "DeferList.dat" names are printed again after each change of data version.
const int kGenericDumpSlots[] = {kGameMap, 14, kAttackEffect, kDamage, kBuildingType, kPortal, 73, kShop, 204};
const int kVersionDumpSlots[] = {kGameMap, 73, kShop};

using QueryFn = void* (*)();
using DestroyFn = void (*)();
using VersionQueryFn = int (*)();

int AnswerVersion200() { return 200; }
int AnswerVersion100() { return 100; }

FILE* g_pOut = nullptr;

void Print(const char* szFormat, ...)
{
    va_list args;
    va_start(args, szFormat);
    std::vfprintf(g_pOut, szFormat, args);
    va_end(args);
}

// Texts go out as printable ASCII: other bytes (GBK, CR, tab) as \xHH.
std::string Escaped(const char* szText)
{
    if (szText == nullptr)
        return "(null)";
    std::string strOut = "\"";
    for (std::size_t i = 0; szText[i] != '\0'; ++i) {
        const unsigned char c = static_cast<unsigned char>(szText[i]);
        if (c < 0x20 || c >= 0x7F || c == '"' || c == '\\') {
            char szHex[8];
            std::snprintf(szHex, sizeof(szHex), "\\x%02X", c);
            strOut += szHex;
        } else {
            strOut += static_cast<char>(c);
        }
    }
    return strOut + "\"";
}

void* Table(void* pMgr, int nSlot) { return reinterpret_cast<void*>(CallSlot(pMgr, nSlot)); }

Word ArgWord(const QueryArg& arg)
{
    return arg.szText != nullptr ? reinterpret_cast<Word>(arg.szText) : static_cast<Word>(arg.nValue);
}

Word CallLine(void* pObject, const QueryLine& line)
{
    const Word a = ArgWord(line.arg[0]), b = ArgWord(line.arg[1]), c = ArgWord(line.arg[2]);
    switch (line.nArgAmount) {
        case 0:
            return CallSlot(pObject, line.nQuerySlot);
        case 1:
            return CallSlot(pObject, line.nQuerySlot, a);
        case 2:
            return CallSlot(pObject, line.nQuerySlot, a, b);
        default:
            return CallSlot(pObject, line.nQuerySlot, a, b, c);
    }
}

void AskLine(void* pMgr, const QueryLine& line)
{
    void* pObject = line.nTableSlot == kManager ? pMgr : Table(pMgr, line.nTableSlot);
    const Word nResult = CallLine(pObject, line);
    switch (line.result) {
        case RESULT_NONE:
            Print("%s: done\n", line.szLabel);
            break;
        case RESULT_INT:
            Print("%s: %ld\n", line.szLabel, static_cast<long>(WordToInt(nResult)));
            break;
        case RESULT_TEXT:
            Print("%s: %s\n", line.szLabel, Escaped(reinterpret_cast<const char*>(nResult)).c_str());
            break;
    }
}

// Every record of a generic table, through its slots 7..16, including one
// index on each side of the records.
void DumpGenericTable(void* pMgr, int nSlot)
{
    void* pTable = Table(pMgr, nSlot);
    const int nAmount = WordToInt(CallSlot(pTable, kRecordAmount));
    Print("table %d: kind %ld, %d records\n", nSlot, static_cast<long>(WordToInt(CallSlot(pTable, kKind))), nAmount);
    for (int i = -1; i <= nAmount; ++i) {
        const int nFields = WordToInt(CallSlot(pTable, kFieldAmount, i));
        Print("  [%d] id %lu title %s fields %d:", i,
              static_cast<unsigned long>(WordToUInt(CallSlot(pTable, kRecordId, i))),
              Escaped(reinterpret_cast<const char*>(CallSlot(pTable, kRecordTitle, i))).c_str(), nFields);
        for (int f = 0; f <= nFields; ++f)
            Print(" %s/%ld", Escaped(reinterpret_cast<const char*>(CallSlot(pTable, kFieldText, i, f))).c_str(),
                  static_cast<long>(WordToInt(CallSlot(pTable, kFieldInt, i, f, -7))));
        Print("\n");
    }
}

void PrintDeferMarks(void* pMgr)
{
    Print("version-dependent tables:");
    for (int nSlot = kFirstAccessor; nSlot <= kLastAccessor; ++nSlot)
        if (WordToBool(CallSlot(Table(pMgr, nSlot), kIsDefer)))
            Print(" %d", nSlot);
    Print("\n");
}

// Every accessor answers a distinct, stable, non-null table.
void CheckAccessors(void* pMgr)
{
    int nBad = 0;
    for (int nSlot = kFirstAccessor; nSlot <= kLastAccessor; ++nSlot) {
        void* pTable = Table(pMgr, nSlot);
        if (pTable == nullptr || Table(pMgr, nSlot) != pTable ||
            (nSlot > kFirstAccessor && Table(pMgr, nSlot - 1) == pTable))
            ++nBad;
    }
    Print("accessors %d..%d: %d faulty\n", kFirstAccessor, kLastAccessor, nBad);
}

void ChangeVersion(void* pMgr, VersionQueryFn fn, const char* szName)
{
    CallSlot(pMgr, kSetVersionQuery, fn);
    const bool bSet = reinterpret_cast<VersionQueryFn>(CallSlot(pMgr, kGetVersionQuery)) == fn;
    CallSlot(pMgr, kReloadDeferred, true);
    Print("version callback %s (%s), deferred tables reloaded\n", szName, bSet ? "installed" : "NOT installed");
    for (int nSlot : kVersionDumpSlots)
        DumpGenericTable(pMgr, nSlot);
}

// Today's debug log, each entry's " -- <ctime>" stamp and the CR of a text-mode
// line end cut, so that the texts themselves are compared.
void PrintDebugLog()
{
    const time_t now = std::time(nullptr);
    const struct tm* pNow = std::localtime(&now);
    char szPath[64];
    std::snprintf(szPath, sizeof(szPath), "debug/%d_%d_%d.log", pNow->tm_year + 1900, pNow->tm_mon + 1, pNow->tm_mday);
    FILE* pLog = std::fopen(szPath, "rb");
    Print("debug log%s\n", pLog == nullptr ? ": none" : ":");
    if (pLog == nullptr)
        return;
    const std::size_t kStamp = std::strlen(" -- Mon Mar 07 14:05:09 2011");
    char szLine[2048];
    while (std::fgets(szLine, sizeof(szLine), pLog) != nullptr) {
        std::string strLine = szLine;
        while (!strLine.empty() && (strLine.back() == '\n' || strLine.back() == '\r'))
            strLine.pop_back();
        if (strLine.size() >= kStamp && strLine.compare(strLine.size() - kStamp, 4, " -- ") == 0)
            strLine.resize(strLine.size() - kStamp);
        Print("  %s\n", Escaped(strLine.c_str()).c_str());
    }
    std::fclose(pLog);
}

int Run(Library hLibrary)
{
    auto pfnQuery = reinterpret_cast<QueryFn>(LibrarySymbol(hLibrary, "QueryClientDataMgr"));
    auto pfnDestroy = reinterpret_cast<DestroyFn>(LibrarySymbol(hLibrary, "DestroyClientDataMgr"));
    if (pfnQuery == nullptr || pfnDestroy == nullptr) {
        Print("exports missing\n");
        return 1;
    }
    void* pMgr = pfnQuery();
    Print("manager: %s, second query %s\n", pMgr != nullptr ? "created" : "null",
          pfnQuery() == pMgr ? "the same" : "DIFFERENT");
    if (pMgr == nullptr)
        return 1;
    Print("version callback before any: %s\n", CallSlot(pMgr, kGetVersionQuery) == 0 ? "none" : "SET");

    // The client's start: version-dependent list, then both halves reloaded.
    CallSlot(pMgr, kLoadDeferList);
    CallSlot(pMgr, kReloadDeferred, false);
    CallSlot(pMgr, kReloadDeferred, true);
    CheckAccessors(pMgr);
    PrintDeferMarks(pMgr);

    for (const QueryLine& line : kQueryLines)
        AskLine(pMgr, line);
    for (int nSlot : kGenericDumpSlots)
        DumpGenericTable(pMgr, nSlot);

    ChangeVersion(pMgr, AnswerVersion200, "200");
    ChangeVersion(pMgr, AnswerVersion100, "100");

    pfnDestroy();
    void* pFresh = pfnQuery();
    Print("after destroy: fresh manager, GameMap holds %ld records\n",
          static_cast<long>(WordToInt(CallSlot(Table(pFresh, 13), kRecordAmount))));
    pfnDestroy();
    PrintDebugLog();
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: ContractTranscript <library> <transcript file>\n");
        return 2;
    }
    const Library hLibrary = LibraryOpen(argv[1]);
    if (hLibrary == nullptr) {
        std::fprintf(stderr, "cannot load %s\n", argv[1]);
        return 1;
    }
    // Binary, so that both platforms write "\n" alone.
    g_pOut = std::fopen(argv[2], "wb");
    if (g_pOut == nullptr) {
        std::fprintf(stderr, "cannot write %s\n", argv[2]);
        return 1;
    }
    const int nResult = Run(hLibrary);
    std::fclose(g_pOut);
    LibraryClose(hLibrary);
    return nResult;
}
