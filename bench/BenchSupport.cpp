#include "BenchSupport.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string_view>

#include "ClientData/ClientDataMgr.h"

namespace {

std::string g_strRoot;
std::vector<Figure> g_setFigure;
std::vector<std::string> g_setNote;

bool IsSkipped(const std::string& strPath)
{
    // Not read by the start-up: the alternative set (no version callback),
    // the text resources (the client loads them later) and our own log.
    return strPath.rfind("ini/200/", 0) == 0 || strPath.rfind("debug/", 0) == 0 || strPath == "ini/StrRes.ini";
}

}  // namespace

const std::string& BenchDataRoot() { return g_strRoot; }
void BenchDataRootSet(const std::string& strRoot) { g_strRoot = strRoot; }

const std::vector<std::string>& StartupFiles()
{
    static std::vector<std::string> setFile = [] {
        std::vector<std::string> setPath;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(".")) {
            if (!entry.is_regular_file())
                continue;
            std::string strPath = entry.path().lexically_relative(".").generic_string();
            if (!IsSkipped(strPath))
                setPath.push_back(std::move(strPath));
        }
        std::sort(setPath.begin(), setPath.end());
        return setPath;
    }();
    return setFile;
}

std::string BenchFileRead(const std::string& strPath)
{
    std::string strData;
    std::FILE* pFile = std::fopen(strPath.c_str(), "rb");
    if (pFile == nullptr)
        return strData;
    std::fseek(pFile, 0, SEEK_END);
    const long nSize = std::ftell(pFile);
    std::fseek(pFile, 0, SEEK_SET);
    strData.resize(static_cast<std::size_t>(nSize > 0 ? nSize : 0));
    strData.resize(std::fread(strData.data(), 1, strData.size(), pFile));
    std::fclose(pFile);
    return strData;
}

std::size_t BenchLinesSplit(const std::string& strData, std::vector<std::string_view>& setLine)
{
    setLine.clear();
    for (std::size_t nAt = 0; nAt < strData.size();) {
        const void* pEnd = std::memchr(strData.data() + nAt, '\n', strData.size() - nAt);
        const std::size_t nEnd = pEnd != nullptr
                                     ? static_cast<std::size_t>(static_cast<const char*>(pEnd) - strData.data())
                                     : strData.size();
        setLine.emplace_back(strData.data() + nAt, nEnd - nAt);
        nAt = nEnd + 1;
    }
    return setLine.size();
}

std::size_t FloorRead(const std::vector<std::string>& setFile)
{
    std::size_t nLines = 0;
    std::vector<std::string_view> setLine;
    for (const std::string& strPath : setFile)
        nLines += BenchLinesSplit(BenchFileRead(strPath), setLine);
    return nLines;
}

bool BenchFileExists(const std::string& strPath) { return std::filesystem::is_regular_file(strPath); }

void FigureAdd(const Figure& figure) { g_setFigure.push_back(figure); }
const std::vector<Figure>& Figures() { return g_setFigure; }
void FigureNoteAdd(const std::string& strLine) { g_setNote.push_back(strLine); }
const std::vector<std::string>& FigureNotes() { return g_setNote; }

std::size_t ResidentBytes()
{
    std::ifstream statm("/proc/self/statm");
    std::size_t nPages = 0;
    std::size_t nResident = 0;
    statm >> nPages >> nResident;
    return nResident * 4096;
}

// ---------------------------------------------------------------------------
// Held bytes: the values each table keeps, as its description shows its
// records: a number counts its width, a text buffer its size, a text of any
// length its characters and terminator. Map and set bookkeeping, indexes and
// allocator headers are the overhead the memory figure measures, so they are
// not counted here.

namespace {

class CByteCounter final : public FieldVisitor {
public:
    void Number(const char*, int64_t) override { m_nBytes += sizeof(int32_t); }
    void Text(const char*, const char* szText) override { m_nBytes += std::strlen(szText) + 1; }
    std::size_t m_nBytes = 0;
};

struct CountContext {
    CDataTable* pTable;
    const TableDesc* pDesc;
    std::size_t nBytes;
};

void RecordBytes(const void* pRecord, const RecordKey& key, void* pContext)
{
    CountContext& context = *static_cast<CountContext*>(pContext);
    context.nBytes += static_cast<std::size_t>(key.nAmount) * sizeof(int32_t);
    if (context.pDesc->pRecord != nullptr)
        for (const FieldDesc& field : *context.pDesc->pRecord)
            if (field.bMember && !field.bTitle)
                context.nBytes += field.type == FieldType::Scrambled || field.type == FieldType::String
                                      ? std::strlen(FieldTextGet(field, pRecord)) + 1
                                      : field.nSize;
    if (context.pDesc->pfnVisit != nullptr) {
        CByteCounter counter;
        context.pDesc->pfnVisit(*context.pTable, pRecord, counter);
        context.nBytes += counter.m_nBytes;
    }
}

}  // namespace

std::size_t HeldBytes(CClientDataMgr& mgr)
{
    std::size_t nBytes = 0;
    for (const auto& text : mgr.GetStrResTable().Texts())
        nBytes += sizeof(text.first) + text.second.size() + 1;
    for (const CatalogueEntry& entry : kCatalogue) {
        CountContext context{mgr.GetTableBySlot(entry.nSlot), entry.pDesc, 0};
        entry.pDesc->pfnForEach(*context.pTable, &RecordBytes, &context);
        nBytes += context.nBytes;
    }
    return nBytes;
}
