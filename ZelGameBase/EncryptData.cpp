#include "ZelGameBase/EncryptData.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "ZelGameBase/Platform/Platform.h"
#include "ZelGameBase/ZelCommon.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

const char kSourceUnit[] = "ZelGameBase\\EncryptData";

uint32_t g_nRandomState = kRandomStart;

unsigned char RotateLeft(unsigned char c, unsigned nBits)
{
    return static_cast<unsigned char>((c << nBits) | (c >> ((8 - nBits) & 7)));
}

unsigned char RotateRight(unsigned char c, unsigned nBits)
{
    return static_cast<unsigned char>((c >> nBits) | (c << ((8 - nBits) & 7)));
}

// Reads szPath whole in binary mode into a new buffer, up to its size at
// open. An empty file gives a null buffer of size 0. False for a missing file
// or one that is no regular file, one of 2 GiB or more, a failed allocation
// or a short read.
bool FileReadWhole(const char* szPath, std::unique_ptr<unsigned char[]>& pData, int32_t& nSize)
{
    CPlatformFile file;
    if (!file.Open(szPath) || file.GetSize() > INT_MAX)
        return false;
    const std::size_t nLength = static_cast<std::size_t>(file.GetSize());
    if (nLength > 0) {
        pData.reset(new (std::nothrow) unsigned char[nLength]);
        std::size_t nDone = 0;
        while (pData != nullptr && nDone < nLength) {
            const int64_t nRead = file.Read(pData.get() + nDone, nLength - nDone);
            if (nRead <= 0)
                break;
            nDone += static_cast<std::size_t>(nRead);
        }
        if (nDone != nLength) {
            pData.reset();
            return false;
        }
    }
    nSize = static_cast<int32_t>(nLength);
    return true;
}

// Four process-wide output buffers for CEncryptString::Get, taken in turn.
char g_szPlain[4][CEncryptString::MAXESTR];
unsigned g_nNextPlain = 0;

}  // namespace

uint32_t RandomGet(uint32_t nRange)
{
    if (nRange == 0)
        return 0;
    g_nRandomState = static_cast<uint32_t>(
        (static_cast<uint64_t>(g_nRandomState) * kRandomMultiplier + kRandomIncrement) % kRandomModulus);
    return g_nRandomState / (kRandomModulus / nRange + 1);
}

void RandomSeed(uint32_t nSeed) { g_nRandomState = nSeed; }

CEncryptData::CEncryptData(uint32_t nSeed)
{
    CCrtRandom random(nSeed);
    for (unsigned char& key : m_key)
        key = static_cast<unsigned char>(random.Next() & 0xFF);
}

void CEncryptData::EncryptBuffer(unsigned char* pData, std::size_t nSize) const
{
    for (std::size_t i = 0; i < nSize; ++i)
        pData[i] = RotateLeft(pData[i], i % 8) ^ m_key[i % 128];
}

void CEncryptData::DecryptBuffer(unsigned char* pData, std::size_t nSize) const
{
    for (std::size_t i = 0; i < nSize; ++i)
        pData[i] = RotateRight(static_cast<unsigned char>(pData[i] ^ m_key[i % 128]), i % 8);
}

void CEncryptData::Reset()
{
    if (m_bOwnBuffer)
        delete[] m_pBuffer;
    m_bOwnBuffer = false;
    m_pBuffer = nullptr;
    m_nSize = 0;
    m_nPosition = 0;
}

bool CEncryptData::Load(const char* szPath)
{
    if (szPath == nullptr)
        return false;
    Reset();
    std::unique_ptr<unsigned char[]> pData;
    int32_t nSize = 0;
    if (!FileReadWhole(szPath, pData, nSize))
        return false;
    DecryptBuffer(pData.get(), static_cast<std::size_t>(nSize));
    m_pBuffer = pData.release();
    m_bOwnBuffer = m_pBuffer != nullptr;
    m_nSize = nSize;
    return true;
}

int CEncryptData::ReadLine(char* szOut, int nSize)
{
    if (szOut == nullptr || nSize <= 0)
        return 0;
    std::memset(szOut, 0, static_cast<std::size_t>(nSize));
    int nCopied = 0;
    while (nCopied < nSize && m_nPosition < m_nSize) {
        const char c = static_cast<char>(m_pBuffer[m_nPosition++]);
        szOut[nCopied++] = c;
        if (c == '\n')
            break;
    }
    return nCopied;
}

bool CEncryptData::EncryptFile(const char* szPath)
{
    if (szPath == nullptr)
        return false;
    std::unique_ptr<unsigned char[]> pData;
    int32_t nSize = 0;
    if (!FileReadWhole(szPath, pData, nSize))
        return false;
    EncryptBuffer(pData.get(), static_cast<std::size_t>(nSize));
    const std::string strOut = std::string(szPath) + ".encrypt";
    FILE* pFile = PlatformOpenFile(strOut.c_str(), "wb");
    if (pFile == nullptr)
        return false;
    bool bWritten = nSize == 0 || std::fwrite(pData.get(), static_cast<std::size_t>(nSize), 1, pFile) == 1;
    bWritten = std::fclose(pFile) == 0 && bWritten;
    return bWritten;
}

CEncryptString::CEncryptString()
{
    // Five drawn words repeated over the table's 64 words, stored low byte
    // first whatever the host's byte order.
    constexpr int kPatternSize = 5 * 4;
    unsigned char pattern[kPatternSize];
    for (int nWord = 0; nWord < 5; ++nWord) {
        const uint32_t n = RandomGet(kEncryptStringKeyRange);
        for (int nByte = 0; nByte < 4; ++nByte)
            pattern[nWord * 4 + nByte] = static_cast<unsigned char>(n >> (8 * nByte));
    }
    for (int i = 0; i < MAXESTR; i += kPatternSize)
        std::memcpy(m_key + i, pattern, static_cast<std::size_t>(std::min(kPatternSize, MAXESTR - i)));
    // The empty text: its terminator scrambled, the rest of the buffer zero.
    std::memset(m_text, 0, sizeof(m_text));
    m_nLength = 0;
    m_text[0] = Mask(0);
}

unsigned char CEncryptString::Mask(uint32_t i) const
{
    const unsigned char i8 = static_cast<unsigned char>(i);
    const unsigned char nProduct = static_cast<unsigned char>(static_cast<unsigned char>(i8 + kEncryptMaskP) * i8 *
                                                              static_cast<unsigned char>(kEncryptMaskQ));
    const unsigned char nBlock = static_cast<unsigned char>((i / 16) * static_cast<unsigned>(kEncryptMaskR));
    return static_cast<unsigned char>(nProduct ^ m_key[i % MAXESTR] ^ nBlock);
}

void CEncryptString::Set(const char* szString)
{
    if (szString == nullptr) {
        LogAssert("pszString", __LINE__, kSourceUnit);
        return;
    }
    // Measures no further than the limit, so an unterminated text is safe too.
    uint32_t nLength = 0;
    while (nLength < MAXESTR && szString[nLength] != '\0')
        ++nLength;
    if (nLength >= MAXESTR) {
        LogAssert("strlen(pszString) < MAXESTR", __LINE__, kSourceUnit);
        return;
    }
    SafeStrCopy(reinterpret_cast<char*>(m_text), MAXESTR, szString);
    m_nLength = nLength;
    for (uint32_t i = 0; i <= nLength; ++i)
        m_text[i] ^= Mask(i);
}

const char* CEncryptString::Get() const
{
    char* szPlain = g_szPlain[g_nNextPlain++ % 4];
    for (uint32_t i = 0; i <= m_nLength; ++i)
        szPlain[i] = static_cast<char>(m_text[i] ^ Mask(i));
    szPlain[m_nLength] = '\0';
    return szPlain;
}
