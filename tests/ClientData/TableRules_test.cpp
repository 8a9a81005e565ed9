// What each table's own rules make of a file: which record a repeated key
// keeps, how titles and lines turn into keys, the defaults that are not 0
// and what a miss answers. Each case starts the manager on its files as the
// client does and asks the table what the client would ask, mostly through
// the raw slots. Every case also checks that reloading the same files
// changes no answer, and that after ClearAll each table answers as it does
// in an empty folder (except where its rules keep what it read).
#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "Support/BoundarySupport.h"
#include "Support/TableSupport.h"
#include "Support/VtableCall.h"

namespace {

std::string Text(const char* sz) { return sz != nullptr ? sz : "-"; }
std::string Text(const std::string& str) { return str; }
template <class T, class = std::enable_if_t<std::is_arithmetic_v<T>>>
std::string Text(T n)
{
    return std::to_string(n);
}

// The answers joined by "|"; "-" stands for a null text.
template <class... T>
std::string Say(const T&... values)
{
    std::string strSaid;
    ((strSaid += "|" + Text(values)), ...);
    return strSaid.substr(1);
}

// A field of a record, or "-" when the lookup missed.
template <class R, class M>
std::string Of(const R* pRecord, M R::*pMember)
{
    return pRecord != nullptr ? Text(pRecord->*pMember) : "-";
}

std::string Hex(uint32_t n)
{
    char szHex[16];
    std::snprintf(szHex, sizeof(szHex), "0x%08X", n);
    return szHex;
}

std::string Ids(const CClientArray<uint32_t>& setId)
{
    std::string strIds;
    for (uint32_t nId : setId)
        strIds += (strIds.empty() ? "" : ",") + std::to_string(nId);
    return strIds;
}

// The ids of a category as the client's array receives them.
std::string Ids(CItemCategoryTable* pTable, const char* szName)
{
    CClientArray<uint32_t> setId;
    pTable->GetCategoryIds(szName, &setId);
    return Ids(setId);
}

// The first time percentage of the record slot 7 answers for each key.
std::string AskCtrlMarks(CClientDataMgr* p, std::initializer_list<int64_t> setKey)
{
    std::string strSaid;
    for (int64_t nKey : setKey) {
        const auto* pCtrl = CallSlot<const ActionCtrlInfo*>(p->GetActionCtrl(), 7, nKey);
        strSaid += pCtrl != nullptr ? Text(pCtrl->nTimePercent[0]) : "-";
    }
    return strSaid;
}

// The amount, column 51 of the first four records, the type of the fourth,
// and three misses.
std::string AskMagicLines(CClientDataMgr* p)
{
    IMagicData* t = p->GetMagicType();
    std::string strSaid = Text(CallSlot<int>(t, 7));
    for (int nIndex : {0, 1, 2, 3})
        strSaid += "|" + Of(t->GetMagicTypeByIndex(nIndex), &MagicTypeInfo::Column51);
    return Say(strSaid, Of(t->GetMagicTypeByIndex(3), &MagicTypeInfo::Type),
               Of(t->GetMagicType(5, 1), &MagicTypeInfo::Type), Of(t->GetMagicTypeByIndex(4), &MagicTypeInfo::Type),
               Of(t->GetMagicTypeByIndex(-1), &MagicTypeInfo::Type));
}

// Slots 7 to 15 and 17 (numbers and colours come back in the same 32-bit
// register), the default font name and the settings read.
std::string AskFont(CClientDataMgr* p)
{
    CFontSetting* t = p->GetFontSetting();
    std::string strSaid;
    for (int nSlot : {7, 8, 9})
        strSaid += Text(CallSlot<const char*>(t, nSlot)) + "|";
    for (int nSlot = 10; nSlot <= 15; ++nSlot) {
        const uint32_t nValue = CallSlot<uint32_t>(t, nSlot);
        strSaid += (nSlot == 11 || nSlot == 15 ? Hex(nValue) : Text(static_cast<int32_t>(nValue))) + "|";
    }
    CZelString strName;
    t->GetDefaultFontName(&strName);
    return strSaid + Say(static_cast<const char*>(strName), CallSlot<int>(t, 17), t->GetLoadedAmount());
}

using Ask = std::string (*)(CClientDataMgr*);

struct RuleCase {
    const char* szRule;
    std::vector<std::pair<std::string, std::string>> setFile;  // path and content
    Ask ask;
    std::string strAnswer;
    bool bClearKeeps = false;  // after ClearAll the table still answers from its file
};

const RuleCase kCases[] = {
    {"action types: the later line of a name wins, names match as spelled, numbers read as atoi",
     {{"ini/ActionType.ini",
       "; player actions\n100 _ACTION_STANDBY\r\n555 _ACTION_USE_ITEM\n556 _ACTION_USE_ITEm\n101 _ACTION_STANDBY\n"
       "-3 _ACTION_SKILL_SEAL\n99999999999999 _ACTION_JUMP\n"},
      {"ini/MonsterActionType.ini", "900 _ACTION_STANDBY\n"}},
     [](CClientDataMgr* p) {
         auto* t = p->GetActionType();
         return Say(CallSlot<int>(t, 7, 8), CallSlot<int>(t, 8, 8), t->GetActionType(122), t->GetActionType(289),
                    t->GetActionType(38), t->GetMonsterActionType(122), t->GetActionType(290), t->GetActionType(511),
                    t->GetActionType(512), t->GetActionType(100000));
     },
     "101|900|556|-3|2147483647|0|0|0|0|0",
     true},  // Clear only forgets that the files were read: the next query reads them again
    {"action delays: the first section of a number wins, titles read as atol",
     {{"ini/ActionDelay.ini",
       "[100]\nWoundDelay=10\nBlockDelay=20\nDieDelay=30\n[200]\nBlockDelay=5\n"
       "[100]\nWoundDelay=99\n[walk]\nWoundDelay=7\n[99999999999999999999]\nDieDelay=4\n"}},
     [](CClientDataMgr* p) {
         auto* t = p->GetActionDelay();
         const auto* pDelay = CallSlot<const ActionDelayInfo*>(t, 7, 100u);
         return Say(Of(pDelay, &ActionDelayInfo::WoundDelay), Of(pDelay, &ActionDelayInfo::BlockDelay),
                    Of(pDelay, &ActionDelayInfo::DieDelay), Of(t->GetActionDelay(200), &ActionDelayInfo::BlockDelay),
                    Of(t->GetActionDelay(0), &ActionDelayInfo::WoundDelay),
                    Of(t->GetActionDelay(2147483647u), &ActionDelayInfo::DieDelay),
                    Of(t->GetActionDelay(300), &ActionDelayInfo::WoundDelay));
     },
     "10|20|30|5|7|4|-"},
    {"effect offsets: a title splits into id, variant and sub-variant; 0 and below are skipped; the first wins",
     {{"ini/ActionEffectOffset.ini",
       "[1234567]\nnOffsetX=1\nnOffsetY=-2\nnOffsetZ=3\n[0]\n[-1234567]\n[name]\n"
       "[7]\nnOffsetZ=9\n[1234567]\nnOffsetX=100\n[2147483647]\nnOffsetY=5\n"}},
     [](CClientDataMgr* p) {
         auto* t = p->GetActionEffectOffset();
         const auto* pOffset = CallSlot<const ActionEffectOffset*>(t, 7, 123, 456, 7);
         return Say(Of(pOffset, &ActionEffectOffset::nOffsetX), Of(pOffset, &ActionEffectOffset::nOffsetY),
                    Of(pOffset, &ActionEffectOffset::nOffsetZ),
                    Of(t->GetActionEffectOffset(0, 0, 7), &ActionEffectOffset::nOffsetZ),
                    Of(t->GetActionEffectOffset(214748, 364, 7), &ActionEffectOffset::nOffsetY),
                    Of(t->GetActionEffectOffset(0, 0, 0), &ActionEffectOffset::nOffsetX),
                    Of(t->GetActionEffectOffset(123, 456, 8), &ActionEffectOffset::nOffsetX), t->GetLoadedAmount());
     },
     "1|-2|3|9|5|-|-|4"},
    {"action values: without a file the built-in rule answers from the last three digits",
     {},
     [](CClientDataMgr* p) {
         std::string strSaid;
         for (int64_t nKey : {5101, 103, 104, 110, 121, 122, 451, 7460, 465, 470, 454, 101000, -100})
             strSaid += Say(CallSlot<int>(p->GetAction(), 7, nKey)) + " ";
         return strSaid + Say(CallSlot<int>(p->GetAction(), 7, INT64_MAX));
     },
     "66 66 33 25 25 33 10 10 10 10 33 33 33 33"},
    {"action values: the first line of a key wins, a line without a number is skipped, no value reads 0",
     {{"ini/Action.dat", "5101 7\n5101 8\nx5102 9\n5103\n-5105 -4\n"}},
     [](CClientDataMgr* p) {
         auto* t = p->GetAction();
         return Say(t->GetLoadedAmount(), CallSlot<int>(t, 7, int64_t{5101}), CallSlot<int>(t, 7, int64_t{5103}),
                    CallSlot<int>(t, 7, int64_t{-5105}), CallSlot<int>(t, 7, int64_t{7460}));
     },
     "3|7|0|-4|33"},  // no built-in rule once the table holds keys
    {"action control: the segment count is the signed remainder by 8 and only that many are read; first wins",
     {{"ini/ActionCtrl.ini",
       "[1]\nSection=3\nTimePercent2=30\nTimePercent3=40\nMovePercent0=11\n[2]\nSection=8\nTimePercent0=10\n"
       "[4]\nSection=15\nMovePercent6=66\nMovePercent7=77\n[1]\nSection=1\n"
       "[-7]\nSection=2147483647\n[-5]\nSection=-3\nTimePercent0=9\n"}},
     [](CClientDataMgr* p) {
         auto* t = p->GetActionCtrl();
         const ActionCtrlInfo *p1 = CallSlot<const ActionCtrlInfo*>(t, 7, int64_t{1}), *p2 = t->GetActionCtrl(2),
                              *p4 = t->GetActionCtrl(4), *p7 = t->GetActionCtrl(-7), *p5 = t->GetActionCtrl(-5);
         if (!(p1 && p2 && p4 && p7 && p5))
             return std::string("missing");
         return Say(p1->nSection, p1->nTimePercent[2], p1->nTimePercent[3], p1->nMovePercent[0], p2->nSection,
                    p2->nTimePercent[0], p4->nSection, p4->nMovePercent[6], p4->nMovePercent[7], p7->nSection,
                    p5->nSection, p5->nTimePercent[0]);
     },
     "3|30|0|11|0|0|7|66|0|7|-3|0"},
    {"common settings: a key read with blanks around \"=\" has no value; Clear keeps the values",
     {{"ini/Common.ini", "[Playerface]\nMaleFaceAmount=3\n[Statuary]\nLeaderScale = 7\nSubLeaderMaxLife=9\n"}},
     [](CClientDataMgr* p) {
         return Say(CallSlot<int>(p->GetCommonIni(), 7), CallSlot<int>(p->GetCommonIni(), 9),
                    CallSlot<int>(p->GetCommonIni(), 14));
     },
     "3|0|9",
     true},
    {"monsters: titles read as %d, 0 and text are skipped, a later id wins, names compare byte for byte",
     {{"ini/Monster.dat",
       "[0]\nName=Zero\n[abc]\nName=Text\n[1005abc]\nName=First\nDefyStatus=3\n[-7]\nName=Neg\n"
       "[ 42 ]\nName=Blank\n[2000]\nName=Shared\n[1005]\nName=Second\n[3000]\nName=Shared\n"
       "[1]\nName=ABCDEFGHIJKLMNOPQRST\n[2]\nName=wolf\n"}},
     [](CClientDataMgr* p) {
         auto* t = p->GetMonster();
         const auto Find = [t](const char* sz) { return CallSlot<const MonsterTypeInfo*>(t, 8, sz); };
         return Say(t->GetLoadedAmount(), Of(CallSlot<const MonsterTypeInfo*>(t, 7, 1005), &MonsterTypeInfo::szName),
                    Of(t->GetMonsterType(-7), &MonsterTypeInfo::szName),
                    Of(t->GetMonsterType(42), &MonsterTypeInfo::szName),
                    Of(t->GetMonsterType(0), &MonsterTypeInfo::szName),
                    Of(t->GetMonsterType(42), &MonsterTypeInfo::nNameAltitude),  // the label's usual height
                    Of(Find("Shared"), &MonsterTypeInfo::nId), Of(Find("First"), &MonsterTypeInfo::nId),
                    Of(Find("Zero"), &MonsterTypeInfo::nId), Of(Find("ABCDEFGHIJKLMNOPQRST"), &MonsterTypeInfo::nId),
                    Of(Find("ABCDEFGHIJKLMNO"), &MonsterTypeInfo::nId), Of(Find("Wolf"), &MonsterTypeInfo::nId),
                    Of(Find(nullptr), &MonsterTypeInfo::nId),
                    // The later 1005 has no defy status; the earlier one still counts.
                    CallSlot<int>(t, 9, 1005), CallSlot<int>(t, 9, 2000), CallSlot<int>(t, 9, 9999));
     },
     "8|Second|Neg|Blank|-|100|3000|1005|-|-|1|-|-|0|1|1"},
    {"NPC types: the id follows the title's first seven characters, the first wins, only \"NULL\" is no note",
     {{"ini/Npc.ini",
       "[NpcType10]\nName=First\n[NpcType10]\nName=Second\n[Xxxxxxx1201]\nName=AnyPrefix\n"
       "[NpcType]\nName=Zero\n[Npc]\nName=Short\n[NpcType12ab]\nName=Digits\n"
       "[NpcType1]\nNote=NULL\n[NpcType2]\nNote=null\n[NpcType3]\nNote=Null\n"}},
     [](CClientDataMgr* p) {
         const auto Find = [p](uint32_t nId) { return CallSlot<const NpcTypeInfo*>(p->GetNpc(), 7, nId); };
         return Say(
             p->GetNpc()->GetLoadedAmount(), Of(Find(10), &NpcTypeInfo::szName), Of(Find(1201), &NpcTypeInfo::szName),
             Of(Find(0), &NpcTypeInfo::szName), Of(Find(12), &NpcTypeInfo::szName), Of(Find(11), &NpcTypeInfo::szName),
             Of(Find(1), &NpcTypeInfo::szNote), Of(Find(2), &NpcTypeInfo::szNote), Of(Find(3), &NpcTypeInfo::szNote),
             // Without them an NPC shows at full size and turns to the player.
             Of(Find(1), &NpcTypeInfo::nZoomPercent), Of(Find(1), &NpcTypeInfo::nChangeDir));
     },
     "9|First|AnyPrefix|Zero|Digits|-||null|Null|100|1"},
    {"new NPC types: \"NULL\" in any case is no note, the first wins",
     {{"ini/NewNpc.ini",
       "[NpcType1]\nNote=NULL\n[NpcType2]\nNote=null\n[NpcType3]\nNote=Null\n"
       "[NpcType4]\nNote=NULLS\n[NpcType1]\nNote=later\n[NpcType]\nNote=zero\n"}},
     [](CClientDataMgr* p) {
         const auto Note = [p](uint32_t nId) {
             return Of(CallSlot<const NpcTypeInfoEx*>(p->GetNewNpc(), 7, nId), &NpcTypeInfoEx::szNote);
         };
         return Say(p->GetNewNpc()->GetLoadedAmount(), Note(1), Note(2), Note(3), Note(4), Note(0), Note(5));
     },
     "6||||NULLS|zero|-"},
    {"sound events: the second blank-separated word is the text, an id reads as atoi, a later line wins",
     {{"ini/SoundEvent.ini",
       "; interface sounds\r\n7 click.wav\r\n9\r\n// game sounds\r\n12 sound/a b c\r\n"
       "13  two.wav\r\n5\tbeep.wav\r\nx y.wav\r\n-1 last.wav\r\n7 ok.wav\r\n"}},
     [](CClientDataMgr* p) {
         std::string strSaid = Say(p->GetSoundEvent()->GetLoadedAmount());
         for (uint32_t nId : {7u, 9u, 12u, 13u, 5u, 0u, 0xFFFFFFFFu, 8u})
             strSaid += "|" + Text(CallSlot<const char*>(p->GetSoundEvent(), 7, nId));
         return strSaid;
     },
     "7|ok.wav||sound/a|||y.wav|last.wav|-"},
    {"monster speech: what is left of 1000 is shared by the lines without a probability of their own",
     // Share 1 when nothing is left or the division gives 0; empty texts do
     // not count; without an amount no line and no occasion probability is
     // read; a negative sum leaves more than 1000.
     {{"ini/monsterspeak.ini",
       "[1]\nAttackAmount=3\nAttack0=a\nAttackProbability0=500\nAttack1=b\nAttack2=c\nAttackProbability=40\n"
       "[2]\nAttackAmount=3\nAttack0=a\nAttackProbability0=1000\nAttack1=b\nAttack2=c\n"
       "[3]\nAttackAmount=1\nAttack0=a\nAttackProbability0=300\n"
       "[4]\nAttackAmount=3\nAttack0=a\nAttackProbability0=999\nAttack1=b\nAttack2=c\nAttack3=d\n"
       "[5]\nAttackAmount=4\nAttack0=\nAttack1=b\nAttack3=d\nAttackProbability3=100\n"
       "[6]\nAttackAmount=0\nAttack0=a\nAttackProbability=40\n[7]\nAttackAmount=-2\nAttackProbability=40\n"
       "[8]\nAttackAmount=2\nAttackProbability=40\n"
       "[9]\nAttackAmount=2\nAttack0=a\nAttackProbability0=-1000\nAttack1=b\n"}},
     [](CClientDataMgr* p) {
         std::string strSaid;
         for (uint32_t nId = 1; nId <= 9; ++nId) {
             const MonsterSpeakInfo* pInfo = p->Getmonsterspeak()->GetMonsterSpeak(nId);
             if (pInfo == nullptr)
                 return std::string("missing");
             const MonsterSpeakLines& attack = pInfo->setOccasion[MONSTER_SPEAK_ATTACK];
             strSaid += Say(attack.nDefaultShare, attack.nProbability, attack.setEntry.size()) + " ";
         }
         return strSaid;
     },
     "250|40|3 1|1|3 1|1|1 1|1|3 900|1|2 0|1|0 0|1|0 1|40|0 2000|1|2 "},
    {"monster speech: occasions in record order, lines below the amount by their number, cut to 1023",
     {{"ini/monsterspeak.ini",
       "[1]\nBornAmount=1\nBorn0=hello\nBornProbability=5\nDeadAmount=1\nDead0=bye\nSkillAmount=1\nSkill0=zap\n"
       "BeatAmount=1\nBeat0=ouch\nAttackAmount=1\nAttack0=hit\n"
       "[2]\nSkillAmount=2147483647\nSkill00=lead\nSkill7=seven\nSkill2=two\nskill5=" +
           std::string(1500, 'y') + "\nDeadAmount=1\nDead1=beyond\n"}},
     [](CClientDataMgr* p) {
         const MonsterSpeakInfo *pFirst = p->Getmonsterspeak()->GetMonsterSpeak(1),
                                *pSecond = p->Getmonsterspeak()->GetMonsterSpeak(2);
         if (pFirst == nullptr || pSecond == nullptr)
             return std::string("missing");
         std::string strSaid;
         for (const MonsterSpeakLines& lines : pFirst->setOccasion)
             strSaid += Say(lines.setEntry.empty() ? "" : lines.setEntry[0].strText.c_str(), lines.nProbability,
                            lines.nDefaultShare) +
                        " ";
         // Short texts stay in the string's own buffer, long ones on the heap.
         for (const MonsterSpeakEntry& entry : pSecond->setOccasion[MONSTER_SPEAK_SKILL].setEntry)
             strSaid +=
                 Say(std::string(entry.strText.c_str()).substr(0, 5), entry.strText.size(), entry.strText.capacity()) +
                 " ";
         return strSaid + Say(pSecond->setOccasion[MONSTER_SPEAK_DEAD].setEntry.size());
     },
     "hit|1|1000 ouch|1|1000 bye|1|1000 zap|1|1000 hello|5|1000 two|3|15 yyyyy|1023|1023 seven|5|15 0"},
    {"monster speech: the first section of a monster wins; the queries through their slots",
     {{"ini/monsterspeak.ini",
       "[77]\nBeatAmount=3\nBeat0=a\nBeatProbability0=600\nBeat1=b\nBeat2=c\n"
       "BeatProbability=30\n[77]\nBeatAmount=1\nBeat0=later\n[4294967295]\nDeadAmount=1\n"
       "Dead0=x\n"}},
     [](CClientDataMgr* p) {
         auto* t = p->Getmonsterspeak();
         std::string strSaid = Say(t->GetLoadedAmount(), CallSlot<const MonsterSpeakInfo*>(t, 7, 78u) == nullptr,
                                   CallSlot<int>(t, 8, 77u, int{MONSTER_SPEAK_BEAT}), CallSlot<int>(t, 8, 77u, 5));
         for (int nIndex : {2, 0, 3}) {
             int nProbability = -1;
             strSaid += "|" + Say(CallSlot<const char*>(t, 9, 77u, 1, nIndex, &nProbability), nProbability);
         }
         strSaid += "|" + Say(CallSlot<int>(t, 10, 77u, 1), CallSlot<int>(t, 10, 77u, 0), CallSlot<int>(t, 10, 5u, 0));
         for (int nRoll : {0, 599, 600, 799, 800, 999, 1000, -1})
             strSaid += "|" + Text(CallSlot<const char*>(t, 11, 77u, 1, nRoll));
         // A title beyond 32 bits saturates as atoi does.
         return strSaid + "|" + Say(t->GetSpeakAmount(2147483647u, MONSTER_SPEAK_DEAD));
     },
     "2|1|3|0|c|200|a|600|-|0|30|1|0|a|a|b|b|c|c|-|-|1"},
    {"action control: a missing key tries digits 6-8, then 3-5, then 0-2 set to 999, each from the step before",
     {{"ini/ActionCtrl.ini",
       "[123456789]\nSection=1\nTimePercent0=1\n[999456789]\nSection=1\nTimePercent0=2\n"
       "[999999789]\nSection=1\nTimePercent0=3\n[123999789]\nSection=1\nTimePercent0=4\n"
       "[5123456000]\nSection=1\nTimePercent0=5\n"}},
     [](CClientDataMgr* p) {
         // 123111789 never tries "digits 3-5 of the key" (123999789); there is no catch-all.
         return AskCtrlMarks(p, {123456789, 555456789, 7000456789, 555111789, 123111789, 555111788, 5123456000});
     },
     "12233-5"},
    {"action control: a section named 999999999 serves every action without a closer one",
     {{"ini/ActionCtrl.ini", "[999999999]\nSection=1\nTimePercent0=9\n[20]\nSection=1\nTimePercent0=2\n"}},
     [](CClientDataMgr* p) {
         return AskCtrlMarks(p, {1, 123456789, 98765432101, INT64_MAX, 20});
     },
     "99992"},
    {"magic: every line up to the first blank one makes a record; a column 51 of 0 reads 300",
     {{"ini/MagicType.ini", MagicLine(1, 0, {{51, "0"}}) + MagicLine(2, 0, {{51, "7"}}) +
                                "3 4 Name 5\n"  // short: the missing columns count as 0
                                "abc 5 6\n"     // the scan stops at once: all fields stay 0
                                "\n" +
                                MagicLine(5, 1)}},
     &AskMagicLines,
     "4|300|7|300|300|0|-|-|-"},
    {"magic: the first record of a type and level answers and takes the extra section; a copy through slot 9",
     {{"ini/MagicType.ini", MagicLine(5, 1, {{2, "11"}}) + MagicLine(5, 2) + MagicLine(5, 1, {{2, "22"}})},
      {"ini/MagicTypeEx.ini", "[501]\nSelfMask=0\nAppendDisc=text\n"}},
     [](CClientDataMgr* p) {
         IMagicData* t = p->GetMagicType();
         const auto* pFirst = CallSlot<const MagicTypeInfo*>(t, 10, 5u, 1u);
         MagicTypeInfo copy;
         std::memset(&copy, 0xAB, sizeof(copy));
         const int nMiss = CallSlot<int>(t, 9, 5u, 9, &copy);
         const bool bUntouched = reinterpret_cast<const unsigned char*>(&copy)[100] == 0xAB;
         const int nHit = CallSlot<int>(t, 9, 5u, 1, &copy);
         return Say(pFirst != nullptr && pFirst == t->GetMagicTypeByIndex(0), Of(pFirst, &MagicTypeInfo::Column2),
                    Of(pFirst, &MagicTypeInfo::SelfMask), Of(pFirst, &MagicTypeInfo::AppendDisc),
                    // The later twin keeps the fresh record's values.
                    Of(t->GetMagicTypeByIndex(2), &MagicTypeInfo::SelfMask),
                    Of(t->GetMagicTypeByIndex(2), &MagicTypeInfo::AppendDisc),
                    Of(t->GetMagicType(5, 3), &MagicTypeInfo::Type), nMiss, bUntouched, nHit,
                    pFirst != nullptr && std::memcmp(&copy, pFirst, sizeof(copy)) == 0);
     },
     "1|11|0|text|1||-|0|1|1|1"},
    {"magic: an extra section addresses type * 100 + level and sets every key, those it lacks to their defaults",
     {{"ini/MagicType.ini", MagicLine(12, 5) + MagicLine(0, 5) + MagicLine(0, 0) + MagicLine(1, 100)},
      {"ini/MagicTypeEx.ini",
       "[1205]\nCheckMask=3\nIntoneEffect=spark\nSecondSenderEffect=flash\n[5]\nTypeMask=4\n[1205]\nTargetMask=6\n"
       "[10100]\nTypeMask=1\n"    // level 100 cannot be addressed: type 101, level 0
       "[walk]\nEquipPos=8\n"}},  // not a number: type 0, level 0
     [](CClientDataMgr* p) {
         IMagicData* t = p->GetMagicType();
         const MagicTypeInfo *pInfo = t->GetMagicType(12, 5), *pLevel100 = t->GetMagicType(1, 100);
         return Say(Of(pInfo, &MagicTypeInfo::CheckMask), Of(pInfo, &MagicTypeInfo::TargetMask),
                    Of(pInfo, &MagicTypeInfo::SelfMask), Of(pInfo, &MagicTypeInfo::IntoneEffect),
                    Of(pInfo, &MagicTypeInfo::AppendDisc), Of(pInfo, &MagicTypeInfo::SecondSenderEffect),
                    Of(t->GetMagicType(0, 5), &MagicTypeInfo::TypeMask),
                    Of(t->GetMagicType(0, 0), &MagicTypeInfo::EquipPos), Of(pLevel100, &MagicTypeInfo::TypeMask),
                    Of(pLevel100, &MagicTypeInfo::AppendDisc));
     },
     "0|6|1||NULL|NULL|4|8|0|"},
    {"magic: an intone action matches all three of its kind, on foot, mounted or flying; action sets skip 0",
     // Record 2 names no intone action: its zero fields match action 0.
     {{"ini/MagicType.ini", MagicLine(1, 1, {{35, "100"}}) + MagicLine(2, 1, {{35, "4294967295"}})},
      {"ini/MagicTypeEx.ini",
       "[101]\nIntoneActionEx1=10\nMountIntoneAction2=20\nFlyIntoneAction3=30\n"
       "TargetAction=200\nIntoneActionEx2=11\nIntoneActionEx3=12\nMountIntoneAction1=21\n"
       "MountIntoneAction3=22\nFlyIntoneAction1=31\nFlyIntoneAction2=32\n"
       "[201]\nFlyTargetAction=300\n"}},
     [](CClientDataMgr* p) {
         IMagicData* t = p->GetMagicType();
         std::string strSaid;
         const std::tuple<int, bool, bool> kIntone[] = {{10, false, false}, {10, true, false},  {10, false, true},
                                                        {10, true, true},   {20, true, false},  {20, false, false},
                                                        {20, false, true},  {30, false, true},  {30, false, false},
                                                        {30, true, true},   {13, false, false}, {0, false, false}};
         for (const auto& [nAction, bMounted, bFlying] : kIntone)
             strSaid += Text(CallSlot<int>(t, 11, nAction, bMounted, bFlying));
         strSaid += " ";
         for (int nAction : {100, -1, 0, 200})
             strSaid += Text(CallSlot<int>(t, 14, nAction));
         strSaid += " ";
         for (int nAction : {200, 300, 0, 100})
             strSaid += Text(CallSlot<int>(t, 15, nAction));
         return strSaid;
     },
     "101010010001 1100 1100"},
    {"item categories: ranges expand in file order; the client's array grows once, to the size needed",
     {{"ini/ItemCategory.dat", "[Sword]\nIDRange=1000-1005,2000\n"}},
     [](CClientDataMgr* p) {
         std::string strSaid;
         for (uint32_t nId : {999u, 1000u, 1005u, 1006u, 1999u, 2000u, 2001u})
             strSaid += Text(CallSlot<int, const char*, uint32_t>(p->GetItemCategory(), 7, "Sword", nId));
         CClientArray<uint32_t> setId;
         ArrayFill(setId, {7u});
         CallSlot<void, const char*, CClientArray<uint32_t>*>(p->GetItemCategory(), 8, "Sword", &setId);
         return Say(strSaid, Ids(setId), setId.capacity());
     },
     "0110010|7,1000,1001,1002,1003,1004,1005,2000|8"},
    {"item categories: sections of one title extend one category in order; titles compare byte for byte",
     {{"ini/ItemCategory.dat",
       "[Gem]\nIDRange=50,10-12\n[Ring]\nIDRange = 7\n[Gem]\nIDRange=3-1,1\n[gem]\nIDRange=99\n"}},
     [](CClientDataMgr* p) {
         CItemCategoryTable* t = p->GetItemCategory();
         // The high-first range 3-1 is kept but yields nothing.
         return Say(Ids(t, "Gem"), Ids(t, "gem"), Ids(t, "Ring"),
                    t->FindRanges("Gem") != nullptr ? t->FindRanges("Gem")->size() : 0, t->IsInCategory("Gem", 2),
                    t->IsInCategory("Gem", 1), t->IsInCategory("Gem", 11), t->GetLoadedAmount());
     },
     "50,10,11,12,1|99|7|4|0|1|1|3"},
    {"item categories: \"null\" in any case, an empty or a missing range defines nothing; misses leave the array",
     {{"ini/ItemCategory.dat",
       "[A]\nIDRange=null\n[B]\nIDRange=NuLL\n[C]\nIDRange=\n[D]\nOther=5\n[]\nIDRange=4\n[E]\nIDRange=5\n"}},
     [](CClientDataMgr* p) {
         CItemCategoryTable* t = p->GetItemCategory();
         std::string strSaid;
         for (const char* szName : {"A", "B", "C", "D", "", "E"})
             strSaid += t->FindRanges(szName) == nullptr ? "-" : "+";
         CClientArray<uint32_t> setId;
         ArrayFill(setId, {1u, 2u});
         t->GetCategoryIds("Unknown", &setId);
         t->GetCategoryIds(nullptr, &setId);
         t->GetCategoryIds("E", nullptr);
         return Say(strSaid, t->GetLoadedAmount(), Ids(setId), t->IsInCategory("Unknown", 5),
                    t->IsInCategory(nullptr, 5));
     },
     "-----+|1|1,2|0|0"},
    {"item categories: the pieces of a range parse as the format reads them",
     {{"ini/ItemCategory.dat",
       "[K1]\nIDRange=5-x\n"                           // the high bound fails: 5-0 is high-first
       "[K2]\nIDRange=x-5\n"                           // the low bound fails and reading stops: 0-0
       "[K3]\nIDRange=8- 10\n[K4]\nIDRange=8 -10\n"    // the "-" must follow the number at once
       "[K5]\nIDRange=1,,2\n"                          // an empty piece is id 0
       "[K6]\nIDRange=-2\n[K7]\nIDRange=4294967295\n"  // a single id goes through atoi, which saturates
       "[K8]\nIDRange=4294967294-4294967295\n"}},      // "%d" wraps; the range ends at the top id
     [](CClientDataMgr* p) {
         std::string strSaid;
         for (const char* szName : {"K1", "K2", "K3", "K4", "K5", "K6", "K7", "K8"})
             strSaid += Ids(p->GetItemCategory(), szName) + " ";
         return strSaid;
     },
     " 0 8,9,10  1,0,2  2147483647 4294967294,4294967295 "},
    {"item categories: every lookup agrees with the expanded ids; a huge range answers whole, expands to the cap",
     {{"ini/ItemCategory.dat", "[Mix]\nIDRange=30-40,35-50,52,60-55,51,100-100,0\n[All]\nIDRange=0-2147483647\n"}},
     [](CClientDataMgr* p) {
         CItemCategoryTable* t = p->GetItemCategory();
         CClientArray<uint32_t> setId;
         t->GetCategoryIds("Mix", &setId);
         const std::vector<uint32_t> setMix = VectorOf(setId);
         int nDisagree = 0;
         for (uint32_t nId = 0; nId <= 110; ++nId)
             nDisagree += t->IsInCategory("Mix", nId) != (std::count(setMix.begin(), setMix.end(), nId) > 0);
         setId.Clear();
         t->GetCategoryIds("All", &setId);
         return Say(setMix.size(), nDisagree, t->IsInCategory("All", 2147483647u),
                    setId.size() == CItemCategoryTable::kMaxExpandedIds);
     },
     "31|0|1|1"},
    {"font settings: seven lines in a fixed order; colours without alpha are opaque; the default font; slots",
     {{"ini/FontSetting.ini",
       "; font settings\r\nGUIFontShadow=1\r\nGUIFontShadowColor=404040\r\nChatFont=Font/simsun.ttf\r\n"
       "ChatFontSize=14\r\nAntialias=0\r\nTipFontShadow=2\r\nTipFontShadowColor=80102030\r\n"},
      {"Font/Tip/tip.ttf", ""},
      {"ini/Font.ini", "[List]\nA=1\n[Font]\nFace=SimHei\nSize=16\n"}},
     &AskFont,
     "|Font/simsun.ttf|Font/Tip/tip.ttf|1|0xFF404040|14|0|2|0x80102030|SimHei|16|7"},
    {"font settings: a line out of place spends the step of the setting expected there",
     // ChatFont comes early: it spends the GUIFontShadowColor step, and the
     // colour line then spends the ChatFont step; the rest lines up again.
     {{"ini/FontSetting.ini",
       "GUIFontShadow=3\nChatFont=a.ttf\nGUIFontShadowColor=123456\nChatFontSize=9\n"
       "Antialias=0\nTipFontShadow\nTipFontShadowColor=1\n"}},
     &AskFont,
     Say("", "", "", 3, Hex(CFontSetting::kDefaultShadowColor), 9, 0, 0, "0xFF000001", "", 0, 5)},
    {"font settings: keys compare exactly, blanks and case included",
     {{"ini/FontSetting.ini", "GUIFontShadow = 4\nguifontshadowcolor=1\n"}},
     &AskFont,
     Say("", "", "", CFontSetting::kDefaultShadow, Hex(CFontSetting::kDefaultShadowColor),
         CFontSetting::kDefaultChatFontSize, CFontSetting::kDefaultAntialias, CFontSetting::kDefaultShadow,
         Hex(CFontSetting::kDefaultShadowColor), "", 0, 0)},
    {"tutorial scripts: lines 1 to LineAmount; unknown commands are dropped; a later section replaces",
     {{"ini/BattleTutorial.ini",
       "[3]\nType=2\nLineAmount=3\nLine0=Wait_XP_Full\nLine1=Add_CtrlEffect,1,2,3,4\nLine2=Bogus,1\n"
       "Line3=Wait_Timer,500\nLine4=Wait_XP_Full\n[-1]\nLineAmount=1\nLine1=Wait_XP_Full\n"
       "[8]\nLineAmount=1\nLine1=Wait_XP_Full\n[8]\nType=5\n"
       "[9]\nLineAmount=2147483647\nLine2147483647=Wait_XP_Full\nLine01=Wait_XP_Full\n"}},
     [](CClientDataMgr* p) {
         CBattleTutorialTable* t = p->GetBattleTutorial();
         const auto Code = [t](int nId, int nIndex) {
             return Of(CallSlot<const TutorialCommand*>(t, 10, nId, nIndex), &TutorialCommand::nCode);
         };
         const TutorialCommand* pFirst = t->GetCommand(3, 0);
         return Say(t->GetLoadedAmount(), CallSlot<const TutorialScript*>(t, 7, 3) != nullptr,
                    CallSlot<const TutorialScript*>(t, 7, -1) != nullptr, CallSlot<int>(t, 8, 3),
                    CallSlot<int>(t, 9, 3), Code(3, 0), pFirst != nullptr ? pFirst->nParam[3] : -1, Code(3, 1),
                    Code(3, 2), Code(3, -1), t->GetScriptType(8), t->GetCommandAmount(8), Code(9, 0));
     },
     "3|1|0|2|2|1|4|33|-|-|5|0|27"},
    {"item types: the slots; indexed values are columns 37 to 45 by index 1 to 9; a copy carries its name's key",
     {{"ini/ItemType.dat", "Amount=2\n" + ItemLine(42, "Jade\xB1\xA6", 0, "note") + ItemLine(9, "n", 1000)}},
     [](CClientDataMgr* p) {
         CItemTypeTable* t = p->GetItemType();
         std::string strSaid;
         for (int nIndex : {0, 1, 5, 9, 10, -1, 1 << 30})
             strSaid += Text(CallSlot<uint32_t, uint32_t, int>(t, 11, 9u, nIndex)) + ",";
         ItemTypeInfo info;
         info.idType = 12345;
         const bool bMiss = CallSlot<bool, uint32_t, ItemTypeInfo*>(t, 9, 43u, &info);
         const bool bNull = CallSlot<bool, uint32_t, ItemTypeInfo*>(t, 9, 42u, nullptr);
         const uint32_t nKept = info.idType;
         const bool bHit = CallSlot<bool, uint32_t, ItemTypeInfo*>(t, 9, 42u, &info);
         const ItemTypeInfo* pFound = CallSlot<const ItemTypeInfo*>(t, 8, 42u);
         // The name is held scrambled: the record's bytes never show it.
         const bool bPlain =
             pFound != nullptr &&
             std::string(reinterpret_cast<const char*>(pFound), sizeof(ItemTypeInfo)).find("Jade") != std::string::npos;
         const std::string strCopy = bHit ? Say(info.idType, info.szText, info.strName.Get()) : "-";
         return Say(strSaid, Text(CallSlot<const char*>(t, 7, 42u)), Text(CallSlot<const char*>(t, 7, 43u)),
                    CallSlot<const ItemTypeInfo*>(t, 8, 43u) == nullptr, bMiss, bNull, nKept, strCopy, bPlain);
     },
     "0,1037,1041,1045,0,0,0,|Jade\xB1\xA6|-|1|0|0|12345|42|note|Jade\xB1\xA6|0"},
};

class TableRulesTest : public ManagerTest {
protected:
    // Starts the manager on what the folder holds and asks: once loaded, once
    // reloaded as the client reloads, once cleared.
    void Run(const RuleCase& c, std::string (&strAnswer)[3])
    {
        CClientDataMgr* pMgr = StartUp();
        strAnswer[0] = c.ask(pMgr);
        pMgr->ReloadDeferred(false);
        pMgr->ReloadDeferred(true);
        strAnswer[1] = c.ask(pMgr);
        pMgr->ClearAll();
        strAnswer[2] = c.ask(pMgr);
        DestroyClientDataMgr();
    }
};

TEST_F(TableRulesTest, EachTableAnswersByItsOwnRules)
{
    namespace fs = std::filesystem;
    for (const RuleCase& c : kCases) {
        SCOPED_TRACE(c.szRule);
        for (const auto& entry : fs::directory_iterator("."))
            fs::remove_all(entry.path());
        std::string strEmpty[3], strLoaded[3];
        Run(c, strEmpty);
        for (const auto& file : c.setFile)
            WriteFile(file.first, file.second);
        Run(c, strLoaded);
        EXPECT_EQ(strLoaded[0], c.strAnswer);
        EXPECT_EQ(strLoaded[1], strLoaded[0]) << "reloaded";
        EXPECT_EQ(strLoaded[2], c.bClearKeeps ? strLoaded[0] : strEmpty[0]) << "cleared";
    }
}

}  // namespace
