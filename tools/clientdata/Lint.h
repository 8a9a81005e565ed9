// lint: the data problems the loaders accept silently. Every rule is a
// function that reads the files it knows and reports findings as
// file:line: severity: rule-id: message. Rules register themselves.
#pragma once

#include <string>
#include <vector>

enum LintSeverity { LINT_WARNING, LINT_ERROR };

struct LintFinding {
    std::string strFile;  // relative to the data folder
    int nLine;            // 1-based; 0 for the file as a whole
    LintSeverity severity;
    std::string strRule;
    std::string strMessage;
};

class CLintContext {
public:
    explicit CLintContext(std::string strRoot) : m_strRoot(std::move(strRoot)) {}

    const std::string& Root() const { return m_strRoot; }
    // Reads a file below the root (either slash style); false when absent.
    bool ReadFile(const std::string& strPath, std::string& strText) const;
    // The lines of a text without their line ends (CR-LF, LF).
    static std::vector<std::string> SplitLines(const std::string& strText);

    void Report(const std::string& strFile, int nLine, LintSeverity severity, const char* szRule,
                const std::string& strMessage);
    const std::vector<LintFinding>& Findings() const { return m_setFinding; }

private:
    std::string m_strRoot;
    std::vector<LintFinding> m_setFinding;
};

using LintRuleFn = void (*)(CLintContext& context);

struct LintRuleRegistration {
    LintRuleRegistration(const char* szGroup, LintRuleFn fn);
};

// Runs every registered rule over the folder; findings sorted by file and line.
std::vector<LintFinding> RunLint(const std::string& strRoot);
