// What the two NPC type tables share: one record per section in file order,
// the id taken from the title after its first seven characters (the titles
// are "NpcType<id>"), the keys read through the record's description, a
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

#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/LoadFindings.h"

#include "ClientData/RecordDesc.h"
#include "ClientData/TableDesc.h"

struct NpcTypeFormat {
    RecordDesc record;
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
void NpcTypeSectionRead(const CIniSectionReader& reader, int nSection, const NpcTypeFormat& format, void* pRecord,
                        const char* szPath);

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
    // setLine: the title line of each record from nFirst on.
    void ReportShadowed(const char* szPath, std::size_t nFirst, const std::vector<int>& setLine) const;

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
    const std::size_t nFirst = m_setInfo.size();
    std::vector<int> setLine;  // for findings
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        std::unique_ptr<Info> pInfo(new (std::nothrow) Info());
        if (!pInfo) {
            NpcTypeAllocFailLog(format);
            continue;
        }
        NpcTypeSectionRead(reader, nSection, format, pInfo.get(), szPath);
        m_mapId.emplace(pInfo->nId, pInfo.get());  // an earlier section of the id stays
        m_setInfo.push_back(std::move(pInfo));
        if (LoadFindingsWanted())
            setLine.push_back(reader.GetTitleLine(nSection));
    }
    if (LoadFindingsWanted())
        ReportShadowed(szPath, nFirst, setLine);
}

template <class Info>
void NpcTypeStore<Info>::ReportShadowed(const char* szPath, std::size_t nFirst, const std::vector<int>& setLine) const
{
    for (std::size_t i = nFirst; i < m_setInfo.size(); ++i) {
        const Info* pFirst = m_mapId.at(m_setInfo[i]->nId);
        if (pFirst != m_setInfo[i].get())
            LoadFindingReport(szPath, setLine[i - nFirst], FINDING_WARNING, "duplicate-id",
                              "id %u was given before: lookups answer the first section", m_setInfo[i]->nId);
    }
}

// The tools' view of an NPC type table: the records its lookup answers (the
// first of each id), and the lookup.
template <class Table>
void NpcTypeForEach(CDataTable& table, RecordSinkFn fn, void* pContext)
{
    Table& npcs = static_cast<Table&>(table);
    for (const auto& pInfo : npcs.Records())
        if (npcs.GetNpcType(pInfo->nId) == pInfo.get())
            fn(pInfo.get(), RecordKeyOf(pInfo->nId), pContext);
}

template <class Table>
const void* NpcTypeFind(CDataTable& table, const RecordKey& key)
{
    return static_cast<Table&>(table).GetNpcType(static_cast<uint32_t>(key.nNumber[0]));
}
