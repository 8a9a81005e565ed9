// "DeferList.dat" and a text-resource file through the manager's slots.
#include "ClientData/ClientDataMgr.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    FuzzWriteFile("DeferList.dat", pData, nSize);
    FuzzWriteFile("str.ini", pData, nSize);
    IClientDataMgr* pMgr = QueryClientDataMgr();
    pMgr->LoadDeferList();
    pMgr->LoadStrRes("str.ini");
    pMgr->GetStrRes(static_cast<unsigned>(nSize));
    DestroyClientDataMgr();
    return 0;
}
