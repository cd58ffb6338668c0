#include <gtest/gtest.h>

#include <cstring>

#include "foundation/CowMemPtr.h"

using Block = Dorvan::CowMemPtr<void>;

TEST(CowMemPtrTest, WriteDetachesAndReadNever) {
    Block a;
    a.alloc(4);
    std::memcpy(a.get(), "abcd", 4);
    Block b(a);
    const Block& ca = a;
    const Block& cb = b;
    EXPECT_EQ(ca.get(), cb.get());

    // A private block is written in place.
    Block single;
    single.alloc(4);
    void* place = single.get();
    EXPECT_EQ(place, single.get());

    char* written = static_cast<char*>(b.get());
    EXPECT_NE(ca.get(), cb.get());
    EXPECT_EQ(0, std::memcmp(written, "abcd", 4));
    written[0] = 'x';
    EXPECT_EQ('a', static_cast<const char*>(ca.get())[0]);
    // Both are private now: a write on either stays in place.
    EXPECT_EQ(ca.get(), a.get());
    EXPECT_EQ(written, b.get());
}

TEST(CowMemPtrTest, ResizeOfSharedBlockKeepsTheOtherHandle) {
    Block a;
    a.alloc(4);
    std::memcpy(a.get(), "wxyz", 4);
    Block b(a);
    EXPECT_TRUE(b.resize(8));
    EXPECT_EQ(8u, b.getByteSize());
    EXPECT_EQ(4u, a.getByteSize());
    EXPECT_EQ(0, std::memcmp(static_cast<const Block&>(b).get(), "wxyz", 4));
    EXPECT_FALSE(a.sharesWith(b));

    EXPECT_TRUE(b.resize(2));
    EXPECT_EQ(0, std::memcmp(static_cast<const Block&>(b).get(), "wx", 2));
    EXPECT_TRUE(b.resize(0));
    EXPECT_FALSE(b.isNull());
    EXPECT_EQ(0u, b.getByteSize());
}

TEST(CowMemPtrTest, SetNullAndAssignment) {
    Block a;
    a.alloc(4);
    Block b;
    b = a;
    EXPECT_TRUE(a.sharesWith(b));
    b = a;  // same block: no count changes, still shared
    a.setNull();
    EXPECT_TRUE(a.isNull());
    EXPECT_FALSE(b.isNull());
    EXPECT_EQ(4u, b.getByteSize());
    b.setNull();
    EXPECT_TRUE(b.isNull());
    EXPECT_TRUE(b.alloc(2));
}
