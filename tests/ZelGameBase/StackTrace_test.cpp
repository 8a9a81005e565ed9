#include "ZelGameBase/StackTrace.h"

#include <ucontext.h>
#include <unistd.h>

#include <cstdlib>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Entry {
    std::string strModule;  // empty when the entry names none
    int nIndex;
};

// Splits a stack text into its entries; every entry must be well formed.
std::vector<Entry> EntriesOf(const std::string& strText)
{
    static const std::regex entry(R"(\((?:(\S+) )?(?:0x[0-9a-f]+|\(nil\)):(\d+)\) )");
    std::vector<Entry> setEntry;
    std::size_t nAt = 0;
    std::smatch match;
    for (std::string strRest; nAt < strText.size(); nAt += static_cast<std::size_t>(match.length(0))) {
        strRest = strText.substr(nAt);
        if (!std::regex_search(strRest, match, entry, std::regex_constants::match_continuous)) break;
        setEntry.push_back({match[1].str(), std::stoi(match[2].str())});
    }
    EXPECT_EQ(nAt, strText.size()) << strText;
    return setEntry;
}

std::string SelfPath()
{
    char szPath[512] = {};
    const ssize_t nLength = readlink("/proc/self/exe", szPath, sizeof(szPath) - 1);
    return nLength > 0 ? std::string(szPath, static_cast<std::size_t>(nLength)) : std::string();
}

// The rule of module names: an entry names its module only when it differs
// from the previous entry's; indices count up from 0.
void ExpectWellFormed(const std::vector<Entry>& setEntry)
{
    std::string strPrevious;
    for (std::size_t i = 0; i < setEntry.size(); ++i) {
        EXPECT_EQ(setEntry[i].nIndex, static_cast<int>(i));
        if (!setEntry[i].strModule.empty()) {
            EXPECT_NE(setEntry[i].strModule, strPrevious) << "entry " << i;
            strPrevious = setEntry[i].strModule;
        }
    }
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

TEST(StackTraceText, NamesTheCallersModuleOnceThenOnlyOffsets)
{
    char szText[1024];
    ASSERT_EQ(StackTraceText(6, szText, sizeof(szText), nullptr), szText);
    const std::vector<Entry> setEntry = EntriesOf(szText);
    ASSERT_GE(setEntry.size(), 2u);
    EXPECT_LE(setEntry.size(), 7u);
    EXPECT_EQ(setEntry[0].strModule, SelfPath());
    // The test runner is linked into the same program.
    EXPECT_EQ(setEntry[1].strModule, "") << szText;
    ExpectWellFormed(setEntry);

    ASSERT_NE(StackTraceText(1, szText, sizeof(szText), nullptr), nullptr);
    EXPECT_LE(EntriesOf(szText).size(), 2u);
}

TEST(StackTraceText, NamesEachModuleChange)
{
    // The C library's sort calls back into this program.
    g_strFromCallback.clear();
    int setValue[] = {2, 1};
    std::qsort(setValue, 2, sizeof(int), CompareAndTrace);
    const std::vector<Entry> setEntry = EntriesOf(g_strFromCallback);
    ASSERT_GE(setEntry.size(), 2u);
    EXPECT_EQ(setEntry[0].strModule, SelfPath());
    EXPECT_NE(setEntry[1].strModule, "") << g_strFromCallback;
    ExpectWellFormed(setEntry);
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

TEST(StackTraceText, WalksTheFaultingCodeFromAContext)
{
    ucontext_t context;
    ASSERT_EQ(getcontext(&context), 0);
    ZelExceptionPointers pointers{nullptr, &context};
    char szText[1024];
    ASSERT_EQ(StackTraceText(6, szText, sizeof(szText), &pointers), szText);
    const std::vector<Entry> setEntry = EntriesOf(szText);
    ASSERT_GE(setEntry.size(), 1u);
    EXPECT_EQ(setEntry[0].strModule, SelfPath());
    ExpectWellFormed(setEntry);
}

}  // namespace
