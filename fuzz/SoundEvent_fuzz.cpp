// "ini/SoundEvent.ini" through the sound event table.
#include "ClientData/SoundEvent.h"
#include "FuzzTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const std::vector<int64_t> setNumber = FuzzNumbersIn(pData, nSize);
    FuzzTableFile<CSoundEvent>("ini/SoundEvent.ini", pData, nSize, [&](CSoundEvent& table) {
        for (int64_t nId : setNumber)
            table.GetSoundEventText(static_cast<uint32_t>(nId));
    });
    return 0;
}
