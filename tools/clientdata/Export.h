// The writers of export: a table as JSON or CSV, every table into SQLite.
// Texts are written as UTF-8.
#pragma once

#include <string>
#include <vector>

#include "TableView.h"

class CClientDataMgr;

// The columns of a table's records: the described ones, then every further
// name in first-seen order; a record's repeated name keeps its first value.
std::vector<ViewColumn> RecordColumns(const TableView& view, const std::vector<ViewRecord>& setRecord);

// The records as a JSON array of objects, one key per column a record has.
std::string RecordsJson(const std::vector<ViewRecord>& setRecord);

// The records as RFC 4180 CSV: a header line, CRLF line ends.
std::string RecordsCsv(const std::vector<ViewColumn>& setColumn, const std::vector<ViewRecord>& setRecord, bool bRaw);

// Every table of the catalogue and the text resources into a new SQLite
// database at strPath (an existing file is replaced). False, with a
// message on standard error, when it cannot be written.
bool ExportSqlite(CClientDataMgr& mgr, const std::string& strPath);
