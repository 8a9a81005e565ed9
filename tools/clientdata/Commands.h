// The sub-commands of clientdata. main.cpp parses the arguments into these
// options; each command returns the process exit status: 0 done (or the
// same), 1 a finding, a miss, a difference or a write error, 2 usage or not
// a data folder.
#pragma once

#include <string>
#include <vector>

// What every command that loads a data folder takes.
struct LoadOptions {
    std::string strFolder = ".";  // the data folder
    int nDataVersion = 0;         // the version callback's answer; 0: no callback
    std::string strLogFolder;     // where the debug log goes; empty: a temporary folder
    bool bRaw = false;            // texts as the data's bytes, not UTF-8
};

struct GetOptions {
    LoadOptions load;  // strFolder is taken from the operands
    // TABLE KEY... [DIR]: the table's key kind tells how many words the key
    // has, so a word after them is the folder.
    std::vector<std::string> setOperand;
};

struct ExportOptions {
    LoadOptions load;
    std::string strTable;
    bool bAll = false;
    std::string strFormat = "json";
    std::string strOutput;  // the database file of --all --format sqlite
};

struct LintOptions {
    LoadOptions load;
    bool bJson = false;
    bool bNotes = false;
};

struct DiffOptions {
    LoadOptions load;  // strFolder is the first folder
    std::string strSecond;
    bool bStat = false;
    bool bJson = false;
};

int RunReportCommand(const LoadOptions& options);
int RunGetCommand(const GetOptions& options);
int RunExportCommand(const ExportOptions& options);
int RunLintCommand(const LintOptions& options);
int RunDiffCommand(const DiffOptions& options);
int RunTablesCommand();

// A path made absolute from where the tool was started (a load enters its
// folder).
std::string AbsolutePath(const std::string& strPath);

// Prints "clientdata: MESSAGE" on standard error and returns 2.
int UsageError(const std::string& strMessage);
