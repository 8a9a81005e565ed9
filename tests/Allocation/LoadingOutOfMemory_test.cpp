// Loading never throws to the client, however early memory runs out. The
// client's start-up runs over the bundled sample with every allocation
// failing from the k-th one on, for k spread over the whole start-up: every
// call must return, and once memory is back the manager must still answer
// and go away cleanly.
#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include "Allocation/ReplacedAllocation.h"
#include "ClientData/Catalogue.h"
#include "ClientData/ClientDataMgr.h"
#include "Support/TestSupport.h"

namespace {

using LoadingOutOfMemoryTest = DataFolderTest;

// The client's start-up, through the manager's interface.
void StartUp(IClientDataMgr* pMgr)
{
    pMgr->LoadDeferList();
    pMgr->ReloadDeferred(false);
    pMgr->ReloadDeferred(true);
    pMgr->LoadStrRes("ini/StrRes.ini");
}

TEST_F(LoadingOutOfMemoryTest, StartUpReturnsWhereverMemoryRunsOut)
{
    std::filesystem::copy(CLIENTDATA_SAMPLE_DIR, Folder(), std::filesystem::copy_options::recursive);
    IClientDataMgr* pMgr = QueryClientDataMgr();
    const long nBefore = AllocationCount();
    StartUp(pMgr);
    const long nTotal = AllocationCount() - nBefore;
    DestroyClientDataMgr();

    std::vector<long> setFailAt;
    for (long k = 1; k <= 32; ++k) setFailAt.push_back(k);
    for (long n = 1; n <= 64; ++n) setFailAt.push_back(nTotal * n / 64);
    for (long nFailAt : setFailAt) {
        auto* pManager = static_cast<CClientDataMgr*>(QueryClientDataMgr());
        ASSERT_NE(pManager, nullptr);
        bool bThrew = false;
        AllocationFailFrom(AllocationCount() + nFailAt);
        try {
            StartUp(pManager);
        } catch (...) {
            bThrew = true;
        }
        AllocationFailFrom(0);
        EXPECT_FALSE(bThrew) << "memory out from allocation " << nFailAt << " of " << nTotal;
        for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot)
            EXPECT_GE(pManager->GetLoadedAmountBySlot(nSlot), 0) << nSlot;
        DestroyClientDataMgr();
    }
}

}  // namespace
