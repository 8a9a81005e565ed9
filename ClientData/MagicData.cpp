#include "ClientData/MagicData.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>

#include "ZelGameBase/FileStream.h"
#include "ZelGameBase/IniSectionReader.h"
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

// The columns of a "MagicType.ini" line in scan order, and where each goes.
enum ColumnKind { COLUMN_U32, COLUMN_HEX, COLUMN_TEXT };
struct Column {
    std::size_t nOffset;
    std::size_t nSize;
    ColumnKind eKind;
};
#define MAGIC_U32(field) \
    Column { offsetof(MagicTypeInfo, field), sizeof(uint32_t), COLUMN_U32 }
#define MAGIC_HEX(field) \
    Column { offsetof(MagicTypeInfo, field), sizeof(uint32_t), COLUMN_HEX }
#define MAGIC_TEXT(field) \
    Column { offsetof(MagicTypeInfo, field), sizeof(MagicTypeInfo::field), COLUMN_TEXT }
const Column kColumns[] = {
    MAGIC_U32(Type),      MAGIC_U32(Column2),        MAGIC_TEXT(Name),        MAGIC_U32(Column4),
    MAGIC_U32(Column5),   MAGIC_U32(Column6),        MAGIC_U32(Column7),      MAGIC_U32(Level),
    MAGIC_U32(Column9),   MAGIC_U32(Column10),       MAGIC_U32(Column11),     MAGIC_U32(Column12),
    MAGIC_U32(Column13),  MAGIC_U32(Column14),       MAGIC_U32(Column15),     MAGIC_U32(Column16),
    MAGIC_U32(Column17),  MAGIC_U32(NeedProfession), MAGIC_U32(Column19),     MAGIC_U32(Column20),
    MAGIC_U32(Column21),  MAGIC_U32(Column22),       MAGIC_U32(Column23),     MAGIC_U32(Column24),
    MAGIC_U32(Column25),  MAGIC_U32(LearnFlag),      MAGIC_U32(NeedLevel),    MAGIC_U32(Column28),
    MAGIC_U32(Column29),  MAGIC_U32(Column30),       MAGIC_U32(Column31),     MAGIC_U32(Column32),
    MAGIC_U32(Column33),  MAGIC_U32(Column34),       MAGIC_U32(SenderAction), MAGIC_U32(Column36),
    MAGIC_U32(Column37),  MAGIC_TEXT(Column38),      MAGIC_TEXT(Column39),    MAGIC_TEXT(Column40),
    MAGIC_TEXT(Column41), MAGIC_TEXT(Column42),      MAGIC_U32(Column43),     MAGIC_TEXT(Column44),
    MAGIC_TEXT(Column45), MAGIC_TEXT(Column46),      MAGIC_TEXT(Column47),    MAGIC_U32(Column48),
    MAGIC_U32(Column49),  MAGIC_U32(Column50),       MAGIC_U32(Column51),     MAGIC_U32(Column52),
    MAGIC_TEXT(Column53), MAGIC_U32(Column54),       MAGIC_U32(Column55),     MAGIC_U32(Column56),
    MAGIC_U32(Column57),  MAGIC_HEX(Column58),       MAGIC_U32(Column59),     MAGIC_U32(Column60),
    MAGIC_U32(Column61),
};
#undef MAGIC_U32
#undef MAGIC_HEX
#undef MAGIC_TEXT
static_assert(sizeof(kColumns) / sizeof(kColumns[0]) == 61, "a line holds 61 columns");

// The keys of a "MagicTypeEx.ini" section, each with the value it takes when
// the section lacks it.
struct ExtraKey {
    const char* szKey;
    std::size_t nOffset;
    std::size_t nSize;  // 0 for a number
    uint32_t nDefault;
    const char* szDefault;
};
#define EXTRA_U32(field, value) \
    ExtraKey { #field, offsetof(MagicTypeInfo, field), 0, value, nullptr }
#define EXTRA_TEXT(field, text) \
    ExtraKey { #field, offsetof(MagicTypeInfo, field), sizeof(MagicTypeInfo::field), 0, text }
const ExtraKey kExtraKeys[] = {
    EXTRA_U32(CheckMask, 0),
    EXTRA_U32(TargetMask, 0),
    EXTRA_U32(SelfMask, 1),
    EXTRA_U32(TypeMask, 0),
    EXTRA_U32(TargetAction, 0),
    EXTRA_U32(IntoneActionEx1, 0),
    EXTRA_U32(IntoneActionEx2, 0),
    EXTRA_U32(IntoneActionEx3, 0),
    EXTRA_U32(MountIntoneAction1, 0),
    EXTRA_U32(MountIntoneAction2, 0),
    EXTRA_U32(MountIntoneAction3, 0),
    EXTRA_U32(FlyIntoneAction1, 0),
    EXTRA_U32(FlyIntoneAction2, 0),
    EXTRA_U32(FlyIntoneAction3, 0),
    EXTRA_U32(IntoneCycTime, 0),
    EXTRA_TEXT(AppendDisc, "NULL"),
    EXTRA_U32(SecondAction, 0),
    EXTRA_U32(SecondActionDelay, 0),
    EXTRA_TEXT(SecondSenderEffect, "NULL"),
    EXTRA_U32(XpAddition, 0),
    EXTRA_U32(PowType, 0),
    EXTRA_U32(SecondTargetDelay, 0),
    EXTRA_U32(SecondActiveTime, 0),
    EXTRA_TEXT(IntoneEffect, ""),
    EXTRA_TEXT(IntoneSound, ""),
    EXTRA_U32(IntoneSoundLoop, 0),
    EXTRA_U32(BattleLevReq, 0),
    EXTRA_U32(MountSenderAction, 0),
    EXTRA_U32(MountSecondAction, 0),
    EXTRA_U32(FlySenderAction, 0),
    EXTRA_U32(FlySecondAction, 0),
    EXTRA_U32(FlyTargetAction, 0),
    EXTRA_U32(EquipPos, 0),
};
#undef EXTRA_U32
#undef EXTRA_TEXT

void ResetRecord(MagicTypeInfo& info)
{
    std::memset(&info, 0, sizeof(info));
    info.SelfMask = 1;
}

char* FieldAt(MagicTypeInfo& info, std::size_t nOffset) { return reinterpret_cast<char*>(&info) + nOffset; }

enum ScanLineResult { LINE_BLANK, LINE_RECORD };

// One scan over the line, conversions in column order; it stops at the first
// conversion that fails, leaving the later columns as they were. Only a line
// that ends before the first conversion (empty or all blank) is LINE_BLANK.
ScanLineResult ScanLine(const char* szLine, MagicTypeInfo& info)
{
    const char* pText = szLine;
    for (std::size_t i = 0; i < sizeof(kColumns) / sizeof(kColumns[0]); ++i) {
        const Column& column = kColumns[i];
        char* pField = FieldAt(info, column.nOffset);
        uint32_t nValue = 0;
        ScanResult result;
        if (column.eKind == COLUMN_TEXT)
            result = CrtScanWord(pText, pField, column.nSize);
        else if (column.eKind == COLUMN_HEX)
            result = CrtScanHex32(pText, &nValue);
        else
            result = CrtScanUInt32(pText, &nValue);
        if (result != SCAN_CONVERTED)
            return (i == 0 && result == SCAN_INPUT_END) ? LINE_BLANK : LINE_RECORD;
        if (column.eKind != COLUMN_TEXT)
            std::memcpy(pField, &nValue, sizeof(nValue));
    }
    return LINE_RECORD;
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

CMagicData::CMagicData() : m_nFirstLevel0Any(kNoRecord) { m_strFileName = "MagicType.ini"; }

void CMagicData::Load()
{
    Clear();
    LoadMain(m_strFilePath.c_str());
    const bool bAlternative = m_strFilePath.find("_200") != std::string::npos;
    LoadExtra(bAlternative ? "ini/200/MagicTypeEx_200.ini" : "ini/MagicTypeEx.ini");
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
    MagicTypeInfo info;
    // A longer line arrives in pieces, each read as a line of its own.
    while (file.ReadLine(szLine, sizeof(szLine))) {
        ResetRecord(info);
        // A blank line ends the table: the rest of the file is ignored.
        if (ScanLine(szLine, info) == LINE_BLANK)
            break;
        if (info.Column51 == 0)
            info.Column51 = 300;
        std::unique_ptr<MagicTypeInfo> pInfo(new (std::nothrow) MagicTypeInfo(info));
        if (!pInfo) {
            LogAssert("pInfo", 118, kSourceUnit);
            continue;
        }
        m_setRecord.push_back(std::move(pInfo));
    }

    m_mapFirstByKey.reserve(m_setRecord.size());
    for (std::size_t i = 0; i < m_setRecord.size(); ++i)
        m_mapFirstByKey.emplace(KeyOf(m_setRecord[i]->Type, m_setRecord[i]->Level), static_cast<uint32_t>(i));
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
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        // A non-numeric title converts to 0 and addresses type 0, level 0.
        const int nNumber = CrtAtoi(reader.GetTitle(nSection).data());
        const auto it =
            m_mapFirstByKey.find(KeyOf(static_cast<uint32_t>(nNumber / 100), static_cast<uint32_t>(nNumber % 100)));
        if (it == m_mapFirstByKey.end()) {
            LogAssert("FALSE", 227, kSourceUnit);
            continue;
        }
        MagicTypeInfo& info = *m_setRecord[it->second];
        for (const ExtraKey& key : kExtraKeys) {
            char* pField = FieldAt(info, key.nOffset);
            if (key.nSize == 0) {
                const uint32_t nValue =
                    static_cast<uint32_t>(reader.GetInt(nSection, key.szKey, static_cast<int>(key.nDefault)));
                std::memcpy(pField, &nValue, sizeof(nValue));
                continue;
            }
            std::string_view value;
            const char* szText = reader.GetValue(nSection, key.szKey, value) ? value.data() : key.szDefault;
            SafeStrCopy(pField, static_cast<int>(key.nSize), szText);
        }
    }
}

void CMagicData::BuildIndexes()
{
    std::unordered_map<uint32_t, uint32_t> mapTypeSlot;
    std::size_t nLearnable = 0;
    m_setTypeSlot.resize(m_setRecord.size());
    for (std::size_t i = 0; i < m_setRecord.size(); ++i) {
        const MagicTypeInfo& info = *m_setRecord[i];
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
    for (auto& entry : m_mapLearnByProfession) std::sort(entry.second.begin(), entry.second.end(), byLevel);
    // A list never holds more than the learnable records: no query allocates.
    m_setScratch.reserve(nLearnable);
    m_setLevelList.reserve(nLearnable);
    m_setRangeList.reserve(nLearnable);
    m_setTypeStamp.assign(mapTypeSlot.size(), 0);
    m_nStamp = 0;
}

void CMagicData::Clear()
{
    m_setRecord.clear();
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

int CMagicData::GetAmount() { return static_cast<int>(m_setRecord.size()); }

const MagicTypeInfo* CMagicData::GetMagicTypeByIndex(int nIndex)
{
    if (nIndex < 0 || nIndex >= GetAmount())
        return nullptr;
    return m_setRecord[static_cast<std::size_t>(nIndex)].get();
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
    return it == m_mapFirstByKey.end() ? nullptr : m_setRecord[it->second].get();
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
    return nFirst == kNoRecord ? nullptr : m_setRecord[nFirst].get();
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
        for (; it != pRun->end() && it->nNeedLevel < nEnd; ++it) m_setScratch.push_back(it->nIndex);
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
    for (std::size_t i = 0; i < nKept; ++i) pList->PushBack(m_setRecord[m_setScratch[i]].get());
}

int CMagicData::IsSenderAction(int nAction) { return m_setSenderAction.count(nAction) != 0 ? 1 : 0; }

int CMagicData::IsTargetAction(int nAction) { return m_setTargetAction.count(nAction) != 0 ? 1 : 0; }

void CMagicData::BuildLevelList(uint32_t nLevel, uint32_t nProfession)
{
    m_setLevelList.clear();
    CollectLearnIndexes(nProfession, nLevel, uint64_t{nLevel} + 1);
    for (uint32_t nIndex : m_setScratch) m_setLevelList.push_back(m_setRecord[nIndex].get());
}

void CMagicData::BuildLevelRangeList(uint32_t nHigh, uint32_t nLow, uint32_t nProfession)
{
    m_setRangeList.clear();
    CollectLearnIndexes(nProfession, uint64_t{nLow} + 1, uint64_t{nHigh} + 1);
    for (uint32_t nIndex : m_setScratch) m_setRangeList.push_back(m_setRecord[nIndex].get());
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
