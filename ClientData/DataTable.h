// The common base of every table, and the process-wide registry through which
// the manager loads, clears and reloads all tables without knowing their
// classes.
//
// Slot layout is the client's binary contract: slot 0 is one deleting
// destructor taking a flag (bit 0 set: free the block), then Load, Clear,
// SetDefer, IsDefer, BuildFilePath, GetFileName; a table's own queries follow
// from slot 7. No interface declares a C++ virtual destructor, which our
// compilers would lay out as two slots.
#pragma once

#include <set>
#include <string>

#include "ClientData/ClientBoundary.h"

// Every concrete table class also offers a non-virtual
//     std::size_t GetLoadedAmount() const;
// (how many records it holds) for the load report; it is not part of the
// client's interface and takes no slot.

// Runs the object's own destructor and, when bit 0 of nFlags is set, frees
// its block; returns the object's address as the client's compiler does.
template <class T>
void* DestroyInPlace(T* pObject, unsigned int nFlags)
{
    pObject->T::~T();
    if (nFlags & 1)
        ::operator delete(static_cast<void*>(pObject));
    return pObject;
}

// Slot 0 of a concrete class: placed in the class body of every class that
// can be the most derived one.
#define ZEL_DELETING_DESTRUCTOR \
    void* DeletingDestructor(unsigned int nFlags) override { return DestroyInPlace(this, nFlags); }

class CDataTable {
public:
    virtual void* DeletingDestructor(unsigned int nFlags) = 0;  // slot 0
    // Reads the table's file; faults go to the debug log, what was read is kept.
    virtual void Load() = 0;  // slot 1
    // Drops every record; a following Load starts from nothing.
    virtual void Clear() = 0;  // slot 2
    // Marks the table version-dependent; never cleared.
    virtual void SetDefer();  // slot 3
    virtual bool IsDefer();   // slot 4
    // Recomputes m_strFilePath: "ini/" + name, or for a version-dependent
    // table whose version callback answers other than 100,
    // "ini/200/<name before the last dot>_200<from the last dot>". A
    // version-dependent name without a dot throws std::out_of_range.
    virtual void BuildFilePath();  // slot 5
    // A copy of the bare file name (empty for tables that read a fixed
    // path), returned as the client's compiler returns a string by value:
    // built in the caller's storage *pResult (taken as raw: what it held is
    // not released), whose address comes back. The object comes first and
    // the result's address second, on every target.
    virtual CClientString* GetFileName(CClientString* pResult);  // slot 6

    const std::string& GetFilePath() const { return m_strFilePath; }

protected:
    // Registers the table in TableRegistry.
    CDataTable();
    // Releases the strings only; the registry is destroyed whole by the manager.
    ~CDataTable();
    CDataTable(const CDataTable&) = delete;
    CDataTable& operator=(const CDataTable&) = delete;

    bool m_bDefer = false;
    std::string m_strFileName;
    std::string m_strFilePath;
};

// Where the alternative data set keeps a file: "ini/200/" + the bare name
// before its last dot + "_200" + the rest ("Shop.dat" lies at
// "ini/200/Shop_200.dat"). A name without a dot throws std::out_of_range.
std::string AlternativeFilePath(const std::string& strBareName);

// The file name through slot 6, as the client asks for it.
CClientString TableFileName(CDataTable& table);

// Tools and tests may watch tables being destroyed (the manager destroys them
// in reverse construction order); null, the default, watches nothing.
using TableDestroyObserverFn = void (*)(CDataTable* pTable, void* pContext);
void SetTableDestroyObserver(TableDestroyObserverFn fn, void* pContext);

// The set of constructed tables ordered by address: since the manager embeds
// its tables one after another in construction order, a walk visits them in
// that order. Created on the first registration, destroyed whole.
class TableRegistry {
public:
    static TableRegistry& GetOrCreate();
    // Null when none exists.
    static TableRegistry* Get();
    static void Destroy();

    void Register(CDataTable* pTable) { m_setTable.insert(pTable); }
    const std::set<CDataTable*>& Tables() const { return m_setTable; }

private:
    std::set<CDataTable*> m_setTable;
};
