// Drives one table through the life the client gives it: the input becomes
// the table's file (or files) in the scratch folder, then Load, lookups, a
// second Load over the first, lookups, Clear and lookups again. Lookup keys
// are the numbers and words found in the input, so that hits happen as often
// as misses.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "ClientData/DataTable.h"
#include "FuzzSupport.h"

// Aborts when a fixed text buffer of a record holds no terminator: the client
// reads these fields as C strings.
#define FUZZ_CHECK_TEXT(buffer)                              \
    do {                                                     \
        if (std::memchr((buffer), 0, sizeof(buffer)) == nullptr) \
            std::abort();                                    \
    } while (0)

// Aborts when a returned text is longer than nLimit - 1 characters.
inline void FuzzCheckLength(const char* szText, std::size_t nLimit)
{
    if (szText != nullptr && std::strlen(szText) >= nLimit)
        std::abort();
}

// Up to 16 signed decimal numbers of the input, then 0, 1, -1 and the
// extremes.
std::vector<int64_t> FuzzNumbersIn(const uint8_t* pData, std::size_t nSize);
// Up to 8 words of the input (runs of bytes other than blanks, line ends,
// "=", ",", "[" and "]", at most 300 bytes), then the empty word.
std::vector<std::string> FuzzWordsIn(const uint8_t* pData, std::size_t nSize);

// Splits the input into nParts file contents at the marker "@@FILE@@" (the
// dictionaries hold it); parts the input lacks are empty.
std::vector<std::string> FuzzSplitFiles(const uint8_t* pData, std::size_t nSize, std::size_t nParts);

// The life of a table that make() builds.
template <class Table, class Make, class Lookups>
void FuzzTableLifeOf(Make make, Lookups lookups)
{
    {
        // Freed through slot 0, as the client frees a table it owns.
        const auto Free = [](Table* pOwned) { pOwned->DeletingDestructor(1); };
        std::unique_ptr<Table, decltype(Free)> pTable(make(), Free);
        pTable->BuildFilePath();
        pTable->Load();
        lookups(*pTable);
        pTable->Load();
        lookups(*pTable);
        pTable->Clear();
        lookups(*pTable);
    }
    TableRegistry::Destroy();
}

template <class Table, class Lookups>
void FuzzTableLife(Lookups lookups)
{
    FuzzTableLifeOf<Table>([] { return new Table(); }, lookups);
}

// The common case: the whole input is the one file at strPath.
template <class Table, class Lookups>
void FuzzTableFile(const char* szPath, const uint8_t* pData, std::size_t nSize, Lookups lookups)
{
    FuzzEnterScratchFolder();
    FuzzWriteFile(szPath, pData, nSize);
    FuzzTableLife<Table>(lookups);
}
