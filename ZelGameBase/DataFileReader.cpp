#include "ZelGameBase/DataFileReader.h"

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/ByteCount.h"
#include "ZelGameBase/FileStream.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCrt.h"

namespace {
constexpr int kLineBufferSize = 2048;
// Copied lines go into blocks of this size, each holding many lines.
constexpr std::size_t kTextBlockSize = 64 * 1024;
}

const char* CDataRow::GetStr(int nIndex, const char* szDefault) const
{
    if (nIndex < 0 || nIndex >= m_nFieldAmount)
        return szDefault;
    return m_pText + m_pOffset[nIndex];
}

int CDataRow::GetInt(int nIndex, int nDefault) const
{
    if (nIndex < 0 || nIndex >= m_nFieldAmount)
        return nDefault;
    return CrtAtoi(m_pText + m_pOffset[nIndex]);
}

void CDataRow::Split(const char* szLine, char cSeparator)
{
    // The row's fields so far stay, copied into a text of its own with the new ones.
    auto pOwn = std::make_shared<OwnText>();
    for (int i = 0; i < m_nFieldAmount; ++i) {
        pOwn->setOffset.push_back(static_cast<uint32_t>(pOwn->strText.size()));
        pOwn->strText.append(GetStr(i, ""));
        pOwn->strText.push_back('\0');
    }
    pOwn->setOffset.push_back(static_cast<uint32_t>(pOwn->strText.size()));
    for (const char* p = szLine; *p != '\0'; ++p) {
        const bool bSeparator = *p == cSeparator;
        pOwn->strText.push_back(bSeparator ? '\0' : *p);
        if (bSeparator)
            pOwn->setOffset.push_back(static_cast<uint32_t>(pOwn->strText.size()));
    }
    m_pText = pOwn->strText.c_str();
    m_pOffset = pOwn->setOffset.data();
    m_nFieldAmount = static_cast<int>(pOwn->setOffset.size());
    m_pOwn = std::move(pOwn);
}

void CDataFileReader::Close()
{
    m_strImage.clear();
    m_strImage.shrink_to_fit();
    m_setRow.clear();
    m_setRow.shrink_to_fit();
    m_setField.clear();
    m_setField.shrink_to_fit();
    m_setTextBlock.clear();
    m_nBlockUsed = 0;
}

bool CDataFileReader::Open(const char* szName, int nMode, char cSeparator)
{
    Close();
    if (nMode == 1) {
        if (!PlatformReadFile(szName, m_strImage))
            return false;
        ReadImage(cSeparator);
        return true;
    }
    if (nMode != 0)
        return false;
    CFileStream stream;
    if (!stream.Open(szName))
        return false;
    ReadStream(stream, cSeparator);
    return true;
}

void CDataFileReader::OpenImage(std::string&& strImage, char cSeparator)
{
    Close();
    m_strImage = std::move(strImage);
    ReadImage(cSeparator);
}

void CDataFileReader::ReadImage(char cSeparator)
{
    char* pText = m_strImage.data();
    const std::size_t nSize = m_strImage.size();
    // A line per line feed and a field per separator, and one more of each:
    // reserved up front, so the lists never regrow. Without the memory for
    // it they grow as they go.
    const ByteCounts counts = BytesCount(pText, nSize, '\n', cSeparator);
    const uint32_t nFeeds = counts.nFirst;
    const uint32_t nSeparators = cSeparator == '\n' ? 0 : counts.nSecond;
    AllocationTry([&] {
        m_setRow.reserve(std::size_t{nFeeds} + 1);
        m_setField.reserve(std::size_t{nSeparators} + nFeeds + 1);
    });
    int nLine = 1;  // where the piece at hand comes from
    for (std::size_t nAt = 0; nAt < nSize;) {
        // A piece ends after a line feed, or where a line buffer of
        // kLineBufferSize bytes is full: then the next piece goes on with
        // the same line.
        const std::size_t nRoom = std::min(nSize - nAt, static_cast<std::size_t>(kLineBufferSize - 1));
        const void* pFeed = std::memchr(pText + nAt, '\n', nRoom);
        const std::size_t nTaken =
            pFeed != nullptr ? static_cast<std::size_t>(static_cast<const char*>(pFeed) - (pText + nAt)) + 1 : nRoom;
        const bool bLineEnds = pText[nAt + nTaken - 1] == '\n';
        const bool bCut = !bLineEnds && nAt + nTaken < nSize;
        if (!AddPiece(pText + nAt, nTaken, true, bCut, cSeparator, nLine))
            break;
        nAt += nTaken;
        if (bLineEnds && nLine < INT_MAX)
            ++nLine;
    }
    RowsLink();
}

void CDataFileReader::ReadStream(CFileStream& stream, char cSeparator)
{
    char szLine[kLineBufferSize] = {};
    int nLine = 1;  // where the piece at hand comes from
    for (;;) {
        const uint64_t nBefore = stream.GetPosition();
        if (!stream.ReadLine(szLine, kLineBufferSize))
            break;
        const std::size_t nTaken = static_cast<std::size_t>(stream.GetPosition() - nBefore);
        const bool bLineEnds = szLine[nTaken - 1] == '\n';
        if (!AddPiece(szLine, nTaken, false, !bLineEnds, cSeparator, nLine))
            break;
        if (bLineEnds && nLine < INT_MAX)
            ++nLine;
    }
    RowsLink();
}

char* CDataFileReader::TextCopy(const char* pText, std::size_t nLength)
{
    if (m_setTextBlock.empty() || kTextBlockSize - m_nBlockUsed < nLength + 1) {
        m_setTextBlock.push_back(std::make_unique<char[]>(std::max(kTextBlockSize, nLength + 1)));
        m_nBlockUsed = 0;
    }
    char* pCopy = m_setTextBlock.back().get() + m_nBlockUsed;
    std::memcpy(pCopy, pText, nLength);
    pCopy[nLength] = '\0';
    m_nBlockUsed += nLength + 1;
    return pCopy;
}

bool CDataFileReader::AddPiece(char* pPiece, std::size_t nTaken, bool bInPlace, bool bCut, char cSeparator,
                               int nLine)
{
    if (m_nRecordLimit >= 0 && m_setRow.size() >= static_cast<std::size_t>(m_nRecordLimit))
        return false;
    const char cFirst = pPiece[0];
    if (cFirst == '\0' || cFirst == ';' || cFirst == '\n' || cFirst == '\r')
        return true;
    if (cFirst == '/' && nTaken > 1 && pPiece[1] == '/')
        return true;
    // A line ends at its first zero byte, its line break dropped.
    const void* pZero = std::memchr(pPiece, '\0', nTaken);
    std::size_t nLength = pZero != nullptr ? static_cast<std::size_t>(static_cast<const char*>(pZero) - pPiece) : nTaken;
    if (nLength > 0 && pPiece[nLength - 1] == '\n')
        --nLength;
    if (nLength > 0 && pPiece[nLength - 1] == '\r')
        --nLength;
    if (nLength == 0)
        return true;
    // The row count is an int to the tables.
    if (m_setRow.size() >= static_cast<std::size_t>(INT_MAX))
        return false;
    return AllocationTry([&] {
        // A piece read as a stream, or one whose next byte begins the next
        // piece, is copied.
        const bool bCopy = !bInPlace || (bCut && nLength == nTaken);
        AddRecord(bCopy ? TextCopy(pPiece, nLength) : pPiece, nLength, cSeparator, nLine);
    });
}

void CDataFileReader::AddRecord(char* pText, std::size_t nLength, char cSeparator, int nLine)
{
    CDataRow row;
    row.m_pText = pText;
    row.m_nLine = nLine;
    row.m_nFirstField = m_setField.size();
    // Fields are short: a plain walk beats a search call per field. A piece
    // is at most a line buffer long, so every offset fits.
    m_setField.push_back(0);
    for (std::size_t i = 0; i < nLength; ++i) {
        if (pText[i] == cSeparator) {
            pText[i] = '\0';
            m_setField.push_back(static_cast<uint32_t>(i + 1));
        }
    }
    pText[nLength] = '\0';
    row.m_nFieldAmount = static_cast<int>(m_setField.size() - row.m_nFirstField);
    m_setRow.push_back(std::move(row));
}

void CDataFileReader::RowsLink()
{
    for (CDataRow& row : m_setRow)
        row.m_pOffset = m_setField.data() + row.m_nFirstField;
}

const CDataRow* CDataFileReader::GetRecord(int nIndex) const
{
    if (nIndex < 0 || nIndex >= GetRecordAmount())
        return nullptr;
    return &m_setRow[static_cast<std::size_t>(nIndex)];
}

void CDataFileReader::LogSave(const char* szFormat, ...)
{
    if (!m_bErrorReport || szFormat == nullptr)
        return;
    char szMessage[2048] = {};
    va_list args;
    va_start(args, szFormat);
    std::vsnprintf(szMessage, sizeof(szMessage), szFormat, args);
    va_end(args);
    LogWriteEntry(szMessage);
}
