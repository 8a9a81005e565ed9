#include "TableView.h"

#include <cerrno>
#include <cstdlib>

#include "ClientData/ClientDataMgr.h"
#include "ZelGameBase/ZelCrt.h"

namespace {

// Collects what a record shows.
class CRecordBuilder final : public FieldVisitor {
public:
    explicit CRecordBuilder(ViewRecord& record) : m_record(record) {}
    void Number(const char* szKey, int64_t nValue) override
    {
        m_record.setField.push_back({szKey, std::to_string(nValue), false});
    }
    void Text(const char* szKey, const char* szText) override { m_record.setField.push_back({szKey, szText, true}); }

private:
    ViewRecord& m_record;
};

// The words of a table's key names, "Major Minor" -> {"Major", "Minor"}.
std::vector<std::string> KeyNames(const TableDesc& desc)
{
    std::vector<std::string> setName;
    for (const char* p = desc.szKey; *p != '\0'; ++p) {
        if (*p == ' ')
            continue;
        if (p == desc.szKey || p[-1] == ' ')
            setName.emplace_back();
        setName.back().push_back(*p);
    }
    return setName;
}

void RecordBuild(CDataTable& table, const TableDesc& desc, const void* pRecord, const RecordKey& key,
                 ViewRecord& record)
{
    CRecordBuilder builder(record);
    const std::vector<std::string> setName = KeyNames(desc);
    for (std::size_t i = 0; i < setName.size(); ++i) {
        if (key.szName != nullptr)
            builder.Text(setName[i].c_str(), key.szName);
        else
            builder.Number(setName[i].c_str(), key.nNumber[i]);
        record.strKey += (i == 0 ? "" : " ") + record.setField.back().strValue;
    }
    if (setName.empty() && key.szName != nullptr)
        record.strKey = key.szName;
    TableRecordVisit(table, desc, pRecord, builder);
}

struct AllContext {
    CDataTable* pTable;
    const TableDesc* pDesc;
    std::vector<ViewRecord>* pRecords;
};

void RecordCollect(const void* pRecord, const RecordKey& key, void* pContext)
{
    AllContext& context = *static_cast<AllContext*>(pContext);
    context.pRecords->emplace_back();
    RecordBuild(*context.pTable, *context.pDesc, pRecord, key, context.pRecords->back());
}

// A whole decimal number of 64 bits.
bool KeyNumber(const std::string& strWord, int64_t& nValue)
{
    if (strWord.empty())
        return false;
    char* pEnd = nullptr;
    errno = 0;
    nValue = std::strtoll(strWord.c_str(), &pEnd, 10);
    return *pEnd == '\0' && errno == 0;
}

// The words of a key as the table's kind reads them.
bool KeyParse(const TableDesc& desc, const std::vector<std::string>& setKey, RecordKey& key)
{
    key = RecordKey{0, {0, 0, 0, 0}, nullptr};
    switch (desc.keyKind) {
        case TABLE_KEY_NONE:
            return setKey.empty() || (setKey.size() == 1 && setKey[0] == "-");
        case TABLE_KEY_NAME:
            key.szName = setKey.size() == 1 ? setKey[0].c_str() : nullptr;
            return key.szName != nullptr;
        case TABLE_KEY_TITLE:
            if (setKey.size() != 1)
                return false;
            key.nAmount = KeyNumber(setKey[0], key.nNumber[0]) ? 1 : 0;
            key.szName = key.nAmount == 0 ? setKey[0].c_str() : nullptr;
            return true;
        case TABLE_KEY_NUMBERS:
            if (setKey.size() != KeyNames(desc).size())
                return false;
            for (std::size_t i = 0; i < setKey.size(); ++i)
                if (!KeyNumber(setKey[i], key.nNumber[i]))
                    return false;
            key.nAmount = static_cast<int>(setKey.size());
            return true;
    }
    return false;
}

void StrResRecord(unsigned nId, const char* szText, ViewRecord& record)
{
    record.strKey = std::to_string(nId);
    record.setField.push_back({"id", record.strKey, false});
    record.setField.push_back({"text", szText, true});
}

}  // namespace

const std::vector<TableView>& AllTableViews()
{
    static const std::vector<TableView> setView = [] {
        std::vector<TableView> setAll;
        for (const CatalogueEntry& entry : kCatalogue)
            setAll.push_back(TableView{entry.szName, &entry});
        setAll.push_back(TableView{"StrRes", nullptr});
        return setAll;
    }();
    return setView;
}

const TableView* FindTableView(const std::string& strName)
{
    for (const TableView& view : AllTableViews())
        if (CrtCompareNoCase(view.szName, strName.c_str()) == 0)
            return &view;
    return nullptr;
}

std::string ViewKeyUsage(const TableView& view)
{
    if (view.pEntry == nullptr)
        return "ID";
    const TableDesc& desc = *view.pEntry->pDesc;
    if (desc.keyKind == TABLE_KEY_NONE)
        return "-";
    if (desc.keyKind == TABLE_KEY_TITLE)
        return desc.szKey[0] != '\0' ? std::string(desc.szKey) + " | NAME" : "ID | NAME";
    std::string strUsage = desc.szKey;
    for (char& c : strUsage)
        c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
    return strUsage;
}

void ViewAllRecords(const TableView& view, CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    if (view.pEntry == nullptr) {
        for (const auto& [nId, strText] : mgr.GetStrResTable().Texts()) {
            setRecord.emplace_back();
            StrResRecord(nId, strText.c_str(), setRecord.back());
        }
        return;
    }
    AllContext context{mgr.GetTableBySlot(view.pEntry->nSlot), view.pEntry->pDesc, &setRecord};
    view.pEntry->pDesc->pfnForEach(*context.pTable, &RecordCollect, &context);
}

bool ViewGetRecord(const TableView& view, CClientDataMgr& mgr, const std::vector<std::string>& setKey,
                   ViewRecord& record)
{
    if (view.pEntry == nullptr) {
        int64_t nId = 0;
        if (setKey.size() != 1 || !KeyNumber(setKey[0], nId) || nId < 0 || nId > UINT32_MAX ||
            mgr.GetStrResTable().Texts().count(static_cast<unsigned>(nId)) == 0)
            return false;
        StrResRecord(static_cast<unsigned>(nId), mgr.GetStrRes(static_cast<unsigned>(nId)), record);
        return true;
    }
    const TableDesc& desc = *view.pEntry->pDesc;
    RecordKey key;
    if (!KeyParse(desc, setKey, key))
        return false;
    CDataTable* pTable = mgr.GetTableBySlot(view.pEntry->nSlot);
    const void* pRecord = desc.pfnFind(*pTable, key);
    if (pRecord == nullptr)
        return false;
    RecordBuild(*pTable, desc, pRecord, key, record);
    return true;
}
