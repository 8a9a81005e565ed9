// "Monster.dat" (with its alternative "ini/200/Monster_200.dat") and
// "ini/monsterspeak.ini": monster types by level band, and what some of them
// say when they attack, are hit, are born, die or cast a skill.
#include <set>
#include <string>

#include "GenData.h"

namespace {

constexpr int kFirstMonster = 1001;

// The planted faults sit in fixed sections right after the header, so their
// lines do not move with the random records that follow: a title without an
// id (line 3), an id given twice (7 and 11), a name cut by its buffer (16), an
// effect cut by its buffer (21) and a name given twice (24 and 28).
const char* const kMonsterHeader = "// monster types: one section per type, the title is the type id\n\n";

std::string MonsterFaults(CGenContext& context)
{
    std::string strText;
    strText += "[abc]\nName=" + context.GbkName(3) + "\nLevel=1\n\n";                                 // lines 3-6
    strText += "[99001]\nName=" + context.GbkName(3) + "\nLevel=5\n\n";                               // lines 7-10
    strText += "[99001]\nName=" + context.GbkName(4) + "\nLevel=6\n\n";                               // lines 11-14
    strText += "[99002]\nName=" + context.GbkName(10) + "\nLevel=7\n\n";                              // lines 15-18
    strText += "[99003]\nName=" + context.GbkName(2) + "\neffect=" + std::string(140, 'e') + "\n\n";  // lines 19-22
    const std::string strTwin = context.GbkName(5);
    strText += "[99004]\nName=" + strTwin + "\nLevel=9\n\n";  // lines 23-26
    strText += "[99005]\nName=" + strTwin + "\nLevel=9\n\n";  // lines 27-30
    return strText;
}

// A name no other monster of the file has (FindMonsterByName answers one).
std::string UniqueName(CGenContext& context, std::set<std::string>& setName)
{
    for (;;) {
        std::string strName = context.GbkName(context.Rng().Range(2, 6));
        if (setName.insert(strName).second)
            return strName;
    }
}

std::string MonsterSection(CGenContext& context, int nId, const std::string& strName, int nVariant)
{
    CDataRng& rng = context.Rng();
    const int nLevel = 1 + (nId - kFirstMonster) % 140;
    const bool bBoss = rng.Chance(4);
    std::string s = "[" + std::to_string(nId) + "]\n";
    if (bBoss)
        s += "; " + context.GbkName(2) + "\n";
    s += "Name=" + strName + "\n";
    s += "Level=" + std::to_string(nLevel + nVariant) + "\n";
    s += "MaxLife=" + std::to_string((nLevel * nLevel * 12 + rng.Range(50, 400)) * (bBoss ? 20 : 1)) + "\n";
    s += "SizeAdd=" + std::to_string(bBoss ? rng.Range(2, 5) : rng.Range(0, 1)) + "\n";
    s += "ZoomPercent=" + std::to_string(bBoss ? rng.Range(130, 200) : rng.Range(80, 120)) + "\n";
    if (rng.Chance(70))
        s += "NameAltitude=" + std::to_string(rng.Range(90, 260)) + "\n";
    s += "Battlelev=" + std::to_string(nLevel / 10) + "\n";
    s += "Sort=" + std::to_string(rng.Range(0, 7)) + "\n";
    if (rng.Chance(30))
        s += "WhiteBlack=" + std::to_string(rng.Range(0, 1)) + "\n";
    s += "ExtraExp=" + std::to_string(bBoss ? nLevel * 100 : rng.Range(0, 20)) + "\n";
    if (rng.Chance(40)) {
        s += "l_weapon=" + std::to_string(410000 + rng.Range(1, 999) * 10) + "\n";
        s += "r_weapon=" + std::to_string(420000 + rng.Range(1, 999) * 10) + "\n";
    }
    s += "NameHeight=" + std::to_string(rng.Range(0, 40)) + "\n";
    s += "DisappearEffect=monster_die" + std::to_string(rng.Range(1, 12)) + "\n";
    s += "DisappearSound=sound/monster/die_" + std::to_string(rng.Range(100, 180)) + ".wav\n";
    if (rng.Chance(50))
        s += "effect=mon_aura" + std::to_string(rng.Range(1, 30)) + "\n";
    s += "attackeffect=mon_hit" + std::to_string(rng.Range(1, 40)) + "\n";
    if (rng.Chance(60))
        s += "appeareffect=mon_born" + std::to_string(rng.Range(1, 9)) + "\n";
    if (bBoss) {
        s += "DefyStatus=1\nDefyEffect=boss_defy" + std::to_string(rng.Range(1, 5)) + "\n";
        s += "LockDir=" + std::to_string(rng.Range(0, 1)) + "\n";
    }
    return s + "\n";
}

void WriteMonsterFile(CGenContext& context, const std::string& strPath, int nVariant, bool bFaulty)
{
    std::string strText = kMonsterHeader;
    if (bFaulty)
        strText += MonsterFaults(context);
    std::set<std::string> setName;
    const int nAmount = (nVariant == 0 ? 2000 : 1200) * context.Scale();
    for (int i = 0; i < nAmount; ++i)
        strText += MonsterSection(context, kFirstMonster + i, UniqueName(context, setName), nVariant);
    context.Write(strPath, strText, true);
}

void GenerateMonster(CGenContext& context)
{
    WriteMonsterFile(context, "ini/Monster.dat", 0, context.Faulty());
    WriteMonsterFile(context, "ini/200/Monster_200.dat", 1, false);
}

// What one occasion says: a few lines, some with a per-mille probability of
// their own, and sometimes the probability that the occasion speaks at all.
std::string OccasionKeys(CGenContext& context, const char* szWord)
{
    CDataRng& rng = context.Rng();
    const int nAmount = rng.Range(1, 4);
    const std::string strWord = szWord;
    std::string s = strWord + "Amount=" + std::to_string(nAmount) + "\n";
    if (rng.Chance(50))
        s += strWord + "Probability=" + std::to_string(rng.Range(10, 60)) + "\n";
    for (int i = 0; i < nAmount; ++i) {
        s += strWord + std::to_string(i) + "=" + context.GbkName(rng.Range(3, 14)) + "\n";
        if (rng.Chance(40))
            s += strWord + "Probability" + std::to_string(i) + "=" + std::to_string(rng.Range(50, 250)) + "\n";
    }
    return s;
}

// Planted like the monster faults: a title that is no number (line 3), an id
// given twice (7 and 11), an amount above the lines present (16) and a line
// cut by its buffer (22).
std::string SpeakFaults(CGenContext& context)
{
    std::string s;
    s += "[x12]\nAttackAmount=1\nAttack0=" + context.GbkName(4) + "\n\n";    // lines 3-6
    s += "[99001]\nAttackAmount=1\nAttack0=" + context.GbkName(4) + "\n\n";  // lines 7-10
    s += "[99001]\nAttackAmount=1\nAttack0=" + context.GbkName(5) + "\n\n";  // lines 11-14
    s += "[99002]\nBeatAmount=3\nBeat0=" + context.GbkName(4) + "\nBeat1=" + context.GbkName(4) + "\n\n";  // 15-19
    s += "[99003]\nDeadAmount=1\nDead0=" + context.GbkName(550) + "\n\n";  // lines 20-23
    return s;
}

void GenerateMonsterSpeak(CGenContext& context)
{
    CDataRng& rng = context.Rng();
    std::string strText = "; what monsters say: <Occasion>Amount lines <Occasion>0.., probabilities per mille\n\n";
    if (context.Faulty())
        strText += SpeakFaults(context);
    const int nAmount = 360 * context.Scale();
    // The first monster always speaks; later ones now and then.
    for (int i = 0, nId = kFirstMonster; i < nAmount; ++i, nId += rng.Range(1, 6)) {
        strText += "[" + std::to_string(nId) + "]\n";
        for (const char* szWord : {"Attack", "Beat", "Born", "Dead", "Skill"})
            if (rng.Chance(45))
                strText += OccasionKeys(context, szWord);
        strText += "\n";
    }
    context.Write("ini/monsterspeak.ini", strText);
}

const GeneratorRegistration kMonster("Monster.dat", GenerateMonster);
const GeneratorRegistration kMonsterSpeak("ini/monsterspeak.ini", GenerateMonsterSpeak);

}  // namespace
