#include <filesystem>
#include <string>

#include "Support/TestSupport.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

LocalTime g_clock;
LocalTime TestClock() { return g_clock; }

const char kStamp[] = " -- Mon Mar 07 14:05:09 2011\n";

using DebugLogTest = DataFolderTest;

}  // namespace

TEST_F(DebugLogTest, EntryIsMessageSeparatorAndCtimeText)
{
    EXPECT_FALSE(std::filesystem::exists("debug"));
    LogSave("abc");
    EXPECT_EQ(ReadWholeFile("debug/2011_3_7.log"), std::string("abc") + kStamp);
    // Appended, never rewritten; a message ending in a line feed puts the
    // stamp on a line of its own.
    LogSave("%s load error!", "ini/Action.dat");
    LogSave("line\n");
    LogAssert("pInfo", 120, "ClientData\\MagicData");
    LogSave(nullptr);
    EXPECT_EQ(LogText(), std::string("abc") + kStamp + "ini/Action.dat load error!" + kStamp + "line\n" + kStamp +
                             ZEL_STAR "ASSERT(pInfo) in 120 line of ClientData\\MagicData" ZEL_STAR + kStamp);
}

TEST_F(DebugLogTest, AnotherFolderTakesTheEntriesUntilReset)
{
    std::filesystem::create_directory("elsewhere");
    LogSetFolder("elsewhere");
    LogSave("abc");
    LogSetFolder(nullptr);
    EXPECT_FALSE(std::filesystem::exists("debug"));
    EXPECT_EQ(ReadWholeFile("elsewhere/2011_3_7.log"), std::string("abc") + kStamp);
    LogSave("def");
    EXPECT_EQ(ReadWholeFile("debug/2011_3_7.log"), std::string("def") + kStamp);
}

TEST_F(DebugLogTest, OneFilePerLocalDayWithoutPadding)
{
    const struct {
        LocalTime time;
        const char* szFile;
        const char* szStamp;
    } kCases[] = {
        {{2011, 3, 7, 23, 59, 59, 1}, "debug/2011_3_7.log", "Mon Mar 07 23:59:59 2011\n"},
        {{2011, 3, 8, 0, 0, 0, 2}, "debug/2011_3_8.log", "Tue Mar 08 00:00:00 2011\n"},
        {{2012, 1, 5, 9, 8, 7, 4}, "debug/2012_1_5.log", "Thu Jan 05 09:08:07 2012\n"},
        {{2012, 12, 31, 1, 2, 3, 1}, "debug/2012_12_31.log", "Mon Dec 31 01:02:03 2012\n"},
    };
    std::filesystem::create_directory("debug");  // an existing folder is used as it is
    LogSetClock(TestClock);
    for (const auto& c : kCases) {
        g_clock = c.time;
        LogSave("m");
        EXPECT_EQ(ReadWholeFile(c.szFile), std::string("m -- ") + c.szStamp);
    }
}

TEST_F(DebugLogTest, MessagesAreCutAtTheirBuffers)
{
    DebugStrOut("Error: [%s] %s not found in %s.", "S", "K", "f.ini");
    EXPECT_EQ(DebugText(), "Error: [S] K not found in f.ini.\n");
    EXPECT_FALSE(std::filesystem::exists("debug"));  // the debugger output never touches the disk
    const std::string strLong(5000, 'x');
    LogSave("%s", strLong.c_str());
    LogMsgSave("%s", strLong.c_str());
    CDataFileReader reader;
    reader.LogSave("%s file format wrong!", strLong.c_str());
    DebugStrOut("%s", strLong.c_str());
    const std::string x1023(1023, 'x');
    EXPECT_EQ(LogText(), x1023 + kStamp + x1023 + kStamp + std::string(2047, 'x') + kStamp);
    EXPECT_EQ(DebugText(), "Error: [S] K not found in f.ini.\n" + std::string(1022, 'x') + "\n");
}

TEST_F(DebugLogTest, LogMsgSaveFormatsTwiceAndTheReaderFormWritesOnlyWithItsFlag)
{
    LogMsgSave("%s %d%%", "rate", 50);  // first pass "rate 50%", read again as a format
    LogMsgSave("%s", "100%% done");     // the argument's own "%%" collapses in the second pass
    LogMsgSave("%s", "odd %d left");    // a stray conversion is kept as text, never read
    CDataFileReader reader;
    reader.SetErrorReport(false);
    reader.LogSave("%s file format wrong!", "a.dat");
    reader.SetErrorReport(true);
    reader.LogSave("%s file format wrong!", "b.dat");
    reader.LogSave(nullptr);
    EXPECT_EQ(LogText(), std::string("rate 50%") + kStamp + "100% done" + kStamp + "odd %d left" + kStamp +
                             "b.dat file format wrong!" + kStamp);
}
