#include "ClientData/ActionTypeData.h"

#include <cstring>

#include "ClientData/Catalogue.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

// A line of either file: the action number, a blank, the action's name.
const FieldDesc kActionTypeFields[] = {
    FILE_FIELD(int32_t, "Number").Gen(1, 999),
    FILE_FIELD(char[128], "Name"),
};
const RecordDesc kActionTypeRecord(kActionTypeFields);

}  // namespace

CActionTypeData::CActionTypeData() { ActionNameListFill(); }

CActionTypeData::~CActionTypeData() { ActionNameListEmpty(); }

void CActionTypeData::Load()
{
    if (m_bLoaded)
        return;
    Clear();
    // Set before reading: a missing file is reported once, not on every query.
    m_bLoaded = true;
    const char* szPlayerFile = CatalogueFileOf<CActionTypeData>();
    const char* szMonsterFile = CatalogueExtraOf(CatalogueSlotOf<CActionTypeData>(), 0);
    if (!LoadFile(szPlayerFile, m_nActionType))
        LogSave("Load Error %s not find", szPlayerFile);
    if (!LoadFile(szMonsterFile, m_nMonsterActionType))
        LogSave("Load Error %s not find", szMonsterFile);
}

void CActionTypeData::Clear()
{
    std::memset(m_nActionType, 0, sizeof(m_nActionType));
    std::memset(m_nMonsterActionType, 0, sizeof(m_nMonsterActionType));
    m_bLoaded = false;
    m_nMapped = 0;
}

// Each line: action number, blank, name. A name not in the list is ignored;
// when two lines name the same action, the later one wins.
bool CActionTypeData::LoadFile(const char* szPath, int* pActionType)
{
    CDataFileReader reader;
    if (!reader.Open(szPath, 0, ' '))
        return false;
    const bool bFindings = LoadFindingsWanted();
    int setLine[kActionPositionAmount] = {};  // the line that mapped each position, for findings
    for (int i = 0; i < reader.GetRecordAmount(); ++i) {
        const CDataRow* pRow = reader.GetRecord(i);
        char szName[128];
        SafeStrCopy(szName, sizeof(szName), pRow->GetStr(1, ""));
        const int nPosition = ActionPositionOf(szName);
        if (nPosition < 0) {
            if (bFindings)
                LoadFindingReport(szPath, pRow->GetLine(), FINDING_WARNING, "unknown-name",
                                  "%s is no action name: the line maps nothing", szName);
            continue;
        }
        if (bFindings && setLine[nPosition] != 0)
            LoadFindingReport(szPath, setLine[nPosition], FINDING_WARNING, "duplicate-name",
                              "%s is mapped again at line %d: the later line wins", szName, pRow->GetLine());
        setLine[nPosition] = pRow->GetLine();
        pActionType[nPosition] = pRow->GetInt(0, 0);
        ++m_nMapped;
    }
    return true;
}

int CActionTypeData::ActionAt(const int* pActionType, int nPosition)
{
    if (!m_bLoaded)
        Load();
    // Only the upper bound is part of the contract; a negative position would
    // read before the array, so it answers 0 as well.
    if (nPosition >= kActionPositionAmount || nPosition < 0)
        return 0;
    return pActionType[nPosition];
}

int CActionTypeData::GetActionType(int nPosition) { return ActionAt(m_nActionType, nPosition); }

int CActionTypeData::GetMonsterActionType(int nPosition) { return ActionAt(m_nMonsterActionType, nPosition); }

namespace {

// A position is the record the tools see: its name and both numbers.
struct PositionList {
    int nPosition[kActionPositionAmount];
    constexpr PositionList() : nPosition()
    {
        for (int i = 0; i < kActionPositionAmount; ++i)
            nPosition[i] = i;
    }
};
constexpr PositionList kPositions;

void ActionTypeForEach(CDataTable&, RecordSinkFn fn, void* pContext)
{
    for (int nPosition = 0; nPosition < kActionNameAmount; ++nPosition)
        fn(&kPositions.nPosition[nPosition], RecordKey{0, {0, 0, 0, 0}, ActionNameAt(nPosition)}, pContext);
}

// A position, or a name of the list.
const void* ActionTypeFind(CDataTable&, const RecordKey& key)
{
    const int64_t nPosition = key.szName != nullptr ? ActionPositionOf(key.szName) : key.nNumber[0];
    return nPosition >= 0 && nPosition < kActionPositionAmount ? &kPositions.nPosition[nPosition] : nullptr;
}

void ActionTypeVisit(CDataTable& table, const void* pRecord, FieldVisitor& visitor)
{
    CActionTypeData& actions = static_cast<CActionTypeData&>(table);
    const int nPosition = *static_cast<const int*>(pRecord);
    const char* szName = ActionNameAt(nPosition);
    visitor.Number("Position", nPosition);
    visitor.Text("Name", szName != nullptr ? szName : "");
    visitor.Number("ActionType", actions.GetActionType(nPosition));
    visitor.Number("MonsterActionType", actions.GetMonsterActionType(nPosition));
}

}  // namespace

const TableDesc kActionTypeDesc = {&kActionTypeRecord, TABLE_KEY_TITLE,  "",      &ActionTypeForEach,
                                   &ActionTypeFind,    &ActionTypeVisit, nullptr, 290};
