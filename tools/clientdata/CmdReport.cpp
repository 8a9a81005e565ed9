#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "ClientData/ClientDataMgr.h"
#include "Commands.h"
#include "LoadReport.h"

#ifndef CLIENTDATA_SAMPLE_DIR
#define CLIENTDATA_SAMPLE_DIR "data/sample"
#endif

const char* DefaultDataFolder() { return CLIENTDATA_SAMPLE_DIR; }

int UsageError(const std::string& strMessage)
{
    std::fprintf(stderr, "clientdata: %s (see clientdata --help)\n", strMessage.c_str());
    return 2;
}

namespace {

bool EnterFolder(const std::string& strFolder)
{
    std::error_code error;
    std::filesystem::current_path(strFolder, error);
    if (error)
        std::fprintf(stderr, "clientdata: cannot enter %s: %s\n", strFolder.c_str(), error.message().c_str());
    return !error;
}

void LoadTextResources(CClientDataMgr& mgr)
{
    if (std::filesystem::exists("ini/StrRes.ini"))
        mgr.LoadStrRes("ini/StrRes.ini");
}

}  // namespace

CClientDataMgr* LoadDataFolder(const std::string& strFolder)
{
    if (!EnterFolder(strFolder))
        return nullptr;
    RunLoadReport(LoadReportOptions());
    CClientDataMgr* pMgr = static_cast<CClientDataMgr*>(QueryClientDataMgr());
    if (pMgr != nullptr)
        LoadTextResources(*pMgr);
    return pMgr;
}

int RunReportCommand(const Arguments& setArg)
{
    std::string strFolder = DefaultDataFolder();
    LoadReportOptions options;
    for (std::size_t i = 0; i < setArg.size(); ++i) {
        if (setArg[i] == "--version" && i + 1 < setArg.size()) {
            options.bVersion = true;
            options.nVersion = std::atoi(setArg[++i].c_str());
        } else if (!setArg[i].empty() && setArg[i][0] == '-') {
            return UsageError("report: unknown option " + setArg[i]);
        } else {
            strFolder = setArg[i];
        }
    }
    if (!EnterFolder(strFolder))
        return 2;
    std::printf("data folder: %s\n", std::filesystem::current_path().string().c_str());
    const std::vector<TableLoadLine> setLine = RunLoadReport(options);
    if (CClientDataMgr* pMgr = static_cast<CClientDataMgr*>(QueryClientDataMgr())) {
        LoadTextResources(*pMgr);
        std::printf("text resources: %zu\n", pMgr->GetStrResTable().GetAmount());
    }
    PrintLoadReport(setLine, stdout);
    DestroyClientDataMgr();
    return 0;
}
