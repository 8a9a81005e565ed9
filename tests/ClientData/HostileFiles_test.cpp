// Data files that are no regular files, that never end, that are huge or
// that change between their open and their read. Whatever stands in a data
// file's place, loading must end in bounded time and memory, with the outcome
// and the debug-log lines of a file that cannot be read.
//
// Each load that could hang runs in a child process watched by the test: a
// child that outlives its time or outgrows its memory ceiling is killed and
// the case fails, instead of the whole run hanging or the machine running out
// of memory.
//
// CLIENTDATA_HOSTILE_CYCLES (default 1000) and CLIENTDATA_LARGE_FILE_MIB
// (default 64) set the length of the long cases; both print their figures.
// scripts/run-hostile.sh runs them at 10,000 cycles and 1 GiB.
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "ClientData/Catalogue.h"
#include "Support/TableSupport.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

long ResidentKiB(pid_t pid)
{
    std::ifstream statm("/proc/" + std::to_string(pid) + "/statm");
    long nSize = 0, nResident = 0;
    statm >> nSize >> nResident;
    return nResident * (sysconf(_SC_PAGESIZE) / 1024);
}

int OpenDescriptors()
{
    int nCount = 0;
    for (auto it = fs::directory_iterator("/proc/self/fd"); it != fs::directory_iterator(); ++it)
        ++nCount;
    return nCount - 1;  // the iterator's own
}

long EnvNumber(const char* szName, long nDefault)
{
    const char* szValue = std::getenv(szName);
    const long nValue = szValue != nullptr ? std::strtol(szValue, nullptr, 10) : 0;
    return nValue > 0 ? nValue : nDefault;
}

// What a child process did: its answer (the text its function returned),
// whether it ended by itself, its resident memory at its start (what it
// shares with the test) and at its peak, and its time.
struct ChildRun {
    bool bEnded = false;
    std::string strWhy;  // why it was stopped
    std::string strAnswer;
    long nStartKiB = 0;
    long nPeakKiB = 0;
    double dSeconds = 0;
};

// Runs fn in a child process and watches it: killed after nSeconds or when
// its resident memory passes nCeilingMiB.
ChildRun RunInChild(const std::function<std::string()>& fn, int nSeconds, long nCeilingMiB = 2048)
{
    const std::string strAnswerFile = fs::absolute("child-answer.txt").string();
    fs::remove(strAnswerFile);
    std::fflush(nullptr);
    const auto tStart = Clock::now();
    const pid_t pid = fork();
    if (pid == 0) {
        const long nStartKiB = ResidentKiB(getpid());
        const std::string strAnswer = fn();
        std::ofstream(strAnswerFile, std::ios::binary) << nStartKiB << "\n" << strAnswer;
        _exit(0);
    }
    ChildRun run;
    int nStatus = 0;
    struct rusage usage {};
    while (wait4(pid, &nStatus, WNOHANG, &usage) == 0) {
        if (std::chrono::duration<double>(Clock::now() - tStart).count() > nSeconds)
            run.strWhy = "still running after " + std::to_string(nSeconds) + " s";
        else if (ResidentKiB(pid) > nCeilingMiB * 1024)
            run.strWhy = "resident memory above " + std::to_string(nCeilingMiB) + " MiB";
        if (!run.strWhy.empty()) {
            kill(pid, SIGKILL);
            wait4(pid, &nStatus, 0, &usage);
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    run.dSeconds = std::chrono::duration<double>(Clock::now() - tStart).count();
    run.nPeakKiB = usage.ru_maxrss;
    run.bEnded = run.strWhy.empty() && WIFEXITED(nStatus) && WEXITSTATUS(nStatus) == 0;
    if (run.strWhy.empty() && !run.bEnded)
        run.strWhy = "ended abnormally, status " + std::to_string(nStatus);
    run.strAnswer = ReadWholeFile(strAnswerFile);
    const std::size_t nLineEnd = run.strAnswer.find('\n');
    if (nLineEnd != std::string::npos) {
        run.nStartKiB = std::strtol(run.strAnswer.c_str(), nullptr, 10);
        run.strAnswer.erase(0, nLineEnd + 1);
    }
    return run;
}

const char kFontSetting[] =
    "GUIFontShadow=1\nGUIFontShadowColor=404040\nChatFont=chat.ttf\nChatFontSize=14\n"
    "Antialias=0\nTipFontShadow=1\nTipFontShadowColor=80404040\n";
const char kFontIni[] = "[FontList]\nAmount=1\n[Font1]\nName=SimSun\nSize=12\n";

// The default font name through its slot, into an empty string's storage.
std::string DefaultFontName(CFontSetting* pFont)
{
    CZelString strName;
    pFont->GetDefaultFontName(&strName);
    return static_cast<const char*>(strName);
}

// Something put in a data file's place.
enum Intruder { FIFO, ZERO_DEVICE, RANDOM_DEVICE, FOLDER, SOCKET, UNREADABLE };
const char* const kIntruderName[] = {"FIFO", "/dev/zero", "/dev/urandom", "folder", "socket", "unreadable file"};

void PutInPlace(const std::string& strPath, Intruder intruder)
{
    fs::remove_all(strPath);
    switch (intruder) {
        case FIFO:
            ASSERT_EQ(mkfifo(strPath.c_str(), 0666), 0);
            break;
        case ZERO_DEVICE:
        case RANDOM_DEVICE:
            fs::create_symlink(intruder == ZERO_DEVICE ? "/dev/zero" : "/dev/urandom", strPath);
            break;
        case FOLDER:
            fs::create_directories(strPath);
            break;
        case SOCKET: {
            const int fd = socket(AF_UNIX, SOCK_STREAM, 0);
            sockaddr_un address{};
            address.sun_family = AF_UNIX;
            std::snprintf(address.sun_path, sizeof(address.sun_path), "%s", strPath.c_str());
            ASSERT_EQ(bind(fd, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
            close(fd);
            break;
        }
        case UNREADABLE:
            std::ofstream(strPath) << "[1]\n";
            fs::permissions(strPath, fs::perms::none);
            break;
    }
}

class HostileFilesTest : public ManagerTest {
protected:
    void SetUp() override
    {
        ManagerTest::SetUp();
        WriteFile("DeferList.dat", "ItemType.dat\n");
        WriteFile("ini/ItemType.dat", "Amount=2\n" + ItemLine(1001, "sword") + ItemLine(1002, "shield"));
        WriteFile("ini/Monster.dat", "[7]\nName=Wolf\n[8]\nName=Bear\n");
        WriteFile("ini/monsterspeak.ini", "[7]\nAttackAmount=1\nAttack0=Grr\n");
        WriteFile("ini/FontSetting.ini", kFontSetting);
        WriteFile("ini/Font.ini", kFontIni);
        WriteFile("ini/Common.ini",
                  "[Playerface]\nMaleFaceAmount=3\nFemaleFaceAmount=4\n[EmblemAmount]\nEmblemAmount=5\n[Statuary]\n"
                  "LeaderScale=6\nLeaderMaxLife=7\nAssistantScale=8\nAssistantMaxLife=9\nSubLeaderScale=10\n"
                  "SubLeaderMaxLife=11\n");
        WriteFile("ini/ItemAddition.ini", "[1]\nLevel=2\n");
        WriteFile("ini/MagicTypeEx.ini", "[1]\nXpAddition=1\n");
        WriteFile("ini/NewNpc.ini", "[NpcType300]\nName=Guard\n");
        WriteFile("ini/SoundEvent.ini", "7 step\n");
        WriteFile("str.ini", "1=one\n2=two\n");
    }

    void TearDown() override
    {
        PlatformSetFileOpenHook(nullptr, nullptr);
        ManagerTest::TearDown();
    }

    // The client's start-up and the text resources.
    static CClientDataMgr* StartUpWithTexts()
    {
        CClientDataMgr* pMgr = StartUp();
        pMgr->LoadStrRes("str.ini");
        return pMgr;
    }

    // Everything a start-up left to see: the records of every table, the
    // font and text-resource answers, the marks and the debug log.
    std::string LoadOutcome()
    {
        fs::remove_all("debug");
        CClientDataMgr* pMgr = StartUpWithTexts();
        std::string strOutcome = "records:";
        for (int nSlot = kFirstTableSlot; nSlot <= kLastTableSlot; ++nSlot)
            strOutcome += " " + std::to_string(pMgr->GetLoadedAmountBySlot(nSlot));
        CFontSetting* pFont = pMgr->GetFontSetting();
        strOutcome += "\nfont: " + DefaultFontName(pFont) + " " + std::to_string(pFont->GetDefaultFontValue()) + " " +
                      pFont->GetChatFontFile() + " " + std::to_string(pFont->GetChatFontSize());
        strOutcome += "\nface: " + std::to_string(pMgr->GetCommonIni()->GetMaleFaceAmount()) + " " +
                      std::to_string(pMgr->GetCommonIni()->GetSubLeaderMaxLife());
        strOutcome += "\ntexts: " + std::string(pMgr->GetStrRes(1)) + "/" + pMgr->GetStrRes(2);
        strOutcome += "\nmarked: " + std::to_string(pMgr->GetItemType()->IsDefer());
        strOutcome += "\nlog:\n" + LogText();
        DestroyClientDataMgr();
        return strOutcome;
    }
};

// Every file of the tables with loaders of their own, the lists, the
// further files of the font and magic tables and one generic table.
std::vector<std::string> DataFiles()
{
    std::vector<std::string> setFile = {"DeferList.dat",       "str.ini",      "ini/MonsterActionType.ini",
                                        "ini/MagicTypeEx.ini", "ini/Font.ini", "ini/ItemAddition.ini"};
    for (const CatalogueEntry& entry : kCatalogue)
        if (!entry.bGeneric)
            setFile.push_back(CatalogueDataPath(entry.szFile));
    return setFile;
}

// A privileged process reads every file, so the children load as an
// ordinary user, in a folder that lets that user write the debug log.
TEST_F(HostileFilesTest, NothingButARegularFileLoadsAndTheRestLoadsAsAFileThatCannotBeRead)
{
    if (geteuid() == 0) {
        chmod(".", 0777);
        for (const auto& entry : fs::recursive_directory_iterator("."))
            if (!entry.is_symlink())
                chmod(entry.path().c_str(), entry.is_directory() ? 0777 : 0666);
    }
    const auto LoadAsUser = [this] {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            return std::string("could not drop privileges");
        return LoadOutcome();
    };
    for (const std::string& strFile : DataFiles()) {
        const char* szFile = strFile.c_str();
        const bool bExisted = fs::exists(szFile);
        const std::string strContent = ReadWholeFile(szFile);
        fs::remove(szFile);
        const ChildRun missing = RunInChild(LoadAsUser, 60);
        ASSERT_TRUE(missing.bEnded) << szFile << ": " << missing.strWhy;
        ASSERT_EQ(missing.strAnswer.rfind("records:", 0), 0u) << missing.strAnswer;
        for (const Intruder intruder : {FIFO, ZERO_DEVICE, RANDOM_DEVICE, FOLDER, SOCKET, UNREADABLE}) {
            PutInPlace(szFile, intruder);
            const ChildRun run = RunInChild(LoadAsUser, 20, 1024);
            EXPECT_TRUE(run.bEnded) << szFile << " as " << kIntruderName[intruder] << ": " << run.strWhy;
            EXPECT_EQ(run.strAnswer, missing.strAnswer) << szFile << " as " << kIntruderName[intruder];
        }
        fs::remove_all(szFile);
        if (bExisted)
            WriteFile(szFile, strContent);
    }
}

struct FileChange {
    std::string strPath;
    std::function<void()> change;
};

void ChangeOnOpen(const char* szPath, void* pContext)
{
    auto* pChange = static_cast<FileChange*>(pContext);
    if (pChange->change && fs::path(szPath).lexically_normal() == fs::path(pChange->strPath).lexically_normal()) {
        const auto change = std::move(pChange->change);
        pChange->change = nullptr;
        change();
    }
}

TEST_F(HostileFilesTest, FilesGrowingShrinkingOrVanishingAfterOpenAreReadAsOpened)
{
    const auto Items = [](CClientDataMgr* pMgr) { return std::to_string(pMgr->GetItemType()->GetLoadedAmount()); };
    const auto Monsters = [](CClientDataMgr* pMgr) { return std::to_string(pMgr->GetMonster()->GetLoadedAmount()); };
    const auto Texts = [](CClientDataMgr* pMgr) {
        return std::string(pMgr->GetStrRes(1)) + "/" + pMgr->GetStrRes(2) + "/" + pMgr->GetStrRes(3);
    };
    const auto Font = [](CClientDataMgr* pMgr) {
        return DefaultFontName(pMgr->GetFontSetting()) + " " +
               std::to_string(pMgr->GetFontSetting()->GetDefaultFontValue());
    };
    // Files read whole lose nothing when they grow, and fail as unreadable
    // when they shrink (a part of a file is no image of it); streamed files
    // read what is left. A file removed after its open reads whole; the font
    // list, which is opened once for each value, then loses the later ones.
    const struct {
        const char* szFile;
        std::function<std::string(CClientDataMgr*)> probe;
        const char* szExpected[3];  // grown, shrunk, vanished
    } kCases[] = {
        {"ini/ItemType.dat", Items, {"2", "0", "2"}},
        {"ini/Monster.dat", Monsters, {"2", "0", "2"}},
        {"str.ini", Texts, {"one/two/", "one//", "one/two/"}},
        {"ini/Font.ini", Font, {"SimSun 12", " 0", " 0"}},
    };
    for (const auto& c : kCases) {
        const std::string strContent = ReadWholeFile(c.szFile);
        const std::function<void()> kChanges[] = {
            [&] {
                std::ofstream(c.szFile, std::ios::app) << "\n3=three\n" << ItemLine(1003, "axe") << "[9]\nName=Fox\n";
            },
            [&] { fs::resize_file(c.szFile, c.szFile == std::string("str.ini") ? 8 : strContent.size() / 2); },
            [&] { fs::remove(c.szFile); },
        };
        for (int i = 0; i < 3; ++i) {
            WriteFile(c.szFile, strContent);
            FileChange change{c.szFile, kChanges[i]};
            PlatformSetFileOpenHook(ChangeOnOpen, &change);
            CClientDataMgr* pMgr = StartUpWithTexts();
            PlatformSetFileOpenHook(nullptr, nullptr);
            EXPECT_EQ(c.probe(pMgr), c.szExpected[i]) << c.szFile << " change " << i;
            EXPECT_FALSE(change.change) << c.szFile << " was never opened";
            DestroyClientDataMgr();
        }
        WriteFile(c.szFile, strContent);
    }
    EXPECT_NE(LogText().find("error on open ItemType.dat."), std::string::npos);
    EXPECT_NE(LogText().find("error on open Monster.dat."), std::string::npos);
}

TEST_F(HostileFilesTest, SparseFilesBeyondFourGiBKeepTheirSettings)
{
    // The settings stand at the start; the rest is a hole of zero bytes.
    const uint64_t kSize = (uint64_t(4) << 30) + (1 << 20);
    for (const char* szFile : {"ini/Font.ini", "ini/FontSetting.ini"}) {
        std::error_code error;
        fs::resize_file(szFile, kSize, error);
        struct stat info {};
        if (error || stat(szFile, &info) != 0 || uint64_t(info.st_size) != kSize ||
            uint64_t(info.st_blocks) * 512 > (uint64_t(64) << 20))
            GTEST_SKIP() << "the file system cannot make a sparse file of " << kSize << " bytes here";
    }
    const ChildRun run = RunInChild([this] { return LoadOutcome(); }, 60, 512);
    ASSERT_TRUE(run.bEnded) << run.strWhy;
    EXPECT_NE(run.strAnswer.find("font: SimSun 12 chat.ttf 14\n"), std::string::npos) << run.strAnswer;
}

TEST_F(HostileFilesTest, ADebugLogThatIsAFifoIsNotWritten)
{
    // The log names its file by the date; a FIFO of that name, held open by
    // a process that never reads it, would take 64 KiB and then block every
    // further entry.
    LogSetClock([] { return LocalTime{2020, 1, 2, 3, 4, 5, 4}; });
    fs::create_directories("debug");
    ASSERT_EQ(mkfifo("debug/2020_1_2.log", 0666), 0);
    const int fdHolder = open("debug/2020_1_2.log", O_RDWR | O_NONBLOCK);
    ASSERT_GE(fdHolder, 0);
    const ChildRun run = RunInChild(
        [] {
            const std::string strLong(500, 'x');
            for (int i = 0; i < 1000; ++i)
                LogSave("entry %d %s", i, strLong.c_str());
            return std::string("logged");
        },
        20);
    close(fdHolder);
    EXPECT_TRUE(run.bEnded) << run.strWhy;
    EXPECT_EQ(run.strAnswer, "logged");
}

TEST_F(HostileFilesTest, CreateLoadDestroyCyclesKeepMemoryAndDescriptorsFlat)
{
    const long nCycles = EnvNumber("CLIENTDATA_HOSTILE_CYCLES", 1000);
    const long nWarmUp = nCycles / 20;
    int nDescriptorsBefore = 0;
    std::size_t nHeapBefore = 0;
    // Resident memory after the warm-up, half-way and at the end: a build
    // with a sanitizer holds freed blocks in its quarantine until that is
    // full, so only the second half shows whether it stays flat there.
    long setResident[3] = {};
    const auto tStart = Clock::now();
    for (long i = 0; i < nCycles; ++i) {
        if (i == nWarmUp) {
            nDescriptorsBefore = OpenDescriptors();
            nHeapBefore = HeapInUse();
            setResident[0] = ResidentKiB(getpid());
        }
        if (i == nCycles / 2)
            setResident[1] = ResidentKiB(getpid());
        // A whole start-up, a second reload of every table, the text
        // resources' miss path and ClearAll: a leak of even one small block
        // in any of them would show as a thousand blocks.
        CClientDataMgr* pMgr = StartUpWithTexts();
        pMgr->ReloadDeferred(false);
        pMgr->ReloadDeferred(true);
        ASSERT_EQ(pMgr->GetItemType()->GetLoadedAmount(), 2u) << i;
        pMgr->GetStrRes(12345);
        pMgr->ClearAll();
        ASSERT_EQ(pMgr->GetItemType()->GetLoadedAmount(), 0u) << i;
        DestroyClientDataMgr();
    }
    const double dSeconds = std::chrono::duration<double>(Clock::now() - tStart).count();
    const int nDescriptorsAfter = OpenDescriptors();
    const std::size_t nHeapAfter = HeapInUse();
    setResident[2] = ResidentKiB(getpid());
    std::printf(
        "[figures] %ld create/load/destroy cycles in %.1f s: resident %ld -> %ld -> %ld KiB (after %ld, %ld, %ld "
        "cycles), heap in use %zu -> %zu bytes, open descriptors %d -> %d\n",
        nCycles, dSeconds, setResident[0], setResident[1], setResident[2], nWarmUp, nCycles / 2, nCycles, nHeapBefore,
        nHeapAfter, nDescriptorsBefore, nDescriptorsAfter);
    EXPECT_EQ(nDescriptorsAfter, nDescriptorsBefore);
    EXPECT_LT(nHeapAfter, nHeapBefore + 16 * 1024);
}

TEST_F(HostileFilesTest, LargeFilesLoadInBoundedMemory)
{
    const uint64_t nMiB = static_cast<uint64_t>(EnvNumber("CLIENTDATA_LARGE_FILE_MIB", 64));
    const uint64_t nSize = nMiB << 20;
    // Each file holds nSize bytes that the table reads through to its usual
    // content, reads past or keeps only in part.
    const auto Filler = [nSize](const std::string& strLine) {
        std::string strText;
        strText.reserve(nSize + strLine.size());
        while (strText.size() < nSize)
            strText += strLine;
        return strText;
    };
    const struct {
        const char* szFile;
        std::function<std::string()> content;
        bool bStreamed;  // read through one buffer: memory independent of the size
    } kCases[] = {
        {"ini/Font.ini", [&] { return Filler("; a comment before the font list\n") + kFontIni; }, true},
        {"ini/FontSetting.ini", [&] { return Filler("; a comment before the settings\n") + kFontSetting; }, true},
        {"str.ini", [&] { return Filler("12=a text resource line\n"); }, true},
        {"ini/Monster.dat", [&] { return "[7]\nName=" + Filler("w") + "\n[8]\nName=Bear\n"; }, false},
        {"ini/ItemType.dat", [&] { return "Amount=2\n" + ItemLine(1, "a") + ItemLine(2, Filler("n")); }, false},
    };
    for (const auto& c : kCases) {
        const std::string strContent = ReadWholeFile(c.szFile);
        WriteFile(c.szFile, c.content());
        const double dMiB = static_cast<double>(fs::file_size(c.szFile)) / (1 << 20);
        const ChildRun run = RunInChild([this] { return LoadOutcome(); }, 600, 8 * static_cast<long>(nMiB) + 1024);
        EXPECT_TRUE(run.bEnded) << c.szFile << ": " << run.strWhy;
        // What the load added to the resident memory the child started with.
        const long nGrowthKiB = run.nPeakKiB - run.nStartKiB;
        std::printf("[figures] %-20s %7.1f MiB: peak resident %6ld MiB, %+6ld MiB during the load, %.2f ms/MiB\n",
                    c.szFile, dMiB, run.nPeakKiB / 1024, nGrowthKiB / 1024, 1000 * run.dSeconds / dMiB);
        if (c.bStreamed)
            EXPECT_LT(nGrowthKiB, 64 * 1024) << c.szFile;
        else  // the image and what the table keeps of it
            EXPECT_LT(nGrowthKiB, static_cast<long>(3 * nSize / 1024 + 64 * 1024)) << c.szFile;
        EXPECT_NE(run.strAnswer.find("font: SimSun 12 chat.ttf 14"), std::string::npos) << c.szFile;
        WriteFile(c.szFile, strContent);
    }
}

}  // namespace
