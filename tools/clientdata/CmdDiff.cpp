// diff DIR1 DIR2: per table, the records added, removed and changed (by key,
// field by field), so that a data update can be reviewed before it ships.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>

#include "ClientData/ClientDataMgr.h"
#include "Commands.h"
#include "TableView.h"
#include "Text.h"

namespace {

using TableRecords = std::map<std::string, std::map<std::string, ViewRecord>>;

// Every view's records by key; the first record of a key is the one kept,
// as the lookups answer it.
bool CollectFolder(const std::string& strFolder, TableRecords& tables)
{
    CClientDataMgr* pMgr = LoadDataFolder(strFolder);
    if (pMgr == nullptr)
        return false;
    for (const TableView& view : AllTableViews()) {
        std::vector<ViewRecord> setRecord;
        ViewAllRecords(view, *pMgr, setRecord);
        std::map<std::string, ViewRecord>& mapRecord = tables[view.szName];
        for (ViewRecord& record : setRecord)
            mapRecord.emplace(record.strKey, std::move(record));
    }
    DestroyClientDataMgr();
    return true;
}

std::string Shown(const ViewField& field)
{
    return field.bText ? "\"" + GbkToUtf8(field.strValue) + "\"" : field.strValue;
}

// Prints the field changes of one record; the number of changed fields.
int PrintChanges(const ViewRecord& before, const ViewRecord& after)
{
    std::map<std::string, const ViewField*> mapBefore;
    for (const ViewField& field : before.setField)
        mapBefore[field.strName] = &field;
    int nChanged = 0;
    for (const ViewField& field : after.setField) {
        auto it = mapBefore.find(field.strName);
        if (it != mapBefore.end() && it->second->strValue == field.strValue)
            continue;
        std::printf("    %s: %s -> %s\n", field.strName.c_str(),
                    it == mapBefore.end() ? "(none)" : Shown(*it->second).c_str(), Shown(field).c_str());
        ++nChanged;
    }
    return nChanged;
}

}  // namespace

int RunDiffCommand(const Arguments& setArg)
{
    if (setArg.size() != 2)
        return UsageError("diff: expected DIR1 DIR2");
    std::error_code error;
    const std::string strFirst = std::filesystem::absolute(setArg[0], error).string();
    const std::string strSecond = std::filesystem::absolute(setArg[1], error).string();
    TableRecords before;
    TableRecords after;
    if (!CollectFolder(strFirst, before) || !CollectFolder(strSecond, after))
        return 2;
    int nDifferences = 0;
    for (const auto& [strName, mapAfter] : after) {
        const std::string& strTable = strName;  // a lambda cannot capture a structured binding
        const std::map<std::string, ViewRecord>& mapBefore = before[strTable];
        bool bHeader = false;
        auto header = [&]() {
            if (!bHeader)
                std::printf("%s\n", strTable.c_str());
            bHeader = true;
            ++nDifferences;
        };
        for (const auto& [strKey, record] : mapBefore) {
            if (mapAfter.count(strKey) == 0) {
                header();
                std::printf("  - %s\n", strKey.c_str());
            }
        }
        for (const auto& [strKey, record] : mapAfter) {
            auto it = mapBefore.find(strKey);
            if (it == mapBefore.end()) {
                header();
                std::printf("  + %s\n", strKey.c_str());
            } else if (it->second.setField.size() != record.setField.size() ||
                       !std::equal(record.setField.begin(), record.setField.end(), it->second.setField.begin(),
                                   [](const ViewField& a, const ViewField& b) { return a.strValue == b.strValue; })) {
                header();
                std::printf("  ~ %s\n", strKey.c_str());
                PrintChanges(it->second, record);
            }
        }
    }
    std::printf("%d difference%s\n", nDifferences, nDifferences == 1 ? "" : "s");
    return nDifferences == 0 ? 0 : 1;
}
