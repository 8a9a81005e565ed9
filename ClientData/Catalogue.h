// Compile-time view of Catalogue.def: the entries by slot with their files,
// kinds and descriptions, the further files, the construction order, and the
// class embedded for each slot.
#pragma once

#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

#include "ClientData/CatalogueTables.h"

constexpr int kFirstTableSlot = 9;
constexpr int kTableAmount = 197;
constexpr int kLastTableSlot = kFirstTableSlot + kTableAmount - 1;

// The kind of a table's main file (see Catalogue.def).
enum class CatalogueKind { SECTIONS, COLUMNS, SETTINGS };

struct CatalogueEntry {
    int nSlot;
    const char* szName;
    const char* szFile;
    CatalogueKind kind;
    const TableDesc* pDesc;
    bool bGeneric;  // a table without a design of its own
};

// In slot order: kCatalogue[slot - kFirstTableSlot].
constexpr CatalogueEntry kCatalogue[] = {
#define CLIENTDATA_TABLE(slot, name, iface, cls, file, kind, desc) \
    {slot, #name, file, CatalogueKind::kind, &desc, false},
#define CLIENTDATA_GENERIC(slot, name, file, kind) \
    {slot, #name, file, CatalogueKind::kind, &CLIENTDATA_GENERIC_DESC(kind), true},
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
#undef CLIENTDATA_GENERIC
};
static_assert(sizeof(kCatalogue) / sizeof(kCatalogue[0]) == kTableAmount);

constexpr const CatalogueEntry& CatalogueEntryOf(int nSlot) { return kCatalogue[nSlot - kFirstTableSlot]; }

// A further file a table reads, in the order the catalogue lists them.
struct CatalogueExtra {
    int nSlot;
    const char* szFile;  // a folder ends with "/"
};
constexpr CatalogueExtra kCatalogueExtras[] = {
#define CLIENTDATA_TABLE(slot, name, iface, cls, file, kind, desc)
#define CLIENTDATA_GENERIC(slot, name, file, kind)
#define CLIENTDATA_EXTRA(slot, file) {slot, file},
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
#undef CLIENTDATA_GENERIC
#undef CLIENTDATA_EXTRA
};

// The nIndex-th further file of a slot; null past the last.
constexpr const char* CatalogueExtraOf(int nSlot, int nIndex)
{
    for (const CatalogueExtra& extra : kCatalogueExtras)
        if (extra.nSlot == nSlot && nIndex-- == 0)
            return extra.szFile;
    return nullptr;
}

// The slot of a table class with a design of its own.
template <class T>
constexpr int CatalogueSlotOf()
{
    int nSlot = 0;
#define CLIENTDATA_TABLE(slot, name, iface, cls, file, kind, desc) \
    if (std::is_same_v<T, cls>)                                    \
        nSlot = slot;
#define CLIENTDATA_GENERIC(slot, name, file, kind)
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
#undef CLIENTDATA_GENERIC
    return nSlot;
}

// The file of a table class: its bare name, or the fixed path it reads.
template <class T>
constexpr const char* CatalogueFileOf()
{
    static_assert(CatalogueSlotOf<T>() != 0, "a table of the catalogue");
    return CatalogueEntryOf(CatalogueSlotOf<T>()).szFile;
}

// The bare name of a catalogue file: what follows its last slash (either
// style).
constexpr const char* CatalogueBareName(const char* szFile)
{
    const char* szBare = szFile;
    for (const char* p = szFile; *p != '\0'; ++p)
        if (*p == '/' || *p == '\\')
            szBare = p + 1;
    return szBare;
}

// Whether a table reads its file from exactly the path the catalogue gives
// (a name with a folder) rather than through BuildFilePath.
constexpr bool CatalogueIsFixedPath(const char* szFile) { return CatalogueBareName(szFile) != szFile; }

// Where the alternative data set keeps a catalogue file, by its bare name.
inline std::string CatalogueAlternativePath(const char* szFile)
{
    return AlternativeFilePath(CatalogueBareName(szFile));
}

// A data path as a data folder writes it: forward slashes, no leading "./".
inline std::string DataPathShown(std::string strPath)
{
    for (char& c : strPath)
        if (c == '\\')
            c = '/';
    while (strPath.rfind("./", 0) == 0)
        strPath.erase(0, 2);
    return strPath;
}

// Where a catalogue file lies in the standard data set (no alternative
// version), as a data folder writes it: a bare name lies under "ini/". For
// the tools and tests that write data folders.
inline std::string CatalogueDataPath(const char* szFile)
{
    const std::string strPath = DataPathShown(szFile);
    return strPath.find('/') == std::string::npos ? "ini/" + strPath : strPath;
}

// The files of a slot in the standard data set: its main file, then its
// further files (not the folders).
inline std::vector<std::string> CatalogueDataFilesOf(int nSlot)
{
    std::vector<std::string> setFile{CatalogueDataPath(CatalogueEntryOf(nSlot).szFile)};
    for (int i = 0; const char* szExtra = CatalogueExtraOf(nSlot, i); ++i)
        if (*CatalogueBareName(szExtra) != '\0')
            setFile.push_back(CatalogueDataPath(szExtra));
    return setFile;
}

// The order in which the manager constructs and lays out its tables (so the
// order of every registry walk), by slot. It follows the slots except in
// three places, which the client's data layer has always had.
struct SlotRun {
    int nFirst;
    int nLast;
};
constexpr SlotRun kConstructionRuns[] = {
    {9, 14},    {16, 16},   {15, 15},   {17, 74},   {76, 77},   {80, 81},   {83, 86},
    {93, 98},   {100, 100}, {103, 103}, {101, 101}, {105, 105}, {107, 107}, {109, 118},
    {75, 75},   {78, 79},   {82, 82},   {88, 92},   {87, 87},   {99, 99},   {102, 102},
    {104, 104}, {106, 106}, {108, 108}, {119, 202}, {204, 204}, {203, 203}, {205, 205},
};

struct ConstructionOrder {
    int nSlot[kTableAmount];
};

constexpr ConstructionOrder MakeConstructionOrder()
{
    ConstructionOrder order{};
    int nAt = 0;
    for (const SlotRun& run : kConstructionRuns)
        for (int nSlot = run.nFirst; nSlot <= run.nLast; ++nSlot)
            order.nSlot[nAt++] = nSlot;
    return order;
}
constexpr ConstructionOrder kConstructionOrder = MakeConstructionOrder();

// Position of a slot in the construction order.
constexpr int ConstructionPositionOf(int nSlot)
{
    for (int i = 0; i < kTableAmount; ++i)
        if (kConstructionOrder.nSlot[i] == nSlot)
            return i;
    return -1;
}

namespace catalogue_check {
constexpr bool EveryTableOnce()
{
    for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot) {
        int nSeen = 0;
        for (int i = 0; i < kTableAmount; ++i)
            nSeen += kConstructionOrder.nSlot[i] == nSlot;
        if (nSeen != 1)
            return false;
    }
    return true;
}
static_assert(EveryTableOnce(), "the construction order names every table once");
}  // namespace catalogue_check

template <int Slot>
struct CatalogueSlot;
#define CLIENTDATA_TABLE(slot, name, iface, cls, file, kind, desc) \
    template <>                                                    \
    struct CatalogueSlot<slot> {                                   \
        using Interface = iface;                                   \
        using Class = cls;                                         \
    };
#define CLIENTDATA_GENERIC(slot, name, file, kind)            \
    template <>                                               \
    struct CatalogueSlot<slot> {                              \
        using Interface = CLIENTDATA_GENERIC_INTERFACE(kind); \
        using Class = CLIENTDATA_GENERIC_CLASS(kind);         \
    };
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
#undef CLIENTDATA_GENERIC
