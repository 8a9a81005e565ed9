// The queries of a table beyond the lookup its description names, asked with
// the input's numbers and words: what the client asks while it plays. A table
// without an entry here is asked through its description only.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "ClientData/CatalogueTables.h"
#include "FuzzTable.h"

struct FuzzKeys {
    std::vector<int64_t> setNumber;
    std::vector<std::string> setWord;
};

template <class T>
void FuzzQueries(T&, const FuzzKeys&)
{
}

template <>
inline void FuzzQueries(CMagicData& table, const FuzzKeys& keys)
{
    IMagicData& magic = table;  // the client's view
    const std::vector<int64_t>& setNumber = keys.setNumber;
    for (std::size_t i = 0; i + 1 < setNumber.size(); ++i) {
        const uint32_t nType = static_cast<uint32_t>(setNumber[i]);
        const uint32_t nLevel = static_cast<uint32_t>(setNumber[i + 1]);
        MagicTypeInfo copy;
        magic.CopyMagicType(nType, static_cast<int>(nLevel), &copy);
        const int nAction = static_cast<int>(setNumber[i]);
        magic.IsIntoneAction(nAction, i % 2 == 0, i % 3 == 0);
        magic.IsSenderAction(nAction);
        magic.IsTargetAction(nAction);
        magic.FindFirstLearnable(nType);
        CClientArray<const MagicTypeInfo*> setLearnable;
        magic.CollectLearnable(nType, nLevel, &setLearnable);
        magic.BuildLevelList(nLevel, nType);
        magic.BuildLevelRangeList(nLevel, nType, nLevel);
        for (int k = -1; k <= magic.GetLevelListAmount() && k < 16; ++k)
            magic.GetLevelListItem(k);
        for (int k = -1; k <= magic.GetRangeListAmount() && k < 16; ++k)
            magic.GetRangeListItem(k);
    }
    for (int i = -1; i <= magic.GetAmount() && i < 64; ++i)
        magic.GetMagicTypeByIndex(i);
    magic.ClearLists();
}

template <>
inline void FuzzQueries(CItemTypeTable& table, const FuzzKeys& keys)
{
    for (int64_t nId : keys.setNumber) {
        const uint32_t idType = static_cast<uint32_t>(nId);
        FuzzCheckLength(table.GetItemName(idType), 256);
        ItemTypeInfo copy;
        if (table.GetItemType(idType, &copy) != (table.FindItemType(idType) != nullptr))
            std::abort();
        for (int nIndex = 0; nIndex <= 10; ++nIndex)
            table.GetIndexedValue(idType, nIndex);
    }
    for (const std::string& strWord : keys.setWord)
        table.HasItemName(strWord.c_str());
    table.HasItemName(nullptr);
}

template <>
inline void FuzzQueries(CMonsterTypeTable& table, const FuzzKeys& keys)
{
    for (int64_t nId : keys.setNumber)
        table.CanTakeStatus(static_cast<int>(nId));
    for (const std::string& strWord : keys.setWord)
        table.FindMonsterByName(strWord.c_str());
    table.FindMonsterByName(nullptr);
}

template <>
inline void FuzzQueries(CMonsterSpeakTable& table, const FuzzKeys& keys)
{
    for (int64_t nId : keys.setNumber) {
        const uint32_t nType = static_cast<uint32_t>(nId);
        for (int nOccasion = -1; nOccasion <= 8; ++nOccasion) {
            const int nAmount = table.GetSpeakAmount(nType, nOccasion);
            for (int i = -1; i <= nAmount && i < 16; ++i) {
                int nProbability = 0;
                table.GetSpeakText(nType, nOccasion, i, &nProbability);
                table.GetSpeakText(nType, nOccasion, i, nullptr);
            }
            table.GetOccasionProbability(nType, nOccasion);
            for (int nRoll : {-1, 0, 1, 50, 99, 100, 1000})
                table.PickSpeakText(nType, nOccasion, nRoll);
        }
    }
}

template <>
inline void FuzzQueries(CBattleTutorialTable& table, const FuzzKeys& keys)
{
    for (int64_t nId : keys.setNumber) {
        const int nScript = static_cast<int>(nId);
        table.GetScriptType(nScript);
        const int nAmount = table.GetCommandAmount(nScript);
        for (int i = -1; i <= nAmount && i < 32; ++i)
            if (const TutorialCommand* pCommand = table.GetCommand(nScript, i))
                if (pCommand->nCode < 1 || pCommand->nCode > 170)
                    std::abort();  // the loader keeps executable commands only
    }
}

template <>
inline void FuzzQueries(CItemCategoryTable& table, const FuzzKeys& keys)
{
    CClientArray<uint32_t> setId;
    for (const std::string& strWord : keys.setWord) {
        // The expansion of a wide range is bounded but takes long; expand
        // only categories of modest size.
        uint64_t nIds = 0;
        if (const auto* pRanges = table.FindRanges(strWord.c_str()))
            for (const CItemCategoryTable::Range& range : *pRanges)
                nIds += range.idHigh >= range.idLow ? uint64_t(range.idHigh) - range.idLow + 1 : 0;
        setId.Clear();
        if (nIds <= 65536)
            table.GetCategoryIds(strWord.c_str(), &setId);
        for (int64_t nId : keys.setNumber)
            table.IsInCategory(strWord.c_str(), static_cast<uint32_t>(nId));
        for (std::size_t i = 0; i < setId.size() && i < 8; ++i)
            if (!table.IsInCategory(strWord.c_str(), setId[i]))
                std::abort();  // every id the category lists is in it
    }
    table.IsInCategory(nullptr, 0);
}

template <>
inline void FuzzQueries(CActionTypeData& table, const FuzzKeys& keys)
{
    for (int nPosition : {-1, 0, 1, 100, 289, 290, 291, 100000})
        table.GetActionType(nPosition), table.GetMonsterActionType(nPosition);
    for (int64_t nId : keys.setNumber)
        table.GetActionType(static_cast<int>(nId)), table.GetMonsterActionType(static_cast<int>(nId));
}

template <>
inline void FuzzQueries(CFontSetting& table, const FuzzKeys&)
{
    (void)std::strlen(table.GetGUIFontFile());
    (void)std::strlen(table.GetChatFontFile());
    (void)std::strlen(table.GetTipFontFile());
    CZelString strName;
    (void)std::strlen(*table.GetDefaultFontName(&strName));
}
