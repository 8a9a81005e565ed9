#include "ZelGameBase/ZelCommon.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "ZelGameBase/FileStream.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/IniValueScan.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

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

int IniValueGet(const char* szIniFile, const char* szTitle, const char* szSubtitle, const IniValueTarget& target,
                int bLogFile)
{
    // Read as a stream: a scan costs one buffer, however large the file.
    CFileStream stream;
    if (!stream.Open(szIniFile))
        return 0;
    CTokenReader tokens(stream);
    const auto nextToken = [&](char* szToken, std::size_t nSize) { return tokens.Next(szToken, nSize); };
    // The key pattern reads key, "=", the value and a line break.
    return IniUnitsValueGet(nextToken, szTitle, szSubtitle, "\n", target, bLogFile, szIniFile);
}

}  // namespace

int IniDataGet(const char* szIniFile, const char* szTitle, const char* szSubtitle, int* pData, int bLogFile)
{
    if (szIniFile == nullptr || szTitle == nullptr || szSubtitle == nullptr)
        return 0;
    return IniValueGet(szIniFile, szTitle, szSubtitle, IniIntTarget(pData), bLogFile);
}

int IniStrGet(const char* szIniFile, const char* szTitle, const char* szSubtitle, char* szData, int bLogFile,
              int nDataSize)
{
    if (szIniFile == nullptr || szTitle == nullptr || szSubtitle == nullptr || szData == nullptr)
        return 0;
    return IniValueGet(szIniFile, szTitle, szSubtitle, IniTextTarget(szData, nDataSize), bLogFile);
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

int MemIniStrGet(const char* pImage, unsigned nLength, const char* szTitle, const char* szSubtitle, char* szData,
                 int bLogFile, int nDataSize)
{
    if (pImage == nullptr || szTitle == nullptr || szSubtitle == nullptr || szData == nullptr)
        return 0;
    return MemIniValueGet(pImage, nLength, szTitle, szSubtitle, IniTextTarget(szData, nDataSize), bLogFile,
                          "MemIniStrGet");
}

int MemIniDataGet(const char* pImage, unsigned nLength, const char* szTitle, const char* szSubtitle, int* pData,
                  int bLogFile)
{
    if (pImage == nullptr || szTitle == nullptr || szSubtitle == nullptr || pData == nullptr)
        return 0;
    return MemIniValueGet(pImage, nLength, szTitle, szSubtitle, IniIntTarget(pData), bLogFile, "MemIniDataGet");
}

int FileIniStrGet(const char* szPath, const char* szTitle, const char* szSubtitle, char* szData, int bLogFile,
                  int nDataSize)
{
    if (szPath == nullptr || szTitle == nullptr || szSubtitle == nullptr || szData == nullptr)
        return 0;
    return FileIniValueGet(szPath, szTitle, szSubtitle, IniTextTarget(szData, nDataSize), bLogFile, "MemIniStrGet");
}

int FileIniDataGet(const char* szPath, const char* szTitle, const char* szSubtitle, int* pData, int bLogFile)
{
    if (szPath == nullptr || szTitle == nullptr || szSubtitle == nullptr || pData == nullptr)
        return 0;
    return FileIniValueGet(szPath, szTitle, szSubtitle, IniIntTarget(pData), bLogFile, "MemIniDataGet");
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
