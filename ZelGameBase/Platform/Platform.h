// The only door to the operating system. Everything above this header is
// identical on Windows and POSIX; PlatformWin32.cpp and PlatformPosix.cpp are
// the two implementations, chosen by the build.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "ZelGameBase/ZelCrt.h"

// A data file open for reading. Only a regular file opens: a FIFO, a device,
// a socket or a folder is refused as an unreadable file is, and opening never
// blocks. The size is taken when the file opens and reads never go past it:
// a file that grows meanwhile is cut at that size, one that shrinks ends
// early. Sizes and positions are 64-bit on every platform.
class CPlatformFile {
public:
    CPlatformFile() = default;
    ~CPlatformFile() { Close(); }
    CPlatformFile(const CPlatformFile&) = delete;
    CPlatformFile& operator=(const CPlatformFile&) = delete;

    // Either slash separates folders. False when the path is missing,
    // unreadable or not a regular file.
    bool Open(const char* szPath);
    void Close();
    bool IsOpen() const { return m_hFile != kClosed; }
    // The size when the file was opened.
    uint64_t GetSize() const { return m_nSize; }
    // Reads at most nSize bytes at the current position, never past the size
    // at open. Bytes read; 0 at that size or when the file ended early; -1
    // on a read error.
    int64_t Read(void* pBuffer, std::size_t nSize);

private:
    // Each half: opens szPath natively, refusing all but a regular file, and
    // sets m_hFile and m_nSize.
    bool OpenRegular(const char* szPath);
    int64_t ReadNative(void* pBuffer, std::size_t nSize);

    static constexpr intptr_t kClosed = -1;
    intptr_t m_hFile = kClosed;  // descriptor or HANDLE
    uint64_t m_nSize = 0;
    uint64_t m_nPosition = 0;
};

// Tests change a file between its open and its first read: fn runs right
// after every CPlatformFile::Open that succeeded. Null removes it.
using FileOpenHookFn = void (*)(const char* szPath, void* pContext);
void PlatformSetFileOpenHook(FileOpenHookFn fn, void* pContext);

// fopen with the path as the data names it: either slash style separates
// folders on every platform. A read-only mode opens only a regular file, as
// CPlatformFile does (the stream itself is not cut at the size at open). An
// appending mode (the debug log) creates a missing file and on POSIX opens
// only a regular one, without blocking: a FIFO in its place would block the
// open or, once full, a write.
FILE* PlatformOpenFile(const char* szPath, const char* szMode);

// Reads a whole file into data, up to its size at open. False (data emptied)
// when it cannot be opened, does not fit in memory, or delivers less than
// that size. Allocation failure is reported, never thrown.
bool PlatformReadFile(const char* szPath, std::string& data);
// How many PlatformReadFile calls this process made; lets tests prove that a
// reader costs one pass over its file.
unsigned long PlatformReadFileCount();

// The working directory, without a trailing separator; empty on failure.
std::string PlatformCurrentDirectory();
// Joins a directory and a file name with the platform's separator.
std::string PlatformJoinPath(const std::string& strDir, const char* szName);

// First entry of szDir matching szPattern ("*.ttf"; "*" and "?" wildcards,
// ASCII case-insensitive as on Windows), in the order the system's directory
// listing returns them (FindFirstFile/FindNextFile, readdir); nothing is
// sorted. False when none.
bool PlatformFindFirstFile(const char* szDir, const char* szPattern, std::string& strName);

// The process heap: blocks that a client built with another compiler's
// runtime may free or grow, since that runtime allocates from the process
// heap too (malloc and free off Windows). Null on failure; never throws.
void* PlatformHeapAlloc(std::size_t nBytes);
void PlatformHeapFree(void* pBlock);

// Creates one directory; failure (it exists, no rights) is ignored.
void PlatformMakeDirectory(const char* szPath);
// Opens szPath for appending in text mode, writes szText, closes. False when
// it cannot be opened.
bool PlatformAppendText(const char* szPath, const char* szText);

// Current local time.
LocalTime PlatformLocalTime();

// Debugger output (OutputDebugStringA). Tests install a sink to capture it;
// on POSIX it also goes to standard error when ZEL_DEBUG_OUTPUT is set.
using DebugSinkFn = void (*)(const char* szText, void* pContext);
void PlatformDebugOutput(const char* szText);
void PlatformSetDebugSink(DebugSinkFn fn, void* pContext);

// GetPrivateProfileIntA: the integer under [szSection] szKey of the ini file
// at szPath, or nDefault when the file, section or key is absent.
unsigned PlatformGetPrivateProfileInt(const char* szSection, const char* szKey, int nDefault,
                                      const char* szPath);
