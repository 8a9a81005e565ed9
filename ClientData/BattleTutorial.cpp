#include "ClientData/BattleTutorial.h"

#include <climits>
#include <cstring>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "ClientData/Catalogue.h"
#include "ClientData/RecordRead.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

// A section: the script's id (its title), its type, and its lines from
// Line1 to Line<LineAmount>.
const FieldDesc kScriptFields[] = {
    FILE_FIELD(int32_t, "Id").FromTitle().Gen(100, 1),
    FIELD(TutorialScript, nType, "Type").Gen(0, 3),
    FILE_FIELD(int32_t, "LineAmount").Gen(2, 9),
    FILE_FIELD(char[1024], "Line%d"),
};
const RecordDesc kScriptRecord(kScriptFields);
const FieldDesc& kLineAmountField = kScriptFields[2];
const FieldDesc& kLineField = kScriptFields[3];

// The keywords are the file's vocabulary, spelling slips included
// ("Chage_Group", "Del_HotKeyEffect" beside "Add_HotkeyEffect",
// "MouseMove_To_" beside "MoveMouse_To_").
const TutorialKeyword kKeywords[] = {
    {"Add_CtrlEffect", 1, 5, 0},
    {"Wait_Click_Ctrl", 3, 4, 0},
    {"Del_CtrlEffect", 2, 5, 0},
    {"Find_Path", 4, 5, 0},
    {"Wait_Find_Path", 7, 5, 0},
    {"Wait_Goto_Region", 6, 7, 0},
    {"Add_ScrEffect", 8, 5, 0},
    {"Del_ScrEffect", 9, 5, 0},
    {"Show_Tip_Window", 26, 5, 4},
    {"Chg_MipMap", 34, TUTORIAL_NO_PARAMS, 0},
    {"Cfm_Transmission", 35, TUTORIAL_NO_PARAMS, 0},
    {"Cfm_Start_Switch", 36, TUTORIAL_NO_PARAMS, 0},
    {"Wait_Click_Npc", 37, 2, 0},
    {"Answer_Npc_Talk", 68, 2, 0},
    {"Wait_To_Map", 38, 2, 0},
    {"Cfm_Novice", 39, TUTORIAL_NO_PARAMS, 0},
    {"Wait_Dlg_Show", 10, 3, 0},
    {"Show_Ctrl", 11, 4, 0},
    {"Hide_Dlg", 12, 3, 0},
    {"Active_Action", 13, 2, 0},
    {"Wait_Action", 14, 2, 0},
    {"Active_Npc", 15, 2, 0},
    {"OpenWindow", 16, 2, 0},
    {"MoveMouse_To_Ctrl", 17, 3, 0},
    {"Wait_MoveMouse_Accomplish", 18, TUTORIAL_NO_PARAMS, 0},
    {"Click_Ctrl", 19, 3, 0},
    {"MoveMouse_To_FirstCrystal", 20, TUTORIAL_NO_PARAMS, 0},
    {"Mouse_RButtonDown", 21, TUTORIAL_NO_PARAMS, 0},
    {"Wait_Timer", 33, 2, 0},
    {"Open_MonsterRelive_DLG", 22, 3, 0},
    {"Wait_Relive_Monster", 23, 2, 0},
    {"Open_GoodBless_DLG", 24, 3, 0},
    {"Open_Hook_Dlg", 25, 3, 0},
    {"Is_Show_Start_Up_Weapon", 40, TUTORIAL_NO_PARAMS, 0},
    {"Chage_Group", 41, 2, 0},
    {"Confirm_Tip", 42, 2, 1},
    {"Card_Tip", 59, 2, 1},
    {"Active_Npc_Talk", 60, 2, 0},
    {"Add_Npc_Effect", 61, 3, 0},
    {"Del_Npc_Effect", 62, 3, 0},
    {"MoveMouse_To_Pos", 63, 3, 0},
    {"MoveMouse_To_GoodEquip", 64, TUTORIAL_NO_PARAMS, 0},
    {"Mouse_Left_Click", 65, TUTORIAL_NO_PARAMS, 0},
    {"MoveMouse_To_VirtualMpcGoods", 66, 2, 0},
    {"MoveMouse_To_RookieMpcGoods", 69, 2, 0},
    {"Wait_RookieMpcGoods", 70, 2, 0},
    {"Wait_RookieMpcGoods_Del", 71, 2, 0},
    {"Left_Click_RookieMpcGoods", 72, 2, 0},
    {"Right_Click_RookieMpcGoods", 73, 2, 0},
    {"Add_VirtualMpcGoods", 74, 2, 0},
    {"Del_VirtualMpcGoods", 75, 2, 0},
    {"Set_Feed_Monster_ID", 76, 2, 0},
    {"Check_MinMoney", 80, 2, 0},
    {"Enable_Ctrl", 43, 3, 0},
    {"Disable_Ctrl", 44, 3, 0},
    {"IsInMap", 45, 4, 0},
    {"SetPKBtnTip", 67, 4, 3},
    {"Cfm_Start_Up_Weapon", 46, TUTORIAL_NO_PARAMS, 0},
    {"Is_Show_Gain_Stone", 47, TUTORIAL_NO_PARAMS, 0},
    {"Cfm_Gain_Stone", 48, TUTORIAL_NO_PARAMS, 0},
    {"Is_Show_Note", 49, TUTORIAL_NO_PARAMS, 0},
    {"Is_Show_UnLoad", 50, TUTORIAL_NO_PARAMS, 0},
    {"Cfm_UnLoad", 51, TUTORIAL_NO_PARAMS, 0},
    {"MouseMove_To_Weapon", 52, TUTORIAL_NO_PARAMS, 0},
    {"MouseMove_To_Stone", 53, TUTORIAL_NO_PARAMS, 0},
    {"Check_Player_Lev", 54, TUTORIAL_NO_PARAMS, 0},
    {"Click_Grid_Weapon", 55, TUTORIAL_NO_PARAMS, 0},
    {"Click_Grid_Stone", 56, TUTORIAL_NO_PARAMS, 0},
    {"MouseMove_To_LuaIndex", 57, 2, 0},
    {"Del_One_Virtual_Item", 58, 2, 0},
    {"Add_Mouse_Effect", 77, 2, 0},
    {"Del_Mouse_Effect", 78, 2, 0},
    {"Wait_XP_Full", 27, TUTORIAL_NO_PARAMS, 0},
    {"Wait_Create_Monster", 28, TUTORIAL_NO_PARAMS, 0},
    {"Wait_XPDlg_Show", 30, TUTORIAL_NO_PARAMS, 0},
    {"Wait_Monster_XPKill", 29, TUTORIAL_NO_PARAMS, 0},
    {"Set_Xp_Burst", 32, 2, 0},
    {"Enable_Device", 79, 3, 0},
    {"Wait_Continue_Task", 81, TUTORIAL_NO_PARAMS, 0},
    {"Show_Tip", 82, 4, 3},
    {"Add_DlgSkillEffect", 83, 6, 0},
    {"Del_DlgSkillEffect", 84, 6, 0},
    {"Add_HotkeyEffect", 85, 5, 0},
    {"Del_HotKeyEffect", 86, 5, 0},
    {"Add_ChildDlgEffect", 87, 6, 0},
    {"Del_ChildDlgEffect", 88, 6, 0},
    {"Accept_Task", 89, 2, 0},
    {"Wait_Hero_Move", 90, TUTORIAL_NO_PARAMS, 0},
    {"Wait_Select_Target", 91, TUTORIAL_NO_PARAMS, 0},
    {"Wait_UnSel_Target", 92, TUTORIAL_NO_PARAMS, 0},
    {"Wait_Attack_Target", 93, TUTORIAL_NO_PARAMS, 0},
    {"Test_Skill_Open", 94, 1, 0},
    {"Magic_Ctrl_Get", 95, 2, 0},
    {"Magic_Ctrl_Effect", 96, 2, 0},
    {"Put_Skill_Normal", 98, 2, 0},
    {"Put_Skill_Right", 99, 2, 0},
    {"Del_MagicCtrl_Effect", 97, 2, 0},
    {"Add_GridEffect", 100, 2, 0},
    {"Del_GridEffect", 101, 2, 0},
    {"Del_HotSkill", 104, 2, 0},
    {"MouseMove_To_Autoran_First", 105, TUTORIAL_NO_PARAMS, 0},
    {"MouseMove_To_Autoran_Last", 106, TUTORIAL_NO_PARAMS, 0},
    {"Talk_Target_Name", 107, 1, 1},
    {"MoveMouse_To_Npc", 108, 2, 0},
    {"MoveMouse_To_Item_Improve", 109, TUTORIAL_NO_PARAMS, 0},
    {"MoveMouse_To_Virtual_Item", 110, 2, 0},
    {"Cancel_Pickup", 111, TUTORIAL_NO_PARAMS, 0},
    {"MoveMouse_To_LuaWnd_Index", 112, 2, 0},
    {"Answer_Task_Talk", 113, 2, 0},
    {"Add_NewGridEffect", 102, 6, 0},
    {"Del_NewGridEffect", 103, 6, 0},
    {"Show_Ctr_Tip", 117, 7, 6},
    {"Close_Ctr_Tip", 118, 4, 0},
    {"Open_Btn_Tip", 119, 4, 3},
    {"Close_Btn_Tip", 120, TUTORIAL_NO_PARAMS, 0},
    {"Check_In_Map", 121, 3, 0},
    {"Check_Eud_Reborn", 122, TUTORIAL_NO_PARAMS, 0},
    {"Trigger_Script", 123, 2, 0},
    {"Wait_Script_End", 124, 2, 0},
    {"CheckAction", 114, 2, 0},
    {"Add_Grid_Distil_Effect", 115, 2, 0},
    {"Del_Grid_Distil_Effect", 116, 2, 0},
    {"Find_Path_Npc", 5, 6, 0},
    {"Show_Item_VipShop", 125, 3, 0},
    {"Show_Monster_type", 126, 3, 0},
    {"Wait_PickUp_Item", 127, 2, 0},
    {"Add_VirtualEffect", 128, 3, 0},
    {"Del_VirtualEffect", 129, 3, 0},
    {"OpenNormalSkill", 131, TUTORIAL_NO_PARAMS, 0},
    {"Disable_Use_Item", 133, 1, 0},
    {"Disable_Move_Item", 134, 1, 0},
    {"Enable_Use_Item", 135, 1, 0},
    {"Enable_Move_Item", 136, 1, 0},
    {"Wait_Use_Skill_Item", 137, TUTORIAL_NO_PARAMS, 0},
    {"Find_Skill_Item", 138, TUTORIAL_NO_PARAMS, 0},
    {"SetMousePosByGoodsIndex", 139, TUTORIAL_NO_PARAMS, 0},
    {"Add_GoodsGrid_Effect", 140, 2, 0},
    {"Del_GoodsGrid_Effect", 141, 2, 0},
    {"OpenSubWindow", 142, 5, 0},
    {"Show_Monster_Desc_Tip", 143, 2, 1},
    {"Clean_Monster_Desc_Tip", 144, 2, 0},
    {"Set_Close_Excep", 145, 2, 0},
    {"Set_MouseTo_UpSkill", 146, TUTORIAL_NO_PARAMS, 0},
    {"Find_Skill_CanUp", 147, TUTORIAL_NO_PARAMS, 0},
    {"Add_UpSkill_Select", 148, 2, 0},
    {"Del_UpSkill_Select", 149, 2, 0},
    {"Add_UpSkill_Condition", 150, 2, 0},
    {"Del_UpSkill_Condition", 151, 2, 0},
    {"Add_UpPoint_Effect", 152, 2, 0},
    {"Del_UpPoint_Effect", 153, 2, 0},
    {"Add_CallOut_Effect", 154, 2, 0},
    {"Del_CallOut_Effect", 155, 2, 0},
    {"Set_Reborn_Pet", 156, TUTORIAL_NO_PARAMS, 0},
    {"Add_SubDlg_Ctrl_Effect", 157, 7, 0},
    {"Del_SubDlg_Ctrl_Effect", 158, 7, 0},
    {"Show_SubDlg_Ctrl_Tip", 159, 7, 6},
    {"Close_SubDlg_Ctrl_Tip", 160, 7, 0},
    {"Show_Ctr_Tip_Simple", 161, 4, 3},
    {"Close_Ctr_Tip_Simple", 162, 3, 0},
    {"Add_Pet_VirtualEffect", 130, 3, 0},
    {"MoveMouse_To_CallEud", 163, TUTORIAL_NO_PARAMS, 0},
    {"MoveMouse_To_NoAttach", 164, TUTORIAL_NO_PARAMS, 0},
    {"Show_Lua_Tip_ByIndex", 165, 6, 0},
    {"Wait_Lua_Dialog_Show", 166, 2, 0},
    {"Wait_Lua_Dialog_Click_Index", 167, 2, 0},
    {"Check_Open_VirDlg", 168, 3, 0},
    {"Add_MapEffect", 169, 4, 0},
    {"Del_MapEffect", 170, 4, 0},
};
constexpr int kKeywordAmount = static_cast<int>(sizeof(kKeywords) / sizeof(kKeywords[0]));
static_assert(kKeywordAmount == 168, "the vocabulary has 168 keywords");

const TutorialKeyword* KeywordFind(std::string_view keyword)
{
    // Keywords are unique, so an exact-match index answers as testing them
    // in order would.
    static const std::unordered_map<std::string_view, const TutorialKeyword*> mapKeyword = [] {
        std::unordered_map<std::string_view, const TutorialKeyword*> map;
        for (const TutorialKeyword& keyword : kKeywords)
            map.emplace(keyword.szKeyword, &keyword);
        return map;
    }();
    const auto it = mapKeyword.find(keyword);
    return it != mapKeyword.end() ? it->second : nullptr;
}

// The offsets at which the tokens of a line start (a token ends at the next
// comma or the end of the line).
std::vector<std::size_t> TokenStarts(std::string_view line)
{
    std::vector<std::size_t> setStart{0};
    for (std::size_t i = 0; i < line.size(); ++i)
        if (line[i] == ',')
            setStart.push_back(i + 1);
    return setStart;
}

}  // namespace

namespace {

// Whether a tip command's text runs past what the command keeps.
bool TutorialTextCut(const char* szLine)
{
    const TutorialKeyword* pKeyword = TutorialKeywordOf(szLine);
    if (pKeyword == nullptr || pKeyword->nTextToken <= 0)
        return false;
    const char* pText = szLine;
    for (int nToken = 0; nToken < pKeyword->nTextToken && pText != nullptr; ++nToken) {
        pText = std::strchr(pText, ',');
        pText = pText != nullptr ? pText + 1 : nullptr;
    }
    return pText != nullptr && std::strlen(pText) >= static_cast<std::size_t>(kTutorialTextSize);
}

}  // namespace

int TutorialKeywordAmount() { return kKeywordAmount; }

const TutorialKeyword* TutorialKeywordOf(const char* szLine)
{
    if (szLine == nullptr)
        return nullptr;
    const char* szComma = std::strchr(szLine, ',');
    return KeywordFind(szComma != nullptr ? std::string_view(szLine, static_cast<std::size_t>(szComma - szLine))
                                          : std::string_view(szLine));
}

const TutorialKeyword& TutorialKeywordAt(int nIndex)
{
    if (nIndex < 0 || nIndex >= kKeywordAmount)
        nIndex = 0;
    return kKeywords[nIndex];
}

bool ParseTutorialCommand(TutorialCommand* pCommand, const char* szLine)
{
    if (pCommand == nullptr)
        return false;
    *pCommand = TutorialCommand{};
    if (szLine == nullptr || szLine[0] == '\0')
        return false;

    // Commas become terminators in a copy, so each token is a C string.
    std::string strTokens(szLine);
    const std::vector<std::size_t> setStart = TokenStarts(strTokens);
    for (std::size_t i = 1; i < setStart.size(); ++i)
        strTokens[setStart[i] - 1] = '\0';
    const int nTokenAmount = static_cast<int>(setStart.size());

    const TutorialKeyword* pKeyword = KeywordFind(strTokens.c_str());
    if (pKeyword == nullptr || nTokenAmount < pKeyword->nMinTokens)
        return false;

    pCommand->nCode = pKeyword->nCode;
    if (pKeyword->nMinTokens != TUTORIAL_NO_PARAMS)
        for (int k = 1; k < nTokenAmount && k <= kTutorialParamAmount; ++k)
            pCommand->nParam[k - 1] = CrtAtoi(strTokens.c_str() + setStart[k]);
    if (pKeyword->nTextToken > 0 && pKeyword->nTextToken < nTokenAmount)
        SafeStrCopy(pCommand->szText, sizeof(pCommand->szText), szLine + setStart[pKeyword->nTextToken]);
    return true;
}

CBattleTutorialTable::CBattleTutorialTable() { m_strFileName = CatalogueFileOf<CBattleTutorialTable>(); }

void CBattleTutorialTable::Load()
{
    CIniSectionReader reader;
    const char* szPath = m_strFilePath.c_str();
    if (!reader.Open(szPath, 0))
        return;
    for (int nSection = 0; nSection < reader.GetSectionAmount(); ++nSection) {
        const int nId = CrtAtoi(reader.GetTitle(nSection).data());
        if (nId < 0) {
            if (LoadFindingsWanted())
                LoadFindingReport(szPath, reader.GetTitleLine(nSection), FINDING_ERROR, "bad-title",
                                  "section [%s] has a negative id: skipped", reader.GetTitle(nSection).data());
            continue;
        }
        TutorialScript script{0, {}};
        RecordReadSection(kScriptRecord, reader, nSection, &script, szPath);
        LinesRead(reader, nSection, script);
        if (LoadFindingsWanted() && m_mapScript.count(nId) != 0)
            LoadFindingReport(szPath, reader.GetTitleLine(nSection), FINDING_WARNING, "duplicate-id",
                              "script %d was given before: this later section replaces it", nId);
        m_mapScript[nId] = std::move(script);
    }
}

// Line1 .. Line<LineAmount>; a line that gives no command is dropped.
void CBattleTutorialTable::LinesRead(const CIniSectionReader& reader, int nSection, TutorialScript& script) const
{
    const char* szPath = m_strFilePath.c_str();
    const bool bFindings = LoadFindingsWanted();
    const int nLineAmount = reader.GetInt(nSection, kLineAmountField.szKey, 0);
    if (bFindings) {
        const std::map<int, int> mapAll = RecordKeyNumbers(kLineField, reader, nSection, 0, INT_MAX);
        if (!mapAll.empty() && mapAll.rbegin()->first > nLineAmount)
            LoadFindingReport(szPath, reader.GetTitleLine(nSection), FINDING_ERROR, "line-amount",
                              "%s=%d, but lines up to %d are given: the later ones are never read",
                              kLineAmountField.szKey, nLineAmount, mapAll.rbegin()->first);
    }
    for (const auto [i, nKey] : RecordKeyNumbers(kLineField, reader, nSection, 1, nLineAmount)) {
        char szKey[32];
        SafeSprintf(szKey, sizeof(szKey), kLineField.szKey, i);
        const char* szLine = reader.GetValueAt(nSection, nKey).data();
        TutorialCommand command;
        if (ParseTutorialCommand(&command, szLine)) {
            if (bFindings && TutorialTextCut(szLine))
                LoadFindingReport(szPath, reader.GetKeyLine(nSection, nKey), FINDING_WARNING, "text-cut",
                                  "%s: the text is cut to %d characters", szKey, kTutorialTextSize - 1);
            if (!script.setCommand.PushBack(command))
                break;  // out of memory: the commands read so far stay
        } else if (bFindings && szLine[0] != '\0') {
            const TutorialKeyword* pKeyword = TutorialKeywordOf(szLine);
            if (pKeyword == nullptr)
                LoadFindingReport(szPath, reader.GetKeyLine(nSection, nKey), FINDING_ERROR, "unknown-keyword",
                                  "%s: no command begins so: the line is dropped", szKey);
            else
                LoadFindingReport(szPath, reader.GetKeyLine(nSection, nKey), FINDING_ERROR, "too-few-tokens",
                                  "%s: %s takes at least %d tokens: the line is dropped", szKey, pKeyword->szKeyword,
                                  pKeyword->nMinTokens);
        }
    }
}

const TutorialScript* CBattleTutorialTable::GetScript(int nId)
{
    const auto it = m_mapScript.find(nId);
    return it != m_mapScript.end() ? &it->second : nullptr;
}

int CBattleTutorialTable::GetScriptType(int nId)
{
    const TutorialScript* pScript = GetScript(nId);
    return pScript != nullptr ? pScript->nType : 0;
}

int CBattleTutorialTable::GetCommandAmount(int nId)
{
    const TutorialScript* pScript = GetScript(nId);
    return pScript != nullptr ? static_cast<int>(pScript->setCommand.size()) : 0;
}

const TutorialCommand* CBattleTutorialTable::GetCommand(int nId, int nIndex)
{
    const TutorialScript* pScript = GetScript(nId);
    if (pScript == nullptr || nIndex < 0 || static_cast<std::size_t>(nIndex) >= pScript->setCommand.size())
        return nullptr;
    return &pScript->setCommand[nIndex];
}

namespace {

const void* ScriptFind(CDataTable& table, const RecordKey& key)
{
    return static_cast<CBattleTutorialTable&>(table).GetScript(static_cast<int>(key.nNumber[0]));
}

// Each command as the player takes it: its keyword, code, parameters and text.
void ScriptVisit(CDataTable&, const void* pRecord, FieldVisitor& visitor)
{
    const TutorialScript& script = *static_cast<const TutorialScript*>(pRecord);
    visitor.Number("CommandAmount", static_cast<int64_t>(script.setCommand.size()));
    for (std::size_t i = 0; i < script.setCommand.size(); ++i) {
        const TutorialCommand& command = script.setCommand[i];
        const std::string strPrefix = "Command" + std::to_string(i);
        const char* szKeyword = "";
        for (int k = 0; k < TutorialKeywordAmount(); ++k)
            if (TutorialKeywordAt(k).nCode == command.nCode)
                szKeyword = TutorialKeywordAt(k).szKeyword;
        visitor.Text((strPrefix + "Keyword").c_str(), szKeyword);
        visitor.Number((strPrefix + "Code").c_str(), command.nCode);
        std::string strParams;
        for (int nParam : command.nParam)
            strParams += (strParams.empty() ? "" : ",") + std::to_string(nParam);
        visitor.Text((strPrefix + "Params").c_str(), strParams.c_str());
        if (command.szText[0] != '\0')
            visitor.Text((strPrefix + "Text").c_str(), command.szText);
    }
}

}  // namespace

const TableDesc kBattleTutorialDesc = {
    &kScriptRecord, TABLE_KEY_NUMBERS, "Id",    &MapRecordsEach<CBattleTutorialTable, &CBattleTutorialTable::Scripts>,
    &ScriptFind,    &ScriptVisit,      nullptr, 180};
