// Common settings from "ini/Common.ini": face and emblem amounts and the
// statuary scales and lives. Reads its fixed path value by value.
#pragma once

#include <cstddef>

#include "ClientData/DataTable.h"
#include "ClientData/TableDesc.h"

// The nine values, in the order the table holds them.
struct CommonIniValues {
    int m_nMaleFaceAmount;
    int m_nFemaleFaceAmount;
    int m_nLeaderScale;
    int m_nAssistantScale;
    int m_nSubLeaderScale;
    int m_nLeaderMaxLife;
    int m_nAssistantMaxLife;
    int m_nSubLeaderMaxLife;
    int m_nEmblemAmount;
};

class CCommonIni : public CDataTable {
public:
    CCommonIni() = default;
    ~CCommonIni() = default;
    ZEL_DELETING_DESTRUCTOR

    // Reads each value with its own pass over the file; a value that is not
    // found keeps what it held and logs the failed check.
    void Load() override;
    void Clear() override {}  // values stay until the next Load

    // Slots 7-15: the values as last read (0 before the first Load).
    virtual int GetMaleFaceAmount() { return m_values.m_nMaleFaceAmount; }
    virtual int GetFemaleFaceAmount() { return m_values.m_nFemaleFaceAmount; }
    virtual int GetLeaderScale() { return m_values.m_nLeaderScale; }
    virtual int GetAssistantScale() { return m_values.m_nAssistantScale; }
    virtual int GetSubLeaderScale() { return m_values.m_nSubLeaderScale; }
    virtual int GetLeaderMaxLife() { return m_values.m_nLeaderMaxLife; }
    virtual int GetAssistantMaxLife() { return m_values.m_nAssistantMaxLife; }
    virtual int GetSubLeaderMaxLife() { return m_values.m_nSubLeaderMaxLife; }
    virtual int GetEmblemAmount() { return m_values.m_nEmblemAmount; }

    // Values the last Load read.
    std::size_t GetLoadedAmount() const { return m_nLoadedAmount; }
    const CommonIniValues& Values() const { return m_values; }

private:
    CommonIniValues m_values = {};
    std::size_t m_nLoadedAmount = 0;
};

extern const TableDesc kCommonIniDesc;
