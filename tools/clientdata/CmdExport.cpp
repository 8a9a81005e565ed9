// export TABLE [DIR] [--format json|csv], export --all --format sqlite FILE
// [DIR]: a whole table, or every table into one database.
#include <cstdio>

#include "ClientData/ClientDataMgr.h"
#include "DataFolder.h"
#include "Export.h"
#include "TableView.h"

int RunExportCommand(const ExportOptions& options)
{
    if (options.bAll != (options.strFormat == "sqlite"))
        return UsageError("export: --all goes with --format sqlite, and sqlite with --all");
    const TableView* pView = options.bAll ? nullptr : FindTableView(options.strTable);
    if (!options.bAll && pView == nullptr)
        return UsageError("export: no table named " + options.strTable + " (clientdata tables lists them)");
    if (const int nStatus = DataFolderCheck(options.load.strFolder))
        return nStatus;
    std::vector<TableLoadLine> setLine;
    CClientDataMgr* pMgr = LoadDataFolder(options.load, &setLine);
    if (pMgr == nullptr)
        return 2;
    PrintLogFaults(setLine, options.load.bRaw);
    int nStatus = 0;
    if (options.bAll) {
        nStatus = ExportSqlite(*pMgr, options.strOutput) ? 0 : 1;
    } else {
        std::vector<ViewRecord> setRecord;
        ViewAllRecords(*pView, *pMgr, setRecord);
        const std::string strOut = options.strFormat == "json"
                                       ? RecordsJson(setRecord)
                                       : RecordsCsv(RecordColumns(*pView, setRecord), setRecord, options.load.bRaw);
        std::fwrite(strOut.data(), 1, strOut.size(), stdout);
    }
    DestroyClientDataMgr();
    return nStatus;
}
