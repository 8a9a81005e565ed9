// What monsters say, from "ini/monsterspeak.ini": one section per monster type
// id, and for each of five occasions (attack, being hit, death, skill, birth)
// a list of lines, each with a per-mille probability, plus the probability
// that the occasion speaks at all.
//
// A line whose own probability is 0 stands for the default share of its
// occasion: what is left of 1000 after the lines with a probability of their
// own, divided evenly among the lines without one. The share is 1 when
// nothing is left (or the division gives 0, or every line has its own
// probability) and 0 when the occasion has no "Amount" above 0; only an
// occasion with a non-zero share reads its occasion probability (default 1).
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>

#include "ClientData/DataTable.h"
#include "ClientData/TableDesc.h"

// Occasions in the order a MonsterSpeakInfo stores them (the file is read in
// the order Attack, Beat, Born, Dead, Skill).
enum MonsterSpeakOccasion : int {
    MONSTER_SPEAK_ATTACK = 0,  // keys "Attack..."
    MONSTER_SPEAK_BEAT = 1,    // keys "Beat...": the monster is hit
    MONSTER_SPEAK_DEAD = 2,    // keys "Dead..."
    MONSTER_SPEAK_SKILL = 3,   // keys "Skill..."
    MONSTER_SPEAK_BORN = 4,    // keys "Born..."
    MONSTER_SPEAK_OCCASION_AMOUNT = 5,
};

// The client reads the record by layout, its lists and texts in its own
// library's array and string layouts.
struct MonsterSpeakEntry {
    int nProbability;       // per mille; 0: the occasion's default share
    CClientString strText;  // never empty, at most 1023 characters
};
template <>
struct IsClientRelocatable<MonsterSpeakEntry> {
    static constexpr bool value = true;  // an int and a string
};

// What a monster says on one occasion.
struct MonsterSpeakLines {
    CClientArray<MonsterSpeakEntry> setEntry;  // file order
    int nProbability = 1;                      // that the occasion speaks at all
    uint32_t nDefaultShare = 0;                // of the lines without a probability
};

struct MonsterSpeakInfo {
    MonsterSpeakLines setOccasion[MONSTER_SPEAK_OCCASION_AMOUNT];  // by MonsterSpeakOccasion
};

static_assert(sizeof(MonsterSpeakEntry) == sizeof(void*) + sizeof(CClientString), "int padded to a word");
static_assert(offsetof(MonsterSpeakEntry, strText) == sizeof(void*), "the text after the padded int");
static_assert(sizeof(MonsterSpeakLines) == 3 * sizeof(void*) + 8, "array, probability, share");
static_assert(sizeof(MonsterSpeakInfo) == MONSTER_SPEAK_OCCASION_AMOUNT * sizeof(MonsterSpeakLines), "five occasions");

class CMonsterSpeakTable : public CDataTable {
public:
    CMonsterSpeakTable() = default;
    ~CMonsterSpeakTable();
    ZEL_DELETING_DESTRUCTOR

    // Reads its fixed path; an unreadable file leaves the table empty
    // without a message. A repeated id keeps the first section.
    void Load() override;
    void Clear() override;

    // Records, texts and counts stay valid until the next Clear or Load. An
    // occasion outside 0-4 or an id without a record is a miss.

    // Slot 7: the record of a monster type; null on a miss.
    virtual const MonsterSpeakInfo* GetMonsterSpeak(uint32_t nMonsterType);
    // Slot 8: how many lines an occasion has; 0 on a miss.
    virtual int GetSpeakAmount(uint32_t nMonsterType, int nOccasion);
    // Slot 9: line nIndex of an occasion, and (when pProbability is not null)
    // its per-mille probability with the default share already applied; null
    // (and *pProbability 0) on a miss.
    virtual const char* GetSpeakText(uint32_t nMonsterType, int nOccasion, int nIndex, int* pProbability);
    // Slot 10: the probability that the occasion speaks at all (1 unless the
    // file sets one); 0 on a miss.
    virtual int GetOccasionProbability(uint32_t nMonsterType, int nOccasion);
    // Slot 11: the line that a roll in 0-999 picks: the lines take consecutive
    // ranges of their probabilities in file order; null when the roll falls
    // beyond the last range or on a miss.
    virtual const char* PickSpeakText(uint32_t nMonsterType, int nOccasion, int nRoll);

    std::size_t GetLoadedAmount() const { return m_mapInfo.size(); }
    // Every record held, by monster type id.
    const std::map<uint32_t, std::unique_ptr<MonsterSpeakInfo>>& Speeches() const { return m_mapInfo; }

private:
    const MonsterSpeakInfo* Find(uint32_t nMonsterType, int nOccasion) const;

    std::map<uint32_t, std::unique_ptr<MonsterSpeakInfo>> m_mapInfo;
};

extern const TableDesc kMonsterSpeakDesc;
