#include "ClientData/NpcTypeInfoEx.h"

#include <cstddef>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

static_assert(sizeof(NpcTypeInfoEx) == 264, "record size");
static_assert(offsetof(NpcTypeInfoEx, nFixDir) == 20 && offsetof(NpcTypeInfoEx, szEffect) == 64);
static_assert(offsetof(NpcTypeInfoEx, szNote) == 100 && offsetof(NpcTypeInfoEx, nMouseSign) == 228);

class NpcTypeInfoExTest : public RegistryFolderTest<TableRegistry> {
protected:
    void Load(const std::string& strContent)
    {
        WriteFile("ini/NewNpc.ini", strContent);
        m_table.BuildFilePath();
        m_table.Load();
    }

    CNpcTypeInfoExTable m_table;
};

TEST_F(NpcTypeInfoExTest, ReadsEveryKeyWithItsDefaults)
{
    Load("[NpcType300]\nName=Guard\nFixDir=1\nZoomPercent=2\nLook=3\nHead=4\nHair=5\nArmor=6\nArmet=7\nRWeapon=8\n"
         "LWeapon=9\nMisc=10\nMount=11\nEffect=" +
         std::string(30, 'e') +
         "\nStandByMotion=12\nBlazeMotion=13\nBlazeMotion1=14\nBlazeMotion2=15\nRestMotion=16\nNote=Stands\n"
         "MouseSign=17\nFrontBlock=18\nBackBlock=19\nLeftBlock=20\nRightBlock=21\nNameHeight=22\nFace3D=23\n"
         "Alpha=24\nScriptID=25\nChangeDir=99\n[NpcType301]\nName=Plain\n");
    const NpcTypeInfoEx* pGuard = m_table.GetNpcType(300);
    ASSERT_NE(pGuard, nullptr);
    EXPECT_STREQ(pGuard->szName, "Guard");
    EXPECT_EQ(std::string(pGuard->szEffect), std::string(15, 'e'));  // 16 bytes
    EXPECT_STREQ(pGuard->szNote, "Stands");
    const int setInt[] = {pGuard->nFixDir,      pGuard->nZoomPercent,  pGuard->nLook,         pGuard->nHead,
                          pGuard->nHair,        pGuard->nArmor,        pGuard->nArmet,        pGuard->nRightWeapon,
                          pGuard->nLeftWeapon,  pGuard->nMisc,         pGuard->nMount,        pGuard->nStandByMotion,
                          pGuard->nBlazeMotion, pGuard->nBlazeMotion1, pGuard->nBlazeMotion2, pGuard->nRestMotion,
                          pGuard->nMouseSign,   pGuard->nFrontBlock,   pGuard->nBackBlock,    pGuard->nLeftBlock,
                          pGuard->nRightBlock,  pGuard->nNameHeight,   pGuard->nFace3D,       pGuard->nAlpha,
                          pGuard->nScriptId};
    for (int i = 0; i < 25; ++i) EXPECT_EQ(setInt[i], i + 1) << "field " << i;
    const NpcTypeInfoEx* pPlain = m_table.GetNpcType(301);
    ASSERT_NE(pPlain, nullptr);
    EXPECT_EQ(pPlain->nZoomPercent, 0);
}

// Slot 7 is GetNpcType.
TEST_F(NpcTypeInfoExTest, NullNoteInAnyCaseIsEmptiedAndFirstWins)
{
    Load("[NpcType1]\nNote=NULL\n[NpcType2]\nNote=null\n[NpcType3]\nNote=Null\n[NpcType4]\nNote=NULLS\n"
         "[NpcType1]\nNote=later\n[NpcType]\nNote=zero\n");
    const auto Note = [&](uint32_t nId) { return CallSlot<const NpcTypeInfoEx*>(&m_table, 7, nId)->szNote; };
    EXPECT_EQ(std::string(Note(1)) + Note(2) + Note(3) + "|" + Note(4) + "|" + Note(0), "|NULLS|zero");
    EXPECT_EQ(CallSlot<const NpcTypeInfoEx*>(&m_table, 7, 5u), nullptr);
    EXPECT_EQ(m_table.GetLoadedAmount(), 6u);
}

TEST_F(NpcTypeInfoExTest, ReadsTheBuiltPathLogsTheBareNameOrTheFailedAllocationAndSurvivesGarbage)
{
    WriteFile("ini/NewNpc.ini", "[NpcType9]\n");
    m_table.Load();  // no path built yet
    EXPECT_EQ(m_table.GetNpcType(9), nullptr);
    EXPECT_NE(LogText().find("NewNpc.ini load error! -- "), std::string::npos) << LogText();
    EXPECT_EQ(LogText().find("ini/NewNpc.ini load error!"), std::string::npos);
    m_table.BuildFilePath();
    m_table.Load();
    EXPECT_NE(m_table.GetNpcType(9), nullptr);
    NpcTypeAllocFailLog(CNpcTypeInfoExTable::GetFormat());
    EXPECT_NE(LogText().find(ZEL_STAR "ASSERT(pInfo) in 34 line of ClientData\\NpcTypeInfoEx" ZEL_STAR " -- "),
              std::string::npos);

    std::string strGarbage = "[\n[]\n[N]\n[NpcType" + std::string(5000, '9') + "]\nNote=" + std::string(4000, 'n');
    for (int i = 0; i < 2048; ++i) strGarbage += static_cast<char>((i * 131) % 255 + 1);
    Load(strGarbage);
    EXPECT_GT(m_table.GetLoadedAmount(), 0u);
    m_table.GetNpcType(2147483647u);
}

}  // namespace
