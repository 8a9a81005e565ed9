#include "TableView.h"

#include <charconv>
#include <cstdio>

#include "ClientData/ClientDataMgr.h"
#include "Commands.h"
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

// A whole decimal token (a leading minus allowed) or 0x hex, of 64 bits.
bool KeyNumber(const std::string& strWord, int64_t& nValue)
{
    const char* pFirst = strWord.data();
    const char* pLast = strWord.data() + strWord.size();
    int nBase = 10;
    if (strWord.size() > 2 && strWord[0] == '0' && (strWord[1] == 'x' || strWord[1] == 'X')) {
        pFirst += 2;
        nBase = 16;
    }
    if (pFirst == pLast || *pFirst == '+' || (nBase == 16 && *pFirst == '-'))
        return false;
    const std::from_chars_result result = std::from_chars(pFirst, pLast, nValue, nBase);
    return result.ec == std::errc() && result.ptr == pLast;
}

// The words of a key as the table's kind reads them; false when they are not
// of its kind.
bool KeyParse(const TableDesc& desc, const std::vector<std::string>& setKey, RecordKey& key)
{
    key = RecordKey{0, {0, 0, 0, 0}, nullptr};
    switch (desc.keyKind) {
        case TABLE_KEY_NONE:
            return setKey.empty();
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

std::string TableFileRead(const CatalogueEntry& entry, CClientDataMgr& mgr)
{
    const std::string& strPath = mgr.GetTableBySlot(entry.nSlot)->GetFilePath();
    if (CatalogueIsFixedPath(entry.szFile) || strPath.empty() || strPath.back() == '/')
        return CatalogueDataPath(entry.szFile);
    return DataPathShown(strPath);
}

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

std::size_t ViewKeyArity(const TableView& view)
{
    if (view.pEntry == nullptr)
        return 1;
    const TableDesc& desc = *view.pEntry->pDesc;
    return desc.keyKind == TABLE_KEY_NONE ? 0 : desc.keyKind == TABLE_KEY_NUMBERS ? KeyNames(desc).size() : 1;
}

std::string ViewKeyKind(const TableView& view)
{
    const TableKeyKind kind = view.pEntry == nullptr ? TABLE_KEY_NUMBERS : view.pEntry->pDesc->keyKind;
    switch (kind) {
        case TABLE_KEY_NONE:
            return "no key (it is one record of settings)";
        case TABLE_KEY_NUMBERS:
            return ViewKeyUsage(view) + ", whole numbers (decimal or 0x hex)";
        case TABLE_KEY_NAME:
            return ViewKeyUsage(view) + ", a name matched exactly";
        case TABLE_KEY_TITLE:
            return ViewKeyUsage(view) + ", a number or a section title matched exactly";
    }
    return "";
}

std::string ViewKeyUsage(const TableView& view)
{
    if (view.pEntry == nullptr)
        return "ID";
    const TableDesc& desc = *view.pEntry->pDesc;
    if (desc.keyKind == TABLE_KEY_NONE)
        return "";
    if (desc.keyKind == TABLE_KEY_TITLE)
        return desc.szKey[0] != '\0' ? std::string(desc.szKey) + " | NAME" : "ID | NAME";
    std::string strUsage = desc.szKey;
    for (char& c : strUsage)
        c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
    return strUsage;
}

std::vector<ViewColumn> ViewDescribedColumns(const TableView& view)
{
    if (view.pEntry == nullptr)
        return {{"id", false}, {"text", true}};
    const TableDesc& desc = *view.pEntry->pDesc;
    std::vector<ViewColumn> setColumn;
    for (const std::string& strName : KeyNames(desc))
        setColumn.push_back({strName, desc.keyKind == TABLE_KEY_NAME});
    if (desc.pRecord != nullptr)
        for (const FieldDesc& field : *desc.pRecord)
            if (!field.bTitle && field.bMember)
                setColumn.push_back({field.szKey, !field.IsNumber()});
    return setColumn;
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

bool ViewKeyParses(const TableView& view, const std::vector<std::string>& setKey)
{
    int64_t nId = 0;
    RecordKey key;
    return view.pEntry == nullptr ? setKey.size() == 1 && KeyNumber(setKey[0], nId)
                                  : KeyParse(*view.pEntry->pDesc, setKey, key);
}

bool ViewGetRecord(const TableView& view, CClientDataMgr& mgr, const std::vector<std::string>& setKey,
                   ViewRecord& record)
{
    if (!ViewKeyParses(view, setKey))
        return false;
    if (view.pEntry == nullptr) {
        int64_t nId = 0;
        KeyNumber(setKey[0], nId);
        if (nId < 0 || nId > UINT32_MAX || mgr.GetStrResTable().Texts().count(static_cast<unsigned>(nId)) == 0)
            return false;
        StrResRecord(static_cast<unsigned>(nId), mgr.GetStrRes(static_cast<unsigned>(nId)), record);
        return true;
    }
    const TableDesc& desc = *view.pEntry->pDesc;
    RecordKey key;
    KeyParse(desc, setKey, key);
    CDataTable* pTable = mgr.GetTableBySlot(view.pEntry->nSlot);
    const void* pRecord = desc.pfnFind(*pTable, key);
    if (pRecord == nullptr)
        return false;
    RecordBuild(*pTable, desc, pRecord, key, record);
    return true;
}

int RunTablesCommand()
{
    for (const TableView& view : AllTableViews()) {
        const std::string strUsage = ViewKeyUsage(view);
        if (strUsage.empty())
            std::printf("%s\n", view.szName);  // a table of settings takes no key
        else
            std::printf("%-24s %s\n", view.szName, strUsage.c_str());
    }
    return 0;
}
