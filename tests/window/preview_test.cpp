// The preview draws the exported shader, and follows what the user does.
#include "tests/window/program_window.h"

#include "reference_host/render/render.h"
#include "reference_host/window/document_tree.h"
#include "reference_host/window/parameter_list.h"
#include "reference_host/window/parameter_row.h"
#include "reference_host/window/preview_canvas.h"
#include "reference_host/window/preview_page.h"
#include "reference_host/window/wx_text.h"
#include "tests/window/screen_picture.h"

#include <algorithm>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <utility>

#include <wx/choice.h>
#include <wx/slider.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TEST
{
namespace
{

using reference_host::Parameter_row;
using reference_host::to_bytes;

class Preview : public Program_window
{
protected:
    void open_preview(const std::string& name, const std::string& exporter)
    {
        start();
        open(sample(name), exporter);
        press_key("Control_L", "2");
        ASSERT_TRUE(wait_for_fine_picture());
    }

    reference_host::Preview_page& page() const { return window().preview(); }
    reference_host::Preview_canvas& canvas() const { return page().canvas(); }

    bool wait_for_fine_picture()
    {
        return wait_until([this] { return page().is_fine(); });
    }

    // The picture that stands on the screen when nothing changes any more.
    using Pixels = std::vector<reference_host::Pixel>;
    Pixels fine_picture()
    {
        EXPECT_TRUE(wait_until([this] { return page().is_fine() && is_on_screen(); }));
        return canvas().picture() ? canvas().picture()->pixels : Pixels();
    }

    bool wait_for_other_picture(const Pixels& before)
    {
        return wait_until(
            [&] { return page().is_fine() && is_on_screen() && fine_picture() != before; });
    }

    // Whether the middle of the canvas shows the middle of the picture.
    bool is_on_screen() const
    {
        if (!canvas().picture())
            return false;
        const wxImage screen = picture_of_screen(canvas().GetScreenRect());
        const auto& picture = *canvas().picture();
        const reference_host::Pixel& drawn = picture.at(picture.width / 2, picture.height / 2);
        const int x = screen.GetWidth() / 2, y = screen.GetHeight() / 2;
        const unsigned char seen[] = {screen.GetRed(x, y), screen.GetGreen(x, y),
                                      screen.GetBlue(x, y)};
        constexpr int scaling = 24; // what changes when a pixel lies between others
        return std::equal(std::begin(seen), std::end(seen), drawn.begin(),
                          [](int one, int other) { return std::abs(one - other) <= scaling; });
    }

    // From what a user does to the first picture of it.
    double milliseconds_to_next_picture(const std::function<void()>& action)
    {
        using Clock = std::chrono::steady_clock;
        const int before = page().picture_count();
        const Clock::time_point start = Clock::now();
        action();
        EXPECT_TRUE(wait_until([&] { return page().picture_count() > before; }));
        return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    }

    Parameter_row* row(const std::string& label) const
    {
        for (Parameter_row* row : page().parameters().rows()) {
            if (row->parameter().label == label)
                return row;
        }
        ADD_FAILURE() << "no parameter " << label;
        return nullptr;
    }

    wxPoint middle() const { return wxPoint(canvas().GetSize().x / 2, canvas().GetSize().y / 2); }
};

} // namespace

TEST_F(Preview, changes_when_a_slider_is_moved)
{
    open_preview("plastic_two_lights", "Custom GLSL");
    const auto before = fine_picture();
    Parameter_row* roughness = row("Specular roughness");
    ASSERT_TRUE(roughness && roughness->slider(0));
    const std::vector<float> value = roughness->value();
    const wxSize size = roughness->slider(0)->GetSize();
    const int thumb = size.x * 3 / 10; // where the value 0.3 is
    drag(roughness->slider(0), wxPoint(thumb, size.y / 2), wxPoint(size.x - 1, size.y / 2));
    EXPECT_TRUE(wait_for_other_picture(before));
    EXPECT_GT(roughness->value(), value);
    EXPECT_NE(to_bytes(roughness->numbers()->GetValue()), "");
    take_picture("preview_slider");
}

TEST_F(Preview, changes_when_the_mouse_moves_around_the_object)
{
    open_preview("wood_textured", "Custom GLSL");
    const auto before = fine_picture();
    drag(&canvas(), middle(), middle() + wxPoint(canvas().GetSize().x / 4, 20));
    EXPECT_TRUE(wait_for_other_picture(before));
    EXPECT_LT(canvas().camera().yaw, -10);
    const auto turned = fine_picture();
    turn_wheel(Wheel::down);
    EXPECT_TRUE(wait_for_other_picture(turned));
    EXPECT_GT(canvas().camera().distance, 3);
    press_key("0");
    EXPECT_TRUE(wait_until([this] { return canvas().camera().yaw == 0; }));
    EXPECT_EQ(fine_picture(), before);
}

TEST_F(Preview, changes_when_another_material_is_chosen)
{
    open_preview("marble_procedural", "Custom GLSL");
    const auto before = fine_picture();
    window().open_files({sample("wood_textured")});
    EXPECT_TRUE(wait_for_other_picture(before));
    const auto wood = fine_picture();
    focus(window().documents().tree());
    press_key("Home"); // the first document
    EXPECT_TRUE(wait_for_other_picture(wood));
    EXPECT_EQ(fine_picture(), before);
}

TEST_F(Preview, changes_with_shape_and_backdrop)
{
    open_preview("metal_environment", "Custom GLSL");
    const auto sphere = fine_picture();
    choose(page().shape(), 2);
    EXPECT_TRUE(wait_for_other_picture(sphere));
    const auto cube = fine_picture();
    choose(page().backdrop(), 2);
    EXPECT_TRUE(wait_for_other_picture(cube));
    take_picture("preview_cube");
}

TEST_F(Preview, parameters_have_the_names_ranges_and_folders_of_the_effect)
{
    open_preview("plastic_two_lights", "Custom GLSL");
    const Parameter_row* roughness = row("Specular roughness");
    const Parameter_row* intensity = row("Rim intensity");
    ASSERT_TRUE(roughness && intensity);
    EXPECT_EQ(roughness->parameter().name, "specular_roughness");
    EXPECT_EQ(roughness->parameter().max, 1.0F);
    EXPECT_EQ(roughness->parameter().folder, "");
    EXPECT_EQ(intensity->parameter().folder, "Rim");
    EXPECT_EQ(row("Rim direction")->parameter().value.size(), 3u);
    EXPECT_TRUE(row("Rim direction")->slider(2));
    EXPECT_FALSE(row("Rim color")->slider(0)) << "a color has a button";
}

TEST_F(Preview, takes_numbers_that_are_typed_and_gives_them_up_again)
{
    open_preview("plastic_two_lights", "Custom GLSL");
    const auto before = fine_picture();
    Parameter_row* roughness = row("Specular roughness");
    ASSERT_TRUE(roughness);
    focus(*roughness->numbers());
    replace_text("0.9");
    EXPECT_TRUE(wait_for_other_picture(before));
    EXPECT_FLOAT_EQ(roughness->value().at(0), 0.9F);
    page().parameters().reset();
    EXPECT_EQ(fine_picture(), before);
}

TEST_F(Preview, shows_why_nothing_is_drawn)
{
    start();
    window().open_files({folder.write("broken.mtlx", "<materialx version=\"1.38\"></materialx>")});
    press_key("Control_L", "2");
    EXPECT_TRUE(wait_until([this] { return !canvas().text().empty(); }));
    EXPECT_EQ(canvas().text(), "There is no node to draw.");
}

TEST_F(Preview, draws_effects_as_glsl_where_their_compiler_is_absent)
{
    setenv("TOVIRAEXPORT_VALIDATORS", folder.path().c_str(), 1);
    open_preview("wood_textured", "Custom CgFX");
    unsetenv("TOVIRAEXPORT_VALIDATORS");
    EXPECT_EQ(to_bytes(page().note().GetLabelText()).substr(0, 14), "Drawn as GLSL:");
    EXPECT_FALSE(page().parameters().rows().empty());
}

TEST_F(Preview, draws_the_effect_itself_through_its_compiler)
{
    if (reference_host::find_cg_compiler().empty())
        GTEST_SKIP() << "cgc is absent; scripts/fetch-validators.sh brings it";
    open_preview("wood_textured", "Custom CgFX");
    EXPECT_EQ(to_bytes(page().note().GetLabelText()), "");
    const auto before = fine_picture();
    Parameter_row* specular = row("Specular");
    ASSERT_TRUE(specular);
    focus(*specular->numbers());
    replace_text("0.95");
    EXPECT_TRUE(wait_for_other_picture(before));
}

// A decimal comma would part one number into two.
TEST_F(Preview, shows_and_takes_numbers_with_a_dot_in_every_locale)
{
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
        GTEST_SKIP() << "the locale de_DE.UTF-8 is absent";
    open_preview("plastic_two_lights", "Custom GLSL");
    Parameter_row* roughness = row("Specular roughness");
    ASSERT_TRUE(roughness);
    EXPECT_EQ(to_bytes(roughness->numbers()->GetValue()), "0.3");
    focus(*roughness->numbers());
    replace_text("0.75");
    EXPECT_TRUE(wait_until([&] { return roughness->value().at(0) == 0.75F; }));
    std::setlocale(LC_ALL, "C");
}

// What is drawn does not wait for the other views, and is not drawn again when they are done.
TEST_F(Preview, draws_a_node_at_once_when_it_is_selected)
{
    open_preview("wood_textured", "Custom GLSL");
    fine_picture();
    int trials = 0;
    window().workspace().listen([&trials](reference_host::Change change) {
        trials += change == reference_host::Change::trial ? 1 : 0;
    });
    window().open_files({sample("plastic_two_lights")});
    EXPECT_TRUE(row("Specular roughness"));
    EXPECT_EQ(trials, 0);
    const auto shader = page().shader();
    EXPECT_TRUE(wait_until([&] { return trials > 0; }));
    fine_picture();
    EXPECT_EQ(page().shader(), shader);
}

// The numbers are for a reader: they depend on the machine and on what else it does. The limit is
// what no user takes for a pause, many times over.
TEST_F(Preview, tells_how_long_its_pictures_take)
{
    constexpr double too_long = 3000; // milliseconds
    open_preview("wood_textured", "Custom GLSL");
    for (const char* name : {"marble_procedural", "metal_environment", "plastic_two_lights",
                             "surface_open_pbr", "surface_gltf_pbr", "wood_textured"}) {
        const double first =
            milliseconds_to_next_picture([&] { window().open_files({sample(name)}); });
        fine_picture();
        focus(canvas());
        constexpr int turns = 20;
        double later = 0;
        for (int turn = 0; turn < turns; ++turn)
            later += milliseconds_to_next_picture([] { press_key("Left"); }) / turns;
        fine_picture();
        window().open_files({sample("surface_usd_preview")});
        fine_picture();
        const double again =
            milliseconds_to_next_picture([&] { window().open_files({sample(name)}); });
        fine_picture();
        std::printf("%-20s first picture %4.0f ms, later ones %4.0f ms, selected again %4.0f ms\n",
                    name, first, later, again);
        EXPECT_LT(first, too_long);
        EXPECT_LT(later, too_long / 3);
    }
}

} // namespace TEST
} // namespace QZ
