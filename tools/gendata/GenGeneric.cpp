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

}  // namespace

void GenericFileWrite(CGenContext& context, const GenFile& file)
{
    const int nRecords = static_cast<int>(context.Rng().Range(file.nRecords * 2 / 5, file.nRecords * 8 / 5));
    const int nFirstId = 1000 * (1 + file.nVariant);
    const bool bCrLf = context.Rng().Chance(50);
    if (file.entry.kind == CatalogueKind::COLUMNS)
        context.Write(file.strPath, ColumnText(context, nRecords, nFirstId), bCrLf);
    else
        context.Write(file.strPath, SectionedText(context, nRecords, nFirstId), bCrLf);
}
