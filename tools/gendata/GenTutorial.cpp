// "BattleTutorial.ini": the tutorial scripts, each a numbered list of command
// lines drawn from the tutorial player's vocabulary.
#include <string>

#include "ClientData/BattleTutorial.h"
#include "GenData.h"

namespace {

// The planted faults, at fixed lines after the two header lines: a title
// without a number (3), a script id given twice (8 and 13), and a script whose
// LineAmount promises a line that is not there (20) with a line of too few
// tokens (21), an unknown keyword (22) and a tip longer than its buffer (23).
std::string TutorialFaults(CGenContext& context)
{
    std::string s;
    s += "[abc]\nType=1\nLineAmount=1\nLine1=Wait_XP_Full\n\n";
    s += "[99001]\nType=1\nLineAmount=1\nLine1=Wait_XP_Full\n\n";
    s += "[99001]\nType=2\nLineAmount=1\nLine1=Wait_Hero_Move\n\n";
    s += "[99002]\nType=1\nLineAmount=4\nLine1=Add_CtrlEffect,1,2,3\nLine2=add_ctrleffect,1,2,3,4\n";
    s += "Line3=Show_Tip,1,2," + context.GbkName(150) + "\n\n";
    return s;
}

// One command line with the tokens its keyword needs, sometimes one more; a
// tip command ends with its text.
std::string CommandLine(CGenContext& context)
{
    CDataRng& rng = context.Rng();
    const TutorialKeyword& keyword = TutorialKeywordAt(rng.Range(0, TutorialKeywordAmount() - 1));
    std::string s = keyword.szKeyword;
    if (keyword.nMinTokens == TUTORIAL_NO_PARAMS)
        return s;
    int nTokens = keyword.nMinTokens + (rng.Chance(20) ? 1 : 0);
    if (keyword.nTextToken > 0 && nTokens <= keyword.nTextToken)
        nTokens = keyword.nTextToken + 1;
    for (int k = 1; k < nTokens; ++k) {
        if (k == keyword.nTextToken) {
            s += "," + context.GbkName(rng.Range(6, 40));
            break;
        }
        s += "," + std::to_string(rng.Chance(50) ? rng.Range(0, 9) : rng.Range(100, 9999));
    }
    return s;
}

void GenerateTutorial(CGenContext& context)
{
    CDataRng& rng = context.Rng();
    std::string strText = "; battle tutorial scripts: Line1..Line<LineAmount>, keyword,param,...\n\n";
    if (context.Faulty())
        strText += TutorialFaults(context);
    const int nAmount = 180 * context.Scale();
    for (int i = 0; i < nAmount; ++i) {
        const int nLines = rng.Range(3, 24);
        strText += "[" + std::to_string(100 + i) + "]\n";
        if (rng.Chance(20))
            strText += "; " + context.GbkName(rng.Range(3, 8)) + "\n";
        strText += "Type=" + std::to_string(rng.Range(0, 3)) + "\nLineAmount=" + std::to_string(nLines) + "\n";
        for (int nLine = 1; nLine <= nLines; ++nLine)
            strText += "Line" + std::to_string(nLine) + "=" + CommandLine(context) + "\n";
        strText += "\n";
    }
    context.Write("ini/BattleTutorial.ini", strText, true);
}

const GeneratorRegistration kTutorial("BattleTutorial.ini", GenerateTutorial);

}  // namespace
