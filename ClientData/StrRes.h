// The id-to-text resource: lines "id=text" from files the client names.
#pragma once

#include <cstdint>
#include <map>
#include <string>

class CStrRes {
public:
    // Initialises the process-wide lock of the miss path.
    CStrRes();
    // Deletes it.
    ~CStrRes();
    CStrRes(const CStrRes&) = delete;
    CStrRes& operator=(const CStrRes&) = delete;

    // Adds the file's lines to the table, overriding earlier texts of the same
    // id. Pieces of at most 1023 characters count as lines; one trailing line
    // feed is removed (a carriage return before it stays); lines starting with
    // ";" or holding no "=" are skipped; the id is atoi of what stands before
    // the first "=", the text is the whole rest. A missing file logs
    // "can't open file:%s" and changes nothing; so does a file that is no
    // regular file. The file is read up to its size when opened.
    void Load(const char* szPath);
    // The text of nId, or the empty text. Valid until the next Load.
    const char* Get(uint32_t nId) const;

    std::size_t GetAmount() const { return m_mapText.size(); }
    const std::map<uint32_t, std::string>& Texts() const { return m_mapText; }

private:
    std::map<uint32_t, std::string> m_mapText;
};
