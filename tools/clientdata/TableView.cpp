#include "TableView.h"

#include <cerrno>
#include <cstdlib>
#include <deque>
#include <string>

#include "ClientData/ClientDataMgr.h"
#include "ZelGameBase/ZelCrt.h"

bool ViewKeyNumber(const std::string& strWord, long long nLow, long long nHigh, long long& nValue)
{
    if (strWord.empty())
        return false;
    char* pEnd = nullptr;
    errno = 0;
    nValue = std::strtoll(strWord.c_str(), &pEnd, 10);
    return *pEnd == '\0' && errno == 0 && nValue >= nLow && nValue <= nHigh;
}

bool ViewSingleKey(const std::vector<std::string>& setKey, long long nLow, long long nHigh, long long& nValue)
{
    return setKey.size() == 1 && ViewKeyNumber(setKey[0], nLow, nHigh, nValue);
}

bool ViewSingleKeyU32(const std::vector<std::string>& setKey, uint32_t& nValue)
{
    long long nNumber = 0;
    if (!ViewSingleKey(setKey, 0, UINT32_MAX, nNumber))
        return false;
    nValue = static_cast<uint32_t>(nNumber);
    return true;
}

namespace {

std::vector<TableViewDef>& RegisteredViews()
{
    static std::vector<TableViewDef> setView;
    return setView;
}

// A generic table's records: section keys or column fields, by position.
void GenericRecords(IGenericTable& table, std::vector<ViewRecord>& setRecord)
{
    for (int i = 0; i < table.GetRecordAmount(); ++i) {
        ViewRecord record;
        record.strKey = table.GetRecordTitle(i);
        record.AddInt("index", i);
        record.AddInt("id", table.GetRecordId(i));
        record.AddText("title", table.GetRecordTitle(i));
        for (int nField = 0; nField < table.GetFieldAmount(i); ++nField) {
            const std::string strName = table.GetFieldName(i, nField);
            record.AddText(strName.empty() ? ("field" + std::to_string(nField)).c_str() : strName.c_str(),
                           table.GetFieldText(i, nField));
        }
        setRecord.push_back(std::move(record));
    }
}

// Generic views know their table by slot; the function pointers of a view
// cannot carry it, so each generic view is a small template instance.
template <int Slot>
IGenericTable* GenericTableOf(CClientDataMgr& mgr)
{
    return static_cast<IGenericTable*>(mgr.GetTableBySlot(Slot));
}

template <int Slot>
void GenericAll(CClientDataMgr& mgr, std::vector<ViewRecord>& setRecord)
{
    GenericRecords(*GenericTableOf<Slot>(mgr), setRecord);
}

// "#N" is the record at index N, anything else an id.
template <int Slot>
bool GenericGet(CClientDataMgr& mgr, const std::vector<std::string>& setKey, ViewRecord& record)
{
    if (setKey.size() != 1)
        return false;
    IGenericTable* pTable = GenericTableOf<Slot>(mgr);
    const std::string& strKey = setKey[0];
    const int nIndex = strKey[0] == '#' ? CrtAtoi(strKey.c_str() + 1)
                                         : pTable->FindRecord(static_cast<unsigned>(std::strtoul(strKey.c_str(), nullptr, 10)));
    if (nIndex < 0 || nIndex >= pTable->GetRecordAmount())
        return false;
    std::vector<ViewRecord> setRecord;
    GenericRecords(*pTable, setRecord);
    record = setRecord[static_cast<std::size_t>(nIndex)];
    return true;
}

std::vector<TableViewDef> GenericViews()
{
    std::vector<TableViewDef> setView;
#define CLIENTDATA_TABLE(slot, name, iface, cls, file)                                                     \
    if constexpr (std::is_same_v<iface, IGenericTable>)                                                   \
        setView.push_back(TableViewDef{#name, "ID | #INDEX", &GenericAll<slot>, &GenericGet<slot>});
#include "ClientData/Catalogue.def"
#undef CLIENTDATA_TABLE
    return setView;
}

}  // namespace

TableViewRegistration::TableViewRegistration(const TableViewDef& def) { RegisteredViews().push_back(def); }

std::vector<const TableViewDef*> AllTableViews()
{
    static const std::vector<TableViewDef> setGeneric = GenericViews();
    std::vector<const TableViewDef*> setView;
    for (const TableViewDef& view : RegisteredViews())
        setView.push_back(&view);
    for (const TableViewDef& view : setGeneric)
        setView.push_back(&view);
    return setView;
}

const TableViewDef* FindTableView(const std::string& strName)
{
    for (const TableViewDef* pView : AllTableViews())
        if (CrtCompareNoCase(pView->szName, strName.c_str()) == 0)
            return pView;
    return nullptr;
}

bool GetViewRecord(const TableViewDef& view, CClientDataMgr& mgr, const std::vector<std::string>& setKey,
                   ViewRecord& record)
{
    if (view.pfnGet != nullptr)
        return view.pfnGet(mgr, setKey, record);
    std::string strKey;
    for (const std::string& strPart : setKey)
        strKey += (strKey.empty() ? "" : " ") + strPart;
    std::vector<ViewRecord> setRecord;
    view.pfnAll(mgr, setRecord);
    for (ViewRecord& candidate : setRecord) {
        if (candidate.strKey == strKey) {
            record = std::move(candidate);
            return true;
        }
    }
    return false;
}
