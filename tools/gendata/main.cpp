// gendata: writes a complete client data folder, deterministically.
//   gendata [--scale N] [--faulty] DIR
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>

#include "GenData.h"

namespace {

void TableFileWrite(CGenContext& context, const CatalogueEntry& entry, int nVariant)
{
    context.Reseed(entry.nSlot, nVariant);
    const std::string strPath = nVariant == 0 ? CatalogueDataPath(entry.szFile) : AlternativeFilePath(entry.szFile);
    const GenFile file{entry, strPath, nVariant, entry.pDesc->nSampleRecords * context.Scale()};
    if (entry.bGeneric)
        GenericFileWrite(context, file);
    else if (ShapeFn fnShape = ShapeOf(entry.nSlot))
        fnShape(context, file);
    else
        DescribedFileWrite(context, file);
}

void WriteCatalogueFiles(CGenContext& context)
{
    std::set<std::string> setWritten;
    for (const CatalogueEntry& entry : kCatalogue)
        if (setWritten.insert(entry.szFile).second)  // a file several tables share is written once
            TableFileWrite(context, entry, 0);
}

// Every table that can be marked version-dependent has its alternative file,
// and the list marks them all.
void WriteAlternativeSet(CGenContext& context)
{
    std::string strList = "// version-dependent tables: read from ini/200/ on the alternative data set\n";
    if (context.Faulty())
        strList += "NoSuchTable.dat\n";  // line 2: names no table
    for (const CatalogueEntry& entry : kCatalogue) {
        if (CatalogueIsFixedPath(entry.szFile))
            continue;
        strList += std::string(entry.szFile) + "\n";
        TableFileWrite(context, entry, 1);
    }
    context.Write("DeferList.dat", strList, true);
}

void WriteTextResources(CGenContext& context)
{
    context.Reseed(0, 0);
    std::string strText = "; id=text\n";
    const int nLines = 2000 * context.Scale();
    for (int i = 1; i <= nLines; ++i)
        strText +=
            std::to_string(100000 + i) + "=" + context.GbkName(static_cast<int>(context.Rng().Range(2, 12))) + "\n";
    context.Write("ini/StrRes.ini", strText);
}

}  // namespace

int main(int argc, char** argv)
{
    GenOptions options;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--scale") == 0 && i + 1 < argc) {
            options.nScale = std::atoi(argv[++i]);
        } else if (std::strcmp(argv[i], "--faulty") == 0) {
            options.bFaulty = true;
        } else if (argv[i][0] == '-') {
            std::fprintf(stderr, "usage: gendata [--scale N] [--faulty] DIR\n");
            return 2;
        } else {
            options.strRoot = argv[i];
        }
    }
    if (options.strRoot.empty() || options.nScale < 1) {
        std::fprintf(stderr, "usage: gendata [--scale N] [--faulty] DIR\n");
        return 2;
    }
    CGenContext context(options);
    WriteCatalogueFiles(context);
    WriteAlternativeSet(context);
    WriteTextResources(context);
    return 0;
}
