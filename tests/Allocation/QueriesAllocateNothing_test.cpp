// Queries never allocate. This program counts every allocation
// (ReplacedAllocation.h), loads the bundled sample through the
// manager and asks every table for every number the sample holds, so that
// hits are exercised as well as misses. It is a program of its own because
// replacing operator new clashes with some sanitizer runtimes.
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Allocation/ReplacedAllocation.h"
#include "Support/TableSupport.h"
#include "Support/VtableCall.h"

namespace {

// Every decimal number in the files under strFolder that fits 32 bits.
std::vector<uint32_t> NumbersInFiles(const std::string& strFolder)
{
    std::set<uint32_t> setNumber{0, 1, 999999999, 0xFFFFFFFFu};
    const char kDigits[] = "0123456789";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(strFolder)) {
        const std::string strText = entry.is_regular_file() ? ReadWholeFile(entry.path().string()) : "";
        for (std::size_t nAt = strText.find_first_of(kDigits), nEnd; nAt != std::string::npos;
             nAt = strText.find_first_of(kDigits, nEnd)) {
            nEnd = std::min(strText.find_first_not_of(kDigits, nAt), strText.size());
            const uint64_t nValue = nEnd - nAt <= 10 ? std::stoull(strText.substr(nAt, nEnd - nAt)) : ~0ull;
            if (nValue <= 0xFFFFFFFFu)
                setNumber.insert(static_cast<uint32_t>(nValue));
        }
    }
    return std::vector<uint32_t>(setNumber.begin(), setNumber.end());
}

class QueriesAllocateNothingTest : public ManagerTest {
protected:
    void SetUp() override
    {
        ManagerTest::SetUp();
        std::filesystem::copy(CLIENTDATA_SAMPLE_DIR, Folder(), std::filesystem::copy_options::recursive);
        m_setNumber = NumbersInFiles(Folder() + "/ini");
        m_pMgr = StartUp();
        m_pMgr->LoadStrRes("ini/StrRes.ini");
    }

    // Runs the queries and counts the allocations they made.
    template <class Queries>
    long AllocationsOf(Queries queries)
    {
        const long nBefore = AllocationCount();
        queries();
        return AllocationCount() - nBefore;
    }

    std::vector<uint32_t> m_setNumber;
    CClientDataMgr* m_pMgr = nullptr;
};

TEST_F(QueriesAllocateNothingTest, GenericTables)
{
    int nRecords = 0;
    EXPECT_EQ(AllocationsOf([&] {
                  for (const CatalogueEntry& entry : kCatalogue) {
                      IGenericTable* pTable = dynamic_cast<IGenericTable*>(m_pMgr->GetTableBySlot(entry.nSlot));
                      if (pTable == nullptr)
                          continue;
                      for (int nIndex = -1; nIndex < pTable->GetRecordAmount() && nIndex < 8; ++nIndex, ++nRecords) {
                          pTable->FindRecord(pTable->GetRecordId(nIndex));
                          pTable->GetRecordTitle(nIndex);
                          for (int nField = -1; nField <= pTable->GetFieldAmount(nIndex); ++nField) {
                              pTable->GetFieldText(nIndex, nField);
                              pTable->GetFieldInt(nIndex, nField, 7);
                              pTable->GetFieldName(nIndex, nField);
                          }
                          pTable->GetValueText(nIndex, "Name", "");
                          pTable->GetValueInt(nIndex, "Name", 7);
                          pTable->GetValueInt(nIndex, nullptr, 7);
                      }
                      pTable->GetKind();
                      for (uint32_t nId : m_setNumber)
                          pTable->FindRecord(nId);
                  }
              }),
              0);
    EXPECT_GT(nRecords, 500);
}

TEST_F(QueriesAllocateNothingTest, ManagerTextResourcesAndSpecifiedTables)
{
    int nHits = 0;
    EXPECT_EQ(AllocationsOf([&] {
                  for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot)
                      EXPECT_EQ(CallSlot<void*>(m_pMgr, nSlot), static_cast<void*>(m_pMgr->GetTableBySlot(nSlot)));
                  EXPECT_EQ(QueryClientDataMgr(), m_pMgr);
                  for (uint32_t nId : m_setNumber) {
                      const int nSigned = static_cast<int>(nId);
                      m_pMgr->GetStrRes(nId);  // hits and misses alike
                      nHits += m_pMgr->GetItemType()->FindItemType(nId) != nullptr;
                      m_pMgr->GetItemType()->GetItemName(nId);
                      nHits += m_pMgr->GetMagicType()->GetMagicType(nId / 10, nId % 10) != nullptr;
                      m_pMgr->GetMagicType()->IsIntoneAction(nSigned, false, true);
                      m_pMgr->GetMagicType()->IsSenderAction(nSigned);
                      m_pMgr->GetItemCategory()->IsInCategory("", nId);
                      nHits += m_pMgr->GetBattleTutorial()->GetCommand(nSigned, 0) != nullptr;
                      nHits += m_pMgr->Getmonsterspeak()->GetSpeakText(nId, 0, 0, nullptr) != nullptr;
                      nHits += m_pMgr->GetActionEffectOffset()->GetActionEffectOffset(nSigned, 0, 0) != nullptr;
                      m_pMgr->GetAction()->GetActionValue(nId);
                      nHits += m_pMgr->GetMonster()->GetMonsterType(nSigned) != nullptr;
                      nHits += m_pMgr->GetNpc()->GetNpcType(nId) != nullptr;
                      nHits += m_pMgr->GetNewNpc()->GetNpcType(nId) != nullptr;
                      nHits += m_pMgr->GetActionDelay()->GetActionDelay(nId) != nullptr;
                      nHits += m_pMgr->GetActionCtrl()->GetActionCtrl(nId) != nullptr;
                      nHits += m_pMgr->GetSoundEvent()->GetSoundEventText(nId) != nullptr;
                      m_pMgr->GetActionType()->GetActionType(nSigned);
                  }
                  m_pMgr->GetMonster()->FindMonsterByName("");
                  m_pMgr->GetItemType()->HasItemName("");
                  m_pMgr->GetFontSetting()->GetGUIFontFile();
                  m_pMgr->GetCommonIni()->GetLeaderScale();
              }),
              0);
    EXPECT_GT(nHits, 1000);
}

}  // namespace
