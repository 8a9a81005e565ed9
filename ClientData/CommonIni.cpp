#include "ClientData/CommonIni.h"

#include "ClientData/Catalogue.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

const char kSourceUnit[] = "ClientData\\CommonIni";

// In the order Load reads them.
#define COMMON(member, title, key) FIELD(CommonIniValues, member, key).InSection(title)
const FieldDesc kCommonFields[] = {
    COMMON(m_nMaleFaceAmount, "Playerface", "MaleFaceAmount").Gen(8, 16),
    COMMON(m_nFemaleFaceAmount, "Playerface", "FemaleFaceAmount").Gen(8, 16),
    COMMON(m_nEmblemAmount, "EmblemAmount", "EmblemAmount").Gen(20, 60),
    COMMON(m_nLeaderScale, "Statuary", "LeaderScale").Gen(100, 130),
    COMMON(m_nLeaderMaxLife, "Statuary", "LeaderMaxLife").Gen(30000, 60000),
    COMMON(m_nAssistantScale, "Statuary", "AssistantScale").Gen(100, 120),
    COMMON(m_nAssistantMaxLife, "Statuary", "AssistantMaxLife").Gen(20000, 40000),
    COMMON(m_nSubLeaderScale, "Statuary", "SubLeaderScale").Gen(100, 110),
    COMMON(m_nSubLeaderMaxLife, "Statuary", "SubLeaderMaxLife").Gen(10000, 30000),
};
#undef COMMON
const RecordDesc kCommonRecord(kCommonFields);

// The failed check each value logs: the line it names and its member, in
// the order of kCommonFields.
const struct {
    int nLine;
    const char* szCheck;
} kChecks[] = {
    {21, "::IniDataGet(szIniFile, szTitle, szSubtitle, m_nMaleFaceAmount)"},
    {23, "::IniDataGet(szIniFile, szTitle, szSubtitle, m_nFemaleFaceAmount)"},
    {27, "::IniDataGet(szIniFile, szTitle, szSubtitle, m_nEmblemAmount)"},
    {31, "::IniDataGet(szIniFile, szTitle, szSubtitle, m_nLeaderScale)"},
    {33, "::IniDataGet(szIniFile, szTitle, szSubtitle, m_nLeaderMaxLife)"},
    {35, "::IniDataGet(szIniFile, szTitle, szSubtitle, m_nAssistantScale)"},
    {37, "::IniDataGet(szIniFile, szTitle, szSubtitle, m_nAssistantMaxLife)"},
    {39, "::IniDataGet(szIniFile, szTitle, szSubtitle, m_nSubLeaderScale)"},
    {41, "::IniDataGet(szIniFile, szTitle, szSubtitle, m_nSubLeaderMaxLife)"},
};
static_assert(sizeof(kChecks) / sizeof(kChecks[0]) == sizeof(kCommonFields) / sizeof(kCommonFields[0]),
              "a check per value");

}  // namespace

void CCommonIni::Load()
{
    const char* szIniFile = CatalogueFileOf<CCommonIni>();
    m_nLoadedAmount = 0;
    for (std::size_t i = 0; i < kCommonRecord.nFieldAmount; ++i) {
        const FieldDesc& field = kCommonRecord.pField[i];
        char szTitle[64];
        char szSubtitle[64];
        SafeStrCopy(szTitle, sizeof(szTitle), field.szSection);
        SafeStrCopy(szSubtitle, sizeof(szSubtitle), field.szKey);
        int* pValue = reinterpret_cast<int*>(reinterpret_cast<char*>(&m_values) + field.nOffset);
        if (IniDataGet(szIniFile, szTitle, szSubtitle, pValue, 0))
            ++m_nLoadedAmount;
        else
            LogAssert(kChecks[i].szCheck, kChecks[i].nLine, kSourceUnit);
    }
}

const TableDesc kCommonIniDesc = SettingsTableDesc<CCommonIni, &CCommonIni::Values>(kCommonRecord);
