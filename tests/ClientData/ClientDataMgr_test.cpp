#include "ClientData/ClientDataMgr.h"

#include <map>
#include <stdexcept>
#include <vector>

#include "Support/TableSupport.h"
#include "Support/VtableCall.h"

namespace {

int g_nVersion = 100, g_nVersionCalls = 0;
int AnswerVersion() { return ++g_nVersionCalls, g_nVersion; }

// A table with a bare file name, as the resolving tables have.
class CNamedTable : public CDataTable {
public:
    explicit CNamedTable(const char* szName) { m_strFileName = szName; }
    ~CNamedTable() = default;
    ZEL_DELETING_DESTRUCTOR
    void Load() override {}
    void Clear() override {}
};

// Tables of their own beside the manager: the registry goes first, so that
// the manager's ClearAll never walks them.
class DataTableTest : public ::testing::Test {
protected:
    void TearDown() override
    {
        TableRegistry::Destroy();
        DestroyClientDataMgr();
    }
};

TEST_F(DataTableTest, PathFollowsMarkAndVersionOnEveryBuildAndANameWithoutDotIsOutOfRange)
{
    const struct {
        const char* szName;
        bool bDefer;
        int nVersion;  // 0: no callback yet, the standard set
        const char* szPath;
    } kCases[] = {
        {"ItemType.dat", true, 0, "ini/ItemType.dat"},
        {"EudAttrName.dat", true, 200, "ini/200/EudAttrName_200.dat"},
        {"EudAttrName.dat", true, 100, "ini/EudAttrName.dat"},
        {"EudAttrName.dat", true, -1, "ini/200/EudAttrName_200.dat"},
        {"a.b.ini", true, 300, "ini/200/a.b_200.ini"},  // only the last dot counts
        {"", false, 200, "ini/"},
        {"ItemType.dat", false, 200, "ini/ItemType.dat"},
    };
    for (const auto& c : kCases) {
        CNamedTable table(c.szName);
        if (c.bDefer)
            table.SetDefer();
        g_nVersion = c.nVersion;
        g_nVersionCalls = 0;
        if (c.nVersion != 0)
            QueryClientDataMgr()->SetVersionQuery(AnswerVersion);
        table.BuildFilePath();
        EXPECT_EQ(table.GetFilePath(), c.szPath) << c.szName << " " << c.nVersion;
        EXPECT_EQ(g_nVersionCalls, c.bDefer && c.nVersion != 0) << c.szName;  // an unmarked table never asks
    }
    CNamedTable bare("NoExtension");
    bare.SetDefer();
    g_nVersion = 200;
    EXPECT_THROW(bare.BuildFilePath(), std::out_of_range);
}

TEST_F(DataTableTest, BaseSlotsInClientOrder)
{
    alignas(CNamedTable) unsigned char block[sizeof(CNamedTable)];
    CNamedTable* pTable = new (block) CNamedTable("Slots.ini");
    EXPECT_FALSE(CallSlot<bool>(pTable, 4));
    CallSlot<void>(pTable, 3);
    EXPECT_TRUE(CallSlot<bool>(pTable, 4));
    // Slot 0 with bit 0 clear runs the destructor without freeing the block.
    EXPECT_EQ(CallSlot<void*>(pTable, 0, 0u), static_cast<void*>(pTable));
    CNamedTable* pHeap = new CNamedTable("Heap.ini");
    CallSlot<void*>(pHeap, 0, 1u);  // frees: the sanitizer build would catch a leak or a double free
}

using ClientDataMgrTest = ManagerTest;

TEST_F(ClientDataMgrTest, RegistryWalksTablesInConstructionOrderAndDestructionRunsInReverse)
{
    struct Watch {
        std::map<const CDataTable*, int> mapSlot;
        std::vector<int> setDestroyed;
    } watch;
    for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot)
        watch.mapSlot[Mgr()->GetTableBySlot(nSlot)] = nSlot;
    std::vector<int> setWalk;
    for (CDataTable* pTable : TableRegistry::Get()->Tables())
        setWalk.push_back(watch.mapSlot.at(pTable));
    ASSERT_EQ(setWalk.size(), 197u);
    EXPECT_EQ(LogEntryCount(), 0);  // constructing reads nothing
    EXPECT_TRUE(std::equal(setWalk.begin(), setWalk.end(), kConstructionOrder.nSlot));

    SetTableDestroyObserver(
        [](CDataTable* pTable, void* pContext) {
            Watch* pWatch = static_cast<Watch*>(pContext);
            pWatch->setDestroyed.push_back(pWatch->mapSlot.at(pTable));
        },
        &watch);
    DestroyClientDataMgr();
    SetTableDestroyObserver(nullptr, nullptr);
    EXPECT_EQ(watch.setDestroyed, std::vector<int>(setWalk.rbegin(), setWalk.rend()));
    EXPECT_EQ(TableRegistry::Get(), nullptr);
    // With no manager left, destroying again is harmless and a query builds a fresh one.
    DestroyClientDataMgr();
    EXPECT_EQ(TableRegistry::Get(), nullptr);
    ASSERT_NE(QueryClientDataMgr(), nullptr);
    EXPECT_EQ(TableRegistry::Get()->Tables().size(), 197u);
}
TEST_F(ClientDataMgrTest, DeferListMarksBareNamesCaseInsensitively)
{
    auto marked = [this] {
        std::vector<int> setMarked;
        for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot)
            if (Mgr()->GetTableBySlot(nSlot)->IsDefer())
                setMarked.push_back(nSlot);
        return setMarked;
    };
    Mgr()->LoadDeferList();  // no list yet: nothing marked, nothing logged
    EXPECT_EQ(marked(), std::vector<int>{});
    EXPECT_EQ(LogEntryCount(), 0);
    WriteFile("DeferList.dat",
              "itemtype.DAT\r\nMAGICTYPE.INI extra fields\n; comment\nini/Npc.ini\nNoSuchTable.dat\n blank first\n");
    Mgr()->LoadDeferList();
    EXPECT_EQ(marked(), (std::vector<int>{9, 11}));
}

TEST_F(ClientDataMgrTest, ReloadDeferredResolvesPathsByVersion)
{
    WriteFile("DeferList.dat", "EquipSealExp.ini\n");
    CDataTable* pMarked = Mgr()->GetTableBySlot(205);
    CDataTable* pPlain = Mgr()->GetTableBySlot(204);
    g_nVersion = 200;
    g_nVersionCalls = 0;
    Mgr()->SetVersionQuery(AnswerVersion);
    Mgr()->SetVersionQuery(nullptr);  // ignored: the callback stays
    StartUp();
    EXPECT_EQ(pMarked->GetFilePath(), "ini/200/EquipSealExp_200.ini");
    EXPECT_EQ(pPlain->GetFilePath(), "ini/ItemSealInfo.ini");
    EXPECT_EQ(g_nVersionCalls, 1);  // only the marked table asks

    g_nVersion = 100;
    Mgr()->ReloadDeferred(true);
    EXPECT_EQ(pMarked->GetFilePath(), "ini/EquipSealExp.ini");
    EXPECT_EQ(g_nVersionCalls, 2);
}

TEST_F(ClientDataMgrTest, LoadAllRereadsLastBuiltPaths)
{
    WriteFile("ini/LevelExp.dat", "1 0 100\n2 100 250\n");
    // Before any ReloadDeferred the resolving tables have no path.
    Mgr()->LoadAll();
    EXPECT_EQ(Mgr()->GetLoadedAmountBySlot(73), 0);
    StartUp();
    EXPECT_EQ(Mgr()->GetLoadedAmountBySlot(73), 2);
    Mgr()->ClearAll();
    EXPECT_EQ(Mgr()->GetLoadedAmountBySlot(73), 0);
    Mgr()->LoadAll();
    EXPECT_EQ(Mgr()->GetLoadedAmountBySlot(73), 2);
}

TEST_F(ClientDataMgrTest, EmptyFolderLoadsEveryTableEmptyAndEachReportsItsOwnFault)
{
    StartUp();
    for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot)
        EXPECT_EQ(Mgr()->GetLoadedAmountBySlot(nSlot), 0) << "slot " << nSlot;
    IGenericTable* pMaps = Mgr()->GetGameMap();
    EXPECT_EQ(pMaps->FindRecord(1000), -1);
    EXPECT_STREQ(pMaps->GetRecordTitle(0), "");

    // Each table's own text; a bare name stays bare although the path was built.
    const std::string strLog = LogText();
    const char* const kLines[] = {
        "error on open ItemType.dat.",
        "file: ini/MagicType.ini is not exist.",
        "error on open ini/MagicTypeEx.ini.",
        "ItemCategory.dat read error!",
        "error on open Monster.dat.",
        "ini/Npc.ini load error!",
        "NewNpc.ini load error!",
        "ini/ActionDelay.ini load error!",
        "ini/ActionCtrl.ini load error!",
        "Load Error ini/SoundEvent.ini not find",
        "Load Error ini/ActionType.ini not find",
        "Load Error ini/MonsterActionType.ini not find",
        "error on open ini/FontSetting.ini.",
        "error on open ini/Common.ini.",
    };
    for (const char* szLine : kLines)
        EXPECT_NE(strLog.find(std::string(szLine) + " -- Mon Mar 07 14:05:09 2011\n"), std::string::npos) << szLine;
    // A generic table names the path it opened.
    for (const CatalogueEntry& entry : kCatalogue) {
        const std::string strFile = entry.szFile;
        const std::string strPath = strFile.find_first_of("/\\") == std::string::npos ? "ini/" + strFile : strFile;
        EXPECT_TRUE(!entry.bGeneric || strLog.find("error on open " + strPath + ". -- ") != std::string::npos)
            << entry.szName;
    }
    // These tables stay silent.
    for (const char* szFile : {"ActionEffectOffset", "ini/Action.dat", "monsterspeak", "BattleTutorial", "/Font.ini"})
        EXPECT_EQ(strLog.find(szFile), std::string::npos) << szFile;
}

TEST_F(ClientDataMgrTest, TextResourcesLaterWinAndAMissingFileIsLogged)
{
    Mgr()->LoadStrRes(nullptr);
    Mgr()->LoadStrRes("");
    EXPECT_EQ(LogEntryCount(), 0);
    Mgr()->LoadStrRes("missing.ini");
    EXPECT_EQ(LogText(), "can't open file:missing.ini -- Mon Mar 07 14:05:09 2011\n");
    WriteFile("str.ini", "12=a=b\n=x\n; 7=comment\nno equals sign\n5=\n8=carriage\r\n 9=blank before\nabc=letters\n");
    WriteFile("more.ini", "12=override\n13=added");
    Mgr()->LoadStrRes("str.ini");
    Mgr()->LoadStrRes("more.ini");
    // Later wins; an empty key and "abc" both read as 0; a CR stays in the text.
    const std::pair<unsigned, const char*> kCases[] = {{12, "override"}, {0, "letters"},    {7, ""},
                                                       {5, ""},          {8, "carriage\r"}, {9, "blank before"},
                                                       {13, "added"},    {4242, ""}};
    for (const auto& c : kCases)
        EXPECT_STREQ(Mgr()->GetStrRes(c.first), c.second) << c.first;
}

}  // namespace
