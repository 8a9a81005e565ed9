// The sub-commands of clientdata. Each takes its arguments (after the
// command's name) and returns the process exit status.
#pragma once

#include <string>
#include <vector>

class CClientDataMgr;

using Arguments = std::vector<std::string>;

int RunReportCommand(const Arguments& setArg);
int RunGetCommand(const Arguments& setArg);
int RunExportCommand(const Arguments& setArg);
int RunLintCommand(const Arguments& setArg);
int RunDiffCommand(const Arguments& setArg);

// Loads the data folder strFolder as the client does at start (the working
// directory becomes the folder; the text resources of ini/StrRes.ini are
// loaded when present). Null, with a message on standard error, when the
// folder cannot be entered.
CClientDataMgr* LoadDataFolder(const std::string& strFolder);

// The bundled sample folder, the default of every command.
const char* DefaultDataFolder();

// Prints a one-line message and returns the exit status for usage errors.
int UsageError(const std::string& strMessage);
