// Rules for the two NPC type files ("ini/Npc.ini"; "NewNpc.ini" and its
// alternative): titles that do not give an id after the seven characters of
// "NpcType", ids that the first-wins lookup shadows, and texts cut by their
// buffers (the effect buffer is 64 bytes in the old file, 16 in the new one).
#include <map>
#include <string>
#include <vector>

#include "Lint.h"
#include "LintSectionScan.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

struct NpcText {
    const char* szKey;
    std::size_t nSize;
};

struct NpcFileRules {
    const char* szFile;
    const char* szTitleRule;
    const char* szDuplicateRule;
    const char* szCutRule;
    std::vector<NpcText> setText;
};

const NpcFileRules kNpcFiles[] = {
    {"ini/Npc.ini", "npc-title", "npc-duplicate-id", "npc-text-cut", {{"Name", 16}, {"Effect", 64}, {"Note", 128}}},
    {"ini/NewNpc.ini",
     "npc-ex-title",
     "npc-ex-duplicate-id",
     "npc-ex-text-cut",
     {{"Name", 16}, {"Effect", 16}, {"Note", 128}}},
    {"ini/200/NewNpc_200.ini",
     "npc-ex-title",
     "npc-ex-duplicate-id",
     "npc-ex-text-cut",
     {{"Name", 16}, {"Effect", 16}, {"Note", 128}}},
};

constexpr std::size_t kPrefixLength = 7;  // "NpcType"; the prefix itself is not compared

void CheckNpcFile(CLintContext& context, const NpcFileRules& rules)
{
    std::string strText;
    if (!context.ReadFile(rules.szFile, strText))
        return;
    std::map<uint32_t, int> mapFirst;  // id -> line of the section lookups answer
    for (const ScanSection& section : SectionsScan(strText)) {
        const std::string& strTitle = section.strTitle;
        const std::string strNumber = strTitle.size() >= kPrefixLength ? strTitle.substr(kPrefixLength) : "";
        const uint32_t nId = static_cast<uint32_t>(CrtAtoi(strNumber.c_str()));
        if (!IsDecimalText(strNumber))
            context.Report(rules.szFile, section.nLine, LINT_ERROR, rules.szTitleRule,
                           "section [" + strTitle + "] has no number after NpcType: read as id " + std::to_string(nId));
        else if (CrtCompareNoCase(strTitle.c_str(), kPrefixLength, "NpcType", kPrefixLength) != 0)
            context.Report(rules.szFile, section.nLine, LINT_WARNING, rules.szTitleRule,
                           "section [" + strTitle + "] does not begin with NpcType: read as id " + std::to_string(nId));
        const auto [it, bNew] = mapFirst.emplace(nId, section.nLine);
        if (!bNew)
            context.Report(rules.szFile, section.nLine, LINT_WARNING, rules.szDuplicateRule,
                           "id " + std::to_string(nId) + " is given first at line " + std::to_string(it->second) +
                               ": lookups answer that one, this section is shadowed");
        for (const NpcText& text : rules.setText) {
            const ScanEntry* pEntry = section.Find(text.szKey);
            if (pEntry != nullptr && pEntry->strValue.size() >= text.nSize)
                context.Report(rules.szFile, pEntry->nLine, LINT_WARNING, rules.szCutRule,
                               std::string(text.szKey) + " of " + std::to_string(pEntry->strValue.size()) +
                                   " bytes is cut to " + std::to_string(text.nSize - 1));
        }
    }
}

void CheckNpcFiles(CLintContext& context)
{
    for (const NpcFileRules& rules : kNpcFiles)
        CheckNpcFile(context, rules);
}

const LintRuleRegistration kNpcRule("npc", CheckNpcFiles);

}  // namespace
