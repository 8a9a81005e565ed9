#include "ZelGameBase/StackTrace.h"

#include <unistd.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

std::string SelfPath()
{
    char szPath[512] = {};
    const ssize_t nLength = readlink("/proc/self/exe", szPath, sizeof(szPath) - 1);
    return nLength > 0 ? std::string(szPath, static_cast<std::size_t>(nLength)) : std::string();
}

// The module each entry "(module address:index) " or "(address:index) " of a
// stack text names ("" for none). Every entry must be well formed, indices
// count up from 0, and an entry names its module only where it changes.
std::vector<std::string> ModulesOf(const std::string& strText)
{
    std::vector<std::string> setModule;
    std::string strPrevious;
    std::size_t nAt = 0;
    for (std::size_t nEnd; strText.compare(nAt, 1, "(") == 0 && (nEnd = strText.find(") ", nAt)) != std::string::npos;
         nAt = nEnd + 2) {
        const std::string strEntry = strText.substr(nAt + 1, nEnd - nAt - 1);
        const std::size_t nColon = strEntry.rfind(':'), nBlank = strEntry.rfind(' ', nColon);
        const std::string strModule = nBlank == std::string::npos ? "" : strEntry.substr(0, nBlank);
        const std::string strAddress = strEntry.substr(nBlank + 1, nColon - nBlank - 1);
        EXPECT_TRUE(strAddress == "(nil)" || (strAddress.size() > 2 && strAddress.compare(0, 2, "0x") == 0 &&
                                              strAddress.find_first_not_of("0123456789abcdef", 2) == std::string::npos))
            << strText;
        EXPECT_EQ(strEntry.substr(nColon + 1), std::to_string(setModule.size())) << strText;
        EXPECT_TRUE(strModule.empty() || strModule != strPrevious) << strText;
        strPrevious = strModule.empty() ? strPrevious : strModule;
        setModule.push_back(strModule);
    }
    EXPECT_EQ(nAt, strText.size()) << strText;
    return setModule;
}

TEST(StackTraceText, NamesTheCallersModuleOnceAndCutsAtTheBuffer)
{
    char szText[1024];
    ASSERT_EQ(StackTraceText(6, szText, sizeof(szText), nullptr), szText);
    const std::vector<std::string> setModule = ModulesOf(szText);
    ASSERT_GE(setModule.size(), 2u);
    EXPECT_LE(setModule.size(), 7u);
    EXPECT_EQ(setModule[0], SelfPath());
    EXPECT_EQ(setModule[1], "") << szText;  // the test runner is linked into the same program
    char szShort[16];
    StackTraceText(6, szShort, sizeof(szShort), nullptr);
    EXPECT_EQ(std::string(szShort), std::string(szText, 15));

    // The address names this program; a stack address or null names nothing.
    char szName[261] = "untouched";
    const void* pBase = nullptr;
    const void* pLast = StackTraceText(0, nullptr, 0, nullptr);
    ASSERT_TRUE(ModuleOfAddress(pLast, szName, sizeof(szName), &pBase));
    EXPECT_EQ(szName, SelfPath());
    EXPECT_LE(pBase, pLast);
    int nLocal = 0;
    char szOther[16] = "untouched";
    EXPECT_FALSE(ModuleOfAddress(&nLocal, szOther, sizeof(szOther), &pBase));
    EXPECT_STREQ(szOther, "untouched");
    EXPECT_FALSE(ModuleOfAddress(nullptr, szOther, sizeof(szOther), &pBase));
}

}  // namespace
