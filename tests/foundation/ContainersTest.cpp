#include <gtest/gtest.h>

#include <string>

#include "foundation/HashMap.h"
#include "foundation/IdMap.h"
#include "foundation/LinkedMap.h"
#include "foundation/OrderedMap.h"
#include "foundation/Stack.h"
#include "foundation/Vector.h"

using namespace Dorvan;

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

TEST(HashMapTest, BehavesLikeAMapWithoutOrder) {
    HashMap<unsigned int, int*> map;
    int value = 3;
    EXPECT_EQ(nullptr, map.get(4));
    EXPECT_EQ(1u, map.size());
    map.put(9, &value);
    EXPECT_EQ(&value, map[9]);
    EXPECT_EQ(&value, map.remove(9));
    EXPECT_FALSE(map.containsKey(9));
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

TEST(StackTest, LastInFirstOut) {
    Stack<int> stack;
    EXPECT_TRUE(stack.isEmpty());
    stack.push(1);
    stack.push(2);
    EXPECT_EQ(2u, stack.size());
    EXPECT_EQ(2, stack.top());
    stack.pop();
    EXPECT_EQ(1, stack.top());
}
