// How the ini lookups that scan for one value (the token-wise IniDataGet /
// IniStrGet and the line-wise MemIni* / FileIni*) match a key and convert
// its value: a scanf-style pattern such as "Amount=%d" over a token or line.
#pragma once

#include "ZelGameBase/ZelCrt.h"

// How a key's value converts and where it goes: "%d" stores into pInt, "%s"
// into szText (cut to nTextSize - 1). A null target still converts (and so
// still decides "found"); it only stores nothing.
struct IniValueTarget {
    const char* szConversion = "%d";
    int* pInt = nullptr;
    char* szText = nullptr;
    int nTextSize = 0;
};

IniValueTarget IniIntTarget(int* pData);
IniValueTarget IniTextTarget(char* szData, int nDataSize);

// Scans text with a key pattern such as "Amount=%d\n", as scanf reads its
// format: white space skips white space, "%d" / "%s" convert, "%%" is a
// percent sign, any other character must match. The result is what scanf
// returns: a conversion, no match, or the end of the input reached before the
// first conversion (so a text that is a proper prefix of "key=" counts).
ScanResult IniPatternScan(const char* text, const char* szPattern, const IniValueTarget& target);

// Whether text holds both a "[" and a "]": such a token or line ends a section.
bool IniSectionBracketsHold(const char* szText);

// A lookup's "not found" message: to the debug log when bLogFile is non-zero,
// else to the debugger output.
void IniNotFoundReport(int bLogFile, const char* szMessage);
