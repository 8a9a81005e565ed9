// gendata: writes a complete client data folder, deterministically.
//   gendata [--scale N] [--faulty] [--force] DIR
#include <CLI/CLI.hpp>

#include <cstdio>
#include <filesystem>
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

// A folder that holds anything is somebody's data: it is overwritten only
// when asked.
bool IsEmptyOrMissing(const std::string& strRoot)
{
    std::error_code error;
    if (!std::filesystem::exists(strRoot, error))
        return true;
    return std::filesystem::is_directory(strRoot, error) && std::filesystem::is_empty(strRoot, error);
}

}  // namespace

int main(int argc, char** argv)
{
    GenOptions options;
    bool bForce = false;
    CLI::App app("gendata: writes a client data folder from the catalogue and the record descriptions.", "gendata");
    app.add_option("DIR", options.strRoot, "the folder to write")->required();
    app.add_option("--scale", options.nScale, "records per table: N times the sample's (default 1)")
        ->check(CLI::PositiveNumber);
    app.add_flag("--faulty", options.bFaulty, "plant the faults lint reports (tests/tools/lint_rules.txt)");
    app.add_flag("--force", bForce, "write into a folder that is not empty");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0)
            return app.exit(error);
        std::fprintf(stderr, "gendata: %s (see gendata --help)\n", error.what());
        return 2;
    }
    if (!bForce && !IsEmptyOrMissing(options.strRoot)) {
        std::fprintf(stderr, "gendata: %s is not an empty folder; --force writes into it\n", options.strRoot.c_str());
        return 2;
    }
    CGenContext context(options);
    WriteCatalogueFiles(context);
    WriteAlternativeSet(context);
    WriteTextResources(context);
    if (!context.Failure().empty()) {
        std::fprintf(stderr, "gendata: cannot write %s\n", context.Failure().c_str());
        return 1;
    }
    return 0;
}
