#include <gtest/gtest.h>

#include <cstdint>

#include "geometry/IndexData.h"

using namespace Velun;

TEST(IndexDataTest, AddsAndGrowsUnsignedInts) {
    IndexData list;
    EXPECT_EQ(DataType::UnsignedInt, list.getIndexType());
    list.initialize(2, 3);
    EXPECT_EQ(0u, list.addIndex(10));
    EXPECT_EQ(1u, list.addIndex(11));
    EXPECT_EQ(2u, list.addIndex(12));
    EXPECT_EQ(3u, list.getCount());
    EXPECT_EQ(5u, list.getCapacity());
    const std::uint32_t* raw = static_cast<const std::uint32_t*>(list.getIndexList());
    EXPECT_EQ(10u, raw[0]);
    EXPECT_EQ(12u, raw[2]);

    EXPECT_TRUE(list.setIndex(1, 99));
    EXPECT_EQ(99u, list.getIndex(1));
    EXPECT_FALSE(list.setIndex(3, 5));
}

TEST(IndexDataTest, ShortAndByteListsStoreConvertedValues) {
    IndexData shorts;
    shorts.setIndexType(DataType::UnsignedShort);
    shorts.initialize(1, 0);
    shorts.addIndex(65535);
    shorts.addIndex(300);
    EXPECT_EQ(2u, shorts.getCapacity());
    const std::uint16_t* s = static_cast<const std::uint16_t*>(shorts.getIndexList());
    EXPECT_EQ(65535u, s[0]);
    EXPECT_EQ(300u, s[1]);
    EXPECT_TRUE(shorts.setIndex(0, 4));
    EXPECT_EQ(4u, shorts.getIndex(0));

    IndexData bytes;
    bytes.setIndexType(DataType::UnsignedByte);
    bytes.initialize(4, 4);
    bytes.addIndex(200);
    EXPECT_EQ(200u, static_cast<const std::uint8_t*>(bytes.getIndexList())[0]);
}

TEST(IndexDataTest, ACopySharesTheListUntilOneSideWrites) {
    IndexData source;
    source.initialize(4, 4);
    source.addIndex(1);
    IndexData copy(source);
    EXPECT_EQ(source.getIndexList(), copy.getIndexList());
    EXPECT_NE(source.getId(), copy.getId());
    copy.setIndex(0, 2);
    EXPECT_EQ(1u, source.getIndex(0));
    EXPECT_EQ(2u, copy.getIndex(0));
}
