// The column data-file reader: a text file of one record a line, fields split
// at one separator character. The reader reads the file whole on Open, keeps
// every accepted line as a CDataRow of text fields, and the table picks fields
// by index. Lines that are empty, begin with ";", a line feed, a carriage
// return or "//" are dropped; fields are never trimmed; two separators in a
// row give an empty field. Lines longer than 2047 characters arrive in pieces,
// each read as a line of its own. Only a line feed ends a line: a carriage
// return before it is part of the break, a lone one part of the line. Every
// line counts in the rows' line numbers, dropped ones included.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ZelGameBase/ZelGameBase.h"

class CDataRow {
public:
    virtual ~CDataRow() = default;

    int GetFieldAmount() const { return static_cast<int>(m_setField.size()); }
    // The field's text; szDefault when nIndex is out of range. Valid while the
    // row lives.
    const char* GetStr(int nIndex, const char* szDefault) const;
    // The field through atoi (0 for empty or non-numeric); nDefault out of range.
    int GetInt(int nIndex, int nDefault) const;

    // The 1-based line of the file on which the row's text stands (a piece
    // of a long line: the line it came from); 0 for a row not read from a
    // file.
    int GetLine() const { return m_nLine; }

    // Splits szLine at every cSeparator; the text after the last one is the
    // last field (possibly empty).
    void Split(const char* szLine, char cSeparator);

private:
    friend class CDataFileReader;

    std::vector<std::string> m_setField;
    int m_nLine = 0;
};

class CDataFileReader {
public:
    CDataFileReader() = default;
    CDataFileReader(const CDataFileReader&) = delete;
    CDataFileReader& operator=(const CDataFileReader&) = delete;

    // Reads szName (relative to the working directory) in nMode 0 (stream) or
    // 1 (whole-file image); both give the same records. False with no records
    // when the file cannot be opened or, in mode 1, read whole; nothing is
    // logged (the caller logs). Only a regular file opens, read up to its
    // size at open. Running out of memory ends the reading: the records read
    // so far stay and Open still returns true.
    bool Open(const char* szName, int nMode, char cSeparator);
    // Reads the records of a file image already in memory, as mode 1 does.
    void OpenImage(std::string&& strImage, char cSeparator);
    // Drops the source and every record.
    void Close();
    // Open stops reading after nLimit records (a negative limit, the default,
    // reads every line): for callers that use only the first lines.
    void SetRecordLimit(int nLimit) { m_nRecordLimit = nLimit; }

    int GetRecordAmount() const { return static_cast<int>(m_setRow.size()); }
    // The row at nIndex in file order, null out of range. Valid while the
    // reader lives.
    const CDataRow* GetRecord(int nIndex) const;

    // The reader's own log entry (2048-byte message buffer), written only when
    // the error-reporting flag is set.
    void LogSave(const char* szFormat, ...) ZEL_PRINTF_FORMAT(2, 3);
    void SetErrorReport(bool bReport) { m_bErrorReport = bReport; }

private:
    void ReadImage(char cSeparator);
    // The bytes taken into szLine, 0 at the end of the image.
    std::size_t ReadImageLine(char* szLine, int nSize);
    // Adds a record for each piece that nextPiece(szLine, nSize) gives (the
    // bytes it took, 0 at the end), numbering the lines they come from.
    template <class NextPiece>
    void ReadRecords(NextPiece&& nextPiece, char cSeparator);
    // False when the reading has to stop: the limit is reached or memory ran out.
    bool AddLine(char* szLine, char cSeparator, int nLine);

    std::string m_strImage;       // mode 1
    std::size_t m_nPosition = 0;  // mode 1 read position
    int m_nRecordLimit = -1;
    bool m_bErrorReport = true;
    std::vector<std::unique_ptr<CDataRow>> m_setRow;
};
