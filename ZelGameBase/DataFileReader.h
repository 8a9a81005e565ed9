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

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ZelGameBase/ZelGameBase.h"

class CFileStream;

class CDataRow {
public:
    CDataRow() = default;
    CDataRow(const CDataRow&) = default;
    CDataRow(CDataRow&&) noexcept = default;
    CDataRow& operator=(const CDataRow&) = default;
    CDataRow& operator=(CDataRow&&) noexcept = default;
    virtual ~CDataRow() = default;

    int GetFieldAmount() const { return m_nFieldAmount; }
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

    // The text of a row split on its own, outside a reader: its fields one
    // after the other, each terminated.
    struct OwnText {
        std::string strText;
        std::vector<uint32_t> setOffset;
    };

    // The fields stand terminated in place in the reader's image (or in the
    // row's own text), each at an offset from the row's text, so that a row
    // costs no allocation of its own and its field list four bytes a field.
    const char* m_pText = nullptr;
    const uint32_t* m_pOffset = nullptr;
    int m_nFieldAmount = 0;
    int m_nLine = 0;
    std::size_t m_nFirstField = 0;  // in the reader's offset list, until the rows are linked
    std::shared_ptr<const OwnText> m_pOwn;
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
    // Splits the image into records in place, in one pass.
    void ReadImage(char cSeparator);
    // Reads the file a buffer at a time, copying only the records' lines.
    void ReadStream(CFileStream& stream, char cSeparator);
    // One piece of a line: nTaken bytes at pPiece. bInPlace when the piece
    // lies in the image, where its records' fields can stay; bCut when the
    // piece ends where the buffer of a line is full, with the line going on
    // in the next piece. False when the reading has to stop: the limit is
    // reached or memory ran out.
    bool AddPiece(char* pPiece, std::size_t nTaken, bool bInPlace, bool bCut, char cSeparator, int nLine);
    // A copy of nLength bytes and a terminator, valid until Close.
    char* TextCopy(const char* pText, std::size_t nLength);
    // A record of the nLength bytes at pText, which may be overwritten, and
    // the byte after them.
    void AddRecord(char* pText, std::size_t nLength, char cSeparator, int nLine);
    // Points every row at its fields, once the field list stops growing.
    void RowsLink();

    std::string m_strImage;
    int m_nRecordLimit = -1;
    bool m_bErrorReport = true;
    std::vector<CDataRow> m_setRow;
    std::vector<uint32_t> m_setField;  // every row's field offsets, in file order
    // The lines read as a stream and the pieces cut off in the middle of a
    // line (with no byte after them to terminate them in place), copied into
    // blocks that never move.
    std::vector<std::unique_ptr<char[]>> m_setTextBlock;
    std::size_t m_nBlockUsed = 0;
};
