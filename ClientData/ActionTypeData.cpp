#include "ClientData/ActionTypeData.h"

#include <cstring>

#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {
const char kPlayerFile[] = "ini/ActionType.ini";
const char kMonsterFile[] = "ini/MonsterActionType.ini";
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
    if (!LoadFile(kPlayerFile, m_nActionType))
        LogSave("Load Error %s not find", kPlayerFile);
    if (!LoadFile(kMonsterFile, m_nMonsterActionType))
        LogSave("Load Error %s not find", kMonsterFile);
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
    for (int i = 0; i < reader.GetRecordAmount(); ++i) {
        const CDataRow* pRow = reader.GetRecord(i);
        char szName[128];
        SafeStrCopy(szName, sizeof(szName), pRow->GetStr(1, ""));
        const int nPosition = ActionPositionOf(szName);
        if (nPosition < 0)
            continue;
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
