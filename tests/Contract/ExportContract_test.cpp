// Drives the built shared library as the client does: it is loaded at run
// time, the manager comes from the export, and every operation is called by
// its vtable slot index, never through the C++ headers.
#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

// Manager slots, and the table base's GetFileName.
enum : int { kLoadStrRes = 1, kGetStrRes, kLoadDeferList = 5, kLoadAll, kClearAll, kReloadDeferred };
enum : int { kTableGetFileName = 6 };

using QueryFn = void* (*)();
using DestroyFn = void (*)();

class ExportContractTest : public DataFolderTest {
protected:
    void SetUp() override
    {
        DataFolderTest::SetUp();
        m_pLibrary = dlopen(CLIENTDATA_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(m_pLibrary, nullptr) << dlerror();
        m_pfnQuery = reinterpret_cast<QueryFn>(dlsym(m_pLibrary, "QueryClientDataMgr"));
        m_pfnDestroy = reinterpret_cast<DestroyFn>(dlsym(m_pLibrary, "DestroyClientDataMgr"));
        ASSERT_NE(m_pfnQuery, nullptr);
        ASSERT_NE(m_pfnDestroy, nullptr);
    }

    void TearDown() override
    {
        if (m_pfnDestroy != nullptr)
            m_pfnDestroy();
        if (m_pLibrary != nullptr)
            dlclose(m_pLibrary);
        DataFolderTest::TearDown();
    }

    void* Table(void* pMgr, int nSlot) { return CallSlot<void*>(pMgr, nSlot); }

    // The bare file name through slot 6, as the client's compiler returns a
    // string: the object first, then the storage for the result, whose
    // address comes back. The string is the client's: a 16-byte buffer or a
    // heap pointer, the size, the capacity.
    std::string FileNameOf(void* pTable)
    {
        struct ClientString {
            union {
                char buf[16];
                char* ptr;
            } bx;
            std::size_t nSize;
            std::size_t nCapacity;
        };
        using Fn = ClientString* (*)(void*, ClientString*);
        void** pVtable = *static_cast<void***>(pTable);
        ClientString result;
        std::memset(&result, 0xCD, sizeof(result));
        EXPECT_EQ(reinterpret_cast<Fn>(pVtable[kTableGetFileName])(pTable, &result), &result);
        const bool bHeap = result.nCapacity >= 16;
        std::string strName(bHeap ? result.bx.ptr : result.bx.buf, result.nSize);
        EXPECT_EQ(std::strlen(bHeap ? result.bx.ptr : result.bx.buf), result.nSize);
        if (bHeap)
            std::free(result.bx.ptr);  // a short block: freed as the runtime frees
        return strName;
    }

    void* m_pLibrary = nullptr;
    QueryFn m_pfnQuery = nullptr;
    DestroyFn m_pfnDestroy = nullptr;
};

TEST_F(ExportContractTest, OnlyTheManagerIsExportedAndSlot6ReturnsTheClientsString)
{
    void* pMgr = m_pfnQuery();
    ASSERT_NE(pMgr, nullptr);
    EXPECT_EQ(m_pfnQuery(), pMgr);
    EXPECT_EQ(dlsym(m_pLibrary, "LogSave"), nullptr);
    EXPECT_EQ(dlsym(m_pLibrary, "_ZN14CClientDataMgr7LoadAllEv"), nullptr);
    EXPECT_EQ(FileNameOf(Table(pMgr, 9)), "ItemType.dat");
    EXPECT_EQ(FileNameOf(Table(pMgr, 205)), "EquipSealExp.ini");  // 16 characters: on the heap
    EXPECT_EQ(FileNameOf(Table(pMgr, 151)), "");                  // CommonIni reads a fixed path
}

TEST_F(ExportContractTest, StartUpTextResourcesAndDestructionThroughTheSlots)
{
    WriteFile("ini/Common.ini",
              "[Playerface]\nMaleFaceAmount=12\nFemaleFaceAmount=10\n[EmblemAmount]\nEmblemAmount=40\n"
              "[Statuary]\nLeaderScale=120\nLeaderMaxLife=5000\nAssistantScale=110\nAssistantMaxLife=3000\n"
              "SubLeaderScale=105\nSubLeaderMaxLife=2000\n");
    WriteFile("text.ini", "12=a=b\n;5=no\n5=\n");
    void* pMgr = m_pfnQuery();
    CallSlot<void>(pMgr, kLoadDeferList);
    CallSlot<void>(pMgr, kReloadDeferred, false);
    CallSlot<void>(pMgr, kReloadDeferred, true);
    void* pCommon = Table(pMgr, 151);
    const int kExpected[9] = {12, 10, 120, 110, 105, 5000, 3000, 2000, 40};
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(CallSlot<int>(pCommon, 7 + i), kExpected[i]) << "slot " << 7 + i;

    CallSlot<void>(pMgr, kLoadStrRes, "text.ini");
    EXPECT_STREQ(CallSlot<const char*>(pMgr, kGetStrRes, 12u), "a=b");
    EXPECT_STREQ(CallSlot<const char*>(pMgr, kGetStrRes, 5u), "");
    EXPECT_STREQ(CallSlot<const char*>(pMgr, kGetStrRes, 99u), "");

    // DestroyClientDataMgr goes through slot 0; afterwards a fresh manager
    // is built on demand.
    CallSlot<void*>(pMgr, kClearAll);
    m_pfnDestroy();
    void* pFresh = m_pfnQuery();
    ASSERT_NE(pFresh, nullptr);
    CallSlot<void>(pFresh, kLoadAll);
    EXPECT_STREQ(CallSlot<const char*>(pFresh, kGetStrRes, 12u), "");
    EXPECT_EQ(CallSlot<int>(Table(pFresh, 151), 7), 12);
}

}  // namespace
