// The files of the described tables, laid out as their kind says: a section
// per record, a line per record, or the settings in their order. A faulty set
// plants, right after the file's header comment, the faults the loaders
// report for every such file: a record that repeats an earlier one's key, a
// text longer than its buffer, a number that does not parse, a key given
// twice in one section and a section title that is no number.
#include <algorithm>
#include <string>
#include <vector>

#include "GenData.h"

namespace {

// Whether the generic layout writes the field as a key or a column of its own.
bool IsWritten(const FieldDesc& field)
{
    return !field.bTitle && !field.IsNumbered() && !field.bOutsideFile && !field.bUnread;
}

const FieldDesc* FirstOf(const RecordDesc& desc, bool bText)
{
    for (const FieldDesc& field : desc)
        if (IsWritten(field) && field.IsNumber() != bText && field.TextLimit() < 4096)
            return &field;
    return nullptr;
}

// A record's title far above the records, so that the faults shadow none.
std::string FaultTitle(const RecordDesc& desc)
{
    const FieldDesc* pTitle = TitleFieldOf(desc);
    return pTitle != nullptr ? TitleOf(*pTitle, pTitle->gen.nLow + 900000) : "900001";
}

std::string SectionFaults(const RecordDesc& desc)
{
    const FieldDesc* pText = FirstOf(desc, true);
    const FieldDesc* pNumber = FirstOf(desc, false);
    const std::string strTitle = FaultTitle(desc);
    std::string s = "[abc]\n\n";  // line 3
    s += "[" + strTitle + "]\n";  // line 5
    if (pText != nullptr)
        s += std::string(pText->szKey) + "=" + std::string(pText->TextLimit() + 10, 'x') + "\n";
    if (pNumber != nullptr)
        s += std::string(pNumber->szKey) + "=12abc\n" + pNumber->szKey + "=1\n";
    s += "\n[" + strTitle + "]\n\n";
    return s;
}

std::string SectionsText(CGenContext& context, const GenFile& file, const RecordDesc& desc)
{
    std::string strText = std::string("; ") + file.entry.szName + ": one section per record\n\n";
    if (context.Faulty() && file.nVariant == 0)
        strText += SectionFaults(desc);
    const FieldDesc* pTitle = TitleFieldOf(desc);
    int64_t nNumber = pTitle != nullptr ? pTitle->gen.nLow : 1;
    for (int i = 0; i < file.nRecords; ++i) {
        strText += SectionText(context, desc, pTitle != nullptr ? TitleOf(*pTitle, nNumber) : std::to_string(nNumber));
        nNumber += pTitle != nullptr && pTitle->gen.nHigh > 1 ? context.Rng().Range(1, pTitle->gen.nHigh) : 1;
    }
    return strText;
}

// A table that reads keys of fixed sections: each section once, its keys in
// the description's order.
std::string FixedSectionsText(CGenContext& context, const RecordDesc& desc)
{
    std::string strText;
    const char* szOpen = nullptr;
    for (const FieldDesc& field : desc) {
        if (szOpen == nullptr || std::string(szOpen) != field.szSection)
            strText += std::string(szOpen == nullptr ? "" : "\n") + "[" + field.szSection + "]\n";
        szOpen = field.szSection;
        strText += std::string(field.szKey) + "=" + context.Value(field) + "\n";
    }
    return strText;
}

std::string ColumnsText(CGenContext& context, const GenFile& file, const RecordDesc& desc)
{
    std::string strBody;
    int nLines = 0;
    if (context.Faulty() && file.nVariant == 0) {
        const std::string strKey = FaultTitle(desc);
        strBody += ColumnLineText(context, desc, {"abc"}, false);
        strBody += ColumnLineText(context, desc, {strKey}, true);
        strBody += ColumnLineText(context, desc, {strKey}, false);
        nLines += 3;
    }
    const FieldDesc* pTitle = TitleFieldOf(desc);
    int64_t nNumber = pTitle != nullptr ? pTitle->gen.nLow : 1;
    for (int i = 0; i < file.nRecords; ++i, ++nLines) {
        strBody += ColumnLineText(context, desc, {pTitle != nullptr ? TitleOf(*pTitle, nNumber) : ""}, false);
        nNumber += pTitle != nullptr && pTitle->gen.nHigh > 1 ? context.Rng().Range(1, pTitle->gen.nHigh) : 1;
    }
    std::string strText;
    if (const RecordDesc* pHeader = file.entry.pDesc->pHeader)
        strText += std::string(pHeader->pField[0].szKey) + "=" + std::to_string(nLines) + "\n";
    std::string strNames;
    for (const FieldDesc& field : desc)
        strNames += field.bOutsideFile || field.bUnread ? "" : std::string(" ") + field.szKey;
    return strText + "//" + strNames + "\n" + strBody;
}

// The settings in their fixed order; a faulty set swaps the third and fourth.
std::string SettingsText(CGenContext& context, const GenFile& file, const RecordDesc& desc)
{
    std::vector<std::string> setLine;
    for (const FieldDesc& field : desc)
        if (IsWritten(field))
            setLine.push_back(std::string(field.szKey) + "=" + context.Value(field) + "\n");
    if (context.Faulty() && file.nVariant == 0 && setLine.size() > 3)
        std::swap(setLine[2], setLine[3]);
    std::string strText = std::string("; ") + file.entry.szName + ": one setting a line, in this order\n";
    for (const std::string& strLine : setLine)
        strText += strLine;
    return strText;
}

}  // namespace

const FieldDesc* TitleFieldOf(const RecordDesc& desc)
{
    for (const FieldDesc& field : desc)
        if (field.bTitle)
            return &field;
    return nullptr;
}

std::string ColumnLineText(CGenContext& context, const RecordDesc& desc, const std::vector<std::string>& setKey,
                           bool bLongText)
{
    std::string strLine;
    std::size_t nTitle = 0;
    for (const FieldDesc& field : desc) {
        if (field.bOutsideFile || field.bUnread)
            continue;
        strLine += strLine.empty() ? "" : " ";
        if (field.bTitle) {
            strLine += setKey[std::min(nTitle++, setKey.size() - 1)];
        } else if (bLongText && &field == FirstOf(desc, true)) {
            strLine += std::string(field.TextLimit() + 10, 'x');
        } else {
            // A column must not be empty: the words after it would move.
            const std::string strValue = context.Value(field);
            strLine += strValue.empty() ? "NULL" : strValue;
        }
    }
    return strLine + "\n";
}

std::string SectionText(CGenContext& context, const RecordDesc& desc, const std::string& strTitle)
{
    std::string strText = "[" + strTitle + "]\n";
    for (const FieldDesc& field : desc)
        if (IsWritten(field) && context.Rng().Chance(field.gen.nPercent))
            strText += std::string(field.szKey) + "=" + context.Value(field) + "\n";
    return strText + "\n";
}

void DescribedFileWrite(CGenContext& context, const GenFile& file)
{
    const RecordDesc& desc = *file.entry.pDesc->pRecord;
    std::string strText;
    if (file.entry.kind == CatalogueKind::COLUMNS)
        strText = ColumnsText(context, file, desc);
    else if (file.entry.kind == CatalogueKind::SETTINGS)
        strText = SettingsText(context, file, desc);
    else if (desc.pField[0].szSection != nullptr)
        strText = FixedSectionsText(context, desc);
    else
        strText = SectionsText(context, file, desc);
    context.Write(file.strPath, strText, file.entry.nSlot % 2 == 0);
}
