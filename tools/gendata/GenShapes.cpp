// The files whose shape the description alone does not state: lines that
// are tutorial commands, speech lines counted per occasion, magic levels
// with sections that address them in a further file, category ranges of
// item ids, the action list's names, and the font list and font folders.
// Keys and values still come from the descriptions.
#include <algorithm>
#include <string>
#include <vector>

#include "ClientData/ActionType.h"
#include "ClientData/BattleTutorial.h"
#include "GenData.h"

namespace {

std::string KeyOf(const FieldDesc& field, int64_t nNumber)
{
    std::string strKey = field.szKey;
    return strKey.replace(strKey.find("%d"), 2, std::to_string(nNumber));
}

// ---- Tutorial scripts: Line1..Line<count> hold commands of the vocabulary.

// One command line with the tokens its keyword needs, sometimes one more; a
// tip command ends with its text.
std::string CommandLine(CGenContext& context, const TutorialKeyword& keyword, int nTextChars)
{
    CDataRng& rng = context.Rng();
    std::string s = keyword.szKeyword;
    if (keyword.nMinTokens == TUTORIAL_NO_PARAMS)
        return s;
    int nTokens = keyword.nMinTokens + (rng.Chance(20) ? 1 : 0);
    if (keyword.nTextToken > 0 && nTokens <= keyword.nTextToken)
        nTokens = keyword.nTextToken + 1;
    for (int k = 1; k < nTokens; ++k) {
        if (k == keyword.nTextToken) {
            s += "," + context.GbkName(nTextChars);
            break;
        }
        s += "," + std::to_string(rng.Chance(50) ? rng.Range(0, 9) : rng.Range(100, 9999));
    }
    return s;
}

const TutorialKeyword& AnyKeyword(CDataRng& rng)
{
    return TutorialKeywordAt(static_cast<int>(rng.Range(0, TutorialKeywordAmount() - 1)));
}

const TutorialKeyword& TipKeyword()
{
    for (int i = 0;; ++i)
        if (TutorialKeywordAt(i).nTextToken > 0)
            return TutorialKeywordAt(i);
}

// A script whose count misses its last line, with a line of too few tokens,
// an unknown keyword and a tip longer than a command keeps (lines 3 to 9).
std::string ScriptFaults(CGenContext& context, const FieldDesc& count, const FieldDesc& line)
{
    const TutorialKeyword& first = TutorialKeywordAt(0);
    std::string strUnknown = first.szKeyword;
    std::transform(strUnknown.begin(), strUnknown.end(), strUnknown.begin(), [](char c) { return c | 0x20; });
    std::string s = "[999001]\n" + std::string(count.szKey) + "=3\n";
    s += KeyOf(line, 1) + "=" + first.szKeyword + "\n";
    s += KeyOf(line, 2) + "=" + strUnknown + ",1,2,3,4,5,6\n";
    s += KeyOf(line, 3) + "=" + CommandLine(context, TipKeyword(), 150) + "\n";
    s += KeyOf(line, 4) + "=" + first.szKeyword + "\n\n";
    return s;
}

void ScriptsWrite(CGenContext& context, const GenFile& file)
{
    const RecordDesc& desc = *file.entry.pDesc->pRecord;
    const FieldDesc* pLine = std::find_if(desc.begin(), desc.end(), [](const FieldDesc& f) { return f.IsNumbered(); });
    const FieldDesc& count = pLine[-1];  // the count stands right before the lines it counts
    const RecordDesc head(desc.pField, static_cast<std::size_t>(&count - desc.pField));
    std::string strText = std::string("; ") + file.entry.szName + ": commands, keyword,param,...\n\n";
    if (context.Faulty() && file.nVariant == 0)
        strText += ScriptFaults(context, count, *pLine);
    const FieldDesc& title = *TitleFieldOf(desc);
    for (int i = 0; i < file.nRecords; ++i) {
        std::string strSection = SectionText(context, head, TitleOf(title, title.gen.nLow + i));
        strSection.pop_back();  // the blank line that ends the section comes after the lines
        const int64_t nLines = context.Rng().Range(count.gen.nLow, count.gen.nHigh);
        strSection += std::string(count.szKey) + "=" + std::to_string(nLines) + "\n";
        for (int64_t n = 1; n <= nLines; ++n)
            strSection +=
                KeyOf(*pLine, n) + "=" +
                CommandLine(context, AnyKeyword(context.Rng()), static_cast<int>(context.Rng().Range(6, 40))) + "\n";
        strText += strSection + "\n";
    }
    context.Write(file.strPath, strText, true);
}

const ShapeRegistration kScripts(CatalogueSlotOf<CBattleTutorialTable>(), ScriptsWrite);

// ---- Monster speech: per occasion a count, the lines and probabilities.

// The keys of one occasion: count, line, line probability, occasion
// probability, as the description lists them after the title.
std::string OccasionText(CGenContext& context, const FieldDesc* pKeys, int64_t nAmount, int64_t nGiven, int nTextChars)
{
    std::string s = std::string(pKeys[0].szKey) + "=" + std::to_string(nAmount) + "\n";
    if (context.Rng().Chance(pKeys[3].gen.nPercent))
        s += std::string(pKeys[3].szKey) + "=" + context.Value(pKeys[3]) + "\n";
    for (int64_t i = 0; i < nGiven; ++i) {
        s += KeyOf(pKeys[1], i) + "=" +
             context.GbkName(nTextChars > 0
                                 ? nTextChars
                                 : static_cast<int>(context.Rng().Range(pKeys[1].gen.nLow, pKeys[1].gen.nHigh))) +
             "\n";
        if (context.Rng().Chance(pKeys[2].gen.nPercent))
            s += KeyOf(pKeys[2], i) + "=" + context.Value(pKeys[2]) + "\n";
    }
    return s;
}

void SpeechWrite(CGenContext& context, const GenFile& file)
{
    const RecordDesc& desc = *file.entry.pDesc->pRecord;
    const FieldDesc& title = *TitleFieldOf(desc);
    const int nOccasions = static_cast<int>((desc.nFieldAmount - 1) / 4);
    std::string strText = std::string("; ") + file.entry.szName + ": what monsters say, per mille\n\n";
    if (context.Faulty() && file.nVariant == 0) {
        // A count above the lines given (line 4) and a line longer than its
        // buffer (line 10).
        strText += "[999001]\n" + OccasionText(context, desc.pField + 1, 3, 2, 0) + "\n";
        strText += "[999002]\n" + OccasionText(context, desc.pField + 1, 1, 1, 600) + "\n";
    }
    int64_t nId = title.gen.nLow;
    for (int i = 0; i < file.nRecords; ++i, nId += context.Rng().Range(1, title.gen.nHigh)) {
        strText += "[" + TitleOf(title, nId) + "]\n";
        for (int k = 0; k < nOccasions; ++k) {
            const FieldDesc* pKeys = desc.pField + 1 + 4 * k;
            if (context.Rng().Chance(pKeys[0].gen.nPercent)) {
                const int64_t nAmount = context.Rng().Range(pKeys[0].gen.nLow, pKeys[0].gen.nHigh);
                strText += OccasionText(context, pKeys, nAmount, nAmount, 0);
            }
        }
        strText += "\n";
    }
    context.Write(file.strPath, strText, false);
}

const ShapeRegistration kSpeech(CatalogueSlotOf<CMonsterSpeakTable>(), SpeechWrite);

// ---- Magic types: levels 0..n of each type, and further-file sections
// (type * 100 + level) for some of them.

// A main-file line: its key is the type and the level.
std::string MagicLine(CGenContext& context, const RecordDesc& desc, int64_t nType, int64_t nLevel)
{
    return ColumnLineText(context, desc, {std::to_string(nType), std::to_string(nLevel)}, false);
}

void MagicWrite(CGenContext& context, const GenFile& file)
{
    const RecordDesc& desc = *file.entry.pDesc->pRecord;
    const std::vector<FieldDesc> setExtra = [&] {
        std::vector<FieldDesc> setField;
        for (const FieldDesc& field : desc)
            if (field.bOutsideFile && !field.bUnread)
                setField.push_back(field);
        return setField;
    }();
    const RecordDesc extra(setExtra.data(), setExtra.size());
    // No comment lines: the loader reads every line as a record.
    std::string strMain;
    std::string strExtra = "; casting and second-stage data: [type * 100 + level]\n\n";
    int nLines = 0;
    for (int64_t nType = TitleFieldOf(desc)->gen.nLow; nLines < file.nRecords; ++nType) {
        const int64_t nLevels = context.Rng().Range(1, 15);
        for (int64_t nLevel = 0; nLevel < nLevels && nLines < file.nRecords; ++nLevel, ++nLines) {
            strMain += MagicLine(context, desc, nType, nLevel);
            if (context.Rng().Chance(30))
                strExtra += SectionText(context, extra, std::to_string(nType * 100 + nLevel));
        }
    }
    if (context.Faulty() && file.nVariant == 0) {
        strMain += MagicLine(context, desc, TitleFieldOf(desc)->gen.nLow, 0);  // the first key again
        strMain += "\n" + MagicLine(context, desc, 9999, 0);                // beyond a blank line
        strExtra += SectionText(context, extra, "999999");                  // no such record
    }
    const char* szExtra = CatalogueExtraOf(file.entry.nSlot, 0);
    context.Write(file.strPath, strMain, true);
    context.Write(file.nVariant == 0 ? std::string(szExtra) : CatalogueAlternativePath(szExtra), strExtra, true);
}

const ShapeRegistration kMagic(CatalogueSlotOf<CMagicData>(), MagicWrite);

// ---- Item categories: each category's ranges of item type ids.

void CategoriesWrite(CGenContext& context, const GenFile& file)
{
    const RecordDesc& desc = *file.entry.pDesc->pRecord;
    const FieldDesc& range = desc.pField[1];
    std::string strText = std::string("; ") + file.entry.szName + ": item type ids per category\n\n";
    if (context.Faulty() && file.nVariant == 0) {
        // Nothing (line 4), a range written high-first (line 7) and a piece
        // that is no number (line 10).
        strText += "[Empty]\n" + std::string(range.szKey) + "=NULL\n\n";
        strText += "[Reversed]\n" + std::string(range.szKey) + "=100010-100001\n\n";
        strText += "[Broken]\n" + std::string(range.szKey) + "=100001-x\n\n";
    }
    const int64_t nIdAmount = 3000 * context.Scale();
    const int64_t nFirstId = range.gen.nLow;
    const std::vector<std::string> setName = PatternWords(desc.pField[0].gen.szPattern);
    for (int i = 0; i < file.nRecords; ++i) {
        const std::size_t nName = static_cast<std::size_t>(i) % setName.size();
        const std::size_t nRound = static_cast<std::size_t>(i) / setName.size();
        const int64_t nLow = nFirstId + nIdAmount * i / file.nRecords;
        const int64_t nHigh = nFirstId + nIdAmount * (i + 1) / file.nRecords - 1;
        const int64_t nSplit = context.Rng().Range(nLow, nHigh);
        strText += "[" + setName[nName] + (nRound > 0 ? std::to_string(nRound) : "") + "]\n" + range.szKey + "=" +
                   std::to_string(nLow) + "-" + std::to_string(nSplit) + "," +
                   std::to_string(nSplit + 1 <= nHigh ? nSplit + 1 : nHigh) + "\n\n";
    }
    context.Write(file.strPath, strText, true);
}

const ShapeRegistration kCategories(CatalogueSlotOf<CItemCategoryTable>(), CategoriesWrite);

// ---- Action types: every name of the built-in list with its number;
// monsters use the standing, moving, fighting and dying ones.

std::string ActionTypeText(const GenFile& file, bool bMonster, bool bFaulty)
{
    std::string strText =
        std::string("// ") + file.entry.szName + (bMonster ? " of monsters" : " of players") + ": number name\n";
    for (int nPosition = 0; nPosition < kActionNameAmount; ++nPosition) {
        if (bMonster && !((nPosition >= 8 && nPosition <= 121) || (nPosition >= 162 && nPosition <= 223)))
            continue;
        strText += std::to_string((bMonster ? 500 : 100) + nPosition) + " " + ActionNameAt(nPosition) + "\n";
    }
    if (bFaulty) {
        // A name spelt in capitals maps nothing; a second line for a name wins
        // over the first.
        std::string strCapitals = ActionNameAt(122);
        std::transform(strCapitals.begin(), strCapitals.end(), strCapitals.begin(),
                       [](char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 32) : c; });
        strText += "222 " + strCapitals + "\n208 " + ActionNameAt(8) + "\n";
    }
    return strText;
}

void ActionTypesWrite(CGenContext& context, const GenFile& file)
{
    context.Write(file.strPath, ActionTypeText(file, false, context.Faulty() && file.nVariant == 0), true);
    context.Write(CatalogueExtraOf(file.entry.nSlot, 0), ActionTypeText(file, true, false), false);
}

const ShapeRegistration kActionTypes(CatalogueSlotOf<CActionTypeData>(), ActionTypesWrite);

// ---- Font settings: the settings, the font list (its first font is the
// default one) and one stand-in font file in each font folder.

void FontsWrite(CGenContext& context, const GenFile& file)
{
    DescribedFileWrite(context, file);
    const int nSlot = file.entry.nSlot;
    const std::string strDefault = context.GbkName(2);
    context.Write(CatalogueExtraOf(nSlot, 0),
                  "; the interface's fonts; the first one is the default\n[FontList]\nAmount=2\n[Font1]\nName=" +
                      strDefault + "\nSize=12\n[Font2]\nName=" + context.GbkName(2) + "\nSize=14\n",
                  true);
    // A few bytes with a TrueType version tag: the search looks at names only.
    for (int i = 1; CatalogueExtraOf(nSlot, i) != nullptr; ++i)
        context.Write(std::string(CatalogueExtraOf(nSlot, i)) + "Font" + std::to_string(i) + ".ttf",
                      std::string("\x00\x01\x00\x00", 4) + "stand-in font for the sample data\n");
}

const ShapeRegistration kFonts(CatalogueSlotOf<CFontSetting>(), FontsWrite);

}  // namespace
