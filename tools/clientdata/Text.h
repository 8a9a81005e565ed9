// Display helpers: the data's texts are GBK bytes and stay so everywhere in
// the library; only what the tool shows people is converted.
#pragma once

#include <cstddef>
#include <string>

// GB18030 (a superset of GBK) to UTF-8, the whole buffer in one conversion;
// a byte that starts no valid character is shown as \xNN.
std::string GbkToUtf8(const std::string& strGbk);

// The offset of the first byte from nFrom on that starts no valid GB18030
// character, or std::string::npos when the rest of the buffer is valid.
std::size_t GbkInvalidAt(const std::string& strGbk, std::size_t nFrom = 0);

// What a person sees: UTF-8, or the data's bytes when bRaw.
inline std::string Shown(const std::string& strGbk, bool bRaw) { return bRaw ? strGbk : GbkToUtf8(strGbk); }

// The text between two quote characters, each quote in it doubled (CSV
// fields, SQL names).
std::string DoubleQuoted(const std::string& strText);

// A CSV field as RFC 4180 writes it: quoted when it holds a comma, a quote
// or a line break, with quotes doubled.
std::string CsvField(const std::string& strUtf8);
