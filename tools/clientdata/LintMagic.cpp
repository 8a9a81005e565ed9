// Rules for the magic type table: what "MagicType.ini" loses to its line
// reader and its one scan per line (a blank line ends the load, overlong
// lines split into records, missing columns, cut texts, shadowed pairs) and
// what "MagicTypeEx.ini" loses (sections without a record, sections that
// replace an earlier one, keys the loader never reads, cut texts). Both the
// standard pair and the "ini/200/" pair are checked.
#include <cstring>
#include <map>
#include <set>

#include "Lint.h"
#include "LintSectionScan.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

constexpr std::size_t kLineRead = 2047;  // the loader's line buffer holds 2048 bytes

// The scan format of a line: 'u' a number, 'x' a hexadecimal number, 't' a
// text whose buffer size is in kTextSize.
const char kColumnKind[] =
    "uut"
    "uuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuu"
    "tttttu"
    "tttt"
    "uuuuu"
    "t"
    "uuuu"
    "x"
    "uuu";
static_assert(sizeof(kColumnKind) == 62, "a line holds 61 columns");

std::size_t TextSize(int nColumn)
{
    switch (nColumn) {
        case 3:
            return 16;
        case 38:
            return 256;
        case 40:
        case 41:
        case 42:
        case 45:
            return 260;
        default:
            return 64;
    }
}

struct ScannedLine {
    bool bBlank = false;
    int nColumns = 0;  // conversions before the scan stopped
    uint32_t nType = 0;
    uint32_t nLevel = 0;
    int nCutColumn = 0;  // first text column longer than its buffer
    std::size_t nCutLength = 0;
};

ScannedLine ScanMagicLine(const std::string& strLine)
{
    ScannedLine scanned;
    const char* pText = strLine.c_str();
    for (int nColumn = 1; nColumn <= 61; ++nColumn) {
        const char cKind = kColumnKind[nColumn - 1];
        uint32_t nValue = 0;
        ScanResult result;
        if (cKind == 't') {
            while (CrtIsSpace(static_cast<unsigned char>(*pText)))
                ++pText;
            const char* pWord = pText;
            char szWord[4096];
            result = CrtScanWord(pText, szWord, sizeof(szWord));
            const std::size_t nLength = static_cast<std::size_t>(pText - pWord);
            if (result == SCAN_CONVERTED && nLength >= TextSize(nColumn) && scanned.nCutColumn == 0) {
                scanned.nCutColumn = nColumn;
                scanned.nCutLength = nLength;
            }
        } else {
            result = cKind == 'x' ? CrtScanHex32(pText, &nValue) : CrtScanUInt32(pText, &nValue);
        }
        if (result != SCAN_CONVERTED) {
            scanned.bBlank = nColumn == 1 && result == SCAN_INPUT_END;
            return scanned;
        }
        scanned.nColumns = nColumn;
        if (nColumn == 1)
            scanned.nType = nValue;
        else if (nColumn == 8)
            scanned.nLevel = nValue;
    }
    return scanned;
}

using MagicKey = std::pair<uint32_t, uint32_t>;

bool IsBlankText(const std::string& strText, std::size_t nFrom)
{
    for (std::size_t i = nFrom; i < strText.size(); ++i)
        if (!CrtIsSpace(static_cast<unsigned char>(strText[i])))
            return false;
    return true;
}

std::string ShortLineMessage(const std::string& strLine, int nColumns)
{
    const char* pText = strLine.c_str();
    char szWord[4096];
    for (int i = 0; i < nColumns; ++i)
        CrtScanWord(pText, szWord, sizeof(szWord));
    const std::string strRead = std::to_string(nColumns) + " of 61 columns read";
    if (CrtScanWord(pText, szWord, sizeof(szWord)) != SCAN_CONVERTED)
        return strRead + " (the line ends): the missing columns are 0";
    return strRead + " (column " + std::to_string(nColumns + 1) + " \"" + szWord +
           "\" is not a number): the rest of the record is 0";
}

// Checks the main file as the loader reads it and returns the pairs it loads.
std::set<MagicKey> CheckMagicMain(CLintContext& context, const std::string& strPath)
{
    std::set<MagicKey> setLoaded;
    std::string strText;
    if (!context.ReadFile(strPath, strText))
        return setLoaded;
    std::map<MagicKey, int> mapFirst;
    std::size_t nAt = 0;
    for (int nLine = 1; nAt < strText.size(); ++nLine) {
        std::size_t nEnd = strText.find('\n', nAt);
        nEnd = nEnd == std::string::npos ? strText.size() : nEnd + 1;
        const std::string strLine = strText.substr(nAt, nEnd - nAt);
        nAt = nEnd;
        if (strLine.size() > kLineRead) {
            context.Report(strPath, nLine, LINT_ERROR, "magic-long-line",
                           "the line has " + std::to_string(strLine.size()) +
                               " bytes: the loader reads it in pieces of 2047, each piece a record of its own");
            for (std::size_t nPiece = 0; nPiece < strLine.size(); nPiece += kLineRead) {
                const ScannedLine piece = ScanMagicLine(strLine.substr(nPiece, kLineRead));
                if (!piece.bBlank)
                    setLoaded.emplace(piece.nType, piece.nLevel);
            }
            continue;
        }
        const ScannedLine scanned = ScanMagicLine(strLine);
        if (scanned.bBlank) {
            if (!IsBlankText(strText, nAt))
                context.Report(strPath, nLine, LINT_ERROR, "magic-blank-line",
                               "a blank line ends the load: every line after it is ignored");
            break;
        }
        const MagicKey key(scanned.nType, scanned.nLevel);
        setLoaded.insert(key);
        if (scanned.nColumns < 61)
            context.Report(strPath, nLine, LINT_ERROR, "magic-short-line", ShortLineMessage(strLine, scanned.nColumns));
        if (scanned.nCutColumn != 0)
            context.Report(strPath, nLine, LINT_WARNING, "magic-text-cut",
                           "column " + std::to_string(scanned.nCutColumn) + (scanned.nCutColumn == 3 ? " (Name)" : "") +
                               " has " + std::to_string(scanned.nCutLength) + " bytes: it is cut to " +
                               std::to_string(TextSize(scanned.nCutColumn) - 1));
        auto [it, bNew] = mapFirst.emplace(key, nLine);
        if (!bNew)
            context.Report(strPath, nLine, LINT_WARNING, "magic-duplicate-id",
                           "type " + std::to_string(key.first) + " level " + std::to_string(key.second) +
                               " repeats line " + std::to_string(it->second) +
                               ": lookups and extra sections answer the first, this record is shadowed");
    }
    return setLoaded;
}

// The keys the extra file's loader reads, with the buffer size of the texts.
struct ExtraKey {
    const char* szKey;
    std::size_t nTextSize;  // 0 for a number
};
const ExtraKey kExtraKeys[] = {
    {"CheckMask", 0},
    {"TargetMask", 0},
    {"SelfMask", 0},
    {"TypeMask", 0},
    {"TargetAction", 0},
    {"IntoneActionEx1", 0},
    {"IntoneActionEx2", 0},
    {"IntoneActionEx3", 0},
    {"MountIntoneAction1", 0},
    {"MountIntoneAction2", 0},
    {"MountIntoneAction3", 0},
    {"FlyIntoneAction1", 0},
    {"FlyIntoneAction2", 0},
    {"FlyIntoneAction3", 0},
    {"IntoneCycTime", 0},
    {"AppendDisc", 128},
    {"SecondAction", 0},
    {"SecondActionDelay", 0},
    {"SecondSenderEffect", 260},
    {"XpAddition", 0},
    {"PowType", 0},
    {"SecondTargetDelay", 0},
    {"SecondActiveTime", 0},
    {"IntoneEffect", 260},
    {"IntoneSound", 260},
    {"IntoneSoundLoop", 0},
    {"BattleLevReq", 0},
    {"MountSenderAction", 0},
    {"MountSecondAction", 0},
    {"FlySenderAction", 0},
    {"FlySecondAction", 0},
    {"FlyTargetAction", 0},
    {"EquipPos", 0},
};

const ExtraKey* FindExtraKey(const std::string& strKey)
{
    for (const ExtraKey& key : kExtraKeys)
        if (CrtCompareNoCase(key.szKey, strKey.c_str()) == 0)
            return &key;
    return nullptr;
}

void CheckExtraKeys(CLintContext& context, const std::string& strPath, const ScanSection& section)
{
    std::set<std::string> setSeen;
    for (const ScanEntry& key : section.setEntry) {
        const ExtraKey* pKey = FindExtraKey(key.strKey);
        if (pKey == nullptr) {
            context.Report(strPath, key.nLine, LINT_WARNING, "magic-ex-unknown-key",
                           key.strKey + " is not a key of the extra file: it is never read");
            continue;
        }
        // The first occurrence of a key is the one read.
        if (setSeen.insert(pKey->szKey).second && pKey->nTextSize != 0 && key.strValue.size() >= pKey->nTextSize)
            context.Report(strPath, key.nLine, LINT_WARNING, "magic-text-cut",
                           key.strKey + " has " + std::to_string(key.strValue.size()) + " bytes: it is cut to " +
                               std::to_string(pKey->nTextSize - 1));
    }
}

void CheckMagicExtra(CLintContext& context, const std::string& strPath, const std::set<MagicKey>& setLoaded)
{
    std::string strText;
    if (!context.ReadFile(strPath, strText)) {
        context.Report(strPath, 0, LINT_ERROR, "missing-file",
                       "the magic type table has no extra file: casting and second-stage data stay at defaults");
        return;
    }
    std::map<MagicKey, int> mapFirst;
    for (const ScanSection& section : SectionsScan(strText)) {
        CheckExtraKeys(context, strPath, section);
        const int nNumber = CrtAtoi(section.strTitle.c_str());
        const MagicKey key(static_cast<uint32_t>(nNumber / 100), static_cast<uint32_t>(nNumber % 100));
        const std::string strPair = "type " + std::to_string(key.first) + " level " + std::to_string(key.second);
        if (setLoaded.count(key) == 0) {
            context.Report(strPath, section.nLine, LINT_ERROR, "magic-extra-section",
                           "section [" + section.strTitle + "] addresses " + strPair +
                               ", which has no record: the section is skipped");
            continue;
        }
        auto [it, bNew] = mapFirst.emplace(key, section.nLine);
        if (!bNew)
            context.Report(strPath, section.nLine, LINT_WARNING, "magic-ex-duplicate",
                           "section [" + section.strTitle + "] fills " + strPair + " again (line " +
                               std::to_string(it->second) +
                               "): it replaces every key, and the keys it lacks return to their defaults");
    }
}

void CheckMagic(CLintContext& context)
{
    CheckMagicExtra(context, "ini/MagicTypeEx.ini", CheckMagicMain(context, "ini/MagicType.ini"));
    // The alternative pair matters only where the alternative set has a main file.
    std::string strText;
    if (context.ReadFile("ini/200/MagicType_200.ini", strText))
        CheckMagicExtra(context, "ini/200/MagicTypeEx_200.ini", CheckMagicMain(context, "ini/200/MagicType_200.ini"));
}

const LintRuleRegistration kMagic("magic", CheckMagic);

}  // namespace
