// gendata: writes a complete client data folder, deterministically.
//   gendata [--scale N] [--faulty] DIR
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>

#include "ClientData/Catalogue.h"
#include "GenData.h"
#include "GenGeneric.h"

namespace {

// The tables the sample marks version-dependent, so that "ini/200/" has a set.
const char* const kDeferred[] = {"ItemType.dat", "MagicType.ini", "Monster.dat", "NewNpc.ini",
                                 "LevelExp.dat", "Shop.dat", "MapDestination.dat"};

const RegisteredGenerator* GeneratorFor(const std::string& strFile)
{
    for (const RegisteredGenerator& generator : RegisteredGenerators())
        if (generator.strFile == strFile)
            return &generator;
    return nullptr;
}

void WriteCatalogueFiles(CGenContext& context)
{
    std::set<std::string> setWritten;
    for (const CatalogueEntry& entry : kCatalogue) {
        if (!setWritten.insert(entry.szFile).second)
            continue;  // a file several tables share is written once
        if (const RegisteredGenerator* pGenerator = GeneratorFor(entry.szFile))
            pGenerator->fn(context);
        else
            GenerateGenericFile(context, CatalogueDataPath(entry.szFile), 0);
    }
}

void WriteAlternativeSet(CGenContext& context)
{
    std::string strList = "// version-dependent tables: read from ini/200/ on the alternative data set\n";
    for (const char* szName : kDeferred) {
        strList += std::string(szName) + "\n";
        // A table with a generator of its own writes its alternative file too.
        if (GeneratorFor(szName) == nullptr)
            GenerateGenericFile(context, AlternativePathOf(szName), 1);
    }
    context.Write("DeferList.dat", strList, true);
}

void WriteTextResources(CGenContext& context)
{
    std::string strText = "; id=text\n";
    const int nLines = 2000 * context.Scale();
    for (int i = 1; i <= nLines; ++i)
        strText += std::to_string(100000 + i) + "=" + context.GbkName(context.Rng().Range(2, 12)) + "\n";
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
