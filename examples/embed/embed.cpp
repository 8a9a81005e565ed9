// Loads a data folder as the client does at start and prints the name of one
// item type.   embed DATA_FOLDER [ITEM_ID]
#include <ClientData/IClientDataMgr.h>
#include <ClientData/ItemTypeTable.h>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

int main(int argc, char** argv)
{
    // The library reads "ini/..." from the working directory.
    if (argc < 2 || chdir(argv[1]) != 0) {
        std::fprintf(stderr, "usage: embed DATA_FOLDER [ITEM_ID]\n");
        return 2;
    }
    uint32_t idItem = argc > 2 ? static_cast<uint32_t>(std::strtoul(argv[2], nullptr, 10)) : 100000;
    IClientDataMgr* pMgr = QueryClientDataMgr();
    if (!pMgr)
        return 1;
    pMgr->LoadDeferList();
    pMgr->ReloadDeferred(false);
    pMgr->ReloadDeferred(true);
    const char* szName = pMgr->GetItemType()->GetItemName(idItem);
    std::printf("%u %s\n", static_cast<unsigned>(idItem), szName ? szName : "(no such item)");
    DestroyClientDataMgr();
    return szName ? 0 : 1;
}
