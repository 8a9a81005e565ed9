#include "FuzzSupport.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "ZelGameBase/Platform/Platform.h"

namespace {
void DropDebugOutput(const char*, void*) {}
}  // namespace

void FuzzEnterScratchFolder()
{
    static bool bEntered = false;
    if (bEntered)
        return;
    bEntered = true;
    char szTemplate[] = "/tmp/clientdata-fuzz-XXXXXX";
    if (mkdtemp(szTemplate) != nullptr)
        std::filesystem::current_path(szTemplate);
    PlatformSetDebugSink(DropDebugOutput, nullptr);
    // The log would grow without bound; a file in place of the folder makes
    // every entry drop silently, as on a read-only medium.
    std::ofstream("debug") << "";
}

void FuzzWriteFile(const std::string& strPath, const uint8_t* pData, std::size_t nSize)
{
    const std::filesystem::path path(strPath);
    if (path.has_parent_path())
        std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(pData), static_cast<std::streamsize>(nSize));
}

void FuzzSplit(const uint8_t* pData, std::size_t nSize, std::string& strParameter, std::string& strContent)
{
    const std::string strInput(reinterpret_cast<const char*>(pData), nSize);
    const std::size_t nZero = strInput.find('\0');
    if (nZero == std::string::npos || nZero > 64) {
        strParameter = "Title";
        strContent = strInput;
        return;
    }
    strParameter = strInput.substr(0, nZero);
    strContent = strInput.substr(nZero + 1);
}
