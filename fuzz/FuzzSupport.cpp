#include "FuzzSupport.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "FuzzTable.h"
#include "ZelGameBase/Platform/Platform.h"

namespace {
void DropDebugOutput(const char*, void*) {}

std::filesystem::path g_scratch;
void RemoveScratchFolder()
{
    std::error_code error;
    std::filesystem::current_path("/", error);
    std::filesystem::remove_all(g_scratch, error);
}
}  // namespace

void FuzzEnterScratchFolder()
{
    static bool bEntered = false;
    if (bEntered)
        return;
    bEntered = true;
    // A memory-backed folder where there is one: every input is a file write.
    char szShared[] = "/dev/shm/clientdata-fuzz-XXXXXX";
    char szTemplate[] = "/tmp/clientdata-fuzz-XXXXXX";
    const char* szFolder = mkdtemp(szShared) != nullptr ? szShared : mkdtemp(szTemplate);
    if (szFolder != nullptr) {
        std::filesystem::current_path(szFolder);
        g_scratch = std::filesystem::current_path();
        std::atexit(RemoveScratchFolder);
    }
    PlatformSetDebugSink(DropDebugOutput, nullptr);
    // The log would grow without bound; a file in place of the folder makes
    // every entry drop silently, as on a read-only medium.
    std::ofstream("debug") << "";
}

void FuzzWriteFile(const std::string& strPath, const uint8_t* pData, std::size_t nSize)
{
    // Plain descriptors: this runs once per input and stream buffers cost
    // more than the parse. Folders are made only the first time.
    int fd = open(strPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0 && errno == ENOENT) {
        const std::filesystem::path path(strPath);
        std::error_code error;
        std::filesystem::create_directories(path.parent_path(), error);
        fd = open(strPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    }
    if (fd < 0)
        return;
    while (nSize > 0) {
        const ssize_t nWritten = write(fd, pData, nSize);
        if (nWritten <= 0)
            break;
        pData += nWritten;
        nSize -= static_cast<std::size_t>(nWritten);
    }
    close(fd);
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

std::vector<int64_t> FuzzNumbersIn(const uint8_t* pData, std::size_t nSize)
{
    std::vector<int64_t> setNumber;
    std::size_t i = 0;
    while (i < nSize && setNumber.size() < 16) {
        const bool bMinus = pData[i] == '-' && i + 1 < nSize && pData[i + 1] >= '0' && pData[i + 1] <= '9';
        if (!bMinus && (pData[i] < '0' || pData[i] > '9')) {
            ++i;
            continue;
        }
        if (bMinus)
            ++i;
        int64_t nValue = 0;
        for (int nDigits = 0; i < nSize && pData[i] >= '0' && pData[i] <= '9'; ++i, ++nDigits)
            if (nDigits < 18)
                nValue = nValue * 10 + (pData[i] - '0');
        setNumber.push_back(bMinus ? -nValue : nValue);
    }
    for (int64_t nExtra : {int64_t(0), int64_t(1), int64_t(-1), int64_t(INT32_MAX), int64_t(INT32_MIN),
                           int64_t(UINT32_MAX), INT64_MAX})
        setNumber.push_back(nExtra);
    return setNumber;
}

std::vector<std::string> FuzzWordsIn(const uint8_t* pData, std::size_t nSize)
{
    static const char kBreak[] = " \t\r\n=,[]";
    std::vector<std::string> setWord;
    std::size_t i = 0;
    while (i < nSize && setWord.size() < 8) {
        while (i < nSize && (pData[i] == 0 || std::strchr(kBreak, pData[i]) != nullptr))
            ++i;
        const std::size_t nStart = i;
        while (i < nSize && pData[i] != 0 && std::strchr(kBreak, pData[i]) == nullptr)
            ++i;
        if (i > nStart)
            setWord.emplace_back(reinterpret_cast<const char*>(pData + nStart), std::min<std::size_t>(i - nStart, 300));
    }
    setWord.emplace_back();
    return setWord;
}

std::vector<std::string> FuzzSplitFiles(const uint8_t* pData, std::size_t nSize, std::size_t nParts)
{
    static const std::string kMarker = "@@FILE@@";
    const std::string strInput(reinterpret_cast<const char*>(pData), nSize);
    std::vector<std::string> setPart;
    std::size_t nStart = 0;
    while (setPart.size() + 1 < nParts) {
        const std::size_t nFound = strInput.find(kMarker, nStart);
        if (nFound == std::string::npos)
            break;
        setPart.push_back(strInput.substr(nStart, nFound - nStart));
        nStart = nFound + kMarker.size();
    }
    setPart.push_back(nStart <= strInput.size() ? strInput.substr(nStart) : std::string());
    setPart.resize(nParts);
    return setPart;
}
