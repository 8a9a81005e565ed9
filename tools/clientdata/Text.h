// Display helpers: the data's texts are GBK bytes and stay so everywhere in
// the library; only what the tool shows people is converted.
#pragma once

#include <string>

// GBK to UTF-8; bytes that are not GBK are shown as \xNN.
std::string GbkToUtf8(const std::string& strGbk);
std::string JsonQuoted(const std::string& strUtf8);
std::string CsvQuoted(const std::string& strUtf8);
