#include "Lint.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

struct LintRule {
    const char* szGroup;
    LintRuleFn fn;
};

std::vector<LintRule>& Rules()
{
    static std::vector<LintRule> setRule;
    return setRule;
}

}  // namespace

LintRuleRegistration::LintRuleRegistration(const char* szGroup, LintRuleFn fn) { Rules().push_back({szGroup, fn}); }

bool CLintContext::ReadFile(const std::string& strPath, std::string& strText) const
{
    std::string strNative = strPath;
    std::replace(strNative.begin(), strNative.end(), '\\', '/');
    const std::filesystem::path path = std::filesystem::path(m_strRoot) / strNative;
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return false;
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    strText = text.str();
    return true;
}

std::vector<std::string> CLintContext::SplitLines(const std::string& strText)
{
    std::vector<std::string> setLine;
    std::size_t nAt = 0;
    while (nAt < strText.size()) {
        std::size_t nEnd = strText.find('\n', nAt);
        if (nEnd == std::string::npos)
            nEnd = strText.size();
        std::string strLine = strText.substr(nAt, nEnd - nAt);
        if (!strLine.empty() && strLine.back() == '\r')
            strLine.pop_back();
        setLine.push_back(std::move(strLine));
        nAt = nEnd + 1;
    }
    return setLine;
}

void CLintContext::Report(const std::string& strFile, int nLine, LintSeverity severity, const char* szRule,
                          const std::string& strMessage)
{
    m_setFinding.push_back(LintFinding{strFile, nLine, severity, szRule, strMessage});
}

std::vector<LintFinding> RunLint(const std::string& strRoot)
{
    CLintContext context(strRoot);
    for (const LintRule& rule : Rules())
        rule.fn(context);
    std::vector<LintFinding> setFinding = context.Findings();
    std::stable_sort(setFinding.begin(), setFinding.end(), [](const LintFinding& a, const LintFinding& b) {
        return a.strFile != b.strFile ? a.strFile < b.strFile : a.nLine < b.nLine;
    });
    return setFinding;
}
