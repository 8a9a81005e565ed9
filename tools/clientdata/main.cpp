// clientdata: makes a client data folder visible and checkable without
// starting the game.
#include <cstdio>
#include <cstring>
#include <string>

#include "Commands.h"

namespace {

const char kUsage[] =
    "usage: clientdata [COMMAND] [ARGS]\n"
    "commands:\n"
    "  report [DIR] [--version N]   load DIR as the client does at start; one line per table:\n"
    "                               slot, name, file, records, faults (the default command)\n"
    "  get TABLE KEY... [--raw] [--dir DIR]\n"
    "                               one record, every field by name (texts in UTF-8; --raw: bytes)\n"
    "  export TABLE [--format json|csv] [--dir DIR]\n"
    "                               the whole table\n"
    "  lint [DIR] [--json] [--notes] what the loaders noticed, by file and line; exit 1 on errors\n"
    "  diff DIR1 DIR2               records added, removed and changed, per table\n"
    "  tables                       the table names get and export take\n"
    "DIR defaults to the bundled sample data.\n";

int RunTablesCommand();

}  // namespace

int main(int argc, char** argv)
{
    Arguments setArg(argv + 1, argv + argc);
    if (!setArg.empty() && (setArg[0] == "--help" || setArg[0] == "-h" || setArg[0] == "help")) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    std::string strCommand = "report";
    if (!setArg.empty() && !setArg[0].empty() && setArg[0][0] != '-' &&
        (setArg[0] == "report" || setArg[0] == "get" || setArg[0] == "export" || setArg[0] == "lint" ||
         setArg[0] == "diff" || setArg[0] == "tables")) {
        strCommand = setArg[0];
        setArg.erase(setArg.begin());
    }
    if (strCommand == "report")
        return RunReportCommand(setArg);
    if (strCommand == "get")
        return RunGetCommand(setArg);
    if (strCommand == "export")
        return RunExportCommand(setArg);
    if (strCommand == "lint")
        return RunLintCommand(setArg);
    if (strCommand == "diff")
        return RunDiffCommand(setArg);
    return RunTablesCommand();
}

#include "TableView.h"

namespace {
int RunTablesCommand()
{
    for (const TableView& view : AllTableViews())
        std::printf("%-24s %s\n", view.szName, ViewKeyUsage(view).c_str());
    return 0;
}
}  // namespace
