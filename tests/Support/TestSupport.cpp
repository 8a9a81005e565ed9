#include "Support/TestSupport.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

LocalTime FixedClock() { return LocalTime{2011, 3, 7, 14, 5, 9, 1}; }

void CaptureDebug(const char* szText, void* pContext) { static_cast<std::string*>(pContext)->append(szText); }

}  // namespace

void DataFolderTest::SetUp()
{
    char szTemplate[] = "/tmp/clientdata-test-XXXXXX";
    ASSERT_NE(mkdtemp(szTemplate), nullptr);
    m_strFolder = szTemplate;
    m_strPrevious = std::filesystem::current_path().string();
    std::filesystem::current_path(m_strFolder);
    LogSetClock(FixedClock);
    PlatformSetDebugSink(CaptureDebug, &m_strDebug);
}

void DataFolderTest::TearDown()
{
    PlatformSetDebugSink(nullptr, nullptr);
    LogSetClock(nullptr);
    std::filesystem::current_path(m_strPrevious);
    std::error_code error;
    std::filesystem::remove_all(m_strFolder, error);
}

void DataFolderTest::WriteFile(const std::string& strPath, const std::string& strContent)
{
    const std::filesystem::path path(strPath);
    if (path.has_parent_path())
        std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out << strContent;
}

std::string DataFolderTest::LogText() const
{
    // The fixed clock writes 2011_3_7.log; a library loaded on its own keeps
    // the real clock, so every file of the folder counts, in name order.
    std::vector<std::string> setName;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("debug", error))
        setName.push_back(entry.path().string());
    std::sort(setName.begin(), setName.end());
    std::string strText;
    for (const std::string& strName : setName)
        strText += ReadWholeFile(strName);
    return strText;
}

int DataFolderTest::LogEntryCount() const
{
    const std::string strLog = LogText();
    int nCount = 0;
    for (std::size_t nAt = 0; (nAt = strLog.find(" -- Mon Mar 07 14:05:09 2011\n", nAt)) != std::string::npos; ++nAt)
        ++nCount;
    return nCount;
}

std::string ReadWholeFile(const std::string& strPath)
{
    std::ifstream in(strPath, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}
