#include "ClientData/MonsterSpeakTable.h"

#include <cstring>
#include <new>

#include "ClientData/SectionKeys.h"
#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

struct OccasionWord {
    MonsterSpeakOccasion nOccasion;
    const char* szWord;  // prefix of the occasion's keys
};

// The order in which the file is read; the record stores another order.
const OccasionWord kReadOrder[] = {
    {MONSTER_SPEAK_ATTACK, "Attack"}, {MONSTER_SPEAK_BEAT, "Beat"},   {MONSTER_SPEAK_BORN, "Born"},
    {MONSTER_SPEAK_DEAD, "Dead"},     {MONSTER_SPEAK_SKILL, "Skill"},
};

constexpr int kSpeakTextSize = 1024;

// Reads the lines of one occasion; returns its default share.
uint32_t OccasionLinesRead(const CIniSectionReader& reader, int nSection, const char* szWord,
                           CClientArray<MonsterSpeakEntry>& setEntry)
{
    char szKey[64];
    SafeSprintf(szKey, sizeof(szKey), "%sAmount", szWord);
    const int nAmount = reader.GetInt(nSection, szKey, 0);
    if (nAmount <= 0)
        return 0;

    uint32_t nSum = 0;  // wraps as the 32-bit sum does
    uint32_t nCount = 0;
    for (int i : SectionKeyNumbersFind(reader, nSection, szWord, 0, nAmount - 1)) {
        char szText[kSpeakTextSize] = "";
        SafeSprintf(szKey, sizeof(szKey), "%s%d", szWord, i);
        reader.GetText(nSection, szKey, szText, sizeof(szText));
        if (szText[0] == '\0')
            continue;
        SafeSprintf(szKey, sizeof(szKey), "%sProbability%d", szWord, i);
        const int nProbability = reader.GetInt(nSection, szKey, 0);
        MonsterSpeakEntry entry{nProbability, CClientString()};
        if (!entry.strText.Assign(szText, std::strlen(szText)) || !setEntry.PushBack(std::move(entry)))
            break;  // out of memory: the lines read so far stay
        if (nProbability != 0)
            nSum += static_cast<uint32_t>(nProbability);
        else
            ++nCount;
    }
    if (static_cast<int32_t>(nSum) < 1000 && nCount > 0) {
        const uint32_t nShare = (1000u - nSum) / nCount;
        if (nShare != 0)
            return nShare;
    }
    return 1;
}

std::unique_ptr<MonsterSpeakInfo> SpeakInfoRead(const CIniSectionReader& reader, int nSection)
{
    std::unique_ptr<MonsterSpeakInfo> pInfo(new (std::nothrow) MonsterSpeakInfo());
    if (pInfo == nullptr)
        return pInfo;
    for (const OccasionWord& word : kReadOrder) {
        MonsterSpeakLines& lines = pInfo->setOccasion[word.nOccasion];
        lines.nDefaultShare = OccasionLinesRead(reader, nSection, word.szWord, lines.setEntry);
    }
    for (const OccasionWord& word : kReadOrder) {
        if (pInfo->setOccasion[word.nOccasion].nDefaultShare == 0)
            continue;
        char szKey[64];
        SafeSprintf(szKey, sizeof(szKey), "%sProbability", word.szWord);
        const int nProbability = reader.GetInt(nSection, szKey, 0);
        if (nProbability != 0)
            pInfo->setOccasion[word.nOccasion].nProbability = nProbability;
    }
    return pInfo;
}

int EntryProbability(const MonsterSpeakInfo& info, int nOccasion, const MonsterSpeakEntry& entry)
{
    return entry.nProbability != 0 ? entry.nProbability : static_cast<int>(info.setOccasion[nOccasion].nDefaultShare);
}

}  // namespace

CMonsterSpeakTable::~CMonsterSpeakTable() = default;

void CMonsterSpeakTable::Load()
{
    CIniSectionReader reader;
    if (!reader.Open("ini/monsterspeak.ini", 0))
        return;
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        const uint32_t nId = static_cast<uint32_t>(CrtAtoi(reader.GetTitle(nSection).data()));
        if (m_mapInfo.count(nId) != 0)
            continue;  // the first section of an id stays
        std::unique_ptr<MonsterSpeakInfo> pInfo = SpeakInfoRead(reader, nSection);
        if (pInfo == nullptr || !AllocationTry([&] { m_mapInfo.emplace(nId, std::move(pInfo)); }))
            break;  // out of memory: the records read so far stay
    }
}

void CMonsterSpeakTable::Clear() { m_mapInfo.clear(); }

const MonsterSpeakInfo* CMonsterSpeakTable::Find(uint32_t nMonsterType, int nOccasion) const
{
    if (nOccasion < 0 || nOccasion >= MONSTER_SPEAK_OCCASION_AMOUNT)
        return nullptr;
    const auto it = m_mapInfo.find(nMonsterType);
    return it != m_mapInfo.end() ? it->second.get() : nullptr;
}

const MonsterSpeakInfo* CMonsterSpeakTable::GetMonsterSpeak(uint32_t nMonsterType)
{
    const auto it = m_mapInfo.find(nMonsterType);
    return it != m_mapInfo.end() ? it->second.get() : nullptr;
}

int CMonsterSpeakTable::GetSpeakAmount(uint32_t nMonsterType, int nOccasion)
{
    const MonsterSpeakInfo* pInfo = Find(nMonsterType, nOccasion);
    return pInfo != nullptr ? static_cast<int>(pInfo->setOccasion[nOccasion].setEntry.size()) : 0;
}

const char* CMonsterSpeakTable::GetSpeakText(uint32_t nMonsterType, int nOccasion, int nIndex, int* pProbability)
{
    if (pProbability != nullptr)
        *pProbability = 0;
    const MonsterSpeakInfo* pInfo = Find(nMonsterType, nOccasion);
    if (pInfo == nullptr || nIndex < 0 || static_cast<std::size_t>(nIndex) >= pInfo->setOccasion[nOccasion].setEntry.size())
        return nullptr;
    const MonsterSpeakEntry& entry = pInfo->setOccasion[nOccasion].setEntry[nIndex];
    if (pProbability != nullptr)
        *pProbability = EntryProbability(*pInfo, nOccasion, entry);
    return entry.strText.c_str();
}

int CMonsterSpeakTable::GetOccasionProbability(uint32_t nMonsterType, int nOccasion)
{
    const MonsterSpeakInfo* pInfo = Find(nMonsterType, nOccasion);
    return pInfo != nullptr ? pInfo->setOccasion[nOccasion].nProbability : 0;
}

const char* CMonsterSpeakTable::PickSpeakText(uint32_t nMonsterType, int nOccasion, int nRoll)
{
    const MonsterSpeakInfo* pInfo = Find(nMonsterType, nOccasion);
    if (pInfo == nullptr || nRoll < 0)
        return nullptr;
    int64_t nEnd = 0;
    for (const MonsterSpeakEntry& entry : pInfo->setOccasion[nOccasion].setEntry) {
        nEnd += EntryProbability(*pInfo, nOccasion, entry);
        if (nRoll < nEnd)
            return entry.strText.c_str();
    }
    return nullptr;
}
