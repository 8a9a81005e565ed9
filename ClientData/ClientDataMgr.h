// The manager: one heap block holding the text resources, the version
// callback and every table by value, laid out in construction order.
#pragma once

#include "ClientData/Catalogue.h"
#include "ClientData/IClientDataMgr.h"
#include "ClientData/StrRes.h"

// Builds the table of a catalogue entry: generic tables take their entry,
// specified tables know their own file.
template <class T>
T MakeTable(const CatalogueEntry& entry)
{
    if constexpr (std::is_constructible_v<T, const CatalogueEntry&>)
        return T(entry);
    else
        return T();
}

// The embedded tables: element I is the table of kConstructionOrder.nSlot[I],
// constructed before element I + 1 and destroyed after it.
template <int I>
struct TableChain {
    static constexpr int kSlot = kConstructionOrder.nSlot[I];
    using Table = typename CatalogueSlot<kSlot>::Class;

    TableChain() : table(MakeTable<Table>(CatalogueEntryOf(kSlot))) {}

    template <int N>
    auto& At()
    {
        if constexpr (N == I)
            return table;
        else
            return rest.template At<N>();
    }

    Table table;
    TableChain<I + 1> rest;
};
template <>
struct TableChain<kTableAmount> {
};

class CClientDataMgr final : public IClientDataMgr {
public:
    CClientDataMgr() = default;
    // Destroys the registry first, then the tables in reverse order.
    ~CClientDataMgr();
    ZEL_DELETING_DESTRUCTOR

    void LoadStrRes(const char* szPath) override;
    const char* GetStrRes(unsigned int nId) override;
    void SetVersionQuery(VersionQueryFn fn) override;
    VersionQueryFn GetVersionQuery() override;
    void LoadDeferList() override;
    void LoadAll() override;
    void ClearAll() override;
    void ReloadDeferred(bool bDefer) override;

#define CLIENTDATA_TABLE(slot, name, iface, cls, file, kind, desc) \
    iface* Get##name() override { return &m_tables.At<ConstructionPositionOf(slot)>(); }
#define CLIENTDATA_GENERIC(slot, name, file, kind) \
    CLIENTDATA_GENERIC_INTERFACE(kind) * Get##name() override { return &m_tables.At<ConstructionPositionOf(slot)>(); }
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
#undef CLIENTDATA_GENERIC

    // For tools and tests, outside the client's interface:
    // the table of a slot as its base; null out of range.
    CDataTable* GetTableBySlot(int nSlot);
    // The text resources as held.
    const CStrRes& GetStrResTable() const { return m_strRes; }
    // How many records the table of a slot holds; -1 out of range.
    int GetLoadedAmountBySlot(int nSlot);
    // Called with each table just before the bulk operations load it.
    using LoadObserverFn = void (*)(CDataTable* pTable, void* pContext);
    void SetLoadObserver(LoadObserverFn fn, void* pContext);

private:
    void LoadTable(CDataTable* pTable);

    CStrRes m_strRes;
    VersionQueryFn m_pfnVersionQuery = nullptr;
    LoadObserverFn m_pfnLoadObserver = nullptr;
    void* m_pLoadObserverContext = nullptr;
    TableChain<0> m_tables;
};
