// The client's view of the data layer: the manager interface and the two
// exports. Slot order is the client's binary contract:
//   0      deleting destructor (flag bit 0: free the block)
//   1 - 8  the general operations below
//   9-205  one accessor per table, in the order of Catalogue.def
// Each accessor returns the table's own interface, declared in its header
// (ClientData/<table>.h, ClientData/GenericTable.h for the generic tables).
#pragma once

#if defined(_WIN32)
#define CLIENTDATA_API __declspec(dllexport)
#else
#define CLIENTDATA_API __attribute__((visibility("default")))
#endif

#define CLIENTDATA_TABLE(slot, name, iface, cls, file, kind, desc) class iface;
#define CLIENTDATA_GENERIC(slot, name, file, kind) \
    CLIENTDATA_TABLE(slot, name, CLIENTDATA_GENERIC_INTERFACE(kind), , , , )
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
#undef CLIENTDATA_GENERIC

// The client's data-version callback: 100 (or no callback) means the
// standard data set, anything else the alternative "ini/200/" set.
using VersionQueryFn = int (*)();

class IClientDataMgr {
public:
    virtual void* DeletingDestructor(unsigned int nFlags) = 0;  // slot 0
    // Adds the id=text lines of szPath to the text resources (later lines
    // override earlier ones); null or empty does nothing.
    virtual void LoadStrRes(const char* szPath) = 0;  // slot 1
    // The text stored under nId; the empty text on a miss. Valid until the
    // next LoadStrRes or the manager's destruction.
    virtual const char* GetStrRes(unsigned int nId) = 0;  // slot 2
    // Installs the data-version callback; null is ignored.
    virtual void SetVersionQuery(VersionQueryFn fn) = 0;  // slot 3
    virtual VersionQueryFn GetVersionQuery() = 0;         // slot 4
    // Marks the tables named in "DeferList.dat" as version-dependent.
    virtual void LoadDeferList() = 0;  // slot 5
    // Load (LoadAll) or Clear (ClearAll) of every table in registry order.
    virtual void LoadAll() = 0;   // slot 6
    virtual void ClearAll() = 0;  // slot 7
    // Clear, BuildFilePath and Load of every table whose IsDefer() == bDefer.
    virtual void ReloadDeferred(bool bDefer) = 0;  // slot 8

    // Accessors, slots 9 to 205: the embedded table, never null, never loading.
#define CLIENTDATA_TABLE(slot, name, iface, cls, file, kind, desc) virtual iface* Get##name() = 0;
#define CLIENTDATA_GENERIC(slot, name, file, kind) \
    CLIENTDATA_TABLE(slot, name, CLIENTDATA_GENERIC_INTERFACE(kind), , , , )
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
#undef CLIENTDATA_GENERIC

protected:
    ~IClientDataMgr() = default;
};

extern "C" {
// The single manager, created on the first call; null when allocation fails.
CLIENTDATA_API IClientDataMgr* QueryClientDataMgr();
// Clears and destroys the manager (creating one first when none exists).
CLIENTDATA_API void DestroyClientDataMgr();
}
