#include <gtest/gtest.h>

#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"

using Dorvan::SharedPtr;

namespace {

struct Base {
    virtual ~Base() {}
};

struct Counted : Base {
    explicit Counted(int* deletions) : mDeletions(deletions) {}
    ~Counted() override { ++*mDeletions; }
    int* mDeletions;
};

}  // namespace

TEST(SharedPtrTest, LastCopyDeletesExactlyOnce) {
    int deletions = 0;
    {
        SharedPtr<Counted> first(new Counted(&deletions));
        {
            SharedPtr<Counted> second(first);
            EXPECT_EQ(2, first.getRefCount());
            EXPECT_EQ(first.get(), second.get());
        }
        EXPECT_EQ(0, deletions);
        EXPECT_EQ(1, first.getRefCount());
    }
    EXPECT_EQ(1, deletions);
}

TEST(SharedPtrTest, AssignmentReleasesTheOldObject) {
    int first = 0, second = 0;
    SharedPtr<Counted> p(new Counted(&first));
    p = new Counted(&second);
    EXPECT_EQ(1, first);
    SharedPtr<Counted> q(new Counted(&first));
    q = p;
    EXPECT_EQ(2, first);
    EXPECT_EQ(2, p.getRefCount());
    EXPECT_EQ(0, second);
}

TEST(SharedPtrTest, DerivedToBaseSharesTheCount) {
    int deletions = 0;
    SharedPtr<Base> base;
    {
        SharedPtr<Counted> derived(new Counted(&deletions));
        base = derived;
        EXPECT_EQ(2, derived.getRefCount());
        SharedPtr<Base> other(derived);
        EXPECT_EQ(3, other.getRefCount());
    }
    EXPECT_EQ(0, deletions);
    EXPECT_EQ(1, base.getRefCount());
    base.release();
    EXPECT_EQ(1, deletions);
    EXPECT_TRUE(base.isNull());
}
