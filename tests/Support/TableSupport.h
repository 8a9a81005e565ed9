// Helpers of the table and manager tests: a table loaded from a file the test
// writes, the manager started as the client starts it, and the heap in use.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "ClientData/ClientDataMgr.h"
#include "Support/TestSupport.h"

#if defined(__SANITIZE_ADDRESS__)
#define TEST_HEAP_FROM_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TEST_HEAP_FROM_ASAN 1
#endif
#endif
#if defined(TEST_HEAP_FROM_ASAN)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#else
#include <malloc.h>
#endif

// Bytes allocated on the heap right now.
inline std::size_t HeapInUse()
{
#if defined(TEST_HEAP_FROM_ASAN)
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

// One table of type T on its own; it registers itself in the process-wide
// registry, which goes when the test ends.
template <class T>
class TableTest : public RegistryFolderTest<TableRegistry> {
protected:
    // Writes the file, then builds the table's path and loads it.
    T& Load(const std::string& strPath, const std::string& strContent)
    {
        WriteFile(strPath, strContent);
        m_table.BuildFilePath();
        m_table.Load();
        return m_table;
    }

    T m_table;
};

// The manager, which goes when the test ends.
class ManagerTest : public DataFolderTest {
protected:
    void TearDown() override
    {
        DestroyClientDataMgr();
        DataFolderTest::TearDown();
    }

    static CClientDataMgr* Mgr() { return static_cast<CClientDataMgr*>(QueryClientDataMgr()); }

    // The client's start-up: the callback, the version-dependent list, both
    // halves of the tables.
    static CClientDataMgr* StartUp(VersionQueryFn fnVersion = nullptr)
    {
        CClientDataMgr* pMgr = Mgr();
        pMgr->SetVersionQuery(fnVersion);
        pMgr->LoadDeferList();
        pMgr->ReloadDeferred(false);
        pMgr->ReloadDeferred(true);
        return pMgr;
    }
};

// One "ItemType.dat" line: id, name, columns 2 to 53 holding nBase + column,
// and the trailing text.
inline std::string ItemLine(long long nId, const std::string& strName, int nBase = 0,
                            const std::string& strText = "text")
{
    std::string strLine = std::to_string(nId) + " " + strName;
    for (int nColumn = 2; nColumn <= 53; ++nColumn)
        strLine += " " + std::to_string(nBase + nColumn);
    return strLine + " " + strText + "\n";
}

// A "MagicType.ini" line of 61 columns: the type (column 1), the level
// (column 8), the columns given, and elsewhere "0" or, in a text column, "-".
inline std::string MagicLine(unsigned nType, unsigned nLevel, const std::map<int, std::string>& mapColumn = {})
{
    std::string strLine = std::to_string(nType);
    for (int nColumn = 2; nColumn <= 61; ++nColumn) {
        const auto it = mapColumn.find(nColumn);
        const bool bText = nColumn == 3 || (nColumn >= 38 && nColumn <= 47 && nColumn != 43) || nColumn == 53;
        strLine += nColumn % 2 == 0 ? " " : "\t";
        strLine += nColumn == 8 ? std::to_string(nLevel) : it != mapColumn.end() ? it->second : bText ? "-" : "0";
    }
    return strLine + "\n";
}
