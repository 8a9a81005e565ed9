#include "ClientData/DataTable.h"

#include "ClientData/IClientDataMgr.h"

namespace {
TableRegistry* g_pTableRegistry = nullptr;
TableDestroyObserverFn g_pfnDestroyObserver = nullptr;
void* g_pDestroyObserverContext = nullptr;
}  // namespace

void SetTableDestroyObserver(TableDestroyObserverFn fn, void* pContext)
{
    g_pfnDestroyObserver = fn;
    g_pDestroyObserverContext = pContext;
}

TableRegistry& TableRegistry::GetOrCreate()
{
    if (g_pTableRegistry == nullptr)
        g_pTableRegistry = new TableRegistry;
    return *g_pTableRegistry;
}

TableRegistry* TableRegistry::Get() { return g_pTableRegistry; }

void TableRegistry::Destroy()
{
    delete g_pTableRegistry;
    g_pTableRegistry = nullptr;
}

CDataTable::CDataTable() { TableRegistry::GetOrCreate().Register(this); }

CDataTable::~CDataTable()
{
    if (g_pfnDestroyObserver != nullptr)
        g_pfnDestroyObserver(this, g_pDestroyObserverContext);
}

void CDataTable::SetDefer() { m_bDefer = true; }

bool CDataTable::IsDefer() { return m_bDefer; }

void CDataTable::BuildFilePath()
{
    if (m_bDefer) {
        IClientDataMgr* pMgr = QueryClientDataMgr();
        VersionQueryFn pfnVersion = pMgr != nullptr ? pMgr->GetVersionQuery() : nullptr;
        // Asked afresh every time: the client may switch data sets.
        if (pfnVersion != nullptr && pfnVersion() != 100) {
            m_strFilePath = AlternativeFilePath(m_strFileName);
            return;
        }
    }
    m_strFilePath = "ini/" + m_strFileName;
}

std::string AlternativeFilePath(const std::string& strBareName)
{
    const std::size_t nDot = strBareName.rfind('.');
    // A name without a dot makes substr throw std::out_of_range.
    return "ini/200/" + strBareName.substr(0, nDot) + "_200" + strBareName.substr(nDot);
}

CClientString* CDataTable::GetFileName(CClientString* pResult)
{
    new (pResult) CClientString;
    pResult->Assign(m_strFileName.data(), m_strFileName.size());
    return pResult;
}

CClientString TableFileName(CDataTable& table)
{
    alignas(CClientString) unsigned char storage[sizeof(CClientString)];
    CClientString* pName = table.GetFileName(reinterpret_cast<CClientString*>(storage));
    CClientString strName(static_cast<CClientString&&>(*pName));
    pName->~CClientString();
    return strName;
}
