// clientdata: loads a client data folder as the game does and reports, table
// by table, what was loaded and what went wrong.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "ClientData/IClientDataMgr.h"
#include "LoadReport.h"

#ifndef CLIENTDATA_SAMPLE_DIR
#define CLIENTDATA_SAMPLE_DIR "data/sample"
#endif

namespace {

void PrintUsage(FILE* pOut)
{
    std::fprintf(pOut,
                 "usage: clientdata [report] [DIR] [--version N]\n"
                 "  report       load DIR (default: the bundled sample) as the client does at start\n"
                 "               and print one line per table: slot, name, file, records, faults\n"
                 "  --version N  answer N to the data-version question (100: standard set,\n"
                 "               anything else: the ini/200/ set for version-dependent tables)\n");
}

}  // namespace

int main(int argc, char** argv)
{
    std::string strFolder = CLIENTDATA_SAMPLE_DIR;
    LoadReportOptions options;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            PrintUsage(stdout);
            return 0;
        }
        if (std::strcmp(argv[i], "--version") == 0 && i + 1 < argc) {
            options.bVersion = true;
            options.nVersion = std::atoi(argv[++i]);
        } else if (std::strcmp(argv[i], "report") == 0) {
            continue;
        } else if (argv[i][0] == '-') {
            PrintUsage(stderr);
            return 2;
        } else {
            strFolder = argv[i];
        }
    }
    std::error_code error;
    std::filesystem::current_path(strFolder, error);
    if (error) {
        std::fprintf(stderr, "clientdata: cannot enter %s: %s\n", strFolder.c_str(), error.message().c_str());
        return 2;
    }
    std::printf("data folder: %s\n", std::filesystem::current_path().string().c_str());
    const std::vector<TableLoadLine> setLine = RunLoadReport(options);
    PrintLoadReport(setLine, stdout);
    DestroyClientDataMgr();
    return 0;
}
