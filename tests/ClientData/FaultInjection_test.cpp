// The data layer under hostile conditions: an unwritable log, files that
// vanish or change between the client's calls, a version callback that never
// gives the same answer, long reload cycles, files of random bytes for every
// table, very large files and texts longer than every buffer. Nothing may
// crash, leak or grow, and loading always goes on.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "ClientData/Catalogue.h"
#include "ClientData/ClientDataMgr.h"
#include "Support/TestSupport.h"
#include "ZelGameBase/ZelGameBase.h"

#if defined(__SANITIZE_ADDRESS__)
#define FAULT_HEAP_FROM_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FAULT_HEAP_FROM_ASAN 1
#endif
#endif
#if defined(FAULT_HEAP_FROM_ASAN)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#elif defined(__GLIBC__)
#include <malloc.h>
#endif

namespace {

namespace fs = std::filesystem;

// Bytes currently allocated on the heap; 0 where the platform cannot tell.
std::size_t HeapInUse()
{
#if defined(FAULT_HEAP_FROM_ASAN)
    return __sanitizer_get_current_allocated_bytes();
#elif defined(__GLIBC__)
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#else
    return 0;
#endif
}

// Where the manager reads a catalogue file of the standard data set.
std::string DataPathOf(const char* szFile)
{
    std::string strPath = szFile;
    std::replace(strPath.begin(), strPath.end(), '\\', '/');
    return strPath.find('/') == std::string::npos ? "ini/" + strPath : strPath;
}

// One "ItemType.dat" line: id, name, 52 numbers and the trailing text.
std::string ItemLine(int nId, const std::string& strName, const std::string& strText = "text")
{
    std::string strLine = std::to_string(nId) + " " + strName;
    for (int nColumn = 2; nColumn <= 53; ++nColumn)
        strLine += " " + std::to_string(nColumn);
    return strLine + " " + strText + "\n";
}

std::string ItemFile(std::initializer_list<int> setId)
{
    std::string strFile = "Amount=" + std::to_string(setId.size()) + "\n";
    for (int nId : setId)
        strFile += ItemLine(nId, "item" + std::to_string(nId));
    return strFile;
}

class FaultInjectionTest : public DataFolderTest {
protected:
    void TearDown() override
    {
        DestroyClientDataMgr();
        DataFolderTest::TearDown();
    }

    CClientDataMgr* Manager() { return static_cast<CClientDataMgr*>(QueryClientDataMgr()); }

    // The client's start-up sequence.
    CClientDataMgr* StartUp(VersionQueryFn fnVersion = nullptr)
    {
        CClientDataMgr* pMgr = Manager();
        pMgr->SetVersionQuery(fnVersion);
        pMgr->LoadDeferList();
        pMgr->ReloadDeferred(false);
        pMgr->ReloadDeferred(true);
        return pMgr;
    }

    static std::size_t ItemAmount(CClientDataMgr* pMgr) { return pMgr->GetItemType()->GetLoadedAmount(); }
};

// --- the debug log cannot be written -------------------------------------

enum class LogFault { FileInPlaceOfFolder, LogPathIsFolder, ReadOnlyFolder };

TEST_F(FaultInjectionTest, UnwritableLogDropsEntriesAndLoadingGoesOn)
{
    for (LogFault eFault : {LogFault::FileInPlaceOfFolder, LogFault::LogPathIsFolder, LogFault::ReadOnlyFolder}) {
        SCOPED_TRACE(static_cast<int>(eFault));
        fs::remove_all("debug");
        bool bWritable = false;
        switch (eFault) {
        case LogFault::FileInPlaceOfFolder:
            WriteFile("debug", "not a folder");
            break;
        case LogFault::LogPathIsFolder:
            fs::create_directories("debug/2011_3_7.log");
            break;
        case LogFault::ReadOnlyFolder:
            fs::create_directories("debug");
            fs::permissions("debug", fs::perms::owner_read | fs::perms::owner_exec);
            // A privileged user writes anyway; then only "goes on" is checked.
            bWritable = static_cast<bool>(std::ofstream("debug/probe"));
            break;
        }
        WriteFile("ini/ItemType.dat", ItemFile({1001, 1002}));
        fs::remove("ini/Monster.dat");  // a missing file: the table logs it
        CClientDataMgr* pMgr = StartUp();
        LogSave("%s", "an entry nobody can keep");

        EXPECT_EQ(ItemAmount(pMgr), 2u);
        EXPECT_EQ(pMgr->GetMonster()->GetLoadedAmount(), 0u);
        if (!bWritable) {
            EXPECT_FALSE(fs::is_regular_file("debug/2011_3_7.log"));
        }
        DestroyClientDataMgr();
        fs::permissions("debug", fs::perms::owner_all, fs::perm_options::add);
    }
}

// --- files vanish or change between the client's calls ----------------------

TEST_F(FaultInjectionTest, FilesVanishingAfterTheDeferListLeaveTablesEmpty)
{
    WriteFile("DeferList.dat", "ItemType.dat\nMonster.dat\n");
    WriteFile("ini/ItemType.dat", ItemFile({1, 2, 3}));
    WriteFile("ini/Monster.dat", "[7]\nName=Wolf\n");
    CClientDataMgr* pMgr = Manager();
    pMgr->LoadDeferList();
    pMgr->ReloadDeferred(true);
    ASSERT_EQ(ItemAmount(pMgr), 3u);

    fs::remove("DeferList.dat");
    fs::remove_all("ini");
    pMgr->LoadDeferList();  // nothing to read: the marks stay
    pMgr->ReloadDeferred(false);
    pMgr->ReloadDeferred(true);
    EXPECT_TRUE(pMgr->GetItemType()->IsDefer());
    EXPECT_EQ(ItemAmount(pMgr), 0u);
    EXPECT_EQ(pMgr->GetMonster()->GetMonsterType(7), nullptr);
}

TEST_F(FaultInjectionTest, FilesChangingBetweenReloadsGiveTheNewContentOnly)
{
    WriteFile("DeferList.dat", "ItemType.dat\n");
    WriteFile("ini/ItemType.dat", ItemFile({1, 2, 3}));
    CClientDataMgr* pMgr = StartUp();
    ASSERT_NE(pMgr->GetItemType()->FindItemType(3), nullptr);

    // Shorter, longer, truncated mid-line, empty, then a folder in its place.
    const std::string setContent[] = {ItemFile({4}), ItemFile({5, 6, 7, 8, 9}),
                                      ItemFile({10, 11}).substr(0, 20), "", "<folder>"};
    const std::size_t nExpected[] = {1, 5, 1, 0, 0};  // the cut line still holds an id
    for (std::size_t i = 0; i < std::size(setContent); ++i) {
        fs::remove_all("ini/ItemType.dat");
        if (setContent[i] == "<folder>")
            fs::create_directories("ini/ItemType.dat");
        else
            WriteFile("ini/ItemType.dat", setContent[i]);
        pMgr->ReloadDeferred(true);
        EXPECT_EQ(ItemAmount(pMgr), nExpected[i]) << i;
        EXPECT_EQ(pMgr->GetItemType()->FindItemType(3), nullptr) << i;
    }
}

// --- a version callback that changes its answer on every call --------------

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

// --- long reload cycles: no leak, no growth ---------------------------------

TEST_F(FaultInjectionTest, ThousandReloadAndClearCyclesDoNotGrow)
{
    WriteFile("DeferList.dat", "ItemType.dat\nMonster.dat\nNewNpc.ini\nMagicType.ini\n");
    WriteFile("ini/ItemType.dat", ItemFile({1, 2, 3, 4}));
    WriteFile("ini/Monster.dat", "[7]\nName=Wolf\n[8]\nName=Bear\n");
    WriteFile("ini/NewNpc.ini", "[NpcType300]\nName=Guard\nNote=Stands\n");
    WriteFile("ini/MagicTypeEx.ini", "[1]\nXpAddition=1\n");
    CClientDataMgr* pMgr = StartUp();
    const auto Cycle = [pMgr] {
        pMgr->ReloadDeferred(true);
        pMgr->GetStrRes(12345);  // the miss path
        pMgr->ClearAll();
    };
    for (int i = 0; i < 50; ++i)  // warm-up: containers reach their steady size
        Cycle();
    const std::size_t nHeapBefore = HeapInUse();
    for (int i = 0; i < 1000; ++i) {
        pMgr->ReloadDeferred(true);
        ASSERT_EQ(ItemAmount(pMgr), 4u) << i;
        ASSERT_EQ(pMgr->GetMonster()->GetLoadedAmount(), 2u) << i;
        pMgr->ClearAll();
        ASSERT_EQ(ItemAmount(pMgr), 0u) << i;
    }
    const std::size_t nHeapAfter = HeapInUse();
    // A leak of even one small block per cycle would show as 1000 blocks.
    EXPECT_LT(nHeapAfter, nHeapBefore + 16 * 1024) << nHeapBefore << " -> " << nHeapAfter;
}

// --- random bytes for every table -------------------------------------------

// Writes every catalogue file (and "DeferList.dat") filled with nSize-bounded
// random bytes: raw bytes, or bytes drawn from the formats' punctuation,
// digits and letters, which reach far deeper into the loaders.
void WriteRandomDataFolder(uint32_t nSeed, bool bFormatBytes)
{
    static const char kAlphabet[] = "[]=\n\r\n ,;-0123456789 ./\tabcxyzNameTypeAmount\xA1\xEF";
    std::mt19937 random(nSeed);
    const auto RandomFile = [&] {
        std::string strContent(random() % 4096, '\0');
        for (char& c : strContent)
            c = bFormatBytes ? kAlphabet[random() % (sizeof(kAlphabet) - 1)] : static_cast<char>(random());
        return strContent;
    };
    for (const CatalogueEntry& entry : kCatalogue) {
        const fs::path path = DataPathOf(entry.szFile);
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << RandomFile();
    }
    std::ofstream("DeferList.dat", std::ios::binary) << RandomFile();
    std::ofstream("ini/MagicTypeEx.ini", std::ios::binary) << RandomFile();
    std::ofstream("ini/MonsterActionType.ini", std::ios::binary) << RandomFile();
    std::ofstream("ini/Font.ini", std::ios::binary) << RandomFile();
    std::ofstream("str.ini", std::ios::binary) << RandomFile();
}

TEST_F(FaultInjectionTest, RandomBytesForEveryTableLoadWithoutHarm)
{
    for (uint32_t nSeed = 1; nSeed <= 4; ++nSeed) {
        SCOPED_TRACE(nSeed);
        WriteRandomDataFolder(nSeed, nSeed % 2 == 0);
        CClientDataMgr* pMgr = StartUp();
        pMgr->LoadStrRes("str.ini");
        pMgr->LoadAll();  // a second Load over the first, as a client may do
        for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot)
            EXPECT_GE(pMgr->GetLoadedAmountBySlot(nSlot), 0) << nSlot;
        EXPECT_NE(pMgr->GetStrRes(1), nullptr);
        pMgr->ClearAll();
        DestroyClientDataMgr();
    }
}

// --- very large files -------------------------------------------------------
// The tests use 64 MiB files to keep the run short; nothing in the readers
// depends on the size beyond that, and CLIENTDATA_LARGE_FILE_MIB=1024 runs
// them on 1 GiB files. Memory is checked after the load: what the table
// keeps must stay within the file's size.

const std::size_t kLargeSize = [] {
    const char* szMiB = std::getenv("CLIENTDATA_LARGE_FILE_MIB");
    const long nMiB = szMiB != nullptr ? std::strtol(szMiB, nullptr, 10) : 0;
    return std::size_t(nMiB > 0 ? nMiB : 64) << 20;
}();

TEST_F(FaultInjectionTest, LargeColumnFileKeepsOnlyAnnouncedRecords)
{
    // Two announced records, the second with a very long name, then lines that
    // are never read.
    std::string strFile = "Amount=2\n" + ItemLine(1, "short") + ItemLine(2, std::string(kLargeSize, 'n'));
    strFile += ItemLine(3, "unread");
    WriteFile("ini/ItemType.dat", strFile);
    strFile.clear();
    strFile.shrink_to_fit();
    const std::size_t nHeapBefore = HeapInUse();
    CClientDataMgr* pMgr = StartUp();
    EXPECT_EQ(ItemAmount(pMgr), 2u);
    EXPECT_EQ(pMgr->GetItemType()->FindItemType(3), nullptr);
    const char* szName = pMgr->GetItemType()->GetItemName(2);
    EXPECT_TRUE(szName == nullptr || std::strlen(szName) < 256);
    EXPECT_LT(HeapInUse(), nHeapBefore + kLargeSize);
}

TEST_F(FaultInjectionTest, LargeIniValueIsCutToItsBuffer)
{
    std::string strFile = "[1]\nName=" + std::string(kLargeSize, 'w') + "\nDefyStatus=3\n[2]\nName=Bear\n";
    WriteFile("ini/Monster.dat", strFile);
    strFile.clear();
    strFile.shrink_to_fit();
    const std::size_t nHeapBefore = HeapInUse();
    CClientDataMgr* pMgr = StartUp();
    const MonsterTypeInfo* pInfo = pMgr->GetMonster()->GetMonsterType(1);
    ASSERT_NE(pInfo, nullptr);
    EXPECT_EQ(std::string(pInfo->szName), std::string(15, 'w'));
    ASSERT_NE(pMgr->GetMonster()->FindMonsterByName("Bear"), nullptr);
    EXPECT_LT(HeapInUse(), nHeapBefore + kLargeSize);
}

TEST_F(FaultInjectionTest, MillionsOfRepeatedLinesLoadInLinearTime)
{
    // 256 Ki lines of the same sound event id: a later line replaces the text,
    // so one record remains. A loader quadratic in the line count would not
    // finish within the test's time.
    std::string strFile;
    strFile.reserve(std::size_t(1) << 21);
    for (int i = 0; i < (1 << 18); ++i)
        strFile += "7 a\n";
    strFile += "7 last\n";
    WriteFile("ini/SoundEvent.ini", strFile);
    const auto tStart = std::chrono::steady_clock::now();
    CClientDataMgr* pMgr = StartUp();
    const double dSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - tStart).count();
    EXPECT_EQ(pMgr->GetSoundEvent()->GetLoadedAmount(), 1u);
    EXPECT_STREQ(pMgr->GetSoundEvent()->GetSoundEventText(7), "last");
    EXPECT_LT(dSeconds, 120.0);  // linear takes a second or two even with sanitizers
}

// --- the text-resource miss path from several threads ---------------------

TEST_F(FaultInjectionTest, StrResFromSeveralThreadsAnswersEveryCall)
{
    WriteFile("str.ini", "1=one\n2=two\n");
    CClientDataMgr* pMgr = Manager();
    pMgr->LoadStrRes("str.ini");
    std::vector<std::thread> setThread;
    std::vector<int> setWrong(4, 0);
    for (int t = 0; t < 4; ++t)
        setThread.emplace_back([pMgr, t, &setWrong] {
            for (unsigned i = 0; i < 20000; ++i) {
                const char* szText = pMgr->GetStrRes(i % 7);  // hits 1 and 2, misses elsewhere
                const bool bRight = i % 7 == 1 ? std::strcmp(szText, "one") == 0
                                  : i % 7 == 2 ? std::strcmp(szText, "two") == 0
                                               : szText != nullptr && szText[0] == '\0';
                setWrong[t] += bRight ? 0 : 1;
            }
        });
    for (std::thread& thread : setThread)
        thread.join();
    EXPECT_EQ(setWrong, std::vector<int>(4, 0));
}

// --- texts longer than every buffer -----------------------------------------

// Every text field of the records must come back terminated within its
// buffer.
template <std::size_t N>
void ExpectTerminated(const char (&szField)[N], const char* szWhat)
{
    EXPECT_NE(std::memchr(szField, 0, N), nullptr) << szWhat;
}

TEST_F(FaultInjectionTest, OverlongNamesAndTextsAreCutEverywhere)
{
    const std::string strLong(5000, 'L');
    WriteFile("ini/ItemType.dat", "Amount=1\n" + ItemLine(1, strLong, strLong));
    WriteFile("ini/Monster.dat", "[1]\nName=" + strLong + "\nDisappearEffect=" + strLong + "\nDisappearSound=" +
                                     strLong + "\neffect=" + strLong + "\nattackeffect=" + strLong +
                                     "\nappeareffect=" + strLong + "\nDefyEffect=" + strLong + "\n");
    WriteFile("ini/Npc.ini", "[NpcType1]\nName=" + strLong + "\nEffect=" + strLong + "\nNote=" + strLong + "\n");
    WriteFile("ini/NewNpc.ini", "[NpcType1]\nName=" + strLong + "\nEffect=" + strLong + "\nNote=" + strLong + "\n");
    WriteFile("ini/BattleTutorial.ini", "[1]\nLineAmount=1\nLine1=Show_Tip_Window,1,2,3," + strLong + "\n");
    WriteFile("ini/SoundEvent.ini", "1 " + strLong + "\n");
    WriteFile("ini/FontSetting.ini", "GUIFontShadow=1\nGUIFontShadowColor=" + strLong + "\nChatFont=" + strLong + "\n");
    WriteFile("ini/Font.ini", "[FontList]\nAmount=1\n[Font1]\nName=" + strLong + "\nSize=" + strLong + "\n");
    WriteFile("str.ini", "1=" + strLong + "\n");
    CClientDataMgr* pMgr = StartUp();
    pMgr->LoadStrRes("str.ini");

    const ItemTypeInfo* pItem = pMgr->GetItemType()->FindItemType(1);
    ASSERT_NE(pItem, nullptr);
    ExpectTerminated(pItem->szText, "item text");
    const char* szItemName = pMgr->GetItemType()->GetItemName(1);
    EXPECT_TRUE(szItemName == nullptr || std::strlen(szItemName) < 256);

    const MonsterTypeInfo* pMonster = pMgr->GetMonster()->GetMonsterType(1);
    ASSERT_NE(pMonster, nullptr);
    for (const auto* pField : {&pMonster->szDisappearEffect, &pMonster->szDisappearSound, &pMonster->szEffect,
                               &pMonster->szAttackEffect, &pMonster->szAppearEffect, &pMonster->szDefyEffect})
        ExpectTerminated(*pField, "monster effect");
    ExpectTerminated(pMonster->szName, "monster name");

    const NpcTypeInfo* pNpc = pMgr->GetNpc()->GetNpcType(1);
    ASSERT_NE(pNpc, nullptr);
    ExpectTerminated(pNpc->szName, "npc name");
    ExpectTerminated(pNpc->szEffect, "npc effect");
    ExpectTerminated(pNpc->szNote, "npc note");
    const NpcTypeInfoEx* pNewNpc = pMgr->GetNewNpc()->GetNpcType(1);
    ASSERT_NE(pNewNpc, nullptr);
    ExpectTerminated(pNewNpc->szName, "new npc name");
    ExpectTerminated(pNewNpc->szEffect, "new npc effect");
    ExpectTerminated(pNewNpc->szNote, "new npc note");

    const TutorialCommand* pCommand = pMgr->GetBattleTutorial()->GetCommand(1, 0);
    ASSERT_NE(pCommand, nullptr);
    ExpectTerminated(pCommand->szText, "tutorial text");

    EXPECT_NE(pMgr->GetSoundEvent()->GetSoundEventText(1), nullptr);
    EXPECT_NE(pMgr->GetFontSetting()->GetChatFontFile(), nullptr);
    EXPECT_LT(std::strlen(pMgr->GetStrRes(1)), 1024u);  // a line is at most 1023 characters
}

}  // namespace
