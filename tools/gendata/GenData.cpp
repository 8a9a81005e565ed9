#include "GenData.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>

std::string CGenContext::GbkName(int nChars)
{
    std::string strName;
    for (int i = 0; i < nChars; ++i) {
        // The first level of GB2312: every pair in this block is a character.
        strName.push_back(static_cast<char>(0xB0 + m_rng.Range(0, 38)));
        strName.push_back(static_cast<char>(0xA1 + m_rng.Range(0, 93)));
    }
    return strName;
}

namespace {

// One of the "|"-separated words of a pattern.
std::string PatternWord(CDataRng& rng, const char* szPattern)
{
    const std::vector<std::string> setWord = PatternWords(szPattern);
    return setWord[static_cast<std::size_t>(rng.Range(0, static_cast<int64_t>(setWord.size()) - 1))];
}

// Each "%d" of a word becomes a number in [nLow, nHigh].
std::string NumbersFilled(CDataRng& rng, std::string strWord, int64_t nLow, int64_t nHigh)
{
    for (std::size_t nAt = strWord.find("%d"); nAt != std::string::npos; nAt = strWord.find("%d", nAt))
        strWord.replace(nAt, 2, std::to_string(rng.Range(nLow, nHigh)));
    return strWord;
}

}  // namespace

std::vector<std::string> PatternWords(const char* szPattern)
{
    std::vector<std::string> setWord(1);
    for (const char* p = szPattern; *p != '\0'; ++p) {
        if (*p == '|')
            setWord.emplace_back();
        else
            setWord.back().push_back(*p);
    }
    return setWord;
}

std::string CGenContext::Value(const FieldDesc& field)
{
    const FieldGen& gen = field.gen;
    if (gen.szPattern != nullptr)
        return NumbersFilled(m_rng, PatternWord(m_rng, gen.szPattern), gen.nLow, gen.nHigh);
    if (!field.IsNumber())
        return GbkName(static_cast<int>(m_rng.Range(gen.nLow, gen.nHigh)));
    const int64_t nValue = m_rng.Range(gen.nLow, gen.nHigh);
    if (field.type != FieldType::Hex)
        return std::to_string(nValue);
    char szHex[24];
    std::snprintf(szHex, sizeof(szHex), "%llx", static_cast<unsigned long long>(nValue));
    return szHex;
}

std::string TitleOf(const FieldDesc& field, int64_t nNumber)
{
    const std::string strNumber = std::to_string(nNumber);
    if (field.gen.szPattern == nullptr)
        return strNumber;
    std::string strTitle = field.gen.szPattern;
    const std::size_t nAt = strTitle.find("%d");
    return nAt == std::string::npos ? strTitle : strTitle.replace(nAt, 2, strNumber);
}

void CGenContext::Write(const std::string& strPath, const std::string& strText, bool bCrLf)
{
    if (!m_strFailure.empty())
        return;
    const std::filesystem::path path = std::filesystem::path(m_options.strRoot) / strPath;
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    if (error) {
        m_strFailure = path.parent_path().string() + ": " + error.message();
        return;
    }
    std::string strOut;
    if (bCrLf) {
        strOut.reserve(strText.size() + strText.size() / 16);
        for (char c : strText) {
            if (c == '\n')
                strOut.push_back('\r');
            strOut.push_back(c);
        }
    }
    std::ofstream out(path, std::ios::binary);
    const std::string& strWritten = bCrLf ? strOut : strText;
    out.write(strWritten.data(), static_cast<std::streamsize>(strWritten.size()));
    out.close();
    if (!out)
        m_strFailure = path.string() + ": " + std::strerror(errno);
}

namespace {
std::map<int, ShapeFn>& Shapes()
{
    static std::map<int, ShapeFn> mapShape;
    return mapShape;
}
}  // namespace

ShapeRegistration::ShapeRegistration(int nSlot, ShapeFn fn) { Shapes()[nSlot] = fn; }

ShapeFn ShapeOf(int nSlot)
{
    const auto it = Shapes().find(nSlot);
    return it != Shapes().end() ? it->second : nullptr;
}
