// Font settings: which font files the three text surfaces use (interface,
// chat, tool tips), the chat size, the shadows and antialiasing.
//
// The settings file is a list of key=value lines in a fixed order (the
// description kFontSettingDesc names them). Each setting reads the next line
// and takes its value only when the key (the text before the first "=",
// compared exactly) is the expected one: a line out of place is consumed and
// loses its setting. Comment and empty lines do not count. A line without "="
// has an empty value. Colours are hexadecimal 0xAARRGGBB; a value below
// 0x1000000 names no alpha and is made opaque (404040 reads as 0xFF404040).
//
// A ".ttf" file in one of the font folders under the working directory
// overrides the configured file ("<folder><first match>", in the order the
// system lists the folder).
//
// The font list names the default font. Its first section is the list's
// head and must hold a key line; the first later section that holds a key
// line is the default font: the value of its first key line is the name
// (the first word), that of its second the value (an integer):
//     [FontList]
//     Amount=1
//     [Font1]
//     Name=SimSun
//     Size=12
#pragma once

#include <cstddef>
#include <cstdint>

#include "ClientData/DataTable.h"
#include "ClientData/TableDesc.h"
#include "ZelGameBase/ZelString.h"

// What the table holds, in the order the client's table lays it out.
struct FontSettingValues {
    int m_nAntialias;
    int m_nTipFontShadow;
    uint32_t m_dwTipFontShadowColor;
    CZelString m_strTipFontFile;
    int m_nGUIFontShadow;
    uint32_t m_dwGUIFontShadowColor;
    CZelString m_strGUIFontFile;
    int m_nChatFontSize;
    CZelString m_strChatFontFile;
    CZelString m_strDefaultFontName;
    int m_nDefaultFontValue;
};

class CFontSetting : public CDataTable {
public:
    // Construction values, kept by every setting the files do not give.
    static constexpr int kDefaultAntialias = 1;                  // draw antialiased
    static constexpr int kDefaultShadow = 0;                     // no shadow
    static constexpr uint32_t kDefaultShadowColor = 0xFF000000;  // opaque black
    static constexpr int kDefaultChatFontSize = 12;
    // Files and the default font name start empty, the default value 0.

    CFontSetting();
    ~CFontSetting() = default;
    ZEL_DELETING_DESTRUCTOR

    // Reads the settings file, searches the font folders and reads the font
    // list (both skipped when the working directory is unknown).
    void Load() override;
    // Returns every field to its construction value.
    void Clear() override;

    // Slots 7-9: the font files as plain text, "" when none is set; valid
    // until the next Clear or Load.
    virtual const char* GetGUIFontFile();   // slot 7
    virtual const char* GetChatFontFile();  // slot 8
    virtual const char* GetTipFontFile();   // slot 9
    // Slots 10-15: the settings by value.
    virtual int GetGUIFontShadow();            // slot 10
    virtual uint32_t GetGUIFontShadowColor();  // slot 11, 0xAARRGGBB
    virtual int GetChatFontSize();             // slot 12
    virtual int GetAntialias();                // slot 13
    virtual int GetTipFontShadow();            // slot 14
    virtual uint32_t GetTipFontShadowColor();  // slot 15, 0xAARRGGBB
    // Slots 16-17: the default font from the font list; "" and 0 when the
    // list names none. The name is returned as the client's compiler returns
    // a string class by value: a shared copy (no allocation) built in the
    // caller's storage *pResult (taken as raw), whose address comes back.
    virtual CZelString* GetDefaultFontName(CZelString* pResult);  // slot 16
    virtual int GetDefaultFontValue();                            // slot 17

    // Settings the last Load took from the settings file.
    std::size_t GetLoadedAmount() const { return m_nLoadedAmount; }
    const FontSettingValues& Values() const { return m_values; }

private:
    void ReadSettings();
    void FindFontFiles(const char* szCurrentDir);
    void ReadDefaultFont();

    FontSettingValues m_values;
    std::size_t m_nLoadedAmount = 0;
};

extern const TableDesc kFontSettingDesc;
