// "ini/ActionType.ini" and "ini/MonsterActionType.ini": one line per action,
// its number and its name in the built-in list, grouped by rows of ten.
#include <string>

#include "ClientData/ActionType.h"
#include "GenAction.h"

namespace {

std::string ActionTypeText(bool bMonster)
{
    std::string strText =
        bMonster ? "// monster action numbers: number name\n" : "// player action numbers: number name\n";
    for (int nRow = 0; nRow < kActionNameAmount; nRow += 10) {
        std::string strRow;
        for (int nPosition = nRow; nPosition < nRow + 10; ++nPosition) {
            if (bMonster && !MonsterHasAction(nPosition))
                continue;
            const int nNumber = bMonster ? MonsterActionNumber(nPosition) : PlayerActionNumber(nPosition);
            strRow += std::to_string(nNumber) + " " + ActionNameAt(nPosition) + "\n";
        }
        if (!strRow.empty())
            strText += "// " + std::to_string(nRow) + "-" + std::to_string(nRow + 9) + "\n" + strRow;
    }
    return strText;
}

void GenerateActionType(CGenContext& context)
{
    std::string strPlayer = ActionTypeText(false);
    if (context.Faulty()) {
        // The upper-case spelling of position 122 maps nothing; a second
        // line for _ACTION_STANDBY overrides the first (the later one wins).
        strPlayer += "222 _ACTION_USE_ITEM\n";
        strPlayer += "208 _ACTION_STANDBY\n";
    }
    context.Write("ini/ActionType.ini", strPlayer, true);
    context.Write("ini/MonsterActionType.ini", ActionTypeText(true), false);
}

const GeneratorRegistration kRegistration("ini/ActionType.ini", GenerateActionType);

}  // namespace
