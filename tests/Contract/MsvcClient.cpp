// A client built as the real one is: Microsoft's C++ ABI (clang for the
// *-windows-msvc targets), no C runtime, Win32 declared by hand, the
// interfaces as plain abstract classes in slot order and the client
// library's string and array by their layouts. Nothing of the library's own
// headers is used. It writes a small data folder into the working directory,
// loads ClientData.dll as the client does, and checks every slot that passes
// a string or an array: slot 6 returning a string by value, the font name
// returned as a foundation string by value, the speech and tutorial records,
// and the learnable and category out-arrays, which the library must grow and
// free by the client's heap rule. Everything received is freed by the
// client's rules and the process heap is validated at the end.
//
// Exit status 0 when every check passed.
#include <stddef.h>
#include <stdint.h>

extern "C" {
__declspec(dllimport) void* __stdcall LoadLibraryA(const char* szName);
__declspec(dllimport) void* __stdcall GetProcAddress(void* hModule, const char* szName);
__declspec(dllimport) void* __stdcall GetProcessHeap();
__declspec(dllimport) void* __stdcall HeapAlloc(void* hHeap, unsigned long nFlags, size_t nBytes);
__declspec(dllimport) int __stdcall HeapFree(void* hHeap, unsigned long nFlags, void* pBlock);
__declspec(dllimport) int __stdcall HeapValidate(void* hHeap, unsigned long nFlags, const void* pBlock);
__declspec(dllimport) void* __stdcall GetStdHandle(unsigned long nWhich);
__declspec(dllimport) int __stdcall WriteFile(void* hFile, const void* pData, unsigned long nBytes,
                                              unsigned long* pWritten, void* pOverlapped);
__declspec(dllimport) void* __stdcall CreateFileA(const char* szPath, unsigned long nAccess, unsigned long nShare,
                                                  void* pSecurity, unsigned long nDisposition, unsigned long nFlags,
                                                  void* hTemplate);
__declspec(dllimport) int __stdcall CloseHandle(void* hObject);
__declspec(dllimport) int __stdcall CreateDirectoryA(const char* szPath, void* pSecurity);
__declspec(dllimport) void __stdcall ExitProcess(unsigned nCode);

// The compiler may call these for block copies and fills.
void* memset(void* pDest, int nValue, size_t nBytes)
{
    volatile unsigned char* p = static_cast<unsigned char*>(pDest);
    while (nBytes-- != 0) *p++ = static_cast<unsigned char>(nValue);
    return pDest;
}
void* memcpy(void* pDest, const void* pSource, size_t nBytes)
{
    volatile unsigned char* p = static_cast<unsigned char*>(pDest);
    const unsigned char* q = static_cast<const unsigned char*>(pSource);
    while (nBytes-- != 0) *p++ = *q++;
    return pDest;
}
}

namespace {

const unsigned long kStdOutput = static_cast<unsigned long>(-11);
const unsigned long kGenericWrite = 0x40000000;
const unsigned long kCreateAlways = 2;
void* const kInvalidHandle = reinterpret_cast<void*>(static_cast<intptr_t>(-1));

size_t Length(const char* sz)
{
    size_t n = 0;
    while (sz[n] != '\0') ++n;
    return n;
}

bool Equal(const char* a, const char* b)
{
    while (*a != '\0' && *a == *b) ++a, ++b;
    return *a == *b;
}

void Print(const char* sz)
{
    unsigned long nWritten = 0;
    WriteFile(GetStdHandle(kStdOutput), sz, static_cast<unsigned long>(Length(sz)), &nWritten, nullptr);
}

void PrintNumber(int n)
{
    char szDigits[12];
    int i = 11;
    szDigits[i] = '\0';
    do {
        szDigits[--i] = static_cast<char>('0' + n % 10);
        n /= 10;
    } while (n != 0);
    Print(szDigits + i);
}

int g_nChecks = 0;
int g_nFailed = 0;

void Check(bool bOk, const char* szWhat)
{
    ++g_nChecks;
    if (!bOk)
        ++g_nFailed;
    Print(bOk ? "  ok    " : "  FAIL  ");
    Print(szWhat);
    Print("\n");
}

void WriteText(const char* szPath, const char* szText)
{
    void* hFile = CreateFileA(szPath, kGenericWrite, 0, nullptr, kCreateAlways, 0, nullptr);
    if (hFile == kInvalidHandle) {
        Check(false, szPath);
        return;
    }
    unsigned long nWritten = 0;
    WriteFile(hFile, szText, static_cast<unsigned long>(Length(szText)), &nWritten, nullptr);
    CloseHandle(hFile);
}

// The client library's memory rule: operator new and malloc take the process heap; a block of 4096 bytes or
// more is aligned to 32 with the address really allocated just below it.

const size_t kBigBlock = 4096;
const size_t kBigExtra = sizeof(void*) + 31;

void* Allocate(size_t nBytes)
{
    if (nBytes < kBigBlock)
        return HeapAlloc(GetProcessHeap(), 0, nBytes);
    const uintptr_t nContainer = reinterpret_cast<uintptr_t>(HeapAlloc(GetProcessHeap(), 0, nBytes + kBigExtra));
    if (nContainer == 0)
        return nullptr;
    const uintptr_t nUser = (nContainer + kBigExtra) & ~uintptr_t{31};
    reinterpret_cast<uintptr_t*>(nUser)[-1] = nContainer;
    return reinterpret_cast<void*>(nUser);
}

// The block really allocated under a block handed out, as the client's
// library finds it before freeing; null when the bookkeeping is not that of
// a big block.
void* BigBlockContainer(void* pBlock)
{
    const uintptr_t nUser = reinterpret_cast<uintptr_t>(pBlock);
    const uintptr_t nContainer = reinterpret_cast<uintptr_t*>(pBlock)[-1];
    const uintptr_t nShift = nUser - nContainer;
    if (nUser % 32 != 0 || nContainer > nUser || nShift < sizeof(void*) || nShift > kBigExtra)
        return nullptr;
    return reinterpret_cast<void*>(nContainer);
}

bool IsHeapBlock(void* pBlock, size_t nBytes)
{
    if (nBytes >= kBigBlock)
        pBlock = BigBlockContainer(pBlock);
    return pBlock != nullptr && HeapValidate(GetProcessHeap(), 0, pBlock) != 0;
}

void Deallocate(void* pBlock, size_t nBytes)
{
    if (pBlock == nullptr)
        return;
    if (nBytes >= kBigBlock)
        pBlock = BigBlockContainer(pBlock);
    if (pBlock == nullptr || HeapFree(GetProcessHeap(), 0, pBlock) == 0)
        Check(false, "a block freed by the client's rule");
}

// The client library's string and array, by layout.
struct MsString {
    union {
        char buf[16];
        char* ptr;
    } bx;
    size_t nSize;
    size_t nCapacity;

    bool IsOnHeap() const { return nCapacity > 15; }
    const char* Text() const { return IsOnHeap() ? bx.ptr : bx.buf; }
    ~MsString()
    {
        if (IsOnHeap())
            Deallocate(bx.ptr, nCapacity + 1);
    }
};
static_assert(sizeof(MsString) == 16 + 2 * sizeof(void*), "the client's string");

template <class T>
struct MsVector {
    T* pFirst = nullptr;
    T* pLast = nullptr;
    T* pEnd = nullptr;

    size_t Size() const { return static_cast<size_t>(pLast - pFirst); }
    size_t Capacity() const { return static_cast<size_t>(pEnd - pFirst); }
    // nCount copies of value in a block of exactly that size.
    void Fill(size_t nCount, T value)
    {
        pFirst = static_cast<T*>(Allocate(nCount * sizeof(T)));
        for (size_t i = 0; i < nCount; ++i) pFirst[i] = value;
        pLast = pEnd = pFirst + nCount;
    }
    ~MsVector() { Deallocate(pFirst, Capacity() * sizeof(T)); }
};
static_assert(sizeof(MsVector<int>) == 3 * sizeof(void*), "the client's array");

// The foundation's reference-counted string: one pointer to the text, with a
// header in front of it in the same heap block.
struct ZelStringData {
    long nRefs;  // -1: the shared empty block
    int nDataLength;
    int nAllocLength;
};

struct ZelString {
    char* pchData;

    ZelStringData* Data() const { return reinterpret_cast<ZelStringData*>(pchData) - 1; }
    bool IsEmptyBlock() const
    {
        return Data()->nRefs == -1 && Data()->nDataLength == 0 && Data()->nAllocLength == 0;
    }
    ~ZelString()
    {
        if (!IsEmptyBlock() && __atomic_sub_fetch(&Data()->nRefs, 1, __ATOMIC_SEQ_CST) <= 0)
            HeapFree(GetProcessHeap(), 0, Data());
    }
};

// The interfaces, in slot order.
using VersionQueryFn = int (*)();

class IClientDataMgr {
public:
    virtual void* DeletingDestructor(unsigned nFlags) = 0;  // 0
    virtual void LoadStrRes(const char* szPath) = 0;
    virtual const char* GetStrRes(unsigned nId) = 0;
    virtual void SetVersionQuery(VersionQueryFn fn) = 0;
    virtual VersionQueryFn GetVersionQuery() = 0;
    virtual void LoadDeferList() = 0;
    virtual void LoadAll() = 0;
    virtual void ClearAll() = 0;
    virtual void ReloadDeferred(bool bDefer) = 0;  // 8
    // Slots 9 to 205, one accessor per table.
#define CLIENT_ACCESSOR(n) virtual void* Accessor##n() = 0;
#define CLIENT_ACCESSORS_10(d)                                                                               \
    CLIENT_ACCESSOR(d##0) CLIENT_ACCESSOR(d##1) CLIENT_ACCESSOR(d##2) CLIENT_ACCESSOR(d##3) CLIENT_ACCESSOR(d##4) \
    CLIENT_ACCESSOR(d##5) CLIENT_ACCESSOR(d##6) CLIENT_ACCESSOR(d##7) CLIENT_ACCESSOR(d##8) CLIENT_ACCESSOR(d##9)
    CLIENT_ACCESSOR(9)
    CLIENT_ACCESSORS_10(1) CLIENT_ACCESSORS_10(2) CLIENT_ACCESSORS_10(3) CLIENT_ACCESSORS_10(4)
    CLIENT_ACCESSORS_10(5) CLIENT_ACCESSORS_10(6) CLIENT_ACCESSORS_10(7) CLIENT_ACCESSORS_10(8)
    CLIENT_ACCESSORS_10(9) CLIENT_ACCESSORS_10(10) CLIENT_ACCESSORS_10(11) CLIENT_ACCESSORS_10(12)
    CLIENT_ACCESSORS_10(13) CLIENT_ACCESSORS_10(14) CLIENT_ACCESSORS_10(15) CLIENT_ACCESSORS_10(16)
    CLIENT_ACCESSORS_10(17) CLIENT_ACCESSORS_10(18) CLIENT_ACCESSORS_10(19)
    CLIENT_ACCESSOR(200) CLIENT_ACCESSOR(201) CLIENT_ACCESSOR(202) CLIENT_ACCESSOR(203) CLIENT_ACCESSOR(204)
    CLIENT_ACCESSOR(205)
#undef CLIENT_ACCESSORS_10
#undef CLIENT_ACCESSOR
};

class CDataTable {
public:
    virtual void* DeletingDestructor(unsigned nFlags) = 0;  // 0
    virtual void Load() = 0;
    virtual void Clear() = 0;
    virtual void SetDefer() = 0;
    virtual bool IsDefer() = 0;
    virtual void BuildFilePath() = 0;
    virtual MsString GetFileName() = 0;  // 6: a string by value
};

struct MagicTypeInfo {
    uint32_t Type;
};

class IMagicData : public CDataTable {
public:
    virtual int GetAmount() = 0;  // 7
    virtual const MagicTypeInfo* GetMagicTypeByIndex(int nIndex) = 0;
    virtual int CopyMagicType(uint32_t nType, int nLevel, void* pInfo) = 0;
    virtual const MagicTypeInfo* GetMagicType(uint32_t nType, uint32_t nLevel) = 0;
    virtual int IsIntoneAction(int nAction, bool bMounted, bool bFlying) = 0;
    virtual const MagicTypeInfo* FindFirstLearnable(uint32_t nProfession) = 0;
    virtual void CollectLearnable(uint32_t nProfession, uint32_t nLevel, MsVector<const MagicTypeInfo*>* pList) = 0;
};

class IItemCategory : public CDataTable {
public:
    virtual int IsInCategory(const char* szName, uint32_t idType) = 0;           // 7
    virtual void GetCategoryIds(const char* szName, MsVector<uint32_t>* pOut) = 0;  // 8
};

struct MonsterSpeakEntry {
    int nProbability;
    MsString strText;
};
struct MonsterSpeakLines {
    MsVector<MonsterSpeakEntry> setEntry;
    int nProbability;
    uint32_t nDefaultShare;
};
struct MonsterSpeakInfo {
    MonsterSpeakLines setOccasion[5];  // Attack, Beat, Dead, Skill, Born
};

class IMonsterSpeak : public CDataTable {
public:
    virtual const MonsterSpeakInfo* GetMonsterSpeak(uint32_t nMonsterType) = 0;  // 7
};

struct TutorialCommand {
    int nCode;
    int nParam[6];
    char szText[256];
};
struct TutorialScript {
    int nType;
    MsVector<TutorialCommand> setCommand;
};

class IBattleTutorial : public CDataTable {
public:
    virtual const TutorialScript* GetScript(int nId) = 0;  // 7
};

class IFontSetting : public CDataTable {
public:
    virtual const char* GetGUIFontFile() = 0;  // 7
    virtual const char* GetChatFontFile() = 0;
    virtual const char* GetTipFontFile() = 0;
    virtual int GetGUIFontShadow() = 0;  // 10
    virtual uint32_t GetGUIFontShadowColor() = 0;
    virtual int GetChatFontSize() = 0;
    virtual int GetAntialias() = 0;
    virtual int GetTipFontShadow() = 0;
    virtual uint32_t GetTipFontShadowColor() = 0;
    virtual ZelString GetDefaultFontName() = 0;  // 16: a class by value
    virtual int GetDefaultFontValue() = 0;       // 17
};

// Magics of types 1 to 5, learnable (column 26) at level 1 (column 27) by
// any profession (column 18): the type, then columns 2 to 61.
void WriteMagicFile()
{
    static const char kLine[] =
        "0 0 - 0 0 0 0 0 0 0 0 0 0 0 0 0 0 9999 0 0 0 0 0 0 0 1 1 0 0 0 0 0 0 0 0 0 0 - - - - - 0 - - - - 0 0 0 0 0 - 0 0 0 "
        "0 0 0 0 0\n";
    static char szText[5 * sizeof(kLine)];
    for (int nType = 0; nType < 5; ++nType)
        for (size_t i = 0; i < sizeof(kLine); ++i)
            szText[nType * (sizeof(kLine) - 1) + i] = i == 0 ? static_cast<char>('1' + nType) : kLine[i];
    WriteText("ini/MagicType.ini", szText);
    WriteText("ini/MagicTypeEx.ini", "");
}

const char kLongSpeech[] = "a line long enough for the heap";

void WriteDataFolder()
{
    CreateDirectoryA("ini", nullptr);
    WriteText("ini/ItemCategory.dat", "[Sword]\nIDRange=1000-1005,2000\n");
    WriteText("ini/monsterspeak.ini",
              "[77]\nAttackAmount=2\nAttack0=hit\nAttackProbability0=600\nAttack1=a line long enough for the heap\n"
              "BornAmount=1\nBorn0=hello\nBornProbability=5\n");
    WriteText("ini/BattleTutorial.ini",
              "[5]\nType=3\nLineAmount=3\nLine1=Add_CtrlEffect,1,2,3,4\nLine2=no_such_keyword\n"
              "Line3=Show_Tip_Window,7,8,9,tip, with a comma\n");
    WriteText("ini/Font.ini", "[FontList]\nAmount=1\n[Font1]\nName=SimSunExtendedFaceName\nSize=12\n");
    WriteMagicFile();
}

void CheckFileNames(IClientDataMgr* pMgr)
{
    Print("slot 6, a string returned by value\n");
    const struct {
        void* pTable;
        const char *szName, *szLabel;
    } kCases[] = {{pMgr->Accessor9(), "ItemType.dat", "file name \"ItemType.dat\", in the string's buffer"},
                  {pMgr->Accessor10(), "ItemAddition.ini", "file name \"ItemAddition.ini\", on the heap"},
                  {pMgr->Accessor151(), "", "a fixed path: no file name"}};
    for (const auto& c : kCases) {
        MsString strName = static_cast<CDataTable*>(c.pTable)->GetFileName();
        bool bOk = strName.nSize == Length(c.szName) && Equal(strName.Text(), c.szName) &&
                   strName.nCapacity >= strName.nSize;
        if (strName.IsOnHeap())
            bOk = bOk && IsHeapBlock(strName.bx.ptr, strName.nCapacity + 1);
        else
            bOk = bOk && strName.nCapacity == 15;
        Check(bOk, c.szLabel);
    }
}

void CheckLearnable(IClientDataMgr* pMgr)
{
    Print("CollectLearnable into the client's array\n");
    IMagicData* pMagic = static_cast<IMagicData*>(pMgr->Accessor11());
    MsVector<const MagicTypeInfo*> setList;
    setList.Fill(3, nullptr);  // emptied first, then grown by the library
    pMagic->CollectLearnable(10, 10, &setList);
    bool bOrder = setList.Size() == 5;
    for (size_t i = 0; bOrder && i < setList.Size(); ++i) bOrder = setList.pFirst[i]->Type == i + 1;
    Check(bOrder, "types 1 to 5 in file order");
    Check(setList.Capacity() == 5, "grown once, to the size needed");
    Check(IsHeapBlock(setList.pFirst, setList.Capacity() * sizeof(void*)), "the new block is on the process heap");
}

void CheckCategoryIds(IClientDataMgr* pMgr)
{
    Print("GetCategoryIds appending to a big block of the client's\n");
    IItemCategory* pCategory = static_cast<IItemCategory*>(pMgr->Accessor37());
    MsVector<uint32_t> setId;
    setId.Fill(1100, 7u);  // 4400 bytes: a big block, full
    pCategory->GetCategoryIds("Sword", &setId);
    const uint32_t kIds[] = {1000, 1001, 1002, 1003, 1004, 1005, 2000};
    bool bOk = setId.Size() == 1107 && setId.pFirst[0] == 7 && setId.pFirst[1099] == 7;
    for (size_t i = 0; bOk && i < 7; ++i) bOk = setId.pFirst[1100 + i] == kIds[i];
    Check(bOk, "the client's 1100 ids kept, then 1000-1005 and 2000");
    Check(setId.Capacity() == 1650, "capacity grown to 1.5 times");
    Check(IsHeapBlock(setId.pFirst, setId.Capacity() * sizeof(uint32_t)),
          "the new block follows the big-block rule on the process heap");
}

void CheckSpeech(IClientDataMgr* pMgr)
{
    Print("the speech record\n");
    IMonsterSpeak* pSpeak = static_cast<IMonsterSpeak*>(pMgr->Accessor53());
    const MonsterSpeakInfo* pInfo = pSpeak->GetMonsterSpeak(77);
    Check(pInfo != nullptr, "monster 77 has a record");
    if (pInfo == nullptr)
        return;
    const MonsterSpeakLines& attack = pInfo->setOccasion[0];
    Check(attack.setEntry.Size() == 2, "two attack lines");
    if (attack.setEntry.Size() == 2) {
        Check(attack.setEntry.pFirst[0].nProbability == 600 && Equal(attack.setEntry.pFirst[0].strText.Text(), "hit"),
              "line 0: 600, \"hit\" in the string's buffer");
        const MsString& strLong = attack.setEntry.pFirst[1].strText;
        Check(attack.setEntry.pFirst[1].nProbability == 0 && strLong.IsOnHeap() &&
                  Equal(strLong.Text(), kLongSpeech) && strLong.nSize == Length(kLongSpeech),
              "line 1: no probability, a long text on the heap");
    }
    Check(attack.nDefaultShare == 400 && attack.nProbability == 1, "attack: share 400, probability 1");
    const MonsterSpeakLines& born = pInfo->setOccasion[4];
    Check(born.setEntry.Size() == 1 && born.nProbability == 5 && born.nDefaultShare == 1000, "born: stored last");
    Check(pInfo->setOccasion[1].setEntry.Size() == 0 && pInfo->setOccasion[1].nDefaultShare == 0, "beat: empty");
}

void CheckTutorial(IClientDataMgr* pMgr)
{
    Print("the tutorial script\n");
    IBattleTutorial* pTutorial = static_cast<IBattleTutorial*>(pMgr->Accessor48());
    const TutorialScript* pScript = pTutorial->GetScript(5);
    Check(pScript != nullptr && pScript->nType == 3, "script 5 of type 3");
    if (pScript == nullptr)
        return;
    Check(pScript->setCommand.Size() == 2, "two usable commands");
    if (pScript->setCommand.Size() != 2)
        return;
    const TutorialCommand& first = pScript->setCommand.pFirst[0];
    const TutorialCommand& second = pScript->setCommand.pFirst[1];
    Check(first.nCode == 1 && first.nParam[0] == 1 && first.nParam[3] == 4 && first.szText[0] == '\0',
          "Add_CtrlEffect 1 2 3 4");
    Check(second.nCode == 26 && second.nParam[2] == 9 && Equal(second.szText, "tip, with a comma"),
          "Show_Tip_Window with its text");
}

// Returns the name, kept past the manager's end.
ZelString CheckFont(IClientDataMgr* pMgr)
{
    Print("the font settings, a string class returned by value\n");
    IFontSetting* pFont = static_cast<IFontSetting*>(pMgr->Accessor88());
    ZelString strName = pFont->GetDefaultFontName();
    Check(Equal(strName.pchData, "SimSunExtendedFaceName") && strName.Data()->nDataLength == 22,
          "the default font name");
    Check(strName.Data()->nRefs == 2, "a copy sharing the table's block");
    Check(pFont->GetDefaultFontValue() == 12, "the default font value");
    return strName;
}

}  // namespace

extern "C" int ClientMain()
{
    Print(sizeof(void*) == 8 ? "MSVC-ABI client, x86-64\n" : "MSVC-ABI client, x86\n");
    WriteDataFolder();
    void* hLibrary = LoadLibraryA("ClientData.dll");
    Check(hLibrary != nullptr, "ClientData.dll loads");
    if (hLibrary == nullptr)
        ExitProcess(1);
    using QueryFn = IClientDataMgr* (*)();
    using DestroyFn = void (*)();
    QueryFn pfnQuery = reinterpret_cast<QueryFn>(GetProcAddress(hLibrary, "QueryClientDataMgr"));
    DestroyFn pfnDestroy = reinterpret_cast<DestroyFn>(GetProcAddress(hLibrary, "DestroyClientDataMgr"));
    Check(pfnQuery != nullptr && pfnDestroy != nullptr, "both exports found");
    if (pfnQuery == nullptr || pfnDestroy == nullptr)
        ExitProcess(1);

    IClientDataMgr* pMgr = pfnQuery();
    Check(pMgr != nullptr && pfnQuery() == pMgr, "one manager");
    pMgr->LoadDeferList();
    pMgr->ReloadDeferred(false);
    pMgr->ReloadDeferred(true);

    CheckFileNames(pMgr);
    CheckLearnable(pMgr);
    CheckCategoryIds(pMgr);
    CheckSpeech(pMgr);
    CheckTutorial(pMgr);
    {
        ZelString strName = CheckFont(pMgr);
        pfnDestroy();
        Print("after the manager's end\n");
        Check(strName.Data()->nRefs == 1 && HeapValidate(GetProcessHeap(), 0, strName.Data()) != 0,
              "the font name is the client's alone, a block of the process heap");
    }  // freed here by the client's rule
    Check(HeapValidate(GetProcessHeap(), 0, nullptr) != 0, "the process heap validates");

    Print("MSVC-ABI client: ");
    PrintNumber(g_nChecks);
    Print(" checks, ");
    PrintNumber(g_nFailed);
    Print(" failed\n");
    ExitProcess(g_nFailed == 0 ? 0 : 1);
    return 0;
}
