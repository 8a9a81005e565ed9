// Item types from "ItemType.dat": one record per item type, keyed by its id,
// read from a blank-separated column file whose first line announces the
// record count ("Amount=<n>"). Names are held scrambled in the records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include "ClientData/DataTable.h"
#include "ClientData/FlatIndex.h"
#include "ClientData/TableDesc.h"
#include "ZelGameBase/EncryptData.h"

class CDataFileReader;

// One item type, in the layout the client reads; the comments give the file
// column, the description (kItemTypeDesc) each column's name. Integer columns
// are stored cut to their field's width. Only the id, the name, the indexed
// values and the trailing text mean something to the table; the client
// interprets the rest.
struct ItemTypeInfo {
    uint32_t idType;         // 0, the key
    CEncryptString strName;  // 1, at most 255 characters
    uint8_t ucAttrA[5];      // 2-6
    uint16_t usAttrB[4];     // 7-10
    uint8_t ucAttrC;         // 11
    uint16_t usAttrD;        // 12
    uint32_t dwAttrE[2];     // 13-14
    uint16_t usAttrF[5];     // 15-19
    uint32_t dwAttrG;        // 20
    uint16_t usAttrH[2];     // 21-22
    uint32_t dwAttrI;        // 23
    uint8_t ucAttrJ[6];      // 24-29
    uint16_t usAttrK[4];     // 30-33
    uint32_t dwAttrL;        // 34
    uint16_t usAttrM;        // 35
    uint32_t dwAttrN;        // 36
    uint16_t usIndexed[9];   // 37-45: indexed values 1 to 9
    uint16_t usAttrO[3];     // 46-48
    uint32_t dwAttrP[3];     // 49-51
    uint16_t usAttrQ;        // 52
    uint32_t dwAttrR;        // 53
    char szText[256];        // 54
};
static_assert(std::is_trivially_copyable<ItemTypeInfo>::value && std::is_standard_layout<ItemTypeInfo>::value,
              "the client copies item records byte for byte");

// Texts of at most 15 bytes in one open-addressing table of 16-byte slots:
// a lookup compares two words, mostly in one cache line, and never allocates.
class CShortTextSet {
public:
    static constexpr std::size_t kMaxLength = 15;

    // Whether the set holds the nLength (at most kMaxLength) bytes at pText.
    bool Has(const char* pText, std::size_t nLength) const;
    void Add(const char* pText, std::size_t nLength);

private:
    // The text zero-padded, its length plus one in the last byte: never
    // all zero, as an empty slot is.
    struct Slot {
        uint64_t nLow;
        uint64_t nHigh;
        bool operator==(const Slot& other) const { return nLow == other.nLow && nHigh == other.nHigh; }
    };
    static Slot SlotOf(const char* pText, std::size_t nLength);
    // The slot holding key, or the empty one where it belongs.
    std::size_t Probe(const Slot& key) const;
    void Grow();

    std::vector<Slot> m_setSlot;
    std::size_t m_nAmount = 0;
};

class CItemTypeTable : public CDataTable {
public:
    CItemTypeTable();
    ~CItemTypeTable() = default;
    ZEL_DELETING_DESTRUCTOR

    // Adds the records of the file to those already held: the first record of
    // an id wins, also against records of an earlier Load. Reads no more
    // lines than the first line announces.
    void Load() override;
    // Drops every record; the name list stays.
    void Clear() override;

    // Slot 7: the name of item type idType, or null on a miss. The text lies
    // in one of the name scrambler's four rotating buffers: valid until four
    // further name reads.
    virtual const char* GetItemName(uint32_t idType);
    // Slot 8: the stored record, or null on a miss; valid until Clear.
    virtual const ItemTypeInfo* FindItemType(uint32_t idType);
    // Slot 9: copies the whole record into *pInfo and returns true; false
    // with *pInfo untouched on a miss or for a null pInfo.
    virtual bool GetItemType(uint32_t idType, ItemTypeInfo* pInfo);
    // Slot 10: true when the name list holds szName, comparing each entry by
    // its first 15 characters only, so a name of 16 characters or more is
    // never found. False for null or an empty list.
    virtual bool HasItemName(const char* szName);
    // Slot 11: indexed value nIndex (1 to 9) of item type idType; 0 for any
    // other index and for a missing id.
    virtual uint32_t GetIndexedValue(uint32_t idType, int nIndex);

    std::size_t GetLoadedAmount() const { return m_mapItem.size(); }
    // The record count the file's first line announced.
    uint32_t GetAmount() const { return m_nAmount; }
    // The names met while loading, in the order they were added.
    const std::vector<std::string>& GetNameList() const { return m_setName; }
    // Every record held, by id.
    const std::map<uint32_t, ItemTypeInfo>& Items() const { return m_mapItem; }

private:
    // The width of a name-list entry as compared: 15 characters and a
    // terminator.
    static constexpr std::size_t kNameCompareSize = 16;

    void NameListAdd(const char* szName);
    void AmountFindings(const char* szPath, const CDataFileReader& reader, uint32_t nCounted) const;

    std::map<uint32_t, ItemTypeInfo> m_mapItem;
    // The same records by id for the lookups, rebuilt after each load: one
    // probe instead of a tree walk that grows with the table.
    CFlatIndex<uint32_t, const ItemTypeInfo*> m_index;
    // Every distinct name, with the rule of NameListAdd.
    std::vector<std::string> m_setName;
    // The entries of m_setName cut to their first 15 characters: answers
    // "does some entry compare equal" without walking the list.
    CShortTextSet m_setNameKey;
    uint32_t m_nAmount = 0;
};

extern const TableDesc kItemTypeDesc;
