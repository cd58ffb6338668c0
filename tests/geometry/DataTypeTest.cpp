#include <gtest/gtest.h>

#include "geometry/DataType.h"

using namespace Velun;

TEST(DataTypeTest, SizesAndNamesOfEveryType) {
    struct Row {
        DataType::Type type;
        unsigned int size;
        const char* name;
    };
    const Row table[] = {
        {DataType::None, 0, "None"},
        {DataType::Float, 4, "Float"},
        {DataType::Double, 8, "Double"},
        {DataType::Int, 4, "Int"},
        {DataType::Byte, 1, "Byte"},
        {DataType::Short, 2, "Short"},
        {DataType::Bool, 1, "Bool"},
        {DataType::UnsignedByte, 1, "Unsigned Byte"},
        {DataType::UnsignedShort, 2, "Unsigned Short"},
        {DataType::UnsignedInt, 4, "Unsigned Int"},
    };
    int value = 0;
    for (const Row& row : table) {
        EXPECT_EQ(value++, static_cast<int>(row.type));
        EXPECT_EQ(row.size, DataType::getSize(row.type)) << row.name;
        EXPECT_EQ(row.name, DataType::getName(row.type));
    }
}

TEST(DataTypeTest, OutOfRangeHasNoSizeAndNoName) {
    for (int value : {-1, 10, 1000}) {
        DataType::Type type = static_cast<DataType::Type>(value);
        EXPECT_EQ(0u, DataType::getSize(type));
        EXPECT_EQ("", DataType::getName(type));
    }
}
