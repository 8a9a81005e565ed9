// What a loader noticed while it read a data file: a text cut at its buffer,
// a number that did not parse, a key it defaulted, a record that a lookup
// will never answer. The client never asks for findings; tools that check
// data install a sink and collect them, with the file and line they came
// from, instead of reading the files a second time. Without a sink a report
// costs one test of a pointer.
#pragma once

#include "ZelGameBase/ZelGameBase.h"

enum LoadFindingLevel : int {
    FINDING_NOTE = 0,     // as the format allows, worth knowing (a key defaulted)
    FINDING_WARNING = 1,  // data changed or shadowed on the way in (a text cut)
    FINDING_ERROR = 2,    // data the loader could not use (a record skipped)
};

struct LoadFinding {
    const char* szFile;  // the path the loader read, as it opened it
    int nLine;           // 1-based; 0 for the file as a whole
    LoadFindingLevel level;
    const char* szRule;     // a short stable id, e.g. "text-cut"
    const char* szMessage;  // the data's own bytes where it quotes them
};

using LoadFindingSinkFn = void (*)(const LoadFinding& finding, void* pContext);

// Installs the process-wide sink; null removes it.
void LoadFindingSinkSet(LoadFindingSinkFn fn, void* pContext);

// Whether a sink is installed: loaders test this before they work out
// anything only a finding needs.
bool LoadFindingsWanted();

// Formats the message (cut at 1023 characters) and hands the finding to the
// sink; does nothing without one.
void LoadFindingReport(const char* szFile, int nLine, LoadFindingLevel level, const char* szRule, const char* szFormat,
                       ...) ZEL_PRINTF_FORMAT(5, 6);
