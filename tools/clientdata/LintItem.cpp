// Rules for the item type and item category files: what "ItemType.dat" loses
// to its announced amount and its first-wins map (records past "Amount=",
// repeated ids), names that the 15-byte name lookup never finds, texts cut by
// their buffers; and what "ini/ItemCategory.dat" loses (sections that define
// nothing, pieces that are not ids, ranges written high-first). The standard
// item file and the "ini/200/" one are both checked.
#include <cctype>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Lint.h"
#include "LintSectionScan.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

constexpr std::size_t kNameCompared = 15;  // the name list compares this many bytes
constexpr std::size_t kTextBuffer = 256;   // name and description buffers
constexpr int kTextColumn = 54;

// A line the column reader keeps, with its 1-based line in the file.
struct DataLine {
    int nLine;
    std::string strText;
};

// The lines the column reader keeps: it drops empty lines and comments
// (";" or "//" at the start).
std::vector<DataLine> DataLinesOf(const std::string& strText)
{
    std::vector<DataLine> setLine;
    const std::vector<std::string> setRaw = CLintContext::SplitLines(strText);
    for (std::size_t i = 0; i < setRaw.size(); ++i) {
        const std::string& strLine = setRaw[i];
        if (strLine.empty() || strLine[0] == ';' || strLine[0] == '\r' || strLine.rfind("//", 0) == 0)
            continue;
        setLine.push_back({static_cast<int>(i + 1), strLine});
    }
    return setLine;
}

std::vector<std::string> FieldsOf(const std::string& strLine)
{
    std::vector<std::string> setField;
    std::size_t nAt = 0;
    for (;;) {
        const std::size_t nBlank = strLine.find(' ', nAt);
        setField.push_back(strLine.substr(nAt, nBlank == std::string::npos ? std::string::npos : nBlank - nAt));
        if (nBlank == std::string::npos)
            return setField;
        nAt = nBlank + 1;
    }
}

// "Amount=<n>" as the loader reads it from the first line's first column.
bool AmountParse(const std::string& strLine, uint32_t& nAmount)
{
    const std::string strColumn = strLine.substr(0, strLine.find(' ')).substr(0, 59);
    if (strColumn.rfind("Amount=", 0) != 0)
        return false;
    const char* pText = strColumn.c_str() + 7;
    return CrtScanUInt32(pText, &nAmount) == SCAN_CONVERTED;
}

void CheckItemText(CLintContext& context, const std::string& strPath, int nLine, const char* szField,
                   const std::string& strValue)
{
    if (strValue.size() >= kTextBuffer)
        context.Report(strPath, nLine, LINT_WARNING, "item-text-cut",
                       std::string(szField) + " has " + std::to_string(strValue.size()) + " bytes: it is cut to " +
                           std::to_string(kTextBuffer - 1));
}

void CheckItemRecords(CLintContext& context, const std::string& strPath, const std::vector<DataLine>& setLine,
                      uint32_t nAmount)
{
    std::map<uint32_t, int> mapFirst;
    std::set<std::string> setLongName;
    for (std::size_t i = 1; i < setLine.size() && i - 1 < nAmount; ++i) {
        const DataLine& line = setLine[i];
        const std::vector<std::string> setField = FieldsOf(line.strText);
        const std::string strName = setField.size() > 1 ? setField[1] : std::string();
        // A name is checked on every read line: the name list takes names of dropped records too.
        if (strName.size() > kNameCompared && setLongName.insert(strName).second)
            context.Report(strPath, line.nLine, LINT_WARNING, "item-name-long",
                           "the name has " + std::to_string(strName.size()) +
                               " bytes: the client's name lookup compares " + std::to_string(kNameCompared) +
                               " and never finds it");
        const uint32_t idType = static_cast<uint32_t>(CrtAtoi(setField[0].c_str()));
        auto [it, bNew] = mapFirst.emplace(idType, line.nLine);
        if (!bNew) {
            context.Report(strPath, line.nLine, LINT_WARNING, "item-duplicate-id",
                           "item type " + std::to_string(idType) + " repeats line " + std::to_string(it->second) +
                               ": the first record wins, this one is dropped");
            continue;
        }
        CheckItemText(context, strPath, line.nLine, "the name", strName);
        if (static_cast<int>(setField.size()) > kTextColumn)
            CheckItemText(context, strPath, line.nLine, "the description (column 54)", setField[kTextColumn]);
    }
}

void CheckItemFile(CLintContext& context, const std::string& strPath)
{
    std::string strText;
    if (!context.ReadFile(strPath, strText))
        return;
    const std::vector<DataLine> setLine = DataLinesOf(strText);
    uint32_t nAmount = 0;
    if (setLine.empty() || !AmountParse(setLine[0].strText, nAmount))
        return;  // the loader reads nothing; the report shows the empty table
    CheckItemRecords(context, strPath, setLine, nAmount);
    const std::size_t nRecords = setLine.size() - 1;
    const std::string strAnnounced = "Amount=" + std::to_string(nAmount) + " but " + std::to_string(nRecords) +
                                     " record line" + (nRecords == 1 ? "" : "s") + " follow";
    if (nRecords > nAmount)
        context.Report(strPath, setLine[0].nLine, LINT_ERROR, "item-amount-low",
                       strAnnounced + ": the " + std::to_string(nRecords - nAmount) + " from line " +
                           std::to_string(setLine[nAmount + 1].nLine) + " on are never read");
    else if (nRecords < nAmount)
        context.Report(strPath, setLine[0].nLine, LINT_WARNING, "item-amount-high",
                       strAnnounced + ": the count announces records that are not there");
}

bool IsDigits(const std::string& strText)
{
    if (strText.empty())
        return false;
    for (char c : strText)
        if (!std::isdigit(static_cast<unsigned char>(c)))
            return false;
    return true;
}

// One comma-separated piece of an IDRange: a plain id, or low-high.
void CheckRangePiece(CLintContext& context, const ScanEntry& key, const std::string& strPiece)
{
    const std::size_t nDash = strPiece.find('-');
    if (nDash == std::string::npos) {
        if (!IsDigits(strPiece))
            context.Report("ini/ItemCategory.dat", key.nLine, LINT_ERROR, "item-category-bad-range",
                           "\"" + strPiece + "\" is not an id: it reads as id " +
                               std::to_string(static_cast<uint32_t>(CrtAtoi(strPiece.c_str()))));
        return;
    }
    const std::string strLow = strPiece.substr(0, nDash);
    const std::string strHigh = strPiece.substr(nDash + 1);
    if (!IsDigits(strLow) || !IsDigits(strHigh)) {
        context.Report("ini/ItemCategory.dat", key.nLine, LINT_ERROR, "item-category-bad-range",
                       "\"" + strPiece + "\" is not a range low-high: a bound that does not read stays 0");
        return;
    }
    const uint32_t idLow = static_cast<uint32_t>(CrtAtoi(strLow.c_str()));
    const uint32_t idHigh = static_cast<uint32_t>(CrtAtoi(strHigh.c_str()));
    if (idLow > idHigh)
        context.Report("ini/ItemCategory.dat", key.nLine, LINT_ERROR, "item-category-reversed",
                       "the range " + strPiece + " is written high-first: it holds no id");
}

void CheckItemCategory(CLintContext& context)
{
    const std::string strPath = "ini/ItemCategory.dat";
    std::string strText;
    if (!context.ReadFile(strPath, strText))
        return;
    for (const ScanSection& section : SectionsScan(strText)) {
        if (section.strTitle.empty())
            continue;  // never read
        const ScanEntry* pKey = section.Find("IDRange");
        if (pKey == nullptr || pKey->strValue.empty() || CrtCompareNoCase(pKey->strValue.c_str(), "NULL") == 0) {
            context.Report(strPath, pKey ? pKey->nLine : section.nLine, LINT_WARNING, "item-category-null",
                           "[" + section.strTitle + "] has " + (pKey ? "IDRange=" + pKey->strValue : "no IDRange") +
                               ": the section defines no ids");
            continue;
        }
        std::size_t nAt = 0;
        for (;;) {
            const std::size_t nComma = pKey->strValue.find(',', nAt);
            CheckRangePiece(context, *pKey, pKey->strValue.substr(nAt, nComma == std::string::npos ? std::string::npos
                                                                                                  : nComma - nAt));
            if (nComma == std::string::npos)
                break;
            nAt = nComma + 1;
        }
    }
}

void CheckItem(CLintContext& context)
{
    CheckItemFile(context, "ini/ItemType.dat");
    CheckItemFile(context, "ini/200/ItemType_200.dat");
    CheckItemCategory(context);
}

const LintRuleRegistration kItem("item", CheckItem);

}  // namespace
