// How the tool sees a table: its records as named values, for get, export
// and diff. Every table of the catalogue is seen through its description
// (ClientData/TableDesc.h): its records as its lookups answer them, its key,
// and its values under the file's keys. The text resources, which have no
// accessor, are seen as the table "StrRes".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ClientData/Catalogue.h"

class CClientDataMgr;

struct ViewField {
    std::string strName;
    std::string strValue;  // texts are the data's own bytes (GBK)
    bool bText = false;
};

struct ViewRecord {
    std::string strKey;  // what identifies the record in diff and export
    std::vector<ViewField> setField;
};

struct TableView {
    const char* szName;            // the table's name, as the catalogue gives it
    const CatalogueEntry* pEntry;  // null for the text resources
};

// The file a loaded table read, as a data folder writes it: its fixed path,
// or the path the data version chose.
std::string TableFileRead(const CatalogueEntry& entry, CClientDataMgr& mgr);

// The catalogue's tables in slot order, then the text resources.
const std::vector<TableView>& AllTableViews();
// A table by its name, without regard to ASCII case; null when none.
const TableView* FindTableView(const std::string& strName);
// What `get` takes, its key's parts in capitals ("ID", "ID VARIANT", "ID |
// NAME"); "" for a table of one record, which takes no key.
std::string ViewKeyUsage(const TableView& view);
// The number of words a key of the table has.
std::size_t ViewKeyArity(const TableView& view);
// The table's key kind in words, for a one-line error.
std::string ViewKeyKind(const TableView& view);

// A column of a table's export: the key's parts, then the described fields
// as the records show them.
struct ViewColumn {
    std::string strName;
    bool bText;
};
// The columns the description states, in the order a record shows them;
// further names a record shows (a generic table's keys) come after them.
std::vector<ViewColumn> ViewDescribedColumns(const TableView& view);

// Every record, in the table's own order.
void ViewAllRecords(const TableView& view, CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord);
// Whether the words are a key of the table's kind. A numeric key word is a
// whole decimal token (a leading minus allowed) or 0x hex; a name is any
// word, and matches exactly.
bool ViewKeyParses(const TableView& view, const std::vector<std::string>& setKey);

// One record through the table's own lookup, for a key that parses; false
// on a miss.
bool ViewGetRecord(const TableView& view, CClientDataMgr& mgr, const std::vector<std::string>& setKey,
                   ViewRecord& record);
