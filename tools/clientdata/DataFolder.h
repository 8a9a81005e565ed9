// Loading a data folder for a command: the folder is checked, the debug log
// is pointed away from it (the tool never writes into the folder it reads),
// and the client's start-up sequence runs with the folder as the working
// directory, as the library expects.
#pragma once

#include <string>
#include <vector>

#include "Commands.h"
#include "LoadReport.h"

class CClientDataMgr;

// Whether the folder holds at least one of the catalogue's files.
bool IsDataFolder(const std::string& strFolder);

// The message and exit status 2 for a folder that is missing or holds none
// of the catalogue's files; 0 for a data folder.
int DataFolderCheck(const std::string& strFolder);

// The folder the debug log writes to while the tool runs: --log DIR, or a
// temporary folder removed at exit. Installed once, before the first load.
void DebugLogRedirect(const std::string& strLogFolder);

// Enters the folder and loads it as the client does at start, with the text
// resources of ini/StrRes.ini. Null, with a message, when the folder cannot
// be entered. The debug log's faults are in setLine.
CClientDataMgr* LoadDataFolder(const LoadOptions& options, std::vector<TableLoadLine>* pLines = nullptr);

// Prints the faults the debug log received, one line each, on standard
// error (the commands whose output is the data keep them out of it).
void PrintLogFaults(const std::vector<TableLoadLine>& setLine, bool bRaw);
