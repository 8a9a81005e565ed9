// The in-memory ini reader, in two forms over one line reader:
//
// CIniSectionReader, which tables use for sectioned ini files: Open reads the
// file once and indexes it, the sections in file order (a title that occurs
// twice gives two sections, both kept) and, inside each section, its
// "key=value" lines with the line number of each. Keys compare without
// regard to ASCII case; blanks around key and value are trimmed; the value is
// the whole rest of the line after the first "=" (texts with blanks
// survive); the first occurrence of a key in a section wins. Lines beginning
// with ";" or "//" are comments; lines before the first section are ignored.
// A section header is a line whose first non-blank character is "[", its
// title running to the first "]". A line ends at a line feed, a carriage
// return and line feed (one line break), or a lone carriage return.
//
// The line-wise lookup behind MemIniStrGet / MemIniDataGet / FileIni*
// (ZelCommon.h), which finds one value by reading lines up to it, without an
// index, under the rules documented there.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class CFileStream;
struct IniValueTarget;

class CIniSectionReader {
public:
    // nFlag 0 reads the file as a stream, 1 as one whole-file image; the
    // results are identical. False (and empty) when the file cannot be read
    // (only a regular file is read, up to its size at open) or its index
    // does not fit in memory.
    bool Open(const char* szPath, int nFlag);
    // Indexes a text already in memory.
    void OpenText(std::string&& strText);
    void Close();

    int GetSectionAmount() const { return static_cast<int>(m_setSection.size()); }
    // Titles, keys and values are views into the reader's own copy of the
    // file, each followed by a terminator, so data() is a C string. They stay
    // valid until Open, OpenText or Close.
    // The title of section nSection, without brackets and trimmed.
    std::string_view GetTitle(int nSection) const;
    // The 1-based line of the section's header; 0 out of range.
    int GetTitleLine(int nSection) const;

    // The key lines of a section in file order (duplicates included).
    int GetKeyAmount(int nSection) const;
    std::string_view GetKeyAt(int nSection, int nKey) const;
    std::string_view GetValueAt(int nSection, int nKey) const;
    // The 1-based line of the key line; 0 out of range.
    int GetKeyLine(int nSection, int nKey) const;
    // The position (0 .. GetKeyAmount - 1) of the first key of nSection equal
    // to szKey without regard to ASCII case; -1 when absent, for a null key
    // or a section out of range. Walks the section's keys: a reader of many
    // keys walks the section once with GetKeyAt instead.
    int FindKey(int nSection, const char* szKey) const;

    // The value of szKey in nSection; false when absent (out stays as it was).
    bool GetValue(int nSection, const char* szKey, std::string_view& value) const;
    // Copies the value into szOut, cut to nSize - 1 characters.
    bool GetText(int nSection, const char* szKey, char* szOut, int nSize) const;
    // The value through atoi; nDefault when absent.
    int GetInt(int nSection, const char* szKey, int nDefault) const;

private:
    struct Entry {
        std::string_view key;
        std::string_view value;
        uint32_t nLine;
    };
    struct Section {
        std::string_view title;
        uint32_t nFirst;   // first entry, file order
        uint32_t nAmount;  // entries in the section
        uint32_t nLine;    // of the header
    };

    bool IndexText(std::string&& strText);
    void Index();
    // Null out of range.
    const Entry* EntryAt(int nSection, int nKey) const;

    std::string m_strText;
    std::vector<Section> m_setSection;
    std::vector<Entry> m_setEntry;
};

// The line-wise lookup of [szTitle] szSubtitle=<value>: MemIniValueGet over
// an image of nLength bytes, FileIniValueGet over the file at szPath read as
// a stream through one buffer (0 without a message when it cannot be read).
// The value converts into target; szCaller names the function in the "not
// found" message. The caller has checked its arguments.
int MemIniValueGet(const char* pImage, unsigned nLength, const char* szTitle, const char* szSubtitle,
                   const IniValueTarget& target, int bLogFile, const char* szCaller);
int FileIniValueGet(const char* szPath, const char* szTitle, const char* szSubtitle, const IniValueTarget& target,
                    int bLogFile, const char* szCaller);

// The line reader of the line-wise lookup: copies the line at *pPos into
// szOut (nOutSize bytes), advancing *pPos, and terminates it over its last
// byte (the line feed, or the last real character of an unterminated last
// line), then drops a carriage return before it. False at the end of the
// image or when the line did not fit.
bool MemIniReadLine(const char* pImage, unsigned nLength, unsigned* pPos, char* szOut, unsigned nOutSize);
// MemIniReadLine over a stream: the same line from the same bytes, the end of
// the image being the end of the file.
bool StreamIniReadLine(CFileStream& stream, char* szOut, unsigned nOutSize);
