#include "Text.h"

#include <iconv.h>

#include <cstdio>

std::string GbkToUtf8(const std::string& strGbk)
{
    static iconv_t converter = iconv_open("UTF-8", "GBK");
    std::string strOut;
    strOut.reserve(strGbk.size() * 3 / 2);
    std::size_t nAt = 0;
    while (nAt < strGbk.size()) {
        const unsigned char c = static_cast<unsigned char>(strGbk[nAt]);
        if (c < 0x80) {
            strOut.push_back(static_cast<char>(c));
            ++nAt;
            continue;
        }
        char szOut[8];
        char* pIn = const_cast<char*>(strGbk.data() + nAt);
        std::size_t nIn = strGbk.size() - nAt < 2 ? strGbk.size() - nAt : 2;
        char* pOut = szOut;
        std::size_t nOut = sizeof(szOut);
        if (converter != reinterpret_cast<iconv_t>(-1) &&
            iconv(converter, &pIn, &nIn, &pOut, &nOut) != static_cast<std::size_t>(-1) && nIn == 0) {
            strOut.append(szOut, static_cast<std::size_t>(pOut - szOut));
            nAt += 2;
        } else {
            iconv(converter, nullptr, nullptr, nullptr, nullptr);
            char szEscape[8];
            std::snprintf(szEscape, sizeof(szEscape), "\\x%02X", c);
            strOut += szEscape;
            ++nAt;
        }
    }
    return strOut;
}

std::string JsonQuoted(const std::string& strUtf8)
{
    std::string strOut = "\"";
    for (const char c : strUtf8) {
        switch (c) {
        case '"': strOut += "\\\""; break;
        case '\\': strOut += "\\\\"; break;
        case '\n': strOut += "\\n"; break;
        case '\r': strOut += "\\r"; break;
        case '\t': strOut += "\\t"; break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char szEscape[8];
                std::snprintf(szEscape, sizeof(szEscape), "\\u%04x", static_cast<unsigned char>(c));
                strOut += szEscape;
            } else {
                strOut.push_back(c);
            }
        }
    }
    return strOut + "\"";
}

std::string CsvQuoted(const std::string& strUtf8)
{
    if (strUtf8.find_first_of(",\"\r\n") == std::string::npos)
        return strUtf8;
    std::string strOut = "\"";
    for (const char c : strUtf8) {
        if (c == '"')
            strOut.push_back('"');
        strOut.push_back(c);
    }
    return strOut + "\"";
}
