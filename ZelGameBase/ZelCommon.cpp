#include "ZelGameBase/ZelCommon.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "ZelGameBase/FileStream.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

// How a key's value converts and where it goes: "%d" stores into pInt, "%s"
// into szText (cut to nTextSize - 1). A null target still converts (and so
// still decides "found"); it only stores nothing.
struct ValueTarget {
    const char* szConversion = "%d";
    int* pInt = nullptr;
    char* szText = nullptr;
    int nTextSize = 0;
};

ValueTarget IntTarget(int* pData)
{
    ValueTarget target;
    target.pInt = pData;
    return target;
}

ValueTarget TextTarget(char* szData, int nDataSize)
{
    ValueTarget target;
    target.szConversion = "%s";
    target.szText = szData;
    target.nTextSize = nDataSize;
    return target;
}

ScanResult ScanConversion(const char*& text, char cConversion, const ValueTarget& target)
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

// Scans text with a key pattern such as "Amount=%d\n", as scanf reads its
// format: white space skips white space, "%d" / "%s" convert, "%%" is a
// percent sign, any other character must match. The result is what scanf
// returns: a conversion, no match, or the end of the input reached before the
// first conversion (so a text that is a proper prefix of "key=" counts).
ScanResult ScanPattern(const char* text, const char* szPattern, const ValueTarget& target)
{
    bool bConverted = false;
    for (const char* f = szPattern; *f != '\0'; ++f) {
        if (CrtIsSpace(static_cast<unsigned char>(*f))) {
            while (CrtIsSpace(static_cast<unsigned char>(*text)))
                ++text;
            continue;
        }
        if (f[0] == '%' && (f[1] == 'd' || f[1] == 's')) {
            const ScanResult result = ScanConversion(text, *++f, target);
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

bool HoldsSectionBrackets(const char* szText)
{
    return std::strrchr(szText, '[') != nullptr && std::strrchr(szText, ']') != nullptr;
}

// Blank-separated tokens of a file read as a stream, at most 1023 characters
// each (the rest of a longer run is the next token).
class CTokenReader {
public:
    explicit CTokenReader(CFileStream& stream) : m_stream(stream) {}

    bool Next(char* szToken, std::size_t nSize)
    {
        std::memset(szToken, 0, nSize);
        int c;
        while ((c = m_stream.Peek()) >= 0 && CrtIsSpace(static_cast<unsigned char>(c)))
            m_stream.Get();
        if (c < 0)
            return false;
        std::size_t nCopied = 0;
        while (nCopied + 1 < nSize && (c = m_stream.Peek()) >= 0 && !CrtIsSpace(static_cast<unsigned char>(c)))
            szToken[nCopied++] = static_cast<char>(m_stream.Get());
        return true;
    }

private:
    CFileStream& m_stream;
};

void ReportNotFound(int bLogFile, const char* szMessage)
{
    if (bLogFile)
        LogMsgSave("%s", szMessage);
    else
        DebugStrOut("%s", szMessage);
}

int IniValueGet(const char* szIniFile, const char* szTitle, const char* szSubtitle, const ValueTarget& target,
                int bLogFile)
{
    // Read as a stream: a scan costs one buffer, however large the file.
    CFileStream stream;
    if (!stream.Open(szIniFile))
        return 0;

    char szSection[256];
    SafeSprintf(szSection, sizeof(szSection), "[%s]", szTitle);
    // The key pattern reads key, "=", the value and a line break; formatted
    // into 256 bytes like the section pattern (a longer key is cut).
    char szKey[256];
    SafeSprintf(szKey, sizeof(szKey), "%s=%s\n", szSubtitle, target.szConversion);

    CTokenReader tokens(stream);
    char szToken[1024];
    bool bFound = false;
    bool bInSection = false;
    while (!bInSection && tokens.Next(szToken, sizeof(szToken)))
        bInSection = CrtCompareNoCase(szToken, szSection) == 0;
    while (bInSection && !bFound && tokens.Next(szToken, sizeof(szToken))) {
        if (HoldsSectionBrackets(szToken))
            break;
        bFound = ScanPattern(szToken, szKey, target) != SCAN_NO_MATCH;
    }
    if (!bFound) {
        char szMessage[1024];
        SafeSprintf(szMessage, sizeof(szMessage), "Error: [%s] %s not found in %s.", szTitle, szSubtitle, szIniFile);
        ReportNotFound(bLogFile, szMessage);
    }
    return bFound ? 1 : 0;
}

// The line-wise lookup behind MemIni* and FileIni*; nextLine(szLine, nSize)
// gives the next line as MemIniReadLine does.
template <class NextLine>
int IniLinesValueGet(NextLine nextLine, const char* szTitle, const char* szSubtitle, const ValueTarget& target,
                     int bLogFile, const char* szCaller)
{
    char szSection[256];
    SafeSprintf(szSection, sizeof(szSection), "[%s]", szTitle);
    char szKey[256];
    SafeSprintf(szKey, sizeof(szKey), "%s=%s", szSubtitle, target.szConversion);

    char szLine[1024];
    bool bInSection = false;
    while (!bInSection && nextLine(szLine, sizeof(szLine)))
        bInSection = CrtCompareNoCase(szLine, szSection) == 0;
    while (bInSection && nextLine(szLine, sizeof(szLine))) {
        if (HoldsSectionBrackets(szLine))
            break;
        if (ScanPattern(szLine, szKey, target) != SCAN_NO_MATCH)
            return 1;
    }
    char szMessage[1024];
    SafeSprintf(szMessage, sizeof(szMessage), "Error: [%s] %s not found in %s.", szTitle, szSubtitle, szCaller);
    ReportNotFound(bLogFile, szMessage);
    return 0;
}

int MemIniValueGet(const char* pImage, unsigned nLength, const char* szTitle, const char* szSubtitle,
                   const ValueTarget& target, int bLogFile, const char* szCaller)
{
    unsigned nPos = 0;
    const auto nextLine = [&](char* szLine, unsigned nSize) {
        return MemIniReadLine(pImage, nLength, &nPos, szLine, nSize);
    };
    return IniLinesValueGet(nextLine, szTitle, szSubtitle, target, bLogFile, szCaller);
}

int FileIniValueGet(const char* szPath, const char* szTitle, const char* szSubtitle, const ValueTarget& target,
                    int bLogFile, const char* szCaller)
{
    CFileStream stream;
    if (!stream.Open(szPath))
        return 0;
    const auto nextLine = [&](char* szLine, unsigned nSize) { return StreamIniReadLine(stream, szLine, nSize); };
    return IniLinesValueGet(nextLine, szTitle, szSubtitle, target, bLogFile, szCaller);
}

}  // namespace

int IniDataGet(const char* szIniFile, const char* szTitle, const char* szSubtitle, int* pData, int bLogFile)
{
    if (szIniFile == nullptr || szTitle == nullptr || szSubtitle == nullptr)
        return 0;
    return IniValueGet(szIniFile, szTitle, szSubtitle, IntTarget(pData), bLogFile);
}

int IniStrGet(const char* szIniFile, const char* szTitle, const char* szSubtitle, char* szData, int bLogFile,
              int nDataSize)
{
    if (szIniFile == nullptr || szTitle == nullptr || szSubtitle == nullptr || szData == nullptr)
        return 0;
    return IniValueGet(szIniFile, szTitle, szSubtitle, TextTarget(szData, nDataSize), bLogFile);
}

int ProfileIntGet(const char* szIniFile, const char* szTitle, const char* szSubtitle, unsigned* pData)
{
    const unsigned kMissing = 444444;
    char szPath[260];
    SafeStrCopy(szPath, sizeof(szPath), PlatformJoinPath(PlatformCurrentDirectory(), szIniFile).c_str());
    const unsigned nValue = PlatformGetPrivateProfileInt(szTitle, szSubtitle, static_cast<int>(kMissing), szPath);
    if (pData != nullptr)
        *pData = nValue;
    if (nValue != kMissing)
        return 1;
    char szMessage[1024];
    SafeSprintf(szMessage, sizeof(szMessage), "%s [%s] %s not found.", szIniFile, szTitle, szSubtitle);
    PlatformDebugOutput(szMessage);
    return 0;
}

namespace {

// One line as the in-memory ini readers take it, from a source of bytes
// with Get() and AtEnd(): cut to nOutSize - 1 (and false) when it does not
// fit, the line feed and a carriage return before it dropped.
template <class Source>
bool IniLineRead(Source& source, char* szOut, unsigned nOutSize)
{
    unsigned nCopied = 0;
    bool bEnded = false;
    while (nCopied < nOutSize) {
        const char c = static_cast<char>(source.Get());
        szOut[nCopied++] = c;
        if (c == '\n' || source.AtEnd()) {
            bEnded = true;
            break;
        }
    }
    if (!bEnded) {
        szOut[nOutSize - 1] = '\0';
        return false;
    }
    // Over the line feed, or over the last real character of an unterminated
    // last line, which is thereby lost.
    szOut[nCopied - 1] = '\0';
    if (nCopied >= 2 && szOut[nCopied - 2] == '\r')
        szOut[nCopied - 2] = '\0';
    return nCopied < nOutSize;
}

struct ImageBytes {
    const char* pImage;
    unsigned nLength;
    unsigned* pPos;

    int Get() { return static_cast<unsigned char>(pImage[(*pPos)++]); }
    bool AtEnd() const { return *pPos >= nLength; }
};

}  // namespace

bool MemIniReadLine(const char* pImage, unsigned nLength, unsigned* pPos, char* szOut, unsigned nOutSize)
{
    if (pImage == nullptr || szOut == nullptr || pPos == nullptr || nOutSize == 0 || *pPos >= nLength)
        return false;
    ImageBytes image{pImage, nLength, pPos};
    return IniLineRead(image, szOut, nOutSize);
}

bool StreamIniReadLine(CFileStream& stream, char* szOut, unsigned nOutSize)
{
    if (szOut == nullptr || nOutSize == 0 || stream.AtEnd())
        return false;
    return IniLineRead(stream, szOut, nOutSize);
}

int MemIniStrGet(const char* pImage, unsigned nLength, const char* szTitle, const char* szSubtitle, char* szData,
                 int bLogFile, int nDataSize)
{
    if (pImage == nullptr || szTitle == nullptr || szSubtitle == nullptr || szData == nullptr)
        return 0;
    return MemIniValueGet(pImage, nLength, szTitle, szSubtitle, TextTarget(szData, nDataSize), bLogFile,
                          "MemIniStrGet");
}

int MemIniDataGet(const char* pImage, unsigned nLength, const char* szTitle, const char* szSubtitle, int* pData,
                  int bLogFile)
{
    if (pImage == nullptr || szTitle == nullptr || szSubtitle == nullptr || pData == nullptr)
        return 0;
    return MemIniValueGet(pImage, nLength, szTitle, szSubtitle, IntTarget(pData), bLogFile, "MemIniDataGet");
}

int FileIniStrGet(const char* szPath, const char* szTitle, const char* szSubtitle, char* szData, int bLogFile,
                  int nDataSize)
{
    if (szPath == nullptr || szTitle == nullptr || szSubtitle == nullptr || szData == nullptr)
        return 0;
    return FileIniValueGet(szPath, szTitle, szSubtitle, TextTarget(szData, nDataSize), bLogFile, "MemIniStrGet");
}

int FileIniDataGet(const char* szPath, const char* szTitle, const char* szSubtitle, int* pData, int bLogFile)
{
    if (szPath == nullptr || szTitle == nullptr || szSubtitle == nullptr || pData == nullptr)
        return 0;
    return FileIniValueGet(szPath, szTitle, szSubtitle, IntTarget(pData), bLogFile, "MemIniDataGet");
}

bool SafeStrCopy(char* szOut, int nSize, const char* szSource)
{
    if (szOut == nullptr || szSource == nullptr)
        return false;
    if (nSize <= 0)
        return true;  // nothing can be written; callers pass the true size
    std::strncpy(szOut, szSource, static_cast<std::size_t>(nSize - 1));
    szOut[nSize - 1] = '\0';
    return true;
}

bool SafeSprintf(char* szOut, int nSize, const char* szFormat, ...)
{
    if (szOut == nullptr || szFormat == nullptr || nSize <= 0)
        return false;
    va_list args;
    va_start(args, szFormat);
    std::vsnprintf(szOut, static_cast<std::size_t>(nSize), szFormat, args);
    va_end(args);
    szOut[nSize - 1] = '\0';
    return true;
}
