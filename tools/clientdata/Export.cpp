#include "Export.h"

#include <sqlite3.h>

#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "Text.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

std::size_t ColumnIndex(const std::vector<ViewColumn>& setColumn, const std::string& strName)
{
    for (std::size_t i = 0; i < setColumn.size(); ++i)
        if (setColumn[i].strName == strName)
            return i;
    return setColumn.size();
}

// A record's values by column; an empty optional where it has none.
std::vector<const ViewField*> RecordCells(const std::vector<ViewColumn>& setColumn, const ViewRecord& record)
{
    std::vector<const ViewField*> setCell(setColumn.size(), nullptr);
    for (const ViewField& field : record.setField) {
        const std::size_t nColumn = ColumnIndex(setColumn, field.strName);
        if (nColumn < setCell.size() && setCell[nColumn] == nullptr)
            setCell[nColumn] = &field;
    }
    return setCell;
}

// The SQL names of the columns: SQL compares names without regard to case,
// so a name that only differs in case from an earlier one gets a number.
std::vector<std::string> SqlColumnNames(const std::vector<ViewColumn>& setColumn)
{
    std::vector<std::string> setName;
    for (const ViewColumn& column : setColumn) {
        std::string strName = column.strName;
        for (int n = 2;; ++n) {
            bool bTaken = false;
            for (const std::string& strTaken : setName)
                bTaken = bTaken || CrtCompareNoCase(strTaken.c_str(), strName.c_str()) == 0;
            if (!bTaken)
                break;
            strName = column.strName + "_" + std::to_string(n);
        }
        setName.push_back(strName);
    }
    return setName;
}

class CDatabase {
public:
    explicit CDatabase(const std::string& strPath)
    {
        if (sqlite3_open(strPath.c_str(), &m_pDb) != SQLITE_OK)
            Fail("open");
    }
    ~CDatabase() { sqlite3_close(m_pDb); }
    CDatabase(const CDatabase&) = delete;
    CDatabase& operator=(const CDatabase&) = delete;

    bool Ok() const { return m_bOk; }
    void Execute(const std::string& strSql)
    {
        if (m_bOk && sqlite3_exec(m_pDb, strSql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
            Fail(strSql.substr(0, 40));
    }

    void Table(const std::string& strTable, const std::vector<ViewColumn>& setColumn,
               const std::vector<ViewRecord>& setRecord)
    {
        std::string strCreate = "CREATE TABLE " + DoubleQuoted(strTable) + " (";
        std::string strInsert = "INSERT INTO " + DoubleQuoted(strTable) + " VALUES (";
        const std::vector<std::string> setName = SqlColumnNames(setColumn);
        for (std::size_t i = 0; i < setColumn.size(); ++i) {
            strCreate += (i == 0 ? "" : ", ") + DoubleQuoted(setName[i]) + (setColumn[i].bText ? " TEXT" : " INTEGER");
            strInsert += i == 0 ? "?" : ", ?";
        }
        Execute(strCreate + ")");
        sqlite3_stmt* pInsert = nullptr;
        if (m_bOk && sqlite3_prepare_v2(m_pDb, (strInsert + ")").c_str(), -1, &pInsert, nullptr) != SQLITE_OK)
            Fail("insert into " + strTable);
        for (const ViewRecord& record : setRecord) {
            if (!m_bOk)
                break;
            const std::vector<const ViewField*> setCell = RecordCells(setColumn, record);
            for (std::size_t i = 0; i < setCell.size(); ++i) {
                const int nParam = static_cast<int>(i + 1);
                if (setCell[i] == nullptr)
                    sqlite3_bind_null(pInsert, nParam);
                else if (setCell[i]->bText)
                    sqlite3_bind_text(pInsert, nParam, GbkToUtf8(setCell[i]->strValue).c_str(), -1, SQLITE_TRANSIENT);
                else
                    sqlite3_bind_int64(pInsert, nParam, std::stoll(setCell[i]->strValue));
            }
            if (sqlite3_step(pInsert) != SQLITE_DONE)
                Fail("insert into " + strTable);
            sqlite3_reset(pInsert);
        }
        sqlite3_finalize(pInsert);
    }

private:
    void Fail(const std::string& strWhat)
    {
        if (m_bOk)
            std::fprintf(stderr, "clientdata: sqlite: %s: %s\n", strWhat.c_str(), sqlite3_errmsg(m_pDb));
        m_bOk = false;
    }

    sqlite3* m_pDb = nullptr;
    bool m_bOk = true;
};

}  // namespace

std::vector<ViewColumn> RecordColumns(const TableView& view, const std::vector<ViewRecord>& setRecord)
{
    std::vector<ViewColumn> setColumn = ViewDescribedColumns(view);
    for (const ViewRecord& record : setRecord)
        for (const ViewField& field : record.setField)
            if (ColumnIndex(setColumn, field.strName) == setColumn.size())
                setColumn.push_back({field.strName, field.bText});
    return setColumn;
}

std::string RecordsJson(const std::vector<ViewRecord>& setRecord)
{
    nlohmann::ordered_json records = nlohmann::ordered_json::array();
    for (const ViewRecord& record : setRecord) {
        nlohmann::ordered_json object = nlohmann::ordered_json::object();
        for (const ViewField& field : record.setField) {
            if (object.contains(field.strName))
                continue;  // a key repeated in its section: the first is the record's
            if (field.bText)
                object[field.strName] = GbkToUtf8(field.strValue);
            else
                object[field.strName] = std::stoll(field.strValue);
        }
        records.push_back(std::move(object));
    }
    return records.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

std::string RecordsCsv(const std::vector<ViewColumn>& setColumn, const std::vector<ViewRecord>& setRecord, bool bRaw)
{
    std::string strOut;
    for (std::size_t i = 0; i < setColumn.size(); ++i)
        strOut += (i == 0 ? "" : ",") + CsvField(setColumn[i].strName);
    strOut += "\r\n";
    for (const ViewRecord& record : setRecord) {
        const std::vector<const ViewField*> setCell = RecordCells(setColumn, record);
        for (std::size_t i = 0; i < setCell.size(); ++i) {
            const ViewField* pField = setCell[i];
            strOut += i == 0 ? "" : ",";
            if (pField != nullptr)
                strOut += CsvField(pField->bText ? Shown(pField->strValue, bRaw) : pField->strValue);
        }
        strOut += "\r\n";
    }
    return strOut;
}

bool ExportSqlite(CClientDataMgr& mgr, const std::string& strPath)
{
    std::error_code error;
    if (std::filesystem::exists(strPath, error) && !std::filesystem::is_regular_file(strPath, error)) {
        std::fprintf(stderr, "clientdata: %s: not a regular file; the database is written as a new file\n",
                     strPath.c_str());
        return false;
    }
    std::filesystem::remove(strPath, error);
    CDatabase database(strPath);
    database.Execute("BEGIN");
    for (const TableView& view : AllTableViews()) {
        std::vector<ViewRecord> setRecord;
        ViewAllRecords(view, mgr, setRecord);
        database.Table(view.szName, RecordColumns(view, setRecord), setRecord);
    }
    database.Execute("COMMIT");
    return database.Ok();
}
