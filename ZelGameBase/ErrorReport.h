// Error reports: a fault's message and stack text go to the debug log and,
// for ErrorReport, on to a web form named in "ini/GameSetup.ini" [DumpError]
// (Enable=1, Server, Action, Client), posted from a background worker so
// that faults on players' machines reach the developers. A connection test
// and a hex dump complete the set.
//
// Nothing here blocks or fails its caller: posts and tests run on detached
// workers that own their copy of the text, and every failure is quiet.
#pragma once

#include "ZelGameBase/StackTrace.h"
#include "ZelGameBase/ZelGameBase.h"

// The report format's version, sent as "MsgVer" in every posted report.
constexpr int kErrorMsgVersion = 271;

// Writes "Error:<message> [<stack text>]" to the debug log; the stack is the
// faulting code's when pException is given, else the caller's. No post.
void ErrorLogSave(const ZelExceptionPointers* pException, const char* szFormat, ...) ZEL_PRINTF_FORMAT(2, 3);

// Writes the stack text followed by the message and a line break to the
// debug log, then hands the same text to ErrorPost.
void ErrorReport(const ZelExceptionPointers* pException, const char* szFormat, ...) ZEL_PRINTF_FORMAT(2, 3);

// Starts the poster on a copy of szReport (cut to 4099 characters). Only the
// first four reports of a process are posted; later ones, and a null text,
// are dropped. The count takes no lock, so reports racing from several
// threads may post a fifth.
void ErrorPost(const char* szReport);

// Formats a line (cut to 4098 characters), appends "\n" and starts the
// poster on it. No limit and no log entry.
void NetErrorPost(const char* szFormat, ...) ZEL_PRINTF_FORMAT(1, 2);

// Tries to connect to szServer (dotted quad, cut to 31 characters) on nPort
// from a worker and posts the outcome with NetErrorPost.
void ConnectTest(const char* szServer, int nPort);

// Writes the first 256 of nCount bytes as "%x " each (lower case, no
// padding) to the debug log in one entry.
void HexDumpLog(const void* pData, int nCount);

// While it lives, structured exceptions of the constructing thread (access
// violations and the like) arrive as C++ exceptions of type
// ZelExceptionPointers, which a handler can pass to ErrorReport or
// ErrorLogSave to get the faulting code's stack. The previous translator is
// restored when the scope ends. Where the compiler offers no translator
// (GCC, MinGW-w64, POSIX) the scope does nothing.
class SeTranslatorScope {
public:
    SeTranslatorScope();
    ~SeTranslatorScope();
    SeTranslatorScope(const SeTranslatorScope&) = delete;
    SeTranslatorScope& operator=(const SeTranslatorScope&) = delete;

private:
    void* m_pPrevious;
};

// Tests only: the process's report count starts again from 0.
void ErrorPostCountReset();
