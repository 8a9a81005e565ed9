// Rules for the font files: "ini/FontSetting.ini" is read as seven lines in a
// fixed order, so a line out of place (a misspelt or moved key, or any line
// after the seventh) loses its setting; "ini/Font.ini" gives the default
// font's name as the first word of its first key line, cut to 255 bytes.
#include <cstring>
#include <string>
#include <vector>

#include "Lint.h"

namespace {

const char kSettingFile[] = "ini/FontSetting.ini";
const char kFontFile[] = "ini/Font.ini";
constexpr std::size_t kNameBuffer = 256;

// The settings in the order the loader reads them.
const char* SettingKey(std::size_t nIndex)
{
    static const char* const kKeys[] = {"GUIFontShadow", "GUIFontShadowColor", "ChatFont",          "ChatFontSize",
                                        "Antialias",     "TipFontShadow",      "TipFontShadowColor"};
    return nIndex < sizeof(kKeys) / sizeof(kKeys[0]) ? kKeys[nIndex] : nullptr;
}

void CheckFontSetting(CLintContext& context)
{
    std::string strText;
    if (!context.ReadFile(kSettingFile, strText))
        return;
    const std::vector<std::string> setLine = CLintContext::SplitLines(strText);
    std::size_t nRead = 0;  // lines the loader reads, comments and empty lines not counted
    for (std::size_t i = 0; i < setLine.size(); ++i) {
        const std::string& strLine = setLine[i];
        if (strLine.empty() || strLine[0] == ';' || strLine[0] == '\r' || strLine.rfind("//", 0) == 0)
            continue;
        const int nLine = static_cast<int>(i + 1);
        const std::string strKey = strLine.substr(0, strLine.find('='));
        const char* szExpected = SettingKey(nRead++);
        if (szExpected == nullptr)
            context.Report(kSettingFile, nLine, LINT_ERROR, "font-setting-order",
                           "only the first seven settings are read: \"" + strKey + "\" is ignored");
        else if (strKey != szExpected)
            context.Report(kSettingFile, nLine, LINT_ERROR, "font-setting-order",
                           "\"" + strKey + "\" stands where " + szExpected +
                               " is read: the line is spent and " + szExpected + " keeps its default");
    }
}

// The default font is the first key line of the first section after the
// list's head that holds a key line; its value is read as one word.
void CheckDefaultFont(CLintContext& context)
{
    std::string strText;
    if (!context.ReadFile(kFontFile, strText))
        return;
    const std::vector<std::string> setLine = CLintContext::SplitLines(strText);
    int nSection = -1;
    bool bHeadHasKey = false;
    for (std::size_t i = 0; i < setLine.size(); ++i) {
        const std::string& strLine = setLine[i];
        if (strLine.size() >= 2 && strLine.front() == '[' && strLine.back() == ']') {
            ++nSection;
            continue;
        }
        const std::size_t nEqual = strLine.find('=');
        const bool bComment = strLine.rfind(";", 0) == 0 || strLine.rfind("//", 0) == 0;
        if (nSection < 0 || nEqual == std::string::npos || nEqual == 0 || bComment)
            continue;
        if (nSection == 0) {
            bHeadHasKey = true;
            continue;
        }
        if (!bHeadHasKey)
            return;  // no list head: the file is not read
        // The value as the scan takes it: blanks skipped, then one word.
        std::size_t nStart = nEqual + 1;
        while (nStart < strLine.size() && (strLine[nStart] == ' ' || strLine[nStart] == '\t'))
            ++nStart;
        const std::size_t nEnd = strLine.find_first_of(" \t", nStart);
        const std::string strWord = strLine.substr(nStart, nEnd == std::string::npos ? std::string::npos : nEnd - nStart);
        const int nLine = static_cast<int>(i + 1);
        if (nEnd != std::string::npos && strLine.find_first_not_of(" \t", nEnd) != std::string::npos)
            context.Report(kFontFile, nLine, LINT_WARNING, "font-text-cut",
                           "the default font name holds a blank: only \"" + strWord + "\" is read");
        else if (strWord.size() >= kNameBuffer)
            context.Report(kFontFile, nLine, LINT_WARNING, "font-text-cut",
                           "the default font name has " + std::to_string(strWord.size()) + " bytes: it is cut to " +
                               std::to_string(kNameBuffer - 1));
        return;
    }
}

void CheckFont(CLintContext& context)
{
    CheckFontSetting(context);
    CheckDefaultFont(context);
}

const LintRuleRegistration kFont("font", CheckFont);

}  // namespace
