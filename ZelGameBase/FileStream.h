// A data file read front to back through a fixed buffer: the stream readers
// (column files in stream mode, the token-wise ini reader, the text
// resources, the font list) hold one buffer of the file at a time, whatever
// its size. The file opens as CPlatformFile does: only a regular file, read
// up to its size at open.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "ZelGameBase/Platform/Platform.h"

class CFileStream {
public:
    CFileStream() = default;
    CFileStream(const CFileStream&) = delete;
    CFileStream& operator=(const CFileStream&) = delete;

    // False when the file cannot be opened (see CPlatformFile::Open).
    bool Open(const char* szPath);
    void Close();

    // The next byte (0-255), or -1 at the end (a read error ends the stream
    // as the end does).
    int Get() { return m_nAt < m_nFilled || Fill() ? m_setBuffer[m_nAt++] : -1; }
    // The next byte without taking it; -1 at the end.
    int Peek() { return m_nAt < m_nFilled || Fill() ? m_setBuffer[m_nAt] : -1; }
    bool AtEnd() { return Peek() < 0; }
    // Bytes taken so far.
    uint64_t GetPosition() const { return m_nBase + m_nAt; }

    // fgets: copies bytes up to and including a line feed, or nSize - 1 of
    // them, and terminates. False when nothing was left to read.
    bool ReadLine(char* szLine, int nSize);

private:
    // Refills the buffer once it is used up; false at the end.
    bool Fill();

    CPlatformFile m_file;
    uint64_t m_nBase = 0;       // file position of m_setBuffer[0]
    std::size_t m_nAt = 0;      // next byte in the buffer
    std::size_t m_nFilled = 0;  // bytes in the buffer
    unsigned char m_setBuffer[16384];
};

// How far FileStreamReadAll got.
enum FileReadResult { FILE_READ_NOT_OPENED, FILE_READ_CUT, FILE_READ_WHOLE };
// Reads the file front to back, one buffer at a time, into strText (up to its
// size at open). FILE_READ_CUT when a read error or a lack of memory stopped
// it: strText then holds the bytes read before.
FileReadResult FileStreamReadAll(const char* szPath, std::string& strText);
