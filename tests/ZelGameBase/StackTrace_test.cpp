#include "ZelGameBase/StackTrace.h"

#include <ucontext.h>
#include <unistd.h>

#include <cstdlib>
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

// Splits a stack text of entries "(module address:index) " or "(address:index) "
// into the module each names ("" for none). Every entry must be well formed,
// indices count up from 0, and an entry names its module only when it differs
// from the one named before.
std::vector<std::string> ModulesOf(const std::string& strText)
{
    std::vector<std::string> setModule;
    std::string strPrevious;
    std::size_t nAt = 0;
    while (nAt < strText.size() && strText[nAt] == '(') {
        std::size_t nPos = nAt + 1;
        const std::size_t nColon = strText.find(':', nPos);
        const std::size_t nBlank = strText.find(' ', nPos);
        if (nColon == std::string::npos)
            break;
        std::string strModule;
        if (nBlank < nColon) {  // a module precedes the address
            strModule = strText.substr(nPos, nBlank - nPos);
            nPos = nBlank + 1;
        }
        const std::string strAddress = strText.substr(nPos, nColon - nPos);
        const bool bAddress =
            strAddress == "(nil)" || (strAddress.size() > 2 && strAddress.compare(0, 2, "0x") == 0 &&
                                      strAddress.find_first_not_of("0123456789abcdef", 2) == std::string::npos);
        const std::size_t nIndexEnd = strText.find_first_not_of("0123456789", nColon + 1);
        if (!bAddress || nIndexEnd == std::string::npos || nIndexEnd == nColon + 1 ||
            strText.compare(nIndexEnd, 2, ") ") != 0)
            break;
        EXPECT_EQ(std::stoi(strText.substr(nColon + 1)), static_cast<int>(setModule.size())) << strText;
        if (!strModule.empty()) {
            EXPECT_NE(strModule, strPrevious) << strText;
            strPrevious = strModule;
        }
        setModule.push_back(strModule);
        nAt = nIndexEnd + 2;
    }
    EXPECT_EQ(nAt, strText.size()) << strText;
    return setModule;
}

std::string g_strFromCallback;

int CompareAndTrace(const void* pLeft, const void* pRight)
{
    if (g_strFromCallback.empty()) {
        char szText[1024];
        StackTraceText(6, szText, sizeof(szText), nullptr);
        g_strFromCallback = szText;
    }
    return *static_cast<const int*>(pLeft) - *static_cast<const int*>(pRight);
}

TEST(StackTraceText, NamesTheCallersModuleOnceThenOnlyEachChange)
{
    char szText[1024];
    ASSERT_EQ(StackTraceText(6, szText, sizeof(szText), nullptr), szText);
    std::vector<std::string> setModule = ModulesOf(szText);
    ASSERT_GE(setModule.size(), 2u);
    EXPECT_LE(setModule.size(), 7u);
    EXPECT_EQ(setModule[0], SelfPath());
    EXPECT_EQ(setModule[1], "") << szText;  // the test runner is linked into the same program
    ASSERT_EQ(StackTraceText(1, szText, sizeof(szText), nullptr), szText);
    EXPECT_LE(ModulesOf(szText).size(), 2u);

    // The C library's sort calls back into this program.
    int setValue[] = {2, 1};
    std::qsort(setValue, 2, sizeof(int), CompareAndTrace);
    setModule = ModulesOf(g_strFromCallback);
    ASSERT_GE(setModule.size(), 2u);
    EXPECT_EQ(setModule[0], SelfPath());
    EXPECT_NE(setModule[1], "") << g_strFromCallback;

    // From a context, the walk starts at the faulting code.
    ucontext_t context;
    ASSERT_EQ(getcontext(&context), 0);
    ZelExceptionPointers pointers{nullptr, &context};
    ASSERT_EQ(StackTraceText(6, szText, sizeof(szText), &pointers), szText);
    setModule = ModulesOf(szText);
    ASSERT_GE(setModule.size(), 1u);
    EXPECT_EQ(setModule[0], SelfPath());
}

TEST(StackTraceText, CutsAtTheBufferAndAnswersAnAddressWithoutOne)
{
    char szText[16];
    StackTraceText(6, szText, sizeof(szText), nullptr);
    EXPECT_EQ(std::string(szText).size(), 15u);

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
