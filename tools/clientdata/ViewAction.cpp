// Views of the action tables: action-type (by position or name),
// action-delay (by action number), action-ctrl and action-value (by 64-bit
// key, through the tables' own wildcard fallbacks) and action-offset (by id,
// variant and sub-variant).
#include <climits>
#include <cstdint>
#include <string>

#include "ClientData/ActionType.h"
#include "ClientData/ClientDataMgr.h"
#include "TableView.h"

namespace {

void ActionTypeRecord(CClientDataMgr& mgr, int nPosition, ViewRecord& record)
{
    CActionTypeData& table = *mgr.GetActionType();
    const char* szName = ActionNameAt(nPosition);
    record.strKey = std::to_string(nPosition);
    record.AddInt("Position", nPosition);
    record.AddText("Name", szName != nullptr ? szName : "");
    record.AddInt("ActionType", table.GetActionType(nPosition));
    record.AddInt("MonsterActionType", table.GetMonsterActionType(nPosition));
}

void ActionTypeAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    for (int nPosition = 0; nPosition < kActionNameAmount; ++nPosition) {
        setRecord.emplace_back();
        ActionTypeRecord(mgr, nPosition, setRecord.back());
    }
}

bool ActionTypeGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    if (setKey.size() != 1)
        return false;
    long long nPosition = 0;
    if (!ViewKeyNumber(setKey[0], LLONG_MIN, LLONG_MAX, nPosition))
        nPosition = ActionPositionOf(setKey[0].c_str());
    if (nPosition < 0 || nPosition >= kActionPositionAmount)
        return false;
    ActionTypeRecord(mgr, static_cast<int>(nPosition), record);
    return true;
}

void DelayRecord(uint32_t nAction, const ActionDelayInfo& info, ViewRecord& record)
{
    record.strKey = std::to_string(nAction);
    record.AddInt("Action", nAction);
    record.AddInt("WoundDelay", info.WoundDelay);
    record.AddInt("BlockDelay", info.BlockDelay);
    record.AddInt("DieDelay", info.DieDelay);
}

void DelayAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    for (const auto& [nAction, info] : mgr.GetActionDelay()->Delays()) {
        setRecord.emplace_back();
        DelayRecord(nAction, info, setRecord.back());
    }
}

bool DelayGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    long long nAction = 0;
    if (!ViewSingleKey(setKey, 0, UINT32_MAX, nAction))
        return false;
    const ActionDelayInfo* pInfo = mgr.GetActionDelay()->GetActionDelay(static_cast<uint32_t>(nAction));
    if (pInfo == nullptr)
        return false;
    DelayRecord(static_cast<uint32_t>(nAction), *pInfo, record);
    return true;
}

// Key is the section that holds the record (a wildcard one when the lookup
// fell back to it).
void CtrlRecord(int64_t nKey, const ActionCtrlInfo& info, ViewRecord& record)
{
    record.strKey = std::to_string(nKey);
    record.AddInt("Key", nKey);
    record.AddInt("Section", info.nSection);
    for (int i = 0; i < kActionCtrlSegmentMax; ++i)
        record.AddInt(("TimePercent" + std::to_string(i)).c_str(), info.nTimePercent[i]);
    for (int i = 0; i < kActionCtrlSegmentMax; ++i)
        record.AddInt(("MovePercent" + std::to_string(i)).c_str(), info.nMovePercent[i]);
}

void CtrlAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    for (const auto& [nKey, info] : mgr.GetActionCtrl()->Ctrls()) {
        setRecord.emplace_back();
        CtrlRecord(nKey, info, setRecord.back());
    }
}

bool CtrlGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    long long nKey = 0;
    if (!ViewSingleKey(setKey, LLONG_MIN, LLONG_MAX, nKey))
        return false;
    CActionCtrlData& table = *mgr.GetActionCtrl();
    const ActionCtrlInfo* pInfo = table.GetActionCtrl(nKey);
    if (pInfo == nullptr)
        return false;
    for (const auto& [nHeld, info] : table.Ctrls())
        if (&info == pInfo)
            CtrlRecord(nHeld, info, record);
    return true;
}

void ValueAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    for (const auto& [nKey, nValue] : mgr.GetAction()->Values()) {
        ViewRecord record;
        record.strKey = std::to_string(nKey);
        record.AddInt("Key", nKey);
        record.AddInt("Value", nValue);
        setRecord.push_back(std::move(record));
    }
}

// The value never misses; AnsweredBy tells which key (or rule) gave it.
bool ValueGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    long long nKey = 0;
    if (!ViewSingleKey(setKey, LLONG_MIN, LLONG_MAX, nKey))
        return false;
    CActionValueData& table = *mgr.GetAction();
    std::string strAnswer = table.Values().empty() ? "built-in rule" : "default";
    int64_t nKeys[kActionValueKeyAmount];
    ActionValueKeys(nKey, nKeys);
    for (int64_t nTry : nKeys) {
        if (!table.Values().empty() && table.Values().count(nTry) != 0) {
            strAnswer = std::to_string(nTry);
            break;
        }
    }
    record.strKey = setKey[0];
    record.AddInt("Key", nKey);
    record.AddInt("Value", table.GetActionValue(nKey));
    record.AddText("AnsweredBy", strAnswer);
    return true;
}

void OffsetRecord(const ActionEffectOffset& offset, ViewRecord& record)
{
    record.strKey =
        std::to_string(offset.nId) + " " + std::to_string(offset.nVariant) + " " + std::to_string(offset.nSubVariant);
    record.AddInt("Id", offset.nId);
    record.AddInt("Variant", offset.nVariant);
    record.AddInt("SubVariant", offset.nSubVariant);
    record.AddInt("OffsetX", offset.nOffsetX);
    record.AddInt("OffsetY", offset.nOffsetY);
    record.AddInt("OffsetZ", offset.nOffsetZ);
}

void OffsetAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    for (const ActionEffectOffset& offset : mgr.GetActionEffectOffset()->Offsets()) {
        setRecord.emplace_back();
        OffsetRecord(offset, setRecord.back());
    }
}

bool OffsetGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    long long nPart[3] = {};
    if (setKey.size() != 3)
        return false;
    for (int i = 0; i < 3; ++i)
        if (!ViewKeyNumber(setKey[static_cast<std::size_t>(i)], INT32_MIN, INT32_MAX, nPart[i]))
            return false;
    const ActionEffectOffset* pOffset = mgr.GetActionEffectOffset()->GetActionEffectOffset(
        static_cast<int>(nPart[0]), static_cast<int>(nPart[1]), static_cast<int>(nPart[2]));
    if (pOffset == nullptr)
        return false;
    OffsetRecord(*pOffset, record);
    return true;
}

const TableViewRegistration kActionType({"action-type", "POSITION | NAME", &ActionTypeAll, &ActionTypeGet});
const TableViewRegistration kActionDelay({"action-delay", "ACTION", &DelayAll, &DelayGet});
const TableViewRegistration kActionCtrl({"action-ctrl", "KEY", &CtrlAll, &CtrlGet});
const TableViewRegistration kActionValue({"action-value", "KEY", &ValueAll, &ValueGet});
const TableViewRegistration kActionOffset({"action-offset", "ID VARIANT SUBVARIANT", &OffsetAll, &OffsetGet});

}  // namespace
