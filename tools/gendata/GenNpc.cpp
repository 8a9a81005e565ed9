// "ini/Npc.ini" and "NewNpc.ini" (with its alternative
// "ini/200/NewNpc_200.ini"): the NPC types of the towns, one section
// [NpcType<id>] each.
#include <string>

#include "GenData.h"

namespace {

const char* const kNotes[] = {"NULL", "shop", "depot", "task", "teleport", "guild"};

// The planted faults of one NPC file, right after its two header lines so
// that their lines are fixed: a title without a number (line 3), a repeated
// id (lines 6 and 9), and a text longer than its buffer (line 14).
std::string NpcFaults(CGenContext& context, const char* szCutKey, int nCutLength)
{
    std::string s;
    s += "[NpcTypeAbc]\nName=" + context.GbkName(3) + "\n\n";
    s += "[NpcType99001]\nName=" + context.GbkName(3) + "\n\n";
    s += "[NpcType99001]\nName=" + context.GbkName(4) + "\n\n";
    s += "[NpcType99002]\nName=" + context.GbkName(3) + "\n" + szCutKey + "=" + std::string(nCutLength, 'n') + "\n\n";
    return s;
}

std::string NpcSection(CGenContext& context, int nId)
{
    CDataRng& rng = context.Rng();
    std::string s = "[NpcType" + std::to_string(nId) + "]\n";
    s += "Name=" + context.GbkName(rng.Range(2, 6)) + "\n";
    if (rng.Chance(30))
        s += "Effect=npc_glow" + std::to_string(rng.Range(1, 20)) + "\n";
    s += "Note=" + std::string(kNotes[rng.Range(0, 5)]) + "\n";
    s += "SimpleObjID=" + std::to_string(rng.Range(1, 900)) + "\n";
    s += "StandByMotion=" + std::to_string(rng.Range(100, 110)) + "\n";
    s += "BlazeMotion=" + std::to_string(rng.Range(120, 130)) + "\n";
    if (rng.Chance(40)) {
        s += "BlazeMotion1=" + std::to_string(rng.Range(131, 140)) + "\n";
        s += "BlazeMotion2=" + std::to_string(rng.Range(141, 150)) + "\n";
    }
    s += "RestMotion=" + std::to_string(rng.Range(150, 160)) + "\n";
    if (rng.Chance(50))
        s += "ZoomPercent=" + std::to_string(rng.Range(80, 150)) + "\n";
    s += "MouseSign=" + std::to_string(rng.Range(0, 12)) + "\n";
    if (rng.Chance(20))
        s += "ChangeDir=0\n";
    for (const char* szSide : {"FrontBlock", "BackBlock", "LeftBlock", "RightBlock"})
        s += std::string(szSide) + "=" + std::to_string(rng.Range(0, 2)) + "\n";
    if (rng.Chance(25))
        s += "l_weapon=" + std::to_string(410000 + rng.Range(1, 99) * 10) +
             "\nr_weapon=" + std::to_string(420000 + rng.Range(1, 99) * 10) + "\n";
    return s + "\n";
}

void GenerateNpc(CGenContext& context)
{
    std::string strText = "; NPC types of the towns: [NpcType<id>]\n\n";
    if (context.Faulty())
        strText += NpcFaults(context, "Note", 140);
    const int nAmount = 450 * context.Scale();
    for (int i = 0; i < nAmount; ++i)
        strText += NpcSection(context, 1001 + i);
    context.Write("ini/Npc.ini", strText, true);
}

std::string NpcExSection(CGenContext& context, int nId, int nVariant)
{
    CDataRng& rng = context.Rng();
    const bool bFemale = rng.Chance(50);
    std::string s = "[NpcType" + std::to_string(nId) + "]\n";
    s += "Name=" + context.GbkName(rng.Range(2, 6)) + "\n";
    if (rng.Chance(25))
        s += "Effect=npc_halo" + std::to_string(rng.Range(1, 9)) + "\n";
    s += "Note=" + std::string(rng.Chance(20) ? "null" : kNotes[rng.Range(0, 5)]) + "\n";
    s += "FixDir=" + std::to_string(rng.Range(0, 7)) + "\n";
    s += "ZoomPercent=" + std::to_string(rng.Range(90, 110)) + "\n";
    s += "Look=" + std::to_string(bFemale ? 2 : 1) + std::to_string(rng.Range(10, 99)) + "\n";
    s += "Head=" + std::to_string(rng.Range(1, 30)) + "\nHair=" + std::to_string(rng.Range(1, 40)) + "\n";
    s += "Armor=" + std::to_string(130000 + rng.Range(1, 300) * 10 + nVariant) + "\n";
    s += "Armet=" + std::to_string(rng.Chance(60) ? 111000 + rng.Range(1, 200) * 10 : 0) + "\n";
    s += "RWeapon=" + std::to_string(420000 + rng.Range(1, 300) * 10) + "\n";
    if (rng.Chance(30))
        s += "LWeapon=" + std::to_string(900000 + rng.Range(1, 50) * 10) + "\n";
    if (rng.Chance(15))
        s += "Mount=" + std::to_string(200000 + rng.Range(1, 40)) + "\n";
    s += "StandByMotion=" + std::to_string(rng.Range(100, 110)) +
         "\nRestMotion=" + std::to_string(rng.Range(150, 160)) + "\n";
    s += "MouseSign=" + std::to_string(rng.Range(0, 12)) + "\n";
    s += "NameHeight=" + std::to_string(rng.Range(0, 30)) + "\n";
    if (rng.Chance(40))
        s += "Face3D=" + std::to_string(rng.Range(1, 60)) + "\n";
    if (rng.Chance(10))
        s += "Alpha=" + std::to_string(rng.Range(50, 200)) + "\n";
    s += "ScriptID=" + std::to_string(rng.Chance(70) ? 10000 + nId : 0) + "\n";
    return s + "\n";
}

void WriteNpcExFile(CGenContext& context, const std::string& strPath, int nVariant, bool bFaulty)
{
    std::string strText = "; NPCs dressed like players: [NpcType<id>]\n\n";
    if (bFaulty)
        strText += NpcFaults(context, "Effect", 20);
    const int nAmount = (nVariant == 0 ? 320 : 280) * context.Scale();
    for (int i = 0; i < nAmount; ++i)
        strText += NpcExSection(context, 3001 + i, nVariant);
    context.Write(strPath, strText);
}

void GenerateNpcEx(CGenContext& context)
{
    WriteNpcExFile(context, "ini/NewNpc.ini", 0, context.Faulty());
    WriteNpcExFile(context, "ini/200/NewNpc_200.ini", 1, false);
}

const GeneratorRegistration kNpc("ini/Npc.ini", GenerateNpc);
const GeneratorRegistration kNpcEx("NewNpc.ini", GenerateNpcEx);

}  // namespace
