// lint [DIR] [--json] [--notes]: exit status 0 clean, 1 findings of warning
// or error, 2 usage or not a data folder.
#include <cstdio>
#include <nlohmann/json.hpp>

#include "DataFolder.h"
#include "Lint.h"
#include "Text.h"

namespace {

const char* const kSeverity[] = {"note", "warning", "error"};

void PrintFindings(const std::vector<LintFinding>& setFinding, const LintOptions& options)
{
    nlohmann::ordered_json findings = nlohmann::ordered_json::array();
    std::string strText;
    int nErrors = 0;
    for (const LintFinding& finding : setFinding) {
        const std::string strMessage = Shown(finding.strMessage, options.load.bRaw && !options.bJson);
        nErrors += finding.severity == LINT_ERROR;
        if (options.bJson)
            findings.push_back({{"file", finding.strFile},
                                {"line", finding.nLine},
                                {"severity", kSeverity[finding.severity]},
                                {"rule", finding.strRule},
                                {"message", strMessage}});
        else
            strText += finding.strFile + ":" + std::to_string(finding.nLine) + ": " + kSeverity[finding.severity] +
                       ": " + finding.strRule + ": " + strMessage + "\n";
    }
    const std::size_t nShown = setFinding.size();
    if (options.bJson)
        strText = findings.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
    else
        strText += std::to_string(nShown) + (nShown == 1 ? " finding, " : " findings, ") + std::to_string(nErrors) +
                   (nErrors == 1 ? " error\n" : " errors\n");
    std::fwrite(strText.data(), 1, strText.size(), stdout);
}

}  // namespace

int RunLintCommand(const LintOptions& options)
{
    if (!IsDataFolder(options.load.strFolder)) {
        const std::vector<LintFinding> setFinding{
            {options.load.strFolder, 0, LINT_ERROR, "not-a-data-folder", "none of the catalogue's files is there"}};
        PrintFindings(setFinding, options);
        return 2;
    }
    DebugLogRedirect(options.load.strLogFolder);
    std::vector<LintFinding> setFinding;
    bool bFound = false;
    for (LintFinding& finding : RunLint(options.load.strFolder, options.load.nDataVersion)) {
        bFound = bFound || finding.severity != LINT_NOTE;
        if (finding.severity != LINT_NOTE || options.bNotes)
            setFinding.push_back(std::move(finding));
    }
    PrintFindings(setFinding, options);
    return bFound ? 1 : 0;
}
