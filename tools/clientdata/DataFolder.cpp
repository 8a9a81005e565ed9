#include "DataFolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "ClientData/ClientDataMgr.h"
#include "Text.h"
#include "ZelGameBase/ZelGameBase.h"

namespace fs = std::filesystem;

namespace {

// The temporary log folder, removed when the process ends.
struct TemporaryLogFolder {
    std::string strPath;
    ~TemporaryLogFolder()
    {
        std::error_code error;
        if (!strPath.empty())
            fs::remove_all(strPath, error);
    }
};
TemporaryLogFolder g_temporaryLog;

bool EnterFolder(const std::string& strFolder)
{
    std::error_code error;
    fs::current_path(strFolder, error);
    if (error)
        std::fprintf(stderr, "clientdata: cannot enter %s: %s\n", strFolder.c_str(), error.message().c_str());
    return !error;
}

}  // namespace

bool IsDataFolder(const std::string& strFolder)
{
    for (const CatalogueEntry& entry : kCatalogue)
        for (const std::string& strFile : CatalogueDataFilesOf(entry.nSlot)) {
            std::error_code error;
            if (fs::is_regular_file(fs::path(strFolder) / strFile, error))
                return true;
        }
    return false;
}

int DataFolderCheck(const std::string& strFolder)
{
    std::error_code error;
    if (!fs::is_directory(strFolder, error))
        return UsageError(strFolder + ": no such folder");
    if (!IsDataFolder(strFolder))
        return UsageError(strFolder + ": not a data folder (none of the catalogue's files is there)");
    return 0;
}

void DebugLogRedirect(const std::string& strLogFolder)
{
    // Once, before the first load enters a data folder: a relative --log is
    // taken from where the tool started.
    static bool s_bRedirected = false;
    if (s_bRedirected)
        return;
    s_bRedirected = true;
    if (!strLogFolder.empty()) {
        std::error_code error;
        fs::create_directories(strLogFolder, error);
        LogSetFolder(AbsolutePath(strLogFolder).c_str());
        return;
    }
    std::error_code error;
    const fs::path temporary = fs::temp_directory_path(error);
    std::string strTemplate = (temporary / "clientdata-log-XXXXXX").string();
    if (mkdtemp(strTemplate.data()) != nullptr)
        g_temporaryLog.strPath = strTemplate;
    // Without a folder of its own the log goes to the temporary folder itself,
    // never into the data folder.
    LogSetFolder(g_temporaryLog.strPath.empty() ? temporary.string().c_str() : strTemplate.c_str());
}

CClientDataMgr* LoadDataFolder(const LoadOptions& options, std::vector<TableLoadLine>* pLines)
{
    DebugLogRedirect(options.strLogFolder);
    if (!EnterFolder(options.strFolder))
        return nullptr;
    LoadReportOptions report;
    report.bVersion = options.nDataVersion != 0;
    report.nVersion = options.nDataVersion;
    std::vector<TableLoadLine> setLine = RunLoadReport(report);
    CClientDataMgr* pMgr = static_cast<CClientDataMgr*>(QueryClientDataMgr());
    if (pMgr != nullptr && fs::exists("ini/StrRes.ini"))
        pMgr->LoadStrRes("ini/StrRes.ini");
    if (pLines != nullptr)
        *pLines = std::move(setLine);
    return pMgr;
}

void PrintLogFaults(const std::vector<TableLoadLine>& setLine, bool bRaw)
{
    for (const TableLoadLine& line : setLine)
        for (const std::string& strFault : line.setFault)
            std::fprintf(stderr, "clientdata: debug log: %s: %s\n", line.szName, Shown(strFault, bRaw).c_str());
}

std::string AbsolutePath(const std::string& strPath)
{
    std::error_code error;
    const fs::path path = fs::absolute(strPath, error);
    return error ? strPath : path.lexically_normal().string();
}

int UsageError(const std::string& strMessage)
{
    std::fprintf(stderr, "clientdata: %s\n", strMessage.c_str());
    return 2;
}
