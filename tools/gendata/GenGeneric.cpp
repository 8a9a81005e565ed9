// Files of the tables without a design of their own, as their catalogue kind
// says: numbered sections of key=value lines, or blank-separated columns.
#include <string>

#include "GenData.h"

namespace {

std::string SectionedText(CGenContext& context, int nRecords, int nFirstId)
{
    CDataRng& rng = context.Rng();
    std::string strText = "; " + context.GbkName(4) + "\n";
    for (int i = 0; i < nRecords; ++i) {
        strText += "[" + std::to_string(nFirstId + i) + "]\n";
        strText += "Caption=" + context.GbkName(static_cast<int>(rng.Range(2, 5))) + "\n";
        strText += "Class=" + std::to_string(rng.Range(0, 9)) + "\n";
        strText += "Worth=" + std::to_string(rng.Range(0, 100000)) + "\n";
        if (rng.Chance(30))
            strText += "Remark=" + context.GbkName(static_cast<int>(rng.Range(6, 20))) + "\n";
        strText += "\n";
    }
    return strText;
}

std::string ColumnText(CGenContext& context, int nRecords, int nFirstId)
{
    CDataRng& rng = context.Rng();
    std::string strText = "// id caption class worth\n";
    for (int i = 0; i < nRecords; ++i) {
        strText += std::to_string(nFirstId + i) + " " + context.GbkName(static_cast<int>(rng.Range(2, 5))) + " " +
                   std::to_string(rng.Range(0, 9)) + " " + std::to_string(rng.Range(0, 100000)) + "\n";
    }
    return strText;
}

// Whether the entry is the catalogue's first generic table of its kind: the
// faulty set plants the generic tables' faults there.
bool FirstGenericOfKind(const CatalogueEntry& entry)
{
    for (const CatalogueEntry& other : kCatalogue)
        if (other.bGeneric && other.kind == entry.kind)
            return other.nSlot == entry.nSlot;
    return false;
}

// A first section holding a text that is not GBK (line 3: a lone lead byte)
// and a key given twice (line 5).
const char kFaultySection[] = "[999]\nCaption=\x81\nClass=1\nClass=2\n\n";

}  // namespace

void GenericFileWrite(CGenContext& context, const GenFile& file)
{
    const int nRecords = static_cast<int>(context.Rng().Range(file.nRecords * 2 / 5, file.nRecords * 8 / 5));
    const int nFirstId = 1000 * (1 + file.nVariant);
    const bool bCrLf = context.Rng().Chance(50);
    const bool bPlant = context.Faulty() && file.nVariant == 0 && FirstGenericOfKind(file.entry);
    if (file.entry.kind == CatalogueKind::COLUMNS) {
        // Planted: a file of columns without a line of data, its table empty.
        context.Write(file.strPath, bPlant ? "// id caption class worth\n" : ColumnText(context, nRecords, nFirstId),
                      bCrLf);
        return;
    }
    std::string strText = SectionedText(context, nRecords, nFirstId);
    if (bPlant)
        strText.insert(strText.find('\n') + 1, kFaultySection);
    context.Write(file.strPath, strText, bCrLf);
}
