#include "ClientData/MonsterSpeakTable.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <new>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "ClientData/Catalogue.h"
#include "ClientData/RecordRead.h"
#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

// The keys of one occasion, in the order they are read: its line count, its
// lines ("Attack0", ...), their probabilities, and the probability that it
// speaks at all.
#define OCCASION(word)                                                                                           \
    FILE_FIELD(int32_t, word "Amount").Gen(1, 4).Sometimes(45), FILE_FIELD(char[1024], word "%d").GenGbk(3, 14), \
        FILE_FIELD(int32_t, word "Probability%d").Gen(50, 250).Sometimes(40),                                    \
        FILE_FIELD(int32_t, word "Probability").Gen(10, 60).Sometimes(50)
const FieldDesc kSpeakFields[] = {
    FILE_FIELD(uint32_t, "Id").FromTitle().Gen(1001, 6),
    OCCASION("Attack"),
    OCCASION("Beat"),
    OCCASION("Born"),
    OCCASION("Dead"),
    OCCASION("Skill"),
};
#undef OCCASION
const RecordDesc kSpeakRecord(kSpeakFields);

struct OccasionKeys {
    const FieldDesc& amount;
    const FieldDesc& line;
    const FieldDesc& lineProbability;
    const FieldDesc& probability;
};
constexpr int kKeysPerOccasion = 4;

// The occasions in the order the file is read, and where the record keeps
// each.
const MonsterSpeakOccasion kReadOrder[] = {MONSTER_SPEAK_ATTACK, MONSTER_SPEAK_BEAT, MONSTER_SPEAK_BORN,
                                           MONSTER_SPEAK_DEAD, MONSTER_SPEAK_SKILL};
static_assert(sizeof(kSpeakFields) / sizeof(kSpeakFields[0]) ==
                  1 + kKeysPerOccasion * sizeof(kReadOrder) / sizeof(kReadOrder[0]),
              "four keys per occasion");

OccasionKeys KeysOf(int nRead)
{
    const FieldDesc* pFirst = kSpeakFields + 1 + kKeysPerOccasion * nRead;
    return OccasionKeys{pFirst[0], pFirst[1], pFirst[2], pFirst[3]};
}

// The keys of the occasion the record keeps at nOccasion.
OccasionKeys KeysOfStored(int nOccasion)
{
    for (int nRead = 0; nRead < MONSTER_SPEAK_OCCASION_AMOUNT; ++nRead)
        if (kReadOrder[nRead] == nOccasion)
            return KeysOf(nRead);
    return KeysOf(0);
}

constexpr int kSpeakTextSize = 1024;

void AmountFindings(const CIniSectionReader& reader, int nSection, const OccasionKeys& keys, int nAmount,
                    const char* szPath)
{
    const std::map<int, int> mapAll = RecordKeyNumbers(keys.line, reader, nSection, 0, INT_MAX);
    const std::size_t nWithin =
        static_cast<std::size_t>(std::distance(mapAll.begin(), mapAll.lower_bound(nAmount > 0 ? nAmount : 0)));
    if ((nAmount > 0 && nWithin != static_cast<std::size_t>(nAmount)) || nWithin != mapAll.size())
        LoadFindingReport(szPath, reader.GetTitleLine(nSection), FINDING_ERROR, "line-amount",
                          "%s=%d, but %u lines are given within it and %u beyond it", keys.amount.szKey, nAmount,
                          static_cast<unsigned>(nWithin), static_cast<unsigned>(mapAll.size() - nWithin));
}

// Where the keys of one section stand, found in one walk over them: for each
// occasion (in read order) the first key of its count and of its
// probability, and every numbered line and line probability in file order.
// A lookup by key answers the first key that equals it; so do these.
class CSectionKeys {
public:
    struct Numbered {
        int nNumber;
        int nKey;
    };
    struct Occasion {
        int nAmountKey;
        int nProbabilityKey;
        std::vector<Numbered> setLine;
        std::vector<Numbered> setLineProbability;
    };

    void Collect(const CIniSectionReader& reader, int nSection)
    {
        for (Occasion& occasion : m_setOccasion) {
            occasion.nAmountKey = -1;
            occasion.nProbabilityKey = -1;
            occasion.setLine.clear();
            occasion.setLineProbability.clear();
        }
        const int nKeyAmount = reader.GetKeyAmount(nSection);
        for (int nKey = 0; nKey < nKeyAmount; ++nKey) {
            const std::string_view key = reader.GetKeyAt(nSection, nKey);
            for (int nRead = 0; nRead < MONSTER_SPEAK_OCCASION_AMOUNT; ++nRead) {
                const OccasionKeys keys = KeysOf(nRead);
                // Every key of an occasion begins with its word ("Attack").
                const std::size_t nWord = keys.amount.nKeyLength - std::strlen("Amount");
                if (key.size() < nWord || CrtCompareNoCase(key.data(), nWord, keys.amount.szKey, nWord) != 0)
                    continue;
                KeyNote(m_setOccasion[nRead], keys, key, nKey);
                break;
            }
        }
    }
    const Occasion& Of(int nRead) const { return m_setOccasion[nRead]; }

private:
    static bool Equals(const FieldDesc& field, std::string_view key)
    {
        return field.nKeyLength == key.size() &&
               CrtCompareNoCase(field.szKey, key.size(), key.data(), key.size()) == 0;
    }
    static void KeyNote(Occasion& occasion, const OccasionKeys& keys, std::string_view key, int nKey)
    {
        if (Equals(keys.amount, key) && occasion.nAmountKey < 0)
            occasion.nAmountKey = nKey;
        if (Equals(keys.probability, key) && occasion.nProbabilityKey < 0)
            occasion.nProbabilityKey = nKey;
        const int64_t nLine = keys.line.NumberOf(key.data(), key.size());
        if (nLine >= 0)
            occasion.setLine.push_back({static_cast<int>(nLine), nKey});
        const int64_t nLineProbability = keys.lineProbability.NumberOf(key.data(), key.size());
        if (nLineProbability >= 0)
            occasion.setLineProbability.push_back({static_cast<int>(nLineProbability), nKey});
    }

    Occasion m_setOccasion[MONSTER_SPEAK_OCCASION_AMOUNT];
};

int ValueAt(const CIniSectionReader& reader, int nSection, int nKey)
{
    return nKey < 0 ? 0 : CrtAtoi(reader.GetValueAt(nSection, nKey).data());
}

// The value of the first key of number nNumber; 0 when there is none.
int NumberedValue(const CIniSectionReader& reader, int nSection, const std::vector<CSectionKeys::Numbered>& setKey,
                  int nNumber)
{
    for (const CSectionKeys::Numbered& numbered : setKey)
        if (numbered.nNumber == nNumber)
            return ValueAt(reader, nSection, numbered.nKey);
    return 0;
}

// Reads the lines of one occasion; returns its default share.
uint32_t OccasionLinesRead(const CIniSectionReader& reader, int nSection, int nRead, const CSectionKeys& sectionKeys,
                           CClientArray<MonsterSpeakEntry>& setEntry, const char* szPath)
{
    const OccasionKeys keys = KeysOf(nRead);
    const CSectionKeys::Occasion& occasion = sectionKeys.Of(nRead);
    const int nAmount = ValueAt(reader, nSection, occasion.nAmountKey);
    if (LoadFindingsWanted())
        AmountFindings(reader, nSection, keys, nAmount, szPath);
    if (nAmount <= 0)
        return 0;

    // The lines 0 to nAmount - 1 that are given, ascending, each at its first key.
    std::vector<CSectionKeys::Numbered> setLine;
    for (const CSectionKeys::Numbered& numbered : occasion.setLine)
        if (numbered.nNumber < nAmount)
            setLine.push_back(numbered);
    std::stable_sort(setLine.begin(), setLine.end(),
                     [](const auto& a, const auto& b) { return a.nNumber < b.nNumber; });
    setLine.erase(std::unique(setLine.begin(), setLine.end(),
                              [](const auto& a, const auto& b) { return a.nNumber == b.nNumber; }),
                  setLine.end());

    uint32_t nSum = 0;  // wraps as the 32-bit sum does
    uint32_t nCount = 0;
    for (const CSectionKeys::Numbered& numbered : setLine) {
        const int i = numbered.nNumber;
        const std::string_view line = reader.GetValueAt(nSection, numbered.nKey);
        // The text as a 1024-byte buffer keeps it: up to its first zero byte.
        const char* pEnd = line.data() + std::min(line.size(), static_cast<std::size_t>(kSpeakTextSize - 1));
        const std::size_t nLength = static_cast<std::size_t>(std::find(line.data(), pEnd, '\0') - line.data());
        if (nLength == 0)
            continue;
        if (LoadFindingsWanted() && line.size() >= kSpeakTextSize) {
            char szKey[64];
            SafeSprintf(szKey, sizeof(szKey), keys.line.szKey, i);
            LoadFindingReport(szPath, reader.GetKeyLine(nSection, numbered.nKey), FINDING_WARNING, "text-cut",
                              "%s of %u bytes is cut to %d", szKey, static_cast<unsigned>(line.size()),
                              kSpeakTextSize - 1);
        }
        const int nProbability = NumberedValue(reader, nSection, occasion.setLineProbability, i);
        MonsterSpeakEntry entry{nProbability, CClientString()};
        if (!entry.strText.Assign(line.data(), nLength) || !setEntry.PushBack(std::move(entry)))
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

std::unique_ptr<MonsterSpeakInfo> SpeakInfoRead(const CIniSectionReader& reader, int nSection,
                                                CSectionKeys& sectionKeys, const char* szPath)
{
    std::unique_ptr<MonsterSpeakInfo> pInfo(new (std::nothrow) MonsterSpeakInfo());
    if (pInfo == nullptr)
        return pInfo;
    sectionKeys.Collect(reader, nSection);
    for (int nRead = 0; nRead < MONSTER_SPEAK_OCCASION_AMOUNT; ++nRead) {
        MonsterSpeakLines& lines = pInfo->setOccasion[kReadOrder[nRead]];
        lines.nDefaultShare = OccasionLinesRead(reader, nSection, nRead, sectionKeys, lines.setEntry, szPath);
    }
    for (int nRead = 0; nRead < MONSTER_SPEAK_OCCASION_AMOUNT; ++nRead) {
        MonsterSpeakLines& lines = pInfo->setOccasion[kReadOrder[nRead]];
        if (lines.nDefaultShare == 0)
            continue;
        const int nProbability = ValueAt(reader, nSection, sectionKeys.Of(nRead).nProbabilityKey);
        if (nProbability != 0)
            lines.nProbability = nProbability;
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
    const char* szPath = CatalogueFileOf<CMonsterSpeakTable>();
    CIniSectionReader reader;
    if (!reader.Open(szPath, 0))
        return;
    CSectionKeys sectionKeys;  // reused from section to section
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        const char* szTitle = reader.GetTitle(nSection).data();
        const uint32_t nId = static_cast<uint32_t>(CrtAtoi(szTitle));
        if (LoadFindingsWanted() && std::to_string(CrtAtoi(szTitle)) != szTitle)
            LoadFindingReport(szPath, reader.GetTitleLine(nSection), FINDING_WARNING, "bad-title",
                              "section [%s] is read as monster type %u", szTitle, nId);
        if (m_mapInfo.count(nId) != 0) {
            if (LoadFindingsWanted())
                LoadFindingReport(szPath, reader.GetTitleLine(nSection), FINDING_WARNING, "duplicate-id",
                                  "monster type %u was given before: this section is dropped", nId);
            continue;  // the first section of an id stays
        }
        if (LoadFindingsWanted())
            RecordReadSection(kSpeakRecord, reader, nSection, nullptr, szPath);
        std::unique_ptr<MonsterSpeakInfo> pInfo = SpeakInfoRead(reader, nSection, sectionKeys, szPath);
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
    if (pInfo == nullptr || nIndex < 0 ||
        static_cast<std::size_t>(nIndex) >= pInfo->setOccasion[nOccasion].setEntry.size())
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

namespace {

const void* SpeakFind(CDataTable& table, const RecordKey& key)
{
    return static_cast<CMonsterSpeakTable&>(table).GetMonsterSpeak(static_cast<uint32_t>(key.nNumber[0]));
}

// Each occasion in the order the record keeps them: its probability, its
// default share, and its lines with theirs, under the file's keys.
void SpeakVisit(CDataTable&, const void* pRecord, FieldVisitor& visitor)
{
    const MonsterSpeakInfo& info = *static_cast<const MonsterSpeakInfo*>(pRecord);
    for (int nOccasion = 0; nOccasion < MONSTER_SPEAK_OCCASION_AMOUNT; ++nOccasion) {
        const OccasionKeys keys = KeysOfStored(nOccasion);
        const MonsterSpeakLines& lines = info.setOccasion[nOccasion];
        visitor.Number(keys.probability.szKey, lines.nProbability);
        std::string strShare = keys.amount.szKey;  // "<Occasion>Amount"
        strShare.replace(strShare.size() - std::strlen("Amount"), std::string::npos, "DefaultShare");
        visitor.Number(strShare.c_str(), lines.nDefaultShare);
        visitor.Number(keys.amount.szKey, static_cast<int64_t>(lines.setEntry.size()));
        for (std::size_t i = 0; i < lines.setEntry.size(); ++i) {
            char szKey[64];
            SafeSprintf(szKey, sizeof(szKey), keys.line.szKey, static_cast<int>(i));
            visitor.Text(szKey, lines.setEntry[i].strText.c_str());
            SafeSprintf(szKey, sizeof(szKey), keys.lineProbability.szKey, static_cast<int>(i));
            visitor.Number(szKey, lines.setEntry[i].nProbability);
        }
    }
}

}  // namespace

const TableDesc kMonsterSpeakDesc = {
    &kSpeakRecord, TABLE_KEY_NUMBERS, "Id",    &MapRecordsEach<CMonsterSpeakTable, &CMonsterSpeakTable::Speeches>,
    &SpeakFind,    &SpeakVisit,       nullptr, 360};
