// The contract transcript: loads the library at run time, loads the data
// folder (the working directory) as the client does, asks a fixed list of
// questions through raw vtable slots and writes every answer to a file. The
// same source is built for Linux and for Windows; the two transcripts of one
// data folder must be byte for byte the same.
//
//   ContractTranscript <library> <transcript file>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>

#include "ContractCall.h"
#include "ContractQueries.h"

namespace {

// Manager slots.
enum : int {
    kSetVersionQuery = 3,
    kGetVersionQuery = 4,
    kLoadDeferList = 5,
    kReloadDeferred = 8,
    kFirstAccessor = 9,
    kLastAccessor = 205,
};
// Table base slots.
enum : int { kIsDefer = 4 };
// IGenericTable slots.
enum : int {
    kRecordAmount = 7,
    kRecordId = 9,
    kRecordTitle = 10,
    kFieldAmount = 11,
    kFieldText = 12,
    kFieldInt = 13,
    kKind = 16,
};

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
std::string Escaped(const char* szText, std::size_t nMax = static_cast<std::size_t>(-1))
{
    if (szText == nullptr)
        return "(null)";
    std::string strOut = "\"";
    for (std::size_t i = 0; i < nMax && szText[i] != '\0'; ++i) {
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

// A record's fields in declaration order, each scalar at its natural
// alignment; both targets are little-endian.
std::string FormatRecord(const unsigned char* pRecord, const RecordLayout& layout)
{
    static const int kScalarSize[] = {1, 1, 2, 2, 4, 4, 8, 1};
    std::string strOut = "{";
    int nOffset = 0;
    for (int i = 0; i < layout.nFieldAmount; ++i) {
        const RecordField& field = layout.pField[i];
        const int nSize = kScalarSize[field.type];
        nOffset = (nOffset + nSize - 1) / nSize * nSize;
        strOut += std::string(i == 0 ? "" : ", ") + field.szName + "=";
        if (field.type == FIELD_TEXT) {
            strOut += Escaped(reinterpret_cast<const char*>(pRecord + nOffset), static_cast<std::size_t>(field.nSize));
            nOffset += field.nSize;
            continue;
        }
        uint64_t nBits = 0;
        std::memcpy(&nBits, pRecord + nOffset, static_cast<std::size_t>(nSize));
        const int nShift = 64 - 8 * nSize;
        const bool bSigned = field.type == FIELD_I8 || field.type == FIELD_I16 || field.type == FIELD_I32;
        strOut += bSigned ? std::to_string(static_cast<long long>(nBits << nShift) >> nShift)
                          : std::to_string(static_cast<long long>(nBits));
        nOffset += nSize;
    }
    return strOut + "}";
}

Word ArgWord(const QueryArg& arg)
{
    return arg.szText != nullptr ? reinterpret_cast<Word>(arg.szText) : static_cast<Word>(arg.nValue);
}

Word CallLine(void* pObject, const QueryLine& line)
{
    const Word a = ArgWord(line.arg[0]), b = ArgWord(line.arg[1]), c = ArgWord(line.arg[2]), d = ArgWord(line.arg[3]);
    switch (line.nArgAmount) {
        case 0:
            return CallSlot(pObject, line.nQuerySlot);
        case 1:
            return CallSlot(pObject, line.nQuerySlot, a);
        case 2:
            return CallSlot(pObject, line.nQuerySlot, a, b);
        case 3:
            return CallSlot(pObject, line.nQuerySlot, a, b, c);
        default:
            return CallSlot(pObject, line.nQuerySlot, a, b, c, d);
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
        case RESULT_UINT:
            Print("%s: %lu\n", line.szLabel, static_cast<unsigned long>(WordToUInt(nResult)));
            break;
        case RESULT_BOOL:
            Print("%s: %s\n", line.szLabel, WordToBool(nResult) ? "true" : "false");
            break;
        case RESULT_TEXT:
            Print("%s: %s\n", line.szLabel, Escaped(reinterpret_cast<const char*>(nResult)).c_str());
            break;
        case RESULT_RECORD:
            if (nResult == 0)
                Print("%s: (null)\n", line.szLabel);
            else
                Print("%s: %s\n", line.szLabel,
                      FormatRecord(reinterpret_cast<const unsigned char*>(nResult), *line.pLayout).c_str());
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
    for (int i = 0; i < kVersionDumpSlotAmount; ++i)
        DumpGenericTable(pMgr, kVersionDumpSlots[i]);
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

int Run(CContractLibrary& library)
{
    auto pfnQuery = reinterpret_cast<QueryFn>(library.Symbol("QueryClientDataMgr"));
    auto pfnDestroy = reinterpret_cast<DestroyFn>(library.Symbol("DestroyClientDataMgr"));
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

    for (int i = 0; i < kQueryLineAmount; ++i)
        AskLine(pMgr, kQueryLines[i]);
    for (int i = 0; i < kGenericDumpSlotAmount; ++i)
        DumpGenericTable(pMgr, kGenericDumpSlots[i]);

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
    CContractLibrary library;
    if (!library.Open(argv[1])) {
        std::fprintf(stderr, "cannot load %s\n", argv[1]);
        return 1;
    }
    // Binary, so that both platforms write "\n" alone.
    g_pOut = std::fopen(argv[2], "wb");
    if (g_pOut == nullptr) {
        std::fprintf(stderr, "cannot write %s\n", argv[2]);
        return 1;
    }
    const int nResult = Run(library);
    std::fclose(g_pOut);
    return nResult;
}
