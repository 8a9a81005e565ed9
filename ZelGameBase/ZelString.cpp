#include "ZelGameBase/ZelString.h"

#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <new>
#include <string>
#include <utility>

#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCrt.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

const char kSourceUnit[] = "ZelGameBase\\ZelString";

// The texts are the system's own, so they are spelled out rather than taken
// from the code (whose layout a formatter may change).
bool CheckFailed(const char* szCondition, int nLine)
{
    LogAssert(szCondition, nLine, kSourceUnit);
    return false;
}
#define ZEL_STRING_CHECK(condition, text) ((condition) ? true : CheckFailed(text, __LINE__))

static_assert(std::atomic<int32_t>::is_always_lock_free, "reference counts are interlocked");

// The shared empty string: (-1, 0, 0) followed by its terminator.
struct EmptyBlock {
    CZelStringData header;
    char chNil;
};
static_assert(offsetof(EmptyBlock, chNil) == sizeof(CZelStringData), "the text follows the header");
EmptyBlock g_emptyBlock = {{{-1}, 0, 0}, '\0'};

char* EmptyText() { return g_emptyBlock.header.data(); }

// lstrlenA: a null text is empty. Lengths past INT_MAX stay out of range so
// that the allocation check reports them.
int LengthOf(const char* lpsz)
{
    if (lpsz == nullptr)
        return 0;
    const std::size_t nLen = std::strlen(lpsz);
    return nLen > static_cast<std::size_t>(INT_MAX) ? INT_MAX : static_cast<int>(nLen);
}

int ClampLength(int64_t nLen) { return nLen > INT_MAX ? INT_MAX : static_cast<int>(nLen); }

// GBK (code page 936): a lead byte and the byte after it form one character.
bool IsLeadByte(char ch)
{
    const unsigned char c = static_cast<unsigned char>(ch);
    return c >= 0x81 && c <= 0xFE;
}
// Bytes of the character at p; a lead byte before the terminator stands alone.
int CharLength(const char* p) { return (IsLeadByte(p[0]) && p[1] != '\0') ? 2 : 1; }

// Whether the character of nLen bytes at pch is one of the set's characters.
bool CharInSet(const char* pch, int nLen, const char* lpszCharSet)
{
    for (const char* p = lpszCharSet; *p != '\0'; p += CharLength(p))
        if (CharLength(p) == nLen && std::memcmp(p, pch, nLen) == 0)
            return true;
    return false;
}

void FreeData(CZelStringData* pData)
{
    pData->~CZelStringData();
    PlatformHeapFree(pData);
}

}  // namespace

bool CZelString::IsValidString(const char* lpsz) { return lpsz != nullptr; }

bool CZelString::IsEmptyData(const CZelStringData* pData)
{
    return pData->nRefs.load(std::memory_order_relaxed) == -1 && pData->nDataLength == 0 &&
           pData->nAllocLength == 0;
}

CZelString::CZelString() : m_pchData(EmptyText()) {}

CZelString::CZelString(const CZelString& stringSrc) : m_pchData(EmptyText())
{
    ZEL_STRING_CHECK(stringSrc.GetData()->nRefs != 0, "stringSrc.GetData()->nRefs != 0");
    if (stringSrc.GetData()->nRefs >= 0) {
        ZEL_STRING_CHECK(NoninitData(stringSrc.GetData()), "NoninitData( stringSrc.GetData() )");
        stringSrc.GetData()->nRefs.fetch_add(1, std::memory_order_relaxed);
        m_pchData = stringSrc.m_pchData;
    } else {
        AssignCopy(stringSrc.GetLength(), stringSrc.m_pchData);
    }
}

CZelString::CZelString(const char* lpsz) : m_pchData(EmptyText())
{
    ZEL_STRING_CHECK(lpsz == NULL || CZelString::IsValidString(lpsz),
                     "lpsz == NULL || CZelString::IsValidString(lpsz)");
    const int nLen = LengthOf(lpsz);
    if (nLen > 0 && AllocBuffer(nLen))
        std::memcpy(m_pchData, lpsz, nLen);
}

CZelString::CZelString(const char* pch, int nLength) : m_pchData(EmptyText())
{
    if (pch != nullptr && nLength > 0 && AllocBuffer(nLength))
        std::memcpy(m_pchData, pch, nLength);
}

CZelString::~CZelString() { Release(); }

bool CZelString::AllocBuffer(int nLen)
{
    ZEL_STRING_CHECK(nLen >= 0, "nLen >= 0");
    ZEL_STRING_CHECK(nLen <= INT_MAX - 1, "nLen <= INT_MAX-1");
    m_pchData = EmptyText();
    if (nLen < 0 || nLen > INT_MAX - 1)
        return false;
    if (nLen == 0)
        return true;
    // Exactly header + text + terminator: no rounding, no pooling. From the
    // process heap, since a copy handed to the client may be the last one
    // and is then freed by the client's runtime.
    void* pBlock = PlatformHeapAlloc(sizeof(CZelStringData) + static_cast<std::size_t>(nLen) + 1);
    if (pBlock == nullptr)
        return false;
    CZelStringData* pData = new (pBlock) CZelStringData;
    pData->nRefs.store(1, std::memory_order_relaxed);
    pData->nDataLength = nLen;
    pData->nAllocLength = nLen;
    pData->data()[nLen] = '\0';
    m_pchData = pData->data();
    return true;
}

void CZelString::Release()
{
    if (!IsEmptyData(GetData())) {
        ZEL_STRING_CHECK(GetData()->nRefs != 0, "GetData()->nRefs != 0");
        if (GetData()->nRefs.fetch_sub(1, std::memory_order_acq_rel) - 1 <= 0)
            FreeData(GetData());
    }
    m_pchData = EmptyText();
}

void CZelString::Empty()
{
    if (GetData()->nRefs >= 0)
        Release();
    else
        AssignCopy(0, "");  // a locked buffer stays locked, now empty
}

void CZelString::CopyBeforeWrite()
{
    if (GetData()->nRefs > 1) {
        // Copy first, then drop the shared reference: another sharer may
        // release its own at the same moment.
        CZelString strShared;
        std::swap(m_pchData, strShared.m_pchData);
        if (AllocBuffer(strShared.GetLength()))
            std::memcpy(m_pchData, strShared.m_pchData, strShared.GetLength());
    }
    ZEL_STRING_CHECK(GetData()->nRefs <= 1, "GetData()->nRefs <= 1");
}

void CZelString::AssignCopy(int nSrcLen, const char* lpszSrcData)
{
    CZelStringData* pData = GetData();
    if (pData->nRefs > 1 || nSrcLen > pData->nAllocLength) {
        // The old block stays alive until the copy is made: the source may lie in it.
        CZelString strOld;
        std::swap(m_pchData, strOld.m_pchData);
        if (nSrcLen > 0 && AllocBuffer(nSrcLen))
            std::memcpy(m_pchData, lpszSrcData, nSrcLen);
        return;
    }
    if (IsEmptyData(pData))
        return;  // nothing to write: nSrcLen is 0
    std::memmove(m_pchData, lpszSrcData, nSrcLen);
    pData->nDataLength = nSrcLen;
    m_pchData[nSrcLen] = '\0';
}

CZelString& CZelString::operator=(const CZelString& stringSrc)
{
    ZEL_STRING_CHECK(stringSrc.GetData()->nRefs != 0, "stringSrc.GetData()->nRefs != 0");
    if (m_pchData == stringSrc.m_pchData)
        return *this;
    const bool bLocked = GetData()->nRefs < 0 && NoninitData(GetData());
    if (bLocked || stringSrc.GetData()->nRefs < 0) {
        AssignCopy(stringSrc.GetLength(), stringSrc.m_pchData);
    } else {
        ZEL_STRING_CHECK(NoninitData(stringSrc.GetData()), "NoninitData( stringSrc.GetData() )");
        stringSrc.GetData()->nRefs.fetch_add(1, std::memory_order_relaxed);
        Release();
        m_pchData = stringSrc.m_pchData;
    }
    return *this;
}

CZelString& CZelString::operator=(const char* lpsz)
{
    ZEL_STRING_CHECK(lpsz == NULL || CZelString::IsValidString(lpsz),
                     "lpsz == NULL || CZelString::IsValidString(lpsz)");
    AssignCopy(LengthOf(lpsz), lpsz);
    return *this;
}

char CZelString::GetAt(int nIndex) const
{
    const bool bLow = ZEL_STRING_CHECK(nIndex >= 0, "nIndex >= 0");
    const bool bHigh = ZEL_STRING_CHECK(nIndex < GetData()->nDataLength, "nIndex < GetData()->nDataLength");
    return (bLow && bHigh) ? m_pchData[nIndex] : '\0';
}

void CZelString::SetAt(int nIndex, char ch)
{
    const bool bLow = ZEL_STRING_CHECK(nIndex >= 0, "nIndex >= 0");
    const bool bHigh = ZEL_STRING_CHECK(nIndex < GetData()->nDataLength, "nIndex < GetData()->nDataLength");
    if (!bLow || !bHigh)
        return;
    CopyBeforeWrite();
    m_pchData[nIndex] = ch;
}

void CZelString::ConcatCopy(int nSrc1Len, const char* lpszSrc1Data, int nSrc2Len, const char* lpszSrc2Data)
{
    const int64_t nNewLen = static_cast<int64_t>(nSrc1Len) + nSrc2Len;
    if (nNewLen == 0 || !AllocBuffer(ClampLength(nNewLen)))
        return;
    std::memcpy(m_pchData, lpszSrc1Data, nSrc1Len);
    std::memcpy(m_pchData + nSrc1Len, lpszSrc2Data, nSrc2Len);
}

void CZelString::ConcatInPlace(int nSrcLen, const char* lpszSrcData)
{
    if (nSrcLen == 0)
        return;
    CZelStringData* pData = GetData();
    if (pData->nRefs > 1 || static_cast<int64_t>(pData->nDataLength) + nSrcLen > pData->nAllocLength) {
        CZelString strOld;
        std::swap(m_pchData, strOld.m_pchData);
        ConcatCopy(strOld.GetLength(), strOld.m_pchData, nSrcLen, lpszSrcData);
    } else {
        std::memmove(m_pchData + pData->nDataLength, lpszSrcData, nSrcLen);
        pData->nDataLength += nSrcLen;
        m_pchData[pData->nDataLength] = '\0';
    }
    ZEL_STRING_CHECK(GetData()->nDataLength <= GetData()->nAllocLength,
                     "GetData()->nDataLength <= GetData()->nAllocLength");
}

CZelString& CZelString::operator+=(const CZelString& string)
{
    // Keeps the source alive should it share this string's block.
    const CZelString strSource(string);
    ConcatInPlace(strSource.GetLength(), strSource.m_pchData);
    return *this;
}

CZelString& CZelString::operator+=(const char* lpsz)
{
    ZEL_STRING_CHECK(lpsz == NULL || CZelString::IsValidString(lpsz),
                     "lpsz == NULL || CZelString::IsValidString(lpsz)");
    ConcatInPlace(LengthOf(lpsz), lpsz);
    return *this;
}

CZelString& CZelString::operator+=(char ch)
{
    ConcatInPlace(1, &ch);
    return *this;
}

CZelString operator+(const CZelString& string1, const CZelString& string2)
{
    CZelString s;
    s.ConcatCopy(string1.GetLength(), string1.m_pchData, string2.GetLength(), string2.m_pchData);
    return s;
}

CZelString operator+(const CZelString& string, const char* lpsz)
{
    CZelString s;
    s.ConcatCopy(string.GetLength(), string.m_pchData, LengthOf(lpsz), lpsz);
    return s;
}

CZelString operator+(const char* lpsz, const CZelString& string)
{
    CZelString s;
    s.ConcatCopy(LengthOf(lpsz), lpsz, string.GetLength(), string.m_pchData);
    return s;
}

char* CZelString::GetBuffer(int nMinBufLength)
{
    ZEL_STRING_CHECK(nMinBufLength >= 0, "nMinBufLength >= 0");
    if (nMinBufLength < 0)
        nMinBufLength = 0;
    if (GetData()->nRefs > 1 || nMinBufLength > GetData()->nAllocLength) {
        CZelString strOld;
        std::swap(m_pchData, strOld.m_pchData);
        CZelStringData* pOldData = strOld.GetData();
        ZEL_STRING_CHECK(pOldData != NULL, "pOldData != NULL");
        const int nOldLen = pOldData->nDataLength;
        if (nMinBufLength < nOldLen)
            nMinBufLength = nOldLen;
        if (!AllocBuffer(nMinBufLength)) {
            std::swap(m_pchData, strOld.m_pchData);  // keep the text
            return m_pchData;
        }
        if (nOldLen > 0) {
            std::memcpy(m_pchData, strOld.m_pchData, nOldLen + 1);
            GetData()->nDataLength = nOldLen;
        }
    }
    return m_pchData;
}

void CZelString::ReleaseBuffer(int nNewLength)
{
    CopyBeforeWrite();
    CZelStringData* pData = GetData();
    if (nNewLength == -1) {
        // Measured within the buffer, so a lost terminator cannot run past it.
        const void* pZero = std::memchr(m_pchData, '\0', pData->nAllocLength);
        nNewLength = pZero ? static_cast<int>(static_cast<const char*>(pZero) - m_pchData) : pData->nAllocLength;
    }
    ZEL_STRING_CHECK(nNewLength <= GetData()->nAllocLength, "nNewLength <= GetData()->nAllocLength");
    ZEL_STRING_CHECK(nNewLength >= 0, "nNewLength >= 0");
    if (nNewLength > pData->nAllocLength)
        nNewLength = pData->nAllocLength;
    if (nNewLength < 0)
        nNewLength = 0;
    if (IsEmptyData(pData))
        return;
    pData->nDataLength = nNewLength;
    m_pchData[nNewLength] = '\0';
}

char* CZelString::LockBuffer()
{
    char* lpsz = GetBuffer(0);
    if (!IsEmptyData(GetData()))
        GetData()->nRefs.store(-1);
    return lpsz;
}

void CZelString::UnlockBuffer()
{
    // A block that was not locked keeps its count: it may be shared.
    if (ZEL_STRING_CHECK(GetData()->nRefs == -1, "GetData()->nRefs == -1") && !IsEmptyData(GetData()))
        GetData()->nRefs.store(1);
}

CZelString CZelString::Mid(int nFirstArg, int nCountArg) const
{
    int64_t nFirst = nFirstArg;
    int64_t nCount = nCountArg;
    const int64_t nLength = GetData()->nDataLength;
    ZEL_STRING_CHECK(nFirst >= 0, "nFirst >= 0");
    ZEL_STRING_CHECK(nFirst + nCount <= GetData()->nDataLength, "nFirst + nCount <= GetData()->nDataLength");
    if (nFirst < 0)
        nFirst = 0;
    if (nCount < 0)
        nCount = 0;
    if (nFirst + nCount > nLength)
        nCount = nLength - nFirst;
    if (nFirst > nLength)
        nCount = 0;
    if (nFirst == 0 && nCount == nLength)
        return *this;
    if (nCount == 0)
        return CZelString();
    return CZelString(m_pchData + nFirst, static_cast<int>(nCount));
}

int CZelString::Find(const char* lpszSub) const
{
    if (!ZEL_STRING_CHECK(CZelString::IsValidString(lpszSub), "CZelString::IsValidString(lpszSub)"))
        return -1;
    const std::size_t nSub = std::strlen(lpszSub);
    const int nLength = GetLength();
    for (int i = 0;; i += CharLength(m_pchData + i)) {
        if (static_cast<std::size_t>(nLength - i) >= nSub && std::memcmp(m_pchData + i, lpszSub, nSub) == 0)
            return i;
        if (i >= nLength)
            return -1;
    }
}

int CZelString::FindOneOf(const char* lpszCharSet) const
{
    if (!ZEL_STRING_CHECK(CZelString::IsValidString(lpszCharSet), "CZelString::IsValidString(lpszCharSet)"))
        return -1;
    for (int i = 0, n = 0; i < GetLength(); i += n) {
        n = CharLength(m_pchData + i);
        if (CharInSet(m_pchData + i, n, lpszCharSet))
            return i;
    }
    return -1;
}

int CZelString::SpanLength(const char* lpszCharSet, bool bInSet) const
{
    if (!ZEL_STRING_CHECK(CZelString::IsValidString(lpszCharSet), "CZelString::IsValidString(lpszCharSet)"))
        return 0;
    int i = 0;
    for (int n = 0; i < GetLength(); i += n) {
        n = CharLength(m_pchData + i);
        if (CharInSet(m_pchData + i, n, lpszCharSet) != bInSet)
            break;
    }
    return i;
}

CZelString CZelString::SpanIncluding(const char* lpszCharSet) const { return Mid(0, SpanLength(lpszCharSet, true)); }

CZelString CZelString::SpanExcluding(const char* lpszCharSet) const
{
    return Mid(0, SpanLength(lpszCharSet, false));
}


namespace {

enum FormatModifier { kModifierNone, kForceAnsi, kForceUnicode, kForceInt64 };

bool IsDigit(char ch) { return ch >= '0' && ch <= '9'; }

// The format handed to the host's formatter, which reads the Windows
// runtime's dialect differently: "I64" becomes "ll", and the size prefixes
// "F", "N" and "L" (which that runtime ignores) are dropped.
class PortableFormat {
public:
    explicit PortableFormat(const char* lpszFormat) : m_pCopied(lpszFormat), m_lpszFormat(lpszFormat) {}
    void Replace(const char* pAt, std::size_t nSkip, const char* szWith)
    {
        m_strFormat.append(m_pCopied, pAt);
        m_strFormat += szWith;
        m_pCopied = pAt + nSkip;
        m_bRewritten = true;
    }
    // Drops the format from pAt on.
    void Cut(const char* pAt)
    {
        Replace(pAt, std::strlen(pAt), "");
    }
    const char* Get()
    {
        if (!m_bRewritten)
            return m_lpszFormat;
        m_strFormat += m_pCopied;
        m_bRewritten = false;
        m_lpszFormat = m_strFormat.c_str();
        return m_lpszFormat;
    }

private:
    std::string m_strFormat;
    const char* m_pCopied;
    const char* m_lpszFormat;
    bool m_bRewritten = false;
};

int64_t MaxOf(int64_t a, int64_t b) { return a > b ? a : b; }

bool IsFormatType(char ch) { return ch != '\0' && std::strchr("cCsSdiuxXoegGfpn", ch) != nullptr; }

// The length one conversion can produce at most; lpsz stands on its type
// character. Consumes the conversion's argument.
int64_t MeasureItem(const char* lpsz, FormatModifier nModifier, int64_t nWidth, int64_t nPrecision,
                    va_list& argList)
{
    switch (*lpsz) {
    case 'c':
    case 'C':
        (void)va_arg(argList, int);
        return 2;
    case 's':
    case 'S': {
        const bool bWide = nModifier == kForceUnicode || (*lpsz == 'S' && nModifier != kForceAnsi);
        int64_t nItemLen = 6;  // "(null)"
        if (bWide) {
            if (const wchar_t* pstr = va_arg(argList, const wchar_t*))
                nItemLen = MaxOf(1, static_cast<int64_t>(std::wcslen(pstr)));
        } else if (const char* pstr = va_arg(argList, const char*)) {
            nItemLen = MaxOf(1, static_cast<int64_t>(std::strlen(pstr)));
        }
        if (nPrecision != 0 && nPrecision < nItemLen)
            nItemLen = nPrecision;
        return MaxOf(nItemLen, nWidth);
    }
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o':
        if (nModifier == kForceInt64)
            (void)va_arg(argList, long long);
        else
            (void)va_arg(argList, int);
        return MaxOf(32, nWidth + nPrecision);
    case 'e':
    case 'g':
    case 'G':
        (void)va_arg(argList, double);
        return MaxOf(128, nWidth + nPrecision);
    case 'f': {
        // Printed with six more decimals than asked: never shorter than the real output.
        const double f = va_arg(argList, double);
        const int nPrintWidth = static_cast<int>(nWidth > INT_MAX ? INT_MAX : nWidth);
        const int nPrintPrecision = static_cast<int>(nPrecision + 6 > INT_MAX ? INT_MAX : nPrecision + 6);
        const int nPrinted = std::snprintf(nullptr, 0, "%*.*f", nPrintWidth, nPrintPrecision, f);
        return nPrinted > 0 ? nPrinted : 0;
    }
    case 'p':
        (void)va_arg(argList, void*);
        return MaxOf(32, nWidth + nPrecision);
    case 'n':
        (void)va_arg(argList, int*);
        return 0;
    default:  // not a type: MeasureFormat stops before it
        return 0;
    }
}

// The first pass: an upper bound of the formatted length, walking the format
// one character at a time and consuming the arguments as the second pass will.
int64_t MeasureFormat(const char* lpszFormat, va_list& argList, PortableFormat& portable)
{
    int64_t nMaxLen = 0;
    const char* lpsz = lpszFormat;
    while (*lpsz != '\0') {
        if (*lpsz != '%' || *++lpsz == '%') {  // an ordinary character, or "%%"
            nMaxLen += CharLength(lpsz);
            lpsz += CharLength(lpsz);
            continue;
        }
        const char* pPercent = lpsz - 1;
        int nWidth = 0;
        for (; *lpsz != '\0'; ++lpsz) {
            if (*lpsz == '#')
                nMaxLen += 2;  // "0x"
            else if (*lpsz == '*')
                nWidth = va_arg(argList, int);
            else if (*lpsz != '-' && *lpsz != '+' && *lpsz != '0' && *lpsz != ' ')
                break;
        }
        if (nWidth == 0) {
            nWidth = CrtAtoi(lpsz);
            while (IsDigit(*lpsz))
                ++lpsz;
        }
        ZEL_STRING_CHECK(nWidth >= 0, "nWidth >= 0");
        int nPrecision = 0;
        if (*lpsz == '.') {
            ++lpsz;
            if (*lpsz == '*') {
                nPrecision = va_arg(argList, int);
                ++lpsz;
            } else {
                nPrecision = CrtAtoi(lpsz);
                while (IsDigit(*lpsz))
                    ++lpsz;
            }
            ZEL_STRING_CHECK(nPrecision >= 0, "nPrecision >= 0");
        }
        FormatModifier nModifier = kModifierNone;
        const char* pModifier = lpsz;
        std::size_t nModifierLen = 0;
        const char* szPortableModifier = "";
        if (std::strncmp(lpsz, "I64", 3) == 0) {
            nModifier = kForceInt64;
            nModifierLen = 3;
            szPortableModifier = "ll";
        } else if (*lpsz == 'h' || *lpsz == 'l') {
            nModifier = *lpsz == 'h' ? kForceAnsi : kForceUnicode;
        } else if (*lpsz == 'F' || *lpsz == 'N' || *lpsz == 'L') {
            nModifierLen = 1;
        }
        lpsz += nModifier == kForceAnsi || nModifier == kForceUnicode ? 1 : nModifierLen;
        if (!IsFormatType(*lpsz)) {
            CheckFailed("FALSE", __LINE__);
            // The host's formatter never sees an undefined conversion, and
            // what follows it could no longer be matched with its arguments:
            // the output ends here.
            portable.Cut(pPercent);
            break;
        }
        if (nModifierLen != 0)
            portable.Replace(pModifier, nModifierLen, szPortableModifier);
        // A negative width pads to its size all the same; a negative precision is none.
        const int64_t nItemWidth = nWidth < 0 ? -static_cast<int64_t>(nWidth) : nWidth;
        const int64_t nItemPrecision = nPrecision < 0 ? 0 : nPrecision;
        nMaxLen += MeasureItem(lpsz, nModifier, nItemWidth, nItemPrecision, argList);
        lpsz += CharLength(lpsz);
    }
    return nMaxLen;
}

}  // namespace

void CZelString::Format(const char* lpszFormat, ...)
{
    va_list argList;
    va_start(argList, lpszFormat);
    FormatV(lpszFormat, argList);
    va_end(argList);
}

void CZelString::FormatV(const char* lpszFormat, va_list argList)
{
    if (!ZEL_STRING_CHECK(CZelString::IsValidString(lpszFormat), "CZelString::IsValidString(lpszFormat)")) {
        Empty();
        return;
    }
    PortableFormat portable(lpszFormat);
    va_list argMeasure;
    va_copy(argMeasure, argList);
    const int64_t nMaxLen = MeasureFormat(lpszFormat, argMeasure, portable);
    va_end(argMeasure);

    // Written into a block of its own, so that an argument may be this
    // string's own text.
    CZelString strResult;
    char* pBuffer = strResult.GetBuffer(ClampLength(nMaxLen));
    if (!IsEmptyData(strResult.GetData())) {
        va_list argWrite;
        va_copy(argWrite, argList);
        const int nWritten = std::vsnprintf(pBuffer, static_cast<std::size_t>(strResult.GetData()->nAllocLength) + 1,
                                            portable.Get(), argWrite);
        va_end(argWrite);
        if (nWritten < 0)
            pBuffer[0] = '\0';
    }
    strResult.ReleaseBuffer();
    *this = strResult;

    if (GetLength() >= 1024)
        LogSave("GetLength() >= 1024;%s", m_pchData);
}
