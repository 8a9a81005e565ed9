#include "ZelGameBase/EncryptData.h"

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Support/TestSupport.h"
#include "ZelGameBase/ZelGameBase.h"

namespace {

using EncryptDataTest = DataFolderTest;

TEST(EncryptDataBufferTest, RoundTripsAcrossTheKeyLengthAndBytesRotateByPosition)
{
    for (std::size_t nSize : {127u, 128u, 129u, 1000u}) {
        std::vector<unsigned char> setPlain(nSize), setWork;
        for (std::size_t i = 0; i < nSize; ++i)
            setPlain[i] = static_cast<unsigned char>(i * 37 + i / 8);
        setWork = setPlain;
        CEncryptData(kEncryptDataSeed).EncryptBuffer(setWork.data(), setWork.size());
        EXPECT_NE(setWork, setPlain) << nSize;
        CEncryptData(kEncryptDataSeed).DecryptBuffer(setWork.data(), setWork.size());
        EXPECT_EQ(setWork, setPlain) << nSize;
    }

    // After srand(1), rand() gives 41, 18467, 6334: key bytes 0x29, 0x23, 0xBE.
    // Byte 0 is only XORed; byte 1 is rotated left by 1 first; byte 2 by 2.
    std::vector<unsigned char> setByte = {0x00, 0x80, 0x41};
    CEncryptData(1).EncryptBuffer(setByte.data(), setByte.size());
    EXPECT_EQ(setByte, (std::vector<unsigned char>{0x29, 0x01 ^ 0x23, 0x05 ^ 0xBE}));
}

TEST_F(EncryptDataTest, ScrambledFileLoadsAndReadsLineByLineWithinItsBounds)
{
    WriteFile("plain.txt", "first line\r\nsecond\nlast without feed");
    WriteFile("empty.bin", "");
    CEncryptData writer(77);
    ASSERT_TRUE(writer.EncryptFile("plain.txt"));
    ASSERT_EQ(ReadWholeFile("plain.txt.encrypt").size(), 36u);
    EXPECT_EQ(ReadWholeFile("plain.txt.encrypt").find("second"), std::string::npos);

    CEncryptData reader(77);
    ASSERT_TRUE(reader.Load("plain.txt.encrypt"));
    EXPECT_EQ(reader.GetSize(), 36);
    char szLine[64] = "ZZZZZZZ";
    EXPECT_EQ(reader.ReadLine(szLine, 4), 4);
    EXPECT_STREQ(szLine, "firsZZZ");  // only nSize bytes touched
    EXPECT_EQ(reader.ReadLine(szLine, -3), 0);
    std::vector<std::string> setLine;
    for (int nCount; (nCount = reader.ReadLine(szLine, sizeof(szLine) - 1)) > 0;)
        setLine.emplace_back(szLine, static_cast<std::size_t>(nCount));
    EXPECT_EQ(setLine, (std::vector<std::string>{"t line\r\n", "second\n", "last without feed"}));

    // A failed load empties the object; an empty file loads empty.
    EXPECT_FALSE(reader.Load("missing.bin"));
    EXPECT_EQ(reader.ReadLine(szLine, 8), 0);
    EXPECT_FALSE(reader.Load(nullptr));
    EXPECT_FALSE(reader.EncryptFile("missing.bin"));
    EXPECT_TRUE(reader.Load("empty.bin"));
    EXPECT_EQ(reader.ReadLine(szLine, 8), 0);
}

TEST_F(EncryptDataTest, StringKeeps255CharactersAndRejects256)
{
    for (const std::string& strText :
         {std::string(), std::string("Iron Sword"), std::string("\xB3\xA4\xBD\xA3 GBK"), std::string(255, 'q')}) {
        CEncryptString text;
        text.Set(strText.c_str());
        EXPECT_EQ(text.GetLength(), strText.size());
        EXPECT_EQ(std::string(text.Get()), strText);
    }
    EXPECT_EQ(LogEntryCount(), 0);

    // Null and overlong texts are reported and the previous text stays.
    CEncryptString text;
    text.Set("kept");
    text.Set(std::string(256, 'x').c_str());
    text.Set(nullptr);
    EXPECT_STREQ(text.Get(), "kept");
    EXPECT_EQ(LogEntryCount(), 2);
    for (const char* szText : {ZEL_STAR "ASSERT(strlen(pszString) < MAXESTR) in ", ZEL_STAR "ASSERT(pszString) in ",
                               " line of ZelGameBase\\EncryptData" ZEL_STAR " -- "})
        EXPECT_NE(LogText().find(szText), std::string::npos) << szText;
}

TEST_F(EncryptDataTest, StringIsHeldScrambledAndGetsRotate)
{
    const char szName[] = "Dragon Scale Armor";
    CEncryptString text;
    text.Set(szName);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&text), sizeof(text)).find("Armor"), std::string::npos);

    // Each object has its own key; a byte copy carries it along.
    CEncryptString other;
    other.Set(szName);
    EXPECT_NE(std::memcmp(&text, &other, sizeof(text)), 0);
    CEncryptString copy;
    std::memcpy(static_cast<void*>(&copy), &text, sizeof(text));
    EXPECT_STREQ(copy.Get(), szName);

    // Plain copies rotate over four buffers.
    std::vector<const char*> setGot;
    for (int i = 0; i < 5; ++i)
        setGot.push_back(text.Get());
    EXPECT_EQ(std::set<const char*>(setGot.begin(), setGot.begin() + 4).size(), 4u);
    EXPECT_EQ(setGot[4], setGot[0]);
    for (const char* szGot : setGot)
        EXPECT_STREQ(szGot, szName);
}

}  // namespace
