// lint [DIR] [--json] [--notes]: exit status 1 when any error is found.
#include <cstdio>
#include <filesystem>

#include "Commands.h"
#include "Lint.h"
#include "Text.h"

namespace {
const char* const kSeverity[] = {"note", "warning", "error"};
}

int RunLintCommand(const Arguments& setArg)
{
    bool bJson = false;
    bool bNotes = false;
    std::string strFolder = DefaultDataFolder();
    for (const std::string& strArg : setArg) {
        if (strArg == "--json")
            bJson = true;
        else if (strArg == "--notes")
            bNotes = true;
        else if (!strArg.empty() && strArg[0] == '-')
            return UsageError("lint: unknown option " + strArg);
        else
            strFolder = strArg;
    }
    std::error_code error;
    if (!std::filesystem::is_directory(strFolder, error))
        return UsageError("lint: no data folder " + strFolder);
    int nErrors = 0;
    int nShown = 0;
    if (bJson)
        std::printf("[");
    for (const LintFinding& finding : RunLint(strFolder)) {
        if (finding.severity == LINT_NOTE && !bNotes)
            continue;
        nErrors += finding.severity == LINT_ERROR;
        const std::string strMessage = GbkToUtf8(finding.strMessage);
        if (bJson)
            std::printf("%s\n  {\"file\": %s, \"line\": %d, \"severity\": \"%s\", \"rule\": %s, \"message\": %s}",
                        nShown == 0 ? "" : ",", JsonQuoted(finding.strFile).c_str(), finding.nLine,
                        kSeverity[finding.severity], JsonQuoted(finding.strRule).c_str(),
                        JsonQuoted(strMessage).c_str());
        else
            std::printf("%s:%d: %s: %s: %s\n", finding.strFile.c_str(), finding.nLine, kSeverity[finding.severity],
                        finding.strRule.c_str(), strMessage.c_str());
        ++nShown;
    }
    if (bJson)
        std::printf("\n]\n");
    else
        std::printf("%d finding%s, %d error%s\n", nShown, nShown == 1 ? "" : "s", nErrors, nErrors == 1 ? "" : "s");
    return nErrors > 0 ? 1 : 0;
}
