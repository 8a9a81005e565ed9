// How the tool sees a table: its records as named fields, for get, export
// and diff. Every table of the catalogue has a generic view (by index or id);
// tables with a record design of their own register a view that names their
// fields and looks records up through the table's own queries.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class CClientDataMgr;

struct ViewField {
    std::string strName;
    std::string strValue;  // texts are the data's own bytes (GBK)
    bool bText = false;
};

struct ViewRecord {
    std::string strKey;  // what identifies the record in diff and export
    std::vector<ViewField> setField;

    void AddInt(const char* szName, long long nValue) { setField.push_back({szName, std::to_string(nValue), false}); }
    void AddText(const char* szName, const std::string& strValue) { setField.push_back({szName, strValue, true}); }
};

struct TableViewDef {
    const char* szName;      // the name on the command line, e.g. "item"
    const char* szKeyUsage;  // what `get` takes, e.g. "ID" or "TYPE LEVEL"
    // Every record, in the table's own order.
    void (*pfnAll)(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord);
    // One record through the table's own lookup; null: matched by key among all.
    bool (*pfnGet)(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record);
};

struct TableViewRegistration {
    explicit TableViewRegistration(const TableViewDef& def);
};

// A word of a key that is a whole decimal number within [nLow, nHigh];
// false for anything else.
bool ViewKeyNumber(const std::string& strWord, long long nLow, long long nHigh, long long& nValue);
// A key of exactly one such word.
bool ViewSingleKey(const std::vector<std::string>& setKey, long long nLow, long long nHigh, long long& nValue);
// A key of exactly one word that is an unsigned 32-bit number.
bool ViewSingleKeyU32(const std::vector<std::string>& setKey, uint32_t& nValue);

// Registered views, then one generic view per catalogue table (named after
// the table, e.g. "GameMap"), looked up without regard to ASCII case.
const TableViewDef* FindTableView(const std::string& strName);
std::vector<const TableViewDef*> AllTableViews();
// Finds one record; false on a miss or a malformed key.
bool GetViewRecord(const TableViewDef& view, CClientDataMgr& mgr, const std::vector<std::string>& setKey,
                   ViewRecord& record);
