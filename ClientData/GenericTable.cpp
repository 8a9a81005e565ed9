#include "ClientData/GenericTable.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "ClientData/Catalogue.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

// A title holds a number when atoi reads at least one digit of it.
bool TitleHoldsNumber(const char* szTitle)
{
    const char* p = szTitle;
    while (CrtIsSpace(static_cast<unsigned char>(*p)))
        ++p;
    if (*p == '+' || *p == '-')
        ++p;
    return *p >= '0' && *p <= '9';
}

int CompareKeys(std::string_view a, std::string_view b)
{
    return CrtCompareNoCase(a.data(), a.size(), b.data(), b.size());
}

}  // namespace

template <class Interface, IGenericTable::Kind K>
CGenericTableOf<Interface, K>::CGenericTableOf(const CatalogueEntry& entry)
    : m_szFixedPath(CatalogueIsFixedPath(entry.szFile) ? entry.szFile : nullptr)
{
    if (m_szFixedPath == nullptr)
        this->m_strFileName = entry.szFile;
}

template <class Interface, IGenericTable::Kind K>
const char* CGenericTableOf<Interface, K>::GetLoadPath() const
{
    return m_szFixedPath != nullptr ? m_szFixedPath : this->m_strFilePath.c_str();
}

template <class Interface, IGenericTable::Kind K>
void CGenericTableOf<Interface, K>::Load()
{
    // The table holds one file's image: a second Load replaces the first
    // rather than adding ids that would point past the new image.
    Clear();
    const char* szPath = GetLoadPath();
    if (!ReadFile(szPath)) {
        LogSave("error on open %s.", szPath);
        return;
    }
    m_bLoaded = true;
    const int nAmount = K == IGenericTable::KIND_SECTIONS ? m_sections.GetSectionAmount() : m_columns.GetRecordAmount();
    m_setRecord.reserve(static_cast<std::size_t>(nAmount));
    for (int i = 0; i < nAmount; ++i) {
        const char* szTitle = GetRecordTitle(i);
        m_setRecord.push_back(Record{static_cast<uint32_t>(CrtAtoi(szTitle)), TitleHoldsNumber(szTitle)});
    }
    Index();
}

template <class Interface, IGenericTable::Kind K>
bool CGenericTableOf<Interface, K>::ReadFile(const char* szPath)
{
    if constexpr (K == IGenericTable::KIND_SECTIONS)
        return m_sections.Open(szPath, 1);
    else
        return m_columns.Open(szPath, 1, ' ');
}

template <class Interface, IGenericTable::Kind K>
void CGenericTableOf<Interface, K>::Index()
{
    // (id, record) of the numbered records, sorted so that the first record
    // of an id comes first.
    std::vector<std::pair<uint32_t, int>> setById;
    for (std::size_t i = 0; i < m_setRecord.size(); ++i)
        if (m_setRecord[i].bNumbered)
            setById.emplace_back(m_setRecord[i].nId, static_cast<int>(i));
    std::sort(setById.begin(), setById.end());
    m_firstById.Build(setById.size(), [&setById](auto add) {
        for (std::size_t i = 0; i < setById.size(); ++i)
            if (i == 0 || setById[i].first != setById[i - 1].first)
                add(setById[i].first, setById[i].second);
    });
    if (LoadFindingsWanted())
        ReportDuplicates(setById);

    m_mapFirstByTitle.reserve(m_setRecord.size());
    for (std::size_t i = 0; i < m_setRecord.size(); ++i)
        m_mapFirstByTitle.emplace(GetRecordTitle(static_cast<int>(i)), static_cast<int>(i));  // the first stays

    if constexpr (K == IGenericTable::KIND_SECTIONS) {
        for (int nSection = 0; nSection < m_sections.GetSectionAmount(); ++nSection)
            for (int nKey = 0; nKey < m_sections.GetKeyAmount(nSection); ++nKey)
                m_setKeyIndex.emplace_back(nSection, nKey);
        // Keys of a section are already in position order: a stable sort by
        // the key keeps the first occurrence first.
        std::stable_sort(m_setKeyIndex.begin(), m_setKeyIndex.end(),
                         [this](const std::pair<int, int>& a, const std::pair<int, int>& b) {
                             if (a.first != b.first)
                                 return a.first < b.first;
                             return CompareKeys(m_sections.GetKeyAt(a.first, a.second),
                                                m_sections.GetKeyAt(b.first, b.second)) < 0;
                         });
    }
}

template <class Interface, IGenericTable::Kind K>
int CGenericTableOf<Interface, K>::LineOf(int nIndex) const
{
    if constexpr (K == IGenericTable::KIND_SECTIONS)
        return m_sections.GetTitleLine(nIndex);
    else
        return m_columns.GetRecord(nIndex)->GetLine();
}

// Lookups answer the first record of an id or a title: the later ones are
// reached only by their index.
template <class Interface, IGenericTable::Kind K>
void CGenericTableOf<Interface, K>::ReportDuplicates(const std::vector<std::pair<uint32_t, int>>& setById) const
{
    const char* szPath = GetLoadPath();
    for (std::size_t i = 1; i < setById.size(); ++i)
        if (setById[i].first == setById[i - 1].first)
            LoadFindingReport(szPath, LineOf(setById[i].second), FINDING_WARNING, "duplicate-id",
                              "id %u repeats line %d: a lookup by id answers the first", setById[i].first,
                              LineOf(setById[i - 1].second));
}

template <class Interface, IGenericTable::Kind K>
void CGenericTableOf<Interface, K>::Clear()
{
    m_bLoaded = false;
    m_sections.Close();
    m_columns.Close();
    m_setRecord.clear();
    m_firstById.Clear();
    m_mapFirstByTitle.clear();
    m_setKeyIndex.clear();
}

template <class Interface, IGenericTable::Kind K>
int CGenericTableOf<Interface, K>::GetRecordAmount()
{
    return static_cast<int>(m_setRecord.size());
}

template <class Interface, IGenericTable::Kind K>
int CGenericTableOf<Interface, K>::FindRecord(unsigned int nId)
{
    const int* pIndex = m_firstById.Find(nId);
    return pIndex != nullptr ? *pIndex : -1;
}

template <class Interface, IGenericTable::Kind K>
int CGenericTableOf<Interface, K>::FindRecordByName(const char* szName)
{
    if (szName == nullptr)
        return -1;
    const auto it = m_mapFirstByTitle.find(szName);
    return it != m_mapFirstByTitle.end() ? it->second : -1;
}

template <class Interface, IGenericTable::Kind K>
unsigned int CGenericTableOf<Interface, K>::GetRecordId(int nIndex)
{
    return IsRecord(nIndex) && m_setRecord[static_cast<std::size_t>(nIndex)].bNumbered
               ? m_setRecord[static_cast<std::size_t>(nIndex)].nId
               : 0;
}

template <class Interface, IGenericTable::Kind K>
const char* CGenericTableOf<Interface, K>::GetRecordTitle(int nIndex)
{
    if constexpr (K == IGenericTable::KIND_SECTIONS) {
        const std::string_view title = m_sections.GetTitle(nIndex);
        return title.empty() ? "" : title.data();
    } else {
        const CDataRow* pRow = m_columns.GetRecord(nIndex);
        return pRow != nullptr ? pRow->GetStr(0, "") : "";
    }
}

template <class Interface, IGenericTable::Kind K>
int CGenericTableOf<Interface, K>::GetFieldAmount(int nIndex)
{
    if (!IsRecord(nIndex))
        return 0;
    if constexpr (K == IGenericTable::KIND_SECTIONS)
        return m_sections.GetKeyAmount(nIndex);
    else
        return m_columns.GetRecord(nIndex)->GetFieldAmount();
}

template <class Interface, IGenericTable::Kind K>
const char* CGenericTableOf<Interface, K>::GetFieldText(int nIndex, int nField)
{
    if (!IsRecord(nIndex) || nField < 0 || nField >= GetFieldAmount(nIndex))
        return "";
    if constexpr (K == IGenericTable::KIND_SECTIONS)
        return m_sections.GetValueAt(nIndex, nField).data();
    else
        return m_columns.GetRecord(nIndex)->GetStr(nField, "");
}

template <class Interface, IGenericTable::Kind K>
int CGenericTableOf<Interface, K>::GetFieldInt(int nIndex, int nField, int nDefault)
{
    if (!IsRecord(nIndex) || nField < 0 || nField >= GetFieldAmount(nIndex))
        return nDefault;
    return CrtAtoi(GetFieldText(nIndex, nField));
}

template <class Interface, IGenericTable::Kind K>
const char* CGenericTableOf<Interface, K>::ValueOf(int nIndex, const char* szKey) const
{
    if constexpr (K != IGenericTable::KIND_SECTIONS) {
        return nullptr;
    } else {
        if (!IsRecord(nIndex) || szKey == nullptr)
            return nullptr;
        const std::string_view key(szKey);
        const auto it = std::lower_bound(
            m_setKeyIndex.begin(), m_setKeyIndex.end(), std::make_pair(nIndex, 0),
            [&](const std::pair<int, int>& entry, const std::pair<int, int>&) {
                return entry.first < nIndex ||
                       (entry.first == nIndex && CompareKeys(m_sections.GetKeyAt(entry.first, entry.second), key) < 0);
            });
        if (it == m_setKeyIndex.end() || it->first != nIndex ||
            CompareKeys(m_sections.GetKeyAt(nIndex, it->second), key) != 0)
            return nullptr;
        return m_sections.GetValueAt(nIndex, it->second).data();
    }
}

template <class Interface, IGenericTable::Kind K>
const char* CGenericTableOf<Interface, K>::GetValueText(int nIndex, const char* szKey, const char* szDefault)
{
    const char* szValue = ValueOf(nIndex, szKey);
    return szValue != nullptr ? szValue : szDefault;
}

template <class Interface, IGenericTable::Kind K>
int CGenericTableOf<Interface, K>::GetValueInt(int nIndex, const char* szKey, int nDefault)
{
    const char* szValue = ValueOf(nIndex, szKey);
    return szValue != nullptr ? CrtAtoi(szValue) : nDefault;
}

template <class Interface, IGenericTable::Kind K>
const char* CGenericTableOf<Interface, K>::GetFieldName(int nIndex, int nField)
{
    if (K != IGenericTable::KIND_SECTIONS || !IsRecord(nIndex) || nField < 0 || nField >= GetFieldAmount(nIndex))
        return "";
    return m_sections.GetKeyAt(nIndex, nField).data();
}

template class CGenericTableOf<ISectionTable, IGenericTable::KIND_SECTIONS>;
template class CGenericTableOf<IColumnTable, IGenericTable::KIND_COLUMNS>;

namespace {

// A generic record reaches the tools as its entry in Records(); its index is
// its position there.
template <class Table>
void GenericForEach(CDataTable& table, RecordSinkFn fn, void* pContext)
{
    Table& generic = static_cast<Table&>(table);
    for (std::size_t i = 0; i < generic.Records().size(); ++i)
        fn(&generic.Records()[i], RecordKey{0, {0, 0, 0, 0}, generic.GetRecordTitle(static_cast<int>(i))}, pContext);
}

template <class Table>
const void* GenericFind(CDataTable& table, const RecordKey& key)
{
    Table& generic = static_cast<Table&>(table);
    const int nIndex = key.szName != nullptr ? generic.FindRecordByName(key.szName)
                                             : generic.FindRecord(static_cast<unsigned int>(key.nNumber[0]));
    return nIndex < 0 ? nullptr : &generic.Records()[static_cast<std::size_t>(nIndex)];
}

template <class Table>
void GenericVisit(CDataTable& table, const void* pRecord, FieldVisitor& visitor)
{
    Table& generic = static_cast<Table&>(table);
    const int nIndex = static_cast<int>(static_cast<const typename Table::Record*>(pRecord) - generic.Records().data());
    visitor.Number("index", nIndex);
    visitor.Number("id", generic.GetRecordId(nIndex));
    visitor.Text("title", generic.GetRecordTitle(nIndex));
    for (int nField = 0; nField < generic.GetFieldAmount(nIndex); ++nField) {
        const std::string strName = generic.GetFieldName(nIndex, nField);
        visitor.Text(strName.empty() ? ("field" + std::to_string(nField)).c_str() : strName.c_str(),
                     generic.GetFieldText(nIndex, nField));
    }
}

}  // namespace

const TableDesc kSectionTableDesc = {nullptr,
                                     TABLE_KEY_TITLE,
                                     "",
                                     &GenericForEach<CSectionTable>,
                                     &GenericFind<CSectionTable>,
                                     &GenericVisit<CSectionTable>,
                                     nullptr,
                                     25};
const TableDesc kColumnTableDesc = {nullptr,
                                    TABLE_KEY_TITLE,
                                    "",
                                    &GenericForEach<CColumnTable>,
                                    &GenericFind<CColumnTable>,
                                    &GenericVisit<CColumnTable>,
                                    nullptr,
                                    50};
