// The lint rules that read the files themselves, beside what the loaders
// report: texts that are not GB18030, a key repeated in a section of a
// generic table, an empty table whose file exists.
#include "LintRules.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "ClientData/ClientDataMgr.h"
#include "TableView.h"
#include "Text.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCrt.h"

namespace fs = std::filesystem;

namespace {

bool IsFile(const std::string& strPath)
{
    std::error_code error;
    return fs::is_regular_file(strPath, error);
}

std::string Lowered(std::string_view text)
{
    std::string strOut(text);
    for (char& c : strOut)
        c = CrtToLower(c);
    return strOut;
}

// The main files, on both data sets, of the tables that pass.
template <class Pass>
std::set<std::string> MainFilesWhere(Pass&& pass)
{
    std::set<std::string> setFile;
    for (const CatalogueEntry& entry : kCatalogue)
        if (pass(entry)) {
            setFile.insert(CatalogueDataPath(entry.szFile));
            setFile.insert(DataPathShown(CatalogueAlternativePath(entry.szFile)));
        }
    return setFile;
}

}  // namespace

std::vector<std::string> LintDataFiles()
{
    std::set<std::string> setFile{"DeferList.dat", "ini/StrRes.ini"};
    for (const CatalogueEntry& entry : kCatalogue) {
        for (const std::string& strFile : CatalogueDataFilesOf(entry.nSlot))
            setFile.insert(strFile);
        if (!CatalogueIsFixedPath(entry.szFile))
            setFile.insert(DataPathShown(CatalogueAlternativePath(entry.szFile)));
    }
    std::vector<std::string> setPresent;
    for (const std::string& strFile : setFile)
        if (IsFile(strFile))
            setPresent.push_back(strFile);
    return setPresent;
}

void LintInvalidText(const std::vector<std::string>& setFile, std::vector<LintFinding>& setFinding)
{
    for (const std::string& strFile : setFile) {
        // The whole file in one conversion; after a bad byte it goes on
        // from the next line.
        std::string strText;
        PlatformReadFile(strFile.c_str(), strText);
        std::size_t nBad = GbkInvalidAt(strText);
        while (nBad != std::string::npos) {
            const std::size_t nBreak = strText.rfind('\n', nBad);
            const std::size_t nLineStart = nBreak == std::string::npos ? 0 : nBreak + 1;
            const int nLine = 1 + static_cast<int>(std::count(strText.begin(), strText.begin() + nBad, '\n'));
            setFinding.push_back(LintFinding{
                strFile, nLine, LINT_ERROR, "not-gbk",
                "byte " + std::to_string(nBad - nLineStart + 1) + " of the line starts no GBK/GB18030 character"});
            const std::size_t nLineEnd = strText.find('\n', nBad);
            nBad = nLineEnd == std::string::npos ? std::string::npos : GbkInvalidAt(strText, nLineEnd + 1);
        }
    }
}

void LintRepeatedKeys(const std::vector<std::string>& setFile, std::vector<LintFinding>& setFinding)
{
    const std::set<std::string> setSectioned = MainFilesWhere(
        [](const CatalogueEntry& entry) { return entry.bGeneric && entry.kind == CatalogueKind::SECTIONS; });
    // The described tables' loaders report their own repeated keys.
    const std::set<std::string> setDescribed =
        MainFilesWhere([](const CatalogueEntry& entry) { return !entry.bGeneric; });
    for (const std::string& strFile : setFile) {
        if (setSectioned.count(strFile) == 0 || setDescribed.count(strFile) != 0)
            continue;
        CIniSectionReader reader;
        if (!reader.Open(strFile.c_str(), 1))
            continue;
        for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
            std::set<std::string> setSeen;
            for (int nKey = 0; nKey < reader.GetKeyAmount(nSection); ++nKey)
                if (!setSeen.insert(Lowered(reader.GetKeyAt(nSection, nKey))).second)
                    setFinding.push_back(
                        LintFinding{strFile, reader.GetKeyLine(nSection, nKey), LINT_WARNING, "repeated-key",
                                    std::string(reader.GetKeyAt(nSection, nKey)) + " is given again in [" +
                                        std::string(reader.GetTitle(nSection)) + "]; the first is read"});
        }
    }
}

void LintEmptyTables(CClientDataMgr& mgr, std::vector<LintFinding>& setFinding)
{
    for (const CatalogueEntry& entry : kCatalogue) {
        const std::string strFile = TableFileRead(entry, mgr);
        if (mgr.GetLoadedAmountBySlot(entry.nSlot) == 0 && IsFile(strFile))
            setFinding.push_back(LintFinding{strFile, 0, LINT_WARNING, "empty-table",
                                             std::string("the ") + entry.szName + " table loads no record from it"});
    }
}
