#include "ClientData/StrRes.h"

#include <cstring>
#include <mutex>

#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/FileStream.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

// The miss path's shared text: nothing ever writes it, so a miss always
// yields the empty text, never one that names the id.
const char g_szMissText[1024] = {};
std::mutex* g_pMissLock = nullptr;

}  // namespace

CStrRes::CStrRes()
{
    if (g_pMissLock == nullptr)
        g_pMissLock = new std::mutex;
}

CStrRes::~CStrRes()
{
    delete g_pMissLock;
    g_pMissLock = nullptr;
}

void CStrRes::Load(const char* szPath)
{
    CFileStream stream;
    if (!stream.Open(szPath)) {
        LogMsgSave("can't open file:%s", szPath);
        return;
    }
    char szLine[1024];
    for (;;) {
        std::memset(szLine, 0, sizeof(szLine));
        if (!stream.ReadLine(szLine, sizeof(szLine)))
            break;
        std::size_t nLength = std::strlen(szLine);
        if (nLength > 0 && szLine[nLength - 1] == '\n')
            szLine[--nLength] = '\0';
        if (szLine[0] == ';')
            continue;
        char* pEqual = std::strchr(szLine, '=');
        if (pEqual == nullptr)
            continue;
        *pEqual = '\0';
        // Out of memory: the texts stored so far stay.
        if (!AllocationTry([&] { m_mapText[static_cast<uint32_t>(CrtAtoi(szLine))] = pEqual + 1; }))
            break;
    }
}

const char* CStrRes::Get(uint32_t nId) const
{
    auto it = m_mapText.find(nId);
    if (it != m_mapText.end())
        return it->second.c_str();
    // The lock guards the shared miss text, as the client has always had it.
    if (g_pMissLock != nullptr) {
        std::lock_guard<std::mutex> guard(*g_pMissLock);
        return g_szMissText;
    }
    return g_szMissText;
}
