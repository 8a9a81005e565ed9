// "ini/ActionCtrl.ini": how an action is cut into segments of time and
// movement, per key look (digits 6-8), weapon (digits 3-5) and action number
// (digits 0-2). Keys with 999 in a group serve every look or weapon, and
// 999999999 serves every action without a closer entry.
#include <string>

#include "GenAction.h"

namespace {

// Percentages that add up to 100 over nSegments.
std::string CtrlSection(CDataRng& rng, long long nKey, int nSegments)
{
    std::string strText = "[" + std::to_string(nKey) + "]\nSection=" + std::to_string(nSegments) + "\n";
    int nTimeLeft = 100;
    int nMoveLeft = 100;
    for (int i = 0; i < nSegments; ++i) {
        const bool bLast = i == nSegments - 1;
        const int nTime = bLast ? nTimeLeft : rng.Range(1, nTimeLeft - (nSegments - i - 1));
        const int nMove = bLast ? nMoveLeft : rng.Range(0, nMoveLeft);
        nTimeLeft -= nTime;
        nMoveLeft -= nMove;
        strText += "TimePercent" + std::to_string(i) + "=" + std::to_string(nTime) + "\nMovePercent" +
                   std::to_string(i) + "=" + std::to_string(nMove) + "\n";
    }
    return strText + "\n";
}

const int kWeapons[] = {0, 410, 420, 421, 480, 490, 500, 560, 900};
// Positions of the moving and fighting actions that have segments.
const int kActions[] = {12, 13, 14, 15, 118, 119, 120, 121, 123, 124, 125, 128, 167, 168, 180, 202, 203, 204};

void GenerateActionCtrl(CGenContext& context)
{
    CDataRng rng(165u);
    std::string strText = "; action segments: key = look * 1000000 + weapon * 1000 + action\n\n";
    for (int nLook = 1; nLook <= 2 * context.Scale(); ++nLook)
        for (int nWeapon : kWeapons)
            for (int nPosition : kActions)
                if (rng.Chance(60))
                    strText += CtrlSection(rng, nLook * 1000000LL + nWeapon * 1000LL + PlayerActionNumber(nPosition),
                                           rng.Range(1, 4));
    for (int nWeapon : kWeapons)
        for (int nPosition : kActions)
            strText +=
                CtrlSection(rng, 999000000LL + nWeapon * 1000LL + PlayerActionNumber(nPosition), rng.Range(1, 3));
    for (int nPosition : kActions)
        strText += CtrlSection(rng, 999999000LL + PlayerActionNumber(nPosition), 2);
    strText += CtrlSection(rng, 999999999LL, 1);
    if (context.Faulty()) {
        // A count of 8 keeps no segment (only the remainder by 8 counts), and
        // a second section for the catch-all key is shadowed by the first.
        strText += CtrlSection(rng, 999999001LL, 8);
        strText += CtrlSection(rng, 999999999LL, 2);
    }
    context.Write("ini/ActionCtrl.ini", strText, false);
}

const GeneratorRegistration kRegistration("ini/ActionCtrl.ini", GenerateActionCtrl);

}  // namespace
