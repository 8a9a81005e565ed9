#include "ClientData/DataTable.h"

#include <new>
#include <stdexcept>

#include "ClientData/IClientDataMgr.h"
#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

// A table with a bare file name, as the resolving tables have.
class CNamedTable : public CDataTable {
public:
    explicit CNamedTable(const char* szName) { m_strFileName = szName; }
    ~CNamedTable() = default;
    ZEL_DELETING_DESTRUCTOR
    void Load() override {}
    void Clear() override {}
};

int g_nVersion = 200, g_nVersionCalls = 0;
int AnswerVersion() { return ++g_nVersionCalls, g_nVersion; }

class DataTableTest : public ::testing::Test {
protected:
    // The tables of these tests live outside the manager, so the registry
    // goes first: the manager's ClearAll must not walk them.
    void TearDown() override
    {
        TableRegistry::Destroy();
        DestroyClientDataMgr();
    }

    std::string Resolve(const char* szName, bool bDefer, int nVersion, bool bCallback = true)
    {
        CNamedTable table(szName);
        if (bDefer)
            table.SetDefer();
        g_nVersion = nVersion;
        if (bCallback)
            QueryClientDataMgr()->SetVersionQuery(AnswerVersion);
        table.BuildFilePath();
        return table.GetFilePath();
    }
};

TEST_F(DataTableTest, PathFollowsMarkAndVersionOnEveryBuildAndANameWithoutDotIsOutOfRange)
{
    EXPECT_EQ(Resolve("ItemType.dat", true, 200, false), "ini/ItemType.dat");  // no callback: the standard set
    EXPECT_EQ(Resolve("EudAttrName.dat", true, 200), "ini/200/EudAttrName_200.dat");
    EXPECT_EQ(Resolve("EudAttrName.dat", true, 100), "ini/EudAttrName.dat");
    EXPECT_EQ(Resolve("EudAttrName.dat", true, 0), "ini/200/EudAttrName_200.dat");
    EXPECT_EQ(Resolve("MagicTypeEx.ini", true, 300), "ini/200/MagicTypeEx_200.ini");
    EXPECT_EQ(Resolve("a.b.ini", true, 200), "ini/200/a.b_200.ini");  // only the last dot counts
    EXPECT_EQ(Resolve("", false, 200), "ini/");
    g_nVersionCalls = 0;
    EXPECT_EQ(Resolve("ItemType.dat", false, 200), "ini/ItemType.dat");
    EXPECT_EQ(g_nVersionCalls, 0);  // an unmarked table never asks

    // A marked table asks on every build.
    CNamedTable table("Shop.dat");
    table.SetDefer();
    g_nVersion = 200;
    table.BuildFilePath();
    EXPECT_EQ(table.GetFilePath(), "ini/200/Shop_200.dat");
    g_nVersion = 100;
    table.BuildFilePath();
    EXPECT_EQ(table.GetFilePath(), "ini/Shop.dat");  // replaced whole, never appended
    CNamedTable bare("NoExtension");
    bare.SetDefer();
    g_nVersion = 200;
    EXPECT_THROW(bare.BuildFilePath(), std::out_of_range);
}

TEST_F(DataTableTest, RegistryHoldsEachTableOnceInAddressOrder)
{
    TableRegistry::Destroy();
    CNamedTable tables[3] = {CNamedTable("a.ini"), CNamedTable("b.ini"), CNamedTable("c.ini")};
    TableRegistry::GetOrCreate().Register(&tables[1]);
    const std::set<CDataTable*>& setTable = TableRegistry::Get()->Tables();
    ASSERT_EQ(setTable.size(), 3u);
    EXPECT_EQ(*setTable.begin(), &tables[0]);
    EXPECT_EQ(*setTable.rbegin(), &tables[2]);
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

}  // namespace
