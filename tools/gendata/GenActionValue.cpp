// "ini/Action.dat": an integer (the action's frame interval) per action key:
// race (digits 9-10), look (6-8), weapon (3-5) and action number (0-2).
// Groups of nines are wildcards that the lookup falls back to.
#include <string>

#include "GenAction.h"

namespace {

const int kWeapons[] = {410, 420, 421, 480, 490, 500, 560};
const int kActions[] = {12, 13, 14, 15, 100, 102, 111, 118, 119, 120, 121, 123, 124, 125, 180, 202, 203};

std::string ValueLine(long long nKey, int nValue) { return std::to_string(nKey) + " " + std::to_string(nValue) + "\n"; }

void GenerateActionValue(CGenContext& context)
{
    CDataRng rng(148u);
    std::string strText = "// key value: race look weapon action -> frame interval (ms)\n";
    for (int nRace = 1; nRace <= 2 * context.Scale(); ++nRace) {
        strText += "// race " + std::to_string(nRace) + "\n";
        for (int nLook = 1; nLook <= 3; ++nLook)
            for (int nWeapon : kWeapons)
                for (int nPosition : kActions)
                    if (rng.Chance(35))
                        strText += ValueLine(
                            nRace * 1000000000LL + nLook * 1000000LL + nWeapon * 1000LL + PlayerActionNumber(nPosition),
                            rng.Range(2, 14) * 5);
    }
    strText += "// wildcards: any look, any weapon, any race\n";
    for (int nPosition : kActions) {
        strText += ValueLine(99999999000LL + PlayerActionNumber(nPosition), rng.Range(2, 14) * 5);
        strText += ValueLine(1999999000LL + PlayerActionNumber(nPosition), rng.Range(2, 14) * 5);
    }
    strText += ValueLine(99999999999LL, 33);
    if (context.Faulty()) {
        strText += "l001410218 40\n";             // a letter l for the digit 1: the line is skipped
        strText += ValueLine(99999999999LL, 50);  // shadowed: the first line wins
    }
    context.Write("ini/Action.dat", strText, true);
}

const GeneratorRegistration kRegistration("ini/Action.dat", GenerateActionValue);

}  // namespace
