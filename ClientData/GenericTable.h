// The tables whose records have no design of their own. Each reads its file
// and keeps it as records of text values:
//   - a sectioned file (its first significant line begins with "[") gives one
//     record per section, in file order, its id the title's number (atoi),
//     its values the section's "key=value" lines;
//   - any other file is a column file (blank-separated, one record a line),
//     its id the first field's number, its values the fields.
// Lookups by id answer the first record of that id. Each Load replaces what
// the one before read.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ClientData/DataTable.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/IniSectionReader.h"

struct CatalogueEntry;

// Query slots 7 to 17, the same for every generic table. Indexes run from 0 to
// GetRecordAmount() - 1; texts stay valid until the table's next Clear or Load.
class IGenericTable : public CDataTable {
public:
    enum Kind { KIND_EMPTY = 0, KIND_SECTIONS = 1, KIND_COLUMNS = 2 };

    virtual int GetRecordAmount() = 0;  // slot 7
    // Index of the first record with id nId; -1 on a miss.
    virtual int FindRecord(unsigned int nId) = 0;  // slot 8
    // The record's id; 0 out of range.
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
    virtual int GetKind() = 0;                                                                    // slot 16
    // The name of a value by position: a section's key; "" for column tables.
    virtual const char* GetFieldName(int nIndex, int nField) = 0;  // slot 17

protected:
    ~IGenericTable() = default;
};

class CGenericTable final : public IGenericTable {
public:
    explicit CGenericTable(const CatalogueEntry& entry);
    ~CGenericTable() = default;
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
    int GetKind() override { return m_nKind; }
    const char* GetFieldName(int nIndex, int nField) override;

    std::size_t GetLoadedAmount() const { return m_setId.size(); }

    // The path Load reads: the resolved path, or the fixed one.
    const char* GetLoadPath() const;

private:
    bool IsRecord(int nIndex) const { return nIndex >= 0 && nIndex < static_cast<int>(m_setId.size()); }
    void IndexIds();

    const char* m_szFixedPath;  // null for tables resolved through BuildFilePath
    int m_nKind = KIND_EMPTY;
    CIniSectionReader m_sections;
    CDataFileReader m_columns;
    std::vector<uint32_t> m_setId;  // per record
    // (id, record) sorted by id then record, for first-wins lookups.
    std::vector<std::pair<uint32_t, int>> m_setById;
};
