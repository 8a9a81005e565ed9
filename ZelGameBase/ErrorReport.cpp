#include "ZelGameBase/ErrorReport.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/Platform/PlatformReport.h"
#include "ZelGameBase/ReportPost.h"
#include "ZelGameBase/ZelCommon.h"

namespace {

constexpr int kMaxPosts = 4;
constexpr int kPostBlockSize = 4100;
constexpr int kReportSize = 4096;
constexpr int kHexDumpLimit = 256;
constexpr const char* kSetupFile = "ini/GameSetup.ini";

// Checked and then raised without a lock: two reports at the same moment may
// both pass the check, as they always could.
std::atomic<int> g_nReportCount{0};

// Appends szTail to szText (a buffer of nSize bytes), cut at its end.
void AppendBounded(char* szText, int nSize, const char* szTail)
{
    const std::size_t nLength = std::strlen(szText);
    if (nLength + 1 >= static_cast<std::size_t>(nSize))
        return;
    std::strncat(szText, szTail, static_cast<std::size_t>(nSize) - 1 - nLength);
}

// The build facts at the head of every posted report.
void ReportHeaderFormat(char* szOut, int nSize)
{
    // Up to 63 bytes as the file holds them: a line break stays in the text.
    char szRelease[64] = {};
    if (FILE* pFile = PlatformOpenFile("version.dat", "r")) {
        const std::size_t nRead = std::fread(szRelease, 1, sizeof(szRelease) - 1, pFile);
        szRelease[nRead] = '\0';
        std::fclose(pFile);
    }
    char szFileVersion[64] = {};
    PlatformHostFileVersion(szFileVersion, sizeof(szFileVersion));
    char szFileTime[32] = {};
    LocalTime fileTime{};
    if (PlatformHostFileTime(&fileTime))
        SafeSprintf(szFileTime, sizeof(szFileTime), "%02d%02d%02d-%02d%02d", fileTime.nYear, fileTime.nMonth,
                    fileTime.nDay, fileTime.nHour, fileTime.nMinute);
    SafeSprintf(szOut, nSize, "ReleaseVer:%s MsgVer:%d , FileVer:%s, FileTime:%s==", szRelease, kErrorMsgVersion,
                szFileVersion, szFileTime);
}

// The [DumpError] settings, read in this order; the first missing key ends
// the attempt (it is reported to the debugger output only).
struct DumpErrorSetup {
    char szEnable[1024];
    char szServer[1024];
    char szAction[1024];
    char szClient[1024];
};

bool DumpErrorSetupRead(DumpErrorSetup* pSetup)
{
    return IniStrGet(kSetupFile, "DumpError", "Enable", pSetup->szEnable, 0) != 0 &&
           IniStrGet(kSetupFile, "DumpError", "Server", pSetup->szServer, 0) != 0 &&
           IniStrGet(kSetupFile, "DumpError", "Action", pSetup->szAction, 0) != 0 &&
           IniStrGet(kSetupFile, "DumpError", "Client", pSetup->szClient, 0) != 0;
}

unsigned PosterMain(void* pArgument)
{
    char szReport[kPostBlockSize];
    SafeStrCopy(szReport, sizeof(szReport), static_cast<const char*>(pArgument));
    delete[] static_cast<char*>(pArgument);

    char szText[kReportSize] = {};
    ReportHeaderFormat(szText, sizeof(szText));
    AppendBounded(szText, sizeof(szText), szReport);

    auto* pSetup = new DumpErrorSetup{};
    if (DumpErrorSetupRead(pSetup) && CrtAtoi(pSetup->szEnable) == 1) {
        char szServer[256] = {};
        char szAction[256] = {};
        SafeStrCopy(szServer, 255, pSetup->szServer);
        SafeStrCopy(szAction, 255, pSetup->szAction);
        // Nothing is URL-encoded: the report goes into "msg" as it stands.
        char szBody[1024] = {};
        SafeSprintf(szBody, sizeof(szBody), "client=%s&msg=", pSetup->szClient);
        AppendBounded(szBody, sizeof(szBody), szText);
        ReportFormPost(szServer, szAction, szBody);
    }
    delete pSetup;
    return 0;
}

// Hands the poster a heap copy of szText; the poster frees it.
void PosterStart(const char* szText)
{
    char* pBlock = new char[kPostBlockSize]();
    SafeStrCopy(pBlock, kPostBlockSize, szText);
    if (!ReportWorkerStart(PosterMain, pBlock))
        delete[] pBlock;
}

// The connection test's argument, owned by its worker.
struct ConnectTarget {
    char szServer[32];
    int nPort;
};

// Opening texts (GBK): "the main thread failed to connect, and the test
// thread failed too" / "... the test thread connected"; closing text
// "IP address[%s:%d]".
#define ZEL_CONNECT_BOTH_FAILED                                                                                \
    "\xD6\xF7\xCF\xDF\xB3\xCC\xC1\xAC\xBD\xD3\xCA\xA7\xB0\xDC\xA3\xAC\xB2\xE2\xCA\xD4\xCF\xDF\xB3\xCC\xD2\xB2" \
    "\xC1\xAC\xBD\xD3\xCA\xA7\xB0\xDC!"
#define ZEL_CONNECT_TEST_CONNECTED                                                                             \
    "\xD6\xF7\xCF\xDF\xB3\xCC\xC1\xAC\xBD\xD3\xCA\xA7\xB0\xDC\xA3\xAC\xB2\xE2\xCA\xD4\xCF\xDF\xB3\xCC\xC1\xAC" \
    "\xBD\xD3\xB3\xC9\xB9\xA6!"
#define ZEL_CONNECT_ADDRESS "IP\xB5\xD8\xD6\xB7[%s:%d]"

void ConnectOutcomePost(ConnectOutcome outcome, int nError, const char* szServer, int nPort)
{
    switch (outcome) {
        case ConnectOutcome::StartupFailed:
            NetErrorPost(ZEL_CONNECT_BOTH_FAILED "--WSAStartup failed!--" ZEL_CONNECT_ADDRESS, szServer, nPort);
            break;
        case ConnectOutcome::VersionMismatch:
            NetErrorPost(ZEL_CONNECT_BOTH_FAILED "--unmatched socket version!--" ZEL_CONNECT_ADDRESS, szServer, nPort);
            break;
        case ConnectOutcome::SocketFailed:
            NetErrorPost(ZEL_CONNECT_BOTH_FAILED "--Create socket error!errno: %d.--" ZEL_CONNECT_ADDRESS, nError,
                         szServer, nPort);
            break;
        case ConnectOutcome::AddressInvalid:
            NetErrorPost(ZEL_CONNECT_BOTH_FAILED "--Create Server Addr failed!--" ZEL_CONNECT_ADDRESS, szServer, nPort);
            break;
        case ConnectOutcome::ConnectFailed:
            NetErrorPost(ZEL_CONNECT_BOTH_FAILED "--connect failed!errno: %d.--" ZEL_CONNECT_ADDRESS, nError, szServer,
                         nPort);
            break;
        case ConnectOutcome::Connected:
            NetErrorPost(ZEL_CONNECT_TEST_CONNECTED "--" ZEL_CONNECT_ADDRESS, szServer, nPort);
            break;
    }
}

unsigned ConnectTestMain(void* pArgument)
{
    const ConnectTarget target = *static_cast<ConnectTarget*>(pArgument);
    delete static_cast<ConnectTarget*>(pArgument);
    int nError = 0;
    const ConnectOutcome outcome = PlatformConnectTest(target.szServer, target.nPort, &nError);
    ConnectOutcomePost(outcome, nError, target.szServer, target.nPort);
    return outcome == ConnectOutcome::Connected ? 0u : static_cast<unsigned>(-1);
}

// The message of a report: formatted, cut to leave room for the line break.
void MessageFormat(char* szOut, int nSize, const char* szFormat, va_list args)
{
    if (szFormat != nullptr)
        std::vsnprintf(szOut, static_cast<std::size_t>(nSize) - 1, szFormat, args);
    std::strcat(szOut, "\n");
}

}  // namespace

void ErrorLogSave(const ZelExceptionPointers* pException, const char* szFormat, ...)
{
    char szMessage[kReportSize] = {};
    if (szFormat != nullptr) {
        va_list args;
        va_start(args, szFormat);
        std::vsnprintf(szMessage, sizeof(szMessage), szFormat, args);
        va_end(args);
    }
    char szStack[1024] = {};
    StackTraceText(6, szStack, sizeof(szStack), pException);
    char szText[1024] = {};
    SafeSprintf(szText, sizeof(szText), "Error:%s [%s]", szMessage, szStack);
    // Logged as the format of the entry: a "%%" in it becomes "%".
    LogMsgSave("%s", szText);
}

void ErrorReport(const ZelExceptionPointers* pException, const char* szFormat, ...)
{
    char szMessage[kReportSize] = {};
    va_list args;
    va_start(args, szFormat);
    MessageFormat(szMessage, sizeof(szMessage), szFormat, args);
    va_end(args);
    // Stack entries first, then the message.
    char szText[kReportSize] = {};
    StackTraceText(6, szText, sizeof(szText), pException);
    AppendBounded(szText, sizeof(szText), szMessage);
    LogMsgSave("%s", szText);
    ErrorPost(szText);
}

void ErrorPost(const char* szReport)
{
    if (szReport == nullptr || g_nReportCount.load() >= kMaxPosts)
        return;
    ++g_nReportCount;
    PosterStart(szReport);
}

void NetErrorPost(const char* szFormat, ...)
{
    char szText[kPostBlockSize] = {};
    va_list args;
    va_start(args, szFormat);
    MessageFormat(szText, sizeof(szText), szFormat, args);
    va_end(args);
    PosterStart(szText);
}

void ConnectTest(const char* szServer, int nPort)
{
    auto* pTarget = new ConnectTarget{};
    SafeStrCopy(pTarget->szServer, sizeof(pTarget->szServer), szServer != nullptr ? szServer : "");
    pTarget->nPort = nPort;
    if (!ReportWorkerStart(ConnectTestMain, pTarget))
        delete pTarget;
}

void HexDumpLog(const void* pData, int nCount)
{
    if (pData == nullptr || nCount < 0)
        nCount = 0;
    if (nCount > kHexDumpLimit)
        nCount = kHexDumpLimit;
    const auto* pByte = static_cast<const unsigned char*>(pData);
    char szText[kReportSize] = {};
    std::size_t nLength = 0;
    for (int i = 0; i < nCount; ++i)
        nLength += static_cast<std::size_t>(
            std::snprintf(szText + nLength, sizeof(szText) - nLength, "%x ", static_cast<unsigned>(pByte[i])));
    LogSave("%s", szText);
}

SeTranslatorScope::SeTranslatorScope() : m_pPrevious(PlatformSeTranslatorInstall()) {}

SeTranslatorScope::~SeTranslatorScope() { PlatformSeTranslatorRestore(m_pPrevious); }

void ErrorPostCountReset() { g_nReportCount = 0; }
