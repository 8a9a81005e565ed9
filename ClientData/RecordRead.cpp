#include "ClientData/RecordRead.h"

#include <bitset>
#include <cinttypes>
#include <climits>
#include <cstring>
#include <string_view>

#include "ZelGameBase/DataFileReader.h"
#include "ZelGameBase/EncryptData.h"
#include "ZelGameBase/IniSectionReader.h"
#include "ZelGameBase/LoadFindings.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelString.h"

namespace {

// Descriptions stay below this many fields, so one bit set marks the fields a
// section has given.
constexpr std::size_t kMaxFields = 128;

char* FieldAt(void* pRecord, const FieldDesc& field) { return static_cast<char*>(pRecord) + field.nOffset; }

// The low bytes of nValue, as many as the field holds.
void NumberStore(const FieldDesc& field, void* pRecord, int64_t nValue)
{
    char* pField = FieldAt(pRecord, field);
    const uint64_t nBits = static_cast<uint64_t>(nValue);
    switch (field.nSize) {
        case 1: {
            const uint8_t n = static_cast<uint8_t>(nBits);
            std::memcpy(pField, &n, sizeof(n));
            break;
        }
        case 2: {
            const uint16_t n = static_cast<uint16_t>(nBits);
            std::memcpy(pField, &n, sizeof(n));
            break;
        }
        case 4: {
            const uint32_t n = static_cast<uint32_t>(nBits);
            std::memcpy(pField, &n, sizeof(n));
            break;
        }
        default:
            std::memcpy(pField, &nBits, sizeof(nBits));
            break;
    }
}

void TextStore(const FieldDesc& field, void* pRecord, const char* szValue)
{
    char* pField = FieldAt(pRecord, field);
    if (field.type == FieldType::Scrambled) {
        char szName[CEncryptString::MAXESTR];
        SafeStrCopy(szName, sizeof(szName), szValue);
        reinterpret_cast<CEncryptString*>(pField)->Set(szName);
        return;
    }
    if (field.type == FieldType::String) {
        *reinterpret_cast<CZelString*>(pField) = szValue;
        return;
    }
    SafeStrCopy(pField, field.nSize, szValue);
}

// Whether the whole text is one decimal number (a sign allowed) that fits a
// 32-bit int: what atoi reads of it is then all it says.
bool IsWholeDecimal(const char* szText)
{
    const char* p = szText;
    if (*p == '+' || *p == '-')
        ++p;
    if (*p == '\0')
        return false;
    int64_t nValue = 0;
    for (; *p != '\0'; ++p) {
        if (*p < '0' || *p > '9')
            return false;
        nValue = nValue * 10 + (*p - '0');
        if (nValue > int64_t{INT_MAX} + 1)
            return false;
    }
    return szText[0] == '-' || nValue <= INT_MAX;
}

bool IsWholeHex(const char* szText)
{
    const char* p = szText;
    if (p[0] == '0' && (p[1] == 'x' || p[1] == 'X'))
        p += 2;
    if (*p == '\0' || std::strlen(p) > 8)
        return false;
    for (; *p != '\0'; ++p)
        if (!((*p >= '0' && *p <= '9') || (*p >= 'a' && *p <= 'f') || (*p >= 'A' && *p <= 'F')))
            return false;
    return true;
}

void NumberFindings(const FieldDesc& field, const char* szValue, int64_t nRead, const void* pRecord, const char* szFile,
                    int nLine)
{
    const bool bWhole = field.type == FieldType::Hex ? IsWholeHex(szValue) : IsWholeDecimal(szValue);
    if (!bWhole) {
        LoadFindingReport(szFile, nLine, FINDING_WARNING, "not-a-number", "%s=%s is not a number: read as %" PRId64,
                          field.szKey, szValue, nRead);
        return;
    }
    const int64_t nKept = FieldNumberGet(field, pRecord);
    if (nKept != nRead)
        LoadFindingReport(szFile, nLine, FINDING_WARNING, "number-cut", "%s=%s does not fit %d bits: kept as %" PRId64,
                          field.szKey, szValue, field.nSize * 8, nKept);
}

// A text of nLength bytes for a text field.
void TextFindings(const FieldDesc& field, std::size_t nLength, const char* szFile, int nLine)
{
    if (nLength > field.TextLimit())
        LoadFindingReport(szFile, nLine, FINDING_WARNING, "text-cut", "%s of %u bytes is cut to %u", field.szKey,
                          static_cast<unsigned>(nLength), static_cast<unsigned>(field.TextLimit()));
}

void DefaultFinding(const FieldDesc& field, const char* szFile, int nLine, const char* szWhat)
{
    if (field.IsNumber())
        LoadFindingReport(szFile, nLine, FINDING_NOTE, "missing-key", "%s %s is missing: %" PRId64, szWhat, field.szKey,
                          field.nDefault);
    else
        LoadFindingReport(szFile, nLine, FINDING_NOTE, "missing-key", "%s %s is missing: \"%s\"", szWhat, field.szKey,
                          field.szDefault != nullptr ? field.szDefault : "");
}

// Sections mostly list their keys in the order of the description: the
// field after the last one found is tried first. A key names one field only,
// so a plain key that matches it is the field Find would give.
const FieldDesc* FindExpected(const RecordDesc& desc, std::size_t nExpected, std::string_view key)
{
    if (nExpected >= desc.nFieldAmount)
        return nullptr;
    const FieldDesc& field = desc.pField[nExpected];
    if (field.bTitle || field.bUnread || field.IsNumbered() || field.szSection != nullptr ||
        field.nKeyLength != key.size() || CrtCompareNoCase(field.szKey, key.size(), key.data(), key.size()) != 0)
        return nullptr;
    return &field;
}

void FieldSetDefault(const FieldDesc& field, void* pRecord)
{
    if (field.IsNumber())
        NumberStore(field, pRecord, field.nDefault);
    else
        TextStore(field, pRecord, field.szDefault != nullptr ? field.szDefault : "");
}

}  // namespace

void FieldStoreValue(const FieldDesc& field, const char* szValue, void* pRecord, const char* szFile, int nLine)
{
    if (!field.IsNumber()) {
        TextStore(field, pRecord, szValue);
        if (LoadFindingsWanted())
            TextFindings(field, std::strlen(szValue), szFile, nLine);
        return;
    }
    int64_t nRead;
    if (field.type == FieldType::Hex) {
        uint32_t nHex = 0;
        const char* pText = szValue;
        CrtScanHex32(pText, &nHex);
        nRead = nHex;
    } else {
        nRead = CrtAtoi(szValue);
    }
    NumberStore(field, pRecord, nRead);
    if (LoadFindingsWanted())
        NumberFindings(field, szValue, nRead, pRecord, szFile, nLine);
}

void RecordSetDefaults(const RecordDesc& desc, void* pRecord)
{
    for (const FieldDesc& field : desc)
        if (!field.bTitle && field.bMember && !field.bUnread)
            FieldSetDefault(field, pRecord);
}

void RecordReadSection(const RecordDesc& desc, const CIniSectionReader& reader, int nSection, void* pRecord,
                       const char* szFile)
{
    std::bitset<kMaxFields> setGiven;
    int setLine[kMaxFields];  // where each given field's key stands
    const bool bFindings = LoadFindingsWanted();
    const int nKeyAmount = reader.GetKeyAmount(nSection);
    std::size_t nExpected = 0;  // the field after the last one found
    for (int nKey = 0; nKey < nKeyAmount; ++nKey) {
        const std::string_view key = reader.GetKeyAt(nSection, nKey);
        const FieldDesc* pField = FindExpected(desc, nExpected, key);
        if (pField == nullptr)
            pField = desc.Find(key.data(), key.size());
        if (pField != nullptr)
            nExpected = static_cast<std::size_t>(pField - desc.begin()) + 1;
        if (pField == nullptr) {
            if (bFindings)
                LoadFindingReport(szFile, reader.GetKeyLine(nSection, nKey), FINDING_NOTE, "unknown-key",
                                  "%s is not read", key.data());
            continue;
        }
        const std::size_t nField = static_cast<std::size_t>(pField - desc.begin());
        if (pField->IsNumbered())
            continue;  // a family of keys: the table's own rules read them
        if (setGiven.test(nField)) {
            if (bFindings)
                LoadFindingReport(szFile, reader.GetKeyLine(nSection, nKey), FINDING_WARNING, "repeated-key",
                                  "%s repeats line %d: the first is read", key.data(), setLine[nField]);
            continue;
        }
        setGiven.set(nField);
        setLine[nField] = reader.GetKeyLine(nSection, nKey);
        if (pField->bMember)
            FieldStoreValue(*pField, reader.GetValueAt(nSection, nKey).data(), pRecord, szFile,
                            reader.GetKeyLine(nSection, nKey));
    }
    for (std::size_t nField = 0; nField < desc.nFieldAmount; ++nField) {
        const FieldDesc& field = desc.pField[nField];
        if (field.bTitle || !field.bMember || field.bUnread || setGiven.test(nField))
            continue;
        FieldSetDefault(field, pRecord);
        if (bFindings)
            DefaultFinding(field, szFile, reader.GetTitleLine(nSection), "key");
    }
}

void RecordReadColumns(const RecordDesc& desc, const CDataRow& row, int nFirstColumn, void* pRecord, const char* szFile)
{
    const int nAmount = row.GetFieldAmount();
    const bool bFindings = LoadFindingsWanted();
    for (std::size_t nField = 0; nField < desc.nFieldAmount; ++nField) {
        const FieldDesc& field = desc.pField[nField];
        const int nColumn = nFirstColumn + static_cast<int>(nField);
        if (!field.bMember || field.bTitle || field.bUnread)
            continue;
        if (nColumn < nAmount) {
            // Decimal columns, the bulk of a line, convert directly when no
            // one wants findings.
            const bool bDecimal = field.type == FieldType::Int || field.type == FieldType::UInt;
            if (bDecimal && !bFindings)
                NumberStore(field, pRecord, CrtAtoi(row.GetStr(nColumn, "")));
            else
                FieldStoreValue(field, row.GetStr(nColumn, ""), pRecord, szFile, row.GetLine());
            continue;
        }
        FieldSetDefault(field, pRecord);
        if (bFindings)
            DefaultFinding(field, szFile, row.GetLine(), "column");
    }
}

std::map<int, int> RecordKeyNumbers(const FieldDesc& field, const CIniSectionReader& reader, int nSection,
                                    int nFirst, int nLast)
{
    std::map<int, int> mapKey;
    for (int nKey = 0; nKey < reader.GetKeyAmount(nSection); ++nKey) {
        const std::string_view key = reader.GetKeyAt(nSection, nKey);
        const int64_t nNumber = field.NumberOf(key.data(), key.size());
        if (nNumber >= nFirst && nNumber <= nLast)
            mapKey.emplace(static_cast<int>(nNumber), nKey);  // a later key of the number is shadowed
    }
    return mapKey;
}

namespace {

// The length of the word the scan would read next, its leading blanks skipped.
std::size_t WordLength(const char* pText)
{
    while (CrtIsSpace(static_cast<unsigned char>(*pText)))
        ++pText;
    std::size_t nLength = 0;
    while (pText[nLength] != '\0' && !CrtIsSpace(static_cast<unsigned char>(pText[nLength])))
        ++nLength;
    return nLength;
}

ScanResult FieldScan(const FieldDesc& field, const char*& pText, void* pRecord)
{
    if (!field.bMember) {
        char szWord[2];  // the word is consumed, not kept
        return CrtScanWord(pText, szWord, sizeof(szWord));
    }
    if (!field.IsNumber())
        return CrtScanWord(pText, FieldAt(pRecord, field), field.nSize);
    uint32_t nValue = 0;
    const ScanResult result =
        field.type == FieldType::Hex ? CrtScanHex32(pText, &nValue) : CrtScanUInt32(pText, &nValue);
    if (result == SCAN_CONVERTED)
        NumberStore(field, pRecord, nValue);
    return result;
}

void ScanFindings(const RecordDesc& desc, int nConverted, const char* pRest, const char* szFile, int nLine)
{
    const int nFields = static_cast<int>(desc.nFieldAmount);
    if (nConverted < nFields && WordLength(pRest) > 0)
        LoadFindingReport(szFile, nLine, FINDING_ERROR, "not-a-number",
                          "column %s is not a number: it and the %d after it are 0", desc.pField[nConverted].szKey,
                          nFields - nConverted - 1);
    else if (nConverted < nFields)
        LoadFindingReport(szFile, nLine, FINDING_WARNING, "short-line", "the line ends after %d of %d columns",
                          nConverted, nFields);
    else if (WordLength(pRest) > 0)
        LoadFindingReport(szFile, nLine, FINDING_WARNING, "long-line",
                          "words after the last of %d columns are not read", nFields);
}

}  // namespace

int RecordScanLine(const RecordDesc& desc, const char* szLine, void* pRecord, const char* szFile, int nLine)
{
    const bool bFindings = LoadFindingsWanted();
    const char* pText = szLine;
    int nConverted = 0;
    for (const FieldDesc& field : desc) {
        if (bFindings && !field.IsNumber())
            TextFindings(field, WordLength(pText), szFile, nLine);
        const ScanResult result = FieldScan(field, pText, pRecord);
        if (result != SCAN_CONVERTED) {
            if (nConverted == 0 && result == SCAN_INPUT_END)
                return -1;
            break;
        }
        ++nConverted;
    }
    if (bFindings)
        ScanFindings(desc, nConverted, pText, szFile, nLine);
    return nConverted;
}
