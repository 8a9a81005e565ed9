// The load report: runs the client's start-up sequence in a data folder and
// tells, per table, what was loaded and which faults the debug log received.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

struct TableLoadLine {
    int nSlot;
    const char* szName;
    std::string strFile;  // the path the table read, as a data folder writes it
    int nRecords;
    std::vector<std::string> setFault;
};

struct LoadReportOptions {
    bool bVersion = false;  // install a version callback
    int nVersion = 100;     // its answer
};

// Loads the data of the working directory as the client does at start:
// QueryClientDataMgr, LoadDeferList, ReloadDeferred(false), ReloadDeferred(true).
// Returns one line per table, in slot order; the manager stays alive.
std::vector<TableLoadLine> RunLoadReport(const LoadReportOptions& options);

// Prints the lines and a summary, the faults in UTF-8 unless bRaw; returns
// the number of tables with faults.
int PrintLoadReport(const std::vector<TableLoadLine>& setLine, bool bRaw, FILE* pOut);
