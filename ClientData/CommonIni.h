// Common settings from "ini/Common.ini": face and emblem amounts and the
// statuary scales and lives. Reads its fixed path value by value.
#pragma once

#include <cstddef>

#include "ClientData/DataTable.h"

class CCommonIni : public CDataTable {
public:
    CCommonIni() = default;
    ~CCommonIni() = default;
    ZEL_DELETING_DESTRUCTOR

    void Load() override;
    void Clear() override {}  // values stay until the next Load

    // Slots 7-15: the values as last read (0 before the first Load).
    virtual int GetMaleFaceAmount() { return m_nMaleFaceAmount; }
    virtual int GetFemaleFaceAmount() { return m_nFemaleFaceAmount; }
    virtual int GetLeaderScale() { return m_nLeaderScale; }
    virtual int GetAssistantScale() { return m_nAssistantScale; }
    virtual int GetSubLeaderScale() { return m_nSubLeaderScale; }
    virtual int GetLeaderMaxLife() { return m_nLeaderMaxLife; }
    virtual int GetAssistantMaxLife() { return m_nAssistantMaxLife; }
    virtual int GetSubLeaderMaxLife() { return m_nSubLeaderMaxLife; }
    virtual int GetEmblemAmount() { return m_nEmblemAmount; }

    // Values the last Load read.
    std::size_t GetLoadedAmount() const { return m_nLoadedAmount; }

private:
    int m_nMaleFaceAmount = 0;
    int m_nFemaleFaceAmount = 0;
    int m_nLeaderScale = 0;
    int m_nAssistantScale = 0;
    int m_nSubLeaderScale = 0;
    int m_nLeaderMaxLife = 0;
    int m_nAssistantMaxLife = 0;
    int m_nSubLeaderMaxLife = 0;
    int m_nEmblemAmount = 0;
    std::size_t m_nLoadedAmount = 0;
};
