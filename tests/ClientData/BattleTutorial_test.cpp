#include "ClientData/BattleTutorial.h"

#include <set>
#include <vector>

#include "Support/TestSupport.h"
#include "Support/VtableCall.h"

namespace {

// "keyword,11,12,..." with nTokens tokens in all.
std::string LineOf(const std::string& strKeyword, int nTokens)
{
    std::string strLine = strKeyword;
    for (int k = 1; k < nTokens; ++k)
        strLine += "," + std::to_string(10 + k);
    return strLine;
}

// Every keyword parses into its code with the fewest tokens it needs and is
// rejected with one less; a keyword without parameters ignores those given.
TEST(TutorialCommandTest, EveryKeywordAcceptsItsFewestTokensAndRejectsOneLess)
{
    ASSERT_EQ(TutorialKeywordAmount(), 168);
    std::set<int> setCode;
    for (int i = 0; i < TutorialKeywordAmount(); ++i) {
        const TutorialKeyword& keyword = TutorialKeywordAt(i);
        SCOPED_TRACE(keyword.szKeyword);
        setCode.insert(keyword.nCode);
        const int nMin = keyword.nMinTokens;
        const int nAccepted = nMin == TUTORIAL_NO_PARAMS ? 3 : nMin;
        TutorialCommand command;
        ASSERT_TRUE(ParseTutorialCommand(&command, LineOf(keyword.szKeyword, nAccepted).c_str()));
        EXPECT_EQ(command.nCode, keyword.nCode);
        for (int k = 1; k < nAccepted; ++k)
            EXPECT_EQ(command.nParam[k - 1], nMin == TUTORIAL_NO_PARAMS ? 0 : 10 + k);
        const bool bShortOk = nMin < 2;
        EXPECT_EQ(ParseTutorialCommand(&command, LineOf(keyword.szKeyword, bShortOk ? 1 : nMin - 1).c_str()), bShortOk);
        EXPECT_EQ(command.nCode, bShortOk ? keyword.nCode : 0);
    }
    // Codes 1 to 170, each once.
    EXPECT_EQ(setCode.size(), 168u);
    EXPECT_EQ(std::make_pair(*setCode.begin(), *setCode.rbegin()), std::make_pair(1, 170));
    // Keywords are matched as the client spells them, oddities included.
    const std::pair<const char*, int> kSpelled[] = {
        {"Chage_Group,1", 41},          {"Add_HotkeyEffect,1,2,3,4", 85}, {"Del_HotKeyEffect,1,2,3,4", 86},
        {"Show_Monster_type,1,2", 126}, {"MouseMove_To_Weapon", 52},      {"MoveMouse_To_Npc,1", 108},
        {"Is_Show_UnLoad", 50},         {"Find_Path_Npc,1,2,3,4,5", 5},   {"Wait_XP_Full", 27},
    };
    for (const auto& c : kSpelled) {
        TutorialCommand command;
        EXPECT_TRUE(ParseTutorialCommand(&command, c.first)) << c.first;
        EXPECT_EQ(command.nCode, c.second) << c.first;
    }
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
