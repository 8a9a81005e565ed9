#include "ClientData/SoundEvent.h"

#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

const char kSoundEventFile[] = "ini/SoundEvent.ini";

}  // namespace

void CSoundEvent::Load()
{
    CDataFileReader reader;
    if (!reader.Open(kSoundEventFile, 0, ' ')) {
        LogSave("Load Error %s not find", kSoundEventFile);
        return;
    }
    for (int i = 0; i < reader.GetRecordAmount(); ++i) {
        const CDataRow* pRow = reader.GetRecord(i);
        // A tab does not separate: "7<tab>a.wav" is one field, id 7 by atoi, text "".
        const uint32_t idEvent = static_cast<uint32_t>(CrtAtoi(pRow->GetStr(0, "")));
        m_mapText[idEvent] = pRow->GetStr(1, "");
    }
}

const char* CSoundEvent::GetSoundEventText(uint32_t idEvent)
{
    const auto it = m_mapText.find(idEvent);
    return it == m_mapText.end() ? nullptr : static_cast<const char*>(it->second);
}
