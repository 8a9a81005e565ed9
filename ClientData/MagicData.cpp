#include "ClientData/MagicData.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include "ClientData/Catalogue.h"
#include "ClientData/RecordRead.h"
#include "ZelGameBase/FileStream.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

static_assert(std::is_trivially_copyable_v<MagicTypeInfo> && std::is_standard_layout_v<MagicTypeInfo>,
              "records are copied whole and read by layout");

namespace {

const char kSourceUnit[] = "ClientData\\MagicData";
constexpr int kLineSize = 2048;
constexpr uint32_t kNoRecord = 0xFFFFFFFFu;

#define MAGIC(field) FIELD(MagicTypeInfo, field, #field)
#define COLUMN(field, low, high) MAGIC(field).Gen(low, high)
// The 61 columns of a main-file line in scan order, then the keys of an
// extra-file section with the values they take when the section lacks them.
// Type and Level are the record's key.
const FieldDesc kMagicFields[] = {
    MAGIC(Type).FromTitle().Gen(1000, 1),
    COLUMN(Column2, 0, 9),
    MAGIC(Name).GenGbk(2, 6),
    COLUMN(Column4, 0, 9),
    COLUMN(Column5, 0, 9),
    COLUMN(Column6, 0, 9),
    COLUMN(Column7, 0, 9),
    MAGIC(Level).FromTitle().Gen(0, 1),
    COLUMN(Column9, 0, 500),
    COLUMN(Column10, 0, 500),
    COLUMN(Column11, 0, 500),
    COLUMN(Column12, 0, 500),
    COLUMN(Column13, 0, 500),
    COLUMN(Column14, 0, 500),
    COLUMN(Column15, 0, 500),
    COLUMN(Column16, 0, 500),
    COLUMN(Column17, 0, 500),
    MAGIC(NeedProfession).Gen("0|9999|10|11|20|21|30|31|40|50", 0, 0),
    COLUMN(Column19, 0, 100),
    COLUMN(Column20, 0, 100),
    COLUMN(Column21, 0, 100),
    COLUMN(Column22, 0, 100),
    COLUMN(Column23, 0, 100),
    COLUMN(Column24, 0, 100),
    COLUMN(Column25, 0, 100),
    COLUMN(LearnFlag, 0, 1),
    COLUMN(NeedLevel, 1, 130),
    COLUMN(Column28, 0, 1000),
    COLUMN(Column29, 0, 1000),
    COLUMN(Column30, 0, 1000),
    COLUMN(Column31, 0, 1000),
    COLUMN(Column32, 0, 1000),
    COLUMN(Column33, 0, 1000),
    COLUMN(Column34, 0, 1000),
    COLUMN(SenderAction, 0, 300),
    COLUMN(Column36, 0, 100),
    COLUMN(Column37, 0, 100),
    MAGIC(Column38).Gen("magic/desc_%d", 1, 999),
    MAGIC(Column39).Gen("icon_%d", 1, 400),
    MAGIC(Column40).Gen("effect/magic/sender_%d.eff", 1, 300),
    MAGIC(Column41).Gen("effect/magic/target_%d.eff", 1, 300),
    MAGIC(Column42).Gen("sound/magic/cast_%d.wav", 1, 200),
    COLUMN(Column43, 0, 100),
    MAGIC(Column44).Gen("NULL|ground_%d", 1, 50),
    MAGIC(Column45).Gen("effect/magic/area_%d.eff", 1, 100),
    MAGIC(Column46).Gen("NULL|trail_%d", 1, 50),
    MAGIC(Column47).Gen("NULL|hit_%d", 1, 50),
    COLUMN(Column48, 0, 100),
    COLUMN(Column49, 0, 100),
    COLUMN(Column50, 0, 100),
    COLUMN(Column51, 0, 900),
    COLUMN(Column52, 0, 100),
    MAGIC(Column53).Gen("NULL|tip_%d", 1, 50),
    COLUMN(Column54, 0, 100),
    COLUMN(Column55, 0, 100),
    COLUMN(Column56, 0, 100),
    COLUMN(Column57, 0, 100),
    MAGIC(Column58).AsHex().Gen(0, 0xFFFF),
    COLUMN(Column59, 0, 100),
    COLUMN(Column60, 0, 100),
    COLUMN(Column61, 0, 100),

    COLUMN(CheckMask, 0, 15).Sometimes(30).OutsideFile(),
    COLUMN(TargetMask, 0, 15).Sometimes(30).OutsideFile(),
    MAGIC(SelfMask).Default(1).Gen(0, 1).Sometimes(20).OutsideFile(),
    COLUMN(TypeMask, 0, 15).Sometimes(30).OutsideFile(),
    COLUMN(TargetAction, 1, 300).Sometimes(40).OutsideFile(),
    COLUMN(IntoneActionEx1, 1, 300).Sometimes(30).OutsideFile(),
    COLUMN(IntoneActionEx2, 1, 300).Sometimes(15).OutsideFile(),
    COLUMN(IntoneActionEx3, 1, 300).Sometimes(10).OutsideFile(),
    COLUMN(MountIntoneAction1, 1, 300).Sometimes(20).OutsideFile(),
    COLUMN(MountIntoneAction2, 1, 300).Sometimes(10).OutsideFile(),
    COLUMN(MountIntoneAction3, 1, 300).Sometimes(5).OutsideFile(),
    COLUMN(FlyIntoneAction1, 1, 300).Sometimes(20).OutsideFile(),
    COLUMN(FlyIntoneAction2, 1, 300).Sometimes(10).OutsideFile(),
    COLUMN(FlyIntoneAction3, 1, 300).Sometimes(5).OutsideFile(),
    COLUMN(IntoneCycTime, 100, 3000).Sometimes(30).OutsideFile(),
    MAGIC(AppendDisc).Default("NULL").GenGbk(4, 20).Sometimes(30).OutsideFile(),
    COLUMN(SecondAction, 1, 300).Sometimes(20).OutsideFile(),
    COLUMN(SecondActionDelay, 100, 2000).Sometimes(20).OutsideFile(),
    MAGIC(SecondSenderEffect).Default("NULL").Gen("effect/magic/second_%d.eff", 1, 99).Sometimes(20).OutsideFile(),
    COLUMN(XpAddition, 1, 100).Sometimes(10).OutsideFile(),
    COLUMN(PowType, 0, 5).Sometimes(20).OutsideFile(),
    COLUMN(SecondTargetDelay, 100, 2000).Sometimes(10).OutsideFile(),
    COLUMN(SecondActiveTime, 100, 5000).Sometimes(10).OutsideFile(),
    MAGIC(IntoneEffect).Gen("effect/magic/intone_%d.eff", 1, 99).Sometimes(30).OutsideFile(),
    MAGIC(IntoneSound).Gen("sound/magic/intone_%d.wav", 1, 99).Sometimes(30).OutsideFile(),
    COLUMN(IntoneSoundLoop, 0, 1).Sometimes(20).OutsideFile(),
    COLUMN(BattleLevReq, 1, 30).Sometimes(10).OutsideFile(),
    COLUMN(MountSenderAction, 1, 300).Sometimes(10).OutsideFile(),
    COLUMN(MountSecondAction, 1, 300).Sometimes(5).OutsideFile(),
    COLUMN(FlySenderAction, 1, 300).Sometimes(10).OutsideFile(),
    COLUMN(FlySecondAction, 1, 300).Sometimes(5).OutsideFile(),
    COLUMN(FlyTargetAction, 1, 300).Sometimes(10).OutsideFile(),
    COLUMN(EquipPos, 0, 8).Sometimes(10).OutsideFile(),
    // Cleared, and filled by neither file.
    MAGIC(Text1).Unread(),
    MAGIC(Text2).Unread(),
};
#undef MAGIC
#undef COLUMN
constexpr std::size_t kMainColumns = 61;
static_assert(sizeof(kMagicFields) / sizeof(kMagicFields[0]) == 61 + 33 + 2, "columns, further keys, unread texts");
constexpr std::size_t kExtraKeys = 33;
const RecordDesc kMagicRecord(kMagicFields);
const RecordDesc kMainRecord(kMagicFields, kMainColumns);
const RecordDesc kExtraRecord(kMagicFields + kMainColumns, kExtraKeys);

void ResetRecord(MagicTypeInfo& info)
{
    std::memset(&info, 0, sizeof(info));
    info.SelfMask = 1;
}

// The extra file of a main file: the catalogue's, or its alternative when
// the main file is the alternative one.
std::string ExtraPathOf(const std::string& strMainPath)
{
    const char* szExtra = CatalogueExtraOf(CatalogueSlotOf<CMagicData>(), 0);
    if (strMainPath.find("_200") == std::string::npos)
        return szExtra;
    return CatalogueAlternativePath(szExtra);
}

uint64_t KeyOf(uint32_t nType, uint32_t nLevel) { return (static_cast<uint64_t>(nType) << 32) | nLevel; }

bool HasSorted(const std::vector<uint32_t>& setValue, uint32_t nValue)
{
    return std::binary_search(setValue.begin(), setValue.end(), nValue);
}

void SortUnique(std::vector<uint32_t>& setValue)
{
    std::sort(setValue.begin(), setValue.end());
    setValue.erase(std::unique(setValue.begin(), setValue.end()), setValue.end());
}

}  // namespace

CMagicData::CMagicData() : m_nFirstLevel0Any(kNoRecord) { m_strFileName = CatalogueFileOf<CMagicData>(); }

void CMagicData::Load()
{
    Clear();
    LoadMain(m_strFilePath.c_str());
    LoadExtra(ExtraPathOf(m_strFilePath).c_str());
    BuildIndexes();
}

void CMagicData::LoadMain(const char* szPath)
{
    CFileStream file;
    if (!file.Open(szPath)) {
        LogSave("file: %s is not exist.", szPath);
        return;
    }
    char szLine[kLineSize];
    MagicTypeInfo spare;  // scanned into when the arena has no room
    std::vector<int> setLine;  // each record's line, for findings
    int nLine = 0;
    bool bLineEnded = true;
    // A longer line arrives in pieces, each read as a line of its own.
    while (file.ReadLine(szLine, sizeof(szLine))) {
        nLine += bLineEnded ? 1 : 0;
        bLineEnded = std::strchr(szLine, '\n') != nullptr;
        MagicTypeInfo* pInfo = m_arena.Add();
        MagicTypeInfo& info = pInfo != nullptr ? *pInfo : spare;
        ResetRecord(info);
        // A blank line ends the table: the rest of the file is ignored.
        if (RecordScanLine(kMainRecord, szLine, &info, szPath, nLine) < 0) {
            if (pInfo != nullptr)
                m_arena.DropLast();
            if (LoadFindingsWanted() && !file.AtEnd())
                LoadFindingReport(szPath, nLine, FINDING_ERROR, "blank-line",
                                  "a blank line ends the table: the lines after it are not read");
            break;
        }
        if (info.Column51 == 0)
            info.Column51 = 300;
        if (pInfo == nullptr) {
            LogAssert("pInfo", 118, kSourceUnit);
            continue;
        }
        setLine.push_back(nLine);
    }

    m_mapFirstByKey.reserve(m_arena.Size());
    for (std::size_t i = 0; i < m_arena.Size(); ++i) {
        const bool bFirst =
            m_mapFirstByKey.emplace(KeyOf(m_arena[i].Type, m_arena[i].Level), static_cast<uint32_t>(i))
                .second;
        if (!bFirst && LoadFindingsWanted())
            LoadFindingReport(szPath, setLine[i], FINDING_WARNING, "duplicate-id",
                              "type %u, level %u were given before: lookups answer the first line",
                              m_arena[i].Type, m_arena[i].Level);
    }
}

// Each section N = type * 100 + level fills the first record of that pair;
// every key the section lacks takes its default, overwriting what an earlier
// section for the same record set.
void CMagicData::LoadExtra(const char* szPath)
{
    CIniSectionReader reader;
    if (!reader.Open(szPath, 1)) {
        LogSave("error on open %s.", szPath);
        return;
    }
    std::unordered_map<uint32_t, int> mapFilledAt;  // record -> the section line that filled it, for findings
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        // A non-numeric title converts to 0 and addresses type 0, level 0.
        const int nNumber = CrtAtoi(reader.GetTitle(nSection).data());
        const auto it =
            m_mapFirstByKey.find(KeyOf(static_cast<uint32_t>(nNumber / 100), static_cast<uint32_t>(nNumber % 100)));
        const int nLine = reader.GetTitleLine(nSection);
        if (it == m_mapFirstByKey.end()) {
            LogAssert("FALSE", 227, kSourceUnit);
            if (LoadFindingsWanted())
                LoadFindingReport(szPath, nLine, FINDING_ERROR, "no-record",
                                  "section [%s] names type %d, level %d, which the main file lacks: skipped",
                                  reader.GetTitle(nSection).data(), nNumber / 100, nNumber % 100);
            continue;
        }
        if (LoadFindingsWanted() && !mapFilledAt.emplace(it->second, nLine).second)
            LoadFindingReport(szPath, nLine, FINDING_WARNING, "duplicate-id",
                              "type %d, level %d were filled at line %d: this section replaces every value",
                              nNumber / 100, nNumber % 100, mapFilledAt[it->second]);
        RecordReadSection(kExtraRecord, reader, nSection, &m_arena[it->second], szPath);
    }
}

void CMagicData::BuildIndexes()
{
    std::unordered_map<uint32_t, uint32_t> mapTypeSlot;
    std::size_t nLearnable = 0;
    m_setTypeSlot.resize(m_arena.Size());
    for (std::size_t i = 0; i < m_arena.Size(); ++i) {
        const MagicTypeInfo& info = m_arena[i];
        const uint32_t nIndex = static_cast<uint32_t>(i);
        if (info.SenderAction != 0)
            m_setSenderAction.insert(static_cast<int32_t>(info.SenderAction));
        if (info.TargetAction != 0)
            m_setTargetAction.insert(static_cast<int32_t>(info.TargetAction));
        if (info.FlyTargetAction != 0)
            m_setTargetAction.insert(static_cast<int32_t>(info.FlyTargetAction));
        // Zero fields are indexed too: a record compares all three, so action 0
        // matches a record whose field was never set.
        m_setIntoneFoot.insert(m_setIntoneFoot.end(),
                               {info.IntoneActionEx1, info.IntoneActionEx2, info.IntoneActionEx3});
        m_setIntoneMount.insert(m_setIntoneMount.end(),
                                {info.MountIntoneAction1, info.MountIntoneAction2, info.MountIntoneAction3});
        m_setIntoneFly.insert(m_setIntoneFly.end(),
                              {info.FlyIntoneAction1, info.FlyIntoneAction2, info.FlyIntoneAction3});
        m_setTypeSlot[i] = mapTypeSlot.emplace(info.Type, static_cast<uint32_t>(mapTypeSlot.size())).first->second;

        if (info.LearnFlag != 1)
            continue;
        ++nLearnable;
        const bool bAnyProfession = info.NeedProfession == 0 || info.NeedProfession == 9999;
        const uint32_t nProfession = info.NeedProfession / 10;
        (bAnyProfession ? m_setLearnAny : m_mapLearnByProfession[nProfession]).push_back({info.NeedLevel, nIndex});
        if (info.Level == 0) {
            if (bAnyProfession)
                m_nFirstLevel0Any = std::min(m_nFirstLevel0Any, nIndex);
            else
                m_mapFirstLevel0.emplace(nProfession, nIndex);  // first in file order
        }
    }
    SortUnique(m_setIntoneFoot);
    SortUnique(m_setIntoneMount);
    SortUnique(m_setIntoneFly);
    const auto byLevel = [](const LearnEntry& a, const LearnEntry& b) {
        return a.nNeedLevel != b.nNeedLevel ? a.nNeedLevel < b.nNeedLevel : a.nIndex < b.nIndex;
    };
    std::sort(m_setLearnAny.begin(), m_setLearnAny.end(), byLevel);
    for (auto& entry : m_mapLearnByProfession)
        std::sort(entry.second.begin(), entry.second.end(), byLevel);
    // A list never holds more than the learnable records: no query allocates.
    m_setScratch.reserve(nLearnable);
    m_setLevelList.reserve(nLearnable);
    m_setRangeList.reserve(nLearnable);
    m_setTypeStamp.assign(mapTypeSlot.size(), 0);
    m_nStamp = 0;
}

void CMagicData::Clear()
{
    m_arena.Clear();
    m_setSenderAction.clear();
    m_setTargetAction.clear();
    m_setLevelList.clear();
    m_setRangeList.clear();
    m_mapFirstByKey.clear();
    m_setIntoneFoot.clear();
    m_setIntoneMount.clear();
    m_setIntoneFly.clear();
    m_mapLearnByProfession.clear();
    m_setLearnAny.clear();
    m_mapFirstLevel0.clear();
    m_nFirstLevel0Any = kNoRecord;
    m_setScratch.clear();
    m_setTypeSlot.clear();
    m_setTypeStamp.clear();
    m_nStamp = 0;
}

int CMagicData::GetAmount() { return static_cast<int>(m_arena.Size()); }

const MagicTypeInfo* CMagicData::GetMagicTypeByIndex(int nIndex)
{
    if (nIndex < 0 || nIndex >= GetAmount())
        return nullptr;
    return &m_arena[static_cast<std::size_t>(nIndex)];
}

int CMagicData::CopyMagicType(uint32_t nType, int nLevel, MagicTypeInfo* pInfo)
{
    const MagicTypeInfo* pFound = GetMagicType(nType, static_cast<uint32_t>(nLevel));
    if (pFound == nullptr || pInfo == nullptr)
        return 0;
    std::memcpy(pInfo, pFound, sizeof(MagicTypeInfo));
    return 1;
}

const MagicTypeInfo* CMagicData::GetMagicType(uint32_t nType, uint32_t nLevel)
{
    const auto it = m_mapFirstByKey.find(KeyOf(nType, nLevel));
    return it == m_mapFirstByKey.end() ? nullptr : &m_arena[it->second];
}

int CMagicData::IsIntoneAction(int nAction, bool bMounted, bool bFlying)
{
    const uint32_t nValue = static_cast<uint32_t>(nAction);
    if (bMounted)
        return HasSorted(m_setIntoneMount, nValue) ? 1 : 0;
    if (bFlying && HasSorted(m_setIntoneFly, nValue))
        return 1;
    return HasSorted(m_setIntoneFoot, nValue) ? 1 : 0;
}

const MagicTypeInfo* CMagicData::FindFirstLearnable(uint32_t nProfession)
{
    uint32_t nFirst = m_nFirstLevel0Any;
    const auto it = m_mapFirstLevel0.find(nProfession);
    if (it != m_mapFirstLevel0.end())
        nFirst = std::min(nFirst, it->second);
    return nFirst == kNoRecord ? nullptr : &m_arena[nFirst];
}

CMagicData::LearnRuns CMagicData::LearnRunsOf(uint32_t nProfession) const
{
    const auto it = m_mapLearnByProfession.find(nProfession);
    return {it == m_mapLearnByProfession.end() ? nullptr : &it->second, &m_setLearnAny};
}

void CMagicData::CollectLearnIndexes(uint32_t nProfession, uint64_t nFirst, uint64_t nEnd)
{
    m_setScratch.clear();
    const LearnRuns runs = LearnRunsOf(nProfession);
    for (const LearnRun* pRun : {runs.pOwn, runs.pAny}) {
        if (pRun == nullptr)
            continue;
        // Runs are ordered by NeedLevel: the wanted levels are one stretch.
        auto it = std::partition_point(pRun->begin(), pRun->end(),
                                       [nFirst](const LearnEntry& entry) { return entry.nNeedLevel < nFirst; });
        for (; it != pRun->end() && it->nNeedLevel < nEnd; ++it)
            m_setScratch.push_back(it->nIndex);
    }
    std::sort(m_setScratch.begin(), m_setScratch.end());
}

void CMagicData::CollectLearnable(uint32_t nProfession, uint32_t nLevel, CClientArray<const MagicTypeInfo*>* pList)
{
    if (pList == nullptr)
        return;
    pList->Clear();
    CollectLearnIndexes(nProfession, 0, uint64_t{nLevel} + 1);
    if (++m_nStamp == 0) {
        std::fill(m_setTypeStamp.begin(), m_setTypeStamp.end(), 0);
        m_nStamp = 1;
    }
    // Keep the first position of each type, then grow the client's array once.
    std::size_t nKept = 0;
    for (uint32_t nIndex : m_setScratch) {
        uint32_t& nStamp = m_setTypeStamp[m_setTypeSlot[nIndex]];
        if (nStamp == m_nStamp)
            continue;  // this type already has its first level in the list
        nStamp = m_nStamp;
        m_setScratch[nKept++] = nIndex;
    }
    if (!pList->ReserveMore(nKept))
        return;
    for (std::size_t i = 0; i < nKept; ++i)
        pList->PushBack(&m_arena[m_setScratch[i]]);
}

int CMagicData::IsSenderAction(int nAction) { return m_setSenderAction.count(nAction) != 0 ? 1 : 0; }

int CMagicData::IsTargetAction(int nAction) { return m_setTargetAction.count(nAction) != 0 ? 1 : 0; }

void CMagicData::BuildLevelList(uint32_t nLevel, uint32_t nProfession)
{
    m_setLevelList.clear();
    CollectLearnIndexes(nProfession, nLevel, uint64_t{nLevel} + 1);
    for (uint32_t nIndex : m_setScratch)
        m_setLevelList.push_back(&m_arena[nIndex]);
}

void CMagicData::BuildLevelRangeList(uint32_t nHigh, uint32_t nLow, uint32_t nProfession)
{
    m_setRangeList.clear();
    CollectLearnIndexes(nProfession, uint64_t{nLow} + 1, uint64_t{nHigh} + 1);
    for (uint32_t nIndex : m_setScratch)
        m_setRangeList.push_back(&m_arena[nIndex]);
}

int CMagicData::GetLevelListAmount() { return static_cast<int>(m_setLevelList.size()); }

int CMagicData::GetRangeListAmount() { return static_cast<int>(m_setRangeList.size()); }

const MagicTypeInfo* CMagicData::GetLevelListItem(int nIndex)
{
    if (nIndex < 0 || nIndex >= GetLevelListAmount())
        return nullptr;
    return m_setLevelList[static_cast<std::size_t>(nIndex)];
}

const MagicTypeInfo* CMagicData::GetRangeListItem(int nIndex)
{
    if (nIndex < 0 || nIndex >= GetRangeListAmount())
        return nullptr;
    return m_setRangeList[static_cast<std::size_t>(nIndex)];
}

void CMagicData::ClearLists()
{
    m_setLevelList.clear();
    m_setRangeList.clear();
}

namespace {

void MagicForEach(CDataTable& table, RecordSinkFn fn, void* pContext)
{
    CMagicData& magic = static_cast<CMagicData&>(table);
    for (int i = 0; i < magic.GetAmount(); ++i) {
        const MagicTypeInfo* pInfo = magic.GetMagicTypeByIndex(i);
        if (magic.GetMagicType(pInfo->Type, pInfo->Level) == pInfo)
            fn(pInfo, RecordKey{2, {pInfo->Type, pInfo->Level, 0, 0}, nullptr}, pContext);
    }
}

const void* MagicFind(CDataTable& table, const RecordKey& key)
{
    return static_cast<CMagicData&>(table).GetMagicType(static_cast<uint32_t>(key.nNumber[0]),
                                                        static_cast<uint32_t>(key.nNumber[1]));
}

}  // namespace

const TableDesc kMagicTypeDesc = {&kMagicRecord, TABLE_KEY_NUMBERS, "Type Level", &MagicForEach,
                                  &MagicFind,    nullptr,           nullptr,      2600};
