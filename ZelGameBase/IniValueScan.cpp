#include "ZelGameBase/IniValueScan.h"

#include <cstring>

#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

ScanResult ConversionScan(const char*& text, char cConversion, const IniValueTarget& target)
{
    if (cConversion == 'd') {
        int32_t nValue = 0;
        const ScanResult result = CrtScanInt32(text, &nValue);
        if (result == SCAN_CONVERTED && target.pInt != nullptr)
            *target.pInt = nValue;
        return result;
    }
    // Into a scratch buffer first: the caller's buffer changes only on a
    // conversion. Tokens and lines are below 1024 bytes.
    char szWord[1024];
    const ScanResult result = CrtScanWord(text, szWord, sizeof(szWord));
    if (result == SCAN_CONVERTED && target.szText != nullptr)
        SafeStrCopy(target.szText, target.nTextSize, szWord);
    return result;
}

}  // namespace

IniValueTarget IniIntTarget(int* pData)
{
    IniValueTarget target;
    target.pInt = pData;
    return target;
}

IniValueTarget IniTextTarget(char* szData, int nDataSize)
{
    IniValueTarget target;
    target.szConversion = "%s";
    target.szText = szData;
    target.nTextSize = nDataSize;
    return target;
}

ScanResult IniPatternScan(const char* text, const char* szPattern, const IniValueTarget& target)
{
    bool bConverted = false;
    for (const char* f = szPattern; *f != '\0'; ++f) {
        if (CrtIsSpace(static_cast<unsigned char>(*f))) {
            while (CrtIsSpace(static_cast<unsigned char>(*text)))
                ++text;
            continue;
        }
        if (f[0] == '%' && (f[1] == 'd' || f[1] == 's')) {
            const ScanResult result = ConversionScan(text, *++f, target);
            if (result != SCAN_CONVERTED)
                return bConverted ? SCAN_CONVERTED : result;
            bConverted = true;
            continue;
        }
        if (f[0] == '%' && f[1] == '%')
            ++f;
        else if (f[0] == '%')
            break;  // a pattern cut inside a conversion converts nothing more
        if (*text == '\0')
            return bConverted ? SCAN_CONVERTED : SCAN_INPUT_END;
        if (*text++ != *f)
            break;
    }
    return bConverted ? SCAN_CONVERTED : SCAN_NO_MATCH;
}

bool IniSectionBracketsHold(const char* szText)
{
    return std::strrchr(szText, '[') != nullptr && std::strrchr(szText, ']') != nullptr;
}

void IniNotFoundReport(int bLogFile, const char* szMessage)
{
    if (bLogFile)
        LogMsgSave("%s", szMessage);
    else
        DebugStrOut("%s", szMessage);
}
