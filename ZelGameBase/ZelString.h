// CZelString: the foundation's narrow (GBK) string, one pointer wide.
//
// The pointer addresses the text; a header (CZelStringData) stands right in
// front of it in the same heap block, which holds exactly header + length + 1
// bytes. Copies share the block and count it atomically, so strings sharing a
// block may be copied and destroyed on different threads; a write first gives
// the writer its own copy. Writing to one object from two threads at once is
// not supported.
//
// Every empty string points at one static block (-1, 0, 0). A block is taken
// for the empty block by those three values, not by its address, and is never
// counted, written or freed.
//
// A failed check writes "ASSERT(<condition>) in <line> line of
// ZelGameBase\ZelString" framed by the GBK star to the debug log, and the
// operation goes on with the nearest safe meaning (stated per member).
#pragma once

#include <atomic>
#include <cstdarg>
#include <cstdint>

struct CZelStringData {
    std::atomic<int32_t> nRefs;  // sharers; -1: never shared (empty block, locked block)
    int32_t nDataLength;         // text bytes, without the terminator
    int32_t nAllocLength;        // bytes available for text, without the terminator

    char* data() { return reinterpret_cast<char*>(this + 1); }
};
static_assert(sizeof(CZelStringData) == 12, "the header is three 32-bit fields");

class CZelString {
public:
    // The empty string.
    CZelString();
    // Shares the source's block, or copies its text when the block is locked.
    CZelString(const CZelString& stringSrc);
    // Copies the text; null counts as empty.
    CZelString(const char* lpsz);
    // Copies nLength bytes of pch (a negative length counts as 0).
    CZelString(const char* pch, int nLength);
    ~CZelString();

    // Shares the source's block; copies the text when either block is locked
    // (a locked destination keeps its lock).
    CZelString& operator=(const CZelString& stringSrc);
    CZelString& operator=(const char* lpsz);

    int GetLength() const { return GetData()->nDataLength; }
    bool IsEmpty() const { return GetData()->nDataLength == 0; }
    // Points this string at the empty block.
    void Empty();
    // The text, always terminated; valid until this string is next changed.
    operator const char*() const { return m_pchData; }

    // The byte at nIndex; 0 when out of range (after the check's line).
    char GetAt(int nIndex) const;
    char operator[](int nIndex) const { return GetAt(nIndex); }
    // Writes one byte into a private copy; out of range writes nothing.
    void SetAt(int nIndex, char ch);

    CZelString& operator+=(const CZelString& string);
    CZelString& operator+=(const char* lpsz);
    CZelString& operator+=(char ch);
    friend CZelString operator+(const CZelString& string1, const CZelString& string2);
    friend CZelString operator+(const CZelString& string, const char* lpsz);
    friend CZelString operator+(const char* lpsz, const CZelString& string);

    // A private block of at least nMinBufLength bytes (never shorter than the
    // text, which is kept). Write at most that many bytes, then ReleaseBuffer.
    char* GetBuffer(int nMinBufLength);
    // Ends a GetBuffer: sets the length (-1: up to the first zero byte within
    // the buffer) and terminates. Lengths outside 0..allocated are cut to it.
    void ReleaseBuffer(int nNewLength = -1);
    // A private block that copies never share until UnlockBuffer; copies of a
    // locked string copy the text.
    char* LockBuffer();
    void UnlockBuffer();

    // nCount bytes from nFirst; a range past either end is cut to the text.
    // Taking the whole text shares the block.
    CZelString Mid(int nFirst, int nCount) const;
    // Byte offset of the first occurrence of lpszSub starting on a character
    // boundary (a double-byte character is never split); -1 when absent.
    int Find(const char* lpszSub) const;
    // Byte offset of the first character that is in the set; -1 when none is.
    int FindOneOf(const char* lpszCharSet) const;
    // The leading run of characters that are (are not) in the set.
    CZelString SpanIncluding(const char* lpszCharSet) const;
    CZelString SpanExcluding(const char* lpszCharSet) const;

    // printf-style formatting in the Windows runtime's dialect ("I64" for a
    // 64-bit integer, "h"/"l" for narrow/wide texts and characters): the
    // output is measured first, then written into a private buffer of that
    // size. A result of 1024 characters or more is kept and logged as a
    // warning. A null format empties the string.
    void Format(const char* lpszFormat, ...);
    void FormatV(const char* lpszFormat, va_list argList);

    // A text pointer the string may read: not null.
    static bool IsValidString(const char* lpsz);

    // The header of this string's block.
    CZelStringData* GetData() const { return reinterpret_cast<CZelStringData*>(m_pchData) - 1; }

private:
    // A new block (or the empty block for 0) replaces m_pchData without
    // releasing the old one. False, with the empty block, when nLen is out of
    // range.
    bool AllocBuffer(int nLen);
    // Drops this string's reference and points it at the empty block.
    void Release();
    static void ReleaseData(CZelStringData* pData);
    void CopyBeforeWrite();
    void AssignCopy(int nSrcLen, const char* lpszSrcData);
    void ConcatCopy(int nSrc1Len, const char* lpszSrc1Data, int nSrc2Len, const char* lpszSrc2Data);
    void ConcatInPlace(int nSrcLen, const char* lpszSrcData);
    int SpanLength(const char* lpszCharSet, bool bInSet) const;

    static bool IsEmptyData(const CZelStringData* pData);
    static bool NoninitData(const CZelStringData* pData) { return !IsEmptyData(pData); }

    char* m_pchData;
};
static_assert(sizeof(CZelString) == sizeof(char*), "a string is one pointer");
