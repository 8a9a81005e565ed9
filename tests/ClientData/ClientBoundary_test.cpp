// The client's string and array as this library builds, grows and frees
// them: the layouts are checked at compile time; here the behaviour that the
// client's own library relies on.
#include "ClientData/ClientBoundary.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ClientData/Catalogue.h"
#include "Support/BoundarySupport.h"

namespace {

// The slot of every table with a design of its own.
template <int nSlot, class T>
constexpr bool kAt = std::is_same_v<typename CatalogueSlot<nSlot>::Class, T>;
static_assert(kAt<9, CItemTypeTable> && kAt<11, CMagicData> && kAt<37, CItemCategoryTable> &&
              kAt<48, CBattleTutorialTable> && kAt<53, CMonsterSpeakTable> && kAt<88, CFontSetting> &&
              kAt<94, CActionEffectOffsetData> && kAt<148, CActionValueData> && kAt<150, CMonsterTypeTable> &&
              kAt<151, CCommonIni> && kAt<153, CNpcTypeInfoTable> && kAt<154, CNpcTypeInfoExTable> &&
              kAt<163, CActionDelayData> && kAt<165, CActionCtrlData> && kAt<194, CSoundEvent> &&
              kAt<200, CActionTypeData>);
static_assert(std::is_same_v<CatalogueSlot<11>::Interface, IMagicData>);

// The records the client reads by their layout.
static_assert(sizeof(MonsterTypeInfo) == 844 && offsetof(MonsterTypeInfo, szName) == 4 &&
              offsetof(MonsterTypeInfo, nSizeAdd) == 20 && offsetof(MonsterTypeInfo, szDisappearEffect) == 56 &&
              offsetof(MonsterTypeInfo, nLeftWeapon) == 312 && offsetof(MonsterTypeInfo, nDefyStatus) == 708 &&
              offsetof(MonsterTypeInfo, szDefyEffect) == 716);
static_assert(sizeof(NpcTypeInfo) == 272 && offsetof(NpcTypeInfo, szEffect) == 20 &&
              offsetof(NpcTypeInfo, nSimpleObjId) == 84 && offsetof(NpcTypeInfo, szNote) == 108 &&
              offsetof(NpcTypeInfo, nZoomPercent) == 236);
static_assert(sizeof(NpcTypeInfoEx) == 264 && offsetof(NpcTypeInfoEx, nFixDir) == 20 &&
              offsetof(NpcTypeInfoEx, szEffect) == 64 && offsetof(NpcTypeInfoEx, szNote) == 100 &&
              offsetof(NpcTypeInfoEx, nMouseSign) == 228);
static_assert(sizeof(ItemTypeInfo) == 900 && offsetof(ItemTypeInfo, strName) == 4 &&
              offsetof(ItemTypeInfo, ucAttrA) == 520 && offsetof(ItemTypeInfo, dwAttrE) == 540 &&
              offsetof(ItemTypeInfo, usIndexed) == 600 && offsetof(ItemTypeInfo, dwAttrR) == 640 &&
              offsetof(ItemTypeInfo, szText) == 644);

std::string TextOf(const CClientString& str) { return std::string(str.c_str(), str.size()); }

TEST(ClientStringTest, ShortTextsStayInTheBufferLongOnesTakeABlockOfCapacityPlusOne)
{
    const struct {
        std::size_t nLength;
        std::size_t nCapacity;
    } kCases[] = {{0, 15}, {1, 15}, {15, 15}, {16, 31}, {31, 31}, {32, 47}, {4095, 4095}, {4096, 4111}};
    for (const auto& c : kCases) {
        const std::string strText(c.nLength, 'x');
        CClientString str;
        ASSERT_TRUE(str.Assign(strText.data(), strText.size()));
        EXPECT_EQ(str.size(), c.nLength);
        EXPECT_EQ(str.capacity(), c.nCapacity) << c.nLength;
        EXPECT_EQ(std::strlen(str.c_str()), c.nLength);  // always terminated
        EXPECT_EQ(TextOf(str), strText);
        // The text sits in the object itself exactly while the capacity is 15.
        const char* pObject = reinterpret_cast<const char*>(&str);
        EXPECT_EQ(str.c_str() >= pObject && str.c_str() < pObject + sizeof(str), c.nCapacity == 15);
    }
}

TEST(ClientBlockTest, BigBlocksAreAlignedAndKeepTheRealAddressBelow)
{
    for (std::size_t nBytes : {4095u, 4096u, 5000u, 65536u}) {
        void* pBlock = ClientBlockAlloc(nBytes);
        ASSERT_NE(pBlock, nullptr);
        std::memset(pBlock, 0x5A, nBytes);  // the whole size is usable
        if (nBytes >= kClientBigBlock) {
            const uintptr_t nUser = reinterpret_cast<uintptr_t>(pBlock);
            const uintptr_t nContainer = reinterpret_cast<uintptr_t*>(pBlock)[-1];
            EXPECT_EQ(nUser % 32, 0u);
            // The first multiple of 32 above the allocation's first word.
            EXPECT_GE(nUser - nContainer, sizeof(void*));
            EXPECT_LE(nUser - nContainer, kClientBigExtra);
            EXPECT_EQ(nUser, (nContainer + kClientBigExtra) & ~uintptr_t{31});
        }
        ClientBlockFree(pBlock, nBytes);
    }
    ClientBlockFree(nullptr, 8192);
}

TEST(ClientArrayTest, GrowsAsTheClientsLibraryDoes)
{
    CClientArray<uint32_t> setId;
    std::vector<std::size_t> setCapacity;
    for (uint32_t i = 0; i < 30; ++i) {
        ASSERT_TRUE(setId.PushBack(i));
        if (setCapacity.empty() || setCapacity.back() != setId.capacity())
            setCapacity.push_back(setId.capacity());
    }
    EXPECT_EQ(setCapacity, (std::vector<std::size_t>{1, 2, 3, 4, 6, 9, 13, 19, 28, 42}));
    for (uint32_t i = 0; i < 30; ++i)
        EXPECT_EQ(setId[i], i);

    // Room for more than half again: exactly the size needed.
    CClientArray<uint32_t> setMore;
    ArrayFill(setMore, {1u, 2u, 3u, 4u});
    ASSERT_TRUE(setMore.ReserveMore(10));
    EXPECT_EQ(setMore.capacity(), 14u);
    ASSERT_TRUE(setMore.ReserveMore(10));  // fits: nothing changes
    EXPECT_EQ(setMore.capacity(), 14u);
    EXPECT_FALSE(setMore.ReserveMore(SIZE_MAX));
    EXPECT_EQ(VectorOf(setMore), (std::vector<uint32_t>{1, 2, 3, 4}));

    // Clear keeps the block; Release frees it.
    setMore.Clear();
    EXPECT_TRUE(setMore.empty());
    EXPECT_EQ(setMore.capacity(), 14u);
    setMore.Release();
    EXPECT_EQ(setMore.begin(), nullptr);
    EXPECT_EQ(setMore.capacity(), 0u);
}

TEST(ClientArrayTest, StringsMoveWithTheirBlocksWhenTheArrayGrows)
{
    // Each element's bytes move to the new block; the texts must survive,
    // those in the strings' own buffers and those on the heap.
    CClientArray<CClientString> setText;
    std::vector<std::string> setExpected;
    for (int i = 0; i < 200; ++i) {
        const std::string strText = std::string(static_cast<std::size_t>(i % 40), 'a' + i % 26) + std::to_string(i);
        CClientString str;
        str.Assign(strText.data(), strText.size());
        ASSERT_TRUE(setText.PushBack(std::move(str)));
        setExpected.push_back(strText);
    }
    ASSERT_EQ(setText.size(), setExpected.size());
    for (std::size_t i = 0; i < setExpected.size(); ++i)
        EXPECT_EQ(TextOf(setText[i]), setExpected[i]) << i;
}

}  // namespace
