#include "ZelGameBase/ZelCommon.h"

#include <cstring>
#include <string>

#include "Support/TestSupport.h"

namespace {

const char kUntouched = -1;

// Tokens, not lines: the file is read word by word.
const char kIniText[] =
    "; a comment is only a token that never matches\n[Other]\nMaleFaceAmount=9\n"
    "[PLAYERFACE]\nmalefaceamount=3 MaleFaceAmountX=4\tMaleFaceAmount=12abc\nMaleFaceAmount=5\n"
    "Bad=xyz Bad=7\r\nBare = 5\nEmpty= Neg=-\nWord=ab=cd\na[1]\nAfter=8\n"
    "[Two Words]\nK=1\n[PlayerFace]\nLate=1";

using ZelCommonTest = DataFolderTest;

struct IniCase {
    const char *szTitle, *szKey;
    int nFound, nValue;
};

}  // namespace

TEST_F(ZelCommonTest, IniDataGetAndIniStrGetReadTokens)
{
    WriteFile("t.ini", kIniText);
    const IniCase kCases[] = {
        {"PlayerFace", "MaleFaceAmount", 1, 12},  // title folds case, key does not; first wins; prefix needs "="
        {"Other", "MaleFaceAmount", 1, 9},         // the section ends at the next header
        {"playerface", "Bad", 1, 7},               // a token that does not convert is passed over
        {"PlayerFace", "Bare", 1, kUntouched},     // the bare key: end of input, found, nothing stored
        {"PlayerFace", "Empty", 1, kUntouched},
        {"PlayerFace", "Neg", 1, kUntouched},
        {"PlayerFace", "After", 0, kUntouched},    // a[1] ends the section
        {"PlayerFace", "Late", 0, kUntouched},     // a second section of the same title is never reached
        {"Two Words", "K", 0, kUntouched},         // a header with a blank splits into two tokens
        {"Missing", "K", 0, kUntouched},
    };
    for (const auto& c : kCases) {
        int nValue = kUntouched;
        EXPECT_EQ(IniDataGet("t.ini", c.szTitle, c.szKey, &nValue, 1), c.nFound) << c.szTitle << " " << c.szKey;
        EXPECT_EQ(nValue, c.nValue) << c.szTitle << " " << c.szKey;
    }
    EXPECT_EQ(IniDataGet("t.ini", "PlayerFace", "MaleFaceAmount", nullptr, 1), 1);  // pData is not tested

    // IniStrGet takes the rest of the token.
    const struct {
        const char* szKey;
        int nSize, nFound;
        const char* szText;
    } kTexts[] = {{"Word", 1024, 1, "ab=cd"}, {"Bad", 1024, 1, "xyz"} /* any word converts as text */,
                  {"After", 4, 0, "old"}, {"Word", 4, 1, "ab="}};
    for (const auto& c : kTexts) {
        char szData[1024] = "old";
        EXPECT_EQ(IniStrGet("t.ini", "PlayerFace", c.szKey, szData, 1, c.nSize), c.nFound) << c.szKey;
        EXPECT_STREQ(szData, c.szText) << c.szKey;
    }
    EXPECT_EQ(IniStrGet("t.ini", "PlayerFace", "Word", nullptr, 1), 0);
}

TEST_F(ZelCommonTest, NotFoundGoesToTheLogOrTheDebugger)
{
    WriteFile("t.ini", kIniText);
    int nValue = 0;
    EXPECT_EQ(IniDataGet("t.ini", "PlayerFace", "After", &nValue, 1), 0);
    EXPECT_EQ(LogText(), "Error: [PlayerFace] After not found in t.ini. -- Mon Mar 07 14:05:09 2011\n");
    EXPECT_EQ(DebugText(), "");
    EXPECT_EQ(IniDataGet("t.ini", "X", "Y", &nValue, 0), 0);
    EXPECT_EQ(DebugText(), "Error: [X] Y not found in t.ini.\n");
    EXPECT_EQ(LogEntryCount(), 1);
    // A missing file or a null name: false and nothing reported.
    EXPECT_EQ(IniDataGet("none.ini", "X", "Y", &nValue, 1), 0);
    EXPECT_EQ(IniDataGet(nullptr, "X", "Y", &nValue, 1), 0);
    EXPECT_EQ(IniDataGet("t.ini", "X", nullptr, &nValue, 0), 0);
    EXPECT_EQ(LogEntryCount(), 1);
    EXPECT_EQ(DebugText(), "Error: [X] Y not found in t.ini.\n");
}

TEST_F(ZelCommonTest, IniReadersSurviveBadFiles)
{
    const struct {
        std::string strText;
        int nFound, nValue;
    } kCases[] = {
        {"", 0, kUntouched},
        {std::string("\0\x01\xFF[S]\x7F", 7), 0, kUntouched},
        {"[S]\n" + std::string(100000, 'x') + " K=5", 1, 5},
        {std::string("[S]\nK=7\0junk\n", 13), 1, 7},  // a NUL ends the token's text
    };
    for (const auto& c : kCases) {
        WriteFile("bad.ini", c.strText);
        int nValue = kUntouched;
        EXPECT_EQ(IniDataGet("bad.ini", "S", "K", &nValue, 1), c.nFound);
        EXPECT_EQ(nValue, c.nValue);
    }
}

TEST_F(ZelCommonTest, MemIniReadsLines)
{
    const std::string strImage =
        "[Sec] \nName=wrong\n"  // the header line must be the pattern as a whole
        "[Sec]\r\n Amount=2\r\nName=  two words\r\nAmount= 12\r\n[Next]\nAmount=99\nTail=1\n"
        "[Blank]\n\nAmount=5\n"
        "[Tail]\nAmount=12";
    const IniCase kCases[] = {
        {"SEC", "Amount", 1, 12},           // the key stands at the start of its line
        {"Sec", "Tail", 0, kUntouched},     // the section ends at [Next]
        {"Tail", "Amount", 1, 1},           // the last character of an unterminated image is lost
        {"Blank", "Amount", 1, kUntouched}, // an empty line is a proper prefix of "Amount=": found, untouched
    };
    const unsigned nSize = static_cast<unsigned>(strImage.size());
    for (const auto& c : kCases) {
        int nValue = kUntouched;
        EXPECT_EQ(MemIniDataGet(strImage.data(), nSize, c.szTitle, c.szKey, &nValue, 0), c.nFound) << c.szKey;
        EXPECT_EQ(nValue, c.nValue) << c.szTitle << " " << c.szKey;
    }
    char szName[1024] = "old";
    EXPECT_EQ(MemIniStrGet(strImage.data(), nSize, "Sec", "Name", szName, 0), 1);
    EXPECT_STREQ(szName, "two");
    EXPECT_EQ(DebugText(), "Error: [Sec] Tail not found in MemIniDataGet.\n");
    EXPECT_EQ(MemIniStrGet(strImage.data(), 5, "Sec", "Name", szName, 1), 0);
    EXPECT_EQ(LogText(), "Error: [Sec] Name not found in MemIniStrGet. -- Mon Mar 07 14:05:09 2011\n");
    EXPECT_EQ(MemIniStrGet(nullptr, 5, "Sec", "Name", szName, 1), 0);
    EXPECT_EQ(LogEntryCount(), 1);
}

TEST(ZelCommon, MemIniReadLineSplitsAndLosesTheLastCharacter)
{
    const std::string strImage("ab\r\n\ncd\0e\ngh", 12);
    unsigned nPos = 0;
    char szLine[8];
    for (const char* szExpected : {"ab", "", "cd", "g"}) {
        ASSERT_TRUE(MemIniReadLine(strImage.data(), 12, &nPos, szLine, sizeof(szLine)));
        EXPECT_STREQ(szLine, szExpected);
    }
    EXPECT_FALSE(MemIniReadLine(strImage.data(), 12, &nPos, szLine, sizeof(szLine)));
    nPos = 0;  // a line of the buffer's size or more does not fit
    EXPECT_FALSE(MemIniReadLine("1234567\n", 8, &nPos, szLine, sizeof(szLine)));
    nPos = 0;
    EXPECT_FALSE(MemIniReadLine("123456789", 9, &nPos, szLine, sizeof(szLine)));
    EXPECT_EQ(std::strlen(szLine), 7u);
}

TEST(ZelCommon, BoundedCopyAndFormatCutAndTerminate)
{
    char szBuffer[64];
    std::memset(szBuffer, 'z', sizeof(szBuffer));
    EXPECT_TRUE(SafeStrCopy(szBuffer, sizeof(szBuffer), std::string(100, 'a').c_str()));
    EXPECT_EQ(std::string(szBuffer), std::string(63, 'a'));
    EXPECT_TRUE(SafeStrCopy(szBuffer, sizeof(szBuffer), "ab"));
    EXPECT_EQ(std::string(szBuffer, sizeof(szBuffer)), "ab" + std::string(62, '\0'));  // zero-filled
    EXPECT_FALSE(SafeStrCopy(szBuffer, sizeof(szBuffer), nullptr));
    EXPECT_FALSE(SafeStrCopy(nullptr, 4, "x"));
    EXPECT_FALSE(SafeSprintf(szBuffer, 0, "%d", 1));
    EXPECT_FALSE(SafeSprintf(szBuffer, -1, "%d", 1));
    EXPECT_FALSE(SafeSprintf(szBuffer, sizeof(szBuffer), nullptr));
    EXPECT_STREQ(szBuffer, "ab");  // the failures wrote nothing
    EXPECT_TRUE(SafeSprintf(szBuffer, 8, "%s", "12345678"));
    EXPECT_STREQ(szBuffer, "1234567");
}
