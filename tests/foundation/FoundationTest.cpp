#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "core/LogManager.h"
#include "core/SimpleLogger.h"
#include "core/VelunCore.h"
#include "foundation/CowMemPtr.h"
#include "foundation/IdMap.h"
#include "foundation/LinkedMap.h"
#include "foundation/OrderedMap.h"
#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"

using namespace Dorvan;
using Block = Dorvan::CowMemPtr<void>;
using Dorvan::SharedPtr;
using namespace Velun;
using Dorvan::Logger;

TEST(LinkedMapTest, LookupsCreateEntriesExceptContainsKey) {
    LinkedMap<std::string, int> map;
    EXPECT_FALSE(map.containsKey("a"));
    EXPECT_EQ(0u, map.size());
    EXPECT_EQ(0, map.get("a"));
    EXPECT_EQ(1u, map.size());
    EXPECT_EQ(0, map["b"]);
    EXPECT_EQ(2u, map.size());
    EXPECT_TRUE(map.containsKey("b"));
}

TEST(LinkedMapTest, PutReplacesAndRemoveErases) {
    LinkedMap<int, int> map;
    EXPECT_EQ(7, map.put(1, 7));
    EXPECT_EQ(8, map.put(1, 8));
    EXPECT_EQ(1u, map.size());
    EXPECT_EQ(8, map.get(1));
    EXPECT_TRUE(map.containsValue(8));
    EXPECT_FALSE(map.containsValue(7));

    EXPECT_EQ(0, map.remove(5));
    EXPECT_EQ(1u, map.size());
    EXPECT_EQ(8, map.remove(1));
    EXPECT_TRUE(map.isEmpty());
}

TEST(LinkedMapTest, WalksInKeyOrderAndClears) {
    LinkedMap<int, char> map;
    map.put(3, 'c');
    map.put(1, 'a');
    map.put(2, 'b');
    std::string order;
    for (LinkedMap<int, char>::const_iterator it = map.begin(); it != map.end(); ++it)
        order += it->second;
    EXPECT_EQ("abc", order);
    map.clear();
    EXPECT_TRUE(map.isEmpty());
}

TEST(OrderedMapTest, KeepsInsertionOrderThroughRemovals) {
    OrderedMap<int, char> map;
    map.put(5, 'a');
    map.put(2, 'b');
    map.put(9, 'c');
    EXPECT_EQ(5, map.keyAt(0));
    EXPECT_EQ(2, map.keyAt(1));
    EXPECT_EQ(9, map.keyAt(2));
    EXPECT_EQ('c', map.valueAt(2));

    EXPECT_EQ('b', map.remove(2));
    EXPECT_EQ(9, map.keyAt(1));
    EXPECT_EQ(2u, map.size());
    EXPECT_EQ(1, map.indexOf(9));
    EXPECT_EQ(-1, map.indexOf(2));

    EXPECT_EQ('a', map.removeAt(0));
    EXPECT_EQ(9, map.keyAt(0));
    EXPECT_FALSE(map.containsKey(5));
}

TEST(OrderedMapTest, LookupOfMissingKeyIsNotCountedAndPutOfPresentKeyKeepsPosition) {
    OrderedMap<int, int> map;
    map.put(1, 10);
    EXPECT_EQ(0, map.get(7));
    EXPECT_EQ(1u, map.size());
    map.put(7, 70);
    map.put(1, 11);
    EXPECT_EQ(2u, map.size());
    EXPECT_EQ(1, map.keyAt(0));
    EXPECT_EQ(7, map.keyAt(1));
    EXPECT_EQ(11, map.valueAt(0));
}

TEST(OrderedMapTest, InsertionsPutKeysAtPositions) {
    OrderedMap<int, char> map;
    map.put(1, 'a');
    map.put(3, 'c');
    map.insertAt(1, 2, 'b');
    map.insertBefore(0, 0, 'z');
    map.insertAfter(3, 4, 'd');
    ASSERT_EQ(5u, map.size());
    for (unsigned int i = 0; i < 5; ++i)
        EXPECT_EQ(static_cast<int>(i), map.keyAt(i));
    // Inserting a present key moves it.
    map.insertAt(0, 4, 'e');
    EXPECT_EQ(4, map.keyAt(0));
    EXPECT_EQ(5u, map.size());
    map.clear();
    EXPECT_TRUE(map.isEmpty());
}

TEST(IdMapTest, IdsStartAt101AndAreNeverReused) {
    IdMap<const char*, int> map;
    EXPECT_EQ(101, map.createId());
    EXPECT_EQ(102, map.createId());
    map.returnId(101);
    EXPECT_EQ(103, map.createId());
    EXPECT_TRUE(map.isEmpty());
    map.put(103, "x");
    EXPECT_EQ(103, map.keyAt(0));

    IdMap<const char*, int> copy(map);
    EXPECT_EQ(104, copy.createId());
    EXPECT_EQ(1u, copy.size());
}

TEST(VectorTest, AddSetAssignAndRemove) {
    Vector<int> v;
    EXPECT_EQ(0u, v.size());
    EXPECT_EQ(0, v.add(10));
    EXPECT_EQ(1, v.add(20));
    EXPECT_EQ(2, v.add(30));
    EXPECT_EQ(20, v.set(1, 21));
    EXPECT_EQ(22, v.assign(1, 22));
    EXPECT_EQ(22, v.get(1));
    EXPECT_EQ(22, v[1]);
    EXPECT_EQ(30, v.at(2));

    v.removeAt(0);
    EXPECT_EQ(22, v.get(0));
    EXPECT_EQ(2u, v.size());
}

TEST(VectorTest, SearchesAndEditsByValue) {
    Vector<int> v;
    v.add(1);
    v.add(2);
    v.add(1);
    EXPECT_EQ(0, v.indexOf(1));
    EXPECT_EQ(-1, v.indexOf(5));
    EXPECT_TRUE(v.contains(2));
    EXPECT_FALSE(v.contains(5));
    v.remove(1);
    EXPECT_EQ(2u, v.size());
    EXPECT_EQ(2, v.get(0));
    v.remove(5);
    EXPECT_EQ(2u, v.size());
    EXPECT_EQ(9, v.insert(1, 9));
    EXPECT_EQ(9, v.get(1));
    v.insert(100, 7);
    EXPECT_EQ(7, v.get(3));
    v.clear();
    EXPECT_TRUE(v.isEmpty());
}

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

namespace {

struct RecordingLogger : Logger {
    explicit RecordingLogger(std::vector<std::string>* lines) : mLines(lines) {}
    void fatal(const std::string& m) override { mLines->push_back("fatal:" + m); }
    void error(const std::string& m) override { mLines->push_back("error:" + m); }
    void warn(const std::string& m) override { mLines->push_back("warn:" + m); }
    void info(const std::string& m) override { mLines->push_back("info:" + m); }
    void debug(const std::string& m) override { mLines->push_back("debug:" + m); }
    std::vector<std::string>* mLines;
};

struct RecordingBackend : Dorvan::LogBackend {
    void initialize() override {
        ++mInitializations;
        mInitialized = true;
    }
    bool isInitialized() override { return mInitialized; }
    SharedPtr<Logger> getLogger(const std::string& name) override {
        mChannels.push_back(name);
        return SharedPtr<Logger>(new RecordingLogger(&mLines));
    }
    int mInitializations = 0;
    bool mInitialized = false;
    std::vector<std::string> mChannels;
    std::vector<std::string> mLines;
};

}  // namespace

TEST(LogManagerTest, DefaultLoggerWritesPlainLines) {
    LogManager logs;
    SharedPtr<Logger> a = logs.getLogger("one");
    SharedPtr<Logger> b = logs.getLogger("other");
    EXPECT_EQ(a.get(), b.get());

    testing::internal::CaptureStderr();
    a->fatal("f");
    a->error("something failed");
    a->warn("w");
    a->info("");
    a->debug("d");
    EXPECT_EQ("f\nsomething failed\nw\n\nd\n", testing::internal::GetCapturedStderr());
}

TEST(LogManagerTest, BackendGetsChannelNamesAndIsInitialisedOnce) {
    LogManager logs;
    RecordingBackend first;
    logs.registerBackend(first);
    EXPECT_EQ(1, first.mInitializations);
    logs.getLogger("loader.ms3d.objectloader")->error("bad file");
    ASSERT_EQ(1u, first.mChannels.size());
    EXPECT_EQ("loader.ms3d.objectloader", first.mChannels[0]);
    EXPECT_EQ("error:bad file", first.mLines[0]);

    RecordingBackend second;
    second.mInitialized = true;
    logs.registerBackend(second);
    EXPECT_EQ(0, second.mInitializations);
    logs.getLogger("terrain")->warn("x");
    EXPECT_EQ(1u, first.mChannels.size());
    EXPECT_EQ("terrain", second.mChannels[0]);
}
