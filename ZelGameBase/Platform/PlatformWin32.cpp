// Win32 half of the platform layer: the system's own services, called as the
// client's library calls them (ANSI entry points, either slash accepted by
// the system itself).
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstring>
#include <ctime>

#include "ZelGameBase/Platform/Platform.h"

namespace {

// Statically initialised, so that the sink can be used from static
// initialisers and from any thread without a set-up call.
SRWLOCK g_sinkLock = SRWLOCK_INIT;
DebugSinkFn g_pfnDebugSink = nullptr;
void* g_pDebugSinkContext = nullptr;

// The mode with "t" dropped and "b" added when the file is only read: the
// readers see the bytes the file holds (a CR before a LF, a Ctrl-Z) on every
// platform. Writing modes keep the system's text convention.
std::string ReadModeOf(const char* szMode)
{
    std::string strMode;
    bool bBinary = false;
    for (const char* p = szMode; *p != '\0'; ++p) {
        if (*p == 't')
            continue;
        bBinary = bBinary || *p == 'b';
        strMode += *p;
    }
    if (!bBinary)
        strMode += 'b';
    return strMode;
}

// Opens szPath for reading and keeps it only when it is a file on disk:
// CreateFile does not wait on a pipe, and GetFileType tells a disk file from
// a pipe, a console or another device. Folders do not open without backup
// semantics.
HANDLE RegularFileOpen(const char* szPath, uint64_t* pnSize)
{
    HANDLE hFile = CreateFileA(szPath, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                               OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return hFile;
    LARGE_INTEGER size;
    if (GetFileType(hFile) != FILE_TYPE_DISK || !GetFileSizeEx(hFile, &size) || size.QuadPart < 0) {
        CloseHandle(hFile);
        return INVALID_HANDLE_VALUE;
    }
    *pnSize = static_cast<uint64_t>(size.QuadPart);
    return hFile;
}

}  // namespace

bool CPlatformFile::OpenRegular(const char* szPath)
{
    const HANDLE hFile = RegularFileOpen(szPath, &m_nSize);
    if (hFile == INVALID_HANDLE_VALUE)
        return false;
    m_hFile = reinterpret_cast<intptr_t>(hFile);
    return true;
}

int64_t CPlatformFile::ReadNative(void* pBuffer, std::size_t nSize)
{
    // ReadFile counts in 32 bits: at most 1 GiB a call.
    const DWORD nAsk = static_cast<DWORD>(nSize < (1u << 30) ? nSize : (1u << 30));
    DWORD nRead = 0;
    if (!ReadFile(reinterpret_cast<HANDLE>(m_hFile), pBuffer, nAsk, &nRead, nullptr))
        return -1;
    return static_cast<int64_t>(nRead);
}

void CPlatformFile::Close()
{
    if (IsOpen())
        CloseHandle(reinterpret_cast<HANDLE>(m_hFile));
    m_hFile = kClosed;
    m_nSize = 0;
    m_nPosition = 0;
}

FILE* PlatformOpenFile(const char* szPath, const char* szMode)
{
    if (szPath == nullptr || szMode == nullptr)
        return nullptr;
    if (szMode[0] != 'r' || std::strchr(szMode, '+') != nullptr)
        return std::fopen(szPath, szMode);
    uint64_t nSize = 0;
    const HANDLE hFile = RegularFileOpen(szPath, &nSize);
    if (hFile == INVALID_HANDLE_VALUE)
        return nullptr;
    const int fd = _open_osfhandle(reinterpret_cast<intptr_t>(hFile), _O_RDONLY | _O_BINARY);
    if (fd == -1) {
        CloseHandle(hFile);
        return nullptr;
    }
    // From here the descriptor owns the handle, and the stream the descriptor.
    FILE* pFile = _fdopen(fd, ReadModeOf(szMode).c_str());
    if (pFile == nullptr)
        _close(fd);
    return pFile;
}

std::string PlatformCurrentDirectory()
{
    char szDir[MAX_PATH + 1];
    const DWORD nLength = GetCurrentDirectoryA(sizeof(szDir), szDir);
    if (nLength == 0 || nLength >= sizeof(szDir))
        return std::string();
    std::string strDir(szDir, nLength);
    // A drive root comes with its separator ("C:\").
    if (!strDir.empty() && (strDir.back() == '\\' || strDir.back() == '/'))
        strDir.pop_back();
    return strDir;
}

std::string PlatformJoinPath(const std::string& strDir, const char* szName)
{
    return strDir + "\\" + (szName != nullptr ? szName : "");
}

bool PlatformFindFirstFile(const char* szDir, const char* szPattern, std::string& strName)
{
    if (szDir == nullptr || szPattern == nullptr)
        return false;
    const std::string strSearch = std::string(szDir) + "\\" + szPattern;
    WIN32_FIND_DATAA found;
    HANDLE hFind = FindFirstFileA(strSearch.c_str(), &found);
    if (hFind == INVALID_HANDLE_VALUE)
        return false;
    strName = found.cFileName;
    FindClose(hFind);
    return true;
}

void PlatformMakeDirectory(const char* szPath)
{
    if (szPath != nullptr)
        CreateDirectoryA(szPath, nullptr);
}

LocalTime PlatformLocalTime()
{
    const time_t now = std::time(nullptr);
    // The runtime keeps localtime's result per thread.
    const struct tm* pLocal = std::localtime(&now);
    if (pLocal == nullptr)
        return LocalTime{1970, 1, 1, 0, 0, 0, 4};
    return LocalTime{pLocal->tm_year + 1900, pLocal->tm_mon + 1, pLocal->tm_mday, pLocal->tm_hour,
                     pLocal->tm_min,         pLocal->tm_sec,     pLocal->tm_wday};
}

void PlatformSetDebugSink(DebugSinkFn fn, void* pContext)
{
    AcquireSRWLockExclusive(&g_sinkLock);
    g_pfnDebugSink = fn;
    g_pDebugSinkContext = pContext;
    ReleaseSRWLockExclusive(&g_sinkLock);
}

void PlatformDebugOutput(const char* szText)
{
    if (szText == nullptr)
        return;
    AcquireSRWLockExclusive(&g_sinkLock);
    if (g_pfnDebugSink != nullptr)
        g_pfnDebugSink(szText, g_pDebugSinkContext);
    ReleaseSRWLockExclusive(&g_sinkLock);
    OutputDebugStringA(szText);
}

unsigned PlatformGetPrivateProfileInt(const char* szSection, const char* szKey, int nDefault, const char* szPath)
{
    if (szSection == nullptr || szKey == nullptr || szPath == nullptr)
        return static_cast<unsigned>(nDefault);
    return GetPrivateProfileIntA(szSection, szKey, nDefault, szPath);
}

void* PlatformHeapAlloc(std::size_t nBytes) { return HeapAlloc(GetProcessHeap(), 0, nBytes != 0 ? nBytes : 1); }

void PlatformHeapFree(void* pBlock)
{
    if (pBlock != nullptr)
        HeapFree(GetProcessHeap(), 0, pBlock);
}
