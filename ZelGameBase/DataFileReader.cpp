#include "ZelGameBase/DataFileReader.h"

#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/FileStream.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCrt.h"

namespace {
constexpr int kLineBufferSize = 2048;
}

const char* CDataRow::GetStr(int nIndex, const char* szDefault) const
{
    if (nIndex < 0 || nIndex >= GetFieldAmount())
        return szDefault;
    return m_setField[static_cast<std::size_t>(nIndex)].c_str();
}

int CDataRow::GetInt(int nIndex, int nDefault) const
{
    if (nIndex < 0 || nIndex >= GetFieldAmount())
        return nDefault;
    return CrtAtoi(m_setField[static_cast<std::size_t>(nIndex)].c_str());
}

void CDataRow::Split(const char* szLine, char cSeparator)
{
    const char* pStart = szLine;
    for (const char* p = szLine;; ++p) {
        if (*p == cSeparator || *p == '\0') {
            m_setField.emplace_back(pStart, static_cast<std::size_t>(p - pStart));
            if (*p == '\0')
                break;
            pStart = p + 1;
        }
    }
}

void CDataFileReader::Close()
{
    m_strImage.clear();
    m_strImage.shrink_to_fit();
    m_nPosition = 0;
    m_setRow.clear();
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
    ReadRecords(
        [&stream](char* szLine, int nSize) {
            const uint64_t nBefore = stream.GetPosition();
            return stream.ReadLine(szLine, nSize) ? static_cast<std::size_t>(stream.GetPosition() - nBefore) : 0;
        },
        cSeparator);
    return true;
}

void CDataFileReader::OpenImage(std::string&& strImage, char cSeparator)
{
    Close();
    m_strImage = std::move(strImage);
    ReadImage(cSeparator);
}

template <class NextPiece>
void CDataFileReader::ReadRecords(NextPiece&& nextPiece, char cSeparator)
{
    char szLine[kLineBufferSize] = {};
    int nLine = 1;  // where the piece at hand comes from
    std::size_t nTaken;
    while ((nTaken = nextPiece(szLine, kLineBufferSize)) > 0) {
        // A piece ends at a line feed or where the buffer is full: then the
        // next piece goes on with the same line.
        const bool bLineEnds = szLine[nTaken - 1] == '\n';
        if (!AddLine(szLine, cSeparator, nLine))
            break;
        if (bLineEnds && nLine < INT_MAX)
            ++nLine;
    }
}

// Splits the image into records; only the records stay.
void CDataFileReader::ReadImage(char cSeparator)
{
    ReadRecords([this](char* szLine, int nSize) { return ReadImageLine(szLine, nSize); }, cSeparator);
    m_strImage.clear();
    m_strImage.shrink_to_fit();
}

// One piece of at most nSize - 1 characters, ending after its line feed.
std::size_t CDataFileReader::ReadImageLine(char* szLine, int nSize)
{
    std::memset(szLine, 0, static_cast<std::size_t>(nSize));
    int nCopied = 0;
    while (nCopied < nSize - 1 && m_nPosition < m_strImage.size()) {
        const char c = m_strImage[m_nPosition++];
        szLine[nCopied++] = c;
        if (c == '\n')
            break;
    }
    return static_cast<std::size_t>(nCopied);
}

bool CDataFileReader::AddLine(char* szLine, char cSeparator, int nLine)
{
    if (m_nRecordLimit >= 0 && m_setRow.size() >= static_cast<std::size_t>(m_nRecordLimit))
        return false;
    const char cFirst = szLine[0];
    if (cFirst == '\0' || cFirst == ';' || cFirst == '\n' || cFirst == '\r')
        return true;
    if (cFirst == '/' && szLine[1] == '/')
        return true;
    std::size_t nLength = std::strlen(szLine);
    if (nLength > 0 && szLine[nLength - 1] == '\n')
        szLine[--nLength] = '\0';
    if (nLength > 0 && szLine[nLength - 1] == '\r')
        szLine[--nLength] = '\0';
    if (nLength == 0)
        return true;
    // The row count is an int to the tables.
    if (m_setRow.size() >= static_cast<std::size_t>(INT_MAX))
        return false;
    return AllocationTry([&] {
        auto pRow = std::make_unique<CDataRow>();
        pRow->Split(szLine, cSeparator);
        pRow->m_nLine = nLine;
        m_setRow.push_back(std::move(pRow));
    });
}

const CDataRow* CDataFileReader::GetRecord(int nIndex) const
{
    if (nIndex < 0 || nIndex >= GetRecordAmount())
        return nullptr;
    return m_setRow[static_cast<std::size_t>(nIndex)].get();
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
