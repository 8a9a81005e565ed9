#include "ClientData/ClientDataMgr.h"

#include <new>
#include <string>
#include <vector>

#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/LoadFindings.h"

namespace {

CClientDataMgr* g_pClientDataMgr = nullptr;

std::string LowerAscii(std::string text)
{
    for (char& c : text)
        c = CrtToLower(c);
    return text;
}

const char kDeferList[] = "DeferList.dat";

struct DeferEntry {
    std::string strName;  // lower case
    int nLine;
    bool bMatched;
};

// Reads the bare file names listed in the list, in file order.
std::vector<DeferEntry> ReadDeferList()
{
    std::vector<DeferEntry> setEntry;
    CDataFileReader reader;
    if (!reader.Open(kDeferList, 1, ' '))
        return setEntry;
    for (int i = 0; i < reader.GetRecordAmount(); ++i) {
        // An empty entry (a line that begins with a blank) would equal the
        // empty name of every fixed-path table, which can never be marked.
        std::string strName = LowerAscii(reader.GetRecord(i)->GetStr(0, ""));
        if (!strName.empty())
            setEntry.push_back(DeferEntry{std::move(strName), reader.GetRecord(i)->GetLine(), false});
    }
    return setEntry;
}

// An entry that marked no table: a name no table reads, or the file of a
// table that reads a fixed path and so is never version-dependent.
void ReportUnmatched(const std::vector<DeferEntry>& setEntry)
{
    for (const DeferEntry& entry : setEntry) {
        if (entry.bMatched)
            continue;
        bool bFixed = false;
        for (const CatalogueEntry& table : kCatalogue)
            bFixed = bFixed || (CatalogueIsFixedPath(table.szFile) &&
                                LowerAscii(CatalogueBareName(table.szFile)) == entry.strName);
        LoadFindingReport(kDeferList, entry.nLine, FINDING_WARNING, bFixed ? "defer-fixed-path" : "defer-unknown",
                          bFixed ? "%s is read from a fixed path and can never be version-dependent"
                                 : "%s names no table: nothing is marked",
                          entry.strName.c_str());
    }
}

}  // namespace

CClientDataMgr::~CClientDataMgr()
{
    // The registry goes first and whole: tables never leave it one by one.
    TableRegistry::Destroy();
}

void CClientDataMgr::LoadStrRes(const char* szPath)
{
    if (szPath == nullptr || szPath[0] == '\0')
        return;
    m_strRes.Load(szPath);
}

const char* CClientDataMgr::GetStrRes(unsigned int nId) { return m_strRes.Get(nId); }

void CClientDataMgr::SetVersionQuery(VersionQueryFn fn)
{
    // A callback once set can be replaced but never removed.
    if (fn != nullptr)
        m_pfnVersionQuery = fn;
}

VersionQueryFn CClientDataMgr::GetVersionQuery() { return m_pfnVersionQuery; }

void CClientDataMgr::LoadDeferList()
{
    std::vector<DeferEntry> setEntry;
    if (!AllocationTry([&setEntry] { setEntry = ReadDeferList(); }) || setEntry.empty())
        return;
    TableRegistry* pRegistry = TableRegistry::Get();
    if (pRegistry == nullptr)
        return;
    for (CDataTable* pTable : pRegistry->Tables()) {
        AllocationTry([&] {
            const CClientString strTableName = TableFileName(*pTable);
            const std::string strFileName = LowerAscii(std::string(strTableName.c_str(), strTableName.size()));
            for (DeferEntry& entry : setEntry) {
                if (entry.strName == strFileName) {
                    pTable->SetDefer();
                    entry.bMatched = true;
                    break;
                }
            }
        });
    }
    if (LoadFindingsWanted())
        ReportUnmatched(setEntry);
}

void CClientDataMgr::LoadAll()
{
    if (TableRegistry* pRegistry = TableRegistry::Get())
        for (CDataTable* pTable : pRegistry->Tables())
            LoadTable(pTable);
}

void CClientDataMgr::ClearAll()
{
    if (TableRegistry* pRegistry = TableRegistry::Get())
        for (CDataTable* pTable : pRegistry->Tables())
            pTable->Clear();
}

void CClientDataMgr::ReloadDeferred(bool bDefer)
{
    TableRegistry* pRegistry = TableRegistry::Get();
    if (pRegistry == nullptr)
        return;
    for (CDataTable* pTable : pRegistry->Tables()) {
        if (pTable->IsDefer() != bDefer)
            continue;
        pTable->Clear();
        // Out of memory for the path: the table stays empty. (A name without
        // a dot still throws out_of_range, as the path rule requires.)
        if (AllocationTry([pTable] { pTable->BuildFilePath(); }))
            LoadTable(pTable);
    }
}

CDataTable* CClientDataMgr::GetTableBySlot(int nSlot)
{
    switch (nSlot) {
#define CLIENTDATA_TABLE(slot, name, iface, cls, file, kind, desc) \
    case slot:                                                     \
        return Get##name();
#define CLIENTDATA_GENERIC(slot, name, file, kind) CLIENTDATA_TABLE(slot, name, , , , , )
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
#undef CLIENTDATA_GENERIC
        default:
            return nullptr;
    }
}

int CClientDataMgr::GetLoadedAmountBySlot(int nSlot)
{
    switch (nSlot) {
#define CLIENTDATA_TABLE(slot, name, iface, cls, file, kind, desc) \
    case slot:                                                     \
        return static_cast<int>(static_cast<cls*>(Get##name())->GetLoadedAmount());
#define CLIENTDATA_GENERIC(slot, name, file, kind) CLIENTDATA_TABLE(slot, name, , CLIENTDATA_GENERIC_CLASS(kind), , , )
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
#undef CLIENTDATA_GENERIC
        default:
            return -1;
    }
}

void CClientDataMgr::SetLoadObserver(LoadObserverFn fn, void* pContext)
{
    m_pfnLoadObserver = fn;
    m_pLoadObserverContext = pContext;
}

void CClientDataMgr::LoadTable(CDataTable* pTable)
{
    if (m_pfnLoadObserver != nullptr)
        m_pfnLoadObserver(pTable, m_pLoadObserverContext);
    // A table whose containers run out of memory stops where it was and the
    // walk goes on: no allocation failure reaches the client.
    AllocationTry([pTable] { pTable->Load(); });
}

extern "C" CLIENTDATA_API IClientDataMgr* QueryClientDataMgr()
{
    if (g_pClientDataMgr == nullptr) {
        // A table that finds no memory for its name or its registration ends
        // the construction: the tables built so far are gone with the block,
        // so the registry that points at them goes too.
        if (!AllocationTry([] { g_pClientDataMgr = new (std::nothrow) CClientDataMgr; })) {
            g_pClientDataMgr = nullptr;
            TableRegistry::Destroy();
        }
    }
    return g_pClientDataMgr;
}

extern "C" CLIENTDATA_API void DestroyClientDataMgr()
{
    // Goes through the creating path on purpose: with no manager alive, one is
    // built, cleared and torn down again.
    IClientDataMgr* pMgr = QueryClientDataMgr();
    if (pMgr != nullptr)
        pMgr->ClearAll();
    if (g_pClientDataMgr != nullptr) {
        g_pClientDataMgr->DeletingDestructor(1);
        g_pClientDataMgr = nullptr;
    }
}
