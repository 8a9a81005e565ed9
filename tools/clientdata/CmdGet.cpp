// get TABLE KEY... [DIR]: one record, every field by name. The table's key
// kind tells how many words the key has, so a word after them is the folder.
#include <cstdio>
#include <filesystem>

#include "ClientData/ClientDataMgr.h"
#include "DataFolder.h"
#include "TableView.h"
#include "Text.h"

namespace {

std::string KeyShown(const std::vector<std::string>& setKey)
{
    std::string strKey;
    for (const std::string& strWord : setKey)
        strKey += (strKey.empty() ? "" : " ") + strWord;
    return strKey;
}

}  // namespace

int RunGetCommand(const GetOptions& options)
{
    const TableView* pView = FindTableView(options.strTable);
    if (pView == nullptr)
        return UsageError("get: no table named " + options.strTable + " (clientdata tables lists them)");
    const std::size_t nArity = ViewKeyArity(*pView);
    if (options.setKey.size() < nArity || options.setKey.size() > nArity + 1)
        return UsageError(std::string("get: ") + pView->szName + " takes " + ViewKeyKind(*pView) + ", then DIR");
    LoadOptions load = options.load;
    std::error_code error;
    load.strFolder = std::filesystem::absolute(options.setKey.size() > nArity ? options.setKey.back() : ".", error)
                         .lexically_normal()
                         .string();
    const std::vector<std::string> setKey(options.setKey.begin(), options.setKey.begin() + nArity);
    if (const int nStatus = DataFolderCheck(load.strFolder))
        return nStatus;
    std::vector<TableLoadLine> setLine;
    CClientDataMgr* pMgr = LoadDataFolder(load, &setLine);
    if (pMgr == nullptr)
        return 2;
    PrintLogFaults(setLine, load.bRaw);
    ViewRecord record;
    const ViewLookup lookup = ViewGetRecord(*pView, *pMgr, setKey, record);
    if (lookup == ViewLookup::BAD_KEY) {
        DestroyClientDataMgr();
        return UsageError(std::string("get: ") + pView->szName + " is keyed by " + ViewKeyKind(*pView) + ", not \"" +
                          KeyShown(setKey) + "\"");
    }
    if (lookup == ViewLookup::MISS) {
        std::fprintf(stderr, "clientdata: %s: no record %s\n", pView->szName, KeyShown(setKey).c_str());
        DestroyClientDataMgr();
        return 1;
    }
    for (const ViewField& field : record.setField)
        std::printf("%s: %s\n", field.strName.c_str(),
                    field.bText ? Shown(field.strValue, load.bRaw).c_str() : field.strValue.c_str());
    DestroyClientDataMgr();
    return 0;
}
