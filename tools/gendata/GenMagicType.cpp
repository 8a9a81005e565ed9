// "MagicType.ini" (one line of 61 blank-separated columns per magic type and
// level; no comments, since the loader would read a comment as a record) and
// "ini/MagicTypeEx.ini" (casting and second-stage keys for some records), and
// the alternative pair under "ini/200/".
#include <cstdio>
#include <string>

#include "GenAction.h"

namespace {

struct MagicKind {
    unsigned nType;
    int nLevels;
    std::string strName;
    unsigned nProfession;
    int nLearnFlag;
    int nFirstLevel;
    int nSenderAction;
};

// Professions by NeedProfession: 0 and 9999 serve every one, the others / 10.
const unsigned kProfessions[] = {0, 9999, 10, 11, 20, 21, 30, 31, 40, 41, 50, 51, 100, 101};
// Positions of the actions a caster plays.
const int kCastPositions[] = {118, 119, 120, 123, 124, 125, 126, 127, 128, 202, 203, 204, 205};

std::string Word(unsigned nValue) { return std::to_string(nValue) + " "; }

std::string PathOr(CDataRng& rng, const char* szFolder, unsigned nType, const char* szExt)
{
    if (rng.Chance(25))
        return "NULL ";
    return std::string(szFolder) + "\\" + std::to_string(nType) + "_" + std::to_string(rng.Range(0, 3)) + szExt + " ";
}

// One record line; nPadAfter10 blanks after column 10 make an overlong line.
std::string MagicLine(CDataRng& rng, const MagicKind& kind, int nLevel, const std::string& strName, int nPadAfter10 = 0)
{
    std::string s = Word(kind.nType) + Word(static_cast<unsigned>(rng.Range(0, 9))) + strName + " ";
    for (int i = 4; i <= 7; ++i)
        s += Word(static_cast<unsigned>(rng.Range(0, 12)));
    s += Word(static_cast<unsigned>(nLevel));
    s += Word(static_cast<unsigned>(100 + nLevel * rng.Range(20, 60)));  // 9: power
    s += Word(static_cast<unsigned>(rng.Range(0, 40) + nLevel * 5));     // 10: mana
    s += std::string(static_cast<std::size_t>(nPadAfter10), ' ');
    for (int i = 11; i <= 17; ++i)
        s += Word(static_cast<unsigned>(rng.Range(0, 2000)));
    s += Word(kind.nProfession);
    for (int i = 19; i <= 25; ++i)
        s += Word(static_cast<unsigned>(rng.Range(0, 100)));
    s += Word(static_cast<unsigned>(kind.nLearnFlag));
    s += Word(static_cast<unsigned>(kind.nFirstLevel + nLevel * 5));  // 27: NeedLevel
    for (int i = 28; i <= 34; ++i)
        s += Word(static_cast<unsigned>(rng.Range(0, 3000)));
    s += Word(static_cast<unsigned>(kind.nSenderAction));
    s += Word(static_cast<unsigned>(rng.Range(0, 5))) + Word(static_cast<unsigned>(rng.Range(0, 5)));
    s += GbkWord(rng, rng.Range(8, 40)) + " ";  // 38: description
    s += (rng.Chance(50) ? "magic_" + std::to_string(kind.nType) : std::string("NULL")) + " ";
    s += PathOr(rng, "effect\\magic", kind.nType, "_cast.ini");
    s += PathOr(rng, "effect\\magic", kind.nType, "_fly.ini");
    s += PathOr(rng, "effect\\magic", kind.nType, "_hit.ini");
    s += Word(static_cast<unsigned>(rng.Range(0, 1)));
    s += (rng.Chance(60) ? "snd_" + std::to_string(kind.nType) : std::string("NULL")) + " ";
    s += PathOr(rng, "sound\\magic", kind.nType, ".wav");
    s += "NULL NULL ";
    for (int i = 48; i <= 50; ++i)
        s += Word(static_cast<unsigned>(rng.Range(0, 500)));
    s += Word(rng.Chance(40) ? 0u : static_cast<unsigned>(rng.Range(1, 20) * 50));  // 51: 0 reads as 300
    s += Word(static_cast<unsigned>(rng.Range(0, 9)));
    s += (rng.Chance(30) ? "icon_" + std::to_string(kind.nType) : std::string("NULL")) + " ";
    for (int i = 54; i <= 57; ++i)
        s += Word(static_cast<unsigned>(rng.Range(0, 100)));
    char szHex[16];
    std::snprintf(szHex, sizeof(szHex), "%x ", static_cast<unsigned>(rng.Range(0, 0xFFFF)));
    s += szHex;
    s += Word(static_cast<unsigned>(rng.Range(0, 9))) + Word(static_cast<unsigned>(rng.Range(0, 9)));
    return s + std::to_string(rng.Range(0, 9)) + "\n";
}

// Casting data for a record: intone actions, their effect and sound.
std::string ExtraSection(CDataRng& rng, unsigned nType, int nLevel)
{
    std::string s = "[" + std::to_string(nType * 100 + static_cast<unsigned>(nLevel)) + "]\n";
    s += "IntoneActionEx1=" + std::to_string(PlayerActionNumber(130)) + "\n";
    s += "IntoneActionEx2=" + std::to_string(PlayerActionNumber(131)) + "\n";
    s += "IntoneActionEx3=" + std::to_string(PlayerActionNumber(132)) + "\n";
    if (rng.Chance(50))
        s += "FlyIntoneAction1=" + std::to_string(PlayerActionNumber(rng.Range(283, 285))) + "\n";
    if (rng.Chance(30))
        s += "MountIntoneAction1=" + std::to_string(PlayerActionNumber(rng.Range(224, 240))) + "\n";
    s += "IntoneCycTime=" + std::to_string(rng.Range(5, 30) * 100) + "\n";
    s += "TargetAction=" + std::to_string(PlayerActionNumber(rng.Range(100, 107))) + "\n";
    if (rng.Chance(40))
        s += "FlyTargetAction=" + std::to_string(PlayerActionNumber(rng.Range(206, 223))) + "\n";
    s += "AppendDisc=" + GbkWord(rng, rng.Range(6, 30)) + "\n";
    if (rng.Chance(40)) {
        s += "SecondAction=" + std::to_string(PlayerActionNumber(rng.Range(202, 205))) + "\n";
        s += "SecondActionDelay=" + std::to_string(rng.Range(2, 12) * 100) + "\n";
        s += "SecondSenderEffect=effect\\magic\\" + std::to_string(nType) + "_second.ini\n";
    }
    s += "IntoneEffect=effect\\magic\\" + std::to_string(nType) + "_intone.ini\n";
    s += "IntoneSound=sound\\magic\\" + std::to_string(nType) + "_intone.wav\n";
    s += "IntoneSoundLoop=" + std::to_string(rng.Range(0, 1)) + "\n";
    return s + "\n";
}

MagicKind MakeKind(CDataRng& rng, unsigned nType)
{
    MagicKind kind;
    kind.nType = nType;
    kind.nLevels = rng.Range(1, 15);
    kind.strName = GbkWord(rng, rng.Range(2, 6));
    kind.nProfession = kProfessions[rng.Range(0, static_cast<int>(sizeof(kProfessions) / sizeof(unsigned)) - 1)];
    kind.nLearnFlag = rng.Chance(80) ? 1 : 0;
    kind.nFirstLevel = rng.Range(1, 60);
    kind.nSenderAction =
        rng.Chance(85) ? PlayerActionNumber(
                             kCastPositions[rng.Range(0, static_cast<int>(sizeof(kCastPositions) / sizeof(int)) - 1)])
                       : 0;
    return kind;
}

// Faults appended to the main and extra files of the faulty set.
void AddFaults(CDataRng& rng, const std::string& strFirstLine, const std::string& strFirstSection, std::string& strMain,
               std::string& strExtra)
{
    // The first record's type and level again: lookups answer the first.
    const std::size_t nType = strFirstLine.find(' ');
    strMain += strFirstLine.substr(0, nType) + " 7" + strFirstLine.substr(strFirstLine.find(' ', nType + 1));
    MagicKind kind = MakeKind(rng, 9001);
    strMain += MagicLine(rng, kind, 0, GbkWord(rng, 9));             // 18 bytes: the name is cut to 15
    strMain += "9002 0 " + GbkWord(rng, 3) + " 1 2 3 4 0 100 20\n";  // too few columns
    kind.nType = 9003;
    strMain += MagicLine(rng, kind, 0, kind.strName, 1900);  // read in two pieces
    strMain += "\n";                                         // ends the load early
    for (unsigned nType : {9004u, 9005u}) {
        kind.nType = nType;
        strMain += MagicLine(rng, kind, 0, kind.strName);
    }
    strExtra += "[999901]\nIntoneCycTime=500\n\n";  // type 9999 level 1: no record
    strExtra += strFirstSection.substr(0, strFirstSection.find('\n') + 1) +
                "IntoneActionEx4=" + std::to_string(PlayerActionNumber(133)) + "\nIntoneCycTime=800\n\n";
}

void WriteMagicSet(CGenContext& context, int nVariant)
{
    CDataRng rng(nVariant == 0 ? 11u : 1100u);
    std::string strMain;
    std::string strExtra = "; casting and second-stage data: [type * 100 + level]\n\n";
    std::string strFirstLine;
    std::string strFirstSection;
    const int nTypes = (nVariant == 0 ? 330 : 300) * context.Scale();
    for (int t = 0; t < nTypes; ++t) {
        const MagicKind kind = MakeKind(rng, static_cast<unsigned>(1000 + t * 3 + nVariant));
        const bool bIntone = rng.Chance(30);
        for (int nLevel = 0; nLevel < kind.nLevels; ++nLevel) {
            const std::string strLine = MagicLine(rng, kind, nLevel, kind.strName);
            strMain += strLine;
            if (strFirstLine.empty())
                strFirstLine = strLine;
            if (bIntone) {
                const std::string strSection = ExtraSection(rng, kind.nType, nLevel);
                strExtra += strSection;
                if (strFirstSection.empty())
                    strFirstSection = strSection;
            }
        }
    }
    if (context.Faulty() && nVariant == 0)
        AddFaults(rng, strFirstLine, strFirstSection, strMain, strExtra);
    context.Write(nVariant == 0 ? "ini/MagicType.ini" : AlternativePathOf("MagicType.ini"), strMain, false);
    context.Write(nVariant == 0 ? "ini/MagicTypeEx.ini" : "ini/200/MagicTypeEx_200.ini", strExtra, true);
}

void GenerateMagicType(CGenContext& context)
{
    WriteMagicSet(context, 0);
    WriteMagicSet(context, 1);
}

const GeneratorRegistration kRegistration("MagicType.ini", GenerateMagicType);

}  // namespace
