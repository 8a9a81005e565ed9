#include "GenData.h"

#include <filesystem>
#include <fstream>

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

void CGenContext::Write(const std::string& strPath, const std::string& strText, bool bCrLf)
{
    const std::filesystem::path path = std::filesystem::path(m_options.strRoot) / strPath;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    if (!bCrLf) {
        out << strText;
        return;
    }
    std::string strCrLf;
    strCrLf.reserve(strText.size() + strText.size() / 16);
    for (char c : strText) {
        if (c == '\n')
            strCrLf.push_back('\r');
        strCrLf.push_back(c);
    }
    out << strCrLf;
}

namespace {
std::vector<RegisteredGenerator>& Generators()
{
    static std::vector<RegisteredGenerator> setGenerator;
    return setGenerator;
}
}  // namespace

GeneratorRegistration::GeneratorRegistration(const char* szFile, GeneratorFn fn)
{
    Generators().push_back(RegisteredGenerator{szFile, fn});
}

const std::vector<RegisteredGenerator>& RegisteredGenerators() { return Generators(); }

std::string AlternativePathOf(const std::string& strBareName)
{
    const std::size_t nDot = strBareName.rfind('.');
    return "ini/200/" + strBareName.substr(0, nDot) + "_200" + strBareName.substr(nDot);
}
