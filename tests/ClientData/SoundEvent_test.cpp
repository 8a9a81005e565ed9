#include "ClientData/SoundEvent.h"

#include <cstdint>
#include <cstdio>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

using SoundEventTest = RegistryFolderTest<TableRegistry>;

TEST_F(SoundEventTest, LinesMapIdsToTexts)
{
    WriteFile("ini/SoundEvent.ini", "; interface sounds\r\n7 click.wav\r\n9\r\n// game sounds\r\n12 sound/a b c\r\n"
                                    "13  two.wav\r\n5\tbeep.wav\r\nx y.wav\r\n-1 last.wav\r\n7 ok.wav\r\n");
    CSoundEvent table;
    CallSlot<void>(&table, 1);  // Load
    const struct {
        uint32_t idEvent;
        const char* szText;
    } kCases[] = {
        {7, "ok.wav"},             // a later line replaces the text
        {9, ""},                   // stored empty, not missing
        {12, "sound/a"},           // only the second field counts
        {13, ""},                  // two blanks: the second field is empty
        {5, ""},                   // a tab does not separate: atoi reads "5"
        {0, "y.wav"},              // a non-number is id 0
        {0xFFFFFFFFu, "last.wav"}, // -1 wraps
        {8, "(null)"},             // not stored
    };
    for (const auto& c : kCases) {
        const char* szText = CallSlot<const char*>(&table, 7, c.idEvent);
        EXPECT_STREQ(szText ? szText : "(null)", c.szText) << c.idEvent;
    }
    EXPECT_EQ(table.GetLoadedAmount(), 7u);
    EXPECT_EQ(LogEntryCount(), 0);
    CallSlot<void>(&table, 2);  // Clear
    EXPECT_EQ(CallSlot<const char*>(&table, 7, uint32_t{7}), nullptr);
}

TEST_F(SoundEventTest, LoadAddsToWhatIsHeldUntilClearedAMissingFileKeepsItAndGarbageIsHarmless)
{
    CSoundEvent table;
    table.Load();
    EXPECT_EQ(LogEntryCount(), 1);
    EXPECT_NE(LogText().find("Load Error ini/SoundEvent.ini not find -- "), std::string::npos);
    WriteFile("ini/SoundEvent.ini", "1 a.wav\n2 b.wav\n");
    table.Load();
    WriteFile("ini/SoundEvent.ini", "2 c.wav\n3 d.wav\n");
    table.Load();
    EXPECT_STREQ(table.GetSoundEventText(1), "a.wav");
    EXPECT_STREQ(table.GetSoundEventText(2), "c.wav");
    EXPECT_STREQ(table.GetSoundEventText(3), "d.wav");
    std::remove("ini/SoundEvent.ini");
    table.Load();
    EXPECT_STREQ(table.GetSoundEventText(3), "d.wav");
    table.Clear();
    EXPECT_EQ(table.GetSoundEventText(1), nullptr);
    EXPECT_EQ(table.GetLoadedAmount(), 0u);
    EXPECT_STREQ(TableFileName(table).c_str(), "");  // a fixed path: nothing to resolve

    std::string strGarbage;  // garbage does not break loading
    for (int i = 0; i < 6000; ++i) strGarbage += static_cast<char>((i * 31 + 7) % 256);
    WriteFile("ini/SoundEvent.ini", strGarbage);
    table.Load();
    for (uint32_t id = 0; id < 64; ++id) table.GetSoundEventText(id);
}

}  // namespace
