#include "ClientData/NpcTypeStore.h"

#include <cstring>

#include "ClientData/RecordRead.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

constexpr std::size_t kTitlePrefixLength = 7;  // strlen("NpcType"); the prefix itself is not compared

bool NoteIsNull(const char* szNote, bool bNoCase)
{
    return bNoCase ? CrtCompareNoCase(szNote, "NULL") == 0 : std::strcmp(szNote, "NULL") == 0;
}

}  // namespace

uint32_t NpcTypeIdParse(const char* szTitle)
{
    if (std::strlen(szTitle) < kTitlePrefixLength)
        return 0;
    return static_cast<uint32_t>(CrtAtoi(szTitle + kTitlePrefixLength));
}

void NpcTypeSectionRead(const CIniSectionReader& reader, int nSection, const NpcTypeFormat& format, void* pRecord,
                        const char* szPath)
{
    const char* szTitle = reader.GetTitle(nSection).data();
    const uint32_t nId = NpcTypeIdParse(szTitle);
    if (LoadFindingsWanted() && (std::strlen(szTitle) <= kTitlePrefixLength || nId == 0))
        LoadFindingReport(szPath, reader.GetTitleLine(nSection), FINDING_WARNING, "bad-title",
                          "section [%s] gives no id after its first %u characters: id %u", szTitle,
                          static_cast<unsigned>(kTitlePrefixLength), nId);
    std::memcpy(pRecord, &nId, sizeof(nId));
    RecordReadSection(format.record, reader, nSection, pRecord, szPath);
    char* szNote = static_cast<char*>(pRecord) + format.nNoteOffset;
    if (NoteIsNull(szNote, format.bNullNoteNoCase))
        szNote[0] = '\0';
}

void NpcTypeAllocFailLog(const NpcTypeFormat& format) { LogAssert("pInfo", format.nAssertLine, format.szSourceUnit); }

bool NpcTypeReaderOpen(CIniSectionReader& reader, const char* szPath, const char* szPlaceholder)
{
    if (reader.Open(szPath, 0))
        return true;
    LogSave("%s load error!", szPlaceholder);
    return false;
}
