// The scramblers: position-dependent byte transformations that keep data files
// and short texts unreadable as plain text. They are not ciphers; they only
// keep casual readers and editors out.
//
// CEncryptData loads a scrambled file whole, unscrambles it in place and hands
// it out line by line; it also writes the scrambled form of a plain file.
// CEncryptString keeps one short text scrambled in memory and gives out plain
// copies in four rotating static buffers.
#pragma once

#include <cstddef>
#include <cstdint>

// ---------------------------------------------------------------------------
// The product's scrambling secrets, all here. A file scrambled with another
// seed, or a string key built with other constants, cannot be read back, so
// none of these may change once data has shipped.

// Seed of the file scrambler for the game's scrambled data files.
constexpr uint32_t kEncryptDataSeed = 0x2F6B1C95u;

// Position mask of the string scrambler, all in 8-bit arithmetic:
// mask(i) = ((i + P) * i * Q) ^ key[i % 256] ^ ((i / 16) * R).
constexpr int kEncryptMaskP = -29;
constexpr int kEncryptMaskQ = 91;
constexpr int kEncryptMaskR = 77;

// The library's own generator (RandomGet), which fills string keys:
// state = (state * A + C) mod M, starting from kRandomStart.
constexpr uint32_t kRandomMultiplier = 16807u;
constexpr uint32_t kRandomIncrement = 12345u;
constexpr uint32_t kRandomModulus = 2147483647u;
constexpr uint32_t kRandomStart = 0x1E3779B9u;
// The range a string key word is drawn from (RandomGet's argument).
constexpr uint32_t kEncryptStringKeyRange = 0x7FFFFFFEu;
// ---------------------------------------------------------------------------

// The Microsoft C runtime's srand / rand sequence, in portable code: file keys
// must come out the same on every platform so that a file scrambled on one
// unscrambles on any other.
class CCrtRandom {
public:
    explicit CCrtRandom(uint32_t nSeed) : m_nState(nSeed) {}
    // srand
    void Seed(uint32_t nSeed) { m_nState = nSeed; }
    // rand: 0 to 0x7FFF.
    int Next()
    {
        m_nState = m_nState * 214013u + 2531011u;
        return static_cast<int>((m_nState >> 16) & 0x7FFF);
    }

private:
    uint32_t m_nState;
};

// The library's process-wide generator: a result in 0 .. nRange - 1 (0 when
// nRange is 0). Not locked: the library runs on one thread.
uint32_t RandomGet(uint32_t nRange);
// Restarts the generator from nSeed (kRandomStart is the state at start-up).
void RandomSeed(uint32_t nSeed);

// The file scrambler. The key is 128 bytes, drawn from the runtime's rand
// sequence seeded with the construction seed; scrambling rotates byte i left
// by i % 8 bits and XORs it with key byte i % 128.
class CEncryptData {
public:
    explicit CEncryptData(uint32_t nSeed = kEncryptDataSeed);
    ~CEncryptData() { Reset(); }
    CEncryptData(const CEncryptData&) = delete;
    CEncryptData& operator=(const CEncryptData&) = delete;

    // Reads szPath whole (binary) and unscrambles it in place. False, with the
    // object empty, for a null path, a missing or unreadable file, a file of
    // 2 GiB or more, or a failed allocation. An empty file loads empty.
    bool Load(const char* szPath);
    // Copies bytes from the read position into szOut (zero-filled first; a
    // negative size counts as 0) until a line feed has been copied (it is
    // kept), the buffer ends or nSize bytes are copied. Returns the count, 0
    // at the end. Nothing terminates the copy beyond the zero fill: pass one
    // byte less than the buffer to keep a terminator.
    int ReadLine(char* szOut, int nSize);
    // Reads the plain file szPath and writes its scrambled form to
    // "<szPath>.encrypt". False when either file fails. The loaded buffer is
    // left as it was.
    bool EncryptFile(const char* szPath);
    // Frees an owned buffer and clears size and read position.
    void Reset();

    // The unscrambled file; valid until Load, Reset or destruction.
    const unsigned char* GetBuffer() const { return m_pBuffer; }
    int GetSize() const { return m_nSize; }

    // In-place transforms of nSize bytes with this object's key; each undoes
    // the other.
    void EncryptBuffer(unsigned char* pData, std::size_t nSize) const;
    void DecryptBuffer(unsigned char* pData, std::size_t nSize) const;

private:
    bool m_bOwnBuffer = false;
    unsigned char* m_pBuffer = nullptr;
    int32_t m_nSize = 0;
    int32_t m_nPosition = 0;  // next byte ReadLine hands out
    unsigned char m_key[128];
};

// The string scrambler: one text of at most MAXESTR - 1 characters held
// scrambled. Plain data (copyable byte for byte), so records that embed it
// stay plain values. Each object draws its own key from RandomGet.
class CEncryptString {
public:
    enum { MAXESTR = 256 };

    // Builds the key table and stores the empty text.
    CEncryptString();

    // Stores szString scrambled. A null text or one of MAXESTR characters or
    // more is reported to the debug log and not stored; the previous text
    // stays.
    void Set(const char* szString);
    // A plain copy of the text in the next of four process-wide buffers:
    // valid until four further Get calls on any CEncryptString.
    const char* Get() const;
    // Length of the stored text.
    uint32_t GetLength() const { return m_nLength; }

private:
    unsigned char Mask(uint32_t i) const;

    unsigned char m_key[MAXESTR];
    unsigned char m_text[MAXESTR];  // the text and its terminator, scrambled
    uint32_t m_nLength;
};
