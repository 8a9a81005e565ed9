// The view of the tutorial scripts ("tutorial", by script id): the script's
// type and its usable commands in order, each with its keyword, code,
// parameter slots and, for the tip commands, its text.
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "ClientData/ClientDataMgr.h"
#include "TableView.h"

namespace {

const TutorialKeyword* KeywordOfCode(int nCode)
{
    static const std::map<int, const TutorialKeyword*> mapCode = [] {
        std::map<int, const TutorialKeyword*> map;
        for (int i = 0; i < TutorialKeywordAmount(); ++i)
            map.emplace(TutorialKeywordAt(i).nCode, &TutorialKeywordAt(i));
        return map;
    }();
    const auto it = mapCode.find(nCode);
    return it != mapCode.end() ? it->second : nullptr;
}

void ScriptRecord(int nId, const TutorialScript& script, ViewRecord& record)
{
    record.strKey = std::to_string(nId);
    record.AddInt("Id", nId);
    record.AddInt("Type", script.nType);
    record.AddInt("CommandAmount", static_cast<long long>(script.setCommand.size()));
    for (std::size_t i = 0; i < script.setCommand.size(); ++i) {
        const TutorialCommand& command = script.setCommand[i];
        const TutorialKeyword* pKeyword = KeywordOfCode(command.nCode);
        const std::string strName = "Command" + std::to_string(i);
        std::string strParams;
        for (int nParam : command.nParam)
            strParams += (strParams.empty() ? "" : ",") + std::to_string(nParam);
        record.AddText((strName + "Keyword").c_str(), pKeyword != nullptr ? pKeyword->szKeyword : "");
        record.AddInt((strName + "Code").c_str(), command.nCode);
        record.AddText((strName + "Params").c_str(), strParams);
        if (pKeyword != nullptr && pKeyword->nTextToken > 0)
            record.AddText((strName + "Text").c_str(), command.szText);
    }
}

void TutorialAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    for (const auto& script : mgr.GetBattleTutorial()->Scripts()) {
        setRecord.emplace_back();
        ScriptRecord(script.first, script.second, setRecord.back());
    }
}

bool TutorialGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    long long nId = 0;
    if (!ViewSingleKey(setKey, INT32_MIN, INT32_MAX, nId))
        return false;
    const TutorialScript* pScript = mgr.GetBattleTutorial()->GetScript(static_cast<int>(nId));
    if (pScript == nullptr)
        return false;
    ScriptRecord(static_cast<int>(nId), *pScript, record);
    return true;
}

const TableViewRegistration kTutorialView({"tutorial", "SCRIPT_ID", &TutorialAll, &TutorialGet});

}  // namespace
