// Sectioned ini files as the in-memory section reader sees them, with the
// line of every section header and key, for lint rules that name lines.
// Same rules as the reader: a header is a line whose first non-blank
// character is "[", its title running to the first "]" and trimmed; lines
// beginning with ";" or "//" are comments; "key=value" lines are trimmed
// around key and value; lines before the first section are ignored.
#pragma once

#include <string>
#include <vector>

#include "Lint.h"

struct LintIniKey {
    std::string strKey;
    std::string strValue;
    int nLine;
};

struct LintIniSection {
    std::string strTitle;
    int nLine;  // the header's, 1-based
    std::vector<LintIniKey> setKey;

    // The first key of that name (ASCII case-insensitive), or null.
    const LintIniKey* Find(const char* szKey) const;
};

std::vector<LintIniSection> LintIniSectionsOf(const std::string& strText);
