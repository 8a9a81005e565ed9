// The sound event view ("sound", by event id). A repeated id shows once,
// with the text the table kept (the last line's).
#include <cstdint>
#include <string>
#include <vector>

#include "ClientData/ClientDataMgr.h"
#include "TableView.h"

namespace {

void SoundRecord(uint32_t idEvent, const char* szText, ViewRecord& record)
{
    record.strKey = std::to_string(idEvent);
    record.AddInt("Id", idEvent);
    record.AddText("Text", szText);
}

void SoundAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    for (const auto& event : mgr.GetSoundEvent()->Texts()) {
        setRecord.emplace_back();
        SoundRecord(event.first, event.second, setRecord.back());
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
