// Win32 half of the report services: the runtime's thread start, WinINet for
// the form post, Winsock for the connection test and the local address, the
// IP Helper library (loaded at run time) for the adapter address, and the
// host executable's version resource.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
// Winsock 2 first: windows.h would otherwise declare the old socket API.
#include <winsock2.h>

#include <windows.h>

#include <iphlpapi.h>
#include <process.h>
#include <wininet.h>
#if defined(_MSC_VER)
#include <eh.h>
#endif

#include <cstring>
#include <vector>

#include "ZelGameBase/Platform/PlatformReport.h"
#include "ZelGameBase/ZelCommon.h"

namespace {

struct ThreadStart {
    PlatformThreadFn fn;
    void* pArgument;
};

unsigned __stdcall ThreadTrampoline(void* pStart)
{
    const ThreadStart start = *static_cast<ThreadStart*>(pStart);
    delete static_cast<ThreadStart*>(pStart);
    return start.fn(start.pArgument);
}

using AdaptersInfoGetFn = DWORD(WINAPI*)(PIP_ADAPTER_INFO, PULONG);

// The signature of the fixed part of a version resource.
constexpr DWORD kFixedFileInfoSignature = 0xFEEF04BD;

#if defined(_MSC_VER)
void __cdecl SeTranslate(unsigned int, EXCEPTION_POINTERS* pPointers)
{
    throw ZelExceptionPointers{pPointers->ExceptionRecord, pPointers->ContextRecord};
}
#endif

}  // namespace

bool PlatformThreadStart(PlatformThreadFn fn, void* pArgument)
{
    auto* pStart = new ThreadStart{fn, pArgument};
    const uintptr_t hThread = _beginthreadex(nullptr, 0, ThreadTrampoline, pStart, 0, nullptr);
    if (hThread == 0) {
        delete pStart;
        return false;
    }
    // Closing the handle does not stop the thread; nothing waits for it.
    CloseHandle(reinterpret_cast<HANDLE>(hThread));
    return true;
}

bool PlatformHttpFormPost(const HttpFormPost& post)
{
    HINTERNET hSession = InternetOpenA(post.szAgent, INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0);
    if (hSession == nullptr)
        return false;
    bool bSent = false;
    HINTERNET hConnection = InternetConnectA(hSession, post.szServer, static_cast<INTERNET_PORT>(post.nPort), nullptr,
                                             nullptr, INTERNET_SERVICE_HTTP, 0, 1);
    if (hConnection != nullptr) {
        const char* setAccept[] = {post.szAcceptEntry, nullptr};
        HINTERNET hRequest = HttpOpenRequestA(hConnection, "POST", post.szAction, nullptr, nullptr, setAccept, 0, 1);
        if (hRequest != nullptr) {
            bSent =
                HttpSendRequestA(hRequest, post.szHeader, static_cast<DWORD>(std::strlen(post.szHeader)),
                                 const_cast<char*>(post.szBody), static_cast<DWORD>(std::strlen(post.szBody))) != FALSE;
            InternetCloseHandle(hRequest);
        }
        InternetCloseHandle(hConnection);
    }
    InternetCloseHandle(hSession);
    return bSent;
}

ConnectOutcome PlatformConnectTest(const char* szAddress, int nPort, int* pnError)
{
    WSADATA data;
    if (WSAStartup(MAKEWORD(1, 1), &data) != 0)
        return ConnectOutcome::StartupFailed;
    if (LOBYTE(data.wVersion) != 1 || HIBYTE(data.wVersion) != 1) {
        WSACleanup();
        return ConnectOutcome::VersionMismatch;
    }
    const SOCKET hSocket = socket(AF_INET, SOCK_STREAM, 0);
    if (hSocket == INVALID_SOCKET) {
        *pnError = WSAGetLastError();
        WSACleanup();
        return ConnectOutcome::SocketFailed;
    }
    ConnectOutcome outcome = ConnectOutcome::Connected;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = inet_addr(szAddress);
    address.sin_port = htons(static_cast<u_short>(nPort));
    if (address.sin_addr.s_addr == INADDR_NONE) {
        outcome = ConnectOutcome::AddressInvalid;
    } else if (connect(hSocket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == SOCKET_ERROR) {
        *pnError = WSAGetLastError();
        outcome = ConnectOutcome::ConnectFailed;
    }
    closesocket(hSocket);
    WSACleanup();
    return outcome;
}

bool PlatformLocalAddressGet(char* szOut, int nSize)
{
    WSADATA data;
    if (WSAStartup(MAKEWORD(2, 0), &data) != 0)
        return false;
    bool bFound = false;
    char szHost[155] = {};
    if (gethostname(szHost, sizeof(szHost) - 1) == 0) {
        const hostent* pHost = gethostbyname(szHost);
        if (pHost != nullptr && pHost->h_addrtype == AF_INET && pHost->h_addr_list[0] != nullptr) {
            in_addr address;
            std::memcpy(&address, pHost->h_addr_list[0], sizeof(address));
            SafeStrCopy(szOut, nSize, inet_ntoa(address));
            bFound = true;
        }
    }
    WSACleanup();
    return bFound;
}

AdapterQuery PlatformAdapterAddressGet(unsigned char* pAddress)
{
    // Looked up on every call: the library is unloaded again afterwards, so a
    // kept address could point into nothing.
    HMODULE hLibrary = LoadLibraryA("iphlpapi.dll");
    if (hLibrary == nullptr)
        return AdapterQuery::Unavailable;
    auto pfnAdaptersInfoGet =
        reinterpret_cast<AdaptersInfoGetFn>(reinterpret_cast<void*>(GetProcAddress(hLibrary, "GetAdaptersInfo")));
    if (pfnAdaptersInfoGet == nullptr) {
        FreeLibrary(hLibrary);
        return AdapterQuery::Unavailable;
    }
    std::vector<unsigned char> buffer(10240);
    ULONG nSize = static_cast<ULONG>(buffer.size());
    auto* pList = reinterpret_cast<IP_ADAPTER_INFO*>(buffer.data());
    const DWORD nStatus = pfnAdaptersInfoGet(pList, &nSize);
    AdapterQuery result = AdapterQuery::Failed;
    if (nStatus == ERROR_SUCCESS) {
        for (const IP_ADAPTER_INFO* p = pList; p != nullptr; p = p->Next)
            std::memcpy(pAddress, p->Address, 6);
        result = AdapterQuery::Done;
    }
    FreeLibrary(hLibrary);
    return result;
}

void PlatformHostFileVersion(char* szOut, int nSize)
{
    if (szOut == nullptr || nSize <= 0)
        return;
    szOut[0] = '\0';
    HMODULE hHost = GetModuleHandleA(nullptr);
    HRSRC hResource = FindResourceA(hHost, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(16));  // RT_VERSION
    if (hResource == nullptr)
        return;
    HGLOBAL hData = LoadResource(hHost, hResource);
    const auto* pData = static_cast<const unsigned char*>(hData != nullptr ? LockResource(hData) : nullptr);
    const DWORD nDataSize = SizeofResource(hHost, hResource);
    if (pData == nullptr)
        return;
    // The fixed file information sits, 32-bit aligned, after the resource's
    // header and key; its signature finds it.
    for (DWORD nAt = 0; nAt + sizeof(VS_FIXEDFILEINFO) <= nDataSize; nAt += 4) {
        VS_FIXEDFILEINFO info;
        std::memcpy(&info, pData + nAt, sizeof(info));
        if (info.dwSignature != kFixedFileInfoSignature)
            continue;
        SafeSprintf(szOut, nSize, "%d.%d.%d.%d", HIWORD(info.dwFileVersionMS), LOWORD(info.dwFileVersionMS),
                    HIWORD(info.dwFileVersionLS), LOWORD(info.dwFileVersionLS));
        return;
    }
}

bool PlatformHostFileTime(LocalTime* pTime)
{
    char szPath[MAX_PATH + 1] = {};
    if (GetModuleFileNameA(nullptr, szPath, MAX_PATH) == 0)
        return false;
    const char* szSlash = std::strrchr(szPath, '\\');
    const char* szBareName = szSlash != nullptr ? szSlash + 1 : szPath;
    // By bare name: found only when the process started in its own folder.
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(szBareName, GetFileExInfoStandard, &data))
        return false;
    FILETIME local;
    SYSTEMTIME time;
    if (!FileTimeToLocalFileTime(&data.ftLastWriteTime, &local) || !FileTimeToSystemTime(&local, &time))
        return false;
    *pTime = LocalTime{time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond, time.wDayOfWeek};
    return true;
}

#if defined(_MSC_VER)
void* PlatformSeTranslatorInstall() { return reinterpret_cast<void*>(_set_se_translator(SeTranslate)); }

void PlatformSeTranslatorRestore(void* pPrevious)
{
    _set_se_translator(reinterpret_cast<_se_translator_function>(pPrevious));
}
#else
// GCC's exception handling never consults the runtime's translator, so there
// is nothing to install.
void* PlatformSeTranslatorInstall() { return nullptr; }
void PlatformSeTranslatorRestore(void*) {}
#endif
