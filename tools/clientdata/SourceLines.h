// Where a record and its fields stand in the file a table read, for the
// file:line of diff: a file of sections is read with the section reader
// (a record's section by its key, a field by its key there), any other file
// by the first words of each line.
#pragma once

#include <map>
#include <string>

#include "ZelGameBase/IniSectionReader.h"

class CSourceLines {
public:
    // Reads the file (relative to the working directory); a file that
    // cannot be read gives line 0 everywhere.
    CSourceLines(const std::string& strFile, bool bSections);
    CSourceLines(const CSourceLines&) = delete;
    CSourceLines& operator=(const CSourceLines&) = delete;

    // The line of the record with this key ("1000", "1000 2"); 0 when not
    // found.
    int RecordLine(const std::string& strKey) const;
    // The line of the field in that record; the record's line when the file
    // has no line of its own for it.
    int FieldLine(const std::string& strKey, const std::string& strField) const;

private:
    int SectionOf(const std::string& strKey) const;

    bool m_bSections;
    CIniSectionReader m_reader;
    std::map<std::string, int> m_mapSection;  // title -> first section
    std::map<std::string, int> m_mapLine;     // first words of a line -> first line
};
