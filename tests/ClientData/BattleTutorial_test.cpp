#include "ClientData/BattleTutorial.h"

#include <sstream>
#include <vector>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

// The vocabulary as the format documents it, in test order: keyword, code and
// the fewest tokens a line needs, keyword included (0: none, parameters ignored).
const char kVocabulary[] =
    "Add_CtrlEffect 1 5, Wait_Click_Ctrl 3 4, Del_CtrlEffect 2 5, Find_Path 4 5, Wait_Find_Path 7 5, "
    "Wait_Goto_Region 6 7, Add_ScrEffect 8 5, Del_ScrEffect 9 5, Show_Tip_Window 26 5, Chg_MipMap 34 0, "
    "Cfm_Transmission 35 0, Cfm_Start_Switch 36 0, Wait_Click_Npc 37 2, Answer_Npc_Talk 68 2, "
    "Wait_To_Map 38 2, Cfm_Novice 39 0, Wait_Dlg_Show 10 3, Show_Ctrl 11 4, Hide_Dlg 12 3, "
    "Active_Action 13 2, Wait_Action 14 2, Active_Npc 15 2, OpenWindow 16 2, MoveMouse_To_Ctrl 17 3, "
    "Wait_MoveMouse_Accomplish 18 0, Click_Ctrl 19 3, MoveMouse_To_FirstCrystal 20 0, "
    "Mouse_RButtonDown 21 0, Wait_Timer 33 2, Open_MonsterRelive_DLG 22 3, Wait_Relive_Monster 23 2, "
    "Open_GoodBless_DLG 24 3, Open_Hook_Dlg 25 3, Is_Show_Start_Up_Weapon 40 0, Chage_Group 41 2, "
    "Confirm_Tip 42 2, Card_Tip 59 2, Active_Npc_Talk 60 2, Add_Npc_Effect 61 3, Del_Npc_Effect 62 3, "
    "MoveMouse_To_Pos 63 3, MoveMouse_To_GoodEquip 64 0, Mouse_Left_Click 65 0, "
    "MoveMouse_To_VirtualMpcGoods 66 2, MoveMouse_To_RookieMpcGoods 69 2, Wait_RookieMpcGoods 70 2, "
    "Wait_RookieMpcGoods_Del 71 2, Left_Click_RookieMpcGoods 72 2, Right_Click_RookieMpcGoods 73 2, "
    "Add_VirtualMpcGoods 74 2, Del_VirtualMpcGoods 75 2, Set_Feed_Monster_ID 76 2, Check_MinMoney 80 2, "
    "Enable_Ctrl 43 3, Disable_Ctrl 44 3, IsInMap 45 4, SetPKBtnTip 67 4, Cfm_Start_Up_Weapon 46 0, "
    "Is_Show_Gain_Stone 47 0, Cfm_Gain_Stone 48 0, Is_Show_Note 49 0, Is_Show_UnLoad 50 0, Cfm_UnLoad 51 0, "
    "MouseMove_To_Weapon 52 0, MouseMove_To_Stone 53 0, Check_Player_Lev 54 0, Click_Grid_Weapon 55 0, "
    "Click_Grid_Stone 56 0, MouseMove_To_LuaIndex 57 2, Del_One_Virtual_Item 58 2, Add_Mouse_Effect 77 2, "
    "Del_Mouse_Effect 78 2, Wait_XP_Full 27 0, Wait_Create_Monster 28 0, Wait_XPDlg_Show 30 0, "
    "Wait_Monster_XPKill 29 0, Set_Xp_Burst 32 2, Enable_Device 79 3, Wait_Continue_Task 81 0, "
    "Show_Tip 82 4, Add_DlgSkillEffect 83 6, Del_DlgSkillEffect 84 6, Add_HotkeyEffect 85 5, "
    "Del_HotKeyEffect 86 5, Add_ChildDlgEffect 87 6, Del_ChildDlgEffect 88 6, Accept_Task 89 2, "
    "Wait_Hero_Move 90 0, Wait_Select_Target 91 0, Wait_UnSel_Target 92 0, Wait_Attack_Target 93 0, "
    "Test_Skill_Open 94 1, Magic_Ctrl_Get 95 2, Magic_Ctrl_Effect 96 2, Put_Skill_Normal 98 2, "
    "Put_Skill_Right 99 2, Del_MagicCtrl_Effect 97 2, Add_GridEffect 100 2, Del_GridEffect 101 2, "
    "Del_HotSkill 104 2, MouseMove_To_Autoran_First 105 0, MouseMove_To_Autoran_Last 106 0, "
    "Talk_Target_Name 107 1, MoveMouse_To_Npc 108 2, MoveMouse_To_Item_Improve 109 0, "
    "MoveMouse_To_Virtual_Item 110 2, Cancel_Pickup 111 0, MoveMouse_To_LuaWnd_Index 112 2, "
    "Answer_Task_Talk 113 2, Add_NewGridEffect 102 6, Del_NewGridEffect 103 6, Show_Ctr_Tip 117 7, "
    "Close_Ctr_Tip 118 4, Open_Btn_Tip 119 4, Close_Btn_Tip 120 0, Check_In_Map 121 3, "
    "Check_Eud_Reborn 122 0, Trigger_Script 123 2, Wait_Script_End 124 2, CheckAction 114 2, "
    "Add_Grid_Distil_Effect 115 2, Del_Grid_Distil_Effect 116 2, Find_Path_Npc 5 6, Show_Item_VipShop 125 3, "
    "Show_Monster_type 126 3, Wait_PickUp_Item 127 2, Add_VirtualEffect 128 3, Del_VirtualEffect 129 3, "
    "OpenNormalSkill 131 0, Disable_Use_Item 133 1, Disable_Move_Item 134 1, Enable_Use_Item 135 1, "
    "Enable_Move_Item 136 1, Wait_Use_Skill_Item 137 0, Find_Skill_Item 138 0, "
    "SetMousePosByGoodsIndex 139 0, Add_GoodsGrid_Effect 140 2, Del_GoodsGrid_Effect 141 2, "
    "OpenSubWindow 142 5, Show_Monster_Desc_Tip 143 2, Clean_Monster_Desc_Tip 144 2, Set_Close_Excep 145 2, "
    "Set_MouseTo_UpSkill 146 0, Find_Skill_CanUp 147 0, Add_UpSkill_Select 148 2, Del_UpSkill_Select 149 2, "
    "Add_UpSkill_Condition 150 2, Del_UpSkill_Condition 151 2, Add_UpPoint_Effect 152 2, "
    "Del_UpPoint_Effect 153 2, Add_CallOut_Effect 154 2, Del_CallOut_Effect 155 2, Set_Reborn_Pet 156 0, "
    "Add_SubDlg_Ctrl_Effect 157 7, Del_SubDlg_Ctrl_Effect 158 7, Show_SubDlg_Ctrl_Tip 159 7, "
    "Close_SubDlg_Ctrl_Tip 160 7, Show_Ctr_Tip_Simple 161 4, Close_Ctr_Tip_Simple 162 3, "
    "Add_Pet_VirtualEffect 130 3, MoveMouse_To_CallEud 163 0, MoveMouse_To_NoAttach 164 0, "
    "Show_Lua_Tip_ByIndex 165 6, Wait_Lua_Dialog_Show 166 2, Wait_Lua_Dialog_Click_Index 167 2, "
    "Check_Open_VirDlg 168 3, Add_MapEffect 169 4, Del_MapEffect 170 4";

// "keyword,11,12,..." with nTokens tokens in all.
std::string LineOf(const std::string& strKeyword, int nTokens)
{
    std::string strLine = strKeyword;
    for (int k = 1; k < nTokens; ++k)
        strLine += "," + std::to_string(10 + k);
    return strLine;
}

TEST(TutorialCommandTest, VocabularyInOrderAndEveryMinimumAcceptsItsCountAndRejectsOneLess)
{
    ASSERT_EQ(TutorialKeywordAmount(), 168);
    std::stringstream stream(kVocabulary);
    std::string strItem, strKeyword;
    int i = 0;
    for (int nCode = 0, nMinTokens = 0; std::getline(stream, strItem, ','); ++i) {
        std::stringstream(strItem) >> strKeyword >> nCode >> nMinTokens;
        SCOPED_TRACE(strKeyword);
        ASSERT_LT(i, 168);
        EXPECT_EQ(TutorialKeywordAt(i).szKeyword, strKeyword);
        EXPECT_EQ(TutorialKeywordAt(i).nCode, nCode);
        TutorialCommand command;
        const int nAccepted = nMinTokens == 0 ? 3 : nMinTokens;
        ASSERT_TRUE(ParseTutorialCommand(&command, LineOf(strKeyword, nAccepted).c_str()));
        EXPECT_EQ(command.nCode, nCode);
        for (int k = 1; k < nAccepted; ++k)  // "none" ignores the parameters it is given
            EXPECT_EQ(command.nParam[k - 1], nMinTokens == 0 ? 0 : 10 + k);
        const bool bShortOk = nMinTokens < 2;
        EXPECT_EQ(ParseTutorialCommand(&command, LineOf(strKeyword, bShortOk ? 1 : nMinTokens - 1).c_str()), bShortOk);
        EXPECT_EQ(command.nCode, bShortOk ? nCode : 0);
    }
    EXPECT_EQ(i, 168);
}

TEST(TutorialCommandTest, RejectsWhatIsNoCommand)
{
    const char* kRejected[] = {"add_ctrleffect,1,2,3,4",
                               "Add_CtrlEffect ,1,2,3,4",
                               " Add_CtrlEffect,1,2,3,4",
                               "Add_CtrlEffect,1,2,3",
                               "Chage_Group",
                               "Change_Group,1",
                               "Add_HotKeyEffect,1,2,3,4",
                               "Del_HotkeyEffect,1,2,3,4",
                               "Show_Monster_Type,1,2",
                               "MoveMouse_To_Weapon",
                               "MouseMove_To_Npc,1",
                               ",",
                               ""};
    TutorialCommand command;
    for (const char* szLine : kRejected) {
        EXPECT_FALSE(ParseTutorialCommand(&command, szLine)) << szLine;
        EXPECT_EQ(command.nCode, 0) << szLine;
    }
    EXPECT_FALSE(ParseTutorialCommand(&command, nullptr));
    EXPECT_FALSE(ParseTutorialCommand(nullptr, "Wait_XP_Full"));
}

TEST(TutorialCommandTest, ParametersAndTexts)
{
    TutorialCommand command;
    ASSERT_TRUE(ParseTutorialCommand(&command, "Add_CtrlEffect,1,,x, -4,5,6,7"));
    EXPECT_EQ(std::vector<int>(command.nParam, command.nParam + 6), (std::vector<int>{1, 0, 0, -4, 5, 6}));
    EXPECT_STREQ(command.szText, "");
    // Tip texts run to the end of the line, commas included, cut to 255.
    const std::pair<std::string, std::string> kTexts[] = {
        {"Show_Tip,3,4,Hello, world", "Hello, world"},
        {"Card_Tip," + std::string(400, 't'), std::string(255, 't')},
        {"Talk_Target_Name", ""},
        {"Talk_Target_Name,Old Wang", "Old Wang"},
        {"Show_Ctr_Tip,1,2,3,4,5,Click here", "Click here"},
    };
    for (const auto& c : kTexts) {
        ASSERT_TRUE(ParseTutorialCommand(&command, c.first.c_str())) << c.first;
        EXPECT_EQ(command.szText, c.second);
    }
    EXPECT_EQ(command.nCode, 117);
}

}  // namespace
