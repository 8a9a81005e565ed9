// The sample-data generator: writes a complete client data folder, the same
// bytes for the same options on every machine. Every file comes from the
// catalogue and the tables' descriptions: keys, columns and the values each
// field takes. A table whose file has a shape the description does not state
// (lines that are commands, sections that address another file's records)
// registers a shape of its own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ClientData/Catalogue.h"

// The generator's own random sequence, independent of the C library.
class CDataRng {
public:
    explicit CDataRng(uint32_t nSeed) : m_nState(nSeed) {}
    uint32_t Next()
    {
        m_nState = m_nState * 1664525u + 1013904223u;
        return m_nState >> 8;
    }
    // A number in [nLow, nHigh].
    int64_t Range(int64_t nLow, int64_t nHigh)
    {
        const uint64_t nSpan = static_cast<uint64_t>(nHigh - nLow) + 1;
        const uint64_t nDraw = (static_cast<uint64_t>(Next()) << 24) ^ Next();
        return nLow + static_cast<int64_t>(nSpan == 0 ? nDraw : nDraw % nSpan);
    }
    bool Chance(int nPercent) { return Range(1, 100) <= nPercent; }

private:
    uint32_t m_nState;
};

struct GenOptions {
    std::string strRoot;   // the data folder written
    int nScale = 1;        // 1: the bundled sample; 10: the benchmark set
    bool bFaulty = false;  // plant faults that the loaders report
};

class CGenContext {
public:
    explicit CGenContext(const GenOptions& options) : m_options(options), m_rng(20110307u) {}

    int Scale() const { return m_options.nScale; }
    bool Faulty() const { return m_options.bFaulty; }
    CDataRng& Rng() { return m_rng; }
    // Every file draws from a sequence of its own, so that one file's change
    // leaves the others as they were.
    void Reseed(int nSlot, int nVariant) { m_rng = CDataRng(static_cast<uint32_t>(nSlot * 7919 + nVariant * 104729)); }

    // A name of nChars GBK characters (two bytes each).
    std::string GbkName(int nChars);
    // A value for a field as its file writes it: a number in its range, a
    // text by its pattern, a colour in hexadecimal.
    std::string Value(const FieldDesc& field);
    // Writes a file below the root, creating folders. With bCrLf every "\n"
    // is written as "\r\n". After the first failure nothing more is written.
    void Write(const std::string& strPath, const std::string& strText, bool bCrLf = false);
    // The first write that failed, as a message; empty while all went well.
    const std::string& Failure() const { return m_strFailure; }

private:
    GenOptions m_options;
    CDataRng m_rng;
    std::string m_strFailure;
};

// The "|"-separated words of a pattern.
std::vector<std::string> PatternWords(const char* szPattern);

// The title of record n of a field that counts from nLow: its pattern with
// the number, or the number alone.
std::string TitleOf(const FieldDesc& field, int64_t nNumber);

// The records of a table in one file: nVariant 0 is the standard set, 1 the
// alternative one under "ini/200/".
struct GenFile {
    const CatalogueEntry& entry;
    std::string strPath;
    int nVariant;
    int nRecords;  // records the scale asks for
};

// Writes a described table's file as its kind lays it out (sections,
// columns or settings), with the planted faults of a faulty set.
void DescribedFileWrite(CGenContext& context, const GenFile& file);
// Writes a generic table's file: numbered sections of key=value lines, or
// blank-separated columns, as its catalogue kind says.
void GenericFileWrite(CGenContext& context, const GenFile& file);
// The field a record's title (or key column) comes from; null when none.
const FieldDesc* TitleFieldOf(const RecordDesc& desc);
// One line of a column file: the title fields take setKey's words in order
// (the last one repeated), every other field of the file a drawn value
// ("NULL" for an empty text, which would move the words after it). With
// bLongText the first text is longer than its buffer.
std::string ColumnLineText(CGenContext& context, const RecordDesc& desc, const std::vector<std::string>& setKey,
                           bool bLongText);
// The text of one section of a described record, its fields drawn.
std::string SectionText(CGenContext& context, const RecordDesc& desc, const std::string& strTitle);

using ShapeFn = void (*)(CGenContext& context, const GenFile& file);
// A table whose file the description alone does not lay out.
struct ShapeRegistration {
    ShapeRegistration(int nSlot, ShapeFn fn);
};
// The shape of a slot; null when the description says it all.
ShapeFn ShapeOf(int nSlot);
