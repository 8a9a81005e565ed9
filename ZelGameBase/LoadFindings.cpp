#include "ZelGameBase/LoadFindings.h"

#include <cstdarg>
#include <cstdio>

namespace {
LoadFindingSinkFn g_pfnSink = nullptr;
void* g_pSinkContext = nullptr;
}  // namespace

void LoadFindingSinkSet(LoadFindingSinkFn fn, void* pContext)
{
    g_pfnSink = fn;
    g_pSinkContext = pContext;
}

bool LoadFindingsWanted() { return g_pfnSink != nullptr; }

void LoadFindingReport(const char* szFile, int nLine, LoadFindingLevel level, const char* szRule, const char* szFormat,
                       ...)
{
    if (g_pfnSink == nullptr || szFormat == nullptr)
        return;
    char szMessage[1024];
    va_list args;
    va_start(args, szFormat);
    std::vsnprintf(szMessage, sizeof(szMessage), szFormat, args);
    va_end(args);
    g_pfnSink(LoadFinding{szFile != nullptr ? szFile : "", nLine, level, szRule != nullptr ? szRule : "", szMessage},
              g_pSinkContext);
}
