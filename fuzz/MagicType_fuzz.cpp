// "MagicType.ini" and "ini/MagicTypeEx.ini" through the magic type table; the
// input holds both files, split at "@@FILE@@".
#include "ClientData/MagicData.h"
#include "FuzzTable.h"

namespace {
void CheckRecord(const MagicTypeInfo* pInfo)
{
    if (pInfo == nullptr)
        return;
    FUZZ_CHECK_TEXT(pInfo->Name);
    FUZZ_CHECK_TEXT(pInfo->Column38);
    FUZZ_CHECK_TEXT(pInfo->Column45);
    FUZZ_CHECK_TEXT(pInfo->Column53);
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    const std::vector<std::string> setFile = FuzzSplitFiles(pData, nSize, 2);
    FuzzWriteFile("ini/MagicType.ini", reinterpret_cast<const uint8_t*>(setFile[0].data()), setFile[0].size());
    FuzzWriteFile("ini/MagicTypeEx.ini", reinterpret_cast<const uint8_t*>(setFile[1].data()), setFile[1].size());
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    FuzzTableLife<CMagicData>([&](CMagicData& table) {
        IMagicData& magic = table;  // the client's view
        const int nAmount = magic.GetAmount();
        for (int i = -1; i <= nAmount && i < 64; ++i)
            CheckRecord(magic.GetMagicTypeByIndex(i));
        for (std::size_t i = 0; i + 1 < setNumber.size(); ++i) {
            const uint32_t nType = static_cast<uint32_t>(setNumber[i]);
            const uint32_t nLevel = static_cast<uint32_t>(setNumber[i + 1]);
            CheckRecord(magic.GetMagicType(nType, nLevel));
            MagicTypeInfo copy;
            magic.CopyMagicType(nType, static_cast<int>(nLevel), &copy);
            const int nAction = static_cast<int>(setNumber[i]);
            magic.IsIntoneAction(nAction, i % 2 == 0, i % 3 == 0);
            magic.IsSenderAction(nAction);
            magic.IsTargetAction(nAction);
            CheckRecord(magic.FindFirstLearnable(nType));
            CClientArray<const MagicTypeInfo*> setLearnable;
            magic.CollectLearnable(nType, nLevel, &setLearnable);
            for (const MagicTypeInfo* pInfo : setLearnable) CheckRecord(pInfo);
            magic.BuildLevelList(nLevel, nType);
            magic.BuildLevelRangeList(nLevel, nType, nLevel);
            for (int k = -1; k <= magic.GetLevelListAmount() && k < 16; ++k)
                CheckRecord(magic.GetLevelListItem(k));
            for (int k = -1; k <= magic.GetRangeListAmount() && k < 16; ++k)
                CheckRecord(magic.GetRangeListItem(k));
        }
        magic.ClearLists();
    });
    return 0;
}
