#include "ZelGameBase/ReportPost.h"

#include <atomic>

#include "ZelGameBase/Platform/PlatformReport.h"

namespace {

constexpr int kHttpPort = 80;

std::atomic<int> g_nWorkers{0};
std::atomic<int> g_nPortOverride{0};

struct WorkerStart {
    ReportWorkerFn fn;
    void* pArgument;
};

unsigned WorkerMain(void* pStart)
{
    const WorkerStart start = *static_cast<WorkerStart*>(pStart);
    delete static_cast<WorkerStart*>(pStart);
    const unsigned nResult = start.fn(start.pArgument);
    --g_nWorkers;
    return nResult;
}

}  // namespace

bool ReportFormPost(const char* szServer, const char* szAction, const char* szBody)
{
    if (szServer == nullptr || szAction == nullptr || szBody == nullptr)
        return false;
    const int nOverride = g_nPortOverride.load();
    HttpFormPost post{};
    post.szServer = szServer;
    post.nPort = nOverride != 0 ? nOverride : kHttpPort;
    post.szAction = szAction;
    post.szAgent = "MyAgent";
    // The whole header line as one accept entry, as the reports always sent it.
    post.szAcceptEntry = "Accept: */*";
    post.szHeader = "Content-Type: application/x-www-form-urlencoded";
    post.szBody = szBody;
    return PlatformHttpFormPost(post);
}

bool ReportWorkerStart(ReportWorkerFn fn, void* pArgument)
{
    auto* pStart = new WorkerStart{fn, pArgument};
    ++g_nWorkers;
    if (PlatformThreadStart(WorkerMain, pStart))
        return true;
    --g_nWorkers;
    delete pStart;
    return false;
}

int ReportWorkerCount() { return g_nWorkers.load(); }

void ReportPortSet(int nPort) { g_nPortOverride = nPort; }
