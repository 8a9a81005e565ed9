// Ini readers and bounded copies of the foundation library.
//
// IniDataGet / IniStrGet read one value from an ini file on disk, token by
// token; each call opens, scans and closes the file. MemIniDataGet /
// MemIniStrGet find one value in an ini image held in memory, line by line,
// through the line-wise lookup of IniSectionReader.h (with the line reader
// MemIniReadLine / StreamIniReadLine). Tables that read many keys of one file
// use CIniSectionReader instead.
#pragma once

#include <cstddef>

#include "ZelGameBase/IniSectionReader.h"

// Reads [szTitle] szSubtitle=<int> from szIniFile.
//
// The file is read as a stream, up to its size when opened; only a regular
// file is read.
//
// The file is a sequence of blank-separated tokens (at most 1023 characters
// each). The section starts at the first token equal to "[szTitle]" (ASCII
// case-insensitive) and ends at a token holding both "[" and "]". A value is a
// token that begins with exactly szSubtitle "=" (case-sensitive, a prefix
// match); the first such token wins and its value converts as "%d" does.
// A token on which the scan runs out of input before converting also counts
// as found, with *pData untouched: a proper prefix of szSubtitle "=" (the
// bare key of a file written "key = 5"), or "key=" / "key=-" with nothing
// after. pData may be null: the search runs all the same.
// Not found: "Error: [%s] %s not found in %s." goes to the debug log when
// bLogFile is non-zero, else to the debugger output.
// Returns 1 when found, 0 otherwise (also for null names or a missing file,
// which log nothing).
int IniDataGet(const char* szIniFile, const char* szTitle, const char* szSubtitle, int* pData, int bLogFile);

// The same for a word of text: the rest of the token after "=", copied into
// szData, cut to nDataSize - 1 characters. Untouched when not found.
int IniStrGet(const char* szIniFile, const char* szTitle, const char* szSubtitle, char* szData, int bLogFile,
              int nDataSize = 1024);

// Reads an integer through the system's profile reader (szIniFile relative to
// the working directory), default 444444. The result is stored in every case;
// 1 when it differs from 444444, else 0 with "%s [%s] %s not found." sent to
// the debugger output (so a stored 444444 reads as missing).
int ProfileIntGet(const char* szIniFile, const char* szTitle, const char* szSubtitle, unsigned* pData);

// Line-wise lookup in an ini image of nLength bytes (no terminator needed).
// The header line must equal "[szTitle]" as a whole (ASCII case-insensitive);
// the section ends at a line holding both "[" and "]". A line matches when it
// begins with szSubtitle "="; the value is the first word after it (leading
// blanks skipped). As in IniDataGet, a line on which the scan runs out of
// input counts as found without storing; an empty line inside the section is
// such a line. The last character of an unterminated last line is lost,
// and a line of 1024 bytes or more ends the search: both are facts of the
// format that data files rely on. Not found: "Error: [%s] %s not found in
// MemIniStrGet." (or MemIniDataGet) to the log or the debugger output.
int MemIniStrGet(const char* pImage, unsigned nLength, const char* szTitle, const char* szSubtitle, char* szData,
                 int bLogFile, int nDataSize = 1024);
int MemIniDataGet(const char* pImage, unsigned nLength, const char* szTitle, const char* szSubtitle, int* pData,
                  int bLogFile);

// MemIniStrGet / MemIniDataGet over the file at szPath read as a stream
// instead of one image: the same lines, answers and messages (they name
// MemIniStrGet / MemIniDataGet), in one buffer's memory whatever the file's
// size. 0 without a message when the file cannot be read.
int FileIniStrGet(const char* szPath, const char* szTitle, const char* szSubtitle, char* szData, int bLogFile,
                  int nDataSize = 1024);
int FileIniDataGet(const char* szPath, const char* szTitle, const char* szSubtitle, int* pData, int bLogFile);

// Copies at most nSize - 1 characters of szSource into szOut (zero-filling the
// rest) and terminates at nSize - 1. False only for a null buffer or source.
bool SafeStrCopy(char* szOut, int nSize, const char* szSource);

// Formats into szOut, cut to nSize - 1 characters and always terminated.
// False for a null buffer or format or a size below 1.
bool SafeSprintf(char* szOut, int nSize, const char* szFormat, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 3, 4)))
#endif
    ;
