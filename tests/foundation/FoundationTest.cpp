#include <gtest/gtest.h>

#include <cstring>

#include "core/LogManager.h"
#include "foundation/CowMemPtr.h"
#include "foundation/IdMap.h"
#include "foundation/LinkedMap.h"
#include "foundation/OrderedMap.h"
#include "foundation/Vector.h"
#include "support/ChannelLog.h"

using namespace Dorvan;
using Block = Dorvan::CowMemPtr<void>;

namespace {

template <class Map>
std::vector<int> keysOf(Map& map) {
    std::vector<int> keys;
    for (unsigned int i = 0; i < map.size(); ++i)
        keys.push_back(map.keyAt(i));
    return keys;
}

template <class T>
std::vector<T> valuesOf(Vector<T> const& v) {
    std::vector<T> values;
    for (unsigned int i = 0; i < v.size(); ++i)
        values.push_back(v.get(i));
    return values;
}

TEST(LinkedMapTest, LookupsCreateEntriesPutReplacesAndWalksInKeyOrder) {
    LinkedMap<int, char> map;
    EXPECT_EQ(0, map.get(4));
    EXPECT_EQ(0, map[5]);
    EXPECT_EQ(2u, map.size());
    EXPECT_EQ('x', map.put(3, 'x'));
    EXPECT_EQ('c', map.put(3, 'c'));
    EXPECT_FALSE(map.containsValue('x'));
    map.put(1, 'a');
    std::string order;
    for (auto it = map.begin(); it != map.end(); ++it)
        order += it->second ? it->second : '-';
    EXPECT_EQ("ac--", order);
    EXPECT_EQ(0, map.remove(9));
    EXPECT_EQ('c', map.remove(3));
}

TEST(OrderedMapTest, KeepsInsertionOrderThroughPutsInsertionsAndRemovals) {
    OrderedMap<int, char> map;
    map.put(5, 'a');
    map.put(2, 'b');
    map.put(9, 'c');
    EXPECT_EQ(0, map.get(7));  // a lookup is not counted
    map.put(5, 'A');           // a present key keeps its place
    map.put(7, 'd');
    EXPECT_EQ((std::vector<int>{5, 2, 9, 7}), keysOf(map));
    EXPECT_EQ('A', map.valueAt(0));

    EXPECT_EQ('b', map.remove(2));
    EXPECT_EQ(1, map.indexOf(9));
    EXPECT_EQ(-1, map.indexOf(2));
    EXPECT_EQ('A', map.removeAt(0));
    EXPECT_EQ((std::vector<int>{9, 7}), keysOf(map));

    map.put(3, 'c');
    map.insertAt(1, 2, 'b');
    map.insertBefore(0, 0, 'z');
    map.insertAfter(3, 4, 'd');
    EXPECT_EQ((std::vector<int>{0, 9, 2, 7, 4, 3}), keysOf(map));
    map.insertAt(0, 4, 'e');  // inserting a present key moves it
    EXPECT_EQ((std::vector<int>{4, 0, 9, 2, 7, 3}), keysOf(map));
}

TEST(IdMapTest, IdsStartAt101AndAreNeverReused) {
    IdMap<const char*, int> map;
    EXPECT_EQ(101, map.createId());
    EXPECT_EQ(102, map.createId());
    map.returnId(101);
    EXPECT_EQ(103, map.createId());
    EXPECT_TRUE(map.isEmpty());
    map.put(103, "x");

    IdMap<const char*, int> copy(map);
    EXPECT_EQ(104, copy.createId());
    EXPECT_EQ(1u, copy.size());
}

TEST(VectorTest, EditsByPositionAndByValue) {
    Vector<int> v;
    EXPECT_EQ(0, v.add(1));
    EXPECT_EQ(1, v.add(2));
    EXPECT_EQ(2, v.add(1));
    EXPECT_EQ(2, v.set(1, 21));
    EXPECT_EQ(22, v.assign(1, 22));
    EXPECT_EQ(0, v.indexOf(1));
    EXPECT_EQ(-1, v.indexOf(5));
    v.remove(1);  // the first equal one only
    v.remove(5);
    EXPECT_EQ((std::vector<int>{22, 1}), valuesOf(v));
    EXPECT_EQ(9, v.insert(1, 9));
    v.insert(100, 7);
    v.insert(0, 3);
    EXPECT_EQ((std::vector<int>{3, 22, 9, 1, 7}), valuesOf(v));
    v.removeAt(0);
    EXPECT_EQ((std::vector<int>{22, 9, 1, 7}), valuesOf(v));
}

TEST(CowMemPtrTest, WritesAndResizesDetachReadsAndSetNullNever) {
    Block a;
    a.alloc(4);
    std::memcpy(a.get(), "abcd", 4);
    Block b(a);
    const Block& ca = a;
    const Block& cb = b;
    EXPECT_EQ(ca.get(), cb.get());

    char* written = static_cast<char*>(b.get());
    EXPECT_NE(ca.get(), cb.get());
    EXPECT_EQ(0, std::memcmp(written, "abcd", 4));
    written[0] = 'x';
    EXPECT_EQ('a', static_cast<const char*>(ca.get())[0]);
    // Both are private now: a write on either stays in place.
    EXPECT_EQ(ca.get(), a.get());
    EXPECT_EQ(written, b.get());

    b = a;
    EXPECT_TRUE(a.sharesWith(b));
    EXPECT_TRUE(b.resize(8));
    EXPECT_EQ(8u, b.getByteSize());
    EXPECT_EQ(4u, a.getByteSize());
    EXPECT_EQ(0, std::memcmp(cb.get(), "abcd", 4));
    EXPECT_FALSE(a.sharesWith(b));
    EXPECT_TRUE(b.resize(2));
    EXPECT_EQ(0, std::memcmp(cb.get(), "ab", 2));
    EXPECT_TRUE(b.resize(0));
    EXPECT_FALSE(b.isNull());

    b = a;
    b = a;  // same block: no count changes, still shared
    a.setNull();
    EXPECT_TRUE(a.isNull());
    EXPECT_EQ(4u, b.getByteSize());
    b.setNull();
    EXPECT_TRUE(b.alloc(2));
}

struct Base {
    virtual ~Base() {}
};

struct Counted : Base {
    explicit Counted(int* deletions) : mDeletions(deletions) {}
    ~Counted() override { ++*mDeletions; }
    int* mDeletions;
};

TEST(SharedPtrTest, LastCopyDeletesExactlyOnceThroughAssignmentsAndBaseCopies) {
    int first = 0, second = 0;
    SharedPtr<Base> base;
    {
        SharedPtr<Counted> p(new Counted(&first));
        {
            SharedPtr<Counted> copy(p);
            EXPECT_EQ(2, p.getRefCount());
        }
        EXPECT_EQ(1, p.getRefCount());
        p = new Counted(&second);
        EXPECT_EQ(1, first);
        SharedPtr<Counted> q(new Counted(&first));
        q = p;
        EXPECT_EQ(2, first);
        base = q;
        SharedPtr<Base> other(q);
        EXPECT_EQ(4, other.getRefCount());
    }
    EXPECT_EQ(0, second);
    EXPECT_EQ(1, base.getRefCount());
    base.release();
    EXPECT_EQ(1, second);
}

// The engine's log back end, counting its initialisations.
struct CountingLog : VelunTest::ChannelLog {
    void initialize() override {
        ++mInitializations;
        ChannelLog::initialize();
    }
    int mInitializations = 0;
};

TEST(LogManagerTest, DefaultLoggerWritesPlainLinesAndABackendGetsTheChannels) {
    Velun::LogManager logs;
    SharedPtr<Logger> a = logs.getLogger("one");
    EXPECT_EQ(a.get(), logs.getLogger("other").get());
    testing::internal::CaptureStderr();
    a->fatal("f");
    a->error("something failed");
    a->warn("w");
    a->info("");
    a->debug("d");
    EXPECT_EQ("f\nsomething failed\nw\n\nd\n", testing::internal::GetCapturedStderr());

    CountingLog first, second;
    logs.registerBackend(first);
    EXPECT_EQ(1, first.mInitializations);
    logs.getLogger("loader.ms3d.objectloader")->error("bad file");
    EXPECT_EQ((std::vector<std::string>{"loader.ms3d.objectloader: bad file"}), first.mLines);
    second.ChannelLog::initialize();
    logs.registerBackend(second);
    EXPECT_EQ(0, second.mInitializations);
    logs.getLogger("terrain")->warn("x");
    EXPECT_EQ(1u, first.mLines.size());
    EXPECT_EQ((std::vector<std::string>{"terrain: x"}), second.mLines);
}

}  // namespace
