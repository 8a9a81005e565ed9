#include "ZelGameBase/ZelGameBase.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/Platform/Platform.h"

namespace {

LogClockFn g_pfnLogClock = nullptr;
LogObserverFn g_pfnLogObserver = nullptr;
void* g_pLogObserverContext = nullptr;
char g_szLogFolder[256] = "";  // empty: ./debug, made on demand

LocalTime LogNow() { return g_pfnLogClock != nullptr ? g_pfnLogClock() : PlatformLocalTime(); }

// The second pass of a two-pass log: the first result is read again as a
// format with no arguments, so "%%" becomes "%"; any other conversion is
// copied as it stands instead of reading an argument that is not there.
void CollapsePercents(const char* szIn, char* szOut, std::size_t nSize)
{
    std::size_t nOut = 0;
    for (const char* p = szIn; *p != '\0' && nOut + 1 < nSize; ++p) {
        szOut[nOut++] = *p;
        if (p[0] == '%' && p[1] == '%')
            ++p;
    }
    szOut[nOut] = '\0';
}

}  // namespace

void LogSetClock(LogClockFn fn) { g_pfnLogClock = fn; }

void LogSetFolder(const char* szFolder)
{
    if (szFolder == nullptr)
        g_szLogFolder[0] = '\0';
    else
        std::snprintf(g_szLogFolder, sizeof(g_szLogFolder), "%s", szFolder);
}

void LogSetObserver(LogObserverFn fn, void* pContext)
{
    g_pfnLogObserver = fn;
    g_pLogObserverContext = pContext;
}

void LogWriteEntry(const char* szMessage)
{
    if (szMessage == nullptr)
        return;
    if (g_pfnLogObserver != nullptr)
        g_pfnLogObserver(szMessage, g_pLogObserverContext);
    // One instant names the file and stamps the entry.
    const LocalTime now = LogNow();
    char szPath[512] = "debug.log";  // never opened: the dated name replaces it
    if (g_szLogFolder[0] == '\0') {
        PlatformMakeDirectory("debug");
        std::snprintf(szPath, sizeof(szPath), "./debug/%u_%u_%u.log", static_cast<unsigned>(now.nYear),
                      static_cast<unsigned>(now.nMonth), static_cast<unsigned>(now.nDay));
    } else {
        std::snprintf(szPath, sizeof(szPath), "%s/%u_%u_%u.log", g_szLogFolder, static_cast<unsigned>(now.nYear),
                      static_cast<unsigned>(now.nMonth), static_cast<unsigned>(now.nDay));
    }
    char szTime[32];
    CrtFormatCtime(now, szTime);
    // An entry that finds no memory is dropped like one that cannot be written.
    AllocationTry([&] {
        std::string strEntry;
        strEntry.reserve(std::strlen(szMessage) + 32);
        strEntry.append(szMessage).append(" -- ").append(szTime);
        PlatformAppendText(szPath, strEntry.c_str());
    });
}

void LogSaveV(const char* szFormat, va_list args)
{
    if (szFormat == nullptr)
        return;
    char szMessage[1024] = {};
    std::vsnprintf(szMessage, sizeof(szMessage), szFormat, args);
    LogWriteEntry(szMessage);
}

void LogSave(const char* szFormat, ...)
{
    va_list args;
    va_start(args, szFormat);
    LogSaveV(szFormat, args);
    va_end(args);
}

void LogMsgSave(const char* szFormat, ...)
{
    if (szFormat == nullptr)
        return;
    char szFirst[1024] = {};
    va_list args;
    va_start(args, szFormat);
    std::vsnprintf(szFirst, sizeof(szFirst), szFormat, args);
    va_end(args);
    char szSecond[1024] = {};
    CollapsePercents(szFirst, szSecond, sizeof(szSecond));
    LogWriteEntry(szSecond);
}

void DebugStrOut(const char* szFormat, ...)
{
    if (szFormat == nullptr)
        return;
    char szMessage[1024] = {};
    va_list args;
    va_start(args, szFormat);
    // Room is kept for the line feed.
    std::vsnprintf(szMessage, sizeof(szMessage) - 1, szFormat, args);
    va_end(args);
    std::strcat(szMessage, "\n");
    PlatformDebugOutput(szMessage);
}

void LogAssert(const char* szCondition, int nLine, const char* szUnit)
{
    LogSave(ZEL_STAR "ASSERT(%s) in %d line of %s" ZEL_STAR, szCondition, nLine, szUnit);
}
