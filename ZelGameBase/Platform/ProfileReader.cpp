#include "ZelGameBase/Platform/ProfileReader.h"

#include <cstdint>
#include <string_view>

#include "ZelGameBase/ZelCrt.h"

namespace {

// Blanks: space, tab, vertical tab, form feed (line breaks never reach here).
bool IsBlank(char c) { return CrtIsSpace(static_cast<unsigned char>(c)); }

std::string_view TrimBlanks(std::string_view text)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool EqualNoCase(std::string_view a, const char* b)
{
    const std::string_view other(b);
    return CrtCompareNoCase(a.data(), a.size(), other.data(), other.size()) == 0;
}

// Calls onLine for every line; CR-LF, LF and a lone CR all end one.
template <class Fn>
void ForEachLine(std::string_view text, Fn onLine)
{
    std::size_t nAt = 0;
    while (nAt < text.size()) {
        std::size_t nEnd = text.find_first_of("\r\n", nAt);
        if (nEnd == std::string_view::npos)
            nEnd = text.size();
        if (!onLine(text.substr(nAt, nEnd - nAt)))
            return;
        nAt = nEnd + 1;
        if (nEnd < text.size() && text[nEnd] == '\r' && nAt < text.size() && text[nAt] == '\n')
            ++nAt;
    }
}

std::string_view StripOuterQuotes(std::string_view value)
{
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
        return value.substr(1, value.size() - 2);
    return value;
}

int DigitIn(char c, unsigned nBase)
{
    unsigned nDigit = 99;
    if (c >= '0' && c <= '9')
        nDigit = static_cast<unsigned>(c - '0');
    else if (c >= 'a' && c <= 'z')
        nDigit = static_cast<unsigned>(c - 'a' + 10);
    else if (c >= 'A' && c <= 'Z')
        nDigit = static_cast<unsigned>(c - 'A' + 10);
    return nDigit < nBase ? static_cast<int>(nDigit) : -1;
}

}  // namespace

bool ProfileFindValue(const char* pText, std::size_t nLength, const char* szSection, const char* szKey,
                      std::string& strValue)
{
    if (pText == nullptr || szSection == nullptr || szKey == nullptr)
        return false;
    enum { BEFORE, INSIDE, AFTER } state = BEFORE;
    bool bFound = false;
    ForEachLine(std::string_view(pText, nLength), [&](std::string_view line) {
        line = TrimBlanks(line);
        if (line.empty() || line.front() == ';')
            return true;
        // A "[" line without any "]" is no header; Windows reads it as an
        // entry line.
        const std::size_t nClose = line.front() == '[' ? line.find(']') : std::string_view::npos;
        if (nClose != std::string_view::npos) {
            if (state == INSIDE) {
                state = AFTER;  // only the first section of that name is searched
                return false;
            }
            if (EqualNoCase(TrimBlanks(line.substr(1, nClose - 1)), szSection))
                state = INSIDE;
            return true;
        }
        if (state != INSIDE)
            return true;
        const std::size_t nEqual = line.find('=');
        const std::string_view key = TrimBlanks(line.substr(0, nEqual));
        if (!EqualNoCase(key, szKey))
            return true;
        const std::string_view value =
            nEqual == std::string_view::npos ? std::string_view() : TrimBlanks(line.substr(nEqual + 1));
        strValue.assign(StripOuterQuotes(value));
        bFound = true;
        return false;  // the first occurrence wins
    });
    return bFound;
}

unsigned ProfileParseInt(const std::string& strValue, int nDefault)
{
    // The value is a C text to Windows: one that starts with a NUL is empty.
    const char* p = strValue.c_str();
    if (*p == '\0')
        return static_cast<unsigned>(nDefault);
    while (*p != '\0' && static_cast<unsigned char>(*p) <= 0x20)
        ++p;
    bool bNegative = false;
    if (*p == '+' || *p == '-')
        bNegative = *p++ == '-';
    // The prefixes are lower case only: "0X10" is a decimal 0 stopped at "X".
    unsigned nBase = 10;
    if (p[0] == '0' && p[1] == 'x')
        nBase = 16;
    else if (p[0] == '0' && p[1] == 'o')
        nBase = 8;
    else if (p[0] == '0' && p[1] == 'b')
        nBase = 2;
    if (nBase != 10)
        p += 2;
    uint32_t nValue = 0;
    for (int nDigit; (nDigit = DigitIn(*p, nBase)) >= 0; ++p)
        nValue = nValue * nBase + static_cast<uint32_t>(nDigit);
    return bNegative ? 0u - nValue : nValue;
}

unsigned ProfileGetInt(const char* pText, std::size_t nLength, const char* szSection, const char* szKey,
                       int nDefault)
{
    std::string strValue;
    if (!ProfileFindValue(pText, nLength, szSection, szKey, strValue))
        return static_cast<unsigned>(nDefault);
    return ProfileParseInt(strValue, nDefault);
}
