// The table from handles to objects, with objects that count themselves. Layer 14: tests.

#include "HandleMap.h"

#include <gtest/gtest.h>

#include <set>

namespace {

struct Counted {
    Counted() { ++alive; }
    ~Counted() { --alive; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    bool released = false;
    inline static int alive = 0;
};

void* Handle(int number) {
    return reinterpret_cast<void*>(static_cast<INT_PTR>(number) * 4);
}

void DeleteAll(HandleMap<Counted>& map) {
    map.DeleteTemporaries([](Counted* object) { object->released = true; });
}

} // namespace

TEST(AfxHandleMap, FindsEachOfManyThatComeAndGo) {
    HandleMap<Counted> map;
    std::vector<Counted> objects(1000);
    for (int i = 0; i < 1000; ++i)
        map.Set(Handle(i + 1), &objects[static_cast<size_t>(i)], false);
    // Every third goes, in an order that jumps about.
    std::set<int> gone;
    for (int i = 0; i < 1000; i += 3) {
        const int out = i * 7 % 1000;
        map.Remove(Handle(out + 1), &objects[static_cast<size_t>(out)]);
        gone.insert(out);
    }
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(map.Permanent(Handle(i + 1)), gone.count(i) != 0 ? nullptr : &objects[static_cast<size_t>(i)]) << i;
    EXPECT_EQ(map.Find(Handle(5000)), nullptr);
}

TEST(AfxHandleMap, TheNewestLeavesNothingBehindAndUncoversTheOneBefore) {
    HandleMap<Counted> map;
    Counted first, second, other;
    map.Set(Handle(1), &first, false);
    map.Set(Handle(2), &other, false);
    map.Set(Handle(1), &second, false);
    EXPECT_EQ(map.Permanent(Handle(1)), &second);
    map.Remove(Handle(1), &second);
    EXPECT_EQ(map.Permanent(Handle(1)), &first);
    map.Remove(Handle(1), &second);
    EXPECT_EQ(map.Permanent(Handle(1)), &first) << "only its own object takes an entry out";
    map.Remove(Handle(1), &first);
    EXPECT_EQ(map.Find(Handle(1)), nullptr);
    EXPECT_EQ(map.Permanent(Handle(2)), &other);
}

TEST(AfxHandleMap, TheOneBeforeMayLeaveWhileItIsCovered) {
    HandleMap<Counted> map;
    Counted first, second, other;
    map.Set(Handle(1), &first, false);
    map.Set(Handle(2), &other, false);
    map.Set(Handle(1), &second, false);
    map.Remove(Handle(1), &first);
    EXPECT_EQ(map.Permanent(Handle(1)), &second);
    map.Remove(Handle(1), &second);
    EXPECT_EQ(map.Find(Handle(1)), nullptr);
}

TEST(AfxHandleMap, TemporaryObjectsGoTogetherAndEachOnce) {
    ASSERT_EQ(Counted::alive, 0);
    {
        HandleMap<Counted> map;
        Counted owner;
        for (int i = 1; i <= 200; ++i)
            map.Set(Handle(i), new Counted, true);
        map.Set(Handle(1), new Counted, true); // another kind of object on that handle now
        map.Set(Handle(2), &owner, false);     // covered by an owner
        Counted next;
        map.Set(Handle(500), &next, false); // the owner moves into the table
        EXPECT_EQ(map.Permanent(Handle(2)), &owner);
        EXPECT_EQ(map.GetTemporaryCount(), 201u);
        EXPECT_EQ(Counted::alive, 203);
        DeleteAll(map);
        EXPECT_EQ(Counted::alive, 2);
        EXPECT_EQ(map.GetTemporaryCount(), 0u);
        EXPECT_EQ(map.Find(Handle(1)), nullptr);
        EXPECT_EQ(map.Permanent(Handle(2)), &owner);
        EXPECT_EQ(map.Permanent(Handle(500)), &next);
        DeleteAll(map);
        EXPECT_EQ(Counted::alive, 2);
        map.Remove(Handle(2), &owner);
        map.Remove(Handle(500), &next);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(AfxHandleMap, NoHandleIsNeverFound) {
    HandleMap<Counted> map;
    EXPECT_EQ(map.Find(nullptr), nullptr);
    Counted object;
    map.Set(Handle(1), &object, false);
    EXPECT_EQ(map.Find(nullptr), nullptr);
    map.Remove(Handle(1), &object);
    EXPECT_EQ(map.Find(nullptr), nullptr);
}
