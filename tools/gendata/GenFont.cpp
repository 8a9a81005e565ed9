// "ini/FontSetting.ini" (the seven settings in their fixed order),
// "ini/Font.ini" (the font list whose first font is the default one) and one
// small stand-in font file in each of Font/GUI, Font/Chat and Font/Tip, so
// that the folder search finds exactly one file each.
#include <string>

#include "GenData.h"

namespace {

const char kSong[] = "\xCB\xCE\xCC\xE5";  // the Song face's GBK name
const char kHei[] = "\xBA\xDA\xCC\xE5";   // the Hei face's GBK name

// A few bytes with a TrueType version tag: enough for the search, which
// looks at names only.
std::string StandInFont(const char* szFace)
{
    return std::string("\x00\x01\x00\x00", 4) + "stand-in font " + szFace + " for the sample data\n";
}

void GenerateFontSetting(CGenContext& context)
{
    // With the faulty set, a misspelt key puts ChatFontSize out of place
    // (line 5): the chat size keeps its default.
    const std::string strSizeKey = context.Faulty() ? "ChatFontsize" : "ChatFontSize";
    context.Write("ini/FontSetting.ini",
                  "; font settings: one key a line, in this order\n"
                  "GUIFontShadow=1\n"
                  "GUIFontShadowColor=404040\n"
                  "ChatFont=Font/Chat/ChatFont.ttf\n" +
                      strSizeKey +
                      "=14\n"
                      "Antialias=1\n"
                      "TipFontShadow=1\n"
                      "TipFontShadowColor=80202020\n",
                  true);

    // With the faulty set, a face name with a blank (line 5): only its first
    // word is read.
    const std::string strDefault = context.Faulty() ? "Microsoft YaHei" : kSong;
    context.Write("ini/Font.ini",
                  "; the interface's fonts; the first one is the default\n"
                  "[FontList]\n"
                  "Amount=2\n"
                  "[Font1]\n"
                  "Name=" + strDefault +
                      "\n"
                      "Size=12\n"
                      "[Font2]\n"
                      "Name=" + std::string(kHei) +
                      "\n"
                      "Size=14\n",
                  true);

    context.Write("Font/GUI/GuiFont.ttf", StandInFont("GUI"));
    context.Write("Font/Chat/ChatFont.ttf", StandInFont("Chat"));
    context.Write("Font/Tip/TipFont.ttf", StandInFont("Tip"));
}

const GeneratorRegistration kRegistration("ini/FontSetting.ini", GenerateFontSetting);

}  // namespace
