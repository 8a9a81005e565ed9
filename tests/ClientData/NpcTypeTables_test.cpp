// The two NPC type tables share their store; they differ in the note they
// empty, their defaults, the path they read and the lines their messages name.
#include <cstddef>
#include <tuple>

#include "ClientData/NpcTypeInfo.h"
#include "ClientData/NpcTypeInfoEx.h"
#include "Support/TableSupport.h"
#include "Support/VtableCall.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

// The client reads the records by layout.
static_assert(sizeof(NpcTypeInfo) == 272, "record size");
static_assert(offsetof(NpcTypeInfo, szEffect) == 20 && offsetof(NpcTypeInfo, nSimpleObjId) == 84);
static_assert(offsetof(NpcTypeInfo, szNote) == 108 && offsetof(NpcTypeInfo, nZoomPercent) == 236);
static_assert(sizeof(NpcTypeInfoEx) == 264, "record size");
static_assert(offsetof(NpcTypeInfoEx, nFixDir) == 20 && offsetof(NpcTypeInfoEx, szEffect) == 64);
static_assert(offsetof(NpcTypeInfoEx, szNote) == 100 && offsetof(NpcTypeInfoEx, nMouseSign) == 228);

using NpcTypeInfoTest = TableTest<CNpcTypeInfoTable>;
using NpcTypeInfoExTest = TableTest<CNpcTypeInfoExTable>;

// Slot 7 is GetNpcType in both tables.
TEST_F(NpcTypeInfoTest, FirstSectionWinsTheIdFollowsSevenCharactersAndOnlyUpperCaseNullEmptiesTheNote)
{
    Load("ini/Npc.ini",
         "[NpcType10]\nName=First\n[NpcType10]\nName=Second\n[Xxxxxxx1201]\nName=AnyPrefix\n"
         "[NpcType]\nName=Zero\n[Npc]\nName=Short\n[NpcType12ab]\nName=Digits\n"
         "[NpcType1]\nNote=NULL\n[NpcType2]\nNote=null\n[NpcType3]\nNote=Null\n");
    EXPECT_EQ(m_table.GetLoadedAmount(), 9u);
    const auto Find = [&](uint32_t nId) { return CallSlot<const NpcTypeInfo*>(&m_table, 7, nId); };
    ASSERT_NE(Find(10), nullptr);
    EXPECT_STREQ(Find(10)->szName, "First");
    EXPECT_STREQ(Find(1201)->szName, "AnyPrefix");
    EXPECT_STREQ(Find(0)->szName, "Zero");  // [Npc] gives 0 as well, but comes later
    EXPECT_STREQ(Find(12)->szName, "Digits");
    EXPECT_EQ(Find(11), nullptr);
    EXPECT_EQ(std::string(Find(1)->szNote) + "|" + Find(2)->szNote + "|" + Find(3)->szNote, "|null|Null");
    // A section without them shows at full size and turns to the player.
    EXPECT_EQ(std::tie(Find(1)->nZoomPercent, Find(1)->nChangeDir), std::make_tuple(100, 1));
    m_table.Clear();
    EXPECT_EQ(m_table.GetNpcType(10), nullptr);
    EXPECT_EQ(m_table.GetLoadedAmount(), 0u);
}

TEST_F(NpcTypeInfoExTest, NullNoteInAnyCaseIsEmptiedAndFirstWins)
{
    Load("ini/NewNpc.ini",
         "[NpcType1]\nNote=NULL\n[NpcType2]\nNote=null\n[NpcType3]\nNote=Null\n"
         "[NpcType4]\nNote=NULLS\n[NpcType1]\nNote=later\n[NpcType]\nNote=zero\n");
    const auto Note = [&](uint32_t nId) { return CallSlot<const NpcTypeInfoEx*>(&m_table, 7, nId)->szNote; };
    EXPECT_EQ(std::string(Note(1)) + Note(2) + Note(3) + "|" + Note(4) + "|" + Note(0), "|NULLS|zero");
    EXPECT_EQ(CallSlot<const NpcTypeInfoEx*>(&m_table, 7, 5u), nullptr);
    EXPECT_EQ(m_table.GetLoadedAmount(), 6u);
}

// Npc.ini is read from its fixed path whatever the base built; NewNpc.ini
// only from the built path.
TEST_F(NpcTypeInfoTest, ReadsTheFixedPathWhateverWasBuilt)
{
    WriteFile("ini/Npc.ini", "[NpcType5]\nName=Fixed\n");
    m_table.SetDefer();
    m_table.BuildFilePath();  // no name: "ini/"
    m_table.Load();
    EXPECT_NE(m_table.GetNpcType(5), nullptr);
}

TEST_F(NpcTypeInfoExTest, ReadsOnlyTheBuiltPath)
{
    WriteFile("ini/NewNpc.ini", "[NpcType9]\n");
    m_table.Load();  // no path built yet
    EXPECT_EQ(m_table.GetNpcType(9), nullptr);
    EXPECT_NE(LogText().find("NewNpc.ini load error! -- "), std::string::npos) << LogText();
    Load("ini/NewNpc.ini", "[NpcType9]\n");
    EXPECT_NE(m_table.GetNpcType(9), nullptr);
}

TEST_F(NpcTypeInfoTest, AFailedAllocationLogsEachTablesUnitAndLine)
{
    NpcTypeAllocFailLog(CNpcTypeInfoTable::GetFormat());
    NpcTypeAllocFailLog(CNpcTypeInfoExTable::GetFormat());
    const std::string strLog = LogText();
    EXPECT_NE(strLog.find(ZEL_STAR "ASSERT(pInfo) in 31 line of ClientData\\NpcTypeInfo" ZEL_STAR " -- "),
              std::string::npos)
        << strLog;
    EXPECT_NE(strLog.find(ZEL_STAR "ASSERT(pInfo) in 34 line of ClientData\\NpcTypeInfoEx" ZEL_STAR " -- "),
              std::string::npos)
        << strLog;
}

}  // namespace
