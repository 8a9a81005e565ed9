// The battle tutorial scripts of "BattleTutorial.ini": one section per script,
// its title the script id, "Type", "LineAmount" and the lines "Line1" ..
// "Line<LineAmount>" (the numbering starts at 1; "Line0" is never read). A
// line is a command: a keyword, then comma-separated parameters, which the
// client's tutorial player executes in order.
//
// How a line becomes a TutorialCommand (ParseTutorialCommand):
//   - The line is split at every comma; consecutive commas give empty tokens
//     and tokens are not trimmed. Token 0 is the keyword, compared byte for
//     byte with the vocabulary (168 keywords with codes 1-170; 31 and 132 are
//     not assigned): "add_ctrleffect" is no keyword.
//   - Each keyword requires a minimum number of tokens, keyword included;
//     with fewer the line is rejected.
//   - A command whose minimum is "none" ignores its parameters: every
//     parameter slot stays 0. Any other command fills nParam[k - 1] with
//     token k through atoi (non-numeric text gives 0), for every token
//     present up to kTutorialParamAmount, beyond its minimum too.
//   - The tip commands keep a text as well: from their text token to the end
//     of the line, commas included, cut to 255 characters. Show_Tip_Window
//     from token 4; Show_Tip, SetPKBtnTip, Open_Btn_Tip, Show_Ctr_Tip_Simple
//     from token 3; Show_Ctr_Tip, Show_SubDlg_Ctrl_Tip from token 6;
//     Confirm_Tip, Card_Tip, Show_Monster_Desc_Tip and Talk_Target_Name from
//     token 1. Every other command leaves szText empty.
//   - An unknown keyword, like a rejected line, gives code 0, and the loader
//     drops the line (as it drops a missing or empty one): a script holds
//     only commands the player can execute, in line order.
// The vocabulary with codes, minimums and text tokens is one table
// (TutorialKeywordAt).
#pragma once

#include <cstddef>
#include <map>

class CIniSectionReader;

#include "ClientData/DataTable.h"
#include "ClientData/TableDesc.h"

constexpr int kTutorialParamAmount = 6;  // the longest minimum: keyword and six parameters
constexpr int kTutorialTextSize = 256;
constexpr int TUTORIAL_NO_PARAMS = 0;  // a minimum of "none": parameters ignored

struct TutorialCommand {
    int nCode;                         // 1-170; 0 for an unknown keyword or a rejected line
    int nParam[kTutorialParamAmount];  // tokens 1-6 through atoi; 0 when absent or ignored
    char szText[kTutorialTextSize];    // tip commands only, else empty
};

// The client reads the script by layout, its commands in its own library's
// array layout.
struct TutorialScript {
    int nType;                                 // "Type"
    CClientArray<TutorialCommand> setCommand;  // the usable lines from Line1 on
};
static_assert(sizeof(TutorialCommand) == 4 + 4 * kTutorialParamAmount + kTutorialTextSize, "plain record");
static_assert(offsetof(TutorialScript, setCommand) == sizeof(void*), "the type padded to a word");
static_assert(sizeof(TutorialScript) == 4 * sizeof(void*), "type and array");

// One word of the vocabulary.
struct TutorialKeyword {
    const char* szKeyword;
    int nCode;
    int nMinTokens;  // keyword included; TUTORIAL_NO_PARAMS for "none"
    int nTextToken;  // the token the text starts at; 0 for none
};

// The vocabulary in the order the keywords are tested; nIndex 0-167 (out of
// range gives the first keyword).
int TutorialKeywordAmount();
const TutorialKeyword& TutorialKeywordAt(int nIndex);
// The keyword a line begins with (its text up to the first comma), compared
// byte for byte; null when the vocabulary has none.
const TutorialKeyword* TutorialKeywordOf(const char* szLine);

// Fills *pCommand from one line. False, leaving code 0, for a null command or
// line, an empty line, an unknown keyword or too few tokens; true otherwise.
bool ParseTutorialCommand(TutorialCommand* pCommand, const char* szLine);

class CBattleTutorialTable : public CDataTable {
public:
    CBattleTutorialTable();
    ~CBattleTutorialTable() = default;
    ZEL_DELETING_DESTRUCTOR

    // Reads m_strFilePath; an unreadable file leaves the table empty without
    // a message. Sections with a negative id are skipped; a later section
    // with the same id replaces the earlier script. Lines that give no
    // command (missing, empty, unknown or rejected) are dropped.
    void Load() override;
    void Clear() override { m_mapScript.clear(); }

    // Pointers stay valid until the next Clear or Load.
    // Slot 7: the script with that id; null on a miss.
    virtual const TutorialScript* GetScript(int nId);
    // Slot 8: the script's "Type"; 0 on a miss.
    virtual int GetScriptType(int nId);
    // Slot 9: how many commands the script has; 0 on a miss.
    virtual int GetCommandAmount(int nId);
    // Slot 10: command nIndex (0 is the first usable line); null out of range.
    virtual const TutorialCommand* GetCommand(int nId, int nIndex);

    std::size_t GetLoadedAmount() const { return m_mapScript.size(); }
    // Every script held, by id.
    const std::map<int, TutorialScript>& Scripts() const { return m_mapScript; }

private:
    void LinesRead(const CIniSectionReader& reader, int nSection, TutorialScript& script) const;

    std::map<int, TutorialScript> m_mapScript;
};

extern const TableDesc kBattleTutorialDesc;
