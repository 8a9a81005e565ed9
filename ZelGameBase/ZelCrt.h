// The client's C runtime, not the host's, defines what the data means: these
// are the conversions and texts the data formats depend on, with one defined
// behaviour on every platform (ASCII-only case folding, the Visual C++
// runtime's overflow rules, its ctime text).
#pragma once

#include <cstddef>
#include <cstdint>

// Broken-down local time; year in full (2011), month 1-12, weekday 0 = Sunday.
struct LocalTime {
    int nYear;
    int nMonth;
    int nDay;
    int nHour;
    int nMinute;
    int nSecond;
    int nWeekday;
};

inline bool CrtIsSpace(unsigned char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
inline char CrtToLower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + ('a' - 'A')) : c; }

// _stricmp: compares folding ASCII letters only, whatever the locale.
int CrtCompareNoCase(const char* a, const char* b);
// The same over byte ranges (no terminator needed).
int CrtCompareNoCase(const char* a, std::size_t nLenA, const char* b, std::size_t nLenB);

// atoi: leading white space, one sign, decimal digits; saturates at INT_MIN/INT_MAX.
int CrtAtoi(const char* text);

// Results of the scanf-style scanners, as scanf counts them.
enum ScanResult : int {
    SCAN_INPUT_END = -1,  // input ended before anything was converted
    SCAN_NO_MATCH = 0,    // the input does not hold the item
    SCAN_CONVERTED = 1,
};

// "%d", "%u", "%x" and the 64-bit "%I64d": skip white space, then convert,
// advancing *pText past what was consumed. 32-bit results wrap modulo 2^32.
ScanResult CrtScanInt32(const char*& text, int32_t* pValue);
ScanResult CrtScanUInt32(const char*& text, uint32_t* pValue);
ScanResult CrtScanHex32(const char*& text, uint32_t* pValue);
ScanResult CrtScanInt64(const char*& text, int64_t* pValue);
// "%s": skip white space, copy one word into a buffer of nSize bytes (cut to
// nSize - 1 characters; the rest of the word is consumed all the same).
ScanResult CrtScanWord(const char*& text, char* szOut, std::size_t nSize);

// The ctime text "Mon Mar 07 14:05:09 2011\n" (day zero-padded), 25 characters
// and a terminator; szOut holds at least 26 bytes.
void CrtFormatCtime(const LocalTime& time, char* szOut);
