// The only door to the operating system. Everything above this header is
// identical on Windows and POSIX; PlatformWin32.cpp and PlatformPosix.cpp are
// the two implementations, chosen by the build.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "ZelGameBase/ZelCrt.h"

// fopen with the path as the data names it: either slash style separates
// folders on every platform.
FILE* PlatformOpenFile(const char* szPath, const char* szMode);

// Reads a whole file into data. False (data emptied) when it cannot be opened
// or read whole.
bool PlatformReadFile(const char* szPath, std::string& data);
// How many PlatformReadFile calls this process made; lets tests prove that a
// reader costs one pass over its file.
unsigned long PlatformReadFileCount();

// The working directory, without a trailing separator; empty on failure.
std::string PlatformCurrentDirectory();
// Joins a directory and a file name with the platform's separator.
std::string PlatformJoinPath(const std::string& strDir, const char* szName);

// First entry of szDir matching szPattern ("*.ttf"; "*" and "?" wildcards,
// ASCII case-insensitive as on Windows), in the order the system lists them
// (the POSIX half follows NTFS: upper-cased name order). False when none.
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
