#include "ClientData/ClientBoundary.h"

#include <cstring>

#include "ZelGameBase/Platform/Platform.h"

void* ClientBlockAlloc(size_t nBytes)
{
    if (nBytes < kClientBigBlock)
        return PlatformHeapAlloc(nBytes);
    if (nBytes > SIZE_MAX - kClientBigExtra)
        return nullptr;
    const uintptr_t nContainer = reinterpret_cast<uintptr_t>(PlatformHeapAlloc(nBytes + kClientBigExtra));
    if (nContainer == 0)
        return nullptr;
    const uintptr_t nUser = (nContainer + kClientBigExtra) & ~uintptr_t{kClientBigAlignment - 1};
    reinterpret_cast<uintptr_t*>(nUser)[-1] = nContainer;
    return reinterpret_cast<void*>(nUser);
}

void ClientBlockFree(void* pBlock, size_t nBytes)
{
    if (pBlock == nullptr)
        return;
    if (nBytes >= kClientBigBlock)
        pBlock = reinterpret_cast<void*>(static_cast<uintptr_t*>(pBlock)[-1]);
    PlatformHeapFree(pBlock);
}

CClientString::CClientString(CClientString&& other) noexcept
    : m_bx(other.m_bx), m_nSize(other.m_nSize), m_nCapacity(other.m_nCapacity)
{
    other.m_bx.buf[0] = '\0';
    other.m_nSize = 0;
    other.m_nCapacity = kInlineCapacity;
}

CClientString& CClientString::operator=(CClientString&& other) noexcept
{
    if (this != &other) {
        Release();
        m_bx = other.m_bx;
        m_nSize = other.m_nSize;
        m_nCapacity = other.m_nCapacity;
        other.m_bx.buf[0] = '\0';
        other.m_nSize = 0;
        other.m_nCapacity = kInlineCapacity;
    }
    return *this;
}

bool CClientString::Assign(const char* pch, size_t nLength)
{
    Release();
    if (pch == nullptr || nLength == 0)
        return true;
    if (nLength <= kInlineCapacity) {
        std::memcpy(m_bx.buf, pch, nLength);
        m_bx.buf[nLength] = '\0';
        m_nSize = nLength;
        return true;
    }
    // The capacity the client's library gives a new string of this length.
    const size_t nCapacity = nLength | kInlineCapacity;
    if (nCapacity == SIZE_MAX)
        return false;
    char* pBlock = static_cast<char*>(ClientBlockAlloc(nCapacity + 1));
    if (pBlock == nullptr)
        return false;
    std::memcpy(pBlock, pch, nLength);
    pBlock[nLength] = '\0';
    m_bx.ptr = pBlock;
    m_nSize = nLength;
    m_nCapacity = nCapacity;
    return true;
}

void CClientString::Release()
{
    if (IsOnHeap())
        ClientBlockFree(m_bx.ptr, m_nCapacity + 1);
    m_bx.buf[0] = '\0';
    m_nSize = 0;
    m_nCapacity = kInlineCapacity;
}
