// The parts of the platform layer that both halves share: built on the
// primitives each half provides.
#include <atomic>
#include <cstdio>

#include "ZelGameBase/AllocationTry.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/Platform/PlatformStack.h"

namespace {

std::atomic<unsigned long> g_nReadFileCount{0};
FileOpenHookFn g_pfnFileOpenHook = nullptr;
void* g_pFileOpenHookContext = nullptr;

}  // namespace

bool CPlatformFile::Open(const char* szPath)
{
    Close();
    if (szPath == nullptr || !OpenRegular(szPath))
        return false;
    m_nPosition = 0;
    if (g_pfnFileOpenHook != nullptr)
        g_pfnFileOpenHook(szPath, g_pFileOpenHookContext);
    return true;
}

int64_t CPlatformFile::Read(void* pBuffer, std::size_t nSize)
{
    if (!IsOpen() || pBuffer == nullptr)
        return -1;
    const uint64_t nLeft = m_nSize - m_nPosition;
    if (nLeft < nSize)
        nSize = static_cast<std::size_t>(nLeft);
    if (nSize == 0)
        return 0;
    const int64_t nRead = ReadNative(pBuffer, nSize);
    if (nRead > 0)
        m_nPosition += static_cast<uint64_t>(nRead);
    return nRead;
}

void PlatformSetFileOpenHook(FileOpenHookFn fn, void* pContext)
{
    g_pfnFileOpenHook = fn;
    g_pFileOpenHookContext = pContext;
}

bool PlatformReadFile(const char* szPath, std::string& data)
{
    ++g_nReadFileCount;
    data.clear();
    CPlatformFile file;
    if (szPath == nullptr || !file.Open(szPath))
        return false;
    // Checked before the size becomes a size_t: on a 32-bit build a file of
    // 4 GiB or more would otherwise wrap to a small size.
    const uint64_t nSize = file.GetSize();
    if (nSize >= data.max_size() || !AllocationTry([&] { data.resize(static_cast<std::size_t>(nSize)); }))
        return false;
    std::size_t nUsed = 0;
    while (nUsed < data.size()) {
        const int64_t nRead = file.Read(&data[nUsed], data.size() - nUsed);
        if (nRead <= 0)
            break;
        nUsed += static_cast<std::size_t>(nRead);
    }
    if (nUsed == data.size())
        return true;
    // It shrank or could not be read: a part of a file is no image of it.
    data.clear();
    data.shrink_to_fit();
    return false;
}

unsigned long PlatformReadFileCount() { return g_nReadFileCount.load(); }

bool PlatformAppendText(const char* szPath, const char* szText)
{
    FILE* pFile = PlatformOpenFile(szPath, "a+");
    if (pFile == nullptr)
        return false;
    std::fputs(szText, pFile);
    std::fclose(pFile);
    return true;
}

int StackFromCaller(void* const* setCaptured, int nCaptured, const void* pFirstReturn, bool (*pfnIsCode)(const void*),
                    void** ppAddress, int nMax)
{
    int nFirst = 0;
    for (int i = 0; i < nCaptured; ++i) {
        if (setCaptured[i] == pFirstReturn) {
            nFirst = i;
            break;
        }
    }
    int nFound = 0;
    for (int i = nFirst; i < nCaptured && nFound < nMax && pfnIsCode(setCaptured[i]); ++i)
        ppAddress[nFound++] = setCaptured[i];
    return nFound;
}
