// Rules for the monster types ("Monster.dat" and its alternative) and the
// monster speech ("ini/monsterspeak.ini"): sections the loaders skip or
// misread, ids and names that lookups shadow (monster types: the later
// section wins; speech: the first), texts cut by their buffers, and speech
// amounts that disagree with the lines present.
#include <map>
#include <string>
#include <vector>

#include "Lint.h"
#include "LintSectionScan.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

const char* const kMonsterFiles[] = {"ini/Monster.dat", "ini/200/Monster_200.dat"};
const char* const kSpeakFile = "ini/monsterspeak.ini";

// The monster text keys with their buffer sizes ("Name" has its own rule).
const struct {
    const char* szKey;
    std::size_t nSize;
} kMonsterTexts[] = {
    {"DisappearEffect", 128}, {"DisappearSound", 128}, {"effect", 128},
    {"attackeffect", 128},    {"appeareffect", 128},   {"DefyEffect", 128},
};
constexpr std::size_t kMonsterNameSize = 16;
constexpr std::size_t kSpeakTextSize = 1024;

// The id a monster section title gives as "%d" reads it; 0 when none.
int MonsterIdOf(const std::string& strTitle)
{
    const char* szTitle = strTitle.c_str();
    int nId = 0;
    return CrtScanInt32(szTitle, &nId) == SCAN_CONVERTED ? nId : 0;
}

void CheckMonsterTitle(CLintContext& context, const std::string& strFile, const ScanSection& section, int nId)
{
    if (nId == 0)
        context.Report(strFile, section.nLine, LINT_ERROR, "monster-title",
                       "section [" + section.strTitle + "] has no non-zero id: the monster is skipped");
    else if (!IsDecimalText(section.strTitle))
        context.Report(strFile, section.nLine, LINT_WARNING, "monster-title",
                       "section [" + section.strTitle + "] is read as id " + std::to_string(nId));
}

void CheckMonsterTexts(CLintContext& context, const std::string& strFile, const ScanSection& section)
{
    if (const ScanEntry* pName = section.Find("Name"); pName != nullptr && pName->strValue.size() >= kMonsterNameSize)
        context.Report(strFile, pName->nLine, LINT_ERROR, "monster-name-cut",
                       "Name of " + std::to_string(pName->strValue.size()) +
                           " bytes is kept as its first 15: the monster is never found by its full name");
    for (const auto& text : kMonsterTexts) {
        const ScanEntry* pEntry = section.Find(text.szKey);
        if (pEntry != nullptr && pEntry->strValue.size() >= text.nSize)
            context.Report(strFile, pEntry->nLine, LINT_WARNING, "monster-text-cut",
                           std::string(text.szKey) + " of " + std::to_string(pEntry->strValue.size()) +
                               " bytes is cut to " + std::to_string(text.nSize - 1));
    }
}

struct MonsterSeen {
    int nId;
    const ScanSection* pSection;
};

// Lookups answer the last section of an id and the last monster of a name.
void CheckMonsterShadows(CLintContext& context, const std::string& strFile, const std::vector<MonsterSeen>& setSeen)
{
    std::map<int, const ScanSection*> mapLastId;
    std::map<std::string, MonsterSeen> mapLastName;
    for (auto it = setSeen.rbegin(); it != setSeen.rend(); ++it) {
        const ScanSection& section = *it->pSection;
        const auto [itId, bNewId] = mapLastId.emplace(it->nId, &section);
        if (!bNewId)
            context.Report(strFile, section.nLine, LINT_WARNING, "monster-duplicate-id",
                           "id " + std::to_string(it->nId) + " is given again at line " +
                               std::to_string(itId->second->nLine) +
                               ": lookups answer the later section, this one is shadowed");
        const ScanEntry* pName = section.Find("Name");
        if (pName == nullptr || pName->strValue.empty())
            continue;
        const std::string strName = pName->strValue.substr(0, kMonsterNameSize - 1);  // as the record keeps it
        const auto [itName, bNewName] = mapLastName.emplace(strName, *it);
        if (!bNewName && itName->second.nId != it->nId)
            context.Report(strFile, pName->nLine, LINT_WARNING, "monster-duplicate-name",
                           "the name is given again at line " +
                               std::to_string(itName->second.pSection->Find("Name")->nLine) +
                               ": a lookup by name answers the later monster, this one is shadowed");
    }
}

void CheckMonsterFile(CLintContext& context, const std::string& strFile)
{
    std::string strText;
    if (!context.ReadFile(strFile, strText))
        return;
    const std::vector<ScanSection> setSection = SectionsScan(strText);
    std::vector<MonsterSeen> setSeen;
    for (const ScanSection& section : setSection) {
        const int nId = MonsterIdOf(section.strTitle);
        CheckMonsterTitle(context, strFile, section, nId);
        if (nId == 0)
            continue;
        CheckMonsterTexts(context, strFile, section);
        setSeen.push_back(MonsterSeen{nId, &section});
    }
    CheckMonsterShadows(context, strFile, setSeen);
}

void CheckMonsterFiles(CLintContext& context)
{
    for (const char* szFile : kMonsterFiles)
        CheckMonsterFile(context, szFile);
}

// One occasion: "<Word>Amount" lines are read from <Word>0 on, empty ones
// skipped; lines at or beyond the amount are never read.
void CheckSpeakOccasion(CLintContext& context, const ScanSection& section, const std::string& strWord)
{
    const ScanEntry* pAmount = section.Find(strWord + "Amount");
    const int nAmount = pAmount != nullptr ? CrtAtoi(pAmount->strValue.c_str()) : 0;
    std::map<long long, const ScanEntry*> mapLine;  // first occurrence of each number
    for (const ScanEntry& entry : section.setEntry) {
        const long long nNumber = KeyNumberOf(entry.strKey, strWord);
        if (nNumber >= 0)
            mapLine.emplace(nNumber, &entry);
    }
    int nRead = 0;
    int nBeyond = 0;
    const ScanEntry* pFirstBeyond = nullptr;
    for (const auto& [nNumber, pEntry] : mapLine) {
        if (nNumber < nAmount) {
            if (pEntry->strValue.empty())
                continue;
            ++nRead;
            if (pEntry->strValue.size() >= kSpeakTextSize)
                context.Report(
                    kSpeakFile, pEntry->nLine, LINT_WARNING, "monster-speak-text-cut",
                    pEntry->strKey + " of " + std::to_string(pEntry->strValue.size()) + " bytes is cut to 1023");
        } else if (!pEntry->strValue.empty()) {
            ++nBeyond;
            pFirstBeyond = pFirstBeyond != nullptr ? pFirstBeyond : pEntry;
        }
    }
    if ((nAmount > 0 && nRead != nAmount) || nBeyond > 0) {
        const int nLine = pAmount != nullptr ? pAmount->nLine : pFirstBeyond->nLine;
        std::string strMessage =
            strWord + "Amount=" + std::to_string(nAmount) + " but " + std::to_string(nRead) + " lines are read";
        if (nBeyond > 0)
            strMessage += "; " + std::to_string(nBeyond) + " more lie beyond it and are never read";
        context.Report(kSpeakFile, nLine, LINT_ERROR, "monster-speak-amount", strMessage);
    }
}

void CheckMonsterSpeak(CLintContext& context)
{
    std::string strText;
    if (!context.ReadFile(kSpeakFile, strText))
        return;
    std::map<uint32_t, int> mapFirst;  // id -> line of the section that stays
    for (const ScanSection& section : SectionsScan(strText)) {
        const uint32_t nId = static_cast<uint32_t>(CrtAtoi(section.strTitle.c_str()));
        if (!IsDecimalText(section.strTitle))
            context.Report(
                kSpeakFile, section.nLine, LINT_ERROR, "monster-speak-title",
                "section [" + section.strTitle + "] is not a number: read as monster type " + std::to_string(nId));
        const auto [it, bNew] = mapFirst.emplace(nId, section.nLine);
        if (!bNew) {
            context.Report(kSpeakFile, section.nLine, LINT_WARNING, "monster-speak-duplicate-id",
                           "monster type " + std::to_string(nId) + " already has its lines at line " +
                               std::to_string(it->second) + ": this section is dropped");
            continue;
        }
        for (const char* szWord : {"Attack", "Beat", "Born", "Dead", "Skill"})
            CheckSpeakOccasion(context, section, szWord);
    }
}

const LintRuleRegistration kMonsterRule("monster", CheckMonsterFiles);
const LintRuleRegistration kSpeakRule("monster-speak", CheckMonsterSpeak);

}  // namespace
