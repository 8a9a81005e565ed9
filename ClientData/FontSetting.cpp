#include "ClientData/FontSetting.h"

#include <cstring>
#include <new>
#include <string>

#include "ClientData/Catalogue.h"
#include "ClientData/RecordRead.h"
#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/FileStream.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

#define FONT(member, key) FIELD(FontSettingValues, member, key)
// The settings file's lines in their fixed order, then what the font
// folders and the font list add.
const FieldDesc kFontFields[] = {
    FONT(m_nGUIFontShadow, "GUIFontShadow").Gen(0, 1),
    FONT(m_dwGUIFontShadowColor, "GUIFontShadowColor").AsHex().Gen(0, 0xFFFFFF),
    FONT(m_strChatFontFile, "ChatFont").Gen("Font/Chat/ChatFont%d.ttf", 1, 3),
    FONT(m_nChatFontSize, "ChatFontSize").Gen(10, 16),
    FONT(m_nAntialias, "Antialias").Gen(0, 1),
    FONT(m_nTipFontShadow, "TipFontShadow").Gen(0, 1),
    FONT(m_dwTipFontShadowColor, "TipFontShadowColor").AsHex().Gen(0x10000000, 0x80FFFFFF),
    FONT(m_strGUIFontFile, "GUIFontFile").OutsideFile(),
    FONT(m_strTipFontFile, "TipFontFile").OutsideFile(),
    FONT(m_strDefaultFontName, "DefaultFontName").OutsideFile().GenGbk(2, 2),
    FONT(m_nDefaultFontValue, "DefaultFontValue").OutsideFile().Gen(9, 16),
};
#undef FONT
constexpr std::size_t kSettingAmount = 7;  // the fields before the first filled from elsewhere
const RecordDesc kFontRecord(kFontFields);
const RecordDesc kSettingRecord(kFontFields, kSettingAmount);
// The client asks for the working directory with a buffer of this size; a
// longer directory is not known to it.
constexpr std::size_t kMaxPath = 260;

// A colour without an alpha byte is opaque.
void ColourMakeOpaque(const FieldDesc& field, FontSettingValues& values)
{
    uint32_t* pColour = reinterpret_cast<uint32_t*>(reinterpret_cast<char*>(&values) + field.nOffset);
    if (*pColour < 0x1000000)
        *pColour |= 0xFF000000;
}

// One section of "ini/Font.ini": its title and the keys of its first two
// key lines.
struct FontSection {
    std::string strTitle;
    std::string strKey[2];
    int nKeyAmount = 0;
};

// Finds the default font's section: the first section after the list's head
// that holds a key line, provided the head holds one. The file is read as a
// stream and only as far as the answer needs, so that its size does not
// matter; a line of 1024 bytes or more ends the reading, as it ends the
// in-memory reader's.
bool FindDefaultFontSection(const char* szPath, FontSection& found)
{
    CFileStream stream;
    if (!stream.Open(szPath))
        return false;
    FontSection head;
    FontSection current;
    int nSection = 0;
    char szLine[1024];
    while (StreamIniReadLine(stream, szLine, sizeof(szLine))) {
        const std::size_t nLineLen = std::strlen(szLine);
        if (szLine[0] == '[' && nLineLen >= 2 && szLine[nLineLen - 1] == ']') {
            if (nSection == 1 && head.nKeyAmount == 0)
                return false;
            if (nSection > 1 && current.nKeyAmount > 0)
                break;
            ++nSection;
            current = FontSection();
            current.strTitle.assign(szLine + 1, nLineLen - 2);
            continue;
        }
        const char* szEqual = std::strchr(szLine, '=');
        const bool bComment = szLine[0] == ';' || (szLine[0] == '/' && szLine[1] == '/');
        if (nSection == 0 || szEqual == nullptr || szEqual == szLine || bComment)
            continue;
        FontSection& section = nSection == 1 ? head : current;
        if (section.nKeyAmount < 2)
            section.strKey[section.nKeyAmount].assign(szLine, static_cast<std::size_t>(szEqual - szLine));
        if (++section.nKeyAmount == 2 && nSection > 1)
            break;  // both keys are known
    }
    if (head.nKeyAmount == 0 || nSection < 2 || current.nKeyAmount == 0)
        return false;
    found = std::move(current);
    return true;
}

}  // namespace

CFontSetting::CFontSetting() { Clear(); }

void CFontSetting::Clear()
{
    m_values.m_nAntialias = kDefaultAntialias;
    m_values.m_nTipFontShadow = kDefaultShadow;
    m_values.m_dwTipFontShadowColor = kDefaultShadowColor;
    m_values.m_strTipFontFile.Empty();
    m_values.m_nGUIFontShadow = kDefaultShadow;
    m_values.m_dwGUIFontShadowColor = kDefaultShadowColor;
    m_values.m_strGUIFontFile.Empty();
    m_values.m_nChatFontSize = kDefaultChatFontSize;
    m_values.m_strChatFontFile.Empty();
    m_values.m_strDefaultFontName.Empty();
    m_values.m_nDefaultFontValue = 0;
    m_nLoadedAmount = 0;
}

void CFontSetting::Load()
{
    ReadSettings();
    const std::string strCurrentDir = PlatformCurrentDirectory();
    if (strCurrentDir.empty() || strCurrentDir.size() >= kMaxPath)
        return;
    FindFontFiles(strCurrentDir.c_str());
    ReadDefaultFont();
}

void CFontSetting::ReadSettings()
{
    const char* szPath = CatalogueFileOf<CFontSetting>();
    m_nLoadedAmount = 0;
    CDataFileReader reader;
    // Only the first lines are settings: the rest of the file is not read.
    reader.SetRecordLimit(static_cast<int>(kSettingRecord.nFieldAmount));
    // The line feed never stands inside a line: every record is one whole line.
    if (!reader.Open(szPath, 0, '\n')) {
        LogSave("error on open %s.", szPath);
        return;
    }
    int nRecord = 0;
    for (const FieldDesc& setting : kSettingRecord) {
        const CDataRow* pRow = reader.GetRecord(nRecord++);
        if (pRow == nullptr)
            break;
        const char* szLine = pRow->GetStr(0, "");
        const char* szEqual = std::strchr(szLine, '=');
        const std::size_t nKeyLen = szEqual ? static_cast<std::size_t>(szEqual - szLine) : std::strlen(szLine);
        if (nKeyLen != std::strlen(setting.szKey) || std::memcmp(szLine, setting.szKey, nKeyLen) != 0) {
            if (LoadFindingsWanted())
                LoadFindingReport(szPath, pRow->GetLine(), FINDING_ERROR, "setting-order",
                                  "%s stands where %s belongs: both keep their values", szLine, setting.szKey);
            continue;  // out of place: the line is spent, the setting keeps its value
        }
        FieldStoreValue(setting, szEqual ? szEqual + 1 : "", &m_values, szPath, pRow->GetLine());
        if (setting.type == FieldType::Hex)
            ColourMakeOpaque(setting, m_values);
        ++m_nLoadedAmount;
    }
}

void CFontSetting::FindFontFiles(const char* szCurrentDir)
{
    // The folders in the order they are searched, after the font list.
    CZelString* const setFile[] = {&m_values.m_strGUIFontFile, &m_values.m_strChatFontFile, &m_values.m_strTipFontFile};
    const int nSlot = CatalogueSlotOf<CFontSetting>();
    for (int i = 0; i < 3; ++i) {
        const char* szFolder = CatalogueExtraOf(nSlot, i + 1);  // "Font/GUI/"
        const std::string strDir = std::string(szCurrentDir) + "/" + std::string(szFolder, std::strlen(szFolder) - 1);
        std::string strName;
        if (!PlatformFindFirstFile(strDir.c_str(), "*.ttf", strName))
            continue;
        CZelString strFile(szFolder);
        strFile += strName.c_str();
        *setFile[i] = strFile;
    }
}

void CFontSetting::ReadDefaultFont()
{
    const char* szFontFile = CatalogueExtraOf(CatalogueSlotOf<CFontSetting>(), 0);
    FontSection section;
    bool bFound = false;
    if (!AllocationTry([&] { bFound = FindDefaultFontSection(szFontFile, section); }) || !bFound)
        return;
    char szName[256] = "";
    FileIniStrGet(szFontFile, section.strTitle.c_str(), section.strKey[0].c_str(), szName, 0, sizeof(szName));
    int nValue = 0;
    if (section.nKeyAmount > 1)
        FileIniDataGet(szFontFile, section.strTitle.c_str(), section.strKey[1].c_str(), &nValue, 0);
    m_values.m_strDefaultFontName = szName;
    m_values.m_nDefaultFontValue = nValue;
}

const char* CFontSetting::GetGUIFontFile() { return m_values.m_strGUIFontFile; }
const char* CFontSetting::GetChatFontFile() { return m_values.m_strChatFontFile; }
const char* CFontSetting::GetTipFontFile() { return m_values.m_strTipFontFile; }
int CFontSetting::GetGUIFontShadow() { return m_values.m_nGUIFontShadow; }
uint32_t CFontSetting::GetGUIFontShadowColor() { return m_values.m_dwGUIFontShadowColor; }
int CFontSetting::GetChatFontSize() { return m_values.m_nChatFontSize; }
int CFontSetting::GetAntialias() { return m_values.m_nAntialias; }
int CFontSetting::GetTipFontShadow() { return m_values.m_nTipFontShadow; }
uint32_t CFontSetting::GetTipFontShadowColor() { return m_values.m_dwTipFontShadowColor; }
CZelString* CFontSetting::GetDefaultFontName(CZelString* pResult)
{
    return new (pResult) CZelString(m_values.m_strDefaultFontName);
}
int CFontSetting::GetDefaultFontValue() { return m_values.m_nDefaultFontValue; }

const TableDesc kFontSettingDesc = SettingsTableDesc<CFontSetting, &CFontSetting::Values>(kFontRecord);
