// Magic type table: one record per (magic type, level) from "MagicType.ini"
// (one long line per record), with casting ("intone") and second-stage data
// added from "MagicTypeEx.ini". Besides plain lookups it answers which magics
// a profession may learn and whether an action belongs to some magic.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <unordered_map>
#include <vector>

#include "ClientData/DataTable.h"
#include "ClientData/RecordArena.h"
#include "ClientData/TableDesc.h"

// Where the client's records hold a growable array: its first, last and end
// pointers, the layout of CClientArray. No loader fills it, so it is always
// empty (all null), and the record stays a plain structure that
// CopyMagicType copies whole.
struct MagicAuxList {
    void* pFirst;
    void* pLast;
    void* pEnd;
};
static_assert(sizeof(MagicAuxList) == sizeof(CClientArray<void*>), "the client's array layout");

// The client reads records by layout: field order, widths and buffer sizes
// are fixed. Columns 1-61 of the main file in column order (except 53); the
// named fields after column 61 are keys of the extra file, whose defaults
// the description (kMagicTypeDesc) states. A fresh record is all zeros with
// SelfMask 1.
struct MagicTypeInfo {
    uint32_t Type;  // column 1; first half of the key
    uint32_t Column2;
    char Name[16];  // column 3
    uint32_t Column4, Column5, Column6, Column7;
    uint32_t Level;  // column 8; second half of the key
    uint32_t Column9, Column10, Column11, Column12, Column13, Column14, Column15, Column16, Column17;
    uint32_t NeedProfession;  // column 18; see MagicProfessionMatch
    uint32_t Column19, Column20, Column21, Column22, Column23, Column24, Column25;
    uint32_t LearnFlag;  // column 26; only 1 takes part in the learnable queries
    uint32_t NeedLevel;  // column 27; character level from which it is available
    uint32_t Column28, Column29, Column30, Column31, Column32, Column33, Column34;
    uint32_t SenderAction;  // column 35; the action the caster plays
    uint32_t Column36, Column37;
    char Column38[256];
    char Column39[64];
    char Column40[260], Column41[260], Column42[260];
    uint32_t Column43;
    char Column44[64];
    char Column45[260];
    char Column46[64], Column47[64];
    char Column53[64];  // read as the 53rd column, stored here
    uint32_t Column48, Column49, Column50;
    uint32_t Column51;  // a 0 in the file is stored as 300
    uint32_t Column52;
    MagicAuxList AuxList;
    uint32_t Column54, Column55, Column56, Column57;
    uint32_t Column58;  // hexadecimal in the file
    uint32_t Column59, Column60, Column61;
    uint32_t CheckMask;
    uint32_t TargetMask;
    uint32_t SelfMask;  // 1 by default
    uint32_t TypeMask;
    uint32_t TargetAction;                                                // the action the target plays
    char Text1[64], Text2[64];                                            // cleared, filled by no loader
    uint32_t IntoneActionEx1, IntoneActionEx2, IntoneActionEx3;           // casting on foot
    uint32_t MountIntoneAction1, MountIntoneAction2, MountIntoneAction3;  // casting mounted
    uint32_t FlyIntoneAction1, FlyIntoneAction2, FlyIntoneAction3;        // casting in flight
    uint32_t IntoneCycTime;
    char AppendDisc[128];  // "NULL" by default
    uint32_t SecondAction;
    uint32_t SecondActionDelay;
    char SecondSenderEffect[260];  // "NULL" by default
    uint32_t XpAddition;
    uint32_t PowType;
    uint32_t SecondTargetDelay;
    uint32_t SecondActiveTime;
    char IntoneEffect[260];
    char IntoneSound[260];
    uint32_t IntoneSoundLoop;
    uint32_t BattleLevReq;
    uint32_t MountSenderAction;
    uint32_t MountSecondAction;
    uint32_t FlySenderAction;
    uint32_t FlySecondAction;
    uint32_t FlyTargetAction;  // also a target action
    uint32_t EquipPos;
};

// A record serves profession p when NeedProfession / 10 == p, or when
// NeedProfession is 0 or 9999 (any profession).
inline bool MagicProfessionMatch(uint32_t nNeedProfession, uint32_t nProfession)
{
    return nNeedProfession == 0 || nNeedProfession == 9999 || nNeedProfession / 10 == nProfession;
}

// Query slots 7-22. Record pointers stay valid until the next Load or Clear;
// list items until the next build of that list (or Clear).
class IMagicData : public CDataTable {
public:
    virtual int GetAmount() = 0;  // slot 7: records held, 0 before Load
    // Slot 8: the record at nIndex in file order; null outside 0..amount-1.
    virtual const MagicTypeInfo* GetMagicTypeByIndex(int nIndex) = 0;
    // Slot 9: copies the record GetMagicType finds into *pInfo; 1 on a hit,
    // 0 on a miss (buffer untouched).
    virtual int CopyMagicType(uint32_t nType, int nLevel, MagicTypeInfo* pInfo) = 0;
    // Slot 10: the first record in file order with this type and level; null
    // on a miss.
    virtual const MagicTypeInfo* GetMagicType(uint32_t nType, uint32_t nLevel) = 0;
    // Slot 11: 1 when some record names the action as an intone action. A
    // mounted query compares MountIntoneAction1-3 only; a flying one
    // FlyIntoneAction1-3 and also IntoneActionEx1-3; otherwise
    // IntoneActionEx1-3 only. The asymmetry is intended.
    virtual int IsIntoneAction(int nAction, bool bMounted, bool bFlying) = 0;
    // Slot 12: the first record in file order with Level 0, LearnFlag 1 and a
    // profession match; null if none.
    virtual const MagicTypeInfo* FindFirstLearnable(uint32_t nProfession) = 0;
    // Slot 13: empties *pList, then appends, in file order, every record with
    // NeedLevel <= nLevel, LearnFlag 1 and a profession match, each Type once
    // (the first qualifying record of a type wins). *pList is the client's
    // array, grown by its own rule; when it cannot grow, it stays empty.
    virtual void CollectLearnable(uint32_t nProfession, uint32_t nLevel, CClientArray<const MagicTypeInfo*>* pList) = 0;
    virtual int IsSenderAction(int nAction) = 0;  // slot 14: 1 when some record casts with it
    virtual int IsTargetAction(int nAction) = 0;  // slot 15: 1 when some target plays it
    // Slot 16: the level list becomes every record with NeedLevel == nLevel,
    // LearnFlag 1 and a profession match, in file order.
    virtual void BuildLevelList(uint32_t nLevel, uint32_t nProfession) = 0;
    // Slot 17: the range list becomes every record with
    // nLow < NeedLevel <= nHigh, LearnFlag 1 and a profession match, in file
    // order.
    virtual void BuildLevelRangeList(uint32_t nHigh, uint32_t nLow, uint32_t nProfession) = 0;
    virtual int GetLevelListAmount() = 0;  // slot 18
    virtual int GetRangeListAmount() = 0;  // slot 19
    // Slots 20, 21: a list item; null outside 0..size-1.
    virtual const MagicTypeInfo* GetLevelListItem(int nIndex) = 0;
    virtual const MagicTypeInfo* GetRangeListItem(int nIndex) = 0;
    virtual void ClearLists() = 0;  // slot 22: empties both lists

protected:
    ~IMagicData() = default;
};

class CMagicData final : public IMagicData {
public:
    CMagicData();
    ~CMagicData() { Clear(); }
    ZEL_DELETING_DESTRUCTOR

    // Reads the resolved "MagicType.ini" line by line up to the first blank
    // line, then applies "ini/MagicTypeEx.ini" ("ini/200/MagicTypeEx_200.ini"
    // when the main path contains "_200") section by section, then indexes.
    void Load() override;
    // Drops every record, both action sets and (so that no list outlives its
    // records) both lists.
    void Clear() override;

    int GetAmount() override;
    const MagicTypeInfo* GetMagicTypeByIndex(int nIndex) override;
    int CopyMagicType(uint32_t nType, int nLevel, MagicTypeInfo* pInfo) override;
    const MagicTypeInfo* GetMagicType(uint32_t nType, uint32_t nLevel) override;
    int IsIntoneAction(int nAction, bool bMounted, bool bFlying) override;
    const MagicTypeInfo* FindFirstLearnable(uint32_t nProfession) override;
    void CollectLearnable(uint32_t nProfession, uint32_t nLevel, CClientArray<const MagicTypeInfo*>* pList) override;
    int IsSenderAction(int nAction) override;
    int IsTargetAction(int nAction) override;
    void BuildLevelList(uint32_t nLevel, uint32_t nProfession) override;
    void BuildLevelRangeList(uint32_t nHigh, uint32_t nLow, uint32_t nProfession) override;
    int GetLevelListAmount() override;
    int GetRangeListAmount() override;
    const MagicTypeInfo* GetLevelListItem(int nIndex) override;
    const MagicTypeInfo* GetRangeListItem(int nIndex) override;
    void ClearLists() override;

    std::size_t GetLoadedAmount() const { return m_arena.Size(); }

private:
    // A learnable record (LearnFlag 1) by NeedLevel, then file position.
    struct LearnEntry {
        uint32_t nNeedLevel;
        uint32_t nIndex;
    };
    using LearnRun = std::vector<LearnEntry>;
    // Learnable records of one profession: its own, and those of any profession.
    struct LearnRuns {
        const LearnRun* pOwn;
        const LearnRun* pAny;
    };

    void LoadMain(const char* szPath);
    void LoadExtra(const char* szPath);
    void ReportRepeatedKeys(const char* szPath, const std::vector<int>& setLine) const;
    void BuildIndexes();
    LearnRuns LearnRunsOf(uint32_t nProfession) const;
    // File positions of the learnable records of nProfession with
    // nFirst <= NeedLevel < nEnd, in file order, into m_setScratch.
    void CollectLearnIndexes(uint32_t nProfession, uint64_t nFirst, uint64_t nEnd);

    CRecordArena<MagicTypeInfo> m_arena;  // file order
    std::set<int32_t> m_setSenderAction;
    std::set<int32_t> m_setTargetAction;
    std::vector<const MagicTypeInfo*> m_setLevelList;
    std::vector<const MagicTypeInfo*> m_setRangeList;

    // Indexes built after loading.
    std::unordered_map<uint64_t, uint32_t> m_mapFirstByKey;         // (type, level) -> first position
    std::vector<uint32_t> m_setIntoneFoot;                          // sorted, unique
    std::vector<uint32_t> m_setIntoneMount;                         // sorted, unique
    std::vector<uint32_t> m_setIntoneFly;                           // sorted, unique
    std::unordered_map<uint32_t, LearnRun> m_mapLearnByProfession;  // NeedProfession / 10
    LearnRun m_setLearnAny;                                         // NeedProfession 0 or 9999
    std::unordered_map<uint32_t, uint32_t> m_mapFirstLevel0;        // profession -> first Level 0 learnable
    uint32_t m_nFirstLevel0Any;
    // CollectLearnable's work space, sized at load so that queries do not
    // allocate: candidate positions, and a per-type stamp of the current call.
    std::vector<uint32_t> m_setScratch;
    std::vector<uint32_t> m_setTypeSlot;   // per record, a dense number of its Type
    std::vector<uint32_t> m_setTypeStamp;  // per dense type number
    uint32_t m_nStamp = 0;
};

extern const TableDesc kMagicTypeDesc;
