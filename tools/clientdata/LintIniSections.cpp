#include "LintIniSections.h"

#include "ZelGameBase/ZelCrt.h"

namespace {

std::string Trimmed(const std::string& strText)
{
    std::size_t nFirst = 0;
    std::size_t nEnd = strText.size();
    while (nFirst < nEnd && CrtIsSpace(static_cast<unsigned char>(strText[nFirst])))
        ++nFirst;
    while (nEnd > nFirst && CrtIsSpace(static_cast<unsigned char>(strText[nEnd - 1])))
        --nEnd;
    return strText.substr(nFirst, nEnd - nFirst);
}

}  // namespace

const LintIniKey* LintIniSection::Find(const char* szKey) const
{
    for (const LintIniKey& key : setKey)
        if (CrtCompareNoCase(key.strKey.c_str(), szKey) == 0)
            return &key;
    return nullptr;
}

std::vector<LintIniSection> LintIniSectionsOf(const std::string& strText)
{
    std::vector<LintIniSection> setSection;
    const std::vector<std::string> setLine = CLintContext::SplitLines(strText);
    for (std::size_t i = 0; i < setLine.size(); ++i) {
        const std::string strLine = Trimmed(setLine[i]);
        const int nLine = static_cast<int>(i + 1);
        if (strLine.empty() || strLine[0] == ';' || strLine.rfind("//", 0) == 0)
            continue;
        if (strLine[0] == '[') {
            const std::size_t nClose = strLine.find(']');
            const std::string strTitle =
                strLine.substr(1, nClose == std::string::npos ? std::string::npos : nClose - 1);
            setSection.push_back(LintIniSection{Trimmed(strTitle), nLine, {}});
            continue;
        }
        const std::size_t nEqual = strLine.find('=');
        if (setSection.empty() || nEqual == std::string::npos)
            continue;
        setSection.back().setKey.push_back(
            LintIniKey{Trimmed(strLine.substr(0, nEqual)), Trimmed(strLine.substr(nEqual + 1)), nLine});
    }
    return setSection;
}
