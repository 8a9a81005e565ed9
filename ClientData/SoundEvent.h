// Sound events: a numeric event id of the client's interface and game events
// to the text naming the sound to play. Read from the fixed path
// "ini/SoundEvent.ini", one event a line: the id, a blank, the text (further
// fields are ignored). A later line with the same id replaces the text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "ClientData/DataTable.h"
#include "ClientData/TableDesc.h"
#include "ZelGameBase/ZelString.h"

class CSoundEvent : public CDataTable {
public:
    CSoundEvent() = default;
    ~CSoundEvent() = default;
    ZEL_DELETING_DESTRUCTOR

    // Adds the file's events to those held (it does not clear first: a
    // second Load without Clear overrides and adds). A missing file is
    // logged and changes nothing.
    void Load() override;
    void Clear() override { m_mapText.clear(); }

    // Slot 7: the text stored for idEvent ("" when stored empty), null when
    // the id is not stored. Valid until the next Clear or Load.
    virtual const char* GetSoundEventText(uint32_t idEvent);

    std::size_t GetLoadedAmount() const { return m_mapText.size(); }
    // Every event held, by id.
    const std::map<uint32_t, CZelString>& Texts() const { return m_mapText; }

private:
    std::map<uint32_t, CZelString> m_mapText;
};

extern const TableDesc kSoundEventDesc;
