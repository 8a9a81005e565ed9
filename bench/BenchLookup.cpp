// Keyed lookups against the literal walk: a linear scan, from the end the
// lookup rule names, over a copy of the records kept in file order. Each case
// first checks that the table and the walk give the same answer for every
// probe; a difference fails the case instead of timing it.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "BenchSupport.h"
#include "ClientData/Catalogue.h"
#include "ClientData/ClientDataMgr.h"
#include "ClientData/StrRes.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

// Probes: mostly keys that exist (drawn evenly over the records), one in
// eight a miss.
template <class Key, class MissFn>
std::vector<Key> ProbesDraw(const std::vector<Key>& setKey, MissFn fnMiss)
{
    std::vector<Key> setProbe;
    CBenchRng rng(20110307u);
    for (std::size_t i = 0; i < kProbeAmount; ++i)
        setProbe.push_back(setKey.empty() || i % 8 == 7 ? fnMiss(i) : setKey[rng.Below(setKey.size())]);
    return setProbe;
}

template <class Info>
using RecordCopy = std::vector<std::unique_ptr<Info>>;

// The literal walks: the first record in file order that matches (a
// first-wins rule) or the last (a last-wins rule).
template <class Info, class Match>
const Info* FirstMatch(const RecordCopy<Info>& setCopy, Match match)
{
    for (const auto& pInfo : setCopy)
        if (match(*pInfo))
            return pInfo.get();
    return nullptr;
}
template <class Info, class Match>
const Info* LastMatch(const RecordCopy<Info>& setCopy, Match match)
{
    for (auto it = setCopy.rbegin(); it != setCopy.rend(); ++it)
        if (match(**it))
            return it->get();
    return nullptr;
}

// Both absent, or the same bytes.
template <class Info>
bool SameBytes(const Info* a, const Info* b)
{
    return (a == nullptr) == (b == nullptr) && (a == nullptr || std::memcmp(a, b, sizeof(*a)) == 0);
}

// ---------------------------------------------------------------- items

struct ItemCase {
    using Probe = uint32_t;
    static constexpr const char* kFile = "ini/ItemType.dat";
    CItemTypeTable table;
    RecordCopy<ItemTypeInfo> setCopy;  // file order; the first of an id wins
    std::vector<Probe> setProbe;

    ItemCase()
    {
        table.BuildFilePath();
        table.Load();
        CDataFileReader reader;
        reader.Open(kFile, 1, ' ');
        std::vector<uint32_t> setId;
        const int nLast = static_cast<int>(std::min<int64_t>(table.GetAmount(), reader.GetRecordAmount() - 1));
        for (int i = 1; i <= nLast; ++i) {
            const uint32_t nId = static_cast<uint32_t>(reader.GetRecord(i)->GetInt(0, 0));
            if (const ItemTypeInfo* pInfo = table.FindItemType(nId)) {
                setId.push_back(nId);
                setCopy.push_back(std::make_unique<ItemTypeInfo>(*pInfo));
            }
        }
        setProbe = ProbesDraw(setId, [](std::size_t i) { return static_cast<uint32_t>(4000000000u + i); });
    }
    const ItemTypeInfo* Query(Probe nId) { return table.FindItemType(nId); }
    const ItemTypeInfo* Walk(Probe nId) const
    {
        return FirstMatch(setCopy, [&](const ItemTypeInfo& info) { return info.idType == nId; });
    }
    static bool Same(const ItemTypeInfo* a, const ItemTypeInfo* b) { return SameBytes(a, b); }
    std::size_t Records() const { return setCopy.size(); }
};

// ---------------------------------------------------------------- monsters

// Monster.dat in file order, with the fields the lookups compare.
RecordCopy<MonsterTypeInfo> MonsterCopy()
{
    RecordCopy<MonsterTypeInfo> setCopy;
    CIniSectionReader reader;
    reader.Open("ini/Monster.dat", 1);
    for (int i = 0; i < reader.GetSectionAmount(); ++i) {
        const char* szTitle = reader.GetTitle(i).data();
        int32_t nId = 0;
        if (CrtScanInt32(szTitle, &nId) != SCAN_CONVERTED || nId == 0)
            continue;
        auto pInfo = std::make_unique<MonsterTypeInfo>();
        pInfo->nId = nId;
        if (!reader.GetText(i, "Name", pInfo->szName, sizeof(pInfo->szName)))
            pInfo->szName[0] = '\0';
        setCopy.push_back(std::move(pInfo));
    }
    return setCopy;
}

bool MonsterSame(const MonsterTypeInfo* a, const MonsterTypeInfo* b)
{
    return (a == nullptr) == (b == nullptr) &&
           (a == nullptr || (a->nId == b->nId && std::strcmp(a->szName, b->szName) == 0));
}

struct MonsterIdCase {
    using Probe = int;
    static constexpr const char* kFile = "ini/Monster.dat";
    CMonsterTypeTable table;
    RecordCopy<MonsterTypeInfo> setCopy;
    std::vector<Probe> setProbe;

    MonsterIdCase()
    {
        table.BuildFilePath();
        table.Load();
        setCopy = MonsterCopy();
        std::vector<int> setId;
        for (const auto& pInfo : setCopy)
            setId.push_back(pInfo->nId);
        setProbe = ProbesDraw(setId, [](std::size_t i) { return static_cast<int>(-1000000 - i); });
    }
    const MonsterTypeInfo* Query(Probe nId) { return table.GetMonsterType(nId); }
    const MonsterTypeInfo* Walk(Probe nId) const  // the later section wins
    {
        return LastMatch(setCopy, [&](const MonsterTypeInfo& info) { return info.nId == nId; });
    }
    static bool Same(const MonsterTypeInfo* a, const MonsterTypeInfo* b) { return MonsterSame(a, b); }
    std::size_t Records() const { return setCopy.size(); }
};

struct MonsterNameCase {
    using Probe = const char*;
    static constexpr const char* kFile = "ini/Monster.dat";
    CMonsterTypeTable table;
    RecordCopy<MonsterTypeInfo> setCopy;
    std::vector<std::string> setMiss;
    std::vector<Probe> setProbe;

    MonsterNameCase()
    {
        table.BuildFilePath();
        table.Load();
        setCopy = MonsterCopy();
        std::vector<const char*> setName;
        for (const auto& pInfo : setCopy)
            setName.push_back(pInfo->szName);
        for (std::size_t i = 0; i < kProbeAmount; ++i)
            setMiss.push_back("NoSuchMonster" + std::to_string(i));
        setProbe = ProbesDraw(setName, [this](std::size_t i) { return setMiss[i].c_str(); });
    }
    const MonsterTypeInfo* Query(Probe szName) { return table.FindMonsterByName(szName); }
    const MonsterTypeInfo* Walk(Probe szName) const
    {
        return LastMatch(setCopy, [&](const MonsterTypeInfo& info) { return std::strcmp(info.szName, szName) == 0; });
    }
    static bool Same(const MonsterTypeInfo* a, const MonsterTypeInfo* b) { return MonsterSame(a, b); }
    std::size_t Records() const { return setCopy.size(); }
};

// ---------------------------------------------------------------- NPCs

struct NpcCase {
    using Probe = uint32_t;
    static constexpr const char* kFile = "ini/Npc.ini";
    CNpcTypeInfoTable table;
    RecordCopy<NpcTypeInfo> setCopy;  // file order; the first of an id wins
    std::vector<Probe> setProbe;

    NpcCase()
    {
        table.Load();
        CIniSectionReader reader;
        reader.Open(kFile, 0);
        std::vector<uint32_t> setId;
        for (int i = 0; i < reader.GetSectionAmount(); ++i) {
            const uint32_t nId = NpcTypeIdParse(reader.GetTitle(i).data());
            setId.push_back(nId);
            setCopy.push_back(std::make_unique<NpcTypeInfo>(*table.GetNpcType(nId)));
        }
        setProbe = ProbesDraw(setId, [](std::size_t i) { return static_cast<uint32_t>(4000000000u + i); });
    }
    const NpcTypeInfo* Query(Probe nId) { return table.GetNpcType(nId); }
    const NpcTypeInfo* Walk(Probe nId) const
    {
        return FirstMatch(setCopy, [&](const NpcTypeInfo& info) { return info.nId == nId; });
    }
    static bool Same(const NpcTypeInfo* a, const NpcTypeInfo* b) { return SameBytes(a, b); }
    std::size_t Records() const { return setCopy.size(); }
};

// ---------------------------------------------------------------- magic

struct MagicCase {
    using Probe = std::pair<uint32_t, uint32_t>;  // type, level
    static constexpr const char* kFile = "ini/MagicType.ini";
    CMagicData table;
    RecordCopy<MagicTypeInfo> setCopy;  // file order; the first of a pair wins
    std::vector<Probe> setProbe;

    MagicCase()
    {
        table.BuildFilePath();
        table.Load();
        std::vector<Probe> setKey;
        for (int i = 0; i < table.GetAmount(); ++i) {
            setCopy.push_back(std::make_unique<MagicTypeInfo>(*table.GetMagicTypeByIndex(i)));
            setKey.emplace_back(setCopy.back()->Type, setCopy.back()->Level);
        }
        setProbe = ProbesDraw(setKey, [](std::size_t i) { return Probe(4000000000u + i, 1); });
    }
    const MagicTypeInfo* Query(const Probe& key) { return table.GetMagicType(key.first, key.second); }
    const MagicTypeInfo* Walk(const Probe& key) const
    {
        return FirstMatch(setCopy, [&](const MagicTypeInfo& info) {
            return info.Type == key.first && info.Level == key.second;
        });
    }
    static bool Same(const MagicTypeInfo* a, const MagicTypeInfo* b) { return SameBytes(a, b); }
    std::size_t Records() const { return setCopy.size(); }
};

// ---------------------------------------------------------------- actions

// Keys near the stored ones: some exact, some with a digit group changed so
// that a wildcard step answers, some far away.
std::vector<int64_t> ActionProbes(const std::vector<int64_t>& setKey)
{
    std::vector<int64_t> setProbe;
    CBenchRng rng(20110307u);
    for (std::size_t i = 0; i < kProbeAmount; ++i) {
        const int64_t nKey = setKey.empty() ? 0 : setKey[rng.Below(setKey.size())];
        switch (i % 4) {
        case 0:
        case 1:
            setProbe.push_back(nKey);
            break;
        case 2:  // another action in the low digits
            setProbe.push_back(nKey - nKey % 1000 + static_cast<int64_t>(rng.Below(1000)));
            break;
        default:
            setProbe.push_back(static_cast<int64_t>(rng.Next()) * 1000003);
            break;
        }
    }
    return setProbe;
}

struct ActionValueCase {
    using Probe = int64_t;
    static constexpr const char* kFile = "ini/Action.dat";
    CActionValueData table;
    std::vector<std::pair<int64_t, int>> setCopy;  // file order; the first of a key wins
    std::vector<Probe> setProbe;

    ActionValueCase()
    {
        table.Load();
        CDataFileReader reader;
        reader.Open(kFile, 1, ' ');
        std::vector<int64_t> setKey;
        for (int i = 0; i < reader.GetRecordAmount(); ++i) {
            char szKey[64] = {};
            std::strncpy(szKey, reader.GetRecord(i)->GetStr(0, ""), sizeof(szKey) - 1);
            const char* pText = szKey;
            int64_t nKey = 0;
            if (CrtScanInt64(pText, &nKey) != SCAN_CONVERTED)
                continue;
            setCopy.emplace_back(nKey, reader.GetRecord(i)->GetInt(1, 0));
            setKey.push_back(nKey);
        }
        setProbe = ActionProbes(setKey);
    }
    int Query(Probe nKey) { return table.GetActionValue(nKey); }
    int Walk(Probe nKey) const
    {
        int64_t nKeys[kActionValueKeyAmount];
        ActionValueKeys(nKey, nKeys);
        for (int64_t nTry : nKeys)
            for (const auto& entry : setCopy)
                if (entry.first == nTry)
                    return entry.second;
        return 33;
    }
    static bool Same(int a, int b) { return a == b; }
    std::size_t Records() const { return setCopy.size(); }
};

struct ActionCtrlCase {
    using Probe = int64_t;
    static constexpr const char* kFile = "ini/ActionCtrl.ini";
    CActionCtrlData table;
    std::vector<std::pair<int64_t, ActionCtrlInfo>> setCopy;  // file order; the first of a key wins
    std::vector<Probe> setProbe;

    ActionCtrlCase()
    {
        table.Load();
        CIniSectionReader reader;
        reader.Open(kFile, 1);
        std::vector<int64_t> setKey;
        for (int i = 0; i < reader.GetSectionAmount(); ++i) {
            const char* szTitle = reader.GetTitle(i).data();
            int64_t nKey = 0;
            if (CrtScanInt64(szTitle, &nKey) != SCAN_CONVERTED)
                nKey = 0;
            setCopy.emplace_back(nKey, *table.GetActionCtrl(nKey));
            setKey.push_back(nKey);
        }
        setProbe = ActionProbes(setKey);
    }
    const ActionCtrlInfo* Query(Probe nKey) { return table.GetActionCtrl(nKey); }
    const ActionCtrlInfo* Walk(Probe nKey) const
    {
        int64_t nKeys[kActionCtrlKeyAmount];
        ActionCtrlKeys(nKey, nKeys);
        for (int64_t nTry : nKeys)
            for (const auto& entry : setCopy)
                if (entry.first == nTry)
                    return &entry.second;
        return nullptr;
    }
    static bool Same(const ActionCtrlInfo* a, const ActionCtrlInfo* b) { return SameBytes(a, b); }
    std::size_t Records() const { return setCopy.size(); }
};

// ---------------------------------------------------------------- texts

struct StrResCase {
    using Probe = uint32_t;
    static constexpr const char* kFile = "ini/StrRes.ini";
    CStrRes table;
    std::vector<std::pair<uint32_t, std::string>> setCopy;  // a later line overrides
    std::vector<Probe> setProbe;

    StrResCase()
    {
        table.Load(kFile);
        std::vector<uint32_t> setId;
        for (const auto& text : table.Texts()) {
            setCopy.emplace_back(text.first, text.second);
            setId.push_back(text.first);
        }
        setProbe = ProbesDraw(setId, [](std::size_t i) { return static_cast<uint32_t>(4000000000u + i); });
    }
    const char* Query(Probe nId) { return table.Get(nId); }
    const char* Walk(Probe nId) const
    {
        for (auto it = setCopy.rbegin(); it != setCopy.rend(); ++it)
            if (it->first == nId)
                return it->second.c_str();
        return "";
    }
    static bool Same(const char* a, const char* b) { return std::strcmp(a, b) == 0; }
    std::size_t Records() const { return setCopy.size(); }
};

// Which catalogue entries, in slot order, are generic tables.
constexpr bool kIsGeneric[] = {
#define CLIENTDATA_TABLE(slot, name, iface, cls, file) std::is_same_v<cls, CGenericTable>,
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
};

// The generic table with the most records.
std::unique_ptr<CGenericTable> LargestGenericTable()
{
    std::unique_ptr<CGenericTable> pBest;
    for (int i = 0; i < kTableAmount; ++i) {
        if (!kIsGeneric[i])
            continue;
        auto pTable = std::make_unique<CGenericTable>(kCatalogue[i]);
        pTable->BuildFilePath();
        pTable->Load();
        if (pBest == nullptr || pTable->GetRecordAmount() > pBest->GetRecordAmount())
            pBest = std::move(pTable);
    }
    return pBest;
}

struct GenericCase {
    using Probe = uint32_t;
    static constexpr const char* kFile = nullptr;
    std::unique_ptr<CGenericTable> pTable = LargestGenericTable();
    std::vector<uint32_t> setCopy;  // ids in file order; the first wins
    std::vector<Probe> setProbe;

    GenericCase()
    {
        for (int i = 0; i < pTable->GetRecordAmount(); ++i)
            setCopy.push_back(pTable->GetRecordId(i));
        setProbe = ProbesDraw(setCopy, [](std::size_t i) { return static_cast<uint32_t>(4000000000u + i); });
    }
    int Query(Probe nId) { return pTable->FindRecord(nId); }
    int Walk(Probe nId) const
    {
        for (std::size_t i = 0; i < setCopy.size(); ++i)
            if (setCopy[i] == nId)
                return static_cast<int>(i);
        return -1;
    }
    static bool Same(int a, int b) { return a == b; }
    std::size_t Records() const { return setCopy.size(); }
};

// ---------------------------------------------------------------- running

template <class Case>
struct CaseHolder {
    // Built on first use and kept to the end of the run.
    static Case& Get()
    {
        static std::unique_ptr<Case> pCase;
        if (pCase == nullptr) {
            pCase = std::make_unique<Case>();
            for (const auto& probe : pCase->setProbe)
                if (!Case::Same(pCase->Query(probe), pCase->Walk(probe)))
                    Error() = "the table and the literal walk answer differently";
        }
        return *pCase;
    }
    static std::string& Error()
    {
        static std::string strError;
        return strError;
    }
};

template <class Case>
void BM_Lookup(benchmark::State& state)
{
    Case& lookup = CaseHolder<Case>::Get();
    if (!CaseHolder<Case>::Error().empty()) {
        state.SkipWithError(CaseHolder<Case>::Error().c_str());
        return;
    }
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(lookup.Query(lookup.setProbe[i++ % kProbeAmount]));
    state.counters["records"] = static_cast<double>(lookup.Records());
}

template <class Case>
void BM_Walk(benchmark::State& state)
{
    Case& lookup = CaseHolder<Case>::Get();
    if (!CaseHolder<Case>::Error().empty()) {
        state.SkipWithError(CaseHolder<Case>::Error().c_str());
        return;
    }
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(lookup.Walk(lookup.setProbe[i++ % kProbeAmount]));
}

template <class Case>
void LookupRegister(const char* szName)
{
    if (Case::kFile != nullptr && !BenchFileExists(Case::kFile))
        return;
    const std::string strLookup = std::string("lookup/") + szName;
    const std::string strWalk = std::string("walk/") + szName;
    benchmark::RegisterBenchmark(strLookup.c_str(), BM_Lookup<Case>);
    benchmark::RegisterBenchmark(strWalk.c_str(), BM_Walk<Case>)->Unit(benchmark::kMicrosecond);
    FigureAdd({std::string("lookup ") + szName + " / literal walk", strLookup, strWalk, 0, 200, true});
}

}  // namespace

void LookupBenchmarksRegister()
{
    LookupRegister<ItemCase>("item");
    LookupRegister<MonsterIdCase>("monster by id");
    LookupRegister<MonsterNameCase>("monster by name");
    LookupRegister<NpcCase>("NPC");
    LookupRegister<MagicCase>("magic by type and level");
    LookupRegister<ActionValueCase>("action value");
    LookupRegister<ActionCtrlCase>("action control");
    LookupRegister<StrResCase>("text resource");
    LookupRegister<GenericCase>("generic FindRecord");
}
