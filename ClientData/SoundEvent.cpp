#include "ClientData/SoundEvent.h"

#include "ClientData/Catalogue.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

// A line: the event id, a blank, the sound's file; further fields are not
// read. The text has no length limit.
const FieldDesc kSoundFields[] = {
    FILE_FIELD(uint32_t, "Id").FromTitle().Gen(1, 1),
    FILE_FIELD(char[1024], "Text")
        .Gen("sound\\ui\\click_%d.wav|sound\\battle\\hit_%d.wav|sound\\item\\drop_%d.wav", 1, 30),
};
const RecordDesc kSoundRecord(kSoundFields);

}  // namespace

void CSoundEvent::Load()
{
    const char* szPath = CatalogueFileOf<CSoundEvent>();
    CDataFileReader reader;
    if (!reader.Open(szPath, 0, ' ')) {
        LogSave("Load Error %s not find", szPath);
        return;
    }
    for (int i = 0; i < reader.GetRecordAmount(); ++i) {
        const CDataRow* pRow = reader.GetRecord(i);
        // A tab does not separate: "7<tab>a.wav" is one field, id 7 by atoi, text "".
        const uint32_t idEvent = static_cast<uint32_t>(CrtAtoi(pRow->GetStr(0, "")));
        if (LoadFindingsWanted() && m_mapText.count(idEvent) != 0)
            LoadFindingReport(szPath, pRow->GetLine(), FINDING_WARNING, "duplicate-id",
                              "event %u was given before: this later line replaces its text", idEvent);
        m_mapText[idEvent] = pRow->GetStr(1, "");
    }
}

const char* CSoundEvent::GetSoundEventText(uint32_t idEvent)
{
    const auto it = m_mapText.find(idEvent);
    return it == m_mapText.end() ? nullptr : static_cast<const char*>(it->second);
}

namespace {

void SoundForEach(CDataTable& table, RecordSinkFn fn, void* pContext)
{
    for (const auto& [idEvent, strText] : static_cast<CSoundEvent&>(table).Texts())
        fn(&strText, RecordKeyOf(idEvent), pContext);
}

const void* SoundFind(CDataTable& table, const RecordKey& key)
{
    CSoundEvent& sounds = static_cast<CSoundEvent&>(table);
    const auto it = sounds.Texts().find(static_cast<uint32_t>(key.nNumber[0]));
    return it != sounds.Texts().end() ? &it->second : nullptr;
}

void SoundVisit(CDataTable&, const void* pRecord, FieldVisitor& visitor)
{
    visitor.Text("Text", *static_cast<const CZelString*>(pRecord));
}

}  // namespace

const TableDesc kSoundEventDesc = {&kSoundRecord, TABLE_KEY_NUMBERS, "Id",    &SoundForEach,
                                   &SoundFind,    &SoundVisit,       nullptr, 440};
