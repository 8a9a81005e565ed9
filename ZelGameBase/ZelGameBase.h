// The debug log: one text file per local day under ./debug/, one entry per
// call ("%s -- %s": the message and the ctime text), opened, appended and
// closed each time so no entry is lost in a crash. Logging never fails the
// caller: an entry that cannot be written is dropped silently.
#pragma once

#include <cstdarg>

#include "ZelGameBase/ZelCrt.h"

#if defined(__GNUC__)
#define ZEL_PRINTF_FORMAT(fmt, args) __attribute__((format(printf, fmt, args)))
#else
#define ZEL_PRINTF_FORMAT(fmt, args)
#endif

// The frame of every assertion text: the GBK star.
#define ZEL_STAR "\xA1\xEF"

// Formats the message (cut at 1023 characters) and appends one entry to
// today's file ./debug/<year>_<month>_<day>.log. A null format does nothing.
void LogSave(const char* szFormat, ...) ZEL_PRINTF_FORMAT(1, 2);
void LogSaveV(const char* szFormat, va_list args);

// Formats the message, then hands the result to LogSave as its format with no
// arguments: a second pass in which "%%" becomes "%". Other conversions in the
// first result are copied as they stand (they would have no argument).
void LogMsgSave(const char* szFormat, ...) ZEL_PRINTF_FORMAT(1, 2);

// Formats the message, appends "\n" and sends it to the debugger output only.
void DebugStrOut(const char* szFormat, ...) ZEL_PRINTF_FORMAT(1, 2);

// Writes a failed check: ★ASSERT(<szCondition>) in <nLine> line of <szUnit>★.
// The operation that checked goes on.
void LogAssert(const char* szCondition, int nLine, const char* szUnit);

// Appends an already formatted message as one entry.
void LogWriteEntry(const char* szMessage);

// An observer sees every entry's message as it is written (tools attribute
// faults to the table being loaded); null removes it.
using LogObserverFn = void (*)(const char* szMessage, void* pContext);
void LogSetObserver(LogObserverFn fn, void* pContext);

// Where the entries go instead of ./debug: tools that read a data folder
// keep their log out of it. The folder must exist; null restores ./debug.
// The name is cut at 255 characters.
void LogSetFolder(const char* szFolder);

// Tests replace the clock that names the file and stamps the entry; null
// restores the system clock.
using LogClockFn = LocalTime (*)();
void LogSetClock(LogClockFn fn);
