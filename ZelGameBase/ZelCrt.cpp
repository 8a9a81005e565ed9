#include "ZelGameBase/ZelCrt.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <type_traits>

int CrtCompareNoCase(const char* a, const char* b)
{
    for (;; ++a, ++b) {
        const int ca = static_cast<unsigned char>(CrtToLower(*a));
        const int cb = static_cast<unsigned char>(CrtToLower(*b));
        if (ca != cb || ca == 0)
            return ca - cb;
    }
}

int CrtCompareNoCase(const char* a, std::size_t nLenA, const char* b, std::size_t nLenB)
{
    const std::size_t nCommon = nLenA < nLenB ? nLenA : nLenB;
    for (std::size_t i = 0; i < nCommon; ++i) {
        const int ca = static_cast<unsigned char>(CrtToLower(a[i]));
        const int cb = static_cast<unsigned char>(CrtToLower(b[i]));
        if (ca != cb)
            return ca - cb;
    }
    return nLenA < nLenB ? -1 : (nLenA > nLenB ? 1 : 0);
}

int CrtAtoi(const char* text)
{
    if (text == nullptr)
        return 0;
    while (CrtIsSpace(static_cast<unsigned char>(*text)))
        ++text;
    bool bNegative = false;
    if (*text == '+' || *text == '-')
        bNegative = *text++ == '-';
    // Accumulate the magnitude, saturating at one past INT_MAX.
    const unsigned long long nLimit = static_cast<unsigned long long>(INT_MAX) + 1;
    unsigned long long nValue = 0;
    // Nine digits stay below the limit: they need no check.
    for (int nDigits = 0; nDigits < 9 && *text >= '0' && *text <= '9'; ++nDigits, ++text)
        nValue = nValue * 10 + static_cast<unsigned>(*text - '0');
    for (; *text >= '0' && *text <= '9'; ++text) {
        nValue = nValue * 10 + static_cast<unsigned>(*text - '0');
        if (nValue > nLimit)
            nValue = nLimit;
    }
    if (bNegative)
        return nValue >= nLimit ? INT_MIN : -static_cast<int>(nValue);
    return nValue >= nLimit ? INT_MAX : static_cast<int>(nValue);
}

namespace {

int DigitValue(char c, int nBase)
{
    int nDigit = 99;
    if (c >= '0' && c <= '9')
        nDigit = c - '0';
    else if (c >= 'a' && c <= 'z')
        nDigit = c - 'a' + 10;
    else if (c >= 'A' && c <= 'Z')
        nDigit = c - 'A' + 10;
    return nDigit < nBase ? nDigit : -1;
}

// The common part of the integer scans: white space, sign, optional "0x" for
// base 16, digits accumulated modulo 2^64 (callers narrow). "%u" and "%x"
// accept a sign too and negate, as the runtime does.
ScanResult ScanInteger(const char*& text, int nBase, uint64_t& nValue)
{
    const char* p = text;
    while (CrtIsSpace(static_cast<unsigned char>(*p)))
        ++p;
    if (*p == '\0')
        return SCAN_INPUT_END;
    bool bNegative = false;
    if (*p == '+' || *p == '-')
        bNegative = *p++ == '-';
    // A sign with nothing after it ran into the end of the input, which the
    // runtime reports as such (a scan of "key=-" counts as "found").
    if (*p == '\0')
        return SCAN_INPUT_END;
    bool bDigits = false;
    if (nBase == 16 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) {
        p += 2;
        bDigits = true;  // "0x" alone reads as 0
    }
    uint64_t nAccumulated = 0;
    if (nBase == 10) {
        // The common case without the letters' tests of DigitValue.
        const char* pFirst = p;
        for (uint64_t nDigit; (nDigit = static_cast<unsigned char>(*p) - uint64_t{'0'}) < 10; ++p)
            nAccumulated = nAccumulated * 10 + nDigit;
        bDigits = bDigits || p != pFirst;
    } else {
        for (int nDigit; (nDigit = DigitValue(*p, nBase)) >= 0; ++p) {
            nAccumulated = nAccumulated * static_cast<uint64_t>(nBase) + static_cast<uint64_t>(nDigit);
            bDigits = true;
        }
    }
    if (!bDigits)
        return SCAN_NO_MATCH;
    nValue = bNegative ? (~nAccumulated + 1) : nAccumulated;
    text = p;
    return SCAN_CONVERTED;
}

// The scanf conversions store the low bits of what they read, so a value
// wider than the target wraps.
template <class Target>
ScanResult ScanInto(const char*& text, int nBase, Target* pValue)
{
    uint64_t nValue = 0;
    const ScanResult result = ScanInteger(text, nBase, nValue);
    if (result == SCAN_CONVERTED && pValue != nullptr)
        *pValue = static_cast<Target>(static_cast<std::make_unsigned_t<Target>>(nValue));
    return result;
}

}  // namespace

ScanResult CrtScanInt32(const char*& text, int32_t* pValue) { return ScanInto(text, 10, pValue); }
ScanResult CrtScanUInt32(const char*& text, uint32_t* pValue) { return ScanInto(text, 10, pValue); }
ScanResult CrtScanHex32(const char*& text, uint32_t* pValue) { return ScanInto(text, 16, pValue); }
ScanResult CrtScanInt64(const char*& text, int64_t* pValue) { return ScanInto(text, 10, pValue); }

ScanResult CrtScanWord(const char*& text, char* szOut, std::size_t nSize)
{
    const char* p = text;
    while (CrtIsSpace(static_cast<unsigned char>(*p)))
        ++p;
    if (*p == '\0')
        return SCAN_INPUT_END;
    const char* pWord = p;
    while (*p != '\0' && !CrtIsSpace(static_cast<unsigned char>(*p)))
        ++p;
    if (szOut != nullptr && nSize > 0) {
        const std::size_t nCopied = std::min(static_cast<std::size_t>(p - pWord), nSize - 1);
        std::memcpy(szOut, pWord, nCopied);
        szOut[nCopied] = '\0';
    }
    text = p;
    return SCAN_CONVERTED;
}

namespace {

// Writes nValue as nDigits decimal digits, zero-padded (the value is taken
// modulo 10^nDigits so that the text keeps its width).
char* PutDigits(char* p, int nValue, int nDigits)
{
    unsigned nRest = static_cast<unsigned>(nValue < 0 ? -nValue : nValue);
    for (int i = nDigits - 1; i >= 0; --i) {
        p[i] = static_cast<char>('0' + nRest % 10);
        nRest /= 10;
    }
    return p + nDigits;
}

}  // namespace

void CrtFormatCtime(const LocalTime& time, char* szOut)
{
    static const char kDays[] = "SunMonTueWedThuFriSat";
    static const char kMonths[] = "JanFebMarAprMayJunJulAugSepOctNovDec";
    const int nWeekday = time.nWeekday >= 0 && time.nWeekday < 7 ? time.nWeekday : 0;
    const int nMonth = time.nMonth >= 1 && time.nMonth <= 12 ? time.nMonth - 1 : 0;
    char* p = szOut;
    for (int i = 0; i < 3; ++i)
        *p++ = kDays[nWeekday * 3 + i];
    *p++ = ' ';
    for (int i = 0; i < 3; ++i)
        *p++ = kMonths[nMonth * 3 + i];
    *p++ = ' ';
    p = PutDigits(p, time.nDay, 2);
    *p++ = ' ';
    p = PutDigits(p, time.nHour, 2);
    *p++ = ':';
    p = PutDigits(p, time.nMinute, 2);
    *p++ = ':';
    p = PutDigits(p, time.nSecond, 2);
    *p++ = ' ';
    p = PutDigits(p, time.nYear, 4);
    *p++ = '\n';
    *p = '\0';
}
