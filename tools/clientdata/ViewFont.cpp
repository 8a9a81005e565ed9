// The font settings view: one record, the settings and font files the table
// holds after loading (the font folders override the configured chat font).
#include "ClientData/ClientDataMgr.h"
#include "TableView.h"

namespace {

void FontRecord(CClientDataMgr& mgr, ViewRecord& record)
{
    CFontSetting& font = *mgr.GetFontSetting();
    record.strKey = "font";
    record.AddInt("Antialias", font.GetAntialias());
    record.AddInt("TipFontShadow", font.GetTipFontShadow());
    record.AddInt("TipFontShadowColor", font.GetTipFontShadowColor());
    record.AddText("TipFontFile", font.GetTipFontFile());
    record.AddInt("GUIFontShadow", font.GetGUIFontShadow());
    record.AddInt("GUIFontShadowColor", font.GetGUIFontShadowColor());
    record.AddText("GUIFontFile", font.GetGUIFontFile());
    record.AddInt("ChatFontSize", font.GetChatFontSize());
    record.AddText("ChatFontFile", font.GetChatFontFile());
    CZelString strDefaultFont;  // empty: taken as raw storage without a leak
    record.AddText("DefaultFontName", static_cast<const char*>(*font.GetDefaultFontName(&strDefaultFont)));
    record.AddInt("DefaultFontValue", font.GetDefaultFontValue());
}

void FontAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    setRecord.emplace_back();
    FontRecord(mgr, setRecord.back());
}

bool FontGet(CClientDataMgr& mgr, const std::vector<std::string>&, ViewRecord& record)
{
    FontRecord(mgr, record);
    return true;
}

const TableViewRegistration kFont({"font", "(no key: one record)", &FontAll, &FontGet});

}  // namespace
