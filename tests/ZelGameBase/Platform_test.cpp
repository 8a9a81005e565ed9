#include "ZelGameBase/Platform/Platform.h"

#include <cstdio>
#include <filesystem>
#include <string>

#include "Support/TestSupport.h"

using PlatformTest = DataFolderTest;

TEST_F(PlatformTest, ReadsWholeRegularFilesByEitherSlash)
{
    const std::string strBinary("a\0b\r\n\x1A\xFF", 7);
    WriteFile("ini/sub/x.bin", strBinary);
    std::string strData = "stale";
    EXPECT_TRUE(PlatformReadFile("ini\\sub\\x.bin", strData));
    EXPECT_EQ(strData, strBinary);
    for (const char* szPath : {"ini/missing.bin", "ini", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(PlatformReadFile(szPath, strData));  // a folder is no file
        EXPECT_EQ(strData, "");
    }
    FILE* pFile = PlatformOpenFile("ini\\sub\\x.bin", "rb");
    ASSERT_NE(pFile, nullptr);
    std::fclose(pFile);
    EXPECT_EQ(PlatformOpenFile("ini", "rb"), nullptr);
    const std::string strLarge(200000, 'x');
    WriteFile("large.bin", strLarge);
    EXPECT_TRUE(PlatformReadFile("./large.bin", strData));
    EXPECT_EQ(strData, strLarge);
    // A file is read up to the size it had when opened: one that the system
    // gives as empty reads as empty, whatever it would deliver.
    EXPECT_TRUE(PlatformReadFile("/proc/self/status", strData));
    EXPECT_EQ(strData, "");
}

TEST_F(PlatformTest, FindFirstFileMatchesPatternsWithoutCaseInTheListingOrder)
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
    // Enough names that the folder's own order is all but sure to differ
    // from every sorted order: the first listed is the one found.
    for (int i = 0; i < 40; ++i)
        WriteFile("many/" + std::to_string(i * 7919 % 1000) + ".ttf", "x");
    std::string strListedFirst, strName;
    for (const auto& entry : std::filesystem::directory_iterator("many"))
        if (strListedFirst.empty())
            strListedFirst = entry.path().filename().string();
    ASSERT_TRUE(PlatformFindFirstFile("many", "*.ttf", strName));
    EXPECT_EQ(strName, strListedFirst);
}
