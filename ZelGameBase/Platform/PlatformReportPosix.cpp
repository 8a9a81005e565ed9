// POSIX half of the report services: pthreads, libcurl for the form post,
// BSD sockets and the interface list. The stack walk stands apart in
// PlatformStackPosix.cpp, so that the pure-call handler does not bring the
// HTTP client into every library that holds an abstract class.
#include <arpa/inet.h>
#include <curl/curl.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netpacket/packet.h>
#include <pthread.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <mutex>
#include <string>

#include "ZelGameBase/Platform/PlatformReport.h"
#include "ZelGameBase/ZelCommon.h"

namespace {

struct ThreadStart {
    PlatformThreadFn fn;
    void* pArgument;
};

void* ThreadTrampoline(void* pStart)
{
    const ThreadStart start = *static_cast<ThreadStart*>(pStart);
    delete static_cast<ThreadStart*>(pStart);
    start.fn(start.pArgument);
    return nullptr;
}

}  // namespace

bool PlatformThreadStart(PlatformThreadFn fn, void* pArgument)
{
    auto* pStart = new ThreadStart{fn, pArgument};
    pthread_attr_t attr;
    pthread_attr_init(&attr);
    pthread_attr_setdetachstate(&attr, PTHREAD_CREATE_DETACHED);
    pthread_t thread;
    const bool bStarted = pthread_create(&thread, &attr, ThreadTrampoline, pStart) == 0;
    pthread_attr_destroy(&attr);
    if (!bStarted)
        delete pStart;
    return bStarted;
}

bool PlatformHttpFormPost(const HttpFormPost& post)
{
    static std::once_flag s_curlInit;
    std::call_once(s_curlInit, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    CURL* pCurl = curl_easy_init();
    if (pCurl == nullptr)
        return false;
    std::string strUrl = std::string("http://") + post.szServer;
    if (post.szAction[0] != '/')
        strUrl += '/';
    strUrl += post.szAction;
    // WinINet sends the accept list as "Accept: " and the entries; the same
    // bytes go on the wire here.
    const std::string strAccept = std::string("Accept: ") + post.szAcceptEntry;
    curl_slist* pHeaders = curl_slist_append(nullptr, strAccept.c_str());
    pHeaders = curl_slist_append(pHeaders, post.szHeader);
    pHeaders = curl_slist_append(pHeaders, "Expect:");
    curl_easy_setopt(pCurl, CURLOPT_URL, strUrl.c_str());
    curl_easy_setopt(pCurl, CURLOPT_PORT, static_cast<long>(post.nPort));
    curl_easy_setopt(pCurl, CURLOPT_USERAGENT, post.szAgent);
    curl_easy_setopt(pCurl, CURLOPT_HTTPHEADER, pHeaders);
    curl_easy_setopt(pCurl, CURLOPT_POSTFIELDS, post.szBody);
    curl_easy_setopt(pCurl, CURLOPT_POSTFIELDSIZE, static_cast<long>(std::strlen(post.szBody)));
    curl_easy_setopt(pCurl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(pCurl, CURLOPT_CONNECTTIMEOUT, 30L);
    curl_easy_setopt(pCurl, CURLOPT_TIMEOUT, 60L);
    // The response is not read: whatever comes back is dropped.
    curl_easy_setopt(
        pCurl, CURLOPT_WRITEFUNCTION,
        +[](char*, size_t nSize, size_t nCount, void*) -> size_t { return nSize * nCount; });
    const CURLcode result = curl_easy_perform(pCurl);
    curl_slist_free_all(pHeaders);
    curl_easy_cleanup(pCurl);
    return result == CURLE_OK;
}

ConnectOutcome PlatformConnectTest(const char* szAddress, int nPort, int* pnError)
{
    // POSIX sockets need no library start, so the first two outcomes of the
    // Windows sequence cannot occur here.
    const int hSocket = socket(AF_INET, SOCK_STREAM, 0);
    if (hSocket < 0) {
        *pnError = errno;
        return ConnectOutcome::SocketFailed;
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = inet_addr(szAddress);
    address.sin_port = htons(static_cast<uint16_t>(nPort));
    if (address.sin_addr.s_addr == INADDR_NONE) {
        close(hSocket);
        return ConnectOutcome::AddressInvalid;
    }
    if (connect(hSocket, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0) {
        *pnError = errno;
        close(hSocket);
        return ConnectOutcome::ConnectFailed;
    }
    close(hSocket);
    return ConnectOutcome::Connected;
}

bool PlatformLocalAddressGet(char* szOut, int nSize)
{
    char szHost[155] = {};
    if (gethostname(szHost, sizeof(szHost) - 1) != 0)
        return false;
    addrinfo hints{};
    hints.ai_family = AF_INET;
    addrinfo* pResult = nullptr;
    if (getaddrinfo(szHost, nullptr, &hints, &pResult) != 0 || pResult == nullptr)
        return false;
    char szAddress[INET_ADDRSTRLEN] = {};
    const auto* pIpv4 = reinterpret_cast<const sockaddr_in*>(pResult->ai_addr);
    const bool bFound = inet_ntop(AF_INET, &pIpv4->sin_addr, szAddress, sizeof(szAddress)) != nullptr;
    freeaddrinfo(pResult);
    if (bFound)
        SafeStrCopy(szOut, nSize, szAddress);
    return bFound;
}

AdapterQuery PlatformAdapterAddressGet(unsigned char* pAddress)
{
    ifaddrs* pList = nullptr;
    if (getifaddrs(&pList) != 0)
        return AdapterQuery::Failed;
    // The loopback device has no hardware and is not an adapter on Windows.
    for (const ifaddrs* p = pList; p != nullptr; p = p->ifa_next) {
        if (p->ifa_addr == nullptr || p->ifa_addr->sa_family != AF_PACKET || (p->ifa_flags & IFF_LOOPBACK) != 0)
            continue;
        const auto* pLink = reinterpret_cast<const sockaddr_ll*>(p->ifa_addr);
        const std::size_t nLength = pLink->sll_halen < 6 ? pLink->sll_halen : 6;
        std::memset(pAddress, 0, 6);
        std::memcpy(pAddress, pLink->sll_addr, nLength);
    }
    freeifaddrs(pList);
    return AdapterQuery::Done;
}

void PlatformHostFileVersion(char* szOut, int nSize)
{
    // ELF programs carry no version resource.
    if (szOut != nullptr && nSize > 0)
        szOut[0] = '\0';
}

bool PlatformHostFileTime(LocalTime* pTime)
{
    char szPath[261] = {};
    if (readlink("/proc/self/exe", szPath, sizeof(szPath) - 1) <= 0)
        return false;
    const char* szSlash = std::strrchr(szPath, '/');
    const char* szBareName = szSlash != nullptr ? szSlash + 1 : szPath;
    struct stat info;
    if (stat(szBareName, &info) != 0)
        return false;
    tm local{};
    if (localtime_r(&info.st_mtime, &local) == nullptr)
        return false;
    *pTime = LocalTime{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                       local.tm_min,         local.tm_sec,     local.tm_wday};
    return true;
}

// Faults arrive as signals here, never as structured exceptions.
void* PlatformSeTranslatorInstall() { return nullptr; }
void PlatformSeTranslatorRestore(void*) {}
