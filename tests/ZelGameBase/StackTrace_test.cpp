#include "ZelGameBase/StackTrace.h"

#include <ucontext.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Entry {
    std::string strModule;  // empty when the entry names none
    int nIndex;
};

bool IsAddress(const std::string& strText)
{
    if (strText == "(nil)")
        return true;
    if (strText.size() < 3 || strText.compare(0, 2, "0x") != 0)
        return false;
    return strText.find_first_not_of("0123456789abcdef", 2) == std::string::npos;
}

// Reads the entry "(module address:index) " or "(address:index) " at nAt.
bool ReadEntry(const std::string& strText, std::size_t& nAt, Entry& entry)
{
    const std::size_t nClose = strText.find(") ", nAt);
    if (strText.compare(nAt, 1, "(") != 0 || nClose == std::string::npos)
        return false;
    const std::string strBody = strText.substr(nAt + 1, nClose - nAt - 1);
    const std::size_t nColon = strBody.rfind(':');
    const std::size_t nBlank = strBody.find(' ');
    if (nColon == std::string::npos || nColon + 1 == strBody.size() ||
        strBody.find_first_not_of("0123456789", nColon + 1) != std::string::npos)
        return false;
    const std::size_t nAddress = nBlank == std::string::npos ? 0 : nBlank + 1;
    if ((nBlank != std::string::npos && (nBlank == 0 || nBlank > nColon)) ||
        !IsAddress(strBody.substr(nAddress, nColon - nAddress)))
        return false;
    entry.strModule = nBlank == std::string::npos ? std::string() : strBody.substr(0, nBlank);
    entry.nIndex = std::stoi(strBody.substr(nColon + 1));
    nAt = nClose + 2;
    return true;
}

// Splits a stack text into its entries; every entry must be well formed.
std::vector<Entry> EntriesOf(const std::string& strText)
{
    std::vector<Entry> setEntry;
    std::size_t nAt = 0;
    Entry entry;
    while (nAt < strText.size() && ReadEntry(strText, nAt, entry))
        setEntry.push_back(entry);
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
