#include "SourceLines.h"

#include <fstream>
#include <sstream>

namespace {

std::string FirstWord(const std::string& strKey) { return strKey.substr(0, strKey.find(' ')); }

}  // namespace

CSourceLines::CSourceLines(const std::string& strFile, bool bSections) : m_bSections(bSections)
{
    if (bSections) {
        if (m_reader.Open(strFile.c_str(), 1))
            for (int i = 0; i < m_reader.GetSectionAmount(); ++i)
                m_mapSection.emplace(std::string(m_reader.GetTitle(i)), i);
        return;
    }
    // The key of a line of columns is its first words: index up to four.
    std::ifstream in(strFile, std::ios::binary);
    std::string strLine;
    for (int nLine = 1; std::getline(in, strLine); ++nLine) {
        std::istringstream words(strLine);
        std::string strWord;
        std::string strKey;
        for (int i = 0; i < 4 && words >> strWord; ++i) {
            strKey += (i == 0 ? "" : " ") + strWord;
            m_mapLine.emplace(strKey, nLine);
        }
    }
}

int CSourceLines::SectionOf(const std::string& strKey) const
{
    auto it = m_mapSection.find(strKey);
    if (it == m_mapSection.end())
        it = m_mapSection.find(FirstWord(strKey));
    return it == m_mapSection.end() ? -1 : it->second;
}

int CSourceLines::RecordLine(const std::string& strKey) const
{
    if (m_bSections) {
        const int nSection = SectionOf(strKey);
        return nSection < 0 ? 0 : m_reader.GetTitleLine(nSection);
    }
    auto it = m_mapLine.find(strKey);
    if (it == m_mapLine.end())
        it = m_mapLine.find(FirstWord(strKey));
    return it == m_mapLine.end() ? 0 : it->second;
}

int CSourceLines::FieldLine(const std::string& strKey, const std::string& strField) const
{
    if (!m_bSections)
        return RecordLine(strKey);
    const int nSection = SectionOf(strKey);
    if (nSection >= 0) {
        const int nKey = m_reader.FindKey(nSection, strField.c_str());
        return nKey >= 0 ? m_reader.GetKeyLine(nSection, nKey) : m_reader.GetTitleLine(nSection);
    }
    // A table of settings reads its keys from fixed sections.
    for (int i = 0; i < m_reader.GetSectionAmount(); ++i)
        if (const int nKey = m_reader.FindKey(i, strField.c_str()); nKey >= 0)
            return m_reader.GetKeyLine(i, nKey);
    return 0;
}
