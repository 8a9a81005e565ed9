// How the tools see one table: its records as the table's own lookups answer
// them, the key a lookup takes and what a record shows, under the file's
// keys. Each table states this once, beside its record description; the
// client never reads it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "ClientData/RecordDesc.h"

class CDataTable;

// A record's key: up to four numbers, or a name.
struct RecordKey {
    int nAmount;  // numbers given
    int64_t nNumber[4];
    const char* szName;  // tables keyed by name; null otherwise
};

// What a record shows, value by value.
class FieldVisitor {
public:
    virtual void Number(const char* szKey, int64_t nValue) = 0;
    virtual void Text(const char* szKey, const char* szText) = 0;

protected:
    ~FieldVisitor() = default;
};

// Shows every field of the description that a key of the file gives, in
// its order (title fields are the record's key and show as that).
void RecordVisit(const RecordDesc& desc, const void* pRecord, FieldVisitor& visitor);

enum TableKeyKind : int {
    TABLE_KEY_NONE,     // the table holds one record, its settings
    TABLE_KEY_NUMBERS,  // one number per word of szKey
    TABLE_KEY_NAME,     // one name
    TABLE_KEY_TITLE,    // a record's title: a number finds its id, anything else its name
};

using RecordSinkFn = void (*)(const void* pRecord, const RecordKey& key, void* pContext);

struct TableDesc {
    const RecordDesc* pRecord;  // the fields a record shows; null where pfnVisit shows it all
    TableKeyKind keyKind;
    // The parts of the key as a record shows them, blank-separated, e.g.
    // "Major Minor"; "" when a record shows no key of its own.
    const char* szKey;
    // Every record a lookup can answer, with its key, in the table's order:
    // one that a first-wins or last-wins rule shadows is left out (a generic
    // table lists every record: its slots reach each one by index).
    void (*pfnForEach)(CDataTable& table, RecordSinkFn fn, void* pContext);
    // The record the table's own query answers for the key; null on a miss.
    const void* (*pfnFind)(CDataTable& table, const RecordKey& key);
    // What a record shows after its fields (or instead of them, without
    // pRecord); null for nothing more.
    void (*pfnVisit)(CDataTable& table, const void* pRecord, FieldVisitor& visitor);
    // A line of key=value fields before the records (a count of them); null
    // for none.
    const RecordDesc* pHeader;
    // Records a scale step of the generated sample data holds.
    int nSampleRecords;
};

// Everything a record of the table shows: its described fields, then what
// the table's own pfnVisit adds.
void TableRecordVisit(CDataTable& table, const TableDesc& desc, const void* pRecord, FieldVisitor& visitor);

// A key of one number.
inline RecordKey RecordKeyOf(int64_t nNumber) { return RecordKey{1, {nNumber, 0, 0, 0}, nullptr}; }

template <class Record>
const Record* RecordAddress(const Record& record)
{
    return &record;
}
template <class Record, class Deleter>
const Record* RecordAddress(const std::unique_ptr<Record, Deleter>& pRecord)
{
    return pRecord.get();
}

// The pfnForEach of a table that holds its records in a map by a number:
// Records is the table's member that gives the map.
template <class Table, auto Records>
void MapRecordsEach(CDataTable& table, RecordSinkFn fn, void* pContext)
{
    for (const auto& entry : (static_cast<Table&>(table).*Records)())
        fn(RecordAddress(entry.second), RecordKeyOf(entry.first), pContext);
}

// The description of a table that is one record, its settings, which
// record describes: Values is the table's member that gives it.
template <class Table, auto Values>
void SettingsEach(CDataTable& table, RecordSinkFn fn, void* pContext)
{
    fn(&(static_cast<Table&>(table).*Values)(), RecordKey{0, {0, 0, 0, 0}, nullptr}, pContext);
}
template <class Table, auto Values>
const void* SettingsFind(CDataTable& table, const RecordKey&)
{
    return &(static_cast<Table&>(table).*Values)();
}
template <class Table, auto Values>
constexpr TableDesc SettingsTableDesc(const RecordDesc& record)
{
    return TableDesc{&record, TABLE_KEY_NONE, "", &SettingsEach<Table, Values>, &SettingsFind<Table, Values>,
                     nullptr, nullptr, 1};
}
