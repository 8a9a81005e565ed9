#include "ZelGameBase/IniSectionReader.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/ByteCount.h"
#include "ZelGameBase/FileStream.h"
#include "ZelGameBase/IniValueScan.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

// A byte source over text held in memory, for IniLineTake.
struct ImageBytes {
    const char* pImage;
    std::size_t nLength;
    std::size_t nAt;

    int Get() { return static_cast<unsigned char>(pImage[nAt++]); }
    bool AtEnd() const { return nAt >= nLength; }
};

// Takes one line from a byte source (Get and AtEnd; not at its end), handing
// every byte, its line feed included, to take(c), which answers whether there
// is room for one more. The line ends after a line feed or at the end of the
// source; a carriage return stays in the line. False when take had no room
// left before the line ended.
template <class Source, class Take>
bool IniLineTake(Source& source, Take&& take)
{
    for (;;) {
        const char c = static_cast<char>(source.Get());
        const bool bRoom = take(c);
        if (c == '\n' || source.AtEnd())
            return true;
        if (!bRoom)
            return false;
    }
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// Where the line at nAt ends: its first line feed or carriage return, or the
// end of the text.
std::size_t LineEnd(const char* pText, std::size_t nAt, std::size_t nSize)
{
    while (nAt < nSize && pText[nAt] != '\n' && pText[nAt] != '\r')
        ++nAt;
    return nAt;
}

// Past the line break at nEnd: a carriage return and line feed are one.
std::size_t BreakEnd(const char* pText, std::size_t nEnd, std::size_t nSize)
{
    if (nEnd >= nSize)
        return nSize;
    return pText[nEnd] == '\r' && nEnd + 1 < nSize && pText[nEnd + 1] == '\n' ? nEnd + 2 : nEnd + 1;
}

}  // namespace

bool CIniSectionReader::Open(const char* szPath, int nFlag)
{
    Close();
    std::string strText;
    const bool bRead =
        nFlag == 0 ? FileStreamReadAll(szPath, strText) == FILE_READ_WHOLE : PlatformReadFile(szPath, strText);
    if (!bRead)
        return false;
    return IndexText(std::move(strText));
}

void CIniSectionReader::OpenText(std::string&& strText) { IndexText(std::move(strText)); }

bool CIniSectionReader::IndexText(std::string&& strText)
{
    Close();
    m_strText = std::move(strText);
    // Out of memory while indexing: the reader is left empty, as for a file
    // that could not be read.
    if (AllocationTry([this] { Index(); }))
        return true;
    Close();
    return false;
}

void CIniSectionReader::Close()
{
    m_strText.clear();
    m_strText.shrink_to_fit();
    m_setSection.clear();
    m_setEntry.clear();
}

void CIniSectionReader::Index()
{
    // Titles, keys and values become C strings in place: each is followed by a
    // byte that is not part of it (a "]", "=", blank or line end), which is
    // overwritten by a terminator once its line has been read.
    char* pText = m_strText.data();
    const std::size_t nSize = m_strText.size();
    // Every entry holds an "=" and every section a "[": reserving that many
    // spares the regrowth and stays within a multiple of the file's size.
    const ByteCounts counts = BytesCount(pText, nSize, '[', '=');
    m_setSection.reserve(counts.nFirst);
    m_setEntry.reserve(counts.nSecond);
    std::size_t nNext = 0;  // the next line's first byte
    // Sections and entries are counted in 32 bits; a file with more lines
    // than that is indexed up to there. Line numbers stop growing at the
    // largest int, which only a file of 2 GiB of line breaks reaches.
    const std::size_t kMaxAmount = INT_MAX;
    uint32_t nLine = 0;
    while (nNext < nSize && m_setSection.size() < kMaxAmount && m_setEntry.size() < kMaxAmount) {
        const std::size_t nAt = nNext;
        // Unlike the line-wise lookup, the index ends a line at a lone
        // carriage return too, and it has no length limit.
        const std::size_t nEnd = LineEnd(pText, nAt, nSize);
        nNext = BreakEnd(pText, nEnd, nSize);
        if (nLine < INT_MAX)
            ++nLine;
        std::size_t nFirst = nAt;
        while (nFirst < nEnd && IsBlank(pText[nFirst]))
            ++nFirst;
        std::size_t setTerminator[2];
        std::size_t nTerminators = 0;
        auto trimmed = [&](std::size_t nBegin, std::size_t nStop) {
            while (nBegin < nStop && IsBlank(pText[nBegin]))
                ++nBegin;
            while (nStop > nBegin && IsBlank(pText[nStop - 1]))
                --nStop;
            setTerminator[nTerminators++] = nStop;
            return std::string_view(pText + nBegin, nStop - nBegin);
        };
        const bool bComment = nFirst == nEnd || pText[nFirst] == ';' ||
                              (pText[nFirst] == '/' && nFirst + 1 < nEnd && pText[nFirst + 1] == '/');
        if (!bComment && pText[nFirst] == '[') {
            const char* pClose = static_cast<const char*>(std::memchr(pText + nFirst, ']', nEnd - nFirst));
            const std::size_t nClose = pClose != nullptr ? static_cast<std::size_t>(pClose - pText) : nEnd;
            m_setSection.push_back(
                Section{trimmed(nFirst + 1, nClose), static_cast<uint32_t>(m_setEntry.size()), 0, nLine});
        } else if (!bComment && !m_setSection.empty()) {
            const char* pEqual = static_cast<const char*>(std::memchr(pText + nFirst, '=', nEnd - nFirst));
            if (pEqual != nullptr) {
                const std::size_t nEqual = static_cast<std::size_t>(pEqual - pText);
                const std::string_view key = trimmed(nFirst, nEqual);
                const std::string_view value = trimmed(nEqual + 1, nEnd);
                m_setEntry.push_back(Entry{key, value, nLine});
                ++m_setSection.back().nAmount;
            }
        }
        for (std::size_t i = 0; i < nTerminators; ++i)
            if (setTerminator[i] < nSize)
                pText[setTerminator[i]] = '\0';
    }
}

std::string_view CIniSectionReader::GetTitle(int nSection) const
{
    if (nSection < 0 || nSection >= GetSectionAmount())
        return std::string_view("", 0);
    return m_setSection[static_cast<std::size_t>(nSection)].title;
}

int CIniSectionReader::GetTitleLine(int nSection) const
{
    if (nSection < 0 || nSection >= GetSectionAmount())
        return 0;
    return static_cast<int>(m_setSection[static_cast<std::size_t>(nSection)].nLine);
}

int CIniSectionReader::GetKeyAmount(int nSection) const
{
    if (nSection < 0 || nSection >= GetSectionAmount())
        return 0;
    return static_cast<int>(m_setSection[static_cast<std::size_t>(nSection)].nAmount);
}

const CIniSectionReader::Entry* CIniSectionReader::EntryAt(int nSection, int nKey) const
{
    if (nKey < 0 || nKey >= GetKeyAmount(nSection))
        return nullptr;
    return &m_setEntry[m_setSection[static_cast<std::size_t>(nSection)].nFirst + static_cast<uint32_t>(nKey)];
}

std::string_view CIniSectionReader::GetKeyAt(int nSection, int nKey) const
{
    const Entry* pEntry = EntryAt(nSection, nKey);
    return pEntry != nullptr ? pEntry->key : std::string_view("", 0);
}

std::string_view CIniSectionReader::GetValueAt(int nSection, int nKey) const
{
    const Entry* pEntry = EntryAt(nSection, nKey);
    return pEntry != nullptr ? pEntry->value : std::string_view("", 0);
}

int CIniSectionReader::GetKeyLine(int nSection, int nKey) const
{
    const Entry* pEntry = EntryAt(nSection, nKey);
    return pEntry != nullptr ? static_cast<int>(pEntry->nLine) : 0;
}

int CIniSectionReader::FindKey(int nSection, const char* szKey) const
{
    if (szKey == nullptr)
        return -1;
    const std::size_t nLength = std::strlen(szKey);
    const int nAmount = GetKeyAmount(nSection);
    for (int nKey = 0; nKey < nAmount; ++nKey) {
        const std::string_view key = GetKeyAt(nSection, nKey);
        if (key.size() == nLength && CrtCompareNoCase(key.data(), nLength, szKey, nLength) == 0)
            return nKey;
    }
    return -1;
}

bool CIniSectionReader::GetValue(int nSection, const char* szKey, std::string_view& value) const
{
    const int nKey = FindKey(nSection, szKey);
    if (nKey < 0)
        return false;
    value = GetValueAt(nSection, nKey);
    return true;
}

bool CIniSectionReader::GetText(int nSection, const char* szKey, char* szOut, int nSize) const
{
    std::string_view value;
    if (szOut == nullptr || nSize <= 0 || !GetValue(nSection, szKey, value))
        return false;
    const std::size_t nCopy = std::min(value.size(), static_cast<std::size_t>(nSize - 1));
    std::memcpy(szOut, value.data(), nCopy);
    szOut[nCopy] = '\0';
    return true;
}

int CIniSectionReader::GetInt(int nSection, const char* szKey, int nDefault) const
{
    std::string_view value;
    return GetValue(nSection, szKey, value) ? CrtAtoi(value.data()) : nDefault;
}

// The line-wise lookup.

namespace {

// One line as the line-wise lookup takes it: cut to nOutSize - 1 (and false)
// when it does not fit, the line feed and a carriage return before it
// dropped. Unlike the index, it keeps a lone carriage return inside the line,
// loses the last character of an unterminated last line and fails on a line
// of nOutSize bytes or more: facts of the format that data files rely on.
template <class Source>
bool IniLineRead(Source& source, char* szOut, unsigned nOutSize)
{
    unsigned nCopied = 0;
    const bool bTaken = IniLineTake(source, [&](char c) {
        szOut[nCopied++] = c;
        return nCopied < nOutSize;
    });
    if (!bTaken) {
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

}  // namespace

bool MemIniReadLine(const char* pImage, unsigned nLength, unsigned* pPos, char* szOut, unsigned nOutSize)
{
    if (pImage == nullptr || szOut == nullptr || pPos == nullptr || nOutSize == 0 || *pPos >= nLength)
        return false;
    ImageBytes image{pImage, nLength, *pPos};
    const bool bFitted = IniLineRead(image, szOut, nOutSize);
    *pPos = static_cast<unsigned>(image.nAt);
    return bFitted;
}

bool StreamIniReadLine(CFileStream& stream, char* szOut, unsigned nOutSize)
{
    if (szOut == nullptr || nOutSize == 0 || stream.AtEnd())
        return false;
    return IniLineRead(stream, szOut, nOutSize);
}

int MemIniValueGet(const char* pImage, unsigned nLength, const char* szTitle, const char* szSubtitle,
                   const IniValueTarget& target, int bLogFile, const char* szCaller)
{
    unsigned nPos = 0;
    const auto nextLine = [&](char* szLine, unsigned nSize) {
        return MemIniReadLine(pImage, nLength, &nPos, szLine, nSize);
    };
    return IniUnitsValueGet(nextLine, szTitle, szSubtitle, "", target, bLogFile, szCaller);
}

int FileIniValueGet(const char* szPath, const char* szTitle, const char* szSubtitle, const IniValueTarget& target,
                    int bLogFile, const char* szCaller)
{
    // Read as a stream: a lookup costs one buffer, however large the file.
    CFileStream stream;
    if (!stream.Open(szPath))
        return 0;
    const auto nextLine = [&](char* szLine, unsigned nSize) { return StreamIniReadLine(stream, szLine, nSize); };
    return IniUnitsValueGet(nextLine, szTitle, szSubtitle, "", target, bLogFile, szCaller);
}
