// The fake host itself: it must name what a caller does wrong, or the other tests prove nothing.
#include "reference_host/recording_host/recording_host.h"

#include <gmock/gmock.h>

namespace QZ
{
namespace TEST
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Recording_host, names_an_object_that_is_never_released)
{
    Recording_host host;
    host.add_selected_node("glass");
    host.view()->get_selected_node(0);
    EXPECT_THAT(host.problems(), ElementsAre("never released: glass"));
}

TEST(Recording_host, names_an_object_that_is_released_twice)
{
    Recording_host host;
    TSDK::ICompiler_options* options = host.compiler()->create_options();
    options->release();
    options->release();
    EXPECT_THAT(host.problems(), ElementsAre("released twice: options 1"));
}

TEST(Recording_host, names_a_call_on_a_released_object)
{
    Recording_host host;
    host.add_selected_node("glass");
    TSDK::IGraph_node* node = host.view()->get_selected_node(0);
    node->release();
    node->get_name();
    EXPECT_THAT(host.problems(), ElementsAre("used after release: glass.get_name()"));
}

TEST(Recording_host, names_a_released_object_that_is_handed_on)
{
    Recording_host host;
    TSDK::ICompiler_options* options = host.compiler()->create_options();
    options->release();
    host.compiler()->compile(nullptr, nullptr, options)->release();
    EXPECT_THAT(host.problems(), ElementsAre("handed on after release: options 1"));
}

TEST(Recording_host, names_a_lent_object_that_is_released)
{
    Recording_host host;
    host.view()->release();
    EXPECT_THAT(host.problems(), ElementsAre("released though lent: view"));
}

TEST(Recording_host, fails_the_one_call_that_it_is_told_to)
{
    Recording_host host;
    host.set_failing_call(2);
    TSDK::ICompiler_errors* first = host.compiler()->get_errors();
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(host.compiler()->get_errors(), nullptr);
    EXPECT_EQ(host.compiler()->get_errors(), first);
    EXPECT_EQ(host.fallible_calls(), 3);
}

TEST(Recording_host, writes_calls_and_releases_down_in_order)
{
    Recording_host host;
    TSDK::ICompiler_options* options = host.compiler()->create_options();
    options->set_option("format", "HLSL");
    options->release();
    EXPECT_THAT(host.log(),
                ElementsAre("compiler.create_options()",
                            "options 1.set_option(\"format\", \"HLSL\")", "options 1.release()"));
    EXPECT_THAT(host.releases(), ElementsAre("options 1"));
    EXPECT_THAT(host.options(1), ElementsAre(std::make_pair("format", "HLSL")));
    EXPECT_THAT(host.options(2), IsEmpty());
}

} // namespace TEST
} // namespace QZ
