// Rules that hold for every table: files that are missing, "DeferList.dat"
// entries that can never take effect, and ids that a first-wins lookup
// shadows in the generic tables.
#include <cctype>
#include <map>
#include <set>

#include "ClientData/Catalogue.h"
#include "Lint.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

bool HasFolder(const std::string& strFile) { return strFile.find_first_of("/\\") != std::string::npos; }

std::string DataPathOf(const std::string& strFile) { return HasFolder(strFile) ? strFile : "ini/" + strFile; }

void CheckMissingFiles(CLintContext& context)
{
    std::set<std::string> setSeen;
    for (const CatalogueEntry& entry : kCatalogue) {
        const std::string strPath = DataPathOf(entry.szFile);
        std::string strText;
        if (setSeen.insert(strPath).second && !context.ReadFile(strPath, strText))
            context.Report(strPath, 0, LINT_ERROR, "missing-file",
                           std::string("the ") + entry.szName + " table has no file: it loads empty");
    }
}

void CheckDeferList(CLintContext& context)
{
    std::string strText;
    if (!context.ReadFile("DeferList.dat", strText))
        return;
    const std::vector<std::string> setLine = CLintContext::SplitLines(strText);
    for (std::size_t i = 0; i < setLine.size(); ++i) {
        const std::string& strLine = setLine[i];
        if (strLine.empty() || strLine[0] == ';' || strLine.rfind("//", 0) == 0)
            continue;
        const std::string strName = strLine.substr(0, strLine.find(' '));
        bool bBare = false;
        bool bFixed = false;
        for (const CatalogueEntry& entry : kCatalogue) {
            const bool bSame = CrtCompareNoCase(entry.szFile, strName.c_str()) == 0;
            bBare = bBare || (bSame && !HasFolder(entry.szFile));
            bFixed = bFixed || (bSame && HasFolder(entry.szFile));
        }
        const int nLine = static_cast<int>(i + 1);
        if (bFixed)
            context.Report("DeferList.dat", nLine, LINT_ERROR, "defer-fixed-path",
                           strName + " is read from a fixed path and can never be version-dependent");
        else if (!bBare)
            context.Report("DeferList.dat", nLine, LINT_ERROR, "defer-unknown", strName + " names no table");
    }
}

bool IsNumber(const std::string& strText)
{
    if (strText.empty())
        return false;
    for (char c : strText)
        if (!std::isdigit(static_cast<unsigned char>(c)))
            return false;
    return true;
}

// A generic table answers the first record of an id; later ones are shadowed.
void CheckGenericDuplicates(CLintContext& context)
{
    std::set<std::string> setSeen;
    for (const CatalogueEntry& entry : kCatalogue) {
        const std::string strPath = DataPathOf(entry.szFile);
        std::string strText;
        if (!setSeen.insert(strPath).second || !context.ReadFile(strPath, strText))
            continue;
        bool bGeneric = false;
#define CLIENTDATA_TABLE(slot, name, iface, cls, file) \
    bGeneric = bGeneric || (slot == entry.nSlot && std::is_same_v<cls, CGenericTable>);
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
        if (!bGeneric)
            continue;
        std::map<std::string, int> mapFirst;
        const std::vector<std::string> setLine = CLintContext::SplitLines(strText);
        for (std::size_t i = 0; i < setLine.size(); ++i) {
            const std::string& strLine = setLine[i];
            std::string strId;
            if (!strLine.empty() && strLine[0] == '[' && strLine.find(']') != std::string::npos)
                strId = strLine.substr(1, strLine.find(']') - 1);
            else if (!strLine.empty() && std::isdigit(static_cast<unsigned char>(strLine[0])))
                strId = strLine.substr(0, strLine.find(' '));
            if (!IsNumber(strId))
                continue;
            auto [it, bNew] = mapFirst.emplace(strId, static_cast<int>(i + 1));
            if (!bNew)
                context.Report(strPath, static_cast<int>(i + 1), LINT_WARNING, "duplicate-id",
                               "id " + strId + " repeats line " + std::to_string(it->second) +
                                   ": lookups answer the first, this record is shadowed");
        }
    }
}

const LintRuleRegistration kMissing("catalogue", CheckMissingFiles);
const LintRuleRegistration kDefer("catalogue", CheckDeferList);
const LintRuleRegistration kDuplicates("catalogue", CheckGenericDuplicates);

}  // namespace
