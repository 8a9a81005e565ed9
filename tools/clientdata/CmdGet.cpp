// get TABLE KEY... [DIR]: one record, every field by name. The table's key
// kind tells how many words the key has, so a word after them is the folder.
#include <cstdio>

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
    const std::string& strTable = options.setOperand.front();
    const TableView* pView = FindTableView(strTable);
    if (pView == nullptr)
        return UsageError("get: no table named " + strTable + " (clientdata tables lists them)");
    const std::size_t nArity = ViewKeyArity(*pView);
    const std::size_t nWords = options.setOperand.size() - 1;
    if (nWords < nArity || nWords > nArity + 1)
        return UsageError(std::string("get: ") + pView->szName + " takes " + ViewKeyKind(*pView) + ", then DIR");
    LoadOptions load = options.load;
    load.strFolder = AbsolutePath(nWords > nArity ? options.setOperand.back() : ".");
    const std::vector<std::string> setKey(options.setOperand.begin() + 1, options.setOperand.begin() + 1 + nArity);
    if (!ViewKeyParses(*pView, setKey))
        return UsageError(std::string("get: ") + pView->szName + " is keyed by " + ViewKeyKind(*pView) + ", not \"" +
                          KeyShown(setKey) + "\"");
    if (const int nStatus = DataFolderCheck(load.strFolder))
        return nStatus;
    std::vector<TableLoadLine> setLine;
    CClientDataMgr* pMgr = LoadDataFolder(load, &setLine);
    if (pMgr == nullptr)
        return 2;
    PrintLogFaults(setLine, load.bRaw);
    ViewRecord record;
    if (!ViewGetRecord(*pView, *pMgr, setKey, record)) {
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
