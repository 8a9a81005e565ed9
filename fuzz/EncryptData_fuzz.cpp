// The file scrambler: the input read as a scrambled file line by line, then
// scrambled as a plain file and read back, which must give the input again.
#include <vector>

#include "FuzzTable.h"
#include "ZelGameBase/EncryptData.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    FuzzWriteFile("plain.dat", pData, nSize);
    CEncryptData scrambled;
    if (!scrambled.Load("plain.dat") || scrambled.GetSize() != static_cast<int>(nSize))
        std::abort();
    const int nLine = nSize == 0 ? 1 : 1 + pData[0] % 64;
    std::vector<char> line(static_cast<std::size_t>(nLine) + 1);
    std::size_t nRead = 0;
    for (int nCount; (nCount = scrambled.ReadLine(line.data(), nLine)) > 0;)
        nRead += static_cast<std::size_t>(nCount);
    if (nRead != nSize || scrambled.ReadLine(line.data(), -5) != 0)
        std::abort();

    if (!scrambled.EncryptFile("plain.dat"))
        std::abort();
    CEncryptData plain;
    if (!plain.Load("plain.dat.encrypt") || plain.GetSize() != static_cast<int>(nSize) ||
        (nSize > 0 && std::memcmp(plain.GetBuffer(), pData, nSize) != 0))
        std::abort();
    return 0;
}
