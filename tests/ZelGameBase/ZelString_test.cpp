// The foundation's string as the data layer and the client use it: shared
// blocks, copy on write, texts taken from the string itself, and the checks
// of its index and range arguments.
#include "ZelGameBase/ZelString.h"

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

}  // namespace
