// What the two NPC type tables ("ini/Npc.ini" and "NewNpc.ini") share: one
// record per section in file order, the id taken from the title after the
// seven characters of "NpcType", the keys read through a description, a
// "NULL" note emptied, and lookups where the first section of an id wins.
// Each table supplies its record type and an NpcTypeFormat with the points in
// which the two files differ.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <unordered_map>
#include <vector>

#include "ClientData/SectionKeys.h"

struct NpcTypeFormat {
    const SectionKey* pKey;  // in the order the file is read
    std::size_t nKeyAmount;
    std::size_t nNoteOffset;   // the 128-byte note buffer in the record
    bool bNullNoteNoCase;      // "null" and "Null" count as "NULL" too
    const char* szSourceUnit;  // named by the allocation assertion
    int nAssertLine;
};

// The id of a section: the title's decimal value after its first seven
// characters ("NpcType1201" and "Xxxxxxx1201" give 1201, "NpcType" gives 0).
// A shorter title gives 0.
uint32_t NpcTypeIdParse(const char* szTitle);

// Reads the keys of one section into a zero-filled record whose first field
// is the unsigned 32-bit id, then empties a "NULL" note.
void NpcTypeSectionRead(const CIniSectionReader& reader, int nSection, const NpcTypeFormat& format, void* pRecord);

// Logs the failed allocation of a record.
void NpcTypeAllocFailLog(const NpcTypeFormat& format);

// Opens the file; when it cannot be read, logs "<szPlaceholder> load error!".
bool NpcTypeReaderOpen(CIniSectionReader& reader, const char* szPath, const char* szPlaceholder);

// The records of one NPC type table and their first-wins index by id.
template <class Info>
class NpcTypeStore {
public:
    // Reads szPath; an unreadable file logs "<szPlaceholder> load error!".
    void Load(const char* szPath, const char* szPlaceholder, const NpcTypeFormat& format);
    void Clear()
    {
        m_mapId.clear();
        m_setInfo.clear();
    }
    // The first record in file order with that id; null on a miss.
    const Info* Find(uint32_t nId) const
    {
        const auto it = m_mapId.find(nId);
        return it != m_mapId.end() ? it->second : nullptr;
    }
    std::size_t GetAmount() const { return m_setInfo.size(); }
    // Every record read, in file order, repeated ids included.
    const std::vector<std::unique_ptr<Info>>& Records() const { return m_setInfo; }

private:
    std::vector<std::unique_ptr<Info>> m_setInfo;  // file order
    std::unordered_map<uint32_t, const Info*> m_mapId;
};

template <class Info>
void NpcTypeStore<Info>::Load(const char* szPath, const char* szPlaceholder, const NpcTypeFormat& format)
{
    static_assert(offsetof(Info, nId) == 0, "the id leads the record");
    CIniSectionReader reader;
    if (!NpcTypeReaderOpen(reader, szPath, szPlaceholder))
        return;
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        std::unique_ptr<Info> pInfo(new (std::nothrow) Info());
        if (!pInfo) {
            NpcTypeAllocFailLog(format);
            continue;
        }
        NpcTypeSectionRead(reader, nSection, format, pInfo.get());
        m_mapId.emplace(pInfo->nId, pInfo.get());  // an earlier section of the id stays
        m_setInfo.push_back(std::move(pInfo));
    }
}
