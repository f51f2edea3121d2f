#include "reference_host/host/ledger.h"

#include <gmock/gmock.h>

using namespace reference_host;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class Thing : public Host_object<QZ::TSDK::Interface>
{
public:
    explicit Thing(const std::string& name) : Host_object("thing", name) {}
};

} // namespace

TEST(Ledger, has_nothing_to_say_when_all_references_came_back)
{
    Ledger ledger;
    Thing& thing = ledger.make<Thing>("a");
    thing.hand_out();
    thing.reference();
    thing.release();
    thing.release();
    EXPECT_THAT(ledger.findings({}), IsEmpty());
}

TEST(Ledger, names_a_reference_that_is_missing)
{
    Ledger ledger;
    ledger.make<Thing>("a").hand_out();
    EXPECT_THAT(ledger.findings({}), ElementsAre("thing 'a' was not released (1 reference)"));
}

TEST(Ledger, names_an_object_that_was_released_twice)
{
    Ledger ledger;
    Thing& thing = ledger.make<Thing>("a");
    thing.hand_out();
    thing.release();
    thing.release();
    EXPECT_THAT(ledger.findings({}),
                ElementsAre("thing 'a' was released more often than it was handed out"));
}

TEST(Ledger, names_an_object_that_was_used_after_its_release)
{
    Ledger ledger;
    Thing& thing = ledger.make<Thing>("");
    thing.hand_out();
    thing.release();
    EXPECT_EQ(nullptr, thing.get_interface(10));
    EXPECT_THAT(ledger.findings({}),
                ElementsAre("thing was used after its release (get_interface)"));
}

TEST(Ledger, lets_a_lent_object_be_used_without_a_reference)
{
    Ledger ledger;
    Thing& thing = ledger.make<Thing>("a");
    thing.lend();
    thing.get_interface(10);
    EXPECT_THAT(ledger.findings({}), IsEmpty());
}

TEST(Ledger, excuses_one_missing_reference_per_exception_that_holds)
{
    Ledger ledger;
    ledger.make<Thing>("a").hand_out();
    ledger.make<Thing>("b").hand_out();
    EXPECT_THAT(ledger.findings({{"thing", true}}),
                ElementsAre("thing 'b' was not released (1 reference)"));
    EXPECT_EQ(2u, ledger.findings({{"thing", false}}).size());
    EXPECT_EQ(2u, ledger.findings({{"other", true}}).size());
}

TEST(Ledger, finds_its_own_objects_and_no_others)
{
    Ledger ledger;
    Thing& thing = ledger.make<Thing>("a");
    Thing stranger("b");
    EXPECT_EQ(&thing, ledger.find<Thing>(&thing));
    EXPECT_EQ(nullptr, ledger.find<Thing>(&stranger));
    EXPECT_EQ(nullptr, ledger.find<Thing>(nullptr));
}
