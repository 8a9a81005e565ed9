// Reading records through their descriptions. A number converts as atoi does
// (a hexadecimal field as "%x") and is stored cut to its field's width; a
// text is cut to its buffer less one character and the rest of the buffer
// zero-filled. What the reading changed or missed is reported as a load
// finding with the file and line, when a sink wants findings.
#pragma once

#include <cstddef>
#include <map>

#include "ClientData/RecordDesc.h"

class CIniSectionReader;
class CDataRow;

// Every field of the record takes its default.
void RecordSetDefaults(const RecordDesc& desc, void* pRecord);

// Section nSection's keys into their fields, in one walk over the section:
// each field takes the first line of its key (ASCII case-insensitive) and a
// field without a line its default. Title fields are left to the table.
void RecordReadSection(const RecordDesc& desc, const CIniSectionReader& reader, int nSection, void* pRecord,
                       const char* szFile);

// Field i from column nFirstColumn + i of the row; a missing column takes
// the field's default.
void RecordReadColumns(const RecordDesc& desc, const CDataRow& row, int nFirstColumn, void* pRecord,
                       const char* szFile);

// One value into one field, as a key or a column gives it. nLine names the
// line in findings.
void FieldStoreValue(const FieldDesc& field, const char* szValue, void* pRecord, const char* szFile, int nLine);

// The numbers n in [nFirst, nLast] for which section nSection has a key of
// the numbered field (its key with n in place of "%d"), ascending, each with
// the position of the first such key (the one a lookup by that key finds).
// Found from the keys present rather than by trying every n, so that an
// absurd count in a file costs nothing.
std::map<int, int> RecordKeyNumbers(const FieldDesc& field, const CIniSectionReader& reader, int nSection, int nFirst,
                               int nLast);

// Scans one line of blank- or tab-separated words into the fields in order:
// numbers as "%u" (a hexadecimal field "%x"), texts as "%s" words cut to
// their buffers. The scan stops at the first word that does not convert,
// leaving the later fields as they were. Returns the fields converted, or -1
// when the line ended before the first one (an empty or blank line).
int RecordScanLine(const RecordDesc& desc, const char* szLine, void* pRecord, const char* szFile, int nLine);
