// POSIX half of the platform layer: the Win32 behaviours the data depends on,
// emulated (either slash separates folders, file-name patterns match without
// regard to ASCII case, the private-profile reader follows Windows' rules).
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <mutex>

#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/Platform/ProfileReader.h"

namespace {

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

// Opens without blocking (a FIFO would otherwise wait for its other end)
// and keeps the descriptor only when it names a regular file; blocking mode
// is then restored so that it behaves as any other file's.
int RegularDescriptorOpen(const std::string& strPath, int nFlags, uint64_t* pnSize)
{
    const int fd = open(strPath.c_str(), nFlags | O_NONBLOCK | O_CLOEXEC, 0666);
    if (fd < 0)
        return -1;
    struct stat info {};
    if (fstat(fd, &info) != 0 || !S_ISREG(info.st_mode) || info.st_size < 0) {
        close(fd);
        return -1;
    }
    const int nStatus = fcntl(fd, F_GETFL);
    if (nStatus != -1)
        fcntl(fd, F_SETFL, nStatus & ~O_NONBLOCK);
    if (pnSize != nullptr)
        *pnSize = static_cast<uint64_t>(info.st_size);
    return fd;
}

// Opens szPath for reading, only when it is a regular file.
int RegularFileOpen(const char* szPath, uint64_t* pnSize)
{
    const std::string strPath = NativePath(szPath);
    struct stat info;
    // A device is not even opened (opening some has effects of its own); the
    // check on the open descriptor is the one that counts.
    if (stat(strPath.c_str(), &info) != 0 || !S_ISREG(info.st_mode))
        return -1;
    return RegularDescriptorOpen(strPath, O_RDONLY, pnSize);
}

// A stream over fd (closed when no stream can be made); null for -1.
FILE* StreamOfDescriptor(int fd, const char* szMode)
{
    if (fd < 0)
        return nullptr;
    FILE* pFile = fdopen(fd, szMode);
    if (pFile == nullptr)
        close(fd);
    return pFile;
}

}  // namespace

bool CPlatformFile::OpenRegular(const char* szPath)
{
    const int fd = RegularFileOpen(szPath, &m_nSize);
    if (fd < 0)
        return false;
    m_hFile = fd;
    return true;
}

int64_t CPlatformFile::ReadNative(void* pBuffer, std::size_t nSize)
{
    for (;;) {
        const ssize_t nRead = read(static_cast<int>(m_hFile), pBuffer, nSize);
        if (nRead >= 0 || errno != EINTR)
            return nRead;
    }
}

void CPlatformFile::Close()
{
    if (IsOpen())
        close(static_cast<int>(m_hFile));
    m_hFile = kClosed;
    m_nSize = 0;
    m_nPosition = 0;
}

FILE* PlatformOpenFile(const char* szPath, const char* szMode)
{
    if (szPath == nullptr || szMode == nullptr)
        return nullptr;
    if (szMode[0] == 'a') {
        const int nAccess = std::strchr(szMode, '+') != nullptr ? O_RDWR : O_WRONLY;
        return StreamOfDescriptor(RegularDescriptorOpen(NativePath(szPath), nAccess | O_CREAT | O_APPEND, nullptr),
                                  szMode);
    }
    if (szMode[0] != 'r' || std::strchr(szMode, '+') != nullptr)
        return std::fopen(NativePath(szPath).c_str(), szMode);
    return StreamOfDescriptor(RegularFileOpen(szPath, nullptr), szMode);
}

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
    bool bFound = false;
    while (dirent* pEntry = readdir(pDir)) {
        if (MatchPattern(szPattern, pEntry->d_name)) {
            strName = pEntry->d_name;
            bFound = true;
            break;
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
