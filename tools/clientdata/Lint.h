// lint: what the loaders noticed while they read a data folder, by file and
// line. The folder is loaded as the client loads it, once on the standard
// data set and once more with the version-dependent tables on the
// alternative one; each loader reports through the load-finding sink, and a
// table's debug-log faults count as findings on its file.
#pragma once

#include <string>
#include <vector>

enum LintSeverity { LINT_NOTE, LINT_WARNING, LINT_ERROR };

struct LintFinding {
    std::string strFile;  // relative to the data folder, forward slashes
    int nLine;            // 1-based; 0 for the file as a whole
    LintSeverity severity;
    std::string strRule;
    std::string strMessage;  // GBK where it quotes the data
};

// Loads the folder (which becomes the working directory), the second time
// with the version callback answering nAlternative (0: 200, the ini/200/
// set), and returns every finding once, sorted by file and line.
std::vector<LintFinding> RunLint(const std::string& strRoot, int nAlternative);
