#include "LintSectionScan.h"

#include "Lint.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

std::string Trimmed(const std::string& strText, std::size_t nBegin, std::size_t nEnd)
{
    while (nBegin < nEnd && (strText[nBegin] == ' ' || strText[nBegin] == '\t'))
        ++nBegin;
    while (nEnd > nBegin && (strText[nEnd - 1] == ' ' || strText[nEnd - 1] == '\t'))
        --nEnd;
    return strText.substr(nBegin, nEnd - nBegin);
}

}  // namespace

const ScanEntry* ScanSection::Find(const std::string& strKey) const
{
    for (const ScanEntry& entry : setEntry)
        if (CrtCompareNoCase(entry.strKey.c_str(), strKey.c_str()) == 0)
            return &entry;
    return nullptr;
}

std::vector<ScanSection> SectionsScan(const std::string& strText)
{
    std::vector<ScanSection> setSection;
    const std::vector<std::string> setLine = CLintContext::SplitLines(strText);
    for (std::size_t i = 0; i < setLine.size(); ++i) {
        const std::string& strLine = setLine[i];
        const int nLine = static_cast<int>(i + 1);
        const std::string strBody = Trimmed(strLine, 0, strLine.size());
        if (strBody.empty() || strBody[0] == ';' || strBody.rfind("//", 0) == 0)
            continue;
        if (strBody[0] == '[') {
            const std::size_t nClose = strBody.find(']');
            setSection.push_back(
                ScanSection{Trimmed(strBody, 1, nClose == std::string::npos ? strBody.size() : nClose), nLine, {}});
            continue;
        }
        const std::size_t nEqual = strBody.find('=');
        if (setSection.empty() || nEqual == std::string::npos)
            continue;
        setSection.back().setEntry.push_back(
            ScanEntry{Trimmed(strBody, 0, nEqual), Trimmed(strBody, nEqual + 1, strBody.size()), nLine});
    }
    return setSection;
}

bool IsDecimalText(const std::string& strText)
{
    const std::size_t nFirst = (!strText.empty() && strText[0] == '-') ? 1 : 0;
    if (strText.size() <= nFirst)
        return false;
    for (std::size_t i = nFirst; i < strText.size(); ++i)
        if (strText[i] < '0' || strText[i] > '9')
            return false;
    return true;
}

long long KeyNumberOf(const std::string& strKey, const std::string& strPrefix)
{
    if (strKey.size() <= strPrefix.size() ||
        CrtCompareNoCase(strKey.c_str(), strPrefix.size(), strPrefix.c_str(), strPrefix.size()) != 0)
        return -1;
    const std::string strDigits = strKey.substr(strPrefix.size());
    if (strDigits.size() > 10 || (strDigits.size() > 1 && strDigits[0] == '0'))
        return -1;
    long long nNumber = 0;
    for (char c : strDigits) {
        if (c < '0' || c > '9')
            return -1;
        nNumber = nNumber * 10 + (c - '0');
    }
    return nNumber;
}
