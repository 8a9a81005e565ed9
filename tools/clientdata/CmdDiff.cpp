// diff OLD [NEW]: the records added, removed and changed from one data
// folder to another, matched by key, one line per changed field with the
// file and line on both sides. What it prints grows with the change, not
// with the tables.
#include <cstdio>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

#include "ClientData/ClientDataMgr.h"
#include "DataFolder.h"
#include "SourceLines.h"
#include "TableView.h"
#include "Text.h"

namespace {

struct TableSide {
    std::string strRoot;  // the data folder
    std::string strFile;  // the file the table read, in the folder
    bool bSections = true;
    std::vector<ViewRecord> setRecord;
    std::map<std::string, const ViewRecord*> mapByKey;  // the first record of a key, as the lookups answer

    // Where records stand: the file is read again only when a change is
    // shown.
    const CSourceLines& Lines() const
    {
        if (!m_pLines)
            m_pLines = std::make_unique<CSourceLines>(strRoot + "/" + strFile, bSections);
        return *m_pLines;
    }

private:
    mutable std::unique_ptr<CSourceLines> m_pLines;
};

// The views a diff compares: a file several tables read (Common.ini) is
// compared once, through a generic table where it has one, which shows
// every section.
std::vector<const TableView*> ComparedViews()
{
    std::map<std::string, const TableView*> mapByFile;
    std::vector<std::string> setOrder;
    for (const TableView& view : AllTableViews()) {
        const std::string strFile = view.pEntry != nullptr ? CatalogueDataPath(view.pEntry->szFile) : "StrRes";
        auto [it, bNew] = mapByFile.emplace(strFile, &view);
        if (bNew)
            setOrder.push_back(strFile);
        else if (!it->second->pEntry->bGeneric && view.pEntry->bGeneric)
            it->second = &view;
    }
    std::vector<const TableView*> setView;
    for (const std::string& strFile : setOrder)
        setView.push_back(mapByFile[strFile]);
    return setView;
}

CClientDataMgr* LoadForDiff(const LoadOptions& options)
{
    std::vector<TableLoadLine> setLine;
    CClientDataMgr* pMgr = LoadDataFolder(options, &setLine);
    if (pMgr != nullptr)
        PrintLogFaults(setLine, options.bRaw);
    return pMgr;
}

void CollectTable(const TableView& view, CClientDataMgr& mgr, const std::string& strRoot, TableSide& side)
{
    side.strRoot = strRoot;
    ViewAllRecords(view, mgr, side.setRecord);
    for (const ViewRecord& record : side.setRecord)
        side.mapByKey.emplace(record.strKey, &record);
    side.strFile = view.pEntry == nullptr ? "ini/StrRes.ini" : TableFileRead(*view.pEntry, mgr);
    side.bSections = view.pEntry == nullptr || view.pEntry->kind != CatalogueKind::COLUMNS;
}

// A record's fields by name, the first of a repeated name. A generic
// record's "index" is its position, not its content: an inserted record
// moves every one after it.
std::map<std::string, const ViewField*> FieldsByName(const ViewRecord& record)
{
    std::map<std::string, const ViewField*> mapField;
    for (const ViewField& field : record.setField)
        if (field.strName != "index")
            mapField.emplace(field.strName, &field);
    return mapField;
}

struct Change {
    std::string strTable;
    std::string strKey;
    const char* szKind;  // "added", "removed", "changed"
    std::string strField;
    const ViewField* pOld = nullptr;
    const ViewField* pNew = nullptr;
    std::string strOldFile;
    int nOldLine = 0;
    std::string strNewFile;
    int nNewLine = 0;
};

class CDiffPrinter {
public:
    explicit CDiffPrinter(const DiffOptions& options) : m_options(options) {}

    void Add(const Change& change)
    {
        Count& count = m_mapCount[change.strTable];
        if (change.szKind[0] == 'a')
            ++count.nAdded;
        else if (change.szKind[0] == 'r')
            ++count.nRemoved;
        else if (m_lastChanged != std::make_pair(change.strTable, change.strKey))
            ++count.nChanged;
        m_lastChanged = {change.strTable, change.strKey};
        if (m_options.bStat)
            return;
        if (m_options.bJson)
            m_json.push_back(ChangeJson(change));
        else
            Write(ChangeLine(change));
    }

    // The closing summary, or the counts of --stat.
    void Finish()
    {
        if (m_options.bJson) {
            if (m_options.bStat)
                for (const auto& [strTable, count] : m_mapCount)
                    m_json.push_back({{"table", strTable},
                                      {"added", count.nAdded},
                                      {"removed", count.nRemoved},
                                      {"changed", count.nChanged}});
            Write(m_json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n");
            return;
        }
        Count total;
        for (const auto& [strTable, count] : m_mapCount) {
            if (m_options.bStat)
                Write(strTable + ": " + std::to_string(count.nAdded) + " added, " + std::to_string(count.nRemoved) +
                      " removed, " + std::to_string(count.nChanged) + " changed\n");
            total.nAdded += count.nAdded;
            total.nRemoved += count.nRemoved;
            total.nChanged += count.nChanged;
        }
        Write(std::to_string(m_mapCount.size()) + (m_mapCount.size() == 1 ? " table differs: " : " tables differ: ") +
              std::to_string(total.nAdded) + " added, " + std::to_string(total.nRemoved) + " removed, " +
              std::to_string(total.nChanged) + " changed\n");
    }

    bool Differs() const { return !m_mapCount.empty(); }

private:
    struct Count {
        int nAdded = 0;
        int nRemoved = 0;
        int nChanged = 0;
    };

    static void Write(const std::string& strText) { std::fwrite(strText.data(), 1, strText.size(), stdout); }

    std::string Value(const ViewField* pField) const
    {
        if (pField == nullptr)
            return "(none)";
        return pField->bText ? "\"" + Shown(pField->strValue, m_options.load.bRaw) + "\"" : pField->strValue;
    }

    static std::string At(const std::string& strFile, int nLine)
    {
        return nLine > 0 ? strFile + ":" + std::to_string(nLine) : strFile;
    }

    std::string ChangeLine(const Change& change) const
    {
        const std::string strHead = change.strTable + " " + change.strKey + ": ";
        if (change.szKind[0] == 'a')
            return strHead + "added  (" + At(change.strNewFile, change.nNewLine) + ")\n";
        if (change.szKind[0] == 'r')
            return strHead + "removed  (" + At(change.strOldFile, change.nOldLine) + ")\n";
        return strHead + change.strField + ": " + Value(change.pOld) + " -> " + Value(change.pNew) + "  (" +
               At(change.strOldFile, change.nOldLine) + " -> " + At(change.strNewFile, change.nNewLine) + ")\n";
    }

    static nlohmann::ordered_json FieldJson(const ViewField* pField)
    {
        if (pField == nullptr)
            return nullptr;
        if (pField->bText)
            return GbkToUtf8(pField->strValue);
        return std::stoll(pField->strValue);
    }

    static nlohmann::ordered_json ChangeJson(const Change& change)
    {
        nlohmann::ordered_json object = {{"table", change.strTable}, {"key", change.strKey}, {"change", change.szKind}};
        if (change.szKind[0] == 'c') {
            object["field"] = change.strField;
            object["old"] = FieldJson(change.pOld);
            object["new"] = FieldJson(change.pNew);
        }
        if (change.szKind[0] != 'a')
            object["old_at"] = {{"file", change.strOldFile}, {"line", change.nOldLine}};
        if (change.szKind[0] != 'r')
            object["new_at"] = {{"file", change.strNewFile}, {"line", change.nNewLine}};
        return object;
    }

    const DiffOptions& m_options;
    std::map<std::string, Count> m_mapCount;
    std::pair<std::string, std::string> m_lastChanged;
    nlohmann::ordered_json m_json = nlohmann::ordered_json::array();
};

void CompareRecords(const std::string& strTable, const TableSide& before, const ViewRecord& recordBefore,
                    const TableSide& after, const ViewRecord& recordAfter, CDiffPrinter& printer)
{
    const std::map<std::string, const ViewField*> mapBefore = FieldsByName(recordBefore);
    const std::map<std::string, const ViewField*> mapAfter = FieldsByName(recordAfter);
    std::set<std::string> setName;
    for (const ViewField& field : recordAfter.setField)
        setName.insert(field.strName);
    for (const ViewField& field : recordBefore.setField)
        setName.insert(field.strName);
    // In the order the new record shows its fields, then the ones it lost.
    std::vector<std::string> setOrder;
    for (const ViewField& field : recordAfter.setField)
        if (setName.erase(field.strName) != 0)
            setOrder.push_back(field.strName);
    for (const ViewField& field : recordBefore.setField)
        if (setName.erase(field.strName) != 0)
            setOrder.push_back(field.strName);
    for (const std::string& strName : setOrder) {
        const auto itBefore = mapBefore.find(strName);
        const auto itAfter = mapAfter.find(strName);
        const ViewField* pOld = itBefore == mapBefore.end() ? nullptr : itBefore->second;
        const ViewField* pNew = itAfter == mapAfter.end() ? nullptr : itAfter->second;
        if ((pOld == nullptr && pNew == nullptr) ||
            (pOld != nullptr && pNew != nullptr && pOld->strValue == pNew->strValue))
            continue;
        Change change{strTable,       recordAfter.strKey,
                      "changed",      strName,
                      pOld,           pNew,
                      before.strFile, before.Lines().FieldLine(recordBefore.strKey, strName),
                      after.strFile,  after.Lines().FieldLine(recordAfter.strKey, strName)};
        printer.Add(change);
    }
}

void CompareTable(const std::string& strTable, const TableSide& before, const TableSide& after, CDiffPrinter& printer)
{
    for (const ViewRecord& record : before.setRecord)
        if (before.mapByKey.at(record.strKey) == &record && after.mapByKey.count(record.strKey) == 0)
            printer.Add(Change{strTable, record.strKey, "removed", "", nullptr, nullptr, before.strFile,
                               before.Lines().RecordLine(record.strKey), "", 0});
    for (const ViewRecord& record : after.setRecord) {
        if (after.mapByKey.at(record.strKey) != &record)
            continue;
        const auto it = before.mapByKey.find(record.strKey);
        if (it == before.mapByKey.end())
            printer.Add(Change{strTable, record.strKey, "added", "", nullptr, nullptr, "", 0, after.strFile,
                               after.Lines().RecordLine(record.strKey)});
        else
            CompareRecords(strTable, before, *it->second, after, record, printer);
    }
}

}  // namespace

int RunDiffCommand(const DiffOptions& options)
{
    if (const int nStatus = DataFolderCheck(options.load.strFolder))
        return nStatus;
    if (const int nStatus = DataFolderCheck(options.strSecond))
        return nStatus;
    // The old folder's records are kept; the new folder's are collected and
    // compared one table at a time.
    CClientDataMgr* pMgr = LoadForDiff(options.load);
    if (pMgr == nullptr)
        return 2;
    std::map<std::string, TableSide> mapBefore;
    for (const TableView* pView : ComparedViews())
        CollectTable(*pView, *pMgr, options.load.strFolder, mapBefore[pView->szName]);
    DestroyClientDataMgr();
    LoadOptions second = options.load;
    second.strFolder = options.strSecond;
    pMgr = LoadForDiff(second);
    if (pMgr == nullptr)
        return 2;
    CDiffPrinter printer(options);
    for (const TableView* pView : ComparedViews()) {
        TableSide after;
        CollectTable(*pView, *pMgr, second.strFolder, after);
        CompareTable(pView->szName, mapBefore[pView->szName], after, printer);
        mapBefore.erase(pView->szName);
    }
    DestroyClientDataMgr();
    if (printer.Differs() || options.bJson)
        printer.Finish();
    return printer.Differs() ? 1 : 0;
}
