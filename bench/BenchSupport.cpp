#include "BenchSupport.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string_view>

#include "ClientData/ClientDataMgr.h"
#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

std::string g_strRoot;
std::vector<Figure> g_setFigure;
std::vector<std::string> g_setNote;

bool IsSkipped(const std::string& strPath)
{
    // Not read by the start-up: the alternative set (no version callback),
    // the text resources (the client loads them later) and our own log.
    return strPath.rfind("ini/200/", 0) == 0 || strPath.rfind("debug/", 0) == 0 || strPath == "ini/StrRes.ini";
}

}  // namespace

const std::string& BenchDataRoot() { return g_strRoot; }
void BenchDataRootSet(const std::string& strRoot) { g_strRoot = strRoot; }

const std::vector<std::string>& StartupFiles()
{
    static std::vector<std::string> setFile = [] {
        std::vector<std::string> setPath;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(".")) {
            if (!entry.is_regular_file())
                continue;
            std::string strPath = entry.path().lexically_relative(".").generic_string();
            if (!IsSkipped(strPath))
                setPath.push_back(std::move(strPath));
        }
        std::sort(setPath.begin(), setPath.end());
        return setPath;
    }();
    return setFile;
}

std::size_t FloorRead(const std::vector<std::string>& setFile)
{
    std::size_t nLines = 0;
    std::vector<std::string_view> setLine;
    for (const std::string& strPath : setFile) {
        std::FILE* pFile = std::fopen(strPath.c_str(), "rb");
        if (pFile == nullptr)
            continue;
        std::fseek(pFile, 0, SEEK_END);
        const long nSize = std::ftell(pFile);
        std::fseek(pFile, 0, SEEK_SET);
        std::string strData(static_cast<std::size_t>(nSize > 0 ? nSize : 0), '\0');
        const std::size_t nRead = std::fread(strData.data(), 1, strData.size(), pFile);
        std::fclose(pFile);
        strData.resize(nRead);
        setLine.clear();
        std::size_t nAt = 0;
        while (nAt < strData.size()) {
            const void* pEnd = std::memchr(strData.data() + nAt, '\n', strData.size() - nAt);
            const std::size_t nEnd =
                pEnd != nullptr ? static_cast<std::size_t>(static_cast<const char*>(pEnd) - strData.data())
                                : strData.size();
            setLine.emplace_back(strData.data() + nAt, nEnd - nAt);
            nAt = nEnd + 1;
        }
        nLines += setLine.size();
    }
    return nLines;
}

bool BenchFileExists(const std::string& strPath) { return std::filesystem::is_regular_file(strPath); }

void FigureAdd(const Figure& figure) { g_setFigure.push_back(figure); }
const std::vector<Figure>& Figures() { return g_setFigure; }
void FigureNoteAdd(const std::string& strLine) { g_setNote.push_back(strLine); }
const std::vector<std::string>& FigureNotes() { return g_setNote; }

std::size_t ResidentBytes()
{
    std::ifstream statm("/proc/self/statm");
    std::size_t nPages = 0;
    std::size_t nResident = 0;
    statm >> nPages >> nResident;
    return nResident * 4096;
}

// ---------------------------------------------------------------------------
// Held bytes: the record structures and texts each table keeps, from what its
// public queries show. Map and set bookkeeping, indexes and allocator headers
// are the overhead the memory figure measures, so they are not counted here.

namespace {

std::size_t TextBytes(const char* szText) { return szText != nullptr ? std::strlen(szText) + 1 : 0; }

// Section titles of an ini file, in file order.
std::vector<std::string> SectionTitles(const char* szPath)
{
    std::vector<std::string> setTitle;
    CIniSectionReader reader;
    if (reader.Open(szPath, 1))
        for (int i = 0; i < reader.GetSectionAmount(); ++i)
            setTitle.emplace_back(reader.GetTitle(i));
    return setTitle;
}

// First fields of a column file, in file order.
std::vector<std::string> FirstFields(const char* szPath)
{
    std::vector<std::string> setField;
    CDataFileReader reader;
    if (reader.Open(szPath, 1, ' '))
        for (int i = 0; i < reader.GetRecordAmount(); ++i)
            setField.emplace_back(reader.GetRecord(i)->GetStr(0, ""));
    return setField;
}

// A table this file does not know (landed after it was written).
template <class T>
std::size_t HeldBytesOf(T*, bool& bCounted)
{
    bCounted = false;
    return 0;
}

std::size_t HeldBytesOf(CGenericTable* pTable, bool&)
{
    std::size_t nBytes = 0;
    const bool bSections = pTable->GetKind() == IGenericTable::KIND_SECTIONS;
    for (int i = 0; i < pTable->GetRecordAmount(); ++i) {
        nBytes += sizeof(uint32_t);  // the id
        if (bSections)
            nBytes += TextBytes(pTable->GetRecordTitle(i));
        for (int k = 0; k < pTable->GetFieldAmount(i); ++k) {
            nBytes += TextBytes(pTable->GetFieldText(i, k));
            if (bSections)
                nBytes += TextBytes(pTable->GetFieldName(i, k));
        }
    }
    return nBytes;
}

std::size_t HeldBytesOf(CItemTypeTable* pTable, bool&)
{
    std::size_t nBytes = pTable->GetLoadedAmount() * sizeof(ItemTypeInfo);
    for (const std::string& strName : pTable->GetNameList())
        nBytes += strName.size() + 1;
    return nBytes;
}

std::size_t HeldBytesOf(CMagicData* pTable, bool&)
{
    return static_cast<std::size_t>(pTable->GetAmount()) * sizeof(MagicTypeInfo);
}

std::size_t HeldBytesOf(CMonsterTypeTable* pTable, bool&)
{
    return pTable->GetLoadedAmount() * sizeof(MonsterTypeInfo);
}

std::size_t HeldBytesOf(CMonsterSpeakTable* pTable, bool&)
{
    std::size_t nBytes = 0;
    std::set<uint32_t> setSeen;
    for (const std::string& strTitle : SectionTitles("ini/monsterspeak.ini")) {
        const uint32_t nId = static_cast<uint32_t>(CrtAtoi(strTitle.c_str()));
        const MonsterSpeakInfo* pInfo = pTable->GetMonsterSpeak(nId);
        if (pInfo == nullptr || !setSeen.insert(nId).second)
            continue;
        nBytes += sizeof(uint32_t) + sizeof(MonsterSpeakInfo);
        for (const MonsterSpeakLines& lines : pInfo->setOccasion)
            for (const MonsterSpeakEntry& entry : lines.setEntry)
                nBytes += sizeof(entry.nProbability) + entry.strText.size() + 1;
    }
    return nBytes;
}

std::size_t HeldBytesOf(CNpcTypeInfoTable* pTable, bool&) { return pTable->GetLoadedAmount() * sizeof(NpcTypeInfo); }

std::size_t HeldBytesOf(CNpcTypeInfoExTable* pTable, bool&)
{
    return pTable->GetLoadedAmount() * sizeof(NpcTypeInfoEx);
}

std::size_t HeldBytesOf(CActionValueData* pTable, bool&)
{
    return pTable->GetLoadedAmount() * (sizeof(int64_t) + sizeof(int));
}

std::size_t HeldBytesOf(CActionCtrlData* pTable, bool&)
{
    return pTable->GetLoadedAmount() * (sizeof(int64_t) + sizeof(ActionCtrlInfo));
}

std::size_t HeldBytesOf(CActionDelayData* pTable, bool&)
{
    return pTable->GetLoadedAmount() * (sizeof(uint32_t) + sizeof(ActionDelayInfo));
}

std::size_t HeldBytesOf(CActionEffectOffsetData* pTable, bool&)
{
    return pTable->GetLoadedAmount() * sizeof(ActionEffectOffset);
}

std::size_t HeldBytesOf(CActionTypeData*, bool&) { return 2 * 512 * sizeof(int); }

std::size_t HeldBytesOf(CBattleTutorialTable* pTable, bool&)
{
    std::size_t nBytes = 0;
    std::set<int> setSeen;
    for (const std::string& strTitle : SectionTitles("ini/BattleTutorial.ini")) {
        const int nId = CrtAtoi(strTitle.c_str());
        const TutorialScript* pScript = pTable->GetScript(nId);
        if (pScript != nullptr && setSeen.insert(nId).second)
            nBytes += sizeof(int) + sizeof(int) + pScript->setCommand.size() * sizeof(TutorialCommand);
    }
    return nBytes;
}

std::size_t HeldBytesOf(CItemCategoryTable* pTable, bool&)
{
    std::size_t nBytes = 0;
    std::set<std::string> setSeen;
    for (const std::string& strTitle : SectionTitles("ini/ItemCategory.dat")) {
        const auto* pRanges = pTable->FindRanges(strTitle.c_str());
        if (pRanges != nullptr && setSeen.insert(strTitle).second)
            nBytes += strTitle.size() + 1 + pRanges->size() * sizeof(CItemCategoryTable::Range);
    }
    return nBytes;
}

std::size_t HeldBytesOf(CSoundEvent* pTable, bool&)
{
    std::size_t nBytes = 0;
    std::set<uint32_t> setSeen;
    for (const std::string& strField : FirstFields("ini/SoundEvent.ini")) {
        const uint32_t nId = static_cast<uint32_t>(CrtAtoi(strField.c_str()));
        const char* szText = pTable->GetSoundEventText(nId);
        if (szText != nullptr && setSeen.insert(nId).second)
            nBytes += sizeof(uint32_t) + TextBytes(szText);
    }
    return nBytes;
}

std::size_t HeldBytesOf(CCommonIni*, bool&) { return 9 * sizeof(int); }

std::size_t HeldBytesOf(CFontSetting* pTable, bool&)
{
    return 8 * sizeof(int) + TextBytes(pTable->GetGUIFontFile()) + TextBytes(pTable->GetChatFontFile()) +
           TextBytes(pTable->GetTipFontFile());
}

}  // namespace

std::size_t HeldBytes(CClientDataMgr& mgr, std::string& strUncounted)
{
    std::size_t nBytes = 0;
    for (const auto& text : mgr.GetStrResTable().Texts())
        nBytes += sizeof(text.first) + text.second.size() + 1;
#define CLIENTDATA_TABLE(slot, name, iface, cls, file)                               \
    {                                                                                \
        bool bCounted = true;                                                        \
        nBytes += HeldBytesOf(static_cast<cls*>(mgr.Get##name()), bCounted);         \
        if (!bCounted && static_cast<cls*>(mgr.Get##name())->GetLoadedAmount() > 0) \
            strUncounted += std::string(strUncounted.empty() ? "" : ", ") + #name;   \
    }
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
    return nBytes;
}
