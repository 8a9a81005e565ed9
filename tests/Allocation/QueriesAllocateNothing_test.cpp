// Queries never allocate. This program counts every allocation
// (ReplacedAllocation.h), loads the bundled sample through the manager and
// asks every table for every number the sample holds, so that hits are
// exercised as well as misses.
#include <algorithm>
#include <filesystem>
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

using QueriesAllocateNothingTest = ManagerTest;

TEST_F(QueriesAllocateNothingTest, AccessorsTextResourcesAndEveryTablesLookups)
{
    std::filesystem::copy(CLIENTDATA_SAMPLE_DIR, Folder(), std::filesystem::copy_options::recursive);
    const std::vector<uint32_t> setNumber = NumbersInFiles(Folder() + "/ini");
    CClientDataMgr* p = StartUp();
    p->LoadStrRes("ini/StrRes.ini");
    int nRecords = 0, nHits = 0;
    const long nBefore = AllocationCount();
    for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot)
        EXPECT_EQ(CallSlot<void*>(p, nSlot), static_cast<void*>(p->GetTableBySlot(nSlot)));
    EXPECT_EQ(QueryClientDataMgr(), p);
    for (const CatalogueEntry& entry : kCatalogue) {
        IGenericTable* pTable = dynamic_cast<IGenericTable*>(p->GetTableBySlot(entry.nSlot));
        if (pTable == nullptr)
            continue;
        pTable->GetKind();
        for (int nIndex = -1; nIndex < pTable->GetRecordAmount() && nIndex < 8; ++nIndex) {
            ++nRecords;
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
        for (uint32_t nId : setNumber)
            pTable->FindRecord(nId);
    }
    for (uint32_t nId : setNumber) {
        const int nSigned = static_cast<int>(nId);
        p->GetStrRes(nId);  // hits and misses alike
        nHits += p->GetItemType()->FindItemType(nId) != nullptr;
        p->GetItemType()->GetItemName(nId);
        nHits += p->GetMagicType()->GetMagicType(nId / 10, nId % 10) != nullptr;
        p->GetMagicType()->IsIntoneAction(nSigned, false, true);
        p->GetMagicType()->IsSenderAction(nSigned);
        p->GetItemCategory()->IsInCategory("", nId);
        nHits += p->GetBattleTutorial()->GetCommand(nSigned, 0) != nullptr;
        nHits += p->Getmonsterspeak()->GetSpeakText(nId, 0, 0, nullptr) != nullptr;
        nHits += p->GetActionEffectOffset()->GetActionEffectOffset(nSigned, 0, 0) != nullptr;
        p->GetAction()->GetActionValue(nId);
        nHits += p->GetMonster()->GetMonsterType(nSigned) != nullptr;
        nHits += p->GetNpc()->GetNpcType(nId) != nullptr;
        nHits += p->GetNewNpc()->GetNpcType(nId) != nullptr;
        nHits += p->GetActionDelay()->GetActionDelay(nId) != nullptr;
        nHits += p->GetActionCtrl()->GetActionCtrl(nId) != nullptr;
        nHits += p->GetSoundEvent()->GetSoundEventText(nId) != nullptr;
        p->GetActionType()->GetActionType(nSigned);
    }
    p->GetMonster()->FindMonsterByName("");
    p->GetItemType()->HasItemName("");
    p->GetFontSetting()->GetGUIFontFile();
    p->GetCommonIni()->GetLeaderScale();
    EXPECT_EQ(AllocationCount() - nBefore, 0);
    EXPECT_GT(nRecords, 500);
    EXPECT_GT(nHits, 1000);
}

}  // namespace
