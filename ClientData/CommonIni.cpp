#include "ClientData/CommonIni.h"

#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

const char kSourceUnit[] = "ClientData\\CommonIni";

struct CommonValue {
    const char* szTitle;
    const char* szSubtitle;
    int CCommonIni::*pMember;
    int nLine;              // the line its failure names
    const char* szCheck;    // the failed check as written
};

}  // namespace

void CCommonIni::Load()
{
#define COMMON_VALUE(title, key, member, line) \
    {title, key, &CCommonIni::member, line, "::IniDataGet(szIniFile, szTitle, szSubtitle, " #member ")"}
    static const CommonValue kValues[] = {
        COMMON_VALUE("Playerface", "MaleFaceAmount", m_nMaleFaceAmount, 21),
        COMMON_VALUE("Playerface", "FemaleFaceAmount", m_nFemaleFaceAmount, 23),
        COMMON_VALUE("EmblemAmount", "EmblemAmount", m_nEmblemAmount, 27),
        COMMON_VALUE("Statuary", "LeaderScale", m_nLeaderScale, 31),
        COMMON_VALUE("Statuary", "LeaderMaxLife", m_nLeaderMaxLife, 33),
        COMMON_VALUE("Statuary", "AssistantScale", m_nAssistantScale, 35),
        COMMON_VALUE("Statuary", "AssistantMaxLife", m_nAssistantMaxLife, 37),
        COMMON_VALUE("Statuary", "SubLeaderScale", m_nSubLeaderScale, 39),
        COMMON_VALUE("Statuary", "SubLeaderMaxLife", m_nSubLeaderMaxLife, 41),
    };
#undef COMMON_VALUE

    const char szIniFile[] = "ini/Common.ini";
    m_nLoadedAmount = 0;
    for (const CommonValue& value : kValues) {
        char szTitle[64];
        char szSubtitle[64];
        SafeStrCopy(szTitle, sizeof(szTitle), value.szTitle);
        SafeStrCopy(szSubtitle, sizeof(szSubtitle), value.szSubtitle);
        if (IniDataGet(szIniFile, szTitle, szSubtitle, &(this->*value.pMember), 0))
            ++m_nLoadedAmount;
        else
            LogAssert(value.szCheck, value.nLine, kSourceUnit);
    }
}
