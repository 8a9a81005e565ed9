#include "ClientData/ActionValueData.h"

#include "ClientData/ActionType.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

const char kFile[] = "ini/Action.dat";
constexpr int kDefaultValue = 33;

int BuiltInValue(int64_t nKey)
{
    const int64_t q = nKey % 1000;  // negative for a negative key
    if (q >= 100 && q <= 103)
        return 66;
    if (q == 110 || q == 120 || q == 121)
        return 25;
    if ((q >= 451 && q <= 453) || q == 460 || q == 465 || q == 470)
        return 10;
    return kDefaultValue;
}

}  // namespace

void ActionValueKeys(int64_t nKey, int64_t (&nKeys)[kActionValueKeyAmount])
{
    nKeys[0] = nKey;
    nKeys[1] = ActionKeyReplaceDigits(nKey, 0, 2, 999);
    nKeys[2] = ActionKeyReplaceDigits(nKey, 3, 5, 999);
    nKeys[3] = ActionKeyReplaceDigits(nKey, 6, 8, 999);
    nKeys[4] = ActionKeyReplaceDigits(nKey, 9, 10, 99);
    nKeys[5] = ActionKeyReplaceDigits(nKey, 6, 10, 99999);
    nKeys[6] = ActionKeyReplaceDigits(nKey, 3, 8, 999999);
    nKeys[7] = ActionKeyReplaceDigits(ActionKeyReplaceDigits(nKey, 9, 10, 999999), 3, 5, 999999);
}

void CActionValueData::Load()
{
    m_mapValue.clear();
    CDataFileReader reader;
    if (!reader.Open(kFile, 1, ' '))
        return;
    for (int i = 0; i < reader.GetRecordAmount(); ++i) {
        const CDataRow* pRow = reader.GetRecord(i);
        char szKey[64];
        SafeStrCopy(szKey, sizeof(szKey), pRow->GetStr(0, ""));
        const char* pText = szKey;
        int64_t nKey = 0;
        if (CrtScanInt64(pText, &nKey) != SCAN_CONVERTED)
            continue;
        m_mapValue.emplace(nKey, pRow->GetInt(1, 0));  // first line wins
    }
}

int CActionValueData::GetActionValue(int64_t nKey)
{
    if (m_mapValue.empty())
        return BuiltInValue(nKey);
    int64_t nKeys[kActionValueKeyAmount];
    ActionValueKeys(nKey, nKeys);
    for (int64_t nTry : nKeys) {
        const auto it = m_mapValue.find(nTry);
        if (it != m_mapValue.end())
            return it->second;
    }
    return kDefaultValue;
}
