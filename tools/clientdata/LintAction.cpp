// Rules for the action tables: names the action type files map nothing
// with, lines that a later line overrides, sections and lines that a
// first-wins table shadows or skips, and segment counts that wrap.
#include <cstdio>
#include <map>
#include <set>
#include <tuple>

#include "ClientData/ActionCtrlData.h"
#include "ClientData/ActionType.h"
#include "Lint.h"
#include "LintSectionScan.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

// The data-file reader drops empty lines, comments (";", "//") and lines
// that begin with a line break.
bool IsDroppedLine(const std::string& strLine)
{
    return strLine.empty() || strLine[0] == ';' || strLine.rfind("//", 0) == 0;
}

// Fields split at every blank, as the data-file reader splits them.
std::vector<std::string> BlankFields(const std::string& strLine)
{
    std::vector<std::string> setField(1);
    for (char c : strLine) {
        if (c == ' ')
            setField.emplace_back();
        else
            setField.back().push_back(c);
    }
    return setField;
}

std::string UnknownNameMessage(const std::string& strName)
{
    if (strName.empty())
        return "no action name in the second field (fields are split at every single blank): the line is ignored";
    for (int nPosition = 0; nPosition < kActionNameAmount; ++nPosition) {
        if (CrtCompareNoCase(ActionNameAt(nPosition), strName.c_str()) == 0)
            return "\"" + strName + "\" is not in the action name list (names compare case-sensitively; position " +
                   std::to_string(nPosition) + " is spelled \"" + ActionNameAt(nPosition) + "\"): the line is ignored";
    }
    return "\"" + strName + "\" is not in the action name list: the line is ignored";
}

// Unknown names are ignored; of two lines naming one action the later wins.
bool CheckActionTypeFile(CLintContext& context, const char* szPath)
{
    std::string strText;
    if (!context.ReadFile(szPath, strText))
        return false;
    std::map<int, int> mapLineOf;  // position -> the line that maps it so far
    const std::vector<std::string> setLine = CLintContext::SplitLines(strText);
    for (std::size_t i = 0; i < setLine.size(); ++i) {
        if (IsDroppedLine(setLine[i]))
            continue;
        const int nLine = static_cast<int>(i + 1);
        const std::vector<std::string> setField = BlankFields(setLine[i]);
        const std::string strName = setField.size() > 1 ? setField[1].substr(0, 127) : std::string();
        const int nPosition = ActionPositionOf(strName.c_str());
        if (nPosition < 0) {
            context.Report(szPath, nLine, LINT_ERROR, "action-unknown-name", UnknownNameMessage(strName));
            continue;
        }
        auto [it, bNew] = mapLineOf.emplace(nPosition, nLine);
        if (!bNew) {
            context.Report(szPath, it->second, LINT_WARNING, "action-duplicate-name",
                           std::string(ActionNameAt(nPosition)) + " is named again on line " + std::to_string(nLine) +
                               ", which wins: this line is overridden");
            it->second = nLine;
        }
    }
    return true;
}

void CheckActionTypes(CLintContext& context)
{
    CheckActionTypeFile(context, "ini/ActionType.ini");
    // The catalogue names the player file only; the monster file is this table's too.
    if (!CheckActionTypeFile(context, "ini/MonsterActionType.ini"))
        context.Report("ini/MonsterActionType.ini", 0, LINT_ERROR, "missing-file",
                       "the action type table has no monster file: every monster action number is 0");
}

// Reports every section whose key a first-wins table already holds.
template <class Key, class KeyOf>
void CheckFirstWinsSections(CLintContext& context, const char* szPath, const char* szRule,
                            const std::vector<ScanSection>& setSection, KeyOf keyOf)
{
    std::map<Key, int> mapFirst;
    for (const ScanSection& section : setSection) {
        auto [it, bNew] = mapFirst.emplace(keyOf(section), section.nLine);
        if (!bNew)
            context.Report(szPath, section.nLine, LINT_WARNING, szRule,
                           "section [" + section.strTitle + "] repeats the key of line " + std::to_string(it->second) +
                               ": the first section is kept, this one is shadowed");
    }
}

bool ReadSections(CLintContext& context, const char* szPath, std::vector<ScanSection>& setSection)
{
    std::string strText;
    if (!context.ReadFile(szPath, strText))
        return false;
    setSection = SectionsScan(strText);
    return true;
}

void CheckActionDelay(CLintContext& context)
{
    const char* szPath = "ini/ActionDelay.ini";
    std::vector<ScanSection> setSection;
    if (!ReadSections(context, szPath, setSection))
        return;
    CheckFirstWinsSections<uint32_t>(
        context, szPath, "action-delay-duplicate", setSection,
        [](const ScanSection& section) { return static_cast<uint32_t>(CrtAtoi(section.strTitle.c_str())); });
}

int64_t CtrlKeyOf(const ScanSection& section)
{
    const char* pText = section.strTitle.c_str();
    int64_t nKey = 0;
    return CrtScanInt64(pText, &nKey) == SCAN_CONVERTED ? nKey : 0;
}

// Only the remainder of "Section" by 8 counts, and keys of segments beyond
// the count are never read.
void CheckCtrlCount(CLintContext& context, const char* szPath, const ScanSection& section)
{
    const ScanEntry* pCount = section.Find("Section");
    const int nCount = pCount != nullptr ? CrtAtoi(pCount->strValue.c_str()) : 0;
    const int nKept = nCount % kActionCtrlSegmentMax;
    if (nKept != nCount) {
        context.Report(szPath, pCount->nLine, LINT_WARNING, "action-ctrl-count",
                       "Section=" + pCount->strValue + " keeps " + std::to_string(nKept < 0 ? 0 : nKept) +
                           " segments: only the remainder by 8 counts, at most 7 segments exist");
        return;
    }
    for (const ScanEntry& key : section.setEntry) {
        for (const char* szPrefix : {"TimePercent", "MovePercent"}) {
            const std::size_t nPrefix = std::char_traits<char>::length(szPrefix);
            if (key.strKey.size() <= nPrefix || CrtCompareNoCase(key.strKey.substr(0, nPrefix).c_str(), szPrefix) != 0)
                continue;
            const int nIndex = CrtAtoi(key.strKey.c_str() + nPrefix);
            if (nIndex >= nKept) {
                context.Report(szPath, key.nLine, LINT_WARNING, "action-ctrl-count",
                               key.strKey + " is beyond Section=" + std::to_string(nKept) + ": it is never read");
                return;
            }
        }
    }
}

void CheckActionCtrl(CLintContext& context)
{
    const char* szPath = "ini/ActionCtrl.ini";
    std::vector<ScanSection> setSection;
    if (!ReadSections(context, szPath, setSection))
        return;
    CheckFirstWinsSections<int64_t>(context, szPath, "action-ctrl-duplicate", setSection, &CtrlKeyOf);
    for (const ScanSection& section : setSection)
        CheckCtrlCount(context, szPath, section);
}

using OffsetKey = std::tuple<int, int, int>;

// Sections numbered 0 or below are skipped; the rest decode to a key.
void CheckActionOffset(CLintContext& context)
{
    const char* szPath = "ini/ActionEffectOffset.ini";
    std::vector<ScanSection> setSection;
    if (!ReadSections(context, szPath, setSection))
        return;
    std::vector<ScanSection> setLoaded;
    for (const ScanSection& section : setSection) {
        if (CrtAtoi(section.strTitle.c_str()) > 0)
            setLoaded.push_back(section);
        else
            context.Report(szPath, section.nLine, LINT_WARNING, "action-offset-skipped",
                           "section [" + section.strTitle + "] is not a number above 0: it is skipped");
    }
    CheckFirstWinsSections<OffsetKey>(context, szPath, "action-offset-duplicate", setLoaded,
                                      [](const ScanSection& section) {
                                          const int n = CrtAtoi(section.strTitle.c_str());
                                          return OffsetKey(n / 10000, n % 10000 / 10, n % 10);
                                      });
}

// Lines whose key does not parse are skipped; a partly numeric key or a
// missing value loads something else than written; the first line of a key
// wins.
void CheckActionValue(CLintContext& context)
{
    const char* szPath = "ini/Action.dat";
    std::string strText;
    if (!context.ReadFile(szPath, strText))
        return;
    std::map<int64_t, int> mapFirst;
    const std::vector<std::string> setLine = CLintContext::SplitLines(strText);
    for (std::size_t i = 0; i < setLine.size(); ++i) {
        if (IsDroppedLine(setLine[i]))
            continue;
        const int nLine = static_cast<int>(i + 1);
        const std::vector<std::string> setField = BlankFields(setLine[i]);
        const std::string strKey = setField[0].substr(0, 63);
        const char* pText = strKey.c_str();
        int64_t nKey = 0;
        if (CrtScanInt64(pText, &nKey) != SCAN_CONVERTED) {
            context.Report(szPath, nLine, LINT_ERROR, "action-value-bad-line",
                           "key \"" + strKey + "\" is not a number: the line is skipped");
            continue;
        }
        if (*pText != '\0')
            context.Report(szPath, nLine, LINT_WARNING, "action-value-bad-line",
                           "key \"" + strKey + "\" reads as " + std::to_string(nKey));
        else if (setField.size() < 2 || setField[1].empty())
            context.Report(szPath, nLine, LINT_WARNING, "action-value-bad-line",
                           "no value after a single blank: the value reads as 0");
        auto [it, bNew] = mapFirst.emplace(nKey, nLine);
        if (!bNew)
            context.Report(szPath, nLine, LINT_WARNING, "action-value-duplicate",
                           "key " + std::to_string(nKey) + " repeats line " + std::to_string(it->second) +
                               ": the first line is kept, this one is shadowed");
    }
}

const LintRuleRegistration kActionTypes("action", CheckActionTypes);
const LintRuleRegistration kActionDelay("action", CheckActionDelay);
const LintRuleRegistration kActionCtrl("action", CheckActionCtrl);
const LintRuleRegistration kActionOffset("action", CheckActionOffset);
const LintRuleRegistration kActionValue("action", CheckActionValue);

}  // namespace
