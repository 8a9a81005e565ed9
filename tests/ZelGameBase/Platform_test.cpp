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
    const std::string strLarge(200000, 'x');
    WriteFile("large.bin", strLarge);
    EXPECT_TRUE(PlatformReadFile("large.bin", strData));
    EXPECT_EQ(strData, strLarge);
#ifndef _WIN32
    // A file is read up to the size it had when opened: one that the system
    // gives as empty reads as empty, whatever it would deliver.
    EXPECT_TRUE(PlatformReadFile("/proc/self/status", strData));
    EXPECT_EQ(strData, "");
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
    for (const char* szName : {"font/b.TTF", "font/c.txt", "font/ttf", "other/Z.ttf"})
        WriteFile(szName, "x");
    const struct {
        const char *szDir, *szPattern;
        bool bFound;
        const char* szName;
    } kCases[] = {
        {"font", "*.ttf", true, "b.TTF"},  {"font", "B.*", true, "b.TTF"}, {"font", "?.txt", true, "c.txt"},
        {"font", "*.png", false, ""},      {"missing", "*", false, ""},    {"font", nullptr, false, ""},
        {"other", "*.TTF", true, "Z.ttf"},
    };
    for (const auto& c : kCases) {
        std::string strName;
        EXPECT_EQ(PlatformFindFirstFile(c.szDir, c.szPattern, strName), c.bFound) << c.szPattern;
        EXPECT_EQ(strName, c.szName);
    }
}

TEST_F(PlatformTest, FindFirstFileTakesTheListingOrderUnsorted)
{
    // Enough names that the folder's own order is all but sure to differ
    // from every sorted order.
    for (int i = 0; i < 40; ++i)
        WriteFile("many/" + std::to_string(i * 7919 % 1000) + ".ttf", "x");
    WriteFile("many/readme.txt", "x");
    std::string strListedFirst;
    for (const auto& entry : std::filesystem::directory_iterator("many")) {
        if (entry.path().extension() == ".ttf") {
            strListedFirst = entry.path().filename().string();
            break;
        }
    }
    std::string strName;
    ASSERT_TRUE(PlatformFindFirstFile("many", "*.ttf", strName));
    EXPECT_EQ(strName, strListedFirst);
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
