// get TABLE KEY... [--raw] [DIR=...]: one record, every field by name.
#include <cstdio>

#include "ClientData/ClientDataMgr.h"
#include "Commands.h"
#include "TableView.h"
#include "Text.h"

int RunGetCommand(const Arguments& setArg)
{
    bool bRaw = false;
    std::string strFolder = DefaultDataFolder();
    Arguments setPositional;
    for (std::size_t i = 0; i < setArg.size(); ++i) {
        if (setArg[i] == "--raw")
            bRaw = true;
        else if (setArg[i] == "--dir" && i + 1 < setArg.size())
            strFolder = setArg[++i];
        else
            setPositional.push_back(setArg[i]);
    }
    if (setPositional.size() < 2)
        return UsageError("get: expected TABLE and KEY");
    const TableView* pView = FindTableView(setPositional[0]);
    if (pView == nullptr)
        return UsageError("get: no table named " + setPositional[0]);
    CClientDataMgr* pMgr = LoadDataFolder(strFolder);
    if (pMgr == nullptr)
        return 2;
    const Arguments setKey(setPositional.begin() + 1, setPositional.end());
    ViewRecord record;
    if (!ViewGetRecord(*pView, *pMgr, setKey, record)) {
        std::fprintf(stderr, "clientdata: %s: no record %s (key: %s)\n", pView->szName, setPositional[1].c_str(),
                     ViewKeyUsage(*pView).c_str());
        DestroyClientDataMgr();
        return 1;
    }
    for (const ViewField& field : record.setField) {
        const std::string strValue = field.bText && !bRaw ? GbkToUtf8(field.strValue) : field.strValue;
        std::printf("%s: %s\n", field.strName.c_str(), strValue.c_str());
    }
    DestroyClientDataMgr();
    return 0;
}
