// export TABLE --format json|csv [--dir DIR]: the whole table in UTF-8.
#include <algorithm>
#include <cstdio>

#include "ClientData/ClientDataMgr.h"
#include "Commands.h"
#include "TableView.h"
#include "Text.h"

namespace {

void PrintJson(const std::vector<ViewRecord>& setRecord)
{
    std::printf("[");
    for (std::size_t i = 0; i < setRecord.size(); ++i) {
        std::printf("%s\n  {", i == 0 ? "" : ",");
        const std::vector<ViewField>& setField = setRecord[i].setField;
        for (std::size_t f = 0; f < setField.size(); ++f) {
            const ViewField& field = setField[f];
            const std::string strValue = field.bText ? JsonQuoted(GbkToUtf8(field.strValue)) : field.strValue;
            std::printf("%s%s: %s", f == 0 ? "" : ", ", JsonQuoted(field.strName).c_str(), strValue.c_str());
        }
        std::printf("}");
    }
    std::printf("\n]\n");
}

void PrintCsv(const std::vector<ViewRecord>& setRecord)
{
    // The header is the union of field names in first-seen order, so records
    // with fewer fields (short column lines) leave their cells empty.
    std::vector<std::string> setName;
    for (const ViewRecord& record : setRecord)
        for (const ViewField& field : record.setField)
            if (std::find(setName.begin(), setName.end(), field.strName) == setName.end())
                setName.push_back(field.strName);
    for (std::size_t i = 0; i < setName.size(); ++i)
        std::printf("%s%s", i == 0 ? "" : ",", CsvQuoted(setName[i]).c_str());
    std::printf("\n");
    for (const ViewRecord& record : setRecord) {
        for (std::size_t i = 0; i < setName.size(); ++i) {
            std::string strCell;
            for (const ViewField& field : record.setField)
                if (field.strName == setName[i])
                    strCell = field.bText ? GbkToUtf8(field.strValue) : field.strValue;
            std::printf("%s%s", i == 0 ? "" : ",", CsvQuoted(strCell).c_str());
        }
        std::printf("\n");
    }
}

}  // namespace

int RunExportCommand(const Arguments& setArg)
{
    std::string strFormat = "json";
    std::string strFolder = DefaultDataFolder();
    std::string strTable;
    for (std::size_t i = 0; i < setArg.size(); ++i) {
        if (setArg[i] == "--format" && i + 1 < setArg.size())
            strFormat = setArg[++i];
        else if (setArg[i] == "--dir" && i + 1 < setArg.size())
            strFolder = setArg[++i];
        else if (strTable.empty() && setArg[i][0] != '-')
            strTable = setArg[i];
        else
            return UsageError("export: unexpected " + setArg[i]);
    }
    if (strTable.empty())
        return UsageError("export: expected TABLE");
    if (strFormat != "json" && strFormat != "csv")
        return UsageError("export: --format is json or csv");
    const TableView* pView = FindTableView(strTable);
    if (pView == nullptr)
        return UsageError("export: no table named " + strTable);
    CClientDataMgr* pMgr = LoadDataFolder(strFolder);
    if (pMgr == nullptr)
        return 2;
    std::vector<ViewRecord> setRecord;
    ViewAllRecords(*pView, *pMgr, setRecord);
    if (strFormat == "json")
        PrintJson(setRecord);
    else
        PrintCsv(setRecord);
    DestroyClientDataMgr();
    return 0;
}
