// What the generators of the action and magic tables share: the action
// numbers the sample gives each position of the built-in name list (the
// delay, control and magic files refer to them), and names drawn from a
// generator's own sequence, so that each file comes out the same whatever
// the other generators draw.
#pragma once

#include <string>

#include "GenData.h"

// Players number the positions from 100 on, monsters from 500 on.
inline int PlayerActionNumber(int nPosition) { return 100 + nPosition; }
inline int MonsterActionNumber(int nPosition) { return 500 + nPosition; }

// Monsters play the standing, moving, fighting and dying actions (8-121)
// and the flying ones (162-165, 206-223); players play every position.
inline bool MonsterHasAction(int nPosition)
{
    return (nPosition >= 8 && nPosition <= 121) || (nPosition >= 162 && nPosition <= 165) ||
           (nPosition >= 206 && nPosition <= 223);
}

// Positions of the fighting actions that react with wound, block and die
// delays: on the ground, dying in flight, and the later fighting actions.
inline bool IsCombatAction(int nPosition)
{
    return (nPosition >= 90 && nPosition <= 129) || (nPosition >= 162 && nPosition <= 223) || nPosition >= 250;
}

// nChars GBK characters (two bytes each) from the first level of GB2312.
inline std::string GbkWord(CDataRng& rng, int nChars)
{
    std::string strName;
    for (int i = 0; i < nChars; ++i) {
        strName.push_back(static_cast<char>(0xB0 + rng.Range(0, 38)));
        strName.push_back(static_cast<char>(0xA1 + rng.Range(0, 93)));
    }
    return strName;
}
