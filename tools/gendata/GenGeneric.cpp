// Files of the tables without a format of their own: a sectioned ini file
// (numbered sections of key=value lines) or a blank-separated column file,
// chosen by the file's extension as the client's files are.
#include "GenGeneric.h"

#include <string>

namespace {

bool IsColumnFile(const std::string& strPath)
{
    const std::size_t nDot = strPath.rfind('.');
    return nDot != std::string::npos && (strPath.compare(nDot, std::string::npos, ".dat") == 0);
}

std::string SectionedText(CGenContext& context, int nRecords, int nFirstId)
{
    CDataRng& rng = context.Rng();
    std::string strText = "; " + context.GbkName(4) + "\n";
    for (int i = 0; i < nRecords; ++i) {
        strText += "[" + std::to_string(nFirstId + i) + "]\n";
        strText += "Name=" + context.GbkName(rng.Range(2, 5)) + "\n";
        strText += "Type=" + std::to_string(rng.Range(0, 9)) + "\n";
        strText += "Value=" + std::to_string(rng.Range(0, 100000)) + "\n";
        if (rng.Chance(30))
            strText += "Desc=" + context.GbkName(rng.Range(6, 20)) + "\n";
        strText += "\n";
    }
    return strText;
}

std::string ColumnText(CGenContext& context, int nRecords, int nFirstId)
{
    CDataRng& rng = context.Rng();
    std::string strText = "// id name type value\n";
    for (int i = 0; i < nRecords; ++i) {
        strText += std::to_string(nFirstId + i) + " " + context.GbkName(rng.Range(2, 5)) + " " +
                   std::to_string(rng.Range(0, 9)) + " " + std::to_string(rng.Range(0, 100000)) + "\n";
    }
    return strText;
}

}  // namespace

void GenerateGenericFile(CGenContext& context, const std::string& strPath, int nVariant)
{
    CDataRng& rng = context.Rng();
    const int nRecords = context.Scale() * rng.Range(10, 40);
    const int nFirstId = 1000 * (1 + nVariant);
    const bool bCrLf = rng.Chance(50);
    if (IsColumnFile(strPath))
        context.Write(strPath, ColumnText(context, nRecords * 2, nFirstId), bCrLf);
    else
        context.Write(strPath, SectionedText(context, nRecords, nFirstId), bCrLf);
}
