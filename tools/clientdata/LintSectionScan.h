// Sectioned ini files as the lint rules see them: the same sections, keys and
// values the tables' section reader finds, each with the 1-based line it came
// from, so that a rule can name the line at fault.
#pragma once

#include <string>
#include <vector>

struct ScanEntry {
    std::string strKey;    // trimmed
    std::string strValue;  // trimmed, the whole rest of the line after "="
    int nLine;
};

struct ScanSection {
    std::string strTitle;  // without brackets, trimmed
    int nLine;
    std::vector<ScanEntry> setEntry;  // file order, repeated keys included

    // The first entry of a key (ASCII case-insensitive), as the tables read
    // it; null when absent.
    const ScanEntry* Find(const std::string& strKey) const;
};

// Splits a text into sections: comment lines (";" or "//"), blank lines and
// lines before the first section are skipped, as the tables skip them.
std::vector<ScanSection> SectionsScan(const std::string& strText);

// True when strText is an optional "-" and decimal digits only.
bool IsDecimalText(const std::string& strText);

// The number n when strKey is strPrefix followed by n written as "%d" writes
// a non-negative number (prefix compared without regard to ASCII case);
// -1 otherwise.
long long KeyNumberOf(const std::string& strKey, const std::string& strPrefix);
