// The sound event view ("sound", by event id). The ids to list come from the
// file the table read; a repeated id shows once, with the text the table
// kept (the last line's).
#include <cerrno>
#include <cstdint>
#include <cstdlib>
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
    if (setKey.size() != 1 || setKey[0].empty() || setKey[0][0] == '-')
        return false;
    char* pEnd = nullptr;
    errno = 0;
    const unsigned long long nValue = std::strtoull(setKey[0].c_str(), &pEnd, 10);
    if (*pEnd != '\0' || errno != 0 || nValue > UINT32_MAX)
        return false;
    const uint32_t idEvent = static_cast<uint32_t>(nValue);
    const char* szText = mgr.GetSoundEvent()->GetSoundEventText(idEvent);
    if (szText == nullptr)
        return false;
    SoundRecord(idEvent, szText, record);
    return true;
}

const TableViewRegistration kSound({"sound", "ID", &SoundAll, &SoundGet});

}  // namespace
