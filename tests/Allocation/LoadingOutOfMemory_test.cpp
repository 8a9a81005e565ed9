// Loading never throws to the client, however early memory runs out. The
// client's start-up runs over the bundled sample with every allocation
// failing from the k-th one on, for k spread over the whole start-up: every
// call must return, and once memory is back the manager must still answer
// and go away cleanly.
#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include "Allocation/ReplacedAllocation.h"
#include "Support/TableSupport.h"

namespace {

class LoadingOutOfMemoryTest : public ManagerTest {
protected:
    // The client's start-up of the manager already made, with the text resources.
    static void StartUpWithTexts() { StartUp()->LoadStrRes("ini/StrRes.ini"); }
};

TEST_F(LoadingOutOfMemoryTest, StartUpReturnsWhereverMemoryRunsOut)
{
    std::filesystem::copy(CLIENTDATA_SAMPLE_DIR, Folder(), std::filesystem::copy_options::recursive);
    auto* pMgr = static_cast<CClientDataMgr*>(QueryClientDataMgr());
    const long nBefore = AllocationCount();
    StartUpWithTexts();
    const long nTotal = AllocationCount() - nBefore;
    std::vector<int> setFullAmount;
    for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot)
        setFullAmount.push_back(pMgr->GetLoadedAmountBySlot(nSlot));
    DestroyClientDataMgr();

    std::vector<long> setFailAt;
    for (long k = 1; k <= 32; ++k)
        setFailAt.push_back(k);
    for (long n = 1; n <= 64; ++n)
        setFailAt.push_back(nTotal * n / 64);
    for (long nFailAt : setFailAt) {
        auto* pManager = static_cast<CClientDataMgr*>(QueryClientDataMgr());
        ASSERT_NE(pManager, nullptr);
        bool bThrew = false;
        AllocationFailFrom(AllocationCount() + nFailAt);
        try {
            StartUpWithTexts();
        } catch (...) {
            bThrew = true;
        }
        AllocationFailFrom(0);
        EXPECT_FALSE(bThrew) << "memory out from allocation " << nFailAt << " of " << nTotal;
        // What a table kept is part of what the whole start-up reads.
        for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot)
            EXPECT_LE(pManager->GetLoadedAmountBySlot(nSlot), setFullAmount[nSlot - kFirstTableSlot]) << nSlot;
        DestroyClientDataMgr();
    }
}

TEST_F(LoadingOutOfMemoryTest, CreationGivesNullWhereverMemoryRunsOut)
{
    // The first manager of the process also sets up what lives as long as
    // the process; the count is taken from the second.
    QueryClientDataMgr();
    DestroyClientDataMgr();
    const long nBefore = AllocationCount();
    ASSERT_NE(QueryClientDataMgr(), nullptr);
    const long nTotal = AllocationCount() - nBefore;
    DestroyClientDataMgr();
    for (long n = 0; n <= 32; ++n) {
        const long nFailAt = 1 + (nTotal - 1) * n / 32;  // the block itself up to the last table's registration
        IClientDataMgr* pMgr = nullptr;
        bool bThrew = false;
        AllocationFailFrom(AllocationCount() + nFailAt);
        try {
            pMgr = QueryClientDataMgr();
        } catch (...) {
            bThrew = true;
        }
        AllocationFailFrom(0);
        EXPECT_FALSE(bThrew) << "memory out from allocation " << nFailAt << " of " << nTotal;
        EXPECT_EQ(pMgr, nullptr) << nFailAt;
        EXPECT_EQ(TableRegistry::Get(), nullptr) << nFailAt;  // no pointer to a table that is gone
        // With memory back the next call builds the whole manager.
        ASSERT_NE(QueryClientDataMgr(), nullptr);
        EXPECT_EQ(TableRegistry::Get()->Tables().size(),
                  static_cast<std::size_t>(kLastTableSlot - kFirstTableSlot + 1));
        DestroyClientDataMgr();
    }
}

}  // namespace
