#include "Text.h"

#include <iconv.h>

#include <cerrno>
#include <cstdio>

namespace {

// One conversion descriptor per use: iconv keeps shift state in it.
class CConverter {
public:
    CConverter() : m_cd(iconv_open("UTF-8", "GB18030")) {}
    ~CConverter()
    {
        if (Ready())
            iconv_close(m_cd);
    }
    CConverter(const CConverter&) = delete;
    CConverter& operator=(const CConverter&) = delete;
    bool Ready() const { return m_cd != reinterpret_cast<iconv_t>(-1); }

    // Converts from pIn on; stops at the end or at the first byte that starts
    // no valid character. Returns the bytes consumed.
    std::size_t Convert(const char* pIn, std::size_t nIn, std::string* pOut)
    {
        char* pFrom = const_cast<char*>(pIn);
        std::size_t nLeft = nIn;
        char szBlock[4096];
        while (nLeft > 0) {
            char* pTo = szBlock;
            std::size_t nRoom = sizeof(szBlock);
            const std::size_t nResult = iconv(m_cd, &pFrom, &nLeft, &pTo, &nRoom);
            if (pOut != nullptr)
                pOut->append(szBlock, static_cast<std::size_t>(pTo - szBlock));
            if (nResult == static_cast<std::size_t>(-1) && errno != E2BIG)
                break;  // EILSEQ, or EINVAL for a character cut at the end
        }
        iconv(m_cd, nullptr, nullptr, nullptr, nullptr);
        return nIn - nLeft;
    }

private:
    iconv_t m_cd;
};

}  // namespace

std::string GbkToUtf8(const std::string& strGbk)
{
    CConverter converter;
    std::string strOut;
    strOut.reserve(strGbk.size() * 3 / 2);
    std::size_t nAt = 0;
    while (nAt < strGbk.size()) {
        if (converter.Ready())
            nAt += converter.Convert(strGbk.data() + nAt, strGbk.size() - nAt, &strOut);
        if (nAt < strGbk.size()) {
            char szEscape[8];
            std::snprintf(szEscape, sizeof(szEscape), "\\x%02X", static_cast<unsigned char>(strGbk[nAt]));
            strOut += szEscape;
            ++nAt;
        }
    }
    return strOut;
}

std::size_t GbkInvalidAt(const std::string& strGbk, std::size_t nFrom)
{
    CConverter converter;
    if (!converter.Ready())
        return nFrom;
    const std::size_t nValid = nFrom + converter.Convert(strGbk.data() + nFrom, strGbk.size() - nFrom, nullptr);
    return nValid == strGbk.size() ? std::string::npos : nValid;
}

std::string DoubleQuoted(const std::string& strText)
{
    std::string strOut = "\"";
    for (const char c : strText) {
        if (c == '"')
            strOut.push_back('"');
        strOut.push_back(c);
    }
    return strOut + "\"";
}

std::string CsvField(const std::string& strUtf8)
{
    return strUtf8.find_first_of(",\"\r\n") == std::string::npos ? strUtf8 : DoubleQuoted(strUtf8);
}
