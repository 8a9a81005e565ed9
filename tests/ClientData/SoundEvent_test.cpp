#include "ClientData/SoundEvent.h"

#include <cstdint>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

class SoundEventTest : public DataFolderTest {
protected:
    void TearDown() override
    {
        TableRegistry::Destroy();
        DataFolderTest::TearDown();
    }
};

TEST_F(SoundEventTest, LinesMapIdsToTexts)
{
    WriteFile("ini/SoundEvent.ini",
              "; interface sounds\r\n"
              "7 click.wav\r\n"
              "9\r\n"
              "// game sounds\r\n"
              "12 sound/a b c\r\n"
              "13  two.wav\r\n"
              "5\tbeep.wav\r\n"
              "x y.wav\r\n"
              "-1 last.wav\r\n"
              "7 ok.wav\r\n");
    CSoundEvent table;
    table.Load();
    struct Case {
        uint32_t idEvent;
        const char* szText;  // null: not stored
    };
    const Case kCases[] = {
        {7, "ok.wav"},             // a later line replaces the text
        {9, ""},                   // stored empty, not missing
        {12, "sound/a"},           // only the second field counts
        {13, ""},                  // two blanks: the second field is empty
        {5, ""},                   // a tab does not separate: atoi reads "5"
        {0, "y.wav"},              // a non-number is id 0
        {0xFFFFFFFFu, "last.wav"}, // -1 wraps
        {8, nullptr},
    };
    for (const Case& c : kCases) {
        const char* szText = table.GetSoundEventText(c.idEvent);
        if (c.szText == nullptr)
            EXPECT_EQ(szText, nullptr) << c.idEvent;
        else
            EXPECT_STREQ(szText, c.szText) << c.idEvent;
    }
    EXPECT_EQ(table.GetLoadedAmount(), 7u);
    EXPECT_EQ(LogEntryCount(), 0);
}

TEST_F(SoundEventTest, LoadAddsToWhatIsHeldUntilCleared)
{
    WriteFile("ini/SoundEvent.ini", "1 a.wav\n2 b.wav\n");
    CSoundEvent table;
    table.Load();
    WriteFile("ini/SoundEvent.ini", "2 c.wav\n3 d.wav\n");
    table.Load();
    EXPECT_STREQ(table.GetSoundEventText(1), "a.wav");
    EXPECT_STREQ(table.GetSoundEventText(2), "c.wav");
    EXPECT_STREQ(table.GetSoundEventText(3), "d.wav");
    table.Clear();
    EXPECT_EQ(table.GetSoundEventText(1), nullptr);
    EXPECT_EQ(table.GetLoadedAmount(), 0u);
    EXPECT_EQ(table.GetFileName(), "");  // a fixed path: nothing to resolve
}

TEST_F(SoundEventTest, MissingFileLogsAndKeepsWhatIsHeld)
{
    CSoundEvent table;
    table.Load();
    EXPECT_EQ(table.GetSoundEventText(0), nullptr);
    EXPECT_EQ(LogEntryCount(), 1);
    EXPECT_NE(LogText().find("Load Error ini/SoundEvent.ini not find -- "), std::string::npos);

    WriteFile("ini/SoundEvent.ini", "4 e.wav\n");
    table.Load();
    std::remove("ini/SoundEvent.ini");
    table.Load();
    EXPECT_STREQ(table.GetSoundEventText(4), "e.wav");
}

TEST_F(SoundEventTest, QueryThroughTheRawSlot)
{
    WriteFile("ini/SoundEvent.ini", "40 bell.wav\n41\n");
    CSoundEvent table;
    CallSlot<void>(&table, 1);  // Load
    EXPECT_STREQ(CallSlot<const char*>(&table, 7, uint32_t{40}), "bell.wav");
    EXPECT_STREQ(CallSlot<const char*>(&table, 7, uint32_t{41}), "");
    EXPECT_EQ(CallSlot<const char*>(&table, 7, uint32_t{42}), nullptr);
    CallSlot<void>(&table, 2);  // Clear
    EXPECT_EQ(CallSlot<const char*>(&table, 7, uint32_t{40}), nullptr);
}

TEST_F(SoundEventTest, GarbageFileDoesNotBreakLoading)
{
    std::string strGarbage;
    for (int i = 0; i < 6000; ++i)
        strGarbage += static_cast<char>((i * 31 + 7) % 256);
    WriteFile("ini/SoundEvent.ini", strGarbage);
    CSoundEvent table;
    table.Load();
    for (uint32_t id = 0; id < 64; ++id)
        table.GetSoundEventText(id);
}

}  // namespace
