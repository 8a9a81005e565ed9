// clientdata: makes a client data folder visible and checkable without
// starting the game. Every command reads the folder it is given (the current
// one by default) and writes nothing into it.
#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "Commands.h"

#ifndef CLIENTDATA_VERSION
#define CLIENTDATA_VERSION "0"
#endif

namespace {

const char kFooter[] =
    "DIR is a data folder (the one holding ini/); it defaults to the current folder.\n"
    "Exit status: 0 done, 1 a finding, a miss, a difference or a write error,\n"
    "2 a usage error or not a data folder.";

// The options of every command that loads a folder.
void AddLoadOptions(CLI::App& command, LoadOptions& options)
{
    command
        .add_option("--data-version", options.nDataVersion,
                    "answer N to the data-version query (200: the ini/200/ set)")
        ->type_name("N");
    command.add_option("--log", options.strLogFolder, "write the debug log into DIR (default: a temporary folder)")
        ->type_name("DIR");
    command.add_flag("--raw", options.bRaw, "show texts as the data's GBK bytes, not as UTF-8");
}

// Standard output flushed and closed: a write error ends the tool with 1.
int CloseOutput(int nStatus)
{
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0 || std::fclose(stdout) != 0) {
        std::fprintf(stderr, "clientdata: cannot write the output: %s\n", std::strerror(errno));
        return 1;
    }
    return nStatus;
}

}  // namespace

int main(int argc, char** argv)
{
    CLI::App app("clientdata: shows, checks and compares a client data folder.", "clientdata");
    app.set_version_flag("--version", "clientdata " CLIENTDATA_VERSION);
    app.require_subcommand(0, 1);
    app.footer(kFooter);

    LoadOptions report;
    CLI::App& reportCommand =
        *app.add_subcommand("report", "load DIR as the client does at start, one line per table (the default)");
    reportCommand.add_option("DIR", report.strFolder, "the data folder")->type_name("");
    AddLoadOptions(reportCommand, report);

    GetOptions get;
    CLI::App& getCommand = *app.add_subcommand("get", "one record, every field under the file's keys");
    getCommand.add_option("TABLE KEY... [DIR]", get.setOperand, "the table, its key (none for a table of settings)")
        ->required()
        ->type_name("");
    AddLoadOptions(getCommand, get.load);

    ExportOptions exportOptions;
    std::vector<std::string> setExportOperand;
    CLI::App& exportCommand =
        *app.add_subcommand("export", "a whole table as JSON or CSV, or every table into one SQLite file");
    exportCommand.add_option("TABLE|FILE [DIR]", setExportOperand, "the table, or with --all the database file")
        ->required()
        ->type_name("");
    exportCommand.add_flag("--all", exportOptions.bAll, "every table (with --format sqlite)");
    exportCommand.add_option("--format", exportOptions.strFormat, "json (default), csv, or sqlite with --all")
        ->check(CLI::IsMember({"json", "csv", "sqlite"}));
    AddLoadOptions(exportCommand, exportOptions.load);

    LintOptions lint;
    CLI::App& lintCommand = *app.add_subcommand("lint", "what the loaders and the lint rules find, by file and line");
    lintCommand.add_option("DIR", lint.load.strFolder, "the data folder")->type_name("");
    lintCommand.add_flag("--json", lint.bJson, "the findings as a JSON array");
    lintCommand.add_flag("--notes", lint.bNotes, "also the notes (keys defaulted or not read)");
    AddLoadOptions(lintCommand, lint.load);

    DiffOptions diff;
    CLI::App& diffCommand = *app.add_subcommand("diff", "records added, removed and changed from OLD to NEW, by key");
    diffCommand.add_option("OLD", diff.load.strFolder, "the data folder before")->required()->type_name("");
    diffCommand.add_option("NEW", diff.strSecond, "the data folder after (default: the current folder)")->type_name("");
    diffCommand.add_flag("--stat", diff.bStat, "only the counts per table");
    diffCommand.add_flag("--json", diff.bJson, "the changes as a JSON array");
    AddLoadOptions(diffCommand, diff.load);

    app.add_subcommand("tables", "the tables get and export take, with their keys");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0)
            return CloseOutput(app.exit(error));
        std::fprintf(stderr, "clientdata: %s (see clientdata --help)\n", error.what());
        return 2;
    }

    int nStatus = 0;
    if (getCommand.parsed()) {
        nStatus = RunGetCommand(get);
    } else if (exportCommand.parsed()) {
        if (setExportOperand.size() > 2)
            return UsageError("export: expected TABLE [DIR], or --all FILE [DIR]");
        (exportOptions.bAll ? exportOptions.strOutput : exportOptions.strTable) = setExportOperand[0];
        if (setExportOperand.size() == 2)
            exportOptions.load.strFolder = setExportOperand[1];
        exportOptions.load.strFolder = AbsolutePath(exportOptions.load.strFolder);
        if (!exportOptions.strOutput.empty())
            exportOptions.strOutput = AbsolutePath(exportOptions.strOutput);
        nStatus = RunExportCommand(exportOptions);
    } else if (lintCommand.parsed()) {
        lint.load.strFolder = AbsolutePath(lint.load.strFolder);
        nStatus = RunLintCommand(lint);
    } else if (diffCommand.parsed()) {
        diff.load.strFolder = AbsolutePath(diff.load.strFolder);
        diff.strSecond = AbsolutePath(diff.strSecond.empty() ? "." : diff.strSecond);
        nStatus = RunDiffCommand(diff);
    } else if (app.got_subcommand("tables")) {
        nStatus = RunTablesCommand();
    } else {
        report.strFolder = AbsolutePath(report.strFolder);
        nStatus = RunReportCommand(report);
    }
    return CloseOutput(nStatus);
}
