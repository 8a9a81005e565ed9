// The column reader in both modes; both must give the same records.
#include <cstdlib>

#include "FuzzSupport.h"
#include "ZelGameBase/DataFileReader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    FuzzEnterScratchFolder();
    FuzzWriteFile("fuzz.dat", pData, nSize);
    CDataFileReader stream;
    CDataFileReader image;
    stream.Open("fuzz.dat", 0, ' ');
    image.Open("fuzz.dat", 1, ' ');
    if (stream.GetRecordAmount() != image.GetRecordAmount())
        std::abort();
    for (int i = 0; i < image.GetRecordAmount(); ++i) {
        const CDataRow* pRow = image.GetRecord(i);
        const CDataRow* pOther = stream.GetRecord(i);
        if (pRow->GetFieldAmount() != pOther->GetFieldAmount())
            std::abort();
        for (int f = -1; f <= pRow->GetFieldAmount(); ++f)
            pRow->GetInt(f, 0);
    }
    return 0;
}
