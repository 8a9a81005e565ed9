// The tables whose records have no design of their own. The catalogue says
// which kind of file each reads, and the kind decides its interface:
//   - ISectionTable: an ini file of sections; a record per section, in file
//     order, its title the section's name, its values its "key=value" lines;
//   - IColumnTable: a blank-separated column file; a record per line, its
//     title the first field, its values the fields.
// A record whose title begins with a number (as atoi reads it) has that id;
// any other record is known by its title alone. Lookups answer the first
// record of an id or a title. Each Load replaces what the one before read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ClientData/DataTable.h"
#include "ClientData/FlatIndex.h"
#include "ClientData/TableDesc.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/IniSectionReader.h"

// Query slots 7 to 18, the same for both kinds. Indexes run from 0 to
// GetRecordAmount() - 1; texts stay valid until the table's next Clear or
// Load.
class IGenericTable : public CDataTable {
public:
    enum Kind { KIND_EMPTY = 0, KIND_SECTIONS = 1, KIND_COLUMNS = 2 };

    virtual int GetRecordAmount() = 0;  // slot 7
    // Index of the first record with id nId; -1 on a miss. A record whose
    // title holds no number has no id.
    virtual int FindRecord(unsigned int nId) = 0;  // slot 8
    // The record's id; 0 out of range and for a record without one.
    virtual unsigned int GetRecordId(int nIndex) = 0;  // slot 9
    // The section title, or a column record's first field; "" out of range.
    virtual const char* GetRecordTitle(int nIndex) = 0;  // slot 10
    // Values of the record: its key lines in file order, or its fields.
    virtual int GetFieldAmount(int nIndex) = 0;  // slot 11
    // A value by position; "" out of range.
    virtual const char* GetFieldText(int nIndex, int nField) = 0;  // slot 12
    // A value by position through atoi; nDefault out of range.
    virtual int GetFieldInt(int nIndex, int nField, int nDefault) = 0;  // slot 13
    // A section's value by key (first occurrence, ASCII case-insensitive);
    // szDefault when absent and always for column tables.
    virtual const char* GetValueText(int nIndex, const char* szKey, const char* szDefault) = 0;  // slot 14
    virtual int GetValueInt(int nIndex, const char* szKey, int nDefault) = 0;                    // slot 15
    // The table's kind once its file was read; KIND_EMPTY before.
    virtual int GetKind() = 0;  // slot 16
    // The name of a value by position: a section's key; "" for column tables.
    virtual const char* GetFieldName(int nIndex, int nField) = 0;  // slot 17
    // Index of the first record whose title equals szName byte for byte;
    // -1 on a miss or for null.
    virtual int FindRecordByName(const char* szName) = 0;  // slot 18

protected:
    ~IGenericTable() = default;
};

// A generic table read from an ini file of sections.
class ISectionTable : public IGenericTable {
protected:
    ~ISectionTable() = default;
};

// A generic table read from a column file; its values have no names.
class IColumnTable : public IGenericTable {
protected:
    ~IColumnTable() = default;
};

struct CatalogueEntry;

template <class Interface, IGenericTable::Kind K>
class CGenericTableOf final : public Interface {
public:
    explicit CGenericTableOf(const CatalogueEntry& entry);
    ~CGenericTableOf() = default;
    ZEL_DELETING_DESTRUCTOR

    void Load() override;
    void Clear() override;

    int GetRecordAmount() override;
    int FindRecord(unsigned int nId) override;
    unsigned int GetRecordId(int nIndex) override;
    const char* GetRecordTitle(int nIndex) override;
    int GetFieldAmount(int nIndex) override;
    const char* GetFieldText(int nIndex, int nField) override;
    int GetFieldInt(int nIndex, int nField, int nDefault) override;
    const char* GetValueText(int nIndex, const char* szKey, const char* szDefault) override;
    int GetValueInt(int nIndex, const char* szKey, int nDefault) override;
    int GetKind() override { return m_bLoaded ? K : IGenericTable::KIND_EMPTY; }
    const char* GetFieldName(int nIndex, int nField) override;
    int FindRecordByName(const char* szName) override;

    std::size_t GetLoadedAmount() const { return m_setRecord.size(); }
    // The path Load reads: the resolved path, or the fixed one.
    const char* GetLoadPath() const;

    // A record as the tools see it: its id, and whether its title gave one.
    struct Record {
        uint32_t nId;
        bool bNumbered;
    };
    const std::vector<Record>& Records() const { return m_setRecord; }

private:
    bool IsRecord(int nIndex) const { return nIndex >= 0 && nIndex < static_cast<int>(m_setRecord.size()); }
    bool ReadFile(const char* szPath);
    void Index();
    // The line a record starts at, for findings.
    int LineOf(int nIndex) const;
    // The value of a section's first key szKey, or null.
    const char* ValueOf(int nIndex, const char* szKey) const;
    // Ids given again, from the (id, record) pairs sorted by id.
    void ReportDuplicates(const std::vector<std::pair<uint32_t, int>>& setById) const;

    const char* m_szFixedPath;  // null for tables resolved through BuildFilePath
    bool m_bLoaded = false;
    CIniSectionReader m_sections;
    CDataFileReader m_columns;
    std::vector<Record> m_setRecord;  // file order
    // The first record of each id, for the lookup by id: one probe instead
    // of a binary search that deepens with the table.
    CFlatIndex<uint32_t, int> m_firstById;
    // The first record of each title, for the lookup by name: a hash probe
    // instead of a binary search of string compares. The titles are views
    // into the reader's text.
    std::unordered_map<std::string_view, int> m_mapFirstByTitle;
    // (section, key position) of every key line, sorted by section, then by
    // the key without regard to ASCII case, then by position.
    std::vector<std::pair<int, int>> m_setKeyIndex;
};

using CSectionTable = CGenericTableOf<ISectionTable, IGenericTable::KIND_SECTIONS>;
using CColumnTable = CGenericTableOf<IColumnTable, IGenericTable::KIND_COLUMNS>;

// How the tools see the generic tables: a record shows its index, id and
// title, then its values under their keys (sections) or as field0, field1,
// ... (columns). A key is a number (the id) or else the title.
extern const TableDesc kSectionTableDesc;
extern const TableDesc kColumnTableDesc;
