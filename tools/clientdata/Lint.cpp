#include "Lint.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <tuple>

#include "ClientData/ClientDataMgr.h"
#include "LintRules.h"
#include "TableView.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

struct Collection {
    std::vector<LintFinding> setFinding;
    CClientDataMgr* pMgr = nullptr;
    CDataTable* pLoading = nullptr;  // the table whose Load runs
};

void OnFinding(const LoadFinding& finding, void* pContext)
{
    static_cast<Collection*>(pContext)->setFinding.push_back(LintFinding{DataPathShown(finding.szFile), finding.nLine,
                                                                         static_cast<LintSeverity>(finding.level),
                                                                         finding.szRule, finding.szMessage});
}

void OnTableLoad(CDataTable* pTable, void* pContext) { static_cast<Collection*>(pContext)->pLoading = pTable; }

// The catalogue file of the table that is loading.
std::string LoadingFile(const CDataTable* pTable, CClientDataMgr& mgr)
{
    for (const CatalogueEntry& entry : kCatalogue)
        if (mgr.GetTableBySlot(entry.nSlot) == pTable)
            return TableFileRead(entry, mgr);
    return "";
}

void OnLogEntry(const char* szMessage, void* pContext)
{
    Collection& collection = *static_cast<Collection*>(pContext);
    const std::string strFile =
        collection.pLoading != nullptr ? LoadingFile(collection.pLoading, *collection.pMgr) : "";
    collection.setFinding.push_back(LintFinding{strFile, 0, LINT_ERROR, "load-error", szMessage});
}

int g_nAlternative = 200;
int AnswerAlternative() { return g_nAlternative; }

// A catalogue file the folder lacks: its table loads empty.
void MissingFiles(Collection& collection)
{
    std::set<std::string> setSeen;
    for (const CatalogueEntry& entry : kCatalogue) {
        const std::string strPath = CatalogueDataPath(entry.szFile);
        std::error_code error;
        if (setSeen.insert(strPath).second && !std::filesystem::is_regular_file(strPath, error))
            collection.setFinding.push_back(LintFinding{strPath, 0, LINT_ERROR, "missing-file",
                                                        std::string("the ") + entry.szName + " table loads empty"});
    }
}

}  // namespace

std::vector<LintFinding> RunLint(const std::string& strRoot, int nAlternative)
{
    g_nAlternative = nAlternative != 0 ? nAlternative : 200;
    Collection collection;
    std::error_code error;
    std::filesystem::current_path(strRoot, error);
    if (error)
        return collection.setFinding;
    CClientDataMgr* pMgr = static_cast<CClientDataMgr*>(QueryClientDataMgr());
    if (pMgr == nullptr)
        return collection.setFinding;
    collection.pMgr = pMgr;
    LoadFindingSinkSet(OnFinding, &collection);
    LogSetObserver(OnLogEntry, &collection);
    pMgr->SetLoadObserver(OnTableLoad, &collection);
    pMgr->LoadDeferList();
    pMgr->ReloadDeferred(false);
    pMgr->ReloadDeferred(true);
    LintEmptyTables(*pMgr, collection.setFinding);
    pMgr->SetVersionQuery(AnswerAlternative);
    pMgr->ReloadDeferred(true);
    pMgr->SetLoadObserver(nullptr, nullptr);
    LogSetObserver(nullptr, nullptr);
    LoadFindingSinkSet(nullptr, nullptr);
    DestroyClientDataMgr();
    MissingFiles(collection);
    const std::vector<std::string> setFile = LintDataFiles();
    LintInvalidText(setFile, collection.setFinding);
    LintRepeatedKeys(setFile, collection.setFinding);

    std::vector<LintFinding>& setFinding = collection.setFinding;
    const auto order = [](const LintFinding& f) { return std::tie(f.strFile, f.nLine, f.strRule, f.strMessage); };
    std::stable_sort(setFinding.begin(), setFinding.end(),
                     [&](const LintFinding& a, const LintFinding& b) { return order(a) < order(b); });
    setFinding.erase(std::unique(setFinding.begin(), setFinding.end(),
                                 [&](const LintFinding& a, const LintFinding& b) { return order(a) == order(b); }),
                     setFinding.end());
    return setFinding;
}
