#include "ZelGameBase/IniSectionReader.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/FileStream.h"
#include "ZelGameBase/IniValueScan.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

int CompareNoCase(std::string_view a, std::string_view b)
{
    return CrtCompareNoCase(a.data(), a.size(), b.data(), b.size());
}

bool EqualNoCase(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (CrtToLower(a[i]) != CrtToLower(b[i]))
            return false;
    return true;
}

// FNV-1a over the ASCII-folded bytes: keys equal without regard to case hash
// equal, so a lookup compares texts only where the hashes agree.
uint32_t HashNoCase(std::string_view text)
{
    uint32_t nHash = 2166136261u;
    for (char c : text)
        nHash = (nHash ^ static_cast<unsigned char>(CrtToLower(c))) * 16777619u;
    return nHash;
}

// Reads the file as a stream, chunk by chunk, up to its size at open.
bool ReadStream(const char* szPath, std::string& strText)
{
    strText.clear();
    CPlatformFile file;
    if (!file.Open(szPath))
        return false;
    char buffer[16384];
    int64_t nRead;
    bool bOk = true;
    while (bOk && (nRead = file.Read(buffer, sizeof(buffer))) > 0)
        bOk = AllocationTry([&] { strText.append(buffer, static_cast<std::size_t>(nRead)); });
    if (!bOk || nRead < 0) {
        strText.clear();
        strText.shrink_to_fit();
        return false;
    }
    return true;
}

}  // namespace

bool CIniSectionReader::Open(const char* szPath, int nFlag)
{
    Close();
    std::string strText;
    const bool bRead = nFlag == 0 ? ReadStream(szPath, strText) : PlatformReadFile(szPath, strText);
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
    m_setKeyHash.clear();
    m_setHashSorted.clear();
    m_nHint = 0;
    m_setTitleSorted.clear();
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
    m_setSection.reserve(static_cast<std::size_t>(std::count(pText, pText + nSize, '[')));
    m_setEntry.reserve(static_cast<std::size_t>(std::count(pText, pText + nSize, '=')));
    std::size_t nAt = 0;
    // Sections and entries are counted in 32 bits; a file with more lines
    // than that is indexed up to there.
    const std::size_t kMaxAmount = INT_MAX;
    while (nAt < nSize && m_setSection.size() < kMaxAmount && m_setEntry.size() < kMaxAmount) {
        std::size_t nEnd = nAt;
        while (nEnd < nSize && pText[nEnd] != '\n' && pText[nEnd] != '\r')
            ++nEnd;
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
        const bool bComment =
            nFirst == nEnd || pText[nFirst] == ';' || (pText[nFirst] == '/' && nFirst + 1 < nEnd && pText[nFirst + 1] == '/');
        if (!bComment && pText[nFirst] == '[') {
            const char* pClose = static_cast<const char*>(std::memchr(pText + nFirst, ']', nEnd - nFirst));
            const std::size_t nClose = pClose != nullptr ? static_cast<std::size_t>(pClose - pText) : nEnd;
            m_setSection.push_back(Section{trimmed(nFirst + 1, nClose), static_cast<uint32_t>(m_setEntry.size()), 0, 0, false});
        } else if (!bComment && !m_setSection.empty()) {
            const char* pEqual = static_cast<const char*>(std::memchr(pText + nFirst, '=', nEnd - nFirst));
            if (pEqual != nullptr) {
                const std::size_t nEqual = static_cast<std::size_t>(pEqual - pText);
                const std::string_view key = trimmed(nFirst, nEqual);
                const std::string_view value = trimmed(nEqual + 1, nEnd);
                m_setEntry.push_back(Entry{key, value});
                ++m_setSection.back().nAmount;
            }
        }
        for (std::size_t i = 0; i < nTerminators; ++i)
            if (setTerminator[i] < nSize)
                pText[setTerminator[i]] = '\0';
        nAt = nEnd + 1;
    }

    m_setKeyHash.resize(m_setEntry.size());
    for (std::size_t i = 0; i < m_setEntry.size(); ++i)
        m_setKeyHash[i] = HashNoCase(m_setEntry[i].key);
    // Long sections also get their (hash, entry) pairs sorted, so that a
    // lookup in them stays a binary search.
    for (Section& section : m_setSection) {
        if (section.nAmount <= kLinearKeyAmount) {
            section.bUniqueKeys = KeysUnique(section);
            continue;
        }
        section.nHashFirst = static_cast<uint32_t>(m_setHashSorted.size());
        for (uint32_t n = section.nFirst; n < section.nFirst + section.nAmount; ++n)
            m_setHashSorted.push_back(static_cast<uint64_t>(m_setKeyHash[n]) << 32 | n);
        std::sort(m_setHashSorted.begin() + section.nHashFirst, m_setHashSorted.end());
    }
    m_setTitleSorted.resize(m_setSection.size());
    for (std::size_t i = 0; i < m_setTitleSorted.size(); ++i)
        m_setTitleSorted[i] = static_cast<uint32_t>(i);
    std::stable_sort(m_setTitleSorted.begin(), m_setTitleSorted.end(), [this](uint32_t a, uint32_t b) {
        return CompareNoCase(m_setSection[a].title, m_setSection[b].title) < 0;
    });
}

std::string_view CIniSectionReader::GetTitle(int nSection) const
{
    if (nSection < 0 || nSection >= GetSectionAmount())
        return std::string_view("", 0);
    return m_setSection[static_cast<std::size_t>(nSection)].title;
}

int CIniSectionReader::FindSection(const char* szTitle) const
{
    if (szTitle == nullptr)
        return -1;
    const std::string_view title(szTitle);
    auto it = std::lower_bound(m_setTitleSorted.begin(), m_setTitleSorted.end(), title,
                               [this](uint32_t n, std::string_view wanted) {
                                   return CompareNoCase(m_setSection[n].title, wanted) < 0;
                               });
    if (it == m_setTitleSorted.end() || CompareNoCase(m_setSection[*it].title, title) != 0)
        return -1;
    return static_cast<int>(*it);
}

int CIniSectionReader::GetKeyAmount(int nSection) const
{
    if (nSection < 0 || nSection >= GetSectionAmount())
        return 0;
    return static_cast<int>(m_setSection[static_cast<std::size_t>(nSection)].nAmount);
}

std::string_view CIniSectionReader::GetKeyAt(int nSection, int nKey) const
{
    if (nKey < 0 || nKey >= GetKeyAmount(nSection))
        return std::string_view("", 0);
    return m_setEntry[m_setSection[static_cast<std::size_t>(nSection)].nFirst + static_cast<uint32_t>(nKey)].key;
}

std::string_view CIniSectionReader::GetValueAt(int nSection, int nKey) const
{
    if (nKey < 0 || nKey >= GetKeyAmount(nSection))
        return std::string_view("", 0);
    return m_setEntry[m_setSection[static_cast<std::size_t>(nSection)].nFirst + static_cast<uint32_t>(nKey)].value;
}

bool CIniSectionReader::GetValue(int nSection, const char* szKey, std::string_view& value) const
{
    if (szKey == nullptr || nSection < 0 || nSection >= GetSectionAmount())
        return false;
    const Section& section = m_setSection[static_cast<std::size_t>(nSection)];
    const std::string_view key(szKey);
    const uint32_t nHash = HashNoCase(key);
    if (section.nAmount > kLinearKeyAmount) {
        // Pairs of one hash are in file order: the first equal key is the first occurrence.
        const auto first = m_setHashSorted.begin() + section.nHashFirst;
        const auto last = first + section.nAmount;
        for (auto it = std::lower_bound(first, last, static_cast<uint64_t>(nHash) << 32);
             it != last && static_cast<uint32_t>(*it >> 32) == nHash; ++it) {
            const uint32_t n = static_cast<uint32_t>(*it);
            if (EqualNoCase(m_setEntry[n].key, key)) {
                value = m_setEntry[n].value;
                return true;
            }
        }
        return false;
    }
    // A short section is walked over its hashes. Tables read keys mostly in
    // the file's order, so the walk starts after the last hit; that is safe
    // only where no key occurs twice (else the first occurrence must win).
    const uint32_t nEnd = section.nFirst + section.nAmount;
    uint32_t nStart = section.nFirst;
    if (section.bUniqueKeys && m_nHint > section.nFirst && m_nHint < nEnd)
        nStart = m_nHint;
    for (uint32_t i = 0; i < section.nAmount; ++i) {
        uint32_t n = nStart + i;
        if (n >= nEnd)
            n -= section.nAmount;
        if (m_setKeyHash[n] == nHash && EqualNoCase(m_setEntry[n].key, key)) {
            m_nHint = n + 1;
            value = m_setEntry[n].value;
            return true;
        }
    }
    return false;
}

// Whether no two keys of a short section are equal without regard to case.
bool CIniSectionReader::KeysUnique(const Section& section) const
{
    uint64_t nSeen[4] = {};  // a filter on the hash's low bits
    for (uint32_t n = section.nFirst; n < section.nFirst + section.nAmount; ++n) {
        const uint32_t nBit = m_setKeyHash[n] & 255;
        if (nSeen[nBit >> 6] & (uint64_t(1) << (nBit & 63))) {
            for (uint32_t k = section.nFirst; k < n; ++k)
                if (m_setKeyHash[k] == m_setKeyHash[n] && EqualNoCase(m_setEntry[k].key, m_setEntry[n].key))
                    return false;
        }
        nSeen[nBit >> 6] |= uint64_t(1) << (nBit & 63);
    }
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

bool CIniSectionReader::ReadInt(int nSection, const char* szKey, int& nValue) const
{
    std::string_view value;
    if (!GetValue(nSection, szKey, value))
        return false;
    nValue = CrtAtoi(value.data());
    return true;
}

int CIniSectionReader::GetInt(int nSection, const char* szKey, int nDefault) const
{
    int nValue = nDefault;
    ReadInt(nSection, szKey, nValue);
    return nValue;
}

// The line-wise lookup.

namespace {

// One line as the line-wise lookup takes it, from a source of bytes with
// Get() and AtEnd(): cut to nOutSize - 1 (and false) when it does not fit,
// the line feed and a carriage return before it dropped.
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

// The lookup over the lines that nextLine(szLine, nSize) gives, one after
// another, as MemIniReadLine does.
template <class NextLine>
int IniLinesValueGet(NextLine nextLine, const char* szTitle, const char* szSubtitle, const IniValueTarget& target,
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
        if (IniSectionBracketsHold(szLine))
            break;
        if (IniPatternScan(szLine, szKey, target) != SCAN_NO_MATCH)
            return 1;
    }
    char szMessage[1024];
    SafeSprintf(szMessage, sizeof(szMessage), "Error: [%s] %s not found in %s.", szTitle, szSubtitle, szCaller);
    IniNotFoundReport(bLogFile, szMessage);
    return 0;
}

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

int MemIniValueGet(const char* pImage, unsigned nLength, const char* szTitle, const char* szSubtitle,
                   const IniValueTarget& target, int bLogFile, const char* szCaller)
{
    unsigned nPos = 0;
    const auto nextLine = [&](char* szLine, unsigned nSize) {
        return MemIniReadLine(pImage, nLength, &nPos, szLine, nSize);
    };
    return IniLinesValueGet(nextLine, szTitle, szSubtitle, target, bLogFile, szCaller);
}

int FileIniValueGet(const char* szPath, const char* szTitle, const char* szSubtitle, const IniValueTarget& target,
                    int bLogFile, const char* szCaller)
{
    // Read as a stream: a lookup costs one buffer, however large the file.
    CFileStream stream;
    if (!stream.Open(szPath))
        return 0;
    const auto nextLine = [&](char* szLine, unsigned nSize) { return StreamIniReadLine(stream, szLine, nSize); };
    return IniLinesValueGet(nextLine, szTitle, szSubtitle, target, bLogFile, szCaller);
}
