#include "ClientData/RecordDesc.h"

#include <cstring>

#include <climits>
#include "ZelGameBase/EncryptData.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelString.h"

int64_t FieldDesc::NumberOf(const char* szText, std::size_t nLength) const
{
    const char* szMark = std::strstr(szKey, "%d");
    if (szMark == nullptr)
        return -1;
    const std::size_t nPrefix = static_cast<std::size_t>(szMark - szKey);
    const std::size_t nSuffix = std::strlen(szMark + 2);
    if (nLength <= nPrefix + nSuffix || CrtCompareNoCase(szText, nPrefix, szKey, nPrefix) != 0 ||
        CrtCompareNoCase(szText + nLength - nSuffix, nSuffix, szMark + 2, nSuffix) != 0)
        return -1;
    const char* pDigits = szText + nPrefix;
    const std::size_t nDigits = nLength - nPrefix - nSuffix;
    if (nDigits > 10 || (nDigits > 1 && pDigits[0] == '0'))
        return -1;
    int64_t nNumber = 0;
    for (std::size_t i = 0; i < nDigits; ++i) {
        if (pDigits[i] < '0' || pDigits[i] > '9')
            return -1;
        nNumber = nNumber * 10 + (pDigits[i] - '0');
    }
    return nNumber <= INT_MAX ? nNumber : -1;
}

const FieldDesc* RecordDesc::Find(const char* szKey, std::size_t nLength) const
{
    for (const FieldDesc& field : *this) {
        if (field.bTitle || field.bUnread)
            continue;
        if (field.bNumbered
                ? field.NumberOf(szKey, nLength) >= 0
                : field.nKeyLength == nLength && CrtCompareNoCase(field.szKey, nLength, szKey, nLength) == 0)
            return &field;
    }
    return nullptr;
}

int64_t FieldNumberGet(const FieldDesc& field, const void* pRecord)
{
    const unsigned char* pField = static_cast<const unsigned char*>(pRecord) + field.nOffset;
    const bool bSigned = field.type == FieldType::Int;
    switch (field.nSize) {
        case 1: {
            uint8_t n;
            std::memcpy(&n, pField, sizeof(n));
            return bSigned ? int64_t{static_cast<int8_t>(n)} : int64_t{n};
        }
        case 2: {
            uint16_t n;
            std::memcpy(&n, pField, sizeof(n));
            return bSigned ? int64_t{static_cast<int16_t>(n)} : int64_t{n};
        }
        case 4: {
            uint32_t n;
            std::memcpy(&n, pField, sizeof(n));
            return bSigned ? int64_t{static_cast<int32_t>(n)} : int64_t{n};
        }
        default: {
            int64_t n;
            std::memcpy(&n, pField, sizeof(n));
            return n;
        }
    }
}

const char* FieldTextGet(const FieldDesc& field, const void* pRecord)
{
    const char* pField = static_cast<const char*>(pRecord) + field.nOffset;
    if (field.type == FieldType::Scrambled)
        return reinterpret_cast<const CEncryptString*>(pField)->Get();
    if (field.type == FieldType::String)
        return *reinterpret_cast<const CZelString*>(pField);
    return field.type == FieldType::Text ? pField : "";
}
