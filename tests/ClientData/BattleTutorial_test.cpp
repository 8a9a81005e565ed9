#include "ClientData/BattleTutorial.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

// The vocabulary as the format documents it, in test order.
const char kVocabulary[] =
    "Add_CtrlEffect 1, Wait_Click_Ctrl 3, Del_CtrlEffect 2, Find_Path 4, Wait_Find_Path 7, "
    "Wait_Goto_Region 6, Add_ScrEffect 8, Del_ScrEffect 9, Show_Tip_Window 26, Chg_MipMap 34, "
    "Cfm_Transmission 35, Cfm_Start_Switch 36, Wait_Click_Npc 37, Answer_Npc_Talk 68, Wait_To_Map 38, "
    "Cfm_Novice 39, Wait_Dlg_Show 10, Show_Ctrl 11, Hide_Dlg 12, Active_Action 13, Wait_Action 14, "
    "Active_Npc 15, OpenWindow 16, MoveMouse_To_Ctrl 17, Wait_MoveMouse_Accomplish 18, Click_Ctrl 19, "
    "MoveMouse_To_FirstCrystal 20, Mouse_RButtonDown 21, Wait_Timer 33, Open_MonsterRelive_DLG 22, "
    "Wait_Relive_Monster 23, Open_GoodBless_DLG 24, Open_Hook_Dlg 25, Is_Show_Start_Up_Weapon 40, "
    "Chage_Group 41, Confirm_Tip 42, Card_Tip 59, Active_Npc_Talk 60, Add_Npc_Effect 61, Del_Npc_Effect "
    "62, MoveMouse_To_Pos 63, MoveMouse_To_GoodEquip 64, Mouse_Left_Click 65, "
    "MoveMouse_To_VirtualMpcGoods 66, MoveMouse_To_RookieMpcGoods 69, Wait_RookieMpcGoods 70, "
    "Wait_RookieMpcGoods_Del 71, Left_Click_RookieMpcGoods 72, Right_Click_RookieMpcGoods 73, "
    "Add_VirtualMpcGoods 74, Del_VirtualMpcGoods 75, Set_Feed_Monster_ID 76, Check_MinMoney 80, "
    "Enable_Ctrl 43, Disable_Ctrl 44, IsInMap 45, SetPKBtnTip 67, Cfm_Start_Up_Weapon 46, "
    "Is_Show_Gain_Stone 47, Cfm_Gain_Stone 48, Is_Show_Note 49, Is_Show_UnLoad 50, Cfm_UnLoad 51, "
    "MouseMove_To_Weapon 52, MouseMove_To_Stone 53, Check_Player_Lev 54, Click_Grid_Weapon 55, "
    "Click_Grid_Stone 56, MouseMove_To_LuaIndex 57, Del_One_Virtual_Item 58, Add_Mouse_Effect 77, "
    "Del_Mouse_Effect 78, Wait_XP_Full 27, Wait_Create_Monster 28, Wait_XPDlg_Show 30, "
    "Wait_Monster_XPKill 29, Set_Xp_Burst 32, Enable_Device 79, Wait_Continue_Task 81, Show_Tip 82, "
    "Add_DlgSkillEffect 83, Del_DlgSkillEffect 84, Add_HotkeyEffect 85, Del_HotKeyEffect 86, "
    "Add_ChildDlgEffect 87, Del_ChildDlgEffect 88, Accept_Task 89, Wait_Hero_Move 90, Wait_Select_Target "
    "91, Wait_UnSel_Target 92, Wait_Attack_Target 93, Test_Skill_Open 94, Magic_Ctrl_Get 95, "
    "Magic_Ctrl_Effect 96, Put_Skill_Normal 98, Put_Skill_Right 99, Del_MagicCtrl_Effect 97, "
    "Add_GridEffect 100, Del_GridEffect 101, Del_HotSkill 104, MouseMove_To_Autoran_First 105, "
    "MouseMove_To_Autoran_Last 106, Talk_Target_Name 107, MoveMouse_To_Npc 108, MoveMouse_To_Item_Improve "
    "109, MoveMouse_To_Virtual_Item 110, Cancel_Pickup 111, MoveMouse_To_LuaWnd_Index 112, "
    "Answer_Task_Talk 113, Add_NewGridEffect 102, Del_NewGridEffect 103, Show_Ctr_Tip 117, Close_Ctr_Tip "
    "118, Open_Btn_Tip 119, Close_Btn_Tip 120, Check_In_Map 121, Check_Eud_Reborn 122, Trigger_Script "
    "123, Wait_Script_End 124, CheckAction 114, Add_Grid_Distil_Effect 115, Del_Grid_Distil_Effect 116, "
    "Find_Path_Npc 5, Show_Item_VipShop 125, Show_Monster_type 126, Wait_PickUp_Item 127, "
    "Add_VirtualEffect 128, Del_VirtualEffect 129, OpenNormalSkill 131, Disable_Use_Item 133, "
    "Disable_Move_Item 134, Enable_Use_Item 135, Enable_Move_Item 136, Wait_Use_Skill_Item 137, "
    "Find_Skill_Item 138, SetMousePosByGoodsIndex 139, Add_GoodsGrid_Effect 140, Del_GoodsGrid_Effect "
    "141, OpenSubWindow 142, Show_Monster_Desc_Tip 143, Clean_Monster_Desc_Tip 144, Set_Close_Excep 145, "
    "Set_MouseTo_UpSkill 146, Find_Skill_CanUp 147, Add_UpSkill_Select 148, Del_UpSkill_Select 149, "
    "Add_UpSkill_Condition 150, Del_UpSkill_Condition 151, Add_UpPoint_Effect 152, Del_UpPoint_Effect "
    "153, Add_CallOut_Effect 154, Del_CallOut_Effect 155, Set_Reborn_Pet 156, Add_SubDlg_Ctrl_Effect 157, "
    "Del_SubDlg_Ctrl_Effect 158, Show_SubDlg_Ctrl_Tip 159, Close_SubDlg_Ctrl_Tip 160, Show_Ctr_Tip_Simple "
    "161, Close_Ctr_Tip_Simple 162, Add_Pet_VirtualEffect 130, MoveMouse_To_CallEud 163, "
    "MoveMouse_To_NoAttach 164, Show_Lua_Tip_ByIndex 165, Wait_Lua_Dialog_Show 166, "
    "Wait_Lua_Dialog_Click_Index 167, Check_Open_VirDlg 168, Add_MapEffect 169, Del_MapEffect 170";

// Minimum tokens (0: none, parameters ignored) and their commands.
const struct {
    int nMinTokens;
    const char* szCommands;
} kMinimums[] = {
    {0,
     "Wait_MoveMouse_Accomplish, MoveMouse_To_FirstCrystal, Mouse_RButtonDown, Wait_XP_Full, "
     "Wait_Create_Monster, Wait_Monster_XPKill, Wait_XPDlg_Show, Chg_MipMap, Cfm_Transmission, "
     "Cfm_Start_Switch, Cfm_Novice, Is_Show_Start_Up_Weapon, Cfm_Start_Up_Weapon, Is_Show_Gain_Stone, "
     "Cfm_Gain_Stone, Is_Show_Note, Is_Show_UnLoad, Cfm_UnLoad, MouseMove_To_Weapon, MouseMove_To_Stone, "
     "Check_Player_Lev, Click_Grid_Weapon, Click_Grid_Stone, MoveMouse_To_GoodEquip, Mouse_Left_Click, "
     "Wait_Continue_Task, Wait_Hero_Move, Wait_Select_Target, Wait_UnSel_Target, Wait_Attack_Target, "
     "MouseMove_To_Autoran_First, MouseMove_To_Autoran_Last, MoveMouse_To_Item_Improve, Cancel_Pickup, "
     "Close_Btn_Tip, Check_Eud_Reborn, OpenNormalSkill, Wait_Use_Skill_Item, Find_Skill_Item, "
     "SetMousePosByGoodsIndex, Set_MouseTo_UpSkill, Find_Skill_CanUp, Set_Reborn_Pet, "
     "MoveMouse_To_CallEud, MoveMouse_To_NoAttach"},
    {1,
     "Test_Skill_Open, Talk_Target_Name, Disable_Use_Item, Disable_Move_Item, Enable_Use_Item, "
     "Enable_Move_Item"},
    {2,
     "Active_Action, Wait_Action, Active_Npc, OpenWindow, Wait_Relive_Monster, Set_Xp_Burst, Wait_Timer, "
     "Wait_Click_Npc, Wait_To_Map, Chage_Group, Confirm_Tip, MouseMove_To_LuaIndex, Del_One_Virtual_Item, "
     "Card_Tip, Active_Npc_Talk, MoveMouse_To_VirtualMpcGoods, Answer_Npc_Talk, "
     "MoveMouse_To_RookieMpcGoods, Wait_RookieMpcGoods, Wait_RookieMpcGoods_Del, "
     "Left_Click_RookieMpcGoods, Right_Click_RookieMpcGoods, Add_VirtualMpcGoods, Del_VirtualMpcGoods, "
     "Set_Feed_Monster_ID, Add_Mouse_Effect, Del_Mouse_Effect, Check_MinMoney, Accept_Task, "
     "Magic_Ctrl_Get, Magic_Ctrl_Effect, Del_MagicCtrl_Effect, Put_Skill_Normal, Put_Skill_Right, "
     "Add_GridEffect, Del_GridEffect, Del_HotSkill, MoveMouse_To_Npc, MoveMouse_To_Virtual_Item, "
     "MoveMouse_To_LuaWnd_Index, Answer_Task_Talk, CheckAction, Add_Grid_Distil_Effect, "
     "Del_Grid_Distil_Effect, Trigger_Script, Wait_Script_End, Wait_PickUp_Item, Add_GoodsGrid_Effect, "
     "Del_GoodsGrid_Effect, Show_Monster_Desc_Tip, Clean_Monster_Desc_Tip, Set_Close_Excep, "
     "Add_UpSkill_Select, Del_UpSkill_Select, Add_UpSkill_Condition, Del_UpSkill_Condition, "
     "Add_UpPoint_Effect, Del_UpPoint_Effect, Add_CallOut_Effect, Del_CallOut_Effect, "
     "Wait_Lua_Dialog_Show, Wait_Lua_Dialog_Click_Index"},
    {3,
     "Wait_Dlg_Show, Hide_Dlg, MoveMouse_To_Ctrl, Click_Ctrl, Open_MonsterRelive_DLG, Open_GoodBless_DLG, "
     "Open_Hook_Dlg, Enable_Ctrl, Disable_Ctrl, Add_Npc_Effect, Del_Npc_Effect, MoveMouse_To_Pos, "
     "Enable_Device, Check_In_Map, Show_Item_VipShop, Show_Monster_type, Add_VirtualEffect, "
     "Del_VirtualEffect, Add_Pet_VirtualEffect, Close_Ctr_Tip_Simple, Check_Open_VirDlg"},
    {4,
     "Wait_Click_Ctrl, Show_Ctrl, IsInMap, SetPKBtnTip, Show_Tip, Close_Ctr_Tip, Open_Btn_Tip, "
     "Show_Ctr_Tip_Simple, Add_MapEffect, Del_MapEffect"},
    {5,
     "Add_CtrlEffect, Del_CtrlEffect, Find_Path, Wait_Find_Path, Add_ScrEffect, Del_ScrEffect, "
     "Show_Tip_Window, Add_HotkeyEffect, Del_HotKeyEffect, OpenSubWindow"},
    {6,
     "Find_Path_Npc, Add_DlgSkillEffect, Del_DlgSkillEffect, Add_ChildDlgEffect, Del_ChildDlgEffect, "
     "Add_NewGridEffect, Del_NewGridEffect, Show_Lua_Tip_ByIndex"},
    {7,
     "Wait_Goto_Region, Show_Ctr_Tip, Add_SubDlg_Ctrl_Effect, Del_SubDlg_Ctrl_Effect, "
     "Show_SubDlg_Ctrl_Tip, Close_SubDlg_Ctrl_Tip"},
};

std::vector<std::string> CommaList(const char* szList)
{
    std::vector<std::string> setItem;
    std::stringstream stream(szList);
    std::string strItem;
    while (std::getline(stream, strItem, ','))
        setItem.push_back(strItem.substr(strItem.find_first_not_of(' ')));
    return setItem;
}

int CodeOf(const std::string& strKeyword)
{
    for (const std::string& strItem : CommaList(kVocabulary))
        if (strItem.substr(0, strItem.find(' ')) == strKeyword)
            return std::stoi(strItem.substr(strItem.find(' ') + 1));
    return -1;
}

// "keyword,11,12,..." with nTokens tokens in all.
std::string LineOf(const std::string& strKeyword, int nTokens)
{
    std::string strLine = strKeyword;
    for (int k = 1; k < nTokens; ++k)
        strLine += "," + std::to_string(10 + k);
    return strLine;
}

TEST(TutorialCommandTest, VocabularyInTestOrderByteForByte)
{
    const std::vector<std::string> setItem = CommaList(kVocabulary);
    ASSERT_EQ(TutorialKeywordAmount(), 168);
    ASSERT_EQ(setItem.size(), 168u);
    for (int i = 0; i < 168; ++i) {
        const TutorialKeyword& keyword = TutorialKeywordAt(i);
        EXPECT_EQ(std::string(keyword.szKeyword) + " " + std::to_string(keyword.nCode), setItem[i]);
    }
}

TEST(TutorialCommandTest, EveryMinimumAcceptsItsCountAndRejectsOneLess)
{
    int nSeen = 0;
    for (const auto& row : kMinimums) {
        for (const std::string& strKeyword : CommaList(row.szCommands)) {
            ++nSeen;
            SCOPED_TRACE(strKeyword);
            const int nCode = CodeOf(strKeyword);
            TutorialCommand command;
            const int nAccepted = row.nMinTokens == 0 ? 3 : row.nMinTokens;
            ASSERT_TRUE(ParseTutorialCommand(&command, LineOf(strKeyword, nAccepted).c_str()));
            EXPECT_EQ(command.nCode, nCode);
            for (int k = 1; k < nAccepted; ++k)  // "none" ignores the parameters it is given
                EXPECT_EQ(command.nParam[k - 1], row.nMinTokens == 0 ? 0 : 10 + k);
            if (row.nMinTokens >= 2) {
                EXPECT_FALSE(ParseTutorialCommand(&command, LineOf(strKeyword, row.nMinTokens - 1).c_str()));
                EXPECT_EQ(command.nCode, 0);
            } else {
                EXPECT_TRUE(ParseTutorialCommand(&command, strKeyword.c_str()));
                EXPECT_EQ(command.nCode, nCode);
            }
        }
    }
    EXPECT_EQ(nSeen, 168);
}

TEST(TutorialCommandTest, RejectsWhatIsNoCommand)
{
    const char* kRejected[] = {"add_ctrleffect,1,2,3,4", "Add_CtrlEffect ,1,2,3,4", " Add_CtrlEffect,1,2,3,4",
                               "Add_CtrlEffect,1,2,3",   "Chage_Group",             "Change_Group,1",
                               "Add_HotKeyEffect,1,2,3,4", "Del_HotkeyEffect,1,2,3,4", "Show_Monster_Type,1,2",
                               "MoveMouse_To_Weapon",    "MouseMove_To_Npc,1",      ",",
                               ""};
    TutorialCommand command;
    for (const char* szLine : kRejected) {
        EXPECT_FALSE(ParseTutorialCommand(&command, szLine)) << szLine;
        EXPECT_EQ(command.nCode, 0) << szLine;
    }
    EXPECT_FALSE(ParseTutorialCommand(&command, nullptr));
    EXPECT_FALSE(ParseTutorialCommand(nullptr, "Wait_XP_Full"));
    // The accepted spellings, for contrast.
    for (const char* szLine : {"Chage_Group,1", "Add_HotkeyEffect,1,2,3,4", "Del_HotKeyEffect,1,2,3,4",
                               "Show_Monster_type,1,2", "MouseMove_To_Weapon", "MoveMouse_To_Npc,1"})
        EXPECT_TRUE(ParseTutorialCommand(&command, szLine)) << szLine;
}

TEST(TutorialCommandTest, ParametersAndTexts)
{
    TutorialCommand command;
    ASSERT_TRUE(ParseTutorialCommand(&command, "Add_CtrlEffect,1,,x, -4,5,6,7"));
    EXPECT_EQ(std::vector<int>(command.nParam, command.nParam + 6), (std::vector<int>{1, 0, 0, -4, 5, 6}));
    EXPECT_STREQ(command.szText, "");

    // Tip texts run to the end of the line, commas included.
    ASSERT_TRUE(ParseTutorialCommand(&command, "Show_Tip,3,4,Hello, world"));
    EXPECT_EQ(command.nCode, 82);
    EXPECT_EQ(command.nParam[1], 4);
    EXPECT_STREQ(command.szText, "Hello, world");
    ASSERT_TRUE(ParseTutorialCommand(&command, ("Card_Tip," + std::string(400, 't')).c_str()));
    EXPECT_EQ(std::string(command.szText), std::string(255, 't'));
    ASSERT_TRUE(ParseTutorialCommand(&command, "Talk_Target_Name"));
    EXPECT_STREQ(command.szText, "");
    ASSERT_TRUE(ParseTutorialCommand(&command, "Talk_Target_Name,Old Wang"));
    EXPECT_STREQ(command.szText, "Old Wang");
    ASSERT_TRUE(ParseTutorialCommand(&command, "Show_Ctr_Tip,1,2,3,4,5,Click here"));
    EXPECT_STREQ(command.szText, "Click here");
}

class BattleTutorialTest : public DataFolderTest {
protected:
    void TearDown() override
    {
        TableRegistry::Destroy();
        DataFolderTest::TearDown();
    }

    CBattleTutorialTable m_table;
};

// The client's queries by slot: 7 GetScript, 8 GetScriptType,
// 9 GetCommandAmount, 10 GetCommand.
TEST_F(BattleTutorialTest, ReadsLinesOneToLineAmountThroughTheRawSlots)
{
    WriteFile("ini/BattleTutorial.ini",
              "[3]\nType=2\nLineAmount=3\nLine0=Wait_XP_Full\nLine1=Add_CtrlEffect,1,2,3,4\nLine2=Bogus,1\n"
              "Line3=Wait_Timer,500\nLine4=Wait_XP_Full\n"
              "[-1]\nLineAmount=1\nLine1=Wait_XP_Full\n"
              "[8]\nLineAmount=1\nLine1=Wait_XP_Full\n[8]\nType=5\n"
              "[9]\nLineAmount=2147483647\nLine2147483647=Wait_XP_Full\nLine01=Wait_XP_Full\n");
    m_table.BuildFilePath();
    m_table.Load();
    EXPECT_EQ(m_table.GetLoadedAmount(), 3u);
    ASSERT_NE(CallSlot<const TutorialScript*>(&m_table, 7, 3), nullptr);
    EXPECT_EQ(CallSlot<const TutorialScript*>(&m_table, 7, -1), nullptr);
    EXPECT_EQ(CallSlot<int>(&m_table, 8, 3), 2);
    ASSERT_EQ(CallSlot<int>(&m_table, 9, 3), 2);
    const TutorialCommand* pFirst = CallSlot<const TutorialCommand*>(&m_table, 10, 3, 0);
    ASSERT_NE(pFirst, nullptr);
    EXPECT_EQ(pFirst->nCode, 1);
    EXPECT_EQ(pFirst->nParam[3], 4);
    EXPECT_EQ(CallSlot<const TutorialCommand*>(&m_table, 10, 3, 1)->nCode, 33);
    EXPECT_EQ(CallSlot<const TutorialCommand*>(&m_table, 10, 3, 2), nullptr);
    EXPECT_EQ(CallSlot<const TutorialCommand*>(&m_table, 10, 3, -1), nullptr);
    // A later [8] replaces the earlier script.
    EXPECT_EQ(m_table.GetScriptType(8), 5);
    EXPECT_EQ(m_table.GetCommandAmount(8), 0);
    EXPECT_EQ(m_table.GetCommandAmount(9), 1);
    EXPECT_EQ(m_table.GetCommand(9, 0)->nCode, 27);
    m_table.Clear();
    EXPECT_EQ(m_table.GetScript(3), nullptr);
}

TEST_F(BattleTutorialTest, MissingFileStaysEmptyAndSilent)
{
    m_table.Load();
    m_table.BuildFilePath();
    m_table.Load();
    EXPECT_EQ(m_table.GetLoadedAmount(), 0u);
    EXPECT_EQ(m_table.GetScriptType(0), 0);
    EXPECT_EQ(LogEntryCount(), 0);
}

}  // namespace
