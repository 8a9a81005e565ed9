// Views of the monster types ("monster", by type id) and the monster speech
// ("monster-speak", by monster type id). A repeated id shows once, as the
// lookup answers it.
#include <cstdint>
#include <string>
#include <vector>

#include "ClientData/ClientDataMgr.h"
#include "TableView.h"

namespace {

void MonsterRecord(const MonsterTypeInfo& info, int nCanTakeStatus, ViewRecord& record)
{
    record.strKey = std::to_string(info.nId);
    record.AddInt("Id", info.nId);
    record.AddText("Name", info.szName);
    record.AddInt("SizeAdd", info.nSizeAdd);
    record.AddInt("ZoomPercent", info.nZoomPercent);
    record.AddInt("MaxLife", info.nMaxLife);
    record.AddInt("Level", info.nLevel);
    record.AddInt("WhiteBlack", info.nWhiteBlack);
    record.AddInt("BattleLev", info.nBattleLev);
    record.AddInt("NameAltitude", info.nNameAltitude);
    record.AddInt("Sort", info.nSort);
    record.AddInt("ExtraExp", info.nExtraExp);
    record.AddText("DisappearEffect", info.szDisappearEffect);
    record.AddText("DisappearSound", info.szDisappearSound);
    record.AddInt("LeftWeapon", info.nLeftWeapon);
    record.AddInt("RightWeapon", info.nRightWeapon);
    record.AddText("Effect", info.szEffect);
    record.AddInt("NameHeight", info.nNameHeight);
    record.AddText("AttackEffect", info.szAttackEffect);
    record.AddText("AppearEffect", info.szAppearEffect);
    record.AddInt("DefyStatus", info.nDefyStatus);
    record.AddInt("LockDir", info.nLockDir);
    record.AddText("DefyEffect", info.szDefyEffect);
    record.AddInt("CanTakeStatus", nCanTakeStatus);
}

void MonsterAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    CMonsterTypeTable& table = *mgr.GetMonster();
    // Of a repeated id only the record the last-wins lookup returns.
    for (const auto& pInfo : table.Records()) {
        if (table.GetMonsterType(pInfo->nId) != pInfo.get())
            continue;
        setRecord.emplace_back();
        MonsterRecord(*pInfo, table.CanTakeStatus(pInfo->nId), setRecord.back());
    }
}

bool MonsterGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    long long nId = 0;
    if (!ViewSingleKey(setKey, INT32_MIN, UINT32_MAX, nId))
        return false;
    CMonsterTypeTable& table = *mgr.GetMonster();
    const MonsterTypeInfo* pInfo = table.GetMonsterType(static_cast<int>(nId));
    if (pInfo == nullptr)
        return false;
    MonsterRecord(*pInfo, table.CanTakeStatus(pInfo->nId), record);
    return true;
}

// The occasions in the order the record stores them, with their key words.
const struct {
    int nOccasion;
    const char* szWord;
} kOccasions[] = {
    {MONSTER_SPEAK_ATTACK, "Attack"}, {MONSTER_SPEAK_BEAT, "Beat"}, {MONSTER_SPEAK_DEAD, "Dead"},
    {MONSTER_SPEAK_SKILL, "Skill"},   {MONSTER_SPEAK_BORN, "Born"},
};

void SpeakRecord(uint32_t nId, const MonsterSpeakInfo& info, ViewRecord& record)
{
    record.strKey = std::to_string(nId);
    record.AddInt("Id", nId);
    for (const auto& occasion : kOccasions) {
        const std::string strWord = occasion.szWord;
        const MonsterSpeakLines& lines = info.setOccasion[occasion.nOccasion];
        const CClientArray<MonsterSpeakEntry>& setEntry = lines.setEntry;
        record.AddInt((strWord + "Probability").c_str(), lines.nProbability);
        record.AddInt((strWord + "DefaultShare").c_str(), lines.nDefaultShare);
        record.AddInt((strWord + "Amount").c_str(), static_cast<long long>(setEntry.size()));
        for (std::size_t i = 0; i < setEntry.size(); ++i) {
            record.AddText((strWord + std::to_string(i)).c_str(), setEntry[i].strText.c_str());
            record.AddInt((strWord + "Probability" + std::to_string(i)).c_str(), setEntry[i].nProbability);
        }
    }
}

void SpeakAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    for (const auto& speech : mgr.Getmonsterspeak()->Speeches()) {
        setRecord.emplace_back();
        SpeakRecord(speech.first, *speech.second, setRecord.back());
    }
}

bool SpeakGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    long long nId = 0;
    if (!ViewSingleKey(setKey, INT32_MIN, UINT32_MAX, nId))
        return false;
    const MonsterSpeakInfo* pInfo = mgr.Getmonsterspeak()->GetMonsterSpeak(static_cast<uint32_t>(nId));
    if (pInfo == nullptr)
        return false;
    SpeakRecord(static_cast<uint32_t>(nId), *pInfo, record);
    return true;
}

const TableViewRegistration kMonsterView({"monster", "ID", &MonsterAll, &MonsterGet});
const TableViewRegistration kSpeakView({"monster-speak", "MONSTER_TYPE_ID", &SpeakAll, &SpeakGet});

}  // namespace
