// POSIX half of the platform layer: the Win32 behaviours the data depends on,
// emulated (either slash separates folders, file-name patterns match without
// regard to ASCII case, the private-profile reader follows Windows' rules).
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <mutex>

#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/Platform/ProfileReader.h"

namespace {

std::atomic<unsigned long> g_nReadFileCount{0};
std::mutex g_sinkLock;
DebugSinkFn g_pfnDebugSink = nullptr;
void* g_pDebugSinkContext = nullptr;

std::string NativePath(const char* szPath)
{
    std::string strPath = szPath != nullptr ? szPath : "";
    for (char& c : strPath)
        if (c == '\\')
            c = '/';
    return strPath;
}

// "*" matches any run, "?" one character; letters match in either case.
bool MatchPattern(const char* szPattern, const char* szName)
{
    if (*szPattern == '\0')
        return *szName == '\0';
    if (*szPattern == '*')
        return MatchPattern(szPattern + 1, szName) || (*szName != '\0' && MatchPattern(szPattern, szName + 1));
    if (*szName == '\0')
        return false;
    if (*szPattern != '?' && CrtToLower(*szPattern) != CrtToLower(*szName))
        return false;
    return MatchPattern(szPattern + 1, szName + 1);
}

char ToUpper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - ('a' - 'A')) : c; }

// NTFS name order: bytes compared with ASCII letters upper-cased; names equal
// so fall back to plain byte order to stay deterministic.
bool ListsBefore(const std::string& strA, const std::string& strB)
{
    for (std::size_t i = 0; i < strA.size() && i < strB.size(); ++i) {
        const unsigned char a = static_cast<unsigned char>(ToUpper(strA[i]));
        const unsigned char b = static_cast<unsigned char>(ToUpper(strB[i]));
        if (a != b)
            return a < b;
    }
    return strA.size() != strB.size() ? strA.size() < strB.size() : strA < strB;
}

}  // namespace

FILE* PlatformOpenFile(const char* szPath, const char* szMode)
{
    if (szPath == nullptr || szMode == nullptr)
        return nullptr;
    const std::string strPath = NativePath(szPath);
    struct stat info;
    // fopen would open a directory for reading; Windows does not.
    if (stat(strPath.c_str(), &info) == 0 && S_ISDIR(info.st_mode))
        return nullptr;
    return std::fopen(strPath.c_str(), szMode);
}

bool PlatformReadFile(const char* szPath, std::string& data)
{
    ++g_nReadFileCount;
    data.clear();
    if (szPath == nullptr)
        return false;
    // Straight into the string, sized from fstat: no stdio buffer, no copy.
    const int fd = open(NativePath(szPath).c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct stat info;
    bool bOk = fstat(fd, &info) == 0 && !S_ISDIR(info.st_mode);
    std::size_t nUsed = 0;
    // One byte spare, so that the read that sees the end needs no growth.
    if (bOk)
        data.resize((info.st_size > 0 ? static_cast<std::size_t>(info.st_size) : 0) + 1);
    // The file may grow or shrink while it is read: read until end of file.
    while (bOk) {
        if (nUsed == data.size())
            data.resize(data.size() + 65536);
        const ssize_t nRead = read(fd, &data[nUsed], data.size() - nUsed);
        if (nRead < 0 && errno == EINTR)
            continue;
        if (nRead <= 0) {
            bOk = nRead == 0;
            break;
        }
        nUsed += static_cast<std::size_t>(nRead);
    }
    close(fd);
    data.resize(bOk ? nUsed : 0);
    return bOk;
}

unsigned long PlatformReadFileCount() { return g_nReadFileCount.load(); }

std::string PlatformCurrentDirectory()
{
    char szDir[4096];
    if (getcwd(szDir, sizeof(szDir)) == nullptr)
        return std::string();
    return szDir;
}

std::string PlatformJoinPath(const std::string& strDir, const char* szName)
{
    return strDir + "/" + (szName != nullptr ? szName : "");
}

bool PlatformFindFirstFile(const char* szDir, const char* szPattern, std::string& strName)
{
    if (szDir == nullptr || szPattern == nullptr)
        return false;
    DIR* pDir = opendir(NativePath(szDir).c_str());
    if (pDir == nullptr)
        return false;
    // readdir lists in no fixed order; NTFS lists by upper-cased name, so the
    // first match in that order is the one the client would see.
    bool bFound = false;
    while (dirent* pEntry = readdir(pDir)) {
        if (MatchPattern(szPattern, pEntry->d_name) && (!bFound || ListsBefore(pEntry->d_name, strName))) {
            strName = pEntry->d_name;
            bFound = true;
        }
    }
    closedir(pDir);
    return bFound;
}

void PlatformMakeDirectory(const char* szPath) { mkdir(NativePath(szPath).c_str(), 0777); }

LocalTime PlatformLocalTime()
{
    const time_t now = std::time(nullptr);
    struct tm local {};
    localtime_r(&now, &local);
    return LocalTime{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                     local.tm_min,         local.tm_sec,     local.tm_wday};
}

void PlatformSetDebugSink(DebugSinkFn fn, void* pContext)
{
    std::lock_guard<std::mutex> guard(g_sinkLock);
    g_pfnDebugSink = fn;
    g_pDebugSinkContext = pContext;
}

void PlatformDebugOutput(const char* szText)
{
    if (szText == nullptr)
        return;
    {
        std::lock_guard<std::mutex> guard(g_sinkLock);
        if (g_pfnDebugSink != nullptr)
            g_pfnDebugSink(szText, g_pDebugSinkContext);
    }
    if (std::getenv("ZEL_DEBUG_OUTPUT") != nullptr)
        std::fputs(szText, stderr);
}

unsigned PlatformGetPrivateProfileInt(const char* szSection, const char* szKey, int nDefault, const char* szPath)
{
    std::string strText;
    if (szSection == nullptr || szKey == nullptr || !PlatformReadFile(szPath, strText))
        return static_cast<unsigned>(nDefault);
    return ProfileGetInt(strText.data(), strText.size(), szSection, szKey, nDefault);
}

void* PlatformHeapAlloc(std::size_t nBytes) { return std::malloc(nBytes != 0 ? nBytes : 1); }

void PlatformHeapFree(void* pBlock) { std::free(pBlock); }
