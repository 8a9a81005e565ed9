// Rules for the tutorial scripts ("BattleTutorial.ini"): lines the loader
// drops (unknown keyword, too few tokens), "LineAmount" that disagrees with
// the lines present, script ids that are not numbers or that a later section
// replaces, and tip texts cut by their buffer.
#include <map>
#include <string>
#include <unordered_map>

#include "ClientData/BattleTutorial.h"
#include "Lint.h"
#include "LintSectionScan.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

const char* const kTutorialFile = "ini/BattleTutorial.ini";

const TutorialKeyword* KeywordFind(const std::string& strKeyword)
{
    static const std::unordered_map<std::string, const TutorialKeyword*> mapKeyword = [] {
        std::unordered_map<std::string, const TutorialKeyword*> map;
        for (int i = 0; i < TutorialKeywordAmount(); ++i)
            map.emplace(TutorialKeywordAt(i).szKeyword, &TutorialKeywordAt(i));
        return map;
    }();
    const auto it = mapKeyword.find(strKeyword);
    return it != mapKeyword.end() ? it->second : nullptr;
}

// One line that the loader reads: the tokens are split at every comma.
void CheckCommandLine(CLintContext& context, const ScanEntry& entry)
{
    const std::string& strLine = entry.strValue;
    std::vector<std::size_t> setStart{0};
    for (std::size_t i = 0; i < strLine.size(); ++i)
        if (strLine[i] == ',')
            setStart.push_back(i + 1);
    const int nTokens = static_cast<int>(setStart.size());
    const std::string strKeyword = strLine.substr(0, strLine.find(','));
    const TutorialKeyword* pKeyword = KeywordFind(strKeyword);
    if (pKeyword == nullptr) {
        context.Report(kTutorialFile, entry.nLine, LINT_ERROR, "tutorial-unknown-keyword",
                       entry.strKey + ": " + strKeyword + " is no command keyword (case counts): the line is dropped");
        return;
    }
    if (nTokens < pKeyword->nMinTokens) {
        context.Report(kTutorialFile, entry.nLine, LINT_ERROR, "tutorial-too-few-tokens",
                       entry.strKey + ": " + strKeyword + " needs " + std::to_string(pKeyword->nMinTokens) +
                           " tokens, the line has " + std::to_string(nTokens) + ": the line is dropped");
        return;
    }
    if (pKeyword->nTextToken > 0 && pKeyword->nTextToken < nTokens) {
        const std::size_t nTextSize = strLine.size() - setStart[static_cast<std::size_t>(pKeyword->nTextToken)];
        if (nTextSize >= static_cast<std::size_t>(kTutorialTextSize))
            context.Report(kTutorialFile, entry.nLine, LINT_WARNING, "tutorial-text-cut",
                           entry.strKey + ": the text of " + std::to_string(nTextSize) + " bytes is cut to " +
                               std::to_string(kTutorialTextSize - 1));
    }
}

// Line1..Line<LineAmount> are read; Line0 and lines beyond are not.
void CheckScriptLines(CLintContext& context, const ScanSection& section)
{
    const ScanEntry* pAmount = section.Find("LineAmount");
    const int nAmount = pAmount != nullptr ? CrtAtoi(pAmount->strValue.c_str()) : 0;
    std::map<long long, const ScanEntry*> mapLine;  // first occurrence of each number
    for (const ScanEntry& entry : section.setEntry) {
        const long long nNumber = KeyNumberOf(entry.strKey, "Line");
        if (nNumber >= 0)
            mapLine.emplace(nNumber, &entry);
    }
    int nPresent = 0;
    int nUnread = 0;
    for (const auto& [nNumber, pEntry] : mapLine) {
        if (nNumber >= 1 && nNumber <= nAmount && !pEntry->strValue.empty()) {
            ++nPresent;
            CheckCommandLine(context, *pEntry);
        } else if (nNumber < 1 || nNumber > nAmount) {
            ++nUnread;
        }
    }
    const int nMissing = nAmount > 0 ? nAmount - nPresent : 0;
    if (nMissing == 0 && nUnread == 0)
        return;
    const int nLine = pAmount != nullptr ? pAmount->nLine : section.nLine;
    std::string strMessage = "LineAmount=" + std::to_string(nAmount) + " but " + std::to_string(nPresent) +
                             " of Line1..Line" + std::to_string(nAmount < 0 ? 0 : nAmount) + " are present";
    if (nUnread > 0)
        strMessage += "; " + std::to_string(nUnread) + " line keys lie outside and are never read";
    context.Report(kTutorialFile, nLine, LINT_ERROR, "tutorial-line-amount", strMessage);
}

void CheckTutorial(CLintContext& context)
{
    std::string strText;
    if (!context.ReadFile(kTutorialFile, strText))
        return;
    std::map<int, int> mapLast;  // id -> line of the section that stays
    const std::vector<ScanSection> setSection = SectionsScan(strText);
    for (const ScanSection& section : setSection) {
        const int nId = CrtAtoi(section.strTitle.c_str());
        if (!IsDecimalText(section.strTitle))
            context.Report(kTutorialFile, section.nLine, LINT_ERROR, "tutorial-title",
                           "section [" + section.strTitle + "] is not a number: read as script " + std::to_string(nId));
        if (nId < 0) {
            context.Report(kTutorialFile, section.nLine, LINT_ERROR, "tutorial-title",
                           "script id " + std::to_string(nId) + " is negative: the script is skipped");
            continue;
        }
        CheckScriptLines(context, section);
        const auto it = mapLast.find(nId);
        if (it != mapLast.end())
            context.Report(kTutorialFile, it->second, LINT_WARNING, "tutorial-duplicate-id",
                           "script " + std::to_string(nId) + " is given again at line " +
                               std::to_string(section.nLine) + ": the later section replaces this one");
        mapLast[nId] = section.nLine;
    }
}

const LintRuleRegistration kTutorialRule("tutorial", CheckTutorial);

}  // namespace
