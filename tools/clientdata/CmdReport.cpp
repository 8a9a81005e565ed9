// report [DIR]: the client's start-up on a data folder, one line per table.
#include <cstdio>
#include <filesystem>

#include "ClientData/ClientDataMgr.h"
#include "DataFolder.h"

int RunReportCommand(const LoadOptions& options)
{
    if (const int nStatus = DataFolderCheck(options.strFolder))
        return nStatus;
    std::vector<TableLoadLine> setLine;
    CClientDataMgr* pMgr = LoadDataFolder(options, &setLine);
    if (pMgr == nullptr)
        return 2;
    std::printf("data folder: %s\n", std::filesystem::current_path().string().c_str());
    if (options.nDataVersion != 0)
        std::printf("data version: %d\n", options.nDataVersion);
    std::printf("text resources: %zu\n", pMgr->GetStrResTable().GetAmount());
    PrintLoadReport(setLine, options.bRaw, stdout);
    DestroyClientDataMgr();
    return 0;
}
