#include "ClientData/FontSetting.h"

#include <cstdint>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"
#include "ZelGameBase/Platform/Platform.h"

namespace {

const char kOrderedSettings[] =
    "GUIFontShadow=1\r\nGUIFontShadowColor=404040\r\nChatFont=Font/simsun.ttf\r\nChatFontSize=14\r\n"
    "Antialias=0\r\nTipFontShadow=2\r\nTipFontShadowColor=80102030\r\n";

using FontSettingTest = RegistryFolderTest<TableRegistry>;

// The default font name through slot 16, into an empty string's storage.
CZelString DefaultFontName(CFontSetting& table)
{
    CZelString strName;
    table.GetDefaultFontName(&strName);
    return strName;
}

TEST_F(FontSettingTest, ColoursWithoutAlphaAreOpaque)
{
    const std::pair<const char*, uint32_t> kCases[] = {
        {"0", 0xFF000000},       {"", 0xFF000000},         {"404040", 0xFF404040}, {"FFFFFF", 0xFFFFFFFF},
        {"1000000", 0x01000000}, {"80404040", 0x80404040}, {"zz", 0xFF000000},
    };
    for (const auto& c : kCases) {
        WriteFile("ini/FontSetting.ini", std::string("GUIFontShadow=0\nGUIFontShadowColor=") + c.first + "\n");
        CFontSetting table;
        table.Load();
        EXPECT_EQ(table.GetGUIFontShadowColor(), c.second) << c.first;
        TableRegistry::Destroy();
    }
}

TEST_F(FontSettingTest, FontFoldersOverrideTheConfiguredFiles)
{
    WriteFile("ini/FontSetting.ini", kOrderedSettings);
    WriteFile("Font/Chat/chat.ttf", "");
    WriteFile("Font/GUI/first.ttf", "");
    WriteFile("Font/GUI/second.TTF", "");
    WriteFile("Font/Tip/readme.txt", "");
    std::string strFirstGui;
    ASSERT_TRUE(PlatformFindFirstFile((Folder() + "/Font/GUI").c_str(), "*.ttf", strFirstGui));

    CFontSetting table;
    table.Load();
    EXPECT_STREQ(table.GetChatFontFile(), "Font/Chat/chat.ttf");
    EXPECT_EQ(table.GetGUIFontFile(), "Font/GUI/" + strFirstGui);
    EXPECT_STREQ(table.GetTipFontFile(), "");
    EXPECT_EQ(LogEntryCount(), 0);

    // Clear forgets the found files as well as the settings.
    table.Clear();
    EXPECT_STREQ(table.GetChatFontFile(), "");
    EXPECT_EQ(table.GetChatFontSize(), CFontSetting::kDefaultChatFontSize);
}

TEST_F(FontSettingTest, DefaultFontFromTheFirstFilledSectionAfterTheHead)
{
    // An empty section is skipped, a name stops at its first blank, a missing
    // second key reads 0; an empty head, keys before any section, no font
    // section or an empty file give nothing.
    const struct {
        const char *szFontIni, *szFontName;
        int nValue;
    } kCases[] = {
        {"[FontList]\r\nAmount=1\r\n[Font1]\r\nName=SimSun\r\nSize=12\r\n", "SimSun", 12},
        {"[List]\nA=1\n[Empty]\n; none\n[Font]\nFace=Arial Bold\nWeight=700\n", "Arial", 700},
        {"[List]\nA=1\n[Font]\nFace=Tahoma\n", "Tahoma", 0},
        {"[List]\n[Font]\nFace=Tahoma\nSize=9\n", "", 0},
        {"A=1\n[Font]\nFace=Tahoma\nSize=9\n", "", 0},
        {"[List]\nA=1\n", "", 0},
        {"", "", 0},
    };
    for (const auto& c : kCases) {
        WriteFile("ini/Font.ini", c.szFontIni);
        CFontSetting table;
        table.Load();
        EXPECT_STREQ(DefaultFontName(table), c.szFontName) << c.szFontIni;
        EXPECT_EQ(table.GetDefaultFontValue(), c.nValue) << c.szFontIni;
        TableRegistry::Destroy();
    }
}

// Slot 16 returns the name as a shared copy, built in the caller's storage
// given after the object, and its address is the result.
TEST_F(FontSettingTest, TheDefaultFontNameComesBackInTheCallersStorage)
{
    WriteFile("ini/Font.ini", "[List]\nA=1\n[Font]\nFace=SimHei\nSize=16\n");
    CFontSetting table;
    table.Load();
    alignas(CZelString) unsigned char storage[sizeof(CZelString)];
    CZelString* pName = CallSlot<CZelString*>(&table, 16, reinterpret_cast<CZelString*>(storage));
    ASSERT_EQ(static_cast<void*>(pName), static_cast<void*>(storage));
    EXPECT_STREQ(*pName, "SimHei");
    EXPECT_EQ(pName->GetData(), DefaultFontName(table).GetData());
    pName->~CZelString();
}

}  // namespace
