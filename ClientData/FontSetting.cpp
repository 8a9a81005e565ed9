#include "ClientData/FontSetting.h"

#include <cstring>
#include <new>
#include <string>

#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/FileStream.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

const char kSettingFile[] = "ini/FontSetting.ini";
const char kFontFile[] = "ini/Font.ini";
// The client asks for the working directory with a buffer of this size; a
// longer directory is not known to it.
constexpr std::size_t kMaxPath = 260;

// "%x"; no alpha byte given means opaque.
uint32_t ColourFromText(const char* szValue)
{
    uint32_t dwColour = 0;
    CrtScanHex32(szValue, &dwColour);
    if (dwColour < 0x1000000)
        dwColour |= 0xFF000000;
    return dwColour;
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
    m_nAntialias = kDefaultAntialias;
    m_nTipFontShadow = kDefaultShadow;
    m_dwTipFontShadowColor = kDefaultShadowColor;
    m_strTipFontFile.Empty();
    m_nGUIFontShadow = kDefaultShadow;
    m_dwGUIFontShadowColor = kDefaultShadowColor;
    m_strGUIFontFile.Empty();
    m_nChatFontSize = kDefaultChatFontSize;
    m_strChatFontFile.Empty();
    m_strDefaultFontName.Empty();
    m_nDefaultFontValue = 0;
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
    // Exactly one of the three members names where the value goes.
    struct Setting {
        const char* szKey;
        int CFontSetting::*pNumber;
        uint32_t CFontSetting::*pColour;
        CZelString CFontSetting::*pText;
    };
    static const Setting kSettings[] = {
        {"GUIFontShadow", &CFontSetting::m_nGUIFontShadow, nullptr, nullptr},
        {"GUIFontShadowColor", nullptr, &CFontSetting::m_dwGUIFontShadowColor, nullptr},
        {"ChatFont", nullptr, nullptr, &CFontSetting::m_strChatFontFile},
        {"ChatFontSize", &CFontSetting::m_nChatFontSize, nullptr, nullptr},
        {"Antialias", &CFontSetting::m_nAntialias, nullptr, nullptr},
        {"TipFontShadow", &CFontSetting::m_nTipFontShadow, nullptr, nullptr},
        {"TipFontShadowColor", nullptr, &CFontSetting::m_dwTipFontShadowColor, nullptr},
    };

    m_nLoadedAmount = 0;
    CDataFileReader reader;
    // Only the first lines are settings: the rest of the file is not read.
    reader.SetRecordLimit(static_cast<int>(sizeof(kSettings) / sizeof(kSettings[0])));
    // The line feed never stands inside a line: every record is one whole line.
    if (!reader.Open(kSettingFile, 0, '\n')) {
        LogSave("error on open %s.", kSettingFile);
        return;
    }
    int nRecord = 0;
    for (const Setting& setting : kSettings) {
        const CDataRow* pRow = reader.GetRecord(nRecord++);
        if (pRow == nullptr)
            break;
        const char* szLine = pRow->GetStr(0, "");
        const char* szEqual = std::strchr(szLine, '=');
        const std::size_t nKeyLen = szEqual ? static_cast<std::size_t>(szEqual - szLine) : std::strlen(szLine);
        if (nKeyLen != std::strlen(setting.szKey) || std::memcmp(szLine, setting.szKey, nKeyLen) != 0)
            continue;  // out of place: the line is spent, the setting keeps its value
        const char* szValue = szEqual ? szEqual + 1 : "";
        if (setting.pNumber)
            this->*setting.pNumber = CrtAtoi(szValue);
        else if (setting.pColour)
            this->*setting.pColour = ColourFromText(szValue);
        else
            this->*setting.pText = szValue;
        ++m_nLoadedAmount;
    }
}

void CFontSetting::FindFontFiles(const char* szCurrentDir)
{
    struct FontFolder {
        const char* szFolder;
        CZelString CFontSetting::*pFile;
    };
    static const FontFolder kFolders[] = {
        {"Font/GUI", &CFontSetting::m_strGUIFontFile},
        {"Font/Chat", &CFontSetting::m_strChatFontFile},
        {"Font/Tip", &CFontSetting::m_strTipFontFile},
    };
    for (const FontFolder& folder : kFolders) {
        const std::string strDir = std::string(szCurrentDir) + "/" + folder.szFolder;
        std::string strName;
        if (!PlatformFindFirstFile(strDir.c_str(), "*.ttf", strName))
            continue;
        CZelString strFile(folder.szFolder);
        strFile += "/";
        strFile += strName.c_str();
        this->*folder.pFile = strFile;
    }
}

void CFontSetting::ReadDefaultFont()
{
    FontSection section;
    bool bFound = false;
    if (!AllocationTry([&] { bFound = FindDefaultFontSection(kFontFile, section); }) || !bFound)
        return;
    char szName[256] = "";
    FileIniStrGet(kFontFile, section.strTitle.c_str(), section.strKey[0].c_str(), szName, 0, sizeof(szName));
    int nValue = 0;
    if (section.nKeyAmount > 1)
        FileIniDataGet(kFontFile, section.strTitle.c_str(), section.strKey[1].c_str(), &nValue, 0);
    m_strDefaultFontName = szName;
    m_nDefaultFontValue = nValue;
}

const char* CFontSetting::GetGUIFontFile() { return m_strGUIFontFile; }
const char* CFontSetting::GetChatFontFile() { return m_strChatFontFile; }
const char* CFontSetting::GetTipFontFile() { return m_strTipFontFile; }
int CFontSetting::GetGUIFontShadow() { return m_nGUIFontShadow; }
uint32_t CFontSetting::GetGUIFontShadowColor() { return m_dwGUIFontShadowColor; }
int CFontSetting::GetChatFontSize() { return m_nChatFontSize; }
int CFontSetting::GetAntialias() { return m_nAntialias; }
int CFontSetting::GetTipFontShadow() { return m_nTipFontShadow; }
uint32_t CFontSetting::GetTipFontShadowColor() { return m_dwTipFontShadowColor; }
CZelString* CFontSetting::GetDefaultFontName(CZelString* pResult)
{
    return new (pResult) CZelString(m_strDefaultFontName);
}
int CFontSetting::GetDefaultFontValue() { return m_nDefaultFontValue; }
