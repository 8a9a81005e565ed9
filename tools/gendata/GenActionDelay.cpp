// "ini/ActionDelay.ini": one section per fighting action of players and
// monsters, with the delays (milliseconds) of the wound, block and die
// reactions.
#include <string>

#include "GenAction.h"

namespace {

std::string DelaySection(CDataRng& rng, int nAction)
{
    return "[" + std::to_string(nAction) + "]\nWoundDelay=" + std::to_string(rng.Range(2, 16) * 25) +
           "\nBlockDelay=" + std::to_string(rng.Range(2, 12) * 25) +
           "\nDieDelay=" + std::to_string(rng.Range(8, 40) * 25) + "\n\n";
}

void GenerateActionDelay(CGenContext& context)
{
    CDataRng rng(163u);
    std::string strText = "; reaction delays of the fighting actions, in milliseconds\n\n";
    // Larger sets repeat the numbering a thousand higher per step.
    for (int nStep = 0; nStep < context.Scale(); ++nStep) {
        for (int nPosition = 0; nPosition < 290; ++nPosition)
            if (IsCombatAction(nPosition))
                strText += DelaySection(rng, PlayerActionNumber(nPosition) + 1000 * nStep);
        for (int nPosition = 0; nPosition < 290; ++nPosition)
            if (IsCombatAction(nPosition) && MonsterHasAction(nPosition))
                strText += DelaySection(rng, MonsterActionNumber(nPosition) + 1000 * nStep);
    }
    if (context.Faulty())
        strText += DelaySection(rng, PlayerActionNumber(90));  // shadowed: the first section wins
    context.Write("ini/ActionDelay.ini", strText, true);
}

const GeneratorRegistration kRegistration("ini/ActionDelay.ini", GenerateActionDelay);

}  // namespace
