// Reading one record from a section of a CIniSectionReader through a
// description of its keys, so a table states its keys, fields and defaults
// once, in the order the format reads them, instead of in a chain of calls.
#pragma once

#include <cstddef>
#include <set>

#include "ZelGameBase/IniSectionReader.h"

// One key of a record: an integer field (nSize 0) or a text buffer of nSize
// bytes, at nOffset in the record.
struct SectionKey {
    const char* szKey;
    std::size_t nOffset;
    int nSize;     // 0 for a signed 32-bit field, else the buffer size
    int nDefault;  // integer fields only; a missing text is empty
};

// The descriptions of the fields of record type R.
#define SECTION_INT(R, key, field, def) \
    SectionKey { key, offsetof(R, field), 0, def }
#define SECTION_TEXT(R, key, field) \
    SectionKey { key, offsetof(R, field), static_cast<int>(sizeof(R::field)), 0 }

// Reads the keys of section nSection in the given order into pRecord. A
// missing key stores its default; a text longer than its buffer is cut to the
// buffer size less one.
void SectionKeysRead(const CIniSectionReader& reader, int nSection, const SectionKey* pKey, std::size_t nAmount,
                     void* pRecord);

template <std::size_t N>
void SectionKeysRead(const CIniSectionReader& reader, int nSection, const SectionKey (&setKey)[N], void* pRecord)
{
    SectionKeysRead(reader, nSection, setKey, N, pRecord);
}

// The numbers i in [nFirst, nLast] for which "<szPrefix><i>" (as "%s%d"
// writes it) is a key of the section, ascending. Found from the keys present
// rather than by trying every i, so that an absurd count in a file costs
// nothing.
std::set<int> SectionKeyNumbersFind(const CIniSectionReader& reader, int nSection, const char* szPrefix, int nFirst,
                                    int nLast);
