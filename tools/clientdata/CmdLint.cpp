// lint [DIR] [--json]: exit status 1 when any error is found.
#include <cstdio>
#include <filesystem>

#include "Commands.h"
#include "Lint.h"
#include "Text.h"

int RunLintCommand(const Arguments& setArg)
{
    bool bJson = false;
    std::string strFolder = DefaultDataFolder();
    for (const std::string& strArg : setArg) {
        if (strArg == "--json")
            bJson = true;
        else if (!strArg.empty() && strArg[0] == '-')
            return UsageError("lint: unknown option " + strArg);
        else
            strFolder = strArg;
    }
    std::error_code error;
    if (!std::filesystem::is_directory(strFolder, error))
        return UsageError("lint: no data folder " + strFolder);
    const std::vector<LintFinding> setFinding = RunLint(strFolder);
    int nErrors = 0;
    if (bJson)
        std::printf("[");
    for (std::size_t i = 0; i < setFinding.size(); ++i) {
        const LintFinding& finding = setFinding[i];
        const char* szSeverity = finding.severity == LINT_ERROR ? "error" : "warning";
        nErrors += finding.severity == LINT_ERROR;
        const std::string strMessage = GbkToUtf8(finding.strMessage);
        if (bJson) {
            std::printf("%s\n  {\"file\": %s, \"line\": %d, \"severity\": \"%s\", \"rule\": %s, \"message\": %s}",
                        i == 0 ? "" : ",", JsonQuoted(finding.strFile).c_str(), finding.nLine, szSeverity,
                        JsonQuoted(finding.strRule).c_str(), JsonQuoted(strMessage).c_str());
        } else {
            std::printf("%s:%d: %s: %s: %s\n", finding.strFile.c_str(), finding.nLine, szSeverity,
                        finding.strRule.c_str(), strMessage.c_str());
        }
    }
    if (bJson)
        std::printf("\n]\n");
    else
        std::printf("%zu finding%s, %d error%s\n", setFinding.size(), setFinding.size() == 1 ? "" : "s", nErrors,
                    nErrors == 1 ? "" : "s");
    return nErrors > 0 ? 1 : 0;
}
