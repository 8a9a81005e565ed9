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
