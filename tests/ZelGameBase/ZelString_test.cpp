#include "ZelGameBase/ZelString.h"

#include <cstring>
#include <string>

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

TEST_F(ZelStringTest, FormatChecksWriteTheirLineAndTheOutputEndsAtABadConversion)
{
    // A result of 1024 characters or more is kept, and logged.
    CZelString s;
    s.Format("%s", std::string(1023, 'a').c_str());
    EXPECT_EQ(LogEntryCount(), 0);
    s.Format("%s!", std::string(1023, 'a').c_str());
    EXPECT_EQ(s.GetLength(), 1024);
    EXPECT_EQ(LogEntryCount(), 1);
    EXPECT_NE(LogText().find("GetLength() >= 1024;aaaa"), std::string::npos);

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

}  // namespace
