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

// The catalogue's tables in slot order, then the text resources.
const std::vector<TableView>& AllTableViews();
// A table by its name, without regard to ASCII case; null when none.
const TableView* FindTableView(const std::string& strName);
// What `get` takes, its key's parts in capitals ("ID", "ID VARIANT"); "-" for a
// table of one record.
std::string ViewKeyUsage(const TableView& view);

// Every record, in the table's own order.
void ViewAllRecords(const TableView& view, CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord);
// One record through the table's own lookup; false on a miss or a key that
// is not of the table's kind.
bool ViewGetRecord(const TableView& view, CClientDataMgr& mgr, const std::vector<std::string>& setKey,
                   ViewRecord& record);
