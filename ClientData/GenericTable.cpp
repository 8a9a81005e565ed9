#include "ClientData/GenericTable.h"

#include <algorithm>
#include <string_view>

#include "ClientData/Catalogue.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

bool HasFolder(const char* szFile)
{
    for (const char* p = szFile; *p != '\0'; ++p)
        if (*p == '/' || *p == '\\')
            return true;
    return false;
}

// A file whose first significant line (not blank, not a comment) begins with
// "[" is sectioned.
bool LooksSectioned(std::string_view text)
{
    std::size_t nAt = 0;
    while (nAt < text.size()) {
        std::size_t nEnd = text.find_first_of("\r\n", nAt);
        if (nEnd == std::string_view::npos)
            nEnd = text.size();
        std::string_view line = text.substr(nAt, nEnd - nAt);
        nAt = nEnd + 1;
        const std::size_t nFirst = line.find_first_not_of(" \t");
        if (nFirst == std::string_view::npos)
            continue;
        line.remove_prefix(nFirst);
        if (line[0] == ';' || line.substr(0, 2) == "//")
            continue;
        return line[0] == '[';
    }
    return false;
}

}  // namespace

CGenericTable::CGenericTable(const CatalogueEntry& entry)
    : m_szFixedPath(HasFolder(entry.szFile) ? entry.szFile : nullptr)
{
    if (m_szFixedPath == nullptr)
        m_strFileName = entry.szFile;
}

const char* CGenericTable::GetLoadPath() const
{
    return m_szFixedPath != nullptr ? m_szFixedPath : m_strFilePath.c_str();
}

void CGenericTable::Load()
{
    // The table holds one file's image: a second Load replaces the first
    // rather than adding ids that would point past the new image.
    Clear();
    const char* szPath = GetLoadPath();
    std::string strText;
    if (!PlatformReadFile(szPath, strText)) {
        LogSave("error on open %s.", szPath);
        return;
    }
    if (LooksSectioned(strText)) {
        m_nKind = KIND_SECTIONS;
        m_sections.OpenText(std::move(strText));
        for (int i = 0; i < m_sections.GetSectionAmount(); ++i)
            m_setId.push_back(static_cast<uint32_t>(CrtAtoi(m_sections.GetTitle(i).data())));
    } else {
        m_nKind = KIND_COLUMNS;
        m_columns.OpenImage(std::move(strText), ' ');
        for (int i = 0; i < m_columns.GetRecordAmount(); ++i)
            m_setId.push_back(static_cast<uint32_t>(m_columns.GetRecord(i)->GetInt(0, 0)));
    }
    IndexIds();
}

void CGenericTable::IndexIds()
{
    m_setById.clear();
    m_setById.reserve(m_setId.size());
    for (std::size_t i = 0; i < m_setId.size(); ++i)
        m_setById.emplace_back(m_setId[i], static_cast<int>(i));
    std::sort(m_setById.begin(), m_setById.end());
}

void CGenericTable::Clear()
{
    m_nKind = KIND_EMPTY;
    m_sections.Close();
    m_columns.Close();
    m_setId.clear();
    m_setById.clear();
}

int CGenericTable::GetRecordAmount() { return static_cast<int>(m_setId.size()); }

int CGenericTable::FindRecord(unsigned int nId)
{
    auto it = std::lower_bound(m_setById.begin(), m_setById.end(), std::make_pair(nId, -1));
    return (it != m_setById.end() && it->first == nId) ? it->second : -1;
}

unsigned int CGenericTable::GetRecordId(int nIndex) { return IsRecord(nIndex) ? m_setId[nIndex] : 0; }

const char* CGenericTable::GetRecordTitle(int nIndex)
{
    if (!IsRecord(nIndex))
        return "";
    if (m_nKind == KIND_SECTIONS)
        return m_sections.GetTitle(nIndex).data();
    return m_columns.GetRecord(nIndex)->GetStr(0, "");
}

int CGenericTable::GetFieldAmount(int nIndex)
{
    if (!IsRecord(nIndex))
        return 0;
    if (m_nKind == KIND_SECTIONS)
        return m_sections.GetKeyAmount(nIndex);
    return m_columns.GetRecord(nIndex)->GetFieldAmount();
}

const char* CGenericTable::GetFieldText(int nIndex, int nField)
{
    if (!IsRecord(nIndex) || nField < 0 || nField >= GetFieldAmount(nIndex))
        return "";
    if (m_nKind == KIND_SECTIONS)
        return m_sections.GetValueAt(nIndex, nField).data();
    return m_columns.GetRecord(nIndex)->GetStr(nField, "");
}

int CGenericTable::GetFieldInt(int nIndex, int nField, int nDefault)
{
    if (!IsRecord(nIndex) || nField < 0 || nField >= GetFieldAmount(nIndex))
        return nDefault;
    return CrtAtoi(GetFieldText(nIndex, nField));
}

const char* CGenericTable::GetValueText(int nIndex, const char* szKey, const char* szDefault)
{
    std::string_view value;
    if (m_nKind != KIND_SECTIONS || !IsRecord(nIndex) || szKey == nullptr ||
        !m_sections.GetValue(nIndex, szKey, value))
        return szDefault;
    return value.data();
}

int CGenericTable::GetValueInt(int nIndex, const char* szKey, int nDefault)
{
    std::string_view value;
    if (m_nKind != KIND_SECTIONS || !IsRecord(nIndex) || szKey == nullptr ||
        !m_sections.GetValue(nIndex, szKey, value))
        return nDefault;
    return CrtAtoi(value.data());
}

const char* CGenericTable::GetFieldName(int nIndex, int nField)
{
    if (m_nKind != KIND_SECTIONS || !IsRecord(nIndex) || nField < 0 || nField >= GetFieldAmount(nIndex))
        return "";
    return m_sections.GetKeyAt(nIndex, nField).data();
}
