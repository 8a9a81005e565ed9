// "ini/FontSetting.ini" and "ini/Font.ini" through the font settings; the
// input holds both files, split at "@@FILE@@".
#include "ClientData/FontSetting.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    const std::vector<std::string> setFile = FuzzSplitFiles(pData, nSize, 2);
    FuzzWriteFile("ini/FontSetting.ini", reinterpret_cast<const uint8_t*>(setFile[0].data()), setFile[0].size());
    FuzzWriteFile("ini/Font.ini", reinterpret_cast<const uint8_t*>(setFile[1].data()), setFile[1].size());
    FuzzTableLife<CFontSetting>([](CFontSetting& table) {
        (void)std::strlen(table.GetGUIFontFile());
        (void)std::strlen(table.GetChatFontFile());
        (void)std::strlen(table.GetTipFontFile());
        table.GetGUIFontShadow();
        table.GetGUIFontShadowColor();
        table.GetChatFontSize();
        table.GetAntialias();
        table.GetTipFontShadow();
        table.GetTipFontShadowColor();
        CZelString strName;
        (void)std::strlen(*table.GetDefaultFontName(&strName));
        table.GetDefaultFontValue();
    });
    return 0;
}
