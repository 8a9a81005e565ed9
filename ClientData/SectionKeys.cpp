#include "ClientData/SectionKeys.h"

#include <cstdint>
#include <cstring>
#include <string_view>

#include "ZelGameBase/ZelCrt.h"

void SectionKeysRead(const CIniSectionReader& reader, int nSection, const SectionKey* pKey, std::size_t nAmount,
                     void* pRecord)
{
    char* pBase = static_cast<char*>(pRecord);
    for (std::size_t i = 0; i < nAmount; ++i) {
        const SectionKey& key = pKey[i];
        char* pField = pBase + key.nOffset;
        if (key.nSize == 0) {
            const int nValue = reader.GetInt(nSection, key.szKey, key.nDefault);
            std::memcpy(pField, &nValue, sizeof(nValue));
        } else {
            pField[0] = '\0';
            reader.GetText(nSection, key.szKey, pField, key.nSize);
        }
    }
}

std::set<int> SectionKeyNumbersFind(const CIniSectionReader& reader, int nSection, const char* szPrefix, int nFirst,
                                    int nLast)
{
    const std::string_view prefix(szPrefix);
    std::set<int> setNumber;
    for (int nKey = 0; nKey < reader.GetKeyAmount(nSection); ++nKey) {
        std::string_view key = reader.GetKeyAt(nSection, nKey);
        // Keys compare without regard to ASCII case, as the reader's lookups do.
        if (key.size() <= prefix.size() ||
            CrtCompareNoCase(key.data(), prefix.size(), prefix.data(), prefix.size()) != 0)
            continue;
        key.remove_prefix(prefix.size());
        // "%d" of a non-negative number: digits only, no leading zero.
        if (key.size() > 10 || (key.size() > 1 && key[0] == '0'))
            continue;
        int64_t nNumber = 0;
        bool bDigits = true;
        for (char c : key) {
            bDigits = bDigits && c >= '0' && c <= '9';
            nNumber = nNumber * 10 + (c - '0');
        }
        if (bDigits && nNumber >= nFirst && nNumber <= nLast)
            setNumber.insert(static_cast<int>(nNumber));
    }
    return setNumber;
}
