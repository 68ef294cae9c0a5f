// The table from handles to objects, with objects that count themselves. Layer 16: tests.

#include "HandleMap.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

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
    for (int i = 0; i < 1000; ++i) {
        map.Set(Handle(i + 1), &objects[static_cast<size_t>(i)]);
    }
    // Every third is removed, in an irregular order.
    std::set<int> gone;
    for (int i = 0; i < 1000; i += 3) {
        const int out = i * 7 % 1000;
        map.Remove(Handle(out + 1), &objects[static_cast<size_t>(out)]);
        gone.insert(out);
    }
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(map.Permanent(Handle(i + 1)), gone.count(i) != 0 ? nullptr : &objects[static_cast<size_t>(i)]) << i;
    }
    EXPECT_EQ(map.Find(Handle(5000)), nullptr);
}

TEST(AfxHandleMap, TheNewestLeavesNoEntryAndUncoversTheOneBefore) {
    HandleMap<Counted> map;
    Counted first, second, other;
    map.Set(Handle(1), &first);
    map.Set(Handle(2), &other);
    map.Set(Handle(1), &second);
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
    map.Set(Handle(1), &first);
    map.Set(Handle(2), &other);
    map.Set(Handle(1), &second);
    map.Remove(Handle(1), &first);
    EXPECT_EQ(map.Permanent(Handle(1)), &second);
    map.Remove(Handle(1), &second);
    EXPECT_EQ(map.Find(Handle(1)), nullptr);
}

TEST(AfxHandleMap, TemporaryObjectsAreFreedTogetherAndEachOnce) {
    ASSERT_EQ(Counted::alive, 0);
    {
        HandleMap<Counted> map;
        Counted owner;
        for (int i = 1; i <= 200; ++i) {
            map.SetTemporary(Handle(i), std::make_unique<Counted>());
        }
        map.SetTemporary(Handle(1), std::make_unique<Counted>()); // another kind of object on that handle now
        map.Set(Handle(2), &owner);                               // covered by an owner
        Counted next;
        map.Set(Handle(500), &next); // the owner moves into the table
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

TEST(AfxHandleMap, AnEarlierOwnerIsFoundAgainWhateverWasAttachedInBetween) {
    for (const bool otherBetween : {false, true}) {
        for (const bool otherAfter : {false, true}) {
            SCOPED_TRACE(2 * otherBetween + otherAfter);
            HandleMap<Counted> map;
            Counted first, second, third, other, another;
            map.Set(Handle(1), &first);
            map.Set(Handle(1), &second);
            if (otherBetween) {
                map.Set(Handle(2), &other);
            }
            map.Set(Handle(1), &third);
            if (otherAfter) {
                map.Set(Handle(3), &another);
            }
            EXPECT_EQ(map.Permanent(Handle(1)), &third);
            map.Remove(Handle(1), &third);
            EXPECT_EQ(map.Permanent(Handle(1)), &second);
            map.Remove(Handle(1), &second);
            EXPECT_EQ(map.Permanent(Handle(1)), &first);
            map.Remove(Handle(1), &first);
            EXPECT_EQ(map.Find(Handle(1)), nullptr);
        }
    }
}

TEST(AfxHandleMap, ACoveredOwnerThatLeavesIsNotFoundAgain) {
    HandleMap<Counted> map;
    Counted first, second, third, other;
    map.Set(Handle(1), &first);
    map.Set(Handle(1), &second);
    map.Set(Handle(1), &third);
    map.Set(Handle(2), &other);
    map.Remove(Handle(1), &second);
    EXPECT_EQ(map.Permanent(Handle(1)), &third);
    map.Remove(Handle(1), &third);
    EXPECT_EQ(map.Permanent(Handle(1)), &first);
}

TEST(AfxHandleMap, ObjectsOfFreedHandlesAreUsedAgainAndNeverFreed) {
    ASSERT_EQ(Counted::alive, 0);
    {
        HandleMap<Counted> map;
        const auto isDead = [](const Counted* object) { return object->released; };
        const auto any = [](const Counted*) { return true; };
        const auto none = [](const Counted*) { return false; };
        std::vector<Counted*> made;
        for (int i = 1; i <= 63; ++i) {
            EXPECT_EQ(map.TakeSpare(isDead, any), nullptr);
            made.push_back(map.SetTemporary(Handle(i), std::make_unique<Counted>()));
        }
        made[10]->released = true;
        EXPECT_EQ(map.TakeSpare(isDead, any), nullptr) << "so few are not looked through";
        map.SetTemporary(Handle(64), std::make_unique<Counted>());
        EXPECT_EQ(map.TakeSpare(isDead, none), nullptr);
        EXPECT_EQ(Counted::alive, 64);
        EXPECT_EQ(map.Find(Handle(11)), nullptr) << "its handle has no object any more";
        EXPECT_EQ(map.Find(Handle(12))->object, made[11]);
        std::unique_ptr<Counted> spare = map.TakeSpare(isDead, any);
        EXPECT_EQ(spare.get(), made[10]);
        EXPECT_EQ(map.GetTemporaryCount(), 63u);
        EXPECT_EQ(map.SetTemporary(Handle(70), std::move(spare)), made[10]);
        EXPECT_EQ(map.TakeSpare(isDead, any), nullptr);
        // One whose handle has got an owner is kept until the handle is freed.
        Counted owner, next;
        map.Set(Handle(1), &owner);
        map.Set(Handle(80), &next);
        DeleteAll(map);
        EXPECT_EQ(Counted::alive, 2);
        map.Remove(Handle(1), &owner);
        map.Remove(Handle(80), &next);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(AfxHandleMap, TheNullHandleIsNotFound) {
    HandleMap<Counted> map;
    EXPECT_EQ(map.Find(nullptr), nullptr);
    Counted object;
    map.Set(Handle(1), &object);
    EXPECT_EQ(map.Find(nullptr), nullptr);
    map.Remove(Handle(1), &object);
    EXPECT_EQ(map.Find(nullptr), nullptr);
}
