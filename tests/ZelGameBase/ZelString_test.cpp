#include "ZelGameBase/ZelString.h"

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Support/TestSupport.h"
#include "ZelGameBase/ZelGameBase.h"

#if defined(__SANITIZE_ADDRESS__)
// The sanitizer's allocator knows each block's requested size.
extern "C" std::size_t __sanitizer_get_allocated_size(const volatile void* p);
#endif

namespace {

class ZelStringTest : public DataFolderTest {
protected:
    // How many check lines for strCondition the log holds, with any line
    // number, framed by the star and naming this unit.
    int CheckCount(const std::string& strCondition) const
    {
        const std::string strHead = ZEL_STAR "ASSERT(" + strCondition + ") in ";
        const std::string strTail = " line of ZelGameBase\\ZelString" ZEL_STAR;
        const std::string strLog = LogText();
        int nCount = 0;
        for (std::size_t nAt = strLog.find(strHead); nAt != std::string::npos; nAt = strLog.find(strHead, nAt + 1)) {
            const std::size_t nEnd = strLog.find_first_not_of("0123456789", nAt + strHead.size());
            nCount += nEnd > nAt + strHead.size() && strLog.compare(nEnd, strTail.size(), strTail) == 0;
        }
        return nCount;
    }
};

int Refs(const CZelString& s) { return s.GetData()->nRefs; }

TEST_F(ZelStringTest, CopiesShareTheExactBlockUntilOneIsWrittenAndTheEmptyBlockIsNeverCounted)
{
    CZelString strEmpty;
    for (const CZelString& s : {CZelString(static_cast<const char*>(nullptr)), CZelString(""), CZelString(strEmpty),
                                CZelString() + "", CZelString("x").Mid(1, 0)})
        EXPECT_EQ(s.GetData(), strEmpty.GetData());
    strEmpty += "";
    strEmpty.Format("");
    EXPECT_EQ(std::make_pair(Refs(strEmpty), strEmpty.GetData()->nAllocLength), std::make_pair(-1, 0));

    CZelString strSource("abc");
    EXPECT_EQ(strSource.GetData()->nAllocLength, 3);
    EXPECT_EQ(static_cast<const void*>(strSource.GetData()->data()), static_cast<const void*>(strSource));
#if defined(__SANITIZE_ADDRESS__)
    EXPECT_EQ(__sanitizer_get_allocated_size(strSource.GetData()), sizeof(CZelStringData) + 3 + 1);
#endif
    CZelString strCopy(strSource);
    CZelString strAssigned;
    strAssigned = strCopy;
    EXPECT_EQ(strAssigned.GetData(), strSource.GetData());
    EXPECT_EQ(Refs(strSource), 3);
    strCopy.SetAt(0, 'X');
    EXPECT_STREQ(strCopy, "Xbc");
    EXPECT_EQ(std::make_pair(Refs(strSource), Refs(strCopy)), std::make_pair(2, 1));
    strAssigned += "d";
    EXPECT_STREQ(strSource, "abc");
    EXPECT_EQ(Refs(strSource), 1);
    EXPECT_EQ(strSource.GetBuffer(0), static_cast<const char*>(strSource));  // private already: no copy

    // Appending a string to itself, and assigning or formatting a text that
    // lies inside the string.
    CZelString s("ab");
    s += s;
    s += 'c';
    s += CZelString("d");
    s += static_cast<const char*>(nullptr);
    EXPECT_STREQ(s, "ababcd");
    EXPECT_STREQ("x" + CZelString("y") + "z", "xyz");
    s = static_cast<const char*>(s) + 2;
    EXPECT_STREQ(s, "abcd");
    s.Format("%s-%s", static_cast<const char*>(s), static_cast<const char*>(s));
    EXPECT_STREQ(s, "abcd-abcd");
    EXPECT_EQ(LogEntryCount(), 0);
}

TEST_F(ZelStringTest, LockedBuffersAreCopiedNotSharedAndReleasedBuffersKeepTheirLength)
{
    CZelString strLocked("abc");
    char* pBuffer = strLocked.LockBuffer();
    EXPECT_EQ(Refs(strLocked), -1);
    CZelString strCopy(strLocked);
    CZelString strAssigned("zz");
    strAssigned = strLocked;
    pBuffer[0] = 'X';
    strCopy.SetAt(1, 'Y');
    EXPECT_EQ(std::string(strLocked) + static_cast<const char*>(strCopy) + static_cast<const char*>(strAssigned),
              "XbcaYcabc");
    // Assigning into a locked string copies into its buffer and keeps the lock.
    strLocked = strAssigned;
    EXPECT_EQ(strLocked.GetData()->data(), pBuffer);
    EXPECT_EQ(Refs(strLocked), -1);
    strLocked.UnlockBuffer();
    CZelString strShared(strLocked);
    EXPECT_EQ(strShared.GetData(), strLocked.GetData());
    strShared.UnlockBuffer();  // not locked: a failed check, the sharing survives
    EXPECT_EQ(Refs(strLocked), 2);
    EXPECT_EQ(CheckCount("GetData()->nRefs == -1"), 1);
    // Locking the empty string leaves the static block as it is.
    CZelString strEmpty;
    EXPECT_STREQ(strEmpty.LockBuffer(), "");
    strEmpty.UnlockBuffer();
    EXPECT_EQ(Refs(strEmpty), -1);

    CZelString s("ab");
    const CZelString strKept(s);
    pBuffer = s.GetBuffer(10);
    EXPECT_EQ(s.GetData()->nAllocLength, 10);
    std::strcpy(pBuffer, "abcdefgh");
    s.ReleaseBuffer();
    s += "ij";  // fits: in place
    EXPECT_EQ(static_cast<const char*>(s), pBuffer);
    EXPECT_EQ(std::string(s) + "|" + static_cast<const char*>(strKept), "abcdefghij|ab");
    s.ReleaseBuffer(3);
    EXPECT_STREQ(s, "abc");
    s.ReleaseBuffer(11);
    EXPECT_EQ(std::make_pair(CheckCount("nNewLength <= GetData()->nAllocLength"), s.GetLength()),
              std::make_pair(1, 10));
    s.ReleaseBuffer(-5);
    EXPECT_EQ(std::make_pair(CheckCount("nNewLength >= 0"), s.GetLength()), std::make_pair(1, 0));
    s.GetBuffer(-1);
    EXPECT_EQ(CheckCount("nMinBufLength >= 0"), 1);
}

TEST_F(ZelStringTest, IndexAndRangeChecksWriteTheirLineAndGoOn)
{
    CZelString s("abc");
    EXPECT_EQ(s[1], 'b');
    EXPECT_EQ(s.GetAt(3), '\0');
    EXPECT_EQ(s.GetAt(-1), '\0');
    s.SetAt(5, 'x');
    s.SetAt(-2, 'x');
    EXPECT_STREQ(s, "abc");
    EXPECT_EQ(CheckCount("nIndex < GetData()->nDataLength"), 2);
    EXPECT_EQ(CheckCount("nIndex >= 0"), 2);
    EXPECT_EQ(LogEntryCount(), 4);

    const CZelString t("abcdef");
    EXPECT_EQ(t.Mid(0, 6).GetData(), t.GetData());  // the whole text is shared
    EXPECT_STREQ(t.Mid(2, 3), "cde");
    EXPECT_STREQ(t.Mid(6, 0), "");
    EXPECT_EQ(LogEntryCount(), 4);
    EXPECT_STREQ(t.Mid(4, 10), "ef");
    EXPECT_STREQ(t.Mid(9, 1), "");
    EXPECT_STREQ(t.Mid(2, 2147483647), "cdef");
    EXPECT_EQ(CheckCount("nFirst + nCount <= GetData()->nDataLength"), 3);
    EXPECT_STREQ(t.Mid(-2, 3), "abc");
    EXPECT_EQ(CheckCount("nFirst >= 0"), 1);
}

TEST_F(ZelStringTest, SearchesStepOverDoubleByteCharacters)
{
    // "\xB0\\" is one GBK character whose second byte is a backslash.
    const CZelString s("\xB0\\a\\b\xC4\xE3");
    const struct {
        const char* szSought;
        int nFind, nFindOneOf;
    } kCases[] = {
        {"\\", 3, 3},     {"\\b", 3, 3},      {"\\a", -1, 2},  // the trail byte and "a" are no pair
        {"\xB0\\", 0, 0}, {"\xC4\xE3", 5, 5}, {"\xE3", -1, -1}, {"", 0, -1}, {"zz", -1, -1},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(s.Find(c.szSought), c.nFind) << c.szSought;
        EXPECT_EQ(s.FindOneOf(c.szSought), c.nFindOneOf) << c.szSought;
    }
    EXPECT_STREQ(s.SpanIncluding("\xB0\\a"), "\xB0\\a");
    EXPECT_STREQ(s.SpanIncluding("\\a"), "");
    EXPECT_STREQ(s.SpanExcluding("\\"), "\xB0\\a");
    EXPECT_STREQ(s.SpanExcluding("\xC4\xE3"), "\xB0\\a\\b");
    EXPECT_EQ(LogEntryCount(), 0);
    EXPECT_EQ(s.Find(nullptr), -1);
    EXPECT_EQ(s.FindOneOf(nullptr), -1);
    EXPECT_EQ(CheckCount("CZelString::IsValidString(lpszSub)"), 1);
    EXPECT_EQ(CheckCount("CZelString::IsValidString(lpszCharSet)"), 1);
}

void FormatThrough(CZelString& s, const char* szFormat, ...)
{
    va_list args;
    va_start(args, szFormat);
    s.FormatV(szFormat, args);
    va_end(args);
}

TEST_F(ZelStringTest, FormatMeasuresBeforeWriting)
{
    // The block is allocated with the measured length; the text keeps its own.
    const struct {
        int nMeasured;
        const char* szText;
        void (*format)(CZelString&);
    } kCases[] = {
        {3, "a%b", [](CZelString& s) { s.Format("a%%b"); }},
        {6, "(null)", [](CZelString& s) { s.Format("%s", static_cast<const char*>(nullptr)); }},
        {2, "ab", [](CZelString& s) { s.Format("%.2s", "abcdef"); }},
        {8, "      ab", [](CZelString& s) { s.Format("%8s", "ab"); }},
        {5, "   ab", [](CZelString& s) { s.Format("%*s", 5, "ab"); }},
        {32, "-42", [](CZelString& s) { s.Format("%d", -42); }},
        {40, "                    0000000042", [](CZelString& s) { s.Format("%30.10x", 0x42); }},
        {34, "0x1f", [](CZelString& s) { s.Format("%#x", 31); }},
        {65, "-9000000000 7", [](CZelString& s) { FormatThrough(s, "%I64d %d", -9000000000LL, 7); }},
        {128, "0.5", [](CZelString& s) { s.Format("%g", 0.5); }},
        {12, "        2.25", [](CZelString& s) { s.Format("%12.2f", 2.25); }},
        {8, "1.500000", [](CZelString& s) { FormatThrough(s, "%Lf", 1.5); }},
        {1, "x",
         [](CZelString& s) {
             int n = 0;
             s.Format("x%n", &n);
         }},
    };
    for (const auto& c : kCases) {
        CZelString s("old");
        c.format(s);
        EXPECT_STREQ(s, c.szText);
        EXPECT_EQ(s.GetData()->nAllocLength, c.nMeasured) << c.szText;
        EXPECT_EQ(s.GetLength(), static_cast<int>(std::strlen(c.szText))) << c.szText;
    }
    EXPECT_EQ(LogEntryCount(), 0);
    // A result of 1024 characters or more is kept, and logged.
    CZelString s;
    s.Format("%s", std::string(1023, 'a').c_str());
    EXPECT_EQ(LogEntryCount(), 0);
    s.Format("%s!", std::string(1023, 'a').c_str());
    EXPECT_EQ(s.GetLength(), 1024);
    EXPECT_EQ(LogEntryCount(), 1);
    EXPECT_NE(LogText().find("GetLength() >= 1024;aaaa"), std::string::npos);
}

TEST_F(ZelStringTest, FormatChecksWriteTheirLineAndTheOutputEndsAtABadConversion)
{
    CZelString s("abc");
    FormatThrough(s, "%y%d", 5);
    EXPECT_EQ(CheckCount("FALSE"), 1);
    FormatThrough(s, "[%*d]", -4, 7);
    EXPECT_STREQ(s, "[7   ]");
    EXPECT_EQ(CheckCount("nWidth >= 0"), 1);
    FormatThrough(s, "%.*s", -1, "ab");
    EXPECT_STREQ(s, "ab");
    EXPECT_EQ(CheckCount("nPrecision >= 0"), 1);
    FormatThrough(s, "abc%");
    EXPECT_STREQ(s, "abc");
    FormatThrough(s, "a%*y%s", 3, "b");
    EXPECT_STREQ(s, "a");
    EXPECT_EQ(CheckCount("FALSE"), 3);
    FormatThrough(s, nullptr);
    EXPECT_EQ(CheckCount("CZelString::IsValidString(lpszFormat)"), 1);
    EXPECT_STREQ(s, "");
}

TEST_F(ZelStringTest, ThreadsCopyAndDestroySharedBlocks)
{
    CZelString strSource("shared text");
    const CZelStringData* pShared = strSource.GetData();
    std::vector<std::thread> setThread;
    for (int nThread = 0; nThread < 4; ++nThread)
        setThread.emplace_back([&strSource, nThread] {
            for (int i = 0; i < 2000; ++i) {
                CZelString strCopy(strSource);
                CZelString strSecond;
                strSecond = strCopy;
                if ((i + nThread) % 3 == 0)
                    strSecond.SetAt(0, 'S');  // copy on write
                if ((i + nThread) % 5 == 0)
                    strCopy += "!";
            }
        });
    for (std::thread& thread : setThread)
        thread.join();
    EXPECT_EQ(strSource.GetData(), pShared);
    EXPECT_EQ(Refs(strSource), 1);
    EXPECT_STREQ(strSource, "shared text");
}

}  // namespace
