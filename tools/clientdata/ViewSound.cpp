// The sound event view ("sound", by event id). The ids to list come from the
// file the table read; a repeated id shows once, with the text the table
// kept (the last line's).
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "ClientData/ClientDataMgr.h"
#include "TableView.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

void SoundRecord(uint32_t idEvent, const char* szText, ViewRecord& record)
{
    record.strKey = std::to_string(idEvent);
    record.AddInt("Id", idEvent);
    record.AddText("Text", szText);
}

void SoundAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    CSoundEvent& table = *mgr.GetSoundEvent();
    CDataFileReader reader;
    if (!reader.Open("ini/SoundEvent.ini", 0, ' '))
        return;
    std::set<uint32_t> setId;
    for (int i = 0; i < reader.GetRecordAmount(); ++i)
        setId.insert(static_cast<uint32_t>(CrtAtoi(reader.GetRecord(i)->GetStr(0, ""))));
    for (uint32_t idEvent : setId) {
        if (const char* szText = table.GetSoundEventText(idEvent)) {
            setRecord.emplace_back();
            SoundRecord(idEvent, szText, setRecord.back());
        }
    }
}

bool SoundGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    uint32_t idEvent = 0;
    if (!ViewSingleKeyU32(setKey, idEvent))
        return false;
    const char* szText = mgr.GetSoundEvent()->GetSoundEventText(idEvent);
    if (szText == nullptr)
        return false;
    SoundRecord(idEvent, szText, record);
    return true;
}

const TableViewRegistration kSound({"sound", "ID", &SoundAll, &SoundGet});

}  // namespace
