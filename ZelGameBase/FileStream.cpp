#include "ZelGameBase/FileStream.h"

#include <cstring>

#include "ZelGameBase/AllocationTry.h"

bool CFileStream::Open(const char* szPath)
{
    Close();
    return m_file.Open(szPath);
}

void CFileStream::Close()
{
    m_file.Close();
    m_nBase = 0;
    m_nAt = 0;
    m_nFilled = 0;
}

bool CFileStream::Fill()
{
    if (m_nAt < m_nFilled)
        return true;
    m_nBase += m_nFilled;
    m_nAt = 0;
    m_nFilled = 0;
    const int64_t nRead = m_file.Read(m_setBuffer, sizeof(m_setBuffer));
    if (nRead <= 0)
        return false;
    m_nFilled = static_cast<std::size_t>(nRead);
    return true;
}

bool CFileStream::ReadLine(char* szLine, int nSize)
{
    if (szLine == nullptr || nSize <= 0)
        return false;
    std::size_t nCopied = 0;
    const std::size_t nRoom = static_cast<std::size_t>(nSize) - 1;
    bool bEnded = false;
    // Whole runs of the buffer at a time, up to a line feed.
    while (!bEnded && nCopied < nRoom && Fill()) {
        std::size_t nTake = m_nFilled - m_nAt;
        if (nTake > nRoom - nCopied)
            nTake = nRoom - nCopied;
        const void* pFeed = std::memchr(m_setBuffer + m_nAt, '\n', nTake);
        if (pFeed != nullptr) {
            nTake = static_cast<std::size_t>(static_cast<const unsigned char*>(pFeed) - (m_setBuffer + m_nAt)) + 1;
            bEnded = true;
        }
        std::memcpy(szLine + nCopied, m_setBuffer + m_nAt, nTake);
        m_nAt += nTake;
        nCopied += nTake;
    }
    szLine[nCopied] = '\0';
    return nCopied > 0;
}

FileReadResult FileStreamReadAll(const char* szPath, std::string& strText)
{
    strText.clear();
    CPlatformFile file;
    if (!file.Open(szPath))
        return FILE_READ_NOT_OPENED;
    char buffer[16384];
    int64_t nRead;
    bool bOk = true;
    while (bOk && (nRead = file.Read(buffer, sizeof(buffer))) > 0)
        bOk = AllocationTry([&] { strText.append(buffer, static_cast<std::size_t>(nRead)); });
    return bOk && nRead == 0 ? FILE_READ_WHOLE : FILE_READ_CUT;
}
