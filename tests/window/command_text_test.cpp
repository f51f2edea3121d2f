#include "reference_host/window/command_text.h"

#include <gtest/gtest.h>

namespace reference_host
{

TEST(Command_text, quotes_the_words_that_a_shell_would_take_apart)
{
    EXPECT_EQ(shell_word("/d/wood.mtlx"), "/d/wood.mtlx");
    EXPECT_EQ(shell_word("a b"), "'a b'");
    EXPECT_EQ(shell_word("it's"), "'it'\\''s'");
    EXPECT_EQ(shell_word(""), "''");
}

TEST(Command_text, names_only_what_is_not_usual)
{
    Scene_request request;
    request.document = "wood.mtlx";
    EXPECT_EQ(export_command_text(request, "Custom CgFX", "/o/wood"),
              "shader-export export wood.mtlx --exporter 'Custom CgFX' --output /o/wood");
}

TEST(Command_text, has_every_option_of_the_scene)
{
    Scene_request request;
    request.document = "d.mtlx";
    request.node = "Wood";
    request.render.lights = {
        {"key", Light_kind::spot, 40.0f, 2.5f, {{"position", {0.0, 2.5, 1.0}}}},
        {"rim", {}, {}, {}, {}}};
    request.render.environment = "sky";
    request.render.volume = "fog";
    request.render.ambient = {0.5f, 0.0f, 0.0f, 1.0f};
    request.search_path = {"/img"};
    request.preferences.values["cg_flip_tex2d_v"] = true;
    request.kind = {Shader_kind_answer::From::fixed, "lens"};
    request.texture_paths = Texture_paths::absolute;
    request.options = {{"", "two_sided", "on"}};
    EXPECT_EQ(export_command_text(request, "7", "w"),
              "shader-export export d.mtlx --node Wood --exporter 7 --output w "
              "--light key:spot:position=0,2.5,1,cone=40,limit=2.5 --light rim --environment sky "
              "--volume fog "
              "--ambient 0.5,0,0,1 --search-path /img --preference cg_flip_tex2d_v=true "
              "--kind lens --texture-paths absolute --set two_sided=on");
}

TEST(Command_text, writes_lights_as_the_command_line_reads_them)
{
    for (const std::string text :
         {"sun", "sun:directional", "sun:directional:40", "sun:directional:40:3", "lamp:point:20",
          "sun:directional:limit=3", "sun:directional:direction=0,-1,0,limit=3",
          "key:spot:position=0,2.5,1,cone=40,limit=2.5"}) {
        std::string reason;
        const auto light = parse_light(text, reason);
        ASSERT_TRUE(light) << text << ": " << reason;
        EXPECT_EQ(light_text(*light), text);
    }
}

TEST(Command_text, leaves_out_options_that_nobody_touched)
{
    const auto changed =
        changed_options({{"", "a", "on"}, {"", "b", "off"}}, {{"", "a", "on"}, {"", "b", "on"}});
    ASSERT_EQ(changed.size(), 1u);
    EXPECT_EQ(changed[0].name, "b");
}

} // namespace reference_host
