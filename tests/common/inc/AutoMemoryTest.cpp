#include "AutoMemory.h"

#include "file_management/mo_impl/SystemFaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using Zol::AutoMemory;

namespace
{

using Events = std::vector<std::string>;

// Tells of its own end.
class Witness
{
public:
    Witness(Events& events, std::string name)
        : _events(events)
        , _name(std::move(name))
    {}
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;
    ~Witness() { _events.push_back(_name); }

private:
    Events& _events;
    std::string _name;
};

Events* eventsOfCreated = nullptr;

// Made by the arena itself, which gives no arguments.
struct Created : Witness
{
    Created()
        : Witness(*eventsOfCreated, "created")
    {}
    std::string value = "as constructed";
};

class AutoMemoryTest : public testing::Test
{
protected:
    AutoMemoryTest() { eventsOfCreated = &events; }

    Witness* add(const std::string& name) { return arena.addObj(new Witness(events, name)); }

    Events events; // outlives the arena, which tells of its end
    AutoMemory arena;
};

static_assert(std::has_virtual_destructor_v<AutoMemory>);
static_assert(std::has_virtual_destructor_v<AutoMemory::OwnedObjBase>);
static_assert(std::is_base_of_v<AutoMemory::OwnedObjBase, AutoMemory::OwnedObj<Created>>);
static_assert(std::is_base_of_v<Created, AutoMemory::OwnedObj<Created>>);
static_assert(std::is_base_of_v<AutoMemory::OwnedObjBase, AutoMemory::ObjHolder<Created>>);
static_assert(!std::is_base_of_v<Created, AutoMemory::ObjHolder<Created>>);

} // namespace

TEST_F(AutoMemoryTest, StrdupGivesACopyOfTheText)
{
    std::string text = "a name";
    const char* copy = arena.strdup(text.c_str());
    text = "changed";
    EXPECT_STREQ(copy, "a name");
}

TEST_F(AutoMemoryTest, NewObjGivesANewObjectThatLivesUntilFree)
{
    const Created* object = arena.newObj<Created>();
    EXPECT_EQ(object->value, "as constructed");
    EXPECT_THAT(events, IsEmpty());
    arena.free();
    EXPECT_THAT(events, ElementsAre("created"));
}

TEST_F(AutoMemoryTest, AddObjGivesTheVeryObjectThatLivesUntilFree)
{
    auto* object = new Witness(events, "added");
    EXPECT_EQ(arena.addObj(object), object);
    EXPECT_THAT(events, IsEmpty());
    arena.free();
    EXPECT_THAT(events, ElementsAre("added"));
}

TEST_F(AutoMemoryTest, ANullObjectIsTakenAndFreedWithoutHarm)
{
    EXPECT_EQ(arena.addObj<Witness>(nullptr), nullptr);
    add("other");
    arena.free();
    EXPECT_THAT(events, ElementsAre("other"));
}

TEST_F(AutoMemoryTest, FreeTakesTheTextsAndThenTheObjectsEachInReverseOrder)
{
    const char* first = arena.strdup("first");
    const char* second = arena.strdup("second");
    add("object 1");
    arena.newObj<Created>();
    add("object 3");
    const char* third = arena.strdup("third");

    zoltest::SystemFaults system;
    system.free = [&](const void* memory) {
        if (memory == first || memory == second || memory == third)
        {
            events.emplace_back(static_cast<const char*>(memory));
        }
    };
    arena.free();
    EXPECT_THAT(events, ElementsAre("third", "second", "first", "object 3", "created", "object 1"));
}

TEST_F(AutoMemoryTest, FreeOfAnEmptyArenaIsHarmless)
{
    arena.free();
    arena.free();
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(AutoMemoryTest, CanBeUsedAgainAfterFree)
{
    add("before");
    arena.strdup("before");
    arena.free();
    events.clear();

    EXPECT_STREQ(arena.strdup("after"), "after");
    add("after 1");
    add("after 2");
    arena.free();
    EXPECT_THAT(events, ElementsAre("after 2", "after 1"));
}

TEST_F(AutoMemoryTest, ItsEndFreesWhatItHolds)
{
    {
        AutoMemory shortLived;
        const char* text = shortLived.strdup("text");
        shortLived.addObj(new Witness(events, "object"));
        EXPECT_STREQ(text, "text");
        EXPECT_THAT(events, IsEmpty());
    }
    EXPECT_THAT(events, ElementsAre("object"));
}
