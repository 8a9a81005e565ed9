#include "LoadReport.h"

#include <map>

#include "ClientData/ClientDataMgr.h"
#include "TableView.h"
#include "Text.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

struct Observation {
    CDataTable* pCurrent = nullptr;
    std::map<CDataTable*, std::vector<std::string>> mapFault;
};

int g_nVersionAnswer = 100;
int AnswerVersion() { return g_nVersionAnswer; }

void OnTableLoad(CDataTable* pTable, void* pContext) { static_cast<Observation*>(pContext)->pCurrent = pTable; }

void OnLogEntry(const char* szMessage, void* pContext)
{
    Observation* pObservation = static_cast<Observation*>(pContext);
    pObservation->mapFault[pObservation->pCurrent].push_back(szMessage);
}

}  // namespace

std::vector<TableLoadLine> RunLoadReport(const LoadReportOptions& options)
{
    Observation observation;
    CClientDataMgr* pMgr = static_cast<CClientDataMgr*>(QueryClientDataMgr());
    std::vector<TableLoadLine> setLine;
    if (pMgr == nullptr)
        return setLine;
    if (options.bVersion) {
        g_nVersionAnswer = options.nVersion;
        pMgr->SetVersionQuery(AnswerVersion);
    }
    pMgr->SetLoadObserver(OnTableLoad, &observation);
    LogSetObserver(OnLogEntry, &observation);
    pMgr->LoadDeferList();
    pMgr->ReloadDeferred(false);
    pMgr->ReloadDeferred(true);
    LogSetObserver(nullptr, nullptr);
    pMgr->SetLoadObserver(nullptr, nullptr);

    for (const CatalogueEntry& entry : kCatalogue) {
        CDataTable* pTable = pMgr->GetTableBySlot(entry.nSlot);
        const std::string strFile = TableFileRead(entry, *pMgr);
        setLine.push_back(TableLoadLine{entry.nSlot, entry.szName, strFile, pMgr->GetLoadedAmountBySlot(entry.nSlot),
                                        observation.mapFault[pTable]});
    }
    return setLine;
}

int PrintLoadReport(const std::vector<TableLoadLine>& setLine, bool bRaw, FILE* pOut)
{
    int nFaulty = 0;
    long long nRecords = 0;
    for (const TableLoadLine& line : setLine) {
        std::fprintf(pOut, "%3d  %-24s %-34s %8d", line.nSlot, line.szName, line.strFile.c_str(), line.nRecords);
        if (!line.setFault.empty()) {
            ++nFaulty;
            std::fprintf(pOut, "  faults: %zu (%s)", line.setFault.size(), Shown(line.setFault.front(), bRaw).c_str());
        }
        std::fputc('\n', pOut);
        nRecords += line.nRecords > 0 ? line.nRecords : 0;
    }
    std::fprintf(pOut, "tables: %zu, records: %lld, tables with faults: %d\n", setLine.size(), nRecords, nFaulty);
    return nFaulty;
}
