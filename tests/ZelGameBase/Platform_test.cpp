#include "ZelGameBase/Platform/Platform.h"

#include <cstdlib>
#include <filesystem>
#include <string>

#include "Support/TestSupport.h"

using PlatformTest = DataFolderTest;

TEST_F(PlatformTest, ReadsWholeFilesByEitherSlash)
{
    const std::string strBinary("a\0b\r\n\x1A\xFF", 7);
    WriteFile("ini/sub/x.bin", strBinary);
    std::string strData = "stale";
    const unsigned long nBefore = PlatformReadFileCount();
    EXPECT_TRUE(PlatformReadFile("ini\\sub\\x.bin", strData));
    EXPECT_EQ(strData, strBinary);
    EXPECT_TRUE(PlatformReadFile("./ini/sub/x.bin", strData));
    EXPECT_FALSE(PlatformReadFile("ini/missing.bin", strData));
    EXPECT_EQ(strData, "");
    EXPECT_FALSE(PlatformReadFile("ini", strData));  // a folder is no file
    EXPECT_FALSE(PlatformReadFile(nullptr, strData));
    EXPECT_EQ(PlatformReadFileCount() - nBefore, 5ul);
    FILE* pFile = PlatformOpenFile("ini\\sub\\x.bin", "rb");
    ASSERT_NE(pFile, nullptr);
    std::fclose(pFile);
    EXPECT_EQ(PlatformOpenFile("ini", "rb"), nullptr);
    // A large file, and one whose size the system does not know beforehand.
    const std::string strLarge(200000, 'x');
    WriteFile("large.bin", strLarge);
    EXPECT_TRUE(PlatformReadFile("large.bin", strData));
    EXPECT_EQ(strData, strLarge);
#ifndef _WIN32
    EXPECT_TRUE(PlatformReadFile("/proc/self/status", strData));
    EXPECT_NE(strData.find("Name:"), std::string::npos);
#endif
}

TEST_F(PlatformTest, CurrentDirectoryHasNoTrailingSeparator)
{
    const std::string strDir = PlatformCurrentDirectory();
    EXPECT_EQ(strDir, std::filesystem::current_path().string());
    EXPECT_EQ(PlatformJoinPath(strDir, "a.ini"), strDir + "/a.ini");
}

TEST_F(PlatformTest, FindFirstFileMatchesPatternsWithoutCase)
{
    for (const char* szName : {"font/b.TTF", "font/a.ttf", "font/c.txt", "font/ttf", "other/_x.ttf", "other/Z.ttf"})
        WriteFile(szName, "x");
    const struct {
        const char *szDir, *szPattern;
        bool bFound;
        const char* szName;
    } kCases[] = {
        {"font", "*.ttf", true, "a.ttf"}, {"font", "*.TTF", true, "a.ttf"}, {"font", "b.*", true, "b.TTF"},
        {"font", "*.png", false, ""},     {"missing", "*", false, ""},      {"font", nullptr, false, ""},
        {"other", "*.ttf", true, "Z.ttf"},  // NTFS order upper-cases: "Z" before "_"
    };
    for (const auto& c : kCases) {
        std::string strName;
        EXPECT_EQ(PlatformFindFirstFile(c.szDir, c.szPattern, strName), c.bFound) << c.szPattern;
        EXPECT_EQ(strName, c.szName);
    }
}

TEST_F(PlatformTest, DebugOutputGoesToTheSinkAndOnRequestToStderr)
{
    unsetenv("ZEL_DEBUG_OUTPUT");
    testing::internal::CaptureStderr();
    PlatformDebugOutput("one\n");
    PlatformDebugOutput(nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    setenv("ZEL_DEBUG_OUTPUT", "1", 1);
    testing::internal::CaptureStderr();
    PlatformDebugOutput("two\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "two\n");
    unsetenv("ZEL_DEBUG_OUTPUT");
    EXPECT_EQ(DebugText(), "one\ntwo\n");
}
