// What crosses to the client in a string or a growable array, laid out as the
// client's compiler and library lay out std::string and std::vector
// (Microsoft's C++ library in release mode, Visual Studio 2015 and later;
// its debug mode and earlier toolsets have other layouts). Slots and records
// use these types, never this library's own standard types, whose layout and
// heap the client does not share.
//
// The memory rule: a block the client may free or grow comes from the process
// heap, where the client's runtime allocates too. A block of 4096 bytes or
// more follows that library's big-block rule: n + 31 + sizeof(void*) bytes
// are allocated, the address handed out is the first multiple of 32 above the
// allocation's first pointer-sized word, and that word, right below it, keeps
// the address really allocated. Off Windows the same code runs on malloc.
//
// This header stands on the compiler alone (no C++ library), so that the
// layout checks below compile for the client's targets as well.
#pragma once

#include <stddef.h>
#include <stdint.h>

#if __has_include(<new>)
#include <new>
#include <type_traits>
template <class T>
constexpr bool kClientTriviallyCopyable = std::is_trivially_copyable<T>::value;
template <class T>
constexpr bool kClientTriviallyDestructible = std::is_trivially_destructible<T>::value;
#else
// Compiled for the client's targets without a C++ library: the layout checks.
inline void* operator new(size_t, void* pPlace) noexcept { return pPlace; }
template <class T>
constexpr bool kClientTriviallyCopyable = __is_trivially_copyable(T);
template <class T>
constexpr bool kClientTriviallyDestructible = __is_trivially_destructible(T);
#endif

inline constexpr size_t kClientBigBlock = 4096;    // the big-block rule from this size on
inline constexpr size_t kClientBigAlignment = 32;  // where a big block's address points
inline constexpr size_t kClientBigExtra = sizeof(void*) + kClientBigAlignment - 1;

// A block of nBytes by the memory rule; null on failure (never throws).
void* ClientBlockAlloc(size_t nBytes);
// Frees a block of ClientBlockAlloc (or of the client) given its size in
// bytes, which tells a big block. Null frees nothing.
void ClientBlockFree(void* pBlock, size_t nBytes);

// The client's narrow string: a 16-byte buffer that holds the text while the
// capacity is below 16, else the pointer to a heap block of capacity + 1
// bytes; then the size and the capacity. The text is always terminated.
// A block is released here only by the string that owns it.
class CClientString {
public:
    static constexpr size_t kInlineCapacity = 15;

    CClientString() { m_bx.buf[0] = '\0'; }
    ~CClientString() { Release(); }
    CClientString(CClientString&& other) noexcept;
    CClientString& operator=(CClientString&& other) noexcept;
    CClientString(const CClientString&) = delete;
    CClientString& operator=(const CClientString&) = delete;

    // Replaces the text with nLength bytes of pch. False, leaving the empty
    // text, when no block can be had.
    bool Assign(const char* pch, size_t nLength);
    // Back to the empty text, freeing the block.
    void Release();

    const char* c_str() const { return IsOnHeap() ? m_bx.ptr : m_bx.buf; }
    size_t size() const { return m_nSize; }
    size_t capacity() const { return m_nCapacity; }
    bool empty() const { return m_nSize == 0; }

private:
    friend struct ClientBoundaryLayout;
    bool IsOnHeap() const { return m_nCapacity > kInlineCapacity; }

    union {
        char buf[kInlineCapacity + 1];
        char* ptr;
    } m_bx;
    size_t m_nSize = 0;
    size_t m_nCapacity = kInlineCapacity;
};

// Whether an element may be moved by copying its bytes. Both sides' arrays
// move elements that way when they grow; every element type at the boundary
// is a plain record, a pointer, or holds a CClientString, whose bytes never
// point into the object itself.
template <class T>
struct IsClientRelocatable {
    static constexpr bool value = kClientTriviallyCopyable<T>;
};
template <>
struct IsClientRelocatable<CClientString> {
    static constexpr bool value = true;
};

// The client's growable array: first, last, end of storage. Growing takes a
// block of the larger of 1.5 times the capacity and the size needed, as the
// client's library does, so that either side may grow an array the other
// filled, and either side may free it (ClientBlockFree with capacity *
// sizeof(T) bytes). Nothing here throws: an append that cannot grow the
// block returns false and leaves the array as it was.
template <class T>
class CClientArray {
    static_assert(IsClientRelocatable<T>::value, "elements move by their bytes");

public:
    CClientArray() = default;
    ~CClientArray() { Release(); }
    CClientArray(CClientArray&& other) noexcept : m_pFirst(other.m_pFirst), m_pLast(other.m_pLast), m_pEnd(other.m_pEnd)
    {
        other.m_pFirst = other.m_pLast = other.m_pEnd = nullptr;
    }
    CClientArray& operator=(CClientArray&& other) noexcept
    {
        if (this != &other) {
            Release();
            m_pFirst = other.m_pFirst;
            m_pLast = other.m_pLast;
            m_pEnd = other.m_pEnd;
            other.m_pFirst = other.m_pLast = other.m_pEnd = nullptr;
        }
        return *this;
    }
    CClientArray(const CClientArray&) = delete;
    CClientArray& operator=(const CClientArray&) = delete;

    T* begin() const { return m_pFirst; }
    T* end() const { return m_pLast; }
    size_t size() const { return static_cast<size_t>(m_pLast - m_pFirst); }
    size_t capacity() const { return static_cast<size_t>(m_pEnd - m_pFirst); }
    bool empty() const { return m_pFirst == m_pLast; }
    T& operator[](size_t nIndex) const { return m_pFirst[nIndex]; }

    // Makes room for nMore further elements by the growth rule.
    bool ReserveMore(size_t nMore)
    {
        const size_t nSize = size();
        if (nMore <= capacity() - nSize)
            return true;
        if (nMore > MaxSize() - nSize)
            return false;
        return Reallocate(GrowthFor(nSize + nMore));
    }
    bool PushBack(const T& value)
    {
        if (m_pLast == m_pEnd && !ReserveMore(1))
            return false;
        new (m_pLast) T(value);
        ++m_pLast;
        return true;
    }
    bool PushBack(T&& value)
    {
        if (m_pLast == m_pEnd && !ReserveMore(1))
            return false;
        new (m_pLast) T(static_cast<T&&>(value));
        ++m_pLast;
        return true;
    }
    // Destroys the elements and keeps the block, as the client's clear does.
    void Clear()
    {
        DestroyAll();
        m_pLast = m_pFirst;
    }
    // Destroys the elements and frees the block: three null pointers again.
    void Release()
    {
        DestroyAll();
        ClientBlockFree(m_pFirst, capacity() * sizeof(T));
        m_pFirst = m_pLast = m_pEnd = nullptr;
    }

private:
    friend struct ClientBoundaryLayout;
    static constexpr size_t MaxSize() { return static_cast<size_t>(PTRDIFF_MAX) / sizeof(T); }
    size_t GrowthFor(size_t nNeeded) const
    {
        const size_t nOld = capacity();
        if (nOld > MaxSize() - nOld / 2)
            return MaxSize();
        const size_t nGeometric = nOld + nOld / 2;
        return nGeometric < nNeeded ? nNeeded : nGeometric;
    }
    bool Reallocate(size_t nCapacity)
    {
        T* pBlock = static_cast<T*>(ClientBlockAlloc(nCapacity * sizeof(T)));
        if (pBlock == nullptr)
            return false;
        const size_t nSize = size();
        if (nSize != 0)
            __builtin_memcpy(static_cast<void*>(pBlock), static_cast<const void*>(m_pFirst), nSize * sizeof(T));
        ClientBlockFree(m_pFirst, capacity() * sizeof(T));
        m_pFirst = pBlock;
        m_pLast = pBlock + nSize;
        m_pEnd = pBlock + nCapacity;
        return true;
    }
    void DestroyAll()
    {
        if constexpr (!kClientTriviallyDestructible<T>)
            for (T* p = m_pFirst; p != m_pLast; ++p)
                p->~T();
    }

    T* m_pFirst = nullptr;
    T* m_pLast = nullptr;
    T* m_pEnd = nullptr;
};

// The layouts, on every target this header is compiled for: 24 and 12 bytes
// on x64 and x86 for the string and the array.
struct ClientBoundaryLayout {
    static constexpr size_t kWord = sizeof(void*);
    static_assert(kWord == 8 || kWord == 4, "x64 or x86");
    static_assert(sizeof(CClientString) == 16 + 2 * kWord, "string: buffer, size, capacity");
    static_assert(alignof(CClientString) == alignof(void*), "string aligned as a pointer");
    static_assert(offsetof(CClientString, m_bx) == 0, "the buffer or the pointer first");
    static_assert(offsetof(CClientString, m_nSize) == 16, "then the size");
    static_assert(offsetof(CClientString, m_nCapacity) == 16 + kWord, "then the capacity");
    static_assert(sizeof(CClientArray<char>) == 3 * kWord, "array: three pointers");
    static_assert(offsetof(CClientArray<int>, m_pFirst) == 0, "first");
    static_assert(offsetof(CClientArray<int>, m_pLast) == kWord, "last");
    static_assert(offsetof(CClientArray<int>, m_pEnd) == 2 * kWord, "end of storage");
    static_assert(sizeof(CClientArray<CClientString>) == 3 * kWord, "array of strings: three pointers");
};
