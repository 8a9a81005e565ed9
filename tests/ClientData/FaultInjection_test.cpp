// The data layer under hostile conditions: an unwritable log, files that
// vanish or change between the client's calls, a version callback that never
// gives the same answer, files of random bytes for every table, very many
// lines and texts longer than every buffer. Nothing may crash, and loading
// always goes on.
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>
#include <vector>

#include "ClientData/Catalogue.h"
#include "Support/TableSupport.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

namespace fs = std::filesystem;

std::string ItemFile(std::initializer_list<int> setId)
{
    std::string strFile = "Amount=" + std::to_string(setId.size()) + "\n";
    for (int nId : setId)
        strFile += ItemLine(nId, "item" + std::to_string(nId));
    return strFile;
}

class FaultInjectionTest : public ManagerTest {
protected:
    static std::size_t ItemAmount(CClientDataMgr* pMgr) { return pMgr->GetItemType()->GetLoadedAmount(); }
};

// What a record shows: every text is read to its end, as the client reads
// it (the sanitizer build catches one that runs past its buffer).
class CTextsRead : public FieldVisitor {
public:
    void Number(const char*, int64_t) override {}
    void Text(const char* szKey, const char* szText) override
    {
        ASSERT_NE(szText, nullptr) << szKey;
        m_nBytes += std::strlen(szText);
    }
    std::size_t m_nBytes = 0;
};

// Every record a table's lookups can answer, walked through its description:
// its own lookup finds it by its key, each of its text buffers holds a
// terminator, and every value it shows can be read.
void ExpectEveryRecordSound(CClientDataMgr* pMgr)
{
    struct Walk {
        CDataTable* pTable;
        const CatalogueEntry* pEntry;
    };
    for (const CatalogueEntry& entry : kCatalogue) {
        Walk walk{pMgr->GetTableBySlot(entry.nSlot), &entry};
        entry.pDesc->pfnForEach(
            *walk.pTable,
            [](const void* pRecord, const RecordKey& key, void* pContext) {
                Walk& walk = *static_cast<Walk*>(pContext);
                // A generic table also answers by index, so a repeated title
                // finds the first of its records; the action values answer
                // a value, not a record.
                const void* pFound = walk.pEntry->pDesc->pfnFind(*walk.pTable, key);
                if (walk.pEntry->bGeneric || walk.pEntry->pDesc == &kActionValueDesc) {
                    EXPECT_NE(pFound, nullptr) << walk.pEntry->szName;
                } else {
                    EXPECT_EQ(pFound, pRecord) << walk.pEntry->szName;
                }
                CTextsRead texts;
                if (walk.pEntry->pDesc->pfnVisit != nullptr)
                    walk.pEntry->pDesc->pfnVisit(*walk.pTable, pRecord, texts);
                if (walk.pEntry->pDesc->pRecord == nullptr)
                    return;
                for (const FieldDesc& field : *walk.pEntry->pDesc->pRecord) {
                    const char* pField = static_cast<const char*>(pRecord) + field.nOffset;
                    if (field.bMember && field.type == FieldType::Text) {
                        EXPECT_NE(std::memchr(pField, 0, field.nSize), nullptr)
                            << walk.pEntry->szName << " " << field.szKey;
                    }
                }
            },
            &walk);
    }
}

TEST_F(FaultInjectionTest, UnwritableLogDropsEntriesAndLoadingGoesOn)
{
    // 0: a file in place of the folder, 1: a folder in place of the log, 2: a read-only folder.
    for (int nFault = 0; nFault < 3; ++nFault) {
        SCOPED_TRACE(nFault);
        fs::remove_all("debug");
        bool bWritable = false;
        if (nFault == 0) {
            WriteFile("debug", "not a folder");
        } else if (nFault == 1) {
            fs::create_directories("debug/2011_3_7.log");
        } else {
            fs::create_directories("debug");
            fs::permissions("debug", fs::perms::owner_read | fs::perms::owner_exec);
            // A privileged user writes anyway; then only "goes on" is checked.
            bWritable = static_cast<bool>(std::ofstream("debug/probe"));
        }
        WriteFile("ini/ItemType.dat", ItemFile({1001, 1002}));
        fs::remove("ini/Monster.dat");  // a missing file: the table logs it
        CClientDataMgr* pMgr = StartUp();
        LogSave("%s", "an entry nobody can keep");

        EXPECT_EQ(ItemAmount(pMgr), 2u);
        EXPECT_EQ(pMgr->GetMonster()->GetLoadedAmount(), 0u);
        EXPECT_TRUE(bWritable || !fs::is_regular_file("debug/2011_3_7.log"));
        DestroyClientDataMgr();
        fs::permissions("debug", fs::perms::owner_all, fs::perm_options::add);
    }
}

TEST_F(FaultInjectionTest, FilesChangingOrVanishingBetweenReloadsGiveTheNewContentOnly)
{
    WriteFile("DeferList.dat", "ItemType.dat\nMonster.dat\n");
    WriteFile("ini/ItemType.dat", ItemFile({1, 2, 3}));
    WriteFile("ini/Monster.dat", "[7]\nName=Wolf\n");
    CClientDataMgr* pMgr = StartUp();
    ASSERT_NE(pMgr->GetItemType()->FindItemType(3), nullptr);

    // Shorter, longer, truncated mid-line (the cut line still holds an id),
    // empty, then a folder in its place.
    const std::pair<std::string, std::size_t> kContents[] = {
        {ItemFile({4}), 1}, {ItemFile({5, 6, 7, 8, 9}), 5}, {ItemFile({10, 11}).substr(0, 20), 1}, {"", 0}, {"/", 0}};
    for (const auto& c : kContents) {
        fs::remove_all("ini/ItemType.dat");
        if (c.first == "/")
            fs::create_directories("ini/ItemType.dat");
        else
            WriteFile("ini/ItemType.dat", c.first);
        pMgr->ReloadDeferred(true);
        EXPECT_EQ(ItemAmount(pMgr), c.second) << c.first;
        EXPECT_EQ(pMgr->GetItemType()->FindItemType(3), nullptr) << c.first;
    }

    // Everything vanishes after the defer list was read.
    fs::remove("DeferList.dat");
    fs::remove_all("ini");
    pMgr->LoadDeferList();  // nothing to read: the marks stay
    pMgr->ReloadDeferred(false);
    pMgr->ReloadDeferred(true);
    EXPECT_TRUE(pMgr->GetItemType()->IsDefer());
    EXPECT_EQ(ItemAmount(pMgr), 0u);
    EXPECT_EQ(pMgr->GetMonster()->GetMonsterType(7), nullptr);
}

int g_nFlipCalls = 0;
int FlippingVersion() { return ++g_nFlipCalls % 2 ? 100 : 200 + g_nFlipCalls; }

TEST_F(FaultInjectionTest, FlippingVersionCallbackLoadsOneWholeSetEachTime)
{
    WriteFile("DeferList.dat", "ItemType.dat\nMagicType.ini\n");
    WriteFile("ini/ItemType.dat", ItemFile({1, 2}));
    WriteFile("ini/200/ItemType_200.dat", ItemFile({201, 202, 203}));
    WriteFile("ini/MagicTypeEx.ini", "[1]\nXpAddition=1\n");
    WriteFile("ini/200/MagicTypeEx_200.ini", "[1]\nXpAddition=2\n");
    g_nFlipCalls = 0;
    CClientDataMgr* pMgr = StartUp(FlippingVersion);
    for (int i = 0; i < 50; ++i) {
        pMgr->ReloadDeferred(true);
        const std::size_t nAmount = ItemAmount(pMgr);
        CItemTypeTable* pItem = pMgr->GetItemType();
        if (nAmount == 2)
            EXPECT_TRUE(pItem->FindItemType(1) && !pItem->FindItemType(201)) << i;
        else
            EXPECT_TRUE(nAmount == 3 && pItem->FindItemType(201) && !pItem->FindItemType(1)) << i;
    }
    EXPECT_GE(g_nFlipCalls, 50);
}

// Every catalogue file (and the further files) of up to 4095 random bytes:
// raw bytes, or bytes drawn from the formats' punctuation, digits and
// letters, which reach far deeper into the loaders.
TEST_F(FaultInjectionTest, RandomBytesForEveryTableLoadIntoRecordsTheLookupsFind)
{
    static const char kAlphabet[] = "[]=\n\r\n ,;-0123456789 ./\tabcxyzNameTypeAmount\xA1\xEF";
    std::vector<fs::path> setPath = {"DeferList.dat", "ini/MagicTypeEx.ini", "ini/MonsterActionType.ini",
                                     "ini/Font.ini", "str.ini"};
    for (const CatalogueEntry& entry : kCatalogue)
        setPath.push_back(CatalogueDataPath(entry.szFile));
    for (uint32_t nSeed = 1; nSeed <= 4; ++nSeed) {
        SCOPED_TRACE(nSeed);
        std::mt19937 random(nSeed);
        for (const fs::path& path : setPath) {
            std::string strContent(random() % 4096, '\0');
            for (char& c : strContent)
                c = nSeed % 2 == 0 ? kAlphabet[random() % (sizeof(kAlphabet) - 1)] : static_cast<char>(random());
            WriteFile(path.string(), strContent);
        }
        CClientDataMgr* pMgr = StartUp();
        pMgr->LoadStrRes("str.ini");
        pMgr->LoadAll();  // a second Load over the first, as a client may do
        ExpectEveryRecordSound(pMgr);
        // Every record takes at least one byte of its file, and a text
        // resource line is read in pieces of at most 1023.
        for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot)
            EXPECT_LT(pMgr->GetLoadedAmountBySlot(nSlot), 4096) << nSlot;
        for (unsigned nId : {0u, 1u, 5u, 9u})
            EXPECT_LE(std::strlen(pMgr->GetStrRes(nId)), 1023u) << nId;
        pMgr->ClearAll();
        DestroyClientDataMgr();
    }
}

TEST_F(FaultInjectionTest, MillionsOfRepeatedLinesLoadInLinearTime)
{
    // 256 Ki lines of the same sound event id: a later line replaces the text,
    // so one record remains. A loader quadratic in the line count would not
    // finish within the test's time.
    std::string strFile;
    for (int i = 0; i < (1 << 18); ++i)
        strFile += "7 a\n";
    WriteFile("ini/SoundEvent.ini", strFile + "7 last\n");
    const auto tStart = std::chrono::steady_clock::now();
    CClientDataMgr* pMgr = StartUp();
    const double dSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - tStart).count();
    EXPECT_EQ(pMgr->GetSoundEvent()->GetLoadedAmount(), 1u);
    EXPECT_STREQ(pMgr->GetSoundEvent()->GetSoundEventText(7), "last");
    EXPECT_LT(dSeconds, 120.0);  // linear takes a second or two even with sanitizers
}

TEST_F(FaultInjectionTest, StrResFromSeveralThreadsAnswersEveryCall)
{
    WriteFile("str.ini", "1=one\n2=two\n");
    CClientDataMgr* pMgr = Mgr();
    pMgr->LoadStrRes("str.ini");
    std::vector<std::thread> setThread;
    std::vector<int> setWrong(4, 0);
    for (int t = 0; t < 4; ++t)
        setThread.emplace_back([pMgr, t, &setWrong] {
            const char* kExpected[7] = {"", "one", "two", "", "", "", ""};  // hits 1 and 2, misses elsewhere
            for (unsigned i = 0; i < 20000; ++i) {
                const char* szText = pMgr->GetStrRes(i % 7);
                setWrong[t] += szText != nullptr && std::strcmp(szText, kExpected[i % 7]) == 0 ? 0 : 1;
            }
        });
    for (std::thread& thread : setThread)
        thread.join();
    EXPECT_EQ(setWrong, std::vector<int>(4, 0));
}

TEST_F(FaultInjectionTest, OverlongNamesAndTextsAreCutEverywhere)
{
    const std::string strLong(5000, 'L');
    const auto Keys = [&strLong](std::initializer_list<const char*> setKey) {
        std::string strSection;
        for (const char* szKey : setKey)
            strSection += std::string(szKey) + "=" + strLong + "\n";
        return strSection;
    };
    WriteFile("ini/ItemType.dat", "Amount=1\n" + ItemLine(1, strLong, 0, strLong));
    WriteFile("ini/Monster.dat", "[1]\n" + Keys({"Name", "DisappearEffect", "DisappearSound", "effect", "attackeffect",
                                                 "appeareffect", "DefyEffect"}));
    WriteFile("ini/Npc.ini", "[NpcType1]\n" + Keys({"Name", "Effect", "Note"}));
    WriteFile("ini/NewNpc.ini", "[NpcType1]\n" + Keys({"Name", "Effect", "Note"}));
    WriteFile("ini/BattleTutorial.ini", "[1]\nLineAmount=1\nLine1=Show_Tip_Window,1,2,3," + strLong + "\n");
    WriteFile("ini/SoundEvent.ini", "1 " + strLong + "\n");
    WriteFile("ini/FontSetting.ini", "GUIFontShadow=1\nGUIFontShadowColor=" + strLong + "\nChatFont=" + strLong + "\n");
    WriteFile("ini/Font.ini", "[FontList]\nAmount=1\n[Font1]\nName=" + strLong + "\nSize=" + strLong + "\n");
    WriteFile("str.ini", "1=" + strLong + "\n");
    CClientDataMgr* pMgr = StartUp();
    pMgr->LoadStrRes("str.ini");
    ExpectEveryRecordSound(pMgr);
    for (int nSlot : {9, 48, 150, 153, 154})
        EXPECT_EQ(pMgr->GetLoadedAmountBySlot(nSlot), 1) << nSlot;

    const char* szItemName = pMgr->GetItemType()->GetItemName(1);
    ASSERT_NE(szItemName, nullptr);
    EXPECT_EQ(std::strlen(szItemName), 255u);
    const TutorialCommand* pCommand = pMgr->GetBattleTutorial()->GetCommand(1, 0);
    ASSERT_NE(pCommand, nullptr);
    EXPECT_EQ(std::strlen(pCommand->szText), sizeof(pCommand->szText) - 1);
    // Texts of no fixed size are bounded by the line piece that holds them.
    ASSERT_NE(pMgr->GetSoundEvent()->GetSoundEventText(1), nullptr);
    EXPECT_EQ(std::strlen(pMgr->GetSoundEvent()->GetSoundEventText(1)), 2045u);  // 2047 less "1 "
    EXPECT_LT(std::strlen(pMgr->GetFontSetting()->GetChatFontFile()), 2048u);
    EXPECT_LT(std::strlen(pMgr->GetStrRes(1)), 1024u);  // a line is at most 1023 characters
}

}  // namespace
