// Views of the common settings and of the text resources.
#include <cstdlib>

#include "ClientData/ClientDataMgr.h"
#include "TableView.h"

namespace {

void CommonRecord(CClientDataMgr& mgr, ViewRecord& record)
{
    CCommonIni& common = *mgr.GetCommonIni();
    record.strKey = "common";
    record.AddInt("MaleFaceAmount", common.GetMaleFaceAmount());
    record.AddInt("FemaleFaceAmount", common.GetFemaleFaceAmount());
    record.AddInt("LeaderScale", common.GetLeaderScale());
    record.AddInt("AssistantScale", common.GetAssistantScale());
    record.AddInt("SubLeaderScale", common.GetSubLeaderScale());
    record.AddInt("LeaderMaxLife", common.GetLeaderMaxLife());
    record.AddInt("AssistantMaxLife", common.GetAssistantMaxLife());
    record.AddInt("SubLeaderMaxLife", common.GetSubLeaderMaxLife());
    record.AddInt("EmblemAmount", common.GetEmblemAmount());
}

void CommonAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    setRecord.emplace_back();
    CommonRecord(mgr, setRecord.back());
}

bool CommonGet(CClientDataMgr& mgr, const std::vector<std::string>&, ViewRecord& record)
{
    CommonRecord(mgr, record);
    return true;
}

void StrAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    for (const auto& [nId, strText] : mgr.GetStrResTable().Texts()) {
        ViewRecord record;
        record.strKey = std::to_string(nId);
        record.AddInt("id", nId);
        record.AddText("text", strText);
        setRecord.push_back(std::move(record));
    }
}

bool StrGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    if (setKey.size() != 1)
        return false;
    const unsigned nId = static_cast<unsigned>(std::strtoul(setKey[0].c_str(), nullptr, 10));
    if (mgr.GetStrResTable().Texts().count(nId) == 0)
        return false;
    record.strKey = setKey[0];
    record.AddInt("id", nId);
    record.AddText("text", mgr.GetStrRes(nId));
    return true;
}

const TableViewRegistration kCommon({"common", "(no key: one record)", &CommonAll, &CommonGet});
const TableViewRegistration kStr({"str", "ID", &StrAll, &StrGet});

}  // namespace
