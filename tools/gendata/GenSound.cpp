// "ini/SoundEvent.ini": one event a line, the event id, a blank and the
// sound file, grouped by the part of the game that raises the events.
#include <string>

#include "GenData.h"

namespace {

struct SoundGroup {
    const char* szFolder;
    unsigned nFirstId;
    int nAmount;  // events at scale 1; groups lie 100000 ids apart
};
const SoundGroup kGroups[] = {
    {"ui", 1, 120}, {"battle", 100000, 150}, {"item", 200000, 80}, {"scene", 300000, 50}, {"npc", 400000, 40},
};
const char* const kWords[] = {"click", "open", "close", "drop", "pickup", "equip", "levelup", "hit",
                              "miss", "die", "step", "door", "coin", "alarm", "chime", "wind"};

void GenerateSoundEvent(CGenContext& context)
{
    CDataRng rng(194u);
    std::string strText = "; sound events: id file\n";
    for (const SoundGroup& group : kGroups) {
        strText += "// " + std::string(group.szFolder) + "\n";
        const int nAmount = group.nAmount * context.Scale();
        for (int i = 0; i < nAmount; ++i) {
            const char* szWord = kWords[rng.Range(0, static_cast<int>(sizeof(kWords) / sizeof(kWords[0])) - 1)];
            strText += std::to_string(group.nFirstId + static_cast<unsigned>(i)) + " sound\\" + group.szFolder +
                       "\\" + szWord + "_" + std::to_string(rng.Range(1, 30)) + ".wav\n";
        }
    }
    context.Write("ini/SoundEvent.ini", strText, true);
}

const GeneratorRegistration kRegistration("ini/SoundEvent.ini", GenerateSoundEvent);

}  // namespace
