// How the ini lookups that scan for one value (the token-wise IniDataGet /
// IniStrGet and the line-wise MemIni* / FileIni*) match a key and convert
// its value: a scanf-style pattern such as "Amount=%d" over a token or line.
#pragma once

#include "ZelGameBase/ZelCommon.h"
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

// The lookup of [szTitle] szSubtitle=<value> over the units (tokens or
// lines) that nextUnit(szUnit, nSize) gives one after another: the first unit
// equal to "[szTitle]" (ASCII case-insensitive) opens the section, a unit
// holding both brackets closes it, and the first unit inside that the key
// pattern "szSubtitle=<conversion><szPatternEnd>" matches gives the value.
// Both patterns are formatted into 256 bytes (a longer key is cut). 1 when
// found; else 0 and the "not found" message, which names szWhere.
template <class NextUnit>
int IniUnitsValueGet(NextUnit nextUnit, const char* szTitle, const char* szSubtitle, const char* szPatternEnd,
                     const IniValueTarget& target, int bLogFile, const char* szWhere)
{
    char szSection[256];
    SafeSprintf(szSection, sizeof(szSection), "[%s]", szTitle);
    char szKey[256];
    SafeSprintf(szKey, sizeof(szKey), "%s=%s%s", szSubtitle, target.szConversion, szPatternEnd);

    char szUnit[1024];
    bool bInSection = false;
    while (!bInSection && nextUnit(szUnit, sizeof(szUnit)))
        bInSection = CrtCompareNoCase(szUnit, szSection) == 0;
    while (bInSection && nextUnit(szUnit, sizeof(szUnit))) {
        if (IniSectionBracketsHold(szUnit))
            break;
        if (IniPatternScan(szUnit, szKey, target) != SCAN_NO_MATCH)
            return 1;
    }
    char szMessage[1024];
    SafeSprintf(szMessage, sizeof(szMessage), "Error: [%s] %s not found in %s.", szTitle, szSubtitle, szWhere);
    IniNotFoundReport(bLogFile, szMessage);
    return 0;
}
